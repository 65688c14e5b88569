// The demo host's tables wizard and measurement window, used as a person would.

#include "support/testing.h"

#include "HostSession.h"
#include "TablesDemo.h"
#include "paramctrls/ArrayPara.h"
#include "platform/colors.h"
#include "tables/ArrayGroups.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace drivewiz;
using namespace drivewiz::wizhost;

namespace {

class TablesDemo : public testing::Test
{
protected:
    void SetUp() override
    {
        options.dataDir = test::sourcePath(QStringLiteral("data/sample"));
        options.formsDir = test::sourcePath(QStringLiteral("apps/wizhost/forms"));
        session = std::make_unique<HostSession>(options);
        QString error;
        ASSERT_TRUE(session->start(error)) << error.toStdString();
        ASSERT_TRUE(session->createWizard(Wizard::Tables));
        dwz_form_show(session->openWizard());
        form = session->openDialog();
        QApplication::setActiveWindow(form);
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        group = form->findChild<TArrayGroup *>(QStringLiteral("AgFahrsatz"));
        ASSERT_TRUE(group);
    }
    void TearDown() override { session.reset(); }
    template <class T = QWidget> T *part(const char *name) const
    {
        return form->findChild<T *>(QLatin1String(name));
    }
    QLineEdit *edit(const char *control) const
    {
        return qobject_cast<QLineEdit *>(part<TParaClass>(control)->GetEditControl());
    }

    QTemporaryDir dir;
    HostOptions options;
    std::unique_ptr<HostSession> session;
    QDialog *form = nullptr;
    TArrayGroup *group = nullptr;
};

} // namespace

TEST_F(TablesDemo, PageKeysStepTheElementsAndOkWritesEveryElement)
{
    EXPECT_EQ(group->ArrayLen(), 16);
    EXPECT_EQ(part<QLabel>("LblElement")->text(), QStringLiteral("1 / 16"));
    QLineEdit *j11 = edit("P_J11");
    j11->setFocus(Qt::TabFocusReason);
    QTest::keyClick(j11, Qt::Key_PageDown);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    EXPECT_EQ(group->ArrayIndex(), 2);
    EXPECT_EQ(part<QLabel>("LblElement")->text(), QStringLiteral("3 / 16"));
    j11 = edit("P_J11");
    ASSERT_TRUE(j11->hasFocus());
    j11->selectAll();
    QTest::keyClicks(j11, QStringLiteral("777"));
    QTest::keyClick(j11, Qt::Key_PageUp);
    EXPECT_EQ(group->ArrayIndex(), 1);
    session->drive().clearLog();
    part<QAbstractButton>("BtnOK")->click();
    EXPECT_TRUE(session->drive().log().contains(QStringLiteral("J11.2 (1) = 777")))
        << session->drive().log().join('\n').toStdString();
}

TEST_F(TablesDemo, ExportGoesThroughTheDialogIntoTheHistory)
{
    const QString file = dir.filePath(QStringLiteral("Fahrsaetze.csv"));
    test::recorder().answer(file);
    part<QAbstractButton>("BtnExport")->click();
    ASSERT_TRUE(QFile::exists(file));
    auto *files = part<QComboBox>("CbFiles");
    EXPECT_EQ(files->itemText(0), file);
    EXPECT_EQ(part<QLabel>("LblCrc")->text(),
              QStringLiteral("CRC32: %1").arg(group->CalcCRC32(16), 8, 16, QLatin1Char('0')).toUpper());
    EXPECT_TRUE(test::readFile(file).startsWith("Index;J10;J11;J12\r\n0;"));
}

TEST_F(TablesDemo, TelegramLengthTurnsRedWhileTyping)
{
    form->findChild<QTabWidget *>(QStringLiteral("PageControl"))->setCurrentIndex(1);
    QLineEdit *a190 = edit("P_A190");
    a190->setFocus(Qt::TabFocusReason);
    a190->selectAll();
    QTest::keyClicks(a190, QStringLiteral("A180,I210"));
    auto *label = part<QLabel>("LblLenRx");
    EXPECT_TRUE(label->text().endsWith(QStringLiteral(": 4 Byte"))) << label->text().toStdString();
    QTest::keyClicks(a190, QStringLiteral(",E08,E02,A181"));
    EXPECT_TRUE(label->text().endsWith(QStringLiteral("(Max.Länge:8 Byte)")));
    EXPECT_EQ(label->palette().color(QPalette::WindowText), ColorToQColor(clRed));
}

