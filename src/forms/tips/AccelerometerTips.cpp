#include "AccelerometerTips.h"

#include <QLinearGradient>
#include <QPainter>

#include "AppResource.h"
#include "Metronome.h"
#include "ScreenDirectory.h"
#include "TivUtils.h"

AccelerometerTips::AccelerometerTips(QWidget* parent) : PedometerForm(parent) {}

bool AccelerometerTips::Initialize() {
    setObjectName(QStringLiteral("ID_BACK_ONLY_FORM"));
    return true;
}

void AccelerometerTips::OnInitializing() {
    ShowBackButton();
    SetBackgroundImage(AppResource::GetInstance().GetString(QStringLiteral("acc_advice_file")));
}

bool AccelerometerTips::OnDraw(QPainter& painter) {
    const QSize reference = TivUtils::ReferenceSize(GetBackgroundName());
    if (reference.isEmpty()) return true;
    // The drawing leaves its bottom 60 of 800 units for the soft keys: its top 740 units
    // fit the screen whole, at the largest size that keeps its proportions, centred; the
    // frame's gradient (the picture's own) shows around it.
    const double fit = std::min(double(width()) / reference.width(),
                                height() * 800.0 / 740.0 / reference.height());
    const QSize fitted(int(reference.width() * fit), int(reference.height() * fit));
    painter.drawPixmap(QRect(QPoint((width() - fitted.width()) / 2, 0), fitted),
                       TivUtils::RenderPicture(GetBackgroundName(), fitted));
    return true;
}

void AccelerometerTips::OnActionPerformed(const QWidget& source, int actionId) {
    // The Back soft key arrives here and goes on to OnFormBackRequested, which updates.
    PedometerForm::OnActionPerformed(source, actionId);
    if (actionId != BACK_ACTION_ID) Metronome::GetInstance().Update();
}

void AccelerometerTips::OnFormBackRequested(TivForm& source) {
    PedometerForm::OnFormBackRequested(source);
    Metronome::GetInstance().Update();
}

PEDOMETER_SCREEN("tips-carry", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* tips = new AccelerometerTips();
    tips->Initialize();
    return tips;
});
