#include "util/Divers.h"

#include "platform/convert.h"
#include "platform/dialogs.h"

#include <algorithm>
#include <cmath>

namespace drivewiz {

int Tage_ProWo = 5;

const TColor wdColors[17] = {
    0x000000, // black
    0x000000, // black
    0x0000FF, // red
    0x00FF00, // green (bright)
    0x00FFFF, // yellow
    0xFF0000, // blue
    0xFF00FF, // magenta
    0xFFFF00, // cyan
    0xFFFFFF, // white
    0x000080, // maroon
    0x008080, // olive
    0x008000, // green
    0x800000, // navy
    0x800080, // purple
    0x808000, // teal
    0x808080, // grey
    0xC0C0C0, // silver
};

double LargeFontFaktor = 1.0;

// --- TCharSet ------------------------------------------------------------------------

TCharSet::TCharSet(const char *chars) : TCharSet(QString::fromUtf8(chars)) {}

TCharSet::TCharSet(const QString &chars)
{
    insert(chars);
}

void TCharSet::insert(QChar c)
{
    if (c.unicode() < 256) m_bits.set(c.unicode());
}

void TCharSet::insert(const QString &chars)
{
    for (QChar c : chars)
        insert(c);
}

void TCharSet::insertRange(QChar first, QChar last)
{
    const unsigned hi = std::min<unsigned>(last.unicode(), 255u);
    for (unsigned u = first.unicode(); u <= hi; ++u)
        m_bits.set(u);
}

void TCharSet::remove(QChar c)
{
    if (c.unicode() < 256) m_bits.reset(c.unicode());
}

// --- Words and fields ----------------------------------------------------------------

namespace {

// The one word scanner behind LExtractWord and LWordCount. Calls visit(number, start, end)
// for every word; visit returns false to stop the scan.
template <typename Visit>
void scanWords(const QString &s, const TCharSet &delims, TExtractWordMode mode, Visit visit)
{
    const qsizetype len = s.size();
    qsizetype i = 0;
    int count = 0;
    while (i < len) {
        if (mode == ewMultipleDelim) {
            while (i < len && delims.contains(s.at(i)))
                ++i;
        } else if (delims.contains(s.at(i))) {
            ++i;
        }
        if (i >= len) break;
        const qsizetype start = i;
        while (i < len && !delims.contains(s.at(i)))
            ++i;
        if (!visit(++count, start, i)) return;
    }
}

// WordInList counts on at most 255 characters, as the short strings of the drive tool did.
int wordCount255(const QString &s, const TCharSet &delims)
{
    if (s.size() <= 255) return LWordCount(s, delims, ewMultipleDelim);
    ShowMessage(QStringLiteral("WordCount: String zu lang!\r") + s);
    return LWordCount(s.left(255), delims, ewMultipleDelim);
}

} // namespace

QString LExtractWord(int n, const QString &s, const TCharSet &delims, TExtractWordMode mode)
{
    QString word;
    if (n < 1) return word;
    scanWords(s, delims, mode, [&](int number, qsizetype start, qsizetype end) {
        if (number < n) return true;
        word = s.mid(start, end - start);
        return false;
    });
    return word;
}

int LWordCount(const QString &s, const TCharSet &delims, TExtractWordMode mode)
{
    int count = 0;
    scanWords(s, delims, mode, [&](int number, qsizetype, qsizetype) {
        count = number;
        return true;
    });
    return count;
}

QString ExtractCSVWord(int n, const QString &s, const TCharSet &delims)
{
    const QChar quote = u'"';
    const qsizetype len = s.size();
    qsizetype i = 0;
    int count = 0;
    while (n >= 1 && i < len) {
        if (delims.contains(s.at(i))) ++i;
        while (i < len && s.at(i) == u' ')
            ++i;
        if (i >= len) break;
        ++count;
        qsizetype start = i;
        qsizetype end = 0;
        if (s.at(i) == quote) {
            start = ++i;
            while (i < len && s.at(i) != quote)
                ++i;
            end = i;
            // Whatever follows the closing quote up to the delimiter is dropped.
            while (i < len && !delims.contains(s.at(i)))
                ++i;
        } else {
            while (i < len && !delims.contains(s.at(i)))
                ++i;
            end = i;
        }
        if (count == n) return s.mid(start, end - start);
    }
    return QString();
}

bool WordInList(const QString &word, const QString &list, const TCharSet &delims)
{
    const QString wanted = word.toUpper();
    const int count = wordCount255(list, delims);
    for (int i = 1; i <= count; ++i) {
        if (LExtractWord(i, list, delims, ewMultipleDelim).toUpper() == wanted) return true;
    }
    return false;
}

int GetIndexOfValue(const QStringList &list, const QString &text)
{
    const TCharSet delims(" :");
    const QString key = LExtractWord(1, text, delims, ewMultipleDelim);
    for (int i = 0; i < list.size(); ++i) {
        if (LExtractWord(1, list.at(i), delims, ewMultipleDelim) == key) return i;
    }
    return -1;
}

// --- Text helpers --------------------------------------------------------------------

void EntferneBlanks(QString &text)
{
    text.remove(u' ');
}

void EntferneChar(QString &text, QChar c)
{
    text.remove(c);
}

namespace {

bool isAsciiDigit(QChar c)
{
    return c.unicode() >= u'0' && c.unicode() <= u'9';
}

template <typename Keep> QString keepIf(const QString &text, Keep keep)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        if (keep(c)) out.append(c);
    }
    return out;
}

} // namespace

