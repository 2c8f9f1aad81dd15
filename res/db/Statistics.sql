-- Statistics database (Statistics.db3): laps, their minutes and five-second
-- intervals, the goal alarm's progress, the body log and the goals.
--
-- Date-times are text "YYYY-MM-DD HH:MM:SS" in local time, which sorts and compares
-- chronologically, so ranges are selected with BETWEEN and ordered by these columns.
-- Flags are integers; only 1 counts as set.

-- Lap.manual is 1 for a lap entered by hand to correct its day: steps added, or steps
-- taken away from the lap that started a second before it (all values negative).
-- Lap.total* are the sums of the lap's minutes, kept by the triggers below on every
-- write, so the day totals and streaks read one row per lap instead of every minute.
CREATE TABLE Lap (
  id INTEGER PRIMARY KEY,
  startDate DATETIME,
  endDate DATETIME,   -- NULL while the lap is open
  techDate DATETIME,  -- the start day at 00:00:00
  manual INTEGER DEFAULT 0,
  totalSteps REAL DEFAULT 0.0,
  totalDistance REAL DEFAULT 0.0,
  totalCalories REAL DEFAULT 0.0,
  totalSeconds REAL DEFAULT 0.0
);
CREATE INDEX LapStartDate ON Lap (startDate);

-- Minute rows are created with only their key; the values start at zero.
CREATE TABLE LapMinutes (
  lapId INTEGER,
  lapMinute INTEGER,
  steps INTEGER DEFAULT 0,
  calories REAL DEFAULT 0.0,
  distance REAL DEFAULT 0.0,
  secondsCompleted INTEGER DEFAULT 0
);
CREATE INDEX LapMinutesLap ON LapMinutes (lapId, lapMinute);
-- The sums of each lap's minutes (Lap.total*) read this index alone, never the table.
CREATE INDEX LapMinutesTotals ON LapMinutes (lapId, steps, distance, calories,
                                             secondsCompleted);

-- Lap.total* follow every insert, change and removal of a minute, and a lap added to
-- minutes already there (an import) takes their sums: each is summed anew rather than
-- adjusted, so it is exactly what summing the minutes gives.
CREATE TRIGGER LapTotalsAfterMinuteInsert AFTER INSERT ON LapMinutes BEGIN
  UPDATE Lap SET (totalSteps, totalDistance, totalCalories, totalSeconds) =
    (SELECT total(steps), total(distance), total(calories), total(secondsCompleted)
     FROM LapMinutes WHERE lapId = Lap.id) WHERE id = NEW.lapId;
END;
CREATE TRIGGER LapTotalsAfterMinuteUpdate AFTER UPDATE ON LapMinutes BEGIN
  UPDATE Lap SET (totalSteps, totalDistance, totalCalories, totalSeconds) =
    (SELECT total(steps), total(distance), total(calories), total(secondsCompleted)
     FROM LapMinutes WHERE lapId = Lap.id) WHERE id IN (OLD.lapId, NEW.lapId);
END;
CREATE TRIGGER LapTotalsAfterMinuteDelete AFTER DELETE ON LapMinutes BEGIN
  UPDATE Lap SET (totalSteps, totalDistance, totalCalories, totalSeconds) =
    (SELECT total(steps), total(distance), total(calories), total(secondsCompleted)
     FROM LapMinutes WHERE lapId = Lap.id) WHERE id = OLD.lapId;
END;
CREATE TRIGGER LapTotalsAfterLapInsert AFTER INSERT ON Lap BEGIN
  UPDATE Lap SET (totalSteps, totalDistance, totalCalories, totalSeconds) =
    (SELECT total(steps), total(distance), total(calories), total(secondsCompleted)
     FROM LapMinutes WHERE lapId = Lap.id) WHERE id = NEW.id;
END;

-- Five-second intervals of the current lap only (emptied when a lap starts).
CREATE TABLE LastFiveMinutes (
  lapId INTEGER,
  currentSecond INTEGER DEFAULT 0,
  steps INTEGER DEFAULT 0,
  calories REAL DEFAULT 0.0,
  distance REAL DEFAULT 0.0,
  caloriesNoise REAL DEFAULT 0.0
);
CREATE INDEX LastFiveMinutesLap ON LastFiveMinutes (lapId);

-- Today's progress of the goal alarm: at most one row.
CREATE TABLE SygnalValues (
  sygnalDate DATETIME,
  calories REAL DEFAULT 0.0,
  distance REAL DEFAULT 0.0,
  activityTime INTEGER DEFAULT 0,
  steps INTEGER DEFAULT 0
);

-- One row per day with a measurement; 0.0 means "not measured that day".
CREATE TABLE BODYLOGS (
  logDate DATETIME,
  weight REAL DEFAULT 0.0,
  chest REAL DEFAULT 0.0,
  waist REAL DEFAULT 0.0,
  hip REAL DEFAULT 0.0
);

-- The goals: exactly one row.
--   targetActive 0 = no daily goal (1 distance, 2 calories, 3 activity, 4 steps);
--   daily goals of 300 kcal, 30 minutes, 5 km and 10,000 steps, ready when a goal
--   is chosen;
--   body targets unset (-1), wheightTarget 0 = none pursued yet.
CREATE TABLE TargetValues (
  targetActive INTEGER,
  calories INTEGER,
  activityTime INTEGER,
  distance REAL,
  wheight REAL,
  hips REAL,
  chest REAL,
  waist REAL,
  wheightTarget INTEGER,
  steps INTEGER DEFAULT 10000
);
INSERT INTO TargetValues
  (targetActive, calories, activityTime, distance, wheight, hips, chest, waist, wheightTarget,
   steps)
  VALUES (0, 300, 30, 5.0, -1.0, -1.0, -1.0, -1.0, 0, 10000);

-- The daily goal in force from a day on ("YYYY-MM-DD"): one row per day on which it
-- was changed, holding the kind (as targetActive) and its target in the kind's unit
-- (km, kcal, minutes, steps). A day's goal is the newest row not after it; days
-- before the first row had none. Streaks of days with the goal reached read it.
CREATE TABLE GoalHistory (
  since TEXT PRIMARY KEY,
  targetActive INTEGER,
  target REAL
);

-- The layout version (PRAGMA user_version): the number of upgrades the app knows,
-- all of which this file already has.
PRAGMA user_version = 4;
