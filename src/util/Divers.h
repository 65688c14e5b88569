#ifndef DRIVEWIZ_UTIL_DIVERS_H
#define DRIVEWIZ_UTIL_DIVERS_H

// Divers: the shared text, number, date and form helpers of the library.
//
// Positions and word numbers are 1-based. A TCharSet holds characters 0..255 only; any
// other character is never a member. Integer and float conversions follow the framework
// rules of platform/convert.h (StrToInt, StrToFloat, DecimalSeparator()).
//
// Only forward declarations of widget classes appear here, so non-visual code may
// include this header without pulling in Qt Widgets.

#include "drivewiz_global.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <bitset>
#include <initializer_list>

class QLabel;
class QObject;
class QPlainTextEdit;
class QTextEdit;
class QWidget;

namespace drivewiz {

/// Colour in the drive tool's encoding 0x00BBGGRR.
using TColor = qint32;

/// Date and time as days since 30 December 1899; the fraction is the time of day.
/// 0 is the null date ("no date").
using TDateTime = double;

/// Growable character buffer.
using TopenCharArray = QByteArray;

/// Single mode: every delimiter ends a field (two in a row enclose an empty field).
/// Multiple mode: a run of delimiters counts as one.
enum TExtractWordMode { ewSingleDelim = 0, ewMultipleDelim = 1 };

/// Year as two digits (years 19xx -> xx, 20xx -> xx) or in full.
enum TJahrFormat { tjahr2 = 0, tjahr4 = 1 };

/// What a table export writes: titles, all records, visible records only, titles only,
/// and whether the target file is overwritten rather than appended to.
enum TExportCsvOptions {
    tExp_ColTitles,
    tExp_AllRecords,
    tExp_OnlyVisibleRecs,
    tExp_ColTitlesOnly,
    tExp_rewrite
};

/// A set of TExportCsvOptions, stored as a bit mask with bit (1 << option) per member.
/// Build it as `TExportCsvOptionsType{tExp_ColTitles, tExp_rewrite}`.
class TExportCsvOptionsType
{
public:
    constexpr TExportCsvOptionsType() = default;
    constexpr TExportCsvOptionsType(std::initializer_list<TExportCsvOptions> options)
    {
        for (TExportCsvOptions o : options)
            m_bits |= bit(o);
    }
    constexpr bool contains(TExportCsvOptions o) const { return (m_bits & bit(o)) != 0; }
    constexpr bool isEmpty() const { return m_bits == 0; }
    constexpr TExportCsvOptionsType &insert(TExportCsvOptions o)
    {
        m_bits |= bit(o);
        return *this;
    }
    constexpr TExportCsvOptionsType &remove(TExportCsvOptions o)
    {
        m_bits &= ~bit(o);
        return *this;
    }
    /// The raw mask, bit (1 << option) per member.
    constexpr unsigned bits() const { return m_bits; }
    constexpr bool operator==(TExportCsvOptionsType other) const { return m_bits == other.m_bits; }
    constexpr bool operator!=(TExportCsvOptionsType other) const { return m_bits != other.m_bits; }

private:
    static constexpr unsigned bit(TExportCsvOptions o) { return 1u << unsigned(o); }
    unsigned m_bits = 0;
};

/// A 256-bit membership set of characters. Characters above 255 are never members.
class DRIVEWIZ_EXPORT TCharSet
{
public:
    TCharSet() = default;
    /// The characters of a UTF-8 text ("§" is character 167).
    TCharSet(const char *chars);
    TCharSet(const QString &chars);

