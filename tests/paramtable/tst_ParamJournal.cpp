#include "paramsets_fixture.h"

#include "paramtable/ParamCompare.h"
#include "paramtable/ParamJournal.h"
#include "paramtable/ParamUndo.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace drivewiz;
using namespace drivewiz::test;

namespace {

const char *const kChildVariable = "DRIVEWIZ_JOURNAL_CHILD";

ParamWrite numbered(int i)
{
    ParamWrite w;
    w.time = QDateTime::currentDateTime();
    w.key = ParamKey(QStringLiteral("B20"), QStringLiteral("1"));
    w.oldValue = QString::number(i - 1);
    w.newValue = QString::number(i) + QStringLiteral(";\"") + QString(2000, QLatin1Char('x'));
    w.origin = WriteOrigin::Apply;
    w.mode = omOnline;
    w.answer = 0;
    return w;
}

int countLines(const QString &fileName)
{
    return int(test::readFile(fileName).count('\n'));
}

} // namespace

using ParamJournalTest = ParamSetsTest;

// The writes of a wizard, whoever makes them, are in its journal beside wiz.cfg, with
// origin, mode and the host's answer.
TEST_F(ParamJournalTest, EveryWriteIsJournaledWithOriginModeAndAnswer)
{
    ParamJournal journal(table);
    EXPECT_EQ(journal.fileName(), path(QStringLiteral("SetsWizard.journal.csv")));
    ParamUndoStack undo(table);
    typeInto(b20, QStringLiteral("3.5"));         // offline: kept in the table
    undo.reset(ParamKey("A40.1", "1"));           // reset
    undo.undo();                                  // undo
    connectHost();
    table->SetOnline(omOnline);
    host.writeAnswers[kA01] = 'V';
    typeInto(a01, QStringLiteral("Neu"));         // online, refused by the drive
    {
        const TParaTable::OriginScope scope(table, WriteOrigin::Host);
        table->SetParaValue(kB20Axis2, QStringLiteral("B20"), QStringLiteral("1.5"));
    }

    const ParamJournal::ReadResult r = journal.read();
    EXPECT_EQ(r.skipped, 0);
    const auto line = [&](int i) {
        const ParamWrite &w = r.entries.at(i).write;
        return QStringList{w.key.text(), w.oldValue, w.newValue, writeOriginKeyword(w.origin),
                           w.mode == omOnline ? QStringLiteral("on") : QStringLiteral("off"),
                           w.answerText()}
            .join(QLatin1Char('|'));
    };
    QStringList all;
    for (int i = 0; i < r.entries.size(); ++i)
        all << line(i);
    ASSERT_EQ(r.entries.size(), 6) << all.join('\n').toStdString();
    // Going online wrote the value typed offline; A40.1 was back to its value: not written.
    EXPECT_EQ(line(0), QStringLiteral("B20|1.25|3.5|typed|off|"));
    EXPECT_EQ(line(1), QStringLiteral("A40.1|600|1000|reset|off|"));
    EXPECT_EQ(line(2), QStringLiteral("A40.1|1000|600|undo|off|"));
    EXPECT_EQ(line(3), QStringLiteral("B20|1.25|3.5|typed|on|0"));
    EXPECT_EQ(line(4), QStringLiteral("A01|Portal; |Neu|typed|on|V"));
    EXPECT_EQ(wert(QStringLiteral("A01")), QStringLiteral("Portal; ")); // not the refused value
    EXPECT_EQ(line(5), QStringLiteral("2.B20|0.84|1.5|host|on|0"));
    EXPECT_TRUE(r.entries.at(0).write.time.isValid());
    EXPECT_LE(r.entries.at(0).write.time, r.entries.at(5).write.time);
}

// OK writes the values typed offline, reported with the value before the edit; the
// values nobody changed are written but not journaled.
TEST_F(ParamJournalTest, OkJournalsOnlyTheValuesTypedOffline)
{
    ParamJournal journal(table);
    typeInto(b20, QStringLiteral("3.5"));
    typeInto(b20, QStringLiteral("4.5"));
    connectHost();
    table->PostAllParams();
    EXPECT_GE(host.writes.size(), 3u);
    const ParamJournal::ReadResult r = journal.read();
    ASSERT_EQ(r.entries.size(), 3);
    const ParamWrite &ok = r.entries.at(2).write;
    EXPECT_EQ(ok.oldValue, QStringLiteral("1.25"));
    EXPECT_EQ(ok.newValue, QStringLiteral("4.5"));
    EXPECT_EQ(ok.answer, 0);
}

