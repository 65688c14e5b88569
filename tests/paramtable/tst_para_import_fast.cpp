// The import table's byte-level parts against the plain routines they stand in for: the
// line reader and field copy, the sort-string builder, the packed index and the cell store.

#include "support/testing.h"

#include "paramtable/para_import.h"
#include "paramtable/coordinates.h"
#include "paramtable/para_import_index_p.h"
#include "paramtable/para_import_p.h"
#include "paramtable/para_import_store_p.h"
#include "platform/textcodec.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <algorithm>
#include <set>

using namespace drivewiz;
using namespace drivewiz::importdetail;

namespace {

QRandomGenerator rng(20240611);

QByteArray randomText(const char *alphabet, int maxLen)
{
    const int n = int(rng.bounded(maxLen + 1));
    const int size = int(std::strlen(alphabet));
    QByteArray out;
    for (int i = 0; i < n; ++i)
        out += alphabet[rng.bounded(size)];
    return out;
}

// A line of fields as description files have them (quoted names with the delimiter in
// them, umlauts, empty fields), now and then spoilt by a stray quote or blank.
QByteArray randomLine(bool cp1252)
{
    const QByteArray umlaut = cp1252 ? "\xE4" : "\xC3\xA4";
    QByteArray line;
    const int fields = int(rng.bounded(10));
    for (int f = 0; f < fields; ++f) {
        if (f > 0) line += ';';
        QByteArray text = randomText("ab1.; ", int(rng.bounded(4)) == 0 ? 200 : 12);
        if (rng.bounded(4) == 0) text += umlaut;
        if (rng.bounded(3) == 0)
            line += '"' + text + '"';
        else
            line += text.replace(';', ',');
        if (rng.bounded(40) == 0) line += rng.bounded(2) ? "\"" : " ";
    }
    // Not empty: an empty line after a CR would make CR LF of the two line ends.
    return line.isEmpty() ? QByteArray("x") : line;
}

} // namespace

TEST(ImportTableParsing, LineReaderCopiesFieldsAsExtractCsvWordReadsThem)
{
    for (const bool cp1252 : {false, true}) {
        for (int round = 0; round < 40; ++round) {
            QList<QByteArray> lines;
            QByteArray buffer;
            const char *ends[] = {"\r\n", "\n", "\r"};
            for (int i = 0; i < 60; ++i) {
                lines << randomLine(cp1252);
                buffer += lines.last();
                if (i < 59 || rng.bounded(2)) buffer += ends[rng.bounded(3)]; // last end optional
            }
            CsvLineReader reader(buffer.constData(), size_t(buffer.size()));
            reader.setDelimiter(';');
            constexpr size_t kColumns = 7;
            for (const QByteArray &expected : lines) {
                ASSERT_TRUE(reader.next());
                const QByteArray line(reader.line(), qsizetype(reader.length()));
                ASSERT_EQ(line, expected);
                FieldSpan fast[kColumns], plain[kColumns];
                bool open = false;
                const size_t n = reader.scanFields(fast, kColumns, open);
                ASSERT_EQ(n, scanCsvFields(line.constData(), size_t(line.size()), ';', plain,
                                           kColumns, open));
                for (size_t f = 0; f < n; ++f)
                    ASSERT_TRUE(fast[f].begin == plain[f].begin && fast[f].end == plain[f].end)
                        << line.toStdString() << " field " << f + 1;
                QByteArray out(3 * line.size() + int(kCopySlack), '\0');
                quint32 starts[kColumns + 1];
                bool unterminated = false;
                reader.copyFields(cp1252, out.data(), starts, kColumns, unterminated);
                const QString text = cp1252 ? decodeWindows1252(line) : QString::fromUtf8(line);
                for (size_t c = 0; c < kColumns; ++c) {
                    const QString cell = QString::fromUtf8(out.constData() + starts[c],
                                                           qsizetype(starts[c + 1] - starts[c]));
                    ASSERT_EQ(cell, ExtractCSVWord(int(c) + 1, text, TCharSet(";")))
                        << line.toStdString() << " field " << c + 1;
                }
            }
            EXPECT_FALSE(reader.next());
        }
    }
}

