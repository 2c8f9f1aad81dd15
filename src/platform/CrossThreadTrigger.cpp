#include "CrossThreadTrigger.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdint>

CrossThreadTrigger::CrossThreadTrigger(std::function<void()> onTriggered)
    : onTriggered(std::move(onTriggered)), owner(std::this_thread::get_id()) {
    if (QCoreApplication::instance() == nullptr) return;
    eventFd = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (eventFd < 0) {
        qWarning("Cannot hand sounds between threads: no eventfd");
        return;
    }
    notifier = std::make_unique<QSocketNotifier>(eventFd, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] { Drain(); });
}

CrossThreadTrigger::~CrossThreadTrigger() {
    notifier.reset();
    if (eventFd >= 0) close(eventFd);
}

void CrossThreadTrigger::Trigger() {
    if (eventFd < 0) return;
    const std::uint64_t one = 1;
    // Fails only when the counter is about to overflow, and then a wake-up is pending anyway.
    [[maybe_unused]] const ssize_t written = write(eventFd, &one, sizeof one);
}

void CrossThreadTrigger::Drain() {
    std::uint64_t count = 0;
    // Reading resets the counter: every request made so far is answered by this one call.
    if (read(eventFd, &count, sizeof count) != sizeof count || count == 0) return;
    if (onTriggered) onTriggered();
}
