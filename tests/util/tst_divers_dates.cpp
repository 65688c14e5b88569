#include "platform/convert.h"
#include "support/testing.h"
#include "util/Divers.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace drivewiz;
using drivewiz::test::recorder;

namespace {

TDateTime day(int y, int m, int d)
{
    return QDateToDateTime(QDate(y, m, d));
}

class DiversDates : public testing::Test
{
protected:
    void TearDown() override
    {
        Tage_ProWo = 5;
        InitDatumFormat();
    }
};

} // namespace

TEST_F(DiversDates, DayNumbersAndWeekdays)
{
    EXPECT_EQ(day(1980, 1, 1), MinDatum);
    EXPECT_EQ(DateTimeToQDate(0), QDate(1899, 12, 30));
    EXPECT_EQ(DateTimeToQDate(day(2015, 2, 7) + 0.75), QDate(2015, 2, 7));
    EXPECT_FALSE(DateTimeToQDate(std::nan("")).isValid());
    EXPECT_FALSE(DateTimeToQDate(1e12).isValid());
    EXPECT_EQ(DayOfWeek(0), 7);                                  // Saturday
    EXPECT_EQ(DayOfWeek(day(2015, 2, 8)), 1);                    // Sunday
    EXPECT_EQ(DayOfWeek(day(2015, 2, 9)), 2);                    // Monday
    for (QDate d(1890, 1, 1); d.year() < 1910; d = d.addDays(1)) // across day 0
        ASSERT_EQ(DayOfWeek(QDateToDateTime(d)), d.dayOfWeek() % 7 + 1);
    EXPECT_THROW(EncodeDate(2015, 2, 29), ConvertError);
    EXPECT_THROW(EncodeDate(10000, 1, 1), ConvertError);
    EXPECT_EQ(GetYear(day(2015, 12, 31)), 2015);
}

TEST_F(DiversDates, DateTextsInTheShortFormat)
{
    EXPECT_EQ(StrToDate("07.02.15"), day(2015, 2, 7));
    EXPECT_EQ(StrToDate(" 7.2.2015 "), day(2015, 2, 7));
    EXPECT_EQ(StrToDate("1.2.50"), day(1950, 2, 1));
    EXPECT_EQ(StrToDate("1.2"), day(CurrYear(), 2, 1));
    for (const char *bad : {"", "31.02.15", "1.2.3.4", "aa.bb.cc", "1.-2.15", "1/2/15"})
        EXPECT_FALSE(IsDate(bad)) << bad;
    try {
        StrToDate("x");
        FAIL() << "no ConvertError";
    } catch (const ConvertError &e) {
        EXPECT_EQ(e.message(), "'x' ist kein gültiges Datum");
    }
    SetShortDateFormat("yyyy/mm/dd", u'/');
    EXPECT_EQ(StrToDate("2015/2/7"), day(2015, 2, 7));
    EXPECT_EQ(StrToDate("2/7"), day(CurrYear(), 2, 7));
}

TEST_F(DiversDates, FormatDatumAndYear2000Texts)
{
    EXPECT_EQ(FormatDatum("1.2.15"), "01.02.15");
    EXPECT_EQ(FormatDatum("12.3.2015"), "12.03.2015");
    EXPECT_EQ(FormatDatum("1.2"), "1.2");
    EXPECT_EQ(Str2000ToDate("01.02.79"), day(2079, 2, 1));
    EXPECT_EQ(Str2000ToDate("01.02.80"), day(1980, 2, 1));
    EXPECT_EQ(Str2000ToDate("1/2/03"), day(2003, 2, 1));
    EXPECT_EQ(Str2000ToDate("01.02.2015"), day(2015, 2, 1));
    for (const char *bad : {"x", "31.02.15", "1.2", "1.2.-3", ""})
        EXPECT_THROW(Str2000ToDate(bad), ConvertError) << bad;
    EXPECT_EQ(DateTo2000Str(day(2005, 3, 7) + 0.5), "07.03.2005");
}

