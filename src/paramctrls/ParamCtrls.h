#ifndef DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_H
#define DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_H

#include "drivewiz_enums.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"

#include <QFrame>
#include <QList>
#include <QPointer>

#include <functional>
#include <limits>
#include <memory>

class QCheckBox;
class QKeyEvent;
class QLabel;
class QToolButton;

namespace Ui {
class TParaClass;
}

namespace drivewiz {

namespace paractl {
struct CtrlLayout;
}

class TwizComboBox;
class TwizEdit;
class TMyRadioGroup;

/// The parameter control: a small frame that shows and edits one drive parameter of a
/// parameter table. Its coordinate is the caption of `LblKoordinate`, the parameter's name
/// the caption of `LblParaName`; the input field below (or right of) the name is chosen
/// from the parameter's description: an edit with a unit label, a combo box or radio group
/// for selections, a check box for booleans, or a row of bit check boxes.
///
/// Every value passes through the input field's text: GetText()/SetText() and the typed
/// accessors (GetASInteger(), GetASFloat(), GetAuswahl(), Bit() ...) read and write it.
/// Typed values are checked when the user leaves the field; online they are written to
/// the drive at once, offline when the wizard closes with OK.
class DRIVEWIZ_EXPORT TParaClass : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(
        bool wizShowElementNameOnly READ wizShowElementNameOnly WRITE SetwizShowElementNameOnly)
    Q_PROPERTY(QString wizKoordinate READ GetKoordinate WRITE SetKoordinate)
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)
    Q_PROPERTY(drivewiz::TwizCtrlType wizControlType READ wizControlType WRITE SetwizControlType)
    Q_PROPERTY(
        drivewiz::TwizControlAlign wizControlAlign READ wizControlAlign WRITE SetwizControlAlign)
    Q_PROPERTY(int wizControlLeft READ wizControlLeft WRITE SetwizControlLeft)
    Q_PROPERTY(int wizControlWidth READ wizControlWidth WRITE SetwizControlWidth)
    Q_PROPERTY(int wizControlHeight READ wizControlHeight WRITE SetwizControlHeight)
    Q_PROPERTY(bool wizVisible READ wizVisible WRITE SetwizVisible)
    Q_PROPERTY(drivewiz::tParaEnabled wizEnabled READ wizEnabled WRITE SetwizEnabled)
    Q_PROPERTY(QString Comment1 READ Comment1 WRITE SetComment1)
    Q_PROPERTY(QString Comment2 READ Comment2 WRITE SetComment2)
    Q_PROPERTY(drivewiz::TwizToolInvisible wizToolInvisible READ wizToolInvisible WRITE
                   SetwizToolInvisible)
    Q_PROPERTY(bool wizNoAutomNameChange READ wizNoAutomNameChange WRITE SetwizNoAutomNameChange)
    Q_PROPERTY(QString InputFeldHint READ InputFeldHint WRITE SetInputFeldHint)

