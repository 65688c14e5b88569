// The help view beside a wizard: it follows the focused control, speaks of the unit the
// control shows, and gives limits as the limit message does.

#include "paramctrls_fixture.h"

#include <QTextEdit>

using namespace drivewiz;

class HelpView : public ParamCtrlForm
{
protected:
    void SetUp() override
    {
        ParamCtrlForm::SetUp();
        view = new QTextEdit(&form);
        view->show();
        table->SetRichEditCtrl(view);
    }
    QString shown() const { return view->toPlainText(); }

    QTextEdit *view = nullptr;
};

TEST_F(HelpView, FollowsTheFocusedControl)
{
    TParaClass *zeit = control(QStringLiteral("A10"));
    TParaClass *weg = control(QStringLiteral("A18"));
    enter(zeit);
    EXPECT_TRUE(shown().startsWith(QStringLiteral("A10"))) << shown().toStdString();
    enter(weg);
    EXPECT_TRUE(shown().startsWith(QStringLiteral("A18"))) << shown().toStdString();
    EXPECT_FALSE(shown().contains(QStringLiteral("A10"))) << shown().toStdString();
}

TEST_F(HelpView, NamesTheUnitAnotherParameterGivesAndLimitsAsTheMessageDoes)
{
    TParaClass *weg = control(QStringLiteral("A18"));
    enter(weg);
    EXPECT_FALSE(shown().contains(QLatin1Char('<'))) << shown().toStdString(); // no raw "<A19>"
    EXPECT_TRUE(shown().contains(QStringLiteral("-1000 mm .. 1000 mm"))) << shown().toStdString();

    // The limit message gives the same range in the same form.
    edit(weg)->selectAll();
    QTest::keyClicks(edit(weg), QStringLiteral("5000"));
    leave();
    const QStringList shownMessages = messages();
    ASSERT_EQ(shownMessages.size(), 1);
    EXPECT_TRUE(shownMessages.first().contains(QStringLiteral("-1000 mm .. 1000 mm")))
        << shownMessages.first().toStdString();
}
