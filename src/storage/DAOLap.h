#pragma once

#include <QDateTime>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "DAOLapMinutes.h"
#include "DAOLapSeconds.h"
#include "DbDateTime.h"

// One recording run: a row of Lap with its minute and five-second records, which the
// lap owns.
//
// While a lap is being recorded the updater thread appends records and changes the
// newest ones, and the GUI thread reads them. Such a shared lap follows one rule:
// `recordsMutex` guards both lists and every record in them. The updater changes a
// record only while holding it; readers on other threads either hold it too or take
// copies with CopyMinutes()/CopySeconds(). The updater, being the only writer, may
// read its own records without the lock (for instance to store them). A lap that
// only one thread sees (history screens, tools) needs no locking at all.
//
// Lock order: the lock may be held while calling PedometerDBManager; the manager
// never takes a lap's lock while it holds a database connection.
//
// Records live in unique_ptrs so that a pointer to the current minute stays valid
// while later minutes are appended.
class DAOLap {
public:
    DAOLap() = default;
    DAOLap(const DAOLap&) = delete;
    DAOLap& operator=(const DAOLap&) = delete;

    QDateTime startDate = DbDateTime::Unset();
    std::optional<QDateTime> endDate;          // none while the lap is open
    QDateTime techDate = DbDateTime::Unset();  // the start day at 00:00:00
    int id = -1;                               // -1 until stored
    // Entered by hand to correct a day: steps added (a walk without the phone), or
    // taken away from a counted lap (then every value is negative). Never recorded into.
    bool manual = false;

    std::vector<std::unique_ptr<DAOLapMinutes>> minutes;
    std::vector<std::unique_ptr<DAOLapSeconds>> seconds;
    mutable std::mutex recordsMutex;

    // Append under the lock; return the record, which stays owned by the lap.
    DAOLapMinutes* AddMinute(std::unique_ptr<DAOLapMinutes> minute);
    DAOLapSeconds* AddSecond(std::unique_ptr<DAOLapSeconds> second);

    // Consistent copies taken under the lock, for readers on other threads.
    std::vector<DAOLapMinutes> CopyMinutes() const;
    std::vector<DAOLapSeconds> CopySeconds() const;
};
