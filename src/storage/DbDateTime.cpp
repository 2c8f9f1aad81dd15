#include "DbDateTime.h"

#include <cstdio>
#include <cstring>

namespace {
// Reads `count` decimal digits at `text`; -1 if any is not a digit.
int readNumber(const char* text, int count) {
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const char c = text[i];
        if (c < '0' || c > '9') return -1;
        value = value * 10 + (c - '0');
    }
    return value;
}
}  // namespace

std::string DbDateTime::ToText(const QDateTime& when) {
    if (!when.isValid()) return {};
    const QDate date = when.date();
    const QTime time = when.time();
    char buffer[32];
    const int length =
        std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", date.year(),
                      date.month(), date.day(), time.hour(), time.minute(), time.second());
    return std::string(buffer, static_cast<size_t>(length));
}

QDateTime DbDateTime::FromText(const char* text) {
    if (text == nullptr) return {};
    // Positions: YYYY-MM-DD HH:MM:SS
    //            0    5  8  11 14 17
    const size_t length = std::strlen(text);
    if ((length != 10 && length != 19) || text[4] != '-' || text[7] != '-') return {};
    const int year = readNumber(text, 4);
    const int month = readNumber(text + 5, 2);
    const int day = readNumber(text + 8, 2);
    if (year < 0 || month < 0 || day < 0) return {};
    const QDate date(year, month, day);
    if (!date.isValid()) return {};
    if (length == 10) return date.startOfDay();
    if ((text[10] != ' ' && text[10] != 'T') || text[13] != ':' || text[16] != ':') return {};
    const int hour = readNumber(text + 11, 2);
    const int minute = readNumber(text + 14, 2);
    const int second = readNumber(text + 17, 2);
    if (hour < 0 || minute < 0 || second < 0) return {};
    const QTime time(hour, minute, second);
    if (!time.isValid()) return {};
    const QDateTime when(date, time);
    if (when.isValid()) return when;
    // A time the clocks skipped (the hour of the spring change) is read as the zone's rules
    // place it: that long after midnight, so 02:30 on a day that jumps from 02:00 is 03:30.
    return date.startOfDay().addSecs(QTime(0, 0).secsTo(time));
}

QDateTime DbDateTime::DayStart(const QDateTime& when) {
    return when.date().startOfDay();
}

QDateTime DbDateTime::NextDayStart(const QDateTime& when) {
    return when.date().addDays(1).startOfDay();
}

QDateTime DbDateTime::Unset() {
    return QDate(1, 1, 1).startOfDay();
}
