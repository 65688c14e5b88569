#include "support/testing.h"

#include "tables/ImportOM_CSV.h"
#include "tables/MeasurementPlot.h"
#include "tables/MeasurementPlot_p.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include <random>

using namespace drivewiz;

TEST(MinMaxIndexTest, AnySpanGivesTheSameAsLookingAtEverySample)
{
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> value(-1000, 1000);
    std::vector<double> v(1000);
    for (double &x : v)
        x = value(rng);
    tables::MinMaxIndex index(v);
    for (int k = 0; k < 2000; ++k) {
        int a = int(rng() % 1001);
        int b = int(rng() % 1001);
        if (a > b) std::swap(a, b);
        double lo = 0, hi = 0;
        ASSERT_EQ(index.range(a, b, lo, hi), a < b);
        if (a == b) continue;
        const auto [mn, mx] = std::minmax_element(v.begin() + a, v.begin() + b);
        ASSERT_EQ(lo, *mn) << a << ".." << b;
        ASSERT_EQ(hi, *mx) << a << ".." << b;
    }
    double lo = 0, hi = 0;
    EXPECT_TRUE(index.range(-5, 5000, lo, hi));
    EXPECT_EQ(lo, *std::min_element(v.begin(), v.end()));
}

class PlotTest : public testing::Test
{
protected:
    void SetUp() override
    {
        // 100,000 samples of a small sine with one spike that must survive the envelope.
        QByteArray csv = "Zeit [ms];A [V];B [A]\n";
        for (int i = 0; i < 100000; ++i) {
            const double a = i == 61234 ? 50.0 : std::sin(i / 500.0);
            csv += QByteArray::number(i) + ';' + QByteArray::number(a, 'f', 4) + ';' +
                   QByteArray::number(i % 7) + '\n';
        }
        ASSERT_TRUE(data.LoadFromBytes(csv, QStringLiteral("test")));
        plot.SetMeasurement(&data);
        plot.resize(600, 300);
        plot.show();
        QApplication::setActiveWindow(&plot);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&plot));
    }
    // Pixels of the first channel's colour in a column band.
    int colouredPixels(const QImage &img, int fromX, int toX) const
    {
        int n = 0;
        const QRgb want = TMeasurementPlot::ChannelColor(0).rgb();
        for (int x = std::max(fromX, 0); x < std::min(toX, img.width()); ++x)
            for (int y = 0; y < img.height(); ++y)
                n += img.pixel(x, y) == want;
        return n;
    }

    TImportOM_CSV data;
    TMeasurementPlot plot;
};

TEST_F(PlotTest, TheEnvelopeKeepsASingleSpike)
{
    plot.SetNormalised(false);
    EXPECT_EQ(plot.ViewStart(), 0);
    EXPECT_EQ(plot.ViewEnd(), 99999);
    const QImage img = plot.grab().toImage();
    // The spike (50, against a sine of amplitude 1) is the one column of the first
    // channel that reaches into the upper third of the widget.
    int best = 0, bestX = -1;
    for (int x = 0; x < img.width(); ++x) {
        int top = 0;
        for (int y = 0; y < img.height() / 3; ++y)
            top += img.pixel(x, y) == TMeasurementPlot::ChannelColor(0).rgb();
        if (top > best) best = top, bestX = x;
    }
    EXPECT_GT(best, 20);
    EXPECT_NEAR(bestX, 61234.0 / 99999.0 * img.width(), img.width() * 0.15);
    EXPECT_EQ(colouredPixels(img, 0, bestX - 3) + colouredPixels(img, bestX + 4, img.width()) > 0,
              true);
}

TEST_F(PlotTest, KeysMoveTheCursorAndZoomAndTheReadOutFollows)
{
    QSignalSpy moved(&plot, &TMeasurementPlot::cursorMoved);
    plot.SetCursorX(50000);
    EXPECT_EQ(plot.CursorSample(), 50000);
    EXPECT_EQ(plot.ReadOut(), QStringLiteral("Zeit = 50000 ms   A: %1 V   B: %2 A")
                                  .arg(QString::number(std::sin(100.0), 'f', 4).toDouble())
                                  .arg(50000 % 7));
    QTest::keyClick(&plot, Qt::Key_Plus);
    EXPECT_NEAR(plot.ViewEnd() - plot.ViewStart(), 99999 / 2.0, 1);
    EXPECT_LE(plot.ViewStart(), 50000);
    EXPECT_GE(plot.ViewEnd(), 50000);
    const double before = plot.CursorX();
    QTest::keyClick(&plot, Qt::Key_Right);
    EXPECT_GT(plot.CursorX(), before);
    QTest::keyClick(&plot, Qt::Key_Right, Qt::ShiftModifier);
    const double start = plot.ViewStart();
    QTest::keyClick(&plot, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_GT(plot.ViewStart(), start);
    QTest::keyClick(&plot, Qt::Key_Home);
    EXPECT_EQ(plot.ViewStart(), 0);
    EXPECT_EQ(plot.ViewEnd(), 99999);
    QTest::keyClick(&plot, Qt::Key_Minus); // cannot show more than everything
    EXPECT_EQ(plot.ViewEnd(), 99999);
    EXPECT_GE(moved.count(), 3);
}

TEST_F(PlotTest, DraggingZoomsToTheDraggedSpanAndDoubleClickShowsAll)
{
    const int y = plot.height() / 2;
    QTest::mousePress(&plot, Qt::LeftButton, {}, QPoint(200, y));
    QTest::mouseMove(&plot, QPoint(300, y));
    QTest::mouseRelease(&plot, Qt::LeftButton, {}, QPoint(300, y));
    const double span = plot.ViewEnd() - plot.ViewStart();
    EXPECT_LT(span, 99999 / 3.0);
    EXPECT_GT(span, 99999 / 8.0);
    // Zoomed in far, the curve is drawn through its samples.
    plot.SetView(100, 120);
    EXPECT_GT(colouredPixels(plot.grab().toImage(), 0, plot.width()), 20);
    QTest::mouseDClick(&plot, Qt::LeftButton, {}, QPoint(250, y));
    EXPECT_EQ(plot.ViewEnd() - plot.ViewStart(), 99999);
}
