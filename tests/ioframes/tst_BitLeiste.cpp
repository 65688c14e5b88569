// The bit bar: rows and their height at two screen resolutions, following the master,
// writing it back, colours, the master's enabled and visible state, language captions.

#include "ioframes_fixture.h"

#include "ioframes/BE.h"
#include "ioframes/BitLeiste.h"
#include "platform/messages.h"
#include "platform/screen.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace drivewiz;

namespace {

QCheckBox *box(TBitLeiste *bar, int row)
{
    return bar->Rows().at(size_t(row)).box;
}

QLabel *label(TBitLeiste *bar, int row)
{
    return bar->Rows().at(size_t(row)).label;
}

// A click on the box's indicator, as a user makes it.
void click(QCheckBox *b)
{
    QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
}

} // namespace

class BitBar : public InputForm
{};

TEST_F(BitBar, RowsStandAtTheScaledRowHeightAndTheHeightIsScaledTwice)
{
    for (const int ppi : {96, 144}) {
        SetScreenPixelsPerInchOverride(ppi);
        TBitLeiste bar(form.get());
        bar.resize(200, 30);
        bar.SetwizBitAnfang(3);
        bar.SetwizCaptions({QStringLiteral("Schnellhalt"), QStringLiteral("Quittierung")});
        ASSERT_EQ(bar.Rows().size(), 2u);
        const int step = 18 * ppi / 96;
        EXPECT_EQ(label(&bar, 0)->y(), 1);
        EXPECT_EQ(label(&bar, 1)->y(), step + 1) << ppi;
        EXPECT_EQ(box(&bar, 1)->y(), step) << ppi;
        // The last box's bottom, already in screen pixels, is scaled once more.
        const int expected = (box(&bar, 1)->y() + box(&bar, 1)->height()) * ppi / 96;
        EXPECT_EQ(bar.minimumHeight(), expected) << ppi;
        EXPECT_EQ(bar.maximumHeight(), expected) << ppi;
        if (ppi == 144) {
            EXPECT_GT(bar.height(), box(&bar, 1)->geometry().bottom() + 20);
        }
    }
}

TEST_F(BitBar, RowsAreNamedTaggedAndLinedUp)
{
    TBitLeiste bar(form.get());
    bar.resize(240, 30);
    bar.show();
    bar.SetwizBitAnfang(9);
    bar.SetwizCaptions({QStringLiteral("neun"), QStringLiteral("zehn")});
    EXPECT_EQ(label(&bar, 0)->text(), QStringLiteral("Bit   9"));
    EXPECT_EQ(label(&bar, 1)->text(), QStringLiteral("Bit 10"));
    EXPECT_EQ(box(&bar, 1)->objectName(), QStringLiteral("Bit_10"));
    EXPECT_EQ(box(&bar, 1)->property("Tag").toInt(), 10);
    EXPECT_EQ(box(&bar, 1)->text(), QStringLiteral("zehn"));
    EXPECT_EQ(box(&bar, 1)->toolTip(), QStringLiteral("Bit 10  zehn"));
    EXPECT_EQ(label(&bar, 1)->toolTip(), box(&bar, 1)->toolTip());
    // The boxes start right of the labels and stretch with the bar.
    EXPECT_GE(box(&bar, 0)->x(), 35);
    EXPECT_GT(box(&bar, 0)->x(), label(&bar, 1)->geometry().right());
    bar.resize(300, bar.height());
    EXPECT_EQ(box(&bar, 0)->geometry().right(), 300 - 2);
}

TEST_F(BitBar, CaptionsAreCutTo32AndAnEmptyListKeepsTheHeightLimits)
{
    TBitLeiste bar(form.get());
    QStringList many;
    for (int i = 0; i < 40; ++i)
        many << QString::number(i);
    bar.SetwizCaptions(many);
    EXPECT_EQ(bar.wizCaptions().size(), 32);
    EXPECT_EQ(bar.Rows().size(), 32u);
    const int h = bar.minimumHeight();
    bar.SetwizCaptions({});
    EXPECT_TRUE(bar.Rows().empty());
    EXPECT_EQ(bar.minimumHeight(), h);
    EXPECT_EQ(bar.maximumHeight(), h);
}

