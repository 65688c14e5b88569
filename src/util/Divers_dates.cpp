// Date and calendar-week helpers of Divers.

#include "util/Divers.h"

#include "platform/convert.h"
#include "platform/dialogs.h"

#include <cmath>

namespace drivewiz {

namespace {

// Day numbers of 1 January 0001 and 31 December 9999, the range the drive tool's dates
// cover.
constexpr double kFirstDay = -693593;
constexpr double kLastDay = 2958465;

QDate epoch()
{
    return QDate(1899, 12, 30);
}

struct DateFormat
{
    QString format = QStringLiteral("dd.mm.yy");
    QChar separator = u'.';
};

DateFormat &dateFormat()
{
    static DateFormat f;
    return f;
}

[[noreturn]] void throwDate(const QString &text)
{
    throw ConvertError(QStringLiteral("'%1' ist kein gültiges Datum").arg(text));
}

// The date part without the time; whole days from 30 December 1899.
double datePart(TDateTime t)
{
    return double(Trunc(t));
}

} // namespace

const TDateTime MinDatum = 29221.0; // 1 January 1980

TDateTime QDateToDateTime(const QDate &date)
{
    return date.isValid() ? double(epoch().daysTo(date)) : 0.0;
}

QDate DateTimeToQDate(TDateTime t)
{
    if (!std::isfinite(t)) return QDate();
    const double days = std::trunc(t);
    if (days < kFirstDay || days > kLastDay) return QDate();
    return epoch().addDays(qint64(days));
}

int DayOfWeek(TDateTime t)
{
    // Day 0 (30 December 1899) was a Saturday.
    const qint64 days = Trunc(t);
    return int((days % 7 + 13) % 7) + 1;
}

bool TryEncodeDate(int year, int month, int day, TDateTime &out)
{
    if (year < 1 || year > 9999 || !QDate::isValid(year, month, day)) return false;
    out = QDateToDateTime(QDate(year, month, day));
    return true;
}

TDateTime EncodeDate(int year, int month, int day)
{
    TDateTime t = 0;
    if (!TryEncodeDate(year, month, day, t))
        throw ConvertError(QStringLiteral("Ungültiges Argument zum Codieren des Datums"));
    return t;
}

QString ShortDateFormat()
{
    return dateFormat().format;
}

QChar DateSeparator()
{
    return dateFormat().separator;
}

void SetShortDateFormat(const QString &format, QChar separator)
{
    dateFormat() = DateFormat{format, separator};
}

void InitDatumFormat()
{
    SetShortDateFormat(QStringLiteral("dd.mm.yy"), u'.');
}

namespace {

// Order of day, month and year in the short date format, as indexes 0..2.
void dateOrder(int &dayAt, int &monthAt, int &yearAt)
{
    const QString f = ShortDateFormat().toLower();
    const qsizetype d = f.indexOf(u'd'), m = f.indexOf(u'm'), y = f.indexOf(u'y');
    if (d < 0 || m < 0 || y < 0) {
        dayAt = 0, monthAt = 1, yearAt = 2;
        return;
    }
    dayAt = int((d > m) + (d > y));
    monthAt = int((m > d) + (m > y));
    yearAt = int((y > d) + (y > m));
}

bool dateNumber(const QString &part, int &value, int &digits)
{
    const QString p = part.trimmed();
    if (p.isEmpty() || p.size() > 4) return false;
    for (QChar c : p) {
        if (c < u'0' || c > u'9') return false;
    }
    value = p.toInt();
    digits = int(p.size());
    return true;
}

} // namespace

bool TryStrToDate(const QString &text, TDateTime &out)
{
    const QStringList parts = text.trimmed().split(DateSeparator());
    if (parts.size() < 2 || parts.size() > 3) return false;
    int at[3] = {0, 1, 2}; // day, month, year
    dateOrder(at[0], at[1], at[2]);
    if (parts.size() == 2) { // no year: day and month keep their relative order
        at[0] = at[0] > at[1] ? 1 : 0;
        at[1] = 1 - at[0];
    }
    int value[3] = {0, 0, QDate::currentDate().year()};
    int digits[3] = {0, 0, 4};
    for (int k = 0; k < int(parts.size()); ++k) {
        if (!dateNumber(parts.at(at[k]), value[k], digits[k])) return false;
    }
    if (digits[2] <= 2) value[2] += value[2] < 50 ? 2000 : 1900;
    return TryEncodeDate(value[2], value[1], value[0], out);
}

TDateTime StrToDate(const QString &text)
{
    TDateTime t = 0;
    if (!TryStrToDate(text, t)) throwDate(text);
    return t;
}

bool IsDate(const QString &text)
{
    TDateTime t = 0;
    return TryStrToDate(text, t);
}

int GetYear(TDateTime date)
{
    return DateTimeToQDate(date).year();
}

int CurrYear()
{
    return QDate::currentDate().year();
}

QString FormatDatum(const QString &text)
{
    const TCharSet dot(".");
    if (LWordCount(text, dot, ewSingleDelim) < 3) return text;
    return LeadZeroStr(LExtractWord(1, text, dot, ewSingleDelim), 2) + u'.' +
           LeadZeroStr(LExtractWord(2, text, dot, ewSingleDelim), 2) + u'.' +
           LExtractWord(3, text, dot, ewSingleDelim);
}

TDateTime Str2000ToDate(const QString &text)
{
    QString t = text.trimmed();
    t.replace(u'/', u'.');
    const QStringList parts = t.split(u'.');
    int day = 0, month = 0, year = 0;
    if (parts.size() != 3 || !TryStrToInt(parts.at(0), day) || !TryStrToInt(parts.at(1), month) ||
        !TryStrToInt(parts.at(2), year) || year < 0)
        throwDate(text);
    if (year < 80)
        year += 2000;
    else if (year < 100)
        year += 1900;
    TDateTime result = 0;
    if (!TryEncodeDate(year, month, day, result)) throwDate(text);
    return result;
}

QString DateTo2000Str(TDateTime date)
{
    const QDate d = DateTimeToQDate(date);
    return QStringLiteral("%1.%2.%3")
        .arg(d.day(), 2, 10, QChar(u'0'))
        .arg(d.month(), 2, 10, QChar(u'0'))
        .arg(d.year(), 4, 10, QChar(u'0'));
}

TDateTime RundeDatum(TDateTime date)
{
    const int dow = DayOfWeek(date);
    return datePart(date) + (dow == 1 ? 0 : 8 - dow);
}

TDateTime NextWerkTag(TDateTime date, int direction)
{
    if (Tage_ProWo == 0) Beep();
    const int dow = DayOfWeek(date); // Sunday 1, Monday 2 .. Saturday 7
    const bool sunday = dow == 1;
    const int d = dow - 1;             // Monday 1 .. Saturday 6
    const double perWeek = Tage_ProWo; // in double: any setting stays free of overflow
    if (direction >= 0) {
        if (sunday) return date + 1;
        return d > perWeek ? date + (8 - d) : date;
    }
    if (sunday) return date - (7 - perWeek);
    return d > perWeek ? date - (d - perWeek) : date;
}

namespace {

// 0 when 1 January lies in the last week of the year before (Friday to Sunday), else 1.
int firstWeekOffset(TDateTime newYear)
{
    const int dow = DayOfWeek(newYear);
    return (dow == 1 || dow == 6 || dow == 7) ? 0 : 1;
}

} // namespace

TDateTime WoJahrNumToDate(int week, int year)
{
    if (year == 0) return 0;
    const TDateTime newYear = EncodeDate(year, 1, 1);
    const int k = firstWeekOffset(newYear);
    return NextWerkTag(RundeDatum(newYear) + double(qint64(week) - k) * 7, -1);
}

namespace {

// Week and year of a "WW.JJ" text; an empty or zero week or a missing year means week 1
// of 2040. A year of more than two characters keeps its last two.
TDateTime weekTextToDate(const QString &t)
{
    const qsizetype dot = t.indexOf(u'.');
    QString week = dot < 0 ? t : t.left(dot);
    QString year = dot < 0 ? QString() : t.mid(dot + 1);
    if (week.isEmpty() || week == QLatin1String("0") || week == QLatin1String("00") ||
        year.isEmpty()) {
        week = QStringLiteral("01");
        year = QStringLiteral("40");
    }
    if (year.size() > 2) year = year.right(2);
    int y = StrToInt(year);
    y += y < 51 ? 2000 : 1900;
    const int w = StrToInt(week);
    return w == 0 ? 0 : WoJahrNumToDate(w, y);
}

} // namespace

TDateTime WoJahrToDate(const QString &text)
{
    QString t = text.trimmed();
    if (t.isEmpty()) t = QStringLiteral("01.40");
    EntferneChar(t, u'_');
    EntferneBlanks(t);
    try {
        const TDateTime d =
            LWordCount(t, TCharSet("."), ewSingleDelim) < 3 ? weekTextToDate(t) : StrToDate(t);
        // The null date stays the null date; it is no day to move.
        return d == 0 ? 0 : NextWerkTag(d, -1);
    } catch (const ConvertError &) {
        ShowMessage(QStringLiteral("Warnung: Ungültiges Datum (WoJahrToDate):\r") + text +
                    QStringLiteral("\r\"WW.JJ\" erwartet"));
        return 0;
    }
}

void DateToWoJahrNum(TDateTime date, int &week, int &year, TJahrFormat format)
{
    week = 0;
    year = 0;
    int y = GetYear(date);
    if (!(date > MinDatum) || y < 1 || y > 9999) return;
    const TDateTime newYear = EncodeDate(y, 1, 1);
    const qint64 days = Trunc(RundeDatum(date) - RundeDatum(newYear));
    int w = firstWeekOffset(newYear) + int(days / 7);
    if (w == 0) {
        // The date lies in the last week of the year before: 52 or 53, depending on how
        // far 31 December lies behind the Friday of week 52. That Friday comes from the
        // full year: a two-digit week text would read years after 2050 as 19xx.
        --y;
        const TDateTime friday52 = WoJahrNumToDate(52, y);
        w = EncodeDate(y, 12, 31) - friday52 < 4 ? 52 : 53;
    }
    week = w;
    year = format == tjahr4 ? y : (y < 2000 ? y - 1900 : y - 2000);
}

QString DateToWoJahr(TDateTime date)
{
    int week = 0, year = 0;
    DateToWoJahrNum(date, week, year, tjahr2);
    if (week == 0) return QString();
    return tpForm(QStringLiteral("@@"), week) + u'.' + tpForm(QStringLiteral("@@"), year);
}

int GetMaxWoImJahr(int year)
{
    TDateTime lastDay = 0;
    if (!TryEncodeDate(year, 12, 31, lastDay)) return 0;
    int week = 0, y = 0;
    DateToWoJahrNum(lastDay, week, y, tjahr4);
    return week;
}

TDateTime GetMontagDate(const QString &text)
{
    const TDateTime d = WoJahrToDate(text);
    const int dow = DayOfWeek(d);
    return dow == 1 ? d - 6 : d - dow + 2;
}

TDateTime GetSonntagDate(const QString &text)
{
    return GetMontagDate(text) + 6 + 0.99999999;
}

QString FormatKW(const QString &text)
{
    QString t = text.trimmed();
    EntferneChar(t, u'_');
    EntferneBlanks(t);
    const qsizetype dot = t.indexOf(u'.');
    if (dot < 0) return QStringLiteral("00.00");
    const auto part = [](const QString &p) { return LeadZeroStr(p.trimmed().left(10), 2); };
    return part(t.left(dot)) + u'.' + part(t.mid(dot + 1));
}

void ModifyKWText(QString &text, int weeks)
{
    text = DateToWoJahr(WoJahrToDate(text) + double(weeks) * 7);
}

void GetAnfEndDateMonat(int month, int year, TDateTime &first, TDateTime &last)
{
    first = 0;
    last = 0;
    TDateTime day1 = 0;
    if (!TryEncodeDate(year, month, 1, day1)) return;
    const QDate q = DateTimeToQDate(day1);
    const TDateTime lastDay = day1 + q.daysInMonth() - 1;
    const int firstIso = q.dayOfWeek(); // Monday 1 .. Sunday 7
    const int lastIso = DateTimeToQDate(lastDay).dayOfWeek();
    first = firstIso <= 3 ? day1 - (firstIso - 1) : day1 + (8 - firstIso);
    last = lastIso >= 4 ? lastDay + (7 - lastIso) : lastDay - lastIso;
}

void GetAnfEndKWMonat(int month, int year, int &firstWeek, int &lastWeek)
{
    TDateTime first = 0, last = 0;
    GetAnfEndDateMonat(month, year, first, last);
    int y = 0;
    DateToWoJahrNum(first, firstWeek, y, tjahr4);
    DateToWoJahrNum(last, lastWeek, y, tjahr4);
}

} // namespace drivewiz
