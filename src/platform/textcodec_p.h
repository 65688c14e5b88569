#ifndef DRIVEWIZ_PLATFORM_TEXTCODEC_P_H
#define DRIVEWIZ_PLATFORM_TEXTCODEC_P_H

// Internal helpers of the text codec, shared by the INI file and the RTF reader.

#include <QString>

namespace drivewiz::detail {

/// True when every character of the text has a Windows-1252 code.
bool fitsWindows1252(const QString &text);

/// The character of one byte in a Windows single-byte code page. 1250, 1251 and 1252 are
/// known; any other code page is read as 1252. Undefined codes become C1 controls.
char16_t singleByteToUnicode(int codePage, unsigned char byte);

/// Length of the leading run of 7-bit bytes.
qsizetype asciiPrefixLength(const char *data, qsizetype size);

} // namespace drivewiz::detail

#endif // DRIVEWIZ_PLATFORM_TEXTCODEC_P_H
