#include "TextSizeProbe.h"

#include <QFontInfo>
#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {
constexpr int kDpi = 96;
}

// Claims every feature, so that QPainter hands text over as text rather than as paths.
class TextSizeProbe::Engine : public QPaintEngine {
public:
    Engine() : QPaintEngine(QPaintEngine::AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {}
    void drawTiledPixmap(const QRectF&, const QPixmap&, const QPointF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawPolygon(const QPoint*, int, PolygonDrawMode) override {}
    void drawRects(const QRectF*, int) override {}
    void drawRects(const QRect*, int) override {}
    void drawLines(const QLineF*, int) override {}
    void drawLines(const QLine*, int) override {}
    void drawEllipse(const QRectF&) override {}
    void drawPoints(const QPointF*, int) override {}
    Type type() const override { return QPaintEngine::User; }

    void drawTextItem(const QPointF&, const QTextItem& item) override {
        if (item.text().trimmed().isEmpty()) return;
        const QFont font = item.font();
        double size = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * kDpi / 72.0;
        if (painter() != nullptr) {
            const QTransform t = painter()->combinedTransform();
            size *= std::sqrt(std::abs(t.determinant()));
        }
        if (drawn == 0 || size < smallest) {
            smallest = size;
            sample = item.text();
        }
        ++drawn;
    }

    double smallest = 0;
    int drawn = 0;
    QString sample;
};

TextSizeProbe::TextSizeProbe(const QSize& size) : size_(size), engine_(std::make_unique<Engine>()) {}

TextSizeProbe::~TextSizeProbe() = default;

double TextSizeProbe::SmallestText() const {
    return engine_->smallest;
}

QString TextSizeProbe::SmallestTextSample() const {
    return engine_->sample;
}

int TextSizeProbe::TextsDrawn() const {
    return engine_->drawn;
}

QPaintEngine* TextSizeProbe::paintEngine() const {
    return engine_.get();
}

int TextSizeProbe::metric(PaintDeviceMetric metric) const {
    switch (metric) {
        case PdmWidth:
            return size_.width();
        case PdmHeight:
            return size_.height();
        case PdmWidthMM:
            return int(size_.width() * 25.4 / kDpi);
        case PdmHeightMM:
            return int(size_.height() * 25.4 / kDpi);
        case PdmNumColors:
            return INT_MAX;
        case PdmDepth:
            return 32;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return kDpi;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(QPaintDevice::devicePixelRatioFScale());
        default:
            return QPaintDevice::metric(metric);
    }
}
