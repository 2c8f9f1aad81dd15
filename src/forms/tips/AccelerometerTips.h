#pragma once

#include "PedometerForm.h"

// Where to carry the phone: one picture per language, named by the text
// "acc_advice_file", shown as the screen's background, with a Back key.
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
};
