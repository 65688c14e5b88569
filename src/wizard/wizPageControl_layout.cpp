// The wizard page control: titles, bevels and buttons of the pages, OK and Cancel, the
// search field and the online indicator in place.

#include "wizard/wizPageControl.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "widgets/BitMaps.h"
#include "widgets/wizEdit.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QStackedWidget>
#include <QValidator>

namespace drivewiz {

namespace {

// The search field takes upper case only, as the search compares upper case.
class UpperCaseValidator : public QValidator
{
public:
    using QValidator::QValidator;
    State validate(QString &input, int &) const override
    {
        input = input.toUpper();
        return Acceptable;
    }
};

constexpr int kSearchEditWidth = 121;
constexpr int kSearchButtonWidth = 75;
constexpr int kPanelWidth = 60;

QFrame *bevel(QWidget *page, const QString &name)
{
    auto *frame = page->findChild<QFrame *>(name, Qt::FindDirectChildrenOnly);
    if (frame) return frame;
    frame = new QFrame(page);
    frame->setObjectName(name);
    frame->setFrameShape(QFrame::HLine);
    frame->setFrameShadow(QFrame::Sunken);
    frame->show();
    return frame;
}

} // namespace

QLineEdit *TwizPageControl::SearchEdit() const
{
    return m_searchEdit;
}

QPushButton *TwizPageControl::SearchButton() const
{
    return m_searchBtn;
}

QLabel *TwizPageControl::OnlinePanel() const
{
    return m_onlinePanel;
}

TwizButton *TwizPageControl::BtnOK() const
{
    return m_btnOK;
}

TwizButton *TwizPageControl::BtnCancel() const
{
    return m_btnCancel;
}

TParaClass *TwizPageControl::E48Control() const
{
    return m_e48;
}

QWidget *TwizPageControl::buttonHost()
{
    return parentWidget() ? parentWidget() : this;
}

// The page control's rectangle in the coordinates of the widget that holds OK, Cancel
// and the search field.
QRect TwizPageControl::rectInHost() const
{
    return parentWidget() ? geometry() : rect();
}

// All pages share the stacked widget's area, also those that were never shown and so
// still have the size they were made with.
QRect TwizPageControl::pageArea() const
{
    const auto *stack = findChild<QStackedWidget *>(QString(), Qt::FindDirectChildrenOnly);
    if (!stack) return rect();
    return stack->contentsRect().translated(stack->pos());
}

// The back button's top left in page coordinates, wherever on the form it sits.
QPoint TwizPageControl::backInPage() const
{
    const QPoint pageOrigin = mapToGlobal(pageArea().topLeft());
    return m_btnBack->mapToGlobal(QPoint(0, 0)) - pageOrigin;
}

void TwizPageControl::UpdateTabLabels()
{
    if (isLoading() || componentState().testFlag(csDestroying)) return;
    for (int n = 0; n < count(); ++n)
        updatePage(n);
    UpdateBtnPosition();
    UpdateTreeView(isDesigning());
}

void TwizPageControl::updatePage(int n)
{
    QWidget *page = widget(n);
    const QString titleName = GetLblTabSheetCaptionName(n);
    auto *title = page->findChild<QLabel *>(titleName, Qt::FindDirectChildrenOnly);
    if (!title) {
        title = new TwizLabel(page);
        title->setObjectName(titleName);
        title->show();
    }
    title->setFont(m_titleFont);
    QPalette pal = title->palette();
    if (const QColor c = ColorToQColor(m_titleColor); c.isValid())
        pal.setColor(QPalette::WindowText, c);
    title->setPalette(pal);
    title->setText(tabText(n));
    title->adjustSize();
    title->move(m_titleLeft, m_titleTop);
    // The title's offset counts twice below it, as the drive tool's pages have it.
    QFrame *upper = bevel(page, GetBevelTabSheetName(QStringLiteral("O"), n));
    upper->setGeometry(title->x(), title->y() + title->height() + 1 + m_titleTop,
                       width() - 2 * title->x(), 2);
    QFrame *lower = bevel(page, GetBevelTabSheetName(QStringLiteral("U"), n));
    const int lowerTop = m_btnBack ? backInPage().y() - 7 : pageArea().height() - 25;
    lower->setGeometry(upper->x(), lowerTop, upper->width(), 2);
    updateNextButton(n);
}

void TwizPageControl::updateNextButton(int n)
{
    QWidget *page = widget(n);
    auto *next = page->findChild<QAbstractButton *>(GetBtnNextName(n), Qt::FindDirectChildrenOnly);
    if (!m_btnBack || n == count() - 1) {
        delete next; // no back button, no next buttons; and none on the last page
        return;
    }
    if (!next) {
        next = new TwizButton(s_Next, page);
        next->setObjectName(GetBtnNextName(n));
    }
    connect(next, &QAbstractButton::clicked, this, &TwizPageControl::BtnMoveNextClick,
            Qt::UniqueConnection);
    next->setFont(m_btnBack->font());
    next->resize(m_btnBack->width(), m_btnBack->height());
    next->move(backInPage() + QPoint(m_btnBack->width() * 4 / 3, 0));
    next->setVisible(shownAfter(n));
}

void TwizPageControl::UpdateBtnPosition()
{
    if (!m_btnBack) {
        delete m_btnOK;
        delete m_btnCancel;
        return;
    }
    if (!m_btnOK || !m_btnCancel) return;
    QWidget *host = buttonHost();
    const QPoint back = host->mapFromGlobal(m_btnBack->mapToGlobal(QPoint(0, 0)));
    const QRect pc = rectInHost();
    const int cancelWidth = m_btnCancel->width();
    const int okLeft = pc.x() + pc.width() - cancelWidth * 3 / 2;
    m_btnOK->setGeometry(okLeft, back.y(), m_btnOK->width(), m_btnBack->height());
    m_btnCancel->setGeometry(okLeft - cancelWidth * 4 / 3, back.y(), cancelWidth,
                             m_btnBack->height());
}

TwizButton *TwizPageControl::NewButton(TwizButton *button, TButtonKind kind, const QString &caption,
                                       const QString &name)
{
    QWidget *host = buttonHost();
    if (!button) button = host->findChild<TwizButton *>(name, Qt::FindDirectChildrenOnly);
    if (!button) {
        button = new TwizButton(host);
        button->setIcon(
            QIcon(wizBitMap(kind == bkOK ? TBitMap::OK : TBitMap::Cancel, QSize(16, 16))));
        button->show();
    }
    button->raise();
    if (m_btnBack) button->resize(m_btnBack->width(), button->height());
    button->setDefault(false);
    button->setAutoDefault(false);
    button->setObjectName(name);
    button->setText(caption);
    return button;
}

void TwizPageControl::resizeEvent(QResizeEvent *event)
{
    QTabWidget::resizeEvent(event);
    Resize();
}

void TwizPageControl::moveEvent(QMoveEvent *event)
{
    QTabWidget::moveEvent(event);
    UpdateBtnPosition();
    placeSearch();
}

void TwizPageControl::showEvent(QShowEvent *event)
{
    QTabWidget::showEvent(event);
    Resize(); // the pages have their real size only now
}

void TwizPageControl::Resize()
{
    UpdateTabLabels();
    placeSearch();
}

void TwizPageControl::createFormParts()
{
    QWidget *host = buttonHost();
    if (!m_searchEdit) {
        m_searchEdit = new QLineEdit(host);
        m_searchEdit->setObjectName(QStringLiteral("EdSearch"));
        m_searchEdit->setValidator(new UpperCaseValidator(m_searchEdit));
        m_searchEdit->setFocusPolicy(Qt::ClickFocus); // outside the tab order
        m_searchEdit->resize(kSearchEditWidth, m_searchEdit->sizeHint().height());
        connect(m_searchEdit, &QLineEdit::textChanged, this, &TwizPageControl::SearchEditChange);
        m_searchEdit->installEventFilter(this);
        m_searchEdit->show();
    }
    if (!m_searchBtn) {
        m_searchBtn = new TwizButton(host);
        m_searchBtn->setObjectName(QStringLiteral("BtnSearch"));
        m_searchBtn->setFocusPolicy(Qt::ClickFocus);
        m_searchBtn->setAutoDefault(false);
        m_searchBtn->resize(kSearchButtonWidth, m_searchEdit->height());
        m_searchBtn->setEnabled(!m_searchEdit->text().isEmpty());
        connect(m_searchBtn, &QAbstractButton::clicked, this, &TwizPageControl::SearchBtnClick);
        m_searchBtn->show();
    }
    if (!m_onlinePanel) {
        m_onlinePanel = new QLabel(QStringLiteral("Online"), host);
        m_onlinePanel->setObjectName(QStringLiteral("PnlOnline"));
        m_onlinePanel->setFrameStyle(QFrame::Panel | QFrame::Raised);
        m_onlinePanel->setAlignment(Qt::AlignCenter);
        m_onlinePanel->setAutoFillBackground(true);
        m_onlinePanel->resize(kPanelWidth, m_searchEdit->height());
        m_onlinePanel->hide();
    }
    for (QWidget *w : {static_cast<QWidget *>(m_onlinePanel), static_cast<QWidget *>(m_searchEdit),
                       static_cast<QWidget *>(m_searchBtn)})
        w->raise();
}

// Search field and button stand at the right end of the title row, the online
// indicator left of them.
void TwizPageControl::placeSearch()
{
    if (!m_searchEdit || !m_searchBtn) return;
    const QRect pc = rectInHost();
    const int top = pc.y() + pageArea().y() + m_titleTop;
    m_searchBtn->move(pc.x() + pc.width() - m_searchBtn->width() - 10, top);
    m_searchEdit->move(m_searchBtn->x() - m_searchEdit->width() - 5, top);
    if (m_onlinePanel) m_onlinePanel->move(m_searchEdit->x() - m_onlinePanel->width() - 10, top);
}

void TwizPageControl::UpdateLanguage()
{
    for (int n = 0; n < count(); ++n) {
        if (auto *next = widget(n)->findChild<QAbstractButton *>(GetBtnNextName(n),
                                                                 Qt::FindDirectChildrenOnly))
            next->setText(s_Next);
    }
    if (m_btnBack) m_btnBack->setText(s_Back);
    if (m_btnCancel) {
        m_btnCancel->setText(s_Cancel);
        m_btnCancel->setToolTip(s_CancelWiz);
    }
    if (m_searchBtn) {
        m_searchBtn->setText(s_Search);
        m_searchBtn->setToolTip(s_SearchTextHint);
    }
    if (m_searchEdit) m_searchEdit->setToolTip(s_InputSearchTxt);
    updateOkHint();
    // The host's own texts for the form (tab texts included) come after ours.
    if (m_table && m_table->LanguageFile() && !isDesigning())
        ReadControls(m_table->LanguageFile(), m_table->Language(), m_table->wizIdString(),
                     window());
    if (!m_loadedOnce) return;
    CheckOnlineMode(); // the read-back indicator's text
    UpdateTabLabels(); // titles from the tab texts
    UpdateTreeView(true);
}

} // namespace drivewiz