TEST_F(DiversDates, SundayRoundingAndWorkingDays)
{
    EXPECT_EQ(RundeDatum(day(2015, 2, 8) + 0.5), day(2015, 2, 8)); // Sunday stays
    EXPECT_EQ(RundeDatum(day(2015, 2, 9)), day(2015, 2, 15));
    EXPECT_EQ(RundeDatum(day(2015, 2, 14)), day(2015, 2, 15));

    const TDateTime fri = day(2015, 2, 6), sat = day(2015, 2, 7), sun = day(2015, 2, 8);
    EXPECT_EQ(NextWerkTag(sat, 1), day(2015, 2, 9));
    EXPECT_EQ(NextWerkTag(sun, 0), day(2015, 2, 9));
    EXPECT_EQ(NextWerkTag(sat, -1), fri);
    EXPECT_EQ(NextWerkTag(sun, -1), fri);
    EXPECT_EQ(NextWerkTag(fri, 1), fri);
    Tage_ProWo = 6;
    EXPECT_EQ(NextWerkTag(sat, 1), sat);
    EXPECT_EQ(NextWerkTag(sun, -1), sat);
    EXPECT_EQ(recorder().beeps(), 0);
    Tage_ProWo = 0;
    NextWerkTag(sat, 1);
    EXPECT_EQ(recorder().beeps(), 1);
}

TEST_F(DiversDates, WeekTextsToDates)
{
    EXPECT_EQ(WoJahrNumToDate(1, 2015), day(2015, 1, 2));
    EXPECT_EQ(WoJahrNumToDate(53, 2015), day(2016, 1, 1));
    EXPECT_EQ(WoJahrNumToDate(1, 2016), day(2016, 1, 8)); // 1 January 2016 is a Friday
    EXPECT_EQ(WoJahrNumToDate(5, 0), 0);

    EXPECT_EQ(WoJahrToDate(""), WoJahrNumToDate(1, 2040));
    EXPECT_EQ(WoJahrToDate("0.15"), WoJahrNumToDate(1, 2040));
    EXPECT_EQ(WoJahrToDate("07."), WoJahrNumToDate(1, 2040));
    EXPECT_EQ(WoJahrToDate("53.2015"), day(2016, 1, 1)); // the year is read as 15
    EXPECT_EQ(WoJahrToDate(" _7 . 15"), day(2015, 2, 13));
    EXPECT_EQ(WoJahrToDate("52.50"), WoJahrNumToDate(52, 2050));
    EXPECT_EQ(WoJahrToDate("52.51"), WoJahrNumToDate(52, 1951));
    EXPECT_EQ(WoJahrToDate("07.02.15"), day(2015, 2, 6)); // a Saturday, moved to Friday
    EXPECT_EQ(WoJahrToDate("000.15"), 0);
    EXPECT_TRUE(recorder().messages().isEmpty());
    EXPECT_EQ(WoJahrToDate("xx.15"), 0);
    EXPECT_EQ(recorder().takeMessages(),
              QStringList{"Warnung: Ungültiges Datum (WoJahrToDate):\rxx.15\r\"WW.JJ\" erwartet"});
}

// The independent reference: Qt's week numbers, for every day from 1981 to 2099. The last
// days of December that lie in the next year's week 1 are kept in week 53 of their own year.
TEST_F(DiversDates, WeekNumbersAgreeWithQtFrom1981To2099)
{
    int lateDecemberDays = 0;
    for (QDate d(1981, 1, 1); d.year() < 2100; d = d.addDays(1)) {
        int isoYear = 0;
        const int isoWeek = d.weekNumber(&isoYear);
        int week = 0, year = 0;
        DateToWoJahrNum(QDateToDateTime(d) + 0.5, week, year, tjahr4);
        if (isoYear == d.year() + 1) {
            ++lateDecemberDays;
            ASSERT_EQ(d.month(), 12);
            ASSERT_EQ(week, 53) << d.toString(Qt::ISODate).toStdString();
            ASSERT_EQ(year, d.year());
        } else {
            ASSERT_EQ(week, isoWeek) << d.toString(Qt::ISODate).toStdString();
            ASSERT_EQ(year, isoYear) << d.toString(Qt::ISODate).toStdString();
        }
    }
    EXPECT_GT(lateDecemberDays, 100);
}

