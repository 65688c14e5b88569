// The analog output frame: binding, the output model both ways, the source check.

#include "ioframes/AnalogAusgang.h"

#include "ioframes/DigitalAusgang.h"
#include "ioframes/QuellListe_p.h"
#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "ui_AnalogAusgang.h"
#include "util/Divers.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <cmath>

namespace drivewiz {

namespace {

// Two typed values closer than this are equal: they give no factor.
constexpr double kEqual = 0.000001;

QString formatted(double value, int decimals)
{
    const double step = std::pow(10.0, -decimals);
    // Exact zero (and float noise far below what can be shown) stays 0; a value between
    // 0 and the smallest step is raised to that step, keeping its sign.
    if (std::fabs(value) < step * 1e-6)
        value = 0.0;
    else if (std::fabs(value) < step)
        value = std::copysign(step, value);
    return FloatToStrF(value, FloatFormat::Fixed, 15, decimals);
}

// A text the user is still typing a number into: nothing to convert yet.
bool unfinished(const QString &text)
{
    return text.isEmpty() || text == QLatin1String("-") || text == QLatin1String("+");
}

double valueOf(TParaClass *control, bool &ok)
{
    ok = true;
    try {
        return control->GetASFloat();
    } catch (const ConvertError &) {
        ok = false;
        return 0;
    }
}

} // namespace

TAnalogAus::TAnalogAus(QWidget *parent)
    : QFrame(parent), m_ui(std::make_unique<Ui::TAnalogAus>()),
      m_link(std::make_unique<ioframes::FrameTable>()),
      m_sources(std::make_unique<ioframes::SourceListCache>())
{
    m_ui->setupUi(this);
    P_Quelle = m_ui->P_Quelle;
    P_Offset = m_ui->P_Offset;
    P_Faktor = m_ui->P_Faktor;
    P_Tau = m_ui->P_Tau;
    P_Abs = m_ui->P_Abs;
    P_R04 = m_ui->P_R04;
    P_B17 = m_ui->P_B17;
    Panel1 = m_ui->Panel1;
    LblAnAusgang = m_ui->LblAnAusgang;
    LblAnaAus10V = m_ui->LblAnaAus10V;
    Edit10V = m_ui->Edit10V;
    LblAnaAusDim10 = m_ui->LblAnaAusDim10;
    LblAnaAus0V = m_ui->LblAnaAus0V;
    Edit0V = m_ui->Edit0V;
    LblAnaAusDim0 = m_ui->LblAnaAusDim0;
    LblError = m_ui->LblError;
    LblAnaAus10V->setBuddy(Edit10V);
    LblAnaAus0V->setBuddy(Edit0V);
    QPalette red = LblError->palette();
    red.setColor(QPalette::WindowText, Qt::darkRed);
    LblError->setPalette(red);
    LblError->hide();
    m_helpers = std::make_unique<QObject>();
    hookControls();
}

TAnalogAus::~TAnalogAus()
{
    addComponentState(csDestroying);
    // The frame's controls outlive this destructor for a moment: they call it no more.
    m_helpers.reset();
    for (TParaClass *c : findChildren<TParaClass *>()) {
        c->OnChange = nullptr;
        c->OnExit = nullptr;
    }
}

// --- properties ------------------------------------------------------------------------------

void TAnalogAus::SetwizParaSource(TParaTable *table)
{
    m_link->set(table);
    for (TParaClass *c : {P_Quelle, P_Offset, P_Faktor, P_Tau, P_Abs, P_R04, P_B17})
        c->SetwizParaSource(table);
    if (!ioframes::atRunTime(*this)) return;
    P_R04->RebuildParaControl();
    P_B17->RebuildParaControl();
    bindControls();
}

TParaTable *TAnalogAus::wizParaSource() const
{
    return m_link->get();
}

QString TAnalogAus::wizParaSourceName() const
{
    return m_link->name();
}

void TAnalogAus::SetwizParaSourceName(const QString &objectName)
{
    if (m_link->rename(objectName) && !isLoading())
        SetwizParaSource(ioframes::tableByName(this, objectName));
}

void TAnalogAus::SetAnalogAusgang(TAnalogAusgang ausgang)
{
    if (ausgang == m_ausgang) return;
    m_ausgang = ausgang;
    if (ioframes::atRunTime(*this)) bindControls();
}

void TAnalogAus::SetParameterListe(const QString &liste)
{
    if (liste == m_liste) return;
    m_liste = liste;
    if (ioframes::atRunTime(*this)) InitParameterCombo();
}

void TAnalogAus::Loaded()
{
    Component::Loaded();
    if (isDesigning()) return;
    m_link->resolve(this);
    SetwizParaSource(m_link->get());
    HideIfNoOutputs();
    UpdateLanguage();
}

// --- binding ---------------------------------------------------------------------------------

// The five controls of the output follow its rows; the frame is shown for an active one.
void TAnalogAus::bindControls()
{
    if (!isDesigning()) setVisible(m_ausgang != AnalogAus_inaktiv && !m_noOutputs);
    if (!wizParaSource() || !P_Quelle->wizParaSource()) return;
    const int base = m_ausgang == AnalogAus1 ? 40 : m_ausgang == AnalogAus2 ? 50 : -1;
    TParaClass *const controls[] = {P_Quelle, P_Offset, P_Faktor, P_Tau, P_Abs};
    for (int i = 0; i < 5; ++i) {
        TParaClass *c = controls[i];
        const QString koord = base < 0 ? QString() : QStringLiteral("F%1").arg(base + i);
        if (c->GetKoordinate() == koord)
            c->RebuildParaControl();
        else
            c->SetKoordinate(koord);
    }
    InitParameterCombo();
    UpdateCustomEdits();
}

void TAnalogAus::hookControls()
{
    const auto chain = [](TParaClass *c, std::function<void()> then) {
        c->OnChange = [previous = c->OnChange, then](QObject *sender) {
            if (previous) previous(sender);
            then();
        };
    };
    chain(P_Quelle, [this] {
        if (ioframes::atRunTime(*this) && wizParaSource()) UpdateCustomEdits();
    });
    for (TParaClass *c : {P_Offset, P_Faktor, P_R04, P_B17}) {
        chain(c, [this] {
            if (ioframes::atRunTime(*this) && wizParaSource() && !m_writing) UpdateCustomEdits();
        });
    }
    // The two values can be typed only where factor and offset can be changed.
    for (TParaClass *c : {P_Faktor, P_Offset})
        connect(c, &TParaClass::enabledChanged, this, [this] { updateEditsEnabled(); });
    for (QLineEdit *edit : {Edit10V, Edit0V}) {
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::editingFinished, this, [this] { editLeft(); });
    }
    ioframes::WatchSourceField(P_Quelle, m_helpers.get(), [this] { InitParameterCombo(); });
    ioframes::KeepTabOrder(this, m_helpers.get(), [this] {
        return QList<QWidget *>{P_Quelle->GetEditControl(),
                                Edit10V,
                                Edit0V,
                                P_Offset->GetEditControl(),
                                P_Faktor->GetEditControl(),
                                P_Tau->GetEditControl(),
                                P_Abs->GetEditControl(),
                                P_R04->GetEditControl(),
                                P_B17->GetEditControl()};
    });
}

