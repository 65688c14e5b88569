// The parameter control's texts: hints, the help it shows, what screen readers announce,
// the information button, and translating all of these again when the language changes.

#include "paramctrls/ParamCtrls.h"

#include "lang/wizSprache.h"
#include "paramtable/coordinates.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "util/Divers.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"

#include <QCheckBox>
#include <QEvent>
#include <QHash>
#include <QLabel>
#include <QTextCursor>
#include <QTextEdit>
#include <QToolButton>

#include <cmath>

namespace drivewiz {

namespace {

// Which control a help view shows, so that it can show itself again in a new language.
QHash<const QObject *, QPointer<TParaClass>> &helpShownBy()
{
    static QHash<const QObject *, QPointer<TParaClass>> shown;
    return shown;
}

} // namespace

// --- hints and screen readers -------------------------------------------------------------

QString TParaClass::LimitText() const
{
    if (!m_numeric || (std::isinf(m_ugw) && std::isinf(m_ogw))) return QString();
    const QString unit = GetEinheit().trimmed();
    const auto one = [&unit](double v) {
        return unit.isEmpty() ? FloatToStr(v) : FloatToStr(v) + QLatin1Char(' ') + unit;
    };
    return one(m_ugw) + QStringLiteral(" .. ") + one(m_ogw);
}

QString TParaClass::RangeText() const
{
    const QString limits = LimitText();
    if (!limits.isEmpty()) return s_ValRange + QStringLiteral(": ") + limits;
    if (m_maxTextLength > 0) return s_StringLen + QLatin1Char(' ') + QString::number(m_maxTextLength);
    return GetEinheit().trimmed();
}

void TParaClass::applyHints(int record)
{
    const QString title = GetKoordinate() + QLatin1Char(' ') + GetParamName();
    m_lblKoordinate->setToolTip(s_ClickForParDesc);
    m_lblParaName->setToolTip(s_ClickForParDesc + QLatin1Char('\n') + GetParamName() +
                              QLatin1Char(' ') + GetKoordinate());
    setAccessibleName(title);
    setAccessibleDescription(RangeText());
    if (!m_input) return;
    if (qobject_cast<QLineEdit *>(m_input))
        m_input->setToolTip(m_info ? QString() : GetWertebereich(record));
    else if (qobject_cast<TwizComboBox *>(m_input) && !isDesigning())
        m_input->setToolTip(GetWertebereich(record));
    if (!m_inputFeldHint.isEmpty()) m_input->setToolTip(m_inputFeldHint);
    m_input->setAccessibleName(title);
    m_input->setAccessibleDescription(RangeText());
    const int bits = int(m_bitBoxes.size());
    for (int i = 0; i < bits; ++i) {
        m_bitBoxes[i]->setAccessibleName(title + QStringLiteral(", Bit ") +
                                         QString::number(bits - 1 - i));
    }
    if (m_infoButton) {
        m_infoButton->setAccessibleName(s_Info + QLatin1Char(' ') + GetKoordinate());
        updateInfoButton();
    }
}

void TParaClass::UpdateLanguage()
{
    if (!m_table || !IsKoordinate(GetKoordinate())) {
        m_lblKoordinate->setToolTip(s_ClickForParDesc);
        m_lblParaName->setToolTip(s_ClickForParDesc);
        return;
    }
    const int record = m_table->GetRecNo(GetKoordinate(), false);
    if (record >= 0) applyHints(record);
    if (QTextEdit *view = m_table->RichEditCtrl(); view && helpShownBy().value(view) == this)
        ShowSelfRTFHelpText();
}

void TParaClass::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !isLoading() && !isDesigning())
        UpdateLanguage();
}

// --- help -------------------------------------------------------------------------------------

QString TParaClass::HelpSummary() const
{
    QString html = QStringLiteral("<b>") + GetKoordinate().toHtmlEscaped() +
                   QStringLiteral("&nbsp;&nbsp;") + GetParamName().toHtmlEscaped() +
                   QStringLiteral("</b>");
    const auto line = [&html](const QString &text) {
        if (!text.trimmed().isEmpty()) html += QStringLiteral("<br>") + text.toHtmlEscaped();
    };
    if (!m_info) line(RangeText());
    if (!m_default.trimmed().isEmpty()) line(s_Default + QStringLiteral(": ") + m_default);
    return html;
}

// The library's own lines come first, in the wizard's language and with the unit the
// control shows; the host's help text follows them.
void TParaClass::ShowSelfRTFHelpText()
{
    if (!m_table) return;
    m_table->ShowRTFHelpText(m_table->GetRTFhelpstring(m_q7adr), m_q7adr);
    QTextEdit *view = m_table->RichEditCtrl();
    if (!view || !IsKoordinate(GetKoordinate()) || !m_input) return;
    const bool hostText = !view->document()->isEmpty();
    QTextCursor cursor(view->document());
    cursor.movePosition(QTextCursor::Start);
    cursor.insertHtml(HelpSummary());
    if (hostText) {
        cursor.insertBlock();
        cursor.insertBlock();
    }
    view->moveCursor(QTextCursor::Start);
    helpShownBy().insert(view, this);
}

// --- the information button ---------------------------------------------------------------------

void TParaClass::updateInfoButton()
{
    m_infoButton->setProperty("Tag", 0);
    const QString word = LExtractWord(1, GetText(), TCharSet(" :"), ewMultipleDelim);
    quint32 address = 0;
    const int record = m_table ? m_table->FindRecord(word, m_achse, address) : -1;
    if (record < 0) {
        m_infoButton->setToolTip(QString());
        return;
    }
    const auto col = [this, record](const char *t) {
        return m_table->Cell(record, QString::fromLatin1(t));
    };
    m_infoButton->setToolTip(s_Koordinate + QStringLiteral(": ") + col("Koordinate") +
                             QLatin1Char('\n') + col("Name") + QLatin1Char('\n') + s_DatenTyp +
                             QStringLiteral(": ") + col("Datentyp") + QLatin1Char('\n') +
                             GetWertebereich(record));
    m_infoButton->setProperty("Tag", quint32(HexToInt(col("USS-Adresse /hex"))));
}

// The info button shows the help of the parameter the value names: in the table's help
// view when the form has one, else as a message with the button's hint.
void TParaClass::myInfoButtonClick()
{
    if (!m_table || !m_infoButton) return;
    const quint32 address = m_infoButton->property("Tag").toUInt();
    const QByteArray rtf = address ? m_table->GetRTFhelpstring(address) : QByteArray();
    if (m_table->RichEditCtrl() && !rtf.isEmpty())
        m_table->ShowRTFHelpText(rtf, address);
    else if (!m_infoButton->toolTip().isEmpty())
        ShowMessage(m_infoButton->toolTip());
}

} // namespace drivewiz
