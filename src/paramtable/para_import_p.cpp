#include "paramtable/para_import_p.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import.h"
#include "platform/textcodec.h"

#include <algorithm>
#include <array>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace drivewiz::importdetail {

namespace {

bool isSpace(unsigned char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// QString::trimmed() on ASCII bytes.
void trim(const char *&s, size_t &len)
{
    while (len > 0 && isSpace(static_cast<unsigned char>(*s))) {
        ++s;
        --len;
    }
    while (len > 0 && isSpace(static_cast<unsigned char>(s[len - 1])))
        --len;
}

} // namespace

bool toAscii(const QString &text, char *buffer, size_t capacity, size_t &length)
{
    const qsizetype n = text.size();
    if (size_t(n) > capacity) return false;
    const QChar *c = text.constData();
    for (qsizetype i = 0; i < n; ++i) {
        const ushort u = c[i].unicode();
        if (u >= 0x80) return false;
        buffer[i] = char(u);
    }
    length = size_t(n);
    return true;
}

namespace {

bool isAscii(const char *s, size_t len)
{
    for (size_t i = 0; i < len; ++i) {
        if (static_cast<unsigned char>(s[i]) >= 0x80) return false;
    }
    return true;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

int hexValue(char c)
{
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Word n (1-based) of a text with a single-character delimiter, in single-delimiter mode.
void extractWordSingle(int n, const char *s, size_t len, char delim, const char *&word,
                       size_t &wordLen)
{
    size_t pos = 0;
    int count = 0;
    word = s;
    wordLen = 0;
    while (pos < len) {
        if (s[pos] == delim) ++pos;
        if (pos >= len) return;
        const size_t start = pos;
        while (pos < len && s[pos] != delim)
            ++pos;
        if (++count == n) {
            word = s + start;
            wordLen = pos - start;
            return;
        }
    }
}

} // namespace

size_t scanCsvFields(const char *line, size_t len, char delimiter, FieldSpan *fields,
                     size_t maxFields, bool &unterminated)
{
    // Fields are short: a plain loop beats a memchr call per field.
    size_t pos = 0;
    size_t count = 0;
    while (count < maxFields) {
        if (pos < len && line[pos] == delimiter) ++pos;
        while (pos < len && line[pos] == ' ')
            ++pos;
        if (pos >= len) break;
        FieldSpan &f = fields[count++];
        const bool quoted = line[pos] == '"';
        if (quoted) {
            f.begin = ++pos;
            while (pos < len && line[pos] != '"')
                ++pos;
            f.end = pos;
            if (pos >= len) {
                unterminated = true;
                break;
            }
            ++pos; // behind the closing quote, everything up to the delimiter is dropped
        } else {
            f.begin = pos;
        }
        while (pos < len && line[pos] != delimiter)
            ++pos;
        if (!quoted) f.end = pos;
    }
    return count;
}

namespace {

// UTF-8 of every Windows-1252 byte: length and up to three bytes.
struct Utf8Of
{
    unsigned char len;
    char bytes[3];
};

const std::array<Utf8Of, 256> &cp1252Utf8()
{
    static const std::array<Utf8Of, 256> table = [] {
        std::array<Utf8Of, 256> t{};
        for (int b = 0; b < 256; ++b) {
            const char byte = char(b);
            const QByteArray utf8 = windows1252ToUtf8(&byte, 1);
            t[size_t(b)].len = static_cast<unsigned char>(utf8.size());
            std::memcpy(t[size_t(b)].bytes, utf8.constData(), size_t(utf8.size()));
        }
        return t;
    }();
    return table;
}

// Copies [begin, end) of a line; in Windows-1252 mode bytes >= 0x80 become UTF-8.
size_t copyConverted(const char *line, size_t begin, size_t end, char *out)
{
    const std::array<Utf8Of, 256> &table = cp1252Utf8();
    size_t w = 0;
    for (size_t i = begin; i < end; ++i) {
        const unsigned char c = static_cast<unsigned char>(line[i]);
        if (c < 0x80) {
            out[w++] = char(c);
        } else {
            std::memcpy(out + w, table[c].bytes, 3);
            w += table[c].len;
        }
    }
    return w;
}

// The field walk shared by both copies: `Find` gives the next delimiter or quote at or
// after a position (or `len`), `Copy` copies a range and returns the bytes written.
template<typename FindDelimiter, typename FindQuote, typename Copy>
size_t walkFields(const char *line, size_t len, char delimiter, quint32 *starts, size_t columns,
                  bool &unterminated, FindDelimiter nextDelimiter, FindQuote nextQuote, Copy copy)
{
    size_t pos = 0;
    size_t w = 0;
    size_t count = 0;
    while (count < columns) {
        if (pos < len && line[pos] == delimiter) ++pos;
        while (pos < len && line[pos] == ' ')
            ++pos;
        if (pos >= len) break;
        starts[count++] = quint32(w);
        if (line[pos] == '"') {
            const size_t close = nextQuote(pos + 1);
            w += copy(pos + 1, close, w);
            if (close >= len) {
                unterminated = true;
                break;
            }
            // Behind the closing quote, everything up to the delimiter is dropped.
            pos = nextDelimiter(close + 1);
        } else {
            const size_t end = nextDelimiter(pos);
            w += copy(pos, end, w);
            pos = end;
        }
    }
    for (size_t c = count; c <= columns; ++c)
        starts[c] = quint32(w);
    return w;
}

size_t findByte(const char *line, size_t from, size_t len, char c)
{
    if (from >= len) return len;
    const void *hit = std::memchr(line + from, c, len - from);
    return hit ? size_t(static_cast<const char *>(hit) - line) : len;
}

// The first set bit at or after `from` in a mask of `len` bits, or `len`.
size_t nextBit(const quint64 *mask, size_t from, size_t len)
{
    if (from >= len) return len;
    size_t word = from >> 6;
    quint64 bits = mask[word] & (~quint64(0) << (from & 63));
    const size_t words = (len + 63) >> 6;
    while (bits == 0) {
        if (++word >= words) return len;
        bits = mask[word];
    }
    return std::min(len, word * 64 + size_t(qCountTrailingZeroBits(bits)));
}

bool anyBit(const quint64 *mask, size_t begin, size_t end)
{
    return begin < end && nextBit(mask, begin, end) < end;
}

} // namespace

size_t copyCsvFieldsPlain(const char *line, size_t len, char delimiter, bool cp1252, char *out,
                          quint32 *starts, size_t columns, bool &unterminated)
{
    const auto delimiterAt = [&](size_t from) { return findByte(line, from, len, delimiter); };
    const auto quoteAt = [&](size_t from) { return findByte(line, from, len, '"'); };
    const auto copy = [&](size_t begin, size_t end, size_t w) -> size_t {
        if (cp1252) return copyConverted(line, begin, end, out + w);
        std::memcpy(out + w, line + begin, end - begin);
        return end - begin;
    };
    return walkFields(line, len, delimiter, starts, columns, unterminated, delimiterAt, quoteAt,
                      copy);
}

namespace {

#if defined(__SSE2__)
// Where the line ends, delimiters, quotes, blanks and high bytes are in 64 bytes.
struct BlockMasks
{
    quint64 eol = 0;
    quint64 delim = 0;
    quint64 quote = 0;
    quint64 blank = 0;
    quint64 high = 0;
};

inline quint64 maskOf(__m128i m)
{
    return quint64(unsigned(_mm_movemask_epi8(m)));
}

inline BlockMasks scan64(const char *p, char delimiter)
{
    BlockMasks m;
    const __m128i delim = _mm_set1_epi8(delimiter);
    for (int i = 0; i < 4; ++i) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(p + 16 * i));
        const int shift = 16 * i;
        m.eol |= maskOf(_mm_or_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8('\r')),
                                     _mm_cmpeq_epi8(v, _mm_set1_epi8('\n'))))
                 << shift;
        m.delim |= maskOf(_mm_cmpeq_epi8(v, delim)) << shift;
        m.quote |= maskOf(_mm_cmpeq_epi8(v, _mm_set1_epi8('"'))) << shift;
        m.blank |= maskOf(_mm_cmpeq_epi8(v, _mm_set1_epi8(' '))) << shift;
        m.high |= maskOf(v) << shift;
    }
    return m;
}
#endif

