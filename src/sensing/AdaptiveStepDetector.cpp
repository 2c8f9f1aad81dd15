#include "AdaptiveStepDetector.h"

#include <algorithm>
#include <cmath>

AdaptiveStepDetector::AdaptiveStepDetector(const Parameters& parameters) : p(parameters) {
    Sanitise(p);
}

bool AdaptiveStepDetector::Sanitise(Parameters& q) {
    const Parameters given = q;
    q.smoothingSamples = std::clamp(q.smoothingSamples, 1, kMaxSmoothing);
    q.confirmSteps = std::clamp(q.confirmSteps, 1, kMaxConfirm);
    q.minStepSamples = std::clamp(q.minStepSamples, 1, kMaxDecisionDelay / 2);
    q.maxStepSamples = std::clamp(q.maxStepSamples, q.minStepSamples, 1000);
    q.maxMergeSamples = std::clamp(q.maxMergeSamples, q.minStepSamples, kMaxDecisionDelay / 2);
    // A share that is not a number gets its default.
    const auto inRange = [](float v, float lo, float hi, float fallback) {
        return std::isnan(v) ? fallback : std::clamp(v, lo, hi);
    };
    const Parameters d;
    q.relativeThreshold = inRange(q.relativeThreshold, 0.0f, 1.0f, d.relativeThreshold);
    q.noiseFloor = inRange(q.noiseFloor, 0.0f, 10.0f, d.noiseFloor);
    q.baselineRate = inRange(q.baselineRate, 0.0001f, 1.0f, d.baselineRate);
    q.riseRate = inRange(q.riseRate, 0.0001f, 1.0f, d.riseRate);
    q.mergeShare = inRange(q.mergeShare, 0.0f, 1.0f, d.mergeShare);
    return q.smoothingSamples == given.smoothingSamples && q.confirmSteps == given.confirmSteps &&
           q.minStepSamples == given.minStepSamples && q.maxStepSamples == given.maxStepSamples &&
           q.relativeThreshold == given.relativeThreshold && q.noiseFloor == given.noiseFloor &&
           q.baselineRate == given.baselineRate && q.riseRate == given.riseRate &&
           q.mergeShare == given.mergeShare && q.maxMergeSamples == given.maxMergeSamples;
}

void AdaptiveStepDetector::Reset() {
    *this = AdaptiveStepDetector(p);
}

int AdaptiveStepDetector::OnSample(float x, float y, float z) {
    decidedCount = 0;
    const int64_t n = sampleCount++;
    const float m = std::sqrt(x * x + y * y + z * z);
    // A sensor slower than the ticks has its reading heard again on the ticks between, so
    // the ticks from one reading to the next are its interval. Counted up to four (8 Hz):
    // the unchanging reading of a phone lying still says nothing about the rate.
    ++ticksSinceNew;
    if (m != lastMagnitude) {
        sampleSpacing += 0.1f * (static_cast<float>(std::min(ticksSinceNew, 4)) - sampleSpacing);
        ticksSinceNew = 0;
        lastMagnitude = m;
    }

    // Stage 1: gravity out. The first sample starts the mean, so a phone that was lying
    // still does not begin with a jump of 1 g.
    if (n == 0) baseline = m;
    baseline += p.baselineRate * (m - baseline);
    const float d = m - baseline;
    swingHigh = std::max(swingHigh, d);
    swingLow = std::min(swingLow, d);

    // Stage 2: moving average.
    const int w = p.smoothingSamples;
    const int slot = static_cast<int>(n & (kMaxSmoothing - 1));
    smoothSum += d;
    smoothSum -= smoothRing[(n - w) & (kMaxSmoothing - 1)];  // zero for the first w samples
    smoothRing[slot] = d;
    const float s = static_cast<float>(smoothSum) / static_cast<float>(w);

    // Stage 3: the previous sample was a peak if it rose to it and does not rise further
    // (the first sample starts the mean, so the smoothed values begin at zero: no peak).
    if (previous > beforePrevious && previous >= s) {
        const float rise = previous - trough;
        const float threshold = std::max(p.noiseFloor, p.relativeThreshold * recentRise);
        if (rise > threshold) {
            // The footfall precedes the smoothed peak by half the averaging window.
            const int64_t at = n - 1 - (w - 1) / 2;
            if (hasCandidate && at - candidate.sample < mergeWindow()) {
                if (previous > candidate.height) {
                    candidate.sample = at;
                    candidate.height = previous;
                    candidate.rise = std::max(candidate.rise, rise);
                }
            } else {
                // The swing of the step that ends here, from the last candidate on.
                candidate = {at, previous, rise, swingHigh - swingLow};
                hasCandidate = true;
                swingHigh = d;
                swingLow = d;
            }
            trough = s;
        }
    }
    trough = std::min(trough, s);
    beforePrevious = previous;
    previous = s;

    // A candidate no later peak can replace any more is a footfall.
    const int64_t footfallTime = n - (w - 1) / 2;
    if (hasCandidate && footfallTime - candidate.sample >= mergeWindow()) finishCandidate();
    // The recent rise is the walk's: after six seconds without a footfall it is forgotten,
    // so that one jolt (a knock, a drop, a first reading of zero) cannot keep every later
    // step below its share for good. (Sooner would forget it in the pauses of a walk.)
    if (footfallTime - lastStepSample > kRiseMemory) recentRise = 0.0f;
    return decidedCount;
}

