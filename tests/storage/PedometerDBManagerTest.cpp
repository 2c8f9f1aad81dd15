#include "PedometerDBManager.h"

#include <tuple>

#include "Body.h"
#include "DayCorrection.h"
#include "StorageTestSupport.h"

using storagetest::Moment;
using storagetest::StorageTest;

namespace {

class PedometerDBManagerTest : public StorageTest {
protected:
    // Stores a lap started at `start` with one minute of `distance` metres,
    // `calories` kcal and `seconds` active seconds.
    int LapAt(const QDateTime& start, double distance = 100.0, double calories = 5.0,
              int seconds = 60) {
        Clock::SetNow(start);
        auto lap = manager().CreateNewLap();
        DAOLapMinutes minute;
        minute.lapId = lap->id;
        manager().CreateNewLapMinute(minute);
        minute.steps = 90;
        minute.distance = distance;
        minute.calories = calories;
        minute.secondsCompleted = seconds;
        manager().UpdateLapMinute(minute);
        Clock::SetNow(Moment());
        return lap->id;
    }
};

// --- Laps, minutes and intervals ---------------------------------------------------

TEST_F(PedometerDBManagerTest, NewLapIsStoredOpenWithItsDayAndRowId) {
    auto lap = manager().CreateNewLap();
    ASSERT_GT(lap->id, 0);

    const std::string where = " FROM Lap WHERE id=" + std::to_string(lap->id);
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT startDate" + where), "2024-03-14 10:30:00");
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT techDate" + where), "2024-03-14 00:00:00");
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT endDate IS NULL" + where), 1);

    Clock::SetNow(Moment(14, 11, 5, 9));
    manager().FinishLap(lap->id);
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT endDate" + where), "2024-03-14 11:05:09");

    auto second = manager().CreateNewLap();
    EXPECT_EQ(second->id, lap->id + 1);
    manager().DeleteLap(lap->id);
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*)" + where), 0);
    // A lap's minutes go with it, for a new lap may be given its id.
    Exec(StatisticsPath(), "INSERT INTO LapMinutes (lapId,lapMinute,steps) VALUES (" +
                               std::to_string(second->id) + ",1,555)");
    manager().DeleteLap(second->id);
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM LapMinutes"), 0);
    // A lap of an earlier day left open ends where its counted time ends once a new day's
    // lap starts; today's open lap stays open.
    const std::string earlier = std::to_string(LapAt(Moment(13, 22, 0, 0), 100, 5, 90));
    const std::string today = std::to_string(LapAt(Moment(14, 9, 0, 0)));
    Clock::SetNow(Moment(14, 12, 0, 0));
    manager().CreateNewLap();
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT endDate FROM Lap WHERE id=" + earlier),
              "2024-03-13 22:01:30");
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT endDate IS NULL FROM Lap WHERE id=" + today), 1);
}

TEST_F(PedometerDBManagerTest, MinuteRowCreatedWithItsKeyOnlyStartsAtZero) {
    DAOLapMinutes minute;
    minute.lapId = 7;
    minute.lapMinute = 3;
    minute.steps = 55;  // not part of the insert
    manager().CreateNewLapMinute(minute);
    EXPECT_EQ(QueryText(StatisticsPath(),
                        "SELECT group_concat(steps||' '||calories||' '||distance||' '||"
                        "secondsCompleted||' '||typeof(calories)) FROM LapMinutes WHERE lapId=7 "
                        "AND lapMinute=3"),
              "0 0.0 0.0 0 real");
    // A lap stored after its minutes (an import) takes their sums.
    minute.lapMinute = 3;
    manager().UpdateLapMinute(minute);
    Exec(StatisticsPath(), "INSERT INTO Lap (id,startDate) VALUES (7,'2024-03-14 11:00:00')");
    EXPECT_EQ(manager().GetDayTotals(QDate(2024, 3, 14), QDate(2024, 3, 14))[0].steps, 55);
}

