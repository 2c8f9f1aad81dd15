#pragma once

#include <QSize>
#include <QString>
#include <QVector>

class QWidget;

// Checks what a window shows, as a user on that screen would meet it: every visible
// control inside the window and inside the controls holding it (a scroll area's content
// may scroll out of view; a pixel of rounding is allowed), no two touch controls
// overlapping (by more than a pixel), no text smaller than the
// smallest readable size, and touch controls at least kSmallestTouch pixels in their
// smaller dimension. Sizes are the window's logical pixels.
//
// Touch controls: buttons, sliders, text fields, the header's tabs and soft keys, every
// widget given touch listeners (TouchEventDispatcher) except parts of one (a caption laid
// over a button), and any widget with the property "touchTarget" set true (a chart that
// switches on a tap). Controls under an overlay (the property "covers") are left out. Text sizes come from rendering the window into a TextSizeProbe, so
// every way a widget draws text counts. GUI thread only.
class LayoutCheck {
public:
    static constexpr int kSmallestTouch = 40;

    struct Result {
        int controls = 0;
        int outside = 0;
        int overlapping = 0;
        int smallTouch = 0;
        double smallestText = 0;  // 0 when no text is shown
        int smallestAllowedText = 0;
        QVector<QString> problems;  // one line per fault, naming the widget

        bool Passed() const;
        // "layout NAME WxH: controls=N outside=K overlapping=M smallest-text=Ppx small-touch=T"
        QString Line(const QString& screenName, const QSize& size) const;
    };

    // The smallest readable text: 11 pixels, 9 on the smallest phone screen (320 x 480).
    static int SmallestAllowedText(const QSize& window);

    static Result Check(QWidget& window);
};
