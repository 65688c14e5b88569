#include "platform/inifile.h"
#include "support/testing.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>

#include <thread>

using namespace drivewiz;

class IniFileTest : public testing::Test
{
protected:
    QString path(const QString &name = QStringLiteral("wiz.cfg")) const
    {
        return dir.filePath(name);
    }
    // Writes the bytes and returns a loaded IniFile on them.
    std::unique_ptr<IniFile> open(const QByteArray &bytes)
    {
        EXPECT_TRUE(test::writeFile(path(), bytes));
        auto ini = std::make_unique<IniFile>(path());
        EXPECT_TRUE(ini->load()) << ini->errorString().toStdString();
        return ini;
    }
    QByteArray onDisk() const { return test::readFile(path()); }

    QTemporaryDir dir;
};

TEST_F(IniFileTest, NamesAreCaseInsensitive)
{
    auto ini = open("[Wizard1]\nFormWidth=800\n");
    EXPECT_EQ(ini->readString("WIZARD1", "formwidth", "x"), "800");
    EXPECT_TRUE(ini->sectionExists("wizard1"));
    EXPECT_TRUE(ini->valueExists("wizARD1", "FORMwidth"));
    EXPECT_FALSE(ini->valueExists("wizard1", "FormHeight"));
    ini->writeInteger("WIZARD1", "FORMWIDTH", 1024);
    EXPECT_EQ(ini->keys("wizard1"), QStringList{"FormWidth"});
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(onDisk(), "[Wizard1]\nFormWidth=1024\n");
}

TEST_F(IniFileTest, ValuesAreVerbatim)
{
    auto ini = open("[S]\nv=a, b; c \\d\nq=\"quoted\"\nhash=1 # 2\n");
    EXPECT_EQ(ini->readString("S", "v", ""), "a, b; c \\d");
    EXPECT_EQ(ini->readString("S", "q", ""), "\"quoted\"");
    EXPECT_EQ(ini->readString("S", "hash", ""), "1 # 2");
    ini->writeString("S", "w", "x,y;z\\n\"");
    ASSERT_TRUE(ini->save());
    IniFile again(path());
    ASSERT_TRUE(again.load());
    EXPECT_EQ(again.readString("S", "w", ""), "x,y;z\\n\"");
    EXPECT_EQ(again.readString("S", "v", ""), "a, b; c \\d");
}

TEST_F(IniFileTest, WrittenTextsAreSingleLinesWithoutSurroundingBlanks)
{
    auto ini = open("");
    ini->writeString("S", "k", "  two\r\nlines ");
    ini->writeString("S", "", "ignored");
    ini->writeString("", "k", "ignored");
    EXPECT_EQ(ini->readString("S", "k", ""), "two  lines");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(onDisk(), "[S]\nk=two  lines\n");
}

TEST_F(IniFileTest, CommentsAndOrderSurviveASave)
{
    const QByteArray text = "; wiz.cfg of the test bench\n"
                            "; second line\n"
                            "\n"
                            "[Wizard1]\n"
                            "FormWidth=800\n"
                            "\n"
                            "; height in pixels at 96 ppi\n"
                            "FormHeight=600\n"
                            "\n"
                            "# the second wizard\n"
                            "[Wizard2]\n"
                            "Mode=1\n"
                            "; end of file\n";
    auto ini = open(text);
    EXPECT_EQ(ini->sections(), QStringList({"Wizard1", "Wizard2"}));
    EXPECT_EQ(ini->keys("Wizard1"), QStringList({"FormWidth", "FormHeight"}));
    ini->writeInteger("Wizard1", "FormWidth", 1024);
    ASSERT_TRUE(ini->save());
    QByteArray expected = text;
    expected.replace("FormWidth=800", "FormWidth=1024");
    EXPECT_EQ(onDisk(), expected);

    ini->writeString("Wizard1", "Extra", "new");
    ini->writeString("Wizard0", "First", "1");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(ini->keys("Wizard1"), QStringList({"FormWidth", "FormHeight", "Extra"}));
    EXPECT_EQ(ini->sections(), QStringList({"Wizard1", "Wizard2", "Wizard0"}));
    EXPECT_TRUE(onDisk().endsWith("Mode=1\n\n[Wizard0]\nFirst=1\n; end of file\n"));
}

