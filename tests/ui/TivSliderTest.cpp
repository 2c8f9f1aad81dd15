#include "TivSlider.h"

#include <gtest/gtest.h>

#include <vector>

#include "AppPaths.h"
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

TEST_F(TivSliderTest, SetValuePlacesKnobAndFillWithoutNotifying) {
    slider.SetValue(50);
    EXPECT_EQ(Knob().x(), 130);
    EXPECT_EQ(FillWidth(), 132);
    slider.SetValue(100);
    EXPECT_EQ(Knob().x(), 260);
    slider.SetValue(33);  // trunc(260 * 0.33) = 85
    EXPECT_EQ(Knob().x(), 85);
    EXPECT_EQ(FillWidth(), 87);
    EXPECT_TRUE(listener.values.empty());
}

TEST_F(TivSliderTest, InitializeLaysOutTrackFillAndKnob) {
    TivSlider s;
    s.Initialize(QRect(10, 20, 300, 60), 25);
    const int knobHeight = s.GetKnob()->height();
    EXPECT_EQ(s.GetKnob()->pos(), QPoint(65, 30 - knobHeight / 2));
    // The track hangs from the middle line and spans the slider.
    EXPECT_EQ(s.GetTrack()->geometry(), QRect(0, 30, 300, s.GetTrack()->GetImage()->height()));
    EXPECT_EQ(s.GetFill()->geometry(), QRect(0, 30, 67, s.GetFill()->GetImage()->height()));
    // Back to front: track, fill, knob.
    const QObjectList parts = s.children();
    const auto index = [&](const QObject* o) { return parts.indexOf(const_cast<QObject*>(o)); };
    EXPECT_LT(index(s.GetTrack()), index(s.GetFill()));
    EXPECT_LT(index(s.GetFill()), index(s.GetKnob()));
}

TEST_F(TivSliderTest, DraggingReportsPositionAndPinsAtBothEnds) {
    DragKnobTo(130);
    EXPECT_EQ(Knob().x(), 130);
    EXPECT_EQ(FillWidth(), 132);
    ASSERT_FALSE(listener.values.empty());
    EXPECT_EQ(listener.values.back(), 50);

    DragKnobTo(1000);
    EXPECT_EQ(Knob().x(), 260);
    EXPECT_EQ(FillWidth(), 262);
    EXPECT_EQ(listener.values.back(), 100);

    DragKnobTo(-500);
    EXPECT_EQ(Knob().x(), 0);
    EXPECT_EQ(FillWidth(), 2);
    EXPECT_EQ(listener.values.back(), 0);

    DragKnobTo(143);  // 143 / 260 = 0.55
    EXPECT_EQ(listener.values.back(), 55);
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
