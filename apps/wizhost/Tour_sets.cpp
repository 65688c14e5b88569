// The tour through the parameter views: values typed offline show their marks, one is
// undone, the compare view against the defaults applies a value, the journal lists the
// writes, and going online with edits held opens the compare view against the drive
// before anything is written.

#include "Tour.h"

#include "HostWindow.h"
#include "ParamSetMenu.h"

#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamEditSession.h"
#include "paramtable/ParamUndo.h"
#include "wizard/ParamCompareView.h"
#include "wizard/ParamJournalView.h"
#include "wizard/wizParamViews.h"

#include <QApplication>
#include <QDialog>
#include <QPlainTextEdit>
#include <QTabWidget>

namespace drivewiz::wizhost {

void Tour::walkSets()
{
    m_session.setUserLevel(3);
    m_session.setOnlineMode(DWZ_OFFLINE);
    const int logBefore = int(m_session.drive().log().size());
    dwz_form *form = m_session.createWizard(Wizard::Setup);
    TwizParamViews *views = m_window.paramSetMenu()->views();
    if (!form || !views) {
        say(QStringLiteral("sets: the wizard or its views did not open"));
        ++m_failures;
        return;
    }
    auto *w = static_cast<QWidget *>(dwz_form_widget(form));
    dwz_form_show(form);
    QApplication::setActiveWindow(w);
    settle(150);
    say(QStringLiteral("\n== parameter sets: \"%1\", offline").arg(w->windowTitle()));
    type(w, QStringLiteral("P_A80"), QStringLiteral("21"));
    type(w, QStringLiteral("P_A01"), QStringLiteral("Sets Tour"));
    type(w, QStringLiteral("P_A80"), QStringLiteral("22"));
    ParamEditSession *session = views->session();
    session->undo()->undo();
    settle();
    say(QStringLiteral("    undone: A80 = %1; changed: %2")
            .arg(w->findChild<TParaClass *>(QStringLiteral("P_A80"))->GetText())
            .arg(session->changedSummary().replace(QLatin1Char('\n'), QStringLiteral(" | "))));
    shoot(w, QStringLiteral("sets-01-marks"));
    compareDefaults(views);
    journal(views);
    goOnline(w, views, logBefore);
    m_session.closeWizard();
    settle();
    sayMessages();
    const QStringList log = m_session.drive().log();
    say(QStringLiteral("  reached the drive (%1 writes):").arg(log.size() - logBefore));
    for (int i = logBefore; i < log.size(); ++i)
        say(QStringLiteral("    ") + log.at(i));
}

void Tour::compareDefaults(TwizParamViews *views)
{
    TParamCompareDialog *d = views->compareWithDefaults();
    if (!d) return;
    settle(100);
    const ParamCompare::Counts c = d->view()->model()->counts();
    say(QStringLiteral("    compare with the defaults: %1 parameters, %2 different")
            .arg(c.rows)
            .arg(c.different));
    shoot(d, QStringLiteral("sets-02-compare-defaults"));
    d->view()->model()->setAllTicked(false);
    d->view()->model()->setTicked(0, true);
    d->view()->apply();
    settle();
    say(QStringLiteral("    applied: ") +
        d->view()->resultText().replace(QLatin1Char('\n'), QStringLiteral(" | ")));
    shoot(d, QStringLiteral("sets-03-compare-applied"));
    d->close();
    settle();
}

void Tour::journal(TwizParamViews *views)
{
    TParamJournalDialog *d = views->showJournal();
    if (!d) return;
    settle(100);
    say(QStringLiteral("    journal: %1 lines").arg(d->view()->shownCount()));
    shoot(d, QStringLiteral("sets-04-journal"));
    d->close();
    settle();
}

void Tour::goOnline(QWidget *form, TwizParamViews *views, int logBefore)
{
    QApplication::setActiveWindow(form); // back from the dialogs
    settle();
    type(form, QStringLiteral("P_A80"), QStringLiteral("23"));
    m_session.setOnlineMode(DWZ_ONLINE);
    settle(200);
    const int written = int(m_session.drive().log().size()) - logBefore;
    auto *d = qobject_cast<TParamCompareDialog *>(views->lastDialog());
    say(QStringLiteral("    went online: the compare view %1, %2 writes reached the drive")
            .arg(d ? QStringLiteral("opened") : QStringLiteral("did not open"))
            .arg(written));
    if (!d) return;
    shoot(d, QStringLiteral("sets-05-going-online"));
    d->view()->apply();
    settle(100);
    say(QStringLiteral("    applied: ") +
        d->view()->resultText().replace(QLatin1Char('\n'), QStringLiteral(" | ")));
    d->close();
    settle();
}

} // namespace drivewiz::wizhost
