#ifndef DRIVEWIZ_PARAMTABLE_PARATABLE_H
#define DRIVEWIZ_PARAMTABLE_PARATABLE_H

#include "drivewiz/host_api.h"
#include "drivewiz_enums.h"
#include "paramtable/ParamWrite.h"
#include "paramtable/para_import.h"
#include "platform/component.h"

#include <QByteArray>
#include <QFont>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QTextEdit;

// The control type of the toolMessage signal, for the meta-object code only.
Q_MOC_INCLUDE("paramctrls/ParamCtrls.h")

namespace drivewiz {

class IniFile;
class MessageWindow;
class TParaClass;

/// The parameter table of a wizard form: it loads the drive's parameter descriptions and
/// selection lists, binds the form's parameter controls, answers look-ups by coordinate,
/// and is the gateway to the host: values are read and written through the host's
/// callbacks, and the host pushes changes as messages to the table's window handle.
///
/// On a form it is a widget that is never shown at run time. A host without forms may
/// create one on its own (no parent).
class DRIVEWIZ_EXPORT TParaTable : public QWidget, public TImportTable, public Component
{
    Q_OBJECT
    Q_PROPERTY(drivewiz::tOnlineModus Online READ Online WRITE SetOnline)
    Q_PROPERTY(int UserLevel READ UserLevel WRITE SetMaxRLevel)
    Q_PROPERTY(int CurrentAx READ CurrentAx WRITE SetCurrentAx)
    Q_PROPERTY(QString FileNameParams READ FileNameParams WRITE SetParamFileName)
    Q_PROPERTY(QFont FontKoordinate READ FontKoordinate WRITE SetFontKoordinate)
    Q_PROPERTY(QFont FontParaName READ FontParaName WRITE SetFontParaName)
    Q_PROPERTY(QFont FontEditFeld READ FontEditFeld WRITE SetFontEditFeld)
    Q_PROPERTY(QFont FontDimension READ FontDimension WRITE SetFontDimension)
    Q_PROPERTY(int OnlineRefreshRate READ OnlineRefreshRate WRITE SetOnlineRefreshRate)
    Q_PROPERTY(QString RichEditCtrl READ RichEditCtrlName WRITE SetRichEditCtrlName)
    Q_PROPERTY(int AktivBitColor READ AktivBitColor WRITE SetwizBitColor)
    Q_PROPERTY(int RTFhelpColor READ RTFhelpColor WRITE SetRTFhelpColor)
    Q_PROPERTY(int RueckDokuFontColor READ RueckDokuFontColor WRITE SetRueckDokuFontColor)
    Q_PROPERTY(int RueckDokuBackColor READ RueckDokuBackColor WRITE SetRueckDokuBackColor)
    Q_PROPERTY(QString wizIdString READ wizIdString WRITE SetWizIdString)

public:
    /// Called for a pushed change: address, coordinate, the control showing it (or none)
    /// and its description row (or -1).
    using TToolMessageEvent =
        std::function<void(quint32 Q7adr, const QString &Koord, TParaClass *Par, int RecNo)>;
    /// The clock of the echo filter, in milliseconds; tests replace it.
    using Clock = std::function<qint64()>;

    explicit TParaTable(QWidget *parent = nullptr);
    ~TParaTable() override;