    bool contains(QChar c) const { return c.unicode() < 256 && m_bits.test(c.unicode()); }
    void insert(QChar c);
    void insert(const QString &chars);
    /// Inserts every character from `first` to `last` (both included).
    void insertRange(QChar first, QChar last);
    void remove(QChar c);
    bool isEmpty() const { return m_bits.none(); }

private:
    std::bitset<256> m_bits;
};

// --- Globals -----------------------------------------------------------------------

/// Working days per week, used by NextWerkTag (default 5: Monday to Friday).
extern DRIVEWIZ_EXPORT int Tage_ProWo;
/// 17 colours: index 0 black, then black, red, bright green, yellow, blue, magenta, cyan,
/// white, maroon, olive, green, navy, purple, teal, grey, silver.
extern DRIVEWIZ_EXPORT const TColor wdColors[17];
/// Scale factor for large-font screens (1.0 = normal).
extern DRIVEWIZ_EXPORT double LargeFontFaktor;
/// The rich-text view that the host's main form supplies for RTF conversion.
extern DRIVEWIZ_EXPORT QPointer<QTextEdit> tmpRichedit;
/// The earliest date the week functions accept (1 January 1980); a date on or before it
/// counts as no date.
extern DRIVEWIZ_EXPORT const TDateTime MinDatum;

// --- Words and fields ----------------------------------------------------------------

/// The n-th word (1-based) of `s`, or an empty text. A leading delimiter never makes an
/// empty first word.
DRIVEWIZ_EXPORT QString LExtractWord(int n, const QString &s, const TCharSet &delims,
                                     TExtractWordMode mode);
/// Number of words of `s` as LExtractWord counts them.
DRIVEWIZ_EXPORT int LWordCount(const QString &s, const TCharSet &delims, TExtractWordMode mode);
/// The n-th CSV field: leading blanks dropped, a field starting with '"' runs to the next
/// '"' (no escape for doubled quotes) and the rest up to the next delimiter is skipped.
DRIVEWIZ_EXPORT QString ExtractCSVWord(int n, const QString &s, const TCharSet &delims);
/// True if `word` is one of the words of `list` (multiple mode, compared upper-cased).
/// Only the first 255 characters of the list are searched; a longer list is reported.
DRIVEWIZ_EXPORT bool WordInList(const QString &word, const QString &list, const TCharSet &delims);
/// Index of the first line whose first word (delimited by blank and ":") equals the first
/// word of `text`, or -1.
DRIVEWIZ_EXPORT int GetIndexOfValue(const QStringList &list, const QString &text);

// --- Text helpers --------------------------------------------------------------------

/// Removes all blanks, in place.
DRIVEWIZ_EXPORT void EntferneBlanks(QString &text);
/// Removes every occurrence of `c`, in place.
DRIVEWIZ_EXPORT void EntferneChar(QString &text, QChar c);
/// Keeps the digits and the characters of `keep`.
DRIVEWIZ_EXPORT QString ElimChars(const QString &text, const TCharSet &keep);
/// Keeps a..z, A..Z, digits, characters 192..254 and the characters of `keep`.
DRIVEWIZ_EXPORT QString ElimSonderzeichen(const QString &text, const TCharSet &keep);
/// Trims, removes every blank, lower-cases.
DRIVEWIZ_EXPORT QString ElimBlanksLowerCase(const QString &text);
/// Pads with "0" on the left to `width` (at most 255 characters, see LeftPadCh).
DRIVEWIZ_EXPORT QString LinksNull(const QString &text, int width);
/// Pads with blanks on the left to `width`.
DRIVEWIZ_EXPORT QString LinksBlanc(const QString &text, int width);
/// Pads with `c` on the left to `width`; the result never exceeds 255 characters, and a
/// text already as long (or of 255 characters or more) comes back unchanged.
DRIVEWIZ_EXPORT QString LeftPadCh(const QString &text, QChar c, int width);
/// Decimal text padded with "0" to `width`; a minus sign stands before the zeros.
DRIVEWIZ_EXPORT QString LeadZeroInt(int value, int width);
/// `text` padded with "0" on the left to `width`.
DRIVEWIZ_EXPORT QString LeadZeroStr(const QString &text, int width);
/// Replaces the decimal separator that is not DecimalSeparator() by it.
DRIVEWIZ_EXPORT QString TrimFloat(const QString &text);
/// Appends "\" unless the path is empty or ends in "\", ":" or NUL.
DRIVEWIZ_EXPORT QString AddBackSlash(const QString &path);
/// 1-based position of the last occurrence of `pattern` in `text`; 0 if none or empty.
DRIVEWIZ_EXPORT int Rightpos(const QString &pattern, const QString &text);
/// File name without folder ("/", "\" or ":") and without its last extension.
DRIVEWIZ_EXPORT QString ExtractPureFileName(const QString &path);

// --- Number tests and conversions ----------------------------------------------------

/// The trimmed text is not empty and converts with StrToInt.
DRIVEWIZ_EXPORT bool IsInteger(const QString &text);
/// The trimmed text is not empty and converts with StrToFloat.
DRIVEWIZ_EXPORT bool IsFloat(const QString &text);
/// The text converts with StrToDate.
DRIVEWIZ_EXPORT bool IsDate(const QString &text);
/// The trimmed text is empty or an integer of value 0.
DRIVEWIZ_EXPORT bool IsNullOderLeer(const QString &text);
/// "1" or "0".
DRIVEWIZ_EXPORT QString BoolToStr(bool flag);
/// True for "1", "TRUE", "WAHR" (any case); a text with ":" counts only up to the ":".
DRIVEWIZ_EXPORT bool StrToBool(const QString &text);
/// Hex digits of the text ("$FF", "0x1F", "1Fh"); other characters are ignored. Computed
/// in unsigned 32-bit arithmetic without overflow check; empty gives 0.
DRIVEWIZ_EXPORT int HexToInt(const QString &text);
/// Value of the "0"/"1" characters of the text (others ignored), 32-bit wrap-around.
DRIVEWIZ_EXPORT int BinToDec(const QString &text);
/// Binary digits (none for 0) padded with "0" to `width`, then "bin": 5, 8 -> "00000101bin".
DRIVEWIZ_EXPORT QString DecToBin(quint32 value, int width);
/// (1 shl (n mod 32)) shr 1 for the 1-based bit number n; empty text counts as 0.
/// Raises ConvertError when the text is no integer.
DRIVEWIZ_EXPORT int GetBitMaske(const QString &text);
/// "8 Bit" for 255, "-7 Bit" for -128, "-31Bit" for "-2147483648"; other integers as
/// decimal text; a text that is no integer comes back unchanged.
DRIVEWIZ_EXPORT QString IntToBitCount(const QString &text);
/// Formats a number under a picture mask (see Divers.cpp): "@" digit with leading zero,
/// "#" digit with leading blank, "*" digit with leading asterisk, "," thousands separator
/// between digit places, "." before digit places = decimal point; other text is literal.
/// "@@" with 7 gives "07". A number too wide for its places fills them with "*".
DRIVEWIZ_EXPORT QString tpForm(const QString &picture, double number);
/// Decimal text of Round(time * factor), e.g. factor 86400 turns days into seconds.
DRIVEWIZ_EXPORT QString TimeDiff2Str(double time, double factor);

// --- Wildcards, sorting, buffers -----------------------------------------------------

/// File-name wildcard match ("?" one character, "*" any run); base and extension are
/// matched separately.
DRIVEWIZ_EXPORT bool WildComp(const QString &mask, const QString &name);
/// Quicksort of a[low..high] in place (indexes clamped to the list).
DRIVEWIZ_EXPORT void SortIntegerArray(QList<int> &a, int low, int high);
/// Binary search in the sorted a[low..high].
DRIVEWIZ_EXPORT bool FindInSortIntArray(int value, const QList<int> &a, int low, int high);
/// Grows the buffer to needed + 1 bytes (zero-filled) when it is shorter.
DRIVEWIZ_EXPORT void CheckCharBufferSize(TopenCharArray &buffer, int needed);

// --- Files and forms -----------------------------------------------------------------

/// Number of text lines of a file (CR, LF or CRLF ends a line); 0 if it does not exist.
DRIVEWIZ_EXPORT int GetAnzahlASCIIZeilen(const QString &fileName);
/// Writes the edit's lines as UTF-8 text lines ending in "\n", replacing the file.
/// Returns false only when there is no edit or the file cannot be written.
DRIVEWIZ_EXPORT bool WriteMemoToFile(QPlainTextEdit *memo, const QString &fileName);
/// count 0: removes the line breaks at the very end of the text. count > 0: removes
/// trailing empty lines until the last line is not empty.
DRIVEWIZ_EXPORT void Del_CRLF(QTextEdit *edit, int count);
/// Loads rich text (RTF) into `tmpRichedit` and returns its plain text; without that view
/// it shows a message and returns nothing.
DRIVEWIZ_EXPORT QString ConvertRTFToAsciiText(const QByteArray &rtf);
/// Depth-first search of the container's child widgets for an object name
/// (case-insensitive); an empty name finds nothing.
DRIVEWIZ_EXPORT QWidget *FindMyControl(QWidget *container, const QString &name);
/// The same, matching the class name without namespace (case-insensitive).
DRIVEWIZ_EXPORT QWidget *FindMyClass(QWidget *container, const QString &className);
/// The topmost window widget among the object and its parents, or null.
DRIVEWIZ_EXPORT QWidget *GetMainForm(QObject *component);
/// Sets the check box "CheckBoxArchiv" of every top-level widget (and of `form`).
DRIVEWIZ_EXPORT void AlleWindowsArchiv(QWidget *form, bool flag);
/// On a screen that is not 96 pixels per inch, lets the picture stretch and scales the
/// label's size by 96 / resolution.
DRIVEWIZ_EXPORT void AdjustImageSize(QLabel *image);

// --- Dates ---------------------------------------------------------------------------

DRIVEWIZ_EXPORT TDateTime QDateToDateTime(const QDate &date);
/// The date part; invalid for values outside the years 1 to 9999 (and NaN).
DRIVEWIZ_EXPORT QDate DateTimeToQDate(TDateTime t);
/// Sunday 1 .. Saturday 7.
DRIVEWIZ_EXPORT int DayOfWeek(TDateTime t);
/// Raises ConvertError for a year outside 1..9999 or an impossible day.
DRIVEWIZ_EXPORT TDateTime EncodeDate(int year, int month, int day);
DRIVEWIZ_EXPORT bool TryEncodeDate(int year, int month, int day, TDateTime &out);
/// The short date format (default "dd.mm.yy") and its separator (default ".").
DRIVEWIZ_EXPORT QString ShortDateFormat();
DRIVEWIZ_EXPORT QChar DateSeparator();
DRIVEWIZ_EXPORT void SetShortDateFormat(const QString &format, QChar separator);
/// Sets the short date format to "dd.mm.yy" with "."; done once at start-up.
DRIVEWIZ_EXPORT void InitDatumFormat();
/// Two or three numbers separated by DateSeparator(), in the order of ShortDateFormat();
/// a missing year is this year, a year of one or two digits means 2000-2049 / 1950-1999.
/// Raises ConvertError ("'x' ist kein gültiges Datum").
DRIVEWIZ_EXPORT TDateTime StrToDate(const QString &text);
DRIVEWIZ_EXPORT bool TryStrToDate(const QString &text, TDateTime &out);

DRIVEWIZ_EXPORT int GetYear(TDateTime date);
DRIVEWIZ_EXPORT int CurrYear();
/// "d.m.y" -> "dd.mm.y"; a text of fewer than three parts comes back unchanged.
DRIVEWIZ_EXPORT QString FormatDatum(const QString &text);
/// "dd.mm.yy" or "dd/mm/yy"; a year below 80 means 20yy, 80..99 means 19yy.
/// Raises ConvertError on bad text.
DRIVEWIZ_EXPORT TDateTime Str2000ToDate(const QString &text);
/// "dd.mm.yyyy".
DRIVEWIZ_EXPORT QString DateTo2000Str(TDateTime date);
/// The Sunday on or after the date (date part only).
DRIVEWIZ_EXPORT TDateTime RundeDatum(TDateTime date);
/// The nearest working day: forward (direction >= 0) or backward, by Tage_ProWo.
DRIVEWIZ_EXPORT TDateTime NextWerkTag(TDateTime date, int direction);
/// Last working day of calendar week `week` of the four-digit `year`; year 0 gives the
/// null date. Raises ConvertError for a year outside 1..9999.
DRIVEWIZ_EXPORT TDateTime WoJahrNumToDate(int week, int year);
/// Last working day of the week "WW.JJ" (or of a full date); a bad text is reported and
/// gives the null date.
DRIVEWIZ_EXPORT TDateTime WoJahrToDate(const QString &text);
/// Calendar week and year of the date; both 0 for no date. Late-December days of the
/// next year's week 1 get week 53 of their own year.
DRIVEWIZ_EXPORT void DateToWoJahrNum(TDateTime date, int &week, int &year, TJahrFormat format);
/// "WW.JJ", empty for no date.
DRIVEWIZ_EXPORT QString DateToWoJahr(TDateTime date);
/// The week number of 31 December of the year (0 for years before 1980).
DRIVEWIZ_EXPORT int GetMaxWoImJahr(int year);
/// Monday of the week "WW.JJ".
DRIVEWIZ_EXPORT TDateTime GetMontagDate(const QString &text);
/// The last moment of the Sunday of the week "WW.JJ".
DRIVEWIZ_EXPORT TDateTime GetSonntagDate(const QString &text);
/// "WW.JJ" normalised: each part trimmed, cut to 10 characters, padded to two digits.
DRIVEWIZ_EXPORT QString FormatKW(const QString &text);
/// Moves the week text by `weeks` weeks, in place.
DRIVEWIZ_EXPORT void ModifyKWText(QString &text, int weeks);
/// The month as whole weeks: first Monday and last Sunday (both 0 for a bad month).
DRIVEWIZ_EXPORT void GetAnfEndDateMonat(int month, int year, TDateTime &first, TDateTime &last);
/// The calendar weeks of GetAnfEndDateMonat's two dates.
DRIVEWIZ_EXPORT void GetAnfEndKWMonat(int month, int year, int &firstWeek, int &lastWeek);

} // namespace drivewiz

#endif // DRIVEWIZ_UTIL_DIVERS_H
