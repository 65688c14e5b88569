// Values that move by themselves, the worker that pushes changes, and the other posts.

#include "SimulatedDrive_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace drivewiz::sim {

namespace {

constexpr int kMinCycleMs = 20;
constexpr double kPi = 3.14159265358979323846;
// Terminals BE1 to BE13 switch with these periods; BE6 to BE13 sit on the option board.
constexpr qint64 kTerminalPeriodsMs[] = {700,  1100, 1300, 1700, 1900, 2300, 2900,
                                         3100, 3700, 4100, 4300, 4700, 5300};
constexpr int kTerminals = 13;

// A drive function's state follows its source parameter (fixed level, bit of the control
// word A180, or a terminal, plain or inverted).
struct InputFunction
{
    const char *source;
    int busBit;
};

constexpr InputFunction kFunctions[] = {
    {"A60", 0}, {"A61", 1}, {"A62", 2}, {"A63", 3},  {"A64", 4},
    {"F100", 6}, {"A65", 7}, {"A66", 8}, {"A67", 9}, {"A68", 10},
};

struct LiveEntry
{
    const char *koordinate;
    LiveKind kind;
    int channel;
};

constexpr LiveEntry kLiveTable[] = {
    {"E48", LiveKind::DriveState, 0},  {"I330", LiveKind::Analog, 0},
    {"I331", LiveKind::Analog, 1},     {"E10", LiveKind::Analog, 2},
    {"E11", LiveKind::Analog, 3},      {"E74", LiveKind::Analog, 4},
    {"A300", LiveKind::InputLevel, 0}, {"A301", LiveKind::InputLevel, 1},
    {"A302", LiveKind::InputLevel, 2}, {"A303", LiveKind::InputLevel, 3},
    {"A304", LiveKind::InputLevel, 4}, {"F300", LiveKind::InputLevel, 5},
    {"A305", LiveKind::InputLevel, 6}, {"A306", LiveKind::InputLevel, 7},
    {"A307", LiveKind::InputLevel, 8}, {"A308", LiveKind::InputLevel, 9},
    {"E12", LiveKind::Terminals, 0},
};

QString selectionValue(const SimCatalogue &cat, const SimParam &p, int key)
{
    if (const SimSelection *sel = selectionOf(cat, p)) {
        const auto it = sel->texts.find(key);
        if (it != sel->texts.end()) return QString::number(key) + QStringLiteral(": ") + it->second;
    }
    return QString::number(key);
}

int driveState(qint64 now, bool enabled, qint64 enableChangedAt)
{
    if (enabled) return now - enableChangedAt < 500 ? 3 : 4;
    if (now < 500) return 0;
    return now < 1000 ? 1 : 2;
}

double limitOf(const QString &cell, bool *ok)
{
    return cell.trimmed().toDouble(ok);
}

QString analogValue(const SimCatalogue &cat, const SimParam &p, qint64 now)
{
    bool okLow = false, okHigh = false, okDecimals = false;
    const double low = std::abs(limitOf(cat.cell(p, cat.ugwColumn), &okLow));
    const double high = std::abs(limitOf(cat.cell(p, cat.ogwColumn), &okHigh));
    const int decimals = cat.cell(p, cat.decimalsColumn).trimmed().toInt(&okDecimals);
    const double amplitude =
        okLow || okHigh ? 0.5 * std::max(okLow ? low : 0, okHigh ? high : 0) : 10.0;
    const qint64 period = 8000 + 2000 * p.channel;
    const qint64 shift = p.axis == 2 ? period / 4 : 0;
    const double phase = 2 * kPi * double((now + shift) % period) / double(period);
    const int places = okDecimals ? std::clamp(decimals, 0, 9) : 2;
    const double scale = std::pow(10.0, places);
    double v = std::round(amplitude * std::sin(phase) * scale) / scale;
    if (v == 0) v = 0; // no "-0.00"
    return QString::number(v, 'f', places);
}

const SimParam *paramOf(const SimCatalogue &cat, const char *koordinate, int axis)
{
    const auto it = cat.params.find(koordinateAddress(QLatin1String(koordinate), axis));
    return it == cat.params.end() ? nullptr : &it->second;
}

QString valueOf(const SimCatalogue &cat, const char *koordinate, int axis)
{
    const SimParam *p = paramOf(cat, koordinate, axis);
    if (!p) p = paramOf(cat, koordinate, 0); // a drive-wide parameter
    return p ? p->value.trimmed().toUpper() : QString();
}

// The option board's terminals exist with a KBQ board in the lower slot, or on a ZRD
// drive with a KBW board in the upper one.
bool optionTerminals(const SimCatalogue &cat)
{
    if (valueOf(cat, "E50", 0).contains(QLatin1String("ZRD")))
        return valueOf(cat, "E54", 0).contains(QLatin1String("KBW"));
    return valueOf(cat, "E58", 0).contains(QLatin1String("KBQ"));
}

int terminalLevel(const SimCatalogue &cat, int k, qint64 now)
{
    if (k < 1 || k > kTerminals || (k > 5 && !optionTerminals(cat))) return 0;
    return int((now / kTerminalPeriodsMs[k - 1]) % 2);
}

int inputLevel(const SimCatalogue &cat, const SimParam &p, qint64 now)
{
    const InputFunction &f = kFunctions[std::clamp(p.channel, 0, int(std::size(kFunctions)) - 1)];
    bool ok = false;
    const int key = valueOf(cat, f.source, p.axis).section(QLatin1Char(':'), 0, 0).toInt(&ok);
    if (!ok || key <= 0) return 0;
    if (key == 1) return 1;
    if (key == 2) {
        const QString word = valueOf(cat, "A180", p.axis).remove(QStringLiteral("BIN"));
        const quint32 bits = word.toUInt(nullptr, 2);
        return int((bits >> f.busBit) & 1u);
    }
    return terminalLevel(cat, (key - 1) / 2, now) ^ (key % 2 == 0 ? 1 : 0);
}

QString terminals(const SimCatalogue &cat, qint64 now)
{
    quint32 bits = 0;
    for (int k = 1; k <= kTerminals; ++k)
        bits |= quint32(terminalLevel(cat, k, now)) << (k - 1);
    return QString::number(bits, 2).rightJustified(kTerminals, QLatin1Char('0')) +
           QStringLiteral("bin");
}

} // namespace

