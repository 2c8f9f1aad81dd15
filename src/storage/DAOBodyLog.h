#pragma once

#include <QDateTime>

#include "DbDateTime.h"

// One day's body measurements: a row of BODYLOGS. 0.0 means "not measured that day".
class DAOBodyLog {
public:
    double weight = 0.0;                      // kg
    double chest = 0.0;                       // cm
    double waist = 0.0;                       // cm
    double hip = 0.0;                         // cm
    QDateTime logDate = DbDateTime::Unset();  // the day at 00:00:00
};
