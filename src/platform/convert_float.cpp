// Float-to-text formatting with the drive tool's rules: digits are taken from the exact
// binary value and rounded half away from zero, unlike printf which halves to even.

#include "platform/convert.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace drivewiz {

namespace {

constexpr int kUnlimited = 100000;
constexpr int kExactDigits = 40;

// value = 0.digits * 10^exponent; empty digits means zero.
struct Decimal
{
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

// Rounds a digit string half up at position n (0-based digits kept); returns the carry.
bool roundDigits(std::string &digits, int n)
{
    const bool up = n < int(digits.size()) && digits[size_t(n)] >= '5';
    digits.resize(size_t(std::max(n, 0)));
    if (!up) return false;
    int i = n - 1;
    while (i >= 0 && digits[size_t(i)] == '9')
        digits[size_t(i--)] = '0';
    if (i >= 0) {
        ++digits[size_t(i)];
        return false;
    }
    digits.insert(digits.begin(), '1');
    return true;
}

// Whether 0.digits * 10^exponent reads back as a finite double.
bool readsBackFinite(const std::string &digits, int exponent)
{
    const std::string text = "0." + digits + "e" + std::to_string(exponent);
    double v = 0;
    const auto res = std::from_chars(text.data(), text.data() + text.size(), v);
    return res.ec == std::errc() && std::isfinite(v);
}

// Significant digits of |v|: first rounded to `precision` digits (what the user sees of
// the value), then to `decimals` places after the point, trailing zeros removed. Rounding
// twice keeps 1.005 at 15 digits "1.005", which then becomes "1.01" with two decimals.
Decimal toDecimal(double v, int precision, int decimals)
{
    Decimal d;
    d.negative = std::signbit(v);
    v = std::fabs(v);
    if (v == 0.0) return Decimal();
    char buf[80];
    std::snprintf(buf, sizeof buf, "%.*e", kExactDigits, v);
    d.digits.assign(1, buf[0]);
    d.digits.append(buf + 2, kExactDigits);
    d.exponent = std::atoi(std::strchr(buf, 'e') + 1) + 1;
    const Decimal exact = d;
    if (roundDigits(d.digits, precision)) ++d.exponent;
    // Rounding the largest doubles up gives a number beyond every double, which no
    // conversion reads back: those are cut instead (1.79769313486231E308).
    if (d.exponent >= 309 && !readsBackFinite(d.digits, d.exponent)) {
        d = exact;
        d.digits.resize(size_t(std::min(precision, int(d.digits.size()))));
    }
    const int places = d.exponent + std::min(decimals, kUnlimited);
    if (places < 0) return Decimal();
    if (places < int(d.digits.size()) && roundDigits(d.digits, places)) ++d.exponent;
    while (!d.digits.empty() && d.digits.back() == '0')
        d.digits.pop_back();
    if (d.digits.empty()) return Decimal();
    return d;
}

QString specialValue(double v)
{
    if (std::isnan(v)) return QStringLiteral("NAN");
    return v < 0 ? QStringLiteral("-INF") : QStringLiteral("INF");
}

char digitAt(const Decimal &d, int i)
{
    return i >= 0 && i < int(d.digits.size()) ? d.digits[size_t(i)] : '0';
}

QString exponentText(int exp, int minDigits, bool plusSign)
{
    QString s = QString::number(std::abs(exp)).rightJustified(minDigits, QLatin1Char('0'));
    if (exp < 0) return QLatin1Char('-') + s;
    return plusSign ? QLatin1Char('+') + s : s;
}

QString formatGeneral(double v, int precision, int expDigits)
{
    const Decimal d = toDecimal(v, precision, kUnlimited);
    if (d.digits.empty()) return QStringLiteral("0");
    const QChar sep = DecimalSeparator();
    QString out = d.negative ? QStringLiteral("-") : QString();
    if (d.exponent > precision || d.exponent < -3) {
        out += QLatin1Char(d.digits[0]);
        if (d.digits.size() > 1) out += sep + QString::fromLatin1(d.digits.c_str() + 1);
        return out + QLatin1Char('E') + exponentText(d.exponent - 1, expDigits, false);
    }
    if (d.exponent <= 0)
        return out + QLatin1Char('0') + sep + QString(-d.exponent, QLatin1Char('0')) +
               QString::fromLatin1(d.digits.c_str());
    for (int i = 0; i < d.exponent; ++i)
        out += QLatin1Char(digitAt(d, i));
    if (int(d.digits.size()) > d.exponent)
        out += sep + QString::fromLatin1(d.digits.c_str() + d.exponent);
    return out;
}

QString groupThousands(const QString &integer)
{
    const QChar group =
        DecimalSeparator() == QLatin1Char(',') ? QLatin1Char('.') : QLatin1Char(',');
    QString out;
    const int n = integer.size();
    for (int i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) out += group;
        out += integer.at(i);
    }
    return out;
}

QString formatFixed(double v, int precision, int digits, bool thousands)
{
    if (toDecimal(v, precision, kUnlimited).exponent > precision)
        return formatGeneral(v, precision, 0);
    const Decimal d = toDecimal(v, precision, digits);
    QString integer;
    for (int i = 0; i < std::max(d.exponent, 1); ++i)
        integer += QLatin1Char(d.exponent > 0 ? digitAt(d, i) : '0');
    if (thousands) integer = groupThousands(integer);
    QString out = d.negative && !d.digits.empty() ? QStringLiteral("-") : QString();
    out += integer;
    if (digits > 0) {
        out += DecimalSeparator();
        for (int i = 0; i < digits; ++i)
            out += QLatin1Char(digitAt(d, d.exponent + i));
    }
    return out;
}

QString formatExponent(double v, int precision, int expDigits)
{
    const Decimal d = toDecimal(v, precision, kUnlimited);
    QString out = d.negative ? QStringLiteral("-") : QString();
    out += QLatin1Char(digitAt(d, 0));
    if (precision > 1) {
        out += DecimalSeparator();
        for (int i = 1; i < precision; ++i)
            out += QLatin1Char(digitAt(d, i));
    }
    const int exp = d.digits.empty() ? 0 : d.exponent - 1;
    return out + QLatin1Char('E') + exponentText(exp, expDigits, true);
}

} // namespace

QString FloatToStr(double value)
{
    return FloatToStrF(value, FloatFormat::General, 15, 0);
}

QString FloatToStrF(double value, FloatFormat format, int precision, int digits)
{
    if (!std::isfinite(value)) return specialValue(value);
    precision = std::clamp(precision, 1, 17);
    switch (format) {
    case FloatFormat::General:
        return formatGeneral(value, precision, std::clamp(digits, 0, 4));
    case FloatFormat::Exponent:
        return formatExponent(value, precision, std::clamp(digits, 0, 4));
    case FloatFormat::Fixed:
        return formatFixed(value, precision, std::clamp(digits, 0, 18), false);
    case FloatFormat::Number:
        return formatFixed(value, precision, std::clamp(digits, 0, 18), true);
    }
    return FloatToStr(value);
}

} // namespace drivewiz
