#include "AccelerometerTips.h"

#include <QLinearGradient>
#include <QPainter>

#include "AppResource.h"
#include "Metronome.h"
#include "ScreenDirectory.h"

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
    const QPixmap* picture = GetBackgroundImage();
    // The drawing leaves its bottom 60 of 800 units for the soft keys; while the rest fits,
    // it is drawn as it is.
    if (picture == nullptr || picture->height() * 740 / 800 <= height()) {
        return PedometerForm::OnDraw(painter);
    }
    // The picture's own dark gradient fills the sides left free by the narrower fit.
    QLinearGradient sides(0, 0, 0, height());
    sides.setColorAt(0.0, QColor(0x13, 0x21, 0x3A));
    sides.setColorAt(0.55, QColor(0x0B, 0x12, 0x22));
    sides.setColorAt(1.0, QColor(0x05, 0x08, 0x0F));
    painter.fillRect(rect(), sides);
    const QSize fitted = picture->size().scaled(size(), Qt::KeepAspectRatio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRect(QPoint((width() - fitted.width()) / 2, 0), fitted), *picture);
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
