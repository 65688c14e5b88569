#ifndef DRIVEWIZ_TABLES_ARRAYGROUPS_P_H
#define DRIVEWIZ_TABLES_ARRAYGROUPS_P_H

// Helpers of the array group's CSV files, shared with the measurement import.

#include "drivewiz_global.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace drivewiz::tables {

/// Splits a CSV line at the delimiter. A field may be quoted ("a;b"); a doubled quote
/// inside quotes is one quote; blanks around a field are dropped.
void splitCsvLine(QStringView line, QChar delimiter, std::vector<QStringView> &fields,
                  std::vector<QString> &unquoted);

/// The delimiter of a title line: ";" when it holds one, else a tab, else ",".
QChar detectDelimiter(QStringView titleLine);

/// Reads an integer value as the parameter controls do: decimal, "...bin", "...hex",
/// "<digit>h" hexadecimal, or a number rounded half to even. False when it is none.
bool parseIntegerValue(QStringView text, qint64 &value);

/// The values of an array group's elements as its checksum reads them, kept while the
/// group's element rows and the table's cells stay as they were: a checksum or an export
/// of unchanged arrays then reads no cell text.
struct ElementValues
{
    /// What an element's cell holds.
    enum Kind : quint8 {
        Empty,    ///< no record or an empty cell: counts as 0, exported as nothing
        Signed,   ///< exactly the decimal digits of the value as a signed 32-bit number
        Unsigned, ///< exactly the decimal digits of the value, above the signed range
        Other     ///< any other text: the export reads the cell
    };
    std::vector<quint32> littleEndian; ///< [param * length + element]
    std::vector<quint8> kind;          ///< a Kind per element, in the same order
    quint64 rowsGeneration = 0;        ///< the group's element rows they were read with
    quint64 cellRevision = 0;          ///< the table's cells they were read from
    int column = -1;                   ///< the value column they were read from
    int length = -1;
};

/// The kind of a cell's text, and its value as the checksum reads it (parseIntegerValue;
/// 0 for text that is no integer).
ElementValues::Kind classifyValue(QStringView text, quint32 &value);

/// Reads a number with "." or "," as decimal separator (blanks around it allowed, an
/// exponent too); false when it is none.
bool parseNumber(QStringView text, double &value);
/// The same on ASCII bytes; the fast path of the measurement import.
bool parseNumber(const char *begin, const char *end, double &value);

/// A file dialog filter in the drive tool's form ("text|pattern|text|pattern") in Qt's
/// form ("text (pattern ...);;..."), every pattern listed.
QString qtFileFilter(const QString &filter);

} // namespace drivewiz::tables

#endif // DRIVEWIZ_TABLES_ARRAYGROUPS_P_H
