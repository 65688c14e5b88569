#ifndef DRIVEWIZ_WIZARD_PARAMCOMPAREVIEW_H
#define DRIVEWIZ_WIZARD_PARAMCOMPAREVIEW_H

#include "paramtable/ParamCompare.h"

#include <QDialog>
#include <QPointer>
#include <QWidget>

#include <functional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableView;

namespace drivewiz {

class ParamUndoStack;
class TParaTable;

/// Two parameter sets side by side (a ParamCompare behind a ParamCompareFilter): a tick
/// box per row, "only differences", a search field, counts, and Apply, which writes the
/// ticked values as one undo step and lists in its result box every value that was
/// refused or limited and every coordinate the table does not know, with the reason.
///
/// Keys: the arrows move in the list, Space ticks or unticks the current row, Enter
/// applies (from the list, the search field and the check box), Escape is the dialog's.
/// Child object names: "ChkOnlyDifferences", "EdCompareSearch", "TblCompare",
/// "LblCompareCounts", "LblCompareNote", "BtnApply", "BtnTickAll", "BtnTickNone",
/// "MemCompareResult".
class DRIVEWIZ_EXPORT TParamCompareView : public QWidget
{
    Q_OBJECT

public:
    explicit TParamCompareView(QWidget *parent = nullptr);
    ~TParamCompareView() override;

    /// The table Apply writes into (and whose language the texts follow) and its undo
    /// stack (none: no undo step).
    void setTable(TParaTable *table, ParamUndoStack *undo = nullptr);
    TParaTable *table() const;
    /// Shows `mine` (this side) against `other`, with the captions of the value columns.
    void compare(const ParamSet &mine, const ParamSet &other, const QString &thisCaption = {},
                 const QString &otherCaption = {});
    /// Which side Apply writes (the other side's values by default).
    void setApplySide(ParamCompare::ApplySide side) { m_side = side; }
    ParamCompare::ApplySide applySide() const { return m_side; }
    /// A line above the list (empty: none).
    void setNote(const QString &note);

    ParamCompare *model() const { return m_model; }
    ParamCompareFilter *filter() const { return m_filter; }
    QTableView *tableView() const { return m_view; }
    QLineEdit *searchEdit() const { return m_search; }
    QCheckBox *onlyDifferencesBox() const { return m_only; }
    QPushButton *applyButton() const { return m_apply; }
    QPlainTextEdit *resultBox() const { return m_result; }
    QLabel *countsLabel() const { return m_counts; }
    /// The text of the last Apply's result (also shown in the result box).
    QString resultText() const;
    /// Whether Apply ran at least once.
    bool applied() const { return m_applied; }

    /// Ticks or unticks the current row of the list.
    void toggleCurrent();
    /// Writes the ticked rows; the result box lists what was not written.
    ApplyResult apply();
    /// The texts again in the table's language.
    void retranslate();

    QSize sizeHint() const override;

Q_SIGNALS:
    /// Apply ran; `result` says what was written.
    void appliedValues(const drivewiz::ApplyResult &result);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void updateCounts();
    void showResult(const ApplyResult &result);
    void fitColumns();

    QPointer<TParaTable> m_table;
    QPointer<ParamUndoStack> m_undo;
    ParamCompare *m_model = nullptr;
    ParamCompareFilter *m_filter = nullptr;
    QCheckBox *m_only = nullptr;
    QLabel *m_searchLabel = nullptr;
    QLineEdit *m_search = nullptr;
    QLabel *m_note = nullptr;
    QTableView *m_view = nullptr;
    QLabel *m_counts = nullptr;
    QPushButton *m_tickAll = nullptr;
    QPushButton *m_tickNone = nullptr;
    QPushButton *m_apply = nullptr;
    QPlainTextEdit *m_result = nullptr;
    ParamCompare::ApplySide m_side = ParamCompare::ApplySide::Other;
    bool m_applied = false;
};

/// The compare view in a dialog with a Close button ("BtnCompareClose"); Escape closes
/// it. Open it with show() or open(): it never blocks its caller.
class DRIVEWIZ_EXPORT TParamCompareDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TParamCompareDialog(QWidget *parent = nullptr);

    TParamCompareView *view() const { return m_view; }

    /// Makes a dialog comparing `mine` with `other` for `table`. When both sets name a
    /// drive family and they differ, the user is asked first; on "no" nothing is made and
    /// null is returned. The dialog deletes itself when closed; it is not shown yet.
    static TParamCompareDialog *create(QWidget *parent, TParaTable *table, ParamUndoStack *undo,
                                       const ParamSet &mine, const ParamSet &other,
                                       const QString &thisCaption, const QString &otherCaption);

private:
    TParamCompareView *m_view;
    QPushButton *m_close;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIZARD_PARAMCOMPAREVIEW_H
