#pragma once

#include "PedometerForm.h"

// Where to carry the phone: one picture per language, named by the text
// "acc_advice_file", shown as the screen's background, with a Back key. The picture is
// drawn for a 480 x 800 screen; on a screen of another shape (320 x 480) it is shown
// whole, fitted to the height and centred, rather than cut off under the soft keys.
//
// Leaving the screen (the Back soft key, the phone's back key) and every other action
// re-evaluate the pacer (Metronome::Update). Opened from the main screen's info button
// ("tips-carry").
class AccelerometerTips : public PedometerForm {
    Q_OBJECT
public:
    explicit AccelerometerTips(QWidget* parent = nullptr);

    // Names the screen. Always true.
    bool Initialize();
    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;
    void OnFormBackRequested(TivForm& source) override;

protected:
    bool OnDraw(QPainter& painter) override;
};
