#pragma once

#include <QString>
#include <memory>
#include <thread>

#include "AccelerometerSource.h"

// The accelerometer's own step counter as the step source (choice "iio-steps"): no
// samples, but the steps the chip counted, handed to the listener's OnStepsCounted as
// walking steps. The counter is read every ten seconds and at once after a resume (the
// steps taken while the system slept arrive then); a device without a counter at start
// is looked for again at each read.
//
// Threads: Start/Stop/ReopenAfterResume from the GUI thread; deliveries on a thread of
// the source's own. Stop returns within about 100 ms even while a read hangs, and no
// delivery follows it.
class IioStepCounterSource final : public AccelerometerSource {
public:
    static constexpr int kReadIntervalMs = 10'000;

    explicit IioStepCounterSource(QString devicesRoot);
    ~IioStepCounterSource() override;

    bool IsAvailable() const override;
    void Start(AccelerometerListener* listener) override;
    void Stop() override;
    bool IsRunning() const override { return state_ != nullptr; }
    void ReopenAfterResume() override;

private:
    struct State;
    const QString root_;
    std::shared_ptr<State> state_;
    std::thread thread_;
};
