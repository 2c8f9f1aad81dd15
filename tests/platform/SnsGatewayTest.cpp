#include "SnsGateway.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>

#include "AppPaths.h"
#include "FakeSnsServer.h"
#include "FreshProfile.h"
#include "PedometerDBManager.h"
#include "SpinUntil.h"
#include "TestData.h"

namespace {

// Every answer the gateway gives, as one line each.
struct Events : SnsListener {
    QStringList lines;
    SnsAuthResult auth;
    void OnSnsAuthenticated(const QString&, const SnsAuthResult& r, const QString& message) override {
        auth = r;
        lines << QStringLiteral("auth %1 %2").arg(!r.tokenKey.isEmpty() && !r.tokenSecret.isEmpty()).arg(message);
    }
    void OnSnsLoggedInStatusReceived(int, const QString&, bool in, bool ok, const QString&,
                                     const QString& message) override {
        lines << QStringLiteral("status %1 %2 %3").arg(in).arg(ok).arg(message);
    }
    void OnMySnsStatusTextUpdated(int, const QString&, bool ok, const QString&,
                                  const QString& message) override {
        lines << QStringLiteral("posted %1 %2").arg(ok).arg(message);
    }
};

QStringList logged;
void Capture(QtMsgType, const QMessageLogContext&, const QString& message) { logged << message; }

struct Provider {
    QString name;
    QByteArray authorize, token, verify, post, tokenReply, accessToken;
    QByteArray client;  // how the application names itself while signing in (a pattern)
};

// The three networks as tests/data/sns-providers.tsv plays them.
QList<Provider> Providers() {
    QList<Provider> all;
    for (const QByteArrayList& c : testdata::Table("sns-providers.tsv"))
        all << Provider{QString::fromUtf8(c[0]), c[1], c[2], c[3], c[4], c[5], c[6], c[7]};
    return all;
}

// A fresh profile, a provider played on 127.0.0.1 and a browser that approves at once.
struct World {
    FreshProfile profile;
    FakeSnsServer server;
    QNetworkAccessManager browser;
    Events events;
    SnsGateway& gateway = SnsGateway::GetInstance();

    explicit World(const Provider& p) {
        server.authorizePath = p.authorize;
        server.answers = {{"/oauth/request_token", {200, "oauth_token=tmp&oauth_token_secret=ts&oauth_callback_confirmed=true"}},
                          {"/api/v1/apps", {200, R"({"client_id":"cid","client_secret":"cs"})"}},
                          {p.token, {200, p.tokenReply}}, {p.verify, {200, "{}"}}, {p.post, {200, R"({"id":"1"})"}}};
        gateway.Reset(SnsTokenStore::Backend::Options);
        PedometerDBManager::GetInstance().SetPreference("mastodon-instance", server.Base().toString());
        SnsEndpoints e = p.name == "twitter"    ? SnsEndpoints::Twitter().Rebased(server.Base())
                         : p.name == "facebook" ? SnsEndpoints::Facebook().Rebased(server.Base())
                                                : SnsEndpoints::Mastodon(server.Base().toString());
        e.requestTimeoutMs = 500;
        gateway.SetEndpoints(p.name, e);
        gateway.SetBrowser([this](const QUrl& url) {
            QNetworkReply* page = browser.get(QNetworkRequest(url));
            QObject::connect(page, &QNetworkReply::finished, page, &QObject::deleteLater);
            return true;
        });
        gateway.SetListener(&events);
    }
    ~World() { gateway.Reset(SnsTokenStore::Backend::Options); }
    std::string Next(int ms = 10000) {
        const qsizetype before = events.lines.size();
        return SpinUntil([&] { return events.lines.size() > before; }, ms) ? events.lines.last().toStdString()
                                                                     : "nothing";
    }
};

}  // namespace

