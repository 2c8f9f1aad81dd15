#include "GraphValuesHandOver.h"

GraphValuesHandOver::GraphValuesHandOver(std::function<void(Delivery)> deliver)
    : deliver_(std::move(deliver)), trigger_([this] { DeliverPending(); }) {}

void GraphValuesHandOver::Post(std::vector<double> values, bool updateGraphic) {
    Delivery delivery{std::move(values), updateGraphic};
    if (trigger_.IsOwnerThread()) {
        {
            std::lock_guard lock(mutex_);
            pending_.reset();
        }
        if (deliver_) deliver_(std::move(delivery));
        return;
    }
    {
        std::lock_guard lock(mutex_);
        pending_ = std::move(delivery);
    }
    trigger_.Trigger();
}

void GraphValuesHandOver::DeliverPending() {
    std::optional<Delivery> delivery;
    {
        std::lock_guard lock(mutex_);
        delivery.swap(pending_);
    }
    if (delivery && deliver_) deliver_(std::move(*delivery));
}
