#include "platform/inifile_p.h"
#include "platform/textcodec.h"
#include "platform/textcodec_p.h"

#include <list>

namespace drivewiz::detail {

namespace {

constexpr char kBom[] = "\xEF\xBB\xBF";

using Names = CSimpleIniA::TNamesDepend;

qsizetype firstNonBlank(const QByteArray &line)
{
    qsizetype i = 0;
    while (i < line.size() && (line.at(i) == ' ' || line.at(i) == '\t'))
        ++i;
    return i;
}

bool isEntryLine(const QByteArray &line)
{
    const qsizetype i = firstNonBlank(line);
    return i < line.size() && line.at(i) != ';' && line.at(i) != '#';
}

// SimpleIni silently drops these lines on save and mis-reads an unclosed section header
// (it runs the name on into the following lines).
bool isMalformed(const QByteArray &line)
{
    const qsizetype i = firstNonBlank(line);
    if (line.at(i) == '[') return line.indexOf(']', i) < 0;
    const qsizetype eq = line.indexOf('=', i);
    return eq < 0 || firstNonBlank(line.mid(i, eq - i)) == eq - i;
}

// The lines of a file: "\r\n", "\n" and a bare "\r" each end one, as for SimpleIni. A
// byte order mark at the start of a line (files put together from several) is no part
// of a name.
QList<QByteArray> splitLines(const QByteArray &bytes)
{
    QList<QByteArray> lines;
    qsizetype start = 0;
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i <= n; ++i) {
        if (i < n && bytes.at(i) != '\n' && bytes.at(i) != '\r') continue;
        if (i == n && start == n) break; // no empty line after the last line end
        QByteArray line = bytes.mid(start, i - start);
        while (line.startsWith(kBom))
            line.remove(0, 3);
        lines << line;
        if (i + 1 < n && bytes.at(i) == '\r' && bytes.at(i + 1) == '\n') ++i;
        start = i + 1;
    }
    return lines;
}

QByteArray joinLines(const QList<QByteArray> &lines, qsizetype from, qsizetype to)
{
    QByteArray out;
    for (qsizetype i = from; i < to; ++i)
        out += lines.at(i) + '\n';
    return out;
}

// Names and values are single lines without surrounding blanks in any INI file; a zero
// would end them early.
QString clean(QString text)
{
    text.replace(QLatin1Char('\r'), QLatin1Char(' '))
        .replace(QLatin1Char('\n'), QLatin1Char(' '))
        .replace(QChar(0), QLatin1Char(' '));
    qsizetype b = 0, e = text.size();
    while (b < e && (text.at(b) == QLatin1Char(' ') || text.at(b) == QLatin1Char('\t')))
        ++b;
    while (e > b && (text.at(e - 1) == QLatin1Char(' ') || text.at(e - 1) == QLatin1Char('\t')))
        --e;
    return text.mid(b, e - b);
}

} // namespace

IniDocument::IniDocument() : m_ini(std::make_unique<CSimpleIniA>(false, false, false))
{
    m_ini->SetSpaces(false);
}

// How a file is read: UTF-8 when it has a byte order mark or non-ASCII bytes that are
// valid UTF-8, else Windows-1252. Saving checks the same decision (see settleEncoding).
bool IniDocument::readsAsUtf8(const QByteArray &bytes)
{
    const bool bom = bytes.startsWith(kBom);
    const qsizetype from = bom ? 3 : 0;
    const qsizetype ascii = asciiPrefixLength(bytes.constData() + from, bytes.size() - from);
    return (from + ascii < bytes.size() || bom) &&
           isValidUtf8(bytes.constData() + from + ascii, bytes.size() - from - ascii);
}

IniDocument IniDocument::parse(QByteArray bytes)
{
    IniDocument doc;
    doc.m_utf8 = readsAsUtf8(bytes);
    doc.m_bom = bytes.startsWith(kBom);
    if (doc.m_bom) bytes.remove(0, 3);
    doc.m_crlf = bytes.contains("\r\n");
    bytes.replace('\0', ' '); // SimpleIni would stop reading there

    QList<QByteArray> lines = splitLines(bytes);
    qsizetype first = -1, last = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QByteArray &line = lines[i];
        if (!isEntryLine(line)) continue;
        if (isMalformed(line)) {
            line.prepend(';');
            continue;
        }
        if (first < 0) first = i;
        last = i;
    }
    if (first < 0) { // comments only
        first = lines.size();
        last = first - 1;
    }
    doc.m_head = joinLines(lines, 0, first);
    const QByteArray body = joinLines(lines, first, last + 1);
    doc.m_tail = joinLines(lines, last + 1, lines.size());
    doc.m_ini->LoadData(body.constData(), size_t(body.size()));
    return doc;
}