public:
    using NotifyEvent = std::function<void(QObject *sender)>;
    using KeyEvent = std::function<void(QObject *sender, int &key, Qt::KeyboardModifiers)>;
    using KeyPressEvent = std::function<void(QObject *sender, QChar &key)>;

    /// Value of GetAuswahl() when no entry is selected.
    static constexpr int NoSelection = -2147483647;

    explicit TParaClass(QWidget *parent = nullptr);
    ~TParaClass() override;

    // --- published properties ------------------------------------------------------------
    bool wizShowElementNameOnly() const { return m_showElementNameOnly; }
    void SetwizShowElementNameOnly(bool on);
    QString GetKoordinate() const;
    virtual void SetKoordinate(const QString &koordinate);
    TParaTable *wizParaSource() const { return m_table; }
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);
    TwizCtrlType wizControlType() const { return m_controlType; }
    void SetwizControlType(TwizCtrlType type);
    TwizControlAlign wizControlAlign() const { return m_controlAlign; }
    void SetwizControlAlign(TwizControlAlign align);
    int wizControlLeft() const { return m_controlLeft; }
    void SetwizControlLeft(int left);
    int wizControlWidth() const { return m_controlWidth; }
    void SetwizControlWidth(int width);
    int wizControlHeight() const { return m_controlHeight; }
    void SetwizControlHeight(int height);
    bool wizVisible() const { return m_wizVisible; }
    void SetwizVisible(bool visible);
    tParaEnabled wizEnabled() const { return m_wizEnabled; }
    void SetwizEnabled(tParaEnabled level);
    QString Comment1() const { return m_comment1; }
    void SetComment1(const QString &text) { m_comment1 = text; }
    QString Comment2() const { return m_comment2; }
    void SetComment2(const QString &text) { m_comment2 = text; }
    TwizToolInvisible wizToolInvisible() const { return m_toolInvisible; }
    void SetwizToolInvisible(TwizToolInvisible mode);
    bool wizNoAutomNameChange() const { return m_noAutomNameChange; }
    void SetwizNoAutomNameChange(bool on) { m_noAutomNameChange = on; }
    QString InputFeldHint() const { return m_inputFeldHint; }
    void SetInputFeldHint(const QString &hint);

    // --- events --------------------------------------------------------------------------
    // Each event property holds one handler, as on the drive tool's forms; the signals
    // below are emitted beside them for any number of listeners.
    NotifyEvent AfterCreate;
    KeyEvent OnKeyDown;
    KeyEvent OnKeyUp;
    KeyPressEvent OnKeyPress;
    NotifyEvent OnEnter;
    NotifyEvent OnExit;
    /// Runs first when the field is left, before the checks and the posting: a frame that
    /// turns typed text into an entry of its list (signal sources) does it here, so that
    /// what is posted is the corrected text, once. Its SetText posts nothing itself.
    NotifyEvent BeforeExit;
    NotifyEvent OnEnabledChange;
    NotifyEvent OnChange;
    NotifyEvent OnVisibleChange;
    NotifyEvent OnClick;

    // --- what the control holds --------------------------------------------------------------
    quint32 Q7adr() const { return m_q7adr; }
    void SetQ7Adresse(const QString &hex);
    QString Achse() const { return m_achse; }
    void SetAchse(const QString &axis);
    int GetwriteLevel() const { return m_writeLevel; }
    QString DatenTyp() const { return m_dataType; }
    int Art() const { return m_kind; }
    bool IsNumeric() const { return m_numeric; }
    bool IsInfo() const { return m_info; }
    int Nachkommastellen() const { return m_decimals; }
    int MaxTextLength() const { return m_maxTextLength; }
    QString DefaultValue() const { return m_default; }
    tParaEnabled AppliedEnableLevel() const { return m_enableLevel; }
    QString IndirectUnitSource() const { return m_indirectUnit; }
    QLabel *koordinateLabel() const { return m_lblKoordinate; }
    QLabel *paraNameLabel() const { return m_lblParaName; }
    QLabel *unitLabel() const { return m_unit; }
    QToolButton *infoButton() const { return m_infoButton; }
    const QList<QCheckBox *> &bitCheckBoxes() const { return m_bitBoxes; }
    QWidget *GetEditControl() const { return m_input; }
    /// The input field's font for edits and combo boxes, else the control's own.
    QFont GetCtrlFont() const;
    const QList<QPointer<TParaClass>> &SameParameterControls() const { return m_same; }
    /// Window handles that get message 1025 (wParam: this control) on every change.
    void AddNotifyWindow(quintptr handle);
    void RemoveNotifyWindow(quintptr handle);

    // --- the value model ---------------------------------------------------------------------
    QString GetText() const;
    void SetText(const QString &text);
    /// The value last set by the program (not typed): what a refused write puts back.
    QString PreviousText() const { return m_previousText; }
    double GetASFloat() const;
    void SetASFloat(double value);
    int GetASInteger() const;
    void SetASInteger(int value);
    int GetASNative() const;
    void SetAsNative(int value);
    int GetAuswahl() const;
    void SetAuswahl(int key);
    int GetAuswahlCount() const;
    bool Bit(int n) const;
    void SetBit(int n, bool on);
    bool IsDefault() const;
    double GetOGW() const { return m_ogw; }
    double GetUGW() const { return m_ugw; }
    void SetOGW(double value);
    QString GetWertebereich(int record) const;
    QString GetWertebereichString(const QString &ugw, const QString &defaultValue,
                                  const QString &ogw, const QString &unit) const;
    QString GetEinheit() const;
    static bool IsIndirekteEinheit(const QString &unit);
    QString GetLblDimCaption(int record, bool &resolved);
    void UpdateEinheitString(int record);
    void UpdateEinheit();
    QString GetParamName() const;
    void SetParamName(const QString &name);

    // --- construction ------------------------------------------------------------------------
    void Loaded() override;
    virtual void RebuildParaControl();
    void FreeCustomCtrls();
    void InitAuswahlListe(bool flag = true);
    QString InputKoordinate(const QString &defaultValue);
    /// The frame's height: below the lowest part (input field, bit numbers) plus 3.
    int CalcHeight() const;
    /// Places labels and fields from their fonts and texts (the positions of the drive
    /// tool's frame are the minimums) and makes the frame as wide as its texts need.
    void SetEditCtrlPosition();
    /// What the texts and fields need: the name in full, the input field wide enough for
    /// its value, the unit, the bit boxes.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;
    void FontChanged();

    // --- editing -------------------------------------------------------------------------------
    void PostValue();
    void StoreInParaTable();
    void RefreshValue();
    void BroadcastToSameParams();
    void SucheGleicheParameter();
    void RefreshVisible();
    void MyOnChange(QObject *sender = nullptr);
    void MyEnter(QObject *sender);
    void MyExit(QObject *sender);
    /// A key went down in the input field: F2 posts the value, F6 reloads it; then
    /// OnKeyDown. A handler swallows the key by setting it to 0. Tab and Shift+Tab are
    /// the form's navigation and never arrive here, nor at MyKeyPress and MyKeyUp.
    virtual void MyKeyDown(QObject *sender, int &key, Qt::KeyboardModifiers modifiers);
    /// A character was typed: online, Enter posts; numeric fields take only digits, sign
    /// and decimal separator; a full text field takes nothing more; then OnKeyPress. A
    /// null character swallows the key; another character is typed instead.
    virtual void MyKeyPress(QObject *sender, QChar &key);
    /// A key came up: a numeric field that no longer holds a number takes back the last
    /// change; then OnKeyUp.
    virtual void MyKeyUp(QObject *sender, int &key, Qt::KeyboardModifiers modifiers);
    /// A bit check box was clicked: the value is rebuilt from all boxes and posted.
    virtual void MyCheckBoxOnClick(QObject *sender);
    bool Focused() const;
    void SetEnabled(tParaEnabled level);
    tParaEnabled GetInitialEnableLevel() const;
    tParaEnabled GetEnabled() const { return m_enableLevel; }
    void SetCtrlColor();
    /// Shows the parameter's help in the table's help view: coordinate and name, value
    /// range (limits as the limit message gives them, with the unit the control shows) and
    /// default value in the wizard's language, then the host's help text.
    void ShowSelfRTFHelpText();
    /// The library's part of the help, as rich text (HTML).
    QString HelpSummary() const;
    /// The limits as the limit message gives them: "0 % .. 300 %"; empty for a parameter
    /// without limits or that is no number.
    QString LimitText() const;
    /// What a screen reader says after the name: "Wertebereich: 0 ms .. 100 ms", for a
    /// text its maximum length, else the unit.
    QString RangeText() const;
    /// Translates hints, help and accessible texts again from the common strings; runs
    /// on every QEvent::LanguageChange. Values and names (from the description file) stay.
    virtual void UpdateLanguage();
    /// The host asks to hide the control: show, disable or hide it per wizToolInvisible.
    void SetToolHidden(bool hidden);

