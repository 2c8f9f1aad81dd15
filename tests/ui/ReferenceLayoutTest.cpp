#include "ReferenceLayout.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QWidget>

#include "TestData.h"
#include "TivLabel.h"
#include "TivUtils.h"

namespace {

using Placement = ReferenceLayout::Placement;

// Where reference y lands with a band from 100 to 300: above unchanged, inside stretched,
// below moved by the extra; a band shrinks at most to a tenth; and back again.
TEST(ReferenceLayoutTest, TheGrowBandStretchesWhatIsInsideAndMovesWhatIsBelow) {
    for (const QByteArrayList& c : testdata::Table("grow-band.tsv")) {
        SCOPED_TRACE(c.join(' ').toStdString());
        const Placement placement{1.0, c[0].toDouble(), 100, 300};
        EXPECT_DOUBLE_EQ(placement.MapY(c[1].toDouble()), c[2].toDouble());
        EXPECT_NEAR(placement.UnmapY(placement.MapY(c[1].toDouble())), c[1].toDouble(), 1e-9);
    }
    EXPECT_DOUBLE_EQ((Placement{1.0, 100, 0, 0}.MapY(500)), 500);  // no band: nothing moves
}

TEST(ReferenceLayoutTest, TheScaleFillsThePhoneWidthAndCentresInWideWindows) {
    struct Case {
        QSize window;
        double scale;
        QRect column;
    };
    const Case cases[] = {{{480, 800}, 1.0, {0, 0, 480, 800}},
                          {{360, 720}, 0.75, {0, 0, 360, 720}},
                          {{320, 480}, 2.0 / 3, {0, 0, 320, 480}},
                          {{1280, 800}, 800.0 / 720, {373, 0, 533, 800}},
                          {{720, 1440}, 1.5, {0, 0, 720, 1440}}};
    for (const Case& c : cases) {
        EXPECT_DOUBLE_EQ(ReferenceLayout::ScaleFor(c.window), c.scale) << c.window.width();
        EXPECT_EQ(ReferenceLayout::ContentColumn(c.window), c.column) << c.window.width();
    }
}

// Laid out at other scales and bands and back, controls return to where they were (no
// drift), text fields keep their text and fonts their reference size; a control the screen
// moves in between keeps its new place.
TEST(ReferenceLayoutTest, RelayingOutKeepsReferenceGeometryFontsAndState) {
    TivUtils::SetScreenResolution(480);
    QWidget screen;
    screen.resize(480, 740);
    auto* graph = new QWidget(&screen);
    graph->setGeometry(0, 100, 480, 200);
    auto* below = new TivLabel(&screen);
    below->setGeometry(10, 400, 100, 30);
    below->SetFontSize(20);
    auto* field = new QLineEdit(&screen);
    field->setGeometry(10, 500, 200, 60);
    QFont font = field->font();
    font.setPixelSize(30);
    field->setFont(font);
    field->setText(QStringLiteral("typed"));

    Placement at = {1.0, 0, 100, 300};
    const Placement steps[] = {{0.75, 160, 100, 300}, {2.0 / 3, -80, 100, 300},
                               {1.5, 53, 100, 300},   {1.0, 0, 100, 300}};
    for (const Placement& next : steps) {
        TivUtils::SetScale(next.scale);
        ReferenceLayout::Apply(screen, at, next);
        at = next;
    }
    EXPECT_EQ(graph->geometry(), QRect(0, 100, 480, 200));
    EXPECT_EQ(below->geometry(), QRect(10, 400, 100, 30));
    EXPECT_EQ(below->GetFontSize(), 20);
    EXPECT_EQ(field->font().pixelSize(), 30);
    EXPECT_EQ(field->text(), QStringLiteral("typed"));

    const Placement phone{0.75, 160, 100, 300};
    TivUtils::SetScale(phone.scale);
    ReferenceLayout::Apply(screen, at, phone);
    EXPECT_EQ(graph->geometry(), QRect(0, 75, 360, 270));  // 200 + 160 units, at 0.75
    EXPECT_EQ(below->geometry(), QRect(8, 420, 75, 23));   // moved down by 160 units
    EXPECT_EQ(below->GetFontSize(), 15);
    below->move(8, 450);  // the screen moves it in the phone's layout
    TivUtils::SetScale(1.0);
    ReferenceLayout::Apply(screen, phone, at);
    EXPECT_EQ(below->y(), 440);
    TivUtils::SetScreenResolution(480);
}

}  // namespace
