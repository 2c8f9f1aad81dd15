#include "GraphScale.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

#include "GraphSeries.h"

namespace {
double Highest(const std::vector<double>& values) {
    double highest = 0.0;
    for (const double v : values) highest = std::max(highest, GraphScale::Clean(v));
    return highest;
}
}  // namespace

double GraphScale::Clean(double value) {
    return std::isfinite(value) ? std::clamp(value, -kLimit, kLimit) : 0.0;
}

std::vector<double> GraphScale::Sanitize(std::vector<double> values) {
    for (double& v : values) v = Clean(v);
    return values;
}

GraphScale::GraphScale(const std::vector<double>& values)
    : axis_(Highest(values), kLabelCount), hasData_(Highest(values) > 0.0) {}

QStringList GraphScale::LabelTexts(int type, int maxDecimals) const {
    QStringList texts;
    for (int i = 0; i < kLabelCount; ++i) {
        texts << (hasData_ && i < Steps() ? FormatLabel(LabelValue(i), type, maxDecimals)
                                          : QString());
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

int GraphScale::YOf(double value, int height) const {
    const double share = std::clamp(Clean(value) / Max(), 0.0, 1.0);
    return static_cast<int>(std::trunc((height - kBottom) - (height - kTop - kBottom) * share));
}

int GraphScale::LabelLine(int index, int height) const {
    return YOf(LabelValue(index), height);
}

std::vector<QPoint> GraphScale::Points(const std::vector<double>& values, const QSize& size) const {
    std::vector<QPoint> points;
    if (values.size() < 2) return points;
    const double dx = double(size.width() - 52) / double(values.size() - 1);
    points.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        points.emplace_back(static_cast<int>(std::trunc(double(i) * dx + 41.0)),
                            YOf(values[i], size.height()));
    }
    return points;
}
