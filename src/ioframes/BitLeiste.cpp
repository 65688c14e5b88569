// The bit bar: rows of check boxes over the bits of its master's binary value.

#include "ioframes/BitLeiste.h"

#include "ioframes/BE.h"
#include "ioframes/ioframes_p.h"
#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/colors.h"
#include "platform/convert.h"
#include "platform/messages.h"
#include "platform/screen.h"
#include "util/Divers.h"

#include <QCheckBox>
#include <QLabel>

#include <cmath>

namespace drivewiz {

namespace {

// The master's bit pattern width: the number of binary digits of its upper limit.
int patternWidth(const TParaClass *master)
{
    const double w = std::log2(master->GetOGW() + 1.0);
    return std::isfinite(w) ? std::clamp(int(Round(w)), 0, 32) : 0;
}

quint32 bitMask(int bit)
{
    return 1u << (bit & 31);
}

} // namespace

TBitLeiste::TBitLeiste(QWidget *parent) : QWidget(parent)
{
    resize(30, 30);
    m_font = font();
    m_window = new MessageWindow(this);
    m_window->onMessage = [this](uint msg, quintptr wParam, qintptr) {
        if (msg == wmParaChanged) ParamChangeMsg(wParam);
    };
}

TBitLeiste::~TBitLeiste()
{
    addComponentState(csDestroying);
    RemoveMsgHandlerAtSource(m_master);
    m_window->closeHandle();
}

quintptr TBitLeiste::WindowHandle() const
{
    return m_window->handle();
}

// --- properties ----------------------------------------------------------------------------

void TBitLeiste::SetFont(const QFont &font)
{
    m_font = font;
    setFont(font);
    RebuildBits();
}

void TBitLeiste::SetwizBitAnfang(int bit)
{
    m_bitAnfang = bit;
    RebuildBits();
}

void TBitLeiste::SetwizCaptions(const QStringList &captions)
{
    m_captions = captions.mid(0, MaxBits);
    RebuildBits();
}

void TBitLeiste::SetwizBitHeight(int height)
{
    m_bitHeight = height;
    RebuildBits();
}

QString TBitLeiste::wizParaControlName() const
{
    return m_master ? m_master->objectName() : m_masterName;
}

void TBitLeiste::SetwizParaControlName(const QString &objectName)
{
    m_masterName = objectName;
    if (isLoading()) return; // resolved in Loaded(), once the whole form exists
    QWidget *form = window();
    SetwizParaControl(form && !objectName.isEmpty() ? form->findChild<TParaClass *>(objectName)
                                                    : nullptr);
}

TParaClass *TBitLeiste::wizParaControl() const
{
    return m_master;
}

void TBitLeiste::SetwizParaControl(TParaClass *control)
{
    RemoveMsgHandlerAtSource(m_master);
    m_master = control;
    if (!control) return;
    m_masterName = control->objectName();
    control->AddNotifyWindow(WindowHandle());
    UpdateBitsFromMaster();
    hookMaster(control);
}

// The master's handlers are chained: the bar's handler calls the one it found first. The
// bar may die before its master, so the installed handler holds it weakly and then only
// passes on to the saved one.
void TBitLeiste::hookMaster(TParaClass *control)
{
    m_savedEnabledChange = control->OnEnabledChange;
    m_savedVisibleChange = control->OnVisibleChange;
    const QPointer<TBitLeiste> bar(this);
    const QPointer<TParaClass> master(control);
    control->OnEnabledChange = [bar, master, saved = m_savedEnabledChange](QObject *sender) {
        if (bar && bar->m_master == master)
            bar->MyEnabledChanged(sender);
        else if (saved)
            saved(sender);
    };
    control->OnVisibleChange = [bar, master, saved = m_savedVisibleChange](QObject *sender) {
        if (bar && bar->m_master == master)
            bar->MyVisibleChanged(sender);
        else if (saved)
            saved(sender);
    };
}

void TBitLeiste::RemoveMsgHandlerAtSource(TParaClass *control)
{
    if (!control || !m_master) return;
    control->RemoveNotifyWindow(WindowHandle());
}

void TBitLeiste::MyEnabledChanged(QObject *sender)
{
    if (m_savedEnabledChange) m_savedEnabledChange(sender);
    if (!m_master) return;
    // Inverted on purpose: the boxes edit what the (disabled) master only shows.
    const bool enabled = !masterEnabled();
    for (const TBitControl &row : m_rows)
        row.box->setEnabled(enabled);
}

void TBitLeiste::MyVisibleChanged(QObject *sender)
{
    if (m_savedVisibleChange) m_savedVisibleChange(sender);
    if (m_master) showRows();
}

// A row shows while the master shows, unless SetVisible hid its bit.
void TBitLeiste::showRows()
{
    const bool master = !m_master || !m_master->isHidden();
    for (int i = 0; i < int(m_rows.size()); ++i) {
        const bool visible = master && !m_hiddenBits.contains(m_bitAnfang + i);
        m_rows[size_t(i)].box->setVisible(visible);
        m_rows[size_t(i)].label->setVisible(visible);
    }
}

bool TBitLeiste::masterEnabled() const
{
    return m_master && m_master->GetEnabled() == pEnabled;
}

// --- rows ------------------------------------------------------------------------------------

void TBitLeiste::freeRows()
{
    for (const TBitControl &row : m_rows) {
        delete row.label;
        delete row.box;
    }
    m_rows.clear();
}

// The boxes start right of the widest "Bit n" label, at 35 pixels at the least.
int TBitLeiste::boxLeft() const
{
    const QFontMetrics fm(m_font);
    int widest = 0;
    for (const TBitControl &row : m_rows)
        widest = std::max(widest, fm.horizontalAdvance(row.label->text()));
    return std::max(35, widest + 4);
}

void TBitLeiste::RebuildBits()
{
    // A form file sets caption, first bit and height in turn: the rows are built once,
    // when it has loaded.
    if (isLoading() && !isDesigning()) return;
    freeRows();
    m_rows.resize(size_t(m_captions.size()));
    const int ppi = ScreenPixelsPerInch();
    for (int i = 0; i < int(m_rows.size()); ++i) {
        const int b = m_bitAnfang + i;
        const int y = m_bitHeight * i * ppi / 96 + 1;
        TBitControl &row = m_rows[size_t(i)];
        row.label = new QLabel(QStringLiteral("Bit ") + (b < 10 ? QStringLiteral("  ") : QString()) +
                                   QString::number(b),
                               this);
        row.label->setFont(m_font);
        row.label->move(1, y);
        row.label->adjustSize();
        row.box = new QCheckBox(m_captions.at(i), this);
        row.box->setObjectName(QStringLiteral("Bit_") + QString::number(b));
        row.box->setProperty("Tag", b);
        row.box->setFont(m_font);
        // The box keeps its own height: its text then lines up with the label's at any
        // row height.
        row.box->setGeometry(35, y - 1, std::max(0, width() - 35 - 1),
                             row.box->sizeHint().height());
        const QString hint = row.label->text() + QStringLiteral("  ") + m_captions.at(i);
        row.box->setToolTip(hint);
        row.label->setToolTip(hint);
        row.box->setAccessibleName(hint);
        QCheckBox *box = row.box;
        connect(box, &QCheckBox::clicked, this, [this, box] { CtrlOnChange(box); });
    }
    placeBoxes();
    showRows();
    if (!m_rows.empty()) {
        // The top is scaled once above and once more here; the height follows suit.
        const QCheckBox *last = m_rows.back().box;
        const int h = (last->y() + last->height()) * ppi / 96;
        setMinimumHeight(h);
        setMaximumHeight(h);
    }
    UpdateActiveColor();
    if (m_master) SetwizBitsEnabled(!masterEnabled());
    UpdateBitsFromMaster();
    updateGeometry();
}

void TBitLeiste::placeBoxes()
{
    const int left = boxLeft();
    for (const TBitControl &row : m_rows)
        row.box->setGeometry(left, row.box->y(), std::max(0, width() - left - 1), row.box->height());
}

void TBitLeiste::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeBoxes(); // the boxes stretch with the bar
}

