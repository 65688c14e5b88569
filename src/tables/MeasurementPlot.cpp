// The measurement plot: a min/max envelope per pixel column, axes, cursor and zoom.

#include "tables/MeasurementPlot.h"

#include "tables/MeasurementPlot_p.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace drivewiz {

namespace tables {

MinMaxIndex::MinMaxIndex(const std::vector<double> &values) : m_values(values)
{
    const size_t blocks = (values.size() + kBlock - 1) / kBlock;
    m_low.resize(blocks);
    m_high.resize(blocks);
    for (size_t b = 0; b < blocks; ++b) {
        const auto first = values.begin() + qsizetype(b * kBlock);
        const auto last = values.begin() + qsizetype(std::min(values.size(), (b + 1) * kBlock));
        const auto [lo, hi] = std::minmax_element(first, last);
        m_low[b] = *lo;
        m_high[b] = *hi;
    }
}

bool MinMaxIndex::range(int from, int to, double &low, double &high) const
{
    from = std::max(from, 0);
    to = std::min(to, int(m_values.size()));
    if (from >= to) return false;
    low = high = m_values[size_t(from)];
    const auto take = [&](double lo, double hi) {
        low = std::min(low, lo);
        high = std::max(high, hi);
    };
    int i = from;
    for (; i < to && i % kBlock != 0; ++i)
        take(m_values[size_t(i)], m_values[size_t(i)]);
    for (; i + kBlock <= to; i += kBlock)
        take(m_low[size_t(i / kBlock)], m_high[size_t(i / kBlock)]);
    for (; i < to; ++i)
        take(m_values[size_t(i)], m_values[size_t(i)]);
    return true;
}

} // namespace tables

namespace {

// 1, 2 or 5 times a power of ten, so that the span holds about `count` steps.
double niceStep(double span, int count)
{
    if (!(span > 0) || count < 1) return 1;
    const double raw = span / count;
    const double base = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double m : {1.0, 2.0, 5.0}) {
        if (raw <= m * base) return m * base;
    }
    return 10 * base;
}

QString number(double v)
{
    if (std::fabs(v) < 1e-12) v = 0;
    return QString::number(v, 'g', 6);
}

} // namespace