void TAnalogAus::InitParameterCombo()
{
    if (!wizParaSource()) return;
    ioframes::SourceFilter filter;
    filter.typeWords = {QStringLiteral("U16"), QStringLiteral("I16"), QStringLiteral("U32"),
                        QStringLiteral("I32"), QStringLiteral("P64")};
    ioframes::FillSourceCombo(P_Quelle, m_sources->entries(wizParaSource(), m_liste, filter));
}

void TAnalogAus::updateEditsEnabled()
{
    const bool editable = P_Faktor->GetEditControl() && P_Offset->GetEditControl() &&
                          P_Faktor->GetEnabled() == pEnabled && P_Offset->GetEnabled() == pEnabled;
    for (QLineEdit *edit : {Edit10V, Edit0V})
        edit->setReadOnly(!editable);
}

// --- the source check -------------------------------------------------------------------------

QString TAnalogAus::sourceText() const
{
    return P_Quelle->GetText();
}

int TAnalogAus::sourceRecord() const
{
    return ioframes::SourceRecord(wizParaSource(), sourceText());
}

bool TAnalogAus::CheckQuelle(int record)
{
    if (!wizParaSource()) return false;
    const QString source = sourceText().trimmed();
    LblError->hide();
    Panel1->show();
    if (record < 0) {
        for (TParaClass *c : {P_Offset, P_Faktor, P_Tau, P_Abs})
            c->SetwizVisible(false);
        ShowErrorLabel(source.size() >= 3 ? source + QStringLiteral(": ") + s_ParUnknown
                                          : QString());
        return false;
    }
    P_Offset->SetwizVisible(true);
    P_Faktor->SetwizVisible(true);
    const bool filter = wizParaSource()->ParamExists(QStringLiteral("F43"));
    P_Tau->SetwizVisible(filter);
    P_Abs->SetwizVisible(filter);
    const QStringList c =
        wizParaSource()->Cells(record, {"Datentyp", "Skalierung BUS", "Skalierungsfunktion"});
    const QString type = c[0].trimmed().toUpper();
    if (type == QLatin1String("I16")) {
        const QString function = c[2].trimmed();
        if (!c[1].trimmed().isEmpty() || function == QLatin1String("3") ||
            function == QLatin1String("7"))
            return true;
        ShowErrorLabel(source + QStringLiteral(": ") + s_ScaleReadDoc + QLatin1Char('.'));
        return false;
    }
    ShowErrorLabel(type == QLatin1String("I32") ? s_AADataTypeI32Message : s_AAValueUndefined);
    return false;
}

