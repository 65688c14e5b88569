// The binary signal input: terminal description, status lamp, pruning to the fitted
// hardware, the link to the bit bar and the designer's help.

#include "ioframes/BE.h"

#include "ioframes/BE_p.h"
#include "ioframes/BitLeiste.h"
#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"
#include "platform/dialogs.h"
#include "widgets/wizCombo.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>

namespace drivewiz {

namespace {

constexpr int kLampWidth = 8;

// The value text of a description row as the hardware checks read it.
QString hardwareValue(TParaTable *table, const char *koordinate)
{
    const int row = table->GetRecNo(QLatin1String(koordinate), false);
    return row < 0 ? QString() : table->Cell(row, QStringLiteral("Wert")).toUpper().trimmed();
}

// The leading number of a selection entry ("3: BE1" gives 3), 0 when there is none.
int leadingKey(const QString &entry)
{
    bool ok = false;
    const int n = LExtractWord(1, entry, TCharSet(":"), ewMultipleDelim).trimmed().toInt(&ok);
    return ok ? n : 0;
}

} // namespace

TBEinput::TBEinput(QWidget *parent) : TInput(parent)
{
    m_lamp = new QFrame(this);
    m_lamp->setObjectName(QStringLiteral("StatusPanel_"));
    m_lamp->setFrameShape(QFrame::Panel);
    m_lamp->setFrameShadow(QFrame::Sunken);
    m_lamp->setAutoFillBackground(true);
    m_lamp->setAccessibleName(QStringLiteral("Signalpegel"));
    m_lamp->setCursor(Qt::PointingHandCursor);
    m_lamp->installEventFilter(this);
    m_lamp->hide();
    connect(this, &QObject::objectNameChanged, this, [this](const QString &name) {
        m_lamp->setObjectName(QStringLiteral("StatusPanel_") + name);
        if (m_display) m_display->setObjectName(QStringLiteral("InvisAnzeigePar_") + name);
    });
    UpdateControlsPos();
}

TBEinput::~TBEinput() = default;

TParaClass *TBEinput::InvisAnzeigePar() const
{
    return m_display;
}

void TBEinput::SetwizBusParBit(int bit)
{
    if (runTime()) releaseBusLink();
    m_busParBit = bit;
    if (runTime()) InputOnChange(nullptr);
}

// The row this input hid belongs to nobody once the input takes another bit.
void TBEinput::releaseBusLink()
{
    for (const QPointer<TBitLeiste> &bar : std::as_const(m_bars)) {
        if (bar) bar->SetVisible(m_busParBit, true);
    }
}

// --- terminal description --------------------------------------------------------------------

QString TBEinput::GetKlemmeninfo() const
{
    const QString text = P_Quelle->GetText();
    if (isDesigning() || text.isEmpty()) return QString();
    const int index = SourceIndex();
    const int input = (index - 1) / 2; // truncated toward zero, as the drive counts
    QString info = s_BinInput + QLatin1Char(' ') +
                   LExtractWord(2, text, TCharSet(" -:"), ewMultipleDelim) + QLatin1Char('\n') +
                   s_Terminal + QLatin1Char(' ');
    if (input >= 1 && input <= 5)
        info += QStringLiteral("X100 Pin ") + QString::number(input + 10);
    else if (input >= 6 && input <= 13)
        info += QStringLiteral("X103 Pin ") + QString::number(input + 4) + QLatin1Char('\n') +
                QLatin1Char('(') + s_OptBoard + QStringLiteral(" KBQ7700)");
    if (text.toLower().contains(QLatin1String("invers")))
        info += QLatin1Char('\n') + s_SigInvert + QLatin1Char('.');
    return info;
}

// --- changes and the lamp ----------------------------------------------------------------------

void TBEinput::InputOnChange(QObject *sender)
{
    if (qobject_cast<QCheckBox *>(sender)) m_optionBoard = QStringLiteral("?");
    collectBars();
    updateBarRows();
    setToolTip(!P_Quelle->isEnabled() || (P_Quelle->GetEnabled() != pEnabled && !isDesigning())
                   ? P_Quelle->toolTip()
                   : QString());
    updateLamp();
    ImgArrow->setVisible(SourceIndex() == 2 && barWithBit() != nullptr);
    ImgArrow->setToolTip(ImgArrow->isVisible() ? s_SignalSourceBit + QLatin1Char(' ') +
                                                     QString::number(m_busParBit) + QLatin1Char(' ') +
                                                     s_InParam + QLatin1Char(' ') + m_busParName
                                               : QString());
    TInput::InputOnChange(sender);
}

void TBEinput::collectBars()
{
    m_bars.clear();
    QWidget *form = GetMainForm(this);
    if (!form) return;
    for (TBitLeiste *bar : form->findChildren<TBitLeiste *>()) {
        if (bar->wizParaControl() && bar->wizParaControl()->GetKoordinate() == m_busParName)
            m_bars << bar;
    }
}

void TBEinput::updateBarRows()
{
    const bool bus = SourceIndex() == 2;
    for (const QPointer<TBitLeiste> &bar : std::as_const(m_bars)) {
        if (bar) bar->SetVisible(m_busParBit, bus);
    }
}

TBitLeiste *TBEinput::FindBitBar() const
{
    const_cast<TBEinput *>(this)->collectBars();
    return barWithBit();
}

// Of the bars last collected (in the form's depth-first order), the first with the bit.
TBitLeiste *TBEinput::barWithBit() const
{
    for (const QPointer<TBitLeiste> &bar : m_bars) {
        if (bar && bar->GetBit(m_busParBit) >= 0) return bar;
    }
    return nullptr;
}

void TBEinput::updateLamp()
{
    const TParaTable *table = wizParaSource();
    if (table && table->Online() == omOnline) {
        const int level = m_display && m_display->GetEditControl() ? m_display->GetAuswahl() : -1;
        setLamp(level == 0 || level == 1, level == 1 ? clLime : clBtnFace);
        return;
    }
    switch (SourceIndex()) {
    case 0:
        setLamp(true, clBtnFace);
        break;
    case 1:
        setLamp(true, clLime);
        break;
    case 2: {
        const TBitLeiste *bar = barWithBit();
        setLamp(bar != nullptr, bar && bar->GetBit(m_busParBit) == 1 ? clLime : clBtnFace);
        break;
    }
    default:
        setLamp(false, clBtnFace);
    }
}

// The lamp's hint names the display parameter and the level; its second line (the text
// after the first ":") stays from one change to the next.
void TBEinput::setLamp(bool shown, TColor colour)
{
    m_lampColor = colour;
    QPalette pal = m_lamp->palette();
    pal.setColor(QPalette::Window, ColorToQColor(colour));
    m_lamp->setPalette(pal);
    m_lamp->setVisible(shown && P_Quelle->GetEditControl() != nullptr);
    const QString previous = m_lamp->toolTip();
    const qsizetype colon = previous.indexOf(QLatin1Char(':'));
    const QString tail = (colon < 0 ? previous : previous.mid(colon + 1)).trimmed();
    const bool unknown = !m_display || !m_display->GetEditControl() ||
                         m_display->GetText() == QLatin1String("???");
    m_lamp->setToolTip((unknown ? QString() : m_display->GetKoordinate() + QLatin1Char('=')) +
                       (colour == clLime ? QStringLiteral("HIGH: ") : QStringLiteral("LOW: ")) +
                       QLatin1Char('\n') + tail);
}

// --- pruning -----------------------------------------------------------------------------------

void TBEinput::SourceDropDown()
{
    auto *combo = qobject_cast<TwizComboBox *>(P_Quelle->GetEditControl());
    if (!combo) return;
    const QString board = GetOptionUnten(wizParaSource(), m_optionBoard);
    if (m_prunedCount >= 0 && combo->count() == m_prunedCount && board == m_optionBoard) return;
    P_Quelle->InitAuswahlListe(true);
    ElimAuswahlen();
}

void TBEinput::ElimAuswahlen()
{
    TParaTable *table = wizParaSource();
    auto *combo = qobject_cast<TwizComboBox *>(P_Quelle->GetEditControl());
    if (!table || !combo) return;
    int limit = 99;
    if (hardwareValue(table, "E50").contains(QLatin1String("ZRD"))) {
        const QString upper = hardwareValue(table, "E54");
        if (upper.isEmpty() || !upper.contains(QLatin1String("KBW"))) limit = 5;
    } else {
        m_optionBoard = hardwareValue(table, "E58");
        if (m_optionBoard.isEmpty())
            limit = 0;
        else if (!m_optionBoard.contains(QLatin1String("KBQ")))
            limit = 5;
    }
    if (limit < 99 && combo->count() > 0) {
        const int last = 2 * limit + 3 - leadingKey(combo->itemText(0));
        const int selected = combo->currentIndex();
        const QSignalBlocker blocker(combo);
        for (int i = combo->count() - 1; i >= std::max(0, last); --i) {
            if (i != selected) combo->removeItem(i);
        }
    }
    m_prunedCount = int(combo->count());
    // The beep counts inputs from (index - 2) / 2, one off from the terminal description;
    // the drive tool has always done so.
    const int index = SourceIndex();
    if (index >= 0 && (index - 2) / 2 > limit) Beep();
}

// --- the bit bar link and the lamp's help ----------------------------------------------------

void TBEinput::ArrowClick()
{
    if (SourceIndex() != 2) return;
    TBitLeiste *bar = FindBitBar();
    if (!bar) return;
    ioframes::bringIntoView(bar);
    bar->SetBitFocus(m_busParBit);
}

void TBEinput::StatusPanelClick()
{
    if (m_display) m_display->ShowSelfRTFHelpText();
}

bool TBEinput::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_lamp && event->type() == QEvent::MouseButtonRelease && runTime())
        StatusPanelClick();
    return TInput::eventFilter(watched, event);
}