// "Back to here": the values from before a moment, for the parameters written since.
TEST_F(ParamJournalTest, ValuesBeforeAMoment)
{
    ParamJournal journal(table);
    ParamUndoStack undo(table);
    undo.reset(ParamKey("A40.1", "1"));
    QTest::qWait(5);
    const QDateTime moment = QDateTime::currentDateTime();
    QTest::qWait(5);
    undo.reset(ParamKey("B20", "1"));
    typeInto(b20, QStringLiteral("7"));
    const ParamSet before = ParamJournal::stateBefore(journal.read().entries, moment);
    ASSERT_EQ(before.size(), 1);
    EXPECT_EQ(before.at(0).key.text(), QStringLiteral("B20"));
    EXPECT_EQ(before.at(0).value, QStringLiteral("1.25"));
    ParamCompare c(table);
    c.compare(ParamSet::fromWizard(*table, before.keys()), before);
    EXPECT_EQ(c.counts().different, 1);
}

// A journal that cannot be written is reported once; editing goes on.
TEST_F(ParamJournalTest, AnUnwritableJournalIsReportedOnce)
{
    test::writeFile(path(QStringLiteral("file")), "not a folder");
    for (const QString &where : {QStringLiteral("/dev/full"), path(QStringLiteral("file/j.csv"))}) {
        recorder().clear();
        ParamJournal journal(table, where);
        QSignalSpy failed(&journal, &ParamJournal::writeFailed);
        typeInto(b20, QStringLiteral("3"));
        typeInto(b20, QStringLiteral("4"));
        ParamUndoStack undo(table);
        undo.reset(ParamKey("B20", "1"));
        EXPECT_EQ(failed.size(), 1) << where.toStdString();
        EXPECT_TRUE(journal.failed());
        ASSERT_EQ(recorder().messages().size(), 1) << where.toStdString();
        EXPECT_TRUE(recorder().messages().at(0).contains(where));
        EXPECT_EQ(wert(QStringLiteral("B20")), QStringLiteral("0.00"));
    }
}

// Run by the next test as a process of its own: writes the journal until it is killed.
TEST(ParamJournalChild, WritesUntilKilled)
{
    const QString file = qEnvironmentVariable(kChildVariable);
    if (file.isEmpty()) GTEST_SKIP() << "runs as the child of JournalAfterAKilledWriter";
    ParamJournal journal(nullptr, file);
    for (int i = 0;; ++i)
        ASSERT_TRUE(journal.append(numbered(i)));
}

// A writer killed mid-stream leaves complete lines and at most one cut line; a cut last
// line (power lost mid-write) is skipped, every complete one is read.
TEST_F(ParamJournalTest, JournalAfterAKilledWriter)
{
    const QString file = path(QStringLiteral("killed.journal.csv"));
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QLatin1String(kChildVariable), file);
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--gtest_filter=ParamJournalChild.WritesUntilKilled")});
    ASSERT_TRUE(child.waitForStarted(10000));
    const QDeadlineTimer deadline(60000);
    while (countLines(file) < 400 && !deadline.hasExpired() && child.state() == QProcess::Running)
        QTest::qWait(10);
    child.kill();
    ASSERT_TRUE(child.waitForFinished(10000));
    ASSERT_GE(countLines(file), 400) << child.readAllStandardOutput().toStdString();

    // Power lost in the middle of the next line.
    const QByteArray next = ParamJournal::formatLine(numbered(999999));
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::Append));
    f.write(next.left(next.size() / 2));
    f.close();

    const int complete = countLines(file) - 1; // without the title line
    const ParamJournal::ReadResult r = ParamJournal::read(file);
    EXPECT_TRUE(r.cutOff);
    EXPECT_EQ(r.skipped, 1);
    ASSERT_EQ(r.entries.size(), complete);
    for (int i = 0; i < complete; ++i) {
        ASSERT_EQ(r.entries.at(i).write.newValue, numbered(i).newValue) << "line " << i;
        ASSERT_EQ(r.entries.at(i).write.answer, 0);
    }
}
