#include "MainForm.h"

#include <QMenu>
#include <algorithm>

#include "AppResource.h"
#include "BlockPane.h"
#include "Converter.h"
#include "Body.h"
#include "CountingEngine.h"
#include "DAOLap.h"
#include "GraphicBlue.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "PowerManager.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "StatisticsManager.h"
#include "StorageNotice.h"
#include "Sygnal.h"
#include "TargetSlider.h"
#include "TivButton.h"
#include "TivImagePanel.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

namespace {
// The layout is drawn for the 480-wide screen and scaled for the 320-wide one.
// Where the parts of the screen sit, in the 480-wide layout's units. The graph is the
// grow band: it takes the height of a tall screen and gives some up on a short one.
struct MainLayout {
    QRect caption;
    QRect value;
    int valueFont;
    QRect graph;
    QRect slider;
    int startTop;
    int iconTop;
    int bottomTop;
};
const MainLayout& Layout() {
    static const MainLayout layout{QRect(90, 150, 300, 40),
                                   QRect(60, 188, 360, 94),
                                   90,
                                   QRect(0, 285, 480, 205),
                                   QRect(20, 494, 440, 62),
                                   562,
                                   568,
                                   656};
    return layout;
}

const QColor kValueColor(252, 209, 75);
const QColor kCountdownColor(Qt::red);
constexpr int kTopWidth = 152;
constexpr int kTopHeight = 64;
}  // namespace

MainForm::MainForm(CountingEngine& engine, QWidget* parent)
    : PedometerForm(parent),
      engine_(engine),
      statManager(&engine.Statistics()),
      countdownTimer([this] { OnCountdownTick(); }),
      resumeTimer([this] { OnResume(); }),
      stepsTrigger([this] { ApplyPendingSteps(); }),
      readingsTrigger([this] { ApplyPendingReadings(); }),
      unblockTrigger([this] {
          if (QWidget* pane = GetLockPane()) Unblock(pane);
      }),
      sygnalTrigger([this] { FormWillAppear(); }) {}

MainForm::~MainForm() {
    // Returns after any call in progress from the counting threads.
    if (listening_) engine_.RemoveListener(*this);
}

bool MainForm::Initialize() {
    setObjectName(QStringLiteral("IDF_MAIN_SCREEN"));
    locked = false;
    return true;
}

void MainForm::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    InitOptions();
    ConstructTopButtons();
    ConstructBottomButtons();

    graphButton = new TivButton(this);
    graphButton->Initialize(TivUtils::Scaled(Layout().graph));
    graphButton->SetActionId(ID_GRAPH);
    graphButton->AddActionEventDelegate(this);
    graphic = new GraphicBlue(graphButton);
    graphic->Initialize(QRect(0, 0, graphButton->width(), graphButton->height()),
                        {QString(), QString(), QString(), QString()}, TivUtils::Scaled(20), true);
    graphic->SetCurrentType(PedometerOptions::GetInstance().mainGraphic);
    graphButton->AddControl(*graphic);

    UpdateTopButtons();
    countdownRunning = false;

    targetSlider = new TargetSlider(this);
    targetSlider->setGeometry(TivUtils::Scaled(Layout().slider));
    targetSlider->Initialize(28);
    SetGrowBand(Layout().graph.top(), Layout().graph.top() + Layout().graph.height());

    engine_.AddListener(*this);
    listening_ = true;
    // What was counted before this screen existed (a lap resumed, counting in the
    // background) shows at once.
    if (statManager->GetStarted()) SetStartStop(true);
    UpdateStepsCount(statManager->GetLapSteps());
    UpdateData(statManager->GetCurrentLap().get());
    new StorageNotice(this);  // shows itself while recordings are not being saved
}

void MainForm::InitOptions() {
    InitOptionMenu(ID_OPTION_KEY);
    AddOptionKey(AppResource::Text("body__ Body_tracker"), ID_BODY);
    AddOptionKey(AppResource::Text("more__ Settings"), ID_SETTINGS);
    AddOptionKey(AppResource::Text("more__ My profile"), ID_PROFILE);
    AddOptionKey(AppResource::Text("main__ History"), ID_HISTORY);
    AddOptionKey(AppResource::Text("more__ Loosing weight tips"), ID_WEIGHT_TIPS);
    AddOptionKey(AppResource::Text("main__ Quit"), ID_QUIT);
}

