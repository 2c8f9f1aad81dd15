#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>

// Shows notifications through the desktop's notification service
// (org.freedesktop.Notifications on the session bus).
//
// Each notification has a slot of the caller's choosing: showing a slot again replaces
// its notification on screen rather than adding one. Actions are pairs of a key and a
// label; a click on one reaches the action callback with the slot and the key.
//
// Every call is asynchronous: with no service on the bus, or a service that does not
// answer, nothing is shown and nothing else happens. Answers come from the event loop;
// a slot shown again before the service gave its id is sent once the id is known, so
// it still replaces rather than adds. GUI thread only.
class DesktopNotifications : public QObject {
    Q_OBJECT
public:
    // `bus` is the session bus (tests pass a private one).
    explicit DesktopNotifications(QDBusConnection bus);
    ~DesktopNotifications() override;

    // `actions`: key, label, key, label, ...; `persistent` keeps it up until replaced or
    // closed (no expiry), else the service's default time.
    void Show(int slot, const QString& summary, const QString& body, const QStringList& actions,
              bool persistent);
    void Close(int slot);
    void SetOnAction(std::function<void(int slot, const QString& key)> onAction) {
        onAction_ = std::move(onAction);
    }

private Q_SLOTS:
    void OnActionInvoked(uint id, const QString& key);
    void OnClosed(uint id, uint reason);

private:
    struct Content {
        QString summary;
        QString body;
        QStringList actions;
        bool persistent = false;
    };
    struct Slot {
        uint id = 0;           // the service's id, 0 before it answered
        bool waiting = false;  // a Notify call is on its way
        bool closeWanted = false;
        std::optional<Content> next;  // to send once the answer is in
    };
    void Send(int slot, const Content& content);

    QDBusConnection bus_;
    std::map<int, Slot> slots_;
    std::function<void(int, const QString&)> onAction_;
};
