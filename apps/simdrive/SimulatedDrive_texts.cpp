// The text answers of the simulated drive: descriptions, selection lists, help and error
// texts, and the two-call buffer protocol they share.

#include "SimulatedDrive_p.h"

#include "paramtable/coordinates.h"
#include "platform/textcodec.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace drivewiz::sim {

namespace {

constexpr int32_t kOverstatement = 64;

// Bytes that are certainly no UTF-8: umlauts as single bytes, and a 0xFF at the end
// even for plain ASCII text.
QByteArray spoiled(const QByteArray &utf8)
{
    return encodeWindows1252(QString::fromUtf8(utf8)) + char(0xFF);
}

QByteArray rtfChar(QChar c)
{
    const char16_t u = c.unicode();
    if (u == u'\\' || u == u'{' || u == u'}') return QByteArray(1, '\\') + char(u);
    if (u == u'\t') return QByteArrayLiteral("\\tab ");
    if (u == u'\r' || u == u'\n') return QByteArrayLiteral("\\line ");
    if (u < 0x20) return QByteArray();
    if (u < 0x80) return QByteArray(1, char(u));
    const QByteArray cp = encodeWindows1252(QString(c));
    if (cp != "?") return QByteArrayLiteral("\\'") + cp.toHex();
    // Outside Windows-1252 (surrogates included): RTF's signed 16-bit \u with a fallback.
    return QByteArrayLiteral("\\u") + QByteArray::number(qint16(u)) + '?';
}

QByteArray rtfText(const QString &text)
{
    QByteArray out;
    for (QChar c : text)
        out += rtfChar(c);
    return out;
}

QByteArray rtfLine(const char *label, const QString &text)
{
    if (text.trimmed().isEmpty()) return QByteArray();
    return rtfText(QString::fromUtf8(label)) + rtfText(text) + "\\par\r\n";
}

} // namespace

int32_t deliver(const QByteArray &bytes, char *buffer, int32_t size, Hostility h)
{
    const QByteArray payload = h == Hostility::InvalidUtf8 ? spoiled(bytes) : bytes;
    const auto limit = qsizetype(std::numeric_limits<int32_t>::max() - kOverstatement);
    const auto length = int32_t(std::min(payload.size(), limit));
    if (buffer && size > 0) {
        const int32_t n = h == Hostility::NegativeLength ? 0 : std::min(length, size - 1);
        std::memcpy(buffer, payload.constData(), size_t(n));
        buffer[n] = '\0';
    }
    switch (h) {
    case Hostility::LengthTooLarge:
        return length + kOverstatement;
    case Hostility::NegativeLength:
        return -1;
    default:
        return length;
    }
}

QString csvLine(const QStringList &cells, QChar delimiter)
{
    QString line;
    for (qsizetype c = 0; c < cells.size(); ++c) {
        if (c > 0) line += delimiter;
        QString cell = cells.at(c);
        cell.replace(QLatin1Char('"'), QLatin1Char('\''));
        line += QLatin1Char('"') + cell + QLatin1Char('"');
    }
    return line;
}

QString paramLine(const SimCatalogue &cat, const SimParam &p)
{
    QStringList cells = p.cells;
    if (cat.wertColumn >= 0 && cat.wertColumn < cells.size()) cells[cat.wertColumn] = p.value;
    return csvLine(cells, cat.delimiter);
}

const SimSelection *selectionOf(const SimCatalogue &cat, const SimParam &p)
{
    auto it = cat.selections.constFind(p.koordinate);
    if (it == cat.selections.cend()) it = cat.selections.constFind(GetPurePar(p.koordinate));
    return it == cat.selections.cend() ? nullptr : &it.value();
}

QByteArray helpRtf(const SimCatalogue &cat, const SimParam &p, quint32 address)
{
    const QString ugw = cat.cell(p, cat.ugwColumn).trimmed();
    const QString ogw = cat.cell(p, cat.ogwColumn).trimmed();
    const QString limits =
        ugw.isEmpty() && ogw.isEmpty() ? QString() : ugw + QStringLiteral(" bis ") + ogw;
    QByteArray rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset0 "
                     "Arial;}}\r\n\\f0\\fs20{\\b ";
    rtf += rtfText(GetKoordinateAusQ7Adr(address)) + "  " +
           rtfText(cat.cell(p, cat.nameColumn).trimmed()) + "}\\par\r\n";
    rtf += rtfLine("Einheit: ", cat.cell(p, cat.unitColumn));
    rtf += rtfLine("Wertebereich: ", limits);
    rtf += rtfLine("Defaultwert: ", cat.cell(p, cat.defaultColumn));
    return rtf + "}";
}

