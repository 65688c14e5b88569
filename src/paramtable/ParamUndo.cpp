// Undo steps of parameter values and the undo stack of a wizard.

#include "paramtable/ParamUndo.h"

#include "paramtable/ParaTable.h"
#include "paramtable/ParamCheck.h"
#include "paramtable/ParamSet.h"
#include "paramtable/ParamTexts.h"

#include <QAction>
#include <QKeySequence>
#include <QUndoStack>

namespace drivewiz {

namespace {

QString refusalReason(const TParaTable &table, const ParamWrite &write)
{
    if (!write.key.isValid()) return paramSetText(&table, "RefusedUnknown");
    if (write.answer == 'V') return paramSetText(&table, "RefusedEnable");
    return paramSetText(&table, "RefusedHost", write.answerText());
}

} // namespace

// --- one step ---------------------------------------------------------------------------------

ParamValueCommand::ParamValueCommand(TParaTable *table, QList<ParamChange> changes,
                                     const QString &text, bool done, QUndoCommand *parent)
    : QUndoCommand(text, parent), m_table(table), m_changes(std::move(changes)), m_skipRedo(done)
{}

void ParamValueCommand::report() const
{
    if (m_owner && !m_last.complete()) Q_EMIT m_owner->stepIncomplete(m_last);
}

// The values are the table's own from before: only whether the parameter may be
// written now is checked.
ApplyResult ParamValueCommand::writeAll(bool newValues)
{
    if (!m_table) return ApplyResult();
    QList<ParamChange> values;
    values.reserve(m_changes.size());
    for (const ParamChange &c : std::as_const(m_changes))
        values << ParamChange{c.key, QString(), newValues ? c.newValue : c.oldValue};
    // Undone in reverse order, so that a step that wrote one parameter twice ends right.
    if (!newValues) std::reverse(values.begin(), values.end());
    return ParamUndoStack::writeChanges(*m_table, values,
                                        newValues ? WriteOrigin::Redo : WriteOrigin::Undo, false);
}

void ParamValueCommand::undo()
{
    m_last = writeAll(false);
    report();
}

void ParamValueCommand::redo()
{
    if (m_skipRedo) {
        m_skipRedo = false;
        return;
    }
    m_last = writeAll(true);
    report();
}

// --- the stack ----------------------------------------------------------------------------------

ParamUndoStack::ParamUndoStack(TParaTable *table, QObject *parent)
    : QObject(parent), m_table(table), m_stack(new QUndoStack(this))
{
    if (table) connect(table, &TParaTable::valueWritten, this, &ParamUndoStack::onWrite);
}

ParamUndoStack::~ParamUndoStack() = default;

// A value typed into a control is written already: the step only remembers it.
void ParamUndoStack::onWrite(const ParamWrite &write)
{
    if (write.origin != WriteOrigin::Typed || !write.accepted() || !m_table || m_table->Busy() ||
        write.oldValue == write.newValue || !write.key.isValid())
        return;
    push(new ParamValueCommand(m_table, {ParamChange{write.key, write.oldValue, write.newValue}},
                               paramSetText(m_table, "StepTyped", write.key.text()), true));
}

QAction *ParamUndoStack::createUndoAction(QObject *parent) const
{
    QAction *a = m_stack->createUndoAction(parent, paramSetText(m_table, "Undo"));
    a->setShortcuts(QKeySequence::Undo);
    return a;
}

QAction *ParamUndoStack::createRedoAction(QObject *parent) const
{
    QAction *a = m_stack->createRedoAction(parent, paramSetText(m_table, "Redo"));
    QList<QKeySequence> keys = QKeySequence::keyBindings(QKeySequence::Redo);
    if (!keys.contains(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)))
        keys << QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    a->setShortcuts(keys);
    return a;
}

ApplyResult ParamUndoStack::writeChanges(TParaTable &table, const QList<ParamChange> &changes,
                                         WriteOrigin origin, bool check,
                                         QList<ParamChange> *written)
{
    ApplyResult result;
    const QPointer<TParaTable> guard = &table; // a host answering may free it
    for (const ParamChange &c : changes) {
        if (!guard || table.HostDetached()) break;
        const int row = table.FindKey(c.key);
        if (row < 0) {
            result.unknown << c.key;
            continue;
        }
        const ParamValueCheck checked = CheckParamValue(table, row, c.newValue, check);
        if (!checked.writable()) {
            result.refused << ApplyRefusal{c.key, c.newValue, checked.reason};
            continue;
        }
        if (checked.outcome == ParamValueCheck::Limited)
            result.limited << ApplyRefusal{c.key, c.newValue, checked.reason};
        const ParamWrite w = table.WriteValue(c.key, checked.value, origin);
        if (!w.key.isValid() || !w.accepted()) {
            result.refused << ApplyRefusal{c.key, checked.value, refusalReason(table, w)};
            continue;
        }
        ++result.written;
        if (written) *written << ParamChange{w.key, w.oldValue, w.newValue};
    }
    return result;
}

void ParamUndoStack::push(ParamValueCommand *command)
{
    command->m_owner = this;
    m_stack->push(command);
}

ApplyResult ParamUndoStack::step(const QList<ParamChange> &changes, WriteOrigin origin,
                                 const QString &text, bool check, QList<ParamChange> *written)
{
    if (!m_table) return ApplyResult();
    QList<ParamChange> done;
    const ApplyResult result = writeChanges(*m_table, changes, origin, check, &done);
    if (!done.isEmpty() && m_table) push(new ParamValueCommand(m_table, done, text, true));
    if (written) *written = done;
    return result;
}

ApplyResult ParamUndoStack::writeValues(const QList<ParamChange> &changes, WriteOrigin origin,
                                        const QString &text, QList<ParamChange> *written)
{
    return step(changes, origin, text, true, written);
}

ApplyResult ParamUndoStack::reset(const ParamKey &key)
{
    if (!m_table) return ApplyResult();
    const int row = m_table->FindKey(key);
    if (row < 0) {
        ApplyResult r;
        r.unknown << key;
        return r;
    }
    const QString value = m_table->Cell(row, QStringLiteral("Defaultwert"));
    return writeValues({ParamChange{key, QString(), value}}, WriteOrigin::Reset,
                       paramSetText(m_table, "StepReset", key.text()));
}

ApplyResult ParamUndoStack::revert(const ParamKey &key, const ParamSet &opening)
{
    if (!m_table) return ApplyResult();
    const ParamSet::Entry *e = opening.find(key);
    if (!e) {
        ApplyResult r;
        r.unknown << key;
        return r;
    }
    // The value at opening was the table's own: it goes back as it was.
    return step({ParamChange{key, QString(), e->value}}, WriteOrigin::Revert,
                paramSetText(m_table, "StepRevert", key.text()), false, nullptr);
}

void ParamUndoStack::undo()
{
    m_stack->undo();
}

void ParamUndoStack::redo()
{
    m_stack->redo();
}

bool ParamUndoStack::canUndo() const
{
    return m_stack->canUndo();
}

bool ParamUndoStack::canRedo() const
{
    return m_stack->canRedo();
}

void ParamUndoStack::clear()
{
    m_stack->clear();
}

} // namespace drivewiz
