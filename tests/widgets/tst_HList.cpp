#include "support/testing.h"
#include "widgets/HList.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace drivewiz;

namespace {

QStringList captions(const QMenu &menu)
{
    QStringList out;
    for (const QAction *a : menu.actions())
        out << (a->isSeparator() ? QStringLiteral("-") : a->text());
    return out;
}

} // namespace

class HistoryListTest : public testing::Test
{
protected:
    void fill(const QStringList &newestLast)
    {
        for (const QString &s : newestLast)
            list.AddString(s);
    }
    QString ini() const { return dir.filePath(QStringLiteral("hist.ini")); }

    QTemporaryDir dir;
    THistoryList list;
};

TEST_F(HistoryListTest, AddingKeepsNewestFirstWithoutDuplicatesAndWithinMaxLen)
{
    fill({"a.csv", "b.csv", "c.csv", "B.CSV"});
    EXPECT_EQ(list.Strings(), QStringList({"B.CSV", "c.csv", "a.csv"}));

    list.SetMaxLen(0);
    list.SetMaxLen(101);
    EXPECT_EQ(list.MaxLen(), 15);
    fill({"d", "e"});
    list.SetMaxLen(3);
    EXPECT_EQ(list.Strings(), QStringList({"e", "d", "B.CSV"}));
    list.AddString("f");
    EXPECT_EQ(list.Strings(), QStringList({"f", "e", "d"}));
}

TEST_F(HistoryListTest, MenuKeepsItsOwnItemsAndNumbersTheEntries)
{
    QMenu file;
    for (const char *s : {"&Open", "&Save", "Save &as", "&Quit"})
        file.addAction(QString::fromLatin1(s));
    list.SetMenuItem(&file);
    EXPECT_EQ(list.InitialCount(), 4);
    EXPECT_EQ(file.actions().size(), 4); // no entries: not even a separator
    fill({"/x/one.csv", "R&D.csv"});
    EXPECT_EQ(captions(file), QStringList({"&Open", "&Save", "Save &as", "&Quit", "-",
                                           "&1 R&&D.csv", "&2 /x/one.csv"}));
    list.AddString("/x/one.csv");
    EXPECT_EQ(captions(file).mid(5), QStringList({"&1 /x/one.csv", "&2 R&&D.csv"}));
    list.RemoveFromMenuItem();
    EXPECT_EQ(captions(file), QStringList({"&Open", "&Save", "Save &as", "&Quit"}));

    // Moving to another menu leaves the first one as it was.
    list.AddMenuItems();
    QMenu other;
    list.SetMenuItem(&other);
    EXPECT_EQ(file.actions().size(), 4);
    EXPECT_EQ(captions(other), QStringList({"-", "&1 /x/one.csv", "&2 R&&D.csv"}));
}

TEST_F(HistoryListTest, ChoosingAnItemCallsTheClickEventWithItsEntry)
{
    QMenu popup;
    list.SetPopupMenu(&popup);
    fill({"old", "new"});
    EXPECT_EQ(captions(popup), QStringList({"&1 new", "&2 old"}));
    popup.actions().at(1)->trigger(); // no handler: nothing happens

    QStringList chosen;
    list.OnClick = [&chosen, this](QObject *sender, const QString &text) {
        EXPECT_EQ(sender, &list);
        chosen << text;
    };
    QSignalSpy spy(&list, &THistoryList::clicked);
    popup.actions().at(1)->trigger();
    EXPECT_EQ(chosen, QStringList({"old"}));
    EXPECT_EQ(spy.count(), 1);

    // Captions that carry no valid number call nothing.
    QAction odd(QStringLiteral("&0 zero"));
    QAction noAmp(QStringLiteral("1 plain"));
    QAction beyond(QStringLiteral("&9 far"));
    for (QAction *a : {&odd, &noAmp, &beyond})
        list.DoAutoItemClick(a);
    EXPECT_EQ(chosen.size(), 1);

    list.RemoveFromPopupMenu();
    EXPECT_TRUE(popup.actions().isEmpty());
}

TEST_F(HistoryListTest, IniRoundTripSkipsEmptyValuesAndReadsOnlyMaxLenKeys)
{
    ASSERT_TRUE(test::writeFile(ini(), "[Files]\r\nHistory0=a\r\nHistory1=\r\nHistory2=c\r\n"
                                       "History3=d\r\n[Other]\r\nHistory0=zz\r\n"));
    list.LoadFromIni(ini(), QStringLiteral("files"));
    EXPECT_EQ(list.Strings(), QStringList({"a", "c", "d"}));
    list.SetMaxLen(3); // History0 to History2: the empty one counts as a key
    list.LoadFromIni(ini(), QStringLiteral("Files"));
    EXPECT_EQ(list.Strings(), QStringList({"a", "c"}));

    // Saving writes the keys afresh, so a shorter list leaves no stale entries behind.
    list.AddString(QStringLiteral("new"));
    ASSERT_TRUE(list.SaveToIni(ini(), QStringLiteral("Files")));
    THistoryList again;
    again.LoadFromIni(ini(), QStringLiteral("Files"));
    EXPECT_EQ(again.Strings(), QStringList({"new", "a", "c"}));
    const QByteArray text = test::readFile(ini());
    EXPECT_TRUE(text.contains("[Other]\r\nHistory0=zz")) << text.constData();
}

class HistoryComboTest : public HistoryListTest
{
protected:
    void SetUp() override
    {
        form.resize(300, 100);
        other = new QLineEdit(&form);
        form.show();
        QApplication::setActiveWindow(&form);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    void typeAndLeave(THistoryCombo *combo, const QString &text)
    {
        combo->setFocus(Qt::TabFocusReason);
        combo->lineEdit()->selectAll();
        QTest::keyClicks(combo->lineEdit(), text);
        QTest::keyClick(combo, Qt::Key_Tab);
    }
    QStringList items(const QComboBox *c) const
    {
        QStringList out;
        for (int i = 0; i < c->count(); ++i)
            out << c->itemText(i);
        return out;
    }

    QWidget form;
    QLineEdit *other = nullptr;
};

TEST_F(HistoryComboTest, LeavingRecordsTheTextAndDestructionSavesIt)
{
    ASSERT_TRUE(test::writeFile(ini(), "[Recent]\r\nHistory0=first.csv\r\n"));
    auto *combo = new THistoryCombo(&form);
    combo->SetIniFileName(ini());
    EXPECT_EQ(combo->count(), 0); // loads only once both are set
    combo->SetIniSection(QStringLiteral("Recent"));
    EXPECT_EQ(items(combo), QStringList({"first.csv"}));
    combo->show();

    typeAndLeave(combo, QStringLiteral("second.csv"));
    EXPECT_TRUE(other->hasFocus());
    EXPECT_EQ(items(combo), QStringList({"second.csv", "first.csv"}));
    EXPECT_EQ(combo->currentText(), QStringLiteral("second.csv"));
    typeAndLeave(combo, QStringLiteral("   "));
    EXPECT_EQ(combo->count(), 2); // a blank text is not recorded

    combo->SetManualUpdate(true);
    typeAndLeave(combo, QStringLiteral("third.csv"));
    EXPECT_EQ(combo->count(), 2);

    delete combo;
    THistoryList saved;
    saved.LoadFromIni(ini(), QStringLiteral("Recent"));
    EXPECT_EQ(saved.Strings(), QStringList({"second.csv", "first.csv"}));
}