TEST_F(PedometerDBManagerTest, IntervalWritesReadBackInOrder) {
    auto lap = manager().CreateNewLap();
    DAOLapMinutes minute;
    minute.lapId = lap->id;
    manager().CreateNewLapMinute(minute);
    for (int second = 5; second <= 65; second += 5) {
        DAOLapSeconds interval;
        std::tie(interval.lapId, interval.currentSecond, interval.steps, interval.calories,
                 interval.distance, interval.caloriesNoise) = std::tuple(lap->id, second, 8, 0.25, 5.5, 3.1);
        minute.steps += 8;
        minute.distance += 5.5;
        minute.calories += 0.25;
        minute.secondsCompleted += 5;
        if (second == 60) {
            DAOLapMinutes next;
            next.lapId = lap->id;
            next.lapMinute = 1;
            manager().UpdateFull(minute, interval, next);
            minute = next;
        } else {
            manager().UpdateSmall(minute, interval);
        }
    }

    auto today = manager().GetTodayLastLap();
    ASSERT_NE(today, nullptr);
    EXPECT_EQ(today->id, lap->id);
    ASSERT_EQ(today->minutes.size(), 2u);
    const DAOLapMinutes &first = *today->minutes[0], &second = *today->minutes[1];
    EXPECT_EQ(std::tuple(first.steps, first.distance, first.secondsCompleted),
              std::tuple(96, 66.0, 60));
    EXPECT_EQ(std::tuple(second.lapMinute, second.steps, second.lapId), std::tuple(1, 8, lap->id));
    ASSERT_EQ(today->seconds.size(), 13u);
    for (size_t i = 0; i < today->seconds.size(); ++i) {
        EXPECT_EQ(today->seconds[i]->currentSecond, 5 * static_cast<int>(i + 1));
    }
    const DAOLapSeconds& interval = *today->seconds[0];
    EXPECT_EQ(std::tuple(interval.steps, interval.calories, interval.distance,
                         interval.caloriesNoise),
              std::tuple(8, 0.25, 5.5, 3.1));

    // The day's sums follow every write of a minute.
    const auto daySteps = [] {
        return manager().GetDayTotals(QDate(2024, 3, 14), QDate(2024, 3, 14))[0].steps;
    };
    EXPECT_EQ(daySteps(), 104);

    // A new lap empties the five-second table; the minutes stay.
    manager().ClearLapSeconds();
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM LastFiveMinutes"), 0);
    manager().ClearLapMinutes(lap->id);
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM LapMinutes"), 0);
    EXPECT_EQ(daySteps(), 0);
}

TEST_F(PedometerDBManagerTest, TodayLastLapIsTheLatestStartOfTodayOnly) {
    EXPECT_EQ(manager().GetTodayLastLap(), nullptr);
    LapAt(Moment(13, 22, 0));
    EXPECT_EQ(manager().GetTodayLastLap(), nullptr);
    LapAt(Moment(14, 9, 0));
    const int latest = LapAt(Moment(14, 10, 15));
    LapAt(Moment(14, 8, 0));
    auto lap = manager().GetTodayLastLap();
    ASSERT_NE(lap, nullptr);
    EXPECT_EQ(lap->id, latest);
    EXPECT_EQ(lap->startDate, Moment(14, 10, 15));
    ASSERT_EQ(lap->minutes.size(), 1u);
}

// Today runs from 00:00:00 to the next 00:00:00, both included: a lap started at
// exactly midnight counts for the day before and the day after.
TEST_F(PedometerDBManagerTest, TodaysSumsIncludeBothMidnights) {
    LapAt(Moment(13, 23, 59, 59), 1000.0, 100.0, 600);  // yesterday
    LapAt(Moment(14, 0, 0, 0), 10.0, 1.0, 60);
    LapAt(Moment(14, 12, 0, 0), 20.0, 2.0, 120);
    LapAt(Moment(15, 0, 0, 0), 40.0, 4.0, 240);       // next midnight
    LapAt(Moment(15, 0, 0, 1), 3000.0, 300.0, 1800);  // tomorrow
    Clock::SetNow(Moment(14, 18, 0));
    manager().CreateNewLap();  // without minutes: adds nothing

    EXPECT_DOUBLE_EQ(manager().GetTodayDistance(), 70.0);
    EXPECT_DOUBLE_EQ(manager().GetTodayCalories(), 7.0);
    EXPECT_EQ(manager().GetTodayActivity(), 420);

    Clock::SetNow(Moment(15, 9, 0));
    EXPECT_DOUBLE_EQ(manager().GetTodayDistance(), 3040.0);
    EXPECT_EQ(manager().GetTodayActivity(), 2040);
}

