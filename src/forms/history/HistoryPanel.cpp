#include "HistoryPanel.h"

#include <QScrollBar>
#include <QScrollPrepareEvent>
#include <QScroller>
#include <cmath>

#include "AppResource.h"
#include "GraphicHistory.h"
#include "HistoryTotals.h"
#include "ReferenceLayout.h"
#include "TivButton.h"
#include "TivImagePanel.h"
#include "TivLabel.h"
#include "TivSlider.h"
#include "TivUtils.h"

namespace {
constexpr int kMargin = 10;
constexpr int kRowHeight = 52;
constexpr int kButtonHeight = 64;
constexpr int kGraphHeight = 170;
constexpr int kInner = ReferenceLayout::kWidth - 2 * kMargin;  // a row's width

TivLabel* MakeLabel(QWidget* parent, const QString& text, int size, const QColor& color,
                    int style = TivUtils::FONT_STYLE_PLAIN) {
    auto* label = new TivLabel(parent);
    label->Initialize();
    label->SetText(text);
    label->SetFontSize(TivUtils::Scaled(size));
    label->SetFontStyle(style);
    label->SetTextColor(color);
    label->SetNeedOutline(false);
    label->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    label->show();
    return label;
}

}  // namespace

HistoryPanel::HistoryPanel(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(false);
    setStyleSheet(QStringLiteral(
        "QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; }"
        "QScrollBar:vertical { background: transparent; width: 6px; }"
        "QScrollBar::handle:vertical { background: rgba(255,255,255,70); border-radius: 3px;"
        " min-height: 30px; }"
        "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"));
    viewport()->setAutoFillBackground(false);
    QScroller::grabGesture(viewport(), QScroller::LeftMouseButtonGesture);
    // The list scrolls up and down only: a sideways drag leaves it centred.
    QScrollerProperties properties = QScroller::scroller(viewport())->scrollerProperties();
    properties.setScrollMetric(QScrollerProperties::HorizontalOvershootPolicy,
                               QVariant::fromValue(QScrollerProperties::OvershootAlwaysOff));
    QScroller::scroller(viewport())->setScrollerProperties(properties);
    // The rows are as wide as the panel, a scroll bar's width more than the viewport: that
    // margin is never scrolled to.
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        if (value != 0) horizontalScrollBar()->setValue(0);
    });
    content_ = new QWidget;
    content_->setAttribute(Qt::WA_TranslucentBackground);
    setWidget(content_);
}

bool HistoryPanel::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ScrollPrepare) {
        auto* prepare = static_cast<QScrollPrepareEvent*>(event);
        for (QWidget* hit = viewport()->childAt(prepare->startPos().toPoint()); hit != nullptr;
             hit = hit->parentWidget()) {
            if (hit == viewport()) break;
            if (qobject_cast<TivSlider*>(hit) != nullptr || hit->property("dragsItself").toBool()) {
                prepare->ignore();
                return true;
            }
        }
    }
    return QScrollArea::viewportEvent(event);
}

void HistoryPanel::Clear() {
    for (QWidget* child : content_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        child->hide();
        child->deleteLater();  // a button may be reporting its own release right now
    }
    next_ = 0;
    ReferenceLayout::SizeContent(*content_, QSizeF(ReferenceLayout::kWidth, 0), Scale());
}

double HistoryPanel::Scale() {
    return TivUtils::GetScale();
}

int HistoryPanel::Place(int height) {
    const int y = next_;
    next_ += height;
    ReferenceLayout::SizeContent(*content_, QSizeF(ReferenceLayout::kWidth, next_), Scale());
    return y;
}

void HistoryPanel::Put(QWidget& widget, const QRect& reference) {
    ReferenceLayout::Place(widget, reference, Scale());
}

void HistoryPanel::AddGap(int height) {
    Place(height);
}

void HistoryPanel::AddTitle(const QString& text) {
    constexpr int h = 36;
    TivLabel* label = MakeLabel(content_, text, 22, kTitleColor, TivUtils::FONT_STYLE_BOLD);
    Put(*label, QRect(kMargin, Place(h), kInner, h));
}

GraphicHistory* HistoryPanel::AddGraph(std::vector<double> values, int type) {
    auto* graph = new GraphicHistory(content_);
    const QRect reference(0, Place(kGraphHeight), ReferenceLayout::kWidth - kMargin, kGraphHeight);
    graph->Initialize(QRect(), std::move(values), type, true);
    Put(*graph, reference);
    graph->show();
    return graph;
}

