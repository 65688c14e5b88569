// Typing into parameter controls, leaving them, posting, mirrors and read-back.

#include "paramctrls_fixture.h"

#include "platform/messages.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"

#include <QCheckBox>
#include <QClipboard>

using namespace drivewiz;

class ParamCtrlEditing : public ParamCtrlForm
{
protected:
    void typeInto(TParaClass *c, const QString &text)
    {
        enter(c);
        edit(c)->selectAll();
        QTest::keyClicks(edit(c), text);
    }
    QStringList writes() { return drive.log(); }
};

TEST_F(ParamCtrlEditing, NumericFieldsTakeOnlyNumbers)
{
    TParaClass *c = control(QStringLiteral("A10"));
    typeInto(c, QStringLiteral("1x2a"));
    EXPECT_EQ(edit(c)->text(), QStringLiteral("12"));
    typeInto(c, QStringLiteral("-"));
    EXPECT_EQ(edit(c)->text(), QStringLiteral("-")); // a lone minus may stay
    QTest::keyClicks(edit(c), QStringLiteral("a"));
    EXPECT_EQ(edit(c)->text(), QStringLiteral("-"));
    QApplication::clipboard()->setText(QStringLiteral("a"));
    QTest::keyClick(edit(c), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit(c)->text(), QStringLiteral("-")); // "-a" was undone
    EXPECT_GE(test::recorder().beeps(), 1);
    typeInto(c, QStringLiteral("1,5"));
    EXPECT_EQ(edit(c)->text(), QStringLiteral("1.5")); // the decimal separator of the platform
    QApplication::clipboard()->setText(QString(1 << 20, QLatin1Char('x'))); // 1 MB
    QTest::keyClick(edit(c), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(edit(c)->text() == QLatin1String("1.5"));
}

TEST_F(ParamCtrlEditing, LeavingChecksLimitsAndNumbers)
{
    TParaClass *c = control(QStringLiteral("A10"));
    typeInto(c, QStringLiteral("150"));
    leave();
    EXPECT_EQ(messages(), QStringList({"A10:\rWert ausserhalb der zulässiger Grenzen\r"
                                       "-100 ms .. 100 ms !\rWert wird angepasst."}));
    EXPECT_EQ(c->GetText(), QStringLiteral("100"));
    typeInto(c, QStringLiteral("-100"));
    leave();
    EXPECT_TRUE(messages().isEmpty()); // a limit itself passes
    typeInto(c, QStringLiteral("-"));
    leave();
    EXPECT_EQ(messages(), QStringList({"A10: Wert muss eine Zahl sein!\rWert wird auf Default "
                                       "gesetzt."}));
    EXPECT_EQ(c->GetText(), QStringLiteral("10"));
    TParaClass *open = control(QStringLiteral("A11")); // no limits in the description
    typeInto(open, QStringLiteral("5"));
    leave();
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(open->GetText(), QStringLiteral("-INF")); // clamped to the empty upper limit
}

TEST_F(ParamCtrlEditing, OnlinePostingRules)
{
    goOnline();
    TParaClass *c = control(QStringLiteral("A10"));
    drive.clearLog();
    enter(c);
    leave();
    EXPECT_TRUE(writes().isEmpty()); // unchanged: nothing sent
    typeInto(c, QStringLiteral("20"));
    QTest::keyClick(edit(c), Qt::Key_Return);
    EXPECT_EQ(writes(), QStringList({"A10 (1) = 20"}));
    leave();
    EXPECT_EQ(writes().size(), 1); // already posted by Enter
    TParaClass *sel = control(QStringLiteral("A12"));
    auto *combo = qobject_cast<TwizComboBox *>(sel->GetEditControl());
    ASSERT_NE(combo, nullptr);
    enter(sel);
    combo->showPopup();
    combo->hidePopup();
    QApplication::processEvents(); // the close-up is reported once the list has closed
    EXPECT_EQ(writes().size(), 2); // closing the list posts even without a change
    EXPECT_EQ(writes().last(), QStringLiteral("A12 (1) = 1: ein"));
    EXPECT_EQ(combo->count(), 3); // the list was filled when it opened
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ParamCtrlEditing, RefusedWriteRestoresThePreviousText)
{
    goOnline();
    TParaClass *c = control(QStringLiteral("A10"));
    drive.setEnable(true);
    typeInto(c, QStringLiteral("30"));
    leave();
    EXPECT_EQ(c->GetText(), QStringLiteral("10"));
    EXPECT_EQ(messages(), QStringList({"Freigabe muss AUS sein!: Zeit"}));
}

TEST_F(ParamCtrlEditing, OfflineOkPostsEveryControlOnce)
{
    control(QStringLiteral("A10"));
    control(QStringLiteral("A12"));
    control(QStringLiteral("A16")); // read-only: never written
    table->SetCallbacks(sim::SimulatedDrive::callbacks());
    drive.clearLog();
    table->PostAllParams();
    EXPECT_EQ(writes(), QStringList({"A10 (1) = 10", "A12 (1) = 1: ein"}));
}

TEST_F(ParamCtrlEditing, ControlsOfOneParameterFollowEachOther)
{
    TParaClass *a = control(QStringLiteral("A10"));
    a->SetText(QStringLiteral("42"));
    TParaClass *b = control(QStringLiteral("A10"));
    EXPECT_EQ(b->GetText(), QStringLiteral("42")); // starts with the first one's text
    typeInto(b, QStringLiteral("43"));
    EXPECT_EQ(a->GetText(), QStringLiteral("43"));
    a->SetText(QStringLiteral("44"));
    EXPECT_EQ(b->GetText(), QStringLiteral("44"));
    delete a;
    b->SetText(QStringLiteral("45")); // the partner is gone: no dangling mirror
    EXPECT_EQ(table->FindParaControl(b->Q7adr()), b);
}

TEST_F(ParamCtrlEditing, ReadBackShowsEditsAndMarksChangedValues)
{
    TParaClass *sel = control(QStringLiteral("A12"));
    TParaClass *num = control(QStringLiteral("A10"));
    TParaClass *flag = control(QStringLiteral("A14"));
    EXPECT_NE(qobject_cast<TwizComboBox *>(sel->GetEditControl()), nullptr);
    goOnline(omRueckdoku);
    EXPECT_NE(qobject_cast<TwizEdit *>(sel->GetEditControl()), nullptr);
    EXPECT_NE(qobject_cast<QCheckBox *>(flag->GetEditControl()), nullptr);
    auto *e = qobject_cast<TwizEdit *>(num->GetEditControl());
    ASSERT_NE(e, nullptr);
    EXPECT_FALSE(e->isEnabled());
    EXPECT_EQ(e->DisabledTextColor(), table->RueckDokuFontColor()); // the default value
    num->SetText(QStringLiteral("20"));
    EXPECT_EQ(e->DisabledTextColor(), 255); // changed: red
    drive.clearLog();
    num->PostValue();
    EXPECT_TRUE(writes().isEmpty());
}

TEST_F(ParamCtrlEditing, SelectionTextsNotInTheList)
{
    TParaClass *sel = control(QStringLiteral("A12"));
    sel->SetText(QStringLiteral("2")); // one item so far: it takes the text as it is
    EXPECT_EQ(sel->GetText(), QStringLiteral("2"));
    sel->InitAuswahlListe();
    sel->SetText(QStringLiteral("2")); // found by its key
    EXPECT_EQ(sel->GetText(), QStringLiteral("2: auto"));
    sel->SetAuswahl(0);
    EXPECT_EQ(sel->GetAuswahl(), 0);
    sel->SetText(QStringLiteral("7: gibt es nicht"));
    EXPECT_EQ(messages(), QStringList({"A12 Modus:\r\"7: gibt es nicht\"\rist in der "
                                       "Auswahlliste nicht vorhanden!"}));
    EXPECT_EQ(sel->GetText(), QStringLiteral("0: aus"));
}

TEST_F(ParamCtrlEditing, PushedChangesWhileARefreshRuns)
{
    goOnline();
    TParaClass *c = control(QStringLiteral("A10"));
    const quint32 a10 = c->Q7adr();
    bool again = true;
    c->OnChange = [&](QObject *) {
        if (!again) return;
        again = false; // the drive changes again while the refresh lets messages run
        drive.setValue(a10, QStringLiteral("77"));
        PostMessage(table->WindowHandle(), wmToolMessage, a10, 1);
    };
    drive.setValue(a10, QStringLiteral("55"));
    PostMessage(table->WindowHandle(), wmToolMessage, a10, 1);
    EXPECT_EVENTUALLY_EQ(c->GetText(), QStringLiteral("77"));
    EXPECT_FALSE(writes().contains(QStringLiteral("A10 (1) = 55"))); // read values stay unwritten
}

TEST_F(ParamCtrlEditing, FindParaControlFollowsTheForm)
{
    auto *box = new QWidget(&form);
    box->show();
    TParaClass *later = control(QStringLiteral("A10"));
    auto *first = new TParaClass(box);
    first->SetwizParaSource(table);
    first->SetKoordinate(QStringLiteral("A10"));
    const quint32 a10 = later->Q7adr();
    EXPECT_EQ(table->FindParaControl(a10), first); // depth first: the box comes earlier
    QWidget elsewhere;
    first->setParent(&elsewhere);
    EXPECT_EQ(table->FindParaControl(a10), later);
    later->SetKoordinate(QStringLiteral("A14"));
    EXPECT_EQ(table->FindParaControl(a10), nullptr);
    delete later;
    EXPECT_EQ(table->FindParaControl(a10), nullptr);
}
