// The wizard page control: properties, links, start-up and navigation; the page tree.

#include "wizard/wizPageControl.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/dialogs.h"
#include "platform/inifile.h"
#include "platform/messages.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl_p.h"

#include <QAbstractButton>
#include <QDynamicPropertyChangeEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTabBar>
#include <QTimer>

namespace drivewiz {

const char *const TwizPageControl::ModalResultProperty = "ModalResult";

QString GetLblTabSheetCaptionName(int n)
{
    return QStringLiteral("Lbl_") + QString::number(n);
}

QString GetBevelTabSheetName(const QString &prefix, int n)
{
    return prefix + QString::number(n) + QStringLiteral("Bevel_");
}

QString GetBtnNextName(int n)
{
    return QStringLiteral("BtnNext_") + QString::number(n);
}

bool VisibilityStatusWords(const TParaTable *table)
{
    return !table || table->Online() != omOnline || table->UserLevel() < 2;
}

bool VisibilityControlWords(const TParaTable *table)
{
    return !table || table->UserLevel() < 2;
}

TwizPageControl::TwizPageControl(QWidget *parent)
    : QTabWidget(parent), m_onlineTimer(new QTimer(this)), m_msgWindow(new MessageWindow(this))
{
    setTabPosition(QTabWidget::South);
    m_titleFont.setPointSize(12);
    m_titleFont.setBold(true);
    m_onlineTimer->setInterval(500);
    connect(m_onlineTimer, &QTimer::timeout, this, &TwizPageControl::OnTimerOnline);
    m_msgWindow->onMessage = [this](uint msg, quintptr, qintptr) {
        if (msg == wmOnlineChanged) OnlineChangeMsg();
    };
    if (!isDesigning()) {
        m_e48 = new TParaClass(this);
        m_e48->setObjectName(QStringLiteral("fP_E48"));
        m_e48->SetwizVisible(false);
        m_e48->SetKoordinate(QStringLiteral("E48"));
    }
    connect(this, &QTabWidget::currentChanged, this, &TwizPageControl::Change);
}

TwizPageControl::~TwizPageControl()
{
    addComponentState(csDestroying);
    // Nothing of ours may run while the tab widget below tears its pages down.
    disconnect(this, nullptr, this, nullptr);
    delete m_keyPreview;
    delete m_msgWindow;
    m_onlineTimer->stop();
    if (m_form) m_form->removeEventFilter(this);
    if (m_btnBack) m_btnBack->removeEventFilter(this);
    for (int i = 0; i < count(); ++i)
        widget(i)->removeEventFilter(this);
    // The parts we put on our parent go with us.
    delete m_btnOK;
    delete m_btnCancel;
    delete m_searchEdit;
    delete m_searchBtn;
    delete m_onlinePanel;
}

// --- published properties ---------------------------------------------------------------

TwizTreeView *TwizPageControl::wizTreeView() const
{
    return m_tree;
}

void TwizPageControl::SetwizTreeView(TwizTreeView *tree)
{
    if (m_tree == tree) return;
    TwizTreeView *old = m_tree;
    m_tree = tree;
    m_treeName = tree ? tree->objectName() : QString();
    if (old && old->wizPageControl() == this) old->SetwizPageControl(nullptr);
    if (tree && tree->wizPageControl() != this) tree->SetwizPageControl(this);
    if (tree && !isLoading()) UpdateTreeView(true);
}

QString TwizPageControl::wizTreeViewName() const
{
    return m_tree ? m_tree->objectName() : m_treeName;
}

void TwizPageControl::SetwizTreeViewName(const QString &objectName)
{
    m_treeName = objectName;
    if (isLoading()) return;
    QWidget *form = window();
    SetwizTreeView(objectName.isEmpty() ? nullptr : form->findChild<TwizTreeView *>(objectName));
}

QAbstractButton *TwizPageControl::wizBtnBack() const
{
    return m_btnBack;
}

void TwizPageControl::SetBtnBack(QAbstractButton *button)
{
    if (m_btnBack && m_btnBack != button) {
        disconnect(m_btnBack, nullptr, this, nullptr);
        m_btnBack->removeEventFilter(this);
    }
    m_btnBack = button;
    m_btnBackName = button ? button->objectName() : QString();
    if (!isLoading()) applyBackButton();
}

QString TwizPageControl::wizBtnBackName() const
{
    return m_btnBack ? m_btnBack->objectName() : m_btnBackName;
}

void TwizPageControl::SetBtnBackName(const QString &objectName)
{
    m_btnBackName = objectName;
    if (isLoading()) return;
    SetBtnBack(objectName.isEmpty() ? nullptr : window()->findChild<QAbstractButton *>(objectName));
}

void TwizPageControl::applyBackButton()
{
    if (m_btnBack) {
        m_btnBack->hide(); // until MoveTo decides
        m_btnBack->raise();
        connect(m_btnBack, &QAbstractButton::clicked, this, &TwizPageControl::BtnMoveBackClick,
                Qt::UniqueConnection);
        m_btnBack->installEventFilter(this);
    }
    UpdateTabLabels();
    if (m_btnBack) {
        m_btnOK = NewButton(m_btnOK, bkOK, QStringLiteral("OK"), QStringLiteral("BtnOK"));
        connect(m_btnOK, &QAbstractButton::clicked, this, &TwizPageControl::SaveAndClose,
                Qt::UniqueConnection);
        m_btnCancel = NewButton(m_btnCancel, bkCancel, s_Cancel, QStringLiteral("BtnCancel"));
        m_btnCancel->setToolTip(s_CancelWiz);
        connect(m_btnCancel, &QAbstractButton::clicked, this, &TwizPageControl::CancelWizard,
                Qt::UniqueConnection);
    }
    UpdateBtnPosition();
    if (m_loadedOnce) {
        updateBackButton();
        CheckOnlineMode();
    }
}

void TwizPageControl::SetwizTabVisible(bool visible)
{
    m_tabVisible = visible;
    applyTabVisible();
}

void TwizPageControl::applyTabVisible()
{
    tabBar()->setVisible(isDesigning() && m_tabVisible);
    // The tab widget lays its pages out again only when asked.
    QEvent relayout(QEvent::LayoutRequest);
    QCoreApplication::sendEvent(this, &relayout);
}

void TwizPageControl::SetwizTitleLblFont(const QFont &font)
{
    m_titleFont = font;
    if (!isLoading()) UpdateTabLabels();
}

void TwizPageControl::SetwizTitleLblColor(TColor color)
{
    m_titleColor = color;
    if (!isLoading()) UpdateTabLabels();
}

void TwizPageControl::SetwizTitleLeft(int left)
{
    m_titleLeft = left;
    if (!isLoading()) UpdateTabLabels();
}

void TwizPageControl::SetwizTitleTop(int top)
{
    m_titleTop = top;
    if (!isLoading()) Resize();
}

TParaTable *TwizPageControl::wizParaSource() const
{
    return m_table;
}

void TwizPageControl::SetwizParaSource(TParaTable *table)
{
    m_table = table;
    m_tableName = table ? table->objectName() : QString();
    if (m_e48 && table) m_e48->SetwizParaSource(table);
    if (!isLoading() && m_loadedOnce && table) {
        table->SubscribeMsgOnlineChange(m_msgWindow->handle());
        CheckOnlineMode();
    }
}

QString TwizPageControl::wizParaSourceName() const
{
    return m_table ? m_table->objectName() : m_tableName;
}

void TwizPageControl::SetwizParaSourceName(const QString &objectName)
{
    m_tableName = objectName;
    if (isLoading()) return;
    SetwizParaSource(objectName.isEmpty() ? nullptr
                                          : window()->findChild<TParaTable *>(objectName));
}

// --- start-up ----------------------------------------------------------------------------

void TwizPageControl::Loaded()
{
    Component::Loaded();
    applyTabVisible();
    QWidget *form = window();
    if (!m_table && !m_tableName.isEmpty()) m_table = form->findChild<TParaTable *>(m_tableName);
    if (!m_tree && !m_treeName.isEmpty())
        SetwizTreeView(form->findChild<TwizTreeView *>(m_treeName));
    if (!m_btnBack && !m_btnBackName.isEmpty())
        m_btnBack = form->findChild<QAbstractButton *>(m_btnBackName);
    if (isDesigning()) {
        linkLoneTreeView();
        UpdateTabLabels();
        return;
    }
    if (m_table && m_e48) {
        m_e48->SetwizParaSource(m_table);
        m_e48->RebuildParaControl();
        m_table->SubscribeMsgOnlineChange(m_msgWindow->handle());
    }
    watchForm();
    createFormParts();
    applyBackButton();
    UpdateLanguage();
    m_loadedOnce = true;
    UpdateTabLabels();
    UpdateTreeView(true);
    QWidget *first = nullptr;
    for (int i = 0; i < count() && !first; ++i) {
        if (PageShown(widget(i))) first = widget(i);
    }
    MoveTo(first ? first : widget(0));
    CheckOnlineMode();
    placeSearch();
}

void TwizPageControl::UpdateActivePage()
{
    UpdateTabLabels();
    applyTabVisible();
}

void TwizPageControl::tabInserted(int index)
{
    QTabWidget::tabInserted(index);
    widget(index)->installEventFilter(this);
    // Pages after the new one moved up by one; their parts follow their index.
    for (int i = index + 1; i < count(); ++i)
        renameParts(widget(i), i - 1, i);
    if (!isLoading() && !componentState().testFlag(csDestroying)) UpdateActivePage();
}

void TwizPageControl::tabRemoved(int index)
{
    QTabWidget::tabRemoved(index);
    for (int i = index; i < count(); ++i)
        renameParts(widget(i), i + 1, i);
    if (!isLoading() && !componentState().testFlag(csDestroying)) UpdateActivePage();
}

void TwizPageControl::renameParts(QWidget *page, int from, int to)
{
    const QString names[][2] = {
        {GetLblTabSheetCaptionName(from), GetLblTabSheetCaptionName(to)},
        {GetBevelTabSheetName(QStringLiteral("O"), from),
         GetBevelTabSheetName(QStringLiteral("O"), to)},
        {GetBevelTabSheetName(QStringLiteral("U"), from),
         GetBevelTabSheetName(QStringLiteral("U"), to)},
        {GetBtnNextName(from), GetBtnNextName(to)},
    };
    for (const auto &pair : names) {
        if (QWidget *part = page->findChild<QWidget *>(pair[0], Qt::FindDirectChildrenOnly))
            part->setObjectName(pair[1]);
    }
}

// A new language file: the texts are read again once the host has done its part too
// (it may translate the form itself right after switching the table's language).
void TwizPageControl::changeEvent(QEvent *event)
{
    QTabWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange || !m_loadedOnce || m_languagePending) return;
    m_languagePending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_languagePending = false;
            UpdateLanguage();
        },
        Qt::QueuedConnection);
}