TEST_F(IniFileTest, DeletingKeepsTheRest)
{
    auto ini = open("[A]\nx=1\ny=2\n\n[B]\nz=3\n");
    ini->deleteKey("a", "X");
    ini->deleteKey("A", "y");
    EXPECT_TRUE(ini->sectionExists("A"));
    EXPECT_TRUE(ini->keys("A").isEmpty());
    ini->eraseSection("b");
    EXPECT_FALSE(ini->sectionExists("B"));
    EXPECT_EQ(ini->readString("B", "z", "gone"), "gone");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(onDisk(), "[A]\n");
}

TEST_F(IniFileTest, IntegersAndBoolsFollowTheFrameworkRules)
{
    auto ini = open("[S]\nn = -5 \nhex=$1F\nhex2=0x10\nbad=12abc\nempty=\none=1\nzero=0\nt=true\n");
    EXPECT_EQ(ini->readInteger("S", "n", 0), -5);
    EXPECT_EQ(ini->readInteger("S", "hex", 0), 31);
    EXPECT_EQ(ini->readInteger("S", "hex2", 0), 16);
    EXPECT_EQ(ini->readInteger("S", "bad", 7), 7);
    EXPECT_EQ(ini->readInteger("S", "empty", 7), 7);
    EXPECT_EQ(ini->readString("S", "empty", "default"), "");
    EXPECT_EQ(ini->readInteger("S", "missing", 9), 9);
    EXPECT_TRUE(ini->readBool("S", "one", false));
    EXPECT_FALSE(ini->readBool("S", "zero", true));
    EXPECT_TRUE(ini->readBool("S", "t", true));
    EXPECT_FALSE(ini->readBool("S", "t", false));
    ini->writeBool("S", "b", true);
    EXPECT_EQ(ini->readString("S", "b", ""), "1");
}

TEST_F(IniFileTest, Windows1252FilesStayWindows1252)
{
    auto ini = open("[Texte]\nName=M\xFCller\n");
    EXPECT_EQ(ini->readString("Texte", "Name", ""), "Müller");
    ini->writeString("Texte", "Größe", "5 €");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(onDisk(), "[Texte]\nName=M\xFCller\nGr\xF6\xDF"
                        "e=5 \x80\n");
    EXPECT_EQ(ini->readString("texte", "GRÖßE", ""), ""); // only ASCII letters fold
    EXPECT_EQ(ini->readString("texte", "Größe", ""), "5 €");
}

TEST_F(IniFileTest, Utf8FilesStayUtf8WithTheirBom)
{
    auto ini = open("\xEF\xBB\xBF[Texte]\r\nName=M\xC3\xBCller\r\n");
    EXPECT_EQ(ini->readString("Texte", "Name", ""), "Müller");
    ini->writeString("Texte", "Ort", "Köln");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(onDisk(), "\xEF\xBB\xBF[Texte]\r\nName=M\xC3\xBCller\r\nOrt=K\xC3\xB6ln\r\n");
}

TEST_F(IniFileTest, AWindows1252FileBecomesUtf8RatherThanLosingAText)
{
    auto ini = open("; Kommentar \xE4\n[Texte]\nName=M\xFCller\n");
    ini->writeString("Texte", "Russisch", "Привет");
    EXPECT_EQ(ini->readString("Texte", "Name", ""), "Müller");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(QString::fromUtf8(onDisk()),
              "; Kommentar ä\n[Texte]\nName=Müller\nRussisch=Привет\n");
}

TEST_F(IniFileTest, NewFilesAreWindows1252WhenEveryCharacterFits)
{
    IniFile ini(path());
    ASSERT_TRUE(ini.load()); // missing: empty, no error
    EXPECT_TRUE(ini.sections().isEmpty());
    ini.writeString("S", "k", "äöü");
    ASSERT_TRUE(ini.save());
    EXPECT_EQ(onDisk(), "[S]\nk=\xE4\xF6\xFC\n");

    IniFile other(path(QStringLiteral("other.cfg")));
    other.writeString("S", "k", "ä Ж");
    ASSERT_TRUE(other.save());
    EXPECT_EQ(test::readFile(path(QStringLiteral("other.cfg"))), "[S]\nk=\xC3\xA4 \xD0\x96\n");
}