Q_SIGNALS:
    /// The shown value changed (typed, chosen, set by the program or read from the
    /// drive); emitted after OnChange with the new text.
    void valueChanged(const QString &text);
    /// The enable level was applied (SetEnabled); emitted after OnEnabledChange.
    void enabledChanged(drivewiz::tParaEnabled level);
    /// The control was shown or hidden by its wizVisible or its parameter's presence;
    /// emitted after OnVisibleChange.
    void visibleChanged(bool visible);
    /// The input field took the focus; emitted after OnEnter.
    void entered();
    /// The input field was left (checked and, online, posted); emitted after OnExit.
    void left();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void readRecord(int record);
    void buildInput(int record);
    void buildEdit(int record);
    void buildCombo(int record, bool editable);
    void buildRadioGroup();
    void buildCheckBox();
    void buildBitBoxes();
    void buildInfoButton();
    void connectInput();
    void showBuiltWidgets();
    void takeOverPartnerText();
    void buildForCoordinate();
    void fireVisibleChange();
    void applyHints(int record);
    void leaveSameParameterLists();
    bool takeAutomaticName();
    void designTimeLoaded();
    bool mayPostFromProgram() const;
    bool setComboText(const QString &text);
    void setRadioText(const QString &text);
    void setEditText(const QString &text);
    bool keyPressed(QObject *watched, QKeyEvent *event);
    paractl::CtrlLayout computeLayout(int frameWidth) const;
    void fitInput();
    void fillSelectionList();
    void myInfoButtonClick();
    void updateInfoButton();
    void validateNumber();
    void setInputEnabled(bool enabled);
    int recordRow();
    void registerAddress(quint32 address);
    void registerKoordinate(const QString &before);

    std::unique_ptr<Ui::TParaClass> m_ui;
    QLabel *m_lblKoordinate = nullptr;
    QLabel *m_lblParaName = nullptr;
    QWidget *m_input = nullptr;
    QLabel *m_unit = nullptr;
    QToolButton *m_infoButton = nullptr;
    QList<QCheckBox *> m_bitBoxes;
    QList<QLabel *> m_bitLabels;
    QPointer<TParaTable> m_table;
    QString m_tableName;

    bool m_showElementNameOnly = false;
    TwizCtrlType m_controlType = wctDefault;
    TwizControlAlign m_controlAlign = caBottom;
    int m_controlLeft = 0;
    int m_controlWidth = 121;
    int m_controlHeight = 0;
    bool m_wizVisible = true;
    tParaEnabled m_wizEnabled = pEnabled;
    QString m_comment1;
    QString m_comment2;
    TwizToolInvisible m_toolInvisible = tiShow;
    bool m_noAutomNameChange = false;
    QString m_inputFeldHint;

    QString m_dataType;
    quint32 m_q7adr = 0;
    QString m_achse = QStringLiteral("0");
    double m_ugw = -std::numeric_limits<double>::infinity();
    double m_ogw = -std::numeric_limits<double>::infinity();
    bool m_numeric = false;
    bool m_info = false;
    int m_decimals = 0;
    int m_maxTextLength = 0;
    int m_writeLevel = 0;
    QString m_default;
    tParaEnabled m_enableLevel = pEnabled;
    QString m_indirectUnit;
    int m_kind = 0;
    QString m_entryText;
    QString m_previousText;
    QList<QPointer<TParaClass>> m_same;
    QList<quintptr> m_notify;
    bool m_fromMirror = false;
    bool m_building = false;
    bool m_closingUp = false;
    bool m_placing = false;
    bool m_exiting = false; // MyExit corrects a value and writes it itself
};

/// The physical value that corresponds to 16384 counts of a parameter's internal value,
/// from its "Skalierung BUS" text ("4096 = 3000 rpm" gives 12000) or from the drive's
/// reference speed (scaling 3) or rated torque (scaling 7). Raises ConvertError for a
/// text that is no number.
DRIVEWIZ_EXPORT double GetValueAt16384LSB(TParaTable *table, int record);
/// The option board in the lower slot (the value of "E58"), "???" when unknown; without a
/// table `current` is returned.
DRIVEWIZ_EXPORT QString GetOptionUnten(TParaTable *table, const QString &current = QString());
/// The first parameter control of a coordinate below a container, depth first.
DRIVEWIZ_EXPORT TParaClass *FindMyParam(QWidget *container, const QString &koordinate);

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMCTRLS_PARAMCTRLS_H
