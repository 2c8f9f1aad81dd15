#pragma once

#include <QPointer>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

#include "CrossThreadTrigger.h"
#include "MainFormListener.h"
#include "MeterReadings.h"
#include "PedometerForm.h"
#include "Timer.h"
#include "UnblockListener.h"

class BlockPane;
class CountingEngine;
class GraphicBlue;
class QMenu;
class StatisticsManager;
class TargetSlider;
class TivButton;
class TivImagePanel;
class TivLabel;

// The meter screen: the root of the navigation stack and the only screen that shows
// the running workout.
//
// Six live values sit in the top buttons (steps, distance, calories, time, speed or
// pace, average speed or pace); the one chosen in the settings is repeated large in
// the middle. Below: the five-minute graph (tap to change its kind), today's goal,
// START/STOP with the optional countdown, the pacer, alarm and info buttons, and new
// lap, goal and lock.
//
// It shows the application's counting engine, handed in, as one of its listeners:
// START/STOP, new lap and reset act on the engine, which goes on counting without it.
//
// Threads: step counts arrive from the sensor thread (RequestStepsUpdate, the user
// event 128) and lap refreshes from the updater thread (UpdateData). Both only store
// what is new and wake the GUI thread, which writes the labels while `updating` is
// set; the values are computed from copies of the lap's records, so no widget is
// touched off the GUI thread. RequestUnblock (event 129) removes the lock pane.
class MainForm : public PedometerForm, public MainFormListener, public UnblockListener {
    Q_OBJECT
public:
    enum ActionId {
        ID_START = 100,
        ID_STOP = 101,
        ID_TOP_FIRST = 102,  // ... 107, one per value
        ID_GRAPH = 108,
        ID_PACER = 109,
        ID_ALARM = 110,
        ID_INFO = 111,
        ID_ENTER_HEIGHT = 112,
        ID_ENTER_WEIGHT = 113,
        ID_ACC_TIPS = 114,
        ID_NEW_LAP = 115,
        ID_GOAL = 116,
        ID_LOCK = 117,
        ID_START_NEW = 118,
        ID_JUST_RESET = 119,
        ID_OPTION_KEY = 120,
        ID_BODY = 122,
        ID_SETTINGS = 123,
        ID_PROFILE = 124,
        ID_HISTORY = 125,
        ID_WEIGHT_TIPS = 126,
        ID_QUIT = 127,
    };
    static constexpr int kTopButtons = 6;
    static inline const QColor kEnlargedColor{12, 159, 249, 255};

    // `engine` is initialised and outlives the form.
    explicit MainForm(CountingEngine& engine, QWidget* parent = nullptr);
    ~MainForm() override;

    bool Initialize();
    void OnInitializing() override;
    void OnTerminating() override;
    void FormWillAppear() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // MainFormListener.
    void RequestStepsUpdate(int lapSteps) override;
    void UpdateStepsCount(int lapSteps) override;
    void UpdateData(const DAOLap* lap) override;
    void SygnalFired() override;
Q_SIGNALS:
    // The user chose Quit in the option menu: counting stops and the application ends.
    void QuitRequested();

public:
    // User event 129: take the lock pane away (any thread).
    void RequestUnblock();

    bool IsAlreadyStarted() const;
    void UpdateLabels();
    void UpdateTopButtons();
    void PauseUpdating();
    void ResumeUpdating();
    // Takes the lock pane away: it goes, the click sounds, the screen is unlocked.
    void Unblock(QWidget* pane) override;

    // Covers the screen with the lock pane (counting starts first when the settings say so).
    void Lock();
    bool IsLocked() const { return locked; }
    bool IsUpdating() const { return updating.load(); }
    bool IsCountdownRunning() const { return countdownRunning; }
    int GetCountdownRemaining() const { return countdownRemaining; }
    TivButton* GetStartStopButton() const { return startStop; }
    TivButton* GetTopButton(int index) const { return topButtons[index]; }
    QString GetTopValueText(int index) const;
    QString GetEnlargedCaptionText() const;
    QString GetEnlargedValueText() const;
    QColor GetEnlargedColor() const;
    GraphicBlue* GetGraphic() const { return graphic; }
    TivButton* GetGraphButton() const { return graphButton; }
    TargetSlider* GetTargetSlider() const { return targetSlider; }
    QMenu* GetContextMenu() const { return contextMenu; }
    BlockPane* GetLockPane() const;
    TivButton* GetButton(int actionId) const;

private:
    void InitOptions();
    void ConstructTopButtons();
    void ConstructBottomButtons();
    TivButton* AddPictureButton(const QString& picture, const QRect& bounds, int actionId);
    void AddCaption(TivButton& button, const QString& firstKey, const QString& secondKey);
    void SetButtonPicture(TivButton& button, const QString& picture);
    void SetStartStop(bool recording);
    // A pop-up menu over `anchor` (a button of this screen) in the option menu's style.
    void OpenContextMenu(const QWidget* anchor, const QList<std::pair<QString, int>>& items);
    void CloseContextMenu();
    // Opens a screen by its ScreenDirectory name on top of this one (today's data).
    void OpenScreen(const QString& name);
    void ShowNextGraphic();
    void ShowTopValue(int index);
    void ShowInfo();

    void StartPressed();
    void StopPressed();
    void OnCountdownTick();
    void OnResume();
    void ApplyPendingSteps();
    void ApplyPendingReadings();
    void ShowReadings(const MeterReadings& readings);
    // The big value repeats the chosen top value (after a countdown, say).
    void ShowEnlargedValue();
    void SetEnlarged(const QString& caption, const QString& value, const QColor& color);

    CountingEngine& engine_;
    StatisticsManager* const statManager;  // the engine's
    bool listening_ = false;
    std::atomic<bool> updating{true};
    bool locked = false;
    bool countdownRunning = false;
    int countdownRemaining = 0;
    Timer countdownTimer;
    Timer resumeTimer;

    QWidget* topButtonsBox = nullptr;
    TivImagePanel* hover = nullptr;
    TivButton* topButtons[kTopButtons] = {};
    TivLabel* topCaptions[kTopButtons] = {};
    TivLabel* topValues[kTopButtons] = {};
    TivLabel* enlargedCaption = nullptr;
    TivLabel* enlargedValue = nullptr;
    TivLabel* goalBanner = nullptr;  // "Goal reached!" while the goal alarm is completed
    TivButton* startStop = nullptr;
    TivLabel* startStopLabel = nullptr;
    TivButton* graphButton = nullptr;
    GraphicBlue* graphic = nullptr;
    TargetSlider* targetSlider = nullptr;
    QPointer<QMenu> contextMenu;


    // Hand-over from the sensor and updater threads to the GUI thread.
    std::atomic<int> pendingSteps{-1};
    std::mutex pendingMutex;
    std::optional<MeterReadings> pendingReadings;
    CrossThreadTrigger stepsTrigger;
    CrossThreadTrigger readingsTrigger;
    CrossThreadTrigger unblockTrigger;
    CrossThreadTrigger sygnalTrigger;
};
