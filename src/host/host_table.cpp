// The C entry points of host_api.h for a parameter table without a form.

#include "drivewiz/host_api.h"

#include "host/host_api_p.h"
#include "lang/wizDLLDefs.h"
#include "paramtable/ParaTable.h"
#include "util/Divers.h"

#include <QFileInfo>

#include <cstring>

using drivewiz::TParaTable;

namespace {

TParaTable *cast(dwz_table *table)
{
    return reinterpret_cast<TParaTable *>(table);
}

const TParaTable *cast(const dwz_table *table)
{
    return reinterpret_cast<const TParaTable *>(table);
}

QString text(const char *utf8)
{
    return utf8 ? QString::fromUtf8(utf8) : QString();
}

} // namespace

extern "C" {

dwz_table *dwz_table_create(void)
{
    return reinterpret_cast<dwz_table *>(new TParaTable);
}

// Freed later when the host does it from inside one of its callbacks (see
// dwz_form_destroy).
void dwz_table_destroy(dwz_table *table)
{
    if (!table) return;
    if (drivewiz::HostCallScope::depth() > 0) {
        cast(table)->DetachHost();
        drivewiz::hostapi::freeWhenDone(cast(table));
        return;
    }
    delete cast(table);
}

void dwz_table_set_callbacks(dwz_table *table, const dwz_callbacks *callbacks)
{
    if (table) cast(table)->SetCallbacks(callbacks ? *callbacks : dwz_callbacks{});
}

void dwz_table_set_wizard_id(dwz_table *table, uint32_t id, const char *idString)
{
    if (!table) return;
    cast(table)->SetWizardId(id);
    cast(table)->SetWizIdString(text(idString));
}

void dwz_table_set_user_level(dwz_table *table, int level)
{
    if (table) cast(table)->SetMaxRLevel(level);
}

void dwz_table_set_axis(dwz_table *table, int axis)
{
    if (table) cast(table)->SetCurrentAx(axis);
}

void dwz_table_set_language(dwz_table *table, int language)
{
    if (table) cast(table)->SetLanguage(language);
}

int dwz_table_load(dwz_table *table, const char *descriptionFile)
{
    if (!table) return -1;
    cast(table)->SetParamFileName(text(descriptionFile));
    cast(table)->ReloadCSVFile();
    return cast(table)->ColCount() > 0 ? cast(table)->RowCount() : -1;
}

void dwz_table_set_online(dwz_table *table, int mode)
{
    if (table && mode >= drivewiz::omOffline && mode <= drivewiz::omRueckdoku)
        cast(table)->SetOnline(drivewiz::tOnlineModus(mode));
}

int dwz_table_online(const dwz_table *table)
{
    return table ? int(cast(table)->Online()) : -1;
}

uintptr_t dwz_table_window(const dwz_table *table)
{
    return table ? uintptr_t(cast(table)->WindowHandle()) : 0;
}

int32_t dwz_table_value(dwz_table *table, const char *coordinate, char *buffer, int32_t size)
{
    if (!table) return -1;
    const int row = cast(table)->GetRecNo(text(coordinate), false);
    if (row < 0) return -1;
    const QByteArray value = cast(table)->ValueByColName(row, QStringLiteral("Wert")).toUtf8();
    if (buffer && size > 0) {
        const size_t n = std::min(size_t(value.size()), size_t(size) - 1);
        std::memcpy(buffer, value.constData(), n);
        buffer[n] = '\0';
    }
    return int32_t(value.size());
}

int dwz_table_refresh(dwz_table *table, const char *coordinate)
{
    if (!table) return 0;
    const int row = cast(table)->GetRecNo(text(coordinate), false);
    if (row < 0) return 0;
    const quint32 address = quint32(
        drivewiz::HexToInt(cast(table)->ValueByColName(row, QStringLiteral("USS-Adresse /hex"))));
    QString value;
    quint8 status = 0;
    return cast(table)->GetFreshParaValue(address, text(coordinate), value, status) && status == 0
               ? 1
               : 0;
}

int dwz_table_write(dwz_table *table, const char *coordinate, const char *value)
{
    if (!table) return -1;
    const QString koord = text(coordinate);
    const int row = cast(table)->GetRecNo(koord, false);
    if (row < 0 || cast(table)->Online() == drivewiz::omRueckdoku ||
        !cast(table)->Callbacks().set_para_value)
        return -1;
    const quint32 address = quint32(
        drivewiz::HexToInt(cast(table)->ValueByColName(row, QStringLiteral("USS-Adresse /hex"))));
    const drivewiz::TParaTable::OriginScope origin(cast(table), drivewiz::WriteOrigin::Host);
    const char status = cast(table)->SetParaValue(address, koord, text(value));
    // Found again: the host may have had rows described meanwhile, which moves them.
    const int now = cast(table)->GetRecNo(koord, false);
    if (status == 0 && now >= 0)
        cast(table)->SetValueByColName(now, QStringLiteral("Wert"), text(value));
    return static_cast<unsigned char>(status);
}

} // extern "C"
