#pragma once

#include <QPixmap>
#include <QWidget>
#include <memory>

#include "IRescalable.h"

// A panel that shows one picture at its top-left corner, unscaled and clipped to the
// panel (a slider's fill is a wide picture in a panel only as wide as the fill).
class TivImagePanel : public QWidget, public IRescalable {
    Q_OBJECT
public:
    explicit TivImagePanel(QWidget* parent = nullptr);

    // Takes the picture and sizes the panel to it at `position`; a null picture gives an
    // empty panel. Always true.
    bool Initialize(const QPoint& position, std::unique_ptr<QPixmap> bitmap);
    // The same for the named picture (see TivUtils), rendered when the panel first paints,
    // so that a screen opened beneath another renders none.
    bool Initialize(const QPoint& position, const QString& picture);
    // Replaces the picture (the panel keeps its size) and redraws.
    void SetImage(std::unique_ptr<QPixmap> bitmap);
    // The picture's size in logical pixels, rendered yet or not; empty without one.
    QSize PictureSize() const;

    // Renders the picture again at the new scale; the panel's size is the layout's.
    void OnRescaled(double from, double to) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::unique_ptr<QPixmap> bitmap_;
    QString pictureName_;  // the picture still to render
};