// Whatever a file looked like, a value written and read back is the text written: a
// file whose Windows-1252 bytes come to read as UTF-8 is saved as UTF-8.
TEST_F(IniFileTest, WrittenTextsReadBackUnchanged)
{
    auto ini = open("[T]\nA=\xC3\xA4\nB=\xFC\n"); // "Ã¤" and "ü" in Windows-1252
    EXPECT_EQ(ini->readString("T", "A", ""), "Ã¤");
    ini->writeString("T", "B", "u"); // its last byte that is no UTF-8 goes
    ASSERT_TRUE(ini->save());
    IniFile back(path());
    ASSERT_TRUE(back.load());
    EXPECT_EQ(back.readString("T", "A", ""), "Ã¤");

    auto ascii = open("[T]\nx=1\n");
    ascii->writeString("T", "y", "Ã¤ und Ã¶");
    ASSERT_TRUE(ascii->save());
    ASSERT_TRUE(back.load());
    EXPECT_EQ(back.readString("T", "y", ""), "Ã¤ und Ã¶");
    EXPECT_EQ(back.readString("T", "x", ""), "1");
    ascii->writeString("T", "z", "\xE4"); // plain Windows-1252 again
    ASSERT_TRUE(ascii->save());
    ASSERT_TRUE(back.load());
    EXPECT_EQ(back.readString("T", "y", ""), "Ã¤ und Ã¶");
}

// A bare CR ends a line for every reader, and a byte order mark where two files were put
// together belongs to no name.
TEST_F(IniFileTest, BareCarriageReturnsAndByteOrderMarksInside)
{
    auto ini = open("[A]\rjunk\rk=v\n\xEF\xBB\xBF[B]\n\xEF\xBB\xBFx=2\n");
    EXPECT_EQ(ini->readString("A", "k", ""), "v");
    EXPECT_EQ(ini->sections(), QStringList({"A", "B"}));
    EXPECT_EQ(ini->readString("B", "x", ""), "2");
    ini->writeString("A", "n", "1");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(onDisk(), "[A]\n\n;junk\nk=v\nn=1\n\n[B]\nx=2\n");
}

TEST_F(IniFileTest, MalformedLinesAreReadAroundAndKeptAsComments)
{
    auto ini = open("[A]\nnoequals\n[broken\n=novalue\nk=v\n[B]\nx=1\n");
    EXPECT_EQ(ini->readString("A", "k", ""), "v");
    EXPECT_EQ(ini->sections(), QStringList({"A", "B"}));
    EXPECT_EQ(ini->readString("B", "x", ""), "1");
    ini->writeString("B", "y", "2");
    ASSERT_TRUE(ini->save());
    EXPECT_EQ(onDisk(), "[A]\n\n;noequals\n;[broken\n;=novalue\nk=v\n\n[B]\nx=1\ny=2\n");
}

TEST_F(IniFileTest, AFolderIsNoIniFile)
{
    IniFile ini(dir.path());
    EXPECT_FALSE(ini.load());
    EXPECT_FALSE(ini.errorString().isEmpty());
    EXPECT_EQ(ini.readString("S", "k", "default"), "default");
    ini.writeString("S", "k", "v");
    EXPECT_FALSE(ini.save());
    EXPECT_FALSE(ini.isReadOnly());
}

TEST_F(IniFileTest, AWriteProtectedFileIsReadButNeverWritten)
{
    auto ini = open("[S]\nk=1\n");
    EXPECT_FALSE(ini->isReadOnly());
    // No write permission at all is the read-only attribute, even for root.
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::ReadOwner | QFile::ReadGroup));
    EXPECT_TRUE(ini->isReadOnly());
    ASSERT_TRUE(ini->load());
    EXPECT_EQ(ini->readString("S", "k", ""), "1");
    ini->writeString("S", "k", "2");
    EXPECT_FALSE(ini->save());
    EXPECT_TRUE(ini->isModified());
    EXPECT_EQ(onDisk(), "[S]\nk=1\n");
    EXPECT_FALSE(IniFile(path(QStringLiteral("missing.cfg"))).isReadOnly());
}

TEST_F(IniFileTest, AnUnreadableFileFailsToLoad)
{
    open("[S]\nk=1\n");
    ASSERT_TRUE(QFile::setPermissions(path(), QFileDevice::Permissions()));
    QFile probe(path());
    if (probe.open(QIODevice::ReadOnly)) GTEST_SKIP() << "root reads every file";
    IniFile ini(path());
    EXPECT_FALSE(ini.load());
    EXPECT_FALSE(ini.errorString().isEmpty());
}

