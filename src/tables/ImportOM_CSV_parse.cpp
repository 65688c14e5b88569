// Reading measurement files: meta lines, titles, units, then the samples as bytes.

#include "tables/ImportOM_CSV_p.h"

#include "paramtable/ParaTable.h"
#include "paramtable/coordinates.h"
#include "platform/textcodec.h"
#include "tables/ArrayGroups_p.h"

#include <cmath>
#include <cstring>

namespace drivewiz::tables {

namespace {

constexpr qsizetype kMaxLineBytes = 1000000;

struct Line
{
    const char *begin;
    const char *end;
};

bool isBlank(Line l)
{
    for (const char *p = l.begin; p < l.end; ++p) {
        if (*p != ' ' && *p != '\t') return false;
    }
    return true;
}

// Milliseconds per time unit; 0 for one we do not know.
double msPerUnit(const QString &unit)
{
    const QString u = unit.trimmed().toLower();
    if (u == QLatin1String("ms")) return 1;
    if (u == QLatin1String("s") || u == QLatin1String("sec")) return 1000;
    if (u == QLatin1String("us") || u == QString::fromUtf8("µs")) return 0.001;
    return 0;
}

// "Abtastzeit: 1 ms", "Sampling time;0.5;ms", "Abtastzeit [ms];2": the value and its unit.
bool samplingLine(const QString &text, double &value, QString &unit)
{
    static const char *const keys[] = {"abtastzeit", "sampling time", "sample time",
                                       "samplingtime", "sampletime"};
    const QString lower = text.trimmed().toLower();
    for (const char *key : keys) {
        if (!lower.startsWith(QLatin1String(key))) continue;
        QString rest = text.trimmed().mid(qsizetype(std::strlen(key))).trimmed();
        if (rest.startsWith(QLatin1Char('['))) { // "[ms]" after the key
            const qsizetype close = rest.indexOf(QLatin1Char(']'));
            unit = rest.mid(1, close - 1).trimmed();
            rest = rest.mid(close + 1);
        }
        rest.replace(QLatin1Char(';'), QLatin1Char(' ')).replace(QLatin1Char('\t'), QLatin1Char(' '));
        rest = rest.trimmed();
        while (rest.startsWith(QLatin1Char(':')) || rest.startsWith(QLatin1Char('=')) ||
               rest.startsWith(QLatin1Char(',')))
            rest = rest.mid(1).trimmed();
        qsizetype n = 0;
        while (n < rest.size() && (rest.at(n).isDigit() || rest.at(n) == QLatin1Char('.') ||
                                   rest.at(n) == QLatin1Char(',')))
            ++n;
        if (!parseNumber(QStringView(rest).left(n), value) || value <= 0) return false;
        const QString after = rest.mid(n).trimmed();
        if (!after.isEmpty()) unit = after;
        return true;
    }
    return false;
}

// "E08 Drehzahl [rpm]": title "E08 Drehzahl", unit "rpm", coordinate "E08".
void splitTitle(const QString &cell, QString &title, QString &unit, QString &koordinate)
{
    title = cell.trimmed();
    if (title.endsWith(QLatin1Char(']'))) {
        const qsizetype open = title.lastIndexOf(QLatin1Char('['));
        if (open >= 0) {
            unit = title.mid(open + 1, title.size() - open - 2).trimmed();
            title = title.left(open).trimmed();
        }
    }
    const QString first = title.section(QLatin1Char(' '), 0, 0);
    koordinate = IsKoordinate(first) ? first.toUpper() : QString();
}

class Parser
{
public:
    Parser(const QByteArray &bytes, ParsedMeasurement &out, MeasurementError &error)
        : m_bytes(bytes), m_out(out), m_error(error)
    {}
    bool run();

private:
    bool fail(int line, int column, const QString &text)
    {
        m_error = {line, column, text};
        return false;
    }
    bool nextLine(Line &line);
    bool header(Line line);
    bool unitLine(Line line, bool &wasUnits);
    bool sample(Line line);

