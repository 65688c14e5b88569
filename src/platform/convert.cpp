#include "platform/convert.h"

#include <QLocale>

#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace drivewiz {

namespace {

QChar &separatorStorage()
{
    static QChar sep = [] {
        const QString point = QLocale::system().decimalPoint();
        return point.isEmpty() ? QLatin1Char('.') : point.at(0);
    }();
    return sep;
}

[[noreturn]] void throwInt(const QString &text)
{
    throw ConvertError(QStringLiteral("'%1' ist kein gültiger Integerwert").arg(text));
}

[[noreturn]] void throwFloat(const QString &text)
{
    throw ConvertError(QStringLiteral("'%1' ist kein gültiger Gleitkommawert").arg(text));
}

int hexDigit(QChar c)
{
    const ushort u = c.unicode();
    if (u >= '0' && u <= '9') return u - '0';
    if (u >= 'a' && u <= 'f') return u - 'a' + 10;
    if (u >= 'A' && u <= 'F') return u - 'A' + 10;
    return -1;
}

// Parses the integer grammar shared by StrToInt and StrToInt64. Hex digits may fill the
// whole unsigned width (so $FFFFFFFF is -1 for 32 bits); decimal must fit the signed range.
bool parseInteger(const QString &text, int bits, qint64 &out)
{
    int i = 0;
    const int n = text.size();
    while (i < n && text.at(i) == QLatin1Char(' '))
        ++i;
    bool negative = false;
    if (i < n && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+')))
        negative = text.at(i++) == QLatin1Char('-');
    int base = 10;
    if (i < n && text.at(i) == QLatin1Char('$')) {
        base = 16;
        ++i;
    } else if (i + 1 < n && text.at(i) == QLatin1Char('0') &&
               (text.at(i + 1) == QLatin1Char('x') || text.at(i + 1) == QLatin1Char('X'))) {
        base = 16;
        i += 2;
    }
    if (i >= n) return false;
    const quint64 unsignedMax =
        bits == 64 ? std::numeric_limits<quint64>::max() : (quint64(1) << bits) - 1;
    const quint64 limit =
        base == 16 ? unsignedMax : (quint64(1) << (bits - 1)) - (negative ? 0 : 1);
    quint64 value = 0;
    for (; i < n; ++i) {
        const int d = hexDigit(text.at(i));
        if (d < 0 || d >= base) return false;
        if (value > (limit - quint64(d)) / quint64(base)) return false;
        value = value * quint64(base) + quint64(d);
    }
    if (base == 16 && bits == 32) value = quint64(qint64(qint32(quint32(value))));
    out = negative ? qint64(0 - value) : qint64(value);
    return true;
}

} // namespace

ConvertError::ConvertError(const QString &message)
    : std::runtime_error(message.toStdString()), m_message(message)
{}

QChar DecimalSeparator()
{
    return separatorStorage();
}

void SetDecimalSeparator(QChar separator)
{
    separatorStorage() = separator;
}

bool TryStrToInt(const QString &text, int &value)
{
    qint64 v = 0;
    if (!parseInteger(text, 32, v)) return false;
    value = int(v);
    return true;
}

int StrToInt(const QString &text)
{
    int v = 0;
    if (!TryStrToInt(text, v)) throwInt(text);
    return v;
}

int StrToIntDef(const QString &text, int defaultValue)
{
    int v = 0;
    return TryStrToInt(text, v) ? v : defaultValue;
}

bool TryStrToInt64(const QString &text, qint64 &value)
{
    return parseInteger(text, 64, value);
}

qint64 StrToInt64(const QString &text)
{
    qint64 v = 0;
    if (!TryStrToInt64(text, v)) throwInt(text);
    return v;
}

bool TryStrToFloat(const QString &text, double &value)
{
    const QString t = text.trimmed();
    const QChar sep = DecimalSeparator();
    // Build a plain ASCII copy with '.' so the conversion does not depend on the C locale.
    std::string ascii;
    ascii.reserve(size_t(t.size()));
    int i = 0;
    const int n = t.size();
    if (i < n && (t.at(i) == QLatin1Char('+') || t.at(i) == QLatin1Char('-'))) {
        if (t.at(i) == QLatin1Char('-')) ascii += '-';
        ++i;
    }
    int mantissaDigits = 0;
    bool seenSep = false;
    for (; i < n; ++i) {
        const QChar c = t.at(i);
        if (c.unicode() >= '0' && c.unicode() <= '9') {
            ascii += char(c.unicode());
            ++mantissaDigits;
        } else if (c == sep && !seenSep) {
            ascii += '.';
            seenSep = true;
        } else {
            break;
        }
    }
    if (mantissaDigits == 0) return false;
    if (i < n && (t.at(i) == QLatin1Char('e') || t.at(i) == QLatin1Char('E'))) {
        ascii += 'e';
        ++i;
        if (i < n && (t.at(i) == QLatin1Char('+') || t.at(i) == QLatin1Char('-')))
            ascii += char(t.at(i++).unicode());
        int expDigits = 0;
        for (; i < n && t.at(i).unicode() >= '0' && t.at(i).unicode() <= '9'; ++i, ++expDigits)
            ascii += char(t.at(i).unicode());
        if (expDigits == 0) return false;
    }
    if (i != n) return false;
    double v = 0;
    const auto res = std::from_chars(ascii.data(), ascii.data() + ascii.size(), v);
    if (res.ec != std::errc() || res.ptr != ascii.data() + ascii.size() || !std::isfinite(v))
        return false;
    value = v;
    return true;
}

double StrToFloat(const QString &text)
{
    double v = 0;
    if (!TryStrToFloat(text, v)) throwFloat(text);
    return v;
}

qint64 Round(double value)
{
    if (std::isnan(value)) return 0;
    if (value >= 9.2233720368547758e18) return std::numeric_limits<qint64>::max();
    if (value <= -9.2233720368547758e18) return std::numeric_limits<qint64>::min();
    return qint64(std::nearbyint(value)); // the default rounding mode halves to even
}

qint64 Trunc(double value)
{
    if (std::isnan(value)) return 0;
    if (value >= 9.2233720368547758e18) return std::numeric_limits<qint64>::max();
    if (value <= -9.2233720368547758e18) return std::numeric_limits<qint64>::min();
    return qint64(std::trunc(value));
}

QString IntToStr(qint64 value)
{
    return QString::number(value);
}

QString IntToHex(quint64 value, int digits)
{
    return QString::number(value, 16).toUpper().rightJustified(digits, QLatin1Char('0'));
}

} // namespace drivewiz