void MainForm::ConstructTopButtons() {
    topButtonsBox = new QWidget(this);
    topButtonsBox->setObjectName(QStringLiteral("topButtons"));
    topButtonsBox->setGeometry(TivUtils::Scaled(QRect(0, 0, 480, 140)));
    hover = new TivImagePanel(topButtonsBox);
    hover->setObjectName(QStringLiteral("hover"));
    hover->Initialize(QPoint(0, 0), QStringLiteral("top-data-selected.png"));
    static const char* const kCaptions[kTopButtons] = {
        "meter__ Steps",      "meter__ Distance (km)", "meter__ Calories",
        "meter__ Time (min)", "meter__ Speed (km/h)",  "meter__ Avg. speed (km/h)"};
    for (int i = 0; i < kTopButtons; ++i) {
        auto* button = new TivButton(topButtonsBox);
        button->Initialize(
            TivUtils::Scaled(QRect(8 + (i % 3) * 156, 6 + (i / 3) * 68, kTopWidth, kTopHeight)));
        button->setObjectName(QString::number(i + 1));
        button->SetActionId(ID_TOP_FIRST + i);
        button->AddActionEventDelegate(this);

        auto* caption = new TivLabel(button);
        caption->Initialize();
        caption->setGeometry(TivUtils::Scaled(QRect(0, 2, kTopWidth, 21)));
        caption->SetFontSize(TivUtils::Scaled(17));
        caption->SetShrinkToFit(true);
        caption->SetText(AppResource::Text(kCaptions[i]));
        auto* value = new TivLabel(button);
        value->Initialize();
        value->setGeometry(TivUtils::Scaled(QRect(0, 22, kTopWidth, 38)));
        value->SetFontSize(TivUtils::Scaled(35));
        value->SetTextColor(kValueColor);
        value->SetText(i == 3 ? QStringLiteral("00:00") : QStringLiteral("0"));
        button->AddControl(*caption);
        button->AddControl(*value);
        topButtons[i] = button;
        topCaptions[i] = caption;
        topValues[i] = value;
    }

    enlargedCaption = new TivLabel(this);
    enlargedCaption->Initialize();
    enlargedCaption->setGeometry(TivUtils::Scaled(Layout().caption));
    enlargedCaption->SetFontSize(TivUtils::Scaled(Layout().caption.height() - 4));
    enlargedCaption->SetShrinkToFit(true);
    enlargedCaption->SetTextColor(kEnlargedColor);
    enlargedValue = new TivLabel(this);
    enlargedValue->Initialize();
    enlargedValue->setGeometry(TivUtils::Scaled(Layout().value));
    enlargedValue->SetFontSize(TivUtils::Scaled(Layout().valueFont));
    enlargedValue->SetShrinkToFit(true);
    enlargedValue->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    enlargedValue->SetTextColor(kEnlargedColor);
    enlargedValue->SetText(QStringLiteral("0"));

    // The goal alarm's news, between the graph's title and unit, while it is reached.
    goalBanner = new TivLabel(this);
    goalBanner->Initialize();
    goalBanner->setObjectName(QStringLiteral("goalBanner"));
    goalBanner->setGeometry(TivUtils::Scaled(QRect(140, Layout().graph.y() - 2, 200, 30)));
    goalBanner->SetFontSize(TivUtils::Scaled(22));
    goalBanner->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    goalBanner->SetNeedOutline(false);
    goalBanner->SetBackColor(QColor(0x43, 0xA0, 0x47));
    goalBanner->SetText(AppResource::Text("alarm__ Completed!"));
    goalBanner->hide();
}

TivButton* MainForm::AddPictureButton(const QString& picture, const QRect& bounds, int actionId) {
    auto* button = new TivButton(this);
    button->Initialize(TivUtils::Scaled(bounds));
    button->setObjectName(QStringLiteral("action%1").arg(actionId));
    button->SetActionId(actionId);
    button->AddActionEventDelegate(this);
    SetButtonPicture(*button, picture);
    return button;
}

