#ifndef DRIVEWIZ_WIZHOST_TABLESDEMO_H
#define DRIVEWIZ_WIZHOST_TABLESDEMO_H

// The demo host's tables: the "Tables" wizard (array group with element stepping, CSV
// export and import with a file history, process-data lengths) and the "Measurement"
// window that plots a recording of the simulated drive.

#include "tables/ImportOM_CSV.h"
#include "tables/MeasurementPlot.h"
#include "widgets/HList.h"

#include <QDialog>
#include <QPointer>
#include <QTemporaryDir>

#include <functional>

class QCheckBox;
class QLabel;

namespace drivewiz::wizhost {

class HostSession;

/// The INI file of the demo's file histories, beside wiz.cfg.
QString HistoryFileName();

/// Wires a loaded "Tables" wizard: element buttons and Page Up/Page Down, the element and
/// checksum labels, export and import through the file history, the telegram lengths.
void PrepareTablesForm(QWidget *form, HostSession &session);

/// What the tour does on a page of the "Tables" wizard: steps, types, exports into
/// `outDir`, imports, overfills a telegram. Lines go to `say`.
void TablesTourPage(QWidget *form, QWidget *page, const QString &outDir,
                    const std::function<void(const QString &)> &say);

/// A window with a recording of the simulated drive, plotted: "Record" makes a new one,
/// "Open..." reads a file, the history lists the last files.
class MeasurementWindow : public QDialog
{
    Q_OBJECT

public:
    explicit MeasurementWindow(HostSession &session, QWidget *parent = nullptr);
    ~MeasurementWindow() override;

    /// Lets the drive record a move and shows it; false when that failed.
    bool Record();
    bool Open(const QString &fileName);
    TMeasurementPlot *Plot() const { return m_plot; }
    TImportOM_CSV *Measurement() const { return m_data; }

private:
    void showInfo();
    /// A text of the window in the session's language (section "Tables").
    QString text(const char *key, const char *german) const;

    HostSession &m_session;
    QTemporaryDir m_dir;
    int m_recordings = 0;
    QPointer<TImportOM_CSV> m_data;
    QPointer<TMeasurementPlot> m_plot;
    QPointer<THistoryCombo> m_files;
    QPointer<QLabel> m_info;
    QPointer<QCheckBox> m_normalised;
};

} // namespace drivewiz::wizhost

#endif // DRIVEWIZ_WIZHOST_TABLESDEMO_H
