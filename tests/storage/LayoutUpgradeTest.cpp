// Files written by the app before steps became a goal are upgraded in place.
#include <QDir>
#include <QTextStream>

#include "StorageTestSupport.h"

using storagetest::Moment;
using storagetest::StorageTest;

namespace {

using LayoutUpgradeTest = StorageTest;

TEST_F(LayoutUpgradeTest, LayoutOneKeepsEveryGoalAlarmAndLapAndGainsSteps) {
    ASSERT_TRUE(QDir().mkpath(home_));
    for (const QString name : {"Options", "Statistics"}) {
        QFile sql(QStringLiteral(PEDOMETER_SOURCE_DIR "/tests/data/layout-1/%1.sql").arg(name));
        ASSERT_TRUE(sql.open(QIODevice::ReadOnly)) << name.toStdString();
        SQLite::Database db(QFile::encodeName(HomeFile(name + ".db3")).toStdString(),
                            SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        db.exec(sql.readAll().toStdString());
    }
    manager().Reopen();
    Clock::SetNow(Moment(14, 18));

    DAOTarget goals;
    manager().LoadTargets(goals);
    EXPECT_EQ(std::tuple(goals.targetActive, goals.distance, goals.calories, goals.activityTime,
                         goals.wheight, goals.steps),
              std::tuple(1, 7.5, 450, 40, 70.5, 10000));
    PedometerOptions options;
    manager().LoadOptions(options);
    EXPECT_EQ(std::tuple(options.sygnalType.load(), options.sygnalActivity.load(),
                         options.sygnalCalories.load(), options.sygnalDistance.load(),
                         options.sygnalSteps.load()),
              std::tuple(6, 45, 250, 3.2, 10000));
    const DAOSygnal progress = manager().GetTodaySygnal();
    EXPECT_EQ(std::tuple(progress.activityTime, progress.steps), std::tuple(105, 0));
    EXPECT_EQ(manager().GetDayTotals(QDate(2024, 3, 12), QDate(2024, 3, 14)).size(), 3u);
    EXPECT_EQ(QueryInt(StatisticsPath(), "PRAGMA user_version"), 4);
    EXPECT_EQ(QueryInt(OptionsPath(), "PRAGMA user_version"), 2);

    // The goal set before counts as in force since always.
    const std::vector<DatedGoal> history = manager().GetGoalHistory();
    ASSERT_EQ(history.size(), 1u);
    EXPECT_EQ(history[0].goal, (DailyGoal{DAOTarget::DISTANCE, 7.5}));
    EXPECT_LT(history[0].since, QDate(2024, 3, 12));

    // The new fields are stored and read back like the old ones.
    goals.targetActive = DAOTarget::STEPS;
    goals.steps = 8000;
    manager().SaveTagets(goals);
    options.sygnalSteps = 5000;
    manager().SaveOptions(options);
    manager().Reopen();
    DAOTarget reloaded;
    manager().LoadTargets(reloaded);
    PedometerOptions reloadedOptions;
    manager().LoadOptions(reloadedOptions);
    EXPECT_EQ(std::tuple(reloaded.targetActive, reloaded.steps, reloadedOptions.sygnalSteps.load()),
              std::tuple(4, 8000, 5000));
    EXPECT_EQ(manager().GetGoalHistory().back().goal, (DailyGoal{DAOTarget::STEPS, 8000}));
}

}  // namespace
