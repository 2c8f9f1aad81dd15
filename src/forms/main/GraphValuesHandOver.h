#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "CrossThreadTrigger.h"

// Carries graph series from any thread to the thread that made it (the GUI thread).
//
// The updater thread computes a new series every five seconds; the graph only ever
// needs the newest one, so series posted before the GUI thread gets round to them
// fold into the latest. A series posted on the owner thread itself is delivered at
// once, and any older one still waiting is dropped, so deliveries keep the order of
// the posts.
class GraphValuesHandOver {
public:
    struct Delivery {
        std::vector<double> values;
        bool updateGraphic = false;
    };

    // `deliver` runs on the owner thread.
    explicit GraphValuesHandOver(std::function<void(Delivery)> deliver);
    GraphValuesHandOver(const GraphValuesHandOver&) = delete;
    GraphValuesHandOver& operator=(const GraphValuesHandOver&) = delete;

    // Any thread, while this object lives.
    void Post(std::vector<double> values, bool updateGraphic);

private:
    void DeliverPending();

    std::function<void(Delivery)> deliver_;
    std::mutex mutex_;
    std::optional<Delivery> pending_;
    CrossThreadTrigger trigger_;
};
