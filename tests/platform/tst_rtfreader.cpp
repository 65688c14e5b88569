#include "platform/rtfreader.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextDocument>

using namespace drivewiz;

namespace {

// The header a rich-text control writes before the text.
const QByteArray kHeader =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1031"
    "{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}{\\f1\\fnil\\fcharset204 "
    "Arial CYR;}{\\f2\\fnil\\fcharset238 Arial CE;}}"
    "{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green128\\blue0;}"
    "{\\*\\generator Msftedit 5.41.21.2510;}\\viewkind4\\uc1\\pard\\f0\\fs20 ";

QString plain(const QByteArray &body)
{
    return RtfToPlainText(kHeader + body + "}");
}

// Character format at a position of the document's text.
QTextCharFormat formatAt(QTextDocument &doc, const QString &text)
{
    const int pos = doc.toPlainText().indexOf(text);
    EXPECT_GE(pos, 0) << text.toStdString();
    QTextCursor c(&doc);
    c.setPosition(pos + 1);
    return c.charFormat();
}

} // namespace

TEST(RtfReader, ParagraphsLinesAndTabs)
{
    EXPECT_EQ(plain("Erste Zeile\\par Zweite\\tab Spalte\\line Umbruch\\par\r\n"),
              "Erste Zeile\nZweite\tSpalte\nUmbruch");
    EXPECT_EQ(plain("a\\par\\par b"), "a\n\nb");
    EXPECT_EQ(plain("a\\par\\par"), "a\n");
    EXPECT_EQ(plain(""), "");
    // Raw line breaks are no text; a backslash before one is a paragraph.
    EXPECT_EQ(plain("one\r\ntwo\\\nthree"), "onetwo\nthree");
}

TEST(RtfReader, ControlSymbolsAndSpecialCharacters)
{
    EXPECT_EQ(plain("\\{x\\} \\\\ a\\~b c\\-d e\\_f"), "{x} \\ a\u00A0b cd e\u2011f");
    EXPECT_EQ(plain("\\emdash\\endash\\bullet\\lquote\\rquote\\ldblquote\\rdblquote"),
              "\u2014\u2013\u2022\u2018\u2019\u201C\u201D");
    // The space after a control word is its delimiter; further spaces are text.
    EXPECT_EQ(plain("\\b  fett\\b0 normal"), " fettnormal");
}

TEST(RtfReader, EightBitCharactersFollowTheCodePage)
{
    EXPECT_EQ(plain("Gr\\'f6\\'dfe \\'80 \\'84x\\'93"), "Größe € „x“");
    EXPECT_EQ(plain("\\f1 \\'cf\\'f0\\'e8\\f0  \\'e4"), "При ä");
    EXPECT_EQ(plain("\\f2 \\'b9\\'9c"), "ąś");
    EXPECT_EQ(RtfToPlainText("{\\rtf1\\ansi\\ansicpg1251 \\'c0\\'e1}"), "Аб");
    EXPECT_EQ(RtfToPlainText("{\\rtf1\\ansi\\ansicpg932 \\'e4}"), "ä"); // unknown: 1252
}

TEST(RtfReader, UnicodeWithFallbackSkipping)
{
    EXPECT_EQ(plain("\\u8364?x"), "€x");
    EXPECT_EQ(plain("\\u-3913?"), "\uF0B7");
    EXPECT_EQ(plain("{\\uc2\\u1046\\'c6\\'c6x}\\u1046?y"), "ЖxЖy");
    EXPECT_EQ(plain("{\\uc0\\u1046\\u1047}"), "ЖЗ");
    EXPECT_EQ(plain("\\u-10179?\\u-8704?"), "\U0001F600");
    // A brace ends the fallback early.
    EXPECT_EQ(plain("{\\uc3\\u1046 a}b"), "Жb");
}

