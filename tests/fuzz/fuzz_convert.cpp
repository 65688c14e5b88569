// Conversions: typed text to numbers and back. Every finite double reads back from its
// text in every format that is meant to be read; integers agree with an independent
// parse; rounding halves to even.

#include "fuzz_support.h"

#include "platform/convert.h"
#include "util/Divers.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

using namespace drivewiz;

namespace {

// The integer grammar, independently: blanks, sign, decimal or "$"/"0x" hex; hex fills
// the unsigned width and wraps.
bool referenceInt(const QString &text, int bits, qint64 &out)
{
    QByteArray t = text.toUtf8();
    int i = 0;
    while (i < t.size() && t[i] == ' ')
        ++i;
    bool negative = false;
    if (i < t.size() && (t[i] == '-' || t[i] == '+')) negative = t[i++] == '-';
    int base = 10;
    if (i < t.size() && t[i] == '$') {
        base = 16;
        ++i;
    } else if (i + 1 < t.size() && t[i] == '0' && (t[i + 1] == 'x' || t[i + 1] == 'X')) {
        base = 16;
        i += 2;
    }
    const QByteArray digits = t.mid(i);
    if (digits.isEmpty()) return false;
    for (const char c : digits) {
        if (!(std::isdigit(uchar(c)) || (base == 16 && std::isxdigit(uchar(c))))) return false;
    }
    unsigned __int128 v = 0;
    for (const char c : digits) {
        v = v * unsigned(base) + unsigned(std::isdigit(uchar(c)) ? c - '0' : (c | 0x20) - 'a' + 10);
        if (v > (unsigned __int128)1 << 64) return false;
    }
    const unsigned __int128 limit = base == 16
                                        ? ((unsigned __int128)1 << bits) - 1
                                        : ((unsigned __int128)1 << (bits - 1)) - (negative ? 0 : 1);
    if (v > limit) return false;
    quint64 u = quint64(v);
    if (base == 16 && bits == 32) u = quint64(qint64(qint32(quint32(u))));
    out = negative ? qint64(0 - u) : qint64(u);
    return true;
}

void checkDouble(double v)
{
    if (!std::isfinite(v)) return;
    for (const QChar sep : {QLatin1Char('.'), QLatin1Char(',')}) {
        SetDecimalSeparator(sep);
        const QString general = FloatToStr(v);
        double back = 0;
        FUZZ_CHECK(TryStrToFloat(general, back), general);
        FUZZ_CHECK(FloatToStr(back) == general, general);
        FUZZ_CHECK(std::fabs(back - v) <= std::fabs(v) * 1e-14, general);
        for (const FloatFormat f : {FloatFormat::Exponent, FloatFormat::Fixed}) {
            for (const int digits : {0, 2, 4}) {
                const QString t = FloatToStrF(v, f, 15, digits);
                FUZZ_CHECK(TryStrToFloat(t, back), t);
            }
        }
        FUZZ_CHECK(IsFloat(general) && IsFloat(TrimFloat(general)), general);
    }
    SetDecimalSeparator(QLatin1Char('.'));
    const qint64 r = Round(v);
    if (std::fabs(v) < 9e18) {
        FUZZ_CHECK(r == qint64(std::nearbyint(v)), FloatToStr(v));
        const double frac = v - std::floor(v);
        if (frac == 0.5) FUZZ_CHECK(r % 2 == 0, FloatToStr(v));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    FuzzedDataProvider in(data, size);
    double bitsValue = 0;
    const auto raw = in.ConsumeIntegral<quint64>();
    std::memcpy(&bitsValue, &raw, sizeof bitsValue);
    checkDouble(bitsValue);

    const QString text = fuzz::text(in, 64);
    int i32 = 0;
    qint64 i64 = 0, ref = 0;
    FUZZ_CHECK(TryStrToInt(text, i32) == referenceInt(text, 32, ref), text);
    if (TryStrToInt(text, i32)) {
        FUZZ_CHECK(i32 == ref, text);
        FUZZ_CHECK(IsInteger(text) && StrToInt(IntToStr(i32)) == i32, text);
    }
    FUZZ_CHECK(TryStrToInt64(text, i64) == referenceInt(text, 64, ref), text);
    if (TryStrToInt64(text, i64)) FUZZ_CHECK(i64 == ref, text);

    for (const QChar sep : {QLatin1Char('.'), QLatin1Char(',')}) {
        SetDecimalSeparator(sep);
        double v = 0;
        if (TryStrToFloat(text, v)) {
            FUZZ_CHECK(std::isfinite(v) && IsFloat(text), text);
            checkDouble(v);
        }
        SetDecimalSeparator(sep);
        // A text the user may type reads the same whichever separator it was typed with.
        if (TryStrToFloat(text, v)) {
            double w = 0;
            FUZZ_CHECK(TryStrToFloat(TrimFloat(text), w) && w == v, text);
        }
    }
    SetDecimalSeparator(QLatin1Char('.'));
    return 0;
}
