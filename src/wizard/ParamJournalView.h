#ifndef DRIVEWIZ_WIZARD_PARAMJOURNALVIEW_H
#define DRIVEWIZ_WIZARD_PARAMJOURNALVIEW_H

#include "paramtable/ParamJournal.h"

#include <QDialog>
#include <QPointer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItemModel;
class QTableView;

namespace drivewiz {

class ParamUndoStack;
class TParaTable;

/// The journal of a wizard as a list: time, coordinate, old value, new value, origin,
/// mode, the host's answer; newest last. A filter by coordinate ("EdJournalFilter"),
/// counts ("LblJournalCount") and "back to here" ("BtnBackToHere"), which gives the
/// values from before the chosen line's moment. The list is "TblJournal".
class DRIVEWIZ_EXPORT TParamJournalView : public QWidget
{
    Q_OBJECT

public:
    enum Column {
        ColTime,
        ColKoordinate,
        ColOld,
        ColNew,
        ColOrigin,
        ColMode,
        ColAnswer,
        ColumnCount
    };

    explicit TParamJournalView(QWidget *parent = nullptr);
    ~TParamJournalView() override;

    /// The table whose language the texts follow.
    void setTable(const TParaTable *table);
    /// Shows what reading a journal gave.
    void setJournal(const ParamJournal::ReadResult &journal);
    const QList<ParamJournal::Entry> &entries() const { return m_entries; }
    /// Shows only lines whose coordinate contains `text` (case-insensitive).
    void setFilterText(const QString &text);
    /// Lines shown after the filter.
    int shownCount() const;
    /// The entry of the current line, or null.
    const ParamJournal::Entry *currentEntry() const;
    /// The values before the current line's moment (empty without a current line).
    ParamSet stateBeforeCurrent() const;
    QTableView *tableView() const { return m_view; }
    QLineEdit *filterEdit() const { return m_filter; }
    QPushButton *backButton() const { return m_back; }

    QSize sizeHint() const override;

Q_SIGNALS:
    /// "Back to here" on a line: `before` holds the values from before `moment`.
    void backToHere(const QDateTime &moment, const drivewiz::ParamSet &before);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void retranslate();
    void updateCount();
    void goBack();

    QPointer<const TParaTable> m_table;
    QList<ParamJournal::Entry> m_entries;
    int m_skipped = 0;
    QStandardItemModel *m_model = nullptr;
    QSortFilterProxyModel *m_proxy = nullptr;
    QLabel *m_filterLabel = nullptr;
    QLineEdit *m_filter = nullptr;
    QTableView *m_view = nullptr;
    QLabel *m_count = nullptr;
    QPushButton *m_back = nullptr;
};

/// The journal view in a dialog; "back to here" opens the compare view with the values
/// from before that moment against the table's (Apply writes them as one undo step).
class DRIVEWIZ_EXPORT TParamJournalDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TParamJournalDialog(QWidget *parent = nullptr);

    TParamJournalView *view() const { return m_view; }
    /// Makes a dialog on the journal of `table`'s wizard (deletes itself when closed;
    /// not shown yet).
    static TParamJournalDialog *create(QWidget *parent, TParaTable *table, ParamUndoStack *undo,
                                       const QString &fileName);
    /// The compare dialog the last "back to here" opened.
    QDialog *compareDialog() const { return m_compare; }

private:
    TParamJournalView *m_view;
    QPushButton *m_close;
    QPointer<TParaTable> m_table;
    QPointer<ParamUndoStack> m_undo;
    QPointer<QDialog> m_compare;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIZARD_PARAMJOURNALVIEW_H
