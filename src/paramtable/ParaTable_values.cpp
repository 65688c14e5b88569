// The parameter table's value path: reading and writing through the host, the online
// mode (0x8007) and subscriptions. What works on the form's controls is in
// paramctrls/ParaTable_controls.cpp.

#include "paramtable/ParaTable_p.h"

#include "lang/wizDLLDefs.h"
#include "lang/wizSprache.h"
#include "paramtable/coordinates.h"
#include "platform/dialogs.h"
#include "platform/messages.h"
#include "platform/textcodec.h"
#include "util/Divers.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>

namespace drivewiz {

// A length no text can have: reported once per table (a host that answers so usually
// does it every time), and the text counts as missing.
bool TParaTable::plausibleLength(qint32 length, const char *callback)
{
    if (length >= 0 && length <= paratable::kMaxHostText) return true;
    if (!m_hostAnswerReported && !m_busy)
        ShowMessage(QStringLiteral("Fehlerhafte Antwort des Host-Programms (") +
                    QLatin1String(callback) + QStringLiteral("): Textlänge ") +
                    QString::number(length));
    m_hostAnswerReported = true;
    return false;
}

// The two-call protocol of every callback that returns text: first the length, then the
// text into a buffer of that length + 1. The buffer belongs to this call alone: a host
// that lets events run inside its callback may call the table again meanwhile. After an
// error status (reported by `statusOk`) the length means nothing and is not looked at.
// A text shorter than announced, without its zero, or not in UTF-8 is taken as far as
// it goes.
QByteArray TParaTable::readHostText(const char *callback, const HostTextCall &call,
                                    const StatusCheck &statusOk, bool &ok)
{
    ok = false;
    const qint32 needed = hostCall(callback, [&call] { return call(nullptr, 0); });
    if (m_hostDetached || (statusOk && !statusOk(true)) || !plausibleLength(needed, callback))
        return QByteArray();
    QByteArray buffer(qsizetype(needed) + 1, '\0');
    const qint32 got =
        hostCall(callback, [&] { return call(buffer.data(), qint32(buffer.size())); });
    if (m_hostDetached || (statusOk && !statusOk(false)) || !plausibleLength(got, callback))
        return QByteArray();
    ok = true;
    const size_t limit = size_t(std::min<qint32>(got, qint32(buffer.size()) - 1));
    return QByteArray(buffer.constData(), qsizetype(strnlen(buffer.constData(), limit)));
}

// CheckErrCode asks the host for the error's text: it is a host call like the others.
bool TParaTable::checkStatus(quint8 status, const QString &context, quint32 address,
                             const QString &koordinate)
{
    if (status == 0) return true;
    if (m_hostDetached) return false;
    return hostCall("fcbtGetErrorText", [&] {
        return CheckErrCode(m_wizardId, status, context, m_cb.get_error_text, address, koordinate);
    });
}

char TParaTable::SetParaValue(quint32 address, const QString &koordinate, const QString &value)
{
    if (m_online == omRueckdoku || !m_cb.set_para_value || !IsKoordinate(koordinate) ||
        address == 0 || m_hostDetached)
        return 0;
    m_lastPosted = address;
    m_lastPostTime = m_clock();
    // Reported with the value it replaces; OK's write of values nobody changed is not.
    const bool report = reportsWrites() && (!m_postingAll || m_pendingEdits.contains(address));
    ParamWrite w;
    if (report) {
        // The address names the axis; the coordinate may not ("B20" for axis 2).
        const ParamKey byAddress = ParamKey::fromText(GetKoordinateAusQ7Adr(address));
        int row = FindKey(byAddress);
        if (row < 0) row = GetRecNo(koordinate, false);
        const auto pending = m_pendingEdits.constFind(address);
        w.key = row >= 0 ? KeyOfRow(row) : byAddress;
        w.oldValue = pending != m_pendingEdits.cend() ? pending->before
                     : m_writeOld                     ? *m_writeOld
                                                      : Cell(row, QStringLiteral("Wert"));
        w.origin = pending != m_pendingEdits.cend() ? pending->origin : m_origin;
    }
    const QByteArray text = value.toUtf8(); // zero-terminated, and this call's own
    const fcbtSetParaValue set = m_cb.set_para_value;
    const char status =
        hostCall("fcbtSetParaValue", [&] { return set(text.constData(), m_wizardId, address, 0); });
    if (m_hostDetached) return status;
    if (report) {
        w.address = address;
        w.newValue = value;
        w.answer = quint8(status);
        reportWrite(w);
    }
    if (m_quietWrite) return status; // the library's own writes list refusals instead
    if (status != 'V')
        checkStatus(quint8(status), QStringLiteral("TParaTable.PostParaControl"), address,
                    koordinate);
    else if (!m_busy)
        Beep();
    return status;
}

bool TParaTable::GetFreshParaValue(quint32 address, const QString &koordinate, QString &value,
                                   quint8 &status)
{
    value.clear();
    if (!m_cb.get_para_value || address == 0) {
        const int row = GetRecNo(koordinate, false);
        if (row >= 0) value = Cell(row, QStringLiteral("Wert"));
        return true;
    }
    if (m_hostDetached) return false;
    const fcbtGetParaValue get = m_cb.get_para_value;
    bool ok = false;
    const QByteArray text = readHostText(
        "fcbtGetParaValue",
        [&](char *buf, qint32 size) { return get(buf, size, m_wizardId, address, &status); },
        [&](bool first) {
            return checkStatus(status,
                               first ? QStringLiteral("fcbtGetParaValue")
                                     : QStringLiteral("TParaTable.GetFreshParaValue"),
                               address, koordinate);
        },
        ok);
    if (!ok) return false;
    value = decodeText(text);
    // Looked up after the call: rows the host described meanwhile may have moved it. A
    // value typed offline stays in "Wert" until OK.
    const int row = GetRecNo(koordinate, false);
    if (row >= 0 && !(m_online != omOnline && HasPendingEdit(address))) {
        SetCell(row, QStringLiteral("Wert"), value);
        Q_EMIT valueRead(row);
    }
    return true;
}

// --- subscriptions ---------------------------------------------------------------------

// The address leaves the list before the host hears of it: a host that calls back into
// the table meanwhile finds the list as it will be.
void TParaTable::UnSubscribeParaControlUpdate(int index)
{
    if (isDesigning() || !m_cb.subscribe || m_online != omOnline || index < 0 ||
        size_t(index) >= m_updateList.size())
        return;
    const quint32 address = m_updateList[size_t(index)];
    m_updateList.erase(m_updateList.begin() + index);
    if (m_hostDetached) return;
    const fcbtSubscribeParaUpdate subscribe = m_cb.subscribe;
    hostCall("fcbtSubscribeParaUpdate", [&] { subscribe(m_wizardId, address, -1); });
}

void TParaTable::ClearUpdateList()
{
    if (m_online == omOnline) cancelSubscriptions(m_modeChanges);
}

// One address after the other leaves the list before the host hears of it. A host that
// switches the mode again inside a callback (posting 0x8007 and letting it run) has done
// the newer switch completely: this one stops, and what is still in the list stays
// subscribed, as the newer switch found it.
void TParaTable::cancelSubscriptions(quint64 modeChange)
{
    const fcbtSubscribeParaUpdate subscribe = m_cb.subscribe;
    if (!subscribe || isDesigning() || m_hostDetached) {
        m_updateList.clear(); // nothing to cancel at the host
        return;
    }
    while (!m_updateList.empty() && modeChange == m_modeChanges && !m_hostDetached) {
        const quint32 address = m_updateList.front();
        m_updateList.erase(m_updateList.begin());
        hostCall("fcbtSubscribeParaUpdate", [&] { subscribe(m_wizardId, address, -1); });
    }
}

void TParaTable::SubscribeMsgOnlineChange(quintptr windowHandle)
{
    if (isDesigning() || windowHandle == 0) return;
    if (std::find(m_onlineChangeList.begin(), m_onlineChangeList.end(), windowHandle) ==
        m_onlineChangeList.end())
        m_onlineChangeList.push_back(windowHandle);
}

// --- online mode -------------------------------------------------------------------------

bool TParaTable::formHasPageControl() const
{
    QWidget *form = ownerForm();
    if (!form) return false;
    for (QWidget *w : form->findChildren<QWidget *>()) {
        if (w->inherits("drivewiz::TwizPageControl")) return true;
    }
    return false;
}

// Every step that calls the host checks that no newer switch happened meanwhile (a host
// may post 0x8007 inside a callback and let it run): the newer one has done all its work.
void TParaTable::SetOnline(tOnlineModus mode)
{
    if (m_online == mode) return;
    const quint64 change = ++m_modeChanges;
    const bool leavesOnline = m_online == omOnline;
    if (!isLoading() && ownerForm()) keepTypingOffline(); // before the fields are rebuilt
    m_online = mode;
    // Held for the user's review instead of written (nothing goes to the drive before).
    const bool held = mode == omOnline && m_reviewEdits && !m_pendingEdits.isEmpty();
    if (held) holdPendingEdits();
    if (leavesOnline) cancelSubscriptions(change);
    const auto newer = [this, change] { return change != m_modeChanges || m_hostDetached; };
    if (!isLoading() && ownerForm() && !newer()) {
        rebuildControls();
        if (mode == omOnline && !newer()) postPendingEdits();
        // The page control registers its visible controls itself.
        if (mode == omOnline && !newer() && !formHasPageControl())
            RegisterOnlineUpdatePars(ownerForm());
    }
    if (newer()) return;
    const HostCallScope scope; // listeners are the host's code
    Q_EMIT onlineModeChanged(mode);
    if (held && !newer()) Q_EMIT editsHeldGoingOnline();
}

void TParaTable::AddIndirectUnitSource(const QString &koordinate)
{
    if (m_indirectUnits.indexOf(koordinate) < 0) m_indirectUnits << koordinate;
}

// --- messages ----------------------------------------------------------------------------

void TParaTable::wndProc(uint msg, quintptr wParam, qintptr lParam)
{
    if (msg == wmToolMessage)
        ToolMsg(wParam, lParam);
    else if (msg == wmToolOnlineMode)
        OnlineMsg(wParam, lParam);
}

void TParaTable::OnlineMsg(quintptr wParam, qintptr lParam)
{
    Q_UNUSED(lParam)
    if (m_busy) return;
    const int mode = int(wParam & 0xFF);
    if (mode > omRueckdoku) return; // not a mode this table knows
    SetOnline(tOnlineModus(mode));
    for (const quintptr handle : m_onlineChangeList)
        PostMessage(handle, wmOnlineChanged, quintptr(mode), 0);
}

void TParaTable::DetachHost()
{
    if (m_hostDetached) return;
    m_hostDetached = true;
    m_busy = true;           // no messages, beeps or boxes from here on
    m_window->closeHandle(); // the host's further posts fail
    if (m_hostCalls > 0)
        ShowMessage(QStringLiteral("Fehler des Host-Programms: Der Assistent wurde während "
                                   "des Aufrufs von ") +
                    QLatin1String(m_hostCallName) + QStringLiteral(" geschlossen."));
}

} // namespace drivewiz
