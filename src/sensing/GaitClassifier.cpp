#include "GaitClassifier.h"

int GaitClassifier::Classify(float cadence, float intensity) {
    if (cadence < kJogCadence || intensity < kJogIntensity) return kWalk;
    return cadence >= kRunCadence && intensity >= kRunIntensity ? kRun : kJog;
}

int GaitClassifier::OnStep(int64_t tick, float intensity) {
    newest = (newest + 1) % (kSteps + 1);
    ticks[newest] = tick;
    intensities[newest] = intensity;
    if (count <= kSteps) ++count;
    return Classify(Cadence(), Intensity());
}

float GaitClassifier::Cadence() const {
    if (count < 2) return 0.0f;
    const int oldest = (newest + kSteps + 2 - count) % (kSteps + 1);
    const int64_t span = ticks[newest] - ticks[oldest];
    if (span <= 0) return 0.0f;
    return 60.0f * static_cast<float>(count - 1) / (static_cast<float>(span) * kTickSeconds);
}

// The oldest footfall only bounds the cadence's span: the intensities are those of the
// steps that end at the others.
float GaitClassifier::Intensity() const {
    if (count < 2) return 0.0f;
    float sum = 0.0f;
    for (int i = 0; i < count - 1; ++i) sum += intensities[(newest + kSteps + 1 - i) % (kSteps + 1)];
    return sum / static_cast<float>(count - 1);
}