    // --- properties -------------------------------------------------------------------
    tOnlineModus Online() const { return m_online; }
    void SetOnline(tOnlineModus mode);
    int UserLevel() const { return m_userLevel; }
    void SetMaxRLevel(int level);
    int CurrentAx() const { return m_currentAx; }
    void SetCurrentAx(int axis);
    QString FileNameParams() const { return m_fileNameParams; }
    void SetParamFileName(const QString &name);
    QFont FontKoordinate() const { return m_fonts[0]; }
    QFont FontParaName() const { return m_fonts[1]; }
    QFont FontEditFeld() const { return m_fonts[2]; }
    QFont FontDimension() const { return m_fonts[3]; }
    void SetFontKoordinate(const QFont &font) { setFont(0, font); }
    void SetFontParaName(const QFont &font) { setFont(1, font); }
    void SetFontEditFeld(const QFont &font) { setFont(2, font); }
    void SetFontDimension(const QFont &font) { setFont(3, font); }
    int OnlineRefreshRate() const { return m_refreshRate; }
    void SetOnlineRefreshRate(int milliseconds);
    QString RichEditCtrlName() const { return m_richEditName; }
    void SetRichEditCtrlName(const QString &objectName);
    QTextEdit *RichEditCtrl() const;
    void SetRichEditCtrl(QTextEdit *view);
    int AktivBitColor() const { return m_aktivBitColor; }
    void SetwizBitColor(int colour);
    int RTFhelpColor() const { return m_rtfHelpColor; }
    void SetRTFhelpColor(int colour);
    int RueckDokuFontColor() const { return m_rueckDokuFontColor; }
    void SetRueckDokuFontColor(int colour);
    int RueckDokuBackColor() const { return m_rueckDokuBackColor; }
    void SetRueckDokuBackColor(int colour);
    QString wizIdString() const { return m_wizIdString; }
    void SetWizIdString(const QString &id);
    quint32 WizardId() const { return m_wizardId; }
    void SetWizardId(quint32 id);
    TToolMessageEvent OnToolMessage;
    void SetOnToolMessage(TToolMessageEvent handler) { OnToolMessage = std::move(handler); }

    // --- host callbacks (any may be null) ----------------------------------------------
    const dwz_callbacks &Callbacks() const { return m_cb; }
    void SetCallbacks(const dwz_callbacks &callbacks);
    void SetfcbtGetParaValue(fcbtGetParaValue f) { m_cb.get_para_value = f; }
    void SetfcbtSetParaValue(fcbtSetParaValue f) { m_cb.set_para_value = f; }
    void SetfcbtSubscribe(fcbtSubscribeParaUpdate f) { m_cb.subscribe = f; }
    void SetfcbtErrorText(fcbtGetErrorText f) { m_cb.get_error_text = f; }
    /// Setting it means descriptions come from the host, parameter by parameter.
    void SetfcbtGetParaInfoStr(fcbtGetParaInfoStr f) { m_cb.get_para_info = f; }
    void SetfcbtGetAuswahlInfoStr(fcbtGetAuswahlInfoStr f) { m_cb.get_auswahl_info = f; }
    void SetfcbtGetRTFHelpText(fcbtGetRTFHelpText f) { m_cb.get_help_text = f; }

    /// The hidden window's handle: the host posts its messages here (dwz_post_message).
    quintptr WindowHandle() const;

    // --- descriptions and look-up --------------------------------------------------------
    void Loaded() override;
    /// Reads the description file and "Auswahlen.csv" beside it (not when descriptions
    /// come from the host).
    void ReloadCSVFile();
    /// Binds, rebuilds and refreshes every parameter control of the form.
    void UpdateParaObjects(bool force);
    /// The row of a coordinate ("B33", "2.B33.1") for an axis; fetches the description
    /// from the host when the table lacks it. `address` is the address the host was asked
    /// for, else 0.
    int FindRecord(const QString &koordinate, const QString &axis, quint32 &address);
    /// The row of a coordinate on the current axis; with `fetchFresh`, its value is read
    /// from the host into "Wert".
    int GetRecNo(const QString &koordinate, bool fetchFresh);
    bool ParamExists(const QString &koordinate);
    /// Whether the row is a selection parameter ("Art" exactly "1").
    bool IstAuswahlParameter(int row) const;
    /// The selection entries ("key: text") of the row's parameter.
    QStringList GetAuswahlListe(int row);
    /// The entry of the row's selection list whose key is the key of `value` (the integer
    /// before the first ":"), or empty when the list has none.
    QString CheckAuswahlTable(int row, const QString &value);
    const TImportTable &AuswahlTable() const { return m_auswahl; }

