#ifndef DRIVEWIZ_TESTS_TESTING_H
#define DRIVEWIZ_TESTS_TESTING_H

#include "platform/dialogrecorder.h"

#include <QString>
#include <QTest>
#include <QStringList>

#include <ostream>

// Readable QString values in failure messages.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &s, std::ostream *os)
{
    *os << '"' << s.toStdString() << '"';
}
inline void PrintTo(const QStringList &l, std::ostream *os)
{
    *os << '{';
    for (qsizetype i = 0; i < l.size(); ++i)
        *os << (i ? ", \"" : "\"") << l.at(i).toStdString() << '"';
    *os << '}';
}
QT_END_NAMESPACE

namespace drivewiz::test {

/// The dialog recorder installed for the running test; it starts empty in every test.
DialogRecorder &recorder();

/// Path of a file in the source tree, e.g. sourcePath("data/sample/Parameter.csv").
QString sourcePath(const QString &relative);

/// Writes bytes to a file, creating folders; returns false on failure.
bool writeFile(const QString &path, const QByteArray &bytes);

/// Reads a whole file (empty when missing).
QByteArray readFile(const QString &path);

} // namespace drivewiz::test

// Waiting for something that events bring about, for GoogleTest: QtTest's QTRY_* macros
// report to QtTest and return, so a condition that never comes would pass unseen.
#define EXPECT_EVENTUALLY_TRUE(cond) EXPECT_TRUE(QTest::qWaitFor([&] { return bool(cond); }))
#define EXPECT_EVENTUALLY_EQ(actual, expected)                                             \
    do {                                                                                   \
        (void)QTest::qWaitFor([&] { return (actual) == (expected); });                     \
        EXPECT_EQ(actual, expected);                                                       \
    } while (false)

#endif // DRIVEWIZ_TESTS_TESTING_H
