#pragma once

#include <QDate>
#include <QObject>
#include <memory>
#include <optional>

class AppFrame;
class CountingEngine;
class MainForm;
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
// session is locked (the screen saver reports itself active), or the platform suspends
// the application (QGuiApplication's Suspended state, as on phones). Losing the focus
// to another window is not background: the meter keeps updating beside other windows.
// In the background sounds are muted and the meter stops drawing; counting goes on.
// Coming back on another calendar day starts a new lap.
class Pedometer : public QObject {
    Q_OBJECT
public:
    Pedometer();
    ~Pedometer() override;

    bool OnAppInitializing();
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

private Q_SLOTS:
    void OnScreenSaverActiveChanged(bool active);

private:
    void WatchVisibility();
    void ReconsiderForeground();

    std::unique_ptr<CountingEngine> engine_;  // outlives the window and its screens
    std::unique_ptr<AppFrame> frame_;
    std::unique_ptr<TivNavigationController> navigation_;
    MainForm* mainForm_ = nullptr;  // owned by the frame
    std::optional<QDate> backgroundDate_;
    bool foreground_ = true;
    bool screenSaverActive_ = false;
};