// Copies up to 32 bytes: 32 are read from `src` and written to `dst`.
inline void copy32(char *dst, const char *src)
{
#if defined(__SSE2__)
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i *>(src));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i *>(src + 16));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(dst), a);
    _mm_storeu_si128(reinterpret_cast<__m128i *>(dst + 16), b);
#else
    std::memcpy(dst, src, 32);
#endif
}

// The set bits of a mask of several words, in ascending order.
class BitWalker
{
public:
    BitWalker(const quint64 *mask, size_t words)
        : m_mask(mask), m_words(words), m_bits(words > 0 ? mask[0] : 0)
    {}
    bool next(size_t &pos)
    {
        while (m_bits == 0) {
            if (++m_word >= m_words) return false;
            m_bits = m_mask[m_word];
        }
        pos = m_word * 64 + size_t(qCountTrailingZeroBits(m_bits));
        m_bits &= m_bits - 1;
        return true;
    }

private:
    const quint64 *m_mask;
    size_t m_words;
    size_t m_word = 0;
    quint64 m_bits;
};

// Clears the bits [from, to).
void clearBits(quint64 *mask, size_t from, size_t to)
{
    while (from < to) {
        const size_t bit = from & 63;
        const size_t n = std::min<size_t>(64 - bit, to - from);
        const quint64 m = (n == 64 ? ~quint64(0) : (quint64(1) << n) - 1) << bit;
        mask[from >> 6] &= ~m;
        from += n;
    }
}

} // namespace

