#include "support/testing.h"
#include "widgets/wizEdit.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLayout>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

using namespace drivewiz;

namespace {

class PaintCounter : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

// The bounds of the pixels in `area` that differ from `background`, and how many of
// them are exactly `ink`.
QRect inkBounds(const QImage &image, const QRect &area, const QColor &background, const QColor &ink,
                int *inkCount)
{
    QRect bounds;
    *inkCount = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c != background) bounds |= QRect(x, y, 1, 1);
            *inkCount += c == ink;
        }
    return bounds;
}

} // namespace

class WizEditTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(20);
        font.setBold(true);
        edit.setFont(font);
        edit.resize(160, 40);
    }

    QImage disabledImage(const QString &text)
    {
        edit.setText(text);
        edit.setEnabled(false);
        edit.SetDisabledColor(clYellow);
        edit.SetDisabledTextColor(clRed);
        return edit.grab().toImage();
    }

    TwizEdit edit;
    const QColor yellow{255, 255, 0}, red{255, 0, 0};
};

TEST_F(WizEditTest, RepaintsOnlyForAChangedColourWhileDisabled)
{
    EXPECT_EQ(edit.property("DisabledColor").toInt(), -16777211);
    EXPECT_EQ(edit.property("DisabledTextColor").toInt(), -16777199);
    edit.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&edit));
    edit.setEnabled(false);
    settle();
    PaintCounter paints;
    edit.installEventFilter(&paints);

    edit.SetDisabledColor(edit.DisabledColor());
    edit.SetDisabledTextColor(edit.DisabledTextColor());
    settle();
    EXPECT_EQ(paints.count, 0);
    edit.SetDisabledColor(clYellow);
    settle();
    EXPECT_GE(paints.count, 1);

    edit.setEnabled(true);
    settle();
    paints.count = 0;
    edit.SetDisabledColor(clAqua);
    edit.SetDisabledTextColor(clBlue);
    settle();
    EXPECT_EQ(paints.count, 0);
}

TEST_F(WizEditTest, EnabledPaintsExactlyAsALineEdit)
{
    QLineEdit plain;
    plain.setFont(edit.font());
    plain.resize(edit.size());
    edit.SetDisabledColor(clYellow);
    for (const QString &text : {QString(), QStringLiteral("1500,25 rpm")}) {
        edit.setText(text);
        plain.setText(text);
        EXPECT_EQ(edit.grab().toImage(), plain.grab().toImage()) << text.toStdString();
    }
}

TEST_F(WizEditTest, DisabledDrawsItsTextAtClientOneOneInsideTheFrame)
{
    const QRect client = edit.clientRect();
    ASSERT_TRUE(edit.rect().contains(client));
    // Without text only the background, whatever the placeholder says.
    edit.setPlaceholderText(QStringLiteral("Wert"));
    const QImage framed = disabledImage(QString());
    int inkCount = 0;
    EXPECT_TRUE(inkBounds(framed, client, yellow, red, &inkCount).isNull());

    const QImage image = disabledImage(QStringLiteral("MI"));
    const QRect ink = inkBounds(image, client, yellow, red, &inkCount);
    EXPECT_GT(inkCount, 20);
    const int ascent = QFontMetrics(edit.font()).ascent();
    EXPECT_GE(ink.left(), client.left() + 1);
    EXPECT_LE(ink.left(), client.left() + 4);
    EXPECT_GE(ink.top(), client.top() + 1);
    EXPECT_LT(ink.top(), client.top() + 1 + ascent / 2); // at the top, not centred
    EXPECT_LE(ink.bottom(), client.top() + 1 + ascent);

    const QImage longText = disabledImage(QString(40, QLatin1Char('W')));
    for (int y = 0; y < edit.height(); ++y)
        for (int x = 0; x < edit.width(); ++x) {
            if (client.contains(x, y)) continue;
            ASSERT_EQ(longText.pixelColor(x, y), framed.pixelColor(x, y)) << x << "," << y;
        }
}

