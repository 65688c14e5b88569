// A wizard's views on its parameter sets, put together for a host.

#include "wizard/wizParamViews.h"

#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamEditSession.h"
#include "paramctrls/ParamViewTexts.h"
#include "paramtable/ParaTable.h"
#include "paramtable/ParamChanges.h"
#include "paramtable/ParamJournal.h"
#include "paramtable/ParamUndo.h"
#include "platform/dialogs.h"
#include "wizard/ParamCompareView.h"
#include "wizard/ParamJournalView.h"
#include "wizard/wizPageControl.h"

#include <QAction>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTreeWidgetItemIterator>

namespace drivewiz {

namespace {

// Draws a page's node with the number of its changed values right of the caption. The
// nodes are rebuilt often (language, hidden pages), so the count is looked up by caption
// when painting rather than stored in them.
class ChangedCountDelegate : public QStyledItemDelegate
{
public:
    ChangedCountDelegate(TwizParamViews *views, QObject *parent)
        : QStyledItemDelegate(parent), m_views(views)
    {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const QString count = countText(index);
        if (count.isEmpty()) return;
        painter->save();
        QFont f = option.font;
        f.setBold(true);
        painter->setFont(f);
        painter->setPen(option.state & QStyle::State_Selected
                            ? option.palette.color(QPalette::HighlightedText)
                            : option.palette.color(QPalette::Link));
        painter->drawText(option.rect.adjusted(0, 0, -4, 0), Qt::AlignRight | Qt::AlignVCenter,
                          count);
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        const QString count = countText(index);
        if (!count.isEmpty()) {
            QFont f = option.font;
            f.setBold(true);
            size.rwidth() += QFontMetrics(f).horizontalAdvance(count) + 12;
        }
        return size;
    }

private:
    QString countText(const QModelIndex &index) const
    {
        if (!m_views) return QString();
        const int n = m_views->changedOnPage(index.data().toString());
        return n > 0 ? QStringLiteral("(%1)").arg(n) : QString();
    }

    QPointer<TwizParamViews> m_views;
};

} // namespace

TwizParamViews::TwizParamViews(TwizPageControl *pageControl, ParamEditSession *session)
    : QObject(pageControl), m_pageControl(pageControl), m_session(session)
{
    setObjectName(QStringLiteral("ParamViews"));
    connect(session, &ParamEditSession::changesChanged, this, &TwizParamViews::recount);
    if (TwizTreeView *tree = pageControl->wizTreeView()) {
        tree->setItemDelegate(new ChangedCountDelegate(this, tree));
        // The page control rebuilds the nodes (language, hidden pages): tips again.
        connect(tree->model(), &QAbstractItemModel::rowsInserted, this,
                &TwizParamViews::updateTreeTips, Qt::QueuedConnection);
    }
    TParaTable *t = session->table();
    t->SetReviewEditsGoingOnline(true);
    connect(t, &TParaTable::editsHeldGoingOnline, this, [this]() { compareHeldEdits(); });
    recount();
}

TwizParamViews *TwizParamViews::install(TwizPageControl *pageControl, bool journal,
                                        const QString &journalFile)
{
    if (!pageControl || !pageControl->wizParaSource()) return nullptr;
    if (TwizParamViews *existing = find(pageControl)) return existing;
    ParamEditSession *session = ParamEditSession::install(
        pageControl->window(), pageControl->wizParaSource(), journal, journalFile);
    return session ? new TwizParamViews(pageControl, session) : nullptr;
}

TwizParamViews *TwizParamViews::find(const TwizPageControl *pageControl)
{
    return pageControl
               ? pageControl->findChild<TwizParamViews *>(QString(), Qt::FindDirectChildrenOnly)
               : nullptr;
}

TwizPageControl *TwizParamViews::pageControl() const
{
    return m_pageControl;
}

ParamEditSession *TwizParamViews::session() const
{
    return m_session;
}

QWidget *TwizParamViews::lastDialog() const
{
    return m_last;
}

TParaTable *TwizParamViews::table() const
{
    return m_session ? m_session->table() : nullptr;
}

QList<ParamKey> TwizParamViews::wizardKeys() const
{
    QList<ParamKey> keys;
    QSet<QString> seen;
    if (!m_pageControl || !table()) return keys;
    for (const TParaClass *c : m_pageControl->window()->findChildren<TParaClass *>()) {
        const ParamKey key = ParamEditSession::keyOf(c);
        if (!key.isValid() || table()->FindKey(key) < 0 || seen.contains(key.hashText())) continue;
        seen.insert(key.hashText());
        keys << key;
    }
    return keys;
}

int TwizParamViews::changedOnPage(const QString &caption) const
{
    return m_pageCounts.value(caption);
}

void TwizParamViews::recount()
{
    m_pageCounts.clear();
    if (!m_pageControl || !m_session) return;
    for (int i = 0; i < m_pageControl->count(); ++i) {
        const int n = m_session->changedCount(m_pageControl->widget(i));
        if (n > 0) m_pageCounts[m_pageControl->tabText(i)] += n;
    }
    updateTreeTips();
    if (TwizTreeView *tree = m_pageControl->wizTreeView()) {
        tree->doItemsLayout();
        tree->viewport()->update();
    }
}

void TwizParamViews::updateTreeTips()
{
    TwizTreeView *tree = m_pageControl ? m_pageControl->wizTreeView() : nullptr;
    if (!tree) return;
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        const int n = changedOnPage((*it)->text(0));
        const QString tip =
            n > 0 ? paramViewText(table(), "TreeCount", QString::number(n)) : QString();
        if ((*it)->toolTip(0) != tip) (*it)->setToolTip(0, tip);
    }
}

