#include "BodyMeterForm.h"

#include <cmath>

#include "AppResource.h"
#include "Body.h"
#include "BodyParametersForm.h"
#include "Converter.h"
#include "DAOTarget.h"
#include "GraphicBody.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TivUtils.h"
#include "WheightEnterForm.h"

namespace {
// The 480-wide layout.
constexpr int kSlotX = 30;
constexpr int kSlotY[4] = {10, 160, 300, 440};
constexpr int kSlotWidth = 420;
constexpr int kSlotHeight = 130;
constexpr int kHintHeight = 30;
constexpr int kContainerHeight = 575;

struct Measurement {
    const char* name;
    const char* forTwoDays;
    const char* forOneMoreDay;
    QColor accent;
};
const Measurement kMeasurements[4] = {
    {"body__ Chest", "body__ Please enter chest sizefor 2 days to start tracking",
     "body__ Please enter chest sizefor 1 more day to start tracking", QColor(255, 107, 129)},
    {"body__ Waist", "body__ Please enter waist sizefor 2 days to start tracking",
     "body__ Please enter waist sizefor 1 more day to start tracking", QColor(255, 184, 77)},
    {"body__ Hips", "body__ Please enter hips sizefor 2 days to start tracking",
     "body__ Please enter hips sizefor 1 more day to start tracking", QColor(178, 132, 255)},
    {"body__ Weight", "body__ Please enter your weightfor 2 days to start tracking",
     "body__ Please enter your weightfor 1 more day to start tracking", QColor(63, 193, 255)},
};

}  // namespace

BodyMeterForm::BodyMeterForm(QWidget* parent) : PedometerForm(parent) {}

bool BodyMeterForm::Initialize() {
    setObjectName(QStringLiteral("BodyMeterForm"));
    return true;
}

void BodyMeterForm::OnInitializing() {
    SetBackgroundImage(Body::GetInstance().isMen() ? QStringLiteral("Body_bg.png")
                                                   : QStringLiteral("Body_woman_bg.png"));
    SetTitleText(AppResource::Text("body__ Body_tracker"));
    ShowBackButton();

    int y = GetClientTop();
    auto* hint = new TivLabel(this);
    hint->Initialize();
    hint->setGeometry(0, y, width(), TivUtils::Scaled(kHintHeight));
    hint->SetFontSize(TivUtils::Scaled(19));
    hint->SetTextColor(QColor(127, 127, 127));
    hint->SetNeedOutline(false);
    hint->SetText(AppResource::Text("body__ Tap any graph toenter update"));
    y += TivUtils::Scaled(kHintHeight);

    container_ = new QWidget(this);
    container_->setGeometry(0, y, width(), TivUtils::Scaled(kContainerHeight));
    // The four graphs take the height.
    SetGrowBand(int(std::lround(y / TivUtils::GetScale())),
                int(std::lround(y / TivUtils::GetScale())) + kContainerHeight);
    y += TivUtils::Scaled(kContainerHeight);

    const int footer = std::max(TivUtils::Scaled(24), height() - y);
    legend_ = new TivLabel(this);
    legend_->Initialize();
    legend_->setGeometry(TivUtils::Scaled(kSlotX), y, width() * 3 / 5 - TivUtils::Scaled(kSlotX),
                         footer);
    legend_->SetFontSize(TivUtils::Scaled(22));
    legend_->SetTextColor(QColor(76, 217, 100));
    legend_->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    bmi_ = new TivLabel(this);
    bmi_->Initialize();
    bmi_->setGeometry(width() * 3 / 5, y, width() * 2 / 5 - TivUtils::Scaled(kSlotX), footer);
    bmi_->SetFontSize(TivUtils::Scaled(22));
    bmi_->SetHorizontalAlligment(TivLabel::ALIGN_RIGHT);

    InitOptionMenu(ID_OPTION_KEY);
    AddOptionKey(AppResource::Text("more__ Goals"), ID_GOALS);
    AddOptionKey(AppResource::Text("body__ Report"), ID_REPORT);
}

void BodyMeterForm::FormWillAppear() {
    UpdateData();
}

void BodyMeterForm::UpdateData() {
    if (container_ == nullptr) return;
    const DAOTarget& goal = DAOTarget::GetInstance();
    const bool anyDesired =
        goal.chest != -1.0 || goal.waist != -1.0 || goal.hips != -1.0 || goal.wheight != -1.0;
    legend_->SetText(anyDesired ? AppResource::Text("body__ Green - desired values") : QString());
    legend_->update();

    const Body& body = Body::GetInstance();
    const bool bmiShown = body.storedHeight() != -1.0 && body.storedWeight() != -1.0 &&
                          PedometerOptions::GetInstance().showBmi;
    bmi_->SetText(
        bmiShown ? AppResource::Text("body__ BMI: %@")
                       .replace(QStringLiteral("%@"), Converter::GetLocalStringN(body.GetBMI(), 1))
                 : QString());
    bmi_->update();

    // Old slots may be delivering the tap that led here: they go later.
    for (QWidget* old : container_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        old->hide();
        old->deleteLater();
    }
    const std::vector<DAOBodyLog> logs = PedometerDBManager::GetInstance().GetBodyLogs();
    for (int i = 0; i < 4; ++i) BuildSlot(i, logs);
}

