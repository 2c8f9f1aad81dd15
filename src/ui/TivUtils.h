#pragma once

#include <QFont>
#include <QPixmap>
#include <QRect>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

// The layout's scale, resolution-aware picture loading and fonts, for every screen.
//
// Screens are drawn in the 480-wide reference layout; the scale maps it onto the window
// (ReferenceLayout). The window (AppFrame) sets the scale whenever its size changes;
// before there is a window, SetScreenResolution(480 or 320) chooses it (and the window's
// first size). The screen has 32 bits per pixel, so there is no chroma keying.
//
// Pictures are asked for by their ".png" name ("btn-start.png") and come from the
// artwork in res/images/ ("btn-start.svg"), drawn for the 480-wide layout and rendered
// at the layout's scale times the device pixel ratio, so they stay sharp on any screen.
// Renders are kept in QPixmapCache, so asking again for a picture is cheap. Use from the
// GUI thread.
class TivUtils {
public:
    static constexpr int WVGA_WIDTH = 480;
    static constexpr int HVGA_WIDTH = 320;

    // The platform's font styles, for CreateFont and TivLabel.
    static constexpr int FONT_STYLE_PLAIN = 1;
    static constexpr int FONT_STYLE_BOLD = 2;
    static constexpr int FONT_STYLE_ITALIC = 4;

    // Chooses the start-up layout width (the scale width / 480 and the window's first
    // size); widths other than positive ones are ignored.
    static void SetScreenResolution(int width);
    // The width the start-up layout was chosen for.
    static int GetStartupResolution();
    // The reference width at the current scale.
    static int GetScreenResolution();
    // The 320-wide scale or smaller: the screen is small in pixels.
    static bool IsHVGA() { return GetScreenResolution() <= HVGA_WIDTH; }
    static bool IsWVGA() { return !IsHVGA(); }
    static bool IsHiRes() { return IsWVGA(); }
    // Window pixels per reference unit: the factor geometry, text and artwork are drawn
    // at. Set by the window from its size; non-positive values are ignored.
    static double GetScale();
    static void SetScale(double scale);
    // A length, or each edge of a rectangle, in reference units at the current scale.
    static int Scaled(int size);
    static QRect Scaled(const QRect& rect);

    // The system text size in the toolkit's font units (see CreateFont).
    static int GetSystemFontSize();
    static int GetScreenBitsPerPixel() { return 32; }
    static bool IsChromaKeySupported() { return GetScreenBitsPerPixel() != 32; }
    // Pictures are always looked up by name: the level of the platform that did so.
    static int GetApiLevel() { return 2; }

    // A new picture the caller owns, or null (with a warning) when the name is unknown
    // or its artwork cannot be read. Only the file name part of `name` is used.
    static std::unique_ptr<QPixmap> GetBitmapWithRightResolutionN(const QString& name);
    // The logical size GetBitmapWithRightResolutionN renders `name` at (its reference size
    // at the current scale), without rendering it; empty when the artwork is missing.
    static QSize ScaledSize(const QString& name);
    // The artwork file behind a picture name: res/images/<base name>.svg.
    static QString GetArtworkPath(const QString& name);
    // The same picture as `picture` (one made by GetBitmapWithRightResolutionN) rendered
    // at the current scale; null for any other pixmap. Controls call it when the scale
    // changes.
    static std::unique_ptr<QPixmap> RenderAgain(const QPixmap& picture);
    // The same picture rendered to fill `size` logical pixels (stretched where a layout
    // stretched its control); null for any other pixmap or an empty size.
    static std::unique_ptr<QPixmap> RenderAgain(const QPixmap& picture, const QSize& size);
    // The named picture rendered to fill `size` (logical pixels, stretched when the
    // proportions differ), sharp at the device pixel ratio; a null pixmap when missing.
    static QPixmap RenderPicture(const QString& name, const QSize& size);
    // The size a picture is drawn for in the reference layout (its SVG width and height);
    // empty when missing.
    static QSize ReferenceSize(const QString& name);

    // A font in the toolkit's units: `size` is the height of one line of text in
    // pixels (ascent plus descent), as the phone platform measured fonts; the pixel
    // size of the em is derived from the font's own metrics, so a 21-unit caption fits
    // a 21-pixel-high label. `style` combines the FONT_STYLE_ flags. An empty `family`
    // takes the application's font. The em is never below GetSmallestTextPx().
    static QFont CreateFont(int style, int size, const QString& family = QString());
    // The largest size from `smallest` up to `largest` at which `fits` holds, `smallest`
    // when none above it does. Text grows with its size, so the boundary is found by
    // halving: each probe makes a font, and a scan down from the largest made a dozen.
    static int LargestFittingSize(int smallest, int largest, const std::function<bool(int)>& fits);
    // The same for plain text: the size at which each of `texts` is at most `width` wide.
    static int LargestFittingSize(int smallest, int largest, const QStringList& texts, int width);
    // The smallest readable em in pixels, set by the window for its size (LayoutCheck):
    // text drawn through CreateFont never goes below it, however tight its box. 1 by
    // default (no floor).
    static void SetSmallestTextPx(int pixels);
    static int GetSmallestTextPx();
};