LiveKind liveKindOf(const QString &koordinate, int *channel)
{
    for (const LiveEntry &e : kLiveTable) {
        if (koordinate == QLatin1String(e.koordinate)) {
            *channel = e.channel;
            return e.kind;
        }
    }
    return LiveKind::None;
}

QString liveValue(const SimCatalogue &cat, const SimParam &p, qint64 now, bool enabled,
                  qint64 enableChangedAt)
{
    now = std::max<qint64>(now, 0);
    switch (p.live) {
    case LiveKind::DriveState:
        return selectionValue(cat, p, driveState(now, enabled, enableChangedAt));
    case LiveKind::Analog:
        return analogValue(cat, p, now);
    case LiveKind::InputLevel:
        return selectionValue(cat, p, inputLevel(cat, p, now));
    case LiveKind::Terminals:
        return terminals(cat, now);
    case LiveKind::None:
        break;
    }
    return p.value;
}

std::vector<quint32> SimulatedDrive::State::takeChangesLocked()
{
    std::vector<quint32> changed;
    for (auto &[address, sub] : subscriptions) {
        if (!cat.params.count(address)) continue;
        const QString now = currentValueLocked(address);
        if (now == sub.lastPushed) continue;
        sub.lastPushed = now;
        changed.push_back(address);
    }
    return changed;
}

// --- the worker ----------------------------------------------------------------------

void SimulatedDrive::start()
{
    std::lock_guard<std::mutex> lock(m->mutex);
    if (m->worker.joinable()) return;
    const quint64 run = ++m->run;
    m->worker = std::thread([this, run] { workerLoop(run); });
}

void SimulatedDrive::stop()
{
    std::thread worker;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        if (!m->worker.joinable()) return;
        ++m->run;
        worker = std::move(m->worker);
    }
    m->wake.notify_all();
    worker.join();
}

bool SimulatedDrive::isRunning() const
{
    std::lock_guard<std::mutex> lock(m->mutex);
    return m->worker.joinable();
}

void SimulatedDrive::workerLoop(quint64 run)
{
    std::unique_lock<std::mutex> lock(m->mutex);
    const auto stopped = [this, run] { return m->run != run; };
    while (!stopped()) {
        if (m->subscriptions.empty()) {
            m->wake.wait(lock); // woken by a subscription or by stop()
            continue;
        }
        int cycle = std::numeric_limits<int>::max();
        for (const auto &entry : m->subscriptions)
            cycle = std::min(cycle, entry.second.cycleMs);
        if (m->wake.wait_for(lock, std::chrono::milliseconds(std::max(cycle, kMinCycleMs)),
                             stopped))
            break;
        const std::vector<quint32> changed = m->takeChangesLocked();
        const uintptr_t window = m->window;
        // Posting takes the message windows' lock; never hold ours at the same time.
        lock.unlock();
        for (quint32 address : changed)
            if (window) dwz_post_message(window, DWZ_MSG_TOOL, address, 1);
        lock.lock();
    }
}

// --- posts ---------------------------------------------------------------------------

void SimulatedDrive::setMessageWindow(uintptr_t handle)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->window = handle;
}

bool SimulatedDrive::postOnlineMode(int mode)
{
    uintptr_t window = 0;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        window = m->window;
    }
    return window && dwz_post_message(window, DWZ_MSG_ONLINE_MODE, uintptr_t(mode), 0) != 0;
}

} // namespace drivewiz::sim
