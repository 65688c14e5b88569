#include "lang/wizSprache.h"
#include "paramtable/coordinates.h"
#include "support/testing.h"

#include <gtest/gtest.h>

#include <random>

using namespace drivewiz;
using drivewiz::test::recorder;

namespace {

QString rejection(const QString &upperText)
{
    return upperText + u'\r' + s_NoValidCoord;
}

} // namespace

TEST(Coordinates, IsKoordinateLooksAtTheUntrimmedText)
{
    for (const char *yes : {"B33", "1.B3", "X12", "B3.4", "E100.3"})
        EXPECT_TRUE(IsKoordinate(yes)) << yes;
    for (const char *no : {"B3", "B3.", "B", "", "B-3", "B3-3", "B3+3", "B$33", "B 33", " B33",
                           "B33 ", "BX3", "B33a"})
        EXPECT_FALSE(IsKoordinate(no)) << no;
    EXPECT_FALSE(IsKoordinate(u"B3§3"_qs));
}

TEST(Coordinates, GetPureParDropsTheElement)
{
    EXPECT_EQ(GetPurePar("B33.5"), "B33");
    EXPECT_EQ(GetPurePar("B33"), "B33");
    EXPECT_EQ(GetPurePar("..B33..5"), "B33");
    EXPECT_EQ(GetPurePar("2.B33"), "2");
}

TEST(Coordinates, AddressesOfKnownCoordinates)
{
    EXPECT_EQ(GetQ7Addresse("A00", 1), 0x01000000u);
    EXPECT_EQ(GetQ7Addresse("B33", 1), 0x02084000u);
    EXPECT_EQ(GetQ7Addresse(" b33 ", 1), 0x02084000u);
    EXPECT_EQ(GetQ7Addresse("B33.5", 1), 0x02084005u);
    EXPECT_EQ(GetQ7Addresse("B33", 2), 0x42084000u);
    EXPECT_EQ(GetQ7Addresse("B33", 0), 0x02084000u);
    EXPECT_EQ(GetQ7Addresse("2.B33.0", 1), 0x42084000u);
    EXPECT_EQ(GetQ7Addresse("4.b33.7", 1), 0xC2084007u);
    EXPECT_EQ(GetQ7Addresse("@05", 1), 0x00014000u); // group 0 is accepted
    EXPECT_TRUE(recorder().messages().isEmpty());
}

TEST(Coordinates, FieldsSpillAndWrapWithoutRangeChecks)
{
    EXPECT_EQ(GetQ7Addresse("B1024", 1), GetQ7Addresse("C00", 1));
    EXPECT_EQ(GetQ7Addresse("B33.16384", 1), GetQ7Addresse("B34", 1));
    EXPECT_EQ(GetQ7Addresse("B33", 5), 0x02084000u); // axis field 4 wraps to 0
    EXPECT_EQ(GetQ7Addresse("5.B33.0", 1), 0x02084000u);
    EXPECT_EQ(GetQ7Addresse("B$10", 1), 0x02040000u); // the number converts like StrToInt
    EXPECT_EQ(GetQ7Addresse("B-3", 1), 0x02000000u + (quint32(-3) << 14)); // only -1 is invalid
    EXPECT_TRUE(recorder().messages().isEmpty());
}

TEST(Coordinates, InvalidTextsShowTheMessageAndGiveZero)
{
    for (const char *bad :
         {"B33.x", "B", "BXY", "", "2.B33", "?33", ".B33", "B33.", "2X.B33.0", "B33.-1", "B-1"}) {
        EXPECT_EQ(GetQ7Addresse(bad, 1), 0u) << bad;
        EXPECT_EQ(recorder().takeMessages(),
                  QStringList{rejection(QString::fromUtf8(bad).trimmed().toUpper())})
            << bad;
    }
}

TEST(Coordinates, AddressesToText)
{
    EXPECT_EQ(GetKoordinateAusQ7Adr(0x01004000u), "A01");
    EXPECT_EQ(GetKoordinateAusQ7Adr(0x01190000u), "A100");
    EXPECT_EQ(GetKoordinateAusQ7Adr(0x02084005u), "B33.5");
    EXPECT_EQ(GetKoordinateAusQ7Adr(0x42084000u), "2.B33");
    EXPECT_EQ(GetKoordinateAusQ7Adr(0xC2084007u), "4.B33.7");
    EXPECT_EQ(GetKoordinateAusQ7Adr(0u), "@00");
}

// Every group letter, every number and a sample of elements on all four axes. An axis
// prefix without element is rejected on purpose, so those texts go the other ways in.
TEST(Coordinates, RoundTripOverGroupsNumbersElementsAndAxes)
{
    std::mt19937 rng(3);
    for (quint32 group = 1; group <= 26; ++group) {
        for (quint32 number = 0; number < 1024; ++number) {
            const quint32 elements[] = {0, 1, 16383, quint32(rng() % 16384)};
            for (quint32 element : elements) {
                for (quint32 axis = 1; axis <= 4; ++axis) {
                    const quint32 adr =
                        ((axis - 1) << 30) | (group << 24) | (number << 14) | element;
                    const QString text = GetKoordinateAusQ7Adr(adr);
                    if (axis > 1 && element == 0) {
                        ASSERT_EQ(GetQ7Addresse(text + ".0", 1), adr) << text.toStdString();
                        ASSERT_EQ(GetQ7Addresse(text.mid(2), int(axis)), adr);
                    } else {
                        ASSERT_EQ(GetQ7Addresse(text, 1), adr) << text.toStdString();
                    }
                }
            }
        }
    }
    EXPECT_TRUE(recorder().messages().isEmpty());
    EXPECT_EQ(GetQ7Addresse("2.B33", 1), 0u);
}

TEST(Coordinates, HostileTextsAndAddressesRunClean)
{
    const QString pool = u" .$§-+?@AZaz0123456789\x01\x7f\u00ff\u4e00"_qs + QChar(0xD800) +
                         QChar(0xDC00) + QChar(0xFFFF);
    std::mt19937 rng(11);
    QStringList texts{QString(100000, u'.'), QString(100000, u'9'), "1." + QString(100000, u'B'),
                      QString(1, QChar(0xDBFF)) + "33", QString(1, QChar(0)) + "33"};
    for (int i = 0; i < 2000; ++i) {
        QString s;
        for (int n = int(rng() % 16); n > 0; --n)
            s += pool.at(int(rng() % pool.size()));
        texts << s;
    }
    for (const QString &s : texts) {
        IsKoordinate(s);
        GetPurePar(s);
        GetQ7Addresse(s, int(rng()));
    }
    for (int i = 0; i < 20000; ++i) {
        const QString text = GetKoordinateAusQ7Adr(quint32(rng()));
        ASSERT_FALSE(text.isEmpty());
        GetQ7Addresse(text, 1);
    }
    SUCCEED(); // the sanitizers judge this test
}
