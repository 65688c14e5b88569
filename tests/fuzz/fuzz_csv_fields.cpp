// CSV fields and sort keys: the byte-level scanners of the import table (UTF-8 and
// Windows-1252) against ExtractCSVWord, and the fast sort-key builder against
// BuildSortString, on any line and any cells.

#include "fuzz_support.h"

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

// The cells a copy routine made, decoded.
QStringList copied(const QByteArray &line, char delim, bool cp1252)
{
    std::vector<char> out(size_t(line.size()) * 3 + 8);
    quint32 offsets[kColumns + 1] = {};
    bool unterminated = false;
    const auto copy = cp1252 ? importdetail::copyCsvFields1252 : importdetail::copyCsvFields;
    const size_t written = copy(line.constData(), size_t(line.size()), delim, out.data(), 100,
                                offsets, kColumns, unterminated);
    FUZZ_CHECK(written <= (cp1252 ? 3 : 1) * size_t(line.size()), show(line));
    QStringList cells;
    for (size_t c = 0; c < kColumns; ++c) {
        FUZZ_CHECK(offsets[c] >= 100 && offsets[c] <= offsets[c + 1] &&
                       offsets[c + 1] <= 100 + written,
                   show(line));
        cells << QString::fromUtf8(out.data() + offsets[c] - 100,
                                   qsizetype(offsets[c + 1] - offsets[c]));
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    FuzzedDataProvider in(data, size);
    const char delim = in.ConsumeBool() ? ';' : ',';
    const std::string k = in.ConsumeRandomLengthString(24);
    const std::string a = in.ConsumeRandomLengthString(8);
    const std::string n = in.ConsumeRandomLengthString(8);
    const std::string rest = in.ConsumeRemainingBytesAsString();
    const QByteArray line(rest.data(), qsizetype(rest.size()));

    FUZZ_CHECK(copied(line, delim, true) == reference(decodeWindows1252(line), delim), show(line));
    if (isValidUtf8(line.constData(), line.size())) {
        const QString text = QString::fromUtf8(line);
        FUZZ_CHECK(copied(line, delim, false) == reference(text, delim), show(line));
        importdetail::FieldSpan spans[kColumns];
        bool unterminated = false;
        const size_t found = importdetail::scanCsvFields(line.constData(), size_t(line.size()),
                                                         delim, spans, kColumns, unterminated);
        const QStringList ref = reference(text, delim);
        for (size_t f = 0; f < kColumns; ++f) {
            const QString fast =
                f < found ? QString::fromUtf8(line.constData() + spans[f].begin,
                                              qsizetype(spans[f].end - spans[f].begin))
                          : QString();
            FUZZ_CHECK(fast == ref.at(qsizetype(f)), show(line) + " field " + QString::number(f));
        }
    }

    // Cells as the loader has them: UTF-8 (the loader turns Windows-1252 into UTF-8).
    const QString kq = QString::fromUtf8(k.data(), qsizetype(k.size()));
    const QString aq = QString::fromUtf8(a.data(), qsizetype(a.size()));
    const QString nq = QString::fromUtf8(n.data(), qsizetype(n.size()));
    const QByteArray k8 = kq.toUtf8(), a8 = aq.toUtf8(), n8 = nq.toUtf8();
    const std::string fast = importdetail::sortKey(k8.constData(), size_t(k8.size()), a8.constData(),
                                                   size_t(a8.size()), n8.constData(),
                                                   size_t(n8.size()));
    const QString ref =
        TImportTable::BuildSortString(kq.trimmed().toUpper(), aq, nq).toUpper();
    FUZZ_CHECK(QString::fromStdString(fast) == ref, kq + " | " + aq + " | " + nq);
    FUZZ_CHECK(importdetail::isIntegerBytes(a8.constData(), size_t(a8.size())) == IsInteger(aq),
               aq);
    return 0;
}
