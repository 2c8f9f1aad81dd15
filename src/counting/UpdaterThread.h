#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

class DAOLap;
class DAOLapSeconds;
class MainFormListener;
class QuorPedometer;

// The worker that turns each five-second hand-over into records.
//
// It runs a thread of its own with a queue of hand-overs (the statistics manager's
// user event 0). For each one it adds the interval to the lap's current minute
// (opening minute 1, or the next minute when one completes), creates the
// five-second record, computes calories from the body model, feeds the pacer and the
// goal alarm, writes both records in one transaction and tells the main screen. The
// database writes and the calorie arithmetic run here so that neither the GUI nor
// the sensor thread waits on the disk.
//
// The queue is a plain mutex and condition variable rather than a Qt event queue: the
// thread sanitizer sees through it, so the threaded tests prove the hand-over clean.
class UpdaterThread {
public:
    // User event 0: five seconds of counting. The lap is shared so that a new lap
    // started on the GUI thread cannot free it while it is being written.
    struct HandOver {
        int lapSteps = 0;
        int intervalSteps = 0;
        double intervalDistance = 0.0;  // metres
        std::shared_ptr<DAOLap> lap;
    };

    UpdaterThread() = default;
    ~UpdaterThread();
    UpdaterThread(const UpdaterThread&) = delete;
    UpdaterThread& operator=(const UpdaterThread&) = delete;

    // Told about every five-second record right after it was stored (worker thread).
    using IntervalObserver = std::function<void(int lapId, const DAOLapSeconds& interval)>;

    void Initialize(QuorPedometer* detector, MainFormListener* form);
    // Set before Start.
    void SetIntervalObserver(IntervalObserver observer) { intervalObserver_ = std::move(observer); }
    void Start();
    // Stores the hand-overs already queued, then ends the thread.
    void Stop();

    // Queues one hand-over (any thread).
    void Post(HandOver handOver);
    // Blocks until every hand-over posted so far has been stored.
    void WaitUntilIdle();
    // The same for at most `ms` milliseconds; false when the writes are still going on.
    bool WaitUntilIdleFor(int ms);
    // Hand-overs stored since construction.
    int HandledCount() const;

private:
    void Run();
    void UpdatingFnc();

    QuorPedometer* detector = nullptr;
    MainFormListener* mainForm = nullptr;
    // The hand-over being stored; touched only by the worker thread.
    int lapSteps = 0;
    int intervalSteps = 0;
    double intervalDistance = 0.0;
    std::shared_ptr<DAOLap> lap;
    IntervalObserver intervalObserver_;

    mutable std::mutex mutex;  // guards the queue and the counters below
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::deque<HandOver> queue_;
    bool busy_ = false;
    bool stopping_ = false;
    bool running_ = false;
    int handled_ = 0;
    std::thread thread_;
};
