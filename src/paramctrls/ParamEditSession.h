#ifndef DRIVEWIZ_PARAMCTRLS_PARAMEDITSESSION_H
#define DRIVEWIZ_PARAMCTRLS_PARAMEDITSESSION_H

#include "drivewiz_global.h"
#include "paramtable/ParamWrite.h"

#include <QObject>
#include <QPointer>

class QAction;
class QLabel;
class QMenu;
class QWidget;

namespace drivewiz {

class ParamChanges;
class ParamJournal;
class ParamUndoStack;
class TParaClass;
class TParaTable;

/// What a wizard's form gets for editing its parameters: one undo stack (with undo and
/// redo on Ctrl+Z, Ctrl+Shift+Z and the platform's keys), the values at opening with a
/// mark on every control whose value differs from them (beside its coordinate, and in
/// its accessible description), a context menu on every parameter control (reset to
/// default, revert to the value at opening, copy and paste the value, each one undo
/// step) and, when asked for, the journal of its writes.
///
/// The session is a child of the form; a form has at most one (find()). Create it once the
/// form's values are read (it takes them as the values at opening).
///
/// Undo keys while typing: a line edit whose text differs from what it showed when it got
/// the focus keeps Ctrl+Z and Ctrl+Shift+Z for its own typing; otherwise they are the
/// wizard's undo and redo.
class DRIVEWIZ_EXPORT ParamEditSession : public QObject
{
    Q_OBJECT

public:
    /// Object name of the change mark beside a control's coordinate.
    static const char *const MarkName;

    /// Starts a session on `form` for `table`; an existing one is returned as it is.
    /// With `journal` the writes are journalled into the wizard's journal file (or into
    /// `journalFile` when given).
    static ParamEditSession *install(QWidget *form, TParaTable *table, bool journal = false,
                                     const QString &journalFile = QString());
    /// The session of the form `widget` is on, or null.
    static ParamEditSession *find(const QWidget *widget);

    ~ParamEditSession() override;

    TParaTable *table() const;
    QWidget *form() const;
    ParamUndoStack *undo() const { return m_undo; }
    ParamChanges *changes() const { return m_changes; }
    ParamJournal *journal() const { return m_journal; }
    /// The form's undo and redo actions (with their keys).
    QAction *undoAction() const { return m_undoAction; }
    QAction *redoAction() const { return m_redoAction; }

    static ParamKey keyOf(const TParaClass *control);
    /// Whether the control shows its change mark.
    static bool isMarked(const TParaClass *control);
    /// The changed parameters among those of the controls below `container` (a page).
    int changedCount(const QWidget *container) const;
    /// Lines for the OK question: "B33 Name: 5 -> 7", at most `max` lines, then "... and n
    /// more"; empty when nothing changed.
    QString changedSummary(int max = 10) const;

    /// Builds the context menu of a control (also what the menu key opens).
    QMenu *createContextMenu(TParaClass *control, QWidget *parent);
    ApplyResult resetToDefault(TParaClass *control);
    ApplyResult revertToOpening(TParaClass *control);
    void copyValue(const TParaClass *control) const;
    /// Writes the clipboard's first line as the control's value (checked as typed).
    ApplyResult pasteValue(TParaClass *control);
    /// Drops the undo steps (the wizard was cancelled).
    void discard();
    /// Takes the current values as the values at opening again (e.g. after saving).
    void restart();
    /// Looks at the form's controls again (after controls were added).
    void watchControls();

Q_SIGNALS:
    /// The set of changed values changed (for counts).
    void changesChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ParamEditSession(QWidget *form, TParaTable *table, bool journal, const QString &journalFile);
    void watch(QObject *object);
    void updateMarks(const ParamKey &key);
    void updateMark(TParaClass *control);
    static void placeMark(QLabel *mark, const TParaClass *control);
    bool shortcutOverride(QObject *watched, QEvent *event);
    void rememberFocusText();
    void recheckStep(int index);
    bool contextMenu(QObject *watched, QEvent *event);
    void report(const ApplyResult &result) const;
    TParaClass *controlOf(QObject *object) const;

    QPointer<TParaTable> m_table;
    QPointer<QWidget> m_form;
    ParamUndoStack *m_undo = nullptr;
    ParamChanges *m_changes = nullptr;
    ParamJournal *m_journal = nullptr;
    QAction *m_undoAction = nullptr;
    QAction *m_redoAction = nullptr;
};

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMCTRLS_PARAMEDITSESSION_H
