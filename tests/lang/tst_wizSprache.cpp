#include "lang/wizSprache.h"
#include "platform/component.h"
#include "platform/dialogs.h"
#include "platform/inifile.h"
#include "support/testing.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace drivewiz;

// A temporary tree "<tmp>/work" (the working folder during the test) and, when a test
// creates it, "<tmp>/WizLingua" beside it.
class LanguageTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir(tmp.path()).mkpath(QStringLiteral("work")));
        ASSERT_TRUE(QDir::setCurrent(tmp.filePath(QStringLiteral("work"))));
    }
    void TearDown() override
    {
        QDir::setCurrent(previousFolder);
        ResetCommonStrings();
        SetConfigFolder(QString());
        WriteWizLang = false;
    }
    QString central(const QString &name) const
    {
        // The working folder is reported with symbolic links resolved.
        const QString root = QFileInfo(tmp.path()).canonicalFilePath();
        return root + QStringLiteral("/WizLingua/") + name;
    }
    std::unique_ptr<IniFile> open(const QString &path, const QByteArray &bytes = {})
    {
        if (!bytes.isNull()) {
            EXPECT_TRUE(test::writeFile(path, bytes));
        }
        auto ini = std::make_unique<IniFile>(path);
        EXPECT_TRUE(ini->load());
        return ini;
    }

    QString previousFolder = QDir::currentPath();
    QTemporaryDir tmp;
};

TEST_F(LanguageTest, WithoutCentralFolderTheProgramFolderIsUsed)
{
    bool isCentral = true;
    EXPECT_EQ(GetIniFileName(3, isCentral), QApplication::applicationDirPath() + "/wizling.3");
    EXPECT_FALSE(isCentral);
    EXPECT_EQ(GetCFGFileName(), QApplication::applicationDirPath() + "/wiz.cfg");
}

TEST_F(LanguageTest, CentralFolderIsFoundByWizling1OrWizling0)
{
    for (const char *marker : {"wizling.1", "wizling.0"}) {
        const QString markerPath = central(QLatin1String(marker));
        ASSERT_TRUE(test::writeFile(markerPath, "[ComStr]\n"));
        bool isCentral = false;
        EXPECT_EQ(GetIniFileName(3, isCentral), central("wizling.3")) << marker;
        EXPECT_TRUE(isCentral);
        EXPECT_EQ(GetCFGFileName(), central("wiz.cfg"));
        QFile::remove(markerPath);
    }
}

TEST_F(LanguageTest, AFolderTheHostNamesWinsUntilItIsCleared)
{
    ASSERT_TRUE(test::writeFile(central("wizling.1"), "[ComStr]\n"));
    QDir(tmp.path()).mkpath(QStringLiteral("host/lang"));
    QDir::setCurrent(tmp.filePath(QStringLiteral("host")));
    SetConfigFolder(QStringLiteral("lang")); // relative: from the working folder now
    QDir::setCurrent(tmp.filePath(QStringLiteral("work")));
    bool isCentral = true;
    const QString folder = QDir(tmp.path()).canonicalPath() + QStringLiteral("/host/lang");
    EXPECT_EQ(ConfigFolder(), folder);
    EXPECT_EQ(GetIniFileName(2, isCentral), folder + QStringLiteral("/wizling.2"));
    EXPECT_FALSE(isCentral);
    EXPECT_EQ(GetCFGFileName(), folder + QStringLiteral("/wiz.cfg"));
    SetConfigFolder(QStringLiteral("  "));
    EXPECT_TRUE(ConfigFolder().isEmpty());
    EXPECT_EQ(GetIniFileName(2, isCentral), central("wizling.2")); // the search again
    EXPECT_TRUE(isCentral);
}

TEST_F(LanguageTest, FolderNamedLikeTheMarkerIsNoCentralFolder)
{
    ASSERT_TRUE(QDir().mkpath(central("wizling.1")));
    bool isCentral = true;
    GetIniFileName(2, isCentral);
    EXPECT_FALSE(isCentral);
}

