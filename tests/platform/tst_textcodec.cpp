#include "platform/textcodec.h"

#include <gtest/gtest.h>

using namespace drivewiz;

namespace {

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(v));
    return out;
}

} // namespace

TEST(TextCodec, EveryHighByteSurvivesARoundTripThroughWindows1252)
{
    for (int b = 0x80; b <= 0xFF; ++b) {
        const QByteArray one = bytes({'x', b});
        const QString text = decodeText(one);
        ASSERT_EQ(text.size(), 2) << b;
        EXPECT_EQ(encodeWindows1252(text), one) << b;
    }
}

TEST(TextCodec, Windows1252UsesItsOwnTableForTheC1Range)
{
    EXPECT_EQ(decodeText(bytes({0x80})), QString(QChar(0x20AC)));
    EXPECT_EQ(decodeText(bytes({0x84, 0x93, 0x94})), QStringLiteral("\u201E\u201C\u201D"));
    EXPECT_EQ(decodeText(bytes({0x9F})), QString(QChar(0x0178)));
    for (int undefined : {0x81, 0x8D, 0x8F, 0x90, 0x9D})
        EXPECT_EQ(decodeText(bytes({undefined})), QString(QChar(undefined))) << undefined;
    EXPECT_EQ(decodeText(bytes({'M', 0xFC, 'l', 'l'})), QStringLiteral("Müll"));
    EXPECT_EQ(decodeText(bytes({0xA0, 0xFF})), QStringLiteral("\u00A0\u00FF"));
}

TEST(TextCodec, ValidUtf8IsDecodedAsUtf8AndItsBomDropped)
{
    EXPECT_EQ(decodeText("Gr\xC3\xB6\xC3\x9F"
                         "e \xE2\x82\xAC \xF0\x9F\x98\x80"),
              QStringLiteral("Größe € \U0001F600"));
    EXPECT_EQ(decodeText("\xEF\xBB\xBF"
                         "abc"),
              QStringLiteral("abc"));
    EXPECT_EQ(decodeText("\xEF\xBB\xBF"), QString());
    EXPECT_EQ(decodeText(QByteArray()), QString());
    // Only the first mark is dropped: a second one is a character of the text.
    EXPECT_EQ(decodeText("\xEF\xBB\xBF\xEF\xBB\xBF\xC3\xA4"), QStringLiteral("\uFEFFä"));
}

TEST(TextCodec, OneInvalidSequenceMakesTheWholeTextWindows1252)
{
    // "ö" in UTF-8 followed by a lone 1252 "ü": the file is not UTF-8.
    EXPECT_EQ(decodeText("\xC3\xB6 \xFC"), QStringLiteral("Ã¶ ü"));
    // The BOM is never content, even when the rest is not UTF-8.
    EXPECT_EQ(decodeText("\xEF\xBB\xBF\xE4"), QStringLiteral("ä"));
}

TEST(TextCodec, Utf8ValidationRejectsMalformedSequences)
{
    const char *invalid[] = {
        "\xC0\xAF",                    // overlong "/"
        "\xE0\x80\xAF",                // overlong, three bytes
        "\xED\xA0\x80",                // surrogate
        "\xF4\x90\x80\x80",            // above U+10FFFF
        "\xF5\x80\x80\x80", "\xC3",    // cut off
        "\xE2\x82",         "\x80",    // lone continuation
        "abcdefgh\xFF",     "\xC3\x28" // bad continuation
    };
    for (const char *s : invalid)
        EXPECT_FALSE(isValidUtf8(s, qsizetype(strlen(s)))) << QByteArray(s).toHex().data();
    const char *valid[] = {"",
                           "plain ASCII longer than eight bytes",
                           "\xC2\x80",
                           "\xEF\xBF\xBF",
                           "\xF4\x8F\xBF\xBF",
                           "\xE0\xA0\x80",
                           "\xED\x9F\xBF"};
    for (const char *s : valid)
        EXPECT_TRUE(isValidUtf8(s, qsizetype(strlen(s)))) << QByteArray(s).toHex().data();
    EXPECT_TRUE(isValidUtf8(nullptr, 0));
}

TEST(TextCodec, NulBytesAreKept)
{
    const QByteArray withNul("a\0b", 3);
    EXPECT_EQ(decodeText(withNul), QString::fromLatin1("a\0b", 3));
    const QByteArray withNul1252("\xE4\0\xF6", 3);
    EXPECT_EQ(decodeText(withNul1252), QStringLiteral("ä") + QChar(0) + QStringLiteral("ö"));
    EXPECT_EQ(encodeWindows1252(decodeText(withNul1252)), withNul1252);
}

TEST(TextCodec, EncodingMarksWhatWindows1252CannotHold)
{
    EXPECT_EQ(encodeWindows1252(QStringLiteral("€ äß")), bytes({0x80, ' ', 0xE4, 0xDF}));
    EXPECT_EQ(encodeWindows1252(QStringLiteral("Ж\U0001F600x")), QByteArray("??x"));
    // C1 controls that Windows-1252 uses for printable characters cannot be written.
    EXPECT_EQ(encodeWindows1252(QString(QChar(0x80))), QByteArray("?"));
    EXPECT_EQ(encodeUtf8(QStringLiteral("ä€")), QByteArray("\xC3\xA4\xE2\x82\xAC"));
    EXPECT_EQ(decodeWindows1252("\xEF\xBB\xBF"), QStringLiteral("ï»¿"));
}

TEST(TextCodec, LongAsciiTextsWithALateHighByte)
{
    QByteArray text(100000, 'a');
    EXPECT_EQ(decodeText(text), QString(100000, QLatin1Char('a')));
    text.append("\xC3\xA4");
    EXPECT_EQ(decodeText(text).right(2), QStringLiteral("aä"));
    text.append('\xE4');
    EXPECT_EQ(decodeText(text).right(3), QStringLiteral("Ã¤ä"));
}
