#pragma once

#include <atomic>
#include <variant>
#include <vector>

#include "PedometerOptions.h"

// Where each settings field is stored: the table (SOUNDS or SCREEN) and column of the
// settings database, and the field of PedometerOptions it loads into and saves from.
// The one list of the 27 fields; loading and saving both follow it.
class OptionsColumns {
public:
    // A stored flag counts as set only when it is exactly 1, and is saved as 1 or 0.
    using Member = std::variant<std::atomic<bool> PedometerOptions::*,
                                std::atomic<int> PedometerOptions::*,
                                std::atomic<double> PedometerOptions::*>;
    struct Column {
        const char* table;
        const char* name;
        Member member;
    };

    static const std::vector<Column>& All();
};
