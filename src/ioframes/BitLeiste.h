#ifndef DRIVEWIZ_IOFRAMES_BITLEISTE_H
#define DRIVEWIZ_IOFRAMES_BITLEISTE_H

#include "drivewiz_global.h"
#include "platform/component.h"

#include <QFont>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QLabel;

namespace drivewiz {

class MessageWindow;
class TParaClass;

/// A column of check boxes over the bits of a bit-pattern parameter. The bar has no
/// parameter of its own: it follows its master, a parameter control whose text is the
/// value in binary. Ticking a box rewrites the master's binary text (bits outside the bar
/// are kept) and, online, writes it to the drive; a change of the master's value (typed,
/// set by the program, read from the drive) re-ticks the boxes through message 1025.
///
/// Row i shows bit wizBitAnfang + i: a label "Bit n" and a check box with caption i of
/// wizCaptions. Rows are wizBitHeight pixels apart at 96 pixels per inch, scaled to the
/// screen; the bar's height is fixed by its rows. A ticked row is drawn in the table's
/// AktivBitColor.
///
/// The boxes are enabled while the master is *not* enabled: the master shows the value,
/// the bar edits it. A click also tells the binary-input frame that takes its signal from
/// the clicked bit (TBEinput with this master's coordinate and bit) that its source was
/// touched, so its lamp follows.
class DRIVEWIZ_EXPORT TBitLeiste : public QWidget, public Component
{
    Q_OBJECT
    Q_PROPERTY(QFont Font READ Font WRITE SetFont)
    Q_PROPERTY(QString wizParaControl READ wizParaControlName WRITE SetwizParaControlName)
    Q_PROPERTY(int wizBitAnfang READ wizBitAnfang WRITE SetwizBitAnfang)
    Q_PROPERTY(QStringList wizCaptions READ wizCaptions WRITE SetwizCaptions)
    Q_PROPERTY(int wizBitHeight READ wizBitHeight WRITE SetwizBitHeight)

public:
    using NotifyEvent = std::function<void(QObject *sender)>;

    /// One row: its label and its check box, both owned by the bar.
    struct TBitControl
    {
        QLabel *label = nullptr;
        QCheckBox *box = nullptr;
    };

    /// Captions longer lists are cut to (bits 0..31 of a 32-bit value).
    static constexpr int MaxBits = 32;

    explicit TBitLeiste(QWidget *parent = nullptr);
    ~TBitLeiste() override;

    // --- published properties --------------------------------------------------------
    QFont Font() const { return m_font; }
    void SetFont(const QFont &font);
    TParaClass *wizParaControl() const;
    void SetwizParaControl(TParaClass *control);
    /// The master by object name, as form files give it; resolved in Loaded().
    QString wizParaControlName() const;
    void SetwizParaControlName(const QString &objectName);
    int wizBitAnfang() const { return m_bitAnfang; }
    void SetwizBitAnfang(int bit);
    QStringList wizCaptions() const { return m_captions; }
    void SetwizCaptions(const QStringList &captions);
    int wizBitHeight() const { return m_bitHeight; }
    void SetwizBitHeight(int height);
    /// Stored for the form's author; the bar itself never raises it.
    NotifyEvent OnChange;

    // --- rows ------------------------------------------------------------------------
    /// Discards all rows and builds one row a caption.
    void RebuildBits();
    const std::vector<TBitControl> &Rows() const { return m_rows; }
    /// Ticks each box from the master's value.
    void UpdateBitsFromMaster();
    /// The click handler of every box; `sender` is the box (or another object).
    void CtrlOnChange(QObject *sender);
    void SetBitColor(int row);
    void UpdateActiveColor();
    /// Enables or disables every box.
    void SetwizBitsEnabled(bool enabled);
    bool wizBitsEnabled() const { return m_bitsEnabled; }
    /// 1 when the bit's box is ticked, 0 when not, -1 for a bit outside the bar.
    int GetBit(int bit) const;
    /// Shows or hides the row of a bit (label and box); nothing for a bit outside.
    void SetVisible(int bit, bool visible);
    /// Gives the bit's box the focus; false for a bit outside or a box that cannot take it.
    bool SetBitFocus(int bit);
    /// Repaints, then follows the master and recolours.
    void Update();
    /// Captions from the language file (key GetSprachIniItemName), then RebuildBits.
    Q_INVOKABLE void UpdateLanguage();
    /// The language key of a row's caption: name + "_Bit" + bit number.
    QString GetSprachIniItemName(int row) const;
    /// Message 1025 from a parameter control: follows the master when it is the sender.
    void ParamChangeMsg(quintptr sender);
    /// Tells the binary-input frame that takes its signal from this bit of the master.
    void UpdateQuellSelector(int bit);
    /// Takes the bar's window handle off the control's notify list.
    void RemoveMsgHandlerAtSource(TParaClass *control);
    /// The handle message 1025 reaches the bar under.
    quintptr WindowHandle() const;

    void Loaded() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void MyEnabledChanged(QObject *sender);
    void MyVisibleChanged(QObject *sender);
    void hookMaster(TParaClass *control);
    void freeRows();
    int rowOf(int bit) const;
    int boxLeft() const;
    bool masterEnabled() const;
    void placeBoxes();
    void showRows();

    QFont m_font;
    QPointer<TParaClass> m_master;
    QString m_masterName;
    int m_bitAnfang = 0;
    std::vector<TBitControl> m_rows;
    QStringList m_captions;
    int m_bitHeight = 18;
    QSet<int> m_hiddenBits; // rows hidden by SetVisible stay hidden when rebuilt
    bool m_bitsEnabled = true;
    bool m_updating = false;
    NotifyEvent m_savedEnabledChange;
    NotifyEvent m_savedVisibleChange;
    MessageWindow *m_window = nullptr;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_BITLEISTE_H
