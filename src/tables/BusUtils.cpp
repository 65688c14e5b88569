#include "tables/BusUtils.h"

#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"
#include "platform/colors.h"
#include "util/Divers.h"

#include <QLabel>

namespace drivewiz {

int GetTypeLengthOnFieldBus(const QString &type)
{
    static const struct
    {
        const char *name;
        int bytes;
    } kLengths[] = {
        {"B", 1},     {"I8", 1},    {"I16", 2}, {"I32", 4},   {"U8", 1},     {"U16", 2},
        {"U32", 4},   {"P64", 4}, // sent as 32 bits on the bus
        {"U8A64", 64}, {"STR8", 8}, {"STR16", 16},
    };
    const QString upper = type.toUpper();
    for (const auto &entry : kLengths) {
        if (upper == QLatin1String(entry.name)) return entry.bytes;
    }
    return 0;
}

int GetPDOLength(TParaTable *table, const QString &list)
{
    if (!table) return 0;
    const TCharSet comma(QStringLiteral(","));
    const QString axis = QString::number(table->CurrentAx());
    int length = 0;
    const int words = LWordCount(list, comma, ewMultipleDelim);
    for (int i = 1; i <= words; ++i) {
        const QString koordinate = LExtractWord(i, list, comma, ewMultipleDelim).trimmed();
        if (koordinate.isEmpty()) continue;
        quint32 address = 0;
        const int row = table->FindRecord(koordinate, axis, address);
        if (row >= 0) length += GetTypeLengthOnFieldBus(table->Cell(row, QStringLiteral("Datentyp")));
    }
    return length;
}

int CheckLength(QLabel *label, TParaTable *table, const QString &list, int maximum)
{
    const int length = GetPDOLength(table, list);
    if (!label) return length;
    QString text = s_ResTlgrLength + QStringLiteral(": ") + QString::number(length) +
                   QStringLiteral(" Byte");
    const bool tooLong = maximum < length;
    if (tooLong)
        text += QStringLiteral(" (") + s_MaxLen + QLatin1Char(':') + QString::number(maximum) +
                QStringLiteral(" Byte)");
    label->setText(text);
    QPalette pal = label->palette();
    pal.setColor(QPalette::WindowText, ColorToQColor(tooLong ? clRed : clNavy));
    label->setPalette(pal);
    return length;
}

} // namespace drivewiz
