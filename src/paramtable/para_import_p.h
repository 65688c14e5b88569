#ifndef DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H
#define DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H

// Byte-level helpers of the import table: the CSV field scanner and the sort-string
// builder, working on UTF-8 without allocating. They agree with ExtractCSVWord and
// TImportTable::BuildSortString (the tests check that on random lines).

#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <string>
#include <vector>

namespace drivewiz::importdetail {

/// One field of a CSV line: [begin, end) in the line.
struct FieldSpan
{
    size_t begin = 0;
    size_t end = 0;
};

/// Scans up to `maxFields` fields of a line the way ExtractCSVWord reads them (one
/// delimiter skipped, leading blanks dropped, a quoted field ends at the next quote and
/// the rest up to the delimiter is dropped). Returns the number of fields found; sets
/// `unterminated` when a quote is not closed.
size_t scanCsvFields(const char *line, size_t len, char delimiter, FieldSpan *fields,
                     size_t maxFields, bool &unterminated);

/// Scans a line like scanCsvFields and copies its first `columns` fields one after the
/// other to `out`; offsets[c] becomes base + the start of field c, offsets[columns] the end
/// (missing fields are empty). Returns the bytes written, at most `len`; `out` must have
/// room for `len` + 8 bytes.
size_t copyCsvFields(const char *line, size_t len, char delimiter, char *out, quint32 base,
                     quint32 *offsets, size_t columns, bool &unterminated);

/// The same for a line in Windows-1252: the copied cells are UTF-8 (up to 3 * `len` bytes,
/// so `out` must have room for 3 * `len` + 8).
size_t copyCsvFields1252(const char *line, size_t len, char delimiter, char *out, quint32 base,
                         quint32 *offsets, size_t columns, bool &unterminated);

/// The sort string of a row from its coordinate, axis and number cells (UTF-8). Plain
/// ASCII takes a fast path; anything else goes through BuildSortString.
std::string sortKey(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                    const char *nummer, size_t nummerLen);

/// Copies a text of at most `capacity` plain ASCII characters into `buffer`; false (and
/// nothing usable) for longer or non-ASCII text.
bool toAscii(const QString &text, char *buffer, size_t capacity, size_t &length);

/// IsKoordinate on UTF-8 bytes.
bool isKoordinateBytes(const char *s, size_t len);

/// Membership tests in a sorted key list for keys that mostly come in ascending order:
/// each search gallops on from where the last one ended.
class SortedKeyCursor
{
public:
    explicit SortedKeyCursor(const std::vector<std::string> &keys) : m_keys(keys) {}
    bool contains(const std::string &key);

private:
    const std::vector<std::string> &m_keys;
    size_t m_hint = 0;
};

/// Whether the trimmed text is a 32-bit integer (IsInteger on UTF-8 bytes).
bool isIntegerBytes(const char *s, size_t len);

} // namespace drivewiz::importdetail

#endif // DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H
