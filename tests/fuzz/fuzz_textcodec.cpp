// Text decoding: every byte string decodes, and decoding can be undone. Valid UTF-8 (what
// Qt's own decoder accepts without loss) is UTF-8; anything else is Windows-1252, in which
// every byte survives a round trip; the fast Windows-1252 paths agree with the table.

#include "fuzz_support.h"

#include "platform/textcodec.h"
#include "platform/textcodec_p.h"

using namespace drivewiz;

namespace {

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.left(200).toHex(' '));
}

// The reference for validity: Qt decodes without a replacement character and encodes
// back to the same bytes (overlong forms and surrogates do not survive that).
bool qtSaysValid(const QByteArray &bytes)
{
    const QString s = QString::fromUtf8(bytes); // drops a leading byte order mark
    const QByteArray body = bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
    return !s.contains(QChar::ReplacementCharacter) && s.toUtf8() == body;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const bool valid = isValidUtf8(bytes.constData(), bytes.size());
    if (!bytes.contains("\xEF\xBF\xBD")) // U+FFFD itself would fool the reference
        FUZZ_CHECK(valid == qtSaysValid(bytes), hex(bytes));

    const QString cp = decodeWindows1252(bytes);
    FUZZ_CHECK(cp.size() == bytes.size(), hex(bytes));
    FUZZ_CHECK(encodeWindows1252(cp) == bytes, hex(bytes));
    FUZZ_CHECK(detail::fitsWindows1252(cp), hex(bytes));
    FUZZ_CHECK(windows1252ToUtf8(bytes.constData(), bytes.size()) == cp.toUtf8(), hex(bytes));
    for (qsizetype i = 0; i < bytes.size(); ++i)
        FUZZ_CHECK(detail::singleByteToUnicode(1252, uchar(bytes[i])) == cp.at(i).unicode(),
                   hex(bytes));

    const bool bom = bytes.startsWith("\xEF\xBB\xBF");
    const QByteArray body = bom ? bytes.mid(3) : bytes;
    const QString text = decodeText(bytes);
    if (isValidUtf8(body.constData(), body.size())) {
        FUZZ_CHECK(encodeUtf8(text) == body, hex(bytes)); // nothing lost, nothing added
    } else {
        FUZZ_CHECK(text == decodeWindows1252(body), hex(bytes));
    }
    const qsizetype ascii = detail::asciiPrefixLength(bytes.constData(), bytes.size());
    for (qsizetype i = 0; i < ascii; ++i)
        FUZZ_CHECK(uchar(bytes[i]) < 0x80, hex(bytes));
    FUZZ_CHECK(ascii == bytes.size() || uchar(bytes[ascii]) >= 0x80, hex(bytes));
    return 0;
}
