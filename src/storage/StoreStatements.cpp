#include "StoreStatements.h"

#include "Clock.h"
#include "DbDateTime.h"

StoreStatements::DayRange StoreStatements::TodayRange() {
    const QDateTime now = Clock::Now();
    return {DbDateTime::DayStart(now), DbDateTime::NextDayStart(now)};
}

QDateTime StoreStatements::NowToTheSecond() {
    const QDateTime now = Clock::Now();
    return now.addMSecs(-now.time().msec());
}

void StoreStatements::BindDate(SQLite::Statement& statement, int index, const QDateTime& when) {
    statement.bind(index, DbDateTime::ToText(when));
}

QDateTime StoreStatements::DateColumn(const SQLite::Column& column) {
    const QDateTime when = DbDateTime::FromText(column.getText());
    return when.isValid() ? when : DbDateTime::Unset();
}

std::optional<QDateTime> StoreStatements::OptionalDateColumn(const SQLite::Column& column) {
    if (column.isNull()) return std::nullopt;
    const QDateTime when = DbDateTime::FromText(column.getText());
    if (!when.isValid()) return std::nullopt;
    return when;
}
