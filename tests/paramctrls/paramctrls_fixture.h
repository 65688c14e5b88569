#ifndef DRIVEWIZ_TESTS_PARAMCTRLS_FIXTURE_H
#define DRIVEWIZ_TESTS_PARAMCTRLS_FIXTURE_H

// A shown form with a parameter table on a small drive (the simulated drive serves its
// values), and helpers to make parameter controls on it.

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

class ParamCtrlForm : public testing::Test
{
protected:
    static const QByteArray &descriptions();

    void SetUp() override;
    void TearDown() override;

    /// A control of a coordinate on the form, built and shown.
    drivewiz::TParaClass *control(const QString &koordinate,
                                  drivewiz::TwizCtrlType type = drivewiz::wctDefault);
    /// Connects the simulated drive and switches the table to a mode.
    void goOnline(drivewiz::tOnlineModus mode = drivewiz::omOnline);
    QLineEdit *edit(drivewiz::TParaClass *c)
    {
        return qobject_cast<QLineEdit *>(c->GetEditControl());
    }
    /// Moves the focus into a control's input field, or out of it to a neutral widget.
    void enter(drivewiz::TParaClass *c);
    void leave();
    QStringList messages() { return drivewiz::test::recorder().takeMessages(); }

    QTemporaryDir dir;
    drivewiz::sim::SimulatedDrive drive;
    QWidget form;
    QLineEdit *neutral = nullptr;
    drivewiz::TParaTable *table = nullptr;
};

#endif // DRIVEWIZ_TESTS_PARAMCTRLS_FIXTURE_H
