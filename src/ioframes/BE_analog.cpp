// The analog signal input: its terminal description and the analog input frame it drives.

#include "ioframes/BE.h"

#include "ioframes/AE.h"
#include "ioframes/BE_p.h"
#include "paramtable/ParaTable.h"

#include <QLabel>

namespace drivewiz {

TAEinput::TAEinput(QWidget *parent) : TInput(parent)
{
    P_Quelle->OnEnter = [this](QObject *) {
        if (OnEnter) OnEnter(this);
    };
}

TAEinput::~TAEinput() = default;

TAnalogEin *TAEinput::wizAE() const
{
    return m_frame;
}

void TAEinput::SetwizAE(TAnalogEin *frame)
{
    m_frame = frame;
    if (frame) m_frameName = frame->objectName();
    if (runTime()) updateFrame();
}

QString TAEinput::wizAEName() const
{
    return m_frame ? m_frame->objectName() : m_frameName;
}

void TAEinput::SetwizAEName(const QString &objectName)
{
    m_frameName = objectName;
    if (isLoading()) return; // resolved in Loaded()
    QWidget *form = GetMainForm(this);
    SetwizAE(form && !objectName.isEmpty() ? form->findChild<TAnalogEin *>(objectName) : nullptr);
}

void TAEinput::SetwizParFaktor(const QString &text)
{
    m_parFaktor = text;
    if (runTime()) updateFrame();
}

void TAEinput::SetwizFaktorChar(const QString &text)
{
    m_faktorChar = text;
    if (runTime()) updateFrame();
}

void TAEinput::SetwizQuellAnzeigParName(const QString &koordinate)
{
    m_quellAnzeigParName = koordinate;
    if (runTime()) updateFrame();
}

QString TAEinput::GetKlemmeninfo() const
{
    const QString text = P_Quelle->GetText();
    if (isDesigning() || text.isEmpty()) return QString();
    QString info = QStringLiteral("Analogeingang ") +
                   LExtractWord(2, text, TCharSet(" -:"), ewMultipleDelim) +
                   QStringLiteral("\nKlemme ");
    switch (SourceIndex()) {
    case 1:
        info += QStringLiteral("X100 Pins 1(+)  3(-)");
        break;
    case 2:
        info += QStringLiteral("X100 Pins 4(+)  5(-)");
        break;
    case 3:
        info += QStringLiteral("X102 Pins 1(+)  2(-)");
        break;
    default:
        break;
    }
    return info;
}

void TAEinput::InputOnChange(QObject *sender)
{
    updateFrame();
    ImgArrow->setVisible(m_frame && SourceIndex() >= 1);
    TInput::InputOnChange(sender);
}

// The frame shows the page of the chosen source (input 1 to 3, or the parameter) with
// this input's source, fieldbus parameter, factor and displays; "none" hides it.
void TAEinput::updateFrame()
{
    if (!m_frame || !runTime()) return;
    if (!m_frame->wizParaSource()) m_frame->SetwizParaSource(wizParaSource());
    const int index = std::max(0, SourceIndex());
    m_frame->SetAEParams(index, wizKoordinate(), m_busParName, m_parFaktor, m_faktorChar,
                         m_anzeigeParName, m_quellAnzeigParName);
    m_frame->SetwizAE(index);
}

void TAEinput::ArrowClick()
{
    if (!m_frame || !m_frame->isVisibleTo(m_frame->window())) return;
    ioframes::bringIntoView(m_frame);
    m_frame->FocusFirstField();
}

void TAEinput::Loaded()
{
    TInput::Loaded();
    if (isDesigning()) return;
    if (!m_frame && !m_frameName.isEmpty()) SetwizAEName(m_frameName);
    InputOnChange(nullptr);
}

} // namespace drivewiz
