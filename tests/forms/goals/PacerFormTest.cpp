#include "PacerForm.h"

#include "Converter.h"
#include "GoalScreenTest.h"
#include "Metronome.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNumberField.h"
#include "TivSlider.h"

namespace {

class PacerFormTest : public GoalScreenTest {
protected:
    void TearDown() override {
        Metronome::GetInstance().Stop();
        GoalScreenTest::TearDown();
    }
    PacerForm& Open(int mode) {
        Options().pacerType = mode;
        return Push<PacerForm>();
    }
};

TEST_F(PacerFormTest, SliderEndsGiveEachModesToleranceRange) {
    struct Case {
        int mode;
        int position;
        double tolerance;
        const char* label;
    };
    const Case cases[] = {
        {1, 0, 0.5, "± 0.5 km/h"},        {1, 100, 5.0, "± 5.0 km/h"},
        {2, 0, 1.0, "± 1.0 min/km"},      {2, 100, 6.0, "± 6.0 min/km"},
        {3, 0, 5, "± 5 steps/min"},       {3, 55, 57, "± 57 steps/min"},
        {3, 100, 100, "± 100 steps/min"},
    };
    for (const Case& c : cases) {
        Options().pacerDiff = true;
        PacerForm& form = Open(c.mode);
        form.SliderValueChanged(c.position);
        auto stored = Stored();
        const double tolerance = c.mode == 1   ? stored->pacerDiffSpeed.load()
                                 : c.mode == 2 ? stored->pacerDiffPace.load()
                                               : double(stored->pacerDiffFrequency.load());
        EXPECT_DOUBLE_EQ(tolerance, c.tolerance) << c.mode << " at " << c.position;
        EXPECT_EQ(form.GetSliderLabel()->GetText(), QString::fromUtf8(c.label));
    }
}

// Opening a mode shows its own stored target with its unit, under the check rows.
TEST_F(PacerFormTest, EachModeShowsItsStoredTargetAndUnit) {
    struct Case {
        int mode;
        const char* whole;  // or the whole rate
        const char* tenths;
        const char* unit;
    };
    const Case cases[] = {{1, "6", "5", "km/h"}, {2, "9", "2", "min/km"}, {3, "118", "", "steps/min"}};
    for (const Case& c : cases) {
        Options().pacerSpeed = 6.5;
        Options().pacerPace = 9.2;
        Options().pacerFrequency = 118;
        PacerForm& form = Open(c.mode);
        if (c.mode == 3) {
            ASSERT_NE(form.GetRateField(), nullptr);
            EXPECT_EQ(form.GetRateField()->text(), c.whole);
        } else {
            ASSERT_NE(form.GetWholeField(), nullptr);
            EXPECT_EQ(form.GetWholeField()->text(), c.whole) << c.mode;
            EXPECT_EQ(form.GetTenthsField()->text(), c.tenths) << c.mode;
        }
        QStringList texts;
        for (const TivLabel* label : form.findChildren<TivLabel*>()) {
            if (label->isVisible()) texts << label->GetText().trimmed();
        }
        EXPECT_TRUE(texts.contains(c.unit)) << c.mode << texts.join('|').toStdString();
        EXPECT_TRUE(form.GetCheckRow(PacerForm::ID_DIFF)->isVisible());
        EXPECT_TRUE(form.GetCheckRow(PacerForm::ID_OFF_ON_STANDING)->isVisible());
    }
}

// A target out of range, or none, is kept as typed, explained and not stored.
TEST_F(PacerFormTest, TargetsOutOfRangeAreRefusedWithTheReason) {
    const struct {
        int mode;
        const char* whole;  // or the rate
        const char* tenths;
        double stored;
        const char* message;
    } cases[] = {
        {1, "6", "5", 6.5, ""},
        {1, "0", "5", 6.5, "Too small: at least 1.0 km/h."},
        {1, "45", "0", 6.5, "Too large: at most 30.0 km/h."},
        {2, "9", "2", 9.2, ""},
        {2, "1", "9", 9.2, "Too small: at least 2.0 min/km."},
        {3, "120", "", 120, ""},
        {3, "300", "", 120, "Too large: at most 250 steps/min."},
        {3, "ab", "", 120, "Not a number: please use digits only."},  // pasted past the filter
        {3, "", "", 120, "Please enter a number."},
    };
    PacerForm& form = Open(1);
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.mode) + ": " + c.whole + "." + c.tenths);
        if (form.GetSelectedTabIndex() != c.mode) TapTab(c.mode);
        QLineEdit* field = c.mode == 3 ? form.GetRateField() : form.GetWholeField();
        ASSERT_NE(field, nullptr);
        if (c.mode != 3) form.GetTenthsField()->setText(c.tenths);
        field->setText(c.whole);
        form.OnTextValueChanged(*field);
        EXPECT_EQ(field->text(), c.whole);
        auto stored = Stored();
        EXPECT_DOUBLE_EQ(c.mode == 1   ? stored->pacerSpeed.load()
                         : c.mode == 2 ? stored->pacerPace.load()
                                       : double(stored->pacerFrequency.load()),
                         c.stored);
        EXPECT_EQ(static_cast<TivNumberField*>(field)->GetMessage(), c.message);
    }
}