    // --- values, posting and online mode ---------------------------------------------------
    char SetParaValue(quint32 address, const QString &koordinate, const QString &value);
    void PostParaControl(TParaClass *control);
    void PostAllParams();
    /// Reads a value from the host (or the table); false when the host reported an error.
    bool GetFreshParaValue(quint32 address, const QString &koordinate, QString &value,
                           quint8 &status);
    void RefreshParaControl(TParaClass *control, bool fromMessage);
    void RefreshVisibleParaControl(TParaClass *control);
    void ReadAllParams();
    void SubscribeParaControlUpdate(TParaClass *control);
    void UnSubscribeParaControlUpdate(int index);
    void ClearUpdateList();
    const std::vector<quint32> &UpdateList() const { return m_updateList; }
    void RegisterOnlineUpdatePars(QWidget *container);
    /// The user changed a control's value. Offline (and in read-back) the value is kept
    /// in "Wert" and stays until OK writes it or the wizard is cancelled: no read from
    /// the host replaces it, whatever the host answers (page changes, the tree, the
    /// search, a language or mode switch). When the wizard goes online, it is written.
    void UserEdited(TParaClass *control);
    /// Whether a value typed offline for this address waits for OK.
    bool HasPendingEdit(quint32 address) const { return m_pendingEdits.contains(address); }

    // --- writes of the library: parameter sets, undo, the journal -----------------------------
    /// Names who writes, for the writes made while it lives (default: typed). Nests.
    class DRIVEWIZ_EXPORT OriginScope
    {
    public:
        OriginScope(TParaTable *table, WriteOrigin origin);
        ~OriginScope();
        OriginScope(const OriginScope &) = delete;
        OriginScope &operator=(const OriginScope &) = delete;

    private:
        QPointer<TParaTable> m_table;
        WriteOrigin m_outer;
    };
    WriteOrigin CurrentOrigin() const { return m_origin; }
    /// The row (position in the main index) of a parameter, or -1; axes "0", "1" and ""
    /// stand in for each other as in FindParAxUnknown.
    int FindKey(const ParamKey &key) const;
    /// The key of a row.
    ParamKey KeyOfRow(int row) const;
    /// The parameter address of a row: its "USS-Adresse /hex", else made from the
    /// coordinate and axis; 0 when neither gives one.
    quint32 AddressOfRow(int row) const;
    /// Writes a value as the library's own (reset, revert, undo, Apply): offline into
    /// "Wert", kept until OK like a typed value; online posted to the host and, when
    /// taken, stored. The parameter's controls then show it. The value is not checked
    /// here (see CheckParamValue). Returns the write as valueWritten reported it (its
    /// answer tells whether it was taken); a key the table lacks gives an empty key.
    ParamWrite WriteValue(const ParamKey &key, const QString &value, WriteOrigin origin);
    /// Reads a value from the host without storing it and without any message; false
    /// when there is no host, the host reported an error (in `status`) or answered
    /// nonsense.
    bool ReadHostValue(quint32 address, QString &value, quint8 &status);
    /// Going online while values typed offline wait for OK: with review on, they are
    /// not written at once but held (HeldEdits) and editsHeldGoingOnline() is emitted, so
    /// that the user decides for each which wins. Off by default.
    void SetReviewEditsGoingOnline(bool review) { m_reviewEdits = review; }
    bool ReviewEditsGoingOnline() const { return m_reviewEdits; }
    /// The values held when the wizard went online: old is the value before the first
    /// offline edit, new the edited one.
    const QList<ParamChange> &HeldEdits() const { return m_heldEdits; }
    void ClearHeldEdits() { m_heldEdits.clear(); }
    /// Adds a window handle that gets message 1027 when the online mode changes.
    void SubscribeMsgOnlineChange(quintptr windowHandle);
    TParaClass *FindParaControl(quint32 address) const;
    /// The message handlers of the table's window: a pushed change (0x8006; wParam the
    /// address, lParam bit 0 set for a change) and a new online mode (0x8007; wParam low
    /// byte the mode).
    void ToolMsg(quintptr wParam, qintptr lParam);
    void OnlineMsg(quintptr wParam, qintptr lParam);
    bool Busy() const { return m_busy; }
    /// Holds the busy flag from outside, e.g. while a wizard saves (restore it after).
    void SetBusy(bool busy) { m_busy = busy; }
    bool TextRestoring() const { return m_textRestore; }
    /// Entering a control ends a pending text restore.
    void ClearTextRestore() { m_textRestore = false; }
    /// True while the table puts values it read into controls (they are not written back).
    bool Refreshing() const { return m_refreshing > 0; }
    /// Coordinates whose values serve other parameters as units ("<I05>").
    const QStringList &IndirectUnitSources() const { return m_indirectUnits; }
    void AddIndirectUnitSource(const QString &koordinate);
    void SetClock(Clock clock) { m_clock = std::move(clock); }

