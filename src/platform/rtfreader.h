#ifndef DRIVEWIZ_PLATFORM_RTFREADER_H
#define DRIVEWIZ_PLATFORM_RTFREADER_H

#include "drivewiz_global.h"

#include <QByteArray>
#include <QString>

class QTextDocument;

namespace drivewiz {

// A small reader for the rich text (RTF) in which hosts deliver parameter help. It reads
// text, paragraphs (\par), line breaks (\line), tabs, bold, italic, underline, strike,
// font size (\fs), colour (\colortbl with \cf) and alignment (\ql \qc \qr \qj). 8-bit
// characters (\'hh) are read in the code page of the font's \fcharset or of \ansicpg
// (1250, 1251, 1252; others as 1252); \uN with \ucN fallback skipping. Font tables,
// style sheets, document info, pictures, headers, footers, field instructions and every
// {\* ...} group are skipped. Nesting deeper than 256 groups is read as skipped.
// Malformed input (unbalanced braces, cut-off escapes, huge numbers) is read as far as
// it makes sense and never crashes or hangs. Bytes that do not start with "{\rtf" are
// taken as plain text (decoded like a text file).

/// Replaces the document's contents with the rich text.
DRIVEWIZ_EXPORT void RtfToDocument(const QByteArray &rtf, QTextDocument *doc);

/// The text alone: paragraphs separated by "\n" (no newline after the last), a \line
/// as "\n", a \tab as "\t".
DRIVEWIZ_EXPORT QString RtfToPlainText(const QByteArray &rtf);

} // namespace drivewiz

#endif // DRIVEWIZ_PLATFORM_RTFREADER_H