TMeasurementPlot::TMeasurementPlot(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("MeasurementPlot"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Measurement plot"));
}

TMeasurementPlot::~TMeasurementPlot() = default;

void TMeasurementPlot::SetMeasurement(TImportOM_CSV *measurement)
{
    if (m_data) disconnect(m_data, nullptr, this, nullptr);
    m_data = measurement;
    if (measurement) connect(measurement, &TImportOM_CSV::changed, this, &TMeasurementPlot::rebuild);
    rebuild();
}

void TMeasurementPlot::rebuild()
{
    m_index.clear();
    if (m_data) {
        for (int c = 0; c < m_data->ChannelCount(); ++c)
            m_index.push_back(std::make_unique<tables::MinMaxIndex>(m_data->YValues(c)));
    }
    ResetView();
    m_cursor = m_x0;
    update();
}

void TMeasurementPlot::SetNormalised(bool on)
{
    if (m_normalised == on) return;
    m_normalised = on;
    update();
}

void TMeasurementPlot::SetView(double start, double end)
{
    const double lo = m_data && m_data->SampleCount() ? m_data->XMin() : 0;
    const double hi = m_data && m_data->SampleCount() ? m_data->XMax() : 1;
    if (hi <= lo) {
        m_x0 = lo - 1;
        m_x1 = lo + 1;
    } else {
        if (start > end) std::swap(start, end);
        const double minSpan = (hi - lo) * 1e-9;
        if (end - start < minSpan) end = start + minSpan;
        const double span = std::min(end - start, hi - lo);
        m_x0 = std::clamp(start, lo, hi - span);
        m_x1 = m_x0 + span;
    }
    update();
    Q_EMIT viewChanged(m_x0, m_x1);
}

void TMeasurementPlot::ResetView()
{
    SetView(-1e300, 1e300);
}

void TMeasurementPlot::Zoom(double factor, double around)
{
    if (!(factor > 0)) return;
    around = std::clamp(around, m_x0, m_x1);
    SetView(around - (around - m_x0) / factor, around + (m_x1 - around) / factor);
}

void TMeasurementPlot::SetCursorX(double x)
{
    x = std::clamp(x, m_x0, m_x1);
    if (x == m_cursor) return;
    m_cursor = x;
    update();
    Q_EMIT cursorMoved(x);
}

int TMeasurementPlot::CursorSample() const
{
    return m_data ? m_data->SampleAt(m_cursor) : -1;
}

QString TMeasurementPlot::ReadOut() const
{
    const int i = CursorSample();
    if (i < 0) return QString();
    QStringList parts;
    parts << QStringLiteral("%1 = %2 %3")
                 .arg(m_data->XTitle().isEmpty() ? QStringLiteral("t") : m_data->XTitle(),
                      number(m_data->XValues()[size_t(i)]), m_data->XUnit())
                 .trimmed();
    for (int c = 0; c < m_data->ChannelCount(); ++c) {
        const auto &ch = m_data->GetChannel(c);
        const QString label = ch.koordinate.isEmpty() || ch.name == ch.title
                                  ? ch.title
                                  : ch.koordinate + QLatin1Char(' ') + ch.name;
        parts << QStringLiteral("%1: %2 %3").arg(label, number(ch.y[size_t(i)]), ch.unit).trimmed();
    }
    return parts.join(QStringLiteral("   "));
}

QColor TMeasurementPlot::ChannelColor(int channel)
{
    static const QColor colours[] = {QColor(0x1f, 0x4e, 0xb4), QColor(0xc8, 0x1e, 0x1e),
                                     QColor(0x1e, 0x8c, 0x32), QColor(0xe0, 0x7b, 0x00),
                                     QColor(0x7a, 0x2e, 0xb0), QColor(0x00, 0x8c, 0x8c),
                                     QColor(0x8c, 0x5a, 0x1e), QColor(0xc8, 0x28, 0x96)};
    return colours[std::abs(channel) % 8];
}

QSize TMeasurementPlot::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 24};
}

QSize TMeasurementPlot::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 30, fontMetrics().height() * 8};
}

// --- geometry ---------------------------------------------------------------------------------

QRect TMeasurementPlot::plotRect() const
{
    const QFontMetrics fm = fontMetrics();
    const int left = fm.horizontalAdvance(QStringLiteral("-0.00000")) + 8;
    const int top = fm.height() * 2;
    const int bottom = fm.height() * 2;
    return QRect(left, top, std::max(width() - left - 12, 10), std::max(height() - top - bottom, 10));
}

double TMeasurementPlot::xAt(int px) const
{
    const QRect r = plotRect();
    return m_x0 + (m_x1 - m_x0) * double(px - r.left()) / double(r.width());
}

double TMeasurementPlot::pxAt(double x) const
{
    const QRect r = plotRect();
    return r.left() + (x - m_x0) / (m_x1 - m_x0) * r.width();
}

void TMeasurementPlot::valueRange(double &low, double &high) const
{
    low = -1;
    high = 1;
    if (!m_data || m_data->ChannelCount() == 0) return;
    if (!m_normalised) {
        low = m_data->YMin(0);
        high = m_data->YMax(0);
        for (int c = 1; c < m_data->ChannelCount(); ++c) {
            low = std::min(low, m_data->YMin(c));
            high = std::max(high, m_data->YMax(c));
        }
        if (high <= low) {
            low -= 1;
            high += 1;
        }
    }
    const double pad = (high - low) * 0.05;
    low -= pad;
    high += pad;
}

double TMeasurementPlot::yValue(int channel, double v) const
{
    if (!m_normalised) return v;
    const double magnitude = std::max(std::fabs(m_data->YMin(channel)), std::fabs(m_data->YMax(channel)));
    return magnitude > 0 ? v / magnitude : 0;
}

// --- painting ---------------------------------------------------------------------------------