void TAnalogAus::ShowErrorLabel(const QString &text)
{
    LblError->setText(text);
    LblError->show();
    Panel1->hide();
}

void TAnalogAus::HideIfNoOutputs()
{
    if (m_outputsChecked || !wizParaSource() || !ioframes::atRunTime(*this)) return;
    m_outputsChecked = true;
    QString board;
    ioframes::DriveValue(wizParaSource(), QStringLiteral("E58"), board);
    // A slot the drive reports as "---" (or "???") is as empty as an empty text.
    if (std::any_of(board.cbegin(), board.cend(), [](QChar c) { return c.isLetterOrNumber(); }))
        return;
    m_noOutputs = true;
    hide();
    ioframes::HideWizardPage(this);
}

double TAnalogAus::GetFullScaleVal(int record) const
{
    if (!wizParaSource() || record < 0) return 0;
    try {
        const double full = GetValueAt16384LSB(wizParaSource(), record);
        return std::isfinite(full) ? full : 0;
    } catch (const ConvertError &) {
        return 0; // a scaling text that is no number: the source cannot be scaled
    }
}

// --- from the drive to the edits ----------------------------------------------------------------

int TAnalogAus::sourceDecimals(int record) const
{
    const QString text =
        wizParaSource()->Cell(record, QStringLiteral("Nachkommastellen")).trimmed();
    return std::clamp(StrToIntDef(text, 0), 0, 15);
}

void TAnalogAus::UpdateCustomEdits()
{
    if (!wizParaSource() || m_writing) return;
    const int record = sourceRecord();
    if (!CheckQuelle(record)) return;
    showUnits(record);
    const double full = GetFullScaleVal(record);
    if (full == 0) {
        ShowErrorLabel(sourceText().trimmed() + QStringLiteral(": ") + s_SkalingError);
        return;
    }
    bool okF = false, okO = false;
    const double factor = valueOf(P_Faktor, okF);
    const double offset = valueOf(P_Offset, okO);
    if (!okF || !okO) return; // a factor or offset being typed; the edits follow once it is one
    markEdits(false);
    const int decimals = sourceDecimals(record);
    double v10 = 0, v0 = 0;
    // A factor of 0 holds the output at the offset whatever the source does: no value
    // gives 10 V.
    const bool some = sourceValues(full, factor, offset, v10, v0);
    Edit10V->setText(some ? formatted(v10, decimals) : QString());
    Edit0V->setText(some ? formatted(v0, decimals) : QString());
    m_shown[0] = Edit10V->text();
    m_shown[1] = Edit0V->text();
}

