#ifndef DRIVEWIZ_PARAMTABLE_PARAMUNDO_H
#define DRIVEWIZ_PARAMTABLE_PARAMUNDO_H

#include "paramtable/ParamWrite.h"

#include <QObject>
#include <QPointer>
#include <QUndoCommand>

class QAction;
class QUndoStack;

namespace drivewiz {

class ParamSet;
class TParaTable;

/// One undo step: one or many values written together (a typed edit, a reset, a revert,
/// an Apply of many rows). Redo writes the new values, undo the old ones, both through
/// the table's write path: offline into the table, online posted to the drive (so an
/// undo online posts the old value).
class ParamUndoStack;

class DRIVEWIZ_EXPORT ParamValueCommand : public QUndoCommand
{
public:
    /// `done`: the values are written already (a typed edit): the first redo does
    /// nothing.
    ParamValueCommand(TParaTable *table, QList<ParamChange> changes, const QString &text, bool done,
                      QUndoCommand *parent = nullptr);

    void undo() override;
    void redo() override;

    const QList<ParamChange> &changes() const { return m_changes; }
    /// What the last undo or redo wrote (refused writes online, e.g. with the enable on).
    const ApplyResult &lastResult() const { return m_last; }

private:
    ApplyResult writeAll(bool newValues);

    void report() const;

    QPointer<TParaTable> m_table;
    QList<ParamChange> m_changes;
    bool m_skipRedo;
    ApplyResult m_last;
    friend class ParamUndoStack;
    QPointer<ParamUndoStack> m_owner;
};

/// The undo stack of one wizard. Every value typed into a control of its table becomes
/// a step by itself (the stack listens to the table's writes); reset, revert and Apply
/// go through here. Steps survive page changes; Cancel calls clear().
class DRIVEWIZ_EXPORT ParamUndoStack : public QObject
{
    Q_OBJECT

public:
    explicit ParamUndoStack(TParaTable *table, QObject *parent = nullptr);
    ~ParamUndoStack() override;

    QUndoStack *undoStack() const { return m_stack; }
    TParaTable *table() const { return m_table; }
    /// Undo and redo actions for the host's menus and the wizard (Ctrl+Z, Ctrl+Shift+Z and
    /// the platform's keys), captioned in the table's language.
    QAction *createUndoAction(QObject *parent) const;
    QAction *createRedoAction(QObject *parent) const;

    /// Writes new values as one step, each checked and limited as a typed value is.
    /// Values the table does not know or refuses are listed and not written; nothing
    /// is pushed when nothing was written.
    /// `written` receives the changes as written (old and new value).
    ApplyResult writeValues(const QList<ParamChange> &changes, WriteOrigin origin,
                            const QString &text, QList<ParamChange> *written = nullptr);
    /// The same without an undo step. With `check` false only writability is checked
    /// (the values are the table's own, as in undo). The old values of `changes` are not
    /// used: they are taken from the table.
    static ApplyResult writeChanges(TParaTable &table, const QList<ParamChange> &changes,
                                    WriteOrigin origin, bool check,
                                    QList<ParamChange> *written = nullptr);
    /// Resets a parameter to its default ("Defaultwert").
    ApplyResult reset(const ParamKey &key);
    /// Puts a parameter back to its value in `opening`.
    ApplyResult revert(const ParamKey &key, const ParamSet &opening);

    void undo();
    void redo();
    bool canUndo() const;
    bool canRedo() const;
    /// Drops every step (the wizard was cancelled).
    void clear();

Q_SIGNALS:
    /// An undo or redo could not write everything (online, the drive refused).
    void stepIncomplete(const drivewiz::ApplyResult &result);

private:
    void onWrite(const ParamWrite &write);
    ApplyResult step(const QList<ParamChange> &changes, WriteOrigin origin, const QString &text,
                     bool check, QList<ParamChange> *written);
    void push(ParamValueCommand *command);

    QPointer<TParaTable> m_table;
    QUndoStack *m_stack;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARAMUNDO_H
