#include "TivLabel.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "TivUtils.h"
#include "Touch.h"

namespace {

bool Near(const QColor& a, const QColor& b, int tolerance) {
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

int CountPixels(const QImage& image, const QColor& color, int tolerance = 8) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.alpha() == 255 && Near(c, color, tolerance)) ++n;
        }
    }
    return n;
}

// The leftmost and rightmost columns holding any drawn pixel.
std::pair<int, int> InkColumns(const QImage& image) {
    int left = image.width(), right = -1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 0) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    return {left, right};
}

TEST(TivLabelTest, EmptyTextDrawsOnlyTheBackground) {
    TivLabel label;
    label.resize(100, 40);
    const QColor back(10, 20, 30);
    label.SetBackColor(back);
    const QImage image = touch::Render(label);
    EXPECT_EQ(CountPixels(image, back, 0), 100 * 40);
    EXPECT_FALSE(label.GetFont().has_value());  // nothing to write, no font made

    TivLabel transparent;
    transparent.resize(100, 40);
    EXPECT_EQ(InkColumns(touch::Render(transparent)).second, -1);
}

TEST(TivLabelTest, TextIsWhiteWithTheDarkOutline) {
    TivLabel label;
    label.resize(200, 60);
    label.SetFontSize(40);
    label.SetText(QStringLiteral("88"));
    QImage image = touch::Render(label);
    EXPECT_GT(CountPixels(image, Qt::white), 20);
    EXPECT_GT(CountPixels(image, TivLabel::OUTLINE_COLOR), 20);

    label.SetNeedOutline(false);
    label.SetTextColor(QColor(252, 209, 75));
    image = touch::Render(label);
    EXPECT_EQ(CountPixels(image, TivLabel::OUTLINE_COLOR), 0);
    EXPECT_GT(CountPixels(image, QColor(252, 209, 75)), 20);
}

TEST(TivLabelTest, AlignsAndWraps) {
    TivLabel label;
    label.resize(300, 120);
    label.SetFontSize(24);
    label.SetNeedOutline(false);
    label.SetText(QStringLiteral("Hi"));
    label.SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    EXPECT_LT(InkColumns(touch::Render(label)).first, 10);
    label.SetHorizontalAlligment(TivLabel::ALIGN_RIGHT);
    EXPECT_GT(InkColumns(touch::Render(label)).second, 290);
    label.SetHorizontalAlligment(TivLabel::ALIGN_CENTER);
    const auto [l, r] = InkColumns(touch::Render(label));
    EXPECT_NEAR((l + r) / 2.0, 150, 4);

    // A sentence wider than the label wraps onto more lines instead of running off.
    label.resize(120, 120);
    label.SetText(QStringLiteral("Tap any graph to enter update"));
    const auto [wl, wr] = InkColumns(touch::Render(label));
    EXPECT_GE(wl, 0);
    EXPECT_LT(wr, 120);
}

TEST(TivLabelTest, FontSizeIsTheLineHeightInPixels) {
    for (int size : {21, 35, 90}) {
        const QFont font = TivUtils::CreateFont(TivUtils::FONT_STYLE_PLAIN, size);
        EXPECT_NEAR(QFontMetricsF(font).height(), size, 1.5) << size;
    }
}

}  // namespace
