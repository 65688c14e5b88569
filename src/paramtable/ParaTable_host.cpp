// Descriptions fetched from the host parameter by parameter.

#include "paramtable/ParaTable_p.h"

#include "lang/wizDLLDefs.h"
#include "paramtable/coordinates.h"
#include "platform/convert.h"
#include "platform/textcodec.h"
#include "util/Divers.h"

#include <QRegularExpression>

namespace drivewiz {

// The host answers with a title line and the parameter's line(s). The first answer sets
// up the columns; each parameter's lines are appended once and put into the index where
// they belong, so the table fills up as controls ask for parameters.
int TParaTable::fetchDescription(const QString &koordinate, const QString &axis, quint32 &address)
{
    int ax = 0; // "$2" is axis 2: the test and the value come from one conversion
    if (!TryStrToInt(axis.trimmed(), ax)) ax = 0;
    address = GetQ7Addresse(koordinate, ax);
    if (address == 0) return -1;
    if (address == m_lastFetched) return FindParAxUnknown(koordinate, axis);
    quint8 status = 0;
    bool ok = false;
    const fcbtGetParaInfoStr info = m_cb.get_para_info;
    const QByteArray text = readHostText(
        "fcbtGetParaInfoStr",
        [&](char *buf, qint32 size) { return info(buf, size, m_wizardId, address, &status); },
        [&](bool) {
            return checkStatus(status, QStringLiteral("fcbtGetParaInfoStr"), address, koordinate);
        },
        ok);
    if (!ok || text.isEmpty()) return -1;
    QStringList lines =
        decodeText(text).split(QRegularExpression(QStringLiteral("[\r\n]+")), Qt::SkipEmptyParts);
    if (lines.isEmpty()) return -1;
    const QString title = lines.takeFirst();
    if (ColCount() == 0) InitColumnArray(title);
    m_lastFetched = address;
    for (const QString &line : lines)
        AppendRowIndexed(line);
    return FindParAxUnknown(koordinate, axis);
}

} // namespace drivewiz