// --- layout and start-up --------------------------------------------------------------------------

int TBEinput::rightOfControl() const
{
    return fieldRight() + 5 + kLampWidth;
}

void TBEinput::UpdateControlsPos()
{
    TInput::UpdateControlsPos();
    if (!m_lamp || isLoading()) return;
    const QWidget *input = P_Quelle->GetEditControl();
    const int top = input ? input->y() : 2;
    const int h = input ? input->height() : 20;
    m_lamp->setGeometry(fieldRight() + 5,
                        P_Quelle->y() + top + 3, kLampWidth, std::max(4, h - 6));
}

void TBEinput::SetwizAnzeigeParName(const QString &koordinate)
{
    TInput::SetwizAnzeigeParName(koordinate);
    if (m_display) m_display->SetKoordinate(ioframes::formKoordinate(koordinate));
    if (runTime()) InputOnChange(nullptr);
}

// At run time an invisible control follows the display parameter; online its changes
// drive the lamp.
void TBEinput::createDisplayControl()
{
    if (m_display || !runTime()) return;
    m_display = new TParaClass(this);
    m_display->setObjectName(QStringLiteral("InvisAnzeigePar_") + objectName());
    m_display->SetwizNoAutomNameChange(true);
    m_display->SetwizVisible(false);
    m_display->SetwizParaSource(wizParaSource());
    m_display->OnChange = [this](QObject *) { updateLamp(); };
    m_display->SetKoordinate(ioframes::formKoordinate(m_anzeigeParName));
    const TParaTable *table = wizParaSource();
    const int row = table ? const_cast<TParaTable *>(table)->GetRecNo(m_display->GetKoordinate(), false)
                          : -1;
    m_lamp->setToolTip(QStringLiteral(": ") + s_ObservePar + QStringLiteral(": ") +
                       m_display->GetKoordinate() +
                       (row < 0 ? QString() : QLatin1Char(' ') + table->Cell(row, QStringLiteral("Name"))));
}

