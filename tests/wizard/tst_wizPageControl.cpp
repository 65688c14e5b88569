// The wizard page control: pages, navigation, tree, buttons, closing, keys, the online
// indicator and the form size; and a Designer form loaded through the form loader.

#include "pagectl_fixture.h"

#include "host/wizFormLoader.h"
#include "platform/inifile.h"
#include "platform/screen.h"

#include <QDialog>
#include <QSignalSpy>
#include <QTabBar>
#include <QTimer>

using namespace drivewiz;

using Navigation = WizardForm;

TEST_F(Navigation, HiddenTrailingPagesEndTheWizard)
{
    EXPECT_EQ(pc->currentIndex(), 0);
    EXPECT_FALSE(back->isVisible()); // nothing before the first page
    EXPECT_TRUE(part(0, GetBtnNextName(0))->isVisible());
    pc->BtnMoveNextClick();
    EXPECT_EQ(pc->currentIndex(), 1);
    EXPECT_TRUE(back->isVisible());
    EXPECT_TRUE(back->isEnabled());
    pc->MoveNext(page(1));
    ASSERT_EQ(pc->currentIndex(), 2);
    EXPECT_FALSE(part(2, GetBtnNextName(2))->isVisible()); // only hidden pages follow
    pc->MoveNext(page(2));
    EXPECT_EQ(pc->currentIndex(), 2);
    pc->BtnMoveBackClick();
    pc->BtnMoveBackClick();
    EXPECT_EQ(pc->currentIndex(), 0);
    EXPECT_FALSE(back->isVisible());
    pc->MoveBack(page(0));
    EXPECT_EQ(pc->currentIndex(), 0); // no wrap backwards either
}

TEST_F(Navigation, NoWrapAtTheLastPage)
{
    page(3)->setProperty("Tag", 0);
    page(4)->setProperty("Tag", 0);
    pc->MoveTo(page(4));
    pc->MoveNext(page(4));
    EXPECT_EQ(pc->currentIndex(), 4);
    EXPECT_EQ(part(4, GetBtnNextName(4)), nullptr); // the last page has none
    pc->MoveTo(page(2));
    EXPECT_TRUE(part(2, GetBtnNextName(2))->isVisible());
}

TEST_F(Navigation, TagTwoIsShownAndTagChangesFollow)
{
    page(3)->setProperty("Tag", 2);
    EXPECT_EQ(treeTexts(), QStringList({"Start", "Modus", "Grenzen", "Leistung"}));
    pc->MoveTo(page(2));
    EXPECT_TRUE(part(2, GetBtnNextName(2))->isVisible());
    pc->BtnMoveNextClick();
    EXPECT_EQ(pc->currentIndex(), 3);
    page(1)->setProperty("Tag", 1);
    pc->MoveBack(page(3));
    EXPECT_EQ(pc->currentIndex(), 2);
    pc->MoveBack(page(2));
    EXPECT_EQ(pc->currentIndex(), 0); // page 1 skipped
}

TEST_F(Navigation, FirstShownPageStartsAndOnlyPageZeroHasNoBack)
{
    page(0)->setProperty("Tag", 1);
    pc->Loaded();
    EXPECT_EQ(pc->currentIndex(), 1);
    EXPECT_TRUE(back->isVisible()); // not page 0, though page 0 is hidden
    EXPECT_TRUE(back->isEnabled());
    pc->BtnMoveBackClick();
    EXPECT_EQ(pc->currentIndex(), 1); // there is no shown page to go back to
    pc->MoveNext(page(1));
    EXPECT_TRUE(back->isVisible());
    pc->MoveTo(page(0)); // the host may show a hidden page
    EXPECT_FALSE(back->isVisible());
}

