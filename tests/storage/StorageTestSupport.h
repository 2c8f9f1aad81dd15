#pragma once

// Shared set-up for the storage tests: a fresh data folder per test, the database
// manager pointed at it, and the clock frozen at a known moment.

#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <tuple>

#include "AppPaths.h"
#include "Clock.h"
#include "PedometerDBManager.h"
#include "TestData.h"

namespace storagetest {

// Thursday 14 March 2024, 10:30:00 local time.
inline QDateTime Moment(int day = 14, int hour = 10, int minute = 30, int second = 0) {
    return QDateTime(QDate(2024, 3, day), QTime(hour, minute, second));
}

// A finished lap from `start` of `minutes` minutes, each with `steps` steps, `metres` metres,
// steps / 20 kcal and `seconds` active seconds.
inline std::unique_ptr<DAOLap> MakeLap(const QDateTime& start, int minutes = 1, int steps = 0,
                                       double metres = 0.0, int seconds = 60) {
    auto lap = std::make_unique<DAOLap>();
    lap->startDate = start;
    lap->endDate = start.addSecs(qint64(minutes) * seconds);
    lap->techDate = start.date().startOfDay();
    for (int m = 1; m <= minutes; ++m) {
        auto minute = std::make_unique<DAOLapMinutes>();
        std::tie(minute->lapMinute, minute->steps, minute->distance, minute->calories,
                 minute->secondsCompleted) = std::tuple(m, steps, metres, steps / 20.0, seconds);
        lap->minutes.push_back(std::move(minute));
    }
    return lap;
}

class StorageTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = testdata::MakeTempDir();
        ASSERT_TRUE(folder_->isValid());
        home_ = folder_->path() + QStringLiteral("/data");
        AppPaths::SetHome(home_);
        manager().SetReadOnly(false);
        manager().Reopen();
        Clock::SetNow(Moment());
    }

    void TearDown() override {
        manager().SetReadOnly(false);
        manager().Reopen();
        Clock::UseSystemTime();
    }

    static PedometerDBManager& manager() { return PedometerDBManager::GetInstance(); }

    QString HomeFile(const QString& name) const { return home_ + '/' + name; }
    std::string StatisticsPath() const {
        return QFile::encodeName(HomeFile("Statistics.db3")).toStdString();
    }
    std::string OptionsPath() const {
        return QFile::encodeName(HomeFile("Options.db3")).toStdString();
    }

    // A second connection of the test's own, for looking at what the manager stored.
    static std::unique_ptr<SQLite::Database> Open(const std::string& path) {
        return std::make_unique<SQLite::Database>(path, SQLite::OPEN_READWRITE);
    }
    static int QueryInt(const std::string& path, const std::string& sql) {
        return Open(path)->execAndGet(sql).getInt();
    }
    static double QueryDouble(const std::string& path, const std::string& sql) {
        return Open(path)->execAndGet(sql).getDouble();
    }
    static std::string QueryText(const std::string& path, const std::string& sql) {
        return Open(path)->execAndGet(sql).getString();
    }
    static void Exec(const std::string& path, const std::string& sql) { Open(path)->exec(sql); }

    std::unique_ptr<QTemporaryDir> folder_;
    QString home_;
};

}  // namespace storagetest
