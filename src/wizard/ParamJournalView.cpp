// The journal view and its dialog.

#include "wizard/ParamJournalView.h"

#include "paramctrls/ParamViewTexts.h"
#include "paramtable/ParaTable.h"
#include "paramtable/ParamTexts.h"
#include "paramtable/ParamUndo.h"
#include "wizard/ParamCompareView.h"
#include "wizard/ParamViews_p.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>

namespace drivewiz {

namespace {

const char *originKey(WriteOrigin o)
{
    switch (o) {
    case WriteOrigin::Typed:
        return "OriginTyped";
    case WriteOrigin::Reset:
        return "OriginReset";
    case WriteOrigin::Revert:
        return "OriginRevert";
    case WriteOrigin::Undo:
        return "OriginUndo";
    case WriteOrigin::Redo:
        return "OriginRedo";
    case WriteOrigin::Apply:
        return "OriginApply";
    case WriteOrigin::Host:
        return "OriginHost";
    }
    return "OriginTyped";
}

const char *modeKey(tOnlineModus m)
{
    return m == omOnline ? "ModeOnline" : m == omOffline ? "ModeOffline" : "ModeReadBack";
}

QString answerText(const TParaTable *t, const ParamWrite &w)
{
    if (w.answer == ParamWrite::kKeptInTable) return paramViewText(t, "AnswerKept");
    if (w.answer == 0) return paramViewText(t, "AnswerWritten");
    return w.answerText();
}

} // namespace

TParamJournalView::TParamJournalView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("ParamJournalView"));
    build();
    retranslate();
}

TParamJournalView::~TParamJournalView() = default;

void TParamJournalView::build()
{
    auto *top = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    m_filterLabel = new QLabel(this);
    m_filter = new QLineEdit(this);
    m_filter->setObjectName(QStringLiteral("EdJournalFilter"));
    m_filter->setClearButtonEnabled(true);
    m_filterLabel->setBuddy(m_filter);
    row->addWidget(m_filterLabel);
    row->addWidget(m_filter, 1);
    top->addLayout(row);

    m_model = new QStandardItemModel(0, ColumnCount, this);
    m_proxy = new QSortFilterProxyModel(this);
    m_proxy->setSourceModel(m_model);
    m_proxy->setFilterKeyColumn(ColKoordinate);
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_view = paramviews::makeList(this, "TblJournal");
    m_view->setModel(m_proxy);
    m_view->installEventFilter(this);
    top->addWidget(m_view, 1);

    auto *bottom = new QHBoxLayout;
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("LblJournalCount"));
    m_back = new QPushButton(this);
    m_back->setObjectName(QStringLiteral("BtnBackToHere"));
    bottom->addWidget(m_count, 1);
    bottom->addWidget(m_back);
    top->addLayout(bottom);

    connect(m_filter, &QLineEdit::textChanged, this, &TParamJournalView::setFilterText);
    connect(m_back, &QPushButton::clicked, this, &TParamJournalView::goBack);
    setFocusProxy(m_view);
}

void TParamJournalView::setTable(const TParaTable *table)
{
    m_table = table;
    retranslate();
    setJournal(ParamJournal::ReadResult{m_entries, m_skipped, false, QString()});
}

void TParamJournalView::retranslate()
{
    const TParaTable *t = m_table;
    m_filterLabel->setText(paramViewText(t, "JournalFilter"));
    m_filter->setAccessibleName(paramViewText(t, "JournalFilter").remove(QLatin1Char('&')));
    m_back->setText(paramViewText(t, "JournalBack"));
    m_view->setAccessibleName(paramViewText(t, "JournalTitle"));
    const QString headers[] = {paramViewText(t, "JournalTime"),   paramSetText(t, "ColKoordinate"),
                               paramViewText(t, "JournalOld"),    paramViewText(t, "JournalNew"),
                               paramViewText(t, "JournalOrigin"), paramViewText(t, "JournalMode"),
                               paramViewText(t, "JournalAnswer")};
    for (int c = 0; c < ColumnCount; ++c)
        m_model->setHeaderData(c, Qt::Horizontal, headers[c]);
    updateCount();
}