TEST_F(PedometerDBManagerTest, LapsForDateAndPeriodCarryTheirMinutes) {
    LapAt(Moment(12, 18, 0));
    const int first = LapAt(Moment(14, 7, 0));
    const int second = LapAt(Moment(14, 19, 0));
    LapAt(Moment(16, 7, 0));
    Clock::SetNow(Moment(14, 20, 0));
    manager().FinishLap(second);
    DAOLapSeconds interval;
    interval.lapId = second;
    manager().CreateNewLapSecond(interval);

    auto day = manager().GetLapsForDate(Moment(14, 0, 0));
    ASSERT_EQ(day.size(), 2u);
    EXPECT_EQ(std::tuple(day[0]->id, day[1]->id), std::tuple(first, second));
    // Closed by the later day's lap, where its minute of counting ends.
    EXPECT_EQ(day[0]->endDate, Moment(14, 7, 1));
    ASSERT_TRUE(day[1]->endDate.has_value());
    EXPECT_EQ(*day[1]->endDate, Moment(14, 20, 0));
    ASSERT_EQ(day[1]->minutes.size(), 1u);
    EXPECT_DOUBLE_EQ(day[1]->minutes[0]->distance, 100.0);
    EXPECT_TRUE(day[1]->seconds.empty());  // intervals are not part of history

    // The lower bound is taken as given, the upper is the next midnight.
    EXPECT_EQ(manager().GetLapsForDate(Moment(14, 12, 0)).size(), 1u);

    auto period = manager().GetLapsForPeriod(Moment(12, 0, 0), Moment(14, 0, 0));
    ASSERT_EQ(period.size(), 3u);
    EXPECT_EQ(period[0]->techDate, Moment(12, 0, 0));
    EXPECT_EQ(period[2]->id, second);
    EXPECT_TRUE(manager().GetLapsForPeriod(Moment(15, 0, 0), Moment(15, 0, 0)).empty());

    EXPECT_EQ(manager().GetAllDays(),
              (std::vector<QDateTime>{Moment(16, 0, 0), Moment(14, 0, 0), Moment(12, 0, 0)}));
}

TEST_F(PedometerDBManagerTest, ResetLogsOfOneDayKeepsTheOtherDays) {
    const int before = LapAt(Moment(13, 23, 0));
    LapAt(Moment(14, 0, 0));
    const int b = LapAt(Moment(14, 23, 59, 59));
    const int after = LapAt(Moment(15, 0, 0, 1));
    DAOLapSeconds interval;
    interval.lapId = b;
    manager().CreateNewLapSecond(interval);

    manager().ResetLogs(Moment(14, 0, 0), Moment(14, 0, 0));

    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM Lap"), 2);
    const std::string remaining = "SELECT group_concat(id) FROM (SELECT id FROM Lap ORDER BY id)";
    EXPECT_EQ(QueryText(StatisticsPath(), remaining),
              std::to_string(before) + "," + std::to_string(after));
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT group_concat(lapId) FROM LapMinutes"),
              std::to_string(before) + "," + std::to_string(after));
    // The current lap's intervals are not part of the reset.
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM LastFiveMinutes"), 1);
}

// --- Goal alarm progress -------------------------------------------------------