TEST_F(LanguageTest, SampleFilesSwitchTheCommonStrings)
{
    auto english = open(test::sourcePath("data/sample/wizling.2"));
    ReadCommonStrings(english.get());
    EXPECT_EQ(s_Next, "Next");
    EXPECT_EQ(s_Cancel, "Cancel");
    EXPECT_TRUE(s_ParamInvalid.contains("%s"));

    auto german = open(test::sourcePath("data/sample/wizling.1")); // Windows-1252
    ReadCommonStrings(german.get());
    int count = 0;
    const CommonString *all = commonStrings(&count);
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(*all[i].variable, QString::fromUtf8(all[i].defaultText)) << all[i].key;
}

// Dialogs speak one language: their titles come from the file and Qt's own buttons from
// Qt's translation for the file's language; every window hears of the change.
TEST_F(LanguageTest, DialogTitlesAndQtsOwnTextsFollowTheFile)
{
    struct Listener : QObject
    {
        int changes = 0;
        bool eventFilter(QObject *, QEvent *e) override
        {
            if (e->type() == QEvent::LanguageChange) ++changes;
            return false;
        }
    } listener;
    QLabel window(QStringLiteral("a window"));
    window.installEventFilter(&listener);
    window.show();
    const auto yes = [] { return QCoreApplication::translate("QPlatformTheme", "&Yes"); };

    auto english = open(test::sourcePath("data/sample/wizling.2"));
    ReadCommonStrings(english.get());
    EXPECT_EQ(DialogCaption(MsgDlgType::Confirmation), "Confirm");
    EXPECT_EQ(QtTranslationLocale(), "en");
    EXPECT_EQ(yes(), "&Yes");
    EXPECT_EVENTUALLY_EQ(listener.changes, 1);

    ResetCommonStrings(); // as a table does before it reads the next file
    auto german = open(test::sourcePath("data/sample/wizling.1"));
    ReadCommonStrings(german.get());
    EXPECT_EQ(DialogCaption(MsgDlgType::Warning), "Warnung");
    EXPECT_EQ(QtTranslationLocale(), "de");
    ASSERT_TRUE(QtTranslationLoaded()) << "Qt's translations missing (qt6-translations-l10n)";
    EXPECT_EQ(yes(), "&Ja");
    EXPECT_EVENTUALLY_EQ(listener.changes, 2); // one for the reset and the new file together
    QCoreApplication::processEvents();
    EXPECT_EQ(listener.changes, 2);

    // A language the library knows no locale for: titles German, Qt's texts English.
    auto other = open(tmp.filePath("wizling.7"), "[ComStr]\ns25=Avanti\n");
    ReadCommonStrings(other.get());
    EXPECT_EQ(DialogCaption(MsgDlgType::Error), "Fehler");
    EXPECT_EQ(yes(), "&Yes");
    auto named = open(tmp.filePath("wizling.8"), "[Dialog]\nLocale=de\nError=Fehlerchen\n");
    ReadCommonStrings(named.get());
    EXPECT_EQ(DialogCaption(MsgDlgType::Error), "Fehlerchen");
    EXPECT_EQ(yes(), "&Ja");
}

TEST_F(LanguageTest, FileWithoutComStrGivesTheGermanDefaults)
{
    s_Next = QStringLiteral("Next");
    ReadCommonStrings(nullptr);
    EXPECT_EQ(s_Next, "Next");

    auto ini = open(tmp.filePath("wizling.5"), "[Demo]\ns25=Suivant\n");
    ReadCommonStrings(ini.get());
    EXPECT_EQ(s_Next, "Weiter");
    EXPECT_EQ(s_Back, "Zurück");
}