void CsvLineReader::scanLine()
{
    const size_t avail = m_size - m_start;
    const char *p = m_data + m_start;
    size_t end = avail;
#if defined(__SSE2__)
    for (size_t off = 0, word = 0; off < avail; off += 64, ++word) {
        BlockMasks m;
        if (avail - off >= 64) {
            m = scan64(p + off, m_delimiter);
        } else {
            char tail[64] = {};
            std::memcpy(tail, p + off, avail - off);
            m = scan64(tail, m_delimiter);
        }
        if (word < kMaskWords) {
            m_delims[word] = m.delim;
            m_quotes[word] = m.quote;
            m_blanks[word] = m.blank;
            m_highs[word] = m.high;
        }
        if (m.eol != 0) {
            end = std::min(avail, off + size_t(qCountTrailingZeroBits(m.eol)));
            break;
        }
    }
    m_masked = end <= 64 * kMaskWords;
    if (m_masked && (end & 63) != 0) {
        const quint64 keep = (quint64(1) << (end & 63)) - 1;
        m_delims[end >> 6] &= keep;
        m_quotes[end >> 6] &= keep;
        m_blanks[end >> 6] &= keep;
        m_highs[end >> 6] &= keep;
    }
#else
    for (size_t i = 0; i < avail; ++i) {
        if (p[i] == '\r' || p[i] == '\n') {
            end = i;
            break;
        }
    }
#endif
    m_len = end;
}

bool CsvLineReader::next()
{
    if (m_pos >= m_size) return false;
    m_start = m_pos;
    m_masked = false;
    m_regular = -1;
    scanLine();
    const size_t end = m_start + m_len;
    m_pos = end + 1;
    if (end < m_size && m_data[end] == '\r' && m_pos < m_size && m_data[m_pos] == '\n') ++m_pos;
    return true;
}

// Most lines are regular: no blank or delimiter where a field starts, and quotes only
// around whole fields. Then the fields are what lies between the delimiters (less the
// quotes). The delimiters that end fields, or null for another line; found once a line.
const quint64 *CsvLineReader::regularLine() const
{
    if (m_regular < 0) m_regular = findRegular() ? 1 : 0;
    return m_regular ? m_fieldEnds : nullptr;
}

