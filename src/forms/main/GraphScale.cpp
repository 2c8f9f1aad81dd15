#include "GraphScale.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

#include "GraphSeries.h"

double GraphScale::Clean(double value) {
    return std::isfinite(value) ? std::clamp(value, -kLimit, kLimit) : 0.0;
}

std::vector<double> GraphScale::Sanitize(std::vector<double> values) {
    for (double& v : values) v = Clean(v);
    return values;
}

GraphScale::GraphScale(const std::vector<double>& values) : empty_(values.empty()) {
    if (values.empty()) return;
    min_ = max_ = Clean(values.front());
    for (double v : values) {
        min_ = std::min(min_, Clean(v));
        max_ = std::max(max_, Clean(v));
    }
}

QStringList GraphScale::LabelTexts(int type, int maxDecimals) const {
    QStringList texts;
    for (int i = 0; i < kLabelCount; ++i) {
        texts << (empty_ ? QString() : FormatLabel(LabelValue(i), type, maxDecimals));
    }
    return texts;
}

QString GraphScale::FormatLabel(double value, int type, int maxDecimals) {
    value = Clean(value);
    if (type == GraphSeries::STEP_RATE) return QString::number(static_cast<long long>(value));

    // Round to the allowed digits, then drop trailing zeros: 2.50 reads 2.5, 3.00 reads 3.
    const QLocale locale;
    const double scale = std::pow(10.0, std::max(0, maxDecimals));
    double rounded = std::round(value * scale) / scale;
    if (rounded == 0.0) rounded = 0.0;  // no "-0"
    QString text = locale.toString(rounded, 'f', std::max(0, maxDecimals));
    const QString point = locale.decimalPoint();
    if (maxDecimals > 0 && text.contains(point)) {
        const QString zero = locale.zeroDigit();
        while (text.endsWith(zero)) text.chop(zero.size());
        if (text.endsWith(point)) text.chop(point.size());
    }
    return text;
}

std::vector<int> GraphScale::LabelLines(int height) {
    const int q = (height - kTop - kBottom) / 4;
    return {kTop, q + kTop, 2 * q + kTop, 3 * q + kTop};
}

std::vector<QPoint> GraphScale::Points(const std::vector<double>& values, const QSize& size) const {
    std::vector<QPoint> points;
    if (values.size() < 2) return points;
    const int w = size.width();
    const int h = size.height();
    const double dx = double(w - 52) / double(values.size() - 1);
    const double range = Range();
    points.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int x = static_cast<int>(std::trunc(double(i) * dx + 41.0));
        // Values outside the scale (none, for the series it was made from) stay in the frame.
        const double v = std::clamp(Clean(values[i]), min_, max_);
        int y = h - kBottom;
        if (range > 0.0 && v != min_) {
            y = static_cast<int>(
                std::trunc((h - kBottom) - (h - kTop - kBottom) * (v - min_) / range));
        }
        points.emplace_back(x, y);
    }
    return points;
}
