#ifndef DRIVEWIZ_PARAMTABLE_PARAMSET_H
#define DRIVEWIZ_PARAMTABLE_PARAMSET_H

#include "paramtable/ParamWrite.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QVector>

namespace drivewiz {

class TImportTable;
class TParaTable;
struct ParamSetLoad;

/// A set of parameter values: per parameter its value, name and unit, plus where the set
/// comes from (drive family, wizard, date, library version). Sets are made from a table
/// (its current values, its defaults), read from the drive, or loaded from a file; they
/// never write anything by themselves: a ParamCompare shows them beside the table and
/// writes what the user ticks.
///
/// The file is CSV that the import table reads too: the title line
/// "Name";"Koordinate";"Achse";"Wert";"Einheit", then comment lines (a single field
/// starting with "#": "# family=...", "# wizard=...", "# date=...", "# library=..."),
/// then one line per parameter, every field quoted. It is written in UTF-8; a file in
/// Windows-1252 is read as such.
class DRIVEWIZ_EXPORT ParamSet
{
public:
    struct Entry
    {
        ParamKey key;
        QString value;
        QString name;
        QString unit;
        /// False when the value could not be read (from the drive): it is not known, and
        /// `value` is empty.
        bool read = true;
    };

    struct Meta
    {
        QString family;   ///< value of E50 when the table has it
        QString wizardId; ///< wizIdString of the wizard that made the set
        QDateTime date;
        QString libraryVersion;
    };

    ParamSet() = default;

    Meta &meta() { return m_meta; }
    const Meta &meta() const { return m_meta; }

    int size() const { return int(m_entries.size()); }
    bool isEmpty() const { return m_entries.isEmpty(); }
    const Entry &at(int i) const { return m_entries.at(i); }
    const QVector<Entry> &entries() const { return m_entries; }
    /// Position of a parameter, or -1.
    int indexOf(const ParamKey &key) const;
    const Entry *find(const ParamKey &key) const;
    /// Adds an entry, replacing one of the same parameter.
    void insert(const Entry &entry);
    void insert(Entry &&entry);
    /// Room for `n` entries.
    void reserve(int n);
    /// The keys in set order.
    QList<ParamKey> keys() const;

    // --- making sets ----------------------------------------------------------------------
    /// The current values ("Wert") of a table: all its rows, or those of `only`. Rows
    /// without coordinate are skipped. The family is taken from E50 when the table has it.
    static ParamSet fromTable(const TImportTable &table, const QList<ParamKey> &only = {});
    /// As fromTable, with the wizard id of a parameter table.
    static ParamSet fromWizard(const TParaTable &table, const QList<ParamKey> &only = {});
    /// The defaults of the description file ("Defaultwert").
    static ParamSet defaultsOf(const TImportTable &table, const QList<ParamKey> &only = {});
    /// The drive's values, read through the host's read callback one by one without
    /// touching the table. A read that fails gives an entry with `read` false; no
    /// message is shown for it.
    static ParamSet fromDrive(TParaTable &table, const QList<ParamKey> &only = {});

    // --- files ----------------------------------------------------------------------------
    /// Writes the set; on failure `error` holds a message naming the file. A value holding
    /// a line break cannot be written (the file has one parameter per line): the save
    /// fails naming its coordinate, and no file is left half-written.
    bool save(const QString &fileName, QString *error = nullptr,
              const TParaTable *language = nullptr) const;
    /// Reads a set file. A malformed file (unterminated quotes, a wrong number of fields,
    /// bytes that are no text, a missing title) gives no set and a message naming the
    /// file and line.
    /// Messages are in the language of `language` (German without).
    static ParamSetLoad load(const QString &fileName, const TParaTable *language = nullptr);
    /// The same from bytes in memory; `fileName` names them in messages.
    static ParamSetLoad parse(const QByteArray &bytes, const QString &fileName,
                              const TParaTable *language = nullptr);

private:
    friend class ParamSetBuilder;
    void ensureIndex() const;

    // The index is made when first needed: a set made from a table to be compared is
    // looked up by the other side only. Entries are unique by key in any case.
    QVector<Entry> m_entries;
    mutable QHash<ParamKey, int> m_index; // key -> position
    mutable bool m_indexed = true;
    Meta m_meta;
};

/// What loading a set file gave: the set, or the first error with its line (1-based,
/// 0 when the error concerns the whole file).
struct DRIVEWIZ_EXPORT ParamSetLoad
{
    ParamSet set;
    bool ok = false;
    int line = 0;
    QString error; ///< the message to show: file, line, what is wrong
};

/// The position of a parameter in a table's main index, or -1. Axes "0", "1" and ""
/// stand in for each other: a table lists a drive-wide parameter under one of them.
DRIVEWIZ_EXPORT int FindParamKey(const TImportTable &table, const ParamKey &key);

/// The library's version as set files record it.
DRIVEWIZ_EXPORT QString libraryVersion();

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARAMSET_H
