#pragma once

#include <QString>
#include <QVector>
#include <QWidget>

#include "DelegatePointer.h"
#include "IActionEventListener.h"
#include "IFormBackEventListener.h"
#include "IKeyEventListener.h"
#include "ReferenceLayout.h"

class TivNavigationController;

// A full-screen form that can sit on the navigation stack.
//
// The form carries what the phone's own forms carried and the frame (AppFrame) acts
// on: two soft keys (text, action id, listener), the option key (action id,
// listener), a back-key listener and the hardware-key listeners. The frame shows the
// current form's soft keys in its bottom bar and routes taps and keys to the
// listeners; listeners are not owned, and one that is a QObject is forgotten when
// destroyed.
//
// Life cycle: the frame calls OnInitializing() once, when the form is first added,
// and OnTerminating() when it removes the form, just before destroying it. The
// navigation controller tells the form FormWillAppear() each time it becomes the
// current screen and ProgramWillPause() when the application goes to the background
// while it is on top; all of these do nothing here.
class TivForm : public QWidget {
    Q_OBJECT
public:
    enum Softkey { SOFTKEY_0 = 0, SOFTKEY_1 = 1 };  // the left and the right soft key

    explicit TivForm(QWidget* parent = nullptr);
    ~TivForm() override;

    TivNavigationController* getNavigationController() const { return navigationController_; }
    void setNavigationController(TivNavigationController* controller) {
        navigationController_ = controller;
    }

    virtual void FormWillAppear() {}
    virtual void ProgramWillPause() {}
    virtual void ProgramWillResume() {}

    virtual void OnInitializing() {}
    virtual void OnTerminating() {}
    bool IsInitialized() const { return initialized_; }

    // The grow band: the range of reference y (480-wide layout, 740-high client area) that
    // takes the window's extra height, or gives up height on a short window. Controls
    // inside it stretch, controls below it move down (ReferenceLayout). Set it in
    // OnInitializing, round what benefits from height: a graph, a list, an article.
    // Without one the content keeps its reference height at the top. A band that
    // `onlyGrows` keeps its height on a short window (rows that would get too small to tap).
    void SetGrowBand(int top, int bottom, bool onlyGrows = false) {
        growBandTop_ = top;
        growBandBottom_ = bottom;
        growBandOnlyGrows_ = onlyGrows;
    }
    int GetGrowBandTop() const { return growBandTop_; }
    int GetGrowBandBottom() const { return growBandBottom_; }

    // Soft keys: a key with an empty text is not shown.
    void SetSoftkeyText(Softkey key, const QString& text);
    void SetSoftkeyActionId(Softkey key, int actionId) { softkeys_[key].actionId = actionId; }
    void AddSoftkeyActionListener(Softkey key, IActionEventListener* listener) {
        softkeys_[key].listener.Set(listener);
    }
    QString GetSoftkeyText(Softkey key) const { return softkeys_[key].text; }
    int GetSoftkeyActionId(Softkey key) const { return softkeys_[key].actionId; }
    IActionEventListener* GetSoftkeyActionListener(Softkey key) const {
        return softkeys_[key].listener.Get();
    }
    bool HasSoftkey(Softkey key) const { return !softkeys_[key].text.isEmpty(); }

    // The option key is shown once it has a listener.
    void SetOptionkeyActionId(int actionId) { optionkeyActionId_ = actionId; }
    void AddOptionkeyActionListener(IActionEventListener* listener);
    int GetOptionkeyActionId() const { return optionkeyActionId_; }
    IActionEventListener* GetOptionkeyActionListener() const { return optionkeyListener_.Get(); }
    bool HasOptionkey() const { return GetOptionkeyActionListener() != nullptr; }

    // The phone's back key reaches the form only through this listener: a form without
    // one (the root screen) ignores it.
    void SetFormBackEventListener(IFormBackEventListener* listener) { backListener_.Set(listener); }
    IFormBackEventListener* GetFormBackEventListener() const { return backListener_.Get(); }

    // Adding a listener twice keeps one registration.
    void AddKeyEventListener(IKeyEventListener& listener);
    void RemoveKeyEventListener(IKeyEventListener& listener);
    // The live listeners, in the order they were added.
    QVector<IKeyEventListener*> GetKeyEventListeners() const;

Q_SIGNALS:
    // A soft key or the option key changed: the frame redraws its bar.
    void SoftkeysChanged();

private:
    friend class AppFrame;

    struct SoftkeyState {
        QString text;
        int actionId = 0;
        DelegatePointer<IActionEventListener> listener;
    };

    TivNavigationController* navigationController_ = nullptr;
    bool initialized_ = false;
    int growBandTop_ = 0;
    int growBandBottom_ = 0;
    bool growBandOnlyGrows_ = false;
    // How the frame last laid the form's controls out.
    ReferenceLayout::Placement placement_;
    SoftkeyState softkeys_[2];
    int optionkeyActionId_ = 0;
    DelegatePointer<IActionEventListener> optionkeyListener_;
    DelegatePointer<IFormBackEventListener> backListener_;
    QVector<DelegatePointer<IKeyEventListener>> keyListeners_;
};
