#ifndef DRIVEWIZ_PARAMTABLE_PARAMTEXTS_H
#define DRIVEWIZ_PARAMTABLE_PARAMTEXTS_H

#include "drivewiz_global.h"

#include <QString>

namespace drivewiz {

class TParaTable;

/// The texts of parameter sets, comparison, undo and the journal, from section
/// "ParamSets" of the table's language file; German when the table has no language
/// file (or none is given). `key` is one of those listed in ParamTexts.cpp; an unknown
/// key gives itself.
DRIVEWIZ_EXPORT QString paramSetText(const TParaTable *table, const char *key);

/// The same with "%1", "%2"... replaced by the arguments.
DRIVEWIZ_EXPORT QString paramSetText(const TParaTable *table, const char *key, const QString &a1,
                                     const QString &a2 = QString(), const QString &a3 = QString());

/// Every key and its German default, for tests and for translators.
struct ParamSetTextDefault
{
    const char *key;
    const char *german;
};
DRIVEWIZ_EXPORT const ParamSetTextDefault *paramSetTextDefaults(int *count);

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARAMTEXTS_H
