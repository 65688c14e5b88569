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

QByteArray joinLines(const QList<QByteArray> &lines, qsizetype from, qsizetype to)
{
    QByteArray out;
    for (qsizetype i = from; i < to; ++i)
        out += lines.at(i) + '\n';
    return out;
}

// Names and values are single lines without surrounding blanks in any INI file.
QString clean(QString text)
{
    text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
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

IniDocument IniDocument::parse(QByteArray bytes)
{
    IniDocument doc;
    doc.m_bom = bytes.startsWith(kBom);
    if (doc.m_bom) bytes.remove(0, 3);
    doc.m_crlf = bytes.contains("\r\n");
    bytes.replace('\0', ' '); // SimpleIni would stop reading there
    const qsizetype ascii = asciiPrefixLength(bytes.constData(), bytes.size());
    doc.m_utf8 = (ascii < bytes.size() || doc.m_bom) &&
                 isValidUtf8(bytes.constData() + ascii, bytes.size() - ascii);

    QList<QByteArray> lines = bytes.split('\n');
    if (bytes.endsWith('\n') || bytes.isEmpty()) lines.removeLast();
    qsizetype first = -1, last = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QByteArray &line = lines[i];
        if (line.endsWith('\r')) line.chop(1);
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