TEST(ImportTableParsing, SortKeysOfPlainCoordinatesAgreeWithBuildSortString)
{
    const char *seconds[] = {"", "0", "1", "02", " 3", "x", "-1", "123456789", "1234567890", "$1F"};
    for (int round = 0; round < 4000; ++round) {
        QByteArray k = randomText("aB$-. ", 1).left(1) + randomText("0123456789", 5);
        if (rng.bounded(2)) k += '.' + randomText("0123456789", 6);
        if (rng.bounded(10) == 0) k += randomText("x. ", 2);
        const QByteArray a = seconds[rng.bounded(10)];
        const QByteArray n = seconds[rng.bounded(10)];
        const SortKeyText key(k.constData(), size_t(k.size()), a.constData(), size_t(a.size()),
                              n.constData(), size_t(n.size()));
        const QString expected = TImportTable::BuildSortString(QString::fromLatin1(k).trimmed().toUpper(),
                                                               QString::fromLatin1(a),
                                                               QString::fromLatin1(n))
                                     .toUpper();
        ASSERT_EQ(QString::fromStdString(key.str()), expected) << k.toStdString();
        if (key.plainCoordinate()) {
            ASSERT_TRUE(IsKoordinate(QString::fromLatin1(k))) << k.toStdString();
        }
    }
}

// Keys longer than 16 bytes or with NUL bytes keep their full text; the order is plain
// byte order of the texts all the same, and equal texts keep file order.
TEST(ImportTableKeys, IndexOrderAndLookupsFollowTheFullTexts)
{
    for (int round = 0; round < 30; ++round) {
        std::vector<std::string> texts;
        KeyIndex index;
        const auto append = [&](int count) {
            for (int i = 0; i < count; ++i) {
                QByteArray t = randomText("AB01", 20);
                if (rng.bounded(8) == 0) t.insert(int(rng.bounded(t.size() + 1)), '\0');
                texts.emplace_back(t.constData(), size_t(t.size()));
                index.appendKey(t.constData(), size_t(t.size()));
            }
        };
        append(150);
        index.rebuild();
        append(80);
        index.addRows(150);
        std::vector<int> expected(texts.size());
        for (size_t i = 0; i < expected.size(); ++i)
            expected[i] = int(i);
        std::stable_sort(expected.begin(), expected.end(),
                         [&](int a, int b) { return texts[size_t(a)] < texts[size_t(b)]; });
        for (size_t p = 0; p < expected.size(); ++p)
            ASSERT_EQ(index.rowAt(int(p)), expected[p]) << round << " position " << p;
        std::vector<std::string> sorted = texts;
        std::sort(sorted.begin(), sorted.end());
        for (int probe = 0; probe < 100; ++probe) {
            QByteArray q = randomText("AB01", 20);
            const std::string key(q.constData(), size_t(q.size()));
            const size_t lower = size_t(std::lower_bound(sorted.begin(), sorted.end(), key) - sorted.begin());
            ASSERT_EQ(index.lowerBound(key.data(), key.size()), lower) << key;
            const bool present = lower < sorted.size() && sorted[lower] == key;
            ASSERT_EQ(index.find(key.data(), key.size()), present ? int(lower) : -1) << key;
        }
        for (const std::string &t : texts)
            ASSERT_EQ(index.key(size_t(&t - texts.data())), t);
    }
}

// A merge asks, line by line, whether the table holds a key already: the rows from before
// (indexed), the rows it appended in order, and those it appended out of order.
TEST(ImportTableKeys, MergeLookupAnswersAsASetWould)
{
    for (int round = 0; round < 20; ++round) {
        KeyIndex index;
        std::set<std::string> known;
        for (int i = 0; i < 100; ++i) {
            const QByteArray t = randomText("ABC0123", rng.bounded(3) ? 10 : 20);
            index.appendKey(t.constData(), size_t(t.size()));
            known.insert(t.toStdString());
        }
        index.rebuild();
        MergeLookup lookup(index);
        for (int i = 0; i < 300; ++i) {
            // Mostly ascending, as merge files come, with some going back.
            QByteArray t = QByteArray::number(i / 3).rightJustified(4, '0');
            if (rng.bounded(4) == 0) t = randomText("ABC0123", 20);
            const std::string key = t.toStdString();
            ASSERT_EQ(lookup.contains(key.data(), key.size()), known.count(key) == 1) << key;
            if (known.insert(key).second) {
                index.appendKey(key.data(), key.size());
                lookup.add(index.rows() - 1);
            }
        }
    }
}