    // --- a host that frees what the library is using ----------------------------------------
    /// True while one of the host's callbacks of this table runs.
    bool InHostCall() const { return m_hostCalls > 0; }
    /// The host freed this table (or its form) while the library was still using it, e.g.
    /// from inside a callback. The table calls the host no more and drops its messages;
    /// when a callback was running, the fault is reported once. Freeing itself is left to
    /// the caller, for when the library is done (deleteLater()).
    void DetachHost();
    bool HostDetached() const { return m_hostDetached; }

    // --- configuration, language and help --------------------------------------------------
    QString ReadCFGString(const QString &ident, const QString &defaultValue) const;
    int ReadCFGInteger(const QString &ident, int defaultValue) const;
    bool ReadCFGBool(const QString &ident, bool defaultValue) const;
    void WriteCFGString(const QString &ident, const QString &value);
    void WriteCFGInteger(const QString &ident, int value);
    void WriteCFGBool(const QString &ident, bool value);
    bool CfgReadOnly() const { return m_cfgReadOnly; }
    QString ReadLngString(const QString &ident, const QString &defaultValue) const;
    int Language() const { return m_language; }
    void SetLanguage(int number);
    IniFile *LanguageFile() const { return m_lngFile.get(); }
    /// The host's help text (RTF) of a parameter, or empty.
    QByteArray GetRTFhelpstring(quint32 address);
    /// Shows RTF help text in the help view.
    void ShowRTFHelpText(const QByteArray &rtf, quint32 address);
    /// Refreshes the table of a parameter group ("P", "Q"): names from the descriptions,
    /// values from the host. The table is the file "Gruppe_<letter>.csv" beside the
    /// description file (columns Koordinate, Nummer, Name, Wert), else it is made from
    /// the group's description rows.
    void UpdateGruppenCSVs(const QString &letter);
    const TImportTable *GruppenTable(const QString &letter) const;

Q_SIGNALS:
    /// A change pushed by the host, after the table refreshed the control that shows it
    /// (the same as OnToolMessage).
    void toolMessage(quint32 Q7adr, const QString &Koord, drivewiz::TParaClass *Par, int RecNo);
    /// The online mode changed.
    void onlineModeChanged(drivewiz::tOnlineModus mode);
    /// Every value of the form was written to the host (PostAllParams).
    void valuesSaved();
    /// The library wrote a value: typed into a control (offline kept in the table, online
    /// posted), written by OK, by reset, revert, undo, Apply, or by the host through the
    /// C interface. Emitted before the write returns, after the host answered.
    void valueWritten(const drivewiz::ParamWrite &write);
    /// A value read from the host (a refresh, a pushed change) was stored in the row's
    /// "Wert".
    void valueRead(int row);
    /// Values typed offline were held going online (SetReviewEditsGoingOnline).
    void editsHeldGoingOnline();

protected:
    bool isDesigningTable() const override { return isDesigning(); }
    /// The form whose controls this table serves (the top-level widget), or none.
    QWidget *ownerForm() const;

private:
    void setFont(int which, const QFont &font);
    void fontChanged();
    void wndProc(uint msg, quintptr wParam, qintptr lParam);
    int fetchDescription(const QString &koordinate, const QString &axis, quint32 &address);
    using HostTextCall = std::function<qint32(char *, qint32)>;
    using StatusCheck = std::function<bool(bool firstCall)>;
    template <class Call> auto hostCall(const char *callback, Call &&call);
    bool checkStatus(quint8 status, const QString &context, quint32 address,
                     const QString &koordinate);
    QByteArray readHostText(const char *callback, const HostTextCall &call,
                            const StatusCheck &statusOk, bool &ok);
    bool plausibleLength(qint32 length, const char *callback);
    void refreshedValue(TParaClass *control, const QString &value);
    void copyToMirrors(TParaClass *control);
    bool keepsOfflineEdit(TParaClass *control);
    void keepTypingOffline();
    void postPendingEdits();
    void cancelSubscriptions(quint64 modeChange);
    void letEventsRun();
    QList<TParaClass *> paraControls() const;
    void rebuildControls();
    void updateIndirectUnits(const QString &koordinate);
    bool formHasPageControl() const;
    void loadAuswahl(const QString &descriptionFile);
    void designTimeReload();
    void openCfg();
    void fillGroupFromDescriptions(TImportTable &table, const QString &group);
    void reportBindError(TParaClass *control, const QString &error);
    bool hostDescriptions() const { return m_cb.get_para_info != nullptr; }
    struct PendingEdit
    {
        ParamKey key;
        QString before; // the value before the first offline edit
        WriteOrigin origin;
    };
    bool reportsWrites() const;
    void reportWrite(ParamWrite &write);
    void reportTableWrite(int row, const QString &oldValue, const QString &newValue);
    void markPending(quint32 address, int row, const QString &before, const QString &value);
    void holdPendingEdits();
    void postPendingValues(const QHash<quint32, PendingEdit> &pending);
    void showWrittenValue(quint32 address, const QString &value);