bool CsvLineReader::findRegular() const
{
    const char *line = this->line();
    const size_t len = m_len;
    const char delimiter = m_delimiter;
    if (!m_masked || len == 0 || line[0] == delimiter || line[0] == ' ') return false;
    const size_t words = (len + 63) >> 6;
    quint64 *delims = m_fieldEnds;
    for (size_t i = 0; i < words; ++i)
        delims[i] = m_delims[i];
    BitWalker quotes(m_quotes, words);
    size_t open = 0;
    size_t close = 0;
    while (quotes.next(open)) {
        if (open > 0 && line[open - 1] != delimiter) return false;
        if (!quotes.next(close)) return false; // unterminated: the field walk reports it
        if (close + 1 < len && line[close + 1] != delimiter) return false;
        clearBits(delims, open + 1, close); // delimiters inside quotes are text
    }
    quint64 carry = 1; // the line starts a field
    for (size_t i = 0; i < words; ++i) {
        if (((delims[i] << 1) | carry) & m_blanks[i]) return false;
        carry = delims[i] >> 63;
    }
    return true;
}

size_t CsvLineReader::scanFields(FieldSpan *fields, size_t maxFields, bool &unterminated) const
{
    const quint64 *delims = regularLine();
    if (!delims) return scanCsvFields(line(), m_len, m_delimiter, fields, maxFields, unterminated);
    const size_t words = (m_len + 63) >> 6;
    size_t from = 0;
    size_t count = 0;
    for (size_t word = 0; word < words && count < maxFields; ++word) {
        for (quint64 bits = delims[word]; bits != 0 && count < maxFields; bits &= bits - 1) {
            const size_t end = word * 64 + size_t(qCountTrailingZeroBits(bits));
            const bool quoted = from < end && line()[from] == '"';
            fields[count++] = FieldSpan{from + quoted, end - quoted};
            from = end + 1;
        }
    }
    if (count < maxFields && from <= m_len) {
        const bool quoted = from < m_len && line()[from] == '"';
        if (from < m_len) fields[count++] = FieldSpan{from + quoted, m_len - quoted};
    }
    return count;
}

bool CsvLineReader::copyRegular(bool cp1252, char *out, quint32 *starts, size_t columns,
                                size_t &written) const
{
    const char *line = this->line();
    const size_t len = m_len;
    // Short copies read 32 bytes: the buffer must go on that far behind the line.
    const quint64 *delims = m_size - m_start < len + 32 ? nullptr : regularLine();
    if (!delims) return false;
    const size_t words = (len + 63) >> 6;
    // Fields come in order, so the next byte to convert is tracked alongside.
    BitWalker highBytes(m_highs, cp1252 ? words : 0);
    size_t nextHigh = len;
    if (!highBytes.next(nextHigh)) nextHigh = len;
    char *o = out;
    const char *from = line;
    const char *const lineEnd = line + len;
    size_t field = 0;
    size_t word = 0;
    quint64 bits = delims[0];
    starts[0] = 0;
    while (true) {
        while (bits == 0 && ++word < words)
            bits = delims[word];
        const char *end = bits != 0 ? line + word * 64 + size_t(qCountTrailingZeroBits(bits))
                                    : lineEnd;
        bits &= bits - 1;
        const char *b = from;
        const char *e = end;
        if (b < e && *b == '"') { // a quoted field: its closing quote ends it
            ++b;
            --e;
        }
        if (nextHigh < size_t(e - line)) { // quotes are not high: the byte is in [b, e)
            o += copyConverted(line, size_t(b - line), size_t(e - line), o);
            do {
                if (!highBytes.next(nextHigh)) nextHigh = len;
            } while (nextHigh < size_t(e - line));
        } else {
            const size_t n = size_t(e - b);
            if (n <= 32)
                copy32(o, b);
            else
                std::memcpy(o, b, n);
            o += n;
        }
        starts[++field] = quint32(o - out);
        if (field == columns || end == lineEnd) break;
        from = end + 1;
    }
    written = size_t(o - out);
    for (size_t c = field + 1; c <= columns; ++c)
        starts[c] = quint32(written);
    return true;
}

