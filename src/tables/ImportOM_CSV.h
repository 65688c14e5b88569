#ifndef DRIVEWIZ_TABLES_IMPORTOM_CSV_H
#define DRIVEWIZ_TABLES_IMPORTOM_CSV_H

#include "drivewiz_global.h"
#include "paramtable/ParaTable.h"
#include "platform/component.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <vector>

namespace drivewiz {


/// A recorded measurement read from a CSV file: a time column and channels, each channel
/// named in the title line by a parameter coordinate ("E08", "2.E08") or by a free name,
/// with its unit in brackets ("E08 [rpm]") or in a unit line below the titles. The file
/// may start with a sampling-time line ("Abtastzeit;1 ms") and comment lines ("#...");
/// "," or ";" (or a tab) separate the fields, ";" and tab files may use decimal commas;
/// Windows-1252 or UTF-8. The format is described in docs/tables.md.
///
/// A channel named by a coordinate takes its parameter's name, unit and scaling from the
/// parameter table (ParaSource), which gives its values in the drive's counts
/// (NormalizeTo16384LSB). A file that cannot be read keeps the previous measurement and
/// is reported with the line and column at fault.
///
/// On a form it is a widget that is never shown at run time, like the parameter table.
class DRIVEWIZ_EXPORT TImportOM_CSV : public QWidget, public Component
{
    Q_OBJECT
    Q_PROPERTY(QString FileName READ FileName WRITE SetFileName)
    Q_PROPERTY(QString ParaSource READ ParaSourceName WRITE SetParaSourceName)

public:
    /// How Normalized() scales a channel: not at all, to the drive's counts (16384 counts
    /// = GetValueAt16384LSB of the parameter), or to -1..1 (by the largest magnitude).
    enum TNormMode { nmNone, nm16384LSB, nmUnit };
    Q_ENUM(TNormMode)

    struct Channel
    {
        QString title;      ///< the title-line text, unit taken off
        QString koordinate; ///< the coordinate it names, or empty
        QString name;       ///< the parameter's name from the table, else the title
        QString unit;       ///< the table's unit, else the file's
        std::vector<double> y;
        double min = 0;
        double max = 0;
        double valueAt16384 = 0; ///< the parameter's scaling; 0 when unknown
    };

    explicit TImportOM_CSV(QWidget *parent = nullptr);
    ~TImportOM_CSV() override;

    QString FileName() const { return m_fileName; }
    /// Names the file; outside form loading it is read at once.
    void SetFileName(const QString &fileName);
    TParaTable *ParaSource() const { return m_table; }
    void SetwizParaSource(TParaTable *table);
    QString ParaSourceName() const;
    void SetParaSourceName(const QString &objectName);

    /// Reads a measurement; false (reported) when the file is unreadable or broken, and
    /// the previous measurement stays.
    bool LoadFromFile(const QString &fileName);
    /// The same from bytes; `name` names them in messages. Reports nothing when `error`
    /// is given: the reason goes there.
    bool LoadFromBytes(const QByteArray &bytes, const QString &name, QString *error = nullptr);
    void Clear();
    /// Takes name, unit and scaling of every channel named by a coordinate from the table.
    void SyncParaTable();

    int ChannelCount() const { return int(m_channels.size()); }
    int SampleCount() const { return int(m_x.size()); }
    const Channel &GetChannel(int channel) const;
    /// Time of every sample, in XUnit.
    const std::vector<double> &XValues() const { return m_x; }
    double XMin() const { return m_x.empty() ? 0 : m_x.front(); }
    double XMax() const { return m_x.empty() ? 0 : m_x.back(); }
    QString XTitle() const { return m_xTitle; }
    QString XUnit() const { return m_xUnit; }
    /// The sampling time of the file's sampling-time line (in XUnit), 0 without one.
    double SamplingTime() const { return m_samplingTime; }
    const std::vector<double> &YValues(int channel) const { return GetChannel(channel).y; }
    double YMin(int channel) const { return GetChannel(channel).min; }
    double YMax(int channel) const { return GetChannel(channel).max; }
    /// The physical value at 16384 counts of a channel's parameter; 0 when unknown.
    double GetValueAt16384LSB(int channel) const { return GetChannel(channel).valueAt16384; }
    /// Whether a channel can be scaled so.
    bool CanNormalize(int channel, TNormMode mode) const;
    /// A sample scaled; the raw value when the channel cannot be scaled so.
    double NormalizedValue(int channel, int sample, TNormMode mode) const;
    /// All samples of a channel scaled (empty when it cannot be scaled so).
    std::vector<double> Normalized(int channel, TNormMode mode) const;
    /// The sample nearest to a time (-1 without samples).
    int SampleAt(double x) const;

    void Loaded() override;

Q_SIGNALS:
    /// A measurement was read, or the table changed what its channels are called.
    void changed();

private:
    QString m_fileName;
    QPointer<TParaTable> m_table;
    QString m_tableName;
    std::vector<double> m_x;
    std::vector<Channel> m_channels;
    QString m_xTitle;
    QString m_xUnit;
    double m_samplingTime = 0;
};

} // namespace drivewiz

#endif // DRIVEWIZ_TABLES_IMPORTOM_CSV_H