TEST_F(BitBar, BoxesFollowTheMasterAndAClickKeepsTheBitsOutsideTheBar)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 8, {QStringLiteral("a"), QStringLiteral("b")});
    TParaClass *master = bar->wizParaControl();
    EXPECT_TRUE(box(bar, 0)->isChecked()); // bit 8 of 0000000101010101
    EXPECT_FALSE(box(bar, 1)->isChecked());
    EXPECT_EQ(bar->GetBit(8), 1);
    EXPECT_EQ(bar->GetBit(9), 0);
    EXPECT_EQ(bar->GetBit(7), -1);
    EXPECT_EQ(bar->GetBit(10), -1);
    click(box(bar, 0));
    EXPECT_EQ(master->GetText(), QStringLiteral("0000000001010101bin"));
    click(box(bar, 1));
    EXPECT_EQ(master->GetText(), QStringLiteral("0000001001010101bin"));
    master->SetText(QStringLiteral("1111111111111111bin"));
    settle(); // the master's change message
    click(box(bar, 1));
    EXPECT_EQ(master->GetText(), QStringLiteral("1111110111111111bin"));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(BitBar, BitsPastTheMastersWidthAreWrittenInFull)
{
    // A181 has 8 binary digits; the bar reaches bits 6 to 9.
    TBitLeiste *bar = bitBar(QStringLiteral("A181"), 6,
                             {QStringLiteral("6"), QStringLiteral("7"), QStringLiteral("8"),
                              QStringLiteral("9")});
    click(box(bar, 3));
    EXPECT_EQ(bar->wizParaControl()->GetText(), QStringLiteral("1000000101bin"));
    click(box(bar, 3));
    EXPECT_EQ(bar->wizParaControl()->GetText(), QStringLiteral("00000101bin"));
}

TEST_F(BitBar, AMasterOfMinusOneTicksEveryRow)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A182"), 28,
                             {QStringLiteral("28"), QStringLiteral("29"), QStringLiteral("30"),
                              QStringLiteral("31"), QStringLiteral("32 is 0")});
    for (int row = 0; row < 5; ++row)
        EXPECT_TRUE(box(bar, row)->isChecked()) << row;
}

TEST_F(BitBar, MessageFromTheMasterRetiksAndOtherSendersAreIgnored)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 0, {QStringLiteral("0"), QStringLiteral("1")});
    TParaClass *master = bar->wizParaControl();
    auto *edit = qobject_cast<QLineEdit *>(master->GetEditControl());
    ASSERT_TRUE(edit);
    {
        const QSignalBlocker quiet(edit); // a change the bar does not hear of by itself
        edit->setText(QStringLiteral("0000000000000010bin"));
    }
    PostMessage(bar->WindowHandle(), wmParaChanged, quintptr(bar), 0);
    settle();
    EXPECT_TRUE(box(bar, 0)->isChecked());
    PostMessage(bar->WindowHandle(), wmParaChanged, quintptr(master), 0);
    settle();
    EXPECT_FALSE(box(bar, 0)->isChecked());
    EXPECT_TRUE(box(bar, 1)->isChecked());
    // Typing into the master reaches the bar through the master's own broadcast.
    edit->setText(QStringLiteral("0000000000000001bin"));
    settle();
    EXPECT_TRUE(box(bar, 0)->isChecked());
    EXPECT_FALSE(box(bar, 1)->isChecked());
}

TEST_F(BitBar, BoxesAreEnabledWhileTheMasterIsNotAndHandlersChain)
{
    TParaClass *master = control(QStringLiteral("A180"));
    int enabledCalls = 0, visibleCalls = 0;
    master->OnEnabledChange = [&](QObject *) { ++enabledCalls; };
    master->OnVisibleChange = [&](QObject *) { ++visibleCalls; };
    auto *bar = new TBitLeiste(form.get());
    bar->SetwizCaptions({QStringLiteral("0"), QStringLiteral("1")});
    bar->SetwizParaControl(master);
    bar->show();
    EXPECT_FALSE(box(bar, 0)->isEnabled()); // the master is enabled
    master->SetwizEnabled(pReadOnly);
    EXPECT_EQ(enabledCalls, 1);
    EXPECT_TRUE(box(bar, 0)->isEnabled());
    EXPECT_TRUE(box(bar, 1)->isEnabled());
    master->SetwizVisible(false);
    EXPECT_EQ(visibleCalls, 1);
    EXPECT_TRUE(box(bar, 0)->isHidden());
    EXPECT_TRUE(label(bar, 1)->isHidden());
    master->SetwizVisible(true);
    EXPECT_FALSE(box(bar, 1)->isHidden());
    // A bar that goes first leaves the master's own handlers working.
    delete bar;
    master->SetwizEnabled(pEnabled);
    master->SetwizVisible(true);
    EXPECT_EQ(enabledCalls, 2);
    EXPECT_EQ(visibleCalls, 3);
}

TEST_F(BitBar, TickedRowsTakeTheTablesActiveColourAndNoTableNoColour)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 8, {QStringLiteral("a"), QStringLiteral("b")});
    const QColor active(0, 128, 0); // AktivBitColor 32768
    EXPECT_EQ(label(bar, 0)->palette().color(QPalette::WindowText), active);
    EXPECT_EQ(box(bar, 0)->palette().color(QPalette::WindowText), active);
    EXPECT_EQ(label(bar, 1)->palette().color(QPalette::WindowText),
              bar->palette().color(QPalette::WindowText));
    click(box(bar, 1));
    EXPECT_EQ(label(bar, 1)->palette().color(QPalette::WindowText), active);

    TBitLeiste plain(form.get());
    plain.SetwizCaptions({QStringLiteral("x")});
    const QColor before = label(&plain, 0)->palette().color(QPalette::WindowText);
    click(box(&plain, 0));
    EXPECT_EQ(label(&plain, 0)->palette().color(QPalette::WindowText), before);
}

