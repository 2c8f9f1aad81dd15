#pragma once

#include <QPaintDevice>
#include <QSize>
#include <QString>
#include <memory>

class QPaintEngine;

// A paint device that draws nothing and notes the size of every text drawn on it: render a
// window into it (QWidget::render) to learn the smallest text any of its widgets shows,
// however the widget paints. Sizes are the text's pixel size (the em) after the painter's
// transform, in the logical pixels of a device as large as `size` at 96 dpi.
class TextSizeProbe : public QPaintDevice {
public:
    explicit TextSizeProbe(const QSize& size);
    ~TextSizeProbe() override;

    // The smallest text drawn so far; 0 when none was.
    double SmallestText() const;
    int TextsDrawn() const;
    // The text drawn at the smallest size, to name it in a report.
    QString SmallestTextSample() const;

    QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;
    QSize size_;
    std::unique_ptr<Engine> engine_;
};
