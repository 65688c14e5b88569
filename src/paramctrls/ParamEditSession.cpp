// One wizard form's editing: undo steps, change marks, the controls' context menu and the
// journal, put together over the table layer's parts.

#include "paramctrls/ParamEditSession.h"

#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamViewTexts.h"
#include "paramtable/ParaTable.h"
#include "paramtable/ParamChanges.h"
#include "paramtable/ParamJournal.h"
#include "paramtable/ParamTexts.h"
#include "paramtable/ParamUndo.h"
#include "platform/dialogs.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QUndoStack>

#include <algorithm>

namespace drivewiz {

const char *const ParamEditSession::MarkName = "LblChanged";

namespace {

// What a line edit showed when it got the focus: while its text differs, the user is
// typing there, and Ctrl+Z is the edit's own.
const char *const kFocusText = "drivewizFocusText";

QString shown(const TParaTable *table, const QString &value)
{
    return value.isEmpty() ? paramViewText(table, "Empty") : value;
}

} // namespace

ParamEditSession::ParamEditSession(QWidget *form, TParaTable *table, bool journal,
                                   const QString &journalFile)
    : QObject(form), m_table(table), m_form(form)
{
    setObjectName(QStringLiteral("ParamEditSession"));
    m_undo = new ParamUndoStack(table, this);
    m_changes = new ParamChanges(table, this);
    if (journal) m_journal = new ParamJournal(table, journalFile, this);
    m_changes->takeOpeningValues();
    connect(m_changes, &ParamChanges::changedStateChanged, this,
            [this](const ParamKey &key, bool) { updateMarks(key); });
    connect(m_changes, &ParamChanges::changesChanged, this, &ParamEditSession::changesChanged);

    m_undoAction = m_undo->createUndoAction(this);
    m_redoAction = m_undo->createRedoAction(this);
    for (QAction *a : {m_undoAction, m_redoAction}) {
        a->setShortcutContext(Qt::WindowShortcut);
        form->addAction(a);
    }
    m_undoAction->setObjectName(QStringLiteral("ActUndo"));
    m_redoAction->setObjectName(QStringLiteral("ActRedo"));
    watchControls();
    rememberFocusText();
    connect(m_undo->undoStack(), &QUndoStack::indexChanged, this, [this](int index) {
        recheckStep(index - 1);
        recheckStep(index);
        rememberFocusText();
    });
    // A value posted online is reported before the table stores it: look again once the
    // write is done.
    connect(table, &TParaTable::valueWritten, this, [this](const ParamWrite &w) {
        if (w.mode != omOnline) return;
        QMetaObject::invokeMethod(
            this, [this, key = w.key]() { m_changes->recheck(key); }, Qt::QueuedConnection);
    });
}

void ParamEditSession::recheckStep(int index)
{
    const QUndoStack *stack = m_undo->undoStack();
    if (index < 0 || index >= stack->count()) return;
    if (const auto *step = dynamic_cast<const ParamValueCommand *>(stack->command(index))) {
        for (const ParamChange &c : step->changes())
            m_changes->recheck(c.key);
    }
}

ParamEditSession::~ParamEditSession() = default;

TParaTable *ParamEditSession::table() const
{
    return m_table;
}

QWidget *ParamEditSession::form() const
{
    return m_form;
}

ParamEditSession *ParamEditSession::install(QWidget *form, TParaTable *table, bool journal,
                                            const QString &journalFile)
{
    if (!form || !table) return nullptr;
    form = form->window();
    if (ParamEditSession *existing = find(form)) return existing;
    return new ParamEditSession(form, table, journal, journalFile);
}

ParamEditSession *ParamEditSession::find(const QWidget *widget)
{
    if (!widget) return nullptr;
    return widget->window()->findChild<ParamEditSession *>(QString(), Qt::FindDirectChildrenOnly);
}

ParamKey ParamEditSession::keyOf(const TParaClass *control)
{
    return ParamKey(control->GetKoordinate(), control->Achse());
}

void ParamEditSession::watchControls()
{
    if (!m_form) return;
    const QList<TParaClass *> controls = m_form->findChildren<TParaClass *>();
    for (TParaClass *c : controls) {
        watch(c);
        for (QWidget *child : c->findChildren<QWidget *>())
            watch(child);
        if (c->property(MarkName).toBool()) continue;
        c->setProperty(MarkName, true);
        connect(c, &TParaClass::valueChanged, this, [this, c]() { updateMark(c); });
        updateMark(c);
    }
}

void ParamEditSession::watch(QObject *object)
{
    object->removeEventFilter(this); // never twice
    object->installEventFilter(this);
}

// --- marks -----------------------------------------------------------------------------------

void ParamEditSession::updateMarks(const ParamKey &key)
{
    if (!m_form) return;
    for (TParaClass *c : m_form->findChildren<TParaClass *>()) {
        if (keyOf(c) == key) updateMark(c);
    }
}

void ParamEditSession::updateMark(TParaClass *control)
{
    const ParamKey key = keyOf(control);
    const bool changed = key.isValid() && m_changes->isChanged(key);
    auto *mark = control->findChild<QLabel *>(QLatin1String(MarkName), Qt::FindDirectChildrenOnly);
    if (!changed && !mark) return;
    if (!mark) {
        mark = new QLabel(control);
        mark->setObjectName(QLatin1String(MarkName));
    }
    placeMark(mark, control);
    const QString opening = shown(m_table, m_changes->openingValue(key));
    mark->setToolTip(paramViewText(m_table, "ChangedTip", opening));
    mark->setAccessibleName(mark->toolTip());
    mark->setVisible(changed);
    mark->raise();
    const QString range = control->RangeText();
    QString description = range;
    if (changed) {
        const QString note = paramViewText(m_table, "ChangedMark", opening);
        description = range.isEmpty() ? note : range + QStringLiteral("; ") + note;
    }
    control->setAccessibleDescription(description);
    if (QWidget *input = control->GetEditControl()) input->setAccessibleDescription(description);
}

// A dot in the highlight colour in the gap between the coordinate and the name, half as
// high as the coordinate's font where the gap allows, at the middle of its small letters;
// the layout leaves at least a blank and two pixels there, at any font size.
void ParamEditSession::placeMark(QLabel *mark, const TParaClass *control)
{
    const QLabel *label = control->koordinateLabel();
    if (!label) return;
    const QFontMetrics fm(label->font());
    const int textEnd = label->x() + fm.horizontalAdvance(label->text());
    const int gap =
        control->paraNameLabel() ? control->paraNameLabel()->x() - textEnd : fm.height();
    const int d = std::clamp(fm.height() / 2, 5, std::max(5, gap - 2));
    const QColor color = control->palette().color(QPalette::Highlight).darker(120);
    mark->setStyleSheet(
        QStringLiteral("background-color: %1; border-radius: %2px;").arg(color.name()).arg(d / 2));
    mark->setFixedSize(d, d);
    const int baseline = label->y() + (label->height() - fm.height()) / 2 + fm.ascent();
    mark->move(textEnd + std::max(0, (gap - d) / 2), baseline - fm.xHeight() / 2 - d / 2);
}

bool ParamEditSession::isMarked(const TParaClass *control)
{
    const auto *mark =
        control->findChild<QLabel *>(QLatin1String(MarkName), Qt::FindDirectChildrenOnly);
    return mark && !mark->isHidden();
}

int ParamEditSession::changedCount(const QWidget *container) const
{
    QList<ParamKey> keys;
    for (const TParaClass *c : container->findChildren<TParaClass *>()) {
        const ParamKey key = keyOf(c);
        if (key.isValid() && !keys.contains(key)) keys << key;
    }
    return keys.isEmpty() ? 0 : m_changes->changedCount(keys);
}

QString ParamEditSession::changedSummary(int max) const
{
    const QList<ParamKey> changed = m_changes->changed();
    if (changed.isEmpty() || !m_table) return QString();
    QStringList lines{paramViewText(m_table, "OkChanged", QString::number(changed.size()))};
    for (int i = 0; i < changed.size() && i < max; ++i) {
        const ParamKey &key = changed.at(i);
        const int row = m_table->FindKey(key);
        const QString now = row >= 0 ? m_table->Cell(row, QStringLiteral("Wert")) : QString();
        lines << QStringLiteral("%1: %2 -> %3")
                     .arg(key.text(), shown(m_table, m_changes->openingValue(key)),
                          shown(m_table, now));
    }
    if (changed.size() > max)
        lines << paramViewText(m_table, "OkMore", QString::number(changed.size() - max));
    return lines.join(QLatin1Char('\n'));
}

// --- context menu ------------------------------------------------------------------------------

QMenu *ParamEditSession::createContextMenu(TParaClass *control, QWidget *parent)
{
    auto *menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("MnuParam"));
    const QPointer<TParaClass> c = control;
    const ParamKey key = keyOf(control);
    const bool writable = control->GetEnabled() == pEnabled;
    QAction *reset = menu->addAction(
        paramViewText(m_table, "MenuReset", shown(m_table, control->DefaultValue())), this,
        [this, c]() {
            if (c) report(resetToDefault(c));
        });
    reset->setObjectName(QStringLiteral("ActReset"));
    reset->setEnabled(writable && control->GetText() != control->DefaultValue());
    QAction *revert = menu->addAction(
        paramViewText(m_table, "MenuRevert", shown(m_table, m_changes->openingValue(key))), this,
        [this, c]() {
            if (c) report(revertToOpening(c));
        });
    revert->setObjectName(QStringLiteral("ActRevert"));
    revert->setEnabled(writable && m_changes->isChanged(key));
    menu->addSeparator();
    QAction *copy = menu->addAction(paramViewText(m_table, "MenuCopy"), this, [this, c]() {
        if (c) copyValue(c);
    });
    copy->setObjectName(QStringLiteral("ActCopy"));
    const QString clip =
        QGuiApplication::clipboard()->text().section(QLatin1Char('\n'), 0, 0).trimmed();
    QAction *paste =
        menu->addAction(paramViewText(m_table, "MenuPaste", clip.left(40)), this, [this, c]() {
            if (c) report(pasteValue(c));
        });
    paste->setObjectName(QStringLiteral("ActPaste"));
    paste->setEnabled(writable && !clip.isEmpty());
    return menu;
}

