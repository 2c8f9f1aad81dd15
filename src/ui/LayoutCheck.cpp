#include "LayoutCheck.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QWidget>
#include <cmath>

#include "TextSizeProbe.h"
#include "TivButton.h"
#include "TivSlider.h"
#include "TouchEventDispatcher.h"

namespace {
bool TakesTouches(const QWidget& widget) {
    if (qobject_cast<const QScrollBar*>(&widget) != nullptr) return false;  // a scroll hint
    return qobject_cast<const TivButton*>(&widget) != nullptr ||
           qobject_cast<const TivSlider*>(&widget) != nullptr ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           widget.property("touchTarget").toBool() || TouchEventDispatcher::IsTouched(widget);
}

// A touch control of its own: not a part of another one (whose touches it passes on).
bool IsTouchControl(const QWidget& widget, const QWidget& window) {
    if (!TakesTouches(widget)) return false;
    for (const QWidget* up = widget.parentWidget(); up != nullptr && up != &window;
         up = up->parentWidget()) {
        if (TakesTouches(*up)) return false;
    }
    return true;
}

bool IsViewport(const QWidget& widget) {
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget.parentWidget());
    return area != nullptr && area->viewport() == &widget;
}

QString Describe(const QWidget& widget) {
    QString name = QString::fromLatin1(widget.metaObject()->className());
    if (!widget.objectName().isEmpty()) name += QLatin1Char('#') + widget.objectName();
    return name;
}

struct Seen {
    const QWidget* widget;
    QRect visible;  // in window coordinates, cut to what scroll areas show
    bool touch;
};
}  // namespace

bool LayoutCheck::Result::Passed() const {
    return outside == 0 && overlapping == 0 && smallTouch == 0 &&
           (smallestText == 0 || std::lround(smallestText) >= smallestAllowedText);
}

QString LayoutCheck::Result::Line(const QString& screenName, const QSize& size) const {
    return QStringLiteral("layout %1 %2x%3: controls=%4 outside=%5 overlapping=%6 "
                          "smallest-text=%7px small-touch=%8")
        .arg(screenName)
        .arg(size.width())
        .arg(size.height())
        .arg(controls)
        .arg(outside)
        .arg(overlapping)
        .arg(std::lround(smallestText))
        .arg(smallTouch);
}

int LayoutCheck::SmallestAllowedText(const QSize& window) {
    return window.width() <= 320 || window.height() <= 480 ? 9 : 11;
}

LayoutCheck::Result LayoutCheck::Check(QWidget& window) {
    Result result;
    result.smallestAllowedText = SmallestAllowedText(window.size());
    QVector<Seen> seen;
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    // What an overlay (the property "covers") covers cannot be reached: only the newest
    // visible overlay and what lies outside its parent count.
    const QWidget* cover = nullptr;
    for (const QWidget* widget : widgets) {
        if (widget->property("covers").toBool() && widget->isVisibleTo(&window)) cover = widget;
    }
    for (const QWidget* widget : widgets) {
        if (widget->isWindow() || !widget->isVisibleTo(&window)) continue;
        if (cover != nullptr && widget != cover && !cover->isAncestorOf(widget) &&
            cover->parentWidget()->isAncestorOf(widget))
            continue;
        if (IsViewport(*widget) || qobject_cast<const QScrollBar*>(widget) != nullptr) continue;
        const bool touch = IsTouchControl(*widget, window);
        const bool leaf = widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly).isEmpty();
        if (!touch && !leaf) continue;
        // Up the parents: a scroll area's viewport cuts what scrolled away; any other
        // parent (and the window) must hold the control whole.
        QRect visible(widget->mapTo(&window, QPoint(0, 0)), widget->size());
        bool cut = false;
        bool hidden = false;
        QString cutBy;
        for (const QWidget* up = widget->parentWidget(); up != nullptr;
             up = up->parentWidget()) {
            const QRect area = up == &window
                                   ? window.rect()
                                   : QRect(up->mapTo(&window, QPoint(0, 0)), up->size());
            if (IsViewport(*up)) {
                visible &= area;
                if (visible.isEmpty()) hidden = true;
            } else if (!area.adjusted(-1, -1, 1, 1).contains(visible)) {  // a pixel of rounding
                if (!cut) cutBy = Describe(*up);
                cut = true;
            }
            if (up == &window || hidden) break;
        }
        if (hidden || widget->size().isEmpty()) continue;
        ++result.controls;
        if (cut) {
            ++result.outside;
            result.problems << QStringLiteral("outside %1: %2 at %3,%4 %5x%6")
                                   .arg(cutBy, Describe(*widget))
                                   .arg(visible.x())
                                   .arg(visible.y())
                                   .arg(visible.width())
                                   .arg(visible.height());
        }
        if (touch && std::min(widget->width(), widget->height()) < kSmallestTouch) {
            ++result.smallTouch;
            result.problems << QStringLiteral("small touch: %1 %2x%3")
                                   .arg(Describe(*widget))
                                   .arg(widget->width())
                                   .arg(widget->height());
        }
        if (touch) seen.append(Seen{widget, visible, touch});
    }
    for (int i = 0; i < seen.size(); ++i) {
        for (int j = i + 1; j < seen.size(); ++j) {
            const QWidget* a = seen[i].widget;
            const QWidget* b = seen[j].widget;
            if (a->isAncestorOf(b) || b->isAncestorOf(a)) continue;
            if (!seen[i].visible.adjusted(1, 1, -1, -1).intersects(seen[j].visible)) continue;
            ++result.overlapping;
            result.problems << QStringLiteral("overlapping: %1 and %2")
                                   .arg(Describe(*a))
                                   .arg(Describe(*b));
        }
    }
    TextSizeProbe probe(window.size());
    window.render(&probe);
    result.smallestText = probe.SmallestText();
    if (result.smallestText > 0 && std::lround(result.smallestText) < result.smallestAllowedText)
        result.problems << QStringLiteral("text of %1 px: \"%2\"")
                               .arg(result.smallestText)
                               .arg(probe.SmallestTextSample());
    return result;
}