void MainForm::SetButtonPicture(TivButton& button, const QString& picture) {
    button.SetPictures(picture);
}

void MainForm::AddCaption(TivButton& button, const QString& firstKey, const QString& secondKey) {
    const QString text = AppResource::GetInstance().GetString(firstKey) + QLatin1Char('\n') +
                         AppResource::GetInstance().GetString(secondKey);
    auto* label = new TivLabel(&button);
    label->Initialize();
    label->setGeometry(TivUtils::Scaled(QRect(62, 4, 84, 64)));  // clear of the button's border
    label->SetFontSize(TivUtils::Scaled(16));
    label->SetShrinkToFit(true);
    label->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    label->SetText(text);
    button.AddControl(*label);
}

void MainForm::ConstructBottomButtons() {
    startStop = AddPictureButton(QStringLiteral("btn-start.png"),
                                 QRect(10, Layout().startTop, 220, 84), ID_START);
    startStopLabel = new TivLabel(startStop);
    startStopLabel->Initialize();
    // Right of the button's round icon.
    startStopLabel->setGeometry(TivUtils::Scaled(58), 0, startStop->width() - TivUtils::Scaled(62),
                                startStop->height());
    startStopLabel->SetFontSize(TivUtils::Scaled(36));
    startStopLabel->SetFontStyle(TivUtils::FONT_STYLE_BOLD);
    startStopLabel->SetText(AppResource::Text("meter__ START"));
    startStop->AddControl(*startStopLabel);

    AddPictureButton(QStringLiteral("btn-metronome-grey.png"), QRect(246, Layout().iconTop, 72, 72),
                     ID_PACER);
    AddPictureButton(QStringLiteral("btn-alarm-grey.png"), QRect(326, Layout().iconTop, 72, 72),
                     ID_ALARM);
    AddPictureButton(QStringLiteral("btn-info-grey.png"), QRect(406, Layout().iconTop, 72, 72),
                     ID_INFO);
    AddCaption(*AddPictureButton(QStringLiteral("btn-newlap.png"),
                                 QRect(8, Layout().bottomTop, 150, 72), ID_NEW_LAP),
               QStringLiteral("meter__ Lap"), QStringLiteral("meter__ And reset"));
    AddCaption(*AddPictureButton(QStringLiteral("btn-goal.png"),
                                 QRect(165, Layout().bottomTop, 150, 72), ID_GOAL),
               QStringLiteral("meter__ Goal"), QStringLiteral("today_goal__ Today's goal"));
    AddCaption(*AddPictureButton(QStringLiteral("btn-lock.png"),
                                 QRect(322, Layout().bottomTop, 150, 72), ID_LOCK),
               QStringLiteral("meter__ Lock"), QStringLiteral("meter__ Lock_Screen"));
}

TivButton* MainForm::GetButton(int actionId) const {
    return findChild<TivButton*>(QStringLiteral("action%1").arg(actionId));
}

void MainForm::OnTerminating() {
    // Counting belongs to the engine and goes on without this screen.
    updating = false;
    CloseContextMenu();
    countdownTimer.Cancel();
    resumeTimer.Cancel();
}

void MainForm::FormWillAppear() {
    UpdateLabels();
    const PedometerOptions& options = PedometerOptions::GetInstance();
    const int sygnal = options.sygnalType;
    QString alarm;
    if (Sygnal::IsStopped(sygnal)) alarm = QStringLiteral("btn-alarm-grey.png");
    if (Sygnal::IsRunning(sygnal)) alarm = QStringLiteral("btn-alarm-green.png");
    if (Sygnal::IsCompleted(sygnal)) alarm = QStringLiteral("btn-alarm-red.png");
    if (goalBanner != nullptr) {
        goalBanner->setVisible(Sygnal::IsCompleted(sygnal));
        goalBanner->raise();
    }
    if (TivButton* button = GetButton(ID_ALARM)) SetButtonPicture(*button, alarm);
    const int pacer = options.pacerType;
    QString metronome;
    if (pacer == 0) metronome = QStringLiteral("btn-metronome-grey.png");
    if (pacer >= 1 && pacer <= 3) metronome = QStringLiteral("btn-metronome-green.png");
    if (TivButton* button = GetButton(ID_PACER)) SetButtonPicture(*button, metronome);
    if (targetSlider != nullptr && updating) targetSlider->UpdateData();
    // Units or the pace choice may have changed meanwhile: show the values in the words
    // the captions now use, counting or not.
    if (statManager) statManager->ForceMainScreenUpdate();
}

