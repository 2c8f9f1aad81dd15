#pragma once

#include "DAOSygnal.h"

class DatabaseConnection;

// The goal alarm's progress of the day (SygnalValues, statistics database), with
// today's laps entered by hand counted in when read and left out when stored.
// PedometerDBManager forwards to it and documents each call.
class AlarmStore {
public:
    explicit AlarmStore(DatabaseConnection& statistics);

    DAOSygnal GetTodaySygnal();
    void UpdateSygnal(const DAOSygnal& sygnal);
    void ClearSygnals();

private:
    DatabaseConnection& statistics_;
};
