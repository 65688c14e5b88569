#ifndef DRIVEWIZ_TESTS_TABLES_FIXTURE_H
#define DRIVEWIZ_TESTS_TABLES_FIXTURE_H

// A shown form in its own working folder (with a central language folder beside it, so
// wiz.cfg lands there) holding a parameter table on a small drive with three arrays of
// four elements (K10, K11, K12), a fourth array of five (K13) and fieldbus types.

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "paramtable/ParaTable.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTemporaryDir>

class TablesForm : public testing::Test
{
protected:
    static const QByteArray &descriptions();

    void SetUp() override;
    void TearDown() override;

    /// A file in the working folder.
    QString path(const QString &name) const;
    /// The "Wert" of a record on the current axis, "<none>" when the table lacks it.
    QString wert(const QString &record) const;
    void setWert(const QString &record, const QString &value);
    void goOnline(drivewiz::tOnlineModus mode = drivewiz::omOnline);
    QStringList messages() { return drivewiz::test::recorder().takeMessages(); }

    QTemporaryDir dir;
    QString oldCwd;
    drivewiz::sim::SimulatedDrive drive;
    QWidget form;
    QLineEdit *neutral = nullptr;
    drivewiz::TParaTable *table = nullptr;
};

#endif // DRIVEWIZ_TESTS_TABLES_FIXTURE_H
