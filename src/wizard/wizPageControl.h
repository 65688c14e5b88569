#ifndef DRIVEWIZ_WIZARD_WIZPAGECONTROL_H
#define DRIVEWIZ_WIZARD_WIZPAGECONTROL_H

#include "drivewiz_global.h"
#include "platform/colors.h"
#include "platform/component.h"

#include <QFont>
#include <QPointer>
#include <QTabWidget>
#include <QTreeWidget>

#include <functional>

class QAbstractButton;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace drivewiz {

class MessageWindow;

namespace pagectl {
struct ButtonRow;
}
class TParaClass;
class TParaTable;
class TwizButton;
class TwizTreeView;

/// Object name of the title label of page n: "Lbl_" + n.
DRIVEWIZ_EXPORT QString GetLblTabSheetCaptionName(int n);
/// Object name of a bevel of page n: prefix ("O" upper, "U" lower) + n + "Bevel_".
DRIVEWIZ_EXPORT QString GetBevelTabSheetName(const QString &prefix, int n);
/// Object name of the next button of page n: "BtnNext_" + n.
DRIVEWIZ_EXPORT QString GetBtnNextName(int n);

/// Whether parameter controls may show status words: when the table is not online or
/// its user level is below 2. True without a table.
DRIVEWIZ_EXPORT bool VisibilityStatusWords(const TParaTable *table);
/// Whether parameter controls may show control words: when the user level is below 2.
/// True without a table.
DRIVEWIZ_EXPORT bool VisibilityControlWords(const TParaTable *table);

/// The page control of a wizard form: it leads the user through the pages one by one.
///
/// Pages are the tab pages; a page whose dynamic property "Tag" (read as int) is 1 is
/// hidden from the wizard: left out of the tree and skipped by next and back. Any other
/// Tag shows the page, and a change of a Tag updates the tree and the buttons at once.
/// At run time the tabs are always hidden; the tree (wizTreeView) and the buttons are the
/// navigation.
///
/// Every page gets a title label "Lbl_n" (the tab text in wizTitleLblFont), an upper
/// bevel "OnBevel_" under it, a lower bevel "UnBevel_" above the button row and, while a
/// back button is linked, a next button "BtnNext_n" right of where the back button
/// stands (not on the last page; shown only when a shown page follows). Linking the back
/// button also creates "BtnOK" (SaveAndClose) and "BtnCancel" (CancelWizard) beside the
/// page control's right edge; unlinking it removes the next, OK and Cancel buttons.
///
/// Loaded() also puts on the page control's parent a search field "EdSearch" with its
/// button "BtnSearch" at the top right, in the row of the page titles, and the online
/// indicator "PnlOnline" left of them; it watches the form's show, close and keys.
///
/// Links to other components (tree, back button, table) are object names when set from
/// a form file, resolved in Loaded(); the pointer setters link at once.
///
/// Choices of ours (details in docs/wizard.md): the wizard starts on the first shown
/// page; the search skips
/// hits on hidden pages; Escape and Enter are previewed for the focused widget of the
/// form (Enter on a focused push button presses it); OK on a QDialog form accept()s, any
/// other close goes through close() and the form's property "ModalResult"; the stored
/// form size is the client size at 96 pixels per inch, limited to the screen on restore.
class DRIVEWIZ_EXPORT TwizPageControl : public QTabWidget, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizTreeView READ wizTreeViewName WRITE SetwizTreeViewName)
    Q_PROPERTY(QString wizBtnBack READ wizBtnBackName WRITE SetBtnBackName)
    Q_PROPERTY(bool wizTabVisible READ wizTabVisible WRITE SetwizTabVisible)
    Q_PROPERTY(QFont wizTitleLblFont READ wizTitleLblFont WRITE SetwizTitleLblFont)
    /// The colour of the page titles (a TColor); navy by default.
    Q_PROPERTY(int wizTitleLblColor READ wizTitleLblColor WRITE SetwizTitleLblColor)
    Q_PROPERTY(int wizTitleLeft READ wizTitleLeft WRITE SetwizTitleLeft)
    Q_PROPERTY(int wizTitleTop READ wizTitleTop WRITE SetwizTitleTop)
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)

