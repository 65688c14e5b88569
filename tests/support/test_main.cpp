// Test main for every drivewiz test executable: widgets run on the offscreen platform,
// each test gets a fresh dialog recorder, and a real modal dialog fails the test.

#include "platform/convert.h"
#include "testing.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QMessageBox>

namespace drivewiz::test {
extern DialogRecorder *g_recorder;
}

namespace {

class RealDialogGuard : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            auto *dialog = qobject_cast<QDialog *>(watched);
            if (dialog && dialog->isModal()) {
                const auto *box = qobject_cast<QMessageBox *>(dialog);
                ADD_FAILURE() << "a real modal dialog opened: "
                              << (box ? box->text() : dialog->windowTitle()).toStdString();
                QMetaObject::invokeMethod(dialog, "reject", Qt::QueuedConnection);
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

class RecorderPerTest : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo &) override
    {
        auto recorder = std::make_unique<drivewiz::DialogRecorder>();
        drivewiz::test::g_recorder = recorder.get();
        drivewiz::setDialogService(std::move(recorder));
        drivewiz::SetDecimalSeparator(QLatin1Char('.'));
    }
};

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("drivewiz-tests"));
    RealDialogGuard guard;
    app.installEventFilter(&guard);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new RecorderPerTest);
    const int rc = RUN_ALL_TESTS();
    drivewiz::setDialogService(nullptr);
    return rc;
}