// --- sets and comparisons -----------------------------------------------------------------------

bool TwizParamViews::saveSet(const QString &fileName)
{
    if (!table()) return false;
    QString error;
    const ParamSet set = ParamSet::fromWizard(*table(), wizardKeys());
    if (set.save(fileName, &error, table())) return true;
    ShowMessage(error);
    return false;
}

TParamCompareDialog *TwizParamViews::open(const ParamSet &mine, const ParamSet &other,
                                          const char *otherSide)
{
    if (!table() || !m_session) return nullptr;
    TParamCompareDialog *d = TParamCompareDialog::create(
        m_pageControl->window(), table(), m_session->undo(), mine, other,
        paramViewText(table(), "SideTable"), paramViewText(table(), otherSide));
    if (!d) return nullptr;
    m_last = d;
    d->show();
    return d;
}

TParamCompareDialog *TwizParamViews::compareWithFile(const QString &fileName)
{
    if (!table()) return nullptr;
    const ParamSetLoad loaded = ParamSet::load(fileName, table());
    if (!loaded.ok) {
        ShowMessage(loaded.error);
        return nullptr;
    }
    const ParamSet mine = ParamSet::fromWizard(*table(), loaded.set.keys());
    return open(mine, loaded.set, "SideFile");
}

TParamCompareDialog *TwizParamViews::compareWithDrive()
{
    if (!table()) return nullptr;
    const QList<ParamKey> keys = wizardKeys();
    return open(ParamSet::fromWizard(*table(), keys), ParamSet::fromDrive(*table(), keys),
                "SideDrive");
}

TParamCompareDialog *TwizParamViews::compareWithDefaults()
{
    if (!table()) return nullptr;
    const QList<ParamKey> keys = wizardKeys();
    return open(ParamSet::fromWizard(*table(), keys), ParamSet::defaultsOf(*table(), keys),
                "SideDefaults");
}

TParamCompareDialog *TwizParamViews::compareWithOpening()
{
    if (!table() || !m_session) return nullptr;
    const QList<ParamKey> keys = wizardKeys();
    ParamSet opening;
    for (const ParamKey &k : keys) {
        if (const ParamSet::Entry *e = m_session->changes()->openingValues().find(k))
            opening.insert(*e);
    }
    return open(ParamSet::fromWizard(*table(), keys), opening, "SideOpening");
}

TParamCompareDialog *TwizParamViews::compareHeldEdits()
{
    TParaTable *t = table();
    if (!t || t->HeldEdits().isEmpty() || !m_session) return nullptr;
    ParamSet edited;
    QList<ParamKey> keys;
    const ParamSet names = ParamSet::fromWizard(*t, {});
    for (const ParamChange &c : t->HeldEdits()) {
        ParamSet::Entry e;
        e.key = c.key;
        e.value = c.newValue;
        if (const ParamSet::Entry *n = names.find(c.key)) {
            e.name = n->name;
            e.unit = n->unit;
        }
        edited.insert(e);
        keys << c.key;
    }
    TParamCompareDialog *d = TParamCompareDialog::create(
        m_pageControl->window(), t, m_session->undo(), edited, ParamSet::fromDrive(*t, keys),
        paramViewText(t, "SideEdited"), paramViewText(t, "SideDrive"));
    if (!d) return nullptr;
    d->view()->setApplySide(ParamCompare::ApplySide::This);
    d->view()->setNote(paramViewText(t, "GoingOnline"));
    const QPointer<TParaTable> guard = t;
    connect(d, &QDialog::finished, this, [guard]() {
        if (guard) guard->ClearHeldEdits(); // the edits not applied are dropped
    });
    m_last = d;
    d->show();
    return d;
}

TParamJournalDialog *TwizParamViews::showJournal()
{
    if (!table() || !m_session) return nullptr;
    const QString file = m_session->journal() ? m_session->journal()->fileName()
                                              : ParamJournal::fileFor(table()->wizIdString());
    TParamJournalDialog *d =
        TParamJournalDialog::create(m_pageControl->window(), table(), m_session->undo(), file);
    m_last = d;
    d->show();
    return d;
}

QAction *TwizParamViews::createUndoAction(QObject *parent) const
{
    return m_session ? m_session->undo()->createUndoAction(parent) : nullptr;
}

QAction *TwizParamViews::createRedoAction(QObject *parent) const
{
    return m_session ? m_session->undo()->createRedoAction(parent) : nullptr;
}

} // namespace drivewiz