// Types are tested first: a watched widget that is being destroyed still sends events,
// and comparing it with a typed pointer then would cast a half-destroyed object.
bool TwizPageControl::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (!event->spontaneous() && watched == m_form) MyOnShow();
        break;
    case QEvent::Close:
        if (watched != m_form) break;
        if (!MyOnClose()) {
            event->ignore();
            return true;
        }
        if (m_form->property(ModalResultProperty).toInt() == mrNone)
            m_form->setProperty(ModalResultProperty, int(mrCancel));
        break;
    case QEvent::KeyPress:
        if (watched == m_searchEdit && searchKey(static_cast<QKeyEvent *>(event))) return true;
        break;
    case QEvent::Resize:
    case QEvent::Move:
        if (watched == m_btnBack) UpdateTabLabels(); // the page parts line up with it
        break;
    case QEvent::DynamicPropertyChange:
        if (static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == "Tag" &&
            indexOf(qobject_cast<QWidget *>(watched)) >= 0 && m_loadedOnce) {
            UpdateTreeView(true);
            for (int i = 0; i < count(); ++i)
                updateNextButton(i);
            updateBackButton();
        }
        break;
    default:
        break;
    }
    return QTabWidget::eventFilter(watched, event);
}

// The search field's characters go to SearchKeyPress; true when it swallowed one.
bool TwizPageControl::searchKey(QKeyEvent *event)
{
    if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter && event->text().isEmpty()) return false;
    QChar key = enter ? QChar(13) : event->text().at(0);
    SearchKeyPress(m_searchEdit, key);
    return key.isNull();
}

