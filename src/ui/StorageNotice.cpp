#include "StorageNotice.h"

#include <algorithm>
#include <cmath>

#include <QEvent>

#include "AppResource.h"
#include "PedometerDBManager.h"
#include "SensorStatus.h"
#include "TivUtils.h"

namespace {
constexpr int kRefreshMs = 2000;
}

StorageNotice::StorageNotice(QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setAutoFillBackground(true);
    setStyleSheet(QStringLiteral("background:#b3261e; color:white; padding:4px;"));
    QFont small = font();
    small.setPixelSize(std::max(11, int(std::lround(16 * TivUtils::GetScale()))));
    setFont(small);
    connect(&timer_, &QTimer::timeout, this, &StorageNotice::OnTimer);
    timer_.start(kRefreshMs);
    Refresh();
}

// A hidden window needs no notice: the polling stops until the window shows again, so
// that counting in the background does not wake the GUI thread for it.
void StorageNotice::OnTimer() {
    QWidget* top = window();
    if (top != this && !top->isVisible()) {
        timer_.stop();
        if (watchedWindow_ != top) {
            if (watchedWindow_ != nullptr) watchedWindow_->removeEventFilter(this);
            watchedWindow_ = top;
            top->installEventFilter(this);
        }
        return;
    }
    Refresh();
}

bool StorageNotice::eventFilter(QObject* watched, QEvent* event) {
    if (watched == watchedWindow_ && event->type() == QEvent::Show && !timer_.isActive()) {
        timer_.start(kRefreshMs);
        Refresh();
    }
    return QLabel::eventFilter(watched, event);
}

void StorageNotice::Refresh() {
    const DatabaseStatus problem = PedometerDBManager::GetInstance().SavingProblem();
    const bool failedLater = problem.usable();
    const QString why = failedLater ? problem.lastFailure : problem.error;
    QString key = failedLater ? QStringLiteral("storage__ Recording is not being saved: %@")
                              : QStringLiteral("storage__ Nothing will be saved: %@");
    QString detail = why;
    if (why.isEmpty() && problem.path.isEmpty()) SensorStatus::Current(&key, &detail);
    if (key.isEmpty()) {
        hide();
        return;
    }
    setText(AppResource::GetInstance().GetString(key).replace(QLatin1String("%@"), detail));
    if (parentWidget() != nullptr) {
        setFixedWidth(parentWidget()->width());
        adjustSize();
    }
    raise();
    show();
}
