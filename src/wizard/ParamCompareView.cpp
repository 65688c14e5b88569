// The compare view and its dialog.

#include "wizard/ParamCompareView.h"
#include "wizard/ParamViews_p.h"

#include "paramctrls/ParamViewTexts.h"
#include "paramtable/ParaTable.h"
#include "paramtable/ParamTexts.h"
#include "paramtable/ParamUndo.h"
#include "platform/dialogs.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

namespace drivewiz {

TParamCompareView::TParamCompareView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("ParamCompareView"));
    m_model = new ParamCompare(nullptr, this);
    m_filter = new ParamCompareFilter(this);
    m_filter->setSourceModel(m_model);
    build();
    retranslate();
}

TParamCompareView::~TParamCompareView() = default;

void TParamCompareView::build()
{
    auto *top = new QVBoxLayout(this);
    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("LblCompareNote"));
    m_note->setWordWrap(true);
    m_note->hide();
    top->addWidget(m_note);

    auto *filterRow = new QHBoxLayout;
    m_only = new QCheckBox(this);
    m_only->setObjectName(QStringLiteral("ChkOnlyDifferences"));
    m_only->setChecked(m_filter->onlyDifferences());
    m_searchLabel = new QLabel(this);
    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("EdCompareSearch"));
    m_search->setClearButtonEnabled(true);
    m_searchLabel->setBuddy(m_search);
    filterRow->addWidget(m_only);
    filterRow->addStretch(1);
    filterRow->addWidget(m_searchLabel);
    filterRow->addWidget(m_search, 2);
    top->addLayout(filterRow);

    m_view = paramviews::makeList(this, "TblCompare");
    m_view->setModel(m_filter);
    m_view->horizontalHeader()->setHighlightSections(false);
    // At least six rows stay in sight when the note and the result box take their room.
    m_view->setMinimumHeight(m_view->horizontalHeader()->sizeHint().height() +
                             m_view->verticalHeader()->defaultSectionSize() * 6 +
                             2 * m_view->frameWidth());
    top->addWidget(m_view, 1);

    auto *buttons = new QHBoxLayout;
    m_counts = new QLabel(this);
    m_counts->setObjectName(QStringLiteral("LblCompareCounts"));
    m_counts->setWordWrap(true);
    m_tickAll = new QPushButton(this);
    m_tickAll->setObjectName(QStringLiteral("BtnTickAll"));
    m_tickNone = new QPushButton(this);
    m_tickNone->setObjectName(QStringLiteral("BtnTickNone"));
    m_apply = new QPushButton(this);
    m_apply->setObjectName(QStringLiteral("BtnApply"));
    buttons->addWidget(m_counts, 1);
    buttons->addWidget(m_tickAll);
    buttons->addWidget(m_tickNone);
    buttons->addWidget(m_apply);
    top->addLayout(buttons);

    m_result = new QPlainTextEdit(this);
    m_result->setObjectName(QStringLiteral("MemCompareResult"));
    m_result->setReadOnly(true);
    m_result->setTabChangesFocus(true);
    m_result->setMaximumHeight(m_result->fontMetrics().lineSpacing() * 6);
    m_result->hide();
    top->addWidget(m_result);

    connect(m_only, &QCheckBox::toggled, m_filter, &ParamCompareFilter::setOnlyDifferences);
    connect(m_search, &QLineEdit::textChanged, m_filter, &ParamCompareFilter::setSearchText);
    connect(m_model, &ParamCompare::countsChanged, this, &TParamCompareView::updateCounts);
    connect(m_filter, &QAbstractItemModel::rowsInserted, this, &TParamCompareView::updateCounts);
    connect(m_filter, &QAbstractItemModel::rowsRemoved, this, &TParamCompareView::updateCounts);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &TParamCompareView::updateCounts);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &TParamCompareView::updateCounts);
    connect(m_tickAll, &QPushButton::clicked, this, [this]() { m_model->setAllTicked(true); });
    connect(m_tickNone, &QPushButton::clicked, this, [this]() { m_model->setAllTicked(false); });
    connect(m_apply, &QPushButton::clicked, this, [this]() { apply(); });
    for (QWidget *w : {static_cast<QWidget *>(m_view), static_cast<QWidget *>(m_search),
                       static_cast<QWidget *>(m_only)})
        w->installEventFilter(this);
    setFocusProxy(m_view);
}

