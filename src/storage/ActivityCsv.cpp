#include "ActivityCsv.h"

#include <QList>
#include <QLocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "DbDateTime.h"

namespace {
// No line of ours comes near this; a longer one is not our file.
constexpr qint64 kMaxLineBytes = 4096;
// What a phone can have counted in one minute, generously: anything beyond is not a
// record of walking, and totals of such values could not be written back as read.
constexpr qint64 kMaxStepsPerMinute = 600;
constexpr double kMaxCaloriesPerMinute = 100;
constexpr double kMaxMetresPerMinute = 2000;
// An open lap (no end) is counted for at most a week.
constexpr qint64 kMaxOpenLapMinutes = 7 * 1440;

// Laps and minutes end with "manual": 1 for a lap entered by hand, whose values are
// negative when it takes steps away. Files written before that column existed are read
// as counted laps (kOlderHeaders).
const char* const kHeaders[] = {
    "day,laps,steps,calories_kcal,distance_m,active_s",
    "lap_start,lap_end,steps,calories_kcal,distance_m,active_s,manual",
    "lap_start,lap_end,minute,steps,calories_kcal,distance_m,seconds,manual",
};
const char* const kOlderHeaders[] = {
    "",
    "lap_start,lap_end,steps,calories_kcal,distance_m,active_s",
    "lap_start,lap_end,minute,steps,calories_kcal,distance_m,seconds",
};

// Rounded to what the phone can measure (a hundredth of a metre, a thousandth of a
// kcal), written as briefly as it reads back exactly: 3.55, not 3.5500000000000003.
QByteArray number(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return QByteArray::number(std::round(value * scale) / scale, 'g',
                              QLocale::FloatingPointShortest);
}
constexpr int kCalorieDecimals = 3;
constexpr int kDistanceDecimals = 2;

QByteArray text(const SQLite::Column& column) {
    return column.isNull() ? QByteArray() : QByteArray(column.getText());
}

// One lap to be stored: its start and end, and its minutes (number -> values).
struct Minute {
    qint64 steps = 0;
    double calories = 0;
    double distance = 0;
    qint64 seconds = 0;
};
struct PendingLap {
    std::string start;
    std::string end;  // empty while open
    bool manual = false;
    std::map<qint64, Minute> minutes;
};

class LineReader {
public:
    explicit LineReader(QIODevice& in) : in_(in) {}
    // The next line without its end; false at the end of the file or on a line
    // that is too long (then `tooLong` is set).
    bool Next(QByteArray* line, bool* tooLong) {
        *line = in_.readLine(kMaxLineBytes + 2);
        if (line->isEmpty()) return false;
        ++number_;
        if (!line->endsWith('\n') && !in_.atEnd()) {
            *tooLong = true;
            return false;
        }
        while (line->endsWith('\n') || line->endsWith('\r')) line->chop(1);
        return true;
    }
    qint64 number() const { return number_; }

private:
    QIODevice& in_;
    qint64 number_ = 0;
};

// Counted values are zero or more; those of a lap entered by hand may be negative.
bool parseCount(const QByteArray& field, qint64* value, bool signedValue = false) {
    bool ok = false;
    *value = field.toLongLong(&ok);
    return ok && *value >= (signedValue ? -std::numeric_limits<qint64>::max() : 0);
}

bool parseAmount(const QByteArray& field, double* value, bool signedValue = false) {
    bool ok = false;
    *value = field.toDouble(&ok);
    return ok && std::isfinite(*value) && (*value >= 0 || signedValue);
}

bool parseDateTime(const QByteArray& field, std::string* value) {
    const QDateTime when = DbDateTime::FromText(field.constData());
    if (!when.isValid() || field.size() != 19) return false;
    *value = DbDateTime::ToText(when);
    return true;
}

bool lapExists(SQLite::Database& db, const std::string& start) {
    SQLite::Statement query(db, "SELECT 1 FROM Lap WHERE startDate=? LIMIT 1");
    query.bind(1, start);
    return query.executeStep();
}

bool dayHasLaps(SQLite::Database& db, const std::string& day) {
    SQLite::Statement query(db, "SELECT 1 FROM Lap WHERE startDate>=? AND startDate<? LIMIT 1");
    query.bind(1, day + " 00:00:00");
    query.bind(2, day + " 99");  // after every time of that day
    return query.executeStep();
}

void storeLap(SQLite::Database& db, const PendingLap& lap) {
    SQLite::Statement insertLap(
        db, "INSERT INTO Lap (startDate,endDate,techDate,manual) VALUES (?,?,?,?)");
    insertLap.bind(1, lap.start);
    if (lap.end.empty()) {
        insertLap.bind(2);
    } else {
        insertLap.bind(2, lap.end);
    }
    insertLap.bind(3, lap.start.substr(0, 10) + " 00:00:00");
    insertLap.bind(4, lap.manual ? 1 : 0);
    insertLap.exec();
    const int64_t id = db.getLastInsertRowid();
    SQLite::Statement insertMinute(db,
                                   "INSERT INTO LapMinutes (lapId,lapMinute,steps,calories,"
                                   "distance,secondsCompleted) VALUES (?,?,?,?,?,?)");
    for (const auto& [number, minute] : lap.minutes) {
        insertMinute.bind(1, id);
        insertMinute.bind(2, static_cast<int64_t>(number));
        insertMinute.bind(3, static_cast<int64_t>(minute.steps));
        insertMinute.bind(4, minute.calories);
        insertMinute.bind(5, minute.distance);
        insertMinute.bind(6, static_cast<int64_t>(minute.seconds));
        insertMinute.exec();
        insertMinute.reset();
    }
}
}  // namespace