void MainForm::SygnalFired() {
    sygnalTrigger.Trigger();
}

void MainForm::RequestUnblock() {
    unblockTrigger.Trigger();
}

bool MainForm::IsAlreadyStarted() const {
    return statManager->GetStarted();
}

namespace {
// The buttons and menu entries that only open a screen.
struct ScreenAction {
    int actionId;
    const char* screen;
};
constexpr ScreenAction kScreenActions[] = {
    {MainForm::ID_PACER, "pacer"},
    {MainForm::ID_ALARM, "alarm"},
    {MainForm::ID_GOAL, "goal"},
    {MainForm::ID_BODY, "body"},
    {MainForm::ID_SETTINGS, "settings"},
    {MainForm::ID_PROFILE, "settings-profile"},
    {MainForm::ID_HISTORY, "history-day"},
    {MainForm::ID_WEIGHT_TIPS, "tips-weight"},
    {MainForm::ID_ENTER_HEIGHT, "settings-height"},
    {MainForm::ID_ENTER_WEIGHT, "body-weight"},
    {MainForm::ID_ACC_TIPS, "tips-carry"},
};
}  // namespace

void MainForm::OnActionPerformed(const QWidget&, int actionId) {
    // Under the lock pane only the slide acts: no button, key or menu opens anything.
    if (locked) return;
    SoundsManager& sounds = SoundsManager::GetInstance();
    for (const ScreenAction& action : kScreenActions) {
        if (action.actionId != actionId) continue;
        CloseContextMenu();
        HideOptionMenu();
        sounds.ClickSound();
        OpenScreen(QString::fromLatin1(action.screen));
        return;
    }
    switch (actionId) {
        case ID_START:
            StartPressed();
            break;
        case ID_STOP:
            StopPressed();
            break;
        case ID_LOCK:
            if (!PedometerOptions::GetInstance().startOnBlock) sounds.ClickSound();
            Lock();
            break;
        case ID_QUIT:
            HideOptionMenu();
            sounds.ClickSound();
            Q_EMIT QuitRequested();
            break;
        case ID_GRAPH:
            sounds.ClickSound();
            ShowNextGraphic();
            break;
        case ID_INFO:
            sounds.ClickSound();
            ShowInfo();
            break;
        case ID_NEW_LAP:
            sounds.ClickSound();
            OpenContextMenu(GetButton(ID_NEW_LAP),
                            {{AppResource::Text("meter__ Start new"), ID_START_NEW},
                             {AppResource::Text("meter__ Just reset stats"), ID_JUST_RESET}});
            break;
        case ID_START_NEW:
            CloseContextMenu();
            sounds.ClickSound();
            statManager->StartNewLap();
            break;
        case ID_JUST_RESET:
            CloseContextMenu();
            sounds.ClickSound();
            statManager->ClearCurrentLap();
            break;
        case ID_OPTION_KEY:
            sounds.ClickSound();
            ShowOptionMenu();
            break;
        default:
            if (actionId >= ID_TOP_FIRST && actionId < ID_TOP_FIRST + kTopButtons) {
                sounds.ClickSound();
                ShowTopValue(actionId - ID_TOP_FIRST);
            }
            break;  // the back action too: the root screen has none
    }
}

void MainForm::ShowNextGraphic() {
    PedometerOptions& options = PedometerOptions::GetInstance();
    const int next = options.mainGraphic + 1;
    options.mainGraphic = next > 3 ? 0 : next;
    PedometerDBManager::GetInstance().SaveOptions();
    graphic->SetCurrentType(options.mainGraphic);
    statManager->ForceMainScreenUpdate();
}

