#include "platform/rtfreader_p.h"
#include "platform/textcodec.h"
#include "platform/textcodec_p.h"

#include <optional>
#include <string_view>
#include <unordered_map>

namespace drivewiz::detail {

namespace {

constexpr std::size_t kMaxDepth = 256;
constexpr std::size_t kMaxTableSize = 4096; // colours and fonts
constexpr qint64 kMaxParameter = 0x7FFFFFFF;
constexpr int kMaxHalfPoints = 3276;

enum class Destination { Text, Skip, FontTable, ColorTable };

enum class Word {
    SkipDestination,
    FontTable,
    ColorTable,
    Binary,
    Paragraph,
    Char,
    Bold,
    Italic,
    Underline,
    UnderlineNone,
    Strike,
    Plain,
    Pard,
    FontSize,
    Color,
    Font,
    AlignLeft,
    AlignCenter,
    AlignRight,
    AlignJustify,
    UnicodeSkip,
    Unicode,
    AnsiCodePage,
    DefaultFont,
    FontCharset,
    FontCodePage,
    Red,
    Green,
    Blue,
};

struct WordInfo
{
    Word word;
    char16_t ch = 0;
};

const WordInfo *lookupWord(std::string_view name)
{
    using W = Word;
    static const std::unordered_map<std::string_view, WordInfo> words = {
        {"fonttbl", {W::FontTable}},
        {"colortbl", {W::ColorTable}},
        {"bin", {W::Binary}},
        {"stylesheet", {W::SkipDestination}},
        {"info", {W::SkipDestination}},
        {"pict", {W::SkipDestination}},
        {"object", {W::SkipDestination}},
        {"header", {W::SkipDestination}},
        {"headerl", {W::SkipDestination}},
        {"headerr", {W::SkipDestination}},
        {"headerf", {W::SkipDestination}},
        {"footer", {W::SkipDestination}},
        {"footerl", {W::SkipDestination}},
        {"footerr", {W::SkipDestination}},
        {"footerf", {W::SkipDestination}},
        {"footnote", {W::SkipDestination}},
        {"fldinst", {W::SkipDestination}},
        {"listtable", {W::SkipDestination}},
        {"listoverridetable", {W::SkipDestination}},
        {"rsidtbl", {W::SkipDestination}},
        {"revtbl", {W::SkipDestination}},
        {"filetbl", {W::SkipDestination}},
        {"generator", {W::SkipDestination}},
        {"shp", {W::SkipDestination}},
        {"nonshppict", {W::SkipDestination}},
        {"xe", {W::SkipDestination}},
        {"tc", {W::SkipDestination}},
        {"themedata", {W::SkipDestination}},
        {"latentstyles", {W::SkipDestination}},
        {"colorschememapping", {W::SkipDestination}},
        {"datastore", {W::SkipDestination}},
        {"par", {W::Paragraph}},
        {"row", {W::Paragraph}},
        {"sect", {W::Paragraph}},
        {"page", {W::Paragraph}},
        {"line", {W::Char, 0x2028}},
        {"tab", {W::Char, u'\t'}},
        {"cell", {W::Char, u'\t'}},
        {"emdash", {W::Char, 0x2014}},
        {"endash", {W::Char, 0x2013}},
        {"bullet", {W::Char, 0x2022}},
        {"lquote", {W::Char, 0x2018}},
        {"rquote", {W::Char, 0x2019}},
        {"ldblquote", {W::Char, 0x201C}},
        {"rdblquote", {W::Char, 0x201D}},
        {"emspace", {W::Char, 0x2003}},
        {"enspace", {W::Char, 0x2002}},
        {"qmspace", {W::Char, 0x2005}},
        {"b", {W::Bold}},
        {"i", {W::Italic}},
        {"strike", {W::Strike}},
        {"ul", {W::Underline}},
        {"uld", {W::Underline}},
        {"uldb", {W::Underline}},
        {"uldash", {W::Underline}},
        {"ulth", {W::Underline}},
        {"ulw", {W::Underline}},
        {"ulwave", {W::Underline}},
        {"ulnone", {W::UnderlineNone}},
        {"plain", {W::Plain}},
        {"pard", {W::Pard}},
        {"fs", {W::FontSize}},
        {"cf", {W::Color}},
        {"f", {W::Font}},
        {"ql", {W::AlignLeft}},
        {"qc", {W::AlignCenter}},
        {"qr", {W::AlignRight}},
        {"qj", {W::AlignJustify}},
        {"uc", {W::UnicodeSkip}},
        {"u", {W::Unicode}},
        {"ansicpg", {W::AnsiCodePage}},
        {"deff", {W::DefaultFont}},
        {"fcharset", {W::FontCharset}},
        {"cpg", {W::FontCodePage}},
        {"red", {W::Red}},
        {"green", {W::Green}},
        {"blue", {W::Blue}},
    };
    const auto it = words.find(name);
    return it == words.end() ? nullptr : &it->second;
}

// Windows code page of a font's \fcharset, or 0 when the charset names none.
int charsetCodePage(int charset)
{
    switch (charset) {
    case 0:
        return 1252;
    case 238:
        return 1250;
    case 204:
        return 1251;
    case 161:
        return 1253;
    case 162:
        return 1254;
    case 177:
        return 1255;
    case 178:
        return 1256;
    case 186:
        return 1257;
    case 163:
        return 1258;
    case 222:
        return 874;
    default:
        return 0;
    }
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

int hexValue(char c)
{
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

struct GroupState
{
    RtfCharFormat format;
    Qt::Alignment alignment = Qt::AlignLeft;
    int font = -1; ///< -1 = the default font (\deff)
    int unicodeSkip = 1;
    Destination destination = Destination::Text;
};

class Parser
{
public:
    explicit Parser(const QByteArray &rtf) : m_p(rtf.constData()), m_end(m_p + rtf.size())
    {
        m_content.paragraphs.emplace_back();
    }

    RtfContent run();

private:
    Destination destination() const
    {
        return m_overflow > 0 ? Destination::Skip : m_state.destination;
    }
    bool consumeFallback();
    void openGroup();
    void closeGroup();
    void readControl();
    std::optional<int> readParameter();
    void controlSymbol(char c);
    void controlWord(std::string_view name, std::optional<int> param);
    void textWord(const WordInfo &info, std::optional<int> param);
    void unicodeChar(std::optional<int> param);
    void formatWord(Word word, std::optional<int> param);
    void fontTableWord(Word word, std::optional<int> param);
    void colorTableWord(Word word, std::optional<int> param);
    void hexByte();
    void textByte(unsigned char byte);
    void appendChar(char16_t c);
    void endParagraph();
    int codePage() const;

    const char *m_p;
    const char *m_end;
    GroupState m_state;
    std::vector<GroupState> m_stack;
    int m_overflow = 0;    // groups opened beyond kMaxDepth
    int m_pendingSkip = 0; // fallback characters still to drop after \uN
    int m_ansiCodePage = 1252;
    int m_defaultFont = 0;
    std::unordered_map<int, int> m_fontCodePages;
    int m_fontTableEntry = -1;
    int m_rgb[3] = {0, 0, 0};
    bool m_colorGiven = false;
    RtfContent m_content;
};

RtfContent Parser::run()
{
    while (m_p < m_end) {
        const char c = *m_p++;
        switch (c) {
        case '{':
            openGroup();
            break;
        case '}':
            closeGroup();
            break;
        case '\\':
            readControl();
            break;
        case '\r':
        case '\n':
            break;
        default:
            textByte(static_cast<unsigned char>(c));
            break;
        }
    }
    auto &paragraphs = m_content.paragraphs;
    // "text\par}" ends the last paragraph; it does not start an empty one.
    if (paragraphs.size() > 1 && paragraphs.back().runs.empty()) paragraphs.pop_back();
    return std::move(m_content);
}

// The characters after \uN that stand in for it in readers without Unicode; a control
// word or an escaped byte counts as one, a brace ends them.
bool Parser::consumeFallback()
{
    if (m_pendingSkip <= 0) return false;
    --m_pendingSkip;
    return true;
}

void Parser::openGroup()
{
    m_pendingSkip = 0;
    if (m_overflow > 0 || m_stack.size() >= kMaxDepth) {
        ++m_overflow;
        return;
    }
    m_stack.push_back(m_state);
}

void Parser::closeGroup()
{
    m_pendingSkip = 0;
    if (m_overflow > 0) {
        --m_overflow;
        return;
    }
    if (m_stack.empty()) return; // unbalanced "}"
    m_state = m_stack.back();
    m_stack.pop_back();
}

void Parser::readControl()
{
    if (m_p >= m_end) return;
    if (!isLetter(*m_p)) {
        controlSymbol(*m_p++);
        return;
    }
    const char *start = m_p;
    while (m_p < m_end && isLetter(*m_p))
        ++m_p;
    // No known word is longer than 32 letters; a longer one must not match a prefix.
    const auto length = std::size_t(m_p - start);
    const std::string_view name(start, length > 32 ? 0 : length);
    const std::optional<int> param = readParameter();
    if (m_p < m_end && *m_p == ' ') ++m_p;
    controlWord(name, param);
}

std::optional<int> Parser::readParameter()
{
    bool negative = false;
    if (m_end - m_p >= 2 && *m_p == '-' && isDigit(m_p[1])) {
        negative = true;
        ++m_p;
    }
    if (m_p >= m_end || !isDigit(*m_p)) return std::nullopt;
    qint64 value = 0;
    for (; m_p < m_end && isDigit(*m_p); ++m_p)
        value = qMin(kMaxParameter, value * 10 + (*m_p - '0'));
    return int(negative ? -value : value);
}

void Parser::controlSymbol(char c)
{
    if (c == '\'') {
        hexByte();
        return;
    }
    if (c == '*') { // an optional destination: we know none of them
        if (m_overflow == 0) m_state.destination = Destination::Skip;
        return;
    }
    if (consumeFallback() || destination() != Destination::Text) return;
    switch (c) {
    case '\\':
    case '{':
    case '}':
        appendChar(char16_t(c));
        break;
    case '~':
        appendChar(0x00A0);
        break;
    case '_':
        appendChar(0x2011);
        break;
    case '\r':
    case '\n':
        endParagraph();
        break;
    default:
        break; // "\-" optional hyphen, "\|", "\:" and unknown symbols
    }
}

void Parser::controlWord(std::string_view name, std::optional<int> param)
{
    const WordInfo *info = lookupWord(name);
    if (info && info->word == Word::Binary) { // raw bytes follow: never parse them
        const qint64 n = qMax(0, param.value_or(0));
        m_p += qMin<qint64>(n, m_end - m_p);
        return;
    }
    if (consumeFallback() || !info || m_overflow > 0) return;
    const Destination dest = destination();
    if (info->word == Word::SkipDestination) {
        m_state.destination = Destination::Skip;
    } else if (info->word == Word::FontTable || info->word == Word::ColorTable) {
        if (dest == Destination::Text)
            m_state.destination =
                info->word == Word::FontTable ? Destination::FontTable : Destination::ColorTable;
    } else if (dest == Destination::Text) {
        textWord(*info, param);
    } else if (dest == Destination::FontTable) {
        fontTableWord(info->word, param);
    } else if (dest == Destination::ColorTable) {
        colorTableWord(info->word, param);
    }
}

void Parser::textWord(const WordInfo &info, std::optional<int> param)
{
    switch (info.word) {
    case Word::Paragraph:
        endParagraph();
        break;
    case Word::Char:
        appendChar(info.ch);
        break;
    case Word::Unicode:
        unicodeChar(param);
        break;
    case Word::UnicodeSkip:
        m_state.unicodeSkip = qBound(0, param.value_or(1), 255);
        break;
    case Word::AnsiCodePage:
        m_ansiCodePage = param.value_or(1252);
        break;
    case Word::DefaultFont:
        m_defaultFont = param.value_or(0);
        break;
    default:
        formatWord(info.word, param);
        break;
    }
}

// \uN gives a UTF-16 unit as a signed 16-bit number; the fallback characters follow.
void Parser::unicodeChar(std::optional<int> param)
{
    if (!param) return;
    const int v = *param < 0 ? *param + 0x10000 : *param;
    appendChar(v >= 0 && v <= 0xFFFF ? char16_t(v) : char16_t(0xFFFD));
    m_pendingSkip = m_state.unicodeSkip;
}

void Parser::formatWord(Word word, std::optional<int> param)
{
    RtfCharFormat &f = m_state.format;
    const bool on = !param || *param != 0;
    switch (word) {
    case Word::Bold:
        f.bold = on;
        break;
    case Word::Italic:
        f.italic = on;
        break;
    case Word::Underline:
        f.underline = on;
        break;
    case Word::UnderlineNone:
        f.underline = false;
        break;
    case Word::Strike:
        f.strikeOut = on;
        break;
    case Word::Plain:
        f = RtfCharFormat();
        m_state.font = -1;
        break;
    case Word::FontSize:
        f.halfPoints = qBound(0, param.value_or(24), kMaxHalfPoints);
        break;
    case Word::Color:
        f.colorIndex = qMax(0, param.value_or(0));
        break;
    case Word::Font:
        m_state.font = param.value_or(0);
        break;
    case Word::Pard:
    case Word::AlignLeft:
        m_state.alignment = Qt::AlignLeft;
        break;
    case Word::AlignCenter:
        m_state.alignment = Qt::AlignHCenter;
        break;
    case Word::AlignRight:
        m_state.alignment = Qt::AlignRight;
        break;
    case Word::AlignJustify:
        m_state.alignment = Qt::AlignJustify;
        break;
    default:
        break;
    }
}

void Parser::fontTableWord(Word word, std::optional<int> param)
{
    if (word == Word::Font) {
        m_fontTableEntry = param.value_or(-1);
        return;
    }
    if (m_fontTableEntry < 0 || m_fontCodePages.size() >= kMaxTableSize) return;
    int cp = 0;
    if (word == Word::FontCharset) cp = charsetCodePage(param.value_or(-1));
    if (word == Word::FontCodePage) cp = param.value_or(0);
    if (cp > 0) m_fontCodePages[m_fontTableEntry] = cp;
}

void Parser::colorTableWord(Word word, std::optional<int> param)
{
    const int channel = word == Word::Red     ? 0
                        : word == Word::Green ? 1
                        : word == Word::Blue  ? 2
                                              : -1;
    if (channel < 0) return;
    m_rgb[channel] = qBound(0, param.value_or(0), 255);
    m_colorGiven = true;
}

void Parser::hexByte()
{
    int value = 0, digits = 0;
    for (; digits < 2 && m_p < m_end && hexValue(*m_p) >= 0; ++digits)
        value = value * 16 + hexValue(*m_p++);
    if (digits > 0) textByte(static_cast<unsigned char>(value));
}

void Parser::textByte(unsigned char byte)
{
    if (consumeFallback()) return;
    switch (destination()) {
    case Destination::Text:
        appendChar(singleByteToUnicode(codePage(), byte));
        break;
    case Destination::ColorTable:
        if (byte == ';' && m_content.colors.size() < kMaxTableSize) {
            m_content.colors.push_back(m_colorGiven ? QColor(m_rgb[0], m_rgb[1], m_rgb[2])
                                                    : QColor());
            m_rgb[0] = m_rgb[1] = m_rgb[2] = 0;
            m_colorGiven = false;
        }
        break;
    default:
        break;
    }
}

void Parser::appendChar(char16_t c)
{
    if (c < 0x20 && c != u'\t') return; // control characters carry no text
    RtfParagraph &paragraph = m_content.paragraphs.back();
    paragraph.alignment = m_state.alignment;
    if (paragraph.runs.empty() || paragraph.runs.back().format != m_state.format)
        paragraph.runs.push_back({QString(), m_state.format});
    paragraph.runs.back().text.append(QChar(c));
}

void Parser::endParagraph()
{
    m_content.paragraphs.back().alignment = m_state.alignment;
    m_content.paragraphs.emplace_back();
}

int Parser::codePage() const
{
    const int font = m_state.font >= 0 ? m_state.font : m_defaultFont;
    const auto it = m_fontCodePages.find(font);
    return it != m_fontCodePages.end() ? it->second : m_ansiCodePage;
}

RtfContent parsePlainText(const QByteArray &bytes)
{
    QString text = decodeText(bytes);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    RtfContent content;
    for (const QString &line : text.split(u'\n')) {
        RtfParagraph paragraph;
        if (!line.isEmpty()) paragraph.runs.push_back({line, RtfCharFormat()});
        content.paragraphs.push_back(std::move(paragraph));
    }
    if (content.paragraphs.size() > 1 && content.paragraphs.back().runs.empty())
        content.paragraphs.pop_back();
    return content;
}

bool looksLikeRtf(const QByteArray &bytes)
{
    qsizetype i = 0;
    while (i < bytes.size() && (bytes.at(i) == ' ' || bytes.at(i) == '\t' || bytes.at(i) == '\r' ||
                                bytes.at(i) == '\n'))
        ++i;
    return bytes.mid(i, 5) == "{\\rtf";
}

} // namespace

RtfContent parseRtf(const QByteArray &rtf)
{
    if (!looksLikeRtf(rtf)) return parsePlainText(rtf);
    return Parser(rtf).run();
}

} // namespace drivewiz::detail
