// The wizard's text search over all pages of the form.

#include "pagectl_fixture.h"

#include <QComboBox>
#include <QPushButton>

using namespace drivewiz;

class Search : public WizardForm
{
protected:
    void search(const QString &text)
    {
        QLineEdit *field = pc->SearchEdit();
        if (field->text() != text) {
            field->setFocus();
            field->selectAll();
            QTest::keyClicks(field, text);
        }
        pc->SearchButton()->click();
    }
    QWidget *focused() const { return QApplication::focusWidget(); }
};

TEST_F(Search, HitThenNoMoreThenTheHitAgain)
{
    search(QStringLiteral("zeitbasis")); // typed in lower case, searched in upper case
    EXPECT_EQ(pc->SearchEdit()->text(), QStringLiteral("ZEITBASIS"));
    EXPECT_EQ(pc->currentIndex(), 1);
    EXPECT_TRUE(back->isVisible());
    EXPECT_EQ(tree->currentItem()->text(0), QStringLiteral("Modus"));
    // The label is shown by its page: the page's first field takes the focus.
    EXPECT_EQ(focused(), control(QStringLiteral("A12"))->GetEditControl());
    EXPECT_TRUE(messages().isEmpty());
    pc->MoveTo(page(0));
    search(QStringLiteral("ZEITBASIS"));
    EXPECT_EQ(messages(), QStringList({"Keine weiteren Stellen gefunden!"}));
    EXPECT_EQ(pc->currentIndex(), 0);
    search(QStringLiteral("ZEITBASIS"));
    EXPECT_EQ(pc->currentIndex(), 1);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(Search, HitsComeInWalkOrder)
{
    // "A1" is in the coordinate labels of A10, A12 and A16 and in no other text.
    search(QStringLiteral("A1"));
    EXPECT_EQ(pc->currentIndex(), 0);
    EXPECT_EQ(focused(), edit(QStringLiteral("A10")));
    search(QStringLiteral("A1"));
    EXPECT_EQ(pc->currentIndex(), 1);
    search(QStringLiteral("A1"));
    EXPECT_EQ(pc->currentIndex(), 2); // read only: shown by flashing, not focused
    EXPECT_NE(focused(), control(QStringLiteral("A16"))->GetEditControl());
    EXPECT_TRUE(messages().isEmpty());
    search(QStringLiteral("A1")); // B11 on the hidden page is not reached
    EXPECT_EQ(messages(), QStringList({"Keine weiteren Stellen gefunden!"}));
}

TEST_F(Search, NothingFoundAndNothingReachable)
{
    search(QStringLiteral("XYZ"));
    EXPECT_EQ(messages(), QStringList({"Gesuchter Text nicht gefunden!"}));
    search(QStringLiteral("B11")); // only on a hidden page
    EXPECT_EQ(messages(), QStringList({"Gesuchter Text nicht gefunden!\r(Gesuchter Text ist bei "
                                       "aktueller Parametrierung nicht fokussierbar)"}));
    EXPECT_EQ(pc->currentIndex(), 0);
    hint->hide(); // a hidden control cannot be shown either
    search(QStringLiteral("ZEITBASIS"));
    EXPECT_EQ(messages().size(), 1);
    EXPECT_EQ(pc->currentIndex(), 0);
}

TEST_F(Search, ValuesOfEditsAndCombosCountAndTheFieldItselfDoesNot)
{
    search(QStringLiteral("EIN")); // the selection "1: ein" of A12, not the search field
    EXPECT_EQ(pc->currentIndex(), 1);
    EXPECT_EQ(focused(), control(QStringLiteral("A12"))->GetEditControl());
}

TEST_F(Search, EnterSearchesAndChangingTheTextStartsOver)
{
    QLineEdit *field = pc->SearchEdit();
    EXPECT_FALSE(pc->SearchButton()->isEnabled());
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("A1"));
    EXPECT_TRUE(pc->SearchButton()->isEnabled());
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(pc->currentIndex(), 0);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(pc->currentIndex(), 1);
    EXPECT_TRUE(messages().isEmpty()); // Enter in the search field never ends the wizard
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClicks(field, QStringLiteral("1"));
    pc->SearchButton()->click();
    EXPECT_EQ(pc->currentIndex(), 0); // the first hit again
}