TEST_F(LanguageTest, WizReadStringNeedsSectionAndIdent)
{
    // "x" before any section belongs to the nameless section: a blank section must not
    // reach it.
    auto ini = open(tmp.filePath("wizling.1"), "x=nameless\n[S]\nk=v\nempty=\n");
    EXPECT_EQ(wizReadString(ini.get(), "  ", "x", "def"), "def");
    EXPECT_EQ(wizReadString(ini.get(), "S", " ", "def"), "def");
    EXPECT_EQ(wizReadString(nullptr, "S", "k", "def"), "def");
    EXPECT_EQ(wizReadString(ini.get(), "s", "K", "def"), "v");
    EXPECT_EQ(wizReadString(ini.get(), "S", "missing", "def"), "def");
    EXPECT_EQ(wizReadString(ini.get(), "S", "empty", "def"), "");
}

// A widget of the library that can be in the designer.
class DesignedLabel : public QLabel, public Component
{
};

class ControlsTest : public LanguageTest
{
protected:
    void SetUp() override
    {
        LanguageTest::SetUp();
        named<QLabel>(&form, "Label1")->setText("Hallo");
        named<QPushButton>(&form, "BtnNext")->setToolTip("Weiter blättern");
        named<QLineEdit>(&form, "EdName");
        auto *combo = named<QComboBox>(&form, "CbMode");
        combo->addItems({"Eins", "Zwei", "Drei", "Vier"});
        combo->setCurrentIndex(1);
        auto *outer = named<QGroupBox>(&form, "GbOuter");
        auto *anonymous = new QWidget(outer);
        named<QLabel>(anonymous, "LblInner")->setText("Innen");
        named<QCheckBox>(outer, "ChkInner");
        auto *tabs = named<QTabWidget>(&form, "Tabs");
        tabs->addTab(named<QWidget>(nullptr, "TabSheet1"), "Seite");
        ini = open(tmp.filePath("wizling.2"), "[Seite1]\n"
                                              "hBtnNext=Next page\ncBtnNext=Next\n"
                                              "cLabel1=Hello\ncEdName=typed\n"
                                              "CbMode_0=One\nCbMode_1=\nCbMode_2=Three\n"
                                              "cGbOuter=Group\ncLblInner=Inner\n"
                                              "hLblInner=inner hint\ncChkInner=Check\n"
                                              "cTabSheet1=Page one\n");
    }
    template <typename W> W *named(QWidget *parent, const char *name)
    {
        auto *w = new W(parent);
        w->setObjectName(QLatin1String(name));
        return w;
    }
    template <typename W> W *find(const char *name) const
    {
        return form.findChild<W *>(QLatin1String(name));
    }

    QWidget form;
    std::unique_ptr<IniFile> ini;
};

TEST_F(ControlsTest, ReadControlsTranslatesTheWholeTree)
{
    ReadControls(ini.get(), 2, "Seite1", &form);
    EXPECT_EQ(find<QLabel>("Label1")->text(), "Hello");
    EXPECT_EQ(find<QPushButton>("BtnNext")->text(), "Next");
    EXPECT_EQ(find<QPushButton>("BtnNext")->toolTip(), "Next page");
    EXPECT_EQ(find<QLineEdit>("EdName")->text(), "typed");
    EXPECT_EQ(find<QGroupBox>("GbOuter")->title(), "Group");
    EXPECT_EQ(find<QLabel>("LblInner")->text(), "Inner");
    EXPECT_EQ(find<QLabel>("LblInner")->toolTip(), "inner hint");
    EXPECT_EQ(find<QCheckBox>("ChkInner")->text(), "Check");
    EXPECT_EQ(find<QTabWidget>("Tabs")->tabText(0), "Page one");
    auto *combo = find<QComboBox>("CbMode");
    EXPECT_EQ(combo->itemText(0), "One");
    EXPECT_EQ(combo->itemText(1), "Zwei"); // empty value: untranslated
    EXPECT_EQ(combo->itemText(2), "Three");
    EXPECT_EQ(combo->itemText(3), "Vier"); // no key
    EXPECT_EQ(combo->currentIndex(), 1);
}

