// Dates and calendar weeks: the week a date is given lies around it (from its Monday to
// its Sunday), a date written as text reads back, week texts normalise once, moving a
// week there and back returns to it; any text is read without a crash.

#include "fuzz_support.h"

#include "platform/convert.h"
#include "util/Divers.h"

#include <algorithm>
#include <cmath>

using namespace drivewiz;

namespace {

constexpr double kFrom = 29222; // 2 January 1980, the first day that has a week
constexpr double kTo = 55500;   // December 2051: two-digit years read up to 2050

QString day(double d)
{
    return DateTo2000Str(d);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::setUp();
    FuzzedDataProvider in(data, size);
    const double date = std::floor(in.ConsumeFloatingPointInRange(kFrom, kTo));
    const int weeks = in.ConsumeIntegralInRange(-600, 600);
    const int month = in.ConsumeIntegralInRange(-2, 14);
    const int year = in.ConsumeIntegralInRange(-10, 10000);
    const QString text = fuzz::text(in, 40);

    const QString week = DateToWoJahr(date);
    if (GetYear(date) <= 2050 && !week.isEmpty()) {
        FUZZ_CHECK(GetMontagDate(week) <= date && date <= GetSonntagDate(week),
                   day(date) + " " + week);
        FUZZ_CHECK(FormatKW(week) == week, week);
        QString moved = week;
        ModifyKWText(moved, weeks);
        const double target = WoJahrToDate(week) + weeks * 7.0;
        if (target > kFrom + 7 && GetYear(target) <= 2050) {
            ModifyKWText(moved, -weeks);
            // The same week may have two texts ("53.14" is "01.15"): compare the weeks.
            FUZZ_CHECK(GetMontagDate(moved) == GetMontagDate(week),
                       week + " " + moved + " " + QString::number(weeks));
        }
    }
    FUZZ_CHECK(Str2000ToDate(DateTo2000Str(date)) == date, day(date));

    // Any text: read, normalised and moved without a crash; normalising twice changes
    // nothing more.
    WoJahrToDate(text);
    GetMontagDate(text);
    QString moved = text;
    ModifyKWText(moved, weeks);
    // (Only for week-like texts: a part is trimmed before it is cut to ten characters, so a
    // blank that the cut brings to its end goes in a second pass.)
    const bool weekLike = std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.isDigit() || c == u'.' || c == u'_' || c == u' ';
    });
    if (weekLike) FUZZ_CHECK(FormatKW(FormatKW(text)) == FormatKW(text), text);
    FUZZ_CHECK(FormatDatum(FormatDatum(text)) == FormatDatum(text), text);
    try {
        Str2000ToDate(text);
    } catch (const ConvertError &) {
        // not a date: the conversion's own error
    }
    TDateTime first = 0, last = 0;
    GetAnfEndDateMonat(month, year, first, last);
    if (first != 0)
        FUZZ_CHECK(DayOfWeek(first) == 2 && DayOfWeek(last) == 1 && first < last,
                   QString::number(month) + "/" + QString::number(year));
    int w1 = 0, w2 = 0;
    GetAnfEndKWMonat(month, year, w1, w2);
    return 0;
}
