// The digital output frame: the outputs of every fitted board, the source lists and the
// check on leaving a source.

#include "outputs_fixture.h"

#include "ioframes/DigitalAusgang.h"
#include "lang/wizSprache.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>

using namespace drivewiz;

namespace {

class DigitalOut : public OutputsForm
{
protected:
    TDigitalAus *make(const QString &liste = QStringLiteral("E*"))
    {
        auto *f = new TDigitalAus(form.get());
        f->setGeometry(10, 40, 860, 620);
        f->SetParameterListe(liste);
        f->SetwizParaSource(table);
        load(f);
        f->show();
        QApplication::processEvents();
        return f;
    }
    QComboBox *combo(TParaClass *c) { return qobject_cast<QComboBox *>(c->GetEditControl()); }
    void typeInto(TParaClass *c, const QString &text)
    {
        QComboBox *box = combo(c);
        ASSERT_TRUE(box && box->isEditable());
        enter(box);
        box->lineEdit()->selectAll();
        QTest::keyClicks(box, text);
        leave();
    }
};

// One row of the hardware table: the hardware parameters (null: not in the table) and
// what the frame shows.
struct Hardware
{
    const char *e50;
    const char *e54;
    const char *e58;
    const char *picture; // null: the option board's outputs are hidden
    const char *second;
    const char *x103_1;
    const char *x103_2;
    const char *option;
};

void PrintTo(const Hardware &h, std::ostream *os)
{
    const auto show = [os](const char *key, const char *value) {
        *os << key << "=" << (value ? value : "(missing)") << " ";
    };
    show("E50", h.e50);
    show("E54", h.e54);
    show("E58", h.e58);
}

class DigitalOutHardware : public DigitalOut, public testing::WithParamInterface<Hardware>
{
};

} // namespace

