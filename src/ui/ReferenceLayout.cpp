#include "ReferenceLayout.h"

#include <QAbstractScrollArea>
#include <QFrame>
#include <QLayout>
#include <QScrollArea>
#include <QVariant>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "IRescalable.h"

namespace {
// Dynamic properties that hold a control's record.
constexpr const char* kReferenceRect = "referenceRect";
constexpr const char* kAppliedRect = "appliedRect";
constexpr const char* kReferenceFont = "referenceFontSize";
constexpr const char* kAppliedFont = "appliedFontSize";

// A band never shrinks below this share of its reference height, so it stays invertible.
constexpr double kSmallestBandShare = 0.1;

int Round(double v) {
    return int(std::lround(v));
}

// The coordinate space a widget's children are placed in: the screen's own (where the
// grow band applies; `refTop` and the tops are the parent's absolute positions) or a
// scrolled content's (plain scaling).
struct Space {
    bool band = true;
    double refTop = 0;
    int oldTop = 0;
    int newTop = 0;
};

QRectF Unmap(const QRect& g, const Space& space, const ReferenceLayout::Placement& from) {
    const double s = from.scale;
    if (!space.band) return QRectF(g.x() / s, g.y() / s, g.width() / s, g.height() / s);
    const double top = from.UnmapY((space.oldTop + g.y()) / s);
    const double bottom = from.UnmapY((space.oldTop + g.y() + g.height()) / s);
    return QRectF(g.x() / s, top - space.refTop, g.width() / s, bottom - top);
}

QRect Map(const QRectF& r, const Space& space, const ReferenceLayout::Placement& to) {
    const double s = to.scale;
    const int left = Round(r.x() * s);
    const int right = Round((r.x() + r.width()) * s);
    int top = Round(r.y() * s);
    int bottom = Round((r.y() + r.height()) * s);
    if (space.band) {
        top = Round(to.MapY(space.refTop + r.y()) * s) - space.newTop;
        bottom = Round(to.MapY(space.refTop + r.y() + r.height()) * s) - space.newTop;
    }
    return QRect(left, top, right - left, bottom - top);
}

// Explicit pixel fonts of plain Qt widgets (text fields, menus) keep their reference size.
void RescaleFont(QWidget& widget, double from, double to) {
    if (!widget.testAttribute(Qt::WA_SetFont) || widget.font().pixelSize() <= 0) return;
    QFont font = widget.font();
    const QVariant applied = widget.property(kAppliedFont);
    double reference = widget.property(kReferenceFont).toDouble();
    if (!applied.isValid() || applied.toInt() != font.pixelSize())
        reference = font.pixelSize() / from;
    font.setPixelSize(std::max(1, Round(reference * to)));
    widget.setFont(font);
    widget.setProperty(kReferenceFont, reference);
    widget.setProperty(kAppliedFont, font.pixelSize());
}

// Qt's composite widgets place their own parts; the walk enters plain containers and the
// application's own controls only.
bool PlacesItsOwnChildren(const QWidget& widget) {
    const QMetaObject* meta = widget.metaObject();
    if (meta == &QWidget::staticMetaObject || meta == &QFrame::staticMetaObject) return false;
    if (widget.layout() != nullptr) return true;
    return meta->className()[0] == 'Q';
}

void Walk(QWidget& parent, const QSize& parentSize, const Space& space,
          const ReferenceLayout::Placement& from, const ReferenceLayout::Placement& to);

void Rescale(QWidget& widget, const ReferenceLayout::Placement& from,
             const ReferenceLayout::Placement& to) {
    if (from.scale == to.scale) return;
    if (auto* rescalable = dynamic_cast<IRescalable*>(&widget)) {
        rescalable->OnRescaled(from.scale, to.scale);
    } else {
        RescaleFont(widget, from.scale, to.scale);
    }
}

// The content of a scroll area scrolls: it keeps its proportions and its children are
// placed in its own coordinates, without the band.
void WalkScrolled(QAbstractScrollArea& area, const ReferenceLayout::Placement& from,
                  const ReferenceLayout::Placement& to) {
    auto* scroll = qobject_cast<QScrollArea*>(&area);
    QWidget* content = scroll != nullptr ? scroll->widget() : nullptr;
    if (content == nullptr) return;
    const double factor = to.scale / from.scale;
    if (!scroll->widgetResizable())
        content->resize(Round(content->width() * factor), Round(content->height() * factor));
    Walk(*content, content->size(), Space{false}, from, to);
    Rescale(*content, from, to);  // last: content that sizes itself (an article) does so
}

void Walk(QWidget& parent, const QSize& parentSize, const Space& space,
          const ReferenceLayout::Placement& from, const ReferenceLayout::Placement& to) {
    for (QObject* object : parent.children()) {
        auto* child = qobject_cast<QWidget*>(object);
        if (child == nullptr) continue;
        Rescale(*child, from, to);
        if (child->isWindow()) continue;  // a menu or a dialog places itself
        const QRect old = child->geometry();
        const QVariant applied = child->property(kAppliedRect);
        // A control placed since the last layout: new ones were placed for the reference
        // client area (relative to their parent); known ones moved in the current layout.
        const QRectF reference = !applied.isValid()        ? Unmap(old, Space{false}, from)
                                 : applied.toRect() == old ? child->property(kReferenceRect).toRectF()
                                                           : Unmap(old, space, from);
        // An overlay (a question, the lock pane: the property "covers") covers its parent.
        const bool covers = child->property("covers").toBool();
        const QRect placed = covers ? QRect(QPoint(0, 0), parentSize) : Map(reference, space, to);
        // Children first, so that a resize handler of this control that places them
        // again works from the new scale and is taken as the screen's own placement.
        if (auto* area = qobject_cast<QAbstractScrollArea*>(child)) {
            WalkScrolled(*area, from, to);
        } else if (!PlacesItsOwnChildren(*child)) {
            Walk(*child, placed.size(),
                 Space{space.band, space.refTop + (covers ? 0 : reference.y()),
                       space.oldTop + old.y(), space.newTop + placed.y()},
                 from, to);
        }
        child->setGeometry(placed);
        child->setProperty(kReferenceRect, reference);
        child->setProperty(kAppliedRect, child->geometry());
    }
}
}  // namespace

