// The parameter control's layout: where labels, input field, unit, info button and bit
// boxes go, from their fonts and texts, with the drive tool's positions as minimums, so
// no text is cut off in any language or at any resolution.

#include "paramctrls/ParamCtrls.h"

#include "paramctrls/ParamCtrls_p.h"
#include "paramtable/ParaTable.h"
#include "widgets/wizCombo.h"
#include "widgets/wizEdit.h"

#include <QCheckBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QToolButton>

namespace drivewiz {

namespace {

// The drive tool's positions: coordinate at (3, 5), name at x 36 and 141 wide, both 13
// pixels high; a unit label 40 wide; bit boxes 16 apart with 10-pixel numbers.
constexpr int kLabelTop = 5;
constexpr int kKoordLeft = 3;
constexpr int kNameLeft = 36;
constexpr int kNameWidth = 141;
constexpr int kLabelHeight = 13;
constexpr int kUnitWidth = 40;
constexpr int kUnitGap = 4;
constexpr int kBitStep = 16;
constexpr int kBitLabelHeight = 10;
constexpr int kBottom = 3;

int advance(const QWidget *w, const QString &text)
{
    return text.isEmpty() ? 0 : QFontMetrics(w->font()).horizontalAdvance(text) + 1;
}

// The natural height of an input field depends only on its class and font: ask the style
// once per kind instead of once per control.
int naturalHeight(QWidget *input)
{
    static QHash<QString, int> heights;
    const QString key = QString::fromLatin1(input->metaObject()->className()) + input->font().key();
    auto it = heights.constFind(key);
    if (it == heights.constEnd()) it = heights.insert(key, input->sizeHint().height());
    return it.value();
}

// The width an input field needs to show its whole text (for edits and combo boxes: the
// value; for radio groups: every item).
int neededInputWidth(QWidget *input)
{
    if (auto *edit = qobject_cast<QLineEdit *>(input)) {
        QStyleOptionFrame opt;
        opt.initFrom(edit);
        opt.lineWidth = edit->hasFrame() ? edit->style()->pixelMetric(
                                               QStyle::PM_DefaultFrameWidth, &opt, edit)
                                         : 0;
        const QMargins m = edit->textMargins();
        // QLineEdit keeps 2 pixels of its own on either side of the text.
        return advance(edit, edit->displayText()) + m.left() + m.right() + 4 + 2 * opt.lineWidth;
    }
    if (auto *combo = qobject_cast<QComboBox *>(input)) {
        QStyleOptionComboBox opt;
        opt.initFrom(combo);
        opt.editable = combo->isEditable();
        const QSize text(advance(combo, combo->currentText()), QFontMetrics(combo->font()).height());
        return combo->style()->sizeFromContents(QStyle::CT_ComboBox, &opt, text, combo).width();
    }
    if (qobject_cast<TMyRadioGroup *>(input)) return input->sizeHint().width();
    return input->sizeHint().width();
}

} // namespace

paractl::CtrlLayout TParaClass::computeLayout(int frameWidth) const
{
    paractl::CtrlLayout l;
    const QFontMetrics fk(m_lblKoordinate->font());
    const QFontMetrics fn(m_lblParaName->font());
    const int labelHeight = std::max({kLabelHeight, fk.height(), fn.height()});
    const int gap = fn.horizontalAdvance(QLatin1Char(' ')) + 2;
    const int nameLeft = std::max(kNameLeft, kKoordLeft + advance(m_lblKoordinate, GetKoordinate()) + gap);
    const int nameText = std::max(advance(m_lblParaName, GetParamName()), 1);
    l.koordinate = QRect(kKoordLeft, kLabelTop, nameLeft - kKoordLeft, labelHeight);
    int right = nameLeft + nameText;
    int bottom = kLabelTop + labelHeight;
    if (m_input) {
        const bool radio = qobject_cast<TMyRadioGroup *>(m_input) != nullptr;
        const int natural = radio ? m_input->sizeHint().height() : naturalHeight(m_input);
        const int h = m_controlHeight > 0 ? std::max(m_controlHeight, radio ? natural : 0) : natural;
        int w = m_controlWidth > 0 ? m_controlWidth : std::max(40, frameWidth - 40);
        if (m_bitBoxes.isEmpty()) w = std::max(w, neededInputWidth(m_input));
        const bool beside = m_controlAlign == caRight;
        const int x = beside ? std::max(m_controlLeft, nameLeft + nameText + gap) : kKoordLeft;
        const int y = beside ? 2 : kLabelTop + labelHeight + 1;
        l.input = QRect(x, y, w, h);
        int next = x + w;
        if (m_unit) {
            l.unit = QRect(next + kUnitGap, y, std::max(kUnitWidth, advance(m_unit, m_unit->text())), h);
            next = l.unit.right() + 1;
        }
        if (m_infoButton) {
            l.info = QRect(next + 2, y, h, h);
            next = l.info.right() + 1;
        }
        right = std::max(right, next);
        bottom = std::max(bottom, y + h);
        if (!m_bitBoxes.isEmpty()) {
            const QStyle *style = m_bitBoxes.first()->style();
            const int indicator = style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, m_bitBoxes.first());
            QSize numbers;
            for (const QLabel *label : m_bitLabels)
                numbers = numbers.expandedTo(label->sizeHint());
            const int step = std::max({kBitStep, indicator + 3, numbers.width() + 2});
            const int boxHeight = std::max(kBitStep, style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, m_bitBoxes.first()) + 2);
            l.bits = QPoint(x, y);
            l.bitBox = QSize(step, boxHeight);
            l.bitLabelHeight = std::max(kBitLabelHeight, numbers.height());
            right = std::max(right, x + step * int(m_bitBoxes.size()));
            bottom = y + boxHeight + l.bitLabelHeight;
        }
    }
    l.minWidth = right + 1;
    l.width = std::max(frameWidth, l.minWidth);
    const int nameWidth = m_input && m_controlAlign == caRight ? l.input.x() - gap - nameLeft
                                                              : l.width - nameLeft;
    l.name = QRect(nameLeft, kLabelTop, std::max({nameWidth, nameText, m_input ? 0 : kNameWidth}),
                   labelHeight);
    l.height = m_input ? bottom + kBottom : height();
    return l;
}

