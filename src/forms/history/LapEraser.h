#pragma once

class StatisticsManager;

// The erase of the history screens, for one lap: a stored lap is deleted, but the lap
// being recorded now is only emptied (through the statistics manager, which keeps
// recording into it). GUI thread only, like the statistics manager's lap changes.
class LapEraser {
public:
    explicit LapEraser(StatisticsManager& statistics) : statistics_(statistics) {}

    // The id of the lap being recorded now, or -1 when there is none.
    int RecordingLapId() const;
    void Erase(int lapId) const;

private:
    StatisticsManager& statistics_;
};