QString ElimChars(const QString &text, const TCharSet &keep)
{
    return keepIf(text, [&](QChar c) { return isAsciiDigit(c) || keep.contains(c); });
}

QString ElimSonderzeichen(const QString &text, const TCharSet &keep)
{
    return keepIf(text, [&](QChar c) {
        const char16_t u = c.unicode();
        return (u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z') || isAsciiDigit(c) ||
               (u >= 192 && u <= 254) || keep.contains(c);
    });
}

QString ElimBlanksLowerCase(const QString &text)
{
    QString t = text.trimmed();
    EntferneBlanks(t);
    return t.toLower();
}

QString LinksNull(const QString &text, int width)
{
    return LeftPadCh(text, u'0', width);
}

QString LinksBlanc(const QString &text, int width)
{
    return text.rightJustified(width, u' ');
}

QString LeftPadCh(const QString &text, QChar c, int width)
{
    const int limit = std::min(width, 255);
    if (text.size() >= limit) return text;
    return text.rightJustified(limit, c);
}

QString LeadZeroInt(int value, int width)
{
    if (value >= 0) return QString::number(value).rightJustified(width, u'0');
    return u'-' + QString::number(-qint64(value)).rightJustified(width - 1, u'0');
}

QString LeadZeroStr(const QString &text, int width)
{
    return text.rightJustified(width, u'0');
}

QString TrimFloat(const QString &text)
{
    QString t = text;
    const QChar sep = DecimalSeparator();
    if (sep == u',') return t.replace(u'.', u',');
    return t.replace(u',', sep);
}

QString AddBackSlash(const QString &path)
{
    if (path.isEmpty()) return path;
    const QChar last = path.back();
    if (last == u'\\' || last == u':' || last == QChar(0)) return path;
    return path + u'\\';
}

int Rightpos(const QString &pattern, const QString &text)
{
    if (pattern.isEmpty()) return 0;
    return int(text.lastIndexOf(pattern) + 1);
}

QString ExtractPureFileName(const QString &path)
{
    qsizetype cut = -1;
    for (QChar sep : {QChar(u'/'), QChar(u'\\'), QChar(u':')})
        cut = std::max(cut, path.lastIndexOf(sep));
    const QString name = path.mid(cut + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot < 0 ? name : name.left(dot);
}

// --- Number tests and conversions ----------------------------------------------------

bool IsInteger(const QString &text)
{
    const QString t = text.trimmed();
    int value = 0;
    return !t.isEmpty() && TryStrToInt(t, value);
}

bool IsFloat(const QString &text)
{
    const QString t = text.trimmed();
    double value = 0;
    return !t.isEmpty() && TryStrToFloat(t, value);
}

bool IsNullOderLeer(const QString &text)
{
    const QString t = text.trimmed();
    int value = 0;
    return t.isEmpty() || (TryStrToInt(t, value) && value == 0);
}

QString BoolToStr(bool flag)
{
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}

bool StrToBool(const QString &text)
{
    QString t = text;
    if (t.contains(u':')) t = LExtractWord(1, t, TCharSet(":"), ewSingleDelim);
    t = t.trimmed().toUpper();
    return t == QLatin1String("1") || t == QLatin1String("TRUE") || t == QLatin1String("WAHR");
}

int HexToInt(const QString &text)
{
    quint32 value = 0;
    for (QChar c : text.toUpper()) {
        const char16_t u = c.unicode();
        if (u >= u'0' && u <= u'9')
            value = value * 16u + quint32(u - u'0');
        else if (u >= u'A' && u <= u'F')
            value = value * 16u + quint32(u - u'A' + 10);
    }
    return int(value);
}

int BinToDec(const QString &text)
{
    quint32 value = 0;
    for (QChar c : text) {
        if (c == u'0' || c == u'1') value = value * 2u + quint32(c == u'1');
    }
    return int(value);
}

QString DecToBin(quint32 value, int width)
{
    const QString digits = value == 0 ? QString() : QString::number(value, 2);
    return digits.rightJustified(width, u'0') + QStringLiteral("bin");
}

int GetBitMaske(const QString &text)
{
    const int n = text.isEmpty() ? 0 : StrToInt(text);
    // n mod 32 as the processor's shift takes it: negative remainders wrap to 0..31.
    const quint32 shift = quint32(n) & 31u;
    return int((1u << shift) >> 1);
}

QString IntToBitCount(const QString &text)
{
    if (text == QLatin1String("-2147483648")) return QStringLiteral("-31Bit");
    if (!IsInteger(text)) return text;
    const qint64 v = StrToInt(text.trimmed());
    const qint64 n = v < 0 ? -v : v + 1;
    const double bits = std::log2(double(n));
    const double whole = std::round(bits);
    if (bits >= 2 && std::fabs(bits - whole) <= 0.00002) {
        return (v < 0 ? QStringLiteral("-") : QString()) + QString::number(qint64(whole)) +
               QStringLiteral(" Bit");
    }
    return QString::number(v);
}

QString TimeDiff2Str(double time, double factor)
{
    return QString::number(Round(time * factor));
}

// --- Wildcards -----------------------------------------------------------------------

namespace {

// Matches one part (base or extension). A "*" inside the mask looks for the literal run up
// to the next "*" from the start of the name, as the file dialogs of the drive tool did.
bool wildMatch(const QString &mask, const QString &name)
{
    qsizetype m = 0;
    qsizetype n = 0;
    while (m < mask.size()) {
        const QChar c = mask.at(m);
        if (c == u'*') {
            if (m == mask.size() - 1) return true;
            qsizetype next = mask.indexOf(u'*', m + 1);
            if (next < 0) next = mask.size();
            const QString run = mask.mid(m + 1, next - m - 1);
            const qsizetype found = name.indexOf(run);
            if (found < 0) return false;
            n = found + run.size();
            m = next;
        } else {
            if (n >= name.size() || (c != u'?' && name.at(n) != c)) return false;
            ++n;
            ++m;
        }
    }
    return n == name.size();
}

void splitAtFirstDot(const QString &s, const QString &noDotExtension, QString &base, QString &ext)
{
    const qsizetype dot = s.indexOf(u'.');
    base = dot < 0 ? s : s.left(dot);
    ext = dot < 0 ? noDotExtension : s.mid(dot + 1);
}

} // namespace

bool WildComp(const QString &mask, const QString &name)
{
    QString maskBase, maskExt, nameBase, nameExt;
    splitAtFirstDot(mask, QStringLiteral("*"), maskBase, maskExt);
    splitAtFirstDot(name, QString(), nameBase, nameExt);
    return wildMatch(maskBase, nameBase) && wildMatch(maskExt, nameExt);
}

// --- Sorting and buffers -------------------------------------------------------------

namespace {

int medianOfThree(const QList<int> &a, int lo, int hi)
{
    const int x = a[lo], y = a[lo + (hi - lo) / 2], z = a[hi];
    if ((x <= y && y <= z) || (z <= y && y <= x)) return y;
    if ((y <= x && x <= z) || (z <= x && x <= y)) return x;
    return z;
}

bool clampRange(qsizetype size, int &low, int &high)
{
    low = std::max(low, 0);
    high = int(std::min<qsizetype>(high, size - 1));
    return low < high || (low == high && size > 0);
}

} // namespace

void SortIntegerArray(QList<int> &a, int low, int high)
{
    if (!clampRange(a.size(), low, high)) return;
    while (low < high) {
        const int pivot = medianOfThree(a, low, high);
        int i = low, j = high;
        while (i <= j) {
            while (a[i] < pivot)
                ++i;
            while (a[j] > pivot)
                --j;
            if (i <= j) std::swap(a[i++], a[j--]);
        }
        // Recurse into the smaller part, loop over the larger: the stack stays logarithmic.
        if (j - low < high - i) {
            SortIntegerArray(a, low, j);
            low = i;
        } else {
            SortIntegerArray(a, i, high);
            high = j;
        }
    }
}

bool FindInSortIntArray(int value, const QList<int> &a, int low, int high)
{
    if (!clampRange(a.size(), low, high)) return false;
    while (low <= high) {
        const int mid = low + (high - low) / 2;
        if (a[mid] == value) return true;
        if (a[mid] < value)
            low = mid + 1;
        else
            high = mid - 1;
    }
    return false;
}

void CheckCharBufferSize(TopenCharArray &buffer, int needed)
{
    const qint64 wanted = qint64(needed) + 1;
    if (needed >= 0 && buffer.size() < wanted)
        buffer.append(QByteArray(wanted - buffer.size(), '\0'));
}

// --- Picture masks -------------------------------------------------------------------
//
// tpForm's mask language: "@", "#" and "*" are digit places. Digits fill the integer places
// from the right; unused places show "0" ("@"), a blank ("#") or "*" ("*"). A "." directly
// followed by a digit place is the decimal point (shown as DecimalSeparator()); the places
// after it take the decimals, rounded. A "," between two integer places separates
// thousands; it shows only when digits (or "@" zeros) stand left of it. A negative number
// takes a "-" in the place just left of its digits (the leftmost place under "@"
// padding). When the digits and the sign need more places than there are, every place
// shows "*". Everything else in the mask is copied as it is.

namespace {

struct PictureLayout
{
    qsizetype point = -1; // index of the decimal point, or -1
    qsizetype intEnd = 0; // integer places lie before this index
    qsizetype firstSlot = -1;
    int intSlots = 0;
    int fracSlots = 0;
};

bool isSlot(QChar c)
{
    return c == u'@' || c == u'#' || c == u'*';
}

QChar padFor(QChar slot)
{
    return slot == u'@' ? QChar(u'0') : slot == u'*' ? QChar(u'*') : QChar(u' ');
}

PictureLayout analysePicture(const QString &p)
{
    PictureLayout r;
    for (qsizetype i = 0; i + 1 < p.size() && r.point < 0; ++i) {
        if (p.at(i) == u'.' && isSlot(p.at(i + 1))) r.point = i;
    }
    r.intEnd = r.point < 0 ? p.size() : r.point;
    for (qsizetype i = 0; i < r.intEnd; ++i) {
        if (!isSlot(p.at(i))) continue;
        if (r.firstSlot < 0) r.firstSlot = i;
        ++r.intSlots;
    }
    for (qsizetype j = r.point + 1; r.point >= 0 && j < p.size() && isSlot(p.at(j)); ++j)
        ++r.fracSlots;
    return r;
}

// Decimal digits of |number| rounded to `decimals`; false for NaN and infinity.
bool splitNumber(double number, const PictureLayout &pic, QString &intDigits, QString &fracDigits,
                 bool &negative)
{
    if (!std::isfinite(number)) return false;
    const int shown = std::min(pic.fracSlots, 30);
    const QString text = QString::number(std::fabs(number), 'f', shown);
    const qsizetype dot = text.indexOf(u'.');
    intDigits = dot < 0 ? text : text.left(dot);
    fracDigits = (dot < 0 ? QString() : text.mid(dot + 1)).leftJustified(pic.fracSlots, u'0');
    if (intDigits == QLatin1String("0") && pic.intSlots == 0) intDigits.clear();
    const bool nonZero =
        std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'1' && c <= u'9'; });
    negative = number < 0 && nonZero;
    return true;
}

void fillInteger(QString &out, const QString &picture, const PictureLayout &pic,
                 const QString &digits, bool negative)
{
    qsizetype d = digits.size() - 1;
    bool signPending = negative;
    for (qsizetype i = pic.intEnd - 1; i >= 0; --i) {
        const QChar c = picture.at(i);
        if (isSlot(c)) {
            if (d >= 0) {
                out[i] = digits.at(d--);
            } else if (signPending && c != u'@') {
                out[i] = u'-';
                signPending = false;
            } else {
                out[i] = padFor(c);
            }
        } else if (c == u',' && i > 0 && i + 1 < pic.intEnd && isSlot(picture.at(i - 1)) &&
                   isSlot(picture.at(i + 1))) {
            const QChar left = picture.at(i - 1);
            out[i] = (d >= 0 || left == u'@') ? QChar(u',') : padFor(left);
        }
    }
    if (signPending) out[pic.firstSlot] = u'-';
}

QString overflowPicture(const QString &picture)
{
    QString out = picture;
    for (QChar &c : out) {
        if (isSlot(c)) c = u'*';
    }
    return out;
}

} // namespace

QString tpForm(const QString &picture, double number)
{
    const PictureLayout pic = analysePicture(picture);
    QString intDigits, fracDigits;
    bool negative = false;
    if (!splitNumber(number, pic, intDigits, fracDigits, negative) ||
        intDigits.size() + (negative ? 1 : 0) > pic.intSlots)
        return overflowPicture(picture);
    QString out = picture;
    fillInteger(out, picture, pic, intDigits, negative);
    if (pic.point >= 0) {
        out[pic.point] = DecimalSeparator();
        for (int k = 0; k < pic.fracSlots; ++k)
            out[pic.point + 1 + k] = fracDigits.at(k);
    }
    return out;
}

} // namespace drivewiz
