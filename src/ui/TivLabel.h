#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QWidget>
#include <optional>

#include "IRescalable.h"

// Text drawn with an outline over an optional background colour, word-wrapped and
// aligned inside the label.
//
// Sizes and styles are in the toolkit's font units (TivUtils::CreateFont). The font is
// made once, at the first draw: a size or style set after that has no effect unless
// SetFont is called. SetText only stores the text; the caller redraws (update()).
class TivLabel : public QWidget, public IRescalable {
    Q_OBJECT
public:
    // The platform's alignment codes.
    static constexpr int ALIGN_LEFT = 1;
    static constexpr int ALIGN_CENTER = 2;
    static constexpr int ALIGN_RIGHT = 3;
    static constexpr int ALIGN_TOP = 1;
    static constexpr int ALIGN_MIDDLE = 2;
    static constexpr int ALIGN_BOTTOM = 3;

    // The screens' darkest navy: around light text it reads as a soft edge that keeps the
    // text legible on a bright button or picture, and vanishes on the dark background.
    static inline const QColor OUTLINE_COLOR{6, 10, 20, 255};

    explicit TivLabel(QWidget* parent = nullptr);

    // Back to the defaults: no text, white text on a transparent background, font size
    // 9, plain style, centred both ways, outlined, no font made yet.
    void Initialize();

    void SetText(const QString& text) { text_ = text; }
    QString GetText() const { return text_; }
    void SetTextColor(const QColor& color) { textColor_ = color; }
    QColor GetTextColor() const { return textColor_; }
    void SetBackColor(const QColor& color);
    QColor GetBackColor() const { return backColor_; }
    void SetFontSize(int size) { fontSize_ = size; }
    int GetFontSize() const { return fontSize_; }
    void SetFontStyle(int style) { fontStyle_ = style; }
    void SetHorizontalAlligment(int alignment) { horizontalAlignment_ = alignment; }
    void SetVerticalAlligment(int alignment) { verticalAlignment_ = alignment; }
    void SetNeedOutline(bool needOutline) { needOutline_ = needOutline; }
    // Makes the font now, from this face with the current style and size.
    void SetFont(const QString& faceName);
    // The font in use; empty until the first draw or SetFont.
    const std::optional<QFont>& GetFont() const { return font_; }
    // With shrinking on, a text too large for the label is drawn smaller, each line
    // (split at '\n') at most as wide as the label and all lines within its height,
    // rather than wrapped or cut. Off by default.
    void SetShrinkToFit(bool shrink) { shrinkToFit_ = shrink; }
    // The font the text is drawn with: the label's font, made smaller to fit when
    // shrinking is on.
    QFont FittedFont() const;

    // Keeps the font size in reference units: a new scale makes the font again.
    void OnRescaled(double from, double to) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Alignment Alignment() const;

    QString text_;
    QColor textColor_;
    QColor backColor_;
    std::optional<QFont> font_;
    int fontSize_ = 9;
    int fontStyle_ = 1;
    int horizontalAlignment_ = ALIGN_CENTER;
    int verticalAlignment_ = ALIGN_MIDDLE;
    bool shrinkToFit_ = false;
    // The last fitted font, for the text and size it was fitted to.
    mutable std::optional<QFont> fitted_;
    mutable QString fittedText_;
    mutable QSize fittedSize_;
    bool needOutline_ = true;
    // The size in reference units, and the pixel size it was last made at.
    double referenceFontSize_ = 0;
    int appliedFontSize_ = -1;
};
