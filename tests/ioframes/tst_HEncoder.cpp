// The encoder frame: type, line count and resolution for every page and function, the
// visibility rules, the connection selector, the motor encoder and the option-board label.

#include "outputs_fixture.h"

#include "ioframes/HEncoder.h"
#include "lang/wizSprache.h"

#include <QDir>
#include <QLabel>
#include <QSignalSpy>
#include <QTabWidget>

using namespace drivewiz;

namespace {

class Encoder : public OutputsForm
{
protected:
    TEncoderFrame *make(bool withSelector = true)
    {
        if (withSelector) {
            selector = new TParaClass(form.get());
            selector->setObjectName("P_I02");
            selector->setGeometry(10, 600, 300, 45);
            selector->SetwizParaSource(table);
            selector->SetKoordinate("I02");
            selector->OnChange = [this](QObject *) { ++previousCalls; };
        }
        auto *f = new TEncoderFrame(form.get());
        f->setGeometry(10, 40, 700, 400);
        f->SetwizParaSource(table);
        if (withSelector) f->SetwizControlParam(selector);
        load(f);
        f->show();
        QApplication::processEvents();
        previousCalls = 0;
        return f;
    }
    QWidget *page(TEncoderFrame *f, const QString &name) { return f->findChild<QWidget *>(name); }
    static void choose(TParaClass *c, int key) { c->SetText(QString::number(key)); }

    TParaClass *selector = nullptr;
    int previousCalls = 0;
};

struct TypeRow
{
    const char *page;
    const char *first;
    int key;
    TEncoderType type;
};

void PrintTo(const TypeRow &r, std::ostream *os)
{
    *os << r.page << " " << r.first << "=" << r.key;
}

class EncoderType : public Encoder, public testing::WithParamInterface<TypeRow>
{
};

} // namespace

TEST_P(EncoderType, FollowsPageAndFunction)
{
    const TypeRow &r = GetParam();
    TEncoderFrame *f = make(false);
    f->SetwizEncoder(page(f, r.page));
    auto *first = f->findChild<TParaClass *>(QStringLiteral("P_") + r.first);
    ASSERT_TRUE(first);
    choose(first, r.key);
    ASSERT_EQ(first->GetAuswahl(), r.key);
    EXPECT_EQ(f->GetEncoderType(), r.type);
}

INSTANTIATE_TEST_SUITE_P(
    EveryRow, EncoderType,
    testing::Values(
        TypeRow{"tsBE", "H40", 1, ttIncIn}, TypeRow{"tsBE", "H40", 2, ttStepIn},
        TypeRow{"tsX4", "H00", 3, ttIncIn}, TypeRow{"tsX4", "H00", 64, ttEndatIn},
        TypeRow{"tsX4", "H00", 65, ttSSIin}, TypeRow{"tsX120", "H120", 4, ttIncIn},
        TypeRow{"tsX120", "H120", 5, ttStepIn}, TypeRow{"tsX120", "H120", 67, ttSSIin},
        TypeRow{"tsX120", "H120", 68, ttSSIslave}, TypeRow{"tsX120", "H120", 80, ttIncOut},
        TypeRow{"tsX120", "H120", 81, ttStepOut}, TypeRow{"tsX120", "H120", 82, ttSSIout},
        TypeRow{"tsX140", "H140", 66, ttResolverIn}, TypeRow{"tsX140", "H140", 71, ttSinCosIn},
        // every other combination
        TypeRow{"tsBE", "H40", 0, ttnone}, TypeRow{"tsX4", "H00", 0, ttnone},
        TypeRow{"tsX4", "H00", 66, ttnone}, TypeRow{"tsX120", "H120", 3, ttnone},
        TypeRow{"tsX140", "H140", 0, ttnone}, TypeRow{"tsNone", "H00", 65, ttnone},
        TypeRow{"tsX4", "H40", 1, ttnone}),
    [](const testing::TestParamInfo<TypeRow> &info) {
        return std::to_string(info.index) + "_" + info.param.page + "_" + info.param.first + "_" +
               std::to_string(info.param.key);
    });

