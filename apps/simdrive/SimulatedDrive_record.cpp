// The drive's recorder: a short move of one axis as a measurement file.

#include "SimulatedDrive.h"

#include <QFile>
#include <QSaveFile>

#include <cmath>

namespace drivewiz::sim {

namespace {

constexpr double kPi = 3.14159265358979323846;

// Speed (rpm) at t ms: up to 1500 in 300 ms, held, down to -800, held, back to 0.
double speedAt(double t, double scale)
{
    const struct
    {
        double t0, t1, from, to;
    } legs[] = {{0, 100, 0, 0},          {100, 400, 0, 1500},  {400, 900, 1500, 1500},
                {900, 1300, 1500, -800}, {1300, 1600, -800, -800}, {1600, 1800, -800, 0}};
    for (const auto &leg : legs) {
        if (t >= leg.t0 && t < leg.t1) return scale * (leg.from + (leg.to - leg.from) * (t - leg.t0) / (leg.t1 - leg.t0));
    }
    return 0;
}

double channelValue(const QString &channel, int i, double t, double scale, quint32 &noise)
{
    noise = noise * 1664525u + 1013904223u; // a fixed sequence: the same file every time
    const double jitter = (double(noise >> 8) / double(1u << 24) - 0.5);
    const double speed = speedAt(t, scale);
    const double accel = (speedAt(t + 1, scale) - speedAt(t - 1, scale)) / 2; // rpm per ms
    if (channel == QLatin1String("E08")) return speed + 2 * jitter;
    if (channel == QLatin1String("E02"))
        return 0.9 * accel + (speed > 1 ? 0.15 : speed < -1 ? -0.15 : 0) +
               0.03 * std::sin(2 * kPi * t / 7.0) + 0.01 * jitter;
    if (channel == QLatin1String("I330")) return speedAt(t - 2, scale) / 30;
    if (channel == QLatin1String("E10")) return 10 * std::sin(2 * kPi * t / 1000) + 0.02 * jitter;
    return std::sin(2 * kPi * (t / 500.0 + i * 0.1)) * 100;
}

QByteArray germanNumber(double v, int decimals)
{
    QByteArray text = QByteArray::number(v, 'f', decimals);
    text.replace('.', ',');
    return text;
}

} // namespace

bool SimulatedDrive::writeRecording(const QString &path, const QStringList &channels, int samples,
                                    double sampleMs, int axis) const
{
    if (channels.isEmpty() || samples < 1 || !(sampleMs > 0)) return false;
    QByteArray out = "# Aufzeichnung des simulierten Antriebs, Achse " + QByteArray::number(axis) +
                     "\r\nAbtastzeit: " + germanNumber(sampleMs, 3) + " ms\r\nZeit [ms]";
    for (const QString &c : channels)
        out += ';' + (axis > 1 ? QByteArray::number(axis) + '.' : QByteArray()) + c.toLatin1();
    out += "\r\n";
    const double scale = axis == 2 ? 0.5 : 1.0;
    quint32 noise = 12345u + quint32(axis);
    for (int i = 0; i < samples; ++i) {
        const double t = i * sampleMs;
        out += germanNumber(t, 3);
        for (int c = 0; c < channels.size(); ++c)
            out += ';' + germanNumber(channelValue(channels.at(c), c, t, scale, noise), 3);
        out += "\r\n";
    }
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(out) == out.size() && file.commit();
}

} // namespace drivewiz::sim
