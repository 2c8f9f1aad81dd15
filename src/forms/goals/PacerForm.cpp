#include "PacerForm.h"

#include <QLineEdit>
#include <cmath>

#include "AppResource.h"
#include "Converter.h"
#include "EntryRange.h"
#include "Metronome.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "TivButton.h"
#include "TivImagePanel.h"
#include "TivLabel.h"
#include "TivSlider.h"
#include "TivUtils.h"

namespace {
// Sizes in the 480-wide layout, from the top of the content below the tabs.
constexpr int kContentGap = 24;
constexpr int kFieldHeight = 72;
constexpr int kFirstRow = 100;
constexpr int kRowHeight = 64;
constexpr int kRowGap = 12;
constexpr int kSliderTop = 260;
constexpr int kSliderHeight = 50;
constexpr int kSliderLabelTop = 316;
constexpr int kContentHeight = 380;

// The tolerance of each mode: low end and span of the slider.
constexpr double kSpeedLow = 0.5, kSpeedSpan = 4.5;
constexpr double kPaceLow = 1.0, kPaceSpan = 5.0;
constexpr double kRateLow = 5.0, kRateSpan = 95.0;  // from the stored default, 5

QString UnitText(int mode, bool miles) {
    if (mode == 1) return AppResource::Text(miles ? "history__ ml/h" : "history__ km/h");
    if (mode == 2) return AppResource::Text(miles ? "history__ min/ml" : "history__ min/km");
    return AppResource::Text("pacer__  steps/min").trimmed();
}

// The targets one can set, in the shown unit: from a stroll to a sprint.
EntryRange TargetRange(int mode, bool miles) {
    if (mode == 1) {
        return miles
                   ? EntryRange(Converter::ConvertKilometersToMiles(1.0),
                                Converter::ConvertKilometersToMiles(30.0), 1, UnitText(mode, miles))
                   : EntryRange(1.0, 30.0, 1, UnitText(mode, miles));
    }
    if (mode == 2) return EntryRange(2.0, 60.0, 1, UnitText(mode, miles));
    return EntryRange(30, 250, 0, UnitText(mode, miles));
}

void Changed() {
    PedometerDBManager::GetInstance().SaveOptions();
    Metronome::GetInstance().Update();
}
}  // namespace

PacerForm::PacerForm(QWidget* parent) : PedometerForm(parent) {}

bool PacerForm::Initialize() {
    setObjectName(QStringLiteral("IDF_PACER_FORM"));
    return true;
}

void PacerForm::OnInitializing() {
    const PedometerOptions& options = PedometerOptions::GetInstance();
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(AppResource::Text("pacer__ Pacer"));
    GoalFieldRow::AddTabs(*this,
                          {{"pacer__ Off", ID_OFF},
                           {"pacer__ Speed", ID_SPEED},
                           {"pacer__ Pace", ID_PACE},
                           {"pacer__ Rate", ID_RATE}},
                          options.pacerType);
    ShowBackButton();

    content_ = new QWidget(this);
    content_->setGeometry(0, GetClientTop() + TivUtils::Scaled(kContentGap), width(),
                          TivUtils::Scaled(kContentHeight));
    content_->show();
    row_ = std::make_unique<GoalFieldRow>(*content_, 0,
                                          [this](QLineEdit& field) { OnTextValueChanged(field); });

    // The rows and the slider stay; only the target fields change with the mode.
    standingRow_ = AddCheckRow(AppResource::Text("pacer__ Turn off on standing:"),
                               ID_OFF_ON_STANDING, kFirstRow, options.pacerOffOnStanding);
    diffRow_ = AddCheckRow(AppResource::Text("pacer__ Only if differs for:"), ID_DIFF,
                           kFirstRow + kRowHeight + kRowGap, options.pacerDiff);
    const int margin = TivUtils::Scaled(20);
    slider_ = new TivSlider(this);
    slider_->Initialize(QRect(margin, content_->y() + TivUtils::Scaled(kSliderTop),
                              width() - 2 * margin, TivUtils::Scaled(kSliderHeight)),
                        0);
    slider_->SetListener(this);
    sliderLabel_ = new TivLabel(this);
    sliderLabel_->setGeometry(margin, content_->y() + TivUtils::Scaled(kSliderLabelTop),
                              width() - 2 * margin, TivUtils::Scaled(48));
    sliderLabel_->SetFontSize(TivUtils::Scaled(34));
    sliderLabel_->SetTextColor(QColor(0xFC, 0xD1, 0x4B));
    ReloadControls();
}

