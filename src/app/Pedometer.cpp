#include "Pedometer.h"

#include <QDBusConnection>
#include <QEvent>
#include <QGuiApplication>

#include "AppFrame.h"
#include "Clock.h"
#include "CountingEngine.h"
#include "MainForm.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "PowerManager.h"
#include "SoundsManager.h"
#include "StatisticsManager.h"
#include "TivNavigationController.h"

Pedometer::Pedometer() : engine_(std::make_unique<CountingEngine>()) {}

Pedometer::~Pedometer() {
    if (frame_) frame_->removeEventFilter(this);
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

    frame_ = std::make_unique<AppFrame>();
    mainForm_ = new MainForm(*engine_);
    mainForm_->Initialize();
    navigation_ = std::make_unique<TivNavigationController>(*frame_, engine_.get());
    navigation_->InitWithRootForm(mainForm_);
    frame_->AddControl(*mainForm_);
    frame_->SetCurrentForm(*mainForm_);
    mainForm_->FormWillAppear();
    frame_->PlaceForm(*mainForm_);
    frame_->RequestRedraw(true);
    frame_->show();
    WatchVisibility();
    TivNavigationController::SetOnForeground(true);
    return true;
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
    return true;
}

void Pedometer::WatchVisibility() {
    frame_->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this] { ReconsiderForeground(); });
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected() && !qEnvironmentVariableIsSet("PEDOMETER_NO_DBUS")) {
        bus.connect(QStringLiteral("org.freedesktop.ScreenSaver"),
                    QStringLiteral("/org/freedesktop/ScreenSaver"),
                    QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("ActiveChanged"),
                    this, SLOT(OnScreenSaverActiveChanged(bool)));
    }
}

void Pedometer::OnScreenSaverActiveChanged(bool active) {
    screenSaverActive_ = active;
    ReconsiderForeground();
}

bool Pedometer::eventFilter(QObject* watched, QEvent* event) {
    if (watched == frame_.get()) {
        switch (event->type()) {
            case QEvent::Show:
            case QEvent::Hide:
            case QEvent::WindowStateChange:
                ReconsiderForeground();
                break;
            default:
                break;
        }
    }
    return QObject::eventFilter(watched, event);
}

void Pedometer::ReconsiderForeground() {
    if (!frame_ || mainForm_ == nullptr) return;
    const bool visible = frame_->isVisible() && !frame_->isMinimized();
    const bool suspended = QGuiApplication::applicationState() == Qt::ApplicationSuspended;
    const bool now = visible && !suspended && !screenSaverActive_;
    if (now == foreground_) return;
    foreground_ = now;
    if (now) {
        OnForeground();
    } else {
        OnBackground();
    }
}
