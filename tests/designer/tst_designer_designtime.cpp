// What the components do while a form is drawn: the table's defaults and silent reading,
// parameter controls named after their coordinates and showing their parameters, the
// coordinate question, tabs, a tree that links itself to a page control, and a bit bar's
// first rows.

#include "designer_fixture.h"

#include "host/wizFormLoader.h"
#include "ioframes/BitLeiste.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "wizard/wizPageControl.h"

#include <QLabel>
#include <QTabBar>

using namespace drivewiz;
using drivewiz::test::recorder;

namespace {

class DesignTime : public DesignForm
{
protected:
    void SetUp() override
    {
        DesignForm::SetUp();
        table = design<TParaTable>(QStringLiteral("TParaTable"));
        ASSERT_NE(table, nullptr);
        table->setObjectName(QStringLiteral("ParaTable"));
        table->SetParamFileName(sampleParameters());
        startUp();
    }

    // A control as Designer makes it from a drop: created, its coordinate set while it is
    // read, then started.
    TParaClass *drop(const QString &koordinate, QWidget *parent = nullptr)
    {
        auto *c = design<TParaClass>(QStringLiteral("TParaClass"), parent);
        if (c) c->setProperty("wizKoordinate", koordinate);
        startUp();
        return c;
    }

    TParaTable *table = nullptr;
};

} // namespace

TEST_F(DesignForm, TableTakesItsDesignDefaultsAndReadsOnlyAFileThatIsThere)
{
    auto *designed = design<TParaTable>(QStringLiteral("TParaTable"));
    ASSERT_NE(designed, nullptr);
    TParaTable runtime;
    EXPECT_TRUE(designed->isDesigning());
    EXPECT_TRUE(designed->FontKoordinate().bold());
    EXPECT_FALSE(runtime.FontKoordinate().bold());
    EXPECT_EQ(designed->UserLevel(), 2);
    EXPECT_EQ(designed->CurrentAx(), 1);
    startUp();

    designed->SetParamFileName(QStringLiteral("/nowhere/Parameter.csv"));
    EXPECT_EQ(designed->RowCount(), 0);
    designed->SetParamFileName(sampleParameters());
    EXPECT_GT(designed->RowCount(), 100);
    EXPECT_TRUE(recorder().messages().isEmpty()) << recorder().messages().join('|').toStdString();
}

TEST_F(DesignTime, ControlIsNamedAfterItsCoordinateAndShowsItsParameter)
{
    TParaClass *c = drop(QStringLiteral("A80"));
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->objectName(), QLatin1String("P_A80"));
    EXPECT_EQ(c->wizParaSourceName(), QLatin1String("ParaTable"));
    EXPECT_EQ(c->paraNameLabel()->text(), QLatin1String("Feldbus-Adresse"));
    EXPECT_NE(c->GetEditControl(), nullptr);

    c->setProperty("wizKoordinate", QStringLiteral("A01.2"));
    EXPECT_EQ(c->objectName(), QLatin1String("P_A01_2"));
    c->setProperty("wizKoordinate", QStringLiteral("Drehzahl"));
    EXPECT_EQ(c->objectName(), QLatin1String("P_A01_2")) << "no coordinate, no new name";
    EXPECT_EQ(c->paraNameLabel()->text(), QLatin1String("Unknown Parameter"));
    EXPECT_TRUE(recorder().entries().empty());
}

TEST_F(DesignTime, NameStaysWhenSwitchedOffOrReadFromAForm)
{
    TParaClass *fixed = drop(QStringLiteral("A80"));
    ASSERT_NE(fixed, nullptr);
    fixed->setObjectName(QStringLiteral("Adresse"));
    fixed->setProperty("wizNoAutomNameChange", true);
    fixed->setProperty("wizKoordinate", QStringLiteral("A34"));
    EXPECT_EQ(fixed->objectName(), QLatin1String("Adresse"));
    EXPECT_NE(fixed->GetEditControl(), nullptr);

    // A form file names the control and its table; opening it renames nothing.
    auto *read = design<TParaClass>(QStringLiteral("TParaClass"));
    read->setObjectName(QStringLiteral("Speed"));
    read->setProperty("wizKoordinate", QStringLiteral("I10"));
    read->setProperty("wizParaSource", QStringLiteral("ParaTable"));
    startUp();
    EXPECT_EQ(read->objectName(), QLatin1String("Speed"));
    EXPECT_NE(read->GetEditControl(), nullptr);
}

