#pragma once

#include <QObject>
#include <QPointer>

// A non-owning pointer to a listener interface that turns null when the listener, if
// it is a QObject, is destroyed. Controls keep their delegates this way, so a screen
// torn down before one of its controls leaves no dangling call behind. A listener that
// is not a QObject must outlive the control, as with a plain pointer.
template <class T>
class DelegatePointer {
public:
    DelegatePointer() = default;
    explicit DelegatePointer(T* listener) { Set(listener); }

    void Set(T* listener) {
        listener_ = listener;
        // Cross-cast while the listener is alive; only the guard is consulted later.
        guard_ = dynamic_cast<QObject*>(listener);
        guarded_ = !guard_.isNull();
    }
    T* Get() const { return guarded_ && guard_.isNull() ? nullptr : listener_; }
    // The address it was given, alive or not: for identity tests only.
    const T* Address() const { return listener_; }
    bool IsGone() const { return guarded_ && guard_.isNull(); }

private:
    T* listener_ = nullptr;
    QPointer<QObject> guard_;
    bool guarded_ = false;
};
