// Signal inputs: terminal descriptions, pruning to the fitted hardware, the status lamp
// offline and online, the activation box, the jump to the bit bar and the designer's help.

#include "ioframes_fixture.h"

#include "ioframes/BE.h"
#include "ioframes/BitLeiste.h"
#include "lang/wizSprache.h"
#include "platform/colors.h"
#include "widgets/wizCombo.h"
#include "wizard/wizPageControl.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

using namespace drivewiz;

class BinaryInput : public InputForm
{
protected:
    TwizComboBox *combo(TInput *input)
    {
        return qobject_cast<TwizComboBox *>(input->P_Quelle->GetEditControl());
    }
    /// Opens and closes the source's list, as the mouse does.
    void dropDown(TInput *input)
    {
        combo(input)->showPopup();
        combo(input)->hidePopup();
        settle();
    }
    /// Chooses the entry of a key in the source's list.
    void choose(TInput *input, int key)
    {
        combo(input)->showPopup();
        for (int i = 0; i < combo(input)->count(); ++i) {
            if (combo(input)->itemText(i).section(QLatin1Char(':'), 0, 0).toInt() == key)
                combo(input)->setCurrentIndex(i);
        }
        combo(input)->hidePopup();
        QApplication::setActiveWindow(form.get()); // the list's window had the focus
        settle();
    }
    QStringList keys(TInput *input)
    {
        QStringList out;
        for (int i = 0; i < combo(input)->count(); ++i)
            out << combo(input)->itemText(i).section(QLatin1Char(':'), 0, 0);
        return out;
    }
};

TEST_F(BinaryInput, TerminalDescriptionsNameInputPinAndInversion)
{
    TBEinput *input = binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 1);
    EXPECT_EQ(input->SourceIndex(), 4);
    EXPECT_EQ(input->GetKlemmeninfo(), QStringLiteral("Binäreingang BE1\nKlemme X100 Pin 11\n"
                                                      "Signal wird invertiert."));
    EXPECT_EQ(input->P_Quelle->GetEditControl()->toolTip(), input->GetKlemmeninfo());
    choose(input, 13);
    EXPECT_EQ(input->GetKlemmeninfo(), QStringLiteral("Binäreingang BE6\nKlemme X103 Pin 10\n"
                                                      "(Optionsplatine KBQ7700)"));
    choose(input, 28);
    EXPECT_EQ(input->GetKlemmeninfo(), QStringLiteral("Binäreingang BE13\nKlemme X103 Pin 17\n"
                                                      "(Optionsplatine KBQ7700)\n"
                                                      "Signal wird invertiert."));
    choose(input, 2); // the bus bit: no terminal
    EXPECT_EQ(input->GetKlemmeninfo(), QStringLiteral("Binäreingang Feldbus\nKlemme "));
    // The common strings name the parts in the wizard's language.
    useLanguage(2, "[ComStr]\r\ns44=Binary input\r\ns45=Terminal\r\ns47=Signal is inverted\r\n");
    choose(input, 10);
    EXPECT_EQ(input->GetKlemmeninfo(), QStringLiteral("Binary input BE4\nTerminal X100 Pin 14\n"
                                                      "Signal is inverted."));
}

TEST_F(BinaryInput, AnUnknownSourceHidesTheRowSilently)
{
    TBEinput *input = binaryInput(QStringLiteral("A99"), QStringLiteral("A399"), 3);
    EXPECT_TRUE(input->isHidden());
    EXPECT_TRUE(input->GetKlemmeninfo().isEmpty());
    EXPECT_TRUE(input->StatusPanel()->isHidden());
    goOnline();
    input->InputOnChange(nullptr);
    EXPECT_TRUE(input->StatusPanel()->isHidden());
    EXPECT_EQ(messages(), QStringList());
}

