#include "AppResource.h"

#include <gtest/gtest.h>

namespace {

TEST(AppResourceTest, LooksUpByLanguageWithEnglishAndKeyFallbacks) {
    AppResource& res = AppResource::GetInstance();
    res.SetLanguage(QStringLiteral("de"));
    EXPECT_EQ(res.GetString(QStringLiteral("pedometer__ Obese")), QStringLiteral("Adipositas"));
    EXPECT_EQ(res.GetString(QStringLiteral("meter__ Not a real key")),
              QStringLiteral("Not a real key"));
    res.SetLanguage(QStringLiteral("xx"));  // no such file: English
    EXPECT_EQ(res.GetString(QStringLiteral("pedometer__ Obese")), QStringLiteral("Obese"));
    res.SetLanguage(QStringLiteral("en"));
}

TEST(AppResourceTest, TextOfKey) {
    EXPECT_EQ(AppResource::TextOfKey(QStringLiteral("meter__ STOP")), QStringLiteral("STOP"));
    EXPECT_EQ(AppResource::TextOfKey(QStringLiteral("meter_ BackButton")),
              QStringLiteral("BackButton"));
    EXPECT_EQ(AppResource::TextOfKey(QStringLiteral("nokey")), QStringLiteral("nokey"));
}

}  // namespace
