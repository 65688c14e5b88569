#include "Tour.h"

#include "HostWindow.h"
#include "TablesDemo.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "platform/dialogrecorder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QMap>
#include <QTabWidget>

#include <cstdio>

namespace drivewiz::wizhost {

namespace {

QString modeName(int mode)
{
    return mode == DWZ_ONLINE     ? QStringLiteral("online")
           : mode == DWZ_READBACK ? QStringLiteral("readback")
                                  : QStringLiteral("offline");
}

TParaClass *control(QWidget *form, const QString &name)
{
    return form->findChild<TParaClass *>(name);
}

// Qt's own warnings would interleave with the printout; they are counted and listed once
// at the end. The offscreen platform says that it cannot raise windows, grab the keyboard
// for a popup or pass size hints on: that is what offscreen means, not a fault of the
// wizards, so those notes are dropped.
QMap<QString, int> g_qtMessages;
QtMessageHandler g_previousHandler = nullptr;

void collectQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg && g_previousHandler) g_previousHandler(type, context, text);
    if (text.startsWith(QLatin1String("This plugin does not support"))) return;
    ++g_qtMessages[text];
}

} // namespace

Tour::Tour(HostSession &session, HostWindow &window, const QString &outDir)
    : m_session(session), m_window(window), m_outDir(outDir)
{}

int Tour::run()
{
    if (!QDir().mkpath(m_outDir)) {
        say(QStringLiteral("cannot create %1").arg(m_outDir));
        return 1;
    }
    g_qtMessages.clear();
    g_previousHandler = qInstallMessageHandler(collectQtMessage);
    auto recorder = std::make_unique<DialogRecorder>();
    m_recorder = recorder.get();
    setDialogService(std::move(recorder));

    m_window.show();
    settle(200);
    shoot(&m_window, QStringLiteral("00-host"));
    using namespace std::placeholders;
    m_session.setUserLevel(3); // commissioning is a service technician's job
    walk(Wizard::Setup, DWZ_OFFLINE, std::bind(&Tour::setupOffline, this, _1, _2));
    walk(Wizard::Setup, DWZ_ONLINE, std::bind(&Tour::setupOnline, this, _1, _2));
    m_session.setUserLevel(2);
    walk(Wizard::Overview, DWZ_OFFLINE, std::bind(&Tour::overviewOffline, this, _1, _2));
    m_session.setUserLevel(4);
    walk(Wizard::Overview, DWZ_ONLINE, std::bind(&Tour::overviewOnline, this, _1, _2));
    m_session.setUserLevel(2);
    walk(Wizard::Tables, DWZ_OFFLINE, [this](QWidget *form, QWidget *page) {
        TablesTourPage(form, page, m_outDir, [this](const QString &line) { say(line); });
        sayMessages();
    });
    tourMeasurement();
    walkInputs();
    walkOutputs();
    walkSets();
    m_session.setOnlineMode(DWZ_OFFLINE);
    settle(200);
    shoot(&m_window, QStringLiteral("99-host-log"));
    summary();

    m_recorder = nullptr;
    setDialogService(nullptr);
    qInstallMessageHandler(g_previousHandler);
    return m_failures == 0 ? 0 : 1;
}

// --- walking ------------------------------------------------------------------------------

bool Tour::walk(Wizard which, int mode, const PageAction &action)
{
    const WizardInfo *info = findWizard(which);
    const QString prefix = (info ? info->name : QStringLiteral("wizard")) + QLatin1Char('-') +
                           modeName(mode);
    m_session.setOnlineMode(mode);
    const int logBefore = int(m_session.drive().log().size());
    dwz_form *form = m_session.createWizard(which);
    if (!form) {
        say(prefix + QStringLiteral(": the wizard did not open"));
        ++m_failures;
        return false;
    }
    auto *w = static_cast<QWidget *>(dwz_form_widget(form));
    dwz_form_show(form);
    QApplication::setActiveWindow(w);
    settle(150);
    say(QStringLiteral("\n== %1: \"%2\", %3, user level %4")
            .arg(prefix, w->windowTitle(), modeName(mode))
            .arg(m_session.userLevel()));
    walkPages(w, prefix, action);
    pressOk(w);
    say(QStringLiteral("  closed with %1").arg(dwz_form_result(form) == 1 ? "OK" : "Cancel"));
    m_session.closeWizard();
    settle();
    sayMessages();
    const QStringList log = m_session.drive().log();
    say(QStringLiteral("  reached the drive (%1 writes):").arg(log.size() - logBefore));
    for (int i = logBefore; i < log.size(); ++i)
        say(QStringLiteral("    ") + log.at(i));
    return true;
}