TEST_F(DiversDates, WeekNumbersOfSpecialDates)
{
    int week = -1, year = -1;
    DateToWoJahrNum(MinDatum, week, year, tjahr4);
    EXPECT_EQ(week, 0);
    EXPECT_EQ(year, 0);
    DateToWoJahrNum(day(1999, 3, 1), week, year, tjahr2);
    EXPECT_EQ(year, 99);
    DateToWoJahrNum(day(2005, 3, 1), week, year, tjahr2);
    EXPECT_EQ(year, 5);
    EXPECT_EQ(DateToWoJahr(day(2005, 2, 16)), "07.05");
    EXPECT_EQ(DateToWoJahr(day(2014, 12, 29)), "53.14");
    EXPECT_EQ(DateToWoJahr(MinDatum), "");
    EXPECT_EQ(GetMaxWoImJahr(2015), 53);
    EXPECT_EQ(GetMaxWoImJahr(2016), 52);
    EXPECT_EQ(GetMaxWoImJahr(2021), 52);
    EXPECT_EQ(GetMaxWoImJahr(2014), 53); // 31 December 2014 belongs to next year's week 1
    EXPECT_EQ(GetMaxWoImJahr(1979), 0);
}

TEST_F(DiversDates, WeekTextHelpers)
{
    EXPECT_EQ(GetMontagDate("07.15"), day(2015, 2, 9));
    EXPECT_DOUBLE_EQ(GetSonntagDate("07.15"), day(2015, 2, 15) + 0.99999999);
    EXPECT_EQ(FormatKW("7.15"), "07.15");
    EXPECT_EQ(FormatKW(" 5 . 2015 "), "05.2015");
    EXPECT_EQ(FormatKW("_3_.1"), "03.01");
    EXPECT_EQ(FormatKW("abc"), "00.00");
    EXPECT_EQ(FormatKW(""), "00.00");
    EXPECT_EQ(FormatKW("123456789012.1"), "1234567890.01");
    QString kw = "52.15";
    ModifyKWText(kw, 1);
    EXPECT_EQ(kw, "53.15");
    ModifyKWText(kw, 1);
    EXPECT_EQ(kw, "01.16");
    ModifyKWText(kw, -1);
    EXPECT_EQ(kw, "53.15");
}

TEST_F(DiversDates, MonthsAsWholeWeeks)
{
    TDateTime first = -1, last = -1;
    GetAnfEndDateMonat(2, 2015, first, last); // Sunday 1st, Saturday 28th
    EXPECT_EQ(first, day(2015, 2, 2));
    EXPECT_EQ(last, day(2015, 3, 1));
    GetAnfEndDateMonat(6, 2015, first, last); // Monday 1st, Tuesday 30th
    EXPECT_EQ(first, day(2015, 6, 1));
    EXPECT_EQ(last, day(2015, 6, 28));
    GetAnfEndDateMonat(1, 2015, first, last); // Thursday 1st: from the next Monday
    EXPECT_EQ(first, day(2015, 1, 5));
    GetAnfEndDateMonat(4, 2015, first, last); // Wednesday 1st, Thursday 30th
    EXPECT_EQ(first, day(2015, 3, 30));
    EXPECT_EQ(last, day(2015, 5, 3));
    GetAnfEndDateMonat(13, 2015, first, last);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(last, 0);
    int firstWeek = 0, lastWeek = 0;
    GetAnfEndKWMonat(2, 2015, firstWeek, lastWeek);
    EXPECT_EQ(firstWeek, 6);
    EXPECT_EQ(lastWeek, 9);
}