void TParamCompareView::setTable(TParaTable *table, ParamUndoStack *undo)
{
    m_table = table;
    m_undo = undo;
    // The model takes its captions from the table's language when it is made.
    const ParamSet mine = m_model->thisSet(), other = m_model->otherSet();
    delete m_model;
    m_model = new ParamCompare(table, this);
    m_filter->setSourceModel(m_model);
    connect(m_model, &ParamCompare::countsChanged, this, &TParamCompareView::updateCounts);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &TParamCompareView::updateCounts);
    m_model->compare(mine, other);
    retranslate();
}

TParaTable *TParamCompareView::table() const
{
    return m_table;
}

void TParamCompareView::compare(const ParamSet &mine, const ParamSet &other,
                                const QString &thisCaption, const QString &otherCaption)
{
    if (!thisCaption.isEmpty() || !otherCaption.isEmpty())
        m_model->setSideCaptions(
            thisCaption.isEmpty() ? paramSetText(m_table, "ColThis") : thisCaption,
            otherCaption.isEmpty() ? paramSetText(m_table, "ColOther") : otherCaption);
    m_model->compare(mine, other);
    m_applied = false;
    m_result->clear();
    m_result->hide();
    fitColumns();
    if (m_filter->rowCount() > 0) m_view->setCurrentIndex(m_filter->index(0, 0));
    updateCounts();
}

void TParamCompareView::setNote(const QString &note)
{
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
}

void TParamCompareView::retranslate()
{
    const TParaTable *t = m_table;
    m_only->setText(paramViewText(t, "OnlyDifferences"));
    m_searchLabel->setText(paramViewText(t, "Search"));
    m_search->setPlaceholderText(paramViewText(t, "SearchHint"));
    m_search->setAccessibleName(paramViewText(t, "SearchHint"));
    m_tickAll->setText(paramViewText(t, "TickAll"));
    m_tickNone->setText(paramViewText(t, "TickNone"));
    m_apply->setText(paramViewText(t, "Apply"));
    m_view->setAccessibleName(paramViewText(t, "CompareTitle"));
    m_result->setAccessibleName(paramViewText(t, "ResultRefused"));
    updateCounts();
}

// Columns as wide as their texts, names and values at most 40 characters (wider ones
// are cut, and the user may widen the column); the unit fills the rest.
void TParamCompareView::fitColumns()
{
    QHeaderView *h = m_view->horizontalHeader();
    h->setSectionResizeMode(QHeaderView::Interactive);
    h->setStretchLastSection(true);
    m_view->resizeColumnsToContents();
    const int cap = fontMetrics().averageCharWidth() * 40;
    for (const int c : {ParamCompare::ColName, ParamCompare::ColThis, ParamCompare::ColOther}) {
        if (h->sectionSize(c) > cap) h->resizeSection(c, cap);
    }
}

void TParamCompareView::updateCounts()
{
    const ParamCompare::Counts c = m_model->counts();
    QString text = paramViewText(m_table, "Counts", QString::number(c.rows),
                                 QString::number(c.different), QString::number(c.ticked));
    if (c.missingHere + c.missingThere + c.notRead > 0)
        text +=
            QStringLiteral("; ") + paramViewText(m_table, "CountsMissing",
                                                 QString::number(c.missingHere + c.missingThere),
                                                 QString::number(c.notRead));
    m_counts->setText(text);
    m_apply->setEnabled(c.ticked > 0 || !m_applied);
}

void TParamCompareView::toggleCurrent()
{
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) return;
    const int row = m_filter->mapToSource(current).row();
    if (row < 0 || !m_model->isTickable(row)) return;
    m_model->setTicked(row, !m_model->row(row).ticked);
}

ApplyResult TParamCompareView::apply()
{
    ApplyResult result;
    if (!m_table) return result;
    const int ticked = m_model->counts().ticked;
    if (ticked > 0) result = m_model->apply(*m_table, m_undo, m_side);
    m_applied = true;
    showResult(result);
    updateCounts();
    Q_EMIT appliedValues(result);
    return result;
}

