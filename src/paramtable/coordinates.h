#ifndef DRIVEWIZ_PARAMTABLE_COORDINATES_H
#define DRIVEWIZ_PARAMTABLE_COORDINATES_H

// Parameter coordinates ("B33", "E100.3", "2.B33.0") and parameter addresses (Q7adr).
//
// Q7adr bits, most significant first: 31-30 axis - 1, 29-24 group (letter - 64),
// 23-14 parameter number, 13-0 element. "B33" is 0x02084000.

#include "drivewiz_global.h"

#include <QString>

namespace drivewiz {

/// Does the text look like a coordinate: at least 3 characters after trimming, second
/// character "." or a digit, none of "$", "§", blank, "-", "+", last character a digit.
/// The untrimmed text is examined, so surrounding blanks fail.
DRIVEWIZ_EXPORT bool IsKoordinate(const QString &text);

/// The coordinate without its element: the first word when runs of "." delimit words
/// ("B33.5" -> "B33"). A text with axis prefix gives the axis ("2.B33" -> "2").
DRIVEWIZ_EXPORT QString GetPurePar(const QString &text);

/// Coordinate to address; `axis` (1-based, 0 = 1) applies when the text has no axis
/// prefix. A prefix needs an element ("2.B33.0"). Nothing is range-checked: the fields
/// are added in unsigned 32 bits, so B1024 is C00. A text that is no coordinate shows
/// "<TEXT>\r" + s_NoValidCoord and gives 0.
DRIVEWIZ_EXPORT quint32 GetQ7Addresse(const QString &coordinate, int axis);

/// Address to coordinate: "2." prefix for axes 2-4, number at least two digits, ".n" for
/// an element other than 0 (0x42084005 -> "2.B33.5"). Never fails.
DRIVEWIZ_EXPORT QString GetKoordinateAusQ7Adr(quint32 address);

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_COORDINATES_H
