#include "TerminationSignals.h"

#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <atomic>
#include <cerrno>
#include <cstdint>

namespace {

// The handler's only state: lock-free, so reading it is async-signal-safe.
std::atomic<int> signalFd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

constexpr int kSignals[] = {SIGTERM, SIGINT};

void OnSignal(int) {
    const int savedErrno = errno;
    const int fd = signalFd.load();
    const std::uint64_t one = 1;
    if (fd >= 0) {
        [[maybe_unused]] const ssize_t written = write(fd, &one, sizeof one);
    }
    errno = savedErrno;
}

void SetHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int signal : kSignals) sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> onSignal)
    : onSignal_(std::move(onSignal)) {
    eventFd_ = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (eventFd_ < 0) {
        qWarning("Cannot watch for SIGTERM and SIGINT: no eventfd");
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(eventFd_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { Drain(); });
    signalFd.store(eventFd_);
    SetHandler(OnSignal);
}

TerminationSignals::~TerminationSignals() {
    if (eventFd_ < 0) return;
    SetHandler(SIG_DFL);
    signalFd.store(-1);
    notifier_.reset();
    close(eventFd_);
}

void TerminationSignals::Drain() {
    std::uint64_t count = 0;
    if (read(eventFd_, &count, sizeof count) != sizeof count || count == 0) return;
    if (onSignal_) onSignal_();
}
