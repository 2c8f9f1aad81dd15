#include "GraphicBlue.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QTest>
#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "AppResource.h"
#include "DAOLap.h"
#include "GraphScale.h"
#include "GraphSeries.h"
#include "PedometerOptions.h"
#include "TivLabel.h"
#include "TestData.h"
#include "TivUtils.h"
#include "Touch.h"

namespace {

DAOLapSeconds Record(int steps, double metres, double caloriesNoise = 0.0) {
    DAOLapSeconds r;
    r.steps = steps;
    r.distance = metres;
    r.caloriesNoise = caloriesNoise;
    return r;
}

std::vector<DAOLapSeconds> Records(int count) {
    std::vector<DAOLapSeconds> records;
    for (int i = 0; i < count; ++i) records.push_back(Record(i + 1, 0.0));
    return records;
}

// ---------------------------------------------------------------------------
// The series of the last five minutes.

TEST(GraphSeriesTest, ShortLapsGiveLeadingZerosAndLongOnesTheirNewestRecords) {
    const auto none = GraphSeries::FromSeconds({}, GraphSeries::STEP_RATE, false);
    EXPECT_EQ(none, std::vector<double>(60, 0.0));

    const auto three = GraphSeries::FromSeconds(Records(3), GraphSeries::STEP_RATE, false);
    ASSERT_EQ(three.size(), 60u);
    EXPECT_EQ(three[56], 0.0);
    EXPECT_EQ(three[57], 12.0);  // 1 step in five seconds: 12 per minute
    EXPECT_EQ(three[59], 36.0);

    const auto many = GraphSeries::FromSeconds(Records(75), GraphSeries::STEP_RATE, false);
    ASSERT_EQ(many.size(), 60u);
    EXPECT_EQ(many.front(), 16 * 12.0);  // records 16..75
    EXPECT_EQ(many.back(), 75 * 12.0);

    EXPECT_EQ(GraphSeries::FromSeconds(Records(60), GraphSeries::STEP_RATE, false).front(), 12.0);
}

TEST(GraphSeriesTest, EachTypeReadsItsValueInTheUsersUnits) {
    const DAOLapSeconds walk = Record(10, 7.0, 4.25);  // 7 m in 5 s: 5.04 km/h
    EXPECT_DOUBLE_EQ(GraphSeries::ValueOf(walk, GraphSeries::STEP_RATE, false), 120.0);
    EXPECT_DOUBLE_EQ(GraphSeries::ValueOf(walk, GraphSeries::CALORIES, true), 4.25);
    EXPECT_DOUBLE_EQ(GraphSeries::ValueOf(walk, GraphSeries::SPEED, true), 5.04 / 1.609344);
    EXPECT_DOUBLE_EQ(GraphSeries::ValueOf(walk, GraphSeries::PACE, false), 60.0 / 5.04);
    // Standing still has no pace rather than an endless one; unknown types read 0.
    EXPECT_EQ(GraphSeries::ValueOf(Record(0, 0.0), GraphSeries::PACE, false), 0.0);
    EXPECT_EQ(GraphSeries::ValueOf(walk, 4, false), 0.0);
}

TEST(GraphSeriesTest, ReadsALapWhileAnotherThreadExtendsIt) {
    EXPECT_EQ(GraphSeries::FromLap(nullptr, GraphSeries::SPEED, false),
              std::vector<double>(60, 0.0));

    DAOLap lap;
    constexpr int kRecords = 400;
    std::thread updater([&] {
        for (int i = 1; i <= kRecords; ++i)
            lap.AddSecond(std::make_unique<DAOLapSeconds>(Record(i, 0.0)));
    });
    // Every read sees a consistent tail: consecutive step counts ending at the newest.
    for (int n = 0; n < 200; ++n) {
        const auto values = GraphSeries::FromLap(&lap, GraphSeries::STEP_RATE, false);
        ASSERT_EQ(values.size(), 60u);
        for (std::size_t i = 1; i < values.size(); ++i) {
            if (values[i - 1] != 0.0) {
                ASSERT_EQ(values[i] - values[i - 1], 12.0);
            }
        }
    }
    updater.join();
    EXPECT_EQ(GraphSeries::FromLap(&lap, GraphSeries::STEP_RATE, false).back(), kRecords * 12.0);
}

// ---------------------------------------------------------------------------
// Scale, axis labels and plotted points.

TEST(GraphScaleTest, LabelsStandAtRoundStepsFromZeroForEachType) {
    for (const QByteArrayList& c : testdata::Table("graph-axis-labels.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        std::vector<double> values;
        for (const QByteArray& v : c[0].split('|'))
            if (!v.isEmpty()) values.push_back(v.toDouble());
        const GraphScale scale(values);
        const QStringList texts = QString::fromLatin1(c[2]).split('|');
        EXPECT_EQ(scale.LabelTexts(c[1].toInt(), 2), texts);
        EXPECT_EQ(scale.HasData(), !texts.front().isEmpty());
    }
    // Rounding never shows a negative zero.
    EXPECT_EQ(GraphScale::FormatLabel(-0.001, GraphSeries::CALORIES, 2), "0");
}

TEST(GraphScaleTest, NumbersFollowTheLocaleExceptStepRates) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(GraphScale::FormatLabel(2.5, GraphSeries::SPEED, 2), "2,5");
    EXPECT_EQ(GraphScale::FormatLabel(12345.678, GraphSeries::PACE, 2), "12.345,68");
    EXPECT_EQ(GraphScale::FormatLabel(12345.678, GraphSeries::STEP_RATE, 2), "12345");
    QLocale::setDefault(before);
}

TEST(GraphScaleTest, DamagedAndHugeValuesStayWithinLimits) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(GraphScale::Sanitize({nan, inf, -inf, 1e300, -1e300, 3.5}),
              std::vector<double>({0.0, 0.0, 0.0, 1e9, -1e9, 3.5}));
    const GraphScale scale({nan, 1e300, 7.0});
    EXPECT_EQ(scale.Max(), 1e9);
    EXPECT_EQ(scale.LabelTexts(GraphSeries::STEP_RATE, 2).front(), "1000000000");
    EXPECT_EQ(GraphScale::FormatLabel(nan, GraphSeries::SPEED, 2), "0");
    for (const QPoint& p : scale.Points({nan, 1e300, 7.0, -inf}, QSize(480, 205))) {
        EXPECT_GE(p.y(), 20);
        EXPECT_LE(p.y(), 185);
    }
}

