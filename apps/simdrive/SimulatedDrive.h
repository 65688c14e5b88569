#ifndef DRIVEWIZ_SIMDRIVE_SIMULATEDDRIVE_H
#define DRIVEWIZ_SIMDRIVE_SIMULATEDDRIVE_H

#include "drivewiz/host_api.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace drivewiz::sim {

/// Status codes the simulated drive answers with. 0 is success; 'V' is the refusal of a
/// write while the drive's enable is on; the others are this drive's own error codes,
/// turned into text by the error-text callback.
enum DriveStatus : quint8 {
    StatusOk = 0,
    StatusTimeout = 1,
    StatusNoConnection = 2,     ///< no current drive behind the C callbacks
    StatusUnknownParameter = 3, ///< the address is not in the description file
    StatusWriteProtected = 4,
    StatusOutOfRange = 5,
    StatusInvalidValue = 6, ///< a write without a value (NULL text)
    StatusEnableOn = 'V',
};

/// The host callbacks, for call counters and hostile answers.
enum class Callback {
    GetValue,
    SetValue,
    Subscribe,
    ErrorText,
    ParaInfo,
    AuswahlInfo,
    HelpText,
};
inline constexpr int kCallbackCount = int(Callback::HelpText) + 1;

/// How a text-returning callback misbehaves, to test the library against broken hosts.
enum class Hostility {
    None,
    LengthTooLarge, ///< reports 64 bytes more than it delivers (both calls)
    NegativeLength, ///< returns -1 and delivers only a terminating zero
    InvalidUtf8,    ///< delivers the text in Windows-1252 followed by a 0xFF byte
};

/// A servo drive in software, playing the host's part for the library: it reads a
/// parameter description file and its selection file, answers the host callbacks from
/// its values, logs writes, and pushes changed values to the parameter table's message
/// window from a worker thread, as a configuration tool connected to a real drive does.
///
/// Addresses are parameter addresses (Q7adr); the wizard id of the callbacks is ignored.
/// Every public function is thread-safe: the callbacks run on the user-interface thread,
/// the worker on its own, and tests call in from further threads.
///
/// Values that move on their own, computed from the drive's clock (milliseconds since
/// construction, or the clock set with setClock):
/// - E48 (drive state, selection): 0 self test for the first 500 ms, then 1 switch-on
///   inhibit until 1000 ms, then 2 ready; after the enable goes on 3 switched on for
///   500 ms, then 4 operation enabled; after it goes off 2 again.
/// - I330, I331 (setpoint displays) and E10, E11, E74 (analog input levels, V): sines
///   with half the row's larger limit as amplitude (10 without limits), periods of 8 s
///   plus 2 s per channel, axis 2 a quarter period ahead, with the row's decimals.
/// - Terminals BE1 to BE13 switch every 700, 1100, 1300, 1700, 1900, 2300, 2900, 3100,
///   3700, 4100, 4300, 4700 and 5300 ms; BE6 to BE13 only with the option board (a KBQ in
///   E58, or on a ZRD drive a KBW in E54), else they stay low. E12 shows them in binary.
/// - A300-A304, F300, A305-A308 (function states, selection LOW/HIGH) follow their
///   sources A60-A64, F100, A65-A68 on the same axis: 0 low, 1 high, 2 the function's bit
///   of the control word A180 (bits 0-4, 6, 7-10), 2k + 1 terminal BEk, 2k + 2 BEk
///   inverted.
/// Selection values are written as the drive's table writes them: "key: text".
class SimulatedDrive
{
public:
    SimulatedDrive();
    /// Stops and joins the worker; stops being the current drive.
    ~SimulatedDrive();
    SimulatedDrive(const SimulatedDrive &) = delete;
    SimulatedDrive &operator=(const SimulatedDrive &) = delete;

    // --- loading --------------------------------------------------------------------
    /// Reads the description file (CSV, ";" or ",") and the selection file, by default
    /// "Auswahlen.csv" beside it (optional). A row's value is its "Wert" cell, or its
    /// "Defaultwert" when that is empty; its address is the "USS-Adresse /hex" cell when
    /// that holds 1 to 8 hex digits (a trailing "h" allowed) and is not 0, else computed
    /// from "Koordinate" and "Achse" (0 or empty: axis field 0). Rows without a valid
    /// address are skipped; of two rows with one address the first counts. False when the
    /// file cannot be read (the import table reports why) or has no "Koordinate" column;
    /// the previous contents then stay. Subscriptions are kept.
    bool load(const QString &descriptionFile, const QString &selectionFile = {});
    int parameterCount() const;
    bool hasParameter(quint32 address) const;
    /// The address of a row: coordinate without axis prefix plus its "Achse"; 0 if none.
    quint32 addressOf(const QString &koordinate, int axis = 0) const;
    /// The current value (moving values at the drive's present time); empty if unknown.
    QString value(quint32 address) const;
    /// Changes a value as the drive itself would (no log, no echo); the worker pushes it
    /// to subscribers. False for an unknown address.
    bool setValue(quint32 address, const QString &value);

