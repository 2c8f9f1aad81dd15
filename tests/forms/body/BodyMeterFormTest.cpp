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
    for (const QByteArrayList& c : testdata::Table("body-slots.tsv")) {
        SCOPED_TRACE(c[0].toStdString());
        PedometerOptions::GetInstance().measurementSystem = c[0] == "imperial";
        form.UpdateData();
        for (int i = 0; i < 4; ++i) EXPECT_EQ(Texts(form.GetSlot(i)), QString::fromUtf8(c[i + 1]));
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
    BodyMeterForm& form = Open();
    for (const QByteArrayList& c : testdata::Table("bmi-label.tsv")) {
        body.setHeight(c[0].toDouble());
        body.setWeight(c[1].toDouble());
        PedometerOptions::GetInstance().showBmi = c[2] == "1";
        form.UpdateData();
        EXPECT_EQ(form.GetBmiLabel()->GetText(), QString::fromUtf8(c.value(3)))
            << c.join(' ').toStdString();
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