QByteArray IniDocument::render() const
{
    std::string saved;
    m_ini->Save(saved, false);
    QByteArray body = QByteArray::fromStdString(saved);
    // SimpleIni puts two blank lines between sections; one is the usual layout.
    while (body.contains("\n\n\n"))
        body.replace("\n\n\n", "\n\n");
    QByteArray out = m_head + body + m_tail;
    if (m_crlf) out.replace("\n", "\r\n");
    if (m_bom) out.prepend(kBom);
    return out;
}

bool IniDocument::encode(const QString &text, QByteArray &out) const
{
    if (m_utf8) {
        out = encodeUtf8(text);
        return true;
    }
    if (!fitsWindows1252(text)) return false; // such a name cannot be in the file
    out = encodeWindows1252(text);
    return true;
}

QString IniDocument::decode(const char *text) const
{
    return m_utf8 ? QString::fromUtf8(text) : decodeWindows1252(QByteArray(text));
}

// A Windows-1252 file whose bytes have come to read as UTF-8 (its last umlaut replaced, or
// a text like "Ã¤" written into plain ASCII) would come back as other texts: it is
// written as UTF-8 then, so that every text reads back as it was written.
void IniDocument::settleEncoding()
{
    if (!m_utf8 && readsAsUtf8(render())) switchToUtf8();
}

void IniDocument::switchToUtf8()
{
    const bool bom = m_bom;
    m_bom = false;
    IniDocument next = parse(encodeUtf8(decodeWindows1252(render())));
    next.m_utf8 = true;
    next.m_bom = bom;
    next.m_crlf = m_crlf;
    *this = std::move(next);
}

std::optional<QString> IniDocument::value(const QString &section, const QString &key) const
{
    QByteArray s, k;
    if (!encode(clean(section), s) || !encode(clean(key), k)) return std::nullopt;
    const char *v = m_ini->GetValue(s.constData(), k.constData(), nullptr);
    if (!v) return std::nullopt;
    return decode(v);
}

bool IniDocument::hasSection(const QString &section) const
{
    QByteArray s;
    return encode(clean(section), s) && m_ini->GetSectionSize(s.constData()) >= 0;
}

QStringList IniDocument::sections() const
{
    Names names;
    m_ini->GetAllSections(names);
    names.sort(CSimpleIniA::Entry::LoadOrder());
    QStringList out;
    for (const auto &entry : names)
        if (*entry.pItem) out << decode(entry.pItem);
    return out;
}

QStringList IniDocument::keys(const QString &section) const
{
    QByteArray s;
    Names names;
    if (!encode(clean(section), s) || !m_ini->GetAllKeys(s.constData(), names)) return {};
    names.sort(CSimpleIniA::Entry::LoadOrder());
    QStringList out;
    for (const auto &entry : names)
        out << decode(entry.pItem);
    return out;
}

void IniDocument::setValue(const QString &section, const QString &key, const QString &value)
{
    const QString s = clean(section), k = clean(key), v = clean(value);
    if (s.isEmpty() || k.isEmpty()) return;
    if (!m_utf8 && !(fitsWindows1252(s) && fitsWindows1252(k) && fitsWindows1252(v)))
        switchToUtf8();
    QByteArray bs, bk, bv;
    encode(s, bs);
    encode(k, bk);
    encode(v, bv);
    m_ini->SetValue(bs.constData(), bk.constData(), bv.constData());
}

void IniDocument::removeKey(const QString &section, const QString &key)
{
    QByteArray s, k;
    if (encode(clean(section), s) && encode(clean(key), k))
        m_ini->Delete(s.constData(), k.constData(), false);
}

void IniDocument::removeSection(const QString &section)
{
    QByteArray s;
    if (encode(clean(section), s)) m_ini->Delete(s.constData(), nullptr, false);
}

} // namespace drivewiz::detail
