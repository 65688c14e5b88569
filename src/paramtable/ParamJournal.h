#ifndef DRIVEWIZ_PARAMTABLE_PARAMJOURNAL_H
#define DRIVEWIZ_PARAMTABLE_PARAMJOURNAL_H

#include "paramtable/ParamSet.h"
#include "paramtable/ParamWrite.h"

#include <QObject>
#include <QPointer>

#include <memory>

class QFile;

namespace drivewiz {

class TParaTable;

/// The journal of one wizard: every value the library writes through its table, offline
/// or online, one line per write, appended and flushed before the write is reported
/// done, never rewritten. The file is "<wizard id>.journal.csv" beside wiz.cfg.
///
/// Line: time (ISO 8601 with milliseconds and offset); coordinate; axis; old value;
/// new value; origin ("typed", "reset", "revert", "undo", "redo", "apply", "host");
/// mode ("offline", "online", "readback"); the host's answer ("" kept in the table,
/// "0" written, "V" or an error code). Fields are quoted as in set files.
///
/// A journal that cannot be written (a read-only folder, a full disk) is reported once
/// through the dialog service and by writeFailed(); editing goes on.
class DRIVEWIZ_EXPORT ParamJournal : public QObject
{
    Q_OBJECT

public:
    /// A journal line as read back.
    struct Entry
    {
        ParamWrite write;
        int line = 0; ///< its line in the file
    };

    /// What reading a journal gave.
    struct ReadResult
    {
        QList<Entry> entries;
        int skipped = 0;     ///< lines that were cut off or unreadable
        bool cutOff = false; ///< the last line was cut off (the writer stopped mid-line)
        QString error;       ///< the file could not be opened (empty: read)
    };

    /// Journals the writes of `table` into the file for its wizard id (none while the id
    /// is empty) or into `fileName` when given.
    explicit ParamJournal(TParaTable *table, const QString &fileName = QString(),
                          QObject *parent = nullptr);
    ~ParamJournal() override;

    /// "<folder of wiz.cfg>/<wizard id>.journal.csv"; characters a file name cannot hold
    /// become "_".
    static QString fileFor(const QString &wizardId);
    QString fileName() const { return m_fileName; }

    /// Appends one write; false when it could not be written (reported once).
    bool append(const ParamWrite &write);
    bool failed() const { return m_failed; }

    /// Reads a journal file; lines cut off by a writer that stopped (no line end, or not
    /// all fields) are skipped.
    static ReadResult read(const QString &fileName);
    ReadResult read() const { return read(m_fileName); }

    /// The values as they were before `moment`: for every parameter written at or after
    /// it, the old value of its first such write. Parameters not written since are not in
    /// the set.
    static ParamSet stateBefore(const QList<Entry> &entries, const QDateTime &moment);

    /// The journal line of a write, with its line end.
    static QByteArray formatLine(const ParamWrite &write);

Q_SIGNALS:
    /// Emitted after a line was written.
    void appended(const drivewiz::ParamWrite &write);
    /// The journal cannot be written; emitted once.
    void writeFailed(const QString &message);

private:
    bool open();
    void fail(const QString &reason);

    QPointer<TParaTable> m_table;
    QString m_fileName;
    std::unique_ptr<QFile> m_file;
    bool m_failed = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARAMJOURNAL_H