class RadioGroupTest : public testing::Test
{
protected:
    void SetUp() override
    {
        group.SetItems(
            {QStringLiteral("0: Aus"), QStringLiteral("1: Ein"), QStringLiteral("2: Automatik")});
        group.OnClick = [this](QObject *sender) { clicks += sender == &group; };
        group.OnKeyDown = [this](QObject *s, int &key, Qt::KeyboardModifiers) {
            log << QStringLiteral("down %1").arg(key) + (s == &group ? "" : "?");
            if (key == swallowKey) key = 0;
        };
        group.OnKeyPress = [this](QObject *, QChar &ch) {
            log << QStringLiteral("press %1").arg(ch);
            if (ch == swallowChar) ch = QChar();
        };
        group.OnKeyUp = [this](QObject *, int &key, Qt::KeyboardModifiers) {
            log << QStringLiteral("up %1").arg(key);
        };
        group.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&group));
    }

    TMyRadioGroup group;
    int clicks = 0;
    QStringList log;
    int swallowKey = -1;
    QChar swallowChar = QLatin1Char('#');
};

TEST_F(RadioGroupTest, ItemsColumnsAndItemIndex)
{
    QSignalSpy changed(&group, &TMyRadioGroup::itemIndexChanged);
    EXPECT_EQ(group.button(2)->text(), QStringLiteral("2: Automatik"));
    EXPECT_EQ(group.button(3), nullptr);
    EXPECT_EQ(group.ItemIndex(), -1);
    group.SetColumns(2);
    group.layout()->activate();
    EXPECT_EQ(group.button(1)->x(), group.button(0)->x());
    EXPECT_EQ(group.button(2)->y(), group.button(0)->y());
    EXPECT_GT(group.button(2)->x(), group.button(0)->x());

    EXPECT_TRUE(group.setProperty("ItemIndex", 1));
    EXPECT_TRUE(group.button(1)->isChecked());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(clicks, 0); // only the user's choice clicks
    group.SetItemIndex(-1);
    EXPECT_FALSE(group.button(1)->isChecked());
    group.SetItemIndex(9);
    EXPECT_EQ(group.ItemIndex(), 2);
    group.SetItems({QStringLiteral("0: Nein"), QStringLiteral("1: Ja")});
    EXPECT_EQ(group.ItemIndex(), 1);
    EXPECT_TRUE(group.button(1)->isChecked());
}

TEST_F(RadioGroupTest, AClickChoosesTheItemOnce)
{
    QSignalSpy changed(&group, &TMyRadioGroup::itemIndexChanged);
    QTest::mouseClick(group.button(2), Qt::LeftButton);
    QTest::mouseClick(group.button(2), Qt::LeftButton);
    EXPECT_EQ(group.ItemIndex(), 2);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(RadioGroupTest, KeysOfButtonsAndGroupAreReportedOnce)
{
    // The button ignores "a", so Qt hands it on to the group box as well.
    QTest::keyClick(group.button(0), Qt::Key_A);
    EXPECT_EQ(log,
              QStringList({QStringLiteral("down %1").arg(int(Qt::Key_A)), QStringLiteral("press a"),
                           QStringLiteral("up %1").arg(int(Qt::Key_A))}));
    QTest::keyClick(&group, Qt::Key_B);
    EXPECT_EQ(log.size(), 6);
    QKeyEvent repeatedUp(QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, "a", true);
    QApplication::sendEvent(group.button(0), &repeatedUp);
    EXPECT_EQ(log.size(), 6);
}

TEST_F(RadioGroupTest, SwallowedKeysDoNotReachTheButton)
{
    swallowChar = QLatin1Char(' ');
    QTest::keyClick(group.button(1), Qt::Key_Space);
    EXPECT_EQ(group.ItemIndex(), -1);
    swallowChar = QLatin1Char('#');
    swallowKey = Qt::Key_Space;
    QTest::keyClick(group.button(1), Qt::Key_Space);
    EXPECT_EQ(group.ItemIndex(), -1);
    EXPECT_EQ(log.count(QStringLiteral("press  ")), 2); // a swallowed key down still types

    swallowKey = -1;
    QTest::keyClick(group.button(1), Qt::Key_Space);
    EXPECT_EQ(group.ItemIndex(), 1);
    EXPECT_EQ(clicks, 1);
}