TEST(GraphScaleTest, PointsSpanTheFrameFromZeroToTheTop) {
    std::vector<double> values(60, 0.0);
    values[59] = 100.0;
    const auto points = GraphScale(values).Points(values, QSize(480, 205));
    ASSERT_EQ(points.size(), 60u);
    EXPECT_EQ(points.front().y(), 185);  // the frame's bottom, 20 above the graph's
    EXPECT_EQ(points.back().y(), 20);    // the top label's line
    for (std::size_t i = 1; i < points.size(); ++i) EXPECT_GT(points[i].x(), points[i - 1].x());
    // A flat series lies at its height (3 is the top); one value has nothing to join.
    for (const QPoint& p : GraphScale({3.0, 3.0, 3.0}).Points({3.0, 3.0, 3.0}, QSize(480, 205)))
        EXPECT_EQ(p.y(), 20);
    EXPECT_TRUE(GraphScale({5.0}).Points({5.0}, QSize(480, 205)).empty());
}

// ---------------------------------------------------------------------------
// The widget.

class GraphicBlueTest : public ::testing::Test {
protected:
    void SetUp() override {
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        PedometerOptions::GetInstance().RestoreDefaults();
        AppResource::GetInstance().SetLanguage("en");
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    void TearDown() override {
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        PedometerOptions::GetInstance().RestoreDefaults();
    }
    GraphicBlue& Make(bool showTitle = true) {
        graph = std::make_unique<GraphicBlue>();
        graph->SetPacerBeatingQuery([this] { return pacerBeating; });
        graph->Initialize(QRect(0, 0, 480, 205), {"a", "b", "c", "d"}, 20, showTitle);
        return *graph;
    }
    QStringList AxisTexts() const {
        QStringList texts;
        for (int i = 0; i < 4; ++i) texts << graph->GetAxisLabel(i)->GetText();
        return texts;
    }
    QImage Render() { return touch::Render(*graph); }
    static int CountAreaPixels(const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == GraphicBlue::AREA_COLOR) ++count;
        return count;
    }

    std::unique_ptr<GraphicBlue> graph;
    bool pacerBeating = false;
};

// The unit follows type and units; the axis is relabelled for a new type or new values.
TEST_F(GraphicBlueTest, UnitAndAxisFollowTypeUnitsAndValues) {
    PedometerOptions::GetInstance().mainGraphic = GraphSeries::SPEED;
    Make();
    EXPECT_EQ(graph->GetCurrentType(), GraphSeries::SPEED);
    const struct {
        int type;
        bool miles;
        const char* unit;
    } cases[] = {{0, true, "(steps/min)"}, {1, false, "(Cal/min)"}, {2, false, "(km/h)"},
                 {2, true, "(mph)"},       {3, false, "(min/km)"},  {3, true, "(min/mi)"},
                 {7, true, ""}};
    for (const auto& c : cases) {
        PedometerOptions::GetInstance().measurementSystem = c.miles;
        graph->SetCurrentType(c.type);
        EXPECT_EQ(graph->GetUnitLabel()->GetText(), c.unit) << c.type << " miles " << c.miles;
    }
    graph->SetCurrentType(GraphSeries::PACE);
    PedometerOptions::GetInstance().measurementSystem = false;
    graph->UpdateLabels();  // units alone
    EXPECT_EQ(graph->GetUnitLabel()->GetText(), "(min/km)");

    graph->SetCurrentType(GraphSeries::STEP_RATE);
    graph->SetCurrentValues({0.0, 0.6, 1.05, 1.57});
    EXPECT_EQ(AxisTexts(), QStringList({"2", "1", "1", "0"}));
    graph->SetCurrentType(GraphSeries::CALORIES);
    EXPECT_EQ(AxisTexts(), QStringList({"2", "1.5", "1", "0.5"}));
    graph->SetCurrentValues(std::vector<double>(60, 0.0));
    EXPECT_EQ(AxisTexts(), QStringList({"", "", "", ""}));  // the frame says "No data yet"
}

