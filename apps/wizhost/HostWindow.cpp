#include "HostWindow.h"

#include "HardwareChooser.h"
#include "ParamSetMenu.h"
#include "TablesDemo.h"

#include "lang/wizSprache.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QVBoxLayout>

namespace drivewiz::wizhost {

namespace {

template <class T> T *named(T *w, const char *name)
{
    w->setObjectName(QLatin1String(name));
    return w;
}

} // namespace

HostWindow::HostWindow(HostSession &session, QWidget *parent)
    : QMainWindow(parent), m_session(session)
{
    setObjectName(QStringLiteral("HostWindow"));
    auto *central = new QWidget(this);
    auto *layout = new QHBoxLayout(central);
    layout->addWidget(buildControls());
    layout->addWidget(buildLog(), 1);
    setCentralWidget(central);
    buildMenus();
    connectSwitches();
    connect(&m_session, &HostSession::logLine, m_log, &QPlainTextEdit::appendPlainText);
    connect(&m_session, &HostSession::settingsChanged, this, &HostWindow::showSettings);
    resize(900, 520);
    showSettings();
    translate();
}

QWidget *HostWindow::buildControls()
{
    auto *box = new QWidget(this);
    auto *v = new QVBoxLayout(box);
    for (const WizardInfo &wizard : wizardCatalog()) {
        auto *button = new QPushButton(wizard.caption, box);
        button->setObjectName(wizard.captionKey.mid(1)); // "cBtnSetup" names "BtnSetup"
        connect(button, &QPushButton::clicked, this, [this, id = wizard.id] { openWizard(id); });
        m_wizardButtons << button;
        v->addWidget(button);
    }
    m_btnMeasurement = named(new QPushButton(QStringLiteral("Measurement"), box), "BtnMeasurement");
    connect(m_btnMeasurement, &QPushButton::clicked, this, [this] {
        auto *window = new MeasurementWindow(m_session, this);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
    });
    v->addWidget(m_btnMeasurement);

    auto *modes = named(new QGroupBox(box), "GrpMode");
    auto *mv = new QVBoxLayout(modes);
    m_btnOffline = named(new QRadioButton(QStringLiteral("Offline"), modes), "BtnOffline");
    m_btnOnline = named(new QRadioButton(QStringLiteral("Online"), modes), "BtnOnline");
    m_btnReadBack = named(new QRadioButton(QStringLiteral("Read-back"), modes), "BtnReadBack");
    auto *group = new QButtonGroup(modes);
    group->addButton(m_btnOffline, DWZ_OFFLINE);
    group->addButton(m_btnOnline, DWZ_ONLINE);
    group->addButton(m_btnReadBack, DWZ_READBACK);
    connect(group, &QButtonGroup::idClicked, &m_session, &HostSession::setOnlineMode);
    for (QRadioButton *b : {m_btnOffline, m_btnOnline, m_btnReadBack})
        mv->addWidget(b);
    v->addWidget(modes);

    m_btnEnable = named(new QCheckBox(QStringLiteral("Enable"), box), "BtnEnable");
    m_lblStatus = named(new QLabel(box), "LblStatus");
    v->addWidget(m_btnEnable);
    v->addWidget(m_lblStatus);

    auto *form = new QFormLayout;
    m_level = named(new QSpinBox(box), "SpinUserLevel");
    m_level->setRange(1, 4);
    m_language = named(new QComboBox(box), "CmbLanguage");
    m_language->addItem(QStringLiteral("1: Deutsch"), 1);
    m_language->addItem(QStringLiteral("2: English"), 2);
    form->addRow(named(new QLabel(QStringLiteral("User level"), box), "LblUserLevel"), m_level);
    form->addRow(named(new QLabel(QStringLiteral("Language"), box), "LblLanguage"), m_language);
    v->addLayout(form);
    m_hardware = new HardwareChooser(m_session, box);
    v->addWidget(m_hardware);
    v->addStretch(1);
    return box;
}

QWidget *HostWindow::buildLog()
{
    auto *box = new QWidget(this);
    auto *v = new QVBoxLayout(box);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(named(new QLabel(QStringLiteral("Log"), box), "LblLog"));
    m_log = named(new QPlainTextEdit(box), "LogView");
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(5000);
    v->addWidget(m_log);
    return box;
}

void HostWindow::buildMenus()
{
    m_menuFile = menuBar()->addMenu(QStringLiteral("File"));
    m_quit = m_menuFile->addAction(QStringLiteral("Quit"));
    m_quit->setShortcut(QKeySequence::Quit);
    connect(m_quit, &QAction::triggered, qApp, &QApplication::quit);
    m_paramSets = new ParamSetMenu(m_session, menuBar(), this);
    m_menuHelp = menuBar()->addMenu(QStringLiteral("Help"));
    m_menuHelp->addAction(QStringLiteral("drivewiz"), this, [this] {
        QMessageBox::about(this, windowTitle(),
                           QStringLiteral("drivewiz demo host: a simulated two-axis servo drive "
                                          "behind the library's C host interface."));
    });
}

void HostWindow::connectSwitches()
{
    connect(m_btnEnable, &QCheckBox::toggled, &m_session, &HostSession::setEnabled);
    connect(m_level, &QSpinBox::valueChanged, &m_session, &HostSession::setUserLevel);
    connect(m_language, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_session.setLanguage(m_language->itemData(index).toInt());
        translate();
    });
}