void MainForm::ShowTopValue(int index) {
    PedometerOptions::GetInstance().mainValues = index;
    PedometerDBManager::GetInstance().SaveOptions();
    UpdateLabels();
    UpdateTopButtons();
    statManager->ForceMainScreenUpdate();
}

// With height and weight known the info button opens the carrying tips; otherwise it
// offers to enter what is missing first.
void MainForm::ShowInfo() {
    const Body& body = Body::GetInstance();
    if (body.hasHeight() && body.storedWeight() != -1.0) {
        OpenScreen(QStringLiteral("tips-carry"));
        return;
    }
    QList<std::pair<QString, int>> items;
    if (!body.hasHeight())
        items.append({AppResource::Text("meter__ Enter height"), ID_ENTER_HEIGHT});
    if (body.storedWeight() == -1.0) {
        items.append({AppResource::Text("meter__ Enter weight"), ID_ENTER_WEIGHT});
    }
    items.append({AppResource::Text("meter__ Accelerometer tips"), ID_ACC_TIPS});
    OpenContextMenu(GetButton(ID_INFO), items);
}

void MainForm::Lock() {
    if (locked) return;
    if (PedometerOptions::GetInstance().startOnBlock) StartPressed();
    locked = true;
    CloseContextMenu();
    HideOptionMenu();
    AddOptionkeyActionListener(nullptr);  // the bar's option key goes, F1 does nothing
    auto* pane = new BlockPane(this);
    pane->setObjectName(QStringLiteral("lock"));
    pane->Initialize(this);
    pane->setGeometry(rect());  // the whole screen, whatever the window's size
    pane->raise();
    pane->show();
}

void MainForm::StartPressed() {
    SoundsManager::GetInstance().ClickSound();
    if (IsAlreadyStarted()) return;
    PowerManager::KeepScreenOnState(true, true);
    const int countdown = PedometerOptions::GetInstance().countDownTime;
    if (countdown == 0) {
        statManager->start();
        countdownRunning = false;
    } else {
        countdownRunning = true;
        countdownRemaining = countdown;
        SetEnlarged(AppResource::Text("meter__ Countdown"), QString::number(countdownRemaining),
                    kCountdownColor);
        countdownTimer.Start(1000);
    }
    SetStartStop(true);
}

void MainForm::StopPressed() {
    SoundsManager::GetInstance().ClickSound();
    SoundsManager::GetInstance().ReleaseCountDown();
    PowerManager::KeepScreenOnState(false, false);
    SetStartStop(false);
    statManager->stop();
    if (countdownRunning) countdownTimer.Cancel();
    countdownRunning = false;
    UpdateLabels();
    ShowEnlargedValue();
    statManager->ForceMainScreenUpdate();
}

void MainForm::SetStartStop(bool recording) {
    SetButtonPicture(*startStop,
                     recording ? QStringLiteral("btn-stop.png") : QStringLiteral("btn-start.png"));
    startStopLabel->SetText(recording ? AppResource::Text("meter__ STOP")
                                      : AppResource::Text("meter__ START"));
    startStop->SetActionId(recording ? ID_STOP : ID_START);
    startStop->update();
    startStopLabel->update();
}

void MainForm::OnCountdownTick() {
    countdownRemaining -= 1;
    if (countdownRemaining > 0) {
        SoundsManager::GetInstance().CountDownSound();
        enlargedValue->SetText(QString::number(countdownRemaining));
        enlargedValue->update();
        countdownTimer.Start(1000);
        return;
    }
    SoundsManager::GetInstance().ReleaseCountDown();
    statManager->start();
    countdownRunning = false;
    UpdateLabels();
    ShowEnlargedValue();
}

void MainForm::ShowEnlargedValue() {
    const int main = PedometerOptions::GetInstance().mainValues;
    if (main < 0 || main >= kTopButtons) return;
    enlargedValue->SetText(topValues[main]->GetText());
    enlargedValue->update();
}

void MainForm::PauseUpdating() {
    updating = false;
}

void MainForm::ResumeUpdating() {
    if (updating) return;
    resumeTimer.Start(500);
}

void MainForm::OnResume() {
    updating = true;
    UpdateTopButtons();
    statManager->ForceMainScreenUpdate();
}

