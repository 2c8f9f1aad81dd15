#pragma once

#include <QFont>
#include <QPixmap>
#include <QString>
#include <memory>

// Screen-size queries and resolution-aware picture loading, for every screen.
//
// The layout is chosen once at start-up: 480 pixels wide ("WVGA", the default) or 320
// ("HVGA", --hvga). The screen has 32 bits per pixel, so there is no chroma keying.
//
// Pictures are asked for by their ".png" name ("btn-start.png") and come from the
// artwork in res/images/ ("btn-start.svg"), drawn for the 480-wide layout and rendered
// at the layout's scale (2/3 for the 320-wide one). Renders are kept in QPixmapCache, so
// asking again for a picture is cheap. Use from the GUI thread.
class TivUtils {
public:
    static constexpr int WVGA_WIDTH = 480;
    static constexpr int HVGA_WIDTH = 320;

    // The platform's font styles, for CreateFont and TivLabel.
    static constexpr int FONT_STYLE_PLAIN = 1;
    static constexpr int FONT_STYLE_BOLD = 2;
    static constexpr int FONT_STYLE_ITALIC = 4;

    // Chooses the layout; widths other than positive ones are ignored.
    static void SetScreenResolution(int width);
    static int GetScreenResolution();
    static bool IsWVGA() { return GetScreenResolution() == WVGA_WIDTH; }
    static bool IsHVGA() { return GetScreenResolution() == HVGA_WIDTH; }
    static bool IsHiRes() { return IsWVGA(); }
    // Layout width / 480: the factor the artwork is rendered at.
    static double GetScale();

    // The system text size in the toolkit's font units (see CreateFont).
    static int GetSystemFontSize();
    static int GetScreenBitsPerPixel() { return 32; }
    static bool IsChromaKeySupported() { return GetScreenBitsPerPixel() != 32; }
    // Pictures are always looked up by name: the level of the platform that did so.
    static int GetApiLevel() { return 2; }

    // A new picture the caller owns, or null (with a warning) when the name is unknown
    // or its artwork cannot be read. Only the file name part of `name` is used.
    static std::unique_ptr<QPixmap> GetBitmapWithRightResolutionN(const QString& name);
    // The artwork file behind a picture name: res/images/<base name>.svg.
    static QString GetArtworkPath(const QString& name);

    // A font in the toolkit's units: `size` is the height of one line of text in
    // pixels (ascent plus descent), as the phone platform measured fonts; the pixel
    // size of the em is derived from the font's own metrics, so a 21-unit caption fits
    // a 21-pixel-high label. `style` combines the FONT_STYLE_ flags. An empty `family`
    // takes the application's font.
    static QFont CreateFont(int style, int size, const QString& family = QString());
};