TEST_F(Navigation, PageChangesAndSavingAreSignalled)
{
    QSignalSpy pages(pc, &TwizPageControl::pageChanged);
    QSignalSpy saving(pc, &TwizPageControl::beforeSave);
    int onChange = 0;
    pc->OnChange = [&](QObject *) { ++onChange; };
    pc->BtnMoveNextClick();
    pc->setCurrentIndex(2); // from outside, as a host may do
    ASSERT_EQ(pages.size(), 2);
    EXPECT_EQ(pages.at(0).at(0).toInt(), 1);
    EXPECT_EQ(pages.at(1).at(0).toInt(), 2);
    EXPECT_EQ(onChange, 2);
    bool busy = false;
    QObject::connect(pc, &TwizPageControl::beforeSave, pc, [&] { busy = table->Busy(); });
    pc->SaveAndClose();
    EXPECT_EQ(saving.size(), 1);
    EXPECT_TRUE(busy);
}

TEST_F(Navigation, TreeListsShownPagesAndMovesThePages)
{
    EXPECT_EQ(treeTexts(), QStringList({"Start", "Modus", "Grenzen"}));
    tree->setCurrentItem(tree->FindNode(QStringLiteral("Grenzen")));
    EXPECT_EQ(pc->currentIndex(), 2);
    pc->MoveTo(page(1));
    EXPECT_EQ(tree->currentItem()->text(0), QStringLiteral("Modus"));
    pc->MoveTo(page(3)); // a hidden page made active by the host: selection unchanged
    EXPECT_EQ(tree->currentItem()->text(0), QStringLiteral("Modus"));
    EXPECT_EQ(pc->currentIndex(), 3);
}

TEST_F(Navigation, DuplicateCaptionsAreReportedAndTheTreeGoesToTheFirst)
{
    pc->setTabText(2, QStringLiteral("Modus"));
    pc->UpdateTreeView(true);
    pc->MoveTo(page(2));
    const QStringList shown = messages();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown.at(0), QStringLiteral("Fehler in TwizPageControl:\rSeite  \"Modus\"  kommt "
                                          "mehrfach vor!\rBitte die entsprechenden Strings in "
                                          "der Sprachdatei \r\r") +
                               table->LanguageFile()->path() + QStringLiteral("\r\rüberprüfen!"));
    EXPECT_EQ(pc->currentIndex(), 2); // selecting the node did not move the pages
    pc->MoveTo(page(0));
    tree->setCurrentItem(tree->topLevelItem(2)); // the second "Modus"
    EXPECT_EQ(pc->currentIndex(), 1);
    EXPECT_EQ(messages().size(), 1); // again on this change
}

using PageParts = WizardForm;

TEST_F(PageParts, TitlesBevelsAndButtonsStandWhereTheWizardExpects)
{
    pc->SetwizTitleLeft(8);
    pc->SetwizTitleTop(4);
    for (int n = 0; n < pc->count(); ++n) {
        auto *title = part<QLabel>(n, GetLblTabSheetCaptionName(n));
        ASSERT_NE(title, nullptr);
        EXPECT_EQ(title->text(), pc->tabText(n));
        EXPECT_EQ(title->pos(), QPoint(8, 4));
        auto *upper = part<QFrame>(n, GetBevelTabSheetName(QStringLiteral("O"), n));
        ASSERT_NE(upper, nullptr);
        EXPECT_EQ(upper->geometry(), QRect(8, 4 + title->height() + 1 + 4, 480 - 16, 2));
        auto *lower = part<QFrame>(n, GetBevelTabSheetName(QStringLiteral("U"), n));
        const QPoint backInPage = page(n)->mapFromGlobal(back->mapToGlobal(QPoint()));
        EXPECT_EQ(lower->geometry(), QRect(8, backInPage.y() - 7, 480 - 16, 2));
    }
    // The buttons share one size: the back button's 75 x 25 or what "Abbrechen" with its
    // icon needs; their places follow it as the wizard's arithmetic says.
    pc->resize(640, 480); // room for the arithmetic with wider buttons
    back->move(20, 440);
    pc->UpdateTabLabels(); // a hidden button reports no move
    TwizButton *ok = pc->BtnOK();
    TwizButton *cancel = pc->BtnCancel();
    ASSERT_TRUE(ok && cancel);
    const QSize size = back->size();
    EXPECT_GE(size.width(), 75);
    EXPECT_EQ(size.width(), std::max(75, cancel->sizeHint().width()));
    auto *next = part<QPushButton>(1, GetBtnNextName(1));
    EXPECT_EQ(next->mapToGlobal(QPoint()), back->mapToGlobal(QPoint(size.width() * 4 / 3, 0)));
    EXPECT_EQ(next->size(), size);
    EXPECT_EQ(next->text(), QStringLiteral("Weiter"));
    EXPECT_EQ(ok->geometry(), QRect(QPoint(640 - size.width() * 3 / 2, 440), size));
    EXPECT_EQ(cancel->geometry(), QRect(QPoint(ok->x() - size.width() * 4 / 3, 440), size));
    EXPECT_EQ(cancel->text(), QStringLiteral("Abbrechen"));
    // Too little room for that: back moves left, at last the row is shared evenly.
    pc->resize(480, 480);
    back->move(200, 440);
    pc->UpdateTabLabels();
    const int nextRight = next->mapTo(form.get(), QPoint(size.width(), 0)).x();
    EXPECT_LT(back->x(), 200);
    EXPECT_GT(cancel->x(), nextRight);
    EXPECT_GT(ok->x(), cancel->x() + size.width());
    EXPECT_LE(ok->x() + size.width(), 480);
    EXPECT_FALSE(pc->tabBar()->isVisible());        // tabs are for the designer only
    EXPECT_GE(page(0)->height(), pc->height() - 4); // and take no room at run time
    EXPECT_EQ(pc->SearchButton()->x(), 480 - pc->SearchButton()->width() - 10);
    EXPECT_GE(pc->SearchButton()->width(), 75);
    EXPECT_EQ(pc->SearchEdit()->x(), pc->SearchButton()->x() - 121 - 5);
}

