#include "tables_fixture.h"

#include "lang/wizSprache.h"
#include "tables/BusUtils.h"

#include <QLabel>

using namespace drivewiz;

TEST(FieldbusLength, TypesCountTheirBytesOnTheBusWhateverTheirCase)
{
    const struct
    {
        const char *type;
        int bytes;
    } cases[] = {{"B", 1},     {"I8", 1},     {"U8", 1},       {"i16", 2},  {"u16", 2},
                 {"I32", 4},   {"U32", 4},    {"P64", 4},      {"p64", 4},  {"STR8", 8},
                 {"STR16", 16}, {"U8A64", 64}, {"STR80", 0},    {"R64", 0},  {"", 0},
                 {"VS", 0},    {" U16", 0},   {"U16 ", 0}};
    for (const auto &c : cases)
        EXPECT_EQ(GetTypeLengthOnFieldBus(QString::fromLatin1(c.type)), c.bytes) << c.type;
}

class PdoLength : public TablesForm
{
protected:
    QColor colour() const { return label.palette().color(QPalette::WindowText); }
    QLabel label;
};

TEST_F(PdoLength, ListsCountKnownParametersOnceAndIgnoreOthers)
{
    EXPECT_EQ(GetPDOLength(table, QString()), 0);
    EXPECT_EQ(GetPDOLength(nullptr, QStringLiteral("A10")), 0);
    // U16 + I32 + u8 + P64 (4, not 8) + STR16 + R64 (nothing) + B
    EXPECT_EQ(GetPDOLength(table, QStringLiteral("A10,A11,A12,A13,A14,A15,A16")),
              2 + 4 + 1 + 4 + 16 + 0 + 1);
    EXPECT_EQ(GetPDOLength(table, QStringLiteral(",A10,,A11,")), 6);
    EXPECT_EQ(GetPDOLength(table, QStringLiteral("A10, a11 ,Z99,nonsense")), 2 + 4);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(PdoLength, LabelTurnsRedOnlyPastTheMaximum)
{
    EXPECT_EQ(CheckLength(&label, table, QString(), 8), 0);
    EXPECT_EQ(label.text(), s_ResTlgrLength + QStringLiteral(": 0 Byte"));
    EXPECT_EQ(colour(), QColor(0, 0, 0x80));

    EXPECT_EQ(CheckLength(&label, table, QStringLiteral("A11,A11"), 8), 8);
    EXPECT_EQ(label.text(), QStringLiteral("Resultierende Telegramm-Länge: 8 Byte"));
    EXPECT_EQ(colour(), QColor(0, 0, 0x80));

    EXPECT_EQ(CheckLength(&label, table, QStringLiteral("A11,A11,A12"), 8), 9);
    EXPECT_EQ(label.text(),
              QStringLiteral("Resultierende Telegramm-Länge: 9 Byte (Max.Länge:8 Byte)"));
    EXPECT_EQ(colour(), QColor(0xFF, 0, 0));

    EXPECT_EQ(CheckLength(nullptr, table, QStringLiteral("A11"), 2), 4);
}
