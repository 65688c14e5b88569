#ifndef DRIVEWIZ_PLATFORM_CONVERT_H
#define DRIVEWIZ_PLATFORM_CONVERT_H

#include "drivewiz_global.h"

#include <QString>

#include <cstdint>
#include <stdexcept>

namespace drivewiz {

/// Raised by the typed conversions when a text does not convert. Its message is the
/// German text a user of the drive tool knows ("'abc' ist kein gültiger Integerwert").
class DRIVEWIZ_EXPORT ConvertError : public std::runtime_error
{
public:
    explicit ConvertError(const QString &message);
    QString message() const { return m_message; }

private:
    QString m_message;
};

/// The decimal separator used by every float conversion and by the validation of typed
/// values. Defaults to the system locale's; tests and hosts may set it.
DRIVEWIZ_EXPORT QChar DecimalSeparator();
DRIVEWIZ_EXPORT void SetDecimalSeparator(QChar separator);

/// Integer text to number: leading blanks, an optional sign, decimal digits or "$"/"0x"
/// followed by hex digits. Anything else (trailing blanks included) or a value outside
/// 32 bits raises ConvertError. Hex values up to $FFFFFFFF wrap to negative numbers.
DRIVEWIZ_EXPORT int StrToInt(const QString &text);
DRIVEWIZ_EXPORT bool TryStrToInt(const QString &text, int &value);
DRIVEWIZ_EXPORT int StrToIntDef(const QString &text, int defaultValue);
/// The same for 64 bits.
DRIVEWIZ_EXPORT qint64 StrToInt64(const QString &text);
DRIVEWIZ_EXPORT bool TryStrToInt64(const QString &text, qint64 &value);

/// Float text to number: surrounding blanks, optional sign, digits with at most one
/// DecimalSeparator(), optional exponent ("1,5E-3"). No thousands separators, no "." when
/// the separator is ",". Raises ConvertError on anything else or on overflow.
DRIVEWIZ_EXPORT double StrToFloat(const QString &text);
DRIVEWIZ_EXPORT bool TryStrToFloat(const QString &text, double &value);

enum class FloatFormat { General, Exponent, Fixed, Number };

/// Shortest text of 15 significant digits: fixed notation for exponents from -4 to 15
/// ("0,0001", "123456789012345"), else exponent notation ("1E-5", "1,5E20").
DRIVEWIZ_EXPORT QString FloatToStr(double value);
/// Formats with the given significant digits (precision, 1..17) and decimals (digits,
/// 0..18). Fixed: exactly `digits` decimals; Number: the same with thousands separators;
/// Exponent: `precision` digits and an exponent of at least `digits` digits ("1,50E+003");
/// General: as FloatToStr with `precision` digits. The value is first taken to `precision`
/// significant digits, then to `digits` decimals, each time rounding half away from zero.
DRIVEWIZ_EXPORT QString FloatToStrF(double value, FloatFormat format, int precision, int digits);

/// Rounds to the nearest integer, halves to the even neighbour (2.5 -> 2, 3.5 -> 4).
/// Values beyond 64 bits saturate.
DRIVEWIZ_EXPORT qint64 Round(double value);
/// Cuts the fraction off (towards zero); saturates like Round.
DRIVEWIZ_EXPORT qint64 Trunc(double value);

DRIVEWIZ_EXPORT QString IntToStr(qint64 value);
/// Upper-case hex digits of the value, padded with "0" to at least `digits`.
DRIVEWIZ_EXPORT QString IntToHex(quint64 value, int digits);

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_CONVERT_H
