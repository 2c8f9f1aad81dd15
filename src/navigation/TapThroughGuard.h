#pragma once

#include <QObject>
#include <QPointer>
#include <QtGlobal>

class QWidget;

// Keeps the second tap of a double tap from acting on a screen that the first tap opened.
//
// Qt reports the second press of two quick taps as a double click to whatever widget is
// under the finger by then. When the first tap opened a screen (a menu entry, a list row),
// that is an entry of the new screen, which would act as if tapped. The guard, installed
// on the application, drops a double click (and its release) aimed at a widget other than
// the one the first press went to. GUI thread only; removes itself when destroyed.
class TapThroughGuard : public QObject {
    Q_OBJECT
public:
    explicit TapThroughGuard(QObject* parent = nullptr);
    ~TapThroughGuard() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> pressed_;
    quint64 pressTime_ = 0;  // tells the first delivery of a press from its climb up
    bool dropRelease_ = false;
};