void MainForm::Unblock(QWidget* pane) {
    pane->setObjectName(QString());
    BlockPane::Dismiss(pane);
    locked = false;
    AddOptionkeyActionListener(this);
    update();
}

BlockPane* MainForm::GetLockPane() const {
    return findChild<BlockPane*>(QStringLiteral("lock"), Qt::FindDirectChildrenOnly);
}

void MainForm::OpenContextMenu(const QWidget* anchor, const QList<std::pair<QString, int>>& items) {
    CloseContextMenu();
    contextMenu = new QMenu(this);
    contextMenu->setObjectName(QStringLiteral("contextMenu"));
    StyleMenu(*contextMenu);
    for (const auto& [text, id] : items) {
        QAction* action = contextMenu->addAction(text);
        const int actionId = id;
        connect(action, &QAction::triggered, this,
                [this, actionId] { OnActionPerformed(*this, actionId); });
    }
    // Just above the button that opened it, inside the screen.
    const QSize size = contextMenu->sizeHint();
    const QRect button = anchor != nullptr ? anchor->geometry() : QRect(0, height(), 0, 0);
    const int x = std::clamp(button.left(), 0, std::max(0, width() - size.width()));
    const int y = std::max(0, button.top() - size.height());
    contextMenu->popup(mapToGlobal(QPoint(x, y)));
}

void MainForm::CloseContextMenu() {
    if (!contextMenu) return;
    contextMenu->hide();
    contextMenu->deleteLater();
    contextMenu = nullptr;
}

void MainForm::OpenScreen(const QString& name) {
    TivNavigationController* nav = getNavigationController();
    if (nav == nullptr) return;
    QString error;
    if (ScreenDirectory::Open(name, *nav, ScreenRequest{}, &error) == nullptr) {
        qWarning("%s", qPrintable(error));
    }
}

// The main screen is the root: opening it shows it as it is.
PEDOMETER_SCREEN_ACTION("main",
                        [](TivNavigationController& navigation, const ScreenRequest&,
                           QString*) -> QWidget* { return navigation.GetTopForm(); });

// The lock pane covers the main screen, as the lock button puts it there.
PEDOMETER_SCREEN_ACTION("lock",
                        [](TivNavigationController& navigation, const ScreenRequest&,
                           QString* error) -> QWidget* {
                            auto* main = qobject_cast<MainForm*>(navigation.GetTopForm());
                            if (main == nullptr) {
                                *error =
                                    QStringLiteral("the lock pane covers the main screen only");
                                return nullptr;
                            }
                            main->Lock();  // no click: nothing was tapped
                            return main->GetLockPane();
                        });

void MainForm::UpdateLabels() {
    const PedometerOptions& options = PedometerOptions::GetInstance();
    const bool miles = options.measurementSystem;
    const int main = options.mainValues;
    const QString distance = miles ? AppResource::Text("meter__ Distance (ml)")
                                   : AppResource::Text("meter__ Distance (km)");
    QString speed;
    QString average;
    if (options.paceInsteadOfSpeed) {
        speed = miles ? AppResource::Text("meter__ Pace (min/ml)")
                      : AppResource::Text("meter__ Pace (min/km)");
        average = miles ? AppResource::Text("meter__ Avg. pace (min/ml)")
                        : AppResource::Text("meter__ Avg. pace (min/km)");
    } else {
        speed = miles ? AppResource::Text("meter__ Speed (ml/h)")
                      : AppResource::Text("meter__ Speed (km/h)");
        average = miles ? AppResource::Text("meter__ Avg. speed (ml/h)")
                        : AppResource::Text("meter__ Avg. speed (km/h)");
    }
    topCaptions[1]->SetText(distance);
    topCaptions[4]->SetText(speed);
    topCaptions[5]->SetText(average);
    const QString captions[kTopButtons] = {
        AppResource::Text("meter__ Steps"),      distance, AppResource::Text("meter__ Calories"),
        AppResource::Text("meter__ Time (min)"), speed,    average};
    // The countdown keeps its caption and colour until it ends.
    if (!countdownRunning) {
        if (main >= 0 && main < kTopButtons) enlargedCaption->SetText(captions[main]);
        enlargedCaption->SetTextColor(kEnlargedColor);
        enlargedValue->SetTextColor(kEnlargedColor);
    }
    topButtonsBox->update();
    for (TivLabel* label : topCaptions) label->update();
    enlargedCaption->update();
    enlargedValue->update();
}