TivButton* PacerForm::AddCheckRow(const QString& text, int actionId, int y, bool checked) {
    const int margin = TivUtils::Scaled(20);
    auto* row = new TivButton(content_);
    row->Initialize(QRect(margin, TivUtils::Scaled(y), content_->width() - 2 * margin,
                          TivUtils::Scaled(kRowHeight)));
    row->setObjectName(QStringLiteral("check%1").arg(actionId));
    row->SetActionId(actionId);
    row->AddActionEventDelegate(this);
    auto* label = new TivLabel(row);
    label->setGeometry(0, 0, row->width() - TivUtils::Scaled(60), row->height());
    label->SetText(text);
    label->SetFontSize(TivUtils::Scaled(28));
    label->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    row->AddControl(*label);
    auto* box = new TivImagePanel(row);
    box->setObjectName(QStringLiteral("greenBut"));
    box->Initialize(
        QPoint(row->width() - TivUtils::Scaled(48), (row->height() - TivUtils::Scaled(48)) / 2),
        std::unique_ptr<QPixmap>());
    box->resize(TivUtils::Scaled(48), TivUtils::Scaled(48));
    row->AddControl(*box);
    SetChecked(*row, checked);
    row->show();
    return row;
}

void PacerForm::SetChecked(TivButton& row, bool checked) {
    auto* box = row.findChild<TivImagePanel*>(QStringLiteral("greenBut"));
    if (box == nullptr) return;
    box->SetImage(TivUtils::GetBitmapWithRightResolutionN(
        checked ? QStringLiteral("checkbox_on.png") : QStringLiteral("checkbox_off.png")));
    box->setProperty("checked", checked);
    row.update();
}

TivButton* PacerForm::GetCheckRow(int actionId) const {
    return actionId == ID_OFF_ON_STANDING ? standingRow_ : actionId == ID_DIFF ? diffRow_ : nullptr;
}

void PacerForm::ReloadControls() {
    if (content_ == nullptr) return;
    row_->Clear();
    wholeField_ = nullptr;
    tenthsField_ = nullptr;
    rateField_ = nullptr;
    offHint_ = nullptr;

    const PedometerOptions& options = PedometerOptions::GetInstance();
    const int mode = options.pacerType;
    const bool miles = options.measurementSystem;
    const int center = content_->width() / 2;
    const int gap = TivUtils::Scaled(10);
    if (mode == 1 || mode == 2) {
        double value = mode == 1 ? options.pacerSpeed.load() : options.pacerPace.load();
        if (miles) value = Converter::ConvertKilometersToMiles(value);
        long tenthsTotal = std::lround(std::clamp(value, 0.0, 99.9) * 10);
        const int fieldWhole = TivUtils::Scaled(100);
        const int point = TivUtils::Scaled(24);
        const int fieldTenths = TivUtils::Scaled(70);
        const int unit = TivUtils::Scaled(150);
        int x = center - (fieldWhole + point + fieldTenths + gap + unit) / 2;
        wholeField_ = row_->AddField(2, QString::number(tenthsTotal / 10), x, fieldWhole);
        x += fieldWhole;
        row_->AddUnit(QString(QLocale().decimalPoint()), x + TivUtils::Scaled(6), point, 32);
        x += point;
        tenthsField_ = row_->AddField(1, QString::number(tenthsTotal % 10), x, fieldTenths);
        x += fieldTenths + gap;
        row_->AddUnit(UnitText(mode, miles), x, unit, 32);
    } else if (mode == 3) {
        rateField_ = row_->AddValue(3, options.pacerFrequency, UnitText(mode, miles), 130, 190);
    } else {
        // Off: the row of fields says how to get a beat instead of staying empty.
        offHint_ =
            row_->AddHint(AppResource::Text("pacer__ Off hint"), TivUtils::Scaled(kFieldHeight));
    }

    double tolerance = 0.0, low = 0.0, span = 1.0;
    if (mode == 1)
        std::tie(tolerance, low, span) =
            std::tuple(options.pacerDiffSpeed.load(), kSpeedLow, kSpeedSpan);
    if (mode == 2)
        std::tie(tolerance, low, span) =
            std::tuple(options.pacerDiffPace.load(), kPaceLow, kPaceSpan);
    if (mode == 3)
        std::tie(tolerance, low, span) =
            std::tuple(double(options.pacerDiffFrequency), kRateLow, kRateSpan);
    slider_->SetValue(int(std::lround((tolerance - low) / span * 100)));
    UpdateSliderLabel();
    ShowSlider();
    content_->update();
}

