#include "platform/textcodec.h"

#include <array>
#include "platform/textcodec_p.h"

#include <cstring>

#include <QStringDecoder>

namespace drivewiz {

namespace {

// Windows-1252 0x80-0x9F; the codes Windows leaves undefined keep their C1 value so that
// every byte survives a round trip. 0xA0-0xFF equal Latin-1.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// Windows-1250 (Central European) and Windows-1251 (Cyrillic) 0x80-0xFF, for rich text
// that declares those code pages.
constexpr char16_t kCp1250[128] = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039,
    0x015A, 0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x0098, 0x2122, 0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141,
    0x00A4, 0x0104, 0x00A6, 0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B,
    0x00B0, 0x00B1, 0x02DB, 0x0142, 0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB,
    0x013D, 0x02DD, 0x013E, 0x017C, 0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7,
    0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3,
    0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF,
    0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7, 0x010D, 0x00E9, 0x0119, 0x00EB,
    0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4, 0x0151, 0x00F6, 0x00F7,
    0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

constexpr char16_t kCp1251[128] = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409, 0x2039,
    0x040A, 0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x0098, 0x2122, 0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408,
    0x00A4, 0x0490, 0x00A6, 0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407,
    0x00B0, 0x00B1, 0x0406, 0x0456, 0x0491, 0x00B5, 0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB,
    0x0458, 0x0405, 0x0455, 0x0457, 0x0410, 0x0411, 0x0412, 0x0413, 0x0414, 0x0415, 0x0416, 0x0417,
    0x0418, 0x0419, 0x041A, 0x041B, 0x041C, 0x041D, 0x041E, 0x041F, 0x0420, 0x0421, 0x0422, 0x0423,
    0x0424, 0x0425, 0x0426, 0x0427, 0x0428, 0x0429, 0x042A, 0x042B, 0x042C, 0x042D, 0x042E, 0x042F,
    0x0430, 0x0431, 0x0432, 0x0433, 0x0434, 0x0435, 0x0436, 0x0437, 0x0438, 0x0439, 0x043A, 0x043B,
    0x043C, 0x043D, 0x043E, 0x043F, 0x0440, 0x0441, 0x0442, 0x0443, 0x0444, 0x0445, 0x0446, 0x0447,
    0x0448, 0x0449, 0x044A, 0x044B, 0x044C, 0x044D, 0x044E, 0x044F,
};

constexpr char kUtf8Bom[] = "\xEF\xBB\xBF";

bool hasBom(const char *data, qsizetype size)
{
    return size >= 3 && std::memcmp(data, kUtf8Bom, 3) == 0;
}

// The Windows-1252 byte of a character, or -1 when it has none.
int windows1252Byte(char16_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return c;
    for (int i = 0; i < 32; ++i)
        if (kCp1252High[i] == c) return 0x80 + i;
    return -1;
}

// Length of a well-formed UTF-8 sequence starting at p (lead byte >= 0x80), else 0.
int utf8SequenceLength(const unsigned char *p, const unsigned char *end)
{
    const unsigned char c = *p;
    int len = 0;
    unsigned char lo = 0x80, hi = 0xBF; // allowed range of the second byte
    if (c >= 0xC2 && c <= 0xDF) {
        len = 2;
    } else if (c >= 0xE0 && c <= 0xEF) {
        len = 3;
        if (c == 0xE0) lo = 0xA0; // overlong
        if (c == 0xED) hi = 0x9F; // surrogates
    } else if (c >= 0xF0 && c <= 0xF4) {
        len = 4;
        if (c == 0xF0) lo = 0x90; // overlong
        if (c == 0xF4) hi = 0x8F; // above U+10FFFF
    } else {
        return 0;
    }
    if (end - p < len || p[1] < lo || p[1] > hi) return 0;
    for (int i = 2; i < len; ++i)
        if ((p[i] & 0xC0) != 0x80) return 0;
    return len;
}

} // namespace

