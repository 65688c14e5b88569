#ifndef DRIVEWIZ_WIZHOST_HARDWARECHOOSER_H
#define DRIVEWIZ_WIZHOST_HARDWARECHOOSER_H

#include <QGroupBox>
#include <QString>

class QComboBox;
class QLabel;

namespace drivewiz::wizhost {

class HostSession;

/// What the simulated drive reports about its hardware: device family (E50), option
/// board in the upper slot (E54) and in the lower slot (E58); an empty slot reads "---".
struct FittedHardware
{
    QString family;
    QString upper;
    QString lower;
};

/// The host window's choice of the fitted hardware: the drive family and one option
/// board. The choice goes to the simulated drive at once (E50, E54, E58), so wizards see
/// it in their values: the input frames offer the binary inputs it has, the option
/// board's terminals switch only when it is there.
class HardwareChooser : public QGroupBox
{
    Q_OBJECT

public:
    /// The drive families and option boards offered, in list order.
    static const QStringList &Families();
    static const QStringList &Boards();
    /// The hardware of a family and a board (indexes into the lists): KBQ and KBM boards
    /// sit in the lower slot, a KBW board in the upper one.
    static FittedHardware Fitted(int family, int board);

    /// Shows the drive's present hardware.
    explicit HardwareChooser(HostSession &session, QWidget *parent = nullptr);

    int family() const;
    int board() const;
    FittedHardware current() const { return Fitted(family(), board()); }
    /// Chooses, and tells the drive.
    void choose(int family, int board);
    /// Captions from the host's language file (section "DemoInputs").
    void translate();

Q_SIGNALS:
    /// The choice changed and the drive has it.
    void hardwareChanged();

private:
    void apply();
    void showDrive();

    HostSession &m_session;
    QLabel *m_lblFamily = nullptr;
    QLabel *m_lblBoard = nullptr;
    QComboBox *m_family = nullptr;
    QComboBox *m_board = nullptr;
};

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_HARDWARECHOOSER_H
