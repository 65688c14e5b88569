#include "tables/ArrayGroups_p.h"

#include "util/Divers.h"

#include <QByteArray>
#include <QStringList>

#include <charconv>
#include <cmath>
#include <limits>

namespace drivewiz::tables {

void splitCsvLine(QStringView line, QChar delimiter, std::vector<QStringView> &fields,
                  std::vector<QString> &unquoted)
{
    fields.clear();
    unquoted.clear();
    const qsizetype n = line.size();
    qsizetype i = 0;
    while (true) {
        while (i < n && line[i] == QLatin1Char(' ') && delimiter != QLatin1Char(' '))
            ++i;
        if (i < n && line[i] == QLatin1Char('"')) {
            // A quoted field: up to the closing quote; "" inside stands for one quote.
            QString text;
            qsizetype j = i + 1;
            while (j < n) {
                if (line[j] == QLatin1Char('"')) {
                    if (j + 1 < n && line[j + 1] == QLatin1Char('"')) {
                        text += QLatin1Char('"');
                        j += 2;
                        continue;
                    }
                    break;
                }
                text += line[j++];
            }
            unquoted.push_back(std::move(text));
            fields.push_back(QStringView(unquoted.back()));
            i = j + 1;
            while (i < n && line[i] != delimiter)
                ++i; // whatever follows the closing quote up to the delimiter is dropped
        } else {
            qsizetype j = i;
            while (j < n && line[j] != delimiter)
                ++j;
            fields.push_back(line.mid(i, j - i).trimmed());
            i = j;
        }
        if (i >= n) break;
        ++i; // the delimiter
    }
}

QChar detectDelimiter(QStringView titleLine)
{
    if (titleLine.contains(QLatin1Char(';'))) return QLatin1Char(';');
    if (titleLine.contains(QLatin1Char('\t'))) return QLatin1Char('\t');
    return QLatin1Char(',');
}

namespace {

constexpr double kPow10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                             1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                             1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

bool slowNumber(const char *begin, const char *end, double &value)
{
    QByteArray text(begin, end - begin);
    text.replace(',', '.');
    bool ok = false;
    value = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(value);
}

} // namespace

bool parseNumber(const char *begin, const char *end, double &value)
{
    const char *p = begin;
    while (p < end && *p == ' ')
        ++p;
    while (end > p && (end[-1] == ' ' || end[-1] == '\r'))
        --end;
    if (p == end) return false;
    const char *start = p;
    bool negative = false;
    if (*p == '-' || *p == '+') negative = *p++ == '-';
    quint64 mantissa = 0;
    int digits = 0;
    int fraction = 0;
    bool point = false;
    bool anyDigit = false;
    for (; p < end; ++p) {
        const char c = *p;
        if (c >= '0' && c <= '9') {
            anyDigit = true;
            if (mantissa == 0 && c == '0' && !point) continue; // leading zeros
            if (digits >= 15) return slowNumber(start, end, value);
            mantissa = mantissa * 10 + quint64(c - '0');
            ++digits;
            if (point) ++fraction;
        } else if ((c == '.' || c == ',') && !point) {
            point = true;
        } else if (c == 'e' || c == 'E') {
            return slowNumber(start, end, value);
        } else {
            return false;
        }
    }
    if (!anyDigit) return false; // "-", ".", ","
    // Up to 15 digits and a power of ten up to 22 are exact in a double: one division
    // gives the correctly rounded value.
    value = double(mantissa) / kPow10[fraction];
    if (negative) value = -value;
    return true;
}

bool parseNumber(QStringView text, double &value)
{
    char buffer[64];
    const qsizetype n = text.size();
    if (n == 0) return false;
    if (n >= qsizetype(sizeof buffer)) {
        const QByteArray latin = text.toLatin1();
        return slowNumber(latin.constData(), latin.constData() + latin.size(), value);
    }
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x80) return false;
        buffer[i] = char(c);
    }
    return parseNumber(buffer, buffer + n, value);
}

namespace {

// Plain decimal integers, the common case, without allocating.
bool plainInteger(QStringView t, qint64 &value)
{
    qsizetype i = 0;
    const bool negative = t[0] == QLatin1Char('-');
    if (negative || t[0] == QLatin1Char('+')) ++i;
    if (i == t.size() || t.size() - i > 18) return false;
    qint64 v = 0;
    for (; i < t.size(); ++i) {
        const char16_t c = t[i].unicode();
        if (c < '0' || c > '9') return false;
        v = v * 10 + (c - '0');
    }
    value = negative ? -v : v;
    return true;
}

} // namespace

bool parseIntegerValue(QStringView text, qint64 &value)
{
    const QStringView t = text.trimmed();
    if (t.isEmpty()) return false;
    if (plainInteger(t, value)) return true;
    const QString w = t.toString();
    const QString lower = w.toLower();
    const qsizetype n = w.size();
    bool ok = false;
    value = w.toLongLong(&ok);
    if (ok) return true;
    if (n >= 3 && lower.indexOf(QLatin1String("bin")) == n - 3) {
        value = BinToDec(w);
        return true;
    }
    if (n >= 3 && lower.indexOf(QLatin1String("hex")) == n - 3) {
        value = quint32(HexToInt(w.left(n - 3)));
        return true;
    }
    if (n >= 2 && lower.endsWith(QLatin1Char('h')) && w.at(n - 2).isDigit() &&
        w.at(n - 2).unicode() < 0x80) {
        value = quint32(HexToInt(w));
        return true;
    }
    double d = 0;
    if (!parseNumber(t, d) || std::fabs(d) > 9.2e18) return false;
    value = qint64(std::nearbyint(d)); // the default rounding mode: halves to even
    return true;
}

ElementValues::Kind classifyValue(QStringView text, quint32 &value)
{
    value = 0;
    if (text.isEmpty()) return ElementValues::Empty;
    qint64 parsed = 0;
    const bool ok = parseIntegerValue(text, parsed);
    value = quint32(parsed);
    if (!ok || parsed < std::numeric_limits<qint32>::min() ||
        parsed > std::numeric_limits<quint32>::max())
        return ElementValues::Other;
    char digits[16];
    const auto [end, ec] = std::to_chars(digits, digits + sizeof digits, parsed);
    Q_UNUSED(ec)
    if (text.size() != end - digits) return ElementValues::Other;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].unicode() != char16_t(digits[i])) return ElementValues::Other;
    }
    return parsed > std::numeric_limits<qint32>::max() ? ElementValues::Unsigned
                                                        : ElementValues::Signed;
}

QString qtFileFilter(const QString &filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString text = parts.at(i);
        const QStringList patterns = parts.at(i + 1).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        const qsizetype open = text.indexOf(QLatin1Char('('));
        const qsizetype close = text.lastIndexOf(QLatin1Char(')'));
        if (open < 0 || close < open) {
            text += QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
        } else {
            QStringList shown = text.mid(open + 1, close - open - 1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
            for (const QString &pattern : patterns) {
                if (!shown.contains(pattern)) shown << pattern;
            }
            text = text.left(open + 1) + shown.join(QLatin1Char(' ')) + text.mid(close);
        }
        out << text;
    }
    return out.join(QStringLiteral(";;"));
}

} // namespace drivewiz::tables
