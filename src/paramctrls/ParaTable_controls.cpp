// The parameter table's work on the form's parameter controls: binding and rebuilding
// them, posting and refreshing their values, subscriptions, finding a control by address
// and the pushed changes of message 0x8006. It lives here, beside the controls, so that
// the table's own folder needs nothing of the controls but a forward declaration.

#include "paramtable/ParaTable_p.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamCtrls_p.h"
#include "paramtable/coordinates.h"
#include "platform/dialogs.h"

#include <QApplication>
#include <QLineEdit>

namespace drivewiz {

void TParaTable::fontChanged()
{
    if (isLoading()) return;
    for (TParaClass *c : paraControls()) {
        if (c->wizParaSource() == this) c->FontChanged();
    }
}

QList<TParaClass *> TParaTable::paraControls() const
{
    QWidget *form = ownerForm();
    return form ? form->findChildren<TParaClass *>() : QList<TParaClass *>();
}

void TParaTable::reportBindError(TParaClass *control, const QString &error)
{
    QStringList chain;
    for (QObject *o = control; o; o = o->parent())
        chain << (o->objectName().isEmpty() ? QString::fromLatin1(o->metaObject()->className())
                                            : o->objectName());
    ShowMessage(QStringLiteral("Fehler in Komponente \"") + control->objectName() +
                QStringLiteral("\":\r") + error + QStringLiteral("\r") +
                QStringLiteral("Komponenten-Hierarchie:") + QStringLiteral("\r") +
                chain.join(QStringLiteral(" <- ")));
}

namespace {

// Controls as guarded pointers: any host call on the way may free some of them.
QList<QPointer<TParaClass>> guarded(const QList<TParaClass *> &controls)
{
    QList<QPointer<TParaClass>> out;
    out.reserve(controls.size());
    for (TParaClass *c : controls)
        out << c;
    return out;
}

} // namespace

void TParaTable::UpdateParaObjects(bool force)
{
    keepTypingOffline();
    for (const QPointer<TParaClass> &c : guarded(paraControls())) {
        if (!c || (c->wizParaSource() && c->wizParaSource() != this)) continue;
        try {
            c->SetwizParaSource(this);
            if (m_descriptionsLoaded || force) {
                c->RebuildParaControl();
                if (c) c->SucheGleicheParameter();
            } else {
                c->update();
            }
            if (c) c->RefreshVisible();
            if (c) c->MyOnChange();
        } catch (const std::exception &e) {
            if (c) reportBindError(c, QString::fromUtf8(e.what()));
        }
    }
}

void TParaTable::PostParaControl(TParaClass *control)
{
    const QPointer<TParaClass> c = control;
    if (!c || c->GetwriteLevel() >= 6 || !ParamExists(c->GetKoordinate())) return;
    const QString previous = c->PreviousText();
    const QString koord = c->GetKoordinate();
    m_writeOld = &previous;
    const char status = SetParaValue(c->Q7adr(), koord, c->GetText());
    m_writeOld = nullptr;
    if (status == 0) updateIndirectUnits(koord);
    if (status != 'V' || !c || m_hostDetached) return;
    const bool saved = m_textRestore;
    m_textRestore = true;
    c->SetText(previous);
    m_textRestore = saved;
    // The table keeps what the drive has, not the refused value.
    const int row = c ? FindParam(koord, c->Achse()) : -1;
    if (row >= 0) SetCell(row, QStringLiteral("Wert"), previous);
    if (!m_busy && c)
        MessageDlg(s_FreigabeAus + QStringLiteral(": ") + c->GetParamName(), MsgDlgType::Error,
                   mbOK);
}

void TParaTable::PostAllParams()
{
    const bool wasBusy = m_busy;
    m_busy = true;
    m_postingAll = true;
    QHash<quint32, PendingEdit> withoutControl = m_pendingEdits;
    for (const QPointer<TParaClass> &c : guarded(paraControls())) {
        if (c) withoutControl.remove(c->Q7adr());
        if (c) PostParaControl(c);
    }
    postPendingValues(withoutControl);
    m_postingAll = false;
    m_busy = wasBusy || m_hostDetached;
    m_pendingEdits.clear(); // OK wrote them
    if (m_hostDetached) return;
    const HostCallScope scope; // listeners are the host's code
    Q_EMIT valuesSaved();
}

// A read that failed leaves the control and its "Wert" as they were.
void TParaTable::RefreshParaControl(TParaClass *control, bool fromMessage)
{
    const QPointer<TParaClass> c = control;
    if (!c || !m_cb.get_para_value || c->GetParamName() == QLatin1String("???") ||
        !IsKoordinate(c->GetKoordinate()) || keepsOfflineEdit(c))
        return;
    quint8 status = fromMessage && m_online == omOnline ? 0x88 : 0;
    QString value;
    const bool read = GetFreshParaValue(c->Q7adr(), c->GetKoordinate(), value, status);
    if (!c || m_hostDetached) return;
    if (read && status == 0 && c->GetText() != value) refreshedValue(c, value);
    if (c) c->UpdateEinheit();
}

void TParaTable::refreshedValue(TParaClass *control, const QString &value)
{
    const QPointer<TParaClass> c = control;
    ++m_refreshing;
    c->SetText(value);
    --m_refreshing;
    if (!c) return;
    if (QWidget *edit = c->GetEditControl()) edit->update();
    const int row = FindParam(c->GetKoordinate(), c->Achse());
    if (row >= 0) {
        SetCell(row, QStringLiteral("Wert"), value);
        Q_EMIT valueRead(row);
    }
    updateIndirectUnits(c->GetKoordinate());
}

void TParaTable::RefreshVisibleParaControl(TParaClass *control)
{
    if (control && control->isVisible()) RefreshParaControl(control, false);
}

void TParaTable::ReadAllParams()
{
    UpdateGruppenCSVs(QStringLiteral("P"));
    UpdateGruppenCSVs(QStringLiteral("Q"));
    for (const QPointer<TParaClass> &c : guarded(paraControls())) {
        if (m_hostDetached) return;
        if (c) RefreshParaControl(c, false);
    }
}

// The address joins the list before the host hears of it, so that a host calling back
// meanwhile cannot make the table subscribe it twice.
void TParaTable::SubscribeParaControlUpdate(TParaClass *control)
{
    if (isDesigning() || !m_cb.subscribe || m_refreshRate == 0 || m_online != omOnline ||
        !control || m_hostDetached)
        return;
    const quint32 address = control->Q7adr();
    if (std::find(m_updateList.begin(), m_updateList.end(), address) != m_updateList.end()) return;
    m_updateList.push_back(address);
    const fcbtSubscribeParaUpdate subscribe = m_cb.subscribe;
    hostCall("fcbtSubscribeParaUpdate", [&] { subscribe(m_wizardId, address, m_refreshRate); });
}

void TParaTable::RegisterOnlineUpdatePars(QWidget *container)
{
    if (!container) return;
    for (const QPointer<TParaClass> &c : guarded(container->findChildren<TParaClass *>())) {
        if (m_hostDetached) return;
        if (c) c->RefreshValue();
        if (c) SubscribeParaControlUpdate(c);
    }
}

// --- values typed offline ----------------------------------------------------------------

void TParaTable::UserEdited(TParaClass *control)
{
    if (!control || m_online == omOnline) return;
    const QString koord = control->GetKoordinate();
    const int row = FindParam(koord, control->Achse());
    const QString old = Cell(row, QStringLiteral("Wert"));
    const QString value = control->GetText();
    if (row >= 0) SetCell(row, QStringLiteral("Wert"), value);
    markPending(control->Q7adr(), row, old, value);
    if (row >= 0) reportTableWrite(row, old, value);
    updateIndirectUnits(koord);
}

// Offline, a field the user is typing in holds an edit that its exit has not yet taken
// up; a refresh or rebuild must not throw it away.
bool TParaTable::keepsOfflineEdit(TParaClass *control)
{
    if (m_online == omOnline) return false;
    if (control->Focused()) {
        auto *edit = qobject_cast<QLineEdit *>(control->GetEditControl());
        if (edit ? edit->isModified() : control->GetText() != control->PreviousText())
            UserEdited(control);
    }
    return HasPendingEdit(control->Q7adr());
}

void TParaTable::keepTypingOffline()
{
    if (m_online == omOnline) return;
    for (QWidget *w = QApplication::focusWidget(); w; w = w->parentWidget()) {
        if (auto *c = qobject_cast<TParaClass *>(w)) {
            if (c->wizParaSource() == this) keepsOfflineEdit(c);
            return;
        }
    }
}

// Going online, the values typed offline go to the drive as any online change does.
void TParaTable::postPendingEdits()
{
    QHash<quint32, PendingEdit> pending;
    pending.swap(m_pendingEdits);
    for (const QPointer<TParaClass> &c : guarded(paraControls())) {
        if (m_hostDetached || pending.isEmpty()) return;
        if (!c || !pending.contains(c->Q7adr())) continue;
        // Pending while it is written, so that the write is reported with its old value.
        const quint32 address = c->Q7adr();
        m_pendingEdits.insert(address, pending.take(address));
        PostParaControl(c);
        m_pendingEdits.remove(address);
    }
    postPendingValues(pending);
}

void TParaTable::rebuildControls()
{
    for (const QPointer<TParaClass> &c : guarded(paraControls())) {
        if (c && c->wizParaSource() == this) c->RebuildParaControl();
    }
}

// The controls are indexed by address; among several of one address on the form, the
// first in a depth-first walk of the form counts.
TParaClass *TParaTable::FindParaControl(quint32 address) const
{
    QWidget *form = ownerForm();
    if (!form) return nullptr;
    TParaClass *first = nullptr;
    for (TParaClass *c : paractl::Registry::instance().byAddress(address)) {
        if (c->window() != form || c->componentState().testFlag(csDestroying)) continue;
        if (!first || paractl::depthFirstBefore(form, c, first)) first = c;
    }
    return first;
}

// A parameter that serves others as unit ("<A19>") changed: their unit labels follow.
void TParaTable::updateIndirectUnits(const QString &koordinate)
{
    QString koord = koordinate.trimmed();
    if (koord.size() > 2 && koord.at(0).isDigit() && koord.at(1) == QLatin1Char('.'))
        koord = koord.mid(2); // "2.A19": the unit follows its parameter on any axis
    if (!m_indirectUnits.contains(koord, Qt::CaseInsensitive)) return;
    for (const QPointer<TParaClass> &c : guarded(paraControls())) {
        if (c && c->IndirectUnitSource().trimmed().compare(koord, Qt::CaseInsensitive) == 0)
            c->UpdateEinheit();
    }
}

void TParaTable::ToolMsg(quintptr wParam, qintptr lParam)
{
    const auto address = quint32(wParam);
    if (m_busy || m_online != omOnline || (lParam & 1) == 0) return;
    if (address == m_lastPosted && m_clock() - m_lastPostTime < paratable::kEchoWindowMs) {
        m_lastPosted = 0; // the echo of our own write
        return;
    }
    const QPointer<TParaTable> self = this;
    const QPointer<TParaClass> control = FindParaControl(address);
    QString koord;
    int row = -1;
    if (control) {
        m_lastPosted = address;
        RefreshParaControl(control, false);
        if (control && control->OnChange && !m_hostDetached) {
            const HostCallScope scope;
            control->OnChange(control);
        }
        if (!self) return;
        copyToMirrors(control);
        letEventsRun();
        if (!self) return;
        m_lastPosted = 0;
        if (control) koord = control->GetKoordinate();
    } else if (!paratable::reservedAddress(address)) {
        koord = GetKoordinateAusQ7Adr(address);
        row = GetRecNo(koord, true);
        updateIndirectUnits(koord);
    }
    if (paratable::reservedAddress(address) || m_hostDetached) return;
    if (row < 0) row = GetRecNo(koord, false);
    const HostCallScope scope; // the listeners are the host's code
    if (OnToolMessage) OnToolMessage(address, koord, control, row);
    if (self) Q_EMIT toolMessage(address, koord, control, row);
}

// The values the table copies are read ones: the mirrors do not write them back.
void TParaTable::copyToMirrors(TParaClass *control)
{
    if (!control) return;
    const QString text = control->GetText();
    const QList<QPointer<TParaClass>> mirrors = control->SameParameterControls();
    ++m_refreshing;
    for (const QPointer<TParaClass> &mirror : mirrors) {
        if (mirror) mirror->SetText(text);
    }
    --m_refreshing;
}

// Pending messages may run here, but only from the outermost refresh: a flood of pushes
// must not nest one handler inside the next. Whatever runs may be the host's code.
void TParaTable::letEventsRun()
{
    if (m_toolMsgDepth > 0 || m_hostDetached) return;
    const HostCallScope scope;
    ++m_toolMsgDepth;
    const QPointer<TParaTable> self = this;
    QCoreApplication::processEvents();
    if (self) --m_toolMsgDepth;
}

} // namespace drivewiz
