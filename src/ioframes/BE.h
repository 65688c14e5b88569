#ifndef DRIVEWIZ_IOFRAMES_BE_H
#define DRIVEWIZ_IOFRAMES_BE_H

#include "drivewiz_enums.h"
#include "platform/colors.h"
#include "platform/component.h"

#include <QFrame>
#include <QList>
#include <QPointer>

#include <functional>
#include <memory>

class QCheckBox;
class QLabel;

namespace Ui {
class TInput;
}

namespace drivewiz {

class TAnalogEin;
class TBitLeiste;
class TParaClass;
class TParaTable;
class TwizComboBox;

/// One row that shows where a drive function (enable, quick stop, limit switch ...) takes
/// its signal from: the source parameter P_Quelle (a selection: fixed 0 V, fixed 24 V, a
/// fieldbus bit, or a binary or analog input, plain or inverted), the check box
/// CheckBox1 that switches the signal off (source wizNoCareAuswahl) and on again, and
/// the arrow ImgArrow that leads to where the signal comes from.
///
/// Binary sources are encoded as the index of the selection: 0 fixed 0 V, 1 fixed 24 V,
/// 2 bit wizBusParBit of wizBusParName, 2k + 1 binary input k, 2k + 2 input k inverted.
///
/// References to other components (table, analog frame) are object names when set from
/// a form file, resolved in Loaded(). Unknown or missing parameters never raise a
/// message: the row hides what it cannot show.
class DRIVEWIZ_EXPORT TInput : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)
    Q_PROPERTY(QString wizKoordinate READ wizKoordinate WRITE SetwizKoordinate)
    Q_PROPERTY(QString wizAnzeigeParName READ wizAnzeigeParName WRITE SetwizAnzeigeParName)
    Q_PROPERTY(QString wizBusParName READ wizBusParName WRITE SetwizBusParName)
    Q_PROPERTY(int wizControlLeft READ wizControlLeft WRITE SetwizControlLeft)
    Q_PROPERTY(int wizControlWidth READ wizControlWidth WRITE SetwizControlWidth)
    Q_PROPERTY(int wizParamWidth READ wizParamWidth WRITE SetwizParamWidth)
    Q_PROPERTY(int wizNoCareAuswahl READ wizNoCareAuswahl WRITE SetwizNoCareAuswahl)
    Q_PROPERTY(bool SuppressInInutViewer READ SuppressInInutViewer WRITE SetSuppressInInutViewer)

public:
    using NotifyEvent = std::function<void(QObject *sender)>;

    explicit TInput(QWidget *parent = nullptr);
    ~TInput() override;

    // --- published properties --------------------------------------------------------
    TParaTable *wizParaSource() const;
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);
    QString wizKoordinate() const;
    virtual void SetwizKoordinate(const QString &koordinate);
    QString wizAnzeigeParName() const { return m_anzeigeParName; }
    virtual void SetwizAnzeigeParName(const QString &koordinate);
    QString wizBusParName() const { return m_busParName; }
    void SetwizBusParName(const QString &koordinate);
    int wizControlLeft() const { return m_controlLeft; }
    void SetwizControlLeft(int left);
    int wizControlWidth() const { return m_controlWidth; }
    void SetwizControlWidth(int width);
    /// Width of the source control's frame; 0 lets it end behind its input field.
    int wizParamWidth() const { return m_paramWidth; }
    void SetwizParamWidth(int width);
    int wizNoCareAuswahl() const { return m_noCareAuswahl; }
    void SetwizNoCareAuswahl(int selection);
    bool SuppressInInutViewer() const { return m_suppressInViewer; }
    void SetSuppressInInutViewer(bool on) { m_suppressInViewer = on; }
    /// Raised after every change of the source.
    NotifyEvent OnChange;

    virtual TInputKind Kind() const { return ikNone; }

    // --- sub-components ----------------------------------------------------------------
    TParaClass *P_Quelle = nullptr;
    QCheckBox *CheckBox1 = nullptr;
    QLabel *ImgArrow = nullptr;

    /// The source's selection index (its key), -1 when there is none.
    int SourceIndex() const;
    /// The terminal behind the source ("Binäreingang BE1 / Klemme X100 Pin 11"), or empty.
    virtual QString GetKlemmeninfo() const;
    /// The selection saved when the signal was switched off.
    int SavedAuswahl() const { return m_savedAuswahl; }

    // --- handlers ------------------------------------------------------------------------
    void CheckBox1Click();
    void P_QuelleChange(QObject *sender);
    void P_QuelleEnabledChange(QObject *sender);
    void P_QuelleVisibleChange(QObject *sender);
    /// Double click: as a click on the arrow.
    void FrameDblClick();
    /// A click on the arrow (or Ctrl+Right in the source field): go to the signal's origin.
    virtual void ArrowClick() {}
    /// Runs after every change of the source (sender: what changed it).
    virtual void InputOnChange(QObject *sender);
    /// Places the check box, the source control, the lamp and the arrow.
    virtual void UpdateControlsPos();
    /// The captions and hints from the language file (section "TInput").
    Q_INVOKABLE virtual void UpdateLanguage();

    void Loaded() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// The source control's left edge that shows the whole parameter name.
    int NeededControlLeft() const;

Q_SIGNALS:
    /// After every change of the source.
    void changed();