ApplyResult ParamEditSession::resetToDefault(TParaClass *control)
{
    return m_undo->reset(keyOf(control));
}

ApplyResult ParamEditSession::revertToOpening(TParaClass *control)
{
    return m_undo->revert(keyOf(control), m_changes->openingValues());
}

void ParamEditSession::copyValue(const TParaClass *control) const
{
    QGuiApplication::clipboard()->setText(control->GetText());
}

ApplyResult ParamEditSession::pasteValue(TParaClass *control)
{
    const QString text =
        QGuiApplication::clipboard()->text().section(QLatin1Char('\n'), 0, 0).trimmed();
    if (text.isEmpty()) return {};
    const ParamKey key = keyOf(control);
    // Written as an Apply: a typed write would become a second step by itself.
    return m_undo->writeValues({ParamChange{key, control->GetText(), text}}, WriteOrigin::Apply,
                               paramSetText(m_table, "StepTyped", key.text()));
}

// Nothing the user asked for fails silently: a refusal or a limit is said.
void ParamEditSession::report(const ApplyResult &result) const
{
    QStringList lines;
    for (const ApplyRefusal &r : result.refused)
        lines << paramViewText(m_table, "ResultLine", r.key.text(), r.value, r.reason);
    for (const ApplyRefusal &r : result.limited)
        lines << paramViewText(m_table, "ResultLine", r.key.text(), r.value, r.reason);
    for (const ParamKey &k : result.unknown)
        lines << paramViewText(m_table, "ResultLine", k.text(), QString(),
                               paramSetText(m_table, "RefusedUnknown"));
    if (!lines.isEmpty()) ShowMessage(lines.join(QLatin1Char('\n')));
}

