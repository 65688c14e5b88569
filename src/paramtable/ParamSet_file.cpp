// Parameter set files: writing and strict reading. A file that is not a set file in
// every line gives no set at all, with a message naming its first bad line.

#include "paramtable/ParamSet.h"

#include "paramtable/ParamCsv_p.h"
#include "paramtable/ParamTexts.h"
#include "paramtable/coordinates.h"
#include "platform/textcodec.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstring>

namespace drivewiz {

namespace paramcsv {

QByteArray quoted(const QString &field)
{
    QByteArray out = field.toUtf8();
    out.replace('"', "\"\"");
    return '"' + out + '"';
}

bool splitFields(const QString &line, QChar delim, QStringList &fields)
{
    fields.clear();
    const qsizetype n = line.size();
    qsizetype i = 0;
    while (true) {
        while (i < n && line.at(i) == QLatin1Char(' '))
            ++i;
        QString field;
        if (i < n && line.at(i) == QLatin1Char('"')) {
            ++i;
            bool closed = false;
            while (i < n) {
                const QChar c = line.at(i++);
                if (c != QLatin1Char('"')) {
                    field += c;
                } else if (i < n && line.at(i) == QLatin1Char('"')) {
                    field += c;
                    ++i;
                } else {
                    closed = true;
                    break;
                }
            }
            if (!closed) return false;
            while (i < n && line.at(i) != delim)
                ++i; // text after the closing quote is not part of the value
        } else {
            const qsizetype end = line.indexOf(delim, i);
            field = line.mid(i, end < 0 ? -1 : end - i);
            i = end < 0 ? n : end;
        }
        fields << field;
        if (i >= n) return true;
        ++i; // the delimiter
    }
}

} // namespace paramcsv

using paramcsv::quoted;
using paramcsv::splitFields;

namespace {

// A set of 100,000 parameters takes a few MB; anything far larger is no set file.
constexpr qint64 kMaxFileBytes = 32 * 1024 * 1024;
const char *const kTitle = "\"Name\";\"Koordinate\";\"Achse\";\"Wert\";\"Einheit\"\r\n";

struct Columns
{
    int count = 0;
    int koordinate = -1;
    int achse = -1;
    int wert = -1;
    int name = -1;
    int einheit = -1;
};

Columns titleColumns(const QStringList &titles)
{
    Columns c;
    c.count = int(titles.size());
    for (int i = 0; i < c.count; ++i) {
        const QString t = titles.at(i).trimmed().toLower();
        if (t == QLatin1String("koordinate")) c.koordinate = i;
        else if (t == QLatin1String("achse")) c.achse = i;
        else if (t == QLatin1String("wert")) c.wert = i;
        else if (t == QLatin1String("name")) c.name = i;
        else if (t == QLatin1String("einheit")) c.einheit = i;
    }
    return c;
}

bool hasControlCharacters(const QString &line)
{
    for (const QChar c : line) {
        if (c.unicode() < 0x20 && c != QLatin1Char('\t')) return true;
    }
    return false;
}

void readComment(const QString &text, ParamSet::Meta &meta)
{
    const QString body = text.mid(1).trimmed();
    const qsizetype eq = body.indexOf(QLatin1Char('='));
    if (eq < 0) return;
    const QString key = body.left(eq).trimmed();
    const QString value = body.mid(eq + 1).trimmed();
    if (key == QLatin1String("family")) meta.family = value;
    else if (key == QLatin1String("wizard")) meta.wizardId = value;
    else if (key == QLatin1String("library")) meta.libraryVersion = value;
    else if (key == QLatin1String("date")) meta.date = QDateTime::fromString(value, Qt::ISODate);
}

// The reader of one file's text, line by line.
class SetReader
{
public:
    SetReader(const QString &fileName, ParamSetLoad &out, const TParaTable *language)
        : m_file(fileName), m_out(out), m_language(language)
    {
    }

    QString text(const char *key, const QString &a1 = QString(), const QString &a2 = QString(),
                 const QString &a3 = QString()) const
    {
        return paramSetText(m_language, key, a1, a2, a3);
    }

    bool fail(int line, const QString &what)
    {
        m_out.ok = false;
        m_out.line = line;
        m_out.error = line > 0 ? text("FileLine", m_file, QString::number(line), what)
                               : text("FileWhole", m_file, what);
        m_out.set = ParamSet();
        return false;
    }

    bool read(const QString &content)
    {
        int lineNo = 0;
        qsizetype pos = 0;
        while (pos <= content.size()) {
            qsizetype end = content.indexOf(QLatin1Char('\n'), pos);
            if (end < 0) end = content.size();
            QStringView line = QStringView(content).mid(pos, end - pos);
            if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
            ++lineNo;
            pos = end + 1;
            if (line.trimmed().isEmpty()) continue;
            if (!readLine(line.toString(), lineNo)) return false;
        }
        if (m_columns.count == 0) return fail(0, text("ErrEmpty"));
        m_out.ok = true;
        return true;
    }

private:
    bool readLine(const QString &line, int lineNo)
    {
        if (hasControlCharacters(line)) return fail(lineNo, text("ErrBinary"));
        if (m_columns.count == 0) return readTitle(line, lineNo);
        if (!splitFields(line, m_delim, m_fields))
            return fail(lineNo, text("ErrQuote"));
        if (m_fields.at(0).trimmed().startsWith(QLatin1Char('#'))) {
            readComment(m_fields.at(0).trimmed(), m_out.set.meta());
            return true;
        }
        if (m_fields.size() != m_columns.count)
            return fail(lineNo, text("ErrFields", QString::number(m_fields.size()),
                                             QString::number(m_columns.count)));
        return readEntry(lineNo);
    }