// Drive family and option boards decide how many binary inputs there are: a ZRD drive
// has five unless its upper board is a KBW, any other drive five unless its lower board
// is a KBQ, and none at all when the lower board is not known.
TEST_F(BinaryInput, TheListKeepsOnlyTheInputsTheHardwareHas)
{
    struct Case
    {
        const char *e50, *e54, *e58;
        int entries;
    };
    const Case cases[] = {
        {"VKP 4102", "", "KBQ 7700", 29},  {"VKP 4102", "", "KBM 7700", 13},
        {"VKP 4102", "KBW 7700", "", 3},   {"ZRD 2204", "KBW 7700", "", 29},
        {"ZRD 2204", "", "KBQ 7700", 13},  {"ZRD 2204", "KBM 7700", "KBQ 7700", 13},
    };
    for (const Case &c : cases) {
        setValue(QStringLiteral("E50"), QLatin1String(c.e50));
        setValue(QStringLiteral("E54"), QLatin1String(c.e54));
        setValue(QStringLiteral("E58"), QLatin1String(c.e58));
        TBEinput *input = binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0);
        dropDown(input);
        const QString what = QStringLiteral("%1/%2/%3").arg(c.e50, c.e54, c.e58);
        // The selected entry (3: BE1) always stays.
        EXPECT_EQ(combo(input)->count(), std::max(c.entries, 4)) << what.toStdString();
        EXPECT_EQ(input->P_Quelle->GetText(), QStringLiteral("3: BE1")) << what.toStdString();
        delete input;
    }
    EXPECT_EQ(beeps(), 0);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(BinaryInput, PruningCountsFromTheFirstEntrysKeyAndKeepsTheSelection)
{
    setValue(QStringLiteral("E58"), QStringLiteral("KBM 7700")); // five inputs
    // A68's list starts at key 1: index 2 x 5 + 3 - 1 = 12 holds key 13 (BE6).
    TBEinput *shifted = binaryInput(QStringLiteral("A68"), QStringLiteral("A310"), 0);
    dropDown(shifted);
    EXPECT_EQ(keys(shifted).last(), QStringLiteral("12"));
    EXPECT_EQ(keys(shifted).size(), 12);
    // A selected input the hardware lacks stays in the list, after the others.
    setValue(QStringLiteral("E58"), QStringLiteral("KBQ 7700"));
    TBEinput *input = binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 1);
    choose(input, 20);
    setValue(QStringLiteral("E58"), QStringLiteral("KBM 7701")); // the board changed
    dropDown(input);
    EXPECT_EQ(keys(input).mid(11), QStringList({QStringLiteral("11"), QStringLiteral("12"),
                                                QStringLiteral("20")}));
    EXPECT_EQ(input->RememberedOptionBoard(), QStringLiteral("KBM 7701"));
}

TEST_F(BinaryInput, TheKeysChooseOnlyAmongTheFittedInputs)
{
    setValue(QStringLiteral("E58"), QStringLiteral("KBM 7700"));
    TBEinput *input = binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0);
    combo(input)->setFocus(Qt::TabFocusReason); // entering fills the list, pruned
    EXPECT_EQ(combo(input)->count(), 13);
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(combo(input), Qt::Key_Down);
    EXPECT_EQ(input->P_Quelle->GetText(), QStringLiteral("12: BE5 invers"));
}

// The beep counts from (index - 2) div 2, the terminal from (index - 1) div 2: input 6
// inverted (14) beeps without the option board, input 6 itself (13) does not.
TEST_F(BinaryInput, WithoutTheBoardInputSixInvertedBeepsButInputSixDoesNot)
{
    setValue(QStringLiteral("E58"), QStringLiteral("KBM 7700"));
    TBEinput *input = binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0);
    dropDown(input);
    input->P_Quelle->SetText(QStringLiteral("13: BE6"));
    input->ElimAuswahlen();
    EXPECT_EQ(beeps(), 0);
    input->P_Quelle->SetText(QStringLiteral("14: BE6 invers"));
    input->ElimAuswahlen();
    EXPECT_EQ(beeps(), 1);
    // Once pruned for a board, the list is not pruned (nor beeps) again until it changes
    // or the activation box was used.
    dropDown(input);
    EXPECT_EQ(beeps(), 1);
    input->CheckBox1->click();
    input->CheckBox1->click();
    EXPECT_EQ(input->RememberedOptionBoard(), QStringLiteral("?"));
    dropDown(input);
    EXPECT_EQ(beeps(), 2);
    EXPECT_EQ(input->SourceIndex(), 14);
}

TEST_F(BinaryInput, OfflineTheLampShowsFixedLevelsAndTheBusBit)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 0, {QStringLiteral("0"), QStringLiteral("1"),
                                                         QStringLiteral("2")});
    TBEinput *input = binaryInput(QStringLiteral("A62"), QStringLiteral("A312"), 2);
    EXPECT_FALSE(input->StatusPanel()->isHidden()); // bus bit 2 of 0101: set
    EXPECT_EQ(input->LampColor(), clLime);
    bar->Rows().at(2).box->click();
    EXPECT_EQ(input->LampColor(), clBtnFace);
    choose(input, 0);
    EXPECT_EQ(input->LampColor(), clBtnFace);
    EXPECT_FALSE(input->StatusPanel()->isHidden());
    choose(input, 1);
    EXPECT_EQ(input->LampColor(), clLime);
    choose(input, 5); // a terminal: offline its level is not known
    EXPECT_TRUE(input->StatusPanel()->isHidden());
    // Without a bit bar on the form the bus bit has no lamp.
    TBEinput *other = binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 7);
    choose(other, 2);
    EXPECT_TRUE(other->StatusPanel()->isHidden());
}

