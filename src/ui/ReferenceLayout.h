#pragma once

#include <QRect>
#include <QSize>

class QWidget;

// Maps the reference layout onto a window of any size: the one layout mechanism of every
// screen.
//
// Screens are drawn in the 480-wide reference layout for a client area 740 high (480 x 800
// less the soft-key bar), as they always were: a screen builds its controls with the
// current scale (`S(...)`, TivUtils::GetScale()) while it is that size. The window then
// chooses the scale from its size, min(width / 480, height / 720), so the content keeps its
// proportions, fills the width of a phone and sits centred at the largest size that fits in
// a wide window; and every screen is laid out again by Apply():
//
// - each control's reference rectangle (its geometry divided by the scale it was set at)
//   is recorded the first time and whenever the screen itself moved or resized it since,
//   so screens keep placing controls at run time as they like;
// - the screen's grow band (a range of reference y, see Placement) takes the difference
//   between the client area's reference height and 740: controls inside the band stretch
//   with it, controls below it move; without a band extra height stays empty at the bottom;
// - controls implementing IRescalable remake their pictures and fonts (TivLabel's font
//   sizes, TivButton's and TivImagePanel's pictures), and explicit fonts set on other
//   widgets (a text field, a menu) keep their size in reference units;
// - the content of a scroll area is scaled as it is, without the band (it scrolls);
// - a control with the property "covers" (a question over the screen, the lock pane)
//   covers its parent whatever its size.
//
// A resize therefore re-lays out the screen at once and keeps everything else: the stack,
// the typed text, the scroll position, the counting. GUI thread only.
class ReferenceLayout {
public:
    static constexpr int kWidth = 480;
    // The client area every screen is drawn for.
    static constexpr int kClientHeight = 740;
    // The reference height the window keeps at the least: 320 x 480 scaled to 480 wide.
    static constexpr int kShortestHeight = 720;
    static constexpr int kBarHeight = 60;

    // How a screen's reference coordinates were, or are to be, mapped onto its widget.
    struct Placement {
        double scale = 1.0;
        // Reference height beyond (or, negative, short of) kClientHeight.
        double extra = 0;
        // The grow band's reference y range; empty when nothing grows.
        int bandTop = 0;
        int bandBottom = 0;

        // Where reference y lands in this placement, in reference units.
        double MapY(double y) const;
        double UnmapY(double y) const;
        bool operator==(const Placement&) const = default;
    };

    // The scale for a window of `size` logical pixels.
    static double ScaleFor(const QSize& size);
    // The soft-key bar's height and the column the content sits in, for a window of `size`.
    static int BarHeight(double scale);
    static QRect ContentColumn(const QSize& size);
    // The extra reference height of a client area `height` pixels high at `scale`.
    static double ExtraFor(int height, double scale);

    // Lays out `screen`'s descendants anew: from `from` (how they were placed) to `to`.
    // Controls never laid out before are taken as placed for the reference client area
    // (the band not applied) at `from.scale`: apply again, with `to` equal to `from`,
    // after a screen adds controls. TivUtils::GetScale() must already be `to.scale`. The
    // screen's own geometry is the caller's.
    static void Apply(QWidget& screen, const Placement& from, const Placement& to);
};