TEST(ImportTableStore, CellsSurviveBlocksLongRowsOverwritesAndInsertedRows)
{
    CellStore store;
    constexpr int kColumns = 4;
    store.reset(kColumns);
    std::vector<std::vector<QByteArray>> expected;
    for (int r = 0; r < 3000; ++r) {
        std::vector<QByteArray> cells;
        for (int c = 0; c < kColumns; ++c)
            cells.push_back(r % 500 == 7 && c == 1 ? QByteArray(70000, 'x')
                                                   : randomText("ab", 40) + "\xC3\xA4");
        const size_t row = store.rows();
        store.resizeRows(row + 1);
        store.setRow(row, cells);
        expected.push_back(cells);
        if (r % 97 == 0) {
            store.setText(row, 2, QStringLiteral("set %1").arg(r));
            expected.back()[2] = QStringLiteral("set %1").arg(r).toUtf8();
        }
        if (r % 211 == 5) {
            store.insertRow(size_t(r / 2));
            expected.insert(expected.begin() + r / 2, std::vector<QByteArray>(kColumns));
        }
    }
    ASSERT_EQ(store.rows(), expected.size());
    for (size_t r = 0; r < expected.size(); ++r) {
        for (int c = 0; c < kColumns; ++c) {
            ASSERT_EQ(store.utf8(r, c), expected[r][size_t(c)]) << r << " " << c;
            ASSERT_EQ(store.text(r, c), QString::fromUtf8(expected[r][size_t(c)]));
        }
    }
    EXPECT_EQ(store.text(expected.size(), 0), QString());
    EXPECT_EQ(store.text(0, kColumns), QString());
}

TEST(ImportTableStore, InsertedRowsKeepOverwrittenCellsAndLongKeysWithTheirRows)
{
    test::recorder().clear();
    TImportTable t;
    t.InitColumnArray(QStringLiteral("Name;Koordinate;Achse"));
    const QString longKoord = QStringLiteral("C7.123456789012345");
    for (const QString &line : {QStringLiteral("a;A01;1"), QStringLiteral("b;") + longKoord + ";1",
                                QStringLiteral("c;A03;1")})
        t.AddRow(line);
    t.ReBuildMainIndex();
    t.SetValueByColName(t.FindParam("A03", "1"), "Name", "changed");
    t.InsertNewRow(QStringLiteral("new;A02;1"), 0);
    t.ReBuildMainIndex();
    EXPECT_EQ(t.fGetParamName(t.FindParam("A03", "1")), QStringLiteral("changed"));
    EXPECT_EQ(t.fGetParamName(t.FindParam(longKoord, "1")), QStringLiteral("b"));
    EXPECT_EQ(t.fGetParamName(t.FindParam("A02", "1")), QStringLiteral("new"));
    EXPECT_EQ(t.fGetSortFullKoord(t.FindParam(longKoord, "1")),
              QStringLiteral("C0071234567890123450001"));
    EXPECT_EQ(t.AppendRowIndexed(QStringLiteral("again;A01;1")), 1); // behind the older A01
    EXPECT_TRUE(test::recorder().takeMessages().isEmpty());
}

TEST(ImportTableStore, TheRevisionNamesTheCellsAsTheyAre)
{
    test::recorder().clear();
    TImportTable t;
    TImportTable other;
    t.InitColumnArray(QStringLiteral("Name;Koordinate;Achse;Wert"));
    other.InitColumnArray(QStringLiteral("Name;Koordinate;Achse;Wert"));
    EXPECT_NE(t.CellRevision(), other.CellRevision()); // two tables never share one

    quint64 seen = t.CellRevision();
    const auto changed = [&] {
        const bool moved = t.CellRevision() != seen;
        seen = t.CellRevision();
        return moved;
    };
    t.AddRow(QStringLiteral("a;K10.0;1;100"));
    t.AddRow(QStringLiteral("b;K10.1;1;200"));
    t.ReBuildMainIndex();
    EXPECT_TRUE(changed());
    const int p = t.FindParam(QStringLiteral("K10.1"), QStringLiteral("1"));
    t.SetValueByColName(p, QStringLiteral("Wert"), QStringLiteral("200")); // the same text
    EXPECT_FALSE(changed());
    t.SetValueByColName(p, QStringLiteral("Wert"), QStringLiteral("201"));
    EXPECT_TRUE(changed());
    t.SetValueByColName(p, QStringLiteral("Wert"), QStringLiteral("201"));
    EXPECT_FALSE(changed());
    t.UpdateRow(QStringLiteral("b;K10.1;1;200"), 1);
    EXPECT_TRUE(changed());
    t.InsertNewRow(QStringLiteral("c;K10.2;1;300"), 0);
    EXPECT_TRUE(changed());
    EXPECT_GE(t.AppendRowIndexed(QStringLiteral("d;K10.3;1;400")), 0);
    EXPECT_TRUE(changed());
    t.Clear();
    EXPECT_TRUE(changed());
    EXPECT_TRUE(test::recorder().takeMessages().isEmpty());
}
