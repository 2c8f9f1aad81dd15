#pragma once

#include <QString>
#include <QStringList>
#include <QTextDocument>
#include <QWidget>

#include "IRescalable.h"

// A tips article laid out for reading, meant to sit in a scroll area: margins, a title,
// headings and body text in a comfortable size and line spacing, light on the app's
// dark background. The panel is exactly as tall as the laid-out text, so nothing is cut.
//
// The text is plain: paragraphs are separated by blank lines; the first paragraph's
// line, when it stands alone, is the title, and the first line of every paragraph of
// more than one line is its heading. No markup is read (a "<" shows as itself).
class PedArticleArea : public QWidget, public IRescalable {
    Q_OBJECT
public:
    static constexpr int kWidth = 460;  // in the 480-wide layout
    static constexpr int kMargin = 16;
    static constexpr int kFontSize = 24;

    explicit PedArticleArea(QWidget* parent = nullptr);

    // Lays out the text and sizes the panel at (0, 0). Always true.
    bool Initialize(const QString& text);
    QString GetText() const { return text_; }
    // The title and the headings, in order, as they are set apart.
    const QStringList& GetHeadings() const { return headings_; }
    // Lays the text out again for the new scale.
    void OnRescaled(double from, double to) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
    QStringList headings_;
    QTextDocument document_;
};
