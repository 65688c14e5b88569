// Coordinates and parameter addresses: every address names a coordinate that converts
// back to it (where the notation can say it), every address parsed from text survives
// the way back and forth, and the byte-level coordinate test agrees with IsKoordinate.

#include "fuzz_support.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import_p.h"
#include "util/Divers.h"

using namespace drivewiz;

namespace {

// An address whose coordinate reads back: the group is a character that upper-casing
// keeps and that is not "?", and an axis prefix comes with an element ("2.B33" is no
// valid coordinate, "2.B33.0" is never written).
bool notationSaysIt(quint32 address)
{
    const quint32 group = (address >> 24) & 63u;
    const QChar letter(char16_t(group + 64));
    return group != 63 && letter.toUpper() == letter &&
           ((address >> 30) == 0 || (address & 16383u) != 0);
}

QString hex(quint32 a)
{
    return QString::number(a, 16);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    FuzzedDataProvider in(data, size);
    const quint32 address = in.ConsumeIntegral<quint32>();
    const int axis = in.ConsumeIntegralInRange(-2, 6);
    const QString text = fuzz::text(in, 40);

    const QString k = GetKoordinateAusQ7Adr(address);
    if (notationSaysIt(address)) FUZZ_CHECK(GetQ7Addresse(k, 1) == address, k + " " + hex(address));

    const quint32 parsed = GetQ7Addresse(text, axis);
    if (parsed != 0 && notationSaysIt(parsed)) {
        const QString again = GetKoordinateAusQ7Adr(parsed);
        FUZZ_CHECK(GetQ7Addresse(again, 1) == parsed, text + " -> " + again);
    }
    const QByteArray utf8 = text.toUtf8();
    FUZZ_CHECK(importdetail::isKoordinateBytes(utf8.constData(), size_t(utf8.size())) ==
                   IsKoordinate(text),
               text);
    FUZZ_CHECK(importdetail::isIntegerBytes(utf8.constData(), size_t(utf8.size())) ==
                   IsInteger(text),
               text);
    FUZZ_CHECK(GetPurePar(text) == LExtractWord(1, text, TCharSet("."), ewMultipleDelim), text);
    return 0;
}
