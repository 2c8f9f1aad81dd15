#include "Clock.h"

#include <atomic>
#include <limits>

namespace {
constexpr qint64 kSystemTime = std::numeric_limits<qint64>::min();
std::atomic<qint64> virtualNowMs{kSystemTime};
}  // namespace

QDateTime Clock::Now() {
    return QDateTime::fromMSecsSinceEpoch(NowMs());
}

qint64 Clock::NowMs() {
    const qint64 v = virtualNowMs.load(std::memory_order_acquire);
    return v == kSystemTime ? QDateTime::currentMSecsSinceEpoch() : v;
}

void Clock::SetNow(const QDateTime& when) {
    SetNowMs(when.toMSecsSinceEpoch());
}

void Clock::SetNowMs(qint64 msSinceEpoch) {
    virtualNowMs.store(msSinceEpoch, std::memory_order_release);
}

void Clock::Advance(qint64 ms) {
    qint64 v = virtualNowMs.load(std::memory_order_acquire);
    if (v == kSystemTime) return;
    while (!virtualNowMs.compare_exchange_weak(v, v + ms, std::memory_order_acq_rel)) {
    }
}

void Clock::UseSystemTime() {
    virtualNowMs.store(kSystemTime, std::memory_order_release);
}

bool Clock::IsVirtual() {
    return virtualNowMs.load(std::memory_order_acquire) != kSystemTime;
}

QDateTime Clock::TodayStart() {
    return Now().date().startOfDay();
}