TEST_F(BinaryInput, OnlineTheLampFollowsTheDisplayParameterAndSaysSo)
{
    TBEinput *input = binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0);
    ASSERT_TRUE(input->InvisAnzeigePar());
    EXPECT_EQ(input->InvisAnzeigePar()->objectName(), QStringLiteral("InvisAnzeigePar_BE_A60"));
    EXPECT_EQ(input->StatusPanel()->objectName(), QStringLiteral("StatusPanel_BE_A60"));
    EXPECT_TRUE(input->InvisAnzeigePar()->isHidden());
    goOnline();
    const quint32 a300 = drive.addressOf(QStringLiteral("A310"), 1);
    drive.setValue(a300, QStringLiteral("1: HIGH"));
    table->RefreshParaControl(input->InvisAnzeigePar(), false);
    EXPECT_EQ(input->LampColor(), clLime);
    EXPECT_FALSE(input->StatusPanel()->isHidden());
    const QString tail = s_ObservePar + QStringLiteral(": A310 Zustand");
    EXPECT_EQ(input->StatusPanel()->toolTip(), QStringLiteral("A310=HIGH: \n") + tail);
    drive.setValue(a300, QStringLiteral("0: LOW"));
    table->RefreshParaControl(input->InvisAnzeigePar(), false);
    EXPECT_EQ(input->LampColor(), clBtnFace);
    EXPECT_EQ(input->StatusPanel()->toolTip(), QStringLiteral("A310=LOW: \n") + tail);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(BinaryInput, TheActivationBoxSwitchesTheSignalOffAndBack)
{
    TBEinput *input = binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 1);
    EXPECT_TRUE(input->CheckBox1->isChecked());
    input->CheckBox1->click();
    EXPECT_EQ(input->SourceIndex(), 0);
    EXPECT_EQ(input->SavedAuswahl(), 4);
    EXPECT_FALSE(input->P_Quelle->GetEditControl()->isEnabled());
    EXPECT_TRUE(input->CheckBox1->isEnabled());
    input->CheckBox1->click();
    EXPECT_EQ(input->SourceIndex(), 4);
    EXPECT_TRUE(input->P_Quelle->GetEditControl()->isEnabled());
    choose(input, 0); // the not-used entry unticks the box
    EXPECT_FALSE(input->CheckBox1->isChecked());
    choose(input, 7);
    EXPECT_TRUE(input->CheckBox1->isChecked());
    input->SetwizNoCareAuswahl(-1);
    EXPECT_TRUE(input->CheckBox1->isHidden());
}

TEST_F(BinaryInput, OnlineSwitchingTheSignalOffWritesItOnce)
{
    TBEinput *input = binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 1);
    goOnline();
    drive.clearLog();
    input->CheckBox1->click();
    settle();
    EXPECT_EQ(drive.log(), QStringList{QStringLiteral("A61 (1) = 0: Low-Pegel (0V)")});
}

TEST_F(BinaryInput, BitBarRowsShowOnlyForInputsOnTheBusBit)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 0, {QStringLiteral("0"), QStringLiteral("1"),
                                                         QStringLiteral("2")});
    TBEinput *input = binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 1);
    EXPECT_EQ(input->BoundBitBars().size(), 1);
    EXPECT_TRUE(bar->Rows().at(1).box->isHidden());
    EXPECT_FALSE(bar->Rows().at(0).box->isHidden()); // no input uses bit 0
    choose(input, 2);
    EXPECT_FALSE(bar->Rows().at(1).box->isHidden());
    EXPECT_FALSE(input->ImgArrow->isHidden());
}

TEST_F(BinaryInput, TheArrowAndCtrlRightLeadToTheBitOnItsPage)
{
    auto *pc = new TwizPageControl(form.get());
    pc->setGeometry(0, 0, 600, 400);
    auto *first = new QWidget;
    auto *second = new QWidget;
    pc->addTab(first, QStringLiteral("Eingänge"));
    pc->addTab(second, QStringLiteral("Steuerwort"));
    pc->show();
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 0,
                             {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}, second);
    TBEinput *input = binaryInput(QStringLiteral("A62"), QStringLiteral("A312"), 2, first);
    pc->setCurrentWidget(first);
    ASSERT_FALSE(input->ImgArrow->isHidden());
    QTest::mouseClick(input->ImgArrow, Qt::LeftButton);
    EXPECT_EQ(pc->currentWidget(), second);
    EXPECT_TRUE(bar->Rows().at(2).box->hasFocus());
    // The same from the keyboard, in the source field.
    pc->setCurrentWidget(first);
    combo(input)->setFocus();
    QTest::keyClick(combo(input), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(pc->currentWidget(), second);
    EXPECT_TRUE(bar->Rows().at(2).box->hasFocus());
    EXPECT_EQ(input->SourceIndex(), 2); // the key did not change the source
}

