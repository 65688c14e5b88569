#ifndef DRIVEWIZ_WIZHOST_HOSTWINDOW_H
#define DRIVEWIZ_WIZHOST_HOSTWINDOW_H

#include "HostSession.h"

#include <QMainWindow>

class QCheckBox;
class QComboBox;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace drivewiz::wizhost {

/// The demo host's main window: buttons that open the two wizards, switches for the
/// online mode, the drive's enable, the user level and the language, and the log of what
/// the host wrote to the drive. Captions come from section "Demo" of the language file.
class HardwareChooser;
class ParamSetMenu;

class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HostWindow(HostSession &session, QWidget *parent = nullptr);

    /// Opens a wizard modally (the window's switches stay usable).
    void openWizard(Wizard which);
    /// The menu of parameter sets, undo and redo for the open wizard.
    ParamSetMenu *paramSetMenu() const { return m_paramSets; }

private:
    QWidget *buildControls();
    QWidget *buildLog();
    void buildMenus();
    void connectSwitches();
    void showSettings();
    void translate();

    HostSession &m_session;
    QList<QPushButton *> m_wizardButtons; // one per wizard of the catalog, in its order
    QPushButton *m_btnMeasurement = nullptr;
    HardwareChooser *m_hardware = nullptr;
    QRadioButton *m_btnOffline = nullptr;
    QRadioButton *m_btnOnline = nullptr;
    QRadioButton *m_btnReadBack = nullptr;
    QCheckBox *m_btnEnable = nullptr;
    QLabel *m_lblStatus = nullptr;
    QSpinBox *m_level = nullptr;
    QComboBox *m_language = nullptr;
    QPlainTextEdit *m_log = nullptr;
    QMenu *m_menuFile = nullptr;
    QMenu *m_menuHelp = nullptr;
    QAction *m_quit = nullptr;
    ParamSetMenu *m_paramSets = nullptr;
};

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_HOSTWINDOW_H