TEST_F(BitBar, AClickWhileFillingWritesNothingButTellsTheSource)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 0, {QStringLiteral("0"), QStringLiteral("1"),
                                                         QStringLiteral("2")});
    TBEinput *input = binaryInput(QStringLiteral("A62"), QStringLiteral("A312"), 2);
    QSignalSpy touched(input, &TInput::changed);
    // Some platforms report a box set by the program as clicked: the bar must not write.
    QObject::connect(box(bar, 2), &QCheckBox::toggled, bar, [bar] { bar->CtrlOnChange(box(bar, 2)); });
    TParaClass *master = bar->wizParaControl();
    master->SetText(QStringLiteral("0000000000000000bin"));
    bar->UpdateBitsFromMaster();
    EXPECT_EQ(master->GetText(), QStringLiteral("0000000000000000bin"));
    EXPECT_EQ(touched.count(), 1);
    EXPECT_EQ(input->LampColor(), clBtnFace);
    master->SetText(QStringLiteral("0000000000000100bin"));
    bar->UpdateBitsFromMaster();
    EXPECT_EQ(master->GetText(), QStringLiteral("0000000000000100bin"));
    EXPECT_EQ(touched.count(), 2);
    EXPECT_EQ(input->LampColor(), clLime); // the lamp follows the bit
}

TEST_F(BitBar, OnlineAClickWritesTheControlWordOnce)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 0, {QStringLiteral("0")});
    goOnline();
    drive.clearLog();
    click(box(bar, 0));
    settle();
    EXPECT_EQ(drive.log(), QStringList{QStringLiteral("A180 (1) = 0000000101010100bin")});
}

TEST_F(BitBar, FocusAndVisibilityByBitNumber)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 4, {QStringLiteral("4"), QStringLiteral("5")});
    EXPECT_FALSE(bar->SetBitFocus(3));
    EXPECT_TRUE(bar->SetBitFocus(5));
    EXPECT_TRUE(box(bar, 1)->hasFocus());
    bar->SetVisible(4, false);
    bar->SetVisible(99, false); // outside: nothing
    EXPECT_TRUE(box(bar, 0)->isHidden());
    EXPECT_TRUE(label(bar, 0)->isHidden());
    EXPECT_FALSE(bar->SetBitFocus(4));
    // A hidden row stays hidden when the rows are built again.
    bar->SetwizBitHeight(20);
    EXPECT_TRUE(box(bar, 0)->isHidden());
    bar->SetVisible(4, true);
    EXPECT_FALSE(box(bar, 0)->isHidden());
}

TEST_F(BitBar, CaptionsComeFromTheLanguageFileUnderTheBarsName)
{
    TBitLeiste *bar = bitBar(QStringLiteral("A180"), 8, {QStringLiteral("acht"), QStringLiteral("neun")});
    EXPECT_EQ(bar->GetSprachIniItemName(1), QStringLiteral("BitLeiste1_Bit9"));
    useLanguage(2, "[InputTest]\r\nBitLeiste1_Bit8=eight\r\n");
    bar->UpdateLanguage();
    EXPECT_EQ(box(bar, 0)->text(), QStringLiteral("eight"));
    EXPECT_EQ(box(bar, 1)->text(), QStringLiteral("neun"));
}

TEST_F(BitBar, TheDesignerGetsTwoRowsToStartWith)
{
    TBitLeiste bar(form.get());
    bar.addComponentState(csDesigning);
    bar.Loaded();
    EXPECT_EQ(bar.wizCaptions(),
              QStringList({QStringLiteral("WizCaption 1"), QStringLiteral("WizCaption 2")}));
    EXPECT_EQ(bar.Rows().size(), 2u);
}

TEST_F(BitBar, TwoBarsOnTwoControlsOfOneWordKeepEachOthersBits)
{
    TBitLeiste *low = bitBar(QStringLiteral("A180"), 0, {QStringLiteral("0"), QStringLiteral("1")});
    TBitLeiste *high = bitBar(QStringLiteral("A180"), 8, {QStringLiteral("8"), QStringLiteral("9")});
    ASSERT_NE(low->wizParaControl(), high->wizParaControl());
    click(box(low, 1));
    settle();
    EXPECT_EQ(high->wizParaControl()->GetText(), QStringLiteral("0000000101010111bin"));
    click(box(high, 1));
    settle();
    EXPECT_EQ(low->wizParaControl()->GetText(), QStringLiteral("0000001101010111bin"));
    EXPECT_TRUE(box(low, 1)->isChecked());
}