// --- navigation --------------------------------------------------------------------------

bool TwizPageControl::PageShown(const QWidget *page)
{
    return page && page->property("Tag").toInt() != 1;
}

QWidget *TwizPageControl::FindTabSheet(const QString &caption) const
{
    for (int i = 0; i < count(); ++i) {
        if (tabText(i) == caption) return widget(i);
    }
    return nullptr;
}

bool TwizPageControl::shownAfter(int index) const
{
    for (int i = index + 1; i < count(); ++i) {
        if (PageShown(widget(i))) return true;
    }
    return false;
}

void TwizPageControl::MoveNext(QWidget *page)
{
    for (int i = indexOf(page) + 1; i > 0 && i < count(); ++i) {
        if (PageShown(widget(i))) {
            MoveTo(widget(i));
            return;
        }
    }
}

void TwizPageControl::MoveBack(QWidget *page)
{
    for (int i = indexOf(page) - 1; i >= 0; --i) {
        if (PageShown(widget(i))) {
            MoveTo(widget(i));
            break;
        }
    }
    updateBackButton();
}

void TwizPageControl::MoveTo(QWidget *page)
{
    const int index = indexOf(page);
    if (index < 0) return;
    m_moving = true;
    setCurrentIndex(index);
    m_moving = false;
    UpdateTreeSelection();
    if (m_table && !isDesigning()) m_table->RegisterOnlineUpdatePars(page);
    updateNextButton(index);
    updateBackButton();
}

