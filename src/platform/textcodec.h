#ifndef DRIVEWIZ_PLATFORM_TEXTCODEC_H
#define DRIVEWIZ_PLATFORM_TEXTCODEC_H

#include "drivewiz_global.h"

#include <QByteArray>
#include <QString>

namespace drivewiz {

/// Decodes the bytes of a text file (descriptions, selection lists, language files,
/// imports). Valid UTF-8 is decoded as UTF-8; anything else as Windows-1252, where the
/// five codes 0x81, 0x8D, 0x8F, 0x90 and 0x9D that Windows-1252 leaves undefined become
/// the C1 controls U+0081 ... U+009D. A leading UTF-8 byte order mark is dropped in both
/// cases. The result does not depend on how Qt was built (no codec plugins, no ICU).
DRIVEWIZ_EXPORT QString decodeText(const QByteArray &bytes);

/// Decodes bytes as Windows-1252, whatever they are (no byte order mark handling).
DRIVEWIZ_EXPORT QString decodeWindows1252(const QByteArray &bytes);

/// Windows-1252 bytes straight to UTF-8, for readers that keep text as UTF-8.
DRIVEWIZ_EXPORT QByteArray windows1252ToUtf8(const char *data, qsizetype size);

/// Encodes text as Windows-1252; a character that has no code there becomes "?" (one
/// "?" per character, also for characters outside the BMP).
DRIVEWIZ_EXPORT QByteArray encodeWindows1252(const QString &text);

/// Encodes text as UTF-8 without a byte order mark.
DRIVEWIZ_EXPORT QByteArray encodeUtf8(const QString &text);

/// UTF-8 bytes as text, a byte order mark at their start kept as the character it is:
/// QString::fromUtf8 drops it, which would change a cell or a key that starts with one.
DRIVEWIZ_EXPORT QString utf8Text(const char *data, qsizetype size);
inline QString utf8Text(const QByteArray &bytes)
{
    return utf8Text(bytes.constData(), bytes.size());
}

/// True when the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing
/// above U+10FFFF, no cut-off sequence. The empty text is valid.
DRIVEWIZ_EXPORT bool isValidUtf8(const char *data, qsizetype size);

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_TEXTCODEC_H
