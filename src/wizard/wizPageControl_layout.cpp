// The wizard page control: titles, bevels and buttons of the pages, OK and Cancel, the
// search field and the online indicator in place.

#include "wizard/wizPageControl.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "widgets/BitMaps.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl_p.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QShortcut>
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
    placeTitle(title);
    // The title's offset counts twice below it, as the drive tool's pages have it.
    QFrame *upper = bevel(page, GetBevelTabSheetName(QStringLiteral("O"), n));
    upper->setGeometry(title->x(), title->y() + title->height() + 1 + m_titleTop,
                       width() - 2 * title->x(), 2);
    QFrame *lower = bevel(page, GetBevelTabSheetName(QStringLiteral("U"), n));
    const int lowerTop = m_btnBack ? backInPage().y() - 7 : pageArea().height() - 25;
    lower->setGeometry(upper->x(), lowerTop, upper->width(), 2);
    updateNextButton(n);
}

// The title stands at (wizTitleLeft, wizTitleTop) in its natural size; a title that
// would run under the search field breaks into lines instead, and the bevel follows.
void TwizPageControl::placeTitle(QLabel *title)
{
    title->setWordWrap(false);
    title->adjustSize();
    title->move(m_titleLeft, m_titleTop);
    int room = pageArea().width() - 2 * m_titleLeft;
    if (m_searchEdit && !m_searchEdit->isHidden()) {
        const QPoint inPc = m_searchEdit->parentWidget() == this ? m_searchEdit->pos()
                                                                  : mapFromParent(m_searchEdit->pos());
        const QPoint edit = inPc - pageArea().topLeft();
        if (edit.y() < m_titleTop + title->height()) room = edit.x() - 10 - m_titleLeft;
    }
    if (room <= 0 || title->width() <= room) return;
    title->setWordWrap(true);
    title->resize(room, title->heightForWidth(room));
}

// One width for back, next, OK and Cancel: the back button's, or what the widest text
// (with its icon) needs. So the buttons look alike and none cuts its caption.
QSize TwizPageControl::buttonSize() const
{
    QSize size = m_btnBack ? m_btnBack->size() : QSize(75, 25);
    const auto grow = [&size](const QAbstractButton *b) {
        if (b) size = size.expandedTo(b->sizeHint());
    };
    grow(m_btnBack);
    grow(m_btnOK);
    grow(m_btnCancel);
    for (int n = 0; n < count(); ++n)
        grow(widget(n)->findChild<QAbstractButton *>(GetBtnNextName(n), Qt::FindDirectChildrenOnly));
    return size;
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
    const pagectl::ButtonRow row = buttonRow();
    next->resize(row.size);
    next->move(backInPage() + QPoint(row.nextOffset, 0));
    next->setVisible(shownAfter(n));
}

// Where back, next, Cancel and OK go (x in the coordinates of the widget that holds OK).
// The wizard's arithmetic first: next 4/3 of a button right of back, OK 3/2 of a button
// left of the page control's right edge, Cancel 4/3 of a button left of OK. When wide
// captions would make next run into Cancel, back moves left; when even that is not
// enough, the four buttons share the page control's width evenly.
pagectl::ButtonRow TwizPageControl::buttonRow() const
{
    pagectl::ButtonRow row;
    row.size = buttonSize();
    const int w = row.size.width();
    const QRect pc = rectInHost();
    const QWidget *host = parentWidget() ? parentWidget() : this;
    row.backX = host->mapFromGlobal(m_btnBack->mapToGlobal(QPoint(0, 0))).x();
    row.nextOffset = w * 4 / 3;
    row.okX = pc.x() + pc.width() - w * 3 / 2;
    row.cancelX = row.okX - w * 4 / 3;
    if (row.backX + row.nextOffset + w + w / 3 <= row.cancelX) return row;
    row.backX = std::min(row.backX, row.cancelX - w / 3 - w - row.nextOffset);
    if (row.backX >= pc.x() + 4) return row;
    const int gap = std::max(4, (pc.width() - 4 * w) / 5);
    row.backX = pc.x() + gap;
    row.nextOffset = w + gap;
    row.cancelX = row.backX + 2 * (w + gap);
    row.okX = row.cancelX + w + gap;
    return row;
}

