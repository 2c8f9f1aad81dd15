#include "WheightTips.h"

#include <QFile>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QScroller>
#include <cmath>

#include "AppPaths.h"
#include "AppResource.h"
#include "PedArticleArea.h"
#include "ScreenDirectory.h"
#include "TivUtils.h"

WheightTips::WheightTips(QWidget* parent) : PedometerForm(parent) {}

bool WheightTips::Initialize() {
    setObjectName(QStringLiteral("IDF_BODY_FORM"));
    return true;
}

QString WheightTips::ArticlePath() {
    return AppPaths::ResFile(
        AppResource::GetInstance().GetString(QStringLiteral("more__ loosing_weight_tips")) +
        QStringLiteral(".html"));
}

void WheightTips::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    ShowBackButton();
    SetTitleText(
        AppResource::GetInstance().GetString(QStringLiteral("more__ Loosing weight tips")));

    QString text;
    QFile file(ArticlePath());
    if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        text = QString::fromUtf8(file.readAll());
    } else {
        qWarning("WheightTips: cannot read %s: %s", qPrintable(file.fileName()),
                 qPrintable(file.errorString()));
    }

    scroll_ = new QScrollArea(this);
    const int top = GetClientTop() + TivUtils::Scaled(8);
    scroll_->setGeometry(TivUtils::Scaled(10), top,
                         TivUtils::Scaled(PedArticleArea::kWidth) + TivUtils::Scaled(8),
                         std::min(TivUtils::Scaled(700), height() - top));
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setStyleSheet(
        QStringLiteral("QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; }"
                       "QScrollBar:vertical { width: %1px; background: transparent; }"
                       "QScrollBar::handle:vertical { background: #3A4458; border-radius: %2px; }"
                       "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }")
            .arg(TivUtils::Scaled(6))
            .arg(TivUtils::Scaled(3)));
    // A finger drags the article up and down.
    QScroller::grabGesture(scroll_->viewport(), QScroller::LeftMouseButtonGesture);
    article_ = new PedArticleArea;
    article_->Initialize(text);
    scroll_->setWidget(article_);
    scroll_->show();
    SetGrowBandBelowHeader();
}

PEDOMETER_SCREEN("tips-weight", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* tips = new WheightTips();
    tips->Initialize();
    return tips;
});
