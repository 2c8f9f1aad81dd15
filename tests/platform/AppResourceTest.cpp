#include "AppResource.h"

#include <gtest/gtest.h>

namespace {

TEST(AppResourceTest, LooksUpByLanguageWithEnglishAndKeyFallbacks) {
    AppResource& res = AppResource::GetInstance();
    res.SetLanguage(QStringLiteral("de"));
    EXPECT_EQ(res.GetString(QStringLiteral("pedometer__ Obese")), QStringLiteral("Adipositas"));
    EXPECT_EQ(res.GetString(QStringLiteral("meter__ Not a real key")),
              QStringLiteral("Not a real key"));
    EXPECT_EQ(AppResource::TextOfKey(QStringLiteral("meter_ BackButton")), "BackButton");
    // Counts pick the singular only for one, and fill the placeholders in order.
    EXPECT_EQ(res.GetCountString(QStringLiteral("count__ %@ days"), 1, QStringLiteral("1")),
              QStringLiteral("1 Tag"));
    EXPECT_EQ(res.GetCountString(QStringLiteral("count__ %@ laps"), 0, QStringLiteral("0")),
              QStringLiteral("0 Runden"));
    EXPECT_EQ(res.GetString(QStringLiteral("entry__ From %@ to %@ %@"), {"5", "120", "Jahre"}),
              QStringLiteral("Von 5 bis 120 Jahre"));
    res.SetLanguage(QStringLiteral("xx"));  // no such file: English
    EXPECT_EQ(res.GetString(QStringLiteral("pedometer__ Obese")), QStringLiteral("Obese"));
    res.SetLanguage(QStringLiteral("en"));
}

}  // namespace
