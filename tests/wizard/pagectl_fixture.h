#ifndef DRIVEWIZ_TESTS_WIZARD_PAGECTL_FIXTURE_H
#define DRIVEWIZ_TESTS_WIZARD_PAGECTL_FIXTURE_H

// A shown wizard form in its own working folder (with a central language folder beside
// it, so wiz.cfg lands there): a parameter table on a small simulated drive, a page
// control with five pages, a tree and a back button.
//
// Pages: 0 "Start" (P_A10), 1 "Modus" (P_A12 and a label "Hinweis: Zeitbasis"),
// 2 "Grenzen" (P_A16, read only), 3 "Leistung" (P_B11, Tag 1), 4 "Ende" (Tag 1).

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "widgets/wizEdit.h"
#include "wizard/wizPageControl.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class WizardForm : public testing::Test
{
protected:
    static const QByteArray &descriptions();
    static const QByteArray &selections();

    void SetUp() override;
    void TearDown() override;

    /// Writes the description files into the working folder; returns the path.
    QString writeDescriptions();
    QWidget *page(int n) const { return pc->widget(n); }
    template <class T = QWidget> T *part(int n, const QString &name) const
    {
        return page(n)->findChild<T *>(name, Qt::FindDirectChildrenOnly);
    }
    drivewiz::TParaClass *control(const QString &koordinate) const;
    QLineEdit *edit(const QString &koordinate) const;
    QStringList treeTexts() const;
    /// Connects the simulated drive and switches the table's mode as the host does (by
    /// message), then lets the messages run.
    void hostMode(drivewiz::tOnlineModus mode);
    void settle();
    QStringList messages() { return drivewiz::test::recorder().takeMessages(); }

    QTemporaryDir dir;
    QString oldCwd;
    drivewiz::sim::SimulatedDrive drive;
    std::unique_ptr<QWidget> form;
    drivewiz::TParaTable *table = nullptr;
    drivewiz::TwizPageControl *pc = nullptr;
    drivewiz::TwizTreeView *tree = nullptr;
    drivewiz::TwizButton *back = nullptr;
    QLabel *hint = nullptr;
};

#endif // DRIVEWIZ_TESTS_WIZARD_PAGECTL_FIXTURE_H
