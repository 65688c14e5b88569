// The encoder frame: pages for the connections, encoder type, line count and resolution.

#include "ioframes/HEncoder.h"

#include "ioframes/QuellListe_p.h"
#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "ui_HEncoder.h"
#include "util/Divers.h"

#include <QLabel>
#include <QTabBar>
#include <QTabWidget>

namespace drivewiz {

namespace {

int selection(const TParaClass *c)
{
    return c ? c->GetAuswahl() : TParaClass::NoSelection;
}

int integerOf(const TParaClass *c)
{
    try {
        return c->GetASInteger();
    } catch (const ConvertError &) {
        return 0; // GetASInteger has told the user
    }
}

// The fitted option board on X120 as the frame names it, from the value of "E58".
QString optionText(const QString &e58)
{
    if (e58 == QLatin1String("KBQ 7700")) return QStringLiteral("Option KBQ7700");
    if (e58 == QLatin1String("KBQ 7701")) return QStringLiteral("Option KBQ7701");
    if (e58 == QLatin1String("KBT 7701")) return QStringLiteral("Option KBT7701");
    return QString();
}

} // namespace

TEncoderFrame::TEncoderFrame(QWidget *parent)
    : QFrame(parent), m_ui(std::make_unique<Ui::TEncoderFrame>()),
      m_link(std::make_unique<ioframes::FrameTable>())
{
    m_ui->setupUi(this);
    PageCtrl = m_ui->PageCtrl;
    tsBE = m_ui->tsBE;
    tsX4 = m_ui->tsX4;
    tsX120 = m_ui->tsX120;
    tsX140 = m_ui->tsX140;
    tsNone = m_ui->tsNone;
    LblBE = m_ui->LblBE;
    LblBEencoder = m_ui->LblBEencoder;
    LblX4 = m_ui->LblX4;
    LblX4encoder = m_ui->LblX4encoder;
    LblX120 = m_ui->LblX120;
    LblX120Encoder = m_ui->LblX120Encoder;
    LblX140 = m_ui->LblX140;
    LblX140encoder = m_ui->LblX140encoder;
    LblAufloesung = m_ui->LblAufloesung;
    LblResolution = m_ui->LblResolution;
    P_H40 = m_ui->P_H40;
    P_H41 = m_ui->P_H41;
    P_H42 = m_ui->P_H42;
    P_H00 = m_ui->P_H00;
    P_H01 = m_ui->P_H01;
    P_H02 = m_ui->P_H02;
    P_H05 = m_ui->P_H05;
    P_H06 = m_ui->P_H06;
    P_H120 = m_ui->P_H120;
    P_H121 = m_ui->P_H121;
    P_H122 = m_ui->P_H122;
    P_H125 = m_ui->P_H125;
    P_H126 = m_ui->P_H126;
    P_H140 = m_ui->P_H140;
    P_H142 = m_ui->P_H142;
    P_H148 = m_ui->P_H148;
    P_H149 = m_ui->P_H149;
    // The connection parameter chooses the page; tabs would let the two disagree.
    PageCtrl->tabBar()->hide();
    connect(PageCtrl, &QTabWidget::currentChanged, this, [this] { updateResolution(); });
    m_helpers = std::make_unique<QObject>();
    hookControls();
}

TEncoderFrame::~TEncoderFrame()
{
    addComponentState(csDestroying);
    // The frame's controls outlive this destructor for a moment: they call it no more.
    m_helpers.reset();
    for (TParaClass *c : findChildren<TParaClass *>()) {
        c->OnChange = nullptr;
        c->OnExit = nullptr;
    }
    if (m_control) m_control->OnChange = m_previous;
}

QList<TParaClass *> TEncoderFrame::controls() const
{
    return {P_H40,  P_H41,  P_H42,  P_H00,  P_H01,  P_H02,  P_H05,  P_H06, P_H120,
            P_H121, P_H122, P_H125, P_H126, P_H140, P_H142, P_H148, P_H149};
}

// --- properties --------------------------------------------------------------------------------

void TEncoderFrame::SetwizParaSource(TParaTable *table)
{
    m_link->set(table);
    for (TParaClass *c : controls())
        c->SetwizParaSource(table);
    if (!ioframes::atRunTime(*this) || !table) return;
    for (TParaClass *c : controls())
        c->RebuildParaControl();
    bindAlternatives();
    UpdateVisibility();
}

TParaTable *TEncoderFrame::wizParaSource() const
{
    return m_link->get();
}

QString TEncoderFrame::wizParaSourceName() const
{
    return m_link->name();
}

void TEncoderFrame::SetwizParaSourceName(const QString &objectName)
{
    if (m_link->rename(objectName) && !isLoading())
        SetwizParaSource(ioframes::tableByName(this, objectName));
}

void TEncoderFrame::SetwizControlParam(TParaClass *control)
{
    if (control == m_control) return;
    if (m_control) m_control->OnChange = m_previous;
    m_control = control;
    m_previous = nullptr;
    if (!control) return;
    m_controlName = control->objectName();
    m_previous = control->OnChange;
    control->OnChange = [this](QObject *sender) { ControlParamChange(sender); };
    if (ioframes::atRunTime(*this)) choosePage(false);
}

QString TEncoderFrame::wizControlParamName() const
{
    return m_control ? m_control->objectName() : m_controlName;
}

void TEncoderFrame::SetwizControlParamName(const QString &objectName)
{
    m_controlName = objectName;
    if (isLoading()) return;
    QWidget *form = window();
    SetwizControlParam(form && !objectName.isEmpty() ? form->findChild<TParaClass *>(objectName)
                                                     : nullptr);
}

void TEncoderFrame::Loaded()
{
    Component::Loaded();
    if (isDesigning()) return;
    m_link->resolve(this);
    SetwizParaSource(m_link->get());
    if (!m_control && !m_controlName.isEmpty()) SetwizControlParamName(m_controlName);
    // Without a connection parameter the frame shows the motor encoder.
    if (m_control)
        choosePage(false);
    else
        GotoMotorEncoder();
    UpdateLanguage();
}

// --- pages -------------------------------------------------------------------------------------

QWidget *TEncoderFrame::GetwizEncoder() const
{
    return PageCtrl->currentWidget();
}

void TEncoderFrame::SetwizEncoder(QWidget *page)
{
    if (page && PageCtrl->indexOf(page) >= 0) PageCtrl->setCurrentWidget(page);
}

void TEncoderFrame::ControlParamChange(QObject *sender)
{
    choosePage(true);
    if (m_previous) m_previous(sender);
    bindAlternatives();
}

void TEncoderFrame::choosePage(bool beep)
{
    switch (selection(m_control)) {
    case 0:
        GotoMotorEncoder();
        break;
    case 1:
        SetwizEncoder(tsBE);
        break;
    case 2:
        SetwizEncoder(tsX4);
        break;
    case 3:
        SetwizEncoder(tsX140);
        break;
    case 4:
    case 5:
        SetwizEncoder(tsX120);
        break;
    default:
        if (beep) Beep();
        break;
    }
}

void TEncoderFrame::GotoMotorEncoder()
{
    QString value;
    ioframes::DriveValue(wizParaSource(), QStringLiteral("B26"), value);
    const QString word = LExtractWord(1, value, TCharSet(" :"), ewMultipleDelim);
    QWidget *const pages[] = {tsNone, tsBE, tsX4, tsX140, tsX120};
    const int key = StrToIntDef(word.trimmed(), 0);
    SetwizEncoder(key >= 1 && key <= 4 ? pages[key] : tsNone);
}

// The SSI data bits stand in H130 where the drive has it, the X4 data bits in H06.
void TEncoderFrame::bindAlternatives()
{
    if (!wizParaSource()) return;
    P_H126->SetKoordinate(wizParaSource()->ParamExists(QStringLiteral("H130"))
                              ? QStringLiteral("H130")
                              : QStringLiteral("H126"));
    P_H06->SetKoordinate(wizParaSource()->ParamExists(QStringLiteral("H06"))
                             ? QStringLiteral("H06")
                             : QStringLiteral("H10"));
    UpdateVisibility();
}

// --- type, line count, resolution -------------------------------------------------------------

TEncoderType TEncoderFrame::GetEncoderType() const
{
    struct Row
    {
        const QWidget *page;
        const TParaClass *first;
        int key;
        TEncoderType type;
    };
    const Row rows[] = {
        {tsBE, P_H40, 1, ttIncIn},          {tsBE, P_H40, 2, ttStepIn},
        {tsX4, P_H00, 3, ttIncIn},          {tsX4, P_H00, 64, ttEndatIn},
        {tsX4, P_H00, 65, ttSSIin},         {tsX120, P_H120, 4, ttIncIn},
        {tsX120, P_H120, 5, ttStepIn},      {tsX120, P_H120, 67, ttSSIin},
        {tsX120, P_H120, 68, ttSSIslave},   {tsX120, P_H120, 80, ttIncOut},
        {tsX120, P_H120, 81, ttStepOut},    {tsX120, P_H120, 82, ttSSIout},
        {tsX140, P_H140, 66, ttResolverIn}, {tsX140, P_H140, 71, ttSinCosIn},
    };
    const QWidget *page = GetwizEncoder();
    for (const Row &r : rows) {
        if (r.page == page && selection(r.first) == r.key) return r.type;
    }
    return ttnone;
}

TParaClass *TEncoderFrame::GetEncIncCtrl() const
{
    const QWidget *page = GetwizEncoder();
    if (page == tsBE) return P_H41;
    if (page == tsX4) return P_H01;
    if (page == tsX120) return P_H121;
    return nullptr;
}

int TEncoderFrame::GetEncStrichzahl() const
{
    if (const TParaClass *c = GetEncIncCtrl()) return integerOf(c);
    return GetwizEncoder() == tsX140 ? 16384 : 0;
}

void TEncoderFrame::SetEncResolution(int lines)
{
    if (TParaClass *c = GetEncIncCtrl()) c->SetASInteger(lines);
}

int TEncoderFrame::GetEncResolution() const
{
    const int lines = GetEncStrichzahl();
    if (GetEncoderType() != ttSSIin) return lines;
    const QWidget *page = GetwizEncoder();
    const bool multiturn =
        (page == tsX4 && selection(P_H06) == 25) || (page == tsX120 && selection(P_H126) == 25);
    return lines * (multiturn ? 8 : 4);
}

void TEncoderFrame::updateResolution()
{
    if (!ioframes::atRunTime(*this)) return;
    const bool known = GetEncoderType() != ttnone;
    LblAufloesung->setVisible(known);
    LblResolution->setVisible(known);
    const int resolution = GetEncResolution();
    if (known)
        LblResolution->setText(QStringLiteral("%1 %2 / %3").arg(resolution).arg(s_Ink, s_EncRev));
    const Shown now{GetwizEncoder(), GetEncoderType(), resolution};
    if (now.page == m_shown.page && now.type == m_shown.type &&
        now.resolution == m_shown.resolution)
        return;
    m_shown = now;
    Q_EMIT encoderChanged(now.type, now.resolution);
}

// --- visibility ---------------------------------------------------------------------------------

void TEncoderFrame::UpdateVisibility()
{
    const int h00 = selection(P_H00);
    P_H01->SetwizVisible(h00 == 3);
    P_H02->SetwizVisible(h00 > 0);
    P_H05->SetwizVisible(h00 == 65);
    P_H06->SetwizVisible(P_H05->wizVisible());
    const int h40 = selection(P_H40);
    P_H41->SetwizVisible(h40 > 0);
    P_H42->SetwizVisible(P_H41->wizVisible());
    const int h120 = selection(P_H120);
    P_H121->SetwizVisible(h120 == 4 || h120 == 5 || h120 == 67 || h120 == 68);
    P_H122->SetwizVisible(h120 > 0);
    P_H125->SetwizVisible(h120 == 67 || h120 == 68 || h120 == 82);
    P_H126->SetwizVisible(P_H125->wizVisible());
    const int h140 = selection(P_H140);
    P_H142->SetwizVisible(h140 > 0);
    P_H148->SetwizVisible(h140 > 0 && h140 < 71);
    P_H149->SetwizVisible(h140 == 71);
    updateResolution();
}

void TEncoderFrame::hookControls()
{
    ioframes::KeepTabOrder(this, m_helpers.get(), [this] {
        QList<QWidget *> fields;
        for (TParaClass *c : controls())
            fields << c->GetEditControl();
        return fields;
    });
    // A change of a connection's function shows its controls; a change of what the
    // resolution is made of shows the new resolution.
    for (TParaClass *c : controls()) {
        const bool first = c == P_H00 || c == P_H40 || c == P_H120 || c == P_H140;
        c->OnChange = [this, first, previous = c->OnChange](QObject *sender) {
            if (previous) previous(sender);
            if (!ioframes::atRunTime(*this)) return;
            if (first)
                UpdateVisibility();
            else
                updateResolution();
        };
    }
}

// --- language -----------------------------------------------------------------------------------

void TEncoderFrame::UpdateLanguage()
{
    if (!wizParaSource()) return;
    const QString section = QStringLiteral("TEncoderFrame");
    for (QLabel *label : {LblBE, LblBEencoder, LblX4, LblX4encoder, LblX120, LblX140,
                          LblX140encoder, LblAufloesung})
        InitLabel(wizParaSource()->LanguageFile(), section, label);
    QString e58;
    ioframes::DriveValue(wizParaSource(), QStringLiteral("E58"), e58);
    LblX120Encoder->setText(optionText(e58));
    updateResolution();
}

void TEncoderFrame::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    // A language file read anew (the host may choose the language after loading).
    if (event->type() == QEvent::LanguageChange && ioframes::atRunTime(*this)) UpdateLanguage();
}

} // namespace drivewiz