void HostWindow::openWizard(Wizard which)
{
    if (m_session.openWizard()) return;
    for (QPushButton *button : std::as_const(m_wizardButtons))
        button->setEnabled(false);
    m_session.execWizard(which);
    for (QPushButton *button : std::as_const(m_wizardButtons))
        button->setEnabled(true);
}

// The switches follow the session, whoever changed it (the tour changes it in code).
void HostWindow::showSettings()
{
    const QSignalBlocker b1(m_btnEnable), b2(m_level), b3(m_language);
    m_btnOffline->setChecked(m_session.onlineMode() == DWZ_OFFLINE);
    m_btnOnline->setChecked(m_session.onlineMode() == DWZ_ONLINE);
    m_btnReadBack->setChecked(m_session.onlineMode() == DWZ_READBACK);
    m_btnEnable->setChecked(m_session.enabled());
    m_level->setValue(m_session.userLevel());
    m_language->setCurrentIndex(std::max(0, m_language->findData(m_session.language())));
    m_lblStatus->setText(m_session.enabled() ? m_session.caption(QStringLiteral("cStatusEnabled"),
                                                                 QStringLiteral("Drive enabled"))
                                             : m_session.caption(QStringLiteral("cStatusDisabled"),
                                                                 QStringLiteral("Drive disabled")));
    statusBar()->showMessage(m_lblStatus->text() + QStringLiteral(" - ") +
                             (m_session.onlineMode() == DWZ_ONLINE     ? m_btnOnline->text()
                              : m_session.onlineMode() == DWZ_READBACK ? m_btnReadBack->text()
                                                                       : m_btnOffline->text()));
}

void HostWindow::translate()
{
    ReadControls(m_session.languageFile(), m_session.language(), QStringLiteral("Demo"), this);
    setWindowTitle(m_session.caption(QStringLiteral("cTitle"), QStringLiteral("drivewiz demo")));
    m_menuFile->setTitle(m_session.caption(QStringLiteral("cMenuFile"), m_menuFile->title()));
    m_menuHelp->setTitle(m_session.caption(QStringLiteral("cMenuHelp"), m_menuHelp->title()));
    m_quit->setText(m_session.caption(QStringLiteral("cMenuQuit"), m_quit->text()));
    m_hardware->translate();
    m_paramSets->translate();
    showSettings();
}

} // namespace drivewiz::wizhost