QSize TBitLeiste::sizeHint() const
{
    int widest = 0;
    for (const TBitControl &row : m_rows)
        widest = std::max(widest, row.box->sizeHint().width());
    return QSize(std::max(30, boxLeft() + widest + 1), std::max(minimumHeight(), 30));
}

QSize TBitLeiste::minimumSizeHint() const
{
    return QSize(boxLeft() + 20, minimumHeight());
}

void TBitLeiste::UpdateBitsFromMaster()
{
    m_updating = true;
    if (m_master) {
        int v = 0;
        try {
            v = m_master->GetASInteger();
        } catch (const ConvertError &) {
            // the master has told the user; the boxes keep their state
        }
        const bool enabled = !masterEnabled();
        for (int i = 0; i < int(m_rows.size()); ++i) {
            const TBitControl &row = m_rows[size_t(i)];
            row.box->setChecked((quint32(v) & bitMask(m_bitAnfang + i)) != 0);
            row.box->setEnabled(enabled);
        }
    }
    UpdateActiveColor();
    m_updating = false;
}

void TBitLeiste::CtrlOnChange(QObject *sender)
{
    auto *box = qobject_cast<QCheckBox *>(sender);
    if (!m_updating) {
        quint32 bits = 0;
        for (int i = 0; i < int(m_rows.size()); ++i) {
            if (m_rows[size_t(i)].box->isChecked()) bits |= bitMask(m_bitAnfang + i);
        }
        if (m_master) {
            const quint32 old = quint32(BinToDec(m_master->GetText()));
            const int width = patternWidth(m_master);
            quint32 keep = 0;
            for (int j = 0; j < m_bitAnfang && j < 32; ++j)
                keep |= 1u << j;
            for (int j = std::max(0, m_bitAnfang + int(m_rows.size())); j < width; ++j)
                keep |= 1u << j;
            const quint32 value = (old & keep) | bits;
            // The bar writes once below; the master must not post the text on its own.
            const ComponentState state = m_master->componentState();
            m_master->addComponentState(csReading);
            m_master->SetText(DecToBin(value, width));
            if (m_master) m_master->setComponentState(state);
            TParaTable *table = m_master ? m_master->wizParaSource() : nullptr;
            if (table && table->Online() == omOnline) m_master->PostValue();
        }
        if (box)
            SetBitColor(rowOf(box->property("Tag").toInt()));
        else
            UpdateActiveColor();
    }
    if (box) UpdateQuellSelector(box->property("Tag").toInt());
}

