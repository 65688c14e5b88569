#ifndef DRIVEWIZ_PLATFORM_RTFREADER_P_H
#define DRIVEWIZ_PLATFORM_RTFREADER_P_H

// The parsed form of a rich text, shared by the parser and the document builder.

#include <QByteArray>
#include <QColor>
#include <QString>

#include <vector>

namespace drivewiz::detail {

struct RtfCharFormat
{
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    int halfPoints = 0; ///< font size in half points; 0 = the document's default
    int colorIndex = 0; ///< index into RtfContent::colors; 0 = automatic

    bool operator==(const RtfCharFormat &o) const
    {
        return bold == o.bold && italic == o.italic && underline == o.underline &&
               strikeOut == o.strikeOut && halfPoints == o.halfPoints && colorIndex == o.colorIndex;
    }
    bool operator!=(const RtfCharFormat &o) const { return !(*this == o); }
};

struct RtfRun
{
    QString text; ///< may hold "\t" and U+2028 (line break)
    RtfCharFormat format;
};

struct RtfParagraph
{
    std::vector<RtfRun> runs;
    Qt::Alignment alignment = Qt::AlignLeft;
};

struct RtfContent
{
    std::vector<RtfParagraph> paragraphs; ///< at least one
    std::vector<QColor> colors;           ///< the colour table; invalid = automatic
};

RtfContent parseRtf(const QByteArray &rtf);

} // namespace drivewiz::detail

#endif // DRIVEWIZ_PLATFORM_RTFREADER_P_H
