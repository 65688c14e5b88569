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
