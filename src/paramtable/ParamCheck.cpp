// A value the library writes on its own is checked as a typed one is.

#include "paramtable/ParamCheck.h"

#include "paramtable/ParaTable.h"
#include "paramtable/ParamTexts.h"
#include "platform/convert.h"
#include "util/Divers.h"

#include <QRegularExpression>

#include <cmath>

namespace drivewiz {

namespace {

ParamValueCheck refused(const QString &value, const QString &reason)
{
    return ParamValueCheck{ParamValueCheck::Refused, value, reason};
}

int leadingNumber(const QString &text)
{
    int n = 0;
    for (const QChar c : text) {
        if (!c.isDigit()) break;
        n = n * 10 + c.digitValue();
        if (n > 1000000) break;
    }
    return n;
}

// An empty or unreadable limit is no limit.
bool limit(const QString &text, double &value)
{
    const QString t = TrimFloat(text.trimmed());
    return !t.isEmpty() && TryStrToFloat(t, value);
}

ParamValueCheck checkNumber(const TParaTable &table, const QStringList &cells, const QString &value)
{
    double v = 0;
    if (!TryStrToFloat(TrimFloat(value.trimmed()), v) || !std::isfinite(v))
        return refused(value, paramSetText(&table, "RefusedNumber", value));
    double lo = 0, hi = 0;
    const QString ugw = cells.at(3).trimmed(), ogw = cells.at(4).trimmed();
    const bool below = limit(ugw, lo) && v < lo;
    const bool above = limit(ogw, hi) && v > hi;
    if (below || above) {
        const QString to = below ? ugw : ogw;
        return {ParamValueCheck::Limited, to, paramSetText(&table, "Limited", to, ugw, ogw)};
    }
    return {ParamValueCheck::Accepted, value, QString()};
}

bool binaryText(const QString &value)
{
    static const QRegularExpression re(QStringLiteral("^\\s*([01]+(bin)?|\\d+)\\s*$"),
                                       QRegularExpression::CaseInsensitiveOption);
    return re.match(value).hasMatch();
}

} // namespace

ParamValueCheck CheckParamValue(TParaTable &table, int row, const QString &value, bool valueCheck)
{
    if (row < 0) return refused(value, paramSetText(&table, "RefusedUnknown"));
    if (table.Online() == omRueckdoku)
        return refused(value, paramSetText(&table, "RefusedReadBack"));
    const QStringList cells = table.Cells(row, {"Write-Level", "Datentyp", "Art", "UGW", "OGW"});
    const int level = StrToIntDef(cells.at(0).trimmed(), 0);
    if (level >= 6) return refused(value, paramSetText(&table, "RefusedReadOnly"));
    if (level > table.UserLevel())
        return refused(value, paramSetText(&table, "RefusedLevel", QString::number(level)));
    if (!valueCheck) return {ParamValueCheck::Accepted, value, QString()};
    const QString type = cells.at(1).trimmed().toUpper();
    const int kind = StrToIntDef(cells.at(2).trimmed(), 0);
    if (table.IstAuswahlParameter(row) && !table.GetAuswahlListe(row).isEmpty()) {
        const QString entry = table.CheckAuswahlTable(row, value);
        if (entry.isEmpty()) return refused(value, paramSetText(&table, "RefusedSelection", value));
        return {ParamValueCheck::Accepted, entry, QString()};
    }
    if (type.startsWith(QLatin1String("STR"))) {
        const int n = leadingNumber(type.mid(3));
        if (n > 0 && value.size() > n)
            return refused(value, paramSetText(&table, "RefusedLength", QString::number(n)));
        return {ParamValueCheck::Accepted, value, QString()};
    }
    if (kind == 4) {
        if (!binaryText(value)) return refused(value, paramSetText(&table, "RefusedNumber", value));
        return {ParamValueCheck::Accepted, value, QString()};
    }
    if (kind < 2 && !table.IstAuswahlParameter(row)) return checkNumber(table, cells, value);
    return {ParamValueCheck::Accepted, value, QString()};
}

} // namespace drivewiz
