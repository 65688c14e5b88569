#include "platform/convert.h"
#include "support/testing.h"
#include "util/Divers.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTextEdit>

#include <algorithm>
#include <cmath>
#include <random>

using namespace drivewiz;
using drivewiz::test::recorder;

// --- Words and CSV fields ------------------------------------------------------------

TEST(DiversWords, SingleModeKeepsEmptyFieldsMultipleModeSkipsThem)
{
    EXPECT_EQ(LExtractWord(2, "a;;b", ";", ewSingleDelim), "");
    EXPECT_EQ(LExtractWord(2, "a;;b", ";", ewMultipleDelim), "b");
    EXPECT_EQ(LExtractWord(3, "a;;b", ";", ewSingleDelim), "b");
    // A leading delimiter makes no empty first word; a trailing one no empty last word.
    EXPECT_EQ(LExtractWord(1, ";a;;b", ";", ewSingleDelim), "a");
    EXPECT_EQ(LWordCount(";a;;b", ";", ewSingleDelim), 3);
    EXPECT_EQ(LWordCount("a;", ";", ewSingleDelim), 1);
    EXPECT_EQ(LWordCount("a;;", ";", ewSingleDelim), 2);
    EXPECT_EQ(LWordCount(";;;", ";", ewMultipleDelim), 0);
    EXPECT_EQ(LExtractWord(0, "a;b", ";", ewSingleDelim), "");
    EXPECT_EQ(LExtractWord(3, "a;b", ";", ewSingleDelim), "");
    EXPECT_EQ(LExtractWord(2, "B33 : Name", " :", ewMultipleDelim), "Name");
}

TEST(DiversWords, CharSetHoldsOnlyTheFirst256Characters)
{
    TCharSet set("§;");
    EXPECT_TRUE(set.contains(QChar(167)));
    set.insert(QChar(0x013B)); // would alias ';' if the set were taken modulo 256
    EXPECT_FALSE(set.contains(QChar(0x013B)));
    EXPECT_EQ(LWordCount(u"a\u013Bb"_qs, set, ewSingleDelim), 1);
    set.remove(u';');
    EXPECT_FALSE(set.contains(u';'));
}

