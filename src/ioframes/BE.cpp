// The signal-source row shared by binary and analog inputs: source control, activation
// check box, arrow, layout and language.

#include "ioframes/BE.h"

#include "ioframes/BE_p.h"
#include "lang/wizSprache.h"
#include "paramtable/ParaTable.h"
#include "ui_BE.h"
#include "widgets/wizCombo.h"
#include "wizard/wizPageControl.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QStackedWidget>

namespace drivewiz {

namespace ioframes {

void withoutOwnPost(TParaClass *control, const std::function<void()> &change)
{
    const QPointer<TParaClass> guard(control);
    const ComponentState state = control->componentState();
    control->addComponentState(csReading); // a control with a state never posts by itself
    change();
    if (guard) guard->setComponentState(state);
}

void storeAndPost(TParaClass *control)
{
    TParaTable *table = control ? control->wizParaSource() : nullptr;
    if (!table) return;
    control->StoreInParaTable();
    if (table->Online() == omOnline) control->PostValue();
}

void bringIntoView(QWidget *w)
{
    for (QWidget *page = w; page; page = page->parentWidget()) {
        auto *stack = qobject_cast<QStackedWidget *>(page->parentWidget());
        auto *tabs = stack ? qobject_cast<QTabWidget *>(stack->parentWidget()) : nullptr;
        // A page in view stays as it is: moving a wizard to its page again would read its
        // values afresh and drop what the user has changed there.
        if (!tabs || tabs->currentWidget() == page) continue;
        if (auto *wizard = qobject_cast<TwizPageControl *>(tabs))
            wizard->MoveTo(page);
        else
            tabs->setCurrentWidget(page);
    }
}

} // namespace ioframes

TInput::TInput(QWidget *parent) : QFrame(parent), m_ui(std::make_unique<Ui::TInput>())
{
    ioframes::setupForm(this, [this] { m_ui->setupUi(this); });
    P_Quelle = m_ui->P_Quelle;
    CheckBox1 = m_ui->CheckBox1;
    ImgArrow = m_ui->ImgArrow;
    P_Quelle->SetwizNoAutomNameChange(true);
    P_Quelle->SetwizControlAlign(caRight);
    P_Quelle->SetwizControlLeft(m_controlLeft);
    P_Quelle->SetwizControlWidth(m_controlWidth);
    P_Quelle->OnEnabledChange = [this](QObject *sender) { P_QuelleEnabledChange(sender); };
    P_Quelle->OnChange = [this](QObject *sender) { P_QuelleChange(sender); };
    P_Quelle->OnVisibleChange = [this](QObject *sender) { P_QuelleVisibleChange(sender); };
    P_Quelle->OnKeyDown = [this](QObject *, int &key, Qt::KeyboardModifiers modifiers) {
        sourceKeyDown(key, modifiers);
    };
    connect(CheckBox1, &QCheckBox::clicked, this, [this] { CheckBox1Click(); });
    ImgArrow->installEventFilter(this);
    ImgArrow->setCursor(Qt::PointingHandCursor);
    ImgArrow->hide();
    UpdateControlsPos();
}

TInput::~TInput() = default;

bool TInput::runTime() const
{
    return ioframes::atRunTime(*this);
}

// --- properties ------------------------------------------------------------------------------

TParaTable *TInput::wizParaSource() const
{
    return P_Quelle->wizParaSource();
}

void TInput::SetwizParaSource(TParaTable *table)
{
    if (table) m_tableName = table->objectName();
    if (P_Quelle->wizParaSource() == table) return;
    P_Quelle->SetwizParaSource(table);
    if (runTime()) {
        rebuildSource();
        InputOnChange(nullptr);
    }
}

QString TInput::wizParaSourceName() const
{
    return wizParaSource() ? wizParaSource()->objectName() : m_tableName;
}

void TInput::SetwizParaSourceName(const QString &objectName)
{
    m_tableName = objectName;
    if (!isLoading()) SetwizParaSource(ioframes::tableByName(this, objectName));
}

QString TInput::wizKoordinate() const
{
    return P_Quelle->GetKoordinate();
}

void TInput::SetwizKoordinate(const QString &koordinate)
{
    P_Quelle->SetKoordinate(ioframes::formKoordinate(koordinate));
    if (runTime()) InputOnChange(nullptr);
}

void TInput::SetwizAnzeigeParName(const QString &koordinate)
{
    m_anzeigeParName = koordinate;
}

void TInput::SetwizBusParName(const QString &koordinate)
{
    if (runTime()) releaseBusLink();
    m_busParName = koordinate;
    if (runTime()) InputOnChange(nullptr);
}

void TInput::SetwizControlLeft(int left)
{
    if (m_controlLeft == left) return;
    m_controlLeft = left;
    UpdateControlsPos();
}

void TInput::SetwizControlWidth(int width)
{
    if (m_controlWidth == width) return;
    m_controlWidth = width;
    UpdateControlsPos();
}

void TInput::SetwizParamWidth(int width)
{
    if (m_paramWidth == width) return;
    m_paramWidth = width;
    UpdateControlsPos();
}

void TInput::SetwizNoCareAuswahl(int selection)
{
    m_noCareAuswahl = selection;
    CheckBox1->setVisible(selection >= 0);
    const QSignalBlocker blocker(CheckBox1);
    CheckBox1->setChecked(SourceIndex() != selection);
}

void TInput::rebuildSource()
{
    P_Quelle->RebuildParaControl();
    P_Quelle->SucheGleicheParameter();
}

int TInput::SourceIndex() const
{
    const int key = P_Quelle->GetAuswahl();
    return key == TParaClass::NoSelection ? -1 : key;
}

QString TInput::GetKlemmeninfo() const
{
    return QString();
}

// --- handlers --------------------------------------------------------------------------------

void TInput::CheckBox1Click()
{
    if (!CheckBox1->isChecked()) {
        m_savedAuswahl = SourceIndex();
        ioframes::withoutOwnPost(P_Quelle, [this] {
            P_Quelle->InitAuswahlListe(true);
            P_Quelle->SetAuswahl(m_noCareAuswahl);
        });
        P_Quelle->SetwizEnabled(pDisabled);
    } else {
        if (m_savedAuswahl != 0) {
            ioframes::withoutOwnPost(P_Quelle, [this] {
                P_Quelle->InitAuswahlListe(true);
                P_Quelle->SetAuswahl(m_savedAuswahl);
            });
        }
        P_Quelle->SetwizEnabled(pEnabled);
    }
    P_QuelleChange(CheckBox1);
    ioframes::storeAndPost(P_Quelle);
}

void TInput::P_QuelleChange(QObject *sender)
{
    {
        const QSignalBlocker blocker(CheckBox1);
        CheckBox1->setChecked(SourceIndex() != m_noCareAuswahl);
    }
    if (!runTime()) return; // Loaded() brings the row up to date once
    InputOnChange(sender);
    if (OnChange) OnChange(this);
    Q_EMIT changed();
}

// The check box stays usable while the signal is switched off (the field is disabled
// then), unless the parameter itself may not be changed.
void TInput::P_QuelleEnabledChange(QObject *sender)
{
    Q_UNUSED(sender)
    hookSourceCombo();
    const TParaTable *table = wizParaSource();
    const bool editable = table && P_Quelle->GetEditControl() && P_Quelle->GetwriteLevel() < 6 &&
                          table->Online() != omRueckdoku &&
                          P_Quelle->GetwriteLevel() <= table->UserLevel() && !isDesigning();
    CheckBox1->setEnabled(editable);
    setToolTip(P_Quelle->GetEnabled() != pEnabled && !isDesigning() ? P_Quelle->toolTip()
                                                                    : QString());
    updateGeometry(); // the name may need more room: a frame of rows lays them out again
}

// A row whose source the drive does not know is hidden with its source control.
void TInput::P_QuelleVisibleChange(QObject *sender)
{
    Q_UNUSED(sender)
    if (!isDesigning()) setVisible(!P_Quelle->isHidden());
}

void TInput::FrameDblClick()
{
    ArrowClick();
}

void TInput::InputOnChange(QObject *sender)
{
    Q_UNUSED(sender)
    const QString info = GetKlemmeninfo();
    P_Quelle->SetInputFeldHint(info);
    if (QWidget *input = P_Quelle->GetEditControl(); input && info.isEmpty())
        input->setToolTip(QString());
    UpdateControlsPos();
}

// Each new source field (the control rebuilds it on a mode change) is hooked again: its
// list is filled (and pruned) here, and it follows the check box in the tab order.
void TInput::hookSourceCombo()
{
    auto *combo = qobject_cast<TwizComboBox *>(P_Quelle->GetEditControl());
    if (!combo || combo == m_hookedCombo) return;
    m_hookedCombo = combo;
    combo->OnDropDown = [this](QObject *) { SourceDropDown(); };
    // Entering the field fills its list for the arrow keys: it is filled here first, the
    // same way as for opening (this filter runs before the control's own).
    combo->installEventFilter(this);
    setTabOrder(CheckBox1, combo);
}

void TInput::SourceDropDown()
{
    P_Quelle->InitAuswahlListe(true);
}

void TInput::sourceKeyDown(int &key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Right && (modifiers & Qt::ControlModifier)) {
        ArrowClick();
        key = 0;
    }
}

