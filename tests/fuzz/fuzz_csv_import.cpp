// CSV import and merge: the table read from any file holds, in file order, exactly the
// cells that the reference routines give (the file decoded as a whole, lines split at
// CR, LF and CR LF, blank lines skipped, ExtractCSVWord per field); its index is sorted;
// every row is found by its coordinate; merging keeps the first file's rows as they were.

#include "fuzz_support.h"

#include "paramtable/para_import.h"
#include "platform/textcodec.h"
#include "util/Divers.h"

#include <QFile>
#include <QTemporaryDir>

using namespace drivewiz;

namespace {

QList<QByteArray> referenceLines(const QByteArray &bytes)
{
    QList<QByteArray> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' && bytes[i] != '\n') continue;
        lines << bytes.mid(start, i - start);
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < bytes.size()) lines << bytes.mid(start);
    return lines;
}

bool blank(const QByteArray &line)
{
    return std::all_of(line.begin(), line.end(), [](char c) { return uchar(c) <= ' '; });
}

struct Reference
{
    char delimiter = 0;
    int columns = 0;
    QList<QStringList> rows; // file order
};

Reference reference(QByteArray bytes)
{
    Reference ref;
    bytes.replace('\0', QByteArray());
    if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
    const bool cp1252 = !isValidUtf8(bytes.constData(), bytes.size());
    const auto decode = [cp1252](const QByteArray &b) {
        return cp1252 ? decodeWindows1252(b) : utf8Text(b); // a later mark is a character
    };
    const QList<QByteArray> lines = referenceLines(bytes);
    if (lines.isEmpty() || blank(lines.first())) return ref;
    const QString title = decode(lines.first());
    ref.delimiter = title.contains(u';') ? ';' : ',';
    const TCharSet delims{QString(QLatin1Char(ref.delimiter))};
    ref.columns = LWordCount(title, delims, ewSingleDelim);
    for (qsizetype l = 1; l < lines.size(); ++l) {
        if (blank(lines.at(l))) continue;
        const QString line = decode(lines.at(l));
        QStringList cells;
        for (int c = 0; c < ref.columns; ++c)
            cells << ExtractCSVWord(c + 1, line, delims);
        ref.rows << cells;
    }
    return ref;
}

QStringList rowCells(const TImportTable &t, int p)
{
    QStringList cells;
    for (int c = 0; c + 1 < t.ColCount(); ++c)
        cells << t.CellAt(p, c);
    return cells;
}

void checkIndex(const TImportTable &t)
{
    for (int p = 0; p + 1 < t.RowCount(); ++p) {
        const QByteArray a = t.fGetSortFullKoord(p).toUtf8(),
                         b = t.fGetSortFullKoord(p + 1).toUtf8();
        FUZZ_CHECK(a < b || (a == b && t.RowOfPosition(p) < t.RowOfPosition(p + 1)),
                   QString::fromUtf8(a) + " / " + QString::fromUtf8(b));
    }
    if (!t.HasColumn(QStringLiteral("koordinate")) || t.HasColumn(QStringLiteral("nummer"))) return;
    const bool axes = t.HasColumn(QStringLiteral("achse"));
    for (int p = 0; p < t.RowCount(); ++p) {
        const QString koord = t.Cell(p, QStringLiteral("koordinate"));
        if (t.fGetSortFullKoord(p).isEmpty()) continue;
        const QString axis = axes ? t.Cell(p, QStringLiteral("achse")) : QString();
        const int found = t.FindParam(koord, axis);
        FUZZ_CHECK(found >= 0 && t.fGetSortFullKoord(found) == t.fGetSortFullKoord(p),
                   koord + " / " + axis);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    static QTemporaryDir dir(fuzz::scratchFolder());
    const QString path = dir.filePath(QStringLiteral("t.csv"));
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size()) return 0;
    }
    TImportTable t;
    t.ImportTable(path);
    const Reference ref = reference(bytes);
    if (ref.delimiter == 0) {
        FUZZ_CHECK(t.RowCount() == 0, QStringLiteral("a file without title has rows"));
        return 0;
    }
    FUZZ_CHECK(t.Delimiter() == ref.delimiter && t.ColCount() == ref.columns + 1,
               QString::number(t.ColCount()));
    FUZZ_CHECK(t.RowCount() == ref.rows.size(), QString::number(t.RowCount()));
    for (int p = 0; p < t.RowCount(); ++p) {
        const int row = t.RowOfPosition(p);
        FUZZ_CHECK(row >= 0 && row < ref.rows.size(), QString::number(row));
        FUZZ_CHECK(rowCells(t, p) == ref.rows.at(row),
                   rowCells(t, p).join(u'|') + " <> " + ref.rows.at(row).join(u'|'));
    }
    checkIndex(t);

    // Merging the file into itself: the rows that were there stay as they were; what is
    // added are lines of the file, in their order.
    QList<QStringList> before(ref.rows.size());
    for (int p = 0; p < t.RowCount(); ++p)
        before[t.RowOfPosition(p)] = rowCells(t, p);
    t.AddCSVFile(path);
    QList<QStringList> after(t.RowCount());
    for (int p = 0; p < t.RowCount(); ++p)
        after[t.RowOfPosition(p)] = rowCells(t, p);
    FUZZ_CHECK(after.mid(0, before.size()) == before, QStringLiteral("merge changed a row"));
    qsizetype next = 0;
    for (qsizetype r = before.size(); r < after.size(); ++r) {
        while (next < ref.rows.size() && ref.rows.at(next) != after.at(r))
            ++next;
        FUZZ_CHECK(next < ref.rows.size(), after.at(r).join(u'|'));
        ++next;
    }
    checkIndex(t);
    return 0;
}