const char* ActivityCsv::Header(Kind kind) {
    return kHeaders[static_cast<int>(kind)];
}

bool ActivityCsv::KindFromName(const QString& name, Kind* kind) {
    static const char* const names[] = {"days", "laps", "minutes"};
    for (int i = 0; i < 3; ++i) {
        if (name == QLatin1String(names[i])) {
            *kind = static_cast<Kind>(i);
            return true;
        }
    }
    return false;
}

qint64 ActivityCsv::Export(SQLite::Database& db, Kind kind, const QDate& from, const QDate& to,
                           QIODevice& out) {
    static const char* const queries[] = {
        "SELECT substr(start,1,10),count(*),total(steps),total(calories),total(distance),"
        "total(seconds) FROM (SELECT Lap.startDate AS start,total(m.steps) AS steps,"
        "total(m.calories) AS calories,total(m.distance) AS distance,"
        "total(m.secondsCompleted) AS seconds FROM Lap LEFT JOIN LapMinutes AS m ON "
        "m.lapId=Lap.id WHERE Lap.startDate>=? AND Lap.startDate<? GROUP BY Lap.startDate,"
        "Lap.id) GROUP BY 1 ORDER BY 1",
        "SELECT Lap.startDate,Lap.endDate,total(m.steps),total(m.calories),total(m.distance),"
        "total(m.secondsCompleted),Lap.manual FROM Lap LEFT JOIN LapMinutes AS m ON "
        "m.lapId=Lap.id "
        "WHERE Lap.startDate>=? AND Lap.startDate<? GROUP BY Lap.startDate,Lap.id",
        "SELECT Lap.startDate,Lap.endDate,m.lapMinute,m.steps,m.calories,m.distance,"
        "m.secondsCompleted,Lap.manual FROM Lap JOIN LapMinutes AS m ON m.lapId=Lap.id "
        "WHERE Lap.startDate>=? AND Lap.startDate<? ORDER BY Lap.startDate,Lap.id,m.lapMinute",
    };
    SQLite::Statement select(db, queries[static_cast<int>(kind)]);
    select.bind(1, from.isValid() ? DbDateTime::ToText(from.startOfDay()) : std::string("0"));
    select.bind(2, to.isValid() ? DbDateTime::ToText(to.addDays(1).startOfDay())
                                : std::string("A"));  // after every date
    QByteArray buffer = QByteArray(Header(kind)) + '\n';
    qint64 rows = 0;
    // Whole numbers: the leading counts, and the seconds (and the manual mark) at the end.
    const int counts = kind == Kind::Minutes ? 4 : 3;
    const int lastAmount = counts + 1;
    while (select.executeStep()) {
        const int columns = select.getColumnCount();
        for (int i = 0; i < columns; ++i) {
            if (i > 0) buffer += ',';
            const SQLite::Column column = select.getColumn(i);
            // Counts are whole numbers even where SQLite's total() gives a real.
            if (column.isNull()) continue;
            if (column.isText()) {
                buffer += text(column);
            } else if (i < counts || i > lastAmount) {
                buffer += QByteArray::number(static_cast<qint64>(column.getDouble()));
            } else {
                buffer +=
                    number(column.getDouble(), i == counts ? kCalorieDecimals : kDistanceDecimals);
            }
        }
        buffer += '\n';
        ++rows;
        if (buffer.size() > (1 << 16)) {
            if (out.write(buffer) != buffer.size()) return -1;
            buffer.clear();
        }
    }
    if (out.write(buffer) != buffer.size()) return -1;
    return rows;
}