TEST_F(Encoder, LineCountComesFromThePagesControl)
{
    TEncoderFrame *f = make(false);
    struct Case
    {
        const char *page;
        TParaClass *control;
        int lines;
    };
    for (const Case &c : {Case{"tsBE", f->P_H41, 1024}, Case{"tsX4", f->P_H01, 2048},
                          Case{"tsX120", f->P_H121, 4096}, Case{"tsX140", nullptr, 16384},
                          Case{"tsNone", nullptr, 0}}) {
        f->SetwizEncoder(page(f, c.page));
        EXPECT_EQ(f->GetEncIncCtrl(), c.control) << c.page;
        EXPECT_EQ(f->GetEncStrichzahl(), c.lines) << c.page;
    }
    // On X140 the line count is fixed whatever the parameters say.
    f->P_H149->SetText("999");
    f->SetwizEncoder(f->tsX140);
    f->SetEncResolution(500);
    EXPECT_EQ(f->GetEncStrichzahl(), 16384);
    f->SetwizEncoder(f->tsX4);
    f->SetEncResolution(500);
    EXPECT_EQ(f->P_H01->GetText(), "500");
    EXPECT_EQ(f->GetEncStrichzahl(), 500);
}

TEST_F(Encoder, OnlyTheSsiInputMultipliesTheLineCount)
{
    TEncoderFrame *f = make(false);
    f->SetwizEncoder(f->tsX4);
    choose(f->P_H00, 65);
    f->P_H01->SetText("2048");
    choose(f->P_H06, 25);
    EXPECT_EQ(f->GetEncoderType(), ttSSIin);
    EXPECT_EQ(f->GetEncResolution(), 16384);
    choose(f->P_H06, 13);
    EXPECT_EQ(f->GetEncResolution(), 8192);
    choose(f->P_H00, 3);
    f->P_H01->SetText("1024");
    EXPECT_EQ(f->GetEncoderType(), ttIncIn);
    EXPECT_EQ(f->GetEncResolution(), 1024);

    f->SetwizEncoder(f->tsX120);
    f->P_H121->SetText("4096");
    EXPECT_EQ(f->P_H126->GetKoordinate(), "H130"); // the SSI data bits
    choose(f->P_H126, 25);
    for (const auto &[key, resolution] :
         {std::pair{67, 32768}, std::pair{68, 4096}, std::pair{82, 4096}, std::pair{4, 4096}}) {
        choose(f->P_H120, key);
        EXPECT_EQ(f->GetEncResolution(), resolution) << key;
    }
    choose(f->P_H120, 67);
    choose(f->P_H126, 13);
    EXPECT_EQ(f->GetEncResolution(), 16384);
    EXPECT_EQ(f->LblResolution->text(), "16384 " + s_Ink + " / " + s_EncRev);
    f->SetwizEncoder(f->tsNone);
    EXPECT_TRUE(f->LblResolution->isHidden());
}

// --- visibility -----------------------------------------------------------------------------

