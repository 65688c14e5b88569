// The parameter table: construction, properties, loading and look-up, selection lists.

#include "paramtable/ParaTable.h"

#include "lang/wizSprache.h"
#include "paramtable/coordinates.h"
#include "platform/dialogs.h"
#include "platform/inifile.h"
#include "platform/messages.h"
#include "util/Divers.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTextEdit>

#include <zlib.h>

namespace drivewiz {

TParaTable::TParaTable(QWidget *parent)
    : QWidget(parent), m_window(new MessageWindow(this)),
      m_clock([] { return QDateTime::currentMSecsSinceEpoch(); })
{
    setObjectName(QStringLiteral("ParaTable"));
    setVisible(false); // a component, not something to look at
    if (isDesigning()) {
        m_fonts[0].setBold(true);
        m_currentAx = 1;
        m_userLevel = 2;
    }
    m_window->onMessage = [this](uint msg, quintptr wParam, qintptr lParam) {
        wndProc(msg, wParam, lParam);
    };
    openCfg();
}

TParaTable::~TParaTable()
{
    // Messages that arrive while the table goes away are dropped.
    m_busy = true;
    addComponentState(csDestroying);
    m_window->closeHandle();
}

void TParaTable::openCfg()
{
    const QString path = GetCFGFileName();
    m_cfg = std::make_unique<IniFile>(path);
    if (!m_cfg->load()) {
        m_cfg.reset(); // a folder or an unreadable file: the wizard runs without settings
        return;
    }
    m_cfgReadOnly = QFileInfo::exists(path) && m_cfg->isReadOnly();
}

quintptr TParaTable::WindowHandle() const
{
    return m_window->handle();
}

// --- properties ------------------------------------------------------------------------

void TParaTable::SetMaxRLevel(int level)
{
    if (m_userLevel == level) return;
    m_userLevel = level;
    if (!m_textRestore && !isLoading() && m_descriptionsLoaded) UpdateParaObjects(true);
}

void TParaTable::SetCurrentAx(int axis)
{
    if (m_currentAx == axis) return;
    m_currentAx = axis;
    if (!m_textRestore && !isLoading() && m_descriptionsLoaded) UpdateParaObjects(true);
}

void TParaTable::SetParamFileName(const QString &name)
{
    if (m_fileNameParams == name) return;
    m_fileNameParams = name;
    designTimeReload();
}

void TParaTable::setFont(int which, const QFont &font)
{
    if (m_fonts[which] == font) return;
    m_fonts[which] = font;
    fontChanged();
}

void TParaTable::SetOnlineRefreshRate(int milliseconds)
{
    m_refreshRate = milliseconds;
}

void TParaTable::SetRichEditCtrlName(const QString &objectName)
{
    m_richEditName = objectName;
    if (!isLoading()) Loaded();
}

QTextEdit *TParaTable::RichEditCtrl() const
{
    return m_richEdit;
}

void TParaTable::SetRichEditCtrl(QTextEdit *view)
{
    m_richEdit = view;
    if (!view) return;
    view->setFocusPolicy(Qt::NoFocus); // out of the tab order
    QPalette pal = view->palette();
    pal.setColor(QPalette::Base, QColor(m_rtfHelpColor & 0xFF, (m_rtfHelpColor >> 8) & 0xFF,
                                        (m_rtfHelpColor >> 16) & 0xFF));
    view->setPalette(pal);
}

void TParaTable::SetwizBitColor(int colour)
{
    m_aktivBitColor = colour;
}

void TParaTable::SetRTFhelpColor(int colour)
{
    m_rtfHelpColor = colour;
    SetRichEditCtrl(m_richEdit);
}

void TParaTable::SetRueckDokuFontColor(int colour)
{
    m_rueckDokuFontColor = colour;
}

void TParaTable::SetRueckDokuBackColor(int colour)
{
    m_rueckDokuBackColor = colour;
}

void TParaTable::SetWizIdString(const QString &id)
{
    m_wizIdString = id;
}

void TParaTable::SetWizardId(quint32 id)
{
    m_wizardId = id;
}

void TParaTable::SetCallbacks(const dwz_callbacks &callbacks)
{
    m_cb = callbacks;
}

QWidget *TParaTable::ownerForm() const
{
    return parentWidget() ? window() : nullptr;
}

// --- loading ---------------------------------------------------------------------------

void TParaTable::Loaded()
{
    Component::Loaded();
    if (isDesigning()) {
        if (!m_descriptionsLoaded) designTimeReload();
        return;
    }
    if (!m_richEditName.isEmpty() && ownerForm())
        SetRichEditCtrl(ownerForm()->findChild<QTextEdit *>(m_richEditName));
    ReloadCSVFile();
    if (ApplicationTag() == 999) return;
    const QStringList args = QCoreApplication::arguments();
    bool ok = false;
    const int language = args.size() > 1 ? args.at(1).trimmed().toInt(&ok) : 1;
    SetLanguage(ok || args.size() <= 1 ? language : 1);
}

void TParaTable::ReloadCSVFile()
{
    if (hostDescriptions() || (ApplicationTag() == 999 && !isDesigning())) return;
    QString file = m_fileNameParams;
    if (!QFileInfo(file).isFile()) {
        const QString bare = QFileInfo(file).fileName();
        if (bare.isEmpty() || !QFileInfo(bare).isFile()) {
            ShowMessage(s_ParFileNotFound + QStringLiteral(":\r") + m_fileNameParams);
            return;
        }
        if (!s_FileInfo1.isEmpty()) ShowMessage(s_FileInfo1 + QStringLiteral(":\r") + bare);
        file = bare;
    }
    ImportTable(file);
    QStringList missing;
    for (const char *title : {"Name", "Wert", "USS-Adresse /hex"}) {
        if (ColCount() > 0 && !HasColumn(QString::fromLatin1(title)))
            missing << QString::fromLatin1(title);
    }
    if (!missing.isEmpty())
        ShowMessage(QStringLiteral("Warnung: In \"") + file +
                    QStringLiteral("\" fehlen die Spalten: ") + missing.join(QStringLiteral(", ")));
    loadAuswahl(file);
    m_descriptionsLoaded = true;
    UpdateParaObjects(true);
}

// While the form is drawn the descriptions are read as soon as a file is named, so that
// the parameter controls show their parameters' names and input fields. Only a file that
// is there is read: drawing a form shows no messages.
void TParaTable::designTimeReload()
{
    if (!isDesigning() || isLoading() || !QFileInfo(m_fileNameParams).isFile()) return;
    ReloadCSVFile();
}

void TParaTable::loadAuswahl(const QString &descriptionFile)
{
    const QString path = QFileInfo(descriptionFile).dir().filePath(QStringLiteral("Auswahlen.csv"));
    if (QFileInfo::exists(path))
        m_auswahl.ImportTable(path);
    else
        m_auswahl.Clear();
}

// --- look-up -----------------------------------------------------------------------------

int TParaTable::FindRecord(const QString &koordinate, const QString &axis, quint32 &address)
{
    address = 0;
    QString koord = koordinate.trimmed();
    QString ax = axis;
    // "2.B33" carries its axis in front.
    if (!koord.isEmpty() && koord.at(0).isDigit() && koord.contains(QLatin1Char('.'))) {
        ax = LExtractWord(1, koord, TCharSet("."), ewSingleDelim);
        koord = koord.mid(koord.indexOf(QLatin1Char('.')) + 1);
    }
    const int row = FindParAxUnknown(koord, ax);
    if (row >= 0 || !IsKoordinate(koord) || !hostDescriptions()) return row;
    return fetchDescription(koord, ax, address);
}

int TParaTable::GetRecNo(const QString &koordinate, bool fetchFresh)
{
    quint32 address = 0;
    const int row = FindRecord(koordinate, QString::number(m_currentAx), address);
    if (row < 0 || address != 0 || !fetchFresh) return row;
    address = quint32(HexToInt(Cell(row, QStringLiteral("USS-Adresse /hex"))));
    QString value;
    quint8 status = 0;
    GetFreshParaValue(address, koordinate, value, status); // stores it in "Wert"
    // Found again: rows the host described during the call may have moved it.
    return FindRecord(koordinate, QString::number(m_currentAx), address);
}

bool TParaTable::ParamExists(const QString &koordinate)
{
    return GetRecNo(koordinate, false) >= 0;
}

bool TParaTable::IstAuswahlParameter(int row) const
{
    return Cell(row, QStringLiteral("Art")) == QLatin1String("1");
}

QStringList TParaTable::GetAuswahlListe(int row)
{
    QStringList entries;
    const QString koord = GetPurePar(fGetKoord(row).trimmed());
    if (koord.isEmpty() || m_auswahl.RowCount() == 0 ||
        !m_auswahl.HasColumn(QStringLiteral("Wert")))
        return entries;
    int p = m_auswahl.FindParam(koord, QString());
    if (p < 0) return entries;
    while (p > 0 && m_auswahl.fGetKoord(p - 1).trimmed().compare(koord, Qt::CaseInsensitive) == 0)
        --p;
    const bool hasText = m_auswahl.HasColumn(QStringLiteral("Text"));
    for (; p < m_auswahl.RowCount() &&
           m_auswahl.fGetKoord(p).trimmed().compare(koord, Qt::CaseInsensitive) == 0;
         ++p) {
        const QString key = m_auswahl.Cell(p, QStringLiteral("Wert")).trimmed();
        entries << (hasText ? key + QStringLiteral(": ") +
                                  m_auswahl.Cell(p, QStringLiteral("Text")).trimmed()
                            : key);
    }
    return entries;
}

QString TParaTable::CheckAuswahlTable(int row, const QString &value)
{
    const QString key = LExtractWord(1, value, TCharSet(":"), ewSingleDelim).trimmed();
    for (const QString &entry : GetAuswahlListe(row)) {
        if (LExtractWord(1, entry, TCharSet(":"), ewSingleDelim).trimmed() == key) return entry;
    }
    return QString();
}

// --- CRC ---------------------------------------------------------------------------------

const quint32 *const crc_table = reinterpret_cast<const quint32 *>(get_crc_table());

bool crc_check(quint32 &crc, quint32 expected, const void *data, quint32 length)
{
    static_assert(sizeof(z_crc_t) == sizeof(quint32), "zlib's CRC table holds 32-bit entries");
    // zlib's crc32 is this very CRC (start 0xFFFFFFFF, table above, final complement),
    // computed several bytes at a time.
    const auto *p = static_cast<const Bytef *>(data);
    crc = p && length ? quint32(::crc32(0, p, uInt(length))) : 0u;
    return crc != expected;
}

} // namespace drivewiz