TEST_P(DigitalOutHardware, ShowsTheOutputsOfTheFittedBoard)
{
    const Hardware &h = GetParam();
    QStringList missing;
    for (const auto &[koord, value] :
         {std::pair{"E50", h.e50}, std::pair{"E54", h.e54}, std::pair{"E58", h.e58}}) {
        if (!value) missing << koord;
    }
    reload({}, missing);
    if (h.e50) setValue("E50", h.e50);
    if (h.e54) setValue("E54", h.e54);
    if (h.e58) setValue("E58", h.e58);
    TDigitalAus *f = make();

    // The drive's own outputs are always there.
    for (QWidget *w : {static_cast<QWidget *>(f->P_F61), static_cast<QWidget *>(f->P_F62),
                       static_cast<QWidget *>(f->LblBA1), static_cast<QWidget *>(f->LblBA2),
                       static_cast<QWidget *>(f->LblX100), static_cast<QWidget *>(f->Image1)})
        EXPECT_TRUE(w->isVisible()) << w->objectName().toStdString();
    const bool board = h.picture != nullptr;
    const QList<TParaClass *> sources = f->SourceControls();
    for (TParaClass *c : sources.mid(2))
        EXPECT_EQ(c->wizVisible(), board) << c->objectName().toStdString();
    for (QWidget *w : {static_cast<QWidget *>(f->LblBA3), static_cast<QWidget *>(f->LblBA10),
                       static_cast<QWidget *>(f->Bevel_ExtBAs),
                       static_cast<QWidget *>(f->LblX103_1), static_cast<QWidget *>(f->LblOption)})
        EXPECT_EQ(!w->isHidden(), board) << w->objectName().toStdString();
    for (QLabel *picture :
         {f->Img_BA_KBQ7700, f->Img_BA_KBQ7701_1, f->Img_BA_KBW7700, f->Img_BA_KBQ7701_2}) {
        const bool shown = (h.picture && picture->objectName() == h.picture) ||
                           (h.second && picture->objectName() == h.second);
        EXPECT_EQ(!picture->isHidden(), shown) << picture->objectName().toStdString();
    }
    EXPECT_EQ(!f->LblX103_2->isHidden(), h.x103_2 != nullptr);
    if (board) {
        EXPECT_TRUE(f->P_F70->isVisible());
        EXPECT_EQ(f->LblX103_1->text(), h.x103_1);
        EXPECT_EQ(f->LblOption->text(), h.option);
    }
    if (h.x103_2) {
        EXPECT_EQ(f->LblX103_2->text(), h.x103_2);
    }
    EXPECT_TRUE(messages().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    EveryRow, DigitalOutHardware,
    testing::Values(
        Hardware{nullptr, "", "KBQ 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"", "", "KBQ 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"ZRD 2202", nullptr, "KBQ 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"ZRD 2202", "KBW 7700", "", "Img_BA_KBW7700", nullptr, "X103D", nullptr,
                 "Option KBW 7700"},
        Hardware{"zrd 2202", " kbw 7700 ", "", "Img_BA_KBW7700", nullptr, "X103D", nullptr,
                 "Option KBW 7700"},
        Hardware{"ZRD 2202", "KBQ 7700", "KBQ 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"ZRD 2202", "", "KBQ 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"VKP 4102", "KBW 7700", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"VKP 4102", "", "", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"VKP 4102", "", "KBM 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"VKP 4102", "", "KBT 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"VKP 4102", "", "KBQ 7700", "Img_BA_KBQ7700", nullptr, "X103", nullptr,
                 "Option KBQ 7700"},
        Hardware{"VKP 4102", "", "KBQ 7701", "Img_BA_KBQ7701_1", "Img_BA_KBQ7701_2", "X103A",
                 "X103B", "Option KBQ 7701"},
        Hardware{"VKP 4102", "", "KBW 7700", nullptr, nullptr, nullptr, nullptr, nullptr},
        Hardware{"ABC 100", "KBW 7700", "KBQ 7700", nullptr, nullptr, nullptr, nullptr, nullptr}),
    [](const testing::TestParamInfo<Hardware> &info) {
        const auto part = [](const char *key, const char *value) {
            return QString::fromLatin1(key) + (value ? (*value ? value : "empty") : "missing");
        };
        QString name = QString::number(info.index) + QLatin1Char('_') +
                       part("E50", info.param.e50) + QLatin1Char('_') +
                       part("E54", info.param.e54) + QLatin1Char('_') + part("E58", info.param.e58);
        for (QChar &c : name) {
            if (!c.isLetterOrNumber() && c != QLatin1Char('_')) c = QLatin1Char('_');
        }
        return name.toStdString();
    });

TEST_F(DigitalOut, TheHardwareIsReadFromTheDriveOnceWhenTheFrameStarts)
{
    // The table's file says KBQ 7700; the drive reports KBQ 7701.
    drive.setValue(drive.addressOf("E58"), "KBQ 7701");
    connectDrive();
    TDigitalAus *f = make();
    EXPECT_FALSE(f->Img_BA_KBQ7701_2->isHidden());
    EXPECT_EQ(f->LblX103_2->text(), "X103B");

    drive.setValue(drive.addressOf("E58"), "");
    f->HideMissingOutputs();
    EXPECT_TRUE(f->P_F63->wizVisible());
}

TEST_F(DigitalOut, TerminalPicturesAreDrawn)
{
    TDigitalAus *f = make();
    for (QLabel *picture : {f->Image1, f->Img_BA_KBQ7700, f->Img_BA_KBQ7701_1, f->Img_BA_KBW7700,
                            f->Img_BA_KBQ7701_2}) {
        EXPECT_FALSE(picture->pixmap().isNull()) << picture->objectName().toStdString();
        EXPECT_GE(picture->minimumWidth(), 100) << picture->objectName().toStdString();
    }
}

// --- source lists ---------------------------------------------------------------------------

TEST_F(DigitalOut, SourcesAreTheZeroOneParametersOfTheListAndAlwaysE17AndE18)
{
    TDigitalAus *f = make();
    // E18 needs level 3, E23 level 4: E18 is offered all the same. E22 counts to 28.
    const QStringList expected = {
        "E17: Betriebsbereit", "2.E17: Betriebsbereit", "E20: Drehzahl erreicht", "E21: Bremse",
        "E24: Zustand",        "E18: Störung aktiv",    "2.E18: Störung aktiv"};
    for (TParaClass *c : f->SourceControls())
        EXPECT_EQ(items(c), expected) << c->objectName().toStdString();
    EXPECT_EQ(f->P_F61->GetText(), "E17: Betriebsbereit");
    EXPECT_EQ(f->P_F63->GetText(), "2.E17: Betriebsbereit");

    f->SetParameterListe("E20");
    EXPECT_EQ(items(f->P_F61),
              QStringList({"E20: Drehzahl erreicht", "E17: Betriebsbereit", "2.E17: Betriebsbereit",
                           "E18: Störung aktiv", "2.E18: Störung aktiv"}));
}

TEST_F(DigitalOut, EntriesOfTheCurrentAxisNeedNoAxis)
{
    table->SetCurrentAx(2);
    TDigitalAus *f = make(QStringLiteral("E17"));
    EXPECT_EQ(items(f->P_F61).mid(0, 2),
              QStringList({"1.E17: Betriebsbereit", "E17: Betriebsbereit"}));
}

TEST_F(DigitalOut, LeavingASourceWritesItsEntry)
{
    TDigitalAus *f = make();
    typeInto(f->P_F64, "e21");
    EXPECT_EQ(f->P_F64->GetText(), "E21: Bremse");
    typeInto(f->P_F64, "2.e17");
    EXPECT_EQ(f->P_F64->GetText(), "2.E17: Betriebsbereit");
    EXPECT_EQ(combo(f->P_F64)->currentIndex(), 1);
    // A parameter outside the list is taken as the user wants it.
    typeInto(f->P_F64, "H02");
    EXPECT_EQ(f->P_F64->GetText(), "H02: X4 Drehrichtung");
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(DigitalOut, AnUnknownOrEmptySourceBringsBackTheLastValue)
{
    TDigitalAus *f = make();
    typeInto(f->P_F62, "X99");
    EXPECT_EQ(messages(), QStringList({"Der Parameter X99 ist nicht vorhanden!"}));
    EXPECT_EQ(f->P_F62->GetText(), "E18: Störung aktiv");
    typeInto(f->P_F62, "");
    EXPECT_TRUE(messages().isEmpty());
    EXPECT_EQ(f->P_F62->GetText(), "E18: Störung aktiv");
    // The exit check called by a form's own code: the text of its sender becomes the entry.
    f->P_F65->SetText("e20");
    CheckAchse(f->P_F65);
    EXPECT_EQ(f->P_F65->GetText(), "E20: Drehzahl erreicht");
    CheckAchse(nullptr);
    CheckAchse(f); // no parameter control: nothing to check
}

TEST_F(DigitalOut, OnlineAChoiceMadeWithTheKeyboardReachesTheDrive)
{
    TDigitalAus *f = make();
    goOnline();
    ASSERT_GE(items(f->P_F64).size(), 3); // the rebuilt field has its list again
    QComboBox *box = combo(f->P_F64);
    enter(box);
    ASSERT_EQ(box->currentText(), "E20: Drehzahl erreicht");
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->currentText(), "E21: Bremse");
    leave();
    QApplication::processEvents();
    EXPECT_TRUE(drive.log().contains("F64 (0) = E21: Bremse"))
        << drive.log().join('\n').toStdString();
    EXPECT_EQ(drive.log().size(), 1);
    // A typed parameter is written once as its entry; an unknown one not at all.
    typeInto(f->P_F64, "e17");
    typeInto(f->P_F64, "X99");
    EXPECT_EQ(drive.log(), QStringList({"F64 (0) = E21: Bremse", "F64 (0) = E17: Betriebsbereit"}));
    EXPECT_EQ(messages(), QStringList({"Der Parameter X99 ist nicht vorhanden!"}));
}

// --- language -------------------------------------------------------------------------------

TEST_F(DigitalOut, TheTopSentenceIsTranslatedButTerminalNamesStay)
{
    languageFile(2, "[TDigitalAus]\r\ncLblInfoOben=Any 0/1 parameter.\r\ncLblX103_1=X999\r\n");
    TDigitalAus *f = make();
    EXPECT_EQ(f->LblInfoOben->text(),
              "Als Signalquelle für einen Binärausgang kann jeder Parameter mit einem "
              "0/1-Wertebereich dienen.");
    table->SetLanguage(2);
    languageChanged();
    EXPECT_EQ(f->LblInfoOben->text(), "Any 0/1 parameter.");
    EXPECT_EQ(f->LblX103_1->text(), "X103");
}