// The back button shows on every page but the first (index 0), hidden or not: with page
// 0 hidden, page 1 still has a back button, which then finds no page to go back to.
void TwizPageControl::updateBackButton()
{
    if (!m_btnBack) return;
    const bool first = currentIndex() <= 0;
    m_btnBack->setEnabled(!first);
    m_btnBack->setVisible(!first);
}

void TwizPageControl::BtnMoveNextClick()
{
    MoveNext(currentWidget());
}

void TwizPageControl::BtnMoveBackClick()
{
    MoveBack(currentWidget());
}

void TwizPageControl::Change()
{
    // A page made current from outside (setCurrentIndex) gets what MoveTo gives it.
    if (!m_moving && !isDesigning() && currentWidget()) {
        MoveTo(currentWidget());
    } else {
        if (!m_moving) UpdateTreeSelection();
        if (isDesigning()) UpdateTabLabels();
    }
    if (OnChange) OnChange(this);
    Q_EMIT pageChanged(currentIndex());
}

// --- tree ----------------------------------------------------------------------------------

void TwizPageControl::UpdateTreeView(bool force)
{
    if (!m_tree || componentState().testFlag(csDestroying) || !(force || m_rebuildTree)) return;
    m_tree->SetRebuilding(true);
    m_rebuildTree = false;
    m_tree->clear();
    for (int i = 0; i < count(); ++i) {
        if (PageShown(widget(i))) new QTreeWidgetItem(m_tree, QStringList(tabText(i)));
    }
    m_tree->expandAll();
    if (QTreeWidgetItem *node = m_tree->FindNode(tabText(currentIndex())))
        m_tree->setCurrentItem(node);
    m_tree->SetRebuilding(false);
}