int TBitLeiste::rowOf(int bit) const
{
    const int row = bit - m_bitAnfang;
    return row >= 0 && row < int(m_rows.size()) ? row : -1;
}

void TBitLeiste::SetBitColor(int row)
{
    if (row < 0 || row >= int(m_rows.size()) || !m_master || !m_master->wizParaSource()) return;
    const TBitControl &r = m_rows[size_t(row)];
    const QColor colour = r.box->isChecked()
                              ? ColorToQColor(m_master->wizParaSource()->AktivBitColor())
                              : palette().color(QPalette::WindowText);
    QPalette pal = r.label->palette();
    pal.setColor(QPalette::WindowText, colour);
    r.label->setPalette(pal);
    QPalette boxPal = r.box->palette();
    boxPal.setColor(QPalette::WindowText, colour);
    boxPal.setColor(QPalette::ButtonText, colour);
    r.box->setPalette(boxPal);
}

void TBitLeiste::UpdateActiveColor()
{
    for (int i = 0; i < int(m_rows.size()); ++i)
        SetBitColor(i);
}

void TBitLeiste::SetwizBitsEnabled(bool enabled)
{
    m_bitsEnabled = enabled;
    for (const TBitControl &row : m_rows)
        row.box->setEnabled(enabled);
}

int TBitLeiste::GetBit(int bit) const
{
    const int row = rowOf(bit);
    if (row < 0) return -1;
    return m_rows[size_t(row)].box->isChecked() ? 1 : 0;
}

void TBitLeiste::SetVisible(int bit, bool visible)
{
    const int row = rowOf(bit);
    if (row < 0) return;
    if (visible)
        m_hiddenBits.remove(bit);
    else
        m_hiddenBits.insert(bit);
    m_rows[size_t(row)].box->setVisible(visible);
    m_rows[size_t(row)].label->setVisible(visible);
}

bool TBitLeiste::SetBitFocus(int bit)
{
    const int row = rowOf(bit);
    if (row < 0) return false;
    QCheckBox *box = m_rows[size_t(row)].box;
    if (!box->isEnabled() || !box->isVisibleTo(box->window()) ||
        !(box->focusPolicy() & Qt::TabFocus))
        return false;
    box->setFocus(Qt::OtherFocusReason);
    return true;
}

void TBitLeiste::Update()
{
    update();
    UpdateBitsFromMaster();
    UpdateActiveColor();
}

// --- language, messages, the source selector --------------------------------------------------

QString TBitLeiste::GetSprachIniItemName(int row) const
{
    return objectName() + QStringLiteral("_Bit") + QString::number(m_bitAnfang + row);
}

void TBitLeiste::UpdateLanguage()
{
    TParaTable *table = m_master ? m_master->wizParaSource() : nullptr;
    if (table && !isDesigning() && !m_captions.isEmpty()) {
        for (int i = 0; i < m_captions.size(); ++i)
            m_captions[i] = wizReadString(table->LanguageFile(), table->wizIdString(),
                                          GetSprachIniItemName(i), m_captions.at(i));
    }
    RebuildBits();
}

void TBitLeiste::ParamChangeMsg(quintptr sender)
{
    if (m_master && sender == quintptr(m_master.data())) UpdateBitsFromMaster();
}

void TBitLeiste::UpdateQuellSelector(int bit)
{
    if (!m_master) return;
    const QString koordinate = m_master->GetKoordinate();
    QWidget *hit = ioframes::findDepthFirst(
        GetMainForm(this),
        [&](QWidget *w) {
            auto *input = qobject_cast<TBEinput *>(w);
            return input && input->wizBusParName() == koordinate && input->wizBusParBit() == bit;
        },
        [](QWidget *w) { return !qobject_cast<TParaClass *>(w); });
    auto *input = static_cast<TBEinput *>(hit);
    if (input && input->P_Quelle && input->P_Quelle->OnChange) input->P_Quelle->OnChange(this);
}

void TBitLeiste::Loaded()
{
    Component::Loaded();
    if (!m_master && !m_masterName.isEmpty()) SetwizParaControlName(m_masterName);
    if (isDesigning()) {
        if (m_captions.isEmpty())
            m_captions = {QStringLiteral("WizCaption 1"), QStringLiteral("WizCaption 2")};
        RebuildBits();
        return;
    }
    UpdateLanguage();
}

} // namespace drivewiz
