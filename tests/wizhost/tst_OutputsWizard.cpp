// The demo host's wizard "Outputs and encoder" on the sample drive: its frames bound to the
// drive, the fitted hardware the drive reports, and a scaling typed by keys reaching the
// drive when the wizard closes with OK.

#include "session_fixture.h"

#include "HardwareChooser.h"
#include "ioframes/AnalogAusgang.h"
#include "ioframes/DigitalAusgang.h"
#include "ioframes/HEncoder.h"
#include "paramctrls/ParamCtrls.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

using namespace drivewiz;
using namespace drivewiz::wizhost;

namespace {

class OutputsWizard : public HostSessionTest
{
protected:
    void SetUp() override
    {
        HostSessionTest::SetUp();
        session->setLanguage(2);
    }

    QDialog *open()
    {
        dwz_form *form = session->createWizard(Wizard::Outputs);
        if (!form) return nullptr;
        dwz_form_show(form);
        QApplication::setActiveWindow(session->openDialog());
        settle();
        return session->openDialog();
    }
    void hardware(const QString &family, const QString &upper, const QString &lower)
    {
        sim::SimulatedDrive &drive = session->drive();
        drive.setValue(drive.addressOf(QStringLiteral("E50")), family);
        drive.setValue(drive.addressOf(QStringLiteral("E54")), upper);
        drive.setValue(drive.addressOf(QStringLiteral("E58")), lower);
    }
    template <class T> T *find(const char *name) const
    {
        return session->openDialog()->findChild<T *>(QLatin1String(name));
    }
};

} // namespace

TEST_F(OutputsWizard, OpensWithEveryFrameBoundToTheDrive)
{
    QDialog *w = open();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->windowTitle(), "Outputs and encoder");
    auto *pages = find<QTabWidget>("PageControl");
    ASSERT_TRUE(pages);
    EXPECT_EQ(pages->tabText(0), "Analog output 1");
    EXPECT_EQ(pages->tabText(2), "Binary outputs");

    auto *out1 = find<TAnalogAus>("AnalogAus1");
    auto *out2 = find<TAnalogAus>("AnalogAus2");
    ASSERT_TRUE(out1 && out2);
    EXPECT_EQ(out1->P_Quelle->GetText(), "E08: Drehzahl Istwert");
    EXPECT_EQ(out1->Edit10V->text(), "3000"); // 400 % of a 12000 rpm full scale
    EXPECT_EQ(out2->P_Quelle->GetKoordinate(), "F50");
    EXPECT_EQ(out1->LblAnAusgang->text(), "Analog output:");

    auto *digital = find<TDigitalAus>("DigitalAus");
    ASSERT_TRUE(digital);
    EXPECT_FALSE(digital->Img_BA_KBQ7700->isHidden()); // the sample drive's KBQ 7700
    EXPECT_TRUE(digital->P_F70->wizVisible());

    auto *encoder = find<TEncoderFrame>("EncoderFrame");
    ASSERT_TRUE(encoder);
    EXPECT_EQ(encoder->GetwizEncoder(), encoder->tsX4); // I02 0: the motor encoder, B26 X4
    EXPECT_EQ(encoder->GetEncoderType(), ttEndatIn);
    EXPECT_EQ(encoder->LblX4->text(), "Terminal X4");
    EXPECT_EQ(encoder->LblResolution->text(), "2048 Inc / Encoder revolution");
    EXPECT_EQ(encoder->LblX120Encoder->text(), "Option KBQ7700");
    EXPECT_TRUE(test::recorder().messages().isEmpty());
}

TEST_F(OutputsWizard, FollowsTheHardwareTheDriveReports)
{
    hardware("VKP 4102", "", "KBQ 7701");
    ASSERT_NE(open(), nullptr);
    auto *digital = find<TDigitalAus>("DigitalAus");
    EXPECT_EQ(digital->LblX103_1->text(), "X103A");
    EXPECT_EQ(digital->LblX103_2->text(), "X103B");
    EXPECT_EQ(find<TEncoderFrame>("EncoderFrame")->LblX120Encoder->text(), "Option KBQ7701");
    session->closeWizard();

    // The host window's choice of a ZRD drive with a KBW 7700: its lower slot reads "---",
    // so there are no analog outputs, and the wizard leaves their pages out.
    const FittedHardware zrd = HardwareChooser::Fitted(1, 3);
    hardware(zrd.family, zrd.upper, zrd.lower);
    ASSERT_NE(open(), nullptr);
    EXPECT_EQ(find<QWidget>("PageAnalog1")->property("Tag").toInt(), 1);
    EXPECT_EQ(find<QWidget>("PageAnalog2")->property("Tag").toInt(), 1);
    EXPECT_EQ(find<QTreeWidget>("TreeView")->topLevelItemCount(), 2);
    EXPECT_EQ(find<QTabWidget>("PageControl")->currentWidget(), find<QWidget>("PageDigital"));
    digital = find<TDigitalAus>("DigitalAus");
    EXPECT_FALSE(digital->Img_BA_KBW7700->isHidden());
    EXPECT_EQ(digital->LblOption->text(), "Option KBW 7700");
}

// What the end-to-end test does with xdotool, here by keys on the offscreen platform:
// the source E14 (3000 rpm full scale) typed, 1500 for 10 V, -1500 for 0 V, OK.
TEST_F(OutputsWizard, ScalingTypedByKeysReachesTheDriveWithOk)
{
    ASSERT_NE(open(), nullptr);
    auto *out1 = find<TAnalogAus>("AnalogAus1");
    QWidget *source = out1->P_Quelle->GetEditControl();
    source->setFocus(Qt::TabFocusReason);
    settle();
    QTest::keyClick(source, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(source, "E14");
    for (const char *text : {"1500", "-1500"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), text);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(out1->P_Faktor->GetText(), "100.0");
    EXPECT_EQ(out1->P_Offset->GetText(), "5.00");
    find<QAbstractButton>("BtnOK")->click();
    settle();
    const QStringList log = session->drive().log();
    EXPECT_TRUE(log.contains("F40 (0) = E14: Drehzahl Regelabweichung"))
        << log.join('\n').toStdString();
    EXPECT_TRUE(log.contains("F42 (0) = 100.0"));
    EXPECT_TRUE(log.contains("F41 (0) = 5.00"));
    EXPECT_TRUE(test::recorder().messages().isEmpty());
}