void TParamCompareView::showResult(const ApplyResult &r)
{
    const TParaTable *t = m_table;
    QStringList lines;
    const bool tried = r.written > 0 || !r.refused.isEmpty() || !r.unknown.isEmpty();
    lines << (tried ? paramViewText(t, "ResultWritten", QString::number(r.written))
                    : paramViewText(t, "ResultNothing"));
    if (!r.refused.isEmpty()) lines << paramViewText(t, "ResultRefused");
    for (const ApplyRefusal &x : r.refused)
        lines << QStringLiteral("  ") +
                     paramViewText(t, "ResultLine", x.key.text(), x.value, x.reason);
    if (!r.limited.isEmpty()) lines << paramViewText(t, "ResultLimited");
    for (const ApplyRefusal &x : r.limited)
        lines << QStringLiteral("  ") +
                     paramViewText(t, "ResultLine", x.key.text(), x.value, x.reason);
    // Coordinates of the other side the table does not know cannot be ticked: they are
    // listed with every Apply, so that none is left behind unseen.
    QList<ParamKey> unknown = r.unknown;
    for (const ParamCompare::Row &row : m_model->rows()) {
        if (row.state == ParamCompare::State::MissingHere && m_table &&
            m_table->FindKey(row.key) < 0 && !unknown.contains(row.key))
            unknown << row.key;
    }
    if (!unknown.isEmpty()) lines << paramViewText(t, "ResultUnknown");
    for (const ParamKey &k : std::as_const(unknown))
        lines << QStringLiteral("  ") + k.text();
    m_result->setPlainText(lines.join(QLatin1Char('\n')));
    m_result->show();
}

QString TParamCompareView::resultText() const
{
    return m_result->toPlainText();
}

bool TParamCompareView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        apply();
        return true;
    case Qt::Key_Space:
        if (watched != m_view) return false;
        toggleCurrent();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Up:
        if (watched != m_search) return false;
        m_view->setFocus(Qt::OtherFocusReason); // from the search into the list
        if (!m_view->currentIndex().isValid() && m_filter->rowCount() > 0)
            m_view->setCurrentIndex(m_filter->index(0, 0));
        return true;
    default:
        return false;
    }
}

QSize TParamCompareView::sizeHint() const
{
    const QFontMetrics fm = fontMetrics();
    const int list = paramviews::listWidth(m_view, fm.averageCharWidth() * 40);
    const int buttons = m_tickAll->sizeHint().width() + m_tickNone->sizeHint().width() +
                        m_apply->sizeHint().width() + fm.horizontalAdvance(m_counts->text()) +
                        fm.averageCharWidth() * 6;
    const int search =
        m_only->sizeHint().width() + m_searchLabel->sizeHint().width() + fm.averageCharWidth() * 30;
    // The layout's own height (note, result box, minimum rows) when it asks for more.
    return QSize(std::max({list, buttons, search}) + layout()->contentsMargins().left() +
                     layout()->contentsMargins().right() + fm.averageCharWidth(),
                 std::max(QWidget::sizeHint().height(), fm.lineSpacing() * 26));
}

// --- dialog ----------------------------------------------------------------------------------

TParamCompareDialog::TParamCompareDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("ParamCompareDialog"));
    m_view = new TParamCompareView(this);
    m_close = paramviews::layOutDialog(this, m_view, "BtnCompareClose");
    m_close->setText(paramViewText(nullptr, "Close"));
    setWindowTitle(paramViewText(nullptr, "CompareTitle"));
}

TParamCompareDialog *TParamCompareDialog::create(QWidget *parent, TParaTable *table,
                                                 ParamUndoStack *undo, const ParamSet &mine,
                                                 const ParamSet &other, const QString &thisCaption,
                                                 const QString &otherCaption)
{
    if (ParamCompare::familyMismatch(mine, other)) {
        const QString question =
            paramSetText(table, "FamilyMismatch", other.meta().family, mine.meta().family);
        if (MessageDlg(question, MsgDlgType::Confirmation, mbYesNo) != mrYes) return nullptr;
    }
    auto *dialog = new TParamCompareDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->m_view->setTable(table, undo);
    dialog->m_view->compare(mine, other, thisCaption, otherCaption);
    dialog->m_close->setText(paramViewText(table, "Close"));
    dialog->setWindowTitle(paramViewText(table, "CompareTitle"));
    dialog->m_view->setFocus(Qt::OtherFocusReason);
    paramviews::fitDialog(dialog);
    return dialog;
}

} // namespace drivewiz
