#include "TivImagePanel.h"

#include <gtest/gtest.h>

#include "Touch.h"

namespace {

std::unique_ptr<QPixmap> Solid(int w, int h, const QColor& color) {
    auto p = std::make_unique<QPixmap>(w, h);
    p->fill(color);
    return p;
}

TEST(TivImagePanelTest, TakesThePictureSizeAndDrawsItUnscaled) {
    TivImagePanel panel;
    EXPECT_TRUE(panel.Initialize(QPoint(5, 6), Solid(30, 10, Qt::red)));
    EXPECT_EQ(panel.geometry(), QRect(5, 6, 30, 10));
    EXPECT_EQ(touch::PixelAt(panel, QPoint(29, 9)), QColor(Qt::red));

    // A new picture keeps the panel's size; a bigger one is clipped, not scaled.
    panel.SetImage(Solid(60, 20, Qt::blue));
    EXPECT_EQ(panel.size(), QSize(30, 10));
    EXPECT_EQ(touch::PixelAt(panel, QPoint(0, 0)), QColor(Qt::blue));

    panel.SetImage(nullptr);
    EXPECT_EQ(touch::PixelAt(panel, QPoint(0, 0)).alpha(), 0);
    EXPECT_TRUE(panel.Initialize(QPoint(1, 2), nullptr));  // no picture: an empty panel
    EXPECT_EQ(panel.geometry(), QRect(1, 2, 0, 0));
}

}  // namespace