TEST_F(PedometerDBManagerTest, AlarmProgressRestartsOnANewDay) {
    DAOSygnal first = manager().GetTodaySygnal();
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT sygnalDate FROM SygnalValues"),
              "2024-03-14 10:30:00");

    first.calories = 120.5;
    first.distance = 2.25;
    first.activityTime = 1500;
    manager().UpdateSygnal(first);
    Clock::SetNow(Moment(14, 23, 0));
    const DAOSygnal again = manager().GetTodaySygnal();
    EXPECT_EQ(std::tuple(again.calories, again.distance, again.activityTime),
              std::tuple(120.5, 2.25, 1500));
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM SygnalValues"), 1);

    // Today's corrections count as they do in the day's totals, and are not stored twice.
    std::vector<std::unique_ptr<DAOLap>> corrections;
    corrections.push_back(DayCorrection::Added(Moment(13, 9, 0), 900, 1, Body::GetInstance()));
    corrections.push_back(DayCorrection::Added(Moment(14, 9, 0), 500, 1, Body::GetInstance()));
    ASSERT_TRUE(manager().ImportHistory(corrections, {}));
    DAOSygnal corrected = manager().GetTodaySygnal();
    EXPECT_EQ(std::tuple(corrected.steps, corrected.activityTime > 1500, corrected.distance > 2.25,
                         corrected.calories > 120.5),
              std::tuple(500, true, true, true));
    corrected.steps += 10;
    manager().UpdateSygnal(corrected);
    EXPECT_EQ(manager().GetTodaySygnal().steps, 510);
    EXPECT_EQ(QueryText(StatisticsPath(),
                        "SELECT steps || ' ' || calories || ' ' || distance || ' ' || activityTime "
                        "FROM SygnalValues"),
              "10 120.5 2.25 1500");

    Clock::SetNow(Moment(15, 6, 45));
    const DAOSygnal nextDay = manager().GetTodaySygnal();
    EXPECT_EQ(std::tuple(nextDay.calories, nextDay.activityTime), std::tuple(0.0, 0));
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM SygnalValues"), 1);
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT sygnalDate FROM SygnalValues"),
              "2024-03-15 06:45:00");

    manager().ClearSygnals();
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM SygnalValues"), 0);
}

// --- Body log -------------------------------------------------------------------

TEST_F(PedometerDBManagerTest, BodyLogRowsAreKeyedByDay) {
    // The log dates of an empty log are today.
    EXPECT_TRUE(manager().GetBodyLogs().empty());
    EXPECT_EQ(std::pair(manager().GetFirstLogDate(), manager().GetLastLogDate()),
              std::pair(Moment(14, 0, 0), Moment(14, 0, 0)));
    const DAOBodyLog empty = manager().GetTodayBodyLog();
    EXPECT_EQ(empty.logDate, Moment(14, 0, 0));
    EXPECT_EQ(QueryText(StatisticsPath(), "SELECT logDate FROM BODYLOGS"), "2024-03-14 00:00:00");

    manager().SetTodayWeight(81.5);
    manager().SetTodayWaist(92.0);
    Clock::SetNow(Moment(14, 22, 0));  // later the same day: the same row
    manager().SetTodayChest(101.0);
    manager().SetTodayHip(104.5);
    const DAOBodyLog today = manager().GetTodayBodyLog();
    EXPECT_EQ(std::tuple(today.weight, today.chest, today.waist, today.hip),
              std::tuple(81.5, 101.0, 92.0, 104.5));

    // Setters change only an existing row of today.
    Clock::SetNow(Moment(16, 8, 0));
    manager().SetTodayWeight(80.0);
    EXPECT_EQ(QueryInt(StatisticsPath(), "SELECT count(*) FROM BODYLOGS"), 1);
    manager().GetTodayBodyLog();
    manager().SetTodayWeight(80.0);

    const std::vector<DAOBodyLog> logs = manager().GetBodyLogs();
    ASSERT_EQ(logs.size(), 2u);
    EXPECT_EQ(std::tuple(logs[0].logDate, logs[1].logDate, logs[1].weight),
              std::tuple(Moment(14, 0, 0), Moment(16, 0, 0), 80.0));
    EXPECT_EQ(std::pair(manager().GetFirstLogDate(), manager().GetLastLogDate()),
              std::pair(Moment(14, 0, 0), Moment(16, 0, 0)));

    manager().ResetWheight();
    manager().ResetHips();
    const DAOBodyLog reset = manager().GetBodyLogs()[0];
    EXPECT_EQ(std::tuple(reset.weight, reset.hip, reset.chest), std::tuple(0.0, 0.0, 101.0));
    manager().ResetChest();
    manager().ResetWaist();
    EXPECT_EQ(QueryDouble(StatisticsPath(), "SELECT sum(chest+waist) FROM BODYLOGS"), 0.0);
}

// --- Goals, body profile, social ------------------------------------------------

