// The analog input frame: one page an input and one for the fieldbus value.

#include "ioframes/AE.h"

#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "paramtable/coordinates.h"
#include "ui_AE.h"

#include <QLabel>
#include <QPainter>
#include <QTabBar>

namespace drivewiz {

namespace {

const char *const kRoles[] = {"Pegel",      "Offset",  "Faktor",      "Faktor2",
                              "FeldbusPar", "Anzeige", "QuellAnzeige"};

constexpr int kPages = 4;

} // namespace

TAnalogEin::TAnalogEin(QWidget *parent) : QFrame(parent), m_ui(std::make_unique<Ui::TAnalogEin>())
{
    ioframes::setupForm(this, [this] { m_ui->setupUi(this); });
    PageControl1 = m_ui->PageControl1;
    PageControl1->tabBar()->hide();
    for (int n = 1; n <= kPages; ++n) {
        Page(n)->installEventFilter(this);
        if (QLabel *name = Label(n, QStringLiteral("LblAEname"))) {
            name->installEventFilter(this);
            name->setCursor(Qt::PointingHandCursor);
        }
        for (const char *role : {"LblNoQuellAnzeigePar", "Label1", "LblUnknownPar"})
            Label(n, QLatin1String(role))->hide();
    }
}

TAnalogEin::~TAnalogEin() = default;

QString TAnalogEin::prefix(int page)
{
    static const QString names[] = {QStringLiteral("AE1"), QStringLiteral("AE2"),
                                    QStringLiteral("AE3"), QStringLiteral("Bus")};
    return page >= 1 && page <= kPages ? names[page - 1] : QString();
}

QWidget *TAnalogEin::Page(int page) const
{
    return page >= 1 && page <= PageControl1->count() ? PageControl1->widget(page - 1) : nullptr;
}

TParaClass *TAnalogEin::Control(int page, Role role) const
{
    QWidget *p = Page(page);
    return p ? p->findChild<TParaClass *>(QStringLiteral("P_") + prefix(page) +
                                          QLatin1String(kRoles[role]))
             : nullptr;
}

QLabel *TAnalogEin::Label(int page, const QString &role) const
{
    QWidget *p = Page(page);
    return p ? p->findChild<QLabel *>(prefix(page) + role) : nullptr;
}

// --- properties ------------------------------------------------------------------------------

void TAnalogEin::SetwizAE(int n)
{
    m_ae = std::clamp(n, 0, PageControl1->count() + 1);
    if (m_table && n >= 1 && n <= PageControl1->count()) PageControl1->setCurrentIndex(n - 1);
    if (ioframes::atRunTime(*this)) setVisible(n != 0);
}

TParaTable *TAnalogEin::wizParaSource() const
{
    return m_table;
}

void TAnalogEin::SetwizParaSource(TParaTable *table)
{
    m_table = table;
    if (table) m_tableName = table->objectName();
    if (!table) return;
    for (TParaClass *c : findChildren<TParaClass *>()) {
        if (c->wizParaSource()) continue;
        c->SetwizParaSource(table);
        if (ioframes::atRunTime(*c)) {
            c->RebuildParaControl();
            c->SucheGleicheParameter();
        }
    }
}

QString TAnalogEin::wizParaSourceName() const
{
    return m_table ? m_table->objectName() : m_tableName;
}

void TAnalogEin::SetwizParaSourceName(const QString &objectName)
{
    m_tableName = objectName;
    if (!isLoading()) SetwizParaSource(ioframes::tableByName(this, objectName));
}

// --- filling a page ----------------------------------------------------------------------------

bool TAnalogEin::bind(int page, Role role, const QString &text, int level, QStringList &unknown)
{
    TParaClass *c = Control(page, role);
    if (!c) return false;
    const QString k = ioframes::formKoordinate(text);
    if (!k.isEmpty() && !IsKoordinate(k)) {
        c->SetwizVisible(false); // a plain text: no parameter on this place
        return false;
    }
    if (!k.isEmpty()) c->SetKoordinate(k);
    const bool known = m_table && m_table->GetRecNo(c->GetKoordinate(), false) >= 0;
    if (!known && m_table) unknown << c->GetKoordinate();
    c->SetwizVisible(known || !m_table);
    c->SetwizEnabled(tParaEnabled(level));
    return known;
}

void TAnalogEin::SetAEParams(int page, const QString &quelle, const QString &feldbusPar,
                             const QString &parFaktor, const QString &faktorChar,
                             const QString &anzeigePar, const QString &quellAnzeigPar)
{
    if (page < 1 || page > kPages || !Page(page)) return;
    QStringList unknown;
    const bool bus = page == kPages;
    // The chosen path can be set up, the other one only looked at.
    bind(page, Pegel, QString(), pReadOnly, unknown);
    bind(page, Offset, QString(), bus ? pDisabled : pEnabled, unknown);
    bind(page, Faktor, QString(), bus ? pDisabled : pEnabled, unknown);
    bind(page, FeldbusPar, feldbusPar, bus ? pEnabled : pDisabled, unknown);
    const bool factor = bind(page, Faktor2, parFaktor, pEnabled, unknown);
    bind(page, Anzeige, anzeigePar, pReadOnly, unknown);
    const bool before = bind(page, QuellAnzeige, quellAnzeigPar, pReadOnly, unknown);

    const QString sign = faktorChar.trimmed().isEmpty() ? QStringLiteral("x") : faktorChar.trimmed();
    const QString fixed = ioframes::formKoordinate(parFaktor);
    Label(page, QStringLiteral("LabelFaktorZeichen"))->setText(sign);
    Label(page, QStringLiteral("LabelFaktorZeichen"))->setVisible(factor);
    Label(page, QStringLiteral("Label1"))
        ->setText(sign + QLatin1Char(' ') +
                  (fixed.isEmpty() || IsKoordinate(fixed) ? QStringLiteral("1,0") : fixed));
    Label(page, QStringLiteral("Label1"))->setVisible(!factor);
    Label(page, QStringLiteral("LblNoQuellAnzeigePar"))->setVisible(!before);

    QLabel *source = Label(page, QStringLiteral("LblQuelle"));
    const QString k = ioframes::formKoordinate(quelle);
    if (IsKoordinate(k)) {
        const int row = m_table ? m_table->GetRecNo(k, false) : -1;
        source->setText(row >= 0 ? m_table->Cell(row, QStringLiteral("Koordinate")) : k);
        source->setToolTip(row >= 0 ? m_table->Cell(row, QStringLiteral("Name")) : QString());
        if (row < 0 && m_table) unknown << k;
    } else if (!k.isEmpty()) {
        source->setText(k);
        source->setToolTip(QString());
    }
    source->adjustSize();
    QLabel *report = Label(page, QStringLiteral("LblUnknownPar"));
    unknown.removeDuplicates();
    report->setText(s_ParUnknown + QStringLiteral(": ") + unknown.join(QStringLiteral(", ")));
    report->setVisible(!unknown.isEmpty());
    Page(page)->update();
}

// --- help, focus, language ---------------------------------------------------------------------

void TAnalogEin::P_AEPegelClick()
{
    if (TParaClass *c = Control(PageControl1->currentIndex() + 1, Pegel)) c->ShowSelfRTFHelpText();
}

void TAnalogEin::FocusFirstField()
{
    const int page = PageControl1->currentIndex() + 1;
    for (Role role : {Offset, Faktor, FeldbusPar, Faktor2}) {
        TParaClass *c = Control(page, role);
        QWidget *input = c ? c->GetEditControl() : nullptr;
        if (input && input->isEnabled() && !c->isHidden()) {
            input->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

void TAnalogEin::UpdateLanguage()
{
    if (!m_table) return;
    QList<QWidget *> labels;
    for (int n = 1; n <= kPages; ++n) {
        for (QObject *child : Page(n)->children()) {
            if (auto *label = qobject_cast<QLabel *>(child)) labels << label;
        }
    }
    ioframes::translateParts(m_table->LanguageFile(), QStringLiteral("TAnalogEin"), labels);
}

bool TAnalogEin::eventFilter(QObject *watched, QEvent *event)
{
    for (int n = 1; n <= kPages; ++n) {
        if (watched == Page(n) && event->type() == QEvent::Paint)
            paintPath(Page(n), n);
        else if (watched == Label(n, QStringLiteral("LblAEname")) &&
                 event->type() == QEvent::MouseButtonRelease && ioframes::atRunTime(*this))
            P_AEPegelClick();
    }
    return QFrame::eventFilter(watched, event);
}

// The two paths meet at the right and run, between the rows, to the source parameter:
// the chosen one is drawn solid, the other one dashed.
void TAnalogEin::paintPath(QWidget *page, int n)
{
    const QLabel *wahl = Label(n, QStringLiteral("LblQuelleWahl"));
    const QLabel *param = Label(n, QStringLiteral("Lbl4Param"));
    const QLabel *source = Label(n, QStringLiteral("LblQuelle"));
    const TParaClass *feldbus = Control(n, FeldbusPar);
    if (!wahl || !param || !source || !feldbus) return;
    const bool bus = n == kPages;
    const int x = page->width() - 6;
    const int joint = (feldbus->geometry().bottom() + source->geometry().top()) / 2;
    const QPen active(QColor(0, 128, 0), 2);
    QPen idle(palette().color(QPalette::Mid), 1, Qt::DashLine);
    QPainter p(page);
    p.setPen(bus ? idle : active);
    p.drawPolyline(QPolygon({QPoint(wahl->x() + wahl->sizeHint().width() + 2, wahl->y() + 9),
                             QPoint(x, wahl->y() + 9), QPoint(x, joint)}));
    p.setPen(bus ? active : idle);
    p.drawPolyline(QPolygon({QPoint(param->x() + param->sizeHint().width() + 2, param->y() + 9),
                             QPoint(x, param->y() + 9), QPoint(x, joint)}));
    p.setPen(active);
    const int cx = source->x() + source->width() / 2;
    p.drawPolyline(QPolygon({QPoint(x, joint), QPoint(cx, joint), QPoint(cx, source->y() - 2)}));
}

void TAnalogEin::Loaded()
{
    Component::Loaded();
    if (!m_table && !m_tableName.isEmpty())
        SetwizParaSource(ioframes::tableByName(this, m_tableName));
    if (isDesigning()) {
        PageControl1->tabBar()->show();
        return;
    }
    UpdateLanguage();
    SetwizAE(m_ae);
}

} // namespace drivewiz
