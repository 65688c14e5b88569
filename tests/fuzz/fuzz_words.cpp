// Words and numbers of the text utilities against references written from their
// definitions: words in single and multiple delimiter mode, hexadecimal and binary
// digits, flags; and the round trips between them.

#include "fuzz_support.h"

#include "platform/convert.h"
#include "util/Divers.h"

using namespace drivewiz;

namespace {

// Words as defined: at the start of each word one delimiter is skipped (all of a run in
// multiple mode); a word runs up to the next delimiter.
QStringList referenceWords(const QString &s, const QString &delims, TExtractWordMode mode)
{
    const auto delim = [&delims](QChar c) { return c.unicode() < 256 && delims.contains(c); };
    QStringList words;
    qsizetype i = 0;
    for (;;) {
        if (mode == ewMultipleDelim) {
            while (i < s.size() && delim(s.at(i)))
                ++i;
        } else if (i < s.size() && delim(s.at(i))) {
            ++i;
        }
        if (i >= s.size()) break;
        const qsizetype start = i;
        while (i < s.size() && !delim(s.at(i)))
            ++i;
        words << s.mid(start, i - start);
    }
    return words;
}

quint32 referenceDigits(const QString &s, int base)
{
    quint32 v = 0;
    for (const QChar c : s.toUpper()) {
        const char16_t u = c.unicode();
        const int d = u >= '0' && u <= '9' ? u - '0' : u >= 'A' && u <= 'F' ? u - 'A' + 10 : 99;
        if (d < base) v = v * quint32(base) + quint32(d);
    }
    return v;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    FuzzedDataProvider in(data, size);
    const QString delims = fuzz::text(in, 4);
    const TExtractWordMode mode = in.ConsumeBool() ? ewMultipleDelim : ewSingleDelim;
    const quint32 number = in.ConsumeIntegral<quint32>();
    const int width = in.ConsumeIntegralInRange(0, 40);
    const QString s = fuzz::text(in, 300);

    const QStringList words = referenceWords(s, delims, mode);
    const TCharSet set(delims);
    FUZZ_CHECK(LWordCount(s, set, mode) == words.size(), s);
    for (int n = 0; n <= words.size() + 1; ++n)
        FUZZ_CHECK(LExtractWord(n, s, set, mode) == (n >= 1 ? words.value(n - 1) : QString()), s);

    FUZZ_CHECK(quint32(HexToInt(s)) == referenceDigits(s, 16), s);
    FUZZ_CHECK(quint32(BinToDec(s)) == referenceDigits(s, 2), s);
    const QString bin = DecToBin(number, width);
    FUZZ_CHECK(quint32(BinToDec(bin)) == number && bin.endsWith(QLatin1String("bin")), bin);
    const int digits = number ? 32 - int(qCountLeadingZeroBits(number)) : 0;
    FUZZ_CHECK(bin.size() == qMax(width, digits) + 3, bin);
    FUZZ_CHECK(quint32(HexToInt(IntToHex(number, width))) == number, s);

    const QString flag =
        s.contains(u':') ? referenceWords(s, QStringLiteral(":"), ewSingleDelim).value(0) : s;
    const QString f = flag.trimmed().toUpper();
    FUZZ_CHECK(StrToBool(s) == (f == QLatin1String("1") || f == QLatin1String("TRUE") ||
                                f == QLatin1String("WAHR")),
               s);
    int value = 0;
    FUZZ_CHECK(IsInteger(s) == (!s.trimmed().isEmpty() && TryStrToInt(s.trimmed(), value)), s);
    const QString bits = IntToBitCount(s); // any text: unchanged, a number or "n Bit"
    if (!IsInteger(s) && s != QLatin1String("-2147483648")) FUZZ_CHECK(bits == s, s);
    try {
        const int mask = GetBitMaske(s);
        FUZZ_CHECK(mask == 0 || (mask & (mask - 1)) == 0, s); // one bit at most
    } catch (const ConvertError &) {
        // no number: the conversion's own error, as the drive tool gives it
    }
    QString blanks = s;
    EntferneBlanks(blanks);
    FUZZ_CHECK(!blanks.contains(u' ') && blanks == QString(s).remove(u' '), s);
    return 0;
}