void TwizPageControl::UpdateBtnPosition()
{
    if (!m_btnBack) {
        delete m_btnOK;
        delete m_btnCancel;
        return;
    }
    if (!m_btnOK || !m_btnCancel) return;
    const pagectl::ButtonRow row = buttonRow();
    const QSize size = row.size;
    QWidget *host = buttonHost();
    const QPoint back = host->mapFromGlobal(m_btnBack->mapToGlobal(QPoint(0, 0)));
    if (m_btnBack->size() != size || back.x() != row.backX) {
        m_btnBack->setGeometry(QRect(m_btnBack->pos() + QPoint(row.backX - back.x(), 0), size));
        // A hidden back button reports no move: the next buttons follow it here.
        for (int n = 0; n < count(); ++n)
            updateNextButton(n);
    }
    m_btnOK->setGeometry(QRect(QPoint(row.okX, back.y()), size));
    m_btnCancel->setGeometry(QRect(QPoint(row.cancelX, back.y()), size));
    // Between the next button and OK there is room for the online indicator.
    const int gap = std::min(size.width() / 6, row.okX - row.cancelX - size.width());
    const int nextRight = row.backX + row.nextOffset + size.width();
    m_panelRoom = QRect(nextRight + gap, back.y(), row.okX - gap - nextRight - gap, size.height());
    placePanel();
}

// The online indicator stands where Cancel stands, which is hidden whenever it shows;
// a longer text ("Rückdokumentation") takes more of the room between next and OK.
void TwizPageControl::placePanel()
{
    if (!m_onlinePanel) return;
    if (!m_btnCancel || m_panelRoom.isEmpty()) {
        if (m_searchEdit)
            m_onlinePanel->move(m_searchEdit->x() - m_onlinePanel->width() - 10, m_searchEdit->y());
        return;
    }
    const QRect cancel = m_btnCancel->geometry();
    const int width = std::max(cancel.width(), m_onlinePanel->sizeHint().width());
    QRect panel(cancel.right() + 1 - width, cancel.y(), width, cancel.height());
    if (panel.left() < m_panelRoom.left()) panel.moveLeft(m_panelRoom.left());
    m_onlinePanel->setGeometry(panel);
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

QSize TwizPageControl::minimumSizeHint() const
{
    QSize pages;
    for (int n = 0; n < count(); ++n) {
        const QRect used = widget(n)->childrenRect();
        pages = pages.expandedTo(QSize(used.right() + 1 + m_titleLeft, used.bottom() + 1));
    }
    // The page area sits inside the tab widget's frame (and tab bar, while designing).
    const QRect area = pageArea();
    return pages + QSize(width() - area.width(), height() - area.height());
}

QSize TwizPageControl::sizeHint() const
{
    return QTabWidget::sizeHint().expandedTo(minimumSizeHint());
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
    placeSearch(); // first: a long title makes room for the search field
    UpdateTabLabels();
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
        // Outside the Tab order, yet a keyboard reaches it: Ctrl+F, as in any program.
        auto *find = new QShortcut(QKeySequence::Find, host);
        find->setObjectName(QStringLiteral("ShortcutSearch"));
        connect(find, &QShortcut::activated, m_searchEdit, [edit = m_searchEdit] {
            edit->setFocus(Qt::ShortcutFocusReason);
            edit->selectAll();
        });
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
        m_onlinePanel->setMargin(4);
        m_onlinePanel->resize(kPanelWidth, m_searchEdit->height());
        m_onlinePanel->hide();
    }
    for (QWidget *w : {static_cast<QWidget *>(m_onlinePanel), static_cast<QWidget *>(m_searchEdit),
                       static_cast<QWidget *>(m_searchBtn)})
        w->raise();
}

// Search field and button stand at the right end of the title row; the button is as
// wide as its caption needs.
void TwizPageControl::placeSearch()
{
    if (!m_searchEdit || !m_searchBtn) return;
    const QRect pc = rectInHost();
    const int top = pc.y() + pageArea().y() + m_titleTop;
    m_searchBtn->resize(std::max(kSearchButtonWidth, m_searchBtn->sizeHint().width()),
                        std::max(m_searchEdit->height(), m_searchBtn->sizeHint().height()));
    m_searchBtn->move(pc.x() + pc.width() - m_searchBtn->width() - 10, top);
    m_searchEdit->move(m_searchBtn->x() - m_searchEdit->width() - 5, top);
    if (!m_btnCancel) placePanel();
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
        placeSearch();
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
