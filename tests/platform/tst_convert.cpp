#include "platform/convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace drivewiz;

class Convert : public testing::Test
{
protected:
    void TearDown() override { SetDecimalSeparator(QLatin1Char('.')); }
};

TEST_F(Convert, StrToIntAcceptsLeadingBlanksSignsAndHex)
{
    EXPECT_EQ(StrToInt("  42"), 42);
    EXPECT_EQ(StrToInt("-17"), -17);
    EXPECT_EQ(StrToInt("+5"), 5);
    EXPECT_EQ(StrToInt("$FF"), 255);
    EXPECT_EQ(StrToInt("0x1f"), 31);
    EXPECT_EQ(StrToInt("-$10"), -16);
    EXPECT_EQ(StrToInt("$FFFFFFFF"), -1);
    EXPECT_EQ(StrToInt("2147483647"), 2147483647);
    EXPECT_EQ(StrToInt("-2147483648"), std::numeric_limits<int>::min());
}

TEST_F(Convert, StrToIntRejectsEverythingElse)
{
    for (const char *bad : {"", " ", "12 ", "1.5", "abc", "2147483648", "-2147483649", "$",
                            "$1FFFFFFFF", "1e3", "--1", "0x", "١٢"}) {
        int v = 7;
        EXPECT_FALSE(TryStrToInt(QString::fromUtf8(bad), v)) << bad;
        EXPECT_EQ(v, 7);
    }
    try {
        StrToInt("x1");
        FAIL() << "no ConvertError";
    } catch (const ConvertError &e) {
        EXPECT_EQ(e.message(), QStringLiteral("'x1' ist kein gültiger Integerwert"));
    }
    EXPECT_EQ(StrToIntDef("zz", -3), -3);
    EXPECT_EQ(StrToInt64("9223372036854775807"), std::numeric_limits<qint64>::max());
}

TEST_F(Convert, StrToFloatFollowsTheDecimalSeparator)
{
    EXPECT_DOUBLE_EQ(StrToFloat(" 1.5 "), 1.5);
    EXPECT_DOUBLE_EQ(StrToFloat("-.5"), -0.5);
    EXPECT_DOUBLE_EQ(StrToFloat("5."), 5.0);
    EXPECT_DOUBLE_EQ(StrToFloat("1.5E-3"), 0.0015);
    EXPECT_DOUBLE_EQ(StrToFloat("2e+2"), 200.0);
    double v = 0;
    EXPECT_FALSE(TryStrToFloat("1,5", v));
    SetDecimalSeparator(QLatin1Char(','));
    EXPECT_DOUBLE_EQ(StrToFloat("1,5"), 1.5);
    EXPECT_FALSE(TryStrToFloat("1.5", v));
    for (const char *bad : {"", ",", "e3", "1e", "1,2,3", "1 000", "INF", "NAN", "1e999", "--1"})
        EXPECT_FALSE(TryStrToFloat(bad, v)) << bad;
    EXPECT_THROW(StrToFloat("abc"), ConvertError);
}

