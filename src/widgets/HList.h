#ifndef DRIVEWIZ_WIDGETS_HLIST_H
#define DRIVEWIZ_WIDGETS_HLIST_H

// Most-recently-used lists (file names, search texts) kept in INI files and shown as
// numbered menu entries or as the drop-down list of a combo box.

#include "drivewiz_global.h"

#include <QComboBox>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

class QAction;

namespace drivewiz {

/// A most-recently-used list: newest first, at most MaxLen() entries, no two equal
/// (compared case-insensitively). The entries can be mirrored as numbered items "&1 ...",
/// "&2 ..." (the number is the accelerator) at the end of a menu, after a separator, and
/// in a pop-up menu; choosing one calls OnClick with the entry.
///
/// In an INI file the list is one section with the keys History0 (newest), History1 ...
class DRIVEWIZ_EXPORT THistoryList : public QObject
{
    Q_OBJECT

public:
    /// sender, chosen entry
    using TListMenuEvent = std::function<void(QObject *sender, const QString &text)>;

    explicit THistoryList(QObject *parent = nullptr);
    ~THistoryList() override;

    const QStringList &Strings() const { return m_items; }
    int Count() const { return int(m_items.size()); }
    void Clear();

    /// Puts the text at the top; an equal entry further down is removed, the oldest
    /// entries beyond MaxLen are dropped, and the menus are rebuilt.
    void AddString(const QString &text);
    int MaxLen() const { return m_maxLen; }
    /// 1 to 100 (default 15); other values are ignored. Drops entries from the end until
    /// the list fits.
    void SetMaxLen(int n);

    /// Writes the entries as History0 ... into the section (older keys beyond the list
    /// are removed, so they cannot come back); false when the file cannot be written.
    bool SaveToIni(const QString &fileName, const QString &section) const;
    /// Replaces the entries with the non-empty values of History0 ... History<MaxLen-1>.
    void LoadFromIni(const QString &fileName, const QString &section);

    /// The menu whose end shows the entries; the items it has now stay untouched.
    QMenu *MenuItem() const { return m_menuItem; }
    void SetMenuItem(QMenu *menu);
    /// The number of items the menu had before the entries were added.
    int InitialCount() const { return m_initialCount; }
    /// The pop-up menu that shows only the entries.
    QMenu *PopupMenu() const { return m_popup; }
    void SetPopupMenu(QMenu *menu);

    void AddToMenuItem();
    void AddToPopupMenu();
    void AddMenuItems();
    void RemoveFromMenuItem();
    void RemoveFromPopupMenu();
    void RemoveMenuItems();

    /// The handler of the entries' items: calls OnClick with entry n - 1 for the item
    /// captioned "&n ..." (only when OnClick is set).
    void DoAutoItemClick(QObject *sender);

    TListMenuEvent OnClick;

Q_SIGNALS:
    /// An entry was chosen from a menu.
    void clicked(const QString &text);

private:
    QAction *makeItem(QMenu *menu, int number, const QString &text);

    QStringList m_items;
    int m_maxLen = 15;
    QPointer<QMenu> m_menuItem;
    int m_initialCount = 0;
    QPointer<QMenu> m_popup;
};

/// A combo box whose drop-down list is a history kept in an INI file: setting both
/// IniFileName and IniSection loads it; leaving the box records its text (unless
/// ManualUpdate); the list is saved when the box is destroyed.
class DRIVEWIZ_EXPORT THistoryCombo : public QComboBox
{
    Q_OBJECT
    Q_PROPERTY(QString IniFileName READ IniFileName WRITE SetIniFileName)
    Q_PROPERTY(QString IniSection READ IniSection WRITE SetIniSection)
    Q_PROPERTY(bool ManualUpdate READ ManualUpdate WRITE SetManualUpdate)

public:
    explicit THistoryCombo(QWidget *parent = nullptr);
    ~THistoryCombo() override;

    QString IniFileName() const { return m_iniFileName; }
    void SetIniFileName(const QString &name) { SetIniData(1, name); }
    QString IniSection() const { return m_iniSection; }
    void SetIniSection(const QString &section) { SetIniData(2, section); }
    /// index 1: file name, 2: section; loads the list once both are set.
    void SetIniData(int index, const QString &value);
    bool ManualUpdate() const { return m_manualUpdate; }
    void SetManualUpdate(bool on) { m_manualUpdate = on; }

    THistoryList *History() const { return m_history; }
    /// Records the current text (a blank text is not recorded) and refreshes the list.
    void UpdateList();
    /// Copies the history into the drop-down items, keeping the text shown.
    void UpdateComboList();
    /// Saves the history, when file and section are set.
    bool UpdateFile();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    /// Leaving the box: records its text unless ManualUpdate.
    virtual void DoExit();

private:
    THistoryList *m_history;
    QString m_iniFileName;
    QString m_iniSection;
    bool m_manualUpdate = false;
};

} // namespace drivewiz

#endif // DRIVEWIZ_WIDGETS_HLIST_H