void Tour::walkPages(QWidget *form, const QString &prefix, const PageAction &action)
{
    auto *pages = form->findChild<QTabWidget *>(QStringLiteral("PageControl"));
    if (!pages) {
        shoot(form, prefix + QStringLiteral("-form"));
        return;
    }
    int shown = 0;
    // Tags are read afresh for every page: a choice on one page may show a later one.
    for (int i = 0; i < pages->count(); ++i) {
        QWidget *page = pages->widget(i);
        const QString title = pages->tabText(i);
        if (page->property("Tag").toInt() == 1) {
            say(QStringLiteral("  page %1 \"%2\" is hidden").arg(i + 1).arg(title));
            continue;
        }
        pages->setCurrentIndex(i);
        settle();
        say(QStringLiteral("  page %1/%2 \"%3\"").arg(i + 1).arg(pages->count()).arg(title));
        if (action) action(form, page);
        settle();
        shoot(form, QStringLiteral("%1-%2-%3")
                        .arg(prefix)
                        .arg(i + 1, 2, 10, QLatin1Char('0'))
                        .arg(page->objectName()));
        ++shown;
    }
    m_walks << QStringLiteral("%1: %2 of %3 pages").arg(prefix).arg(shown).arg(pages->count());
}

// --- what the user does ---------------------------------------------------------------------

// Typing: the field takes the focus, its text is replaced character by character, and
// the field is left, which checks the value and, online, writes it.
void Tour::type(QWidget *form, const QString &name, const QString &text)
{
    TParaClass *c = control(form, name);
    auto *edit = c ? qobject_cast<QLineEdit *>(c->GetEditControl()) : nullptr;
    if (!edit || !edit->isEnabled()) {
        say(QStringLiteral("    %1: no field to type into").arg(name));
        return;
    }
    edit->setFocus(Qt::TabFocusReason);
    settle(20);
    edit->selectAll();
    for (const QChar ch : text)
        edit->insert(QString(ch));
    say(QStringLiteral("    typed %1 = %2").arg(c->GetKoordinate(), text));
    edit->clearFocus();
    settle();
    ++m_typed;
    sayMessages();
}

// Choosing: the list is opened and closed on the entry, as with the mouse.
void Tour::choose(QWidget *form, const QString &name, int key)
{
    TParaClass *c = control(form, name);
    auto *combo = c ? qobject_cast<QComboBox *>(c->GetEditControl()) : nullptr;
    if (!combo || !combo->isEnabled()) {
        say(QStringLiteral("    %1: no list to choose from").arg(name));
        return;
    }
    combo->setFocus(Qt::TabFocusReason);
    combo->showPopup();
    settle(20);
    for (int i = 0; i < combo->count(); ++i) {
        if (combo->itemText(i).section(QLatin1Char(':'), 0, 0).trimmed().toInt() == key)
            combo->setCurrentIndex(i);
    }
    combo->hidePopup();
    settle();
    say(QStringLiteral("    chose %1 = %2").arg(c->GetKoordinate(), c->GetText()));
    ++m_chosen;
    sayMessages();
}

void Tour::toggleBit(QWidget *form, const QString &name, int bit)
{
    TParaClass *c = control(form, name);
    const QList<QCheckBox *> boxes = c ? c->bitCheckBoxes() : QList<QCheckBox *>();
    if (bit < 0 || bit >= boxes.size()) {
        say(QStringLiteral("    %1: no bit %2").arg(name).arg(bit));
        return;
    }
    QCheckBox *box = boxes.at(boxes.size() - 1 - bit); // highest bit first
    box->setFocus(Qt::TabFocusReason);
    box->click();
    box->clearFocus();
    settle();
    say(QStringLiteral("    toggled bit %1 of %2: %3")
            .arg(bit)
            .arg(c->GetKoordinate(), c->GetText()));
    ++m_chosen;
}

void Tour::pressOk(QWidget *form)
{
    if (auto *ok = form->findChild<QAbstractButton *>(QStringLiteral("BtnOK"));
        ok && ok->isVisible())
        ok->click();
    else if (auto *dialog = qobject_cast<QDialog *>(form))
        dialog->accept();
    settle(100);
}

// --- the script per wizard ------------------------------------------------------------------

void Tour::setupOffline(QWidget *form, QWidget *page)
{
    const QString name = page->objectName();
    if (name == QLatin1String("PageGeneral")) {
        type(form, QStringLiteral("P_A80"), QStringLiteral("12"));
        type(form, QStringLiteral("P_A01"), QStringLiteral("Portal Tour"));
    } else if (name == QLatin1String("PageLimits")) {
        type(form, QStringLiteral("P_I10"), QStringLiteral("2500"));
        type(form, QStringLiteral("P_I12"), QStringLiteral("350")); // above its limit
    } else if (name == QLatin1String("PageSelections")) {
        choose(form, QStringLiteral("P_A35"), 2);
        choose(form, QStringLiteral("P_H40"), 1); // shows the hidden page
    } else if (name == QLatin1String("PageBitPattern")) {
        toggleBit(form, QStringLiteral("P_A180"), 3);
    } else if (name == QLatin1String("PageHidden")) {
        type(form, QStringLiteral("P_H41"), QStringLiteral("2048"));
    }
}