void TParamJournalView::setJournal(const ParamJournal::ReadResult &journal)
{
    m_entries = journal.entries;
    m_skipped = journal.skipped;
    const TParaTable *t = m_table;
    m_model->removeRows(0, m_model->rowCount());
    m_model->setRowCount(int(m_entries.size()));
    const QDate today = QDate::currentDate();
    for (int i = 0; i < m_entries.size(); ++i) {
        const ParamWrite &w = m_entries.at(i).write;
        // Today's lines show the time alone; the tool tip always gives date and time.
        const QString full =
            w.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
        const QString cells[] = {w.time.toLocalTime().date() == today ? full.mid(11) : full,
                                 w.key.text(),
                                 w.oldValue,
                                 w.newValue,
                                 paramSetText(t, originKey(w.origin)),
                                 paramSetText(t, modeKey(w.mode)),
                                 answerText(t, w)};
        for (int c = 0; c < ColumnCount; ++c) {
            auto *item = new QStandardItem(cells[c]);
            item->setData(i, Qt::UserRole);
            if (c == ColTime) item->setToolTip(full);
            m_model->setItem(i, c, item);
        }
    }
    m_view->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_view->horizontalHeader()->setStretchLastSection(true);
    if (m_proxy->rowCount() > 0)
        m_view->setCurrentIndex(m_proxy->index(m_proxy->rowCount() - 1, 0));
    updateCount();
}

void TParamJournalView::setFilterText(const QString &text)
{
    if (m_filter->text() != text) m_filter->setText(text); // comes back here
    m_proxy->setFilterFixedString(text.trimmed());
    updateCount();
}

int TParamJournalView::shownCount() const
{
    return m_proxy->rowCount();
}

void TParamJournalView::updateCount()
{
    QString text = m_entries.isEmpty()
                       ? paramViewText(m_table, "JournalEmpty")
                       : paramViewText(m_table, "JournalCount", QString::number(shownCount()));
    if (m_skipped > 0)
        text += QStringLiteral("; ") +
                paramViewText(m_table, "JournalSkipped", QString::number(m_skipped));
    m_count->setText(text);
    m_back->setEnabled(shownCount() > 0);
}

const ParamJournal::Entry *TParamJournalView::currentEntry() const
{
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) return nullptr;
    const int i = m_proxy->mapToSource(current).data(Qt::UserRole).toInt();
    return i >= 0 && i < m_entries.size() ? &m_entries.at(i) : nullptr;
}

ParamSet TParamJournalView::stateBeforeCurrent() const
{
    const ParamJournal::Entry *e = currentEntry();
    if (!e) return ParamSet();
    // Lines before the chosen one that share its millisecond are not undone.
    const int at = int(e - m_entries.constData());
    return ParamJournal::stateBefore(m_entries.mid(at), e->write.time);
}

void TParamJournalView::goBack()
{
    const ParamJournal::Entry *e = currentEntry();
    if (!e) return;
    Q_EMIT backToHere(e->write.time, stateBeforeCurrent());
}

bool TParamJournalView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view && event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
            !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            goBack();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

QSize TParamJournalView::sizeHint() const
{
    const QFontMetrics fm = fontMetrics();
    const int list = paramviews::listWidth(m_view, fm.averageCharWidth() * 30);
    const int bottom = fm.horizontalAdvance(m_count->text()) + m_back->sizeHint().width() +
                       fm.averageCharWidth() * 6;
    return QSize(std::max({list, bottom, fm.averageCharWidth() * 60}) +
                     layout()->contentsMargins().left() + layout()->contentsMargins().right() +
                     fm.averageCharWidth(),
                 std::max(QWidget::sizeHint().height(), fm.lineSpacing() * 24));
}

// --- dialog ----------------------------------------------------------------------------------

TParamJournalDialog::TParamJournalDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("ParamJournalDialog"));
    m_view = new TParamJournalView(this);
    m_close = paramviews::layOutDialog(this, m_view, "BtnJournalClose");
    connect(m_view, &TParamJournalView::backToHere, this,
            [this](const QDateTime &, const ParamSet &before) {
                if (!m_table || before.isEmpty()) return;
                ParamSet other = before;
                const ParamSet mine = ParamSet::fromWizard(*m_table, before.keys());
                other.meta().family = mine.meta().family; // the same drive
                TParamCompareDialog *d = TParamCompareDialog::create(
                    this, m_table, m_undo, mine, other, paramViewText(m_table, "SideTable"),
                    paramViewText(m_table, "SideBefore"));
                if (!d) return;
                m_compare = d;
                d->show();
            });
}

TParamJournalDialog *TParamJournalDialog::create(QWidget *parent, TParaTable *table,
                                                 ParamUndoStack *undo, const QString &fileName)
{
    auto *dialog = new TParamJournalDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->m_table = table;
    dialog->m_undo = undo;
    dialog->m_view->setTable(table);
    dialog->m_view->setJournal(ParamJournal::read(fileName));
    dialog->m_close->setText(paramViewText(table, "Close"));
    dialog->setWindowTitle(paramViewText(table, "JournalTitle"));
    paramviews::fitDialog(dialog);
    return dialog;
}

} // namespace drivewiz