QString defaultErrorText(quint8 code)
{
    switch (code) {
    case StatusOk:
        return QStringLiteral("Kein Fehler");
    case StatusTimeout:
        return QStringLiteral("Zeitüberschreitung bei der Kommunikation");
    case StatusNoConnection:
        return QStringLiteral("Keine Verbindung zum Antrieb");
    case StatusUnknownParameter:
        return QStringLiteral("Parameter nicht vorhanden");
    case StatusWriteProtected:
        return QStringLiteral("Parameter ist schreibgeschützt");
    case StatusOutOfRange:
        return QStringLiteral("Wert außerhalb der Grenzen");
    case StatusInvalidValue:
        return QStringLiteral("Ungültiger Wert");
    case StatusEnableOn:
        return QStringLiteral("Freigabe ist EIN");
    default:
        return QStringLiteral("Unbekannter Fehler (Code %1)").arg(int(code));
    }
}

// --- the text callbacks ----------------------------------------------------------------

int32_t SimulatedDrive::errorText(char *buffer, int32_t size, uint32_t, uint32_t, uint8_t code)
{
    m->count(Callback::ErrorText);
    QString text;
    Hostility h = Hostility::None;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        const auto it = m->errorTexts.find(code);
        text = it != m->errorTexts.end() ? it->second : defaultErrorText(code);
        h = m->hostile(Callback::ErrorText);
    }
    return deliver(text.toUtf8(), buffer, size, h);
}

int32_t SimulatedDrive::paraInfo(char *buffer, int32_t size, uint32_t, uint32_t address,
                                 uint8_t *status)
{
    m->count(Callback::ParaInfo);
    QString text;
    quint8 st = StatusOk;
    Hostility h = Hostility::None;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        st = m->statusLocked(address);
        if (st == StatusOk) {
            m->currentValueLocked(address);
            const SimParam &p = m->cat.params.at(address);
            text = csvLine(m->cat.titles, m->cat.delimiter) + QStringLiteral("\r\n") +
                   paramLine(m->cat, p) + QStringLiteral("\r\n");
        }
        h = m->hostile(Callback::ParaInfo);
    }
    if (status) *status = st;
    return deliver(text.toUtf8(), buffer, size, st == StatusOk ? h : Hostility::None);
}

int32_t SimulatedDrive::auswahlInfo(char *buffer, int32_t size, uint32_t, uint32_t address,
                                    uint8_t *status)
{
    m->count(Callback::AuswahlInfo);
    QString text;
    quint8 st = StatusOk;
    Hostility h = Hostility::None;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        st = m->statusLocked(address);
        if (st == StatusOk && !m->cat.selectionTitle.isEmpty()) {
            text = m->cat.selectionTitle + QStringLiteral("\r\n");
            if (const SimSelection *sel = selectionOf(m->cat, m->cat.params.at(address)))
                for (const QString &line : sel->lines)
                    text += line + QStringLiteral("\r\n");
        }
        h = m->hostile(Callback::AuswahlInfo);
    }
    if (status) *status = st;
    return deliver(text.toUtf8(), buffer, size, st == StatusOk ? h : Hostility::None);
}

int32_t SimulatedDrive::helpText(char *buffer, int32_t size, uint32_t, uint32_t address)
{
    m->count(Callback::HelpText);
    QByteArray rtf;
    Hostility h = Hostility::None;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        const auto it = m->cat.params.find(address);
        if (it != m->cat.params.end()) rtf = helpRtf(m->cat, it->second, address);
        h = m->hostile(Callback::HelpText);
    }
    return deliver(rtf, buffer, size, rtf.isEmpty() ? Hostility::None : h);
}

} // namespace drivewiz::sim
