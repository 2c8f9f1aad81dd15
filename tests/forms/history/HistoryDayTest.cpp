// The day and lap history: what they add up, what they show, what the erase keeps.
#include "HistoryDay.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QLocale>

#include "AccelerometerSource.h"
#include "AppFrame.h"
#include "AppResource.h"
#include "DAOLap.h"
#include "FreshProfile.h"
#include "DayList.h"
#include "HistoryConfirmPopup.h"
#include "HistoryDays.h"
#include "HistoryPanel.h"
#include "HistoryTotals.h"
#include "CountingEngine.h"
#include "PedometerDBManager.h"
#include "ScreenDirectory.h"
#include "StatisticsManager.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TestData.h"

#include <QTest>

namespace {

const QDateTime kNow(QDate(2026, 6, 15), QTime(18, 0));

QString Text(const char* key) {
    return AppResource::GetInstance().GetString(QString::fromUtf8(key));
}

DAOLapMinutes Minute(int steps, double metres, double kcal, int seconds) {
    DAOLapMinutes minute;
    minute.steps = steps;
    minute.distance = metres;
    minute.calories = kcal;
    minute.secondsCompleted = seconds;
    return minute;
}

TEST(HistoryTotalsTest, RowsAndSeriesFollowTheMinutes) {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    for (const QByteArrayList& c : testdata::Table("history-totals.tsv")) {
        SCOPED_TRACE(c[0].toStdString());
        HistoryTotals totals(c[1] == "1");
        for (const QByteArray& m : c[2].split(';')) {
            const QByteArrayList v = m.split(',');
            if (v.size() == 4)
                totals.AddMinute(Minute(v[0].toInt(), v[1].toDouble(), v[2].toDouble(), v[3].toInt()));
        }
        totals.PadSeries();
        EXPECT_EQ(totals.TotalRows(), QString::fromUtf8(c[3]).split('|'));
        EXPECT_EQ(totals.AverageRows(), QString::fromUtf8(c[4]).split('|'));
        const QByteArrayList speeds = c[5].split('|');
        ASSERT_EQ(totals.speedSeries.size(), std::size_t(speeds.size()));
        ASSERT_EQ(totals.calorieSeries.size(), std::size_t(speeds.size()));
        ASSERT_EQ(totals.paceSeries.size(), std::size_t(speeds.size()));
        for (qsizetype i = 0; i < speeds.size(); ++i) {
            EXPECT_NEAR(totals.speedSeries[i], speeds[i].toDouble(), 1e-9);
            EXPECT_NEAR(totals.paceSeries[i], HistoryTotals::PaceOf(speeds[i].toDouble()), 1e-9);
        }
    }
    QLocale::setDefault(QLocale::c());
}

// A day screen over three laps of today, the last one being recorded by a live
// statistics manager, as on the phone.
class HistoryDayTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(profile.IsValid());
        for (const QTime start : {QTime(7, 30), QTime(12, 10)}) AddLap(kNow.date(), start, true);
        AddLap(kNow.date().addDays(-1), QTime(9, 0), true);
        AddLap(kNow.date(), QTime(17, 0), false);  // open: the manager resumes it
        engine.UseSensorSource(nullptr);
        engine.Initialize();
        controller = std::make_unique<TivNavigationController>(frame, &engine);
        auto* root = new PedometerForm;
        controller->InitWithRootForm(root);
        frame.AddControl(*root);
        frame.SetCurrentForm(*root);
        frame.show();
    }
    void TearDown() override { controller.reset(); }
    static void AddLap(const QDate& day, const QTime& start, bool finished) {
        std::vector<std::unique_ptr<DAOLap>> laps;
        auto lap = std::make_unique<DAOLap>();
        lap->startDate = QDateTime(day, start);
        lap->techDate = day.startOfDay();
        if (finished) lap->endDate = lap->startDate.addSecs(90);
        for (int i = 1; i <= 2; ++i) {
            auto minute = std::make_unique<DAOLapMinutes>(Minute(100, 75.0, 4.0, i == 1 ? 60 : 30));
            minute->lapMinute = i;
            lap->minutes.push_back(std::move(minute));
        }
        laps.push_back(std::move(lap));
        ASSERT_TRUE(PedometerDBManager::GetInstance().ImportHistory(laps, {}));
    }
    HistoryDay& Open(const QDate& day) {
        screen = new HistoryDay(engine);
        screen->Initialize(day.startOfDay());
        controller->PushForm(screen);
        return *screen;
    }
    // The captions of the lap buttons, top to bottom.
    QStringList LapCaptions() const {
        QStringList captions;
        for (int i = int(screen->GetLaps().size()) - 1; i >= 0; --i) {
            auto* button = screen->GetPanel()->Content()->findChild<TivButton*>(
                QStringLiteral("action%1").arg(HistoryDay::ID_LAP_FIRST + i));
            const auto* label = button ? button->findChild<TivLabel*>() : nullptr;
            captions << (label ? label->GetText() : QStringLiteral("(none)"));
        }
        return captions;
    }

    FreshProfile profile{kNow};
    CountingEngine engine;
    StatisticsManager& statistics = engine.Statistics();
    AppFrame frame;
    std::unique_ptr<TivNavigationController> controller;
    HistoryDay* screen = nullptr;
};