TEST(SnsGatewayTest, EveryProviderSignsInKeepsTheTokenPrivateAndPosts) {
    for (const Provider& p : Providers()) {
        SCOPED_TRACE(p.name.toStdString());
        World world(p);
        SnsGateway& g = world.gateway;
        logged.clear();
        const auto previous = qInstallMessageHandler(Capture);
        ASSERT_GT(g.IsLoggedIn(p.name), 0);
        EXPECT_EQ(world.Next(), "status 0 1 ");
        ASSERT_TRUE(g.Authenticate(p.name, SnsGateway::ClientKey(p.name), SnsGateway::ClientSecret(p.name)));
        ASSERT_EQ(world.Next(), "auth 1 ");
        EXPECT_EQ(world.events.auth.tokenKey, p.accessToken);
        g.AddAuthResult(p.name, world.events.auth);
        g.IsLoggedIn(p.name);
        EXPECT_EQ(world.Next(), "status 1 1 ");
        g.UpdateMyStatusText(p.name, "Walked 5 km & 3 laps");
        EXPECT_EQ(world.Next(), "posted 1 ");
        const auto saw = [&](const QByteArray& path, const QByteArray& pattern) {
            const QRegularExpression expression(QString::fromLatin1(pattern));
            return std::any_of(world.server.seen.begin(), world.server.seen.end(), [&](const auto& r) {
                return (path.isEmpty() || r.path == path) && QString::fromLatin1(r.headers).contains(expression);
            });
        };
        EXPECT_TRUE(saw({}, p.client));
        EXPECT_TRUE(saw(p.verify, p.accessToken));
        const FakeSnsServer::Request post = world.server.seen.last();
        EXPECT_EQ(post.path, p.post);
        EXPECT_TRUE(post.body.contains("Walked 5 km") || post.body.contains("Walked%205%20km%20%26%203"));
        EXPECT_TRUE(post.headers.contains("Bearer " + p.accessToken) ||
                    (post.headers.contains("oauth_token=\"" + p.accessToken) && post.headers.contains("HMAC-SHA1")));

        // The token lives in Options.db3 (no Secret Service here), readable by the user only.
        const QString stored = PedometerDBManager::GetInstance().GetPreference("sns-secret-" + p.name);
        EXPECT_TRUE(stored.contains(p.accessToken));
        EXPECT_EQ(QFile::permissions(AppPaths::Home() + "/Options.db3") & 0x0077, 0);
        g.SignOut(p.name);
        g.IsLoggedIn(p.name);
        EXPECT_EQ(world.Next(), "status 0 1 ");
        // Signing in again reuses the application's registration with the instance.
        ASSERT_TRUE(g.Authenticate(p.name, {}, {}));
        EXPECT_EQ(world.Next(), "auth 1 ");
        EXPECT_EQ(std::count_if(world.server.seen.begin(), world.server.seen.end(),
                                [](const auto& r) { return r.path == "/api/v1/apps"; }),
                  p.name == "mastodon" ? 1 : 0);
        qInstallMessageHandler(previous);
        EXPECT_FALSE(logged.join('\n').contains(p.accessToken)) << logged.join('\n').toStdString();
    }
}

// Each failure of tests/data/sns-failures.tsv reaches the right callback with a message the
// user can read, and the flow ends: nothing hangs, nothing crashes.
TEST(SnsGatewayTest, FailuresReachTheListenerAsReadableMessages) {
    for (const QByteArrayList& c : testdata::Table("sns-failures.tsv")) {
        const Provider p = Providers().at(c[0].toInt());
        SCOPED_TRACE(c.join(' ').toStdString());
        World world(p);
        world.server.refuse = c[1].isEmpty();
        world.server.answers[c[1]] = {c[2].toInt(), c[3], c[2] == "hang"};
        world.gateway.AddAuthResult(p.name, {"old", "Bearer"});
        if (c[4] == "sign in") world.gateway.Authenticate(p.name, {}, {});
        if (c[4] == "check") world.gateway.IsLoggedIn(p.name);
        if (c[4] == "post") world.gateway.UpdateMyStatusText(p.name, "hi");
        EXPECT_EQ(world.Next(), c[5].toStdString());
    }
}