// Peaks closer than this are one footfall. While walking it follows the cadence, so the
// small bumps between the steps of a slow walk merge into the step; capped, so that a
// period that doubled after missed steps cannot go on swallowing real ones.
int AdaptiveStepDetector::mergeWindow() const {
    if (!walking) return p.minStepSamples;
    return std::clamp(static_cast<int>(p.mergeShare * static_cast<float>(period)), p.minStepSamples,
                      p.maxMergeSamples);
}

void AdaptiveStepDetector::finishCandidate() {
    hasCandidate = false;
    recentRise = recentRise == 0.0f ? candidate.rise
                                    : recentRise + p.riseRate * (candidate.rise - recentRise);
    decide(candidate.sample, candidate.swing);
}

// Stage 4: the regularity gate.
void AdaptiveStepDetector::decide(int64_t sample, float swing) {
    const int64_t gap = lastStepSample < 0 ? -1 : sample - lastStepSample;
    lastStepSample = sample;
    // Either end of a gap may be seen up to a sample late when the sensor is slower than
    // the ticks (12.5 Hz: 80 ms), so its longest two-step gap is two samples longer.
    const float slowSensorSlack = 10.0f * (sampleSpacing - 1.0f);
    if (walking && p.fillMissedSteps && gap * 5 >= period * 8 &&
        static_cast<float>(gap * 5) <= static_cast<float>(period * 12) + slowSensorSlack) {
        // Two step periods without a footfall in a steady walk: one foot landed where the
        // phone did not show it (too faint, or between the samples of a slow sensor).
        // It counts halfway, or as late as the decision allows. The period stays: halves
        // of gaps just under two periods would shorten it until ordinary gaps looked
        // like two steps too.
        const int64_t missed =
            std::max(sample - gap / 2, sampleCount - 1 - int64_t{kMaxDecisionDelay});
        decidedGaits[decidedCount] = gait.OnStep(missed, swing);
        decided[decidedCount++] = missed;
    } else if (gap < 0 || gap > p.maxStepSamples) {
        walking = false;
        heldCount = 0;
        gait.Restart();
    } else {
        period = period == 0 ? static_cast<int>(gap) : (3 * period + static_cast<int>(gap) + 2) / 4;
    }
    const int stepGait = gait.OnStep(sample, swing);
    if (walking) {
        decidedGaits[decidedCount] = stepGait;
        decided[decidedCount++] = sample;
        return;
    }
    held[heldCount++] = sample;
    if (heldCount < p.confirmSteps) return;
    // The walk is confirmed: count the held steps that are still recent enough, all of
    // the gait its cadence now shows (the first of them had no cadence yet).
    walking = true;
    const int64_t now = sampleCount - 1;
    for (int i = 0; i < heldCount; ++i) {
        if (now - held[i] > kMaxDecisionDelay) continue;
        decidedGaits[decidedCount] = stepGait;
        decided[decidedCount++] = held[i];
    }
    heldCount = 0;
}
