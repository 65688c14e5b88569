// Parameter controls built in code, and the Qt signals beside their event properties.

#include "paramctrls_fixture.h"

#include "widgets/wizCombo.h"

#include <QLabel>
#include <QSignalSpy>

using namespace drivewiz;

class ParamCtrlInCode : public ParamCtrlForm
{
protected:
    TParaClass *tableFirst(const QString &koordinate, TwizCtrlType type)
    {
        auto *c = new TParaClass(&form);
        c->SetwizControlType(type);
        c->SetwizParaSource(table);
        c->SetKoordinate(koordinate);
        c->show();
        return c;
    }
    TParaClass *coordinateFirst(const QString &koordinate, TwizCtrlType type)
    {
        auto *c = new TParaClass(&form);
        c->SetwizControlType(type);
        c->SetKoordinate(koordinate);
        c->SetwizParaSource(table);
        c->show();
        return c;
    }
    // What a user and the rest of the library see of a control.
    static QStringList looks(const TParaClass *c)
    {
        const QWidget *input = c->GetEditControl();
        return {input ? QString::fromLatin1(input->metaObject()->className()) : QString(),
                c->GetText(),
                c->GetParamName(),
                c->GetEinheit(),
                QString::number(c->Q7adr()),
                input ? input->toolTip() : QString(),
                QString::number(c->bitCheckBoxes().size()),
                QString::number(c->isHidden()),
                QString::number(c->SameParameterControls().size())};
    }
};

TEST_F(ParamCtrlInCode, TheOrderOfTableAndCoordinateDoesNotMatter)
{
    const struct
    {
        const char *koordinate;
        TwizCtrlType type;
    } cases[] = {{"A10", wctDefault},          {"A12", wctDefault},
                 {"A13", wctBinaryCheckBoxes}, {"A18", wctDefault}, // indirect unit
                 {"A17", wctDefault},          {"Z99", wctDefault}}; // missing: hidden
    for (const auto &k : cases) {
        SCOPED_TRACE(k.koordinate);
        TParaClass *a = tableFirst(QLatin1String(k.koordinate), k.type);
        TParaClass *b = coordinateFirst(QLatin1String(k.koordinate), k.type);
        EXPECT_EQ(looks(a), looks(b));
        delete a;
        delete b;
    }
    TParaClass *first = tableFirst(QStringLiteral("A10"), wctDefault);
    first->SetText(QStringLiteral("33"));
    TParaClass *second = coordinateFirst(QStringLiteral("A10"), wctDefault);
    EXPECT_EQ(second->GetText(), QStringLiteral("33")); // takes over its partner's text
    EXPECT_EQ(second->SameParameterControls().size(), 1);
    TParaClass *sel = tableFirst(QStringLiteral("A12"), wctDefault);
    sel->SetAuswahl(2); // the list is not filled yet: it is filled to find the key
    EXPECT_EQ(sel->GetText(), QStringLiteral("2: auto"));
}

TEST_F(ParamCtrlInCode, SignalsComeBesideTheEventProperties)
{
    TParaClass *c = control(QStringLiteral("A10"));
    QSignalSpy changed(c, &TParaClass::valueChanged);
    QSignalSpy entered(c, &TParaClass::entered);
    QSignalSpy left(c, &TParaClass::left);
    QSignalSpy enabled(c, &TParaClass::enabledChanged);
    QSignalSpy visible(c, &TParaClass::visibleChanged);
    int onChange = 0, onExit = 0;
    c->OnChange = [&](QObject *sender) {
        EXPECT_EQ(sender, c);
        ++onChange;
    };
    c->OnExit = [&](QObject *) { ++onExit; };

    enter(c);
    QTest::keyClicks(edit(c), QStringLiteral("5"));
    leave();
    EXPECT_EQ(entered.size(), 1);
    EXPECT_EQ(left.size(), 1);
    EXPECT_EQ(onExit, 1);
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed.at(0).at(0).toString(), QStringLiteral("5")); // Tab focus selects all
    EXPECT_EQ(onChange, 1); // the event property still works, and is not replaced

    c->SetwizEnabled(pReadOnly);
    ASSERT_EQ(enabled.size(), 1);
    EXPECT_EQ(enabled.at(0).at(0).value<tParaEnabled>(), pReadOnly);
    c->SetwizVisible(false);
    ASSERT_EQ(visible.size(), 1);
    EXPECT_FALSE(visible.at(0).at(0).toBool());

    // A change read from the drive is a change too.
    goOnline();
    drive.setValue(c->Q7adr(), QStringLiteral("64"));
    changed.clear();
    c->RefreshValue();
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed.at(0).at(0).toString(), QStringLiteral("64"));
}