TEST(SnsGatewayTest, UnreachableProviderAndSignedOutUserAreToldWhy) {
    World world(Providers()[1]);
    world.server.close();
    world.gateway.AddAuthResult("facebook", {"old", "Bearer"});
    world.gateway.UpdateMyStatusText("facebook", "hi");
    EXPECT_EQ(world.Next(), "posted 0 Could not reach Facebook. Please check the connection.");
    world.gateway.SignOut("facebook");
    world.gateway.UpdateMyStatusText("facebook", "hi");
    EXPECT_EQ(world.Next(), "posted 0 Please sign in to Facebook first.");
}

TEST(SnsGatewayTest, AnswersAfterTheListenerIsClearedAreDropped) {
    World world(Providers()[2]);
    SnsGateway& g = world.gateway;
    EXPECT_EQ(g.Providers(), QStringList({"twitter", "facebook", "mastodon"}));
    g.AddAuthResult("mastodon", {"old", "Bearer"});
    ASSERT_GT(g.UpdateMyStatusText("mastodon", "hi"), 0);
    g.SetListener(nullptr);
    ASSERT_TRUE(SpinUntil([&] { return !world.server.seen.isEmpty(); }));
    EXPECT_EQ(world.Next(300), "nothing");

    // After a move to another instance the old token is not shown to the new server.
    g.SetListener(&world.events);
    PedometerDBManager::GetInstance().SetPreference(
        "mastodon-instance", QStringLiteral("http://localhost:%1").arg(world.server.serverPort()));
    g.IsLoggedIn("mastodon");
    EXPECT_EQ(world.Next(), "status 0 1 ");
    EXPECT_EQ(world.server.seen.size(), 1);

    EXPECT_EQ(g.IsLoggedIn("myspace"), -1);
    EXPECT_FALSE(g.Authenticate("myspace", "k", "s"));
    PedometerDBManager::GetInstance().SetPreference("mastodon-instance", " ");
    EXPECT_EQ(g.Providers(), QStringList({"twitter", "facebook"}));
    EXPECT_EQ(g.UpdateMyStatusText("mastodon", "hi"), -1);
}

TEST(SnsGatewayTest, SignInEndsWhenTheBrowserFailsOrTheUserNeverReturns) {
    for (const bool opens : {false, true}) {
        World world(Providers()[1]);
        SnsEndpoints e = SnsEndpoints::Facebook().Rebased(world.server.Base());
        e.signInTimeoutMs = 200;
        world.gateway.SetEndpoints("facebook", e);
        world.gateway.SetBrowser([opens](const QUrl&) { return opens; });
        ASSERT_TRUE(world.gateway.Authenticate("facebook", {}, {}));
        EXPECT_EQ(world.Next(), opens ? "auth 0 Signing in to Facebook took too long. Please try again."
                                      : "auth 0 Could not open the web browser to sign in.");
    }
}

TEST(SnsGatewayTest, InstanceAddressesAndBaseOverridesBecomeEndpoints) {
    for (const QByteArrayList& c : testdata::Table("mastodon-instances.tsv")) {
        EXPECT_EQ(SnsEndpoints::Mastodon(QString::fromUtf8(c[0])).post.toString(),
                  QString::fromUtf8(c.value(1)))
            << c[0].toStdString();
    }
    EXPECT_EQ(SnsEndpoints::Mastodon("").post.toString(), "");
    qputenv("PEDOMETER_SNS_TWITTER_BASE", "http://127.0.0.1:9");
    const SnsEndpoints twitter = SnsEndpoints::Twitter();
    qunsetenv("PEDOMETER_SNS_TWITTER_BASE");
    EXPECT_EQ(twitter.requestToken.toString(), "http://127.0.0.1:9/oauth/request_token");
    EXPECT_EQ(twitter.post.toString(), "http://127.0.0.1:9/2/tweets");
}