void Tour::setupOnline(QWidget *form, QWidget *page)
{
    const QString name = page->objectName();
    if (name == QLatin1String("PageGeneral")) {
        type(form, QStringLiteral("P_A80"), QStringLiteral("13"));
    } else if (name == QLatin1String("PageLimits")) {
        m_session.setEnabled(true); // the drive refuses writes now
        type(form, QStringLiteral("P_I10"), QStringLiteral("2000"));
        m_session.setEnabled(false);
        type(form, QStringLiteral("P_I10"), QStringLiteral("2200"));
    } else if (name == QLatin1String("PageSelections")) {
        choose(form, QStringLiteral("P_A20"), 1);
    } else if (name == QLatin1String("PageInfo")) {
        m_session.setOnlineMode(DWZ_READBACK);
        settle(100);
        say(QStringLiteral("    switched to read-back"));
        shoot(form, QStringLiteral("setup-readback-PageInfo"));
        m_session.setOnlineMode(DWZ_ONLINE);
        settle(100);
    }
}

void Tour::overviewOffline(QWidget *form, QWidget *page)
{
    if (page->objectName() == QLatin1String("Group_J"))
        type(form, QStringLiteral("P_J01"), QStringLiteral("5"));
}

void Tour::overviewOnline(QWidget *form, QWidget *page)
{
    if (page->objectName() == QLatin1String("Group_B"))
        type(form, QStringLiteral("P_B31"), QStringLiteral("-5"));
    else if (page->objectName() == QLatin1String("Group_E"))
        settle(600); // the drive pushes its moving values meanwhile
}

// The measurement window: a recording of the simulated drive, all of it and zoomed in.
void Tour::tourMeasurement()
{
    say(QStringLiteral("\n== measurement window"));
    MeasurementWindow window(m_session, &m_window);
    window.show();
    settle(200);
    say(QStringLiteral("  %1 samples of %2 channels")
            .arg(window.Measurement()->SampleCount())
            .arg(window.Measurement()->ChannelCount()));
    shoot(&window, QStringLiteral("measurement-1-all"));
    window.Plot()->Zoom(4, 400);
    window.Plot()->SetCursorX(550);
    settle(100);
    say(QStringLiteral("  zoomed in: %1").arg(window.Plot()->ReadOut()));
    shoot(&window, QStringLiteral("measurement-2-zoomed"));
    sayMessages();
}

// --- output ---------------------------------------------------------------------------------

void Tour::shoot(QWidget *w, const QString &name)
{
    const QString path = QDir(m_outDir).filePath(name + QStringLiteral(".png"));
    if (w->grab().save(path))
        m_pictures << path;
    else
        say(QStringLiteral("    cannot write %1").arg(path));
}

void Tour::settle(int milliseconds)
{
    QDeadlineTimer deadline(milliseconds);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    } while (!deadline.hasExpired());
}

void Tour::say(const QString &line)
{
    std::fputs(line.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void Tour::sayMessages()
{
    if (!m_recorder) return;
    for (QString text : m_recorder->takeMessages()) {
        if (text.startsWith(s_FreigabeAus)) ++m_refused;
        text.replace(QLatin1Char('\r'), QStringLiteral(" | "));
        say(QStringLiteral("    message: ") + text);
        ++m_messages;
    }
}

void Tour::summary()
{
    say(QStringLiteral("\n== Tour summary"));
    for (const QString &walk : std::as_const(m_walks))
        say(QStringLiteral("  walked %1").arg(walk));
    say(QStringLiteral("  pictures: %1 in %2").arg(m_pictures.size()).arg(m_outDir));
    say(QStringLiteral("  values typed: %1, entries chosen: %2").arg(m_typed).arg(m_chosen));
    say(QStringLiteral("  writes that reached the drive: %1 (refused while enabled: %2)")
            .arg(m_session.drive().log().size())
            .arg(m_refused));
    say(QStringLiteral("  messages shown: %1, wizards that failed to open: %2")
            .arg(m_messages)
            .arg(m_failures));
    for (auto it = g_qtMessages.cbegin(); it != g_qtMessages.cend(); ++it)
        say(QStringLiteral("  Qt said %1 time(s): %2").arg(it.value()).arg(it.key()));
}

} // namespace drivewiz::wizhost