void TMeasurementPlot::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), palette().color(QPalette::Base));
    const QRect r = plotRect();
    double low = 0, high = 0;
    valueRange(low, high);
    drawAxes(p, r, low, high);
    if (!m_data || m_data->SampleCount() == 0) {
        p.setPen(palette().color(QPalette::PlaceholderText));
        p.drawText(r, Qt::AlignCenter, tr("No measurement"));
        return;
    }
    p.save();
    p.setClipRect(r.adjusted(0, 0, 1, 1));
    for (int c = 0; c < m_data->ChannelCount(); ++c)
        drawChannel(p, r, c, low, high);
    const int cx = int(std::lround(pxAt(m_cursor)));
    p.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    p.drawLine(cx, r.top(), cx, r.bottom());
    if (m_dragFrom >= 0 && m_dragTo >= 0) {
        QColor band = palette().color(QPalette::Highlight);
        band.setAlpha(60);
        p.fillRect(QRect(QPoint(std::min(m_dragFrom, m_dragTo), r.top()),
                         QPoint(std::max(m_dragFrom, m_dragTo), r.bottom())),
                   band);
    }
    p.restore();
    // The read-out line above the plot, each channel in its colour.
    const QFontMetrics fm = fontMetrics();
    int x = r.left();
    const int y = fm.ascent() + fm.height() / 2;
    const QStringList parts = ReadOut().split(QStringLiteral("   "));
    for (int i = 0; i < parts.size(); ++i) {
        p.setPen(i == 0 ? palette().color(QPalette::Text) : ChannelColor(i - 1));
        p.drawText(x, y, parts.at(i));
        x += fm.horizontalAdvance(parts.at(i)) + fm.averageCharWidth() * 3;
    }
}

void TMeasurementPlot::drawAxes(QPainter &p, const QRect &r, double low, double high) const
{
    const QFontMetrics fm = fontMetrics();
    const QColor grid = palette().color(QPalette::Midlight);
    const QColor text = palette().color(QPalette::Text);
    p.setPen(text);
    p.drawRect(r);
    const double xs = niceStep(m_x1 - m_x0, std::max(2, r.width() / (fm.averageCharWidth() * 12)));
    for (double v = std::ceil(m_x0 / xs) * xs; v <= m_x1 + xs * 1e-9; v += xs) {
        const int px = int(std::lround(pxAt(v)));
        p.setPen(grid);
        p.drawLine(px, r.top() + 1, px, r.bottom() - 1);
        p.setPen(text);
        const QString label = number(v);
        p.drawText(px - fm.horizontalAdvance(label) / 2, r.bottom() + fm.ascent() + 3, label);
    }
    if (m_data) {
        const QString unit = m_data->XUnit().isEmpty() ? m_data->XTitle() : m_data->XUnit();
        p.drawText(r.right() - fm.horizontalAdvance(unit), r.bottom() + fm.height() + fm.ascent() + 2, unit);
    }
    const double ys = niceStep(high - low, std::max(2, r.height() / (fm.height() * 3)));
    for (double v = std::ceil(low / ys) * ys; v <= high + ys * 1e-9; v += ys) {
        const int py = int(std::lround(r.bottom() - (v - low) / (high - low) * r.height()));
        p.setPen(grid);
        p.drawLine(r.left() + 1, py, r.right() - 1, py);
        p.setPen(text);
        const QString label = number(v);
        p.drawText(r.left() - fm.horizontalAdvance(label) - 4, py + fm.ascent() / 2 - 1, label);
    }
}