void HistoryPanel::AddWidget(QWidget* widget, int height) {
    widget->setParent(content_);
    Put(*widget, QRect(0, Place(height), ReferenceLayout::kWidth, height));
    widget->show();
}

void HistoryPanel::AddHeader(const QString& text) {
    constexpr int h = 48;
    TivLabel* label = MakeLabel(content_, text, 26, Qt::white, TivUtils::FONT_STYLE_BOLD);
    label->SetVerticalAlligment(TivLabel::ALIGN_BOTTOM);
    Put(*label, QRect(kMargin, Place(h), kInner, h - 6));
}

TivLabel* HistoryPanel::AddRow(const QString& text) {
    auto* strip = new QWidget(content_);
    Put(*strip, QRect(kMargin, Place(kRowHeight), kInner, kRowHeight));
    auto* back = new TivImagePanel(strip);
    back->Initialize(QPoint(0, 0), QStringLiteral("black_cell.png"));
    Put(*back, QRect(0, 0, kInner, kRowHeight));
    back->setAttribute(Qt::WA_TransparentForMouseEvents);
    TivLabel* label = MakeLabel(strip, text, 22, Qt::white);
    Put(*label, QRect(18, 0, kInner - 24, kRowHeight));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    strip->show();
    return label;
}

TivButton* HistoryPanel::AddRowButton(const QString& text, int actionId,
                                      IActionEventListener* listener) {
    const int y = Place(kButtonHeight + 6);
    auto* button = new TivButton(content_);
    button->Initialize(QRect());
    Put(*button, QRect(kMargin, y, kInner, kButtonHeight));
    button->setObjectName(QStringLiteral("action%1").arg(actionId));
    button->SetPictures(QStringLiteral("history_row.png"));
    button->SetActionId(actionId);
    button->AddActionEventDelegate(listener);
    TivLabel* label = MakeLabel(button, text, 22, Qt::white);
    Put(*label, QRect(18, 0, kInner - 60, kButtonHeight));
    button->AddControl(*label);
    button->show();
    return button;
}

TivButton* HistoryPanel::AddResetButton(const QString& buttonText, const QString& caption,
                                        int actionId, IActionEventListener* listener) {
    constexpr int h = 72;
    constexpr int w = 200;
    const int y = Place(h + 10) + 10;
    auto* button = new TivButton(content_);
    button->Initialize(QRect());
    Put(*button, QRect(kMargin, y, w, h));
    button->setObjectName(QStringLiteral("action%1").arg(actionId));
    button->SetPictures(QStringLiteral("btn-red.png"));
    button->SetActionId(actionId);
    button->AddActionEventDelegate(listener);
    TivLabel* label = MakeLabel(button, buttonText, 26, Qt::white, TivUtils::FONT_STYLE_BOLD);
    label->SetHorizontalAlligment(TivLabel::ALIGN_CENTER);
    Put(*label, QRect(0, 0, w, h));
    button->AddControl(*label);
    button->show();
    TivLabel* beside = MakeLabel(content_, caption, 20, QColor(196, 212, 232));
    constexpr int x = kMargin + w + 12;
    Put(*beside, QRect(x, y, ReferenceLayout::kWidth - x - kMargin, h));
    return button;
}

void HistoryPanel::AddSummary(const HistoryTotals& totals, const QString& totalsHeader,
                              const QString& averagesHeader) {
    AppResource& texts = AppResource::GetInstance();
    AddGap(6);
    const bool miles = totals.Miles();
    const struct {
        const char* title;
        const std::vector<double>& series;
        int type;
        const char* unit;
    } graphs[] = {
        {"history__ Calorie burn history", totals.calorieSeries, GraphicHistory::TYPE_CALORIES,
         "history__ (Cal/min)"},
        {"history__ Average speed history", totals.speedSeries, GraphicHistory::TYPE_SPEED,
         miles ? "history__ ml/h" : "history__ km/h"},
        {"history__ Average Pace", totals.paceSeries, GraphicHistory::TYPE_PACE,
         miles ? "history__ min/ml" : "history__ min/km"},
    };
    for (const auto& graph : graphs) {
        AddTitle(texts.GetString(QString::fromUtf8(graph.title)));
        GraphicHistory* shown = AddGraph(graph.series, graph.type);
        shown->SetUnit(texts.GetString(QString::fromUtf8(graph.unit)));
        shown->SetTimes(totals.minuteStarts);
    }
    AddHeader(totalsHeader);
    for (const QString& row : totals.TotalRows()) AddRow(row);
    AddHeader(averagesHeader);
    for (const QString& row : totals.AverageRows()) AddRow(row);
}