void PacerForm::ShowSlider() {
    const bool shown =
        PedometerOptions::GetInstance().pacerDiff && PedometerOptions::GetInstance().pacerType != 0;
    slider_->setVisible(shown);
    sliderLabel_->setVisible(shown);
}

void PacerForm::UpdateSliderLabel() {
    const PedometerOptions& options = PedometerOptions::GetInstance();
    const int mode = options.pacerType;
    const bool miles = options.measurementSystem;
    QString value;
    if (mode == 1) value = Converter::GetLocalStringN(options.pacerDiffSpeed, 1);
    if (mode == 2) value = Converter::GetLocalStringN(options.pacerDiffPace, 1);
    if (mode == 3) value = QString::number(options.pacerDiffFrequency);
    sliderLabel_->SetText(mode >= 1 && mode <= 3 ? QStringLiteral("± ") + value + QLatin1Char(' ') +
                                                       UnitText(mode, miles)
                                                 : QString());
    sliderLabel_->update();
}

void PacerForm::SliderValueChanged(int position) {
    PedometerOptions& options = PedometerOptions::GetInstance();
    const double share = position / 100.0;
    switch (options.pacerType) {
        case 1:
            options.pacerDiffSpeed = share * kSpeedSpan + kSpeedLow;
            break;
        case 2:
            options.pacerDiffPace = share * kPaceSpan + kPaceLow;
            break;
        case 3:
            options.pacerDiffFrequency = int(share * kRateSpan + kRateLow);
            break;
        default:
            return;
    }
    PedometerDBManager::GetInstance().SaveOptions();
    UpdateSliderLabel();
    Metronome::GetInstance().Update();
}

void PacerForm::OnActionPerformed(const QWidget& source, int actionId) {
    if (actionId < ID_OFF || actionId > ID_DIFF) {
        PedometerForm::OnActionPerformed(source, actionId);
        Metronome::GetInstance().Update();
        return;
    }
    row_->CommitEditing();
    SoundsManager::GetInstance().ClickSound();
    PedometerOptions& options = PedometerOptions::GetInstance();
    if (actionId <= ID_RATE) {
        options.pacerType = actionId - ID_OFF;
        PedometerDBManager::GetInstance().SaveOptions();
        ReloadControls();
    } else if (actionId == ID_OFF_ON_STANDING) {
        options.pacerOffOnStanding = !options.pacerOffOnStanding;
        PedometerDBManager::GetInstance().SaveOptions();
        SetChecked(*standingRow_, options.pacerOffOnStanding);
    } else {
        options.pacerDiff = !options.pacerDiff;
        PedometerDBManager::GetInstance().SaveOptions();
        SetChecked(*diffRow_, options.pacerDiff);
        ShowSlider();
    }
    Metronome::GetInstance().Update();
}

void PacerForm::OnTextValueChanged(const QWidget& control) {
    if (row_ == nullptr || !row_->Holds(control)) return;
    PedometerOptions& options = PedometerOptions::GetInstance();
    const bool miles = options.measurementSystem;
    const int mode = options.pacerType;
    // A value out of range is kept as typed and explained, and the pacer keeps its value.
    if ((mode == 1 || mode == 2) && wholeField_ != nullptr && tenthsField_ != nullptr) {
        const std::optional<double> typed = GoalFieldRow::ReadInRange(
            TargetRange(mode, miles), *wholeField_, tenthsField_.data(), 10);
        if (!typed) return;
        // Speed and pace alike are stored through the distance factor.
        const double value = miles ? Converter::ConvertMilesToKilometers(*typed) : *typed;
        (mode == 1 ? options.pacerSpeed : options.pacerPace) = value;
    } else if (mode == 3 && rateField_ != nullptr) {
        const std::optional<double> typed =
            GoalFieldRow::ReadInRange(TargetRange(mode, miles), *rateField_);
        if (!typed) return;
        options.pacerFrequency = int(*typed);
    } else {
        return;
    }
    Changed();
}

PEDOMETER_SCREEN("pacer", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* pacer = new PacerForm();
    pacer->Initialize();
    return pacer;
});
