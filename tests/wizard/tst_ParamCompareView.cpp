// The compare view: keyboard path, Apply with refused and limited values and unknown
// coordinates, the family question, filter and counts.

#include "pagectl_fixture.h"

#include "paramtable/ParamSet.h"
#include "paramtable/ParamUndo.h"
#include "platform/dialogs.h"
#include "wizard/ParamCompareView.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QUndoStack>

using namespace drivewiz;

class CompareView : public WizardForm
{
protected:
    void SetUp() override
    {
        WizardForm::SetUp();
        undo = new ParamUndoStack(table, form.get());
    }
    void TearDown() override
    {
        delete dialog;
        WizardForm::TearDown();
    }

    static ParamSet set(std::initializer_list<std::pair<const char *, const char *>> values,
                        const QString &family = QString())
    {
        ParamSet s;
        for (const auto &[k, v] : values) {
            ParamSet::Entry e;
            e.key = ParamKey(QLatin1String(k), QStringLiteral("1"));
            e.value = QString::fromUtf8(v);
            s.insert(e);
        }
        s.meta().family = family;
        return s;
    }
    ParamSet mine(const QString &family = QString()) const
    {
        ParamSet s =
            ParamSet::fromWizard(*table, {ParamKey(QStringLiteral("A10"), QStringLiteral("1")),
                                          ParamKey(QStringLiteral("A12"), QStringLiteral("1")),
                                          ParamKey(QStringLiteral("A16"), QStringLiteral("1"))});
        s.meta().family = family;
        return s;
    }
    void open(const ParamSet &other, const ParamSet &me)
    {
        dialog = TParamCompareDialog::create(form.get(), table, undo, me, other,
                                             QStringLiteral("Tabelle"), QStringLiteral("Datei"));
        ASSERT_NE(dialog, nullptr);
        dialog->show();
        QApplication::setActiveWindow(dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        view = dialog->view();
    }
    QString value(const QString &k) const { return control(k)->GetText(); }

    ParamUndoStack *undo = nullptr;
    QPointer<TParamCompareDialog> dialog;
    TParamCompareView *view = nullptr;
};

TEST_F(CompareView, KeyboardOnlyTicksAppliesAndCloses)
{
    open(set({{"A10", "20"}, {"A12", "2: auto"}, {"A16", "7"}}), mine());
    QTableView *list = view->tableView();
    EXPECT_TRUE(list->hasFocus());
    EXPECT_EQ(view->filter()->rowCount(), 2); // A16 is the same: hidden
    EXPECT_EQ(view->model()->counts().ticked, 2);
    // Down to A12, Space unticks it, Enter applies A10 alone.
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(list->currentIndex().row(), 1);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ(view->model()->counts().ticked, 1);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("20"));
    EXPECT_NE(value(QStringLiteral("A12")), QStringLiteral("2: auto"));
    EXPECT_EQ(undo->undoStack()->count(), 1);
    EXPECT_TRUE(view->resultText().startsWith(QStringLiteral("Werte übernommen: 1")));
    EXPECT_TRUE(dialog->isVisible());
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_EVENTUALLY_TRUE(dialog.isNull() || !dialog->isVisible());
}

TEST_F(CompareView, ApplyListsRefusedLimitedAndUnknownAsOneStep)
{
    open(set({{"A10", "500"}, {"A12", "9: nix"}, {"A16", "9"}, {"Z99", "1"}}), mine());
    EXPECT_EQ(view->model()->counts().ticked, 3);
    const ApplyResult r = view->apply();
    EXPECT_EQ(r.written, 1);
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("100")); // limited
    EXPECT_EQ(table->Cell(table->FindKey(ParamKey(QStringLiteral("A16"), QStringLiteral("1"))),
                          QStringLiteral("Wert")),
              QStringLiteral("7"));
    const QString text = view->resultText();
    EXPECT_TRUE(text.contains(QStringLiteral("Nicht übernommen"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("A16 = 9")));
    EXPECT_TRUE(text.contains(QStringLiteral("A12 = 9: nix")));
    EXPECT_TRUE(text.contains(QStringLiteral("Begrenzt")));
    EXPECT_TRUE(text.contains(QStringLiteral("Unbekannte Koordinaten")));
    EXPECT_TRUE(text.contains(QStringLiteral("Z99")));
    EXPECT_TRUE(view->resultBox()->isVisible());
    EXPECT_EQ(undo->undoStack()->count(), 1);
    undo->undo();
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("10"));
}

