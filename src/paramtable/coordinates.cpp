#include "paramtable/coordinates.h"

#include "lang/wizSprache.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "util/Divers.h"

namespace drivewiz {

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// An integer word as IsInteger takes it, or -1 (the mark of an invalid field).
int integerOrInvalid(const QString &word)
{
    return IsInteger(word) ? StrToInt(word.trimmed()) : -1;
}

struct CoordinateParts
{
    QString word; // group letter and number
    int axis = 0;
    int element = 0;
};

CoordinateParts splitCoordinate(const QString &t, int axis)
{
    CoordinateParts p;
    p.axis = axis;
    if (!t.contains(u'.')) {
        p.word = t;
        return p;
    }
    const TCharSet dot(".");
    int next = 1;
    if (isDigit(t.at(0))) p.axis = integerOrInvalid(LExtractWord(next++, t, dot, ewSingleDelim));
    p.word = LExtractWord(next++, t, dot, ewSingleDelim);
    p.element = integerOrInvalid(LExtractWord(next, t, dot, ewSingleDelim));
    return p;
}

} // namespace

bool IsKoordinate(const QString &text)
{
    if (text.trimmed().size() < 3) return false;
    const QChar second = text.at(1);
    if (second != u'.' && !isDigit(second)) return false;
    for (QChar bad : {u'$', u'§', u' ', u'-', u'+'}) {
        if (text.contains(bad)) return false;
    }
    return isDigit(text.back());
}

QString GetPurePar(const QString &text)
{
    return LExtractWord(1, text, TCharSet("."), ewMultipleDelim);
}

quint32 GetQ7Addresse(const QString &coordinate, int axis)
{
    const QString t = coordinate.trimmed().toUpper();
    const CoordinateParts p = splitCoordinate(t, axis);
    const int group = p.word.isEmpty() ? -1 : int(p.word.at(0).unicode()) - 64;
    const int number = integerOrInvalid(p.word.mid(1));
    // An axis word that is no integer makes the coordinate invalid, as an element would.
    const bool axisValid = !(t.contains(u'.') && isDigit(t.at(0))) || p.axis != -1;
    if (group == -1 || number == -1 || p.element == -1 || !axisValid || p.word.isEmpty()) {
        ShowMessage(t + u'\r' + s_NoValidCoord);
        return 0;
    }
    const int axisField = p.axis > 0 ? p.axis - 1 : p.axis;
    // Plain unsigned addition: an out-of-range field spills into its neighbour.
    return (quint32(axisField) << 30) + (quint32(group) << 24) + (quint32(number) << 14) +
           quint32(p.element);
}

QString GetKoordinateAusQ7Adr(quint32 address)
{
    const quint32 axisField = address >> 30;
    const quint32 group = (address >> 24) & 63u;
    const quint32 number = (address >> 14) & 1023u;
    const quint32 element = address & 16383u;
    QString text;
    if (axisField != 0) text = QString::number(axisField + 1) + u'.';
    text += QChar(char16_t(group + 64));
    text += QString::number(number).rightJustified(2, u'0');
    if (element != 0) text += u'.' + QString::number(element);
    return text;
}

} // namespace drivewiz
