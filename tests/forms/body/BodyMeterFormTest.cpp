#include "BodyMeterForm.h"

#include <QLocale>

#include "Body.h"
#include "BodyParametersForm.h"
#include "BodyTestSupport.h"
#include "GraphicBody.h"
#include "PedometerOptions.h"
#include "TestData.h"
#include "TivLabel.h"
#include "WheightEnterForm.h"

namespace {

TEST(BodyGraphSeriesTest, RangeCurrentAndPaddingFollowTheMeasurementsAndTheDesiredValue) {
    const auto logs = [](const QByteArray& chests) {
        std::vector<DAOBodyLog> rows;
        for (const QByteArray& chest : chests.split(',')) {
            DAOBodyLog log;
            log.chest = chest.toDouble();
            log.weight = 70.0;  // another measurement does not count for the chest
            rows.push_back(log);
        }
        return rows;
    };
    for (const QByteArrayList& c : testdata::Table("body-graph-ranges.tsv")) {
        SCOPED_TRACE(c[0].toStdString());
        const auto graph =
            BodyGraphSeries::FromLogs(logs(c[1]), BodyGraphSeries::CHEST, c[2].toDouble());
        EXPECT_EQ(graph.measured, c[3].toInt());
        EXPECT_DOUBLE_EQ(graph.low, c[4].toDouble());
        EXPECT_DOUBLE_EQ(graph.high, c[5].toDouble());
        EXPECT_DOUBLE_EQ(graph.current, c[6].toDouble());
    }
    // Short series are padded at the old end with the lowest value; long ones kept whole.
    const auto padded = BodyGraphSeries::FromLogs(logs("90,88"), BodyGraphSeries::CHEST, 80);
    ASSERT_EQ(padded.values.size(), 30);
    EXPECT_EQ(padded.values.first(), 88.0);
    EXPECT_EQ(padded.values.mid(28), (QVector<double>{90, 88}));
    std::vector<DAOBodyLog> many(40, logs("91").front());
    EXPECT_EQ(BodyGraphSeries::FromLogs(many, BodyGraphSeries::CHEST, -1).values.size(), 40);
}

class BodyMeterFormTest : public BodyScreenTest {
protected:
    BodyMeterForm& Open() {
        auto* form = new BodyMeterForm;
        form->Initialize();
        return *Push(form);
    }
    static QString Texts(const BodyMeterForm::Slot& slot) {
        if (slot.message) return slot.message->GetText();
        if (!slot.middle || !slot.low || !slot.high) return QStringLiteral("?");
        return slot.low->GetText() + " | " + slot.high->GetText() + " | " + slot.middle->GetText();
    }
};

TEST_F(BodyMeterFormTest, SlotsShowMessagesUntilTwoDaysThenRangeAndCurrentInTheUsersUnits) {
    BodyMeterForm& form = Open();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(Texts(form.GetSlot(i)).contains("on 2 days")) << Texts(form.GetSlot(i)).toStdString();
        EXPECT_EQ(form.GetSlot(i).graph, nullptr);
    }
    EXPECT_EQ(form.GetLegendLabel()->GetText(), "");

    AddLog(3, 0, 90, 0, 100);
    AddLog(2, 72.5, 88, 0, 0);  // hips: one day only, with a zero row after it
    AddLog(1, 71, 0, 80, 0);
    DAOTarget::GetInstance().chest = 80;
    form.UpdateData();
    const struct {
        bool imperial;
        QStringList slots;
    } cases[] = {
        {false,
         {"77.0 cm | 90.0 cm | Chest: 88.0 cm", "Please enter your waist size on 1 more day to start tracking",
          "Please enter your hips size on 1 more day to start tracking",
          "71.000 kg | 72.500 kg | Weight: 71.000 kg"}},
        {true,
         {"30.3\" | 35.4\" | Chest: 34.6\"", "Please enter your waist size on 1 more day to start tracking",
          "Please enter your hips size on 1 more day to start tracking",
          "156.5 lb | 159.8 lb | Weight: 156.5 lb"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.imperial ? "imperial" : "metric");
        PedometerOptions::GetInstance().measurementSystem = c.imperial;
        form.UpdateData();
        for (int i = 0; i < 4; ++i) EXPECT_EQ(Texts(form.GetSlot(i)), c.slots[i]);
        // The graph stays metric whatever the labels show.
        ASSERT_NE(form.GetSlot(0).graph, nullptr);
        EXPECT_EQ(form.GetSlot(0).graph->GetSeries().last(), 88.0);
        EXPECT_DOUBLE_EQ(form.GetSlot(0).graph->GetLow(), 77.0);
        EXPECT_DOUBLE_EQ(form.GetSlot(0).graph->GetDesired(), 80.0);
    }
    EXPECT_EQ(form.GetLegendLabel()->GetText(), "Green: desired values");
}

TEST_F(BodyMeterFormTest, BmiNeedsHeightWeightAndTheSettingAndSlotsOpenTheirEntryForms) {
    Body& body = Body::GetInstance();
    const struct {
        double height, weight;
        bool showBmi;
        QString shown;
    } cases[] = {
        {-1, 80, true, ""}, {180, -1, true, ""}, {180, 81, false, ""}, {180, 81, true, "BMI: 25.0"}};
    BodyMeterForm& form = Open();
    for (const auto& c : cases) {
        body.setHeight(c.height);
        body.setWeight(c.weight);
        PedometerOptions::GetInstance().showBmi = c.showBmi;
        form.UpdateData();
        EXPECT_EQ(form.GetBmiLabel()->GetText(), c.shown) << c.height << " " << c.weight;
    }
    for (int mode = 0; mode < 4; ++mode) {  // chest, waist and hips, then weight
        form.OnActionPerformed(form, BodyMeterForm::ID_CHEST + mode);
        auto* body = qobject_cast<BodyParametersForm*>(navigation->GetTopForm());
        auto* weight = qobject_cast<WheightEnterForm*>(navigation->GetTopForm());
        ASSERT_TRUE(mode < 3 ? body != nullptr : weight != nullptr) << mode;
        EXPECT_EQ(mode < 3 ? body->GetMode() : weight->GetMode(), mode);
        navigation->PopForm();
    }
}

}  // namespace