bool TAnalogAus::sourceValues(double full, double factor, double offset, double &v10, double &v0)
{
    if (factor == 0) return false;
    const double k = full / (factor * 0.01);
    v10 = (10 - offset) * k / 10;
    v0 = -offset * k / 10;
    return std::isfinite(v10) && std::isfinite(v0);
}

void TAnalogAus::showUnits(int record)
{
    QString unit = wizParaSource()->Cell(record, QStringLiteral("Einheit")).trimmed();
    if (TParaClass::IsIndirekteEinheit(unit)) {
        const int row = wizParaSource()->GetRecNo(unit.mid(1, unit.size() - 2), false);
        unit = row >= 0 ? wizParaSource()->Cell(row, QStringLiteral("Wert")).trimmed() : unit;
    }
    LblAnaAusDim10->setText(unit);
    LblAnaAusDim0->setText(unit);
}

// --- from the edits to the drive ----------------------------------------------------------------

void TAnalogAus::Edit10VKeyUp(QObject *sender)
{
    Q_UNUSED(sender)
    if (!wizParaSource() || Edit10V->isReadOnly()) return;
    const int record = sourceRecord();
    if (!CheckQuelle(record)) return;
    applyTyped(record, true);
}

// Factor and offset for the typed values, kept inside the drive's limits. Edits that
// still show what factor and offset give convert to nothing, so that keys which change
// no text (arrows, Shift) do not move the values by the edits' rounding.
TAnalogAus::Typed TAnalogAus::applyTyped(int record, bool beep)
{
    if (Edit10V->text() == m_shown[0] && Edit0V->text() == m_shown[1]) return Typed::Unchanged;
    const double full = GetFullScaleVal(record);
    if (full == 0) {
        if (beep) Beep();
        return Typed::Bad;
    }
    const QString t10 = TrimFloat(Edit10V->text().trimmed());
    const QString t0 = TrimFloat(Edit0V->text().trimmed());
    if (unfinished(t10) || unfinished(t0)) return Typed::Unchanged;
    if (!IsFloat(t10) || !IsFloat(t0)) {
        if (beep) Beep();
        return Typed::Bad;
    }
    const double v10 = StrToFloat(t10);
    const double v0 = StrToFloat(t0);
    if (std::fabs(v10 - v0) <= kEqual) return Typed::Unchanged;
    double factor = 0, offset = 0;
    if (!fitTyped(full, v10, v0, factor, offset)) return Typed::Bad;
    m_writing = true;
    for (const auto &[control, value] :
         {std::pair{P_Faktor, factor}, std::pair{P_Offset, offset}}) {
        const QString text =
            FloatToStrF(value, FloatFormat::Fixed, 18, control->Nachkommastellen());
        if (control->GetText() != text) control->SetASFloat(value);
    }
    m_writing = false;
    m_shown[0] = Edit10V->text();
    m_shown[1] = Edit0V->text();
    // Limits the drive set are said (in red) only where the values that come back differ
    // from the typed ones by more than the edits' rounding.
    double back10 = 0, back0 = 0;
    const double step = std::pow(10.0, -sourceDecimals(record)) * 1.0001;
    const bool kept =
        sourceValues(full, P_Faktor->GetASFloat(), P_Offset->GetASFloat(), back10, back0) &&
        std::fabs(back10 - v10) <= step && std::fabs(back0 - v0) <= step;
    const bool limited = factor != 100 * full / (v10 - v0) || offset != 10 * v0 / (v0 - v10);
    m_adjusted = limited && !kept;
    markEdits(m_adjusted);
    return Typed::Applied;
}

