// The parameter table's value path: reading and writing through the host, the online
// mode (0x8007) and subscriptions. What works on the form's controls is in
// paramctrls/ParaTable_controls.cpp.

#include "paramtable/ParaTable.h"
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

// Asks the host for a text with the two-call protocol. A host answer that cannot be right
// (a negative or absurd length) is reported once per table and counts as no text; a text
// shorter than announced, without its zero, or not in UTF-8 is taken as far as it goes.
QByteArray TParaTable::callText(const std::function<qint32(char *, qint32)> &call, bool &ok)
{
    ok = false;
    const qint32 needed = call(nullptr, 0);
    if (needed < 0 || needed > paratable::kMaxHostText) {
        if (!m_hostAnswerReported && !m_busy)
            ShowMessage(QStringLiteral("Fehlerhafte Antwort des Host-Programms: Textlänge ") +
                        QString::number(needed));
        m_hostAnswerReported = true;
        return QByteArray();
    }
    CheckCharBufferSize(m_buffer, needed);
    std::memset(m_buffer.data(), 0, size_t(m_buffer.size()));
    const qint32 got = call(m_buffer.data(), qint32(m_buffer.size()));
    ok = got >= 0;
    const size_t limit = size_t(std::clamp<qint32>(got, 0, qint32(m_buffer.size()) - 1));
    return QByteArray(m_buffer.constData(), qsizetype(strnlen(m_buffer.constData(), limit)));
}

char TParaTable::SetParaValue(quint32 address, const QString &koordinate, const QString &value)
{
    if (m_online == omRueckdoku || !m_cb.set_para_value || !IsKoordinate(koordinate) ||
        address == 0)
        return 0;
    m_lastPosted = address;
    m_lastPostTime = m_clock();
    const QByteArray utf8 = value.toUtf8();
    CheckCharBufferSize(m_buffer, int(utf8.size()) + 1);
    std::memcpy(m_buffer.data(), utf8.constData(), size_t(utf8.size()));
    m_buffer[utf8.size()] = '\0';
    const char status = m_cb.set_para_value(m_buffer.constData(), m_wizardId, address, 0);
    if (status != 'V')
        CheckErrCode(m_wizardId, quint8(status), QStringLiteral("TParaTable.PostParaControl"),
                     m_cb.get_error_text, address, koordinate);
    else if (!m_busy)
        Beep();
    return status;
}

bool TParaTable::GetFreshParaValue(quint32 address, const QString &koordinate, QString &value,
                                   quint8 &status)
{
    value.clear();
    const int row = GetRecNo(koordinate, false);
    if (!m_cb.get_para_value || address == 0) {
        if (row >= 0) value = Cell(row, QStringLiteral("Wert"));
        return true;
    }
    const auto ask = [&](const char *context, char *buf, qint32 size) {
        const qint32 n = m_cb.get_para_value(buf, size, m_wizardId, address, &status);
        if (!CheckErrCode(m_wizardId, status, QString::fromLatin1(context), m_cb.get_error_text,
                          address, koordinate))
            return qint32(-1);
        return n;
    };
    bool first = true;
    bool ok = false;
    const QByteArray text = callText(
        [&](char *buf, qint32 size) {
            const bool isFirst = first;
            first = false;
            return ask(isFirst ? "fcbtGetParaValue" : "TParaTable.GetFreshParaValue", buf, size);
        },
        ok);
    if (!ok || status != 0) return false;
    value = decodeText(text);
    if (row >= 0) SetCell(row, QStringLiteral("Wert"), value);
    return true;
}

// --- subscriptions ---------------------------------------------------------------------

void TParaTable::UnSubscribeParaControlUpdate(int index)
{
    if (isDesigning() || !m_cb.subscribe || m_online != omOnline || index < 0 ||
        size_t(index) >= m_updateList.size())
        return;
    m_cb.subscribe(m_wizardId, m_updateList[size_t(index)], -1);
    m_updateList.erase(m_updateList.begin() + index);
}

void TParaTable::ClearUpdateList()
{
    if (m_online != omOnline) return;
    while (!m_updateList.empty()) {
        const size_t before = m_updateList.size();
        UnSubscribeParaControlUpdate(0);
        if (m_updateList.size() == before) // no callback: nothing to cancel at the host
            m_updateList.clear();
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

void TParaTable::SetOnline(tOnlineModus mode)
{
    if (m_online == mode) return;
    if (m_online == omOnline && mode != omOnline)
        ClearUpdateList(); // still in online mode, so the host is told
    m_online = mode;
    if (isLoading() || !ownerForm()) return;
    rebuildControls();
    if (formHasPageControl()) return; // the page control registers its visible controls itself
    if (mode == omOnline) RegisterOnlineUpdatePars(ownerForm());
}

void TParaTable::AddIndirectUnitSource(const QString &koordinate)
{
    if (m_indirectUnits.indexOf(koordinate) < 0) m_indirectUnits << koordinate;
}

// --- messages ----------------------------------------------------------------------------

void TParaTable::wndProc(uint msg, quintptr wParam, qintptr lParam)
{
    if (msg == wmToolMessage)
        toolMsg(quint32(wParam), lParam);
    else if (msg == wmToolOnlineMode)
        onlineMsg(wParam);
}

void TParaTable::onlineMsg(quintptr wParam)
{
    if (m_busy) return;
    const int mode = int(wParam & 0xFF);
    if (mode > omRueckdoku) return; // not a mode this table knows
    SetOnline(tOnlineModus(mode));
    for (const quintptr handle : m_onlineChangeList)
        PostMessage(handle, wmOnlineChanged, quintptr(mode), 0);
}

} // namespace drivewiz
