// CSV fields and sort keys: the byte-level line reader and field copies of the import
// table (UTF-8 and Windows-1252, with and without the per-line masks) against
// ExtractCSVWord, and the fast sort-key builder against BuildSortString, on any bytes.

#include "fuzz_support.h"

#include "paramtable/coordinates.h"
#include "paramtable/para_import.h"
#include "paramtable/para_import_p.h"
#include "platform/textcodec.h"
#include "util/Divers.h"

#include <vector>

using namespace drivewiz;

namespace {

constexpr size_t kColumns = 12;

QString show(const QByteArray &line)
{
    return QString::fromLatin1(line.left(200).toHex(' '));
}

// The cells a field copy made, decoded.
template <class Copy> QStringList copied(const QByteArray &line, bool cp1252, Copy copy)
{
    std::vector<char> out(size_t(line.size()) * 3 + importdetail::kCopySlack);
    quint32 starts[kColumns + 1] = {};
    bool unterminated = false;
    const size_t written = copy(cp1252, out.data(), starts, unterminated);
    FUZZ_CHECK(written <= (cp1252 ? 3 : 1) * size_t(line.size()), show(line));
    QStringList cells;
    for (size_t c = 0; c < kColumns; ++c) {
        FUZZ_CHECK(starts[c] <= starts[c + 1] && starts[c + 1] <= written, show(line));
        cells << utf8Text(out.data() + starts[c], qsizetype(starts[c + 1] - starts[c]));
    }
    return cells;
}

QStringList reference(const QString &line, char delim)
{
    QStringList cells;
    for (size_t c = 0; c < kColumns; ++c)
        cells << ExtractCSVWord(int(c) + 1, line, TCharSet(QString(QLatin1Char(delim))));
    return cells;
}

// One line through every path: the reader's masked copy, the plain copy and the scanner.
void checkLine(const importdetail::CsvLineReader &reader, char delim)
{
    const QByteArray line(reader.line(), qsizetype(reader.length()));
    const auto masked = [&reader](bool cp, char *out, quint32 *starts, bool &u) {
        return reader.copyFields(cp, out, starts, kColumns, u);
    };
    const auto plain = [&line, delim](bool cp, char *out, quint32 *starts, bool &u) {
        return importdetail::copyCsvFieldsPlain(line.constData(), size_t(line.size()), delim, cp,
                                                out, starts, kColumns, u);
    };
    const QStringList cp1252 = reference(decodeWindows1252(line), delim);
    FUZZ_CHECK(copied(line, true, masked) == cp1252, show(line));
    FUZZ_CHECK(copied(line, true, plain) == cp1252, show(line));
    if (!isValidUtf8(line.constData(), line.size())) return;
    const QStringList utf8 = reference(utf8Text(line), delim);
    FUZZ_CHECK(copied(line, false, masked) == utf8, show(line));
    FUZZ_CHECK(copied(line, false, plain) == utf8, show(line));
    importdetail::FieldSpan spans[kColumns];
    bool unterminated = false;
    const size_t found = reader.scanFields(spans, kColumns, unterminated);
    for (size_t f = 0; f < kColumns; ++f) {
        const QString fast = f < found ? utf8Text(line.constData() + spans[f].begin,
                                                  qsizetype(spans[f].end - spans[f].begin))
                                       : QString();
        FUZZ_CHECK(fast == utf8.at(qsizetype(f)), show(line) + " field " + QString::number(f));
    }
}

void checkSortKey(const QString &k, const QString &a, const QString &n)
{
    const QByteArray k8 = k.toUtf8(), a8 = a.toUtf8(), n8 = n.toUtf8();
    const importdetail::SortKeyText key(k8.constData(), size_t(k8.size()), a8.constData(),
                                        size_t(a8.size()), n8.constData(), size_t(n8.size()));
    const QString ref = TImportTable::BuildSortString(k.trimmed().toUpper(), a, n).toUpper();
    FUZZ_CHECK(utf8Text(key.data(), qsizetype(key.size())) == ref,
               k + " | " + a + " | " + n);
    if (key.plainCoordinate()) FUZZ_CHECK(IsKoordinate(k), k);
    FUZZ_CHECK(importdetail::isIntegerBytes(a8.constData(), size_t(a8.size())) == IsInteger(a), a);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    FuzzedDataProvider in(data, size);
    const char delim = in.ConsumeBool() ? ';' : ',';
    const QString k = fuzz::text(in, 24), a = fuzz::text(in, 8), n = fuzz::text(in, 8);
    checkSortKey(k, a, n);
    const std::string rest = in.ConsumeRemainingBytesAsString();
    importdetail::CsvLineReader reader(rest.data(), rest.size());
    reader.setDelimiter(delim);
    while (reader.next())
        checkLine(reader, delim);
    return 0;
}
