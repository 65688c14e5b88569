// The tour through the Inputs wizard: sources chosen from pruned lists, bits of the
// control word ticked, the analog path switched, the overview; offline and online with
// the lamps following the drive's terminals, and once with other hardware fitted.

#include "Tour.h"

#include "HardwareChooser.h"
#include "HostWindow.h"

#include "ioframes/BE.h"
#include "ioframes/BitLeiste.h"
#include "paramctrls/ParamCtrls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTabWidget>

namespace drivewiz::wizhost {

void Tour::walkInputs()
{
    using namespace std::placeholders;
    m_session.setUserLevel(2);
    chooseHardware(0, 1); // VKP 4102 with the KBQ 7700: thirteen inputs
    walk(Wizard::Inputs, DWZ_OFFLINE, std::bind(&Tour::inputsOffline, this, _1, _2));
    walk(Wizard::Inputs, DWZ_ONLINE, std::bind(&Tour::inputsOnline, this, _1, _2));
    chooseHardware(0, 1);
}

void Tour::inputsOffline(QWidget *form, QWidget *page)
{
    const QString name = page->objectName();
    if (name == QLatin1String("PageSystem")) {
        chooseSource(form, QStringLiteral("BEinput1"), 4); // quick stop from BE1, inverted
        chooseSource(form, QStringLiteral("BEinput2"), 2); // fault reset from the fieldbus
        tickBit(form, QStringLiteral("BitLeiste1"), 1);
    } else if (name == QLatin1String("PageFunctions")) {
        chooseSource(form, QStringLiteral("BE_A66"), 17); // jog negative from BE8
        tickBit(form, QStringLiteral("BitLeiste2"), 7);
        settle(300);
    } else if (name == QLatin1String("PageAnalog")) {
        chooseSource(form, QStringLiteral("AEinput1"), 4); // the setpoint from the fieldbus
        type(form, QStringLiteral("P_BusFeldbusPar"), QStringLiteral("25"));
    }
}

void Tour::inputsOnline(QWidget *form, QWidget *page)
{
    const QString name = page->objectName();
    if (name == QLatin1String("PageSystem")) {
        settle(900); // the lamps follow the terminals
        shoot(form, QStringLiteral("inputs-online-01-PageSystem-later"));
        chooseSource(form, QStringLiteral("BEinput4"), 10); // limit switch on BE4, inverted
        // Without the option board the list offers five inputs only (the drive's change
        // reaches the wizard with its next update).
        chooseHardware(0, 2);
        settle(1300);
        auto *input = form->findChild<TBEinput *>(QStringLiteral("BEinput3"));
        auto *combo = input ? qobject_cast<QComboBox *>(input->P_Quelle->GetEditControl()) : nullptr;
        if (combo) {
            combo->setFocus(Qt::TabFocusReason);
            combo->showPopup();
            settle(100);
            say(QStringLiteral("    with KBM 7700 the list of %1 offers %2 entries")
                    .arg(input->wizKoordinate())
                    .arg(combo->count()));
            shoot(form, QStringLiteral("inputs-online-01-PageSystem-KBM"));
            combo->hidePopup();
            settle();
        }
        chooseHardware(0, 1);
        settle(1300);
    } else if (name == QLatin1String("PageFunctions")) {
        tickBit(form, QStringLiteral("BitLeiste2"), 7);
    } else if (name == QLatin1String("PageAnalog")) {
        chooseSource(form, QStringLiteral("AEinput1"), 2);
    }
}

void Tour::chooseSource(QWidget *form, const QString &input, int key)
{
    auto *frame = form->findChild<TInput *>(input);
    auto *combo = frame ? qobject_cast<QComboBox *>(frame->P_Quelle->GetEditControl()) : nullptr;
    if (!combo || !combo->isEnabled()) {
        say(QStringLiteral("    %1: no source to choose").arg(input));
        return;
    }
    combo->setFocus(Qt::TabFocusReason);
    combo->showPopup(); // fills the list with what the hardware has
    settle(20);
    for (int i = 0; i < combo->count(); ++i) {
        if (combo->itemText(i).section(QLatin1Char(':'), 0, 0).trimmed().toInt() == key)
            combo->setCurrentIndex(i);
    }
    combo->hidePopup();
    settle();
    say(QStringLiteral("    chose %1 = %2").arg(frame->wizKoordinate(), frame->P_Quelle->GetText()));
    ++m_chosen;
    sayMessages();
}

void Tour::tickBit(QWidget *form, const QString &barName, int bit)
{
    auto *bar = form->findChild<TBitLeiste *>(barName);
    const int row = bar ? bit - bar->wizBitAnfang() : -1;
    QCheckBox *box = row >= 0 && row < int(bar->Rows().size()) ? bar->Rows().at(size_t(row)).box
                                                               : nullptr;
    if (!box || !box->isVisible() || !box->isEnabled()) {
        say(QStringLiteral("    %1: no bit %2 to tick").arg(barName).arg(bit));
        return;
    }
    box->setFocus(Qt::TabFocusReason);
    box->click();
    settle();
    say(QStringLiteral("    ticked bit %1 of %2: %3")
            .arg(bit)
            .arg(bar->wizParaControl()->GetKoordinate(), bar->wizParaControl()->GetText()));
    ++m_chosen;
}

void Tour::chooseHardware(int family, int board)
{
    if (auto *chooser = m_window.findChild<HardwareChooser *>()) {
        chooser->choose(family, board);
        settle(60);
    }
}

} // namespace drivewiz::wizhost
