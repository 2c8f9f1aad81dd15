#include "DesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <vector>

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");
constexpr int kNoExpiry = 0;
constexpr int kDefaultExpiry = -1;
}  // namespace

DesktopNotifications::DesktopNotifications(QDBusConnection bus) : bus_(std::move(bus)) {
    if (!bus_.isConnected()) return;
    bus_.connect(kService, kPath, kInterface, QStringLiteral("ActionInvoked"), this,
                 SLOT(OnActionInvoked(uint, QString)));
    bus_.connect(kService, kPath, kInterface, QStringLiteral("NotificationClosed"), this,
                 SLOT(OnClosed(uint, uint)));
}

DesktopNotifications::~DesktopNotifications() {
    std::vector<int> shown;
    for (const auto& [slot, state] : slots_) shown.push_back(slot);
    for (const int slot : shown) Close(slot);
}

void DesktopNotifications::Show(int slot, const QString& summary, const QString& body,
                                const QStringList& actions, bool persistent) {
    if (!bus_.isConnected()) return;
    Slot& state = slots_[slot];
    state.closeWanted = false;
    const Content content{summary, body, actions, persistent};
    if (state.waiting) {
        state.next = content;  // sent when the id of the one on its way is known
        return;
    }
    Send(slot, content);
}

void DesktopNotifications::Send(int slot, const Content& content) {
    Slot& state = slots_[slot];
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Notify"));
    QVariantMap hints;
    hints.insert(QStringLiteral("desktop-entry"), QStringLiteral("io.github.pedometer_app.Pedometer"));
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue(uchar(content.persistent ? 0 : 1)));
    call << QStringLiteral("Pedometer") << state.id << QStringLiteral("pedometer") << content.summary
         << content.body << content.actions << hints
         << (content.persistent ? kNoExpiry : kDefaultExpiry);
    state.waiting = true;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, slot](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusPendingReply<uint> reply = *w;
        Slot& state = slots_[slot];
        state.waiting = false;
        if (!reply.isError()) state.id = reply.value();
        if (state.closeWanted) {
            Close(slot);
        } else if (state.next) {
            const Content next = *state.next;
            state.next.reset();
            Send(slot, next);
        }
    });
}

void DesktopNotifications::Close(int slot) {
    const auto found = slots_.find(slot);
    if (found == slots_.end()) return;
    Slot& state = found->second;
    state.next.reset();
    if (state.waiting) {
        state.closeWanted = true;
        return;
    }
    if (state.id != 0 && bus_.isConnected()) {
        QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface,
                                                           QStringLiteral("CloseNotification"));
        call << state.id;
        bus_.asyncCall(call);
    }
    slots_.erase(found);
}

void DesktopNotifications::OnActionInvoked(uint id, const QString& key) {
    for (const auto& [slot, state] : slots_) {
        if (state.id == id && id != 0) {
            if (onAction_) onAction_(slot, key);
            return;
        }
    }
}

void DesktopNotifications::OnClosed(uint id, uint) {
    // Closed by the user or expired: the next Show makes a new one.
    for (auto& [slot, state] : slots_) {
        if (state.id == id && id != 0) state.id = 0;
    }
}