TEST_F(CompareView, NothingTickedSaysSo)
{
    open(set({{"A10", "20"}}), mine());
    QTest::keyClick(view->tableView(), Qt::Key_Space);
    QTest::keyClick(view->tableView(), Qt::Key_Enter);
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("10"));
    EXPECT_TRUE(view->resultText().startsWith(QStringLiteral("Keine Werte angehakt")));
    EXPECT_EQ(undo->undoStack()->count(), 0);
}

TEST_F(CompareView, AnotherFamilyAsksBeforeAnything)
{
    test::recorder().answer(int(mrNo));
    auto *none = TParamCompareDialog::create(form.get(), table, undo, mine(QStringLiteral("X")),
                                             set({{"A10", "20"}}, QStringLiteral("Y")), {}, {});
    EXPECT_EQ(none, nullptr);
    const QStringList asked = messages();
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked.first().contains(QStringLiteral("\"Y\""))) << asked.first().toStdString();
    test::recorder().answer(int(mrYes));
    open(set({{"A10", "20"}}, QStringLiteral("Y")), mine(QStringLiteral("X")));
    EXPECT_EQ(value(QStringLiteral("A10")), QStringLiteral("10")); // nothing applied yet
}

TEST_F(CompareView, FilterSearchAndCounts)
{
    open(set({{"A10", "20"}, {"A12", "1: ein"}, {"A16", "7"}}), mine());
    const int all = view->model()->rowCount();
    EXPECT_EQ(all, 3);
    EXPECT_TRUE(view->countsLabel()->text().startsWith(QStringLiteral("3 Parameter, ")));
    view->onlyDifferencesBox()->click();
    EXPECT_EQ(view->filter()->rowCount(), 3);
    QTest::keyClicks(view->searchEdit(), QStringLiteral("a16"));
    EXPECT_EQ(view->filter()->rowCount(), 1);
    // From the search the arrow goes into the list.
    QTest::keyClick(view->searchEdit(), Qt::Key_Down);
    EXPECT_TRUE(view->tableView()->hasFocus());
    EXPECT_TRUE(view->tableView()->currentIndex().isValid());
}

TEST_F(CompareView, NotReadRowsShowAPlaceholderAndCannotBeTicked)
{
    ParamSet drive = set({{"A10", ""}});
    ParamSet::Entry e = drive.at(0);
    e.read = false;
    drive.insert(e);
    open(drive, mine());
    view->onlyDifferencesBox()->setChecked(false);
    int row = -1;
    for (int i = 0; i < view->model()->rowCount(); ++i)
        if (view->model()->row(i).key.koordinate == QLatin1String("A10")) row = i;
    ASSERT_GE(row, 0);
    EXPECT_FALSE(view->model()->isTickable(row));
    EXPECT_FALSE(view->model()->index(row, ParamCompare::ColOther).data().toString().isEmpty());
}

TEST_F(CompareView, NoTextIsCutAtTwiceTheFont)
{
    QFont f = dialog ? dialog->font() : QApplication::font();
    f.setPointSizeF(f.pointSizeF() * 2);
    QApplication::setFont(f);
    open(set({{"A10", "20"}}), mine());
    dialog->resize(dialog->sizeHint());
    QApplication::processEvents();
    for (QPushButton *b : dialog->findChildren<QPushButton *>())
        EXPECT_GE(b->width(), b->sizeHint().width()) << b->objectName().toStdString();
    EXPECT_GE(view->countsLabel()->width(),
              view->countsLabel()->fontMetrics().horizontalAdvance(view->countsLabel()->text()));
    QApplication::setFont(QFont());
}
