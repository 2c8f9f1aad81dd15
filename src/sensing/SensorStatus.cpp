#include "SensorStatus.h"

#include <array>
#include <mutex>

namespace {
struct Slots {
    std::mutex mutex;
    std::array<QString, 2> details;  // by Problem; null when clear
};

Slots& slots() {
    static Slots* const instance = new Slots;  // never destroyed: a stray sensor thread may
    return *instance;                           // still clear a slot during exit
}
}  // namespace

const char* SensorStatus::Key(Problem problem) {
    return problem == Problem::Busy ? "sensor__ The accelerometer is busy in another program (%@)."
                                    : "sensor__ The accelerometer's rate cannot be set (%@).";
}

void SensorStatus::Report(Problem problem, const QString& detail) {
    std::lock_guard lock(slots().mutex);
    slots().details[int(problem)] = detail.isNull() ? QStringLiteral("") : detail;
}

void SensorStatus::Clear(Problem problem) {
    std::lock_guard lock(slots().mutex);
    slots().details[int(problem)] = QString();
}

void SensorStatus::Current(QString* key, QString* detail) {
    std::lock_guard lock(slots().mutex);
    for (const Problem problem : {Problem::Busy, Problem::RateFixed}) {
        if (!slots().details[int(problem)].isNull()) {
            *key = QString::fromLatin1(Key(problem));
            *detail = slots().details[int(problem)];
            return;
        }
    }
    *key = QString();
    *detail = QString();
}