TEST_F(Convert, FloatToStrUsesFifteenDigitsAndSwitchesToExponent)
{
    EXPECT_EQ(FloatToStr(0), "0");
    EXPECT_EQ(FloatToStr(-0.0), "0");
    EXPECT_EQ(FloatToStr(1.5), "1.5");
    EXPECT_EQ(FloatToStr(0.1), "0.1");
    EXPECT_EQ(FloatToStr(0.1 + 0.2), "0.3");
    EXPECT_EQ(FloatToStr(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(FloatToStr(2.0 / 3), "0.666666666666667");
    EXPECT_EQ(FloatToStr(123456789012345.0), "123456789012345");
    EXPECT_EQ(FloatToStr(1234567890123456.0), "1.23456789012346E15");
    EXPECT_EQ(FloatToStr(1e15), "1E15");
    EXPECT_EQ(FloatToStr(0.0001), "0.0001");
    EXPECT_EQ(FloatToStr(0.00001), "1E-5");
    EXPECT_EQ(FloatToStr(-1.5e-7), "-1.5E-7");
    EXPECT_EQ(FloatToStr(std::numeric_limits<double>::infinity()), "INF");
    SetDecimalSeparator(QLatin1Char(','));
    EXPECT_EQ(FloatToStr(-2.25), "-2,25");
}

TEST_F(Convert, FloatToStrFRoundsHalfAwayFromZero)
{
    EXPECT_EQ(FloatToStrF(2.5, FloatFormat::Fixed, 15, 0), "3");
    EXPECT_EQ(FloatToStrF(-2.5, FloatFormat::Fixed, 15, 0), "-3");
    EXPECT_EQ(FloatToStrF(1.005, FloatFormat::Fixed, 15, 2), "1.01"); // 15 digits first
    EXPECT_EQ(FloatToStrF(1.005, FloatFormat::Fixed, 17, 2), "1.00"); // exact value is below
    EXPECT_EQ(FloatToStrF(9.999, FloatFormat::Fixed, 15, 2), "10.00");
    EXPECT_EQ(FloatToStrF(0.001, FloatFormat::Fixed, 15, 2), "0.00");
    EXPECT_EQ(FloatToStrF(-0.001, FloatFormat::Fixed, 15, 2), "0.00");
    EXPECT_EQ(FloatToStrF(3, FloatFormat::Fixed, 15, 3), "3.000");
    EXPECT_EQ(FloatToStrF(1234567.891, FloatFormat::Number, 15, 2), "1,234,567.89");
    EXPECT_EQ(FloatToStrF(1e20, FloatFormat::Fixed, 15, 2), "1E20");
    EXPECT_EQ(FloatToStrF(1500, FloatFormat::Exponent, 3, 3), "1.50E+003");
    EXPECT_EQ(FloatToStrF(0.015, FloatFormat::Exponent, 2, 0), "1.5E-2");
    EXPECT_EQ(FloatToStrF(123.456, FloatFormat::General, 4, 0), "123.5");
}

TEST_F(Convert, RoundHalvesToEvenAndSaturates)
{
    EXPECT_EQ(Round(2.5), 2);
    EXPECT_EQ(Round(3.5), 4);
    EXPECT_EQ(Round(-2.5), -2);
    EXPECT_EQ(Round(2.51), 3);
    EXPECT_EQ(Round(1e300), std::numeric_limits<qint64>::max());
    EXPECT_EQ(Round(std::nan("")), 0);
    EXPECT_EQ(Trunc(-2.7), -2);
    EXPECT_EQ(IntToHex(255, 4), "00FF");
}

// Every finite double comes back from its text, with either separator, and its text is
// stable: the extremes, the smallest steps and random bit patterns.
TEST_F(Convert, EveryFiniteDoubleRoundTripsThroughItsText)
{
    using L = std::numeric_limits<double>;
    std::vector<double> values = {L::max(),
                                  -L::max(),
                                  L::min(),
                                  L::denorm_min(),
                                  -L::denorm_min(),
                                  1.7976931348623e308,
                                  9.99999999999999e307,
                                  0.1,
                                  1e-320,
                                  123.456};
    std::mt19937_64 bits(12345);
    while (values.size() < 20000) {
        quint64 b = bits();
        double v = 0;
        std::memcpy(&v, &b, sizeof v);
        if (std::isfinite(v)) values.push_back(v);
    }
    for (const QChar sep : {QLatin1Char('.'), QLatin1Char(',')}) {
        SetDecimalSeparator(sep);
        for (const double v : values) {
            const QString text = FloatToStr(v);
            double back = 0;
            ASSERT_TRUE(TryStrToFloat(text, back)) << text.toStdString();
            ASSERT_EQ(FloatToStr(back), text);
            ASSERT_LE(std::fabs(back - v), std::fabs(v) * 1e-14) << text.toStdString();
        }
    }
    EXPECT_EQ(FloatToStr(L::max()), "1,79769313486231E308");
}
