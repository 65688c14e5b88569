#include "HostSession.h"

#include "OverviewForm.h"
#include "TablesDemo.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "platform/inifile.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QKeySequence>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>

namespace drivewiz::wizhost {

namespace {


QWidget *widgetOf(dwz_form *form)
{
    return static_cast<QWidget *>(dwz_form_widget(form));
}

} // namespace

HostSession::HostSession(const HostOptions &options, QObject *parent)
    : QObject(parent), m_options(options), m_language(options.language)
{
    if (!options.logFile.isEmpty()) {
        m_logFile.setFileName(options.logFile);
        if (!m_logFile.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
            qWarning("wizhost: cannot write the log file %s", qPrintable(options.logFile));
    }
    // The drive logs its writes on the thread that writes; the log belongs to the UI.
    m_drive.onWrite = [this](const QString &line) {
        QMetaObject::invokeMethod(
            this, [this, line] { writeLog(line); }, Qt::QueuedConnection);
    };
    loadLanguageFile();
}

HostSession::~HostSession()
{
    closeWizard();
    m_drive.stop();
    sim::SimulatedDrive::setCurrent(nullptr);
}

QString HostSession::descriptionFile() const
{
    return QDir(m_options.dataDir).filePath(QStringLiteral("Parameter.csv"));
}

bool HostSession::start(QString &error)
{
    if (!QFileInfo(descriptionFile()).isFile() || !m_drive.load(descriptionFile())) {
        error =
            QStringLiteral("cannot read the drive's description file %1").arg(descriptionFile());
        return false;
    }
    sim::SimulatedDrive::setCurrent(&m_drive);
    m_drive.start();
    return true;
}

// --- settings ---------------------------------------------------------------------------

// The host's notes in the log speak the interface's language (section "Demo").
QString HostSession::text(const char *key, const char *english) const
{
    return caption(QLatin1String(key), QString::fromUtf8(english));
}

QString HostSession::modeName(int mode) const
{
    return mode == DWZ_ONLINE     ? text("cBtnOnline", "Online")
           : mode == DWZ_READBACK ? text("cBtnReadBack", "Read-back")
                                  : text("cBtnOffline", "Offline");
}

void HostSession::setOnlineMode(int mode)
{
    if (mode < DWZ_OFFLINE || mode > DWZ_READBACK || mode == m_mode) return;
    m_mode = mode;
    note(text("cLogMode", "# mode: %1").arg(modeName(mode)));
    if (m_open) dwz_post_message(dwz_form_window(m_open), DWZ_MSG_ONLINE_MODE, uintptr_t(mode), 0);
    Q_EMIT settingsChanged();
}

void HostSession::setUserLevel(int level)
{
    if (level < 1 || level > 4 || level == m_level) return;
    m_level = level;
    note(text("cLogLevel", "# user level: %1").arg(level));
    if (m_open) dwz_table_set_user_level(dwz_form_table(m_open), level);
    Q_EMIT settingsChanged();
}

// The open wizard switches with the host: its table reads the new language file, and
// the library's components translate themselves when it has.
void HostSession::setLanguage(int language)
{
    if (language < 1 || language == m_language) return;
    m_language = language;
    loadLanguageFile();
    note(text("cLogLanguage", "# language: %1").arg(language));
    if (m_open) {
        dwz_table_set_language(dwz_form_table(m_open), language);
        translateForm(m_open, m_openKind);
    }
    Q_EMIT settingsChanged();
}

void HostSession::setEnabled(bool on)
{
    if (on == m_drive.enabled()) return;
    m_drive.setEnable(on);
    note(on ? text("cLogEnableOn", "# enable on: writes are refused")
            : text("cLogEnableOff", "# enable off"));
    Q_EMIT settingsChanged();
}

// The host reads the language file the wizards read (beside the program); a data folder
// given on the command line may bring its own.
void HostSession::loadLanguageFile()
{
    bool central = false;
    QString path = GetIniFileName(m_language, central);
    const QString own =
        QDir(m_options.dataDir).filePath(QStringLiteral("wizling.") + QString::number(m_language));
    if (!QFileInfo(path).isFile() || QFileInfo(own).isFile()) path = own;
    m_lng = std::make_unique<IniFile>(path);
    if (!m_lng->load()) m_lng.reset();
}

QString HostSession::caption(const QString &key, const QString &fallback) const
{
    return wizReadString(m_lng.get(), QStringLiteral("Demo"), key, fallback);
}

// --- the log ------------------------------------------------------------------------------

void HostSession::note(const QString &line)
{
    writeLog(line);
}

void HostSession::writeLog(const QString &line)
{
    if (m_logFile.isOpen()) {
        m_logFile.write(line.toUtf8() + '\n');
        m_logFile.flush();
    }
    Q_EMIT logLine(line);
}

// --- wizards ------------------------------------------------------------------------------

// The form of a wizard; empty (and nothing made) for an id the host does not know.
QString HostSession::formFile(Wizard which)
{
    if (which == Wizard::Setup)
        return QDir(m_options.formsDir).filePath(QStringLiteral("DriveSetup.ui"));
    if (which == Wizard::Tables)
        return QDir(m_options.formsDir).filePath(QStringLiteral("Tables.ui"));
    if (which == Wizard::Inputs)
        return QDir(m_options.formsDir).filePath(QStringLiteral("Inputs.ui"));
    if (which == Wizard::Outputs)
        return QDir(m_options.formsDir).filePath(QStringLiteral("OutputsEncoder.ui"));
    if (which != Wizard::Overview) return QString();
    const QString path = m_tempDir.filePath(QStringLiteral("ParameterOverview.ui"));
    QString error;
    if (WriteOverviewForm(descriptionFile(), m_level, path, error) < 0) {
        note(QStringLiteral("# ") + error);
        return QString();
    }
    return path;
}

dwz_form *HostSession::createWizard(Wizard which)
{
    if (m_open) return nullptr;
    const QString ui = formFile(which);
    if (ui.isEmpty()) return nullptr;
    // Descriptions come from the file; values, writes and pushes from the drive.
    dwz_callbacks cb = sim::SimulatedDrive::callbacks();
    cb.get_para_info = nullptr;
    cb.get_auswahl_info = nullptr;
    // The drive's help says in German what the library's own help lines say in the
    // wizard's language (range, unit, default): the help view shows those alone.
    cb.get_help_text = nullptr;
    dwz_form *form = dwz_form_create(ui.toUtf8().constData(), &cb, uint32_t(which), m_level,
                                     m_language, m_mode, descriptionFile().toUtf8().constData());
    if (!form) {
        note(text("cLogCannotOpen", "# cannot open the wizard:") + QLatin1Char(' ') +
             QString::fromUtf8(dwz_last_error()));
        return nullptr;
    }
    prepareForm(form, which);
    m_open = form;
    m_openKind = which;
    m_drive.setMessageWindow(dwz_form_window(form));
    note(text("cLogOpened", "# %1 opened (%2, user level %3)")
             .arg(widgetOf(form)->windowTitle(), modeName(m_mode))
             .arg(m_level));
    Q_EMIT wizardOpened(int(which));
    return form;
}

// The host's part of a form: its title, the rule for the hidden page, and Ctrl+Enter
// for OK. The wizard's own texts (pages, back button) come from the language file's
// section named by the form's wizIdString, which the library reads itself.
void HostSession::prepareForm(dwz_form *form, Wizard which)
{
    QWidget *w = widgetOf(form);
    translateForm(form, which);
    if (which == Wizard::Setup)
        applyHiddenPageRule(w);
    else if (which == Wizard::Overview)
        ArrangeOverviewForm(w);
    else if (which == Wizard::Tables)
        PrepareTablesForm(w, *this);
    auto *ok = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), w);
    QObject::connect(ok, &QShortcut::activated, w, [w] {
        if (auto *button = w->findChild<QAbstractButton *>(QStringLiteral("BtnOK")))
            button->click();
    });
}