    tOnlineModus m_online = omOffline;
    int m_userLevel = 2;
    int m_currentAx = 1;
    QString m_fileNameParams;
    QFont m_fonts[4];
    int m_refreshRate = 1000;
    QString m_richEditName;
    QPointer<QTextEdit> m_richEdit;
    int m_aktivBitColor = 32768;
    int m_rtfHelpColor = 16777215;
    int m_rueckDokuFontColor = 0;
    int m_rueckDokuBackColor = -16777201;
    QString m_wizIdString;
    quint32 m_wizardId = 0;
    dwz_callbacks m_cb{};

    TImportTable m_auswahl;
    bool m_descriptionsLoaded = false;
    std::unique_ptr<IniFile> m_cfg;
    bool m_cfgReadOnly = false;
    int m_language = 0;
    std::unique_ptr<IniFile> m_lngFile;
    std::vector<std::pair<QString, std::unique_ptr<TImportTable>>> m_groups;

    MessageWindow *m_window = nullptr;
    quint32 m_lastPosted = 0;
    qint64 m_lastPostTime = 0;
    quint32 m_lastFetched = 0;
    std::vector<quint32> m_updateList;
    std::vector<quintptr> m_onlineChangeList;
    bool m_busy = false;
    bool m_textRestore = false;
    bool m_hostAnswerReported = false;
    int m_hostCalls = 0;
    const char *m_hostCallName = "";
    bool m_hostDetached = false;
    int m_toolMsgDepth = 0;
    int m_refreshing = 0;
    QStringList m_indirectUnits;
    QHash<quint32, PendingEdit> m_pendingEdits; // values typed offline, until OK
    WriteOrigin m_origin = WriteOrigin::Typed;
    const QString *m_writeOld = nullptr; // the old value a caller of SetParaValue knows
    bool m_postingAll = false;
    bool m_quietWrite = false;
    bool m_reviewEdits = false;
    QList<ParamChange> m_heldEdits;
    quint64 m_modeChanges = 0;    // counts SetOnline switches, to notice nested ones
    Clock m_clock;
};

/// The standard CRC-32 table (reflected polynomial 0xEDB88320).
extern DRIVEWIZ_EXPORT const quint32 *const crc_table;

/// CRC-32 over `length` bytes: leaves the CRC in `crc` and returns true when it differs
/// from `expected` (the data is damaged). The drive tool never passes length 0; here it
/// gives the CRC of no data.
DRIVEWIZ_EXPORT bool crc_check(quint32 &crc, quint32 expected, const void *data, quint32 length);

} // namespace drivewiz

#endif // DRIVEWIZ_PARAMTABLE_PARATABLE_H