TivLabel* BodyMeterForm::AddLabel(TivButton& slot, const QRect& bounds, int fontSize,
                                  const QString& text, int alignment) {
    auto* label = new TivLabel(&slot);
    label->Initialize();
    label->setGeometry(bounds);
    label->SetFontSize(fontSize);
    label->SetHorizontalAlligment(alignment);
    label->SetText(text);
    slot.AddControl(*label);
    return label;
}

void BodyMeterForm::BuildSlot(int index, const std::vector<DAOBodyLog>& logs) {
    const Measurement& measurement = kMeasurements[index];
    Slot& slot = slots_[index];
    slot = Slot();
    auto* button = new TivButton(container_);
    button->Initialize(TivUtils::Scaled(QRect(kSlotX, kSlotY[index], kSlotWidth, kSlotHeight)));
    button->setObjectName(QStringLiteral("slot%1").arg(index));
    const auto back = TivUtils::GetBitmapWithRightResolutionN(QStringLiteral("body_graph_back.png"));
    button->SetNormalBitmap(back.get());
    button->SetActionId(ID_CHEST + index);
    button->AddActionEventDelegate(this);
    slot.button = button;

    const DAOTarget& goal = DAOTarget::GetInstance();
    const double desired[4] = {goal.chest, goal.waist, goal.hips, goal.wheight};
    const BodyGraphSeries series = BodyGraphSeries::FromLogs(
        logs, BodyGraphSeries::Measurement(index), desired[index]);
    const int w = button->width();
    const int h = button->height();
    if (series.measured < 2) {
        slot.message =
            AddLabel(*button, QRect(TivUtils::Scaled(16), 0, w - TivUtils::Scaled(32), h),
                     TivUtils::Scaled(24),
                     AppResource::Text(series.measured == 0 ? measurement.forTwoDays
                                                            : measurement.forOneMoreDay),
                     TivLabel::ALIGN_CENTER);
        button->show();
        return;
    }

    auto* graph = new GraphicBody(button);
    graph->setGeometry(0, 0, w, h);
    graph->SetAccentColor(measurement.accent);
    graph->SetCurrentValues(series.values, series.low, series.high, series.desired);
    button->AddControl(*graph);
    slot.graph = graph;

    const bool imperial = PedometerOptions::GetInstance().measurementSystem;
    const bool weight = index == BodyGraphSeries::WEIGHT;
    auto shown = [&](double value) {
        if (!imperial) return value;
        return weight ? Converter::KgToPnd(value) : Converter::CmToInch(value);
    };
    auto withUnit = [&](double value) {
        if (weight) {
            return imperial ? Converter::GetLocalStringN(shown(value), 1) + QLatin1Char(' ') +
                                  AppResource::Text("body__ lb")
                            : Converter::GetLocalStringN(value, 3) + QLatin1Char(' ') +
                                  AppResource::Text("body__ kg");
        }
        return Converter::GetLocalStringN(shown(value), 1) +
               (imperial ? QStringLiteral("\"")
                         : QLatin1Char(' ') + AppResource::Text("body__ cm"));
    };
    const int inset = TivUtils::Scaled(14);
    slot.high = AddLabel(*button, QRect(inset, 0, w - 2 * inset, TivUtils::Scaled(26)),
                         TivUtils::Scaled(26), withUnit(series.high), TivLabel::ALIGN_RIGHT);
    slot.low = AddLabel(*button,
                        QRect(inset, h - TivUtils::Scaled(26), w - 2 * inset, TivUtils::Scaled(26)),
                        TivUtils::Scaled(26), withUnit(series.low), TivLabel::ALIGN_RIGHT);
    slot.middle = AddLabel(
        *button, QRect(inset, (h - TivUtils::Scaled(30)) / 2, w - 2 * inset, TivUtils::Scaled(30)),
        TivUtils::Scaled(30),
        AppResource::Text(measurement.name) + QStringLiteral(": ") + withUnit(series.current),
        TivLabel::ALIGN_LEFT);
    button->show();
}

void BodyMeterForm::OnActionPerformed(const QWidget& source, int actionId) {
    TivNavigationController* navigation = getNavigationController();
    switch (actionId) {
        case ID_CHEST:
        case ID_CHEST + 1:
        case ID_CHEST + 2: {
            SoundsManager::GetInstance().ClickSound();
            auto* form = new BodyParametersForm;
            form->Initialize(actionId - ID_CHEST);
            if (navigation != nullptr) navigation->PushForm(form); else delete form;
            return;
        }
        case ID_CHEST + 3: {
            SoundsManager::GetInstance().ClickSound();
            auto* form = new WheightEnterForm;
            form->Initialize(3);
            if (navigation != nullptr) navigation->PushForm(form); else delete form;
            return;
        }
        case ID_OPTION_KEY:
            SoundsManager::GetInstance().ClickSound();
            ShowOptionMenu();
            return;
        case ID_GOALS:
            SoundsManager::GetInstance().ClickSound();
            HideOptionMenu();
            update();
            Open(QStringLiteral("settings-goals"));
            return;
        case ID_REPORT:
            SoundsManager::GetInstance().ClickSound();
            Open(QStringLiteral("report"));
            return;
        default:
            PedometerForm::OnActionPerformed(source, actionId);
    }
}

void BodyMeterForm::Open(const QString& name) {
    TivNavigationController* navigation = getNavigationController();
    if (navigation == nullptr) return;
    QString error;
    if (ScreenDirectory::Open(name, *navigation, ScreenRequest{}, &error) == nullptr)
        qWarning("%s", qPrintable(error));
}

PEDOMETER_SCREEN("body", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new BodyMeterForm;
    form->Initialize();
    return form;
});