    // --- the C callbacks ------------------------------------------------------------
    /// Makes `drive` (or none) the drive the static callbacks talk to. C function pointers
    /// carry no context, so there is one current drive per process; without one the
    /// callbacks answer StatusNoConnection.
    static void setCurrent(SimulatedDrive *drive);
    static SimulatedDrive *current();
    /// The static callbacks, all seven set.
    static dwz_callbacks callbacks();

    // The callbacks of this drive, with the arguments of host_api.h.
    int32_t getParaValue(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                         uint8_t *status);
    char setParaValue(const char *value, uint32_t wizardId, uint32_t address, int32_t reserved);
    void subscribe(uint32_t wizardId, uint32_t address, int32_t cycleMs);
    int32_t errorText(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                      uint8_t code);
    /// The description file's title line and the parameter's line (its current value in
    /// "Wert"), each ended by "\r\n"; cells quoted, the file's delimiter.
    int32_t paraInfo(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                     uint8_t *status);
    /// The selection file's title line and the entry lines of the parameter's list, each
    /// ended by "\r\n"; a parameter without a list gives the title line alone, a drive
    /// without a selection file the empty text.
    int32_t auswahlInfo(char *buffer, int32_t size, uint32_t wizardId, uint32_t address,
                        uint8_t *status);
    /// A short RTF document: coordinate and name in bold, then unit, limits and default.
    int32_t helpText(char *buffer, int32_t size, uint32_t wizardId, uint32_t address);

    // --- faults for tests -----------------------------------------------------------
    /// While the enable is on, writes are refused with 'V'.
    void setEnable(bool on);
    bool enabled() const;
    /// Every value, write and description call for the address answers this status
    /// (reads deliver nothing, writes store nothing).
    void injectStatus(quint32 address, quint8 status);
    void clearInjectedStatus(quint32 address);
    void clearInjectedStatuses();
    /// Replaces the text the error-text callback gives for a code.
    void setErrorText(quint8 code, const QString &text);
    /// Applies to the text-returning callbacks; ignored for SetValue and Subscribe.
    void setHostility(Callback callback, Hostility hostility);
    int callCount(Callback callback) const;
    void resetCallCounts();

    /// Subscribed addresses and their cycles in milliseconds.
    std::map<quint32, int> subscriptions() const;

    // --- pushes ---------------------------------------------------------------------
    /// The window handle of the parameter table, for echoes, pushes and mode changes.
    void setMessageWindow(uintptr_t handle);
    /// Starts the worker that pushes changed subscribed values (DWZ_MSG_TOOL, wParam the
    /// address, lParam 1) every smallest subscribed cycle, at least 20 ms. No-op when
    /// running.
    void start();
    /// Stops and joins the worker; no-op when it is not running.
    void stop();
    bool isRunning() const;
    /// Posts DWZ_MSG_ONLINE_MODE with wParam = mode; false without a live window.
    bool postOnlineMode(int mode);

    /// Replaces the drive's clock (milliseconds, monotonic); an empty function restores
    /// the default, the time since construction.
    void setClock(std::function<qint64()> clock);

    // --- the write log --------------------------------------------------------------
    /// Accepted writes, oldest first, as "<coordinate> (<axis>) = <value>", e.g.
    /// "A10 (1) = 250".
    QStringList log() const;
    void clearLog();
    /// Called with each new log line, on the writing thread, outside the drive's lock.
    /// Set it before writes can happen.
    std::function<void(const QString &line)> onWrite;

    // --- recordings -------------------------------------------------------------------
    /// Writes what the drive's recorder would give for a short move of an axis: a speed
    /// profile up, back and down again, with the torque, setpoint and analog input that
    /// go with it. `channels` are coordinates (E08 speed, E02 torque, I330 setpoint, E10
    /// analog input; others get a sine). The file is a measurement file as the library
    /// reads it: a sampling-time line, the title line "Zeit [ms];E08;...", values with
    /// decimal commas, Windows-1252, CRLF. False when it cannot be written.
    bool writeRecording(const QString &path, const QStringList &channels, int samples = 2000,
                        double sampleMs = 1, int axis = 1) const;

    struct State;

private:
    void workerLoop(quint64 run);

    std::unique_ptr<State> m;
};

} // namespace drivewiz::sim

#endif // DRIVEWIZ_SIMDRIVE_SIMULATEDDRIVE_H