void ParamEditSession::discard()
{
    m_undo->clear();
}

void ParamEditSession::restart()
{
    m_undo->clear();
    m_changes->takeOpeningValues();
    if (!m_form) return;
    for (TParaClass *c : m_form->findChildren<TParaClass *>())
        updateMark(c);
    Q_EMIT changesChanged();
}

// --- events ----------------------------------------------------------------------------------

TParaClass *ParamEditSession::controlOf(QObject *object) const
{
    for (QObject *o = object; o && o != m_form; o = o->parent()) {
        if (auto *c = qobject_cast<TParaClass *>(o)) return c;
    }
    return nullptr;
}

bool ParamEditSession::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ChildAdded: {
        // Controls rebuild their input fields (a mode or language change).
        QObject *child = static_cast<QChildEvent *>(event)->child();
        if (child->isWidgetType()) watch(child);
        break;
    }
    case QEvent::FocusIn:
        if (auto *edit = qobject_cast<QLineEdit *>(watched))
            edit->setProperty(kFocusText, edit->text());
        break;
    case QEvent::Resize:
        // The control placed its labels anew (a font, a language, a longer name).
        if (auto *c = qobject_cast<TParaClass *>(watched)) {
            if (auto *mark =
                    c->findChild<QLabel *>(QLatin1String(MarkName), Qt::FindDirectChildrenOnly))
                placeMark(mark, c);
        }
        break;
    case QEvent::ShortcutOverride:
        return shortcutOverride(watched, event);
    case QEvent::ContextMenu:
        return contextMenu(watched, event);
    default:
        break;
    }
    return false;
}