// The area fills under the profile only, inside the white frame; a flat, single or empty
// series draws the frame alone; odd values and a graph too small for its frame do no harm.
TEST_F(GraphicBlueTest, DrawsTheAreaUnderTheProfileOnly) {
    Make();
    std::vector<double> rising(60);
    for (int i = 0; i < 60; ++i) rising[i] = i;
    graph->SetCurrentValues(rising);
    QImage image = Render();
    EXPECT_EQ(image.pixelColor(460, 100), GraphicBlue::AREA_COLOR);
    EXPECT_EQ(image.pixelColor(460, 180), GraphicBlue::AREA_COLOR);
    EXPECT_EQ(image.pixelColor(60, 100).alpha(), 0);  // above the profile
    EXPECT_EQ(image.pixelColor(470, 110).red(), 255);
    EXPECT_EQ(image.pixelColor(475, 100).alpha(), 0);  // outside the frame
    for (const std::vector<double>& values :
         {std::vector<double>(60, 0.0), std::vector<double>{7.5}, std::vector<double>{}}) {
        graph->SetCurrentValues(values);
        image = Render();
        EXPECT_EQ(CountAreaPixels(image), 0) << values.size();
        EXPECT_EQ(image.pixelColor(40, 100).red(), 255);
    }
    graph->SetCurrentValues({std::nan(""), std::numeric_limits<double>::infinity(), 1e308, 3.0});
    EXPECT_EQ(graph->GetCurrentValues(), std::vector<double>({0.0, 0.0, 1e9, 3.0}));
    graph->SetCurrentType(99);
    Render();
    graph->resize(30, 30);
    Render();
}

TEST_F(GraphicBlueTest, UpdateGraphicShowsTheHintAndRedrawsASecondLater) {
    Make();
    graph->UpdateGraphic();
    EXPECT_EQ(graph->GetHintLabel()->GetText(), "Tap to change");
    EXPECT_TRUE(graph->IsRedrawScheduled());
    QTest::qWait(GraphicBlue::kRedrawDelayMs + 200);
    EXPECT_FALSE(graph->IsRedrawScheduled());

    // A beating pacer stops the graph only on the small layout.
    pacerBeating = true;
    graph->UpdateGraphic();
    EXPECT_EQ(graph->GetHintLabel()->GetText(), "Tap to change");
    TivUtils::SetScreenResolution(TivUtils::HVGA_WIDTH);
    Make();
    graph->UpdateGraphic();
    EXPECT_EQ(graph->GetHintLabel()->GetText(), "Pacer on: graph paused");
    EXPECT_FALSE(graph->IsRedrawScheduled());
    pacerBeating = false;
    graph->UpdateGraphic();
    EXPECT_EQ(graph->GetHintLabel()->GetText(), "Tap to change");
    EXPECT_TRUE(graph->IsRedrawScheduled());
}

TEST_F(GraphicBlueTest, SeriesPostedFromAnotherThreadArriveNewestLast) {
    Make();
    graph->SetCurrentType(GraphSeries::STEP_RATE);
    // On the GUI thread a post is applied at once.
    graph->PostCurrentValues({0.0, 8.0}, false);
    EXPECT_EQ(graph->GetCurrentValues(), std::vector<double>({0.0, 8.0}));
    EXPECT_FALSE(graph->IsRedrawScheduled());

    std::atomic<bool> done{false};
    std::thread updater([&] {
        for (int i = 1; i <= 50; ++i) graph->PostCurrentValues({0.0, double(i)}, true);
        done = true;
    });
    updater.join();
    EXPECT_TRUE(done);
    EXPECT_EQ(graph->GetCurrentValues(), std::vector<double>({0.0, 8.0}));  // not yet: GUI thread
    EXPECT_TRUE(QTest::qWaitFor([&] { return graph->GetCurrentValues().back() == 50.0; }, 2000));
    EXPECT_EQ(AxisTexts().front(), "60");
    EXPECT_TRUE(graph->IsRedrawScheduled());  // the post asked for UpdateGraphic
    EXPECT_EQ(graph->GetHintLabel()->GetText(), "Tap to change");
}

}  // namespace
