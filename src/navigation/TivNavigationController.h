#pragma once

#include <QPointer>
#include <QVector>
#include <atomic>

#include "TivForm.h"

class AppFrame;
class CountingEngine;

// The stack of screens: every change of the frame's current form goes through here.
//
// The stack does not own its forms, the frame does: a form popped off the stack is
// removed from the frame, which destroys it (deferred, see AppFrame::RemoveControl).
// The order of the calls is part of the design:
//   - pops (PopForm, PopTwoForms) remove the old forms first and then make the
//     revealed form current and tell it FormWillAppear();
//   - replacements (ExchangeFormForm, ExchangeTwoForms, PopToRootAndPush) push the new
//     form first, so it is current and told FormWillAppear(), and remove the old
//     forms afterwards, top-most first.
// The boolean arguments (an animation hint on the phone) are accepted and ignored.
//
// The root form never leaves the stack: a pop that would take it is refused with a
// warning. Use from the GUI thread.
//
// It also carries the application's counting engine (not owned; null where screens run
// without one), which ScreenDirectory hands to the screens that need it.
class TivNavigationController {
public:
    explicit TivNavigationController(AppFrame& frame, CountingEngine* engine = nullptr);
    // Forgets the stack; the forms stay with the frame, no longer pointing here.
    ~TivNavigationController();
    TivNavigationController(const TivNavigationController&) = delete;
    TivNavigationController& operator=(const TivNavigationController&) = delete;

    // Starts the stack with `root`. The caller adds the root form to the frame and makes
    // it current. Always 0.
    int InitWithRootForm(TivForm* root);

    void PushForm(TivForm* form);
    void PopForm(bool animated = true);
    void PopTwoForms(bool animated = true);
    void ExchangeTwoForms(TivForm* form, bool animated = true);
    void ExchangeFormForm(TivForm* form, bool animated = true);
    void PopToRootAndPush(TivForm* form);

    // The current screen (null before InitWithRootForm).
    TivForm* GetTopForm() const;
    int GetFormCount() const { return int(stack_.size()); }
    CountingEngine* GetEngine() const { return engine_; }
    // Tells the top screen only that the application goes to the background.
    void AppWillBePaused();

    // Whether the application is in the foreground; kept by the application object.
    static void SetOnForeground(bool onForeground) { isForeground.store(onForeground); }
    static bool IsForeground() { return isForeground.load(); }

private:
    TivForm* Pop();
    void Remove(TivForm* form);
    void Reveal();

    static std::atomic<bool> isForeground;

    AppFrame& frame_;
    CountingEngine* const engine_;
    QVector<QPointer<TivForm>> stack_;
};