TEST_F(PacerFormTest, MilesStoreSpeedAndPaceWithTheDistanceFactor) {
    Options().measurementSystem = true;
    PacerForm& form = Open(2);
    Enter(form.GetWholeField(), "9");
    Enter(form.GetTenthsField(), "0");
    EXPECT_NEAR(Stored()->pacerPace.load(), Converter::ConvertMilesToKilometers(9.0), 1e-9);
    TapTab(1);
    Enter(form.GetWholeField(), "3");
    Enter(form.GetTenthsField(), "1");
    EXPECT_NEAR(Stored()->pacerSpeed.load(), Converter::ConvertMilesToKilometers(3.1), 1e-9);
    EXPECT_EQ(form.GetWholeField()->text(), "3");  // shown back in miles
}

TEST_F(PacerFormTest, CheckRowsToggleSaveAndShowTheSlider) {
    Options().pacerDiff = false;
    Options().pacerOffOnStanding = false;
    PacerForm& form = Open(3);
    EXPECT_TRUE(form.GetSlider()->isHidden());
    Click(form.GetCheckRow(PacerForm::ID_DIFF));
    EXPECT_TRUE(Stored()->pacerDiff.load());
    EXPECT_FALSE(form.GetSlider()->isHidden());
    EXPECT_FALSE(form.GetSliderLabel()->isHidden());
    Click(form.GetCheckRow(PacerForm::ID_OFF_ON_STANDING));
    EXPECT_TRUE(Stored()->pacerOffOnStanding.load());
    Click(form.GetCheckRow(PacerForm::ID_DIFF));
    EXPECT_FALSE(Stored()->pacerDiff.load());
    EXPECT_TRUE(form.GetSlider()->isHidden());
    EXPECT_EQ(plays.Plays("click.wav"), 3);
}

TEST_F(PacerFormTest, OffSilencesARunningPacerAtOnce) {
    Options().pacerFrequency = 120;
    Options().pacerDiff = false;
    Options().pacerOffOnStanding = false;
    PacerForm& form = Open(3);
    Metronome::GetInstance().Start();
    ASSERT_GT(Metronome::GetInstance().GetInterval(), 0);
    EXPECT_EQ(form.GetOffHint(), nullptr);
    TapTab(0);
    EXPECT_EQ(Stored()->pacerType.load(), 0);
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 0);
    ASSERT_NE(form.GetOffHint(), nullptr);  // off says how to get a beat
    EXPECT_EQ(form.GetOffHint()->GetText(), "Choose speed, pace or step rate for a beat");
    TapTab(3);
    EXPECT_EQ(Metronome::GetInstance().GetInterval(), 500);
    EXPECT_EQ(form.GetOffHint(), nullptr);
}

}  // namespace
