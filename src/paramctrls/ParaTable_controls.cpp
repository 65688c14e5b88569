// The parameter table's work on the form's parameter controls: binding and rebuilding
// them, posting and refreshing their values, subscriptions, finding a control by address
// and the pushed changes of message 0x8006. It lives here, beside the controls, so that
// the table's own folder needs nothing of the controls but a forward declaration.

#include "paramtable/ParaTable.h"
#include "paramtable/ParaTable_p.h"

#include "lang/wizSprache.h"
#include "paramctrls/ParamCtrls.h"
#include "paramctrls/ParamCtrls_p.h"
#include "paramtable/coordinates.h"
#include "platform/dialogs.h"

#include <QCoreApplication>

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

void TParaTable::UpdateParaObjects(bool force)
{
    for (TParaClass *c : paraControls()) {
        if (c->wizParaSource() && c->wizParaSource() != this) continue;
        try {
            c->SetwizParaSource(this);
            if (m_descriptionsLoaded || force) {
                c->RebuildParaControl();
                c->SucheGleicheParameter();
            } else {
                c->update();
            }
            c->RefreshVisible();
            c->MyOnChange();
        } catch (const std::exception &e) {
            reportBindError(c, QString::fromUtf8(e.what()));
        }
    }
}

void TParaTable::PostParaControl(TParaClass *control)
{
    if (!control || control->GetwriteLevel() >= 6 || !ParamExists(control->GetKoordinate())) return;
    const QString previous = control->PreviousText();
    if (SetParaValue(control->Q7adr(), control->GetKoordinate(), control->GetText()) != 'V') return;
    const bool saved = m_textRestore;
    m_textRestore = true;
    control->SetText(previous);
    m_textRestore = saved;
    if (!m_busy)
        MessageDlg(s_FreigabeAus + QStringLiteral(": ") + control->GetParamName(),
                   MsgDlgType::Error, mbOK);
}

void TParaTable::PostAllParams()
{
    m_busy = true;
    for (TParaClass *c : paraControls())
        PostParaControl(c);
    m_busy = false;
}

void TParaTable::RefreshParaControl(TParaClass *control, bool fromMessage)
{
    if (!control || !m_cb.get_para_value || control->GetParamName() == QLatin1String("???") ||
        !IsKoordinate(control->GetKoordinate()))
        return;
    quint8 status = fromMessage && m_online == omOnline ? 0x88 : 0;
    QString value;
    GetFreshParaValue(control->Q7adr(), control->GetKoordinate(), value, status);
    if (status == 0 && control->GetText() != value) {
        ++m_refreshing;
        control->SetText(value);
        --m_refreshing;
        if (QWidget *edit = control->GetEditControl()) edit->update();
        const int row = FindParam(control->GetKoordinate(), control->Achse());
        if (row >= 0) SetCell(row, QStringLiteral("Wert"), value);
    }
    control->UpdateEinheit();
}

void TParaTable::RefreshVisibleParaControl(TParaClass *control)
{
    if (control && control->isVisible()) RefreshParaControl(control, false);
}

void TParaTable::ReadAllParams()
{
    UpdateGruppenCSVs(QStringLiteral("P"));
    UpdateGruppenCSVs(QStringLiteral("Q"));
    for (TParaClass *c : paraControls())
        RefreshParaControl(c, false);
}

void TParaTable::SubscribeParaControlUpdate(TParaClass *control)
{
    if (isDesigning() || !m_cb.subscribe || m_refreshRate == 0 || m_online != omOnline || !control)
        return;
    const quint32 address = control->Q7adr();
    if (std::find(m_updateList.begin(), m_updateList.end(), address) != m_updateList.end()) return;
    m_cb.subscribe(m_wizardId, address, m_refreshRate);
    m_updateList.push_back(address);
}

void TParaTable::RegisterOnlineUpdatePars(QWidget *container)
{
    if (!container) return;
    for (TParaClass *c : container->findChildren<TParaClass *>()) {
        c->RefreshValue();
        SubscribeParaControlUpdate(c);
    }
}

void TParaTable::rebuildControls()
{
    for (TParaClass *c : paraControls()) {
        if (c->wizParaSource() == this) c->RebuildParaControl();
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

// A parameter that serves others as unit changed: their unit labels follow.
void TParaTable::updateIndirectUnits(const QString &koordinate)
{
    if (!m_indirectUnits.contains(koordinate.trimmed(), Qt::CaseInsensitive)) return;
    for (TParaClass *c : paraControls())
        c->UpdateEinheit();
}

void TParaTable::toolMsg(quint32 address, qintptr lParam)
{
    if (m_busy || m_online != omOnline || (lParam & 1) == 0) return;
    if (address == m_lastPosted && m_clock() - m_lastPostTime < paratable::kEchoWindowMs) {
        m_lastPosted = 0; // the echo of our own write
        return;
    }
    QPointer<TParaClass> control = FindParaControl(address);
    QString koord;
    int row = -1;
    if (control) {
        m_lastPosted = address;
        RefreshParaControl(control, false);
        if (control && control->OnChange) control->OnChange(control);
        if (control) {
            for (const QPointer<TParaClass> &mirror : control->SameParameterControls()) {
                if (mirror) mirror->SetText(control->GetText());
            }
        }
        // Pending messages may run here, but only from the outermost refresh: a flood of
        // pushes must not nest one handler inside the next.
        if (m_toolMsgDepth == 0) {
            ++m_toolMsgDepth;
            QCoreApplication::processEvents();
            --m_toolMsgDepth;
        }
        m_lastPosted = 0;
    } else if (!paratable::reservedAddress(address)) {
        koord = GetKoordinateAusQ7Adr(address);
        row = GetRecNo(koord, true);
    }
    if (!OnToolMessage || paratable::reservedAddress(address)) return;
    if (koord.isEmpty() && control) koord = control->GetKoordinate();
    if (row < 0) row = GetRecNo(koord, false);
    OnToolMessage(address, koord, control, row);
}

} // namespace drivewiz
