// The tour's walk through the wizard "Outputs and encoder": offline on a VKP drive with the
// option board KBQ 7700, online on a ZRD drive with a KBW 7700, as chosen in the host window.

#include "Tour.h"

#include "ioframes/AnalogAusgang.h"
#include "ioframes/HEncoder.h"
#include "paramctrls/ParamCtrls.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaEnum>

namespace drivewiz::wizhost {

namespace {

int keyOf(QChar c)
{
    if (c.isDigit()) return Qt::Key_0 + c.digitValue();
    if (c == QLatin1Char('-')) return Qt::Key_Minus;
    if (c == QLatin1Char('.')) return Qt::Key_Period;
    if (c == QLatin1Char(',')) return Qt::Key_Comma;
    return c.toUpper().unicode();
}

QString encoderLine(QWidget *scope)
{
    auto *encoder = scope->findChild<TEncoderFrame *>();
    if (!encoder) return QString();
    const char *type = QMetaEnum::fromType<TEncoderType>().valueToKey(encoder->GetEncoderType());
    return QStringLiteral("    encoder on %1: %2, %3 increments a revolution")
        .arg(encoder->GetwizEncoder()->objectName(), QLatin1String(type))
        .arg(encoder->GetEncResolution());
}

} // namespace

void Tour::walkOutputs()
{
    using namespace std::placeholders;
    m_session.setUserLevel(3);
    // The host window's choice of hardware: a VKP drive with the KBQ 7700 in the lower
    // slot, then a ZRD drive with a KBW 7700 in the upper one (no analog outputs).
    chooseHardware(0, 1);
    walk(Wizard::Outputs, DWZ_OFFLINE, std::bind(&Tour::outputsOffline, this, _1, _2));
    chooseHardware(1, 3);
    walk(Wizard::Outputs, DWZ_ONLINE, std::bind(&Tour::outputsOnline, this, _1, _2));
    chooseHardware(0, 1);
}

void Tour::outputsOffline(QWidget *form, QWidget *page)
{
    const QString name = page->objectName();
    if (name == QLatin1String("PageAnalog1")) {
        chooseOutputSource(page, QStringLiteral("P_Quelle"), QStringLiteral("E14"));
        typeKeys(page, QStringLiteral("Edit10V"), QStringLiteral("1500"));
        typeKeys(page, QStringLiteral("Edit0V"), QStringLiteral("-1500"));
    } else if (name == QLatin1String("PageAnalog2")) {
        chooseOutputSource(page, QStringLiteral("P_Quelle"), QStringLiteral("E09")); // not scalable
        shoot(form, QStringLiteral("outputs-offline-PageAnalog2-unscalable"));
        chooseOutputSource(page, QStringLiteral("P_Quelle"), QStringLiteral("E00"));
        typeKeys(page, QStringLiteral("Edit10V"), QStringLiteral("10"));
    } else if (name == QLatin1String("PageDigital")) {
        chooseOutputSource(page, QStringLiteral("P_F64"), QStringLiteral("E20"));
        chooseOutputSource(page, QStringLiteral("P_F65"), QStringLiteral("2.E17"));
    } else if (name == QLatin1String("PageEncoder")) {
        choose(form, QStringLiteral("P_I02"), 4);
        say(encoderLine(page));
        shoot(form, QStringLiteral("outputs-offline-PageEncoder-X120"));
        choose(form, QStringLiteral("P_I02"), 2);
        say(encoderLine(page));
    }
}

void Tour::outputsOnline(QWidget *form, QWidget *page)
{
    const QString name = page->objectName();
    if (name == QLatin1String("PageAnalog1")) {
        typeKeys(page, QStringLiteral("Edit10V"), QStringLiteral("3000"));
        typeKeys(page, QStringLiteral("Edit0V"), QStringLiteral("0"));
    } else if (name == QLatin1String("PageDigital")) {
        chooseOutputSource(page, QStringLiteral("P_F66"), QStringLiteral("E21"));
    } else if (name == QLatin1String("PageEncoder")) {
        choose(form, QStringLiteral("P_I02"), 3);
        say(encoderLine(page));
    }
}

// Typing into a plain edit key by key, each key pressed and released, then leaving it.
void Tour::typeKeys(QWidget *scope, const QString &name, const QString &text)
{
    auto *edit = scope->findChild<QLineEdit *>(name);
    if (!edit || !edit->isVisible()) {
        say(QStringLiteral("    %1: no field to type into").arg(name));
        return;
    }
    edit->setFocus(Qt::TabFocusReason);
    settle(20);
    edit->selectAll();
    for (const QChar ch : text) {
        QKeyEvent press(QEvent::KeyPress, keyOf(ch), Qt::NoModifier, QString(ch));
        QKeyEvent release(QEvent::KeyRelease, keyOf(ch), Qt::NoModifier, QString(ch));
        QApplication::sendEvent(edit, &press);
        QApplication::sendEvent(edit, &release);
    }
    say(QStringLiteral("    typed %1 = %2").arg(name, text));
    edit->clearFocus();
    settle();
    ++m_typed;
    sayMessages();
    if (auto *frame = qobject_cast<TAnalogAus *>(edit->parentWidget()->parentWidget()))
        say(QStringLiteral("    factor %1 %, offset %2 V: 10V = %3, 0V = %4")
                .arg(frame->P_Faktor->GetText(), frame->P_Offset->GetText(), frame->Edit10V->text(),
                     frame->Edit0V->text()));
}

// Choosing a source: the list is opened and closed on the parameter's entry.
void Tour::chooseOutputSource(QWidget *scope, const QString &name, const QString &koordinate)
{
    auto *c = scope->findChild<TParaClass *>(name);
    auto *combo = c ? qobject_cast<QComboBox *>(c->GetEditControl()) : nullptr;
    if (!combo || !combo->isEnabled()) {
        say(QStringLiteral("    %1: no list to choose from").arg(name));
        return;
    }
    combo->setFocus(Qt::TabFocusReason);
    combo->showPopup();
    settle(20);
    const int index = combo->findText(koordinate + QLatin1Char(':'), Qt::MatchStartsWith);
    if (index >= 0) combo->setCurrentIndex(index);
    combo->hidePopup();
    settle();
    say(QStringLiteral("    chose %1 = %2").arg(c->GetKoordinate(), c->GetText()));
    ++m_chosen;
    sayMessages();
    if (auto *frame = scope->findChild<TAnalogAus *>(); frame && frame->LblError->isVisible())
        say(QStringLiteral("    the output cannot show it: %1").arg(frame->LblError->text()));
}

} // namespace drivewiz::wizhost
