#include "tables/ImportOM_CSV.h"

#include "paramctrls/ParamCtrls.h"
#include "paramtable/ParaTable.h"
#include "platform/convert.h"
#include "platform/dialogs.h"
#include "tables/ImportOM_CSV_p.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace drivewiz {

namespace {

constexpr qint64 kMaxFileBytes = qint64(1) << 30;

} // namespace

TImportOM_CSV::TImportOM_CSV(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("ImportOM_CSV"));
    setVisible(false); // a component, not something to look at
}

TImportOM_CSV::~TImportOM_CSV() = default;

void TImportOM_CSV::SetFileName(const QString &fileName)
{
    m_fileName = fileName;
    if (!isLoading() && !isDesigning() && !fileName.isEmpty()) LoadFromFile(fileName);
}

void TImportOM_CSV::SetwizParaSource(TParaTable *table)
{
    m_table = table;
    if (table) m_tableName = table->objectName();
    if (!isLoading()) SyncParaTable();
}

QString TImportOM_CSV::ParaSourceName() const
{
    return m_table ? m_table->objectName() : m_tableName;
}

void TImportOM_CSV::SetParaSourceName(const QString &objectName)
{
    m_tableName = objectName;
    QWidget *form = window();
    if (form && !objectName.isEmpty()) m_table = form->findChild<TParaTable *>(objectName);
}

void TImportOM_CSV::Loaded()
{
    Component::Loaded();
    if (!m_table && window()) {
        m_table = m_tableName.isEmpty() ? window()->findChild<TParaTable *>()
                                        : window()->findChild<TParaTable *>(m_tableName);
    }
    if (!isDesigning() && !m_fileName.isEmpty()) LoadFromFile(m_fileName);
}

bool TImportOM_CSV::LoadFromFile(const QString &fileName)
{
    QFile file(fileName);
    QString error;
    if (!file.open(QIODevice::ReadOnly))
        error = QStringLiteral("die Datei kann nicht gelesen werden (%1)").arg(file.errorString());
    else if (file.size() > kMaxFileBytes)
        error = QStringLiteral("die Datei ist grösser als %1 MB").arg(kMaxFileBytes >> 20);
    if (error.isEmpty() && LoadFromBytes(file.readAll(), fileName, &error)) {
        m_fileName = fileName;
        return true;
    }
    ShowMessage(QStringLiteral("Messung nicht gelesen: ") + fileName + QLatin1Char('\r') + error);
    return false;
}

bool TImportOM_CSV::LoadFromBytes(const QByteArray &bytes, const QString &name, QString *error)
{
    tables::ParsedMeasurement parsed;
    tables::MeasurementError e;
    if (!tables::parseMeasurement(bytes, parsed, e)) {
        QString where;
        if (e.line > 0) where = QStringLiteral("Zeile %1").arg(e.line);
        if (e.line > 0 && e.column > 0) where += QStringLiteral(", Spalte %1").arg(e.column);
        const QString text = (where.isEmpty() ? QString() : where + QStringLiteral(": ")) + e.text;
        if (error)
            *error = text;
        else
            ShowMessage(QStringLiteral("Messung nicht gelesen: ") + name + QLatin1Char('\r') + text);
        return false;
    }
    m_x = std::move(parsed.x);
    m_channels = std::move(parsed.channels);
    m_xTitle = parsed.xTitle;
    m_xUnit = parsed.xUnit;
    m_samplingTime = parsed.samplingTime;
    SyncParaTable();
    Q_EMIT changed();
    return true;
}

void TImportOM_CSV::Clear()
{
    m_x.clear();
    m_channels.clear();
    m_xTitle.clear();
    m_xUnit.clear();
    m_samplingTime = 0;
    Q_EMIT changed();
}

void TImportOM_CSV::SyncParaTable()
{
    if (!m_table) return;
    bool any = false;
    for (Channel &ch : m_channels) {
        if (ch.koordinate.isEmpty()) continue;
        quint32 address = 0;
        const int row = m_table->FindRecord(ch.koordinate, QString::number(m_table->CurrentAx()), address);
        if (row < 0) continue;
        const QString name = m_table->Cell(row, QStringLiteral("Name"));
        const QString unit = m_table->Cell(row, QStringLiteral("Einheit")).trimmed();
        if (!name.isEmpty()) ch.name = name;
        if (!unit.isEmpty() && !TParaClass::IsIndirekteEinheit(unit)) ch.unit = unit;
        try {
            ch.valueAt16384 = drivewiz::GetValueAt16384LSB(m_table, row);
        } catch (const ConvertError &) {
            ch.valueAt16384 = 0; // a scaling text that is no number: the channel stays unscaled
        }
        any = true;
    }
    if (any) Q_EMIT changed();
}

const TImportOM_CSV::Channel &TImportOM_CSV::GetChannel(int channel) const
{
    static const Channel none;
    return channel >= 0 && channel < ChannelCount() ? m_channels[size_t(channel)] : none;
}

bool TImportOM_CSV::CanNormalize(int channel, TNormMode mode) const
{
    if (channel < 0 || channel >= ChannelCount()) return false;
    const Channel &ch = m_channels[size_t(channel)];
    if (mode == nm16384LSB) return ch.valueAt16384 != 0 && std::isfinite(ch.valueAt16384);
    return true;
}

double TImportOM_CSV::NormalizedValue(int channel, int sample, TNormMode mode) const
{
    const Channel &ch = GetChannel(channel);
    if (sample < 0 || size_t(sample) >= ch.y.size()) return 0;
    const double v = ch.y[size_t(sample)];
    if (!CanNormalize(channel, mode)) return v;
    if (mode == nm16384LSB) return v / ch.valueAt16384 * 16384;
    if (mode == nmUnit) {
        const double magnitude = std::max(std::fabs(ch.min), std::fabs(ch.max));
        return magnitude > 0 ? v / magnitude : 0;
    }
    return v;
}

std::vector<double> TImportOM_CSV::Normalized(int channel, TNormMode mode) const
{
    std::vector<double> out;
    if (!CanNormalize(channel, mode)) return out;
    const int n = int(GetChannel(channel).y.size());
    out.reserve(size_t(n));
    for (int i = 0; i < n; ++i)
        out.push_back(NormalizedValue(channel, i, mode));
    return out;
}

int TImportOM_CSV::SampleAt(double x) const
{
    if (m_x.empty()) return -1;
    const auto it = std::lower_bound(m_x.begin(), m_x.end(), x);
    if (it == m_x.end()) return SampleCount() - 1;
    const int i = int(it - m_x.begin());
    if (i > 0 && x - m_x[size_t(i - 1)] <= *it - x) return i - 1;
    return i;
}

} // namespace drivewiz