size_t CsvLineReader::copyFields(bool cp1252, char *out, quint32 *starts, size_t columns,
                                 bool &unterminated) const
{
    if (columns == 0) {
        starts[0] = 0;
        return 0;
    }
    const char *line = this->line();
    const size_t len = m_len;
    if (!m_masked)
        return copyCsvFieldsPlain(line, len, m_delimiter, cp1252, out, starts, columns,
                                  unterminated);
    size_t written = 0;
    if (copyRegular(cp1252, out, starts, columns, written)) return written;
    const bool convert = cp1252 && anyBit(m_highs, 0, len);
    const auto delimiterAt = [&](size_t from) { return nextBit(m_delims, from, len); };
    const auto quoteAt = [&](size_t from) { return nextBit(m_quotes, from, len); };
    const auto copy = [&](size_t begin, size_t end, size_t w) -> size_t {
        if (convert && anyBit(m_highs, begin, end)) return copyConverted(line, begin, end, out + w);
        std::memcpy(out + w, line + begin, end - begin);
        return end - begin;
    };
    return walkFields(line, len, m_delimiter, starts, columns, unterminated, delimiterAt, quoteAt,
                      copy);
}

bool isIntegerBytes(const char *s, size_t len)
{
    trim(s, len);
    if (len == 0) return false;
    if (!isAscii(s, len)) return IsInteger(utf8Text(s, qsizetype(len)));
    size_t i = 0;
    const bool negative = s[0] == '-';
    if (s[0] == '-' || s[0] == '+') ++i;
    bool hex = false;
    if (i < len && s[i] == '$') {
        hex = true;
        ++i;
    } else if (i + 1 < len && s[i] == '0' && (s[i + 1] == 'x' || s[i + 1] == 'X')) {
        hex = true;
        i += 2;
    }
    if (i >= len) return false;
    const quint64 limit = hex ? 0xFFFFFFFFull : (negative ? 0x80000000ull : 0x7FFFFFFFull);
    quint64 value = 0;
    for (; i < len; ++i) {
        const int d = hex ? hexValue(s[i]) : (isDigit(s[i]) ? s[i] - '0' : -1);
        if (d < 0) return false;
        value = value * (hex ? 16 : 10) + quint64(d);
        if (value > limit) return false;
    }
    return true;
}

bool isKoordinateBytes(const char *s, size_t len)
{
    if (!isAscii(s, len)) return IsKoordinate(utf8Text(s, qsizetype(len)));
    const char *t = s;
    size_t tLen = len;
    trim(t, tLen);
    if (tLen < 3 || len < 2) return false;
    if (s[1] != '.' && !isDigit(s[1])) return false;
    for (size_t i = 0; i < len; ++i) {
        if (s[i] == '$' || s[i] == ' ' || s[i] == '-' || s[i] == '+') return false;
    }
    return isDigit(s[len - 1]);
}

namespace {

// Appends `len` bytes left-padded with '0' to `width`. The pieces are a few bytes long:
// a loop beats calls to memset and memcpy.
char *padZero(char *out, const char *s, size_t len, size_t width)
{
    for (size_t i = len; i < width; ++i)
        *out++ = '0';
    for (size_t i = 0; i < len; ++i)
        *out++ = s[i];
    return out;
}

} // namespace

namespace {

// Up to 9 digits: always a 32-bit integer.
bool isShortNumber(const char *s, size_t len)
{
    if (len > 9) return false;
    for (size_t i = 0; i < len; ++i) {
        if (!isDigit(s[i])) return false;
    }
    return true;
}

} // namespace

