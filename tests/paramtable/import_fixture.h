#ifndef DRIVEWIZ_TESTS_IMPORT_FIXTURE_H
#define DRIVEWIZ_TESTS_IMPORT_FIXTURE_H

#include "support/testing.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

// Writes CSV files into a temporary folder for the import and values table tests.
class CsvFiles : public testing::Test
{
protected:
    QString write(const QString &name, const QByteArray &bytes)
    {
        const QString path = m_dir.filePath(name);
        EXPECT_TRUE(drivewiz::test::writeFile(path, bytes));
        return path;
    }
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QStringList messages() { return drivewiz::test::recorder().takeMessages(); }

    QTemporaryDir m_dir;
};

#endif // DRIVEWIZ_TESTS_IMPORT_FIXTURE_H