protected:
    /// The source's list is about to open; fills it.
    virtual void SourceDropDown();
    /// Right edge of what sits right of the source field (the lamp), for the arrow.
    virtual int rightOfControl() const;
    /// The bus link (wizBusParName, wizBusParBit) is about to change.
    virtual void releaseBusLink() {}
    /// Right edge of the source field as shown: a choice may widen it past wizControlWidth.
    int fieldRight() const;
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool runTime() const;
    /// Builds the source field afresh (after the table came).
    void rebuildSource();
    /// The main form, searched depth first for a component of type T matching `pred`.
    template <class T, class Pred> T *findOnForm(const Pred &pred) const;

    QString m_anzeigeParName;
    QString m_busParName;

private:
    void hookSourceCombo();
    void sourceKeyDown(int &key, Qt::KeyboardModifiers modifiers);

    std::unique_ptr<Ui::TInput> m_ui;
    QString m_tableName;
    int m_controlLeft = 190;
    int m_controlWidth = 110;
    int m_paramWidth = 0;
    int m_noCareAuswahl = 0;
    int m_savedAuswahl = 0;
    bool m_suppressInViewer = false;
    QPointer<QObject> m_hookedCombo; // compared while it dies: no downcast
    mutable QString m_measuredName;
    mutable int m_measuredWidth = 0;
    int m_laidOutFieldRight = -1;
};

/// A binary signal input: adds a status lamp that shows the signal's level (offline from
/// the source, online from the display parameter wizAnzeigeParName), the terminal of the
/// input as the source field's hint, the pruning of inputs that the fitted hardware lacks
/// (from E50, E54 and E58) and the link to the bit bar that edits bit wizBusParBit of
/// wizBusParName.
class DRIVEWIZ_EXPORT TBEinput : public TInput
{
    Q_OBJECT
    Q_PROPERTY(int wizBusParBit READ wizBusParBit WRITE SetwizBusParBit)

public:
    explicit TBEinput(QWidget *parent = nullptr);
    ~TBEinput() override;

    TInputKind Kind() const override { return ikBE; }
    int wizBusParBit() const { return m_busParBit; }
    void SetwizBusParBit(int bit);
    void SetwizKoordinate(const QString &koordinate) override;
    void SetwizAnzeigeParName(const QString &koordinate) override;

    /// The lamp, "StatusPanel_" + name; its colour is LampColor().
    QFrame *StatusPanel() const { return m_lamp; }
    TColor LampColor() const { return m_lampColor; }
    /// The invisible control of the display parameter, "InvisAnzeigePar_" + name (run
    /// time only).
    TParaClass *InvisAnzeigePar() const;
    /// The option board the pruning last saw ("?" until then).
    QString RememberedOptionBoard() const { return m_optionBoard; }
    /// Bit bars on the form whose master is wizBusParName.
    const QList<QPointer<TBitLeiste>> &BoundBitBars() const { return m_bars; }
    /// The bit bar that has bit wizBusParBit of wizBusParName, or none.
    TBitLeiste *FindBitBar() const;

    QString GetKlemmeninfo() const override;
    void InputOnChange(QObject *sender) override;
    /// Removes the inputs the fitted hardware lacks from the source's list.
    void ElimAuswahlen();
    void ArrowClick() override;
    /// A click on the lamp: the display parameter's help.
    void StatusPanelClick();
    void UpdateControlsPos() override;
    void Loaded() override;

protected:
    void SourceDropDown() override;
    int rightOfControl() const override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void releaseBusLink() override;

private:
    void createDisplayControl();
    void updateBarRows();
    void updateLamp();
    void setLamp(bool shown, TColor colour);
    void collectBars();
    TBitLeiste *barWithBit() const;
    void askIncrement(const QString &before, const QString &after);

    int m_busParBit = 0;
    QFrame *m_lamp = nullptr;
    TColor m_lampColor = clBtnFace;
    QPointer<TParaClass> m_display;
    QString m_optionBoard = QStringLiteral("?");
    int m_prunedCount = -1;
    QList<QPointer<TBitLeiste>> m_bars;
};

/// An analog signal input: the source chooses an analog input (1 to 3) or a parameter
/// (4), and the analog input frame wizAE shows the chosen path.
class DRIVEWIZ_EXPORT TAEinput : public TInput
{
    Q_OBJECT
    Q_PROPERTY(QString wizAE READ wizAEName WRITE SetwizAEName)
    Q_PROPERTY(QString wizParFaktor READ wizParFaktor WRITE SetwizParFaktor)
    Q_PROPERTY(QString wizFaktorChar READ wizFaktorChar WRITE SetwizFaktorChar)
    Q_PROPERTY(
        QString wizQuellAnzeigParName READ wizQuellAnzeigParName WRITE SetwizQuellAnzeigParName)

public:
    explicit TAEinput(QWidget *parent = nullptr);
    ~TAEinput() override;

    TInputKind Kind() const override { return ikAE; }
    TAnalogEin *wizAE() const;
    void SetwizAE(TAnalogEin *frame);
    QString wizAEName() const;
    void SetwizAEName(const QString &objectName);
    QString wizParFaktor() const { return m_parFaktor; }
    void SetwizParFaktor(const QString &text);
    QString wizFaktorChar() const { return m_faktorChar; }
    void SetwizFaktorChar(const QString &text);
    QString wizQuellAnzeigParName() const { return m_quellAnzeigParName; }
    void SetwizQuellAnzeigParName(const QString &koordinate);
    /// Raised when the source field is entered.
    NotifyEvent OnEnter;

    QString GetKlemmeninfo() const override;
    void InputOnChange(QObject *sender) override;
    void ArrowClick() override;
    void Loaded() override;

private:
    void updateFrame();

    QPointer<TAnalogEin> m_frame;
    QString m_frameName;
    QString m_parFaktor;
    QString m_faktorChar = QStringLiteral("x");
    QString m_quellAnzeigParName;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_BE_H