TEST_F(PageParts, WithoutBackButtonThereAreNoNextOkOrCancelButtons)
{
    pc->SetBtnBack(nullptr);
    EXPECT_EQ(pc->BtnOK(), nullptr);
    EXPECT_EQ(pc->BtnCancel(), nullptr);
    EXPECT_EQ(form->findChild<QWidget *>(QStringLiteral("BtnOK")), nullptr);
    for (int n = 0; n < pc->count(); ++n)
        EXPECT_EQ(part(n, GetBtnNextName(n)), nullptr);
    auto *lower = part<QFrame>(0, GetBevelTabSheetName(QStringLiteral("U"), 0));
    EXPECT_EQ(lower->y(), page(0)->height() - 25);
    pc->SetBtnBack(back); // and back again
    EXPECT_NE(pc->BtnOK(), nullptr);
    EXPECT_NE(part(0, GetBtnNextName(0)), nullptr);
}

TEST_F(PageParts, RemovedPagesKeepTheirPartsNumbered)
{
    delete page(0);
    EXPECT_EQ(part<QLabel>(0, GetLblTabSheetCaptionName(0))->text(), QStringLiteral("Modus"));
    EXPECT_EQ(page(0)->findChildren<QLabel *>(GetLblTabSheetCaptionName(1)).size(), 0);
}

TEST_F(PageParts, TheLanguageFileNamesButtonsAndPages)
{
    test::writeFile(dir.filePath(QStringLiteral("WizLingua/wizling.1")),
                    "[ComStr]\r\ns25=Next\r\ns17=Cancel\r\n[WizTest]\r\ncSeite1=Betriebsart\r\n");
    table->SetLanguage(1);
    pc->Loaded();
    EXPECT_EQ(part<QPushButton>(0, GetBtnNextName(0))->text(), QStringLiteral("Next"));
    EXPECT_EQ(pc->BtnCancel()->text(), QStringLiteral("Cancel"));
    EXPECT_EQ(pc->tabText(1), QStringLiteral("Betriebsart"));
    EXPECT_EQ(part<QLabel>(1, GetLblTabSheetCaptionName(1))->text(), QStringLiteral("Betriebsart"));
    EXPECT_EQ(treeTexts(), QStringList({"Start", "Betriebsart", "Grenzen"}));
}