public:
    using NotifyEvent = std::function<void(QObject *sender)>;
    /// Kinds of the buttons NewButton() makes.
    enum TButtonKind { bkOK, bkCancel };

    explicit TwizPageControl(QWidget *parent = nullptr);
    ~TwizPageControl() override;

    // --- published properties ------------------------------------------------------------
    TwizTreeView *wizTreeView() const;
    void SetwizTreeView(TwizTreeView *tree);
    QString wizTreeViewName() const;
    void SetwizTreeViewName(const QString &objectName);
    QAbstractButton *wizBtnBack() const;
    void SetBtnBack(QAbstractButton *button);
    QString wizBtnBackName() const;
    void SetBtnBackName(const QString &objectName);
    bool wizTabVisible() const { return m_tabVisible; }
    /// Stored; the tabs show it only while designing and are hidden at run time.
    void SetwizTabVisible(bool visible);
    QFont wizTitleLblFont() const { return m_titleFont; }
    void SetwizTitleLblFont(const QFont &font);
    TColor wizTitleLblColor() const { return m_titleColor; }
    void SetwizTitleLblColor(TColor color);
    int wizTitleLeft() const { return m_titleLeft; }
    void SetwizTitleLeft(int left);
    int wizTitleTop() const { return m_titleTop; }
    void SetwizTitleTop(int top);
    TParaTable *wizParaSource() const;
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);
    quint16 wizId() const { return m_wizId; }
    void SetwizId(quint16 id) { m_wizId = id; }

    /// Called before the values are saved by OK (the table is busy meanwhile).
    NotifyEvent OnBeforeSave;
    /// Called on every change of the active page, after the tree has followed.
    NotifyEvent OnChange;

    // --- pages and navigation -------------------------------------------------------------
    /// Whether a page is shown in the wizard (its "Tag" is not 1).
    static bool PageShown(const QWidget *page);
    /// The first page whose tab text equals `caption` exactly, or null.
    QWidget *FindTabSheet(const QString &caption) const;
    /// Makes the page active: the tree follows, its controls are registered for online
    /// updates, its next button shows only when a shown page follows, and the back
    /// button shows (enabled) unless the page is the first one (index 0).
    void MoveTo(QWidget *page);
    /// The next shown page after `page`, if any (no wrap-around).
    void MoveNext(QWidget *page);
    /// The previous shown page before `page`, if any (no wrap-around).
    void MoveBack(QWidget *page);
    /// Builds or refreshes titles, bevels and next buttons of all pages, then places OK
    /// and Cancel and updates the tree (rebuilt only when asked for, or while designing).
    Q_INVOKABLE void UpdateTabLabels();
    /// Refills the tree with the shown pages when `force` or a rebuild is pending.
    void UpdateTreeView(bool force);
    /// Selects the active page's node without moving pages; reports pages that share the
    /// active page's caption while a language file is open.
    void UpdateTreeSelection();
    /// Refreshes the pages after the host changed them.
    void UpdateActivePage();
    /// Places OK and Cancel in the back button's row at the right edge (OK rightmost);
    /// without a back button they are removed.
    void UpdateBtnPosition();
    /// Makes (or reuses) a button on the page control's parent: width of the back button,
    /// not default, named, with caption and the kind's icon.
    TwizButton *NewButton(TwizButton *button, TButtonKind kind, const QString &caption,
                          const QString &name);
    /// Reloads the captions and hints of the buttons from the common strings, then the
    /// form's own texts (section wizIdString of the table's language file), and lets
    /// titles, tree and online indicator follow. Runs on every QEvent::LanguageChange.
    void UpdateLanguage();
    void Loaded() override;

    // --- search, save and cancel ----------------------------------------------------------
    QLineEdit *SearchEdit() const;
    QPushButton *SearchButton() const;
    /// The online indicator; its colour is OnlinePanelColor().
    QLabel *OnlinePanel() const;
    TColor OnlinePanelColor() const { return m_panelColor; }
    TwizButton *BtnOK() const;
    TwizButton *BtnCancel() const;
    /// The hidden parameter control "fP_E48" the online indicator reads.
    TParaClass *E48Control() const;
    QTimer *OnlineTimer() const { return m_onlineTimer; }
    bool Saved() const { return m_saved; }
    void SetBtnCalcelVisible(bool visible);
    bool GetBtnCalcelVisible() const;
    /// The pause between the colours of a flashing hit, 200 ms by default (0 in tests).
    void SetFlashDelay(int milliseconds) { m_flashDelay = milliseconds; }
    /// A character typed into the search field: Enter (13) searches and is swallowed
    /// (set to a null character).
    void SearchKeyPress(QObject *sender, QChar &key);
    /// The form's key preview: Escape and Enter as the wizard handles them. Returns true
    /// when the key was used. Acts only while the Cancel button exists.
    bool OnFormKeyPress(QKeyEvent *event);
    /// The close question and clean-up; false when the user keeps the wizard open.
    bool MyOnClose();
    /// Restores the form's size from wiz.cfg, scaled from 96 pixels per inch.
    void MyOnShow();

    /// What the pages need: every page's parts inside the page area. A wizard's form is
    /// laid out by hand, so this is what a host or Designer may ask when it sizes one.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

    /// The result a closed form carries in its property "ModalResult" (a ModalResult).
    static const char *const ModalResultProperty;

