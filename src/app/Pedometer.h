#pragma once

#include <QDate>
#include <QObject>
#include <memory>
#include <optional>

class AppFrame;
class CountingEngine;
class CountingNotice;
class DesktopNotifications;
class MainForm;
class SessionAwayState;
class TivNavigationController;

// The application object: brings the system up in its fixed order and follows the
// application into the background and back.
//
// It owns the counting engine (statistics manager, step detector, accelerometer source,
// updater thread), made with the object so that its source and observer can be chosen
// before start-up, and hands it to the screens through the navigation controller.
//
// Start-up: settings, then the body profile, then the first-start flag, then the
// counting engine (resuming today's lap), then the main screen, then navigation, then
// the window.
//
// Background means the user cannot see the window: it is hidden or minimised, the
// session is locked or idle (SessionAwayState: logind's hints, the screen saver, which
// also work on Wayland, where minimising is not reported), or the platform suspends
// the application (QGuiApplication's Suspended state, as on phones). Losing the focus
// to another window is not background: the meter keeps updating beside other windows.
// In the background sounds are muted and the meter stops drawing; counting goes on.
// Coming back on another calendar day starts a new lap.
//
// The engine outlives the window: closing the window while counting only hides it (a
// notification says that counting goes on, with Open and Stop), and a second launch
// shows it again with the same counts. Closing it while not counting, Quit in the main
// screen's menu, Ctrl+Q and the notification's Stop end the event loop; then
// OnAppTerminating stores what was counted since the last stored interval before the
// process leaves. `--background` (count from login) starts counting with no window.
class Pedometer : public QObject {
    Q_OBJECT
public:
    Pedometer();
    ~Pedometer() override;

    // Before OnAppInitializing: start counting at once and show no window.
    void SetStartInBackground(bool background) { startInBackground_ = background; }
    // Before OnAppInitializing: tell the user about counting in the background through
    // `notifications` (not owned; outlives this object).
    void UseNotifications(DesktopNotifications* notifications) { notifications_ = notifications; }
    bool OnAppInitializing();
    // Shows the window again (a second launch, the notification's Open).
    void ShowWindow(const QString& activationToken = QString());
    // Ends the event loop; OnAppTerminating then stores what was counted.
    void RequestQuit();
    void OnForeground();
    void OnBackground();
    bool OnAppTerminating();

    CountingEngine& Engine() const { return *engine_; }
    AppFrame* GetFrame() const { return frame_.get(); }
    MainForm* GetMainForm() const { return mainForm_; }
    TivNavigationController* GetNavigationController() const { return navigation_.get(); }
    bool IsInForeground() const { return foreground_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // How long leaving waits for the last interval's write.
    static constexpr int kStoreWaitMs = 1000;

    void OnWindowClosed();
    void WatchVisibility();
    void ReconsiderForeground();

    std::unique_ptr<CountingEngine> engine_;  // outlives the window and its screens
    DesktopNotifications* notifications_ = nullptr;
    std::unique_ptr<CountingNotice> notice_;
    bool startInBackground_ = false;
    std::unique_ptr<AppFrame> frame_;
    std::unique_ptr<TivNavigationController> navigation_;
    MainForm* mainForm_ = nullptr;  // owned by the frame
    std::optional<QDate> backgroundDate_;
    bool foreground_ = true;
    std::unique_ptr<SessionAwayState> sessionAway_;
};
