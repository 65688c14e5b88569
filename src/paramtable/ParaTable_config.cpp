// The parameter table's settings in wiz.cfg, its language file, help texts and the
// in-memory group tables.

#include "paramtable/ParaTable_p.h"

#include "lang/wizSprache.h"
#include "platform/dialogs.h"
#include "platform/inifile.h"
#include "platform/rtfreader.h"
#include "platform/textcodec.h"
#include "util/Divers.h"

#include <algorithm>

#include <QDir>
#include <QFileInfo>
#include <QTextEdit>

namespace drivewiz {

// --- wiz.cfg: one section per wizard ------------------------------------------------------

QString TParaTable::ReadCFGString(const QString &ident, const QString &defaultValue) const
{
    if (m_wizIdString.isEmpty() || !m_cfg) return defaultValue;
    return m_cfg->readString(m_wizIdString, ident, defaultValue);
}

int TParaTable::ReadCFGInteger(const QString &ident, int defaultValue) const
{
    if (m_wizIdString.isEmpty() || !m_cfg) return defaultValue;
    return m_cfg->readInteger(m_wizIdString, ident, defaultValue);
}

bool TParaTable::ReadCFGBool(const QString &ident, bool defaultValue) const
{
    if (m_wizIdString.isEmpty() || !m_cfg) return defaultValue;
    return m_cfg->readBool(m_wizIdString, ident, defaultValue);
}

// Each write is saved at once: several wizards share the file, and IniFile merges our
// change with theirs under its lock. A failed save keeps the value for the next one.
void TParaTable::WriteCFGString(const QString &ident, const QString &value)
{
    if (m_wizIdString.isEmpty() || !m_cfg || m_cfgReadOnly) return;
    m_cfg->writeString(m_wizIdString, ident, value);
    m_cfg->save();
}

void TParaTable::WriteCFGInteger(const QString &ident, int value)
{
    WriteCFGString(ident, QString::number(value));
}

void TParaTable::WriteCFGBool(const QString &ident, bool value)
{
    WriteCFGString(ident, value ? QStringLiteral("1") : QStringLiteral("0"));
}

// --- language ----------------------------------------------------------------------------

QString TParaTable::ReadLngString(const QString &ident, const QString &defaultValue) const
{
    if (!m_lngFile || m_language < 1) return defaultValue;
    return wizReadString(m_lngFile.get(), m_wizIdString, ident, defaultValue);
}

void TParaTable::SetLanguage(int number)
{
    bool central = false;
    const QString file = GetIniFileName(number, central);
    if (central && number != m_language)
        ShowMessage(
            QStringLiteral("Info: Sprache Nr.") + QString::number(number) +
            QStringLiteral(" verwendet.") + QStringLiteral("\r") +
            QStringLiteral("Fremdsprachen-Entwicklungsplattform erkannt.") + QStringLiteral("\r") +
            QStringLiteral("Zentrales Verzeichnis für Sprachdateien wurde gefunden:") +
            QStringLiteral("\r\"") + QFileInfo(file).absolutePath() + QStringLiteral("\"\r") +
            QStringLiteral("Verwendetes Sprachfile: ") + file + QStringLiteral("\r") +
            QStringLiteral("Sprachstrings werden von diesem Sprachfile gelesen "
                           "und (nur) zu RunTime neue Strings dorthin gespeichert."));
    m_language = number;
    m_lngFile = std::make_unique<IniFile>(file);
    if (!m_lngFile->load()) {
        m_lngFile.reset(); // a folder or unreadable: the German texts stay
        ResetCommonStrings();
        return;
    }
    ResetCommonStrings();
    ReadCommonStrings(m_lngFile.get());
}

// --- help text -----------------------------------------------------------------------------

// The drive tool first asks for the description's length to size its one buffer; hosts
// may count on that call, so it is made, though each text here gets a buffer of its own.
// A help callback answers "no help" with a length of 0 or less.
QByteArray TParaTable::GetRTFhelpstring(quint32 address)
{
    if (!m_cb.get_help_text || m_hostDetached) return QByteArray();
    if (const fcbtGetParaInfoStr info = m_cb.get_para_info) {
        quint8 status = 0;
        hostCall("fcbtGetParaInfoStr",
                 [&] { return info(nullptr, 0, m_wizardId, address, &status); });
    }
    const fcbtGetRTFHelpText help = m_cb.get_help_text;
    bool ok = false;
    const QByteArray text = readHostText(
        "fcbtGetRTFHelpText",
        [&](char *buf, qint32 size) { return std::max(help(buf, size, m_wizardId, address), 0); },
        nullptr, ok);
    return ok ? text : QByteArray();
}

void TParaTable::ShowRTFHelpText(const QByteArray &rtf, quint32 address)
{
    Q_UNUSED(address)
    if (!m_richEdit) return;
    RtfToDocument(rtf, m_richEdit->document());
    m_richEdit->moveCursor(QTextCursor::Start);
}

// --- group tables ----------------------------------------------------------------------------

const TImportTable *TParaTable::GruppenTable(const QString &letter) const
{
    for (const auto &[key, table] : m_groups) {
        if (key.compare(letter, Qt::CaseInsensitive) == 0) return table.get();
    }
    return nullptr;
}

// A group table is the file "Gruppe_<letter>.csv" beside the description file when there
// is one (columns Koordinate, Nummer, Name and Wert; entries looked up by coordinate and
// number), else it is made from the description rows of that group. Refreshing writes the
// description's name and the host's current value into every entry.
void TParaTable::UpdateGruppenCSVs(const QString &letter)
{
    const QString group = letter.trimmed().toUpper();
    if (group.size() != 1) return;
    auto it = std::find_if(m_groups.begin(), m_groups.end(),
                           [&group](const auto &g) { return g.first == group; });
    if (it == m_groups.end()) {
        m_groups.emplace_back(group, std::make_unique<TImportTable>());
        it = m_groups.end() - 1;
        const QString file =
            QFileInfo(m_fileNameParams)
                .dir()
                .filePath(QStringLiteral("Gruppe_") + group + QStringLiteral(".csv"));
        if (!m_fileNameParams.isEmpty() && QFileInfo(file).isFile())
            it->second->ImportTable(file);
        else
            fillGroupFromDescriptions(*it->second, group);
    }
    TImportTable &table = *it->second;
    for (const char *title : {"Koordinate", "Nummer", "Name", "Wert"}) {
        if (!table.HasColumn(QString::fromLatin1(title))) {
            ShowMessage(
                QStringLiteral("Fehler in \"UpdateGruppenCSVs\": Spaltenstruktur unbekannt!"));
            return;
        }
    }
    for (int p = 0; p < table.RowCount(); ++p) {
        const int row = GetRecNo(table.fGetKoord(p), m_cb.get_para_value != nullptr);
        if (row < 0) continue;
        table.SetCell(p, QStringLiteral("Name"), fGetParamName(row));
        table.SetCell(p, QStringLiteral("Wert"), Cell(row, QStringLiteral("Wert")));
    }
}

void TParaTable::fillGroupFromDescriptions(TImportTable &table, const QString &group)
{
    table.InitColumnArray(QStringLiteral("Koordinate;Nummer;Name;Wert"));
    for (int p = FindGruppe(group, QString()); p >= 0 && p < RowCount() && fGetGruppe(p) == group;
         ++p) {
        QStringList cells = {fGetKoord(p), fGetElement(p), fGetParamName(p),
                             Cell(p, QStringLiteral("Wert"))};
        cells.replaceInStrings(QStringLiteral("\""), QStringLiteral("'"));
        table.AddRow(QLatin1Char('"') + cells.join(QStringLiteral("\";\"")) + QLatin1Char('"'));
    }
    table.ReBuildMainIndex();
}

} // namespace drivewiz