int TParaClass::CalcHeight() const
{
    return computeLayout(width()).height;
}

QSize TParaClass::minimumSizeHint() const
{
    const paractl::CtrlLayout l = computeLayout(0);
    return QSize(l.minWidth, l.height);
}

QSize TParaClass::sizeHint() const
{
    const paractl::CtrlLayout l = computeLayout(0);
    return QSize(std::max(l.minWidth, kNameLeft + kNameWidth), l.height);
}

// The input field sits under the name (caBottom) or right of it at wizControlLeft
// (caRight); its width is wizControlWidth, its height wizControlHeight or its natural
// one. The unit label follows the field; bit boxes run left to right, highest bit first,
// with their numbers underneath. Whatever a text needs more, it gets: the frame grows.
void TParaClass::SetEditCtrlPosition()
{
    if (m_placing) return;
    m_placing = true;
    const paractl::CtrlLayout l = computeLayout(width());
    m_lblKoordinate->setGeometry(l.koordinate);
    m_lblParaName->setGeometry(l.name);
    if (m_input) {
        m_input->setGeometry(l.input);
        if (m_unit) m_unit->setGeometry(l.unit);
        if (m_infoButton) m_infoButton->setGeometry(l.info);
        for (int i = 0; i < m_bitBoxes.size(); ++i) {
            const QPoint at = l.bits + QPoint(i * l.bitBox.width(), 0);
            m_bitBoxes[i]->setGeometry(QRect(at, l.bitBox));
            m_bitLabels[i]->setGeometry(at.x(), at.y() + l.bitBox.height(), l.bitBox.width(),
                                        l.bitLabelHeight);
        }
    }
    if (size() != QSize(l.width, l.height)) resize(l.width, l.height);
    updateGeometry();
    m_placing = false;
}

// A value set by the program, or a choice, may need a wider field than it has.
void TParaClass::fitInput()
{
    if (m_input && m_bitBoxes.isEmpty() && !m_placing &&
        neededInputWidth(m_input) > m_input->width())
        SetEditCtrlPosition();
}

void TParaClass::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    if (isDesigning() && GetKoordinate() == QLatin1String("B33B")) {
        SetKoordinate(InputKoordinate(GetKoordinate()));
        return;
    }
    if (!m_input && !m_building && !isLoading()) RebuildParaControl();
    if (!m_building) SetEditCtrlPosition(); // the name fills the frame's width
}

void TParaClass::FontChanged()
{
    if (!m_table) return;
    QFont k = m_table->FontKoordinate();
    QFont n = m_table->FontParaName();
    m_lblKoordinate->setFont(k);
    m_lblParaName->setFont(n);
    if (qobject_cast<QLineEdit *>(m_input) || qobject_cast<QComboBox *>(m_input))
        m_input->setFont(m_table->FontEditFeld());
    if (m_unit) m_unit->setFont(m_table->FontDimension());
    SetEditCtrlPosition();
}

} // namespace drivewiz
