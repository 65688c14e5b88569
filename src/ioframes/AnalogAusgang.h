#ifndef DRIVEWIZ_IOFRAMES_ANALOGAUSGANG_H
#define DRIVEWIZ_IOFRAMES_ANALOGAUSGANG_H

#include "drivewiz_enums.h"
#include "platform/component.h"

#include <QFrame>
#include <QPointer>

#include <memory>

class QLabel;
class QLineEdit;

namespace Ui {
class TAnalogAus;
}

namespace drivewiz {

class TParaClass;
class TParaTable;
namespace ioframes {
class FrameTable;
class SourceListCache;
} // namespace ioframes

/// A frame that sets up one analog output of the drive: the parameter it shows (the
/// source, P_Quelle) and how the source's value maps onto 0..10 V.
///
/// The drive keeps the mapping as a factor F in percent (P_Faktor) and an offset O in
/// volts (P_Offset): output = 10 V x (x x F) / (100 x full) + O, where full is the
/// source's value at 16384 counts. Instead of F and O the user types the two source
/// values that give 10 V and 0 V (Edit10V, Edit0V); every key release converts them into
/// F and O, and a change of F or O (or of the source) writes the two values back. A
/// source that cannot be scaled hides the editor and says why in LblError.
///
/// The output's controls are bound to F40..F44 for AnalogAus1 and F50..F54 for
/// AnalogAus2; AnalogAus_inaktiv unbinds them and hides the frame. A drive without an
/// option board in the lower slot (empty "E58") has no analog outputs: the frame hides
/// itself and its wizard page.
class DRIVEWIZ_EXPORT TAnalogAus : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)
    Q_PROPERTY(drivewiz::TAnalogAusgang wizAnalogAus READ wizAnalogAus WRITE SetAnalogAusgang)
    Q_PROPERTY(QString wizParameterListe READ wizParameterListe WRITE SetParameterListe)

public:
    explicit TAnalogAus(QWidget *parent = nullptr);
    ~TAnalogAus() override;

    // --- published properties ------------------------------------------------------------
    TParaTable *wizParaSource() const;
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);
    TAnalogAusgang wizAnalogAus() const { return m_ausgang; }
    /// Binds the output's controls to the F40 (AnalogAus1) or F50 (AnalogAus2) rows, or
    /// to none; only once a table is set. The frame shows only for an active output.
    void SetAnalogAusgang(TAnalogAusgang ausgang);
    /// The parameters offered as sources: coordinates (with "2." for another axis, "*"
    /// as wildcard) separated by commas, semicolons or blanks; empty offers every
    /// parameter of a type an output can show (U16, I16, U32, I32, P64).
    QString wizParameterListe() const { return m_liste; }
    void SetParameterListe(const QString &liste);

    // --- the output model --------------------------------------------------------------------
    /// Fills the source list from wizParameterListe.
    void InitParameterCombo();
    /// Whether the editor can be used for the source in description row `record`; says
    /// why not in LblError.
    bool CheckQuelle(int record);
    /// Shows a reason in LblError in place of the editor.
    void ShowErrorLabel(const QString &text);
    /// Hides the frame and its wizard page when the drive has no analog outputs (once).
    void HideIfNoOutputs();
    /// Writes the source values for 10 V and 0 V from factor and offset.
    void UpdateCustomEdits();
    /// Converts the two typed values into factor and offset (a key release in either
    /// edit). A zero full-scale value or a text that is no number beeps and changes
    /// nothing; equal values change nothing.
    void Edit10VKeyUp(QObject *sender);
    /// The source's value at 16384 counts; 0 when it cannot be worked out.
    double GetFullScaleVal(int record) const;
    /// Reloads the captions from section "TAnalogAus" of the language file.
    void UpdateLanguage();
    void Loaded() override;

    // --- sub-controls (stable object names) ----------------------------------------------
    TParaClass *P_Quelle = nullptr;
    TParaClass *P_Offset = nullptr;
    TParaClass *P_Faktor = nullptr;
    TParaClass *P_Tau = nullptr;
    TParaClass *P_Abs = nullptr;
    TParaClass *P_R04 = nullptr;
    TParaClass *P_B17 = nullptr;
    QFrame *Panel1 = nullptr;
    QLabel *LblAnAusgang = nullptr;
    QLabel *LblAnaAus10V = nullptr;
    QLineEdit *Edit10V = nullptr;
    QLabel *LblAnaAusDim10 = nullptr;
    QLabel *LblAnaAus0V = nullptr;
    QLineEdit *Edit0V = nullptr;
    QLabel *LblAnaAusDim0 = nullptr;
    QLabel *LblError = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void bindControls();
    void hookControls();
    enum class Typed { Applied, Unchanged, Bad };
    void editLeft();
    Typed applyTyped(int record, bool beep);
    double clamped(TParaClass *control, double value) const;
    bool fitTyped(double full, double v10, double v0, double &factor, double &offset) const;
    static bool sourceValues(double full, double factor, double offset, double &v10, double &v0);
    int sourceDecimals(int record) const;
    void markEdits(bool adjusted);
    QString sourceText() const;
    int sourceRecord() const;
    void showUnits(int record);
    void updateEditsEnabled();

    std::unique_ptr<Ui::TAnalogAus> m_ui;
    std::unique_ptr<ioframes::FrameTable> m_link; // the table
    TAnalogAusgang m_ausgang = AnalogAus_inaktiv;
    QString m_liste;
    std::unique_ptr<ioframes::SourceListCache> m_sources;
    bool m_outputsChecked = false;
    bool m_noOutputs = false;
    bool m_writing = false; // factor and offset are being set from the edits
    bool m_leaving = false;
    bool m_adjusted = false; // the drive's limits changed the typed values
    QString m_shown[2];      // what the edits showed after the last conversion
    // Watchers of the frame's own controls; gone first when the frame goes.
    std::unique_ptr<QObject> m_helpers;
};

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_ANALOGAUSGANG_H
