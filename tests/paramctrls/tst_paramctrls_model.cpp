// The parameter control's value model: typed access, limits, units, scaling.

#include "paramctrls_fixture.h"

#include "platform/convert.h"

#include <cmath>

using namespace drivewiz;

class ParamCtrlModel : public ParamCtrlForm
{
};

TEST_F(ParamCtrlModel, IntegerTextsInTheirManyForms)
{
    TParaClass *c = control(QStringLiteral("A17")); // a text field takes any text
    const auto asInt = [c](const char *text) {
        c->SetText(QString::fromUtf8(text));
        return c->GetASInteger();
    };
    EXPECT_EQ(asInt("0101bin"), 5);
    EXPECT_EQ(asInt("1Ahex"), 26);
    EXPECT_EQ(asInt("10h"), 16);
    EXPECT_EQ(asInt("h"), 0);
    EXPECT_EQ(asInt("FFh"), 0); // the letter before "h" makes it no hex number
    EXPECT_EQ(asInt("2.5"), 2); // halves to even
    EXPECT_EQ(asInt("3.5"), 4);
    EXPECT_EQ(asInt("3: drei"), 3);
    EXPECT_EQ(c->GetAuswahl(), 3);
    EXPECT_EQ(asInt(""), 0);
    SetDecimalSeparator(QLatin1Char(','));
    EXPECT_EQ(asInt("3,6"), 4);
    SetDecimalSeparator(QLatin1Char('.'));
    c->SetText(QStringLiteral("12: setpoint"));
    EXPECT_EQ(c->GetAuswahl(), 12);
    c->SetText(QStringLiteral("setpoint"));
    EXPECT_EQ(c->GetAuswahl(), TParaClass::NoSelection);
    c->SetText(QString());
    EXPECT_EQ(c->GetAuswahl(), TParaClass::NoSelection);
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(ParamCtrlModel, BitsAndBitPatterns)
{
    TParaClass *n = control(QStringLiteral("A10"));
    n->SetASInteger(2);
    EXPECT_TRUE(n->Bit(33)); // bit 1
    n->SetBit(31, true);
    EXPECT_EQ(n->GetASInteger(), int(0x80000002u));
    n->SetBit(1, false);
    EXPECT_EQ(n->GetASInteger(), int(0x80000000u));
    TParaClass *k = control(QStringLiteral("A13")); // kind 4, OGW 255: eight digits
    EXPECT_EQ(k->GetText(), QStringLiteral("00000101bin"));
    k->SetASInteger(6);
    EXPECT_EQ(k->GetText(), QStringLiteral("00000110bin"));
    k->SetBit(0, true);
    EXPECT_EQ(k->GetASInteger(), 7);
    k->SetText(QStringLiteral("3")); // an integer text is shown in binary too
    EXPECT_EQ(k->GetText(), QStringLiteral("00000011bin"));
    k->SetOGW(0); // width 0: no padding
    k->SetASInteger(5);
    EXPECT_EQ(k->GetText(), QStringLiteral("101bin"));
}

TEST_F(ParamCtrlModel, LimitsRangesAndDefaults)
{
    TParaClass *c = control(QStringLiteral("A10"));
    EXPECT_EQ(c->GetUGW(), -100);
    EXPECT_EQ(c->GetOGW(), 100);
    EXPECT_EQ(c->GetEditControl()->toolTip(),
              QStringLiteral("Wertebereich: -100 ms.. 10 ..100 ms"));
    EXPECT_TRUE(c->IsDefault());
    c->SetText(QStringLiteral(" 1 0 "));
    EXPECT_TRUE(c->IsDefault()); // blanks do not count
    c->SetText(QStringLiteral("10.0"));
    EXPECT_FALSE(c->IsDefault());
    c->SetOGW(50);
    EXPECT_EQ(c->GetEditControl()->toolTip(), QStringLiteral("Wertebereich: -100 ms.. 10 ..50 ms"));
    EXPECT_TRUE(std::isinf(control(QStringLiteral("A11"))->GetOGW()));
    EXPECT_EQ(control(QStringLiteral("A15"))->GetEditControl()->toolTip(),
              QStringLiteral("8 String. Max. Länge:"));
    TParaClass *missing = control(QStringLiteral("A99"));
    EXPECT_EQ(missing->GetEditControl(), nullptr);
    EXPECT_TRUE(missing->isHidden());
    missing->SetOGW(5); // no input field: nothing changes
    EXPECT_TRUE(std::isinf(missing->GetOGW()));
}

TEST_F(ParamCtrlModel, DirectAndIndirectUnits)
{
    EXPECT_FALSE(TParaClass::IsIndirekteEinheit(QStringLiteral("<>")));
    EXPECT_TRUE(TParaClass::IsIndirekteEinheit(QStringLiteral("<B>")));
    EXPECT_EQ(control(QStringLiteral("A10"))->GetEinheit(), QStringLiteral("ms"));
    TParaClass *weg = control(QStringLiteral("A18"));
    EXPECT_EQ(weg->GetEinheit(), QStringLiteral("mm"));
    EXPECT_EQ(weg->IndirectUnitSource(), QStringLiteral("A19"));
    EXPECT_TRUE(table->IndirectUnitSources().contains(QStringLiteral("A19")));
    // The unit parameter changes in the drive: the unit label follows.
    goOnline();
    drive.setValue(drive.addressOf(QStringLiteral("A19"), 1), QStringLiteral("inch"));
    TParaClass *unit = control(QStringLiteral("A19"));
    table->RefreshParaControl(unit, false);
    weg->UpdateEinheit();
    EXPECT_EQ(weg->GetEinheit(), QStringLiteral("inch"));
}

TEST_F(ParamCtrlModel, ScalingAt16384Counts)
{
    const auto scale = [this](const char *k) {
        return GetValueAt16384LSB(table, table->GetRecNo(QString::fromLatin1(k), false));
    };
    EXPECT_DOUBLE_EQ(scale("E03"), 12000);                              // 4096 = 3000 rpm
    EXPECT_DOUBLE_EQ(scale("E08"), 12000);                              // 4096 = R04
    EXPECT_NEAR(scale("E02"), 4 * 1500 / (2 * M_PI * 3000 / 60), 1e-9); // from B11, B13
    goOnline();
    drive.setValue(drive.addressOf(QStringLiteral("B20"), 1), QStringLiteral("70"));
    EXPECT_DOUBLE_EQ(scale("E02"), 30); // servo motor: 4096 = B17
    drive.setValue(drive.addressOf(QStringLiteral("R04"), 0), QStringLiteral("4500"));
    EXPECT_DOUBLE_EQ(scale("E08"), 18000);
    EXPECT_EQ(scale("E04"), 0); // no "=": no scale
    EXPECT_EQ(scale("A10"), 0);
    TParaClass *strom = control(QStringLiteral("E03"));
    strom->SetAsNative(8192);
    EXPECT_EQ(strom->GetText(), QStringLiteral("6000.0"));
    EXPECT_EQ(strom->GetASNative(), 8192);
    TParaClass *zero = control(QStringLiteral("E05")); // "0 = 10 A": no usable scale
    EXPECT_EQ(zero->GetASNative(), 0);
}

TEST_F(ParamCtrlModel, FindMyParamWalksDepthFirst)
{
    auto *outer = new QWidget(&form);
    auto *inner = new QWidget(outer);
    auto *deep = new TParaClass(inner);
    deep->SetKoordinate(QStringLiteral("B33"));
    auto *later = new TParaClass(outer);
    later->SetKoordinate(QStringLiteral("B33"));
    auto *element = new TParaClass(&form);
    element->SetKoordinate(QStringLiteral("B33.1"));
    EXPECT_EQ(FindMyParam(&form, QStringLiteral("b33")), deep);
    EXPECT_EQ(FindMyParam(&form, QStringLiteral("B33.1")), element);
    EXPECT_EQ(FindMyParam(&form, QStringLiteral("B3")), nullptr);
    EXPECT_EQ(GetOptionUnten(table), QStringLiteral("???"));
    EXPECT_EQ(GetOptionUnten(nullptr, QStringLiteral("KBQ")), QStringLiteral("KBQ"));
}