void TBEinput::Loaded()
{
    TInput::Loaded();
    m_lamp->setObjectName(QStringLiteral("StatusPanel_") + objectName());
    if (isDesigning()) return;
    createDisplayControl();
    updateLamp(); // the row is up to date; the lamp now has its display
}

// --- the designer's help -------------------------------------------------------------------------

void TBEinput::SetwizKoordinate(const QString &koordinate)
{
    const QString before = wizKoordinate();
    if (isDesigning()) {
        setObjectName(QStringLiteral("BE_") + koordinate);
        askIncrement(before, koordinate);
        if (TParaTable *table = wizParaSource()) {
            const int row = table->GetRecNo(koordinate, false);
            const QString first =
                row < 0 ? QString()
                        : LExtractWord(1, table->Cell(row, QStringLiteral("Defaultwert")),
                                       TCharSet(" :"), ewMultipleDelim);
            if (IsInteger(first)) SetwizNoCareAuswahl(first.trimmed().toInt());
        }
    }
    TInput::SetwizKoordinate(koordinate);
}

// Placing the next input of a row of similar ones: its display parameter and bus bit
// probably follow the previous input's.
void TBEinput::askIncrement(const QString &before, const QString &after)
{
    TParaTable *table = wizParaSource();
    if (!table || before.size() < 2 || after.size() < 2 || before.at(0) != after.at(0)) return;
    bool okBefore = false, okAfter = false;
    const int a = before.mid(1, before.size() - 2).toInt(&okBefore);
    const int b = after.mid(1, after.size() - 2).toInt(&okAfter);
    if (!okBefore || !okAfter || std::abs(a - b) >= 5 || !table->ParamExists(before) ||
        !table->ParamExists(after))
        return;
    const int answer = MessageDlg(QStringLiteral("Die Propreties\r--> wizAnzeigeParName\r"
                                                 "--> wizBusParBit\rautomatisch inkrementieren?"),
                                  MsgDlgType::Confirmation, mbYesNo);
    if (answer != mrYes) return;
    bool ok = false;
    const int number = m_anzeigeParName.mid(1).toInt(&ok);
    if (ok && !m_anzeigeParName.isEmpty())
        SetwizAnzeigeParName(m_anzeigeParName.left(1) + QString::number(number + 1));
    SetwizBusParBit(m_busParBit + 1);
}

} // namespace drivewiz
