#ifndef DRIVEWIZ_IOFRAMES_DIGITALAUSGANG_H
#define DRIVEWIZ_IOFRAMES_DIGITALAUSGANG_H

#include "drivewiz_global.h"
#include "platform/component.h"

#include <QFrame>
#include <QList>
#include <QPointer>

#include <memory>

class QLabel;

namespace Ui {
class TDigitalAus;
}

namespace drivewiz {

class TParaClass;
class TParaTable;
namespace ioframes {
class FrameTable;
class SourceListCache;
} // namespace ioframes

/// A frame that gives each binary output of the drive its signal source: any parameter
/// with a 0/1 value range. BA1 and BA2 on the drive's terminal X101 are always shown;
/// BA3 to BA10 of an option board, with a picture of the board's terminal, only when the
/// drive reports that board (HideMissingOutputs: drive family "E50", upper board "E54"
/// on a ZRD drive, lower board "E58" on a VKP drive).
///
/// The source controls P_F61 to P_F70 offer the parameters of wizParameterListe and
/// always "E17" and "E18"; leaving one puts the chosen parameter's entry in its field
/// (CheckAchse).
class DRIVEWIZ_EXPORT TDigitalAus : public QFrame, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString wizParaSource READ wizParaSourceName WRITE SetwizParaSourceName)
    Q_PROPERTY(QString wizParameterListe READ wizParameterListe WRITE SetParameterListe)

public:
    explicit TDigitalAus(QWidget *parent = nullptr);
    ~TDigitalAus() override;

    TParaTable *wizParaSource() const;
    void SetwizParaSource(TParaTable *table);
    QString wizParaSourceName() const;
    void SetwizParaSourceName(const QString &objectName);
    /// The parameters offered as sources: coordinates (with "2." for another axis, "*"
    /// as wildcard) separated by commas, semicolons or blanks; empty offers every
    /// parameter of type B, U8 or I8 whose value range lies within 0..1.
    QString wizParameterListe() const { return m_liste; }
    void SetParameterListe(const QString &liste);

    /// Fills each source control's list from a list text ("E17" and "E18" always).
    void InitParameterCombo(const QString &liste, TParaTable *table, QWidget *parent);
    /// Shows the option board's outputs and picture for the fitted hardware, once.
    void HideMissingOutputs();
    /// The exit handler of every source control.
    void P_F61Exit(QObject *sender);
    /// Reloads the captions from section "TDigitalAus" of the language file.
    void UpdateLanguage();
    void Loaded() override;

    /// The ten source controls, BA1 first.
    QList<TParaClass *> SourceControls() const;

    // --- sub-controls (stable object names) ----------------------------------------------
    TParaClass *P_F61 = nullptr;
    TParaClass *P_F62 = nullptr;
    TParaClass *P_F63 = nullptr;
    TParaClass *P_F64 = nullptr;
    TParaClass *P_F65 = nullptr;
    TParaClass *P_F66 = nullptr;
    TParaClass *P_F67 = nullptr;
    TParaClass *P_F68 = nullptr;
    TParaClass *P_F69 = nullptr;
    TParaClass *P_F70 = nullptr;
    QLabel *LblBA1 = nullptr;
    QLabel *LblBA2 = nullptr;
    QLabel *LblBA3 = nullptr;
    QLabel *LblBA10 = nullptr;
    QLabel *LblX100 = nullptr;
    QLabel *LblX103_1 = nullptr;
    QLabel *LblX103_2 = nullptr;
    QLabel *LblOption = nullptr;
    QFrame *Bevel_ExtBAs = nullptr;
    QLabel *Image1 = nullptr;
    QLabel *Img_BA_KBQ7700 = nullptr;
    QLabel *Img_BA_KBQ7701_1 = nullptr;
    QLabel *Img_BA_KBW7700 = nullptr;
    QLabel *Img_BA_KBQ7701_2 = nullptr;
    QLabel *LblInfoOben = nullptr;

protected:
    void changeEvent(QEvent *event) override;

private:
    // What the fitted board shows: its picture(s), terminal names and name.
    struct Board
    {
        QLabel *picture = nullptr; // none: the drive has no option-board outputs
        QLabel *second = nullptr;
        QString terminal1;
        QString terminal2;
        QString option;
    };

    void hideAll();
    void applyBoard();
    void hookControls();

    std::unique_ptr<Ui::TDigitalAus> m_ui;
    std::unique_ptr<ioframes::FrameTable> m_link; // the table
    std::unique_ptr<ioframes::SourceListCache> m_sources;
    QString m_liste;
    Board m_board;
    bool m_outputsShown = false; // HideMissingOutputs ran
    // Watchers of the frame's own controls; gone first when the frame goes.
    std::unique_ptr<QObject> m_helpers;
};

/// The exit check of a source control (sender): a text naming a parameter of the table
/// becomes that parameter's entry, "axis.coordinate: name" (the axis only for another
/// axis than the table's current one); a text naming none is reported with
/// s_ParamInvalid and the control's previous value comes back; an empty text too.
DRIVEWIZ_EXPORT void CheckAchse(QObject *sender);

} // namespace drivewiz

#endif // DRIVEWIZ_IOFRAMES_DIGITALAUSGANG_H
