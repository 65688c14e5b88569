// The journal of a wizard's writes: appended line by line, read back skipping what a
// writer that stopped mid-line left.

#include "paramtable/ParamJournal.h"

#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"
#include "paramtable/ParamCsv_p.h"
#include "paramtable/ParamTexts.h"
#include "platform/dialogs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace drivewiz {

namespace {

constexpr int kFields = 8;
const char *const kTitle =
    "\"Zeit\";\"Koordinate\";\"Achse\";\"Alt\";\"Neu\";\"Herkunft\";\"Modus\";\"Antwort\"\r\n";

const char *modeWord(tOnlineModus mode)
{
    switch (mode) {
    case omOnline: return "online";
    case omRueckdoku: return "readback";
    default: return "offline";
    }
}

bool modeFromWord(const QString &word, tOnlineModus &mode)
{
    for (const tOnlineModus m : {omOffline, omOnline, omRueckdoku}) {
        if (word == QLatin1String(modeWord(m))) {
            mode = m;
            return true;
        }
    }
    return false;
}

bool answerFromText(const QString &text, int &answer)
{
    if (text.isEmpty()) {
        answer = ParamWrite::kKeptInTable;
        return true;
    }
    if (text.size() == 1 && text.at(0).isLetter()) {
        answer = text.at(0).unicode();
        return true;
    }
    bool ok = false;
    answer = text.toInt(&ok);
    return ok && answer >= 0 && answer < 256;
}

// One complete line into a write; false for a line that is not one.
bool parseLine(const QString &line, ParamWrite &w)
{
    QStringList f;
    if (!paramcsv::splitFields(line, QLatin1Char(';'), f) || f.size() != kFields) return false;
    w.time = QDateTime::fromString(f.at(0), Qt::ISODateWithMs);
    w.key = ParamKey(f.at(1), f.at(2));
    w.oldValue = f.at(3);
    w.newValue = f.at(4);
    return w.time.isValid() && w.key.isValid() && writeOriginFromKeyword(f.at(5), w.origin) &&
           modeFromWord(f.at(6), w.mode) && answerFromText(f.at(7), w.answer);
}

} // namespace

ParamJournal::ParamJournal(TParaTable *table, const QString &fileName, QObject *parent)
    : QObject(parent), m_table(table), m_fileName(fileName)
{
    if (m_fileName.isEmpty() && table && !table->wizIdString().trimmed().isEmpty())
        m_fileName = fileFor(table->wizIdString());
    if (table) connect(table, &TParaTable::valueWritten, this, &ParamJournal::append);
}

ParamJournal::~ParamJournal() = default;

QString ParamJournal::fileFor(const QString &wizardId)
{
    static const QRegularExpression bad(QStringLiteral("[^A-Za-z0-9_.-]"));
    QString name = wizardId.trimmed();
    name.replace(bad, QStringLiteral("_"));
    if (name.isEmpty() || name.startsWith(QLatin1Char('.'))) name.prepend(QLatin1Char('_'));
    return QFileInfo(GetCFGFileName()).absoluteDir().filePath(name + QStringLiteral(".journal.csv"));
}

QByteArray ParamJournal::formatLine(const ParamWrite &w)
{
    using paramcsv::quoted;
    // With its offset, so that a journal read in another time zone or season is right.
    const QDateTime time = w.time.toOffsetFromUtc(w.time.offsetFromUtc());
    return quoted(time.toString(Qt::ISODateWithMs)) + ';' + quoted(w.key.koordinate) + ';' +
           quoted(w.key.achse) + ';' + quoted(w.oldValue) + ';' + quoted(w.newValue) + ';' +
           quoted(writeOriginKeyword(w.origin)) + ';' + quoted(QLatin1String(modeWord(w.mode))) +
           ';' + quoted(w.answerText()) + "\r\n";
}

// Unbuffered: each line is one write to the system, done before append() returns.
bool ParamJournal::open()
{
    if (m_file) return true;
    if (m_fileName.isEmpty()) return false;
    auto file = std::make_unique<QFile>(m_fileName);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        fail(file->errorString());
        return false;
    }
    if (file->size() == 0 && file->write(kTitle) < 0) {
        fail(file->errorString());
        return false;
    }
    m_file = std::move(file);
    return true;
}

void ParamJournal::fail(const QString &reason)
{
    m_file.reset();
    if (m_failed) return;
    m_failed = true;
    const QString message = paramSetText(m_table, "JournalFailed", m_fileName, reason);
    ShowMessage(message);
    Q_EMIT writeFailed(message);
}

bool ParamJournal::append(const ParamWrite &write)
{
    if (m_failed || !open()) return false;
    // Line breaks in values would cut the line: they are written as blanks in the
    // journal (the set file refuses them instead).
    ParamWrite w = write;
    for (QString *v : {&w.oldValue, &w.newValue}) {
        v->replace(QLatin1Char('\r'), QLatin1Char(' '));
        v->replace(QLatin1Char('\n'), QLatin1Char(' '));
    }
    const QByteArray line = formatLine(w);
    if (m_file->write(line) != line.size() || !m_file->flush()) {
        fail(m_file->errorString());
        return false;
    }
    Q_EMIT appended(write);
    return true;
}

ParamJournal::ReadResult ParamJournal::read(const QString &fileName)
{
    ReadResult out;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        out.error = file.errorString();
        return out;
    }
    const QByteArray bytes = file.readAll();
    int lineNo = 0;
    qsizetype pos = 0;
    while (pos < bytes.size()) {
        const qsizetype end = bytes.indexOf('\n', pos);
        ++lineNo;
        if (end < 0) { // no line end: the writer stopped in this line
            out.cutOff = true;
            ++out.skipped;
            break;
        }
        QByteArrayView raw = QByteArrayView(bytes).sliced(pos, end - pos);
        pos = end + 1;
        if (raw.endsWith('\r')) raw.chop(1);
        if (raw.trimmed().isEmpty() || (lineNo == 1 && raw.startsWith("\"Zeit\""))) continue;
        Entry e;
        e.line = lineNo;
        if (parseLine(QString::fromUtf8(raw), e.write))
            out.entries << e;
        else
            ++out.skipped;
    }
    return out;
}

ParamSet ParamJournal::stateBefore(const QList<Entry> &entries, const QDateTime &moment)
{
    ParamSet set;
    for (const Entry &e : entries) {
        if (e.write.time < moment || set.indexOf(e.write.key) >= 0) continue;
        ParamSet::Entry s;
        s.key = e.write.key;
        s.value = e.write.oldValue;
        set.insert(s);
    }
    set.meta().date = moment;
    return set;
}

} // namespace drivewiz