// The usual case: a letter, digits, perhaps "." and digits; number and axis plain digits or
// empty. Nothing to trim, no case but the letter's, every piece readable in place.
bool SortKeyText::buildPlain(const char *koord, size_t koordLen, const char *achse,
                             size_t achseLen, const char *nummer, size_t nummerLen)
{
    if (koordLen < 2 || koordLen > 16) return false;
    const char letter = koord[0];
    if (letter <= ' ' || letter >= 0x7F || letter == '.') return false;
    size_t i = 1;
    while (i < koordLen && isDigit(koord[i]))
        ++i;
    const size_t numLen = i - 1;
    size_t elementLen = 0;
    if (numLen == 0) return false;
    if (i < koordLen) {
        if (koord[i] != '.' || i + 1 == koordLen || !isShortNumber(koord + i + 1, koordLen - i - 1))
            return false;
        elementLen = koordLen - i - 1;
    }
    if (!isShortNumber(nummer, nummerLen) || !isShortNumber(achse, achseLen)) return false;
    char *w = m_small;
    *w++ = letter >= 'a' && letter <= 'z' ? char(letter - 'a' + 'A') : letter;
    w = padZero(w, koord + 1, numLen, 3);
    w = elementLen ? padZero(w, koord + i + 1, elementLen, 4) : padZero(w, "", 0, 4);
    w = padZero(w, nummer, nummerLen, 3); // an empty number is no integer: "000" as well
    w = achseLen ? padZero(w, achse, achseLen, 1) : padZero(w, "0", 1, 1);
    m_size = size_t(w - m_small);
    m_plain = koordLen >= 3 && letter != '$' && letter != '-' && letter != '+';
    return true;
}

void SortKeyText::build(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                        const char *nummer, size_t nummerLen)
{
    m_large.clear();
    m_size = 0;
    m_plain = false;
    if (buildPlain(koord, koordLen, achse, achseLen, nummer, nummerLen)) return;
    if (!isAscii(koord, koordLen) || !isAscii(achse, achseLen) || !isAscii(nummer, nummerLen)) {
        const QString k = utf8Text(koord, qsizetype(koordLen)).trimmed().toUpper();
        m_large = TImportTable::BuildSortString(k, utf8Text(achse, qsizetype(achseLen)),
                                                utf8Text(nummer, qsizetype(nummerLen)))
                      .toUpper()
                      .toStdString();
        m_size = m_large.size();
        return;
    }
    trim(koord, koordLen);
    if (koordLen == 0) return;
    // The pieces: letter, number (up to the first "."), element (word 2), number column, axis.
    const char *rest = koord + 1;
    const size_t restLen = koordLen - 1;
    const void *dot = std::memchr(rest, '.', restLen);
    const size_t numLen = dot ? size_t(static_cast<const char *>(dot) - rest) : restLen;
    const char *element = "0000";
    size_t elementLen = 4;
    if (dot) extractWordSingle(2, koord, koordLen, '.', element, elementLen);
    const bool numbered = isIntegerBytes(nummer, nummerLen);
    if (numbered) trim(nummer, nummerLen);
    const bool axis = isIntegerBytes(achse, achseLen);
    if (axis) trim(achse, achseLen);
    const size_t size = 1 + std::max<size_t>(numLen, 3) + std::max<size_t>(elementLen, 4) +
                        (numbered ? std::max<size_t>(nummerLen, 3) : 3) + (axis ? achseLen : 1);
    char *out = m_small;
    if (size > sizeof m_small) {
        m_large.resize(size);
        out = m_large.data();
    }
    char *w = out;
    *w++ = koord[0];
    w = padZero(w, rest, numLen, 3);
    w = padZero(w, element, elementLen, 4);
    w = numbered ? padZero(w, nummer, nummerLen, 3) : padZero(w, "", 0, 3);
    w = axis ? padZero(w, achse, achseLen, 1) : padZero(w, "0", 1, 1);
    m_size = size_t(w - out);
    for (size_t i = 0; i < m_size; ++i) {
        if (out[i] >= 'a' && out[i] <= 'z') out[i] = char(out[i] - 'a' + 'A');
    }
}

std::string sortKey(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                    const char *nummer, size_t nummerLen)
{
    return SortKeyText(koord, koordLen, achse, achseLen, nummer, nummerLen).str();
}

} // namespace drivewiz::importdetail