auto Fields(const DAOTarget& t) {
    return std::tuple(t.targetActive, t.distance, t.calories, t.activityTime, t.wheight, t.chest,
                      t.waist, t.hips, t.wheightTarget, t.steps);
}
auto Fields(const DAOSocial& s) {
    return std::tuple(s.share, s.export_, s.twitLogin, s.twitPass, s.facebLogin, s.facebPass);
}
auto Fields(const Body& b) {
    return std::tuple(b.isMen(), b.storedAge(), b.storedHeight(), b.storedWeight(),
                      b.storedWalkStepSize(), b.storedJogStepSize(), b.storedRunStepSize(),
                      b.storedWalkCoef(), b.storedJogCoef(), b.storedRunCoef());
}

// Goals, the body profile and the sharing settings read back field by field; the seed
// gives the defaults (an unset profile) and loading overwrites what was there.
TEST_F(PedometerDBManagerTest, GoalsBodyAndSocialSettingsSurviveSaveAndLoad) {
    DAOTarget loaded;
    loaded.calories = -5;
    manager().LoadTargets(loaded);
    EXPECT_EQ(Fields(loaded), Fields(DAOTarget{}));
    DAOTarget goals;
    std::tie(goals.targetActive, goals.distance, goals.calories, goals.activityTime, goals.wheight,
             goals.chest, goals.waist, goals.hips, goals.wheightTarget, goals.steps) =
        std::tuple(2, 7.25, 450, 75, 74.5, 99.0, 85.5, 98.0, 3, 12500);
    manager().SaveTagets(goals);
    manager().LoadTargets(loaded);
    EXPECT_EQ(Fields(loaded), Fields(goals));

    Body& body = Body::GetInstance();
    body.setAge(44);
    manager().LoadBody();
    EXPECT_EQ(std::tuple(body.storedAge(), body.storedHeight(), body.storedRunCoef()),
              std::tuple(-1, -1.0, -1.0));
    body.setMen(1);
    body.setAge(37);
    body.setHeight(181.5);
    body.setWeight(79.25);
    body.setWalkStepSize(0.76);
    body.setJogStepSize(1.1);
    body.setRunStepSize(1.45);
    body.setWalkCoef(0.35);
    body.setJogCoef(0.95);
    body.setRunCoef(1.5);
    const auto saved = Fields(body);
    manager().SaveBody();
    body.clear();
    manager().LoadBody();
    EXPECT_EQ(Fields(body), saved);
    body.clear();

    EXPECT_EQ(Fields(*manager().GetDAOSocialN()), Fields(DAOSocial{}));
    DAOSocial social;
    std::tie(social.share, social.export_, social.twitLogin, social.twitPass, social.facebLogin,
             social.facebPass) = std::tuple("friends@example.org", "me@example.org", "läufer",
                                            "p'ss \"word\"", "walker", "秘密");
    manager().SetSocial(social);
    EXPECT_EQ(Fields(*manager().GetDAOSocialN()), Fields(social));
}

// --- Import ---------------------------------------------------------------------

TEST_F(PedometerDBManagerTest, ImportedHistoryReadsBackLikeRecordedHistory) {
    std::vector<std::unique_ptr<DAOLap>> laps;
    for (int day : {10, 11}) laps.push_back(storagetest::MakeLap(Moment(day, 7, 15), 2, 101, 70.0));
    DAOBodyLog log;
    log.logDate = Moment(11, 9, 30);  // stored as the day
    log.weight = 80.5;
    ASSERT_TRUE(manager().ImportHistory(laps, {log}));
    EXPECT_EQ(laps[1]->minutes[1]->lapId, laps[1]->id);

    auto day = manager().GetLapsForDate(Moment(11, 0, 0));
    ASSERT_EQ(day.size(), 1u);
    EXPECT_EQ(day[0]->id, laps[1]->id);
    EXPECT_EQ(*day[0]->endDate, Moment(11, 7, 17));
    ASSERT_EQ(day[0]->minutes.size(), 2u);
    EXPECT_EQ(day[0]->minutes[1]->steps, 101);
    ASSERT_EQ(manager().GetBodyLogs().size(), 1u);
    EXPECT_EQ(manager().GetBodyLogs()[0].logDate, Moment(11, 0, 0));
}

}  // namespace