TEST_F(Encoder, ControlsShowForTheFunctionOfTheirConnection)
{
    TEncoderFrame *f = make(false);
    struct Rule
    {
        TParaClass *first;
        int key;
        QList<TParaClass *> shown;
        QList<TParaClass *> hidden;
    };
    const QList<Rule> rules = {
        {f->P_H00, 0, {}, {f->P_H01, f->P_H02, f->P_H05, f->P_H06}},
        {f->P_H00, 3, {f->P_H01, f->P_H02}, {f->P_H05, f->P_H06}},
        {f->P_H00, 64, {f->P_H02}, {f->P_H01, f->P_H05, f->P_H06}},
        {f->P_H00, 65, {f->P_H02, f->P_H05, f->P_H06}, {f->P_H01}},
        {f->P_H40, 0, {}, {f->P_H41, f->P_H42}},
        {f->P_H40, 1, {f->P_H41, f->P_H42}, {}},
        {f->P_H40, 2, {f->P_H41, f->P_H42}, {}},
        {f->P_H120, 0, {}, {f->P_H121, f->P_H122, f->P_H125, f->P_H126}},
        {f->P_H120, 4, {f->P_H121, f->P_H122}, {f->P_H125, f->P_H126}},
        {f->P_H120, 5, {f->P_H121, f->P_H122}, {f->P_H125, f->P_H126}},
        {f->P_H120, 67, {f->P_H121, f->P_H122, f->P_H125, f->P_H126}, {}},
        {f->P_H120, 68, {f->P_H121, f->P_H122, f->P_H125, f->P_H126}, {}},
        {f->P_H120, 80, {f->P_H122}, {f->P_H121, f->P_H125, f->P_H126}},
        {f->P_H120, 81, {f->P_H122}, {f->P_H121, f->P_H125, f->P_H126}},
        {f->P_H120, 82, {f->P_H122, f->P_H125, f->P_H126}, {f->P_H121}},
        {f->P_H140, 0, {}, {f->P_H142, f->P_H148, f->P_H149}},
        {f->P_H140, 66, {f->P_H142, f->P_H148}, {f->P_H149}},
        {f->P_H140, 71, {f->P_H142, f->P_H149}, {f->P_H148}},
    };
    for (const Rule &r : rules) {
        choose(r.first, r.key);
        for (TParaClass *c : r.shown)
            EXPECT_TRUE(c->wizVisible()) << r.first->GetKoordinate().toStdString() << "=" << r.key
                                         << ": " << c->objectName().toStdString();
        for (TParaClass *c : r.hidden)
            EXPECT_FALSE(c->wizVisible()) << r.first->GetKoordinate().toStdString() << "=" << r.key
                                          << ": " << c->objectName().toStdString();
    }
}

// --- the connection selector ---------------------------------------------------------------

TEST_F(Encoder, TheSelectorChoosesThePageAndRunsItsOwnHandler)
{
    TEncoderFrame *f = make();
    EXPECT_EQ(f->GetwizEncoder(), f->tsX4); // 0: the motor encoder, B26 = X4
    struct Case
    {
        int key;
        QWidget *page;
    };
    for (const Case &c :
         {Case{1, f->tsBE}, Case{2, f->tsX4}, Case{3, f->tsX140}, Case{4, f->tsX120},
          Case{1, f->tsBE}, Case{5, f->tsX120}, Case{0, f->tsX4}}) {
        choose(selector, c.key);
        EXPECT_EQ(f->GetwizEncoder(), c.page) << c.key;
    }
    EXPECT_EQ(previousCalls, 7);
    EXPECT_EQ(beeps(), 0);

    QSignalSpy changed(f, &TEncoderFrame::encoderChanged);
    choose(selector, 4); // X120, H120 0: inactive
    choose(f->P_H120, 67);
    f->P_H121->SetText("1000");
    f->P_H121->SetText("1000"); // the same again: nothing new to tell
    ASSERT_EQ(changed.size(), 3);
    EXPECT_EQ(changed.at(2).at(0).value<TEncoderType>(), ttSSIin);
    EXPECT_EQ(changed.at(2).at(1).toInt(), 4000); // 13 data bits (H130): times 4

    choose(selector, 4);
    choose(selector, 6); // no connection of this drive: beep, the page stays
    EXPECT_EQ(beeps(), 1);
    EXPECT_EQ(f->GetwizEncoder(), f->tsX120);
    EXPECT_EQ(previousCalls, 9);
}

TEST_F(Encoder, AlternativeParametersAreBoundWhereTheDriveHasThem)
{
    TEncoderFrame *f = make();
    EXPECT_EQ(f->P_H126->GetKoordinate(), "H130");
    EXPECT_EQ(f->P_H06->GetKoordinate(), "H06");

    delete f;
    reload({}, {"H130", "H06"});
    f = make();
    choose(selector, 2);
    EXPECT_EQ(f->P_H126->GetKoordinate(), "H126");
    EXPECT_EQ(f->P_H06->GetKoordinate(), "H10");
    EXPECT_EQ(f->P_H06->GetText(), "0: 5 V");
}

