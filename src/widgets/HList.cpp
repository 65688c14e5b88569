#include "widgets/HList.h"

#include "platform/inifile.h"

#include <QAction>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMetaMethod>

namespace drivewiz {

namespace {

QString historyKey(int i)
{
    return QStringLiteral("History") + QString::number(i);
}

// The highest key a list can have been saved under (MaxLen is at most 100).
constexpr int kMaxKeys = 100;

} // namespace

THistoryList::THistoryList(QObject *parent) : QObject(parent) {}

THistoryList::~THistoryList()
{
    RemoveMenuItems();
}

void THistoryList::Clear()
{
    m_items.clear();
    RemoveMenuItems();
}

void THistoryList::AddString(const QString &text)
{
    for (qsizetype i = 0; i < m_items.size(); ++i) {
        if (m_items.at(i).compare(text, Qt::CaseInsensitive) == 0) {
            m_items.removeAt(i);
            break;
        }
    }
    m_items.prepend(text);
    while (m_items.size() > m_maxLen)
        m_items.removeLast();
    RemoveMenuItems();
    AddMenuItems();
}

void THistoryList::SetMaxLen(int n)
{
    if (n < 1 || n > 100) return;
    m_maxLen = n;
    if (m_items.size() <= n) return;
    while (m_items.size() > n)
        m_items.removeLast();
    RemoveMenuItems();
    AddMenuItems();
}

bool THistoryList::SaveToIni(const QString &fileName, const QString &section) const
{
    IniFile ini(fileName);
    if (!ini.load()) return false;
    for (int i = 0; i < m_items.size(); ++i)
        ini.writeString(section, historyKey(i), m_items.at(i));
    for (int i = int(m_items.size()); i < kMaxKeys; ++i) {
        if (ini.valueExists(section, historyKey(i))) ini.deleteKey(section, historyKey(i));
    }
    return ini.save();
}

void THistoryList::LoadFromIni(const QString &fileName, const QString &section)
{
    m_items.clear();
    IniFile ini(fileName);
    if (ini.load()) {
        for (int i = 0; i < m_maxLen; ++i) {
            const QString value = ini.readString(section, historyKey(i));
            if (!value.isEmpty() && !m_items.contains(value, Qt::CaseInsensitive))
                m_items << value;
        }
    }
    RemoveMenuItems();
    AddMenuItems();
}

void THistoryList::SetMenuItem(QMenu *menu)
{
    RemoveFromMenuItem();
    m_menuItem = menu;
    m_initialCount = menu ? int(menu->actions().size()) : 0;
    AddToMenuItem();
}

void THistoryList::SetPopupMenu(QMenu *menu)
{
    RemoveFromPopupMenu();
    m_popup = menu;
    AddToPopupMenu();
}

// "&" in an entry is doubled so that it shows as itself and not as an accelerator; the
// item's own number stays its accelerator.
QAction *THistoryList::makeItem(QMenu *menu, int number, const QString &text)
{
    QString shown = text;
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    auto *action = new QAction(QStringLiteral("&%1 %2").arg(number).arg(shown), menu);
    connect(action, &QAction::triggered, this, [this, action] { DoAutoItemClick(action); });
    menu->addAction(action);
    return action;
}

void THistoryList::AddToMenuItem()
{
    if (!m_menuItem || m_items.isEmpty()) return;
    m_menuItem->addSeparator();
    for (int i = 0; i < m_items.size(); ++i)
        makeItem(m_menuItem, i + 1, m_items.at(i));
}

void THistoryList::AddToPopupMenu()
{
    if (!m_popup) return;
    for (int i = 0; i < m_items.size(); ++i)
        makeItem(m_popup, i + 1, m_items.at(i));
}

void THistoryList::AddMenuItems()
{
    AddToMenuItem();
    AddToPopupMenu();
}

void THistoryList::RemoveFromMenuItem()
{
    if (!m_menuItem) return;
    QList<QAction *> actions = m_menuItem->actions();
    while (actions.size() > m_initialCount) {
        QAction *last = actions.takeLast();
        m_menuItem->removeAction(last);
        if (last->parent() == m_menuItem) last->deleteLater();
    }
}

void THistoryList::RemoveFromPopupMenu()
{
    if (!m_popup) return;
    const QList<QAction *> actions = m_popup->actions();
    for (QAction *action : actions) {
        m_popup->removeAction(action);
        if (action->parent() == m_popup) action->deleteLater();
    }
}

void THistoryList::RemoveMenuItems()
{
    RemoveFromMenuItem();
    RemoveFromPopupMenu();
}

void THistoryList::DoAutoItemClick(QObject *sender)
{
    if (!OnClick && !isSignalConnected(QMetaMethod::fromSignal(&THistoryList::clicked))) return;
    const auto *action = qobject_cast<QAction *>(sender);
    if (!action) return;
    const QString caption = action->text();
    if (!caption.startsWith(QLatin1Char('&'))) return;
    const qsizetype blank = caption.indexOf(QLatin1Char(' '));
    bool ok = false;
    const int n = caption.mid(1, blank < 0 ? -1 : blank - 1).toInt(&ok);
    if (!ok || n <= 0 || n > m_items.size()) return;
    const QString entry = m_items.at(n - 1);
    if (OnClick) OnClick(this, entry);
    Q_EMIT clicked(entry);
}

// --- the combo box ------------------------------------------------------------------------

THistoryCombo::THistoryCombo(QWidget *parent) : QComboBox(parent), m_history(new THistoryList(this))
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert); // the history decides the order of the items
}

THistoryCombo::~THistoryCombo()
{
    UpdateFile();
}

void THistoryCombo::SetIniData(int index, const QString &value)
{
    if (index == 1) {
        if (m_iniFileName == value) return;
        m_iniFileName = value;
    } else if (index == 2) {
        if (m_iniSection == value) return;
        m_iniSection = value;
    } else {
        return;
    }
    if (m_iniFileName.isEmpty() || m_iniSection.isEmpty()) return;
    m_history->LoadFromIni(m_iniFileName, m_iniSection);
    UpdateComboList();
}

void THistoryCombo::UpdateList()
{
    const QString text = currentText();
    if (text.trimmed().isEmpty()) return;
    m_history->AddString(text);
    UpdateComboList();
}

void THistoryCombo::UpdateComboList()
{
    const QString text = currentText();
    const QSignalBlocker blocker(this);
    clear();
    addItems(m_history->Strings());
    setCurrentIndex(-1);
    setEditText(text);
}

bool THistoryCombo::UpdateFile()
{
    if (m_iniFileName.isEmpty() || m_iniSection.isEmpty()) return false;
    return m_history->SaveToIni(m_iniFileName, m_iniSection);
}

void THistoryCombo::focusOutEvent(QFocusEvent *event)
{
    QComboBox::focusOutEvent(event);
    // The list of the box itself takes the focus while it is open: that is no leaving.
    if (event->reason() != Qt::PopupFocusReason) DoExit();
}

void THistoryCombo::DoExit()
{
    if (!m_manualUpdate) UpdateList();
}

} // namespace drivewiz