void TMeasurementPlot::drawChannel(QPainter &p, const QRect &r, int channel, double low,
                                   double high) const
{
    const std::vector<double> &xs = m_data->XValues();
    const std::vector<double> &ys = m_data->YValues(channel);
    const auto py = [&](double v) { return r.bottom() - (yValue(channel, v) - low) / (high - low) * r.height(); };
    int first = int(std::lower_bound(xs.begin(), xs.end(), m_x0) - xs.begin()) - 1;
    int last = int(std::upper_bound(xs.begin(), xs.end(), m_x1) - xs.begin()) + 1;
    first = std::max(first, 0);
    last = std::min(last, int(xs.size()));
    p.setPen(QPen(ChannelColor(channel), 1));
    if (last - first <= r.width() * 2) {
        // Few samples in view: the curve through them.
        QPolygonF line;
        line.reserve(last - first);
        for (int i = first; i < last; ++i)
            line << QPointF(pxAt(xs[size_t(i)]), py(ys[size_t(i)]));
        p.setRenderHint(QPainter::Antialiasing, true);
        p.drawPolyline(line);
        p.setRenderHint(QPainter::Antialiasing, false);
        return;
    }
    // Many samples: per pixel column the span from the smallest to the largest sample it
    // covers, joined to the column before by that column's last sample.
    QVector<QLineF> lines;
    lines.reserve(r.width() + 1);
    const tables::MinMaxIndex &index = *m_index[size_t(channel)];
    int from = first;
    for (int c = 0; c <= r.width(); ++c) {
        const double xb = xAt(r.left() + c + 1);
        const int to = int(std::lower_bound(xs.begin() + from, xs.begin() + last, xb) - xs.begin());
        double lo = 0, hi = 0;
        if (index.range(from > 0 ? from - 1 : from, std::max(to, from + 1), lo, hi)) {
            const double x = r.left() + c + 0.5;
            lines << QLineF(x, py(hi), x, py(lo) + 0.01);
        }
        from = std::max(to, from);
    }
    p.drawLines(lines);
}

// --- the mouse and the keys -------------------------------------------------------------------

void TMeasurementPlot::mouseMoveEvent(QMouseEvent *event)
{
    const int px = int(event->position().x());
    if (m_panFrom >= 0) {
        const double shift = xAt(m_panFrom) - xAt(px);
        m_panFrom = px;
        SetView(m_x0 + shift, m_x1 + shift);
    }
    if (m_dragFrom >= 0) m_dragTo = px;
    SetCursorX(xAt(px));
}

void TMeasurementPlot::mousePressEvent(QMouseEvent *event)
{
    const int px = int(event->position().x());
    if (event->button() == Qt::LeftButton) {
        m_dragFrom = px;
        m_dragTo = px;
    } else if (event->button() == Qt::MiddleButton) {
        m_panFrom = px;
    }
    SetCursorX(xAt(px));
}

void TMeasurementPlot::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && m_dragFrom >= 0) {
        const int to = int(event->position().x());
        if (std::abs(to - m_dragFrom) > 4) SetView(xAt(m_dragFrom), xAt(to));
        m_dragFrom = m_dragTo = -1;
        update();
    } else if (event->button() == Qt::MiddleButton) {
        m_panFrom = -1;
    }
}

void TMeasurementPlot::mouseDoubleClickEvent(QMouseEvent *)
{
    ResetView();
}

void TMeasurementPlot::wheelEvent(QWheelEvent *event)
{
    const int steps = event->angleDelta().y() / 120;
    if (steps == 0) return;
    Zoom(std::pow(1.25, steps), xAt(int(event->position().x())));
    event->accept();
}

void TMeasurementPlot::keyPressEvent(QKeyEvent *event)
{
    const bool ctrl = event->modifiers() & Qt::ControlModifier;
    const int pixels = event->modifiers() & Qt::ShiftModifier ? 10 : 1;
    const double perPixel = (m_x1 - m_x0) / plotRect().width();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const double sign = event->key() == Qt::Key_Left ? -1 : 1;
        if (ctrl) {
            const double shift = sign * (m_x1 - m_x0) / 10;
            SetView(m_x0 + shift, m_x1 + shift);
            SetCursorX(m_cursor + shift);
        } else {
            SetCursorX(m_cursor + sign * pixels * perPixel);
        }
        break;
    }
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        Zoom(2, m_cursor);
        break;
    case Qt::Key_Minus:
        Zoom(0.5, m_cursor);
        break;
    case Qt::Key_Home:
        ResetView();
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

} // namespace drivewiz
