// The simulated drive's state, the C callbacks and the value path.

#include "SimulatedDrive.h"
#include "SimulatedDrive_p.h"

#include "platform/textcodec.h"

#include <chrono>

namespace drivewiz::sim {

namespace {

// C function pointers carry no context, so the static callbacks reach the drive through
// this pointer. A drive clears it in its destructor when it is the current one.
std::atomic<SimulatedDrive *> g_current{nullptr};

std::function<qint64()> steadyClockFrom(std::chrono::steady_clock::time_point start)
{
    return [start] {
        const auto elapsed = std::chrono::steady_clock::now() - start;
        return qint64(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count());
    };
}

int32_t cbGetParaValue(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                       uint8_t *status)
{
    if (SimulatedDrive *d = g_current.load())
        return d->getParaValue(buffer, size, wizardId, address, status);
    if (status) *status = StatusNoConnection;
    return deliver({}, buffer, size, Hostility::None);
}

char cbSetParaValue(const char *value, uint32_t wizardId, uint32_t address, int32_t reserved)
{
    if (SimulatedDrive *d = g_current.load())
        return d->setParaValue(value, wizardId, address, reserved);
    return char(StatusNoConnection);
}

void cbSubscribe(uint32_t wizardId, uint32_t address, int32_t cycleMs)
{
    if (SimulatedDrive *d = g_current.load()) d->subscribe(wizardId, address, cycleMs);
}

int32_t cbErrorText(char *buffer, int32_t size, uint32_t wizardId, uint32_t address, uint8_t code)
{
    if (SimulatedDrive *d = g_current.load())
        return d->errorText(buffer, size, wizardId, address, code);
    // The texts are the drive's, but a host without a drive still explains its codes.
    return deliver(defaultErrorText(code).toUtf8(), buffer, size, Hostility::None);
}

int32_t cbParaInfo(char *buffer, int32_t size, uint32_t wizardId, uint32_t address, uint8_t *status)
{
    if (SimulatedDrive *d = g_current.load())
        return d->paraInfo(buffer, size, wizardId, address, status);
    if (status) *status = StatusNoConnection;
    return deliver({}, buffer, size, Hostility::None);
}

int32_t cbAuswahlInfo(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                      uint8_t *status)
{
    if (SimulatedDrive *d = g_current.load())
        return d->auswahlInfo(buffer, size, wizardId, address, status);
    if (status) *status = StatusNoConnection;
    return deliver({}, buffer, size, Hostility::None);
}

int32_t cbHelpText(char *buffer, int32_t size, uint32_t wizardId, uint32_t address)
{
    if (SimulatedDrive *d = g_current.load()) return d->helpText(buffer, size, wizardId, address);
    return deliver({}, buffer, size, Hostility::None);
}

} // namespace

quint8 SimulatedDrive::State::statusLocked(quint32 address) const
{
    const auto inj = injected.find(address);
    if (inj != injected.end() && inj->second != StatusOk) return inj->second;
    return cat.params.count(address) ? StatusOk : StatusUnknownParameter;
}

QString SimulatedDrive::State::currentValueLocked(quint32 address)
{
    const auto it = cat.params.find(address);
    if (it == cat.params.end()) return QString();
    SimParam &p = it->second;
    if (p.live != LiveKind::None) p.value = liveValue(cat, p, clock(), enabled, enableChangedAt);
    return p.value;
}

SimulatedDrive::SimulatedDrive() : m(std::make_unique<State>())
{
    m->clock = steadyClockFrom(m->started);
}

SimulatedDrive::~SimulatedDrive()
{
    SimulatedDrive *self = this;
    g_current.compare_exchange_strong(self, nullptr);
    stop();
}

// --- loading and values ---------------------------------------------------------------

bool SimulatedDrive::load(const QString &descriptionFile, const QString &selectionFile)
{
    SimCatalogue cat;
    if (!loadCatalogue(descriptionFile, selectionFile, cat)) return false;
    std::lock_guard<std::mutex> lock(m->mutex);
    m->cat = std::move(cat);
    // Subscriptions outlive a reload; their last pushed values are compared afresh.
    for (auto &[address, sub] : m->subscriptions)
        sub.lastPushed = m->currentValueLocked(address);
    return true;
}

int SimulatedDrive::parameterCount() const
{
    std::lock_guard<std::mutex> lock(m->mutex);
    return int(m->cat.params.size());
}

bool SimulatedDrive::hasParameter(quint32 address) const
{
    std::lock_guard<std::mutex> lock(m->mutex);
    return m->cat.params.count(address) != 0;
}

quint32 SimulatedDrive::addressOf(const QString &koordinate, int axis) const
{
    const quint32 address = koordinateAddress(koordinate, axis);
    return hasParameter(address) ? address : 0;
}

QString SimulatedDrive::value(quint32 address) const
{
    std::lock_guard<std::mutex> lock(m->mutex);
    return m->currentValueLocked(address);
}

bool SimulatedDrive::setValue(quint32 address, const QString &value)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    const auto it = m->cat.params.find(address);
    if (it == m->cat.params.end()) return false;
    it->second.value = value;
    return true;
}

