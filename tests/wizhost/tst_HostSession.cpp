// The demo host's session: wizards through the C host interface with the simulated
// drive, switches that reach the open wizard, the hidden page rule and the log.

#include "session_fixture.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "platform/dialogs.h"
#include "widgets/wizEdit.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

using namespace drivewiz;
using namespace drivewiz::wizhost;

namespace {

class Session : public HostSessionTest
{
protected:
    void SetUp() override
    {
        HostSessionTest::SetUp();
        QObject::connect(session.get(), &HostSession::logLine,
                         [this](const QString &line) { lines << line; });
    }

    QDialog *open(Wizard which = Wizard::Setup)
    {
        dwz_form *form = session->createWizard(which);
        if (!form) return nullptr;
        dwz_form_show(form);
        QApplication::setActiveWindow(session->openDialog());
        settle();
        return session->openDialog();
    }
    TParaTable *table() const
    {
        return reinterpret_cast<TParaTable *>(dwz_form_table(session->openWizard()));
    }
    TParaClass *control(const char *name) const
    {
        return session->openDialog()->findChild<TParaClass *>(QLatin1String(name));
    }
    static void settle(int milliseconds = 50)
    {
        QDeadlineTimer deadline(milliseconds);
        do {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        } while (!deadline.hasExpired());
    }

    QStringList lines;
};

TEST_F(Session, ModeSwitchReachesTheOpenWizard)
{
    ASSERT_NE(open(), nullptr);
    EXPECT_EQ(table()->Online(), omOffline);
    session->setOnlineMode(DWZ_ONLINE);
    EXPECT_EVENTUALLY_EQ(table()->Online(), omOnline);
    EXPECT_EVENTUALLY_TRUE(!session->drive().subscriptions().empty()); // two messages on, under load
    session->closeWizard();
    EXPECT_TRUE(session->drive().subscriptions().empty());
}

// Every text of an open wizard follows a switch of the host's language, and the host's
// notes follow too.
TEST_F(Session, LanguageSwitchReachesEveryTextOfTheOpenWizard)
{
    QDialog *form = open();
    ASSERT_NE(form, nullptr);
    auto *pages = form->findChild<TwizPageControl *>(QStringLiteral("PageControl"));
    ASSERT_NE(pages, nullptr);
    const auto texts = [&] {
        pages->MoveTo(pages->widget(1));
        return QStringList{
            form->windowTitle(),
            form->findChild<QAbstractButton *>(GetBtnNextName(1))->text(),
            form->findChild<QAbstractButton *>(QStringLiteral("BtnBack"))->text(),
            pages->BtnCancel()->text(),
            pages->SearchButton()->text(),
            pages->widget(0)->findChild<QLabel *>(GetLblTabSheetCaptionName(0))->text(),
            pages->wizTreeView()->topLevelItem(0)->text(0),
            control("P_A80")->paraNameLabel()->toolTip().section(QLatin1Char('\n'), 0, 0),
            DialogCaption(MsgDlgType::Confirmation)};
    };
    const QStringList german = texts();
    EXPECT_EQ(german, QStringList({QStringLiteral("Inbetriebnahme-Assistent"), "Weiter",
                                   QStringLiteral("< Zurück"), "Abbrechen", "Suchen",
                                   "Allgemein", "Allgemein", "Klick zur Parameterbeschreibung",
                                   QStringLiteral("Bestätigen")}));
    session->setLanguage(2); // the texts follow from the event loop
    EXPECT_EVENTUALLY_EQ(texts(), QStringList({"Drive set-up wizard", "Next", "< Back", "Cancel",
                                       "Search", "General", "General",
                                       "Click for the parameter description", "Confirm"}));
    session->setOnlineMode(DWZ_READBACK);
    EXPECT_EVENTUALLY_EQ(pages->OnlinePanel()->text(), QStringLiteral("Read-back"));
    EXPECT_TRUE(lines.contains(QStringLiteral("# mode: Read-back"))) << lines.join(QLatin1Char('|')).toStdString();
    session->setLanguage(1);
    EXPECT_EVENTUALLY_EQ(texts(), german);
    EXPECT_EVENTUALLY_EQ(pages->OnlinePanel()->text(), QStringLiteral("Rückdokumentation"));
    EXPECT_TRUE(lines.contains(QStringLiteral("# Sprache: 1")));
}

TEST_F(Session, SettingsAreRememberedForTheNextWizard)
{
    session->setOnlineMode(DWZ_READBACK);
    session->setUserLevel(4);
    ASSERT_NE(open(), nullptr);
    EXPECT_EQ(table()->Online(), omRueckdoku);
    EXPECT_EQ(table()->UserLevel(), 4);
    session->setUserLevel(1);
    EXPECT_EQ(table()->UserLevel(), 1);
}

TEST_F(Session, OnlyOneWizardAtATime)
{
    ASSERT_NE(open(), nullptr);
    EXPECT_EQ(session->createWizard(Wizard::Overview), nullptr);
}

TEST_F(Session, HiddenPageFollowsTheEncoderChoice)
{
    QDialog *form = open();
    ASSERT_NE(form, nullptr);
    QWidget *page = form->findChild<QWidget *>(QStringLiteral("PageHidden"));
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->property("Tag").toInt(), 1); // H40 is "0: inaktiv" in the sample
    auto *combo = qobject_cast<QComboBox *>(control("P_H40")->GetEditControl());
    ASSERT_NE(combo, nullptr);
    combo->showPopup(); // the list is filled when it drops down
    settle();
    combo->setCurrentIndex(1);
    EXPECT_EQ(page->property("Tag").toInt(), 0);
    combo->setCurrentIndex(0);
    combo->hidePopup();
    EXPECT_EQ(page->property("Tag").toInt(), 1);
}

TEST_F(Session, SavedValuesReachTheLogFile)
{
    QDialog *form = open();
    ASSERT_NE(form, nullptr);
    form->findChild<QAbstractButton *>(QStringLiteral("BtnOK"))->click();
    session->closeWizard();
    settle();
    EXPECT_TRUE(lines.contains(QStringLiteral("A80 (1) = 1")));
    const QByteArray file = test::readFile(options.logFile);
    EXPECT_TRUE(file.contains("A80 (1) = 1\n"));
    EXPECT_TRUE(file.contains("# Assistent mit OK geschlossen\n")); // the interface's language
}

TEST_F(Session, EnabledDriveRefusesWhatTheUserTypes)
{
    session->setOnlineMode(DWZ_ONLINE);
    session->setEnabled(true);
    ASSERT_NE(open(), nullptr);
    auto *edit = qobject_cast<QLineEdit *>(control("P_A80")->GetEditControl());
    edit->setFocus(Qt::TabFocusReason);
    edit->selectAll();
    edit->insert(QStringLiteral("99"));
    edit->clearFocus();
    settle();
    EXPECT_TRUE(session->drive().log().isEmpty());
    ASSERT_EQ(test::recorder().messages().size(), 1);
    EXPECT_TRUE(test::recorder().messages().first().startsWith(s_FreigabeAus));
    EXPECT_EQ(edit->text(), QStringLiteral("1"));
}

TEST_F(Session, MissingFormIsLoggedNotShown)
{
    options.formsDir = dir.path();
    session = std::make_unique<HostSession>(options);
    QString error;
    ASSERT_TRUE(session->start(error));
    EXPECT_EQ(session->createWizard(Wizard::Setup), nullptr);
    EXPECT_TRUE(test::readFile(options.logFile).contains("# Assistent lässt sich nicht öffnen:"));
}

} // namespace
