#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

#include "IRescalable.h"

// A long text drawn once, word-wrapped in white, into an off-screen picture that every
// paint copies: the article panel of the tips, meant to sit in a scroll area.
//
// The height is estimated before wrapping: the text's width in one line divided by the
// panel's width gives the lines, each a font height plus 15 pixels, plus 130 pixels of
// slack (all in the 480-wide layout, scaled). Text beyond the estimate is cut with an
// ellipsis. The text is shown as it is; no markup is read.
class PedArticleArea : public QWidget, public IRescalable {
    Q_OBJECT
public:
    static constexpr int kWidth = 460;  // in the 480-wide layout
    static constexpr int kFontSize = 30;
    static constexpr int kSlack = 130;

    explicit PedArticleArea(QWidget* parent = nullptr);

    // Keeps the text and sizes the panel at (0, 0). Always true.
    bool Initialize(const QString& text);
    QString GetText() const { return text_; }
    // The rendered text; null before the first show.
    const QPixmap& GetCanvas() const { return canvas_; }
    // Sizes and draws the text again for the new scale.
    void OnRescaled(double from, double to) override;

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Render();

    QString text_;
    QPixmap canvas_;
};
