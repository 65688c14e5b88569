#ifndef DRIVEWIZ_PARAMTABLE_PARAMCSV_P_H
#define DRIVEWIZ_PARAMTABLE_PARAMCSV_P_H

// The CSV fields of set and journal files.

#include <QByteArray>
#include <QChar>
#include <QString>
#include <QStringList>

namespace drivewiz::paramcsv {

/// The field quoted, quotes doubled, in UTF-8.
QByteArray quoted(const QString &field);

/// Splits one line into fields; false for an unterminated quote. Quoted fields double
/// their quotes; blanks before a quoted field and text after its closing quote are
/// ignored.
bool splitFields(const QString &line, QChar delim, QStringList &fields);

} // namespace drivewiz::paramcsv

#endif // DRIVEWIZ_PARAMTABLE_PARAMCSV_P_H
