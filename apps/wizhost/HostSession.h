#ifndef DRIVEWIZ_WIZHOST_HOSTSESSION_H
#define DRIVEWIZ_WIZHOST_HOSTSESSION_H

#include "HostOptions.h"
#include "WizardCatalog.h"

#include "SimulatedDrive.h"
#include "drivewiz/host_api.h"

#include <QFile>
#include <QObject>
#include <QTemporaryDir>

#include <memory>

class QDialog;

namespace drivewiz {
class IniFile;
}

namespace drivewiz::wizhost {

/// What the demo host knows and does, without its window: the simulated drive behind the
/// C host interface, the settings a wizard opens with (online mode, user level,
/// language), the drive's enable, the open wizard and the log of what reached the drive.
///
/// Wizards are created through dwz_form_create with the drive's callbacks; the drive's
/// worker pushes its changes to the open wizard's window handle. Switching the mode
/// while a wizard is open posts DWZ_MSG_ONLINE_MODE to it.
class HostSession : public QObject
{
    Q_OBJECT

public:
    explicit HostSession(const HostOptions &options, QObject *parent = nullptr);
    ~HostSession() override;

    /// Loads the drive's description file and starts the drive's worker; false with a
    /// reason when the file cannot be read.
    bool start(QString &error);
    sim::SimulatedDrive &drive() { return m_drive; }
    QString descriptionFile() const;

    int onlineMode() const { return m_mode; }
    void setOnlineMode(int mode);
    int userLevel() const { return m_level; }
    void setUserLevel(int level);
    int language() const { return m_language; }
    void setLanguage(int language);
    bool enabled() const { return m_drive.enabled(); }
    void setEnabled(bool on);

    /// A text of the host from section "Demo" of the language file, else `fallback`.
    QString caption(const QString &key, const QString &fallback) const;
    const IniFile *languageFile() const { return m_lng.get(); }

    /// Creates a wizard with the current settings, not yet shown; it becomes the open
    /// wizard. Null (the reason is logged) when it cannot be made or one is open.
    dwz_form *createWizard(Wizard which);
    /// Creates a wizard, shows it modally and closes it; 1 for OK, 0 for Cancel, -1 when
    /// it could not be opened. The host's own window stays usable meanwhile.
    int execWizard(Wizard which);
    /// Closes and frees the open wizard.
    void closeWizard();
    dwz_form *openWizard() const { return m_open; }
    QDialog *openDialog() const;

    /// Adds a line to the log (the host's own notes start with "# ").
    void note(const QString &line);

Q_SIGNALS:
    /// A new log line, on the user-interface thread.
    void logLine(const QString &line);
    void settingsChanged();
    void wizardOpened(int wizard);
    void wizardClosed(int wizard, int result);

private:
    QString formFile(Wizard which);
    void prepareForm(dwz_form *form, Wizard which);
    void translateForm(dwz_form *form, Wizard which);
    QString text(const char *key, const char *english) const;
    QString modeName(int mode) const;
    void applyHiddenPageRule(QWidget *form);
    void writeLog(const QString &line);
    void loadLanguageFile();

    HostOptions m_options;
    sim::SimulatedDrive m_drive;
    int m_mode = DWZ_OFFLINE;
    int m_level = 2;
    int m_language = 1;
    std::unique_ptr<IniFile> m_lng;
    dwz_form *m_open = nullptr;
    Wizard m_openKind = Wizard::Setup;
    QFile m_logFile;
    QTemporaryDir m_tempDir;
};

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_HOSTSESSION_H
