#pragma once

#include <QString>

// The application's own client credentials at the providers that issue fixed ones: the
// consumer key and secret at Twitter, the application id and secret at Facebook.
struct SnsClientCredentials {
    static inline const QString kTwitterKey = QStringLiteral("Zq7RtLm2WxP9sKd4VbN3c");
    static inline const QString kTwitterSecret =
        QStringLiteral("h4Jk8Lp2Qr6St0Uv3Wx7Yz1Ab5Cd9Ef2Gh6Ij0K");
    static inline const QString kFacebookId = QStringLiteral("987650123498765");
    static inline const QString kFacebookSecret = QStringLiteral("5f0c2e9a7b3d41c68e2a90fd17b4c3e6");
};
