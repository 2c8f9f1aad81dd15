#pragma once

#include <functional>
#include <memory>
#include <mutex>

#include "AccelerometerSource.h"

// Stands in for a source that is costly to make (the Qt Sensors backend loads its plug-ins
// and asks the system's sensor service), so that the window can paint before that is done.
// The real source is made by Realize(), which the application calls once its first frame is
// on the screen, or by the first call that needs it (IsAvailable, Start), whichever comes
// first. Until then it is neither running nor started; a window shown or hidden meanwhile
// is passed on when the source is made.
//
// Threads: Realize, IsAvailable, Start, Stop and IsRunning come from the GUI thread, like
// the source's own; ReopenAfterResume and SetWindowShown from any thread.
class DeferredAccelerometerSource final : public AccelerometerSource {
public:
    using Maker = std::function<std::unique_ptr<AccelerometerSource>()>;

    explicit DeferredAccelerometerSource(Maker make);
    ~DeferredAccelerometerSource() override;

    // Makes the real source now, if not made yet; it is never null afterwards.
    AccelerometerSource& Realize() const;

    bool IsAvailable() const override;
    void Start(AccelerometerListener* listener) override;
    void Stop() override;
    bool IsRunning() const override;
    void ReopenAfterResume() override;
    void SetWindowShown(bool shown) override;

private:
    AccelerometerSource* Made() const;

    // Made on first need, so even from a const call (GUI thread).
    mutable std::mutex mutex_;  // guards the fields below
    mutable Maker make_;
    mutable std::unique_ptr<AccelerometerSource> source_;
    int windowShown_ = -1;  // the last SetWindowShown before the source was made; -1 none
};
