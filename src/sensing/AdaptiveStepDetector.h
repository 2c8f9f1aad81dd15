#pragma once

#include <cstdint>

#include "GaitClassifier.h"

// A step detector that adapts to how hard the phone is shaken, so that a gently carried
// phone and one bouncing in a back pocket both count one step per footfall.
//
// Stages, one job each (a sample is one accelerometer reading in g, about every 30 ms):
//  1. Magnitude minus a slow running mean: removes gravity whatever way the phone is held.
//  2. Moving average over a few samples: a footfall becomes one smooth hump; the sharp
//     double spikes of a pocket or the jitter of a hand are merged away.
//  3. Peaks of that hump that rise above the trough before them by more than a share of
//     the recent steps' rise (and more than a fixed noise floor): adapts to the carrying
//     position, ignores the small humps between steps. Six seconds without a footfall
//     forget that rise, so a jolt does not silence the walk after it. Peaks closer
//     together than the shortest step period are one step (the higher one wins).
//  4. Regularity gate: a step only counts once it belongs to a run of regular steps (a
//     few in a row, each within the longest plausible step period of the one before).
//     Single bumps, a pick-up or typing never form such a run. Within a walk, a gap of
//     about two step periods holds a footfall the phone did not show (too faint, or
//     between the samples of a slow sensor): no one skips a step, so it counts. A slow
//     sensor shows each footfall up to a sample later, so its gaps may be that much longer.
//  5. Gait: each step is a walk, jog or run by the cadence of the last few steps and how far
//     the acceleration swung within them (GaitClassifier).
// Each step is decided at most 1.5 s after its footfall: at an ordinary cadence the first
// step of a walk is confirmed by the two after it (a step that would be later, at the start
// of a slow walk, is not counted).
//
// Time runs in 30 ms ticks: a sensor slower than the ticks has its latest sample heard
// again on a tick without a new one (QuorPedometer::OnTickWithoutSample), so the step
// periods below hold at any sample rate.
//
// Pure computation: no allocation, no threads, no locks; the caller's thread owns it.
// Used by QuorPedometer (when the "adaptive" detector is chosen), the tools and tests.
class AdaptiveStepDetector {
public:
    // Smoothing, threshold, floor and merge share were chosen from the recorded walks
    // (and the floor from the not-walking recordings) by scripts/tune_adaptive.py; the
    // others are set from the physics of walking, see there.
    struct Parameters {
        int smoothingSamples = 9;        // moving-average length, 1..kMaxSmoothing
        float relativeThreshold = 0.4f;  // share of the recent steps' rise a step needs
        float noiseFloor = 0.10f;        // smallest rise (g) that can be a step
        int minStepSamples = 10;         // 300 ms: no one steps faster than 3.3 per second
        float mergeShare = 0.7f;         // while walking, peaks this share of a step apart merge
        int maxMergeSamples = 12;     // but never further apart than 360 ms (80 % of a brisk step)
        int maxStepSamples = 40;      // 1.2 s: a longer pause ends the walk
        int confirmSteps = 3;         // regular steps in a row before any counts
        bool fillMissedSteps = true;  // count the footfall in a two-step gap of a walk
        float baselineRate = 0.03f;   // running-mean weight: about a one-second memory
        float riseRate = 0.25f;       // weight of the newest step in the recent rise
    };
    static constexpr int kMaxSmoothing = 16;  // a power of two: ring positions are masked
    static constexpr int kMaxConfirm = 8;
    // Samples between a footfall and the latest sample its step may be decided at.
    static constexpr int kMaxDecisionDelay = 50;
    // Samples without a footfall after which the recent steps' rise is forgotten (6 s).
    static constexpr int kRiseMemory = 200;

    explicit AdaptiveStepDetector(const Parameters& parameters);
    AdaptiveStepDetector() : AdaptiveStepDetector(Parameters{}) {}

    // Parameters are clamped into their working ranges; true if they were usable as given.
    static bool Sanitise(Parameters& parameters);

    // One sample in g. Returns how many steps were decided at it (0 .. kMaxConfirm);
    // DecidedStep(0 .. n-1) are their footfalls (sample indices, the first sample is 0),
    // oldest first, valid until the next call.
    int OnSample(float x, float y, float z);
    int64_t DecidedStep(int i) const { return decided[i]; }
    // Their gaits: 1 walk, 2 jog, 3 run.
    int DecidedGait(int i) const { return decidedGaits[i]; }

    // Forgets everything heard so far, as if newly made.
    void Reset();

    int64_t SampleCount() const { return sampleCount; }
    // The recent step period in samples (0 until a walk was seen).
    int StepPeriod() const { return period; }
    bool IsWalking() const { return walking; }

private:
    struct Candidate {
        int64_t sample;
        float height;
        float rise;
        float swing;  // raw peak to trough since the previous footfall, in g
    };
    void finishCandidate();
    int mergeWindow() const;
    void decide(int64_t sample, float swing);

    Parameters p;

    int64_t sampleCount = 0;
    float baseline = 0.0f;
    double smoothSum = 0.0;  // double: millions of adds and subtracts must not drift
    float smoothRing[kMaxSmoothing] = {};
    float previous = 0.0f;        // smoothed value one sample ago
    float beforePrevious = 0.0f;  // and two samples ago
    float lastMagnitude = 0.0f;   // of the latest reading, to see it repeated
    int ticksSinceNew = 0;        // samples since the reading last changed
    float sampleSpacing = 1.0f;   // running mean of that, in samples: the sensor's interval
    float trough = 0.0f;          // lowest smoothed value since the last peak
    float recentRise = 0.0f;      // running mean of the counted steps' rises (0: none yet)
    float swingHigh = 0.0f;       // highest and lowest gravity-free magnitude since the
    float swingLow = 0.0f;        // last candidate began

    bool hasCandidate = false;
    Candidate candidate{};
    int64_t lastStepSample = -1;  // the previous footfall that passed stage 3
    int heldCount = 0;
    int64_t held[kMaxConfirm] = {};
    GaitClassifier gait;
    bool walking = false;
    int period = 0;

    int decidedCount = 0;
    int64_t decided[kMaxConfirm] = {};
    int decidedGaits[kMaxConfirm] = {};
};