    bool readTitle(const QString &line, int lineNo)
    {
        m_delim = line.contains(QLatin1Char(';')) ? QLatin1Char(';') : QLatin1Char(',');
        if (!splitFields(line, m_delim, m_fields))
            return fail(lineNo, text("ErrQuote"));
        m_columns = titleColumns(m_fields);
        if (m_columns.koordinate < 0 || m_columns.wert < 0) {
            m_columns.count = 0;
            return fail(lineNo, text("ErrTitle"));
        }
        return true;
    }

    bool readEntry(int lineNo)
    {
        const auto field = [this](int c) { return c < 0 ? QString() : m_fields.at(c); };
        const QString koord = field(m_columns.koordinate).trimmed();
        ParamSet::Entry e;
        e.key = m_columns.achse >= 0 ? ParamKey(koord, field(m_columns.achse))
                                     : ParamKey::fromText(koord);
        if (!IsKoordinate(e.key.koordinate))
            return fail(lineNo, text("ErrKoordinate", koord));
        e.value = field(m_columns.wert);
        e.name = field(m_columns.name);
        e.unit = field(m_columns.einheit);
        const auto seen = m_lines.constFind(e.key);
        if (seen != m_lines.cend())
            return fail(lineNo, text("ErrDuplicate", e.key.text(), QString::number(*seen)));
        m_lines.insert(e.key, lineNo);
        m_out.set.insert(std::move(e));
        return true;
    }

    QString m_file;
    ParamSetLoad &m_out;
    const TParaTable *m_language;
    Columns m_columns;
    QChar m_delim = QLatin1Char(';');
    QStringList m_fields;
    QHash<ParamKey, int> m_lines;
};

int lineAt(const QByteArray &bytes, qsizetype offset)
{
    return int(QByteArrayView(bytes).first(offset).count('\n')) + 1;
}

} // namespace

QString libraryVersion()
{
    return QStringLiteral(DRIVEWIZ_VERSION_TEXT);
}

bool ParamSet::save(const QString &fileName, QString *error, const TParaTable *language) const
{
    QByteArray out("\xEF\xBB\xBF");
    out += kTitle;
    const auto comment = [&out](const char *key, const QString &value) {
        out += quoted(QStringLiteral("# ") + QLatin1String(key) + QLatin1Char('=') + value) + "\r\n";
    };
    comment("family", m_meta.family);
    comment("wizard", m_meta.wizardId);
    comment("date", (m_meta.date.isValid() ? m_meta.date : QDateTime::currentDateTime())
                        .toString(Qt::ISODate));
    comment("library", m_meta.libraryVersion.isEmpty() ? libraryVersion() : m_meta.libraryVersion);
    for (const Entry &e : m_entries) {
        if (e.value.contains(QLatin1Char('\n')) || e.value.contains(QLatin1Char('\r'))) {
            if (error) *error = paramSetText(language, "ErrLineBreak", e.key.text());
            return false;
        }
        out += quoted(e.name) + ';' + quoted(e.key.koordinate) + ';' + quoted(e.key.achse) + ';' +
               quoted(e.value) + ';' + quoted(e.unit) + "\r\n";
    }
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(out) != out.size() || !file.commit()) {
        if (error) *error = paramSetText(language, "ErrWrite", fileName, file.errorString());
        return false;
    }
    return true;
}

ParamSetLoad ParamSet::load(const QString &fileName, const TParaTable *language)
{
    ParamSetLoad out;
    QFile file(fileName);
    SetReader reader(fileName, out, language);
    if (QFileInfo(fileName).isDir() || !file.open(QIODevice::ReadOnly)) {
        reader.fail(0, reader.text("ErrOpen", file.errorString()));
        return out;
    }
    // A file far too large is read only as far as the limit, to name the line there.
    QByteArray bytes = file.read(kMaxFileBytes + 1);
    if (bytes.size() > kMaxFileBytes) {
        reader.fail(lineAt(bytes, kMaxFileBytes),
                    reader.text("ErrTooLarge", QString::number(kMaxFileBytes >> 20)));
        return out;
    }
    return parse(bytes, fileName, language);
}

ParamSetLoad ParamSet::parse(const QByteArray &bytes, const QString &fileName,
                             const TParaTable *language)
{
    ParamSetLoad out;
    SetReader reader(fileName, out, language);
    if (bytes.size() > kMaxFileBytes) {
        reader.fail(lineAt(bytes, kMaxFileBytes),
                    reader.text("ErrTooLarge", QString::number(kMaxFileBytes >> 20)));
        return out;
    }
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        reader.fail(1, reader.text("ErrUtf16"));
        return out;
    }
    QByteArrayView view(bytes);
    if (view.startsWith("\xEF\xBB\xBF")) view = view.sliced(3);
    // Windows tools write Windows-1252; whatever is valid UTF-8 is read as UTF-8.
    const QString text = isValidUtf8(view.data(), view.size())
                             ? QString::fromUtf8(view)
                             : decodeWindows1252(view.toByteArray());
    reader.read(text);
    return out;
}

} // namespace drivewiz
