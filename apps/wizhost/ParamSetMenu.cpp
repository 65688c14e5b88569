#include "ParamSetMenu.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamViewTexts.h"
#include "platform/dialogs.h"
#include "wizard/ParamCompareView.h"
#include "wizard/wizPageControl.h"
#include "wizard/wizParamViews.h"

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>

namespace drivewiz::wizhost {

ParamSetMenu::ParamSetMenu(HostSession &session, QMenuBar *bar, QObject *parent)
    : QObject(parent), m_session(session)
{
    m_menu = bar->addMenu(QString());
    m_menu->setObjectName(QStringLiteral("MnuParamSet"));
    const auto add = [this](const char *name, void (ParamSetMenu::*slot)()) {
        QAction *a = m_menu->addAction(QString(), this, slot);
        a->setObjectName(QLatin1String(name));
        return a;
    };
    m_save = add("ActSaveSet", &ParamSetMenu::saveSet);
    m_load = add("ActLoadSet", &ParamSetMenu::loadSet);
    m_menu->addSeparator();
    m_drive = add("ActCompareDrive", &ParamSetMenu::compareWithDrive);
    m_defaults = add("ActCompareDefaults", &ParamSetMenu::compareWithDefaults);
    m_journal = add("ActJournal", &ParamSetMenu::showJournal);
    m_menu->addSeparator();
    connect(&session, &HostSession::wizardOpened, this, &ParamSetMenu::wizardOpened);
    connect(&session, &HostSession::wizardClosed, this, &ParamSetMenu::wizardClosed);
    enable(false);
    translate();
}

// The host's language file is the wizard's: the same section serves both.
QString ParamSetMenu::text(const char *key) const
{
    const QString german = paramViewText(nullptr, key);
    if (m_views && m_views->table()) return paramViewText(m_views->table(), key);
    return wizReadString(m_session.languageFile(), QStringLiteral("ParamViews"), QLatin1String(key),
                         german);
}

void ParamSetMenu::translate()
{
    m_menu->setTitle(text("MenuSets"));
    m_save->setText(text("SaveSet"));
    m_load->setText(text("LoadSet"));
    m_drive->setText(text("CompareDrive"));
    m_defaults->setText(text("CompareDefaults"));
    m_journal->setText(text("Journal"));
}

void ParamSetMenu::enable(bool on)
{
    for (QAction *a : {m_save, m_load, m_drive, m_defaults, m_journal})
        a->setEnabled(on);
}

void ParamSetMenu::wizardOpened()
{
    QDialog *form = m_session.openDialog();
    auto *pc = form ? form->findChild<TwizPageControl *>() : nullptr;
    m_views = TwizParamViews::install(pc);
    if (!m_views) return;
    delete m_undo;
    delete m_redo;
    m_undo = m_views->createUndoAction(m_menu);
    m_redo = m_views->createRedoAction(m_menu);
    m_undo->setObjectName(QStringLiteral("ActUndo"));
    m_redo->setObjectName(QStringLiteral("ActRedo"));
    // The wizard has its own keys; the menu's would be ambiguous in the host's window.
    m_undo->setShortcuts({});
    m_redo->setShortcuts({});
    m_menu->addAction(m_undo);
    m_menu->addAction(m_redo);
    enable(true);
    translate();
}

void ParamSetMenu::wizardClosed()
{
    m_views = nullptr;
    delete m_undo;
    delete m_redo;
    enable(false);
    translate();
}

void ParamSetMenu::saveSet()
{
    if (!m_views) return;
    const QString file = dialogService()->getSaveFileName(text("SaveSet").remove(QLatin1Char('&')),
                                                          QString(), text("SetFilter"));
    if (file.isEmpty()) return;
    if (m_views->saveSet(file))
        m_session.note(QStringLiteral("# ") +
                       paramViewText(m_views->table(), "Saved", file,
                                     QString::number(m_views->wizardKeys().size())));
}

void ParamSetMenu::loadSet()
{
    if (!m_views) return;
    const QString file = dialogService()->getOpenFileName(text("LoadSet").remove(QLatin1Char('&')),
                                                          QString(), text("SetFilter"));
    if (!file.isEmpty()) watch(m_views->compareWithFile(file));
}

void ParamSetMenu::compareWithDrive()
{
    if (m_views) watch(m_views->compareWithDrive());
}

void ParamSetMenu::compareWithDefaults()
{
    if (m_views) watch(m_views->compareWithDefaults());
}

// What an Apply wrote goes into the host's log, beside what reached the drive.
void ParamSetMenu::watch(QDialog *compare)
{
    auto *d = qobject_cast<TParamCompareDialog *>(compare);
    if (!d) return;
    TParamCompareView *view = d->view();
    connect(view, &TParamCompareView::appliedValues, this, [this, view]() {
        m_session.note(QStringLiteral("# ") + view->resultText().section(QLatin1Char('\n'), 0, 0));
    });
}

void ParamSetMenu::showJournal()
{
    if (m_views) m_views->showJournal();
}

} // namespace drivewiz::wizhost
