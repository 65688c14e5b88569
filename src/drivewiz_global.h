#ifndef DRIVEWIZ_GLOBAL_H
#define DRIVEWIZ_GLOBAL_H

#include <QtCore/qglobal.h>

#if defined(DRIVEWIZ_BUILD_LIBRARY)
#define DRIVEWIZ_EXPORT Q_DECL_EXPORT
#else
#define DRIVEWIZ_EXPORT Q_DECL_IMPORT
#endif

#endif // DRIVEWIZ_GLOBAL_H