public Q_SLOTS:
    void BtnMoveNextClick();
    void BtnMoveBackClick();
    /// Finds the next hit of the search text; see docs/wizard.md.
    void SearchBtnClick();
    void SearchEditChange();
    /// OK: saves (offline: all parameters) and closes with result OK.
    void SaveAndClose();
    /// Cancel: closes the form (which asks while offline and unsaved).
    void CancelWizard();
    /// Shows the online indicator for the table's mode and the buttons that fit it.
    void CheckOnlineMode();
    /// The table's online mode changed.
    void OnlineChangeMsg();
    /// One blink of the online indicator (the 500 ms timer calls it).
    void OnTimerOnline();

Q_SIGNALS:
    /// OK is saving: emitted after OnBeforeSave, while the table is busy and before the
    /// values are written.
    void beforeSave();
    /// Another page became active (after the tree followed); emitted after OnChange.
    void pageChanged(int index);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void tabInserted(int index) override;
    void tabRemoved(int index) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Change();
    void Resize();
    bool searchKey(QKeyEvent *event);
    QWidget *buttonHost();
    QRect pageArea() const;
    QPoint backInPage() const;
    QRect rectInHost() const;
    void updatePage(int n);
    void placeTitle(QLabel *title);
    QSize buttonSize() const;
    pagectl::ButtonRow buttonRow() const;
    void placePanel();
    void updateNextButton(int n);
    void updateBackButton();
    bool shownAfter(int index) const;
    void applyTabVisible();
    void applyBackButton();
    void linkLoneTreeView();
    void renameParts(QWidget *page, int from, int to);
    void createFormParts();
    void placeSearch();
    void setPanelColor(TColor color);
    void updateOkHint();
    QString duplicateMessage(const QString &caption) const;
    void presentHit(QWidget *hit, QWidget *rep);
    void flash(QWidget *w, QPalette::ColorRole role, const QList<QColor> &colors);
    void closeForm(int result);
    void commitFocusedControl();
    void watchForm();
    void storeFormSize();

    QPointer<TwizTreeView> m_tree;
    QString m_treeName;
    QPointer<QAbstractButton> m_btnBack;
    QString m_btnBackName;
    QPointer<TParaTable> m_table;
    QString m_tableName;
    bool m_tabVisible = true;
    QFont m_titleFont;
    TColor m_titleColor = clNavy;
    int m_titleLeft = 0;
    int m_titleTop = 0;
    quint16 m_wizId = 0;

    QPointer<TwizButton> m_btnOK;
    QPointer<TwizButton> m_btnCancel;
    QPointer<QLineEdit> m_searchEdit;
    QPointer<QPushButton> m_searchBtn;
    QPointer<QLabel> m_onlinePanel;
    QRect m_panelRoom; // in the button row, between next and OK
    TColor m_panelColor = clBtnFace;
    QTimer *m_onlineTimer = nullptr;
    QPointer<TParaClass> m_e48;
    MessageWindow *m_msgWindow = nullptr;
    QObject *m_keyPreview = nullptr;
    QObject *m_clickKeeper = nullptr;
    QPointer<QWidget> m_form;

    bool m_loadedOnce = false;
    bool m_languagePending = false;
    bool m_rebuildTree = false;
    bool m_moving = false;
    bool m_saved = false;
    bool m_foundBefore = false;
    int m_hitsShown = 0;
    int m_flashDelay = 200;
};

/// The outline of a wizard: one node per shown page, in page order. Choosing a node moves
/// the page control to the first page with that caption.
class DRIVEWIZ_EXPORT TwizTreeView : public QTreeWidget, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizPageControl READ wizPageControlName WRITE SetwizPageControlName)

public:
    explicit TwizTreeView(QWidget *parent = nullptr);
    ~TwizTreeView() override;

    TwizPageControl *wizPageControl() const;
    /// Links both ways: the page control's wizTreeView becomes this tree.
    void SetwizPageControl(TwizPageControl *pageControl);
    QString wizPageControlName() const;
    void SetwizPageControlName(const QString &objectName);

    /// The first node (depth first) whose text equals `text`, or null.
    QTreeWidgetItem *FindNode(const QString &text) const;
    /// Moves the page control to the node's page unless it is active already.
    void UpdatePageSelection(QTreeWidgetItem *node);
    /// While set, selection changes are the page control's own and move nothing.
    bool Rebuilding() const { return m_rebuilding; }
    void SetRebuilding(bool on) { m_rebuilding = on; }
    void Loaded() override;

private:
    void Change(QTreeWidgetItem *node);

    QPointer<TwizPageControl> m_pageControl;
    QString m_pageControlName;
    bool m_rebuilding = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIZARD_WIZPAGECONTROL_H
