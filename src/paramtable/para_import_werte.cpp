#include "paramtable/para_import_werte.h"

#include "platform/convert.h"
#include "platform/dialogs.h"

namespace drivewiz {

namespace {

bool isFilterOpChar(QChar c)
{
    return c == QLatin1Char('<') || c == QLatin1Char('=') || c == QLatin1Char('>');
}

// A parenthesised term runs to its matching ")"; an unbalanced "(" gives "!", which
// compares nothing.
QString nextTerm(const QString &expr, int &pos)
{
    if (expr.at(pos) != QLatin1Char('(')) {
        const QString term = expr.mid(pos);
        pos = expr.size();
        return term;
    }
    int depth = 0;
    for (int i = pos; i < expr.size(); ++i) {
        if (expr.at(i) == QLatin1Char('('))
            ++depth;
        else if (expr.at(i) == QLatin1Char(')') && --depth == 0) {
            const QString term = expr.mid(pos + 1, i - pos - 1);
            pos = i + 1;
            return term;
        }
    }
    pos = expr.size();
    return QStringLiteral("!");
}

} // namespace

TWerteTable::TWerteTable() = default;

void TWerteTable::SetFilter(const QString &filter)
{
    m_filter = filter;
    parseFilter();
}

void TWerteTable::SetHiddenParamFilter(const QString &list)
{
    m_hidden.clear();
    const int n = LWordCount(list, TCharSet(",;"), ewMultipleDelim);
    for (int i = 1; i <= n; ++i) {
        const QString word = LExtractWord(i, list, TCharSet(",;"), ewMultipleDelim).trimmed();
        if (!word.isEmpty()) m_hidden.insert(word);
    }
}

void TWerteTable::SetShowElements(bool show)
{
    m_showElements = show;
    ArrayDisplayMode = show ? 0 : 1;
    RecordDisplayMode = show ? 0 : 1;
}

// The expression is split into terms once; rows are then tested against the terms.
void TWerteTable::parseFilter()
{
    m_terms.clear();
    m_columnsResolved = false;
    const QString expr = m_filter;
    if (expr.trimmed().isEmpty()) return;
    int pos = 0;
    Term::Join join = Term::First;
    while (true) {
        while (pos < expr.size() && expr.at(pos) == QLatin1Char(' '))
            ++pos;
        if (pos >= expr.size()) break;
        const QString text = nextTerm(expr, pos);
        Term term;
        term.join = join;
        int opStart = 0;
        while (opStart < text.size() && !isFilterOpChar(text.at(opStart)))
            ++opStart;
        int opEnd = opStart;
        while (opEnd < text.size() && isFilterOpChar(text.at(opEnd)))
            ++opEnd;
        if (opStart < text.size()) {
            const QString op = text.mid(opStart, opEnd - opStart);
            const QChar first = op.at(0);
            const bool orEqual = op.size() > 1 && op.at(1) == QLatin1Char('=');
            term.op = first == QLatin1Char('=')   ? Term::Match
                      : first == QLatin1Char('<') ? (orEqual ? Term::LessEqual : Term::Less)
                                                  : (orEqual ? Term::GreaterEqual : Term::Greater);
            term.title = text.left(opStart).trimmed();
            // The value is the second word: it ends at the next run of operator characters.
            int valueEnd = opEnd;
            while (valueEnd < text.size() && !isFilterOpChar(text.at(valueEnd)))
                ++valueEnd;
            term.value = text.mid(opEnd, valueEnd - opEnd).trimmed().toLower();
        }
        m_terms.push_back(term);
        while (pos < expr.size() && expr.at(pos) == QLatin1Char(' '))
            ++pos;
        const QString rest = expr.mid(pos, 3).toLower();
        if (rest.startsWith(QLatin1String("and"))) {
            join = Term::And;
            pos += 3;
        } else if (rest.startsWith(QLatin1String("or"))) {
            join = Term::Or;
            pos += 2;
        } else {
            break;
        }
    }
}

// Columns are looked up once per pass, so a misspelt title is reported once, not for
// every row.
void TWerteTable::resolveFilterColumns()
{
    if (m_columnsResolved) return;
    for (Term &term : m_terms) {
        if (term.op != Term::None)
            term.column = term.title.isEmpty() ? -1 : ColNoByName(term.title);
    }
    const QString level = QStringLiteral("Read-Level");
    m_levelColumn = HasColumn(level) ? ColNoByName(level) : -1;
    m_columnsResolved = true;
}

bool TWerteTable::termHolds(const Term &term, int position) const
{
    const QString cell =
        term.column < 0 ? QStringLiteral("?") : CellAt(position, term.column).trimmed().toLower();
    switch (term.op) {
    case Term::Match:
        return WildComp(term.value, cell);
    case Term::Less:
        return cell < term.value;
    case Term::LessEqual:
        return cell <= term.value;
    case Term::Greater:
        return cell > term.value;
    case Term::GreaterEqual:
        return cell >= term.value;
    case Term::None:
        break;
    }
    return false;
}

bool TWerteTable::evaluateFilter(int position) const
{
    bool result = true;
    for (const Term &term : m_terms) {
        if (term.op == Term::None) continue; // a term without operator leaves the result as it is
        const bool holds = termHolds(term, position);
        if (term.join == Term::First)
            result = holds;
        else if (term.join == Term::And)
            result = result && holds;
        else
            result = result || holds;
    }
    return result;
}

bool TWerteTable::RowAccepted(int position)
{
    resolveFilterColumns();
    if (!m_groupFilter.isEmpty() && fGetGruppe(position).toUpper() != m_groupFilter) return false;
    const QString koord = fGetKoord(position);
    const auto elementShown = [&koord](int mode) {
        return mode <= 0 || (mode == 1 && koord.contains(QLatin1String(".0")));
    };
    if (ArrayDisplayMode > 0 && IstArrayPar(position) && !elementShown(ArrayDisplayMode))
        return false;
    if (RecordDisplayMode > 0 && IstRecordPar(position) && !elementShown(RecordDisplayMode))
        return false;
    if (OneAxis && achseColumn() >= 0 && IsInteger(CellAt(position, achseColumn())) &&
        koord == m_lastAccepted)
        return false;
    if (m_levelFilter < 99 && m_levelColumn >= 0) {
        // The conversion that decides "is an integer" also gives the value ("$A" is 10).
        int level = 0;
        if (TryStrToInt(CellAt(position, m_levelColumn).trimmed(), level) && level > m_levelFilter)
            return false;
    }
    if (!m_hidden.empty() && m_hidden.count(fGetParam(position))) return false;
    if (!m_terms.empty() && !evaluateFilter(position)) return false;
    bool accepted = true;
    if (OnFilterRecord) OnFilterRecord(position, accepted);
    if (accepted) m_lastAccepted = koord;
    return accepted;
}

int TWerteTable::GetVisibleParamCount()
{
    m_visible.clear();
    m_lastAccepted.clear();
    m_columnsResolved = false;
    for (int p = 0; p < RowCount(); ++p) {
        if (RowAccepted(p)) m_visible.push_back(p);
    }
    return int(m_visible.size());
}

std::vector<int> TWerteTable::visibleRowsForExport() const
{
    std::vector<int> rows;
    rows.reserve(m_visible.size());
    for (const int p : m_visible)
        rows.push_back(RowOfPosition(p));
    return rows;
}

int TWerteTable::visibleAt(int i) const
{
    return i >= 0 && size_t(i) < m_visible.size() ? m_visible[size_t(i)] : -1;
}

QString TWerteTable::Koordinate(int i) const
{
    const int p = visibleAt(i);
    return p < 0 ? QString() : fGetKoord(p);
}

QString TWerteTable::Achse(int i) const
{
    const int p = visibleAt(i);
    return p < 0 ? QString() : fGetAchse(p);
}

QString TWerteTable::Element(int i) const
{
    const int p = visibleAt(i);
    return p < 0 ? QString() : fGetElement(p);
}

QString TWerteTable::GetParamName(int i) const
{
    const int p = visibleAt(i);
    return p < 0 ? QString() : fGetParamName(p);
}

QString TWerteTable::GetRTFFileName(int i, const QString &suffix) const
{
    const int p = visibleAt(i);
    return p < 0 ? QString() : TImportTable::GetRTFFileName(p, suffix);
}

QString TWerteTable::ValueByColName(int i, const QString &title) const
{
    const int p = visibleAt(i);
    return p < 0 ? QString() : TImportTable::ValueByColName(p, title);
}

void TWerteTable::SetValueByColName(int i, const QString &title, const QString &value)
{
    const int p = visibleAt(i);
    if (p >= 0) TImportTable::SetValueByColName(p, title, value);
}

QString TWerteTable::orgValueByColName(int position, const QString &title) const
{
    return TImportTable::ValueByColName(position, title);
}

QString TWerteTable::ValueByKoordinate(const QString &koordinate, const QString &axis,
                                       const QString &title) const
{
    const int p = FindParam(koordinate, axis);
    return p < 0 ? QStringLiteral("?") : TImportTable::ValueByColName(p, title);
}

QString TWerteTable::GetAchsenListe(int i) const
{
    const int p = visibleAt(i);
    return p < 0 ? QString() : fGetAchsenListe(p);
}

int TWerteTable::GetArrayElementCount(int i) const
{
    const int p = visibleAt(i);
    return p < 0 ? 0 : TImportTable::GetArrayElementCount(p);
}

int TWerteTable::GetAnzGruppen()
{
    const QString saved = m_groupFilter;
    m_groupFilter.clear();
    GetVisibleParamCount();
    m_groups.clear();
    for (const int p : m_visible) {
        const QString g = fGetGruppe(p);
        if (m_groups.empty() || m_groups.back() != g) m_groups.push_back(g);
    }
    m_groupFilter = saved;
    return int(m_groups.size());
}

QString TWerteTable::GetGruppe(int i) const
{
    return i >= 0 && size_t(i) < m_groups.size() ? m_groups[size_t(i)] : QString();
}

} // namespace drivewiz
