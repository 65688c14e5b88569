// The keyboard in parameter controls: which keys reach the handlers, and that every kind
// of input field can be reached, changed and left without a mouse.

#include "paramctrls_fixture.h"

#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QWheelEvent>

using namespace drivewiz;

class ParamCtrlKeys : public ParamCtrlForm
{
protected:
    // Records every key the control's handlers see, as "down:<key>", "press:<char>".
    void listen(TParaClass *c)
    {
        c->OnKeyDown = [this](QObject *, int &key, Qt::KeyboardModifiers) {
            seen << QStringLiteral("down:%1").arg(key);
        };
        c->OnKeyPress = [this](QObject *, QChar &key) {
            seen << QStringLiteral("press:%1").arg(key.unicode());
        };
        c->OnKeyUp = [this](QObject *, int &key, Qt::KeyboardModifiers) {
            seen << QStringLiteral("up:%1").arg(key);
        };
    }
    bool sawTab() const
    {
        for (const QString &s : seen) {
            if (s.endsWith(QString::number(Qt::Key_Tab)) ||
                s.endsWith(QString::number(Qt::Key_Backtab)) || s == QLatin1String("press:9"))
                return true;
        }
        return false;
    }
    QWidget *focused() const { return QApplication::focusWidget(); }

    QStringList seen;
};

TEST_F(ParamCtrlKeys, TabAndShiftTabLeaveEveryFieldAndNeverReachTheHandlers)
{
    const struct
    {
        const char *koordinate;
        TwizCtrlType type;
    } fields[] = {{"A10", wctDefault},         // numeric edit
                  {"A14", wctDefault},         // boolean: check box
                  {"A12", wctDefault},         // selection: combo box
                  {"A12", wctRadioButtons},    // selection: radio group
                  {"A13", wctBinaryCheckBoxes}, // bit pattern: a box per bit
                  {"A15", wctDefault}};        // text
    for (const auto &f : fields) {
        SCOPED_TRACE(f.koordinate);
        TParaClass *c = control(QLatin1String(f.koordinate), f.type);
        listen(c);
        QWidget *input = c->bitCheckBoxes().isEmpty() ? c->GetEditControl()
                                                      : c->bitCheckBoxes().first();
        if (auto *group = qobject_cast<TMyRadioGroup *>(input)) input = group->button(1);
        input->setFocus(Qt::TabFocusReason);
        ASSERT_EQ(focused(), input);
        QTest::keyClick(input, Qt::Key_Tab);
        EXPECT_NE(focused(), input) << "Tab kept the focus";
        QTest::keyClick(focused(), Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_EQ(focused(), input) << "Shift+Tab did not come back";
        QTest::keyClick(input, Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_NE(focused(), input);
        EXPECT_FALSE(sawTab()) << seen.join(QLatin1Char(' ')).toStdString();
        seen.clear();
        delete c;
    }
}

TEST_F(ParamCtrlKeys, OnlyTheEditTypesAndOnlyEditAndComboReportKeys)
{
    TParaClass *num = control(QStringLiteral("A10"));
    listen(num);
    enter(num);
    edit(num)->selectAll();
    QTest::keyClicks(edit(num), QStringLiteral("4x"));
    EXPECT_EQ(edit(num)->text(), QStringLiteral("4"));
    EXPECT_TRUE(seen.contains(QStringLiteral("press:52"))); // '4' passed, 'x' was swallowed
    EXPECT_FALSE(seen.contains(QStringLiteral("press:120")));
    EXPECT_TRUE(seen.contains(QStringLiteral("up:%1").arg(Qt::Key_4)));

    TParaClass *sel = control(QStringLiteral("A12"));
    listen(sel);
    seen.clear();
    enter(sel);
    QTest::keyClick(sel->GetEditControl(), Qt::Key_Down);
    EXPECT_EQ(seen, QStringList({QStringLiteral("down:%1").arg(Qt::Key_Down)}));

    // A check box takes Space as a check box does: the numeric filter is for edits.
    TParaClass *flag = control(QStringLiteral("A14"));
    listen(flag);
    seen.clear();
    auto *box = qobject_cast<QCheckBox *>(flag->GetEditControl());
    ASSERT_NE(box, nullptr);
    const bool before = box->isChecked();
    box->setFocus(Qt::TabFocusReason);
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_NE(box->isChecked(), before);
    EXPECT_TRUE(seen.isEmpty());
}

TEST_F(ParamCtrlKeys, SpaceTicksABitAndPostsOnline)
{
    goOnline();
    TParaClass *bits = control(QStringLiteral("A13"), wctBinaryCheckBoxes);
    ASSERT_EQ(bits->bitCheckBoxes().size(), 8);
    QCheckBox *bit1 = bits->bitCheckBoxes().at(6); // highest bit first
    drive.clearLog();
    bit1->setFocus(Qt::TabFocusReason);
    QTest::keyClick(bit1, Qt::Key_Space);
    EXPECT_TRUE(bit1->isChecked());
    EXPECT_EQ(bits->GetASInteger(), 7);
    EXPECT_EQ(drive.log(), QStringList({"A13 (1) = 00000111bin"}));
}

// Online, a choice in a combo box reaches the drive however it was made, also when the
// list never opened.
TEST_F(ParamCtrlKeys, AChoiceMadeWithoutTheListIsWrittenWhenTheFieldIsLeft)
{
    goOnline();
    TParaClass *sel = control(QStringLiteral("A12"));
    auto *combo = qobject_cast<TwizComboBox *>(sel->GetEditControl());
    ASSERT_NE(combo, nullptr);
    drive.clearLog();

    enter(sel); // arrow key, then Tab away
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(sel->GetText(), QStringLiteral("2: auto"));
    QTest::keyClick(combo, Qt::Key_Tab);
    EXPECT_EQ(drive.log(), QStringList({"A12 (1) = 2: auto"}));

    enter(sel); // a typed key
    QTest::keyClick(combo, Qt::Key_0);
    leave();
    EXPECT_EQ(drive.log().last(), QStringLiteral("A12 (1) = 0: aus"));

    // The wheel: Qt gives a combo box the focus before the wheel turns it.
    combo->setFocus(Qt::MouseFocusReason);
    const QPointF centre = QPointF(combo->rect().center());
    QWheelEvent wheel(centre, combo->mapToGlobal(centre), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    EXPECT_EQ(sel->GetText(), QStringLiteral("1: ein"));
    leave();
    EXPECT_EQ(drive.log().last(), QStringLiteral("A12 (1) = 1: ein"));

    const int writes = int(drive.log().size());
    enter(sel); // entering and leaving without a change writes nothing
    leave();
    EXPECT_EQ(drive.log().size(), writes);
}
