#ifndef DRIVEWIZ_TABLES_MEASUREMENTPLOT_H
#define DRIVEWIZ_TABLES_MEASUREMENTPLOT_H

#include "drivewiz_global.h"
#include "tables/ImportOM_CSV.h"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

namespace drivewiz {

namespace tables {
class MinMaxIndex;
}

/// Draws the channels of a measurement (TImportOM_CSV) over time. Every pixel column
/// shows the smallest and largest sample it covers, so a channel of a million samples
/// draws as fast as one of a thousand and no peak is lost.
///
/// A cursor follows the mouse (or Left/Right; Shift moves ten pixels) and the line above
/// the plot reads each channel's value at it. The wheel, "+" and "-" zoom the time axis
/// around the cursor, dragging with the left button zooms to the dragged span,
/// Ctrl+Left/Right (or the middle button) move the view, Home or a double click shows
/// everything. With Normalised (the default) every channel is scaled to -1..1 so that
/// channels of different units share the plot; otherwise one axis shows them all.
class DRIVEWIZ_EXPORT TMeasurementPlot : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool Normalised READ Normalised WRITE SetNormalised)

public:
    explicit TMeasurementPlot(QWidget *parent = nullptr);
    ~TMeasurementPlot() override;

    TImportOM_CSV *Measurement() const { return m_data; }
    void SetMeasurement(TImportOM_CSV *measurement);
    bool Normalised() const { return m_normalised; }
    void SetNormalised(bool on);

    /// The time span shown.
    double ViewStart() const { return m_x0; }
    double ViewEnd() const { return m_x1; }
    void SetView(double start, double end);
    void ResetView();
    /// Zooms by a factor (2 = twice the detail) around a time.
    void Zoom(double factor, double around);
    /// The cursor's time and its sample (-1 without data).
    double CursorX() const { return m_cursor; }
    void SetCursorX(double x);
    int CursorSample() const;
    /// The read-out line: time and every channel's value at the cursor.
    QString ReadOut() const;
    /// The colour of a channel's curve.
    static QColor ChannelColor(int channel);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void cursorMoved(double x);
    void viewChanged(double start, double end);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void rebuild();
    QRect plotRect() const;
    double xAt(int px) const;
    double pxAt(double x) const;
    void valueRange(double &low, double &high) const;
    double yValue(int channel, double v) const;
    void drawAxes(QPainter &p, const QRect &r, double low, double high) const;
    void drawChannel(QPainter &p, const QRect &r, int channel, double low, double high) const;

    QPointer<TImportOM_CSV> m_data;
    std::vector<std::unique_ptr<tables::MinMaxIndex>> m_index;
    bool m_normalised = true;
    double m_x0 = 0;
    double m_x1 = 1;
    double m_cursor = 0;
    int m_dragFrom = -1;
    int m_dragTo = -1;
    int m_panFrom = -1;
};

} // namespace drivewiz

#endif // DRIVEWIZ_TABLES_MEASUREMENTPLOT_H