// --- layout ----------------------------------------------------------------------------------

// The name of the source parameter ends before the check box, which stands left of the
// input field; the lamp (binary inputs) follows the field, the arrow fills the rest.
void TInput::UpdateControlsPos()
{
    if (isLoading()) return; // once, when loaded
    const int boxWidth = CheckBox1->sizeHint().width();
    const int h = std::max(height(), 28);
    const int paramWidth = m_paramWidth > 0 ? m_paramWidth : m_controlLeft + m_controlWidth + 2;
    P_Quelle->SetwizControlLeft(m_controlLeft);
    P_Quelle->SetwizControlWidth(m_controlWidth);
    P_Quelle->setGeometry(0, 0, paramWidth, P_Quelle->height());
    const int boxLeft = std::max(36, m_controlLeft - boxWidth - 4);
    CheckBox1->setGeometry(boxLeft, (h - CheckBox1->sizeHint().height()) / 2, boxWidth,
                           CheckBox1->sizeHint().height());
    QLabel *name = P_Quelle->paraNameLabel();
    name->resize(std::max(0, boxLeft - name->x() - 4), name->height());
    const int arrowLeft = std::max(355, rightOfControl() + 8);
    ImgArrow->setGeometry(arrowLeft, (h - 12) / 2, std::max(0, width() - arrowLeft - 2), 12);
    ioframes::showArrow(ImgArrow);
    m_laidOutFieldRight = fieldRight();
}

