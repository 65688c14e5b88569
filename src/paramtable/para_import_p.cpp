#include "paramtable/para_import_p.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import.h"
#include "platform/textcodec.h"

#include <algorithm>
#include <array>

#include <cstring>

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

void padZero(std::string &out, const char *s, size_t len, size_t width)
{
    if (len < width) out.append(width - len, '0');
    out.append(s, len);
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

constexpr quint64 kOnes = 0x0101010101010101ull;
constexpr quint64 kHighs = 0x8080808080808080ull;

// Copies bytes of the line to `out` up to (not including) the first `stop` byte, the first
// byte >= 0x80 when `stopAtHigh` is set, or the end; returns how many were copied. Eight
// bytes are tested and stored at a time, so `out` needs eight bytes of slack.
size_t copyRun(const char *line, size_t pos, size_t len, char stop, bool stopAtHigh, char *out)
{
    const size_t start = pos;
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    const quint64 stops = kOnes * static_cast<unsigned char>(stop);
    while (pos + 8 <= len) {
        quint64 v;
        std::memcpy(&v, line + pos, 8);
        const quint64 x = v ^ stops;
        // The lowest set bit marks the first byte equal to `stop` (or high, if asked).
        quint64 hits = (x - kOnes) & ~x & kHighs;
        if (stopAtHigh) hits |= v & kHighs;
        std::memcpy(out + (pos - start), &v, 8);
        if (hits) return pos - start + size_t(qCountTrailingZeroBits(hits) / 8);
        pos += 8;
    }
#endif
    while (pos < len && line[pos] != stop &&
           !(stopAtHigh && static_cast<unsigned char>(line[pos]) >= 0x80)) {
        out[pos - start] = line[pos];
        ++pos;
    }
    return pos - start;
}

// Copies the bytes of a field up to `stop`; in Windows-1252 mode, bytes >= 0x80 become
// their UTF-8 sequences. Advances `pos` and `w`.
void copyField(const char *line, size_t &pos, size_t len, char stop, char *out, size_t &w,
               const std::array<Utf8Of, 256> *cp1252)
{
    while (true) {
        const size_t n = copyRun(line, pos, len, stop, cp1252 != nullptr, out + w);
        pos += n;
        w += n;
        if (!cp1252 || pos >= len || static_cast<unsigned char>(line[pos]) < 0x80) return;
        const Utf8Of &u = (*cp1252)[static_cast<unsigned char>(line[pos++])];
        std::memcpy(out + w, u.bytes, 3);
        w += u.len;
    }
}

size_t copyFields(const char *line, size_t len, char delimiter, char *out, quint32 base,
                  quint32 *offsets, size_t columns, bool &unterminated,
                  const std::array<Utf8Of, 256> *cp1252)
{
    size_t pos = 0;
    size_t w = 0;
    size_t count = 0;
    while (count < columns) {
        if (pos < len && line[pos] == delimiter) ++pos;
        while (pos < len && line[pos] == ' ')
            ++pos;
        if (pos >= len) break;
        offsets[count++] = base + quint32(w);
        if (line[pos] == '"') {
            copyField(line, ++pos, len, '"', out, w, cp1252);
            if (pos >= len) {
                unterminated = true;
                break;
            }
            ++pos; // behind the closing quote, everything up to the delimiter is dropped
            while (pos < len && line[pos] != delimiter)
                ++pos;
        } else {
            copyField(line, pos, len, delimiter, out, w, cp1252);
        }
    }
    for (size_t c = count; c <= columns; ++c)
        offsets[c] = base + quint32(w);
    return w;
}

} // namespace

size_t copyCsvFields(const char *line, size_t len, char delimiter, char *out, quint32 base,
                     quint32 *offsets, size_t columns, bool &unterminated)
{
    return copyFields(line, len, delimiter, out, base, offsets, columns, unterminated, nullptr);
}

size_t copyCsvFields1252(const char *line, size_t len, char delimiter, char *out, quint32 base,
                         quint32 *offsets, size_t columns, bool &unterminated)
{
    return copyFields(line, len, delimiter, out, base, offsets, columns, unterminated,
                      &cp1252Utf8());
}

bool SortedKeyCursor::contains(const std::string &key)
{
    const size_t n = m_keys.size();
    if (n == 0 || m_keys.back() < key) {
        m_hint = n; // beyond every key: appended rows of a merge mostly land here
        return false;
    }
    size_t lo = 0;
    size_t hi = std::min(n, m_hint + 1);
    if (m_hint < n && !(key < m_keys[m_hint])) {
        lo = m_hint;
        size_t step = 1;
        while (lo + step < n && !(key < m_keys[lo + step])) {
            lo += step;
            step *= 2;
        }
        hi = std::min(n, lo + step + 1);
    }
    const auto it = std::lower_bound(m_keys.begin() + std::ptrdiff_t(lo),
                                     m_keys.begin() + std::ptrdiff_t(hi), key);
    m_hint = size_t(it - m_keys.begin());
    return it != m_keys.end() && *it == key;
}

bool isIntegerBytes(const char *s, size_t len)
{
    trim(s, len);
    if (len == 0) return false;
    if (!isAscii(s, len)) return IsInteger(QString::fromUtf8(s, qsizetype(len)));
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
    if (!isAscii(s, len)) return IsKoordinate(QString::fromUtf8(s, qsizetype(len)));
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

std::string sortKey(const char *koord, size_t koordLen, const char *achse, size_t achseLen,
                    const char *nummer, size_t nummerLen)
{
    if (!isAscii(koord, koordLen) || !isAscii(achse, achseLen) || !isAscii(nummer, nummerLen)) {
        const QString k = QString::fromUtf8(koord, qsizetype(koordLen)).trimmed().toUpper();
        return TImportTable::BuildSortString(k, QString::fromUtf8(achse, qsizetype(achseLen)),
                                             QString::fromUtf8(nummer, qsizetype(nummerLen)))
            .toUpper()
            .toStdString();
    }
    trim(koord, koordLen);
    if (koordLen == 0) return std::string();
    char small[64];
    std::string large;
    char *upper = small;
    if (koordLen > sizeof small) {
        large.assign(koord, koordLen);
        upper = large.data();
    } else {
        std::memcpy(small, koord, koordLen);
    }
    for (size_t i = 0; i < koordLen; ++i) {
        if (upper[i] >= 'a' && upper[i] <= 'z') upper[i] = char(upper[i] - 'a' + 'A');
    }
    const char *src = upper;
    std::string key;
    key.reserve(16);
    key += src[0];
    const char *rest = src + 1;
    const size_t restLen = koordLen - 1;
    const void *dot = std::memchr(rest, '.', restLen);
    const size_t numLen = dot ? size_t(static_cast<const char *>(dot) - rest) : restLen;
    padZero(key, rest, numLen, 3);
    if (!dot) {
        key += "0000";
    } else {
        const char *word = nullptr;
        size_t wordLen = 0;
        extractWordSingle(2, src, koordLen, '.', word, wordLen);
        padZero(key, word, wordLen, 4);
    }
    if (isIntegerBytes(nummer, nummerLen)) {
        trim(nummer, nummerLen);
        padZero(key, nummer, nummerLen, 3);
    } else {
        key += "000";
    }
    if (isIntegerBytes(achse, achseLen)) {
        trim(achse, achseLen);
        key.append(achse, achseLen);
    } else {
        key += '0';
    }
    for (char &c : key) {
        if (c >= 'a' && c <= 'z') c = char(c - 'a' + 'A');
    }
    return key;
}

} // namespace drivewiz::importdetail