TEST_F(TablesDemo, MeasurementWindowPlotsARecordingOfTheDrive)
{
    MeasurementWindow window(*session);
    window.show();
    ASSERT_EQ(window.Measurement()->SampleCount(), 2000);
    EXPECT_EQ(window.Measurement()->ChannelCount(), 4);
    EXPECT_EQ(window.Measurement()->GetChannel(0).name, QStringLiteral("Drehzahl Istwert"));
    EXPECT_TRUE(window.Plot()->ReadOut().contains(QStringLiteral("E08 Drehzahl Istwert")));
    EXPECT_TRUE(window.Record());
    EXPECT_TRUE(window.Measurement()->FileName().endsWith(QStringLiteral("Aufzeichnung_2.csv")));
    EXPECT_TRUE(test::recorder().messages().isEmpty());
}

// Everything the wizard and the window say comes from the language file, in English too.
TEST_F(TablesDemo, WizardAndMeasurementWindowSpeakTheSessionsLanguage)
{
    const auto openInDialog = [](MeasurementWindow &window) {
        test::recorder().answer(QString()); // cancelled
        window.findChild<QAbstractButton *>(QStringLiteral("BtnOpen"))->click();
        return test::recorder().entries().back();
    };
    {
        MeasurementWindow window(*session);
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Messung"));
        const auto asked = openInDialog(window);
        EXPECT_EQ(asked.text, QStringLiteral("Messung öffnen"));
        EXPECT_EQ(asked.caption, QStringLiteral("CSV-Dateien (*.csv *.CSV);;Alle Dateien (*)"));
    }
    session->closeWizard();
    session->setLanguage(2);
    ASSERT_TRUE(session->createWizard(Wizard::Tables));
    form = session->openDialog();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Tables wizard"));
    auto *pages = part<QTabWidget>("PageControl");
    EXPECT_EQ(pages->tabText(0), QStringLiteral("Motion blocks"));
    EXPECT_EQ(pages->tabText(1), QStringLiteral("Process data"));
    EXPECT_EQ(part<QLabel>("LblArrayInfo")->text(),
              QStringLiteral("Motion blocks: one element of all three tables at a time (Page Up/Down steps)"));
    EXPECT_EQ(part<QAbstractButton>("BtnCopyPrev")->text(), QStringLiteral("Take over the &previous element"));
    EXPECT_EQ(part<QAbstractButton>("BtnExport")->text(), QStringLiteral("E&xport..."));
    EXPECT_EQ(part<QAbstractButton>("BtnImport")->text(), QStringLiteral("&Import..."));
    EXPECT_EQ(part<QAbstractButton>("BtnBack")->text(), QStringLiteral("< Back"));

    MeasurementWindow window(*session);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Measurement"));
    EXPECT_EQ(window.findChild<QAbstractButton *>(QStringLiteral("BtnRecord"))->text(), QStringLiteral("&Record"));
    EXPECT_EQ(window.findChild<QAbstractButton *>(QStringLiteral("BtnOpen"))->text(), QStringLiteral("&Open..."));
    EXPECT_EQ(window.findChild<QAbstractButton *>(QStringLiteral("ChkNormalised"))->text(),
              QStringLiteral("&Normalised (-1..1)"));
    EXPECT_TRUE(window.Measurement()->FileName().endsWith(QStringLiteral("/Recording_1.csv")));
    const auto asked = openInDialog(window);
    EXPECT_EQ(asked.text, QStringLiteral("Open measurement"));
    EXPECT_EQ(asked.caption, QStringLiteral("CSV files (*.csv *.CSV);;All files (*)"));
    EXPECT_TRUE(test::recorder().messages().isEmpty());
}

TEST_F(TablesDemo, ExportAndImportByKeyboardAlone)
{
    QLineEdit *j10 = edit("P_J10");
    j10->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(part<QComboBox>("CbFiles")->hasFocus() ||
                part<QComboBox>("CbFiles")->isAncestorOf(QApplication::focusWidget()));
    const QString file = dir.filePath(QStringLiteral("keys.csv"));
    test::recorder().answer(file);
    // A button's accelerator clicks it a moment later, as it shows the click.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_X, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&file] { return QFile::exists(file); }, 3000));
    test::writeFile(file, test::readFile(file).replace("\r\n0;0.000;", "\r\n0;12.5;"));
    test::recorder().answer(file);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_I, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return edit("P_J10")->text() == QLatin1String("12.5"); }, 3000))
        << edit("P_J10")->text().toStdString();
    EXPECT_TRUE(test::recorder().messages().isEmpty()) << test::recorder().messages().join('|').toStdString();
}
