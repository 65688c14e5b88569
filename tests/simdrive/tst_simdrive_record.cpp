// The simulated drive's recorder writes measurement files the library reads.

#include "support/testing.h"

#include "SimulatedDrive.h"
#include "tables/ImportOM_CSV.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

using namespace drivewiz;

TEST(SimDriveRecording, TheSampleRecordingIsWhatTheDriveWrites)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("Messung.csv"));
    sim::SimulatedDrive drive;
    ASSERT_TRUE(drive.writeRecording(file, {"E08", "E02", "I330", "E10"}, 500, 4));
    const QByteArray written = test::readFile(file);
    EXPECT_EQ(written, test::readFile(test::sourcePath(QStringLiteral("data/sample/Messung.csv"))))
        << "data/sample/Messung.csv is out of date";

    TImportOM_CSV m;
    ASSERT_TRUE(m.LoadFromBytes(written, file));
    EXPECT_EQ(m.SampleCount(), 500);
    EXPECT_EQ(m.ChannelCount(), 4);
    EXPECT_EQ(m.SamplingTime(), 4);
    EXPECT_EQ(m.XMax(), 499 * 4);
    EXPECT_NEAR(m.YMax(0), 1500, 5); // the speed profile's top
    EXPECT_NEAR(m.YMin(0), -800, 5);

    EXPECT_FALSE(drive.writeRecording(file, {}, 10));
    EXPECT_FALSE(drive.writeRecording(dir.filePath(QStringLiteral("no/such/dir.csv")), {"E08"}));
    ASSERT_TRUE(drive.writeRecording(file, {"E08"}, 3, 1, 2));
    EXPECT_TRUE(test::readFile(file).contains("Zeit [ms];2.E08\r\n0,000;"));
}