namespace {
// What the header line says about the rows that follow.
struct Format {
    ActivityCsv::Kind kind = ActivityCsv::Kind::Days;
    bool marked = false;  // rows end with the "manual" column
    int fieldCount = 0;
};

// One data row, read and checked.
struct Row {
    PendingLap lap;
    Minute minute;
    qint64 minuteNumber = 1;
    qint64 lapCount = 0;
};

bool readFormat(QByteArray header, Format* format) {
    if (header.startsWith("\xEF\xBB\xBF")) header.remove(0, 3);
    int kindIndex = -1;
    bool older = false;
    for (int i = 0; i < 3; ++i) {
        if (header == kHeaders[i]) kindIndex = i;
        if (i > 0 && header == kOlderHeaders[i]) {
            kindIndex = i;
            older = true;
        }
    }
    if (kindIndex < 0) return false;
    format->kind = static_cast<ActivityCsv::Kind>(kindIndex);
    format->marked = format->kind != ActivityCsv::Kind::Days && !older;
    format->fieldCount =
        (format->kind == ActivityCsv::Kind::Minutes ? 7 : 6) + (format->marked ? 1 : 0);
    return true;
}

// The row's day or lap (and minute number); the index of its first value, or -1 with `why`.
int readWhen(const QList<QByteArray>& fields, ActivityCsv::Kind kind, Row* row, QString* why) {
    PendingLap& lap = row->lap;
    if (kind == ActivityCsv::Kind::Days) {
        const QDate day = QDate::fromString(QString::fromLatin1(fields[0]), Qt::ISODate);
        if (!day.isValid() || fields[0].size() != 10) {
            *why =
                QStringLiteral("'%1' is not a day (YYYY-MM-DD)").arg(QString::fromUtf8(fields[0]));
            return -1;
        }
        lap.start = fields[0].toStdString() + " 00:00:00";
        lap.end = lap.start;
        if (!parseCount(fields[1], &row->lapCount)) {
            *why = QStringLiteral("the number of laps is not a whole number");
            return -1;
        }
        return 2;
    }
    if (!parseDateTime(fields[0], &lap.start)) {
        *why = QStringLiteral("'%1' is not a start (YYYY-MM-DD HH:MM:SS)")
                   .arg(QString::fromUtf8(fields[0]));
        return -1;
    }
    if (!fields[1].isEmpty() && !parseDateTime(fields[1], &lap.end)) {
        *why = QStringLiteral("'%1' is not an end (YYYY-MM-DD HH:MM:SS)")
                   .arg(QString::fromUtf8(fields[1]));
        return -1;
    }
    if (!lap.end.empty() && lap.end < lap.start) {
        *why = QStringLiteral("the lap ends before it starts");
        return -1;
    }
    if (kind == ActivityCsv::Kind::Minutes && !parseCount(fields[2], &row->minuteNumber)) {
        *why = QStringLiteral("the minute is not a whole number");
        return -1;
    }
    return kind == ActivityCsv::Kind::Minutes ? 3 : 2;
}

// The values must be numbers a phone can have counted in the minutes the row covers.
bool readValues(const QList<QByteArray>& fields, const Format& format, int next, Row* row,
                QString* why) {
    PendingLap& lap = row->lap;
    Minute& minute = row->minute;
    if (format.marked) {
        const QByteArray& mark = fields[format.fieldCount - 1];
        if (mark != "0" && mark != "1") {
            *why = QStringLiteral("manual must be 0 (counted) or 1 (entered by hand)");
            return false;
        }
        lap.manual = mark == "1";
    }
    const bool negative = lap.manual;
    if (!parseCount(fields[next], &minute.steps, negative) ||
        !parseAmount(fields[next + 1], &minute.calories, negative) ||
        !parseAmount(fields[next + 2], &minute.distance, negative) ||
        !parseCount(fields[next + 3], &minute.seconds, negative)) {
        *why =
            QStringLiteral("steps, calories, distance and seconds must be numbers of zero or more");
        return false;
    }
    // The minutes the row covers: one, a day, or the lap's length.
    const qint64 lapMinutes = lap.end.empty()
                                  ? kMaxOpenLapMinutes
                                  : DbDateTime::FromText(lap.start.c_str())
                                                .secsTo(DbDateTime::FromText(lap.end.c_str())) /
                                            60 +
                                        1;
    const ActivityCsv::Kind kind = format.kind;
    const qint64 span = kind == ActivityCsv::Kind::Minutes ? 1
                        : kind == ActivityCsv::Kind::Days  ? 1440
                                                           : lapMinutes;
    if (kind == ActivityCsv::Kind::Minutes &&
        (row->minuteNumber < 1 || row->minuteNumber > lapMinutes)) {
        *why = QStringLiteral("minute %1 is outside the lap (1 to %2)")
                   .arg(row->minuteNumber)
                   .arg(lapMinutes);
        return false;
    }
    if (std::abs(minute.steps) > kMaxStepsPerMinute * span ||
        std::abs(minute.seconds) > 60 * span ||
        std::abs(minute.calories) > kMaxCaloriesPerMinute * span ||
        std::abs(minute.distance) > kMaxMetresPerMinute * span || row->lapCount > 1440) {
        *why = QStringLiteral(
                   "more than a phone can count in %1 minute(s): at most %2 steps, %3 "
                   "seconds, %4 kcal and %5 m a minute")
                   .arg(span)
                   .arg(kMaxStepsPerMinute)
                   .arg(60)
                   .arg(kMaxCaloriesPerMinute)
                   .arg(kMaxMetresPerMinute);
        return false;
    }
    return true;
}

// The laps read so far, each once; a minutes file adds its minutes to the lap they belong to.
class PendingLaps {
public:
    bool Add(Row row, ActivityCsv::Kind kind, QString* why) {
        const auto found = index_.find(row.lap.start);
        if (found != index_.end()) {
            PendingLap& known = laps_[found->second];
            if (kind != ActivityCsv::Kind::Minutes || known.end != row.lap.end ||
                known.manual != row.lap.manual) {
                *why =
                    QStringLiteral("%1 appears twice").arg(QString::fromStdString(row.lap.start));
                return false;
            }
            if (!known.minutes.emplace(row.minuteNumber, row.minute).second) {
                *why = QStringLiteral("minute %1 of the lap appears twice").arg(row.minuteNumber);
                return false;
            }
            return true;
        }
        if (kind == ActivityCsv::Kind::Days && row.lapCount == 0 && row.minute.steps == 0) {
            return true;  // a day without activity adds nothing
        }
        row.lap.minutes.emplace(row.minuteNumber, row.minute);
        index_.emplace(row.lap.start, laps_.size());
        laps_.push_back(std::move(row.lap));
        return true;
    }
    const std::vector<PendingLap>& Laps() const { return laps_; }

private:
    std::vector<PendingLap> laps_;
    std::map<std::string, size_t> index_;
};
}  // namespace