TEST_F(HistoryDayTest, OnlyTodaysLastLapReadsCurrentAndPastDaysHaveNoReports) {
    HistoryDay& today = Open(kNow.date());
    EXPECT_EQ(today.GetSoftkeyText(TivForm::SOFTKEY_0), Text("history__ Reports"));
    const QStringList captions = LapCaptions();
    ASSERT_EQ(captions.size(), 3);
    EXPECT_EQ(captions[0], Text("history__ Current"));
    EXPECT_NE(captions[1], Text("history__ Current"));

    HistoryDay& yesterday = Open(kNow.date().addDays(-1));
    EXPECT_FALSE(yesterday.HasSoftkey(TivForm::SOFTKEY_0));
    ASSERT_EQ(LapCaptions().size(), 1);
    EXPECT_NE(LapCaptions()[0], Text("history__ Current"));
}

TEST_F(HistoryDayTest, ErasingTodayEmptiesTheRecordingLapAndDeletesTheOthers) {
    const int recording = statistics.GetCurrentLap()->id;
    HistoryDay& today = Open(kNow.date());
    today.OnActionPerformed(today, HistoryDay::ID_RESET);
    EXPECT_TRUE(today.GetPopup()->isVisible());
    EXPECT_EQ(today.GetPopup()->GetText(), Text("history__ Clear whole day data?"));
    today.OnActionPerformed(today, HistoryConfirmPopup::ID_CANCEL);
    EXPECT_EQ(today.GetLaps().size(), 3u);

    today.OnActionPerformed(today, HistoryDay::ID_RESET);
    today.OnActionPerformed(today, HistoryConfirmPopup::ID_CONFIRM);
    EXPECT_FALSE(today.GetPopup()->isVisible());
    ASSERT_EQ(today.GetLaps().size(), 1u);
    EXPECT_EQ(today.GetLaps()[0]->id, recording);
    EXPECT_TRUE(today.GetLaps()[0]->minutes.empty());
    EXPECT_EQ(statistics.GetCurrentLap()->id, recording);
    // Yesterday is untouched.
    EXPECT_EQ(PedometerDBManager::GetInstance()
                  .GetLapsForDate(kNow.date().addDays(-1).startOfDay())
                  .size(),
              1u);
}

TEST_F(HistoryDayTest, ScreensThatShowOneRecordRefuseWithoutIt) {
    const int lap = statistics.GetCurrentLap()->id;
    const QDate day(2026, 6, 1);
    const struct {
        const char* name;
        ScreenRequest request;
        const char* refusal;  // null: opens
    } cases[] = {
        {"history-lap", {}, "--lap"},
        {"history-lap", {QDate(), 9999, {}, {}}, "no lap 9999"},
        {"history-lap", {QDate(), lap, {}, {}}, nullptr},
        {"history-range", {}, "--from and --to"},
        {"history-range", {QDate(), -1, day, {}}, "--from and --to"},
        {"history-range", {QDate(), -1, day, day.addDays(-1)}, "after"},
        {"history-range", {QDate(), -1, day, day}, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.name) + " " + (c.refusal ? c.refusal : "opens"));
        QString error;
        QWidget* shown = ScreenDirectory::Open(QString::fromLatin1(c.name), *controller,
                                               c.request, &error);
        EXPECT_EQ(shown != nullptr, c.refusal == nullptr);
        if (c.refusal) {
            EXPECT_TRUE(error.contains(QString::fromLatin1(c.refusal))) << error.toStdString();
        }
    }
}

// The all-days list: newest first, with each day's steps; a tap opens that day.
TEST_F(HistoryDayTest, TheAllDaysListOpensTheTappedDay) {
    auto* days = new HistoryDays(engine);
    days->Initialize();
    controller->PushForm(days);
    DayList* list = days->GetList();
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->Count(), 2);
    EXPECT_EQ(list->DayAt(0), kNow.date());
    EXPECT_EQ(list->StepsAt(0), 600);  // three laps of 200
    EXPECT_EQ(list->StepsAt(1), 200);
    QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(50, DayList::RowHeight() * 3 / 2));
    auto* opened = qobject_cast<HistoryDay*>(controller->GetTopForm());
    ASSERT_NE(opened, nullptr);
    EXPECT_FALSE(opened->IsToday());
    EXPECT_EQ(opened->GetLaps().size(), 1u);
}

}  // namespace
