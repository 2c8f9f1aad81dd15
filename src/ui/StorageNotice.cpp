#include "StorageNotice.h"

#include <algorithm>
#include <cmath>

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
    connect(&timer_, &QTimer::timeout, this, &StorageNotice::Refresh);
    timer_.start(kRefreshMs);
    Refresh();
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