TEST(PageControlAlone, WithoutPagesFormOrTableNothingBreaks)
{
    TwizPageControl alone;
    alone.Loaded();
    alone.MoveNext(nullptr);
    alone.BtnMoveNextClick();
    alone.BtnMoveBackClick();
    alone.UpdateTreeSelection();
    alone.OnTimerOnline();
    alone.show();
    alone.SearchBtnClick();
    EXPECT_TRUE(test::recorder().messages().isEmpty());
    alone.SaveAndClose(); // its own window: closes without asking
    EXPECT_FALSE(alone.isVisible());
    EXPECT_EQ(alone.property(TwizPageControl::ModalResultProperty).toInt(), int(mrOk));
}

TEST(VisibilityWords, FollowModeAndUserLevel)
{
    TParaTable table;
    table.SetMaxRLevel(2);
    EXPECT_TRUE(VisibilityStatusWords(&table)); // offline
    EXPECT_FALSE(VisibilityControlWords(&table));
    table.SetOnline(omOnline);
    EXPECT_FALSE(VisibilityStatusWords(&table));
    table.SetMaxRLevel(1);
    EXPECT_TRUE(VisibilityStatusWords(&table));
    EXPECT_TRUE(VisibilityControlWords(&table));
    EXPECT_TRUE(VisibilityStatusWords(nullptr));
}

using Closing = WizardForm;

TEST_F(Closing, OkWritesAllParametersOfflineAndCloses)
{
    table->SetCallbacks(sim::SimulatedDrive::callbacks());
    bool busyBeforeSave = false;
    pc->OnBeforeSave = [&](QObject *) { busyBeforeSave = table->Busy(); };
    drive.clearLog();
    pc->BtnOK()->click();
    EXPECT_TRUE(busyBeforeSave);
    EXPECT_FALSE(table->Busy());
    EXPECT_TRUE(pc->Saved());
    EXPECT_TRUE(drive.log().contains(QStringLiteral("A10 (1) = 10")));
    EXPECT_TRUE(messages().isEmpty()); // saved: no question
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(form->property(TwizPageControl::ModalResultProperty).toInt(), int(mrOk));
}

// A message box runs its own loop: the user lets go of the mouse while it is up, and the
// release goes to it rather than to the button pressed.
class ReleasedDuringMessage : public DialogRecorder
{
public:
    explicit ReleasedDuringMessage(QWidget *form) : m_form(form) {}
    void showMessage(const QString &text) override
    {
        DialogRecorder::showMessage(text);
        QTest::mouseRelease(m_form, Qt::LeftButton);
    }
    int messageDlg(const QString &text, MsgDlgType type, MsgDlgButtons buttons) override
    {
        const int answer = DialogRecorder::messageDlg(text, type, buttons);
        QTest::mouseRelease(m_form, Qt::LeftButton);
        return answer;
    }

private:
    QWidget *m_form;
};

TEST_F(Closing, AClickOnOkThatShowedALimitMessageStillSaves)
{
    table->SetCallbacks(sim::SimulatedDrive::callbacks());
    QLineEdit *e = edit(QStringLiteral("A10"));
    e->setFocus(Qt::TabFocusReason);
    e->selectAll();
    QTest::keyClicks(e, QStringLiteral("500"));
    auto *recording = new ReleasedDuringMessage(form.get());
    std::shared_ptr<DialogService> previous(
        setDialogService(std::unique_ptr<DialogService>(recording)).release(),
        [](DialogService *s) { setDialogService(std::unique_ptr<DialogService>(s)); });
    drive.clearLog();
    QTest::mousePress(pc->BtnOK(), Qt::LeftButton);
    EXPECT_EQ(recording->messages().size(), 1); // the limit
    EXPECT_EVENTUALLY_TRUE(!form->isVisible());
    EXPECT_TRUE(drive.log().contains(QStringLiteral("A10 (1) = 100")));
}