// A line edit claims Ctrl+Z for itself; it keeps it only while the user types there: its
// text differs from what it showed on entering, and it has steps of its own.
bool ParamEditSession::shortcutOverride(QObject *watched, QEvent *event)
{
    auto *edit = qobject_cast<QLineEdit *>(watched);
    if (!edit) return false;
    auto *key = static_cast<QKeyEvent *>(event);
    const bool undoKey = key->matches(QKeySequence::Undo);
    const bool redoKey = key->matches(QKeySequence::Redo) ||
                         key->keyCombination() ==
                             QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z);
    if (!undoKey && !redoKey) return false;
    const QVariant before = edit->property(kFocusText);
    const bool typing = before.isValid() && before.toString() != edit->text() &&
                        (edit->isUndoAvailable() || edit->isRedoAvailable());
    return !typing; // filtered, not accepted: the form's action gets the key
}

// The wizard's step changed the focused field's text: that is its value now, not typing.
void ParamEditSession::rememberFocusText()
{
    if (auto *edit = qobject_cast<QLineEdit *>(QApplication::focusWidget()))
        edit->setProperty(kFocusText, edit->text());
}

bool ParamEditSession::contextMenu(QObject *watched, QEvent *event)
{
    TParaClass *control = controlOf(watched);
    if (!control || !m_table || !keyOf(control).isValid()) return false;
    auto *e = static_cast<QContextMenuEvent *>(event);
    QMenu *menu = createContextMenu(control, control);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QPoint at = e->globalPos();
    if (e->reason() == QContextMenuEvent::Keyboard) {
        QWidget *w = control->GetEditControl() ? control->GetEditControl() : control;
        at = w->mapToGlobal(QPoint(0, w->height()));
    }
    menu->popup(at);
    return true;
}

} // namespace drivewiz
