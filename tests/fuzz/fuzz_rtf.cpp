// Rich text: any bytes are read without a crash or a hang, and a text written as RTF the
// way a host writes help (escapes, \par, \tab, \uN with a fallback) reads back as that
// text, through the plain-text path and through the document the help view shows.

#include "fuzz_support.h"

#include "platform/rtfreader.h"

#include <QTextDocument>

using namespace drivewiz;

namespace {

// RTF for a text, and the text the reader should give back for it.
QByteArray writeRtf(const QString &text, QString &expected)
{
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Arial;}}\\f0 ";
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == '\\' || u == '{' || u == '}') {
            rtf += '\\';
            rtf += char(u);
        } else if (u == '\n') {
            rtf += "\\par ";
        } else if (u == '\t') {
            rtf += "\\tab ";
        } else if (u < 0x20 || u == 0x7F) {
            continue; // no character of a text
        } else if (u < 0x80) {
            rtf += char(u);
        } else {
            rtf += "\\u" + QByteArray::number(qint16(u)) + '?';
        }
        expected += c;
    }
    // A \par that ends the text ends its last paragraph; no empty one follows.
    if (expected.endsWith(u'\n')) expected.chop(1);
    return rtf + "}";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    RtfToPlainText(bytes);
    QTextDocument doc;
    RtfToDocument(bytes, &doc);

    QString text = QString::fromUtf8(bytes.left(400));
    text.remove(QChar::ReplacementCharacter);
    QString expected;
    const QByteArray rtf = writeRtf(text, expected);
    FUZZ_CHECK(RtfToPlainText(rtf) == expected, expected);
    RtfToDocument(rtf, &doc);
    QString shown = doc.toPlainText();
    QString wanted = expected;
    wanted.replace(QChar::Nbsp, u' '); // the document shows a no-break space as a blank
    FUZZ_CHECK(shown == wanted, wanted + " <> " + shown);
    return 0;
}
