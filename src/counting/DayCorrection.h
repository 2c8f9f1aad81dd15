#pragma once

#include <QDateTime>
#include <memory>

class Body;
class DAOLap;

// Laps entered by hand to correct a day's history (the phone left at home on a walk,
// steps counted in a car), built without touching the database: the caller stores them
// (PedometerDBManager::ImportHistory) and removes them like any lap. Both kinds are
// marked `manual`, so every total counts them and the history can tell them apart.
// Pure arithmetic on the given records, usable on any thread.
class DayCorrection {
public:
    // Steps a minute of each gait (1 walk, 2 jog, 3 run), within the ranges the step
    // detector's gait rules use; other codes walk.
    static int Cadence(int gait);
    // The steps over `metres` at the gait's step length; 0 for no distance.
    static int StepsForDistance(double metres, int gait, const Body& body);
    // `steps` at `gait` from `start`: a minute record per minute at the gait's cadence
    // (the last one partial), numbered from 1, with the distance from the gait's step
    // length and the calories at that speed from the body model. A walk that would run
    // past midnight starts early enough to end by it, so it stays on its day. Null for
    // fewer than one step or more than a day can hold.
    static std::unique_ptr<DAOLap> Added(const QDateTime& start, int steps, int gait,
                                         const Body& body);
    // Takes `steps` (at most those the lap counted) away from `lap`: a lap starting a
    // second after it whose minutes mirror the lap's, each lowered by the share taken
    // (steps and seconds rounded so that they add up exactly and no minute goes below
    // zero), all values negative. Null when there is nothing to take.
    static std::unique_ptr<DAOLap> TakenAway(const DAOLap& lap, int steps);
};
