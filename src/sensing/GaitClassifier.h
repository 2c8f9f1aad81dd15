#pragma once

#include <cstdint>

// The gait of each step the adaptive detector counts: walk (1), jog (2) or run (3), from
// the cadence (steps a minute over the last few steps) together with the intensity (how
// far the acceleration swings within a step, in g).
//
// Cadence is what tells walking from running; published ranges:
//  - Walking: about 100 steps a minute is moderate walking and about 130 vigorous, brisk
//    walking (Tudor-Locke C. et al., "How fast is fast enough? Walking cadence (steps/min)
//    as a practical estimate of intensity in adults: a narrative review", Br J Sports Med
//    52 (2018) 776-788). Adults switch from walking to running at about 2 m/s, near
//    140 steps a minute.
//  - Running: self-chosen running cadences lie around 160-180 steps a minute (Heiderscheit
//    B. C. et al., "Effects of step rate manipulation on joint mechanics during running",
//    Med Sci Sports Exerc 43 (2011) 296-302; Cavanagh P. R., Kram R., "Stride length in
//    distance running", Med Sci Sports Exerc 21 (1989) 467-479); slow running (jogging)
//    starts at about 140.
// So below kJogCadence every step is a walk. Above it the intensity decides too: a very
// brisk walk or a racewalk can reach 140-150 steps a minute, but only running has a
// flight phase, whose landings shake the phone much harder than a walk's heel strikes.
// The cadence and intensity are averaged over the last kSteps steps, so a single odd
// step changes nothing.
//
// Pure computation, owned by the adaptive detector's thread.
class GaitClassifier {
public:
    static constexpr int kWalk = 1;
    static constexpr int kJog = 2;
    static constexpr int kRun = 3;
    static constexpr float kJogCadence = 140.0f;  // steps a minute
    static constexpr float kRunCadence = 160.0f;
    static constexpr float kJogIntensity = 1.2f;  // g, peak to trough within a step
    static constexpr float kRunIntensity = 1.8f;
    static constexpr int kSteps = 4;               // steps the averages cover
    static constexpr float kTickSeconds = 0.03f;  // the detector's time unit

    // The gait of a movement at `cadence` steps a minute swinging by `intensity` g.
    static int Classify(float cadence, float intensity);

    // A footfall at tick `tick` (ticks never go back) whose step swung by `intensity` g;
    // returns its gait.
    int OnStep(int64_t tick, float intensity);
    // The walk was broken off: the next step starts a new average.
    void Restart() { count = 0; }

    // Over the steps heard since the last restart (0 before two of them).
    float Cadence() const;
    float Intensity() const;

private:
    int64_t ticks[kSteps + 1] = {};       // the latest footfalls, a ring
    float intensities[kSteps + 1] = {};  // and their steps' intensities
    int count = 0;                       // steps in the ring, up to kSteps + 1
    int newest = -1;
};