TEST_F(Closing, OkOnADialogAccepts)
{
    QDialog dialog;
    auto *p = new TwizPageControl(&dialog);
    p->addTab(new QWidget, QStringLiteral("Eins"));
    p->Loaded();
    dialog.show();
    p->SaveAndClose();
    EXPECT_EQ(dialog.result(), int(QDialog::Accepted));
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(Closing, AnUnsavedOfflineWizardAsksFirst)
{
    test::recorder().answer(int(mrNo));
    EXPECT_FALSE(form->close());
    EXPECT_EQ(messages(), QStringList({"Abbrechen?\r(geänderte Werte gehen verloren)"}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->property(TwizPageControl::ModalResultProperty).toInt(), int(mrNone));
    test::recorder().answer(int(mrYes));
    pc->BtnCancel()->click();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(form->property(TwizPageControl::ModalResultProperty).toInt(), int(mrCancel));
}

TEST_F(Closing, OnlineClosesWithoutAsking)
{
    hostMode(omOnline);
    EXPECT_FALSE(table->UpdateList().empty());
    EXPECT_TRUE(form->close());
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_TRUE(table->UpdateList().empty()); // subscriptions ended
}

TEST_F(Closing, FormSizeIsStoredAndRestoredAt96PixelsPerInch)
{
    SetScreenPixelsPerInchOverride(120);
    form->resize(700, 600);
    hostMode(omOnline);
    ASSERT_TRUE(form->close());
    IniFile cfg(dir.filePath(QStringLiteral("WizLingua/wiz.cfg")));
    ASSERT_TRUE(cfg.load());
    EXPECT_EQ(cfg.readInteger(QStringLiteral("WizTest"), QStringLiteral("FormHeight"), 0), 480);
    EXPECT_EQ(cfg.readInteger(QStringLiteral("WizTest"), QStringLiteral("FormWidth"), 0), 560);
    SetScreenPixelsPerInchOverride(96);
    form->resize(300, 200);
    form->show();
    EXPECT_EQ(form->size(), QSize(560, 480));
}

TEST_F(Closing, AStoredSizeSmallerThanTheFormIsNotRestored)
{
    hostMode(omOnline);
    form->resize(400, 300); // as a run on a small screen stores it
    ASSERT_TRUE(form->close());
    form->resize(700, 600);
    form->show();
    EXPECT_EQ(form->size(), QSize(700, 600));
}

using Keys = WizardForm;

TEST_F(Keys, EscapeRestoresAChangedFieldFirstAndCancelsSecond)
{
    QLineEdit *e = edit(QStringLiteral("A10"));
    e->setFocus();
    e->selectAll();
    QTest::keyClicks(e, QStringLiteral("42"));
    ASSERT_EQ(e->text(), QStringLiteral("42"));
    QTest::keyClick(e, Qt::Key_Escape);
    EXPECT_EQ(e->text(), QStringLiteral("10"));
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(messages().isEmpty());
    test::recorder().answer(int(mrYes));
    QTest::keyClick(e, Qt::Key_Escape);
    EXPECT_EQ(messages(), QStringList({"Abbrechen?\r(geänderte Werte gehen verloren)"}));
    EXPECT_FALSE(form->isVisible());
}

TEST_F(Keys, EnterAsksToEndTheWizardUnlessAnEditIsChanged)
{
    QLineEdit *e = edit(QStringLiteral("A10"));
    e->setFocus();
    e->selectAll();
    QTest::keyClicks(e, QStringLiteral("5"));
    QTest::keyClick(e, Qt::Key_Return);
    EXPECT_TRUE(messages().isEmpty()); // the edit takes its Enter
    auto *next = part<QPushButton>(0, GetBtnNextName(0));
    next->setFocus();
    QTest::keyClick(next, Qt::Key_Return);
    EXPECT_EQ(pc->currentIndex(), 1); // a focused button is pressed
    EXPECT_TRUE(messages().isEmpty());
    tree->setFocus();
    test::recorder().answer(int(mrNo));
    QTest::keyClick(tree, Qt::Key_Return);
    EXPECT_EQ(messages(),
              QStringList({"Assistenten beenden?\r(geänderte Werte werden übernommen)"}));
    EXPECT_TRUE(form->isVisible());
}

using OnlineIndicator = WizardForm;

TEST_F(OnlineIndicator, ShowsTheModeAndBlinksRedOnAFault)
{
    QLabel *panel = pc->OnlinePanel();
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(pc->GetBtnCalcelVisible());
    hostMode(omOnline);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->text(), QStringLiteral("Online"));
    EXPECT_EQ(pc->OnlinePanelColor(), clLime);
    EXPECT_TRUE(pc->OnlineTimer()->isActive());
    EXPECT_EQ(pc->OnlineTimer()->interval(), 500);
    EXPECT_FALSE(pc->GetBtnCalcelVisible());
    pc->OnTimerOnline();
    EXPECT_EQ(pc->OnlinePanelColor(), clBtnFace);
    pc->E48Control()->SetText(QStringLiteral("5: Störung"));
    pc->OnTimerOnline();
    EXPECT_EQ(pc->OnlinePanelColor(), clRed);
    EXPECT_EQ(panel->toolTip(), QStringLiteral("Online\n5: Störung"));
    hostMode(omRueckdoku);
    EXPECT_EQ(panel->text(), QStringLiteral("Rückdokumentation"));
    EXPECT_EQ(pc->OnlinePanelColor(), clYellow);
    EXPECT_FALSE(pc->OnlineTimer()->isActive());
    hostMode(omOffline);
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(pc->GetBtnCalcelVisible());
}

TEST_F(OnlineIndicator, GoingOnlineSubscribesTheActivePage)
{
    hostMode(omOnline);
    const std::vector<quint32> &subscribed = table->UpdateList();
    EXPECT_NE(std::find(subscribed.begin(), subscribed.end(), control("A10")->Q7adr()),
              subscribed.end());
    EXPECT_EQ(std::find(subscribed.begin(), subscribed.end(), control("A16")->Q7adr()),
              subscribed.end()); // page 2 is not shown yet
    pc->MoveTo(page(2));
    EXPECT_NE(std::find(subscribed.begin(), subscribed.end(), control("A16")->Q7adr()),
              subscribed.end());
}

// A Designer form: table, page control with four pages of parameter controls, a tree and
// a back button, linked by object names and built by the form loader.
TEST_F(WizardForm, DesignerFormLoadsEndToEnd)
{
    TwizFormLoader loader;
    std::unique_ptr<QWidget> loaded(
        loader.loadForm(test::sourcePath(QStringLiteral("tests/wizard/data/pagectl_test.ui"))));
    ASSERT_TRUE(loaded);
    auto *p = loaded->findChild<TwizPageControl *>(QStringLiteral("PageControl"));
    ASSERT_NE(p, nullptr);
    ASSERT_EQ(p->count(), 4);
    EXPECT_NE(p->wizParaSource(), nullptr);
    ASSERT_NE(p->wizTreeView(), nullptr);
    EXPECT_EQ(p->wizBtnBack(), loaded->findChild<QAbstractButton *>(QStringLiteral("BtnBack")));
    QStringList nodes;
    for (int i = 0; i < p->wizTreeView()->topLevelItemCount(); ++i)
        nodes << p->wizTreeView()->topLevelItem(i)->text(0);
    EXPECT_EQ(nodes, QStringList({"Zeit", "Modus", "Ende"})); // page 2 has Tag 1
    EXPECT_NE(loaded->findChild<QWidget *>(QStringLiteral("BtnOK")), nullptr);
    EXPECT_NE(loaded->findChild<QWidget *>(QStringLiteral("EdSearch")), nullptr);
    auto *a10 = loaded->findChild<TParaClass *>(QStringLiteral("P_A10"));
    ASSERT_NE(a10, nullptr);
    EXPECT_EQ(a10->GetText(), QStringLiteral("10"));
    p->BtnMoveNextClick();
    p->BtnMoveNextClick();
    EXPECT_EQ(p->currentIndex(), 3);
    auto *title = p->widget(1)->findChild<QLabel *>(GetLblTabSheetCaptionName(1));
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->text(), QStringLiteral("Modus"));
    EXPECT_EQ(title->pos(), QPoint(8, 4));
    for (const QString &m : messages()) // only the table's note on the central language folder
        EXPECT_TRUE(m.startsWith(QStringLiteral("Info: Sprache Nr.1 verwendet.")))
            << m.toStdString();
}