namespace detail {

qsizetype asciiPrefixLength(const char *data, qsizetype size)
{
    qsizetype i = 0;
    // Eight bytes at a time: description files are megabytes of mostly ASCII.
    for (; size - i >= 8; i += 8) {
        quint64 word;
        std::memcpy(&word, data + i, 8);
        if (word & 0x8080808080808080ULL) break;
    }
    while (i < size && static_cast<unsigned char>(data[i]) < 0x80)
        ++i;
    return i;
}

bool fitsWindows1252(const QString &text)
{
    for (const QChar c : text)
        if (windows1252Byte(c.unicode()) < 0) return false;
    return true;
}

char16_t singleByteToUnicode(int codePage, unsigned char byte)
{
    if (byte < 0x80) return byte;
    if (codePage == 1250) return kCp1250[byte - 0x80];
    if (codePage == 1251) return kCp1251[byte - 0x80];
    return byte < 0xA0 ? kCp1252High[byte - 0x80] : char16_t(byte);
}

} // namespace detail

bool isValidUtf8(const char *data, qsizetype size)
{
    if (!data || size <= 0) return true;
    const auto *p = reinterpret_cast<const unsigned char *>(data);
    const auto *end = p + size;
    while (p < end) {
        p += detail::asciiPrefixLength(reinterpret_cast<const char *>(p), end - p);
        if (p == end) break;
        const int len = utf8SequenceLength(p, end);
        if (len == 0) return false;
        p += len;
    }
    return true;
}

namespace {

// Every byte's character, so decoding is one table look-up per byte.
const char16_t *windows1252Table()
{
    static const auto table = [] {
        std::array<char16_t, 256> t{};
        for (int b = 0; b < 256; ++b)
            t[size_t(b)] = detail::singleByteToUnicode(1252, static_cast<unsigned char>(b));
        return t;
    }();
    return table.data();
}

} // namespace

QString decodeWindows1252(const QByteArray &bytes)
{
    const char *data = bytes.constData();
    const qsizetype size = bytes.size();
    const qsizetype ascii = detail::asciiPrefixLength(data, size);
    if (ascii == size) return QString::fromLatin1(data, size);
    const char16_t *table = windows1252Table();
    QString out(size, Qt::Uninitialized);
    char16_t *dst = reinterpret_cast<char16_t *>(out.data());
    for (qsizetype i = 0; i < size; ++i)
        dst[i] = table[static_cast<unsigned char>(data[i])];
    return out;
}

QByteArray windows1252ToUtf8(const char *data, qsizetype size)
{
    const char16_t *table = windows1252Table();
    QByteArray out(size * 3, Qt::Uninitialized); // no character takes more than 3 bytes
    char *dst = out.data();
    for (qsizetype i = 0; i < size; ++i) {
        const unsigned char b = static_cast<unsigned char>(data[i]);
        if (b < 0x80) {
            *dst++ = char(b);
            continue;
        }
        const char16_t c = table[b];
        if (c < 0x800) {
            *dst++ = char(0xC0 | (c >> 6));
        } else {
            *dst++ = char(0xE0 | (c >> 12));
            *dst++ = char(0x80 | ((c >> 6) & 0x3F));
        }
        *dst++ = char(0x80 | (c & 0x3F));
    }
    out.truncate(dst - out.constData());
    return out;
}

QString decodeText(const QByteArray &bytes)
{
    const char *data = bytes.constData();
    qsizetype size = bytes.size();
    if (hasBom(data, size)) {
        data += 3;
        size -= 3;
    }
    const qsizetype ascii = detail::asciiPrefixLength(data, size);
    if (ascii == size) return QString::fromLatin1(data, size);
    if (isValidUtf8(data + ascii, size - ascii)) {
        // Only the first byte order mark marks the encoding; QString::fromUtf8 would drop
        // a second one too.
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
        return utf8(QByteArrayView(data, size));
    }
    return decodeWindows1252(QByteArray::fromRawData(data, size));
}

QString utf8Text(const char *data, qsizetype size)
{
    if (!hasBom(data, size)) return QString::fromUtf8(data, size);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return utf8(QByteArrayView(data, size));
}

QByteArray encodeWindows1252(const QString &text)
{
    QByteArray out;
    out.reserve(text.size());
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        const int b = windows1252Byte(c.unicode());
        out.append(b >= 0 ? char(b) : '?');
        // A surrogate pair is one character and gets one "?".
        if (c.isHighSurrogate() && i + 1 < n && text.at(i + 1).isLowSurrogate()) ++i;
    }
    return out;
}

QByteArray encodeUtf8(const QString &text)
{
    return text.toUtf8();
}

} // namespace drivewiz
