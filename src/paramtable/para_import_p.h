#ifndef DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H
#define DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H

// Byte-level helpers of the import table: the CSV field scanner and the sort-string
// builder, working on UTF-8 without allocating. They agree with ExtractCSVWord and
// TImportTable::BuildSortString (the tests check that on random lines).

#include <QString>

#include <cstddef>
#include <string>

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

/// The sort string of a row from its coordinate, axis and number cells (UTF-8). Plain
/// ASCII takes a fast path; anything else goes through BuildSortString.
std::string sortKey(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                    const char *nummer, size_t nummerLen);

/// Copies a text of at most `capacity` plain ASCII characters into `buffer`; false (and
/// nothing usable) for longer or non-ASCII text.
bool toAscii(const QString &text, char *buffer, size_t capacity, size_t &length);

/// IsKoordinate on UTF-8 bytes.
bool isKoordinateBytes(const char *s, size_t len);

/// Whether the trimmed text is a 32-bit integer (IsInteger on UTF-8 bytes).
bool isIntegerBytes(const char *s, size_t len);

} // namespace drivewiz::importdetail

#endif // DRIVEWIZ_PARAMTABLE_PARA_IMPORT_P_H