    const QByteArray &m_bytes;
    ParsedMeasurement &m_out;
    MeasurementError &m_error;
    qsizetype m_pos = 0;
    int m_lineNo = 0;
    char m_delimiter = ';';
    bool m_hasTime = true;
    int m_columns = 0;
    std::vector<QString> m_units;
};

bool Parser::nextLine(Line &line)
{
    const qsizetype size = m_bytes.size();
    if (m_pos >= size) return false;
    const char *data = m_bytes.constData();
    const char *nl = static_cast<const char *>(std::memchr(data + m_pos, '\n', size_t(size - m_pos)));
    const qsizetype end = nl ? nl - data : size;
    line = {data + m_pos, data + end};
    if (line.end > line.begin && line.end[-1] == '\r') --line.end;
    m_pos = end + 1;
    ++m_lineNo;
    return true;
}

bool Parser::header(Line line)
{
    const QString text = decodeText(QByteArray(line.begin, line.end - line.begin));
    const QChar delimiter = detectDelimiter(text);
    m_delimiter = char(delimiter.unicode());
    std::vector<QStringView> fields;
    std::vector<QString> unquoted;
    splitCsvLine(text, delimiter, fields, unquoted);
    while (!fields.empty() && fields.back().isEmpty())
        fields.pop_back();
    m_columns = int(fields.size());
    std::vector<QString> titles, units, coords;
    for (const QStringView f : fields) {
        QString title, unit, koord;
        splitTitle(f.toString(), title, unit, koord);
        titles.push_back(title);
        units.push_back(unit);
        coords.push_back(koord);
    }
    // With a sampling time a file may leave out the time column.
    m_hasTime = !(m_out.samplingTime > 0 && m_columns > 0 && !coords[0].isEmpty());
    const int first = m_hasTime ? 1 : 0;
    if (m_columns - first < 1)
        return fail(m_lineNo, m_columns + 1, QStringLiteral("keine Messkanäle in der Titelzeile"));
    if (m_hasTime) {
        m_out.xTitle = titles[0];
        m_out.xUnit = units[0];
    }
    for (int c = first; c < m_columns; ++c) {
        TImportOM_CSV::Channel ch;
        ch.title = titles[size_t(c)].isEmpty() ? QStringLiteral("%1").arg(c + 1) : titles[size_t(c)];
        ch.koordinate = coords[size_t(c)];
        ch.name = ch.title;
        ch.unit = units[size_t(c)];
        m_out.channels.push_back(std::move(ch));
    }
    return true;
}

// The line after the titles holds units when none of its fields is a number (a data line
// with one bad value still has numbers in it, and is reported as such).
bool Parser::unitLine(Line line, bool &wasUnits)
{
    wasUnits = false;
    const QString text = decodeText(QByteArray(line.begin, line.end - line.begin));
    std::vector<QStringView> fields;
    std::vector<QString> unquoted;
    splitCsvLine(text, QLatin1Char(m_delimiter), fields, unquoted);
    double v = 0;
    bool anyText = false;
    for (const QStringView f : fields) {
        if (f.isEmpty()) continue;
        if (parseNumber(f, v)) return true;
        anyText = true;
    }
    wasUnits = anyText;
    if (!wasUnits) return true;
    const int first = m_hasTime ? 1 : 0;
    for (int c = 0; c < int(fields.size()) && c < m_columns; ++c) {
        QString unit = fields[size_t(c)].toString();
        if (unit.startsWith(QLatin1Char('[')) && unit.endsWith(QLatin1Char(']')))
            unit = unit.mid(1, unit.size() - 2).trimmed();
        if (unit.isEmpty()) continue;
        if (c < first)
            m_out.xUnit = m_out.xUnit.isEmpty() ? unit : m_out.xUnit;
        else if (m_out.channels[size_t(c - first)].unit.isEmpty())
            m_out.channels[size_t(c - first)].unit = unit;
    }
    return true;
}

bool Parser::sample(Line line)
{
    const char *p = line.begin;
    const int first = m_hasTime ? 1 : 0;
    const size_t index = m_out.channels.empty() ? 0 : m_out.channels[0].y.size();
    for (int c = 0; c < m_columns; ++c) {
        const char *end = static_cast<const char *>(std::memchr(p, m_delimiter, size_t(line.end - p)));
        const bool last = !end;
        if (last) end = line.end;
        if (last && c + 1 < m_columns)
            return fail(m_lineNo, c + 2, QStringLiteral("zu wenige Werte (%1 Spalten erwartet)").arg(m_columns));
        const char *b = p;
        const char *e = end;
        if (b < e && *b == '"' && e[-1] == '"' && e - b >= 2) ++b, --e;
        double v = 0;
        if (!parseNumber(b, e, v))
            return fail(m_lineNo, c + 1, QStringLiteral("\"%1\" ist keine Zahl")
                                              .arg(decodeText(QByteArray(p, qsizetype(end - p)).left(40))));
        if (c < first) {
            if (!m_out.x.empty() && v < m_out.x.back())
                return fail(m_lineNo, 1, QStringLiteral("die Zeit nimmt ab"));
            m_out.x.push_back(v);
        } else {
            m_out.channels[size_t(c - first)].y.push_back(v);
        }
        p = last ? line.end : end + 1;
    }
    // Separators at the end of a line hold nothing; values there are one column too many.
    for (const char *q = p; q < line.end; ++q) {
        if (*q != m_delimiter && *q != ' ')
            return fail(m_lineNo, m_columns + 1, QStringLiteral("zu viele Werte (%1 Spalten erwartet)").arg(m_columns));
    }
    if (!m_hasTime) m_out.x.push_back(double(index) * m_out.samplingTime);
    return true;
}

bool Parser::run()
{
    if (m_bytes.startsWith("\xEF\xBB\xBF")) m_pos = 3;
    Line line{};
    QString samplingUnit;
    bool haveHeader = false;
    bool unitsChecked = false;
    while (nextLine(line)) {
        if (line.end - line.begin > kMaxLineBytes)
            return fail(m_lineNo, 0, QStringLiteral("die Zeile ist länger als %1 Zeichen").arg(kMaxLineBytes));
        if (isBlank(line)) continue;
        if (!haveHeader) {
            if (*line.begin == '#') continue;
            const QString text = decodeText(QByteArray(line.begin, line.end - line.begin));
            double dt = 0;
            if (samplingLine(text, dt, samplingUnit)) {
                m_out.samplingTime = dt;
                continue;
            }
            if (!header(line)) return false;
            haveHeader = true;
            continue;
        }
        if (!unitsChecked) {
            unitsChecked = true;
            bool wasUnits = false;
            if (!unitLine(line, wasUnits)) return false;
            if (wasUnits) continue;
            // A file of 70 MB has a million lines like the first: room for them at once.
            const size_t estimate = size_t(m_bytes.size() / std::max<qsizetype>(line.end - line.begin + 1, 2));
            m_out.x.reserve(estimate);
            for (auto &ch : m_out.channels)
                ch.y.reserve(estimate);
        }
        if (!sample(line)) return false;
    }
    if (!haveHeader) return fail(0, 0, QStringLiteral("die Datei hat keine Titelzeile"));
    if (m_out.x.empty()) return fail(0, 0, QStringLiteral("die Datei enthält keine Messwerte"));
    if (!m_hasTime && m_out.xUnit.isEmpty()) m_out.xUnit = samplingUnit.isEmpty() ? QStringLiteral("ms") : samplingUnit;
    // The sampling time in the unit of the time column.
    const double from = msPerUnit(samplingUnit.isEmpty() ? m_out.xUnit : samplingUnit);
    const double to = msPerUnit(m_out.xUnit);
    if (m_hasTime && from > 0 && to > 0) m_out.samplingTime *= from / to;
    for (auto &ch : m_out.channels) {
        ch.min = ch.y.empty() ? 0 : ch.y.front();
        ch.max = ch.min;
        for (const double v : ch.y) {
            ch.min = std::min(ch.min, v);
            ch.max = std::max(ch.max, v);
        }
    }
    return true;
}

} // namespace

bool parseMeasurement(const QByteArray &bytes, ParsedMeasurement &out, MeasurementError &error)
{
    out = ParsedMeasurement();
    return Parser(bytes, out, error).run();
}

} // namespace drivewiz::tables