TEST(DiversWords, CsvFieldsHonourQuotesAndBlanks)
{
    const QString line = R"(1; "x;y" ;3)";
    EXPECT_EQ(ExtractCSVWord(1, line, ";"), "1");
    EXPECT_EQ(ExtractCSVWord(2, line, ";"), "x;y");
    EXPECT_EQ(ExtractCSVWord(3, line, ";"), "3");
    EXPECT_EQ(ExtractCSVWord(4, line, ";"), "");
    EXPECT_EQ(ExtractCSVWord(2, "a;  b  ;c", ";"), "b  "); // leading blanks only
    EXPECT_EQ(ExtractCSVWord(2, "a;;c", ";"), "");
    // Doubled quotes are no escape: the field ends at the second quote.
    EXPECT_EQ(ExtractCSVWord(1, R"("a""b";c)", ";"), "a");
    EXPECT_EQ(ExtractCSVWord(2, R"("a""b";c)", ";"), "c");
    EXPECT_EQ(ExtractCSVWord(1, R"("open)", ";"), "open");
}

TEST(DiversWords, WordInListAndIndexOfValue)
{
    EXPECT_TRUE(WordInList("wahr", "ja,WAHR,,1", ","));
    EXPECT_FALSE(WordInList("wah", "ja,WAHR", ","));
    const QString longList = QString(300, u'x') + QStringLiteral(",needle");
    EXPECT_FALSE(WordInList("needle", longList, ","));
    ASSERT_EQ(recorder().messages().size(), 1);
    EXPECT_EQ(recorder().messages().first(), "WordCount: String zu lang!\r" + longList);

    const QStringList list{"0: Aus", "1: Ein", "12:Zwölf"};
    EXPECT_EQ(GetIndexOfValue(list, "1"), 1);
    EXPECT_EQ(GetIndexOfValue(list, "12: anything"), 2);
    EXPECT_EQ(GetIndexOfValue(list, "3"), -1);
}

// --- Text helpers --------------------------------------------------------------------

TEST(DiversText, PaddingAndFiltering)
{
    EXPECT_EQ(LinksNull("7", 3), "007");
    EXPECT_EQ(LeftPadCh("abc", u'*', 2), "abc");
    EXPECT_EQ(LeftPadCh("a", u'*', 300).size(), 255);
    EXPECT_EQ(LeftPadCh(QString(255, u'a'), u'*', 300), QString(255, u'a'));
    EXPECT_EQ(LeadZeroInt(42, 5), "00042");
    EXPECT_EQ(LeadZeroInt(-5, 4), "-005");
    EXPECT_EQ(LeadZeroInt(123, 2), "123");
    EXPECT_EQ(ElimChars("a1-2,b", ","), "12,");
    EXPECT_EQ(ElimSonderzeichen(u"Äpfel & Birnen! ж"_qs, " "), u"Äpfel  Birnen "_qs);
}

TEST(DiversText, SeparatorsPathsAndPositions)
{
    SetDecimalSeparator(u',');
    EXPECT_EQ(TrimFloat("1.5"), "1,5");
    SetDecimalSeparator(u'.');
    EXPECT_EQ(TrimFloat("1,5"), "1.5");
    EXPECT_EQ(AddBackSlash(""), "");
    EXPECT_EQ(AddBackSlash("C:"), "C:");
    EXPECT_EQ(AddBackSlash("dir\\"), "dir\\");
    EXPECT_EQ(AddBackSlash("dir"), "dir\\");
    EXPECT_EQ(AddBackSlash(QStringLiteral("x") + QChar(0)), QStringLiteral("x") + QChar(0));
    EXPECT_EQ(Rightpos("ab", "abcab"), 4);
    EXPECT_EQ(Rightpos("zz", "abcab"), 0);
    EXPECT_EQ(Rightpos("", "abc"), 0);
    EXPECT_EQ(ExtractPureFileName("C:\\dir\\file.tar.gz"), "file.tar");
    EXPECT_EQ(ExtractPureFileName("/a/b.d/c"), "c");
}

// --- Number tests and conversions ----------------------------------------------------

TEST(DiversNumbers, IntegerFloatAndNullTests)
{
    EXPECT_TRUE(IsInteger(" 12 "));
    EXPECT_TRUE(IsInteger("$FF"));
    EXPECT_FALSE(IsInteger(""));
    EXPECT_FALSE(IsInteger("1.5"));
    EXPECT_FALSE(IsInteger("2147483648"));
    EXPECT_TRUE(IsFloat(" 1.5 "));
    EXPECT_FALSE(IsFloat("1,5"));
    EXPECT_FALSE(IsFloat("   "));
    for (const char *yes : {"", "  ", "0", " 00 ", "-0"})
        EXPECT_TRUE(IsNullOderLeer(yes)) << yes;
    for (const char *no : {"1", "x", "0.0"})
        EXPECT_FALSE(IsNullOderLeer(no)) << no;
}

TEST(DiversNumbers, StrToBoolCountsOnlyTheFirstWord)
{
    for (const char *yes : {"1", "true", "Wahr", " WAHR ", "1: Ein", ":1"})
        EXPECT_TRUE(StrToBool(yes)) << yes;
    for (const char *no : {"yes", "x:1", "", "0", "10"})
        EXPECT_FALSE(StrToBool(no)) << no;
}

TEST(DiversNumbers, HexAndBinaryTexts)
{
    EXPECT_EQ(HexToInt("$FF"), 255);
    EXPECT_EQ(HexToInt("0x1F"), 31);
    EXPECT_EQ(HexToInt("1fh"), 31);
    EXPECT_EQ(HexToInt(""), 0);
    EXPECT_EQ(HexToInt("xyz"), 0);
    EXPECT_EQ(HexToInt("FFFFFFFF"), -1);
    EXPECT_EQ(HexToInt("1FFFFFFFF"), -1); // wraps, no overflow check
    EXPECT_EQ(BinToDec("10 1b"), 5);
    EXPECT_EQ(DecToBin(5, 8), "00000101bin");
    EXPECT_EQ(DecToBin(0, 0), "bin");
    EXPECT_EQ(DecToBin(0xFFFFFFFFu, 4), QString(32, u'1') + "bin");
    EXPECT_EQ(BinToDec(DecToBin(0x80000001u, 0)), int(0x80000001u));
}

TEST(DiversNumbers, BitMaskAndBitCount)
{
    EXPECT_EQ(GetBitMaske(""), 0);
    EXPECT_EQ(GetBitMaske("0"), 0);
    EXPECT_EQ(GetBitMaske("1"), 1);
    EXPECT_EQ(GetBitMaske("3"), 4);
    EXPECT_EQ(GetBitMaske("31"), 0x40000000);
    EXPECT_EQ(GetBitMaske("32"), 0);
    EXPECT_EQ(GetBitMaske("33"), 1);
    EXPECT_EQ(GetBitMaske("-1"), 0x40000000);
    EXPECT_THROW(GetBitMaske("x"), ConvertError);

    EXPECT_EQ(IntToBitCount("255"), "8 Bit");
    EXPECT_EQ(IntToBitCount("65535"), "16 Bit");
    EXPECT_EQ(IntToBitCount("-128"), "-7 Bit");
    EXPECT_EQ(IntToBitCount("3"), "2 Bit");
    EXPECT_EQ(IntToBitCount("2147483647"), "31 Bit");
    EXPECT_EQ(IntToBitCount("-2147483648"), "-31Bit");
    EXPECT_EQ(IntToBitCount("1"), "1");
    EXPECT_EQ(IntToBitCount("100"), "100");
    EXPECT_EQ(IntToBitCount("abc"), "abc");
}

TEST(DiversNumbers, PictureMasksAndTimeText)
{
    EXPECT_EQ(tpForm("@@", 7), "07");
    EXPECT_EQ(tpForm("@@", 12), "12");
    EXPECT_EQ(tpForm("@@", 123), "**");
    EXPECT_EQ(tpForm("##", 7), " 7");
    EXPECT_EQ(tpForm("@@@", -7), "-07");
    EXPECT_EQ(tpForm("###", -7), " -7");
    EXPECT_EQ(tpForm("##.@@", 3.14159), " 3.14");
    EXPECT_EQ(tpForm("#,###", 1234), "1,234");
    EXPECT_EQ(tpForm("#,###", 12), "   12");
    EXPECT_EQ(tpForm("KW @@.", 5), "KW 05.");
    EXPECT_EQ(tpForm("@@", std::nan("")), "**");
    EXPECT_EQ(TimeDiff2Str(0.5, 86400), "43200");
    EXPECT_EQ(TimeDiff2Str(2.5, 1), "2"); // the framework rounds halves to even
}

// --- Wildcards, sorting, buffers -----------------------------------------------------

TEST(DiversWildcards, BaseAndExtensionMatchSeparately)
{
    EXPECT_TRUE(WildComp("*.txt", "a.txt"));
    EXPECT_FALSE(WildComp("*.txt", "a.doc"));
    EXPECT_FALSE(WildComp("*.txt", "A.TXT")); // case-sensitive
    EXPECT_TRUE(WildComp("a?c", "abc.x"));    // a mask without "." takes any extension
    EXPECT_FALSE(WildComp("a?c", "ab"));
    EXPECT_TRUE(WildComp("a*c", "abxc"));
    EXPECT_TRUE(WildComp("*b*", "abc"));
    EXPECT_TRUE(WildComp("*.*", "noext"));
    EXPECT_FALSE(WildComp("x.?", "x."));
    // The run after an inner "*" is searched from the start of the name.
    EXPECT_FALSE(WildComp("b*b", "bxb"));
}

TEST(DiversSort, QuicksortAndBinarySearchAgreeWithTheStandardLibrary)
{
    std::mt19937 rng(7);
    for (int round = 0; round < 50; ++round) {
        QList<int> a(int(rng() % 200));
        for (int &v : a)
            v = int(rng() % 50) - 25;
        QList<int> expected = a;
        std::sort(expected.begin(), expected.end());
        SortIntegerArray(a, 0, int(a.size()) - 1);
        ASSERT_EQ(a, expected);
        for (int v = -27; v <= 27; ++v)
            EXPECT_EQ(FindInSortIntArray(v, a, 0, int(a.size()) - 1),
                      std::binary_search(a.begin(), a.end(), v));
    }
    QList<int> part{5, 4, 3, 2, 1};
    SortIntegerArray(part, 1, 3);
    EXPECT_EQ(part, (QList<int>{5, 2, 3, 4, 1}));
    SortIntegerArray(part, -5, 99); // clamped to the list
    EXPECT_EQ(part, (QList<int>{1, 2, 3, 4, 5}));
    EXPECT_FALSE(FindInSortIntArray(1, QList<int>(), 0, 10));
}

TEST(DiversSort, CharBufferGrowsToNeededPlusOne)
{
    QByteArray buffer("ab");
    CheckCharBufferSize(buffer, 5);
    EXPECT_EQ(buffer, QByteArray("ab\0\0\0\0", 6));
    CheckCharBufferSize(buffer, 2);
    EXPECT_EQ(buffer.size(), 6);
    CheckCharBufferSize(buffer, -3);
    EXPECT_EQ(buffer.size(), 6);
}

// --- Files and forms -----------------------------------------------------------------

TEST(DiversFiles, LineCountAndMemoFile)
{
    QTemporaryDir dir;
    const QString name = dir.filePath("lines.txt");
    EXPECT_EQ(GetAnzahlASCIIZeilen(name), 0);
    ASSERT_TRUE(test::writeFile(name, "a\r\nb\nc\rd"));
    EXPECT_EQ(GetAnzahlASCIIZeilen(name), 4);
    ASSERT_TRUE(test::writeFile(name, "a\r\n\r\n"));
    EXPECT_EQ(GetAnzahlASCIIZeilen(name), 2);
    ASSERT_TRUE(test::writeFile(name, ""));
    EXPECT_EQ(GetAnzahlASCIIZeilen(name), 0);

    QPlainTextEdit memo;
    memo.setPlainText(u"eins\nzwei ü"_qs);
    EXPECT_TRUE(WriteMemoToFile(&memo, name));
    EXPECT_EQ(test::readFile(name), QString(u"eins\nzwei ü\n"_qs).toUtf8());
    EXPECT_FALSE(WriteMemoToFile(nullptr, name));
    EXPECT_FALSE(WriteMemoToFile(&memo, dir.filePath("missing/dir/x.txt")));
}

TEST(DiversForms, DelCrLfRemovesTrailingBreaksOrEmptyLines)
{
    QTextEdit edit;
    edit.setPlainText("a\n\nb\n\n\n");
    Del_CRLF(&edit, 0);
    EXPECT_EQ(edit.toPlainText(), "a\n\nb");
    edit.setPlainText("a\n\n\n");
    Del_CRLF(&edit, 1);
    EXPECT_EQ(edit.toPlainText(), "a");
    edit.setPlainText("\n\n");
    Del_CRLF(&edit, 1);
    EXPECT_EQ(edit.toPlainText(), "");
    Del_CRLF(nullptr, 0);
}

TEST(DiversForms, ControlLookupIsDepthFirstAndCaseInsensitive)
{
    QWidget form;
    auto *panel = new QWidget(&form);
    auto *deep = new QCheckBox(panel);
    deep->setObjectName("CheckBoxArchiv");
    auto *later = new QLabel(&form);
    later->setObjectName("checkboxarchiv");
    EXPECT_EQ(FindMyControl(&form, "CHECKBOXARCHIV"), deep);
    EXPECT_EQ(FindMyControl(&form, ""), nullptr);
    EXPECT_EQ(FindMyClass(&form, "qlabel"), later);
    EXPECT_EQ(FindMyClass(&form, "QWidget"), panel);
    EXPECT_EQ(GetMainForm(deep), &form);
    QObject loose;
    EXPECT_EQ(GetMainForm(&loose), nullptr);

    QWidget other;
    auto *otherBox = new QCheckBox(&other);
    otherBox->setObjectName("CheckBoxArchiv");
    AlleWindowsArchiv(&form, true);
    EXPECT_TRUE(deep->isChecked());
    EXPECT_TRUE(otherBox->isChecked());
}

// --- Hostile input -------------------------------------------------------------------

namespace {

QStringList hostileTexts()
{
    QStringList texts{"",
                      " ",
                      QString(1, QChar(0)),
                      "\t\r\n\x01\x1f",
                      u"日本語.Ωμέγα;ж"_qs,
                      QString(1, QChar(0xD800)),
                      QString(1, QChar(0xDFFF)) + "a.b",
                      QString(100000, u'a'),
                      QString(100000, u';'),
                      QString(100000, u'*'),
                      QString(100000, u'@')};
    const QString pool = u" .;:,\"*?$§-+_/\\0123456789aZ\x01\x7f\xa0\u00ff\u0100\u4e00"_qs +
                         QChar(0xD800) + QChar(0xDC00) + QChar(0xFFFF);
    std::mt19937 rng(42);
    for (int i = 0; i < 300; ++i) {
        QString s;
        for (int n = int(rng() % 40); n > 0; --n)
            s += pool.at(int(rng() % pool.size()));
        texts << s;
    }
    QString big;
    for (int n = 0; n < 100000; ++n)
        big += pool.at(int(rng() % pool.size()));
    return texts << big;
}

void feedTextRoutines(const QString &s)
{
    for (auto mode : {ewSingleDelim, ewMultipleDelim}) {
        LWordCount(s, " ;.", mode);
        LExtractWord(2, s, " ;.", mode);
    }
    ExtractCSVWord(3, s, ";");
    WordInList("a", s, ";");
    GetIndexOfValue({s, "x"}, s);
    ElimChars(s, ";"), ElimSonderzeichen(s, ";"), ElimBlanksLowerCase(s);
    LeftPadCh(s, u'0', 300), TrimFloat(s), AddBackSlash(s), Rightpos(s.left(3), s);
    ExtractPureFileName(s), IsInteger(s), IsFloat(s), IsDate(s), IsNullOderLeer(s);
    StrToBool(s), HexToInt(s), BinToDec(s), IntToBitCount(s), tpForm(s.left(2000), -1234.5);
    WildComp(s, s), WildComp(s.left(50), s), FormatDatum(s), FormatKW(s);
    WoJahrToDate(s), GetMontagDate(s);
    QString t = s;
    ModifyKWText(t, 3);
    EntferneBlanks(t), EntferneChar(t, u'.');
    for (auto convert :
         {+[](const QString &x) { Str2000ToDate(x); }, +[](const QString &x) { GetBitMaske(x); },
          +[](const QString &x) { StrToDate(x); }}) {
        try {
            convert(s);
        } catch (const ConvertError &) {
        }
    }
}

} // namespace

TEST(DiversHostileInput, EveryTextRoutineSurvivesHostileTexts)
{
    for (const QString &s : hostileTexts())
        feedTextRoutines(s);
    SUCCEED(); // the sanitizers judge this test
}

TEST(DiversForms, ConvertRTFToAsciiTextNeedsTheMainFormsView)
{
    const QByteArray rtf = "{\\rtf1\\ansi {\\b Drehzahl}\\par Gr\\'f6\\'dfe}";
    EXPECT_EQ(ConvertRTFToAsciiText(rtf), QString());
    EXPECT_EQ(test::recorder().messages(),
              QStringList({"Im Hauptformular fehlt TRichEdit-Komponente für die Konvertierung!"}));
    QTextEdit view;
    tmpRichedit = &view;
    EXPECT_EQ(ConvertRTFToAsciiText(rtf), QString::fromUtf8("Drehzahl\nGröße"));
    tmpRichedit = nullptr;
}
