// The wizard page control: the text search over all pages of the form.

#include "wizard/wizPageControl.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "platform/dialogs.h"
#include "wizard/wizPageControl_p.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QThread>

namespace drivewiz {

namespace pagectl {

QTabWidget *tabWidgetOf(const QWidget *page, int *index)
{
    auto *stack = page ? qobject_cast<QStackedWidget *>(page->parentWidget()) : nullptr;
    auto *tabs = stack ? qobject_cast<QTabWidget *>(stack->parentWidget()) : nullptr;
    const int i = tabs ? tabs->indexOf(const_cast<QWidget *>(page)) : -1;
    if (index) *index = i;
    return i >= 0 ? tabs : nullptr;
}

bool acceptsFocus(const QWidget *w)
{
    return w && w->isEnabled() && w->isVisibleTo(w->window()) &&
           (w->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

QWidget *focusTarget(QWidget *w)
{
    if (!w || !w->isEnabled()) return nullptr;
    if (acceptsFocus(w)) return w;
    if (acceptsFocus(w->focusProxy())) return w->focusProxy();
    const QList<QWidget *> children = w->findChildren<QWidget *>();
    for (QWidget *c : children) {
        if (acceptsFocus(c)) return c;
    }
    return nullptr;
}

} // namespace pagectl

namespace {

using namespace pagectl;

// What the search walk carries from control to control.
struct Walk
{
    QString text;
    int hitNo = 0;
    int skipped = 0;
};

QString searchableText(const QWidget *w)
{
    if (auto *label = qobject_cast<const QLabel *>(w)) return label->text();
    if (auto *edit = qobject_cast<const QLineEdit *>(w)) return edit->text();
    if (auto *combo = qobject_cast<const QComboBox *>(w)) return combo->currentText();
    return QString();
}

bool searchable(const QWidget *w)
{
    return qobject_cast<const QLabel *>(w) || qobject_cast<const QLineEdit *>(w) ||
           qobject_cast<const QComboBox *>(w);
}

// The child widgets of a container in the order of the search. Child order is stacking
// order in Qt and a stacked widget raises its current page, so pages go by index.
QList<QWidget *> walkOrder(QWidget *container)
{
    QList<QWidget *> order;
    if (auto *stack = qobject_cast<QStackedWidget *>(container)) {
        for (int i = 0; i < stack->count(); ++i)
            order << stack->widget(i);
    }
    for (QObject *child : container->children()) {
        auto *w = qobject_cast<QWidget *>(child);
        if (w && !order.contains(w)) order << w;
    }
    return order;
}

// The tab pages to activate, outermost first, so that `hit` shows; false when a hidden
// widget, a hidden wizard page or a foreign page with a hidden tab is in the way.
bool pagesToShow(QWidget *hit, QList<QWidget *> &pages)
{
    const QWidget *form = hit->window();
    for (QWidget *w = hit; w && w != form; w = w->parentWidget()) {
        int index = -1;
        QTabWidget *tabs = tabWidgetOf(w, &index);
        if (!tabs) {
            if (w->isHidden()) return false;
            continue;
        }
        if (qobject_cast<TwizPageControl *>(tabs)) {
            if (!TwizPageControl::PageShown(w)) return false;
        } else if (tabs->currentIndex() != index &&
                   !(tabs->tabBar()->isVisibleTo(tabs) && tabs->isTabVisible(index))) {
            return false;
        }
        pages.prepend(w);
    }
    return true;
}

void showPages(const QList<QWidget *> &pages)
{
    for (QWidget *page : pages) {
        QTabWidget *tabs = tabWidgetOf(page);
        if (tabs->currentWidget() == page) continue;
        if (auto *wizard = qobject_cast<TwizPageControl *>(tabs))
            wizard->MoveTo(page);
        else
            tabs->setCurrentWidget(page);
    }
}

} // namespace

void TwizPageControl::SearchEditChange()
{
    m_foundBefore = false;
    m_hitsShown = 0;
    if (m_searchBtn && m_searchEdit) m_searchBtn->setEnabled(!m_searchEdit->text().isEmpty());
}

void TwizPageControl::SearchKeyPress(QObject *sender, QChar &key)
{
    Q_UNUSED(sender)
    if (key != QChar(13)) return;
    key = QChar();
    SearchBtnClick();
}

// Hits are numbered in the walk; each click presents the next one. A hit that cannot be
// shown (hidden, disabled, on a hidden page) is counted and passed over.
void TwizPageControl::SearchBtnClick()
{
    if (!m_searchEdit || m_searchEdit->text().isEmpty()) return;
    Walk walk;
    walk.text = m_searchEdit->text().toUpper();
    const std::function<bool(QWidget *)> visit = [&](QWidget *container) {
        for (QWidget *w : walkOrder(container)) {
            if (w->isWindow() || w == m_searchEdit || w == m_onlinePanel || w == m_e48) continue;
            if (searchable(w) && searchableText(w).toUpper().contains(walk.text)) {
                if (walk.hitNo++ < m_hitsShown) continue;
                QList<QWidget *> pages;
                // An edit or combo box takes the focus itself; a label is shown by its
                // parent, the parameter control or page around it.
                const bool focusable = w->isEnabled() && (w->focusPolicy() & Qt::TabFocus);
                QWidget *rep = focusable || !w->parentWidget() ? w : w->parentWidget();
                if (!pagesToShow(w, pages) || !rep->isEnabled()) {
                    ++walk.skipped;
                    ++m_hitsShown;
                    continue;
                }
                showPages(pages);
                presentHit(w, rep);
                return true;
            }
            if (!qobject_cast<QComboBox *>(w) && visit(w)) return true;
        }
        return false;
    };
    if (visit(window())) return;
    QString message = m_foundBefore ? s_NotMoreFound : s_TextNotFound;
    if (walk.skipped > 0 && !m_foundBefore)
        message += QStringLiteral("\r(") + s_TxtCannotFocus + QStringLiteral(")");
    m_foundBefore = false;
    m_hitsShown = 0;
    ShowMessage(message);
}

void TwizPageControl::presentHit(QWidget *hit, QWidget *rep)
{
    if (QWidget *target = focusTarget(rep))
        target->setFocus(Qt::OtherFocusReason);
    else
        flash(rep, QPalette::Window, {Qt::red, Qt::black, Qt::red});
    if (qobject_cast<QLabel *>(hit)) {
        for (int i = 0; i < 3; ++i)
            flash(hit, QPalette::WindowText, {Qt::red, Qt::black});
    }
    ++m_hitsShown;
    m_foundBefore = true;
}

// Paints the widget's colour role in each colour for the flash delay, then restores it.
// The wait blocks as the drive tool's did, so no other input slips in meanwhile.
void TwizPageControl::flash(QWidget *w, QPalette::ColorRole role, const QList<QColor> &colors)
{
    const QPalette old = w->palette();
    const bool ownPalette = w->testAttribute(Qt::WA_SetPalette);
    const bool fill = w->autoFillBackground();
    if (role == QPalette::Window) w->setAutoFillBackground(true);
    for (const QColor &c : colors) {
        QPalette pal = old;
        pal.setColor(role, c);
        w->setPalette(pal);
        w->repaint();
        if (m_flashDelay > 0) QThread::msleep(ulong(m_flashDelay));
    }
    w->setPalette(ownPalette ? old : QPalette());
    w->setAutoFillBackground(fill);
    w->repaint();
}

} // namespace drivewiz
