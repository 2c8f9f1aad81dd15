#include "TivNavigationController.h"

#include "AppFrame.h"

std::atomic<bool> TivNavigationController::isForeground{true};

TivNavigationController::TivNavigationController(AppFrame& frame, CountingEngine* engine)
    : frame_(frame), engine_(engine) {}

TivNavigationController::~TivNavigationController() {
    // The forms outlive the stack (the frame owns them): leave none pointing back here.
    for (const QPointer<TivForm>& form : stack_) {
        if (form && form->getNavigationController() == this) form->setNavigationController(nullptr);
    }
}

int TivNavigationController::InitWithRootForm(TivForm* root) {
    stack_.clear();
    stack_.append(root);
    if (root != nullptr) root->setNavigationController(this);
    return 0;
}

void TivNavigationController::PushForm(TivForm* form) {
    if (form == nullptr) {
        qWarning("TivNavigationController: refusing to push a null form");
        return;
    }
    stack_.append(form);
    form->setNavigationController(this);
    frame_.AddControl(*form);
    frame_.SetCurrentForm(*form);
    frame_.RequestRedraw(true);
    form->FormWillAppear();
    frame_.PlaceForm(*form);  // what it built on appearing
}

TivForm* TivNavigationController::Pop() {
    return stack_.takeLast().data();
}

void TivNavigationController::Remove(TivForm* form) {
    if (form != nullptr) frame_.RemoveControl(*form);
}

void TivNavigationController::Reveal() {
    TivForm* revealed = GetTopForm();
    if (revealed == nullptr) return;
    frame_.SetCurrentForm(*revealed);
    frame_.RequestRedraw(true);
    revealed->FormWillAppear();
    frame_.PlaceForm(*revealed);
}

void TivNavigationController::PopForm(bool) {
    if (stack_.size() < 2) {
        qWarning("TivNavigationController: the root screen cannot be popped");
        return;
    }
    TivForm* old = Pop();
    Remove(old);
    Reveal();
}

void TivNavigationController::PopTwoForms(bool) {
    if (stack_.size() < 3) {
        qWarning("TivNavigationController: popping two screens would pop the root");
        return;
    }
    TivForm* first = Pop();
    TivForm* second = Pop();
    Remove(first);
    Remove(second);
    Reveal();
}

void TivNavigationController::ExchangeTwoForms(TivForm* form, bool) {
    if (stack_.size() < 3 || form == nullptr) {
        qWarning("TivNavigationController: exchanging two screens needs two above the root");
        return;
    }
    TivForm* first = Pop();
    TivForm* second = Pop();
    PushForm(form);
    Remove(first);
    Remove(second);
}

void TivNavigationController::ExchangeFormForm(TivForm* form, bool) {
    if (stack_.size() < 2 || form == nullptr) {
        qWarning("TivNavigationController: the root screen cannot be exchanged");
        return;
    }
    TivForm* old = Pop();
    PushForm(form);
    Remove(old);
}

void TivNavigationController::PopToRootAndPush(TivForm* form) {
    if (form == nullptr) {
        qWarning("TivNavigationController: refusing to push a null form");
        return;
    }
    QVector<TivForm*> popped;
    while (stack_.size() >= 2) popped.append(Pop());
    PushForm(form);
    for (TivForm* old : popped) Remove(old);
}

TivForm* TivNavigationController::GetTopForm() const {
    return stack_.isEmpty() ? nullptr : stack_.last().data();
}

void TivNavigationController::AppWillBePaused() {
    if (TivForm* top = GetTopForm()) top->ProgramWillPause();
}
