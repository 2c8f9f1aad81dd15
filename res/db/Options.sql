-- Settings database (Options.db3): one row in each table.
-- Flags are integers; only 1 counts as set.

-- Account settings for sharing and export: empty until the user enters them.
CREATE TABLE SOCIAL (
  EXPORT TEXT,
  SHARE TEXT,
  TWIT_LOGIN TEXT,
  TWIT_PASS TEXT,
  FACEB_LOGIN TEXT,
  FACEB_PASS TEXT
);
INSERT INTO SOCIAL (EXPORT, SHARE, TWIT_LOGIN, TWIT_PASS, FACEB_LOGIN, FACEB_PASS)
  VALUES ('', '', '', '', '', '');

-- Body profile: every value unset (-1), so the body model's defaults apply
-- (172 cm, 68 kg, age 30, step lengths from the height, standard sensitivities).
CREATE TABLE BODY (
  MEN INTEGER,
  AGE INTEGER,
  HEIGHT REAL,
  WEIGHT REAL,
  WALK_SIZE REAL,
  JOG_SIZE REAL,
  RUN_SIZE REAL,
  WALK_COEF REAL,
  JOG_COEF REAL,
  RUN_COEF REAL
);
INSERT INTO BODY (MEN, AGE, HEIGHT, WEIGHT, WALK_SIZE, JOG_SIZE, RUN_SIZE,
                  WALK_COEF, JOG_COEF, RUN_COEF)
  VALUES (-1, -1, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0, -1.0);

-- Sound switches: no step sound; button clicks, start sound, countdown ticks and
-- the pacer beat on (the pacer itself starts switched off).
CREATE TABLE SOUNDS (
  STEPS INTEGER,
  BUTTONS INTEGER,
  START INTEGER,
  COUNTDOWN INTEGER,
  METRONOM INTEGER
);
INSERT INTO SOUNDS (STEPS, BUTTONS, START, COUNTDOWN, METRONOM) VALUES (0, 1, 1, 1, 1);

-- Display, pacer and alarm settings. Metric units, speed rather than pace, BMI
-- shown, a 5-second countdown, first start not yet completed, steps and the step
-- rate graph on the main screen. The pacer is off, with targets of a brisk walk
-- (5 km/h, 12 min/km, 110 steps/min) and tolerances of 0.5 km/h, 1 min/km and
-- 5 steps/min. The alarm is stopped on calories (state 0) with thresholds of
-- 300 kcal, 5 km, 30 minutes and 10,000 steps. Locking the screen does not start recording.
CREATE TABLE SCREEN (
  MEASURMENT_SYSTEM INTEGER,
  TEMP_PRIOR_SPEED INTEGER,
  SHOW_BMI INTEGER,
  COUNT_DOWN_TIME INTEGER,
  FIRST_STATR INTEGER,
  MAIN_VALUES INTEGER,
  MAIN_GRAPHIC INTEGER,
  PACER_TYPE INTEGER,
  PACER_OFF_ACT INTEGER,
  PACER_DIFF INTEGER,
  PACER_SPEED REAL,
  PACER_TEMP REAL,
  PACER_FREQ INTEGER,
  PACER_DIF_SPEED REAL,
  PACER_DIF_TEMP REAL,
  PACER_DIF_FREQ INTEGER,
  SYGNAL_TYPE INTEGER,
  SYGNAL_CALORIES INTEGER,
  SYGNAL_DISTANCE REAL,
  SYGNAL_ACTIVITY INTEGER,
  START_ON_BLOCK INTEGER,
  SYGNAL_STEPS INTEGER DEFAULT 10000
);
INSERT INTO SCREEN VALUES (
  0,     -- MEASURMENT_SYSTEM: metric
  0,     -- TEMP_PRIOR_SPEED: speed
  1,     -- SHOW_BMI
  5,     -- COUNT_DOWN_TIME, seconds
  1,     -- FIRST_STATR
  0,     -- MAIN_VALUES: steps
  0,     -- MAIN_GRAPHIC: step rate
  0,     -- PACER_TYPE: off
  1,     -- PACER_OFF_ACT: silent while standing
  0,     -- PACER_DIFF: beat always
  5.0,   -- PACER_SPEED, km/h
  12.0,  -- PACER_TEMP, min/km
  110,   -- PACER_FREQ, steps/min
  0.5,   -- PACER_DIF_SPEED, km/h
  1.0,   -- PACER_DIF_TEMP, min/km
  5,     -- PACER_DIF_FREQ, steps/min
  0,     -- SYGNAL_TYPE: calories, stopped
  300,   -- SYGNAL_CALORIES, kcal
  5.0,   -- SYGNAL_DISTANCE, km
  30,    -- SYGNAL_ACTIVITY, minutes
  0,     -- START_ON_BLOCK
  10000  -- SYGNAL_STEPS
);

-- Settings added beyond the original record (detector, sensor, accounts, ...), one row
-- per name. Created on first write in files seeded before it existed.
CREATE TABLE Preferences (
  name TEXT PRIMARY KEY,
  value TEXT NOT NULL
);

-- The layout version (PRAGMA user_version): the number of upgrades the app knows,
-- all of which this file already has.
PRAGMA user_version = 2;
