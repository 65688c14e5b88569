// The demo host's command line.

#include "support/testing.h"

#include "HostOptions.h"

#include <gtest/gtest.h>

#include <QFileInfo>

using namespace drivewiz::wizhost;

namespace {

bool parse(const QStringList &args, HostOptions &o, QString &error)
{
    return parseOptions(QStringList{QStringLiteral("wizhost")} + args, o, error);
}

TEST(HostOptions, LanguageIsTheFirstArgument)
{
    HostOptions o;
    QString error;
    ASSERT_TRUE(
        parse({QStringLiteral("2"), QStringLiteral("--open"), QStringLiteral("setup")}, o, error))
        << error.toStdString();
    EXPECT_EQ(o.language, 2);
    EXPECT_EQ(o.open, QStringLiteral("setup"));
    ASSERT_TRUE(parse({QStringLiteral("--open"), QStringLiteral("outputs")}, o, error));
    EXPECT_EQ(o.open, QStringLiteral("outputs"));
}

TEST(HostOptions, DefaultsFindTheSampleDataAndForms)
{
    HostOptions o;
    QString error;
    ASSERT_TRUE(parse({}, o, error));
    EXPECT_EQ(o.language, 1);
    EXPECT_TRUE(QFileInfo(o.dataDir + QStringLiteral("/Parameter.csv")).isFile())
        << o.dataDir.toStdString();
    EXPECT_TRUE(QFileInfo(o.formsDir + QStringLiteral("/DriveSetup.ui")).isFile());
}

TEST(HostOptions, BadValuesAreRefusedWithAReason)
{
    HostOptions o;
    QString error;
    EXPECT_FALSE(parse({QStringLiteral("--open"), QStringLiteral("nothing")}, o, error));
    EXPECT_TRUE(error.contains(QStringLiteral("nothing")));
    EXPECT_FALSE(parse({QStringLiteral("zwei")}, o, error));
    EXPECT_TRUE(error.contains(QStringLiteral("zwei")));
    EXPECT_FALSE(parse({QStringLiteral("--frobnicate")}, o, error));
    EXPECT_FALSE(error.isEmpty());
}

} // namespace
