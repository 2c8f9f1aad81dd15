#include "Body.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "AppResource.h"
#include "TestData.h"

namespace {

class BodyTest : public ::testing::Test {
protected:
    void SetUp() override {
        body().clear();
        AppResource::GetInstance().SetLanguage(QStringLiteral("en"));
    }
    void TearDown() override {
        body().clear();
        AppResource::GetInstance().SetLanguage("en");
    }
    static Body& body() { return Body::GetInstance(); }
};

TEST_F(BodyTest, UnsetValuesFallBackToDefaults) {
    EXPECT_EQ(std::tuple(body().isMen(), body().getAge(), body().getHeight(), body().hasHeight(),
                         body().getWeight(), body().getWalkCoef(), body().getJogCoef(),
                         body().getRunCoef()),
              std::tuple(false, 30, 172.0, false, 68.0, 0.3, 0.9, 1.4));
    body().setHeight(30.0);
    EXPECT_TRUE(body().hasHeight());
}

// An impossible stored value counts as unset; the edges of what a person can have are kept.
TEST_F(BodyTest, ImpossibleValuesAreStoredAsUnset) {
    constexpr double inf = std::numeric_limits<double>::infinity();
    const double nan = std::nan("");
    const struct {
        void (Body::*set)(double);
        double (Body::*stored)() const;
        double low, high;  // the extremes still taken
    } cells[] = {
        {&Body::setHeight, &Body::storedHeight, 30.0, 300.0},
        {&Body::setWeight, &Body::storedWeight, 1.0, 1000.0},
        {&Body::setWalkStepSize, &Body::storedWalkStepSize, 0.01, 10.0},
        {&Body::setJogStepSize, &Body::storedJogStepSize, 0.01, 10.0},
        {&Body::setRunStepSize, &Body::storedRunStepSize, 0.01, 10.0},
        {&Body::setWalkCoef, &Body::storedWalkCoef, 0.0, 1000.0},
        {&Body::setJogCoef, &Body::storedJogCoef, 0.0, 1000.0},
        {&Body::setRunCoef, &Body::storedRunCoef, 0.0, 1000.0},
    };
    for (const auto& c : cells) {
        const int i = int(&c - cells);
        for (double kept : {c.low, c.high, -1.0}) {
            (body().*c.set)(kept);
            EXPECT_EQ((body().*c.stored)(), kept) << i;
        }
        for (double bad :
             {std::nextafter(c.low, -inf), std::nextafter(c.high, inf), -70.0, 1e308, inf, nan}) {
            (body().*c.set)(c.low);
            (body().*c.set)(bad);
            EXPECT_EQ((body().*c.stored)(), -1.0) << i << " " << bad;
        }
    }
    for (int age : {0, 150, -1}) {
        body().setAge(age);
        EXPECT_EQ(body().storedAge(), age);
    }
    for (int age : {-2, 151}) {
        body().setAge(age);
        EXPECT_EQ(body().storedAge(), -1) << age;
    }
    for (int men : {0, 1, 2, -5}) {
        body().setMen(men);
        EXPECT_EQ(body().storedMen(), men <= 1 && men >= 0 ? men : -1) << men;
    }
}

TEST_F(BodyTest, StepLengthsFollowHeightAndSex) {
    body().setMen(1);
    EXPECT_NEAR(body().getWalkStepSize(), 0.7138, 1e-9);
    EXPECT_NEAR(body().getJogStepSize(), 1.0707, 1e-9);
    EXPECT_NEAR(body().getRunStepSize(), 1.4276, 1e-9);
    body().setMen(0);
    EXPECT_NEAR(body().getWalkStepSize(), 0.71036, 1e-9);
    body().setMen(2);  // only 1 means a man
    EXPECT_NEAR(body().getWalkStepSize(), 0.71036, 1e-9);

    body().setWalkStepSize(0.8);
    body().setRunStepSize(1.9);
    EXPECT_DOUBLE_EQ(body().getStepSize(1), 0.8);
    EXPECT_NEAR(body().getStepSize(2), 0.71036 * 1.5, 1e-9);
    EXPECT_DOUBLE_EQ(body().getStepSize(3), 1.9);
    EXPECT_DOUBLE_EQ(body().getStepSize(0), 0.0);
    EXPECT_DOUBLE_EQ(body().getStepSize(4), 0.0);
}

// Each activity band starts at its bound, inclusive; just below it the slower band applies.
TEST_F(BodyTest, CaloriesUseInclusiveLowerSpeedBounds) {
    EXPECT_NEAR(body().calculateCalories(0.0f), 1.8445, 1e-4);
    EXPECT_DOUBLE_EQ(body().calculateCalories(-1.0f), 0.0);
    const double perMet = 3.5 * 68.0 / 200.0;
    for (const QByteArrayList& b : testdata::Table("calorie-bands.tsv")) {
        const float from = b[0].toFloat();
        EXPECT_NEAR(body().calculateCalories(from), b[1].toDouble() * perMet, 1e-6) << from;
        EXPECT_NEAR(body().calculateCalories(std::nextafter(from, 0.0f)),
                    b[2].toDouble() * perMet, 1e-6)
            << from;
    }
    EXPECT_NEAR(body().calculateCalories(1.0f), 2.0 * perMet, 1e-6);
    body().setWeight(100.0);
    EXPECT_NEAR(body().calculateCalories(30.0f), 16.0 * 3.5 * 100.0 / 200.0, 1e-6);
}

// At 100 cm the BMI is the weight; each verdict starts at its bound.
TEST_F(BodyTest, BmiVerdictAndColour) {
    EXPECT_NEAR(body().GetBMI(), 22.99, 0.01);  // the default profile
    body().setHeight(100.0);
    for (const QByteArrayList& c : testdata::Table("bmi-verdicts.tsv")) {
        body().setWeight(c[0].toDouble());
        EXPECT_EQ(body().GetBMIString(), QString::fromLatin1(c[1])) << c[0].constData();
        EXPECT_EQ(body().GetBMIColor(), QColor(QString::fromLatin1(c[2]))) << c[0].constData();
    }
    body().setAge(17);  // no verdict up to 17
    EXPECT_TRUE(body().GetBMIString().isEmpty());
    EXPECT_EQ(body().GetBMIColor(), QColor(Qt::green));
    body().setAge(18);
    body().setWeight(22.0);
    AppResource::GetInstance().SetLanguage("de");
    EXPECT_EQ(body().GetBMIString(), "Normalgewicht");
}

TEST_F(BodyTest, HealthyWeightBand) {
    body().setHeight(180.0);
    EXPECT_NEAR(body().GetMinWheight(), 59.94, 1e-9);
    EXPECT_NEAR(body().GetIdealWheight(), 75.168, 1e-9);
    EXPECT_NEAR(body().GetMaxWheight(), 80.676, 1e-9);
}

TEST_F(BodyTest, SensitivitySliderMapping) {
    EXPECT_DOUBLE_EQ(Body::WalkCoefForSlider(0), 0.0);
    EXPECT_DOUBLE_EQ(Body::WalkCoefForSlider(50), 0.3);
    EXPECT_DOUBLE_EQ(Body::JogCoefForSlider(0), 0.5);
    EXPECT_DOUBLE_EQ(Body::JogCoefForSlider(100), 1.3);
    EXPECT_DOUBLE_EQ(Body::RunCoefForSlider(100), 2.2);
}

}  // namespace