void TwizPageControl::UpdateTreeSelection()
{
    if (!m_tree || currentIndex() < 0 || isLoading()) return;
    const QString caption = tabText(currentIndex());
    if (m_table && m_table->LanguageFile() && m_table->Language() >= 1) {
        for (int i = 0; i < count(); ++i) {
            if (i != currentIndex() && tabText(i) == caption)
                ShowMessage(duplicateMessage(caption));
        }
    }
    QTreeWidgetItem *node = m_tree->FindNode(caption);
    // A hidden page has no node; rebuilding would only lose the selection.
    if (!node && PageShown(currentWidget())) {
        m_rebuildTree = true;
        UpdateTreeView(false);
        node = m_tree->FindNode(caption);
    }
    if (!node) return;
    const bool was = m_tree->Rebuilding();
    m_tree->SetRebuilding(true); // selecting here must not move pages
    m_tree->setCurrentItem(node);
    m_tree->SetRebuilding(was);
}

QString TwizPageControl::duplicateMessage(const QString &caption) const
{
    const QString file = m_table->LanguageFile()->path();
    return QStringLiteral("Fehler in TwizPageControl:\rSeite  \"") + caption +
           QStringLiteral("\"  kommt mehrfach vor!\r"
                          "Bitte die entsprechenden Strings in der Sprachdatei \r\r") +
           file + QStringLiteral("\r\rüberprüfen!");
}

// --- TwizTreeView ----------------------------------------------------------------------------

TwizTreeView::TwizTreeView(QWidget *parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setColumnCount(1);
    // A long page caption scrolls sideways instead of being cut short with "...".
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    setTextElideMode(Qt::ElideNone);
    connect(this, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem *node) { Change(node); });
}

TwizTreeView::~TwizTreeView()
{
    // Clearing the items below must not move the page control.
    disconnect(this, nullptr, this, nullptr);
}

// In the form designer a tree view that has no page control yet links itself to the page
// control dropped on the form.
void TwizPageControl::linkLoneTreeView()
{
    if (m_tree || !m_treeName.isEmpty() || !window()) return;
    for (TwizTreeView *tree : window()->findChildren<TwizTreeView *>()) {
        if (!tree->wizPageControl() && tree->wizPageControlName().isEmpty()) {
            tree->SetwizPageControl(this);
            return;
        }
    }
}

TwizPageControl *TwizTreeView::wizPageControl() const
{
    return m_pageControl;
}

void TwizTreeView::SetwizPageControl(TwizPageControl *pageControl)
{
    if (m_pageControl == pageControl) return;
    TwizPageControl *old = m_pageControl;
    m_pageControl = pageControl;
    m_pageControlName = pageControl ? pageControl->objectName() : QString();
    if (old && old->wizTreeView() == this) old->SetwizTreeView(nullptr);
    if (pageControl && pageControl->wizTreeView() != this) pageControl->SetwizTreeView(this);
}

QString TwizTreeView::wizPageControlName() const
{
    return m_pageControl ? m_pageControl->objectName() : m_pageControlName;
}

void TwizTreeView::SetwizPageControlName(const QString &objectName)
{
    m_pageControlName = objectName;
    if (isLoading()) return;
    SetwizPageControl(objectName.isEmpty() ? nullptr
                                           : window()->findChild<TwizPageControl *>(objectName));
}

void TwizTreeView::Loaded()
{
    Component::Loaded();
    if (!m_pageControl && !m_pageControlName.isEmpty())
        SetwizPageControl(window()->findChild<TwizPageControl *>(m_pageControlName));
}

QTreeWidgetItem *TwizTreeView::FindNode(const QString &text) const
{
    for (QTreeWidgetItemIterator it(const_cast<TwizTreeView *>(this)); *it; ++it) {
        if ((*it)->text(0) == text) return *it;
    }
    return nullptr;
}

void TwizTreeView::UpdatePageSelection(QTreeWidgetItem *node)
{
    if (!m_pageControl || !node) return;
    QWidget *page = m_pageControl->FindTabSheet(node->text(0));
    if (page && page != m_pageControl->currentWidget()) m_pageControl->MoveTo(page);
}

void TwizTreeView::Change(QTreeWidgetItem *node)
{
    if (!m_rebuilding) UpdatePageSelection(node);
}

} // namespace drivewiz
