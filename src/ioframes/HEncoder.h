#ifndef DRIVEWIZ_IOFRAMES_HENCODER_H
#define DRIVEWIZ_IOFRAMES_HENCODER_H

#include "drivewiz_enums.h"
#include "paramctrls/ParamCtrls.h"
#include "platform/component.h"

#include <QFrame>
#include <QPointer>

#include <memory>

class QLabel;
class QTabWidget;

namespace Ui {
class TEncoderFrame;
}

namespace drivewiz {

class TParaTable;
namespace ioframes {
class FrameTable;
}

/// A frame that sets up an encoder connection of the drive: one page a connection (tsBE:
/// encoder on the binary inputs BE3/BE4, tsX4, tsX120, tsX140) and tsNone, each with the
/// parameter controls of that connection. The controls that only some encoder kinds use
/// show and hide with the connection's function (its page's first parameter).
///
/// The page follows wizControlParam, a selection parameter that chooses the connection
/// (0: the motor encoder of "B26", 1: BE, 2: X4, 3: X140, 4 and 5: X120). From the page
/// and its selections the frame works out the encoder type, the line count and the
/// resolution in increments a revolution, shown under the pages as
/// "<resolution> Ink / Encoder-Umdrehung".
class DRIVEWIZ_EXPORT TEncoderFrame : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)
    Q_PROPERTY(QString wizControlParam READ wizControlParamName WRITE SetwizControlParamName)

public:
    explicit TEncoderFrame(QWidget *parent = nullptr);
    ~TEncoderFrame() override;

    // --- published properties ------------------------------------------------------------
    TParaTable *wizParaSource() const;
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);
    /// The connection selector: the frame takes over its change event (OnChange) and
    /// calls the handler it had from its own.
    TParaClass *wizControlParam() const { return m_control; }
    void SetwizControlParam(TParaClass *control);
    QString wizControlParamName() const;
    void SetwizControlParamName(const QString &objectName);

    // --- pages and what they give -----------------------------------------------------------
    /// The active page (tsBE, tsX4, tsX120, tsX140 or tsNone).
    QWidget *GetwizEncoder() const;
    void SetwizEncoder(QWidget *page);
    TEncoderType GetEncoderType() const;
    /// The control holding the line count: P_H41, P_H01 or P_H121 on their pages.
    TParaClass *GetEncIncCtrl() const;
    /// The line count: the control's value, 16384 on tsX140, else 0.
    int GetEncStrichzahl() const;
    /// Writes the line count into its control, where the page has one.
    void SetEncResolution(int lines);
    /// Increments a revolution: the line count, for an SSI input times 8 with 25 data
    /// bits and times 4 otherwise.
    int GetEncResolution() const;
    /// The change handler of wizControlParam: chooses the page (an unknown index beeps),
    /// runs the previous handler, then binds P_H126 to "H130" and P_H06 to "H06" where
    /// the table has them ("H126", "H10" otherwise).
    void ControlParamChange(QObject *sender);
    /// Shows the page of the motor encoder ("B26" on the table's current axis).
    void GotoMotorEncoder();
    /// Shows and hides the controls of every page for its connection's function.
    void UpdateVisibility();
    /// The page labels from section "TEncoderFrame" of the language file; the option
    /// board on X120 from "E58".
    void UpdateLanguage();
    void Loaded() override;

    // --- sub-controls (stable object names) ----------------------------------------------
    QTabWidget *PageCtrl = nullptr;
    QWidget *tsBE = nullptr;
    QWidget *tsX4 = nullptr;
    QWidget *tsX120 = nullptr;
    QWidget *tsX140 = nullptr;
    QWidget *tsNone = nullptr;
    QLabel *LblBE = nullptr;
    QLabel *LblBEencoder = nullptr;
    QLabel *LblX4 = nullptr;
    QLabel *LblX4encoder = nullptr;
    QLabel *LblX120 = nullptr;
    QLabel *LblX120Encoder = nullptr;
    QLabel *LblX140 = nullptr;
    QLabel *LblX140encoder = nullptr;
    QLabel *LblAufloesung = nullptr;
    QLabel *LblResolution = nullptr;
    TParaClass *P_H40 = nullptr;
    TParaClass *P_H41 = nullptr;
    TParaClass *P_H42 = nullptr;
    TParaClass *P_H00 = nullptr;
    TParaClass *P_H01 = nullptr;
    TParaClass *P_H02 = nullptr;
    TParaClass *P_H05 = nullptr;
    TParaClass *P_H06 = nullptr;
    TParaClass *P_H120 = nullptr;
    TParaClass *P_H121 = nullptr;
    TParaClass *P_H122 = nullptr;
    TParaClass *P_H125 = nullptr;
    TParaClass *P_H126 = nullptr;
    TParaClass *P_H140 = nullptr;
    TParaClass *P_H142 = nullptr;
    TParaClass *P_H148 = nullptr;
    TParaClass *P_H149 = nullptr;

Q_SIGNALS:
    /// The page, the encoder type or the resolution changed (by the selector, a function,
    /// a line count or the SSI data bits).
    void encoderChanged(drivewiz::TEncoderType type, int resolution);

protected:
    void changeEvent(QEvent *event) override;

private:
    QList<TParaClass *> controls() const;
    void hookControls();
    void choosePage(bool beep);
    void bindAlternatives();
    void updateResolution();

    std::unique_ptr<Ui::TEncoderFrame> m_ui;
    std::unique_ptr<ioframes::FrameTable> m_link; // the table
    QPointer<TParaClass> m_control;
    QString m_controlName;
    TParaClass::NotifyEvent m_previous; // the selector's change handler before ours
    struct Shown
    {
        const QWidget *page = nullptr;
        TEncoderType type = ttnone;
        int resolution = -1;
    } m_shown; // what encoderChanged last told
    // Watchers of the frame's own controls; gone first when the frame goes.
    std::unique_ptr<QObject> m_helpers;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_HENCODER_H
