#include "HardwareChooser.h"

#include "HostSession.h"

#include "lang/wizSprache.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>

namespace drivewiz::wizhost {

namespace {

const QString kEmptySlot = QStringLiteral("---");

QString text(HostSession &session, const char *key, const QString &fallback)
{
    return wizReadString(session.languageFile(), QStringLiteral("DemoInputs"), QLatin1String(key),
                         fallback);
}

} // namespace

const QStringList &HardwareChooser::Families()
{
    static const QStringList list = {QStringLiteral("VKP 4102"), QStringLiteral("ZRD 2204")};
    return list;
}

const QStringList &HardwareChooser::Boards()
{
    static const QStringList list = {kEmptySlot, QStringLiteral("KBQ 7700"),
                                     QStringLiteral("KBM 7700"), QStringLiteral("KBW 7700")};
    return list;
}

FittedHardware HardwareChooser::Fitted(int family, int board)
{
    FittedHardware h{Families().value(family, Families().first()), kEmptySlot, kEmptySlot};
    const QString name = Boards().value(board, kEmptySlot);
    if (name.startsWith(QLatin1String("KBW")))
        h.upper = name;
    else
        h.lower = name;
    return h;
}

HardwareChooser::HardwareChooser(HostSession &session, QWidget *parent)
    : QGroupBox(parent), m_session(session)
{
    setObjectName(QStringLiteral("GrpHardware"));
    auto *form = new QFormLayout(this);
    m_family = new QComboBox(this);
    m_family->setObjectName(QStringLiteral("CmbFamily"));
    m_family->addItems(Families());
    m_board = new QComboBox(this);
    m_board->setObjectName(QStringLiteral("CmbBoard"));
    m_board->addItems(Boards());
    m_lblFamily = new QLabel(this);
    m_lblFamily->setObjectName(QStringLiteral("LblFamily"));
    m_lblFamily->setBuddy(m_family);
    m_lblBoard = new QLabel(this);
    m_lblBoard->setObjectName(QStringLiteral("LblBoard"));
    m_lblBoard->setBuddy(m_board);
    form->addRow(m_lblFamily, m_family);
    form->addRow(m_lblBoard, m_board);
    showDrive();
    translate();
    const auto changed = [this] { apply(); };
    connect(m_family, &QComboBox::currentIndexChanged, this, changed);
    connect(m_board, &QComboBox::currentIndexChanged, this, changed);
}

int HardwareChooser::family() const
{
    return m_family->currentIndex();
}

int HardwareChooser::board() const
{
    return m_board->currentIndex();
}

void HardwareChooser::choose(int family, int board)
{
    const QSignalBlocker b1(m_family), b2(m_board);
    m_family->setCurrentIndex(family);
    m_board->setCurrentIndex(board);
    apply();
}

// The combo boxes start on what the drive reports (the description file's values).
void HardwareChooser::showDrive()
{
    sim::SimulatedDrive &drive = m_session.drive();
    const QString family = drive.value(drive.addressOf(QStringLiteral("E50"))).trimmed();
    const QString upper = drive.value(drive.addressOf(QStringLiteral("E54"))).trimmed();
    const QString lower = drive.value(drive.addressOf(QStringLiteral("E58"))).trimmed();
    m_family->setCurrentIndex(std::max(0, int(Families().indexOf(family))));
    const qsizetype board = Boards().indexOf(upper.isEmpty() || upper == kEmptySlot ? lower : upper);
    m_board->setCurrentIndex(std::max(0, int(board)));
}

void HardwareChooser::apply()
{
    const FittedHardware h = current();
    sim::SimulatedDrive &drive = m_session.drive();
    drive.setValue(drive.addressOf(QStringLiteral("E50")), h.family);
    drive.setValue(drive.addressOf(QStringLiteral("E54")), h.upper);
    drive.setValue(drive.addressOf(QStringLiteral("E58")), h.lower);
    m_session.note(QStringLiteral("# hardware: %1, upper slot %2, lower slot %3")
                       .arg(h.family, h.upper, h.lower));
    Q_EMIT hardwareChanged();
}

void HardwareChooser::translate()
{
    setTitle(text(m_session, "cGrpHardware", QStringLiteral("Fitted hardware")));
    m_lblFamily->setText(text(m_session, "cLblFamily", QStringLiteral("&Drive family")));
    m_lblBoard->setText(text(m_session, "cLblBoard", QStringLiteral("Option &board")));
    m_board->setItemText(0, text(m_session, "cBoardNone", QStringLiteral("none")));
}

} // namespace drivewiz::wizhost
