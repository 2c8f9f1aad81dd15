#pragma once

class TivForm;

// Told when the user asks the current screen to go back with the phone's back key
// (Escape or Backspace on a keyboard), as opposed to tapping its back soft key.
class IFormBackEventListener {
public:
    virtual ~IFormBackEventListener() = default;
    virtual void OnFormBackRequested(TivForm& source) = 0;
};
