#pragma once

class QWidget;

// Told when the user slides the lock pane away. The main form implements it: it takes
// the pane off the screen (BlockPane::Dismiss) and leaves the locked state.
class UnblockListener {
public:
    virtual ~UnblockListener() = default;
    virtual void Unblock(QWidget* pane) = 0;
};