void MainForm::UpdateTopButtons() {
    const int main = PedometerOptions::GetInstance().mainValues;
    if (main < 0 || main >= kTopButtons) return;
    hover->hide();
    hover->move(topButtons[main]->pos());
    hover->show();
    hover->lower();
    topButtonsBox->update();
}

void MainForm::SetEnlarged(const QString& caption, const QString& value, const QColor& color) {
    enlargedCaption->SetText(caption);
    enlargedCaption->SetTextColor(color);
    enlargedValue->SetText(value);
    enlargedValue->SetTextColor(color);
    enlargedCaption->update();
    enlargedValue->update();
}

void MainForm::RequestStepsUpdate(int lapSteps) {
    pendingSteps.store(lapSteps);
    // A paused screen (in the background) is not woken for each step: it reads the
    // count again when it resumes.
    if (updating) stepsTrigger.Trigger();
}

void MainForm::ApplyPendingSteps() {
    const int steps = pendingSteps.exchange(-1);
    if (steps >= 0) UpdateStepsCount(steps);
}

void MainForm::UpdateStepsCount(int lapSteps) {
    if (!updating) return;
    const QString text = Converter::GetCountString(lapSteps);
    topValues[0]->SetText(text);
    topValues[0]->update();
    if (PedometerOptions::GetInstance().mainValues == 0 && !countdownRunning) {
        enlargedValue->SetText(text);
        enlargedValue->update();
    }
}

void MainForm::UpdateData(const DAOLap* lap) {
    // Paused: nothing is computed or woken; resuming asks for the lap again.
    if (!updating) return;
    const PedometerOptions& options = PedometerOptions::GetInstance();
    std::vector<DAOLapMinutes> minutes;
    std::vector<DAOLapSeconds> seconds;
    if (lap != nullptr) {
        minutes = lap->CopyMinutes();
        seconds = lap->CopySeconds();
    }
    MeterReadings readings =
        MeterReadings::Compute(minutes, seconds, options.measurementSystem,
                               options.paceInsteadOfSpeed, options.mainGraphic);
    // No interval yet: the graph shows an empty frame rather than a scale of zeros.
    if (seconds.empty()) readings.graph.clear();
    if (stepsTrigger.IsOwnerThread()) {
        ShowReadings(readings);
        return;
    }
    {
        std::lock_guard lock(pendingMutex);
        pendingReadings = std::move(readings);
    }
    readingsTrigger.Trigger();
}

void MainForm::ApplyPendingReadings() {
    std::optional<MeterReadings> readings;
    {
        std::lock_guard lock(pendingMutex);
        readings.swap(pendingReadings);
    }
    if (readings) ShowReadings(*readings);
}

void MainForm::ShowReadings(const MeterReadings& r) {
    // The graph always keeps the newest series; what is drawn waits for updating.
    graphic->SetCurrentValues(r.graph);
    if (!updating) return;
    const QString* texts[kTopButtons] = {nullptr, &r.distance, &r.calories,
                                         &r.time, &r.speed,    &r.averageSpeed};
    const int main = PedometerOptions::GetInstance().mainValues;
    for (int i = 1; i < kTopButtons; ++i) {
        topValues[i]->SetText(*texts[i]);
        topValues[i]->update();
    }
    if (main >= 1 && main < kTopButtons && !countdownRunning) {
        enlargedValue->SetText(*texts[main]);
        enlargedValue->update();
    }
    graphic->UpdateGraphic();
    targetSlider->UpdateData();
}

QString MainForm::GetTopValueText(int index) const {
    return topValues[index]->GetText();
}
QString MainForm::GetEnlargedCaptionText() const {
    return enlargedCaption->GetText();
}
QString MainForm::GetEnlargedValueText() const {
    return enlargedValue->GetText();
}
QColor MainForm::GetEnlargedColor() const {
    return enlargedValue->GetTextColor();
}