TEST_F(BinaryInput, TheJumpToABitOnThePageInViewKeepsTheChangesMadeThere)
{
    // A wizard reads a page's values afresh when it moves to the page: a jump within the
    // page shown must not move, or the sources just chosen would be read back.
    table->SetCallbacks(sim::SimulatedDrive::callbacks());
    auto *pc = new TwizPageControl(form.get());
    pc->setGeometry(0, 0, 600, 400);
    auto *page = new QWidget;
    pc->addTab(page, QStringLiteral("Eingänge"));
    pc->SetwizParaSource(table);
    pc->show();
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 0, {QStringLiteral("0"), QStringLiteral("1"),
                                                         QStringLiteral("2")}, page);
    TBEinput *input = binaryInput(QStringLiteral("A61"), QStringLiteral("A311"), 1, page);
    input->P_Quelle->SetText(QStringLiteral("2: Feldbus-Bit")); // the drive has 5: BE2
    combo(input)->setFocus();
    QTest::keyClick(combo(input), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_TRUE(bar->Rows().at(1).box->hasFocus());
    EXPECT_EQ(input->P_Quelle->GetText(), QStringLiteral("2: Feldbus-Bit"));
}

TEST_F(BinaryInput, TheDesignerNamesTheFrameAndOffersToCountOn)
{
    TBEinput input(form.get());
    input.SetwizParaSource(table);
    input.addComponentState(csDesigning);
    input.SetwizAnzeigeParName(QStringLiteral("A310"));
    input.SetwizBusParBit(0);
    input.SetwizNoCareAuswahl(5);
    input.SetwizKoordinate(QStringLiteral("A60")); // from "B33B": not asked
    EXPECT_EQ(input.objectName(), QStringLiteral("BE_A60"));
    EXPECT_EQ(input.wizNoCareAuswahl(), 0); // the first word of "0: Low-Pegel (0V)"
    test::recorder().answer(mrYes);
    input.SetwizKoordinate(QStringLiteral("A61"));
    ASSERT_EQ(messages().size(), 1);
    EXPECT_EQ(input.wizAnzeigeParName(), QStringLiteral("A311"));
    EXPECT_EQ(input.wizBusParBit(), 1);
    test::recorder().answer(mrNo);
    input.SetwizKoordinate(QStringLiteral("A62"));
    EXPECT_EQ(input.wizAnzeigeParName(), QStringLiteral("A311"));
    EXPECT_EQ(input.wizBusParBit(), 1);
    input.SetwizKoordinate(QStringLiteral("A99")); // not in the table: not asked
    EXPECT_EQ(messages().size(), 1);
}

TEST_F(BinaryInput, RowLayoutKeepsTheNameCheckBoxFieldLampAndArrowApart)
{
    TBEinput *input = binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0);
    input->resize(500, 28);
    const QWidget *field = input->P_Quelle->GetEditControl();
    const QRect fieldRect(input->P_Quelle->mapTo(input, field->pos()), field->size());
    EXPECT_EQ(fieldRect.left(), 190);
    EXPECT_LT(input->CheckBox1->geometry().right(), fieldRect.left());
    EXPECT_EQ(input->StatusPanel()->x(), fieldRect.right() + 1 + 5);
    EXPECT_EQ(input->StatusPanel()->width(), 8);
    EXPECT_EQ(input->StatusPanel()->y(), fieldRect.top() + 3);
    EXPECT_GT(input->ImgArrow->x(), input->StatusPanel()->geometry().right());
    EXPECT_EQ(input->ImgArrow->geometry().right(), 500 - 3);
    EXPECT_GE(input->NeededControlLeft(), input->P_Quelle->paraNameLabel()->x());
}

TEST_F(BinaryInput, LampAndArrowMoveWhenALongChoiceWidensTheField)
{
    TBEinput *input = binaryInput(QStringLiteral("A60"), QStringLiteral("A310"), 0);
    input->resize(500, 28);
    QWidget *field = input->P_Quelle->GetEditControl();
    field->resize(field->width() + 40, field->height()); // as a long entry makes it
    input->P_Quelle->updateGeometry();
    QCoreApplication::sendPostedEvents(input, QEvent::LayoutRequest);
    const QRect fieldRect(input->P_Quelle->mapTo(input, field->pos()), field->size());
    EXPECT_EQ(input->StatusPanel()->x(), fieldRect.right() + 1 + 5);
    EXPECT_GT(input->ImgArrow->x(), input->StatusPanel()->geometry().right());
}