// --- callbacks --------------------------------------------------------------------------

void SimulatedDrive::setCurrent(SimulatedDrive *drive)
{
    g_current.store(drive);
}

SimulatedDrive *SimulatedDrive::current()
{
    return g_current.load();
}

dwz_callbacks SimulatedDrive::callbacks()
{
    return dwz_callbacks{cbGetParaValue, cbSetParaValue, cbSubscribe, cbErrorText,
                         cbParaInfo,     cbAuswahlInfo,  cbHelpText};
}

int32_t SimulatedDrive::getParaValue(char *buffer, int32_t size, uint32_t, uint32_t address,
                                     uint8_t *status)
{
    m->count(Callback::GetValue);
    QByteArray bytes;
    quint8 st = StatusOk;
    Hostility h = Hostility::None;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        st = m->statusLocked(address);
        if (st == StatusOk) bytes = m->currentValueLocked(address).toUtf8();
        h = m->hostile(Callback::GetValue);
    }
    if (status) *status = st;
    return deliver(bytes, buffer, size, st == StatusOk ? h : Hostility::None);
}

char SimulatedDrive::setParaValue(const char *value, uint32_t, uint32_t address, int32_t)
{
    m->count(Callback::SetValue);
    QString line;
    uintptr_t window = 0;
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        const quint8 st = m->statusLocked(address);
        if (st != StatusOk) return char(st);
        if (!value) return char(StatusInvalidValue);
        if (m->enabled) return char(StatusEnableOn);
        SimParam &p = m->cat.params.at(address);
        // Lenient like the library's readers: bytes that are no UTF-8 are Windows-1252.
        p.value = decodeText(QByteArray(value));
        line = QStringLiteral("%1 (%2) = %3").arg(p.koordinate, QString::number(p.axis), p.value);
        m->log.append(line);
        // The echo below tells the table; the worker must not push the same change again.
        const auto sub = m->subscriptions.find(address);
        if (sub != m->subscriptions.end()) sub->second.lastPushed = p.value;
        window = m->window;
    }
    if (window) dwz_post_message(window, DWZ_MSG_TOOL, address, 1);
    if (onWrite) onWrite(line);
    return char(StatusOk);
}

void SimulatedDrive::subscribe(uint32_t, uint32_t address, int32_t cycleMs)
{
    m->count(Callback::Subscribe);
    {
        std::lock_guard<std::mutex> lock(m->mutex);
        if (cycleMs < 0) {
            m->subscriptions.erase(address);
        } else {
            const bool fresh = m->subscriptions.count(address) == 0;
            Subscription &sub = m->subscriptions[address];
            sub.cycleMs = cycleMs;
            if (fresh) sub.lastPushed = m->currentValueLocked(address);
        }
    }
    m->wake.notify_all();
}

std::map<quint32, int> SimulatedDrive::subscriptions() const
{
    std::lock_guard<std::mutex> lock(m->mutex);
    std::map<quint32, int> result;
    for (const auto &[address, sub] : m->subscriptions)
        result.emplace(address, sub.cycleMs);
    return result;
}

// --- faults ---------------------------------------------------------------------------

void SimulatedDrive::setEnable(bool on)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    if (m->enabled == on) return;
    m->enabled = on;
    m->enableChangedAt = m->clock();
}

bool SimulatedDrive::enabled() const
{
    std::lock_guard<std::mutex> lock(m->mutex);
    return m->enabled;
}

void SimulatedDrive::injectStatus(quint32 address, quint8 status)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->injected[address] = status;
}

void SimulatedDrive::clearInjectedStatus(quint32 address)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->injected.erase(address);
}

void SimulatedDrive::clearInjectedStatuses()
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->injected.clear();
}

void SimulatedDrive::setErrorText(quint8 code, const QString &text)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->errorTexts[code] = text;
}

void SimulatedDrive::setHostility(Callback callback, Hostility hostility)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->hostility[size_t(callback)] = hostility;
}

int SimulatedDrive::callCount(Callback callback) const
{
    return m->calls[size_t(callback)].load(std::memory_order_relaxed);
}

void SimulatedDrive::resetCallCounts()
{
    for (auto &c : m->calls)
        c.store(0, std::memory_order_relaxed);
}

void SimulatedDrive::setClock(std::function<qint64()> clock)
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->clock = clock ? std::move(clock) : steadyClockFrom(m->started);
}

// --- log ------------------------------------------------------------------------------

QStringList SimulatedDrive::log() const
{
    std::lock_guard<std::mutex> lock(m->mutex);
    return m->log;
}

void SimulatedDrive::clearLog()
{
    std::lock_guard<std::mutex> lock(m->mutex);
    m->log.clear();
}

} // namespace drivewiz::sim
