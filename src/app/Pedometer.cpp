#include "Pedometer.h"

#include <QApplication>
#include <QDBusConnection>
#include <QEvent>
#include <QShortcut>
#include <QTimer>

#include "AccelerometerSource.h"
#include "AppFrame.h"
#include "AppResource.h"
#include "Clock.h"
#include "CountingEngine.h"
#include "CountingNotice.h"
#include "MainForm.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "PowerManager.h"
#include "QuorPedometer.h"
#include "SessionAwayState.h"
#include "SoundsManager.h"
#include "StatisticsManager.h"
#include "TivNavigationController.h"

Pedometer::Pedometer() : engine_(std::make_unique<CountingEngine>()) {}

Pedometer::~Pedometer() {
    if (frame_) frame_->removeEventFilter(this);
    sessionAway_.reset();
    notice_.reset();
    navigation_.reset();
    frame_.reset();  // destroys the forms first: they listen to the engine
    engine_.reset();
}

bool Pedometer::OnAppInitializing() {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    db.LoadOptions();
    db.LoadBody();
    backgroundDate_.reset();
    PedometerOptions& options = PedometerOptions::GetInstance();
    if (options.firstStart) {
        options.firstStart = false;
        db.SaveOptions();
    }
    SoundsManager::GetInstance();  // the players belong to this (the GUI) thread
    engine_->Initialize();
    if (startInBackground_) engine_->Statistics().start();
    // The window's close button does not end the application: OnWindowClosed decides.
    QApplication::setQuitOnLastWindowClosed(false);

    frame_ = std::make_unique<AppFrame>();
    frame_->setWindowTitle(AppResource::Text("main__ Pedometer"));  // the task bar's name
    mainForm_ = new MainForm(*engine_);
    mainForm_->Initialize();
    navigation_ = std::make_unique<TivNavigationController>(*frame_, engine_.get());
    navigation_->InitWithRootForm(mainForm_);
    frame_->AddControl(*mainForm_);
    frame_->SetCurrentForm(*mainForm_);
    mainForm_->FormWillAppear();
    frame_->PlaceForm(*mainForm_);
    auto* quit = new QShortcut(QKeySequence::Quit, frame_.get());
    quit->setContext(Qt::ApplicationShortcut);
    connect(quit, &QShortcut::activated, this, &Pedometer::RequestQuit);
    connect(mainForm_, &MainForm::QuitRequested, this, &Pedometer::RequestQuit);
    if (notifications_ != nullptr) {
        notice_ = std::make_unique<CountingNotice>(*engine_, *notifications_);
        notice_->SetOnOpen([this] { ShowWindow(); });
        notice_->SetOnStop([this] { RequestQuit(); });
    }
    WatchVisibility();
    if (startInBackground_) {
        foreground_ = false;
        OnBackground();
        if (notice_) notice_->SetBackground(true);
    } else {
        frame_->RequestRedraw(true);
        frame_->show();
        TivNavigationController::SetOnForeground(true);
    }
    return true;
}

void Pedometer::ShowWindow(const QString& activationToken) {
    if (!frame_) return;
    if (!activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    frame_->show();
    frame_->setWindowState((frame_->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    frame_->raise();
    frame_->activateWindow();
}

void Pedometer::RequestQuit() {
    // From the event loop, so that a caller inside a widget's handler returns first.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::quit(); });
}

void Pedometer::OnForeground() {
    SoundsManager::GetInstance().SetActive(true);
    TivNavigationController::SetOnForeground(true);
    mainForm_->ResumeUpdating();
    if (backgroundDate_) {
        if (Clock::Now().date() != *backgroundDate_) engine_->Statistics().StartNewLap();
        backgroundDate_.reset();
    }
    if (engine_->Statistics().GetStarted()) PowerManager::KeepScreenOnState(true, true);
}

void Pedometer::OnBackground() {
    SoundsManager::GetInstance().SetActive(false);
    TivNavigationController::SetOnForeground(false);
    navigation_->AppWillBePaused();
    mainForm_->PauseUpdating();
    backgroundDate_ = Clock::Now().date();
}

bool Pedometer::OnAppTerminating() {
    notice_.reset();
    if (!engine_->StoreAndStop(kStoreWaitMs)) {
        qWarning("The last counted steps were still being stored when the pedometer quit");
    }
    return true;
}

void Pedometer::WatchVisibility() {
    frame_->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this] { ReconsiderForeground(); });
    if (!qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS")) {
        sessionAway_ = std::make_unique<SessionAwayState>(QDBusConnection::sessionBus(),
                                                          QDBusConnection::systemBus());
        sessionAway_->SetOnChanged([this](bool) { ReconsiderForeground(); });
    }
}

bool Pedometer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == frame_.get()) {
        switch (event->type()) {
            case QEvent::Show:
            case QEvent::Hide:
            case QEvent::WindowStateChange:
                ReconsiderForeground();
                break;
            case QEvent::Close:
                OnWindowClosed();
                break;
            default:
                break;
        }
    }
    return QObject::eventFilter(watched, event);
}

void Pedometer::OnWindowClosed() {
    // Counting goes on with the window hidden (and the notification up); with nothing
    // counting there is nothing to stay for.
    if (!engine_->Statistics().GetStarted()) RequestQuit();
}

void Pedometer::ReconsiderForeground() {
    if (!frame_ || mainForm_ == nullptr) return;
    const bool visible = frame_->isVisible() && !frame_->isMinimized();
    const bool suspended = QGuiApplication::applicationState() == Qt::ApplicationSuspended;
    const bool away = sessionAway_ && sessionAway_->IsAway();
    const bool now = visible && !suspended && !away;
    if (now == foreground_) return;
    foreground_ = now;
    const QuorPedometer* detector = engine_->Statistics().Detector();
    if (AccelerometerSource* source = detector ? detector->Source() : nullptr)
        source->SetWindowShown(now);
    if (now) {
        OnForeground();
    } else {
        OnBackground();
    }
    if (notice_) notice_->SetBackground(!now);
}
