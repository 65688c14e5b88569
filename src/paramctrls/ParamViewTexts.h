#ifndef DRIVEWIZ_PARAMCTRLS_PARAMVIEWTEXTS_H
#define DRIVEWIZ_PARAMCTRLS_PARAMVIEWTEXTS_H

#include "drivewiz_global.h"

#include <QString>

namespace drivewiz {

class TParaTable;

/// The texts of the views on parameter sets (change marks, the controls' context menu,
/// the compare view, the journal view, the host's menus), from section "ParamViews" of
/// the table's language file; German when the table has no language file. An unknown key
/// gives itself. "%1" .. "%3" are replaced by the arguments in one pass.
DRIVEWIZ_EXPORT QString paramViewText(const TParaTable *table, const char *key,
                                      const QString &a1 = QString(), const QString &a2 = QString(),
                                      const QString &a3 = QString());

/// Every key and its German default, for tests and translators.
struct ParamViewTextDefault
{
    const char *key;
    const char *german;
};
DRIVEWIZ_EXPORT const ParamViewTextDefault *paramViewTextDefaults(int *count);

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMCTRLS_PARAMVIEWTEXTS_H