int TInput::fieldRight() const
{
    const QWidget *input = P_Quelle->GetEditControl();
    const int shown = input ? P_Quelle->x() + input->x() + input->width() : 0;
    return std::max(m_controlLeft + m_controlWidth, shown);
}

int TInput::rightOfControl() const
{
    return fieldRight();
}

// The source control asks for a new layout when its field grows for a long entry; what
// sits right of the field moves along, once a change of the field's edge.
bool TInput::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest && !isLoading() &&
        fieldRight() != m_laidOutFieldRight)
        UpdateControlsPos();
    return QFrame::event(event);
}

int TInput::NeededControlLeft() const
{
    const QLabel *name = P_Quelle->paraNameLabel();
    // Frames of rows ask on every layout: the name is measured once a text and font.
    const QString key = name->text() + QLatin1Char('\n') + name->font().key();
    if (key != m_measuredName) {
        m_measuredName = key;
        m_measuredWidth = name->fontMetrics().horizontalAdvance(name->text()) + 4 +
                          CheckBox1->sizeHint().width() + 4;
    }
    return name->x() + m_measuredWidth;
}

QSize TInput::sizeHint() const
{
    return QSize(std::max(438, std::max(355, rightOfControl() + 8) + 40),
                 std::max(28, P_Quelle->height()));
}

QSize TInput::minimumSizeHint() const
{
    return QSize(rightOfControl() + 16, 28);
}

void TInput::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    UpdateControlsPos();
}

// --- mouse, language, start-up -------------------------------------------------------------------

void TInput::mousePressEvent(QMouseEvent *event)
{
    QFrame::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && runTime()) P_Quelle->ShowSelfRTFHelpText();
}

void TInput::mouseDoubleClickEvent(QMouseEvent *event)
{
    QFrame::mouseDoubleClickEvent(event);
    if (runTime()) FrameDblClick();
}

bool TInput::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ImgArrow && event->type() == QEvent::MouseButtonRelease && runTime())
        ArrowClick();
    if (watched == m_hookedCombo && event->type() == QEvent::FocusIn &&
        static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason && runTime())
        SourceDropDown();
    return QFrame::eventFilter(watched, event);
}

void TInput::UpdateLanguage()
{
    const TParaTable *table = wizParaSource();
    if (table)
        ioframes::translateParts(table->LanguageFile(), QStringLiteral("TInput"),
                                 {CheckBox1, ImgArrow});
}

void TInput::Loaded()
{
    Component::Loaded();
    if (!wizParaSource() && !m_tableName.isEmpty())
        P_Quelle->SetwizParaSource(ioframes::tableByName(this, m_tableName));
    if (isDesigning()) return;
    if (P_Quelle->wizParaSource() && !P_Quelle->GetEditControl()) rebuildSource();
    P_QuelleEnabledChange(P_Quelle);
    SetwizNoCareAuswahl(m_noCareAuswahl);
    UpdateLanguage();
    InputOnChange(nullptr);
}

} // namespace drivewiz