TEST_F(ControlsTest, ReadControlsLeavesWidgetsWithoutKeysAlone)
{
    int changes = 0;
    auto *edit = find<QLineEdit>("EdName");
    edit->setText("value");
    QObject::connect(edit, &QLineEdit::textChanged, [&] { ++changes; });
    auto other = open(tmp.filePath("wizling.3"), "[Seite1]\nhLabel1=tip\n");
    ReadControls(other.get(), 3, "Seite1", &form);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(edit->text(), "value");
    EXPECT_EQ(find<QPushButton>("BtnNext")->toolTip(), "Weiter blättern");
    EXPECT_EQ(find<QLabel>("Label1")->toolTip(), "tip");
}

TEST_F(ControlsTest, NothingIsReadWithoutSectionFileOrWhileDesigning)
{
    ReadControls(ini.get(), 2, " ", &form);
    ReadControls(nullptr, 2, "Seite1", &form);
    ReadControls(ini.get(), 2, "Seite1", nullptr);
    DesignedLabel designed;
    designed.addComponentState(csDesigning);
    auto *child = named<QLabel>(&designed, "Label1");
    ReadControls(ini.get(), 2, "Seite1", &designed);
    EXPECT_EQ(child->text(), "");
    EXPECT_EQ(find<QLabel>("Label1")->text(), "Hallo");
}

TEST_F(ControlsTest, InitLabelReadsTheBareName)
{
    auto labels = open(tmp.filePath("wizling.4"), "[Frame]\nLblX4=Encoder X4\n");
    DesignedLabel label;
    label.setObjectName("LblX4");
    label.setText("Geber X4");
    label.addComponentState(csDesigning);
    InitLabel(labels.get(), "Frame", &label);
    EXPECT_EQ(label.text(), "Geber X4");
    label.removeComponentState(csDesigning);
    InitLabel(labels.get(), "Frame", &label);
    EXPECT_EQ(label.text(), "Encoder X4");
    InitLabel(labels.get(), "Frame", nullptr);
}

TEST_F(ControlsTest, WritesGoOnlyToTheCentralFileAndOnlyMissingKeys)
{
    auto local = open(tmp.filePath("wizling.1"), "[ComStr]\ns25=Vor\n");
    auto centralFile = open(central("wizling.1"), "[ComStr]\ns25=Vor\n");
    WriteCommonStrings(centralFile.get()); // WriteWizLang not set
    WriteWizLang = true;
    WriteCommonStrings(local.get()); // not in the central folder
    EXPECT_EQ(test::readFile(local->path()), "[ComStr]\ns25=Vor\n");
    EXPECT_EQ(test::readFile(centralFile->path()), "[ComStr]\ns25=Vor\n");

    WriteCommonStrings(centralFile.get());
    auto reread = open(central("wizling.1"));
    EXPECT_EQ(reread->readString("ComStr", "s25"), "Vor");
    EXPECT_EQ(reread->readString("ComStr", "s26"), "Zurück");
    EXPECT_EQ(reread->keys("ComStr").size(), 65);
}

TEST_F(ControlsTest, WriteControlsAddsCaptionsHintsAndItemsButNoValues)
{
    auto file = open(central("wizling.1"), "[Seite1]\ncLabel1=Hallo!\n");
    find<QLineEdit>("EdName")->setText("Wert");
    WriteWizLang = true;
    WriteControls(file.get(), 1, "Seite1", &form);
    auto reread = open(central("wizling.1"));
    EXPECT_EQ(reread->readString("Seite1", "cLabel1"), "Hallo!");
    EXPECT_EQ(reread->readString("Seite1", "hBtnNext"), "Weiter blättern");
    EXPECT_EQ(reread->readString("Seite1", "cLblInner"), "Innen");
    EXPECT_EQ(reread->readString("Seite1", "cTabSheet1"), "Seite");
    EXPECT_EQ(reread->readString("Seite1", "CbMode_3"), "Vier");
    EXPECT_FALSE(reread->valueExists("Seite1", "cEdName"));
    EXPECT_FALSE(reread->valueExists("Seite1", "hLabel1"));
}
