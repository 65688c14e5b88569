#ifndef DRIVEWIZ_TESTS_WIZHOST_SESSION_FIXTURE_H
#define DRIVEWIZ_TESTS_WIZHOST_SESSION_FIXTURE_H

// A demo host session on the sample drive, with the sample language files in a folder of
// the test: the wizards read them there and write their wiz.cfg there.

#include "support/testing.h"

#include "HostSession.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <memory>

class HostSessionTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;
    /// Lets posted events and messages run a few rounds.
    static void settle();

    QTemporaryDir dir;
    drivewiz::wizhost::HostOptions options;
    std::unique_ptr<drivewiz::wizhost::HostSession> session;
};

#endif // DRIVEWIZ_TESTS_WIZHOST_SESSION_FIXTURE_H