TEST(RtfReader, DestinationsThatAreNoTextAreSkipped)
{
    EXPECT_EQ(plain("{\\*\\unknown hidden}{\\info{\\title T}{\\author A}}shown"), "shown");
    EXPECT_EQ(plain("{\\pict\\wmetafile8 0a0b0c}{\\header H}{\\footer F}x"), "x");
    EXPECT_EQ(plain("{\\stylesheet{\\s0 Normal;}}y"), "y");
    EXPECT_EQ(plain("{\\field{\\*\\fldinst HYPERLINK \"http://x\"}{\\fldrslt Link}}"), "Link");
    EXPECT_EQ(plain("a{\\*\\bin3 {}}}b"), "ab");
    EXPECT_EQ(plain("a\\bin4 }{\\bc"), "ac");
}

TEST(RtfReader, TextWithoutRtfHeaderIsPlainText)
{
    EXPECT_EQ(RtfToPlainText("Zeile 1\r\nZeile \xE4\r\n"), "Zeile 1\nZeile ä");
    QTextDocument doc;
    RtfToDocument("nur Text", &doc);
    EXPECT_EQ(doc.toPlainText(), "nur Text");
}

TEST(RtfReader, DocumentCarriesCharacterFormats)
{
    QTextDocument doc;
    doc.setPlainText("old contents");
    RtfToDocument(kHeader + "normal {\\b fett} {\\i kursiv} \\ul unter\\ulnone  {\\cf1 rot} "
                            "{\\fs32 gross} {\\strike weg}\\plain\\par\\qc Mitte\\par}",
                  &doc);
    EXPECT_EQ(doc.toPlainText(), "normal fett kursiv unter rot gross weg\nMitte");
    EXPECT_EQ(formatAt(doc, "fett").fontWeight(), QFont::Bold);
    EXPECT_EQ(formatAt(doc, "normal").fontWeight(), QFont::Normal);
    EXPECT_TRUE(formatAt(doc, "kursiv").fontItalic());
    EXPECT_TRUE(formatAt(doc, "unter").fontUnderline());
    EXPECT_FALSE(formatAt(doc, "rot").fontUnderline());
    EXPECT_EQ(formatAt(doc, "rot").foreground().color(), QColor(255, 0, 0));
    EXPECT_EQ(formatAt(doc, "gross").fontPointSize(), 16.0);
    EXPECT_EQ(formatAt(doc, "normal").fontPointSize(), 10.0);
    EXPECT_TRUE(formatAt(doc, "weg").fontStrikeOut());
    EXPECT_EQ(doc.blockCount(), 2);
    EXPECT_EQ(doc.lastBlock().blockFormat().alignment(), Qt::AlignHCenter);
    EXPECT_EQ(doc.firstBlock().blockFormat().alignment(), Qt::AlignLeft);
    RtfToDocument("{\\rtf1 \\b a\\b0\\line b}", &doc);
    EXPECT_EQ(doc.blockCount(), 1);
    EXPECT_EQ(doc.toPlainText(), "a\nb");
    RtfToDocument("{\\rtf1 x}", nullptr); // no document: nothing happens
}

TEST(RtfReader, HostileInputNeitherCrashesNorHangs)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(RtfToPlainText("{\\rtf1 " + QByteArray(100000, '{') + "deep"), "");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 a}}}}}b}"), "ab");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 {{{ a"), " a");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 x\\'"), "x");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 x\\'4"), "x");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 x\\'zz"), "xzz");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 x\\"), "x");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 \\u99999999999?x\\u-99999999999?y}"), "\uFFFDx\uFFFDy");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 \\fs99999999999 \\cf-5 \\uc99999999999 \\bin99999999999"),
              "");
    EXPECT_EQ(RtfToPlainText("{\\rtf1 \\" + QByteArray(100000, 'x') + " ok}"), "ok");
    // Groups beyond the nesting limit are skipped; the text after them is read again.
    EXPECT_EQ(
        RtfToPlainText("{\\rtf1 " + QByteArray(300, '{') + "lost" + QByteArray(300, '}') + "kept}"),
        "kept");
    QByteArray noise(200000, '\0');
    auto *rng = QRandomGenerator::global();
    for (char &c : noise)
        c = "{}\\'u0123456789abc-* \r\n\x80\xff"[rng->bounded(25)];
    QTextDocument doc;
    RtfToDocument("{\\rtf1 " + noise, &doc);
    RtfToPlainText("{\\rtf1 " + noise);
    EXPECT_LT(timer.elapsed(), 30000);
}