bool ActivityCsv::Import(SQLite::Database& db, QIODevice& in, ImportResult* result, QString* error,
                         bool store) {
    *result = {};
    LineReader reader(in);
    QByteArray line;
    bool tooLong = false;
    auto fail = [&](const QString& why) {
        *error = QStringLiteral("line %1: %2").arg(reader.number()).arg(why);
        return false;
    };
    if (!reader.Next(&line, &tooLong)) {
        if (tooLong) return fail(QStringLiteral("the line is too long"));
        *error = QStringLiteral(
            "the file is empty: export activity with 'pedometer-cli export' "
            "and import that file");
        return false;
    }
    Format format;
    if (!readFormat(line, &format)) {
        return fail(QStringLiteral("not an activity export (expected a header such as \"%1\")")
                        .arg(QLatin1String(kHeaders[0])));
    }
    PendingLaps pending;
    QString why;
    while (reader.Next(&line, &tooLong)) {
        if (line.isEmpty()) continue;
        if (line.contains('\0')) return fail(QStringLiteral("a NUL byte: this is not a text file"));
        const QList<QByteArray> fields = line.split(',');
        if (fields.size() != format.fieldCount) {
            return fail(QStringLiteral("expected %1 fields, found %2")
                            .arg(format.fieldCount)
                            .arg(fields.size()));
        }
        ++result->rows;
        Row row;
        const int next = readWhen(fields, format.kind, &row, &why);
        if (next < 0 || !readValues(fields, format, next, &row, &why) ||
            !pending.Add(std::move(row), format.kind, &why)) {
            return fail(why);
        }
    }
    if (tooLong) return fail(QStringLiteral("the line is too long"));

    SQLite::Transaction transaction(db);
    for (const PendingLap& lap : pending.Laps()) {
        const bool present = format.kind == Kind::Days ? dayHasLaps(db, lap.start.substr(0, 10))
                                                       : lapExists(db, lap.start);
        if (present) {
            ++result->lapsSkipped;
            continue;
        }
        storeLap(db, lap);
        ++result->lapsAdded;
    }
    if (store) transaction.commit();
    return true;
}
