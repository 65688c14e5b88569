#include "platform/rtfreader.h"
#include "platform/rtfreader_p.h"

#include <QTextCursor>
#include <QTextDocument>

namespace drivewiz {

namespace {

QTextCharFormat charFormat(const detail::RtfCharFormat &f, const std::vector<QColor> &colors)
{
    QTextCharFormat cf;
    cf.setFontWeight(f.bold ? QFont::Bold : QFont::Normal);
    cf.setFontItalic(f.italic);
    cf.setFontUnderline(f.underline);
    cf.setFontStrikeOut(f.strikeOut);
    if (f.halfPoints > 0) cf.setFontPointSize(f.halfPoints / 2.0);
    if (f.colorIndex > 0 && std::size_t(f.colorIndex) < colors.size() &&
        colors[std::size_t(f.colorIndex)].isValid())
        cf.setForeground(colors[std::size_t(f.colorIndex)]);
    return cf;
}

} // namespace

void RtfToDocument(const QByteArray &rtf, QTextDocument *doc)
{
    if (!doc) return;
    const detail::RtfContent content = detail::parseRtf(rtf);
    doc->clear();
    QTextCursor cursor(doc);
    cursor.beginEditBlock();
    bool first = true;
    for (const detail::RtfParagraph &paragraph : content.paragraphs) {
        QTextBlockFormat block;
        block.setAlignment(paragraph.alignment);
        if (first)
            cursor.setBlockFormat(block);
        else
            cursor.insertBlock(block);
        first = false;
        for (const detail::RtfRun &run : paragraph.runs)
            cursor.insertText(run.text, charFormat(run.format, content.colors));
    }
    cursor.endEditBlock();
}

QString RtfToPlainText(const QByteArray &rtf)
{
    const detail::RtfContent content = detail::parseRtf(rtf);
    QString out;
    for (std::size_t i = 0; i < content.paragraphs.size(); ++i) {
        if (i > 0) out += QLatin1Char('\n');
        for (const detail::RtfRun &run : content.paragraphs[i].runs)
            out += run.text;
    }
    out.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return out;
}

} // namespace drivewiz
