#ifndef DRIVEWIZ_WIZHOST_PARAMSETMENU_H
#define DRIVEWIZ_WIZHOST_PARAMSETMENU_H

#include "HostSession.h"

#include "wizard/wizParamViews.h"

#include <QObject>
#include <QPointer>

class QAction;
class QMenu;
class QMenuBar;
class QDialog;

namespace drivewiz::wizhost {

/// The host's "Parameter set" menu: save and load a set, compare with the drive and with
/// the defaults, the journal, undo and redo, all for the open wizard (disabled while none
/// is open). Opening a wizard starts its parameter views.
class ParamSetMenu : public QObject
{
    Q_OBJECT

public:
    ParamSetMenu(HostSession &session, QMenuBar *bar, QObject *parent = nullptr);

    QMenu *menu() const { return m_menu; }
    /// The views of the open wizard, or null.
    TwizParamViews *views() const { return m_views; }
    /// The texts again in the session's language.
    void translate();

    void saveSet();
    void loadSet();
    void compareWithDrive();
    void compareWithDefaults();
    void showJournal();

private:
    QString text(const char *key) const;
    void wizardOpened();
    void wizardClosed();
    void enable(bool on);
    void watch(QDialog *compare);

    HostSession &m_session;
    QMenu *m_menu = nullptr;
    QAction *m_save = nullptr;
    QAction *m_load = nullptr;
    QAction *m_drive = nullptr;
    QAction *m_defaults = nullptr;
    QAction *m_journal = nullptr;
    QPointer<QAction> m_undo;
    QPointer<QAction> m_redo;
    QPointer<TwizParamViews> m_views;
};

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_PARAMSETMENU_H