TEST_F(DesignTime, TakenNameAsksForAnotherCoordinate)
{
    ASSERT_NE(drop(QStringLiteral("A80")), nullptr);
    recorder().answer(QStringLiteral("A34"));
    TParaClass *second = drop(QStringLiteral("A80"));
    ASSERT_NE(second, nullptr);
    ASSERT_EQ(recorder().entries().size(), 1u);
    EXPECT_EQ(recorder().entries()[0].kind, DialogRecorder::Kind::Input);
    EXPECT_EQ(recorder().entries()[0].text, QLatin1String("Koordinate:"));
    EXPECT_EQ(second->GetKoordinate(), QLatin1String("A34"));
    EXPECT_EQ(second->objectName(), QLatin1String("P_A34"));
}

// A fresh control still shows the template coordinate; once it is sized in the form the
// author is asked for the real one.
TEST_F(DesignTime, TemplateCoordinateIsAskedForWhenTheControlIsSized)
{
    auto *c = design<TParaClass>(QStringLiteral("TParaClass"));
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->GetKoordinate(), QLatin1String("B33B"));
    startUp();
    recorder().answer(QStringLiteral("I12"));
    form->show();
    c->resize(300, 40);
    startUp();
    EXPECT_EQ(c->GetKoordinate(), QLatin1String("I12"));
    EXPECT_EQ(c->objectName(), QLatin1String("P_I12"));
    EXPECT_NE(c->GetEditControl(), nullptr);
}

TEST_F(DesignForm, TabsShowWhileDesignedOnly)
{
    auto *designed = design<TwizPageControl>(QStringLiteral("TwizPageControl"));
    ASSERT_NE(designed, nullptr);
    designed->addTab(new QWidget, QStringLiteral("Eins"));
    designed->addTab(new QWidget, QStringLiteral("Zwei"));
    TwizFormLoader loader;
    auto *runtime = qobject_cast<TwizPageControl *>(
        loader.createWidget(QStringLiteral("TwizPageControl"), form.get(), QStringLiteral("R")));
    runtime->addTab(new QWidget, QStringLiteral("Eins"));
    form->show();
    startUp();
    runtime->Loaded();
    EXPECT_TRUE(designed->tabBar()->isVisible());
    EXPECT_FALSE(runtime->tabBar()->isVisible());
    designed->SetwizTabVisible(false);
    EXPECT_FALSE(designed->tabBar()->isVisible());
    EXPECT_EQ(designed->E48Control(), nullptr) << "the online watch is for run time";
}

TEST_F(DesignForm, TreeViewLinksItselfToAPageControlDroppedLater)
{
    auto *linked = design<TwizTreeView>(QStringLiteral("TwizTreeView"));
    auto *lone = design<TwizTreeView>(QStringLiteral("TwizTreeView"));
    ASSERT_TRUE(linked && lone);
    linked->setProperty("wizPageControl", QStringLiteral("Other"));
    startUp();
    auto *pages = design<TwizPageControl>(QStringLiteral("TwizPageControl"));
    ASSERT_NE(pages, nullptr);
    pages->setObjectName(QStringLiteral("Pages"));
    pages->addTab(new QWidget, QStringLiteral("Eins"));
    startUp();
    EXPECT_EQ(lone->wizPageControl(), pages);
    EXPECT_EQ(pages->wizTreeView(), lone);
    EXPECT_EQ(lone->wizPageControlName(), QLatin1String("Pages"));
    EXPECT_EQ(linked->wizPageControl(), nullptr);
    EXPECT_EQ(lone->topLevelItemCount(), 1) << "the tree lists the pages while designed";
}

TEST_F(DesignForm, BitBarDroppedInTheDesignerShowsTwoRows)
{
    auto *bar = design<TBitLeiste>(QStringLiteral("TBitLeiste"));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->size(), QSize(30, 30));
    startUp();
    EXPECT_EQ(bar->wizCaptions(),
              QStringList({QStringLiteral("WizCaption 1"), QStringLiteral("WizCaption 2")}));
    EXPECT_EQ(bar->Rows().size(), 2u);
}