TEST_F(Encoder, TheMotorEncoderPageFollowsB26)
{
    TEncoderFrame *f = make(false);
    connectDrive(); // B26 is read from the drive
    struct Case
    {
        const char *b26;
        QWidget *page;
    };
    for (const Case &c :
         {Case{"1: BE", f->tsBE}, Case{"2: X4", f->tsX4}, Case{"3: X140", f->tsX140},
          Case{"4: X120", f->tsX120}, Case{"0: keiner", f->tsNone}, Case{"7", f->tsNone},
          Case{"", f->tsNone}, Case{"X4", f->tsNone}}) {
        drive.setValue(drive.addressOf("B26", 1), c.b26);
        f->GotoMotorEncoder();
        EXPECT_EQ(f->GetwizEncoder(), c.page) << c.b26;
    }
}

TEST_F(Encoder, WithoutASelectorTheFrameStartsOnTheMotorEncoder)
{
    setValue("B26", "4: X120", 1);
    TEncoderFrame *f = make(false);
    EXPECT_EQ(f->GetwizEncoder(), f->tsX120);
}

// --- the option board and language ------------------------------------------------------------

TEST_F(Encoder, TheX120LabelNamesTheFittedOptionBoard)
{
    TEncoderFrame *f = make(false);
    struct Case
    {
        const char *e58;
        const char *shown;
    };
    for (const Case &c :
         {Case{"KBM 7700", ""}, Case{"KBM 7701", ""}, Case{"KBQ 7700", "Option KBQ7700"},
          Case{"kbq 7701 ", "Option KBQ7701"}, Case{"KBT 7700", ""},
          Case{"KBT 7701", "Option KBT7701"}, Case{"XYZ 1", ""}, Case{"", ""}}) {
        setValue("E58", c.e58);
        f->UpdateLanguage();
        EXPECT_EQ(f->LblX120Encoder->text(), c.shown) << c.e58;
    }
    delete f;
    reload({}, {"E58"});
    f = make(false);
    EXPECT_EQ(f->LblX120Encoder->text(), "");
}

TEST_F(Encoder, SevenPageLabelsComeFromTheLanguageFile)
{
    languageFile(2, "[ComStr]\r\ns49=incr\r\ns53=encoder revolution\r\n"
                    "[TEncoderFrame]\r\nLblBE=Encoder on binary inputs\r\nLblBEencoder=BE3 A\r\n"
                    "LblX4=Terminal X4\r\nLblX4encoder=Encoder input\r\nLblX120=Terminal X120\r\n"
                    "LblX120Encoder=not from here\r\nLblX140=Terminal X140\r\n"
                    "LblX140encoder=Resolver\r\nLblAufloesung=Resolution:\r\n");
    TEncoderFrame *f = make(false);
    table->SetLanguage(2);
    languageChanged();
    EXPECT_EQ(f->LblBE->text(), "Encoder on binary inputs");
    EXPECT_EQ(f->LblBEencoder->text(), "BE3 A");
    EXPECT_EQ(f->LblX4->text(), "Terminal X4");
    EXPECT_EQ(f->LblX4encoder->text(), "Encoder input");
    EXPECT_EQ(f->LblX120->text(), "Terminal X120");
    EXPECT_EQ(f->LblX140->text(), "Terminal X140");
    EXPECT_EQ(f->LblX140encoder->text(), "Resolver");
    EXPECT_EQ(f->LblX120Encoder->text(), "Option KBQ7700"); // from E58, not from the file
    EXPECT_EQ(f->LblAufloesung->text(), "Resolution:");
    f->SetwizEncoder(f->tsX140);
    choose(f->P_H140, 66);
    EXPECT_EQ(f->LblResolution->text(), "16384 incr / encoder revolution");
}
