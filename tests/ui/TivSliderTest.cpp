#include "TivSlider.h"

#include <gtest/gtest.h>

#include <vector>

#include "AppPaths.h"
#include "TestData.h"
#include "TivImagePanel.h"
#include "TivUtils.h"
#include "Touch.h"

namespace {

class Recorder : public TivSLiderChangedListner {
public:
    void SliderValueChanged(int value) override { values.push_back(value); }
    std::vector<int> values;
};

// A 300 x 60 slider built from the shipped pictures (a 40-wide knob).
class TivSliderTest : public ::testing::Test {
protected:
    void SetUp() override {
        TivUtils::SetScreenResolution(TivUtils::WVGA_WIDTH);
        slider.Initialize(QRect(0, 0, 300, 60), 0);
        slider.SetListener(&listener);
        ASSERT_EQ(Knob().width(), 40) << "the slider knob picture is expected 40 wide";
    }
    QWidget& Knob() { return const_cast<TivImagePanel&>(*slider.GetKnob()); }
    int FillWidth() { return slider.GetFill()->width(); }
    // Drags the knob so that its left edge lands at `x` (slider coordinates).
    void DragKnobTo(int x) {
        const QPoint grip(Knob().width() / 2, Knob().height() / 2);
        touch::Press(Knob(), grip);
        touch::Move(Knob(), QPoint(x - Knob().x() + Knob().width() / 2, grip.y()));
        touch::Release(Knob(), QPoint(grip.x(), grip.y()));
    }

    TivSlider slider;
    Recorder listener;
};

// A set value places knob and fill quietly; a drag reports its position, pinned at both ends.
TEST_F(TivSliderTest, SetValueAndDraggingPlaceKnobAndFillAndOnlyDraggingReports) {
    for (const QByteArrayList& c : testdata::Table("slider-moves.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        listener.values.clear();
        if (c[0] == "drag")
            DragKnobTo(c[1].toInt());
        else
            slider.SetValue(c[1].toInt());
        EXPECT_EQ(Knob().x(), c[2].toInt());
        EXPECT_EQ(FillWidth(), c[3].toInt());
        EXPECT_EQ(listener.values.empty() ? -1 : listener.values.back(), c[4].toInt());
    }
}

TEST_F(TivSliderTest, MoveReportsEveryStepAndOnlyFromTheKnob) {
    touch::Press(Knob(), QPoint(20, 10));
    touch::Move(Knob(), QPoint(30, 10));  // knob to 10
    touch::Move(Knob(), QPoint(30, 10));  // the point is knob-relative: 20
    EXPECT_EQ(Knob().x(), 20);
    EXPECT_EQ(listener.values, (std::vector<int>{3, 7}));
    touch::Release(Knob(), QPoint(30, 10));

    // Touching the slider or its track does not move the knob.
    touch::Press(slider, QPoint(250, 35));
    touch::Move(slider, QPoint(280, 35));
    touch::Release(slider, QPoint(280, 35));
    EXPECT_EQ(Knob().x(), 20);
    EXPECT_EQ(listener.values.size(), 2u);
}

TEST_F(TivSliderTest, WithoutPicturesItStaysEmptyAndQuiet) {
    const QString res = AppPaths::Res();
    AppPaths::SetRes(QStringLiteral("/nonexistent"));
    TivSlider s;
    s.Initialize(QRect(0, 0, 300, 60), 50);
    AppPaths::SetRes(res);
    Recorder r;
    s.SetListener(&r);
    EXPECT_EQ(s.GetKnob()->size(), QSize(0, 0));
    EXPECT_EQ(s.GetKnob()->x(), 150);
    s.SetValue(10);
    EXPECT_EQ(s.GetKnob()->x(), 30);
}

}  // namespace