// The factor and offset that give the typed values; where those lie beyond the drive's
// limits, the ones within the limits that come closest to both values (least squares).
bool TAnalogAus::fitTyped(double full, double v10, double v0, double &factor, double &offset) const
{
    factor = 100 * full / (v10 - v0);
    offset = 10 * v0 / (v0 - v10);
    if (clamped(P_Offset, offset) != offset) {
        offset = clamped(P_Offset, offset);
        const double a = (10 - offset) / 10, b = -offset / 10;
        factor = 100 * full / ((a * v10 + b * v0) / (a * a + b * b));
    }
    if (std::isfinite(factor) && clamped(P_Faktor, factor) != factor) {
        factor = clamped(P_Faktor, factor);
        const double c = full / (factor * 0.01) / 10;
        offset = clamped(P_Offset, (10 * c - v10 - v0) / (2 * c));
    }
    return std::isfinite(factor) && std::isfinite(offset);
}

double TAnalogAus::clamped(TParaClass *control, double value) const
{
    const double low = control->GetUGW();
    const double high = control->GetOGW();
    if (!std::isfinite(low) || !std::isfinite(high) || high < low) return value;
    return std::clamp(value, low, high);
}

void TAnalogAus::markEdits(bool adjusted)
{
    QString hint;
    if (adjusted) {
        hint = s_ValOutOfLims;
        for (TParaClass *c : {P_Faktor, P_Offset}) {
            const int row = wizParaSource()->GetRecNo(c->GetKoordinate(), false);
            hint += QLatin1Char('\n') + c->GetKoordinate() + QLatin1Char(' ') + c->GetParamName() +
                    QStringLiteral(": ") + c->GetWertebereich(row);
        }
        hint += QLatin1Char('\n') + s_ValAdjusted;
    }
    for (QLineEdit *edit : {Edit10V, Edit0V}) {
        QPalette p = edit->palette();
        p.setColor(QPalette::Text, adjusted ? QColor(Qt::red) : palette().color(QPalette::Text));
        edit->setPalette(p);
        edit->setToolTip(hint);
    }
}

// Leaving an edit shows what the drive does now; values the drive's limits changed are
// said so.
void TAnalogAus::editLeft()
{
    if (!wizParaSource() || m_leaving) return;
    m_leaving = true;
    const int record = sourceRecord();
    if (CheckQuelle(record)) applyTyped(record, false);
    const QString adjusted =
        m_adjusted ? Edit10V->toolTip().replace(QLatin1Char('\n'), QLatin1Char('\r')) : QString();
    m_adjusted = false;
    UpdateCustomEdits();
    if (!adjusted.isEmpty()) ShowMessage(adjusted);
    m_leaving = false;
}

// --- language and events ----------------------------------------------------------------------

void TAnalogAus::UpdateLanguage()
{
    if (!wizParaSource()) return;
    ReadControls(wizParaSource()->LanguageFile(), wizParaSource()->Language(),
                 QStringLiteral("TAnalogAus"), this);
    P_Quelle->SetInputFeldHint(s_DataTypeI16only);
    // The error label and the units show what the source says, not a caption.
    if (ioframes::atRunTime(*this)) UpdateCustomEdits();
}

void TAnalogAus::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    // A language file read anew (the host may choose the language after loading).
    if (event->type() == QEvent::LanguageChange && ioframes::atRunTime(*this)) UpdateLanguage();
}

bool TAnalogAus::eventFilter(QObject *watched, QEvent *event)
{
    if ((watched == Edit10V || watched == Edit0V) && event->type() == QEvent::KeyRelease &&
        !static_cast<QKeyEvent *>(event)->isAutoRepeat())
        Edit10VKeyUp(watched);
    return QFrame::eventFilter(watched, event);
}

} // namespace drivewiz