double ReferenceLayout::Placement::MapY(double y) const {
    if (bandBottom <= bandTop || y <= bandTop) return y;
    const double band = bandBottom - bandTop;
    const double grown = std::max(band * kSmallestBandShare, band + extra);
    if (y >= bandBottom) return y + grown - band;
    return bandTop + (y - bandTop) * grown / band;
}

double ReferenceLayout::Placement::UnmapY(double y) const {
    if (bandBottom <= bandTop || y <= bandTop) return y;
    const double band = bandBottom - bandTop;
    const double grown = std::max(band * kSmallestBandShare, band + extra);
    if (y >= bandTop + grown) return y - grown + band;
    return bandTop + (y - bandTop) * band / grown;
}

double ReferenceLayout::ScaleFor(const QSize& size) {
    if (size.isEmpty()) return 1.0;
    return std::min(double(size.width()) / kWidth, double(size.height()) / kShortestHeight);
}

int ReferenceLayout::BarHeight(double scale) {
    return Round(kBarHeight * scale);
}

QRect ReferenceLayout::ContentColumn(const QSize& size) {
    const double scale = ScaleFor(size);
    const int width = std::min(size.width(), Round(kWidth * scale));
    return QRect((size.width() - width) / 2, 0, width, size.height());
}

double ReferenceLayout::ExtraFor(int height, double scale) {
    return height / scale - kClientHeight;
}

void ReferenceLayout::Apply(QWidget& screen, const Placement& from, const Placement& to) {
    const QSize size(Round(kWidth * to.scale), Round((kClientHeight + to.extra) * to.scale));
    Walk(screen, size, Space{}, from, to);
}
