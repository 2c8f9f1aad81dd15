#include "SessionAwayState.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include "FeedbackProfile.h"
#include "PlatformSettings.h"
#include "PrivateBus.h"
#include "TestData.h"

namespace {

const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kSession = QStringLiteral("/org/freedesktop/login1/session/_31");

// Plays logind's manager and the caller's session (idle at start), and the feedback
// daemon (profile "quiet" at start).
bool Answer(const QDBusMessage& call, const QDBusConnection& bus) {
    QVariant answer;
    if (call.member() == QLatin1String("GetSession")) {
        answer = QVariant::fromValue(QDBusObjectPath(kSession));
    } else if (call.member() == QLatin1String("GetAll") && call.path() == kSession) {
        answer = QVariantMap{{QStringLiteral("IdleHint"), true}, {QStringLiteral("LockedHint"), false}};
    } else if (call.member() == QLatin1String("Get")) {
        answer = QVariant::fromValue(QDBusVariant(QStringLiteral("quiet")));
    } else {
        return false;
    }
    return bus.send(call.createReply(answer));
}

void SendChanged(QDBusConnection& bus, const QString& path, const QString& interface,
                 const QVariantMap& changed) {
    bus.send(QDBusMessage::createSignal(path, kProperties, QStringLiteral("PropertiesChanged"))
             << interface << changed << QStringList());
}

// The session's locked and idle hints and the screen saver each make the user away; the
// state follows every change, and properties of another interface are not mistaken for them.
TEST(SessionAwayStateTest, LockIdleAndScreenSaverEachMeanAway) {
    PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    FakeService fake(Answer);
    QDBusConnection service = bus.Serve({"org.freedesktop.login1", "org.freedesktop.ScreenSaver"},
                                        "/org/freedesktop/login1", &fake, QDBusConnection::SubPath);

    const QDBusConnection app = bus.Connect(QStringLiteral("app"));
    SessionAwayState state(app, app);
    QList<bool> told;
    state.SetOnChanged([&](bool away) { told.append(away); });
    ASSERT_TRUE(SpinUntil([&] { return state.IsAway(); })) << "idle at start";

    for (const QByteArrayList& step : testdata::Table("away-signals.tsv")) {
        SCOPED_TRACE(step[0].toStdString());
        const bool on = step[3] == "1", away = step[4] == "1";
        if (step[1] != "-") {
            SendChanged(service, kSession, QString::fromLatin1(step[1]),
                        {{QString::fromLatin1(step[2]), on}});
        } else {
            service.send(QDBusMessage::createSignal("/org/freedesktop/ScreenSaver",
                                                    "org.freedesktop.ScreenSaver", "ActiveChanged")
                         << on);
        }
        SpinUntil([&] { return state.IsAway() == away; }, 1000);
        SpinUntil([] { return false; }, 50);  // a wrong change would arrive meanwhile
        EXPECT_EQ(state.IsAway(), away);
    }
    EXPECT_EQ(told, (QList<bool>{true, false, true, false, true, false}));
}

// The feedback daemon's quiet and silent profiles silence the app; full gives sound back.
TEST(SessionAwayStateTest, TheFeedbackProfileSilencesSounds) {
    PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    FakeService fake(Answer);
    QDBusConnection service = bus.Serve({"org.sigxcpu.Feedback"}, "/org/sigxcpu/Feedback", &fake);

    FeedbackProfile profile(bus.Connect(QStringLiteral("app")));
    EXPECT_TRUE(SpinUntil([] { return PlatformSettings::IsSilentMode(); })) << "quiet at start";
    for (const auto& [name, silent] : {std::pair{"full", false}, {"silent", true}, {"full", false},
                                       {"quiet", true}, {"full", false}}) {
        SCOPED_TRACE(name);
        SendChanged(service, QStringLiteral("/org/sigxcpu/Feedback"),
                    QStringLiteral("org.sigxcpu.Feedback"),
                    {{QStringLiteral("Profile"), QString::fromLatin1(name)}});
        EXPECT_TRUE(SpinUntil([&] { return profile.Profile() == QLatin1String(name); }));
        EXPECT_EQ(PlatformSettings::IsSilentMode(), silent);
    }
}

}  // namespace
