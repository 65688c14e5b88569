#ifndef DRIVEWIZ_SIMDRIVE_SIMULATEDDRIVE_P_H
#define DRIVEWIZ_SIMDRIVE_SIMULATEDDRIVE_P_H

#include "SimulatedDrive.h"

#include <QByteArray>
#include <QHash>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

namespace drivewiz::sim {

/// Values that move by themselves.
enum class LiveKind { None, DriveState, Analog, InputLevel, Terminals };

/// One parameter (one row of the description file).
struct SimParam
{
    QString koordinate; // as in the row, upper case, no axis prefix
    int axis = 0;       // the row's "Achse"
    QStringList cells;  // the row's cells; the "Wert" cell is replaced by `value` on output
    QString value;
    LiveKind live = LiveKind::None;
    int channel = 0; // input number or analog channel of a moving value
};

/// A selection list: its CSV lines and its texts by key.
struct SimSelection
{
    QStringList lines;
    std::map<int, QString> texts;
};

/// What load() reads.
struct SimCatalogue
{
    QStringList titles; // as written in the file
    QChar delimiter = QLatin1Char(';');
    int wertColumn = -1;
    int nameColumn = -1;
    int unitColumn = -1;
    int ugwColumn = -1;
    int ogwColumn = -1;
    int defaultColumn = -1;
    int decimalsColumn = -1;
    std::unordered_map<quint32, SimParam> params;

    QString selectionTitle;                  // the selection file's title line
    QHash<QString, SimSelection> selections; // by upper-case coordinate

    QString cell(const SimParam &p, int column) const
    {
        return column >= 0 && column < p.cells.size() ? p.cells.at(column) : QString();
    }
};

struct Subscription
{
    int cycleMs = 0;
    QString lastPushed;
};

struct SimulatedDrive::State
{
    mutable std::mutex mutex;
    std::condition_variable wake;
    SimCatalogue cat;
    std::map<quint32, Subscription> subscriptions;
    std::unordered_map<quint32, quint8> injected;
    std::map<quint8, QString> errorTexts;
    std::array<Hostility, kCallbackCount> hostility{};
    std::array<std::atomic<int>, kCallbackCount> calls{};
    bool enabled = false;
    qint64 enableChangedAt = -1; // clock time of the last enable change; -1: never
    uintptr_t window = 0;
    QStringList log;
    std::function<qint64()> clock;
    std::chrono::steady_clock::time_point started = std::chrono::steady_clock::now();
    quint64 run = 0; // the worker of another run (or of none) ends
    std::thread worker;

    /// The status for an address: an injected one, else unknown or 0. Lock held.
    quint8 statusLocked(quint32 address) const;
    /// The parameter's value, moving values brought up to the present. Lock held.
    QString currentValueLocked(quint32 address);
    /// Subscribed addresses whose values changed since their last push; marks them
    /// pushed. Lock held.
    std::vector<quint32> takeChangesLocked();
    void count(Callback c) { calls[size_t(c)].fetch_add(1, std::memory_order_relaxed); }
    Hostility hostile(Callback c) const { return hostility[size_t(c)]; }
};

// --- loading (SimulatedDrive_load.cpp) ------------------------------------------------

/// Reads a description file and a selection file (may be empty or missing).
bool loadCatalogue(const QString &descriptionFile, const QString &selectionFile, SimCatalogue &cat);
/// The address of a coordinate ("A10", "B33.4") on an axis, without any message; 0 when
/// the text is no plain coordinate.
quint32 koordinateAddress(const QString &koordinate, int axis);

// --- texts (SimulatedDrive_texts.cpp) -------------------------------------------------

/// The answer of a text callback: the length when buffer is NULL or size <= 0, else copies
/// up to size - 1 bytes and a zero and returns the length; spoiled as `h` asks.
int32_t deliver(const QByteArray &bytes, char *buffer, int32_t size, Hostility h);
/// One CSV line, every cell quoted. The reader has no escape for a quote inside a cell,
/// so a '"' in a cell is written as "'".
QString csvLine(const QStringList &cells, QChar delimiter);
/// The parameter's line with its current value in "Wert".
QString paramLine(const SimCatalogue &cat, const SimParam &p);
/// The entry lines of a parameter's selection list (empty when it has none).
const SimSelection *selectionOf(const SimCatalogue &cat, const SimParam &p);
/// The RTF help of a parameter.
QByteArray helpRtf(const SimCatalogue &cat, const SimParam &p, quint32 address);
/// The built-in German text of a status code.
QString defaultErrorText(quint8 code);

// --- moving values (SimulatedDrive_live.cpp) ------------------------------------------

/// Which moving value a coordinate is, if any.
LiveKind liveKindOf(const QString &koordinate, int *channel);
/// The value of a moving parameter at clock time `now`.
QString liveValue(const SimCatalogue &cat, const SimParam &p, qint64 now, bool enabled,
                  qint64 enableChangedAt);

} // namespace drivewiz::sim

#endif // DRIVEWIZ_SIMDRIVE_SIMULATEDDRIVE_P_H