void HostSession::translateForm(dwz_form *form, Wizard which)
{
    QWidget *w = widgetOf(form);
    const WizardInfo *info = findWizard(which);
    const QString key =
        which == Wizard::Setup ? QStringLiteral("cWizSetupTitle") : info ? info->captionKey : QString();
    if (!key.isEmpty()) w->setWindowTitle(caption(key, w->windowTitle()));
}

// The page "PageHidden" holds the settings of the encoder on BE3/BE4: it is part of the
// wizard only while H40 selects that encoder. The host sets the page's Tag (1 hides it);
// the wizard page control reads it.
void HostSession::applyHiddenPageRule(QWidget *form)
{
    QPointer<QWidget> page = form->findChild<QWidget *>(QStringLiteral("PageHidden"));
    QPointer<TParaClass> source = form->findChild<TParaClass *>(QStringLiteral("P_H40"));
    if (!page || !source) return;
    const auto update = [page, source] {
        if (!page || !source) return;
        const int key = source->GetAuswahl();
        page->setProperty("Tag", key == 0 || key == TParaClass::NoSelection ? 1 : 0);
        for (QWidget *p = page->parentWidget(); p; p = p->parentWidget()) {
            // A page control that offers a refresh of its pages is asked for one.
            if (qobject_cast<QTabWidget *>(p) &&
                p->metaObject()->indexOfMethod("UpdateTabLabels()") >= 0) {
                QMetaObject::invokeMethod(p, "UpdateTabLabels");
                break;
            }
        }
    };
    update();
    source->OnChange = [previous = source->OnChange, update](QObject *sender) {
        if (previous) previous(sender);
        update();
    };
}

QDialog *HostSession::openDialog() const
{
    return m_open ? static_cast<QDialog *>(dwz_form_widget(m_open)) : nullptr;
}

int HostSession::execWizard(Wizard which)
{
    dwz_form *form = createWizard(which);
    if (!form) return -1;
    // Modal for the code that opened it, but the host's switches stay usable: they
    // change the open wizard's mode and the drive's enable.
    widgetOf(form)->setWindowModality(Qt::WindowModal);
    dwz_form_exec(form);
    const int result = dwz_form_result(form);
    closeWizard();
    return result;
}

void HostSession::closeWizard()
{
    if (!m_open) return;
    const int result = dwz_form_result(m_open);
    m_drive.setMessageWindow(0);
    dwz_form_destroy(m_open);
    m_open = nullptr;
    note(result == 1 ? text("cLogClosedOk", "# wizard closed with OK")
                     : text("cLogClosedCancel", "# wizard closed without saving"));
    Q_EMIT wizardClosed(int(m_openKind), result);
}

} // namespace drivewiz::wizhost