TEST_F(IniFileTest, SaveWaitsForTheLockAndKeepsTheChangesOnTimeout)
{
    auto ini = open("[S]\nk=1\n");
    ini->writeString("S", "k", "2");
    QLockFile other(path() + QStringLiteral(".lock"));
    ASSERT_TRUE(other.tryLock(0));
    ini->setLockTimeout(100);
    EXPECT_FALSE(ini->save());
    EXPECT_TRUE(ini->errorString().contains(QStringLiteral("locked")));
    EXPECT_EQ(onDisk(), "[S]\nk=1\n");
    other.unlock();
    EXPECT_TRUE(ini->save());
    EXPECT_FALSE(ini->isModified());
    EXPECT_EQ(onDisk(), "[S]\nk=2\n");
}

TEST_F(IniFileTest, TwoWritersKeepEachOthersChanges)
{
    open("; shared\n[Common]\nv=0\n");
    constexpr int rounds = 20;
    auto writer = [this](const QString &section, bool *ok) {
        IniFile ini(path());
        *ok = ini.load();
        for (int i = 0; i < rounds && *ok; ++i) {
            ini.writeInteger(section, QStringLiteral("k%1").arg(i), i);
            ini.writeInteger("Common", "v", i);
            *ok = ini.save();
        }
    };
    bool okA = false, okB = false;
    std::thread a(writer, QStringLiteral("WizardA"), &okA);
    std::thread b(writer, QStringLiteral("WizardB"), &okB);
    a.join();
    b.join();
    EXPECT_TRUE(okA);
    EXPECT_TRUE(okB);
    IniFile result(path());
    ASSERT_TRUE(result.load());
    EXPECT_EQ(result.keys("WizardA").size(), rounds);
    EXPECT_EQ(result.keys("WizardB").size(), rounds);
    EXPECT_EQ(result.readInteger("Common", "v", -1), rounds - 1);
    EXPECT_TRUE(test::readFile(path()).startsWith("; shared\n[Common]\n"));
    EXPECT_FALSE(QFile::exists(path() + QStringLiteral(".lock")));
}

// Two wizards in two programs save wiz.cfg at the same time: nothing is lost.
TEST_F(IniFileTest, TwoProgramsSavingAtOnceKeepEachOthersChanges)
{
    open("; shared\n[Common]\nv=0\n");
    constexpr int rounds = 30;
    QProcess a, b;
    for (QProcess *p : {&a, &b})
        p->setProcessChannelMode(QProcess::ForwardedChannels);
    a.start(QStringLiteral(INIFILE_WRITER),
            {path(), QStringLiteral("WizardA"), QString::number(rounds)});
    b.start(QStringLiteral(INIFILE_WRITER),
            {path(), QStringLiteral("WizardB"), QString::number(rounds)});
    for (QProcess *p : {&a, &b}) {
        ASSERT_TRUE(p->waitForFinished(60000));
        EXPECT_EQ(p->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(p->exitCode(), 0);
    }
    IniFile result(path());
    ASSERT_TRUE(result.load());
    EXPECT_EQ(result.keys("WizardA").size(), rounds);
    EXPECT_EQ(result.keys("WizardB").size(), rounds);
    EXPECT_EQ(result.readInteger("Common", "v", -1), rounds - 1);
    EXPECT_TRUE(onDisk().startsWith("; shared\n[Common]\n"));
    EXPECT_FALSE(QFile::exists(path() + QStringLiteral(".lock")));
}

TEST_F(IniFileTest, SavingAlsoBringsInWhatOthersSaved)
{
    auto mine = open("[S]\nk=1\n");
    IniFile theirs(path());
    ASSERT_TRUE(theirs.load());
    theirs.writeString("T", "x", "theirs");
    ASSERT_TRUE(theirs.save());
    EXPECT_TRUE(mine->save()); // nothing to do: no write, no reload
    EXPECT_FALSE(mine->sectionExists("T"));
    mine->deleteKey("S", "k");
    ASSERT_TRUE(mine->save());
    EXPECT_EQ(mine->readString("T", "x", ""), "theirs");
    EXPECT_EQ(onDisk(), "[S]\n\n[T]\nx=theirs\n");
}
