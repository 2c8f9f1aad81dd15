#include "KeyringTokenStore.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTimer>
#include <qt6keychain/keychain.h>

#include "SnsHost.h"

namespace {
const QString kService = QStringLiteral("pedometer");
}

KeyringTokenStore::KeyringTokenStore(Backend backend, QObject* parent)
    : SnsTokenStore(parent), backend_(backend) {}

KeyringTokenStore::Backend KeyringTokenStore::Detect() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || bus.interface() == nullptr) return Backend::Options;
    return bus.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.secrets"))
               ? Backend::Keyring
               : Backend::Options;
}

QString KeyringTokenStore::PreferenceName(const QString& name) {
    return QStringLiteral("sns-secret-") + name;
}

void KeyringTokenStore::Read(const QString& name, std::function<void(const QString&)> done) {
    const auto cached = cache_.value(name);
    if (cached || backend_ == Backend::Options) {
        const QString value =
            cached ? *cached : SnsHost::Get().GetPreference(PreferenceName(name));
        QTimer::singleShot(0, this, [value, done = std::move(done)] { done(value); });
        return;
    }
    ReadKeyring(name, std::move(done));
}

void KeyringTokenStore::ReadKeyring(const QString& name, std::function<void(const QString&)> done) {
    auto* job = new QKeychain::ReadPasswordJob(kService, this);
    job->setKey(name);
    connect(job, &QKeychain::Job::finished, this, [name, done = std::move(done)](QKeychain::Job* j) {
        // A secret written while the keyring was away is still in the settings file.
        const QString value = j->error() == QKeychain::NoError
                                  ? static_cast<QKeychain::ReadPasswordJob*>(j)->textData()
                                  : SnsHost::Get().GetPreference(
                                        PreferenceName(name));
        done(value);
    });
    job->start();
}

void KeyringTokenStore::Write(const QString& name, const QString& value) {
    cache_.insert(name, value);
    if (backend_ == Backend::Options) {
        SnsHost::Get().SetPreference(PreferenceName(name), value);
        return;
    }
    auto* job = new QKeychain::WritePasswordJob(kService, this);
    job->setKey(name);
    job->setTextData(value);
    connect(job, &QKeychain::Job::finished, this, [name, value](QKeychain::Job* j) {
        SnsHost::Get().SetPreference(
            PreferenceName(name), j->error() == QKeychain::NoError ? QString() : value);
    });
    job->start();
}

void KeyringTokenStore::Remove(const QString& name) {
    cache_.insert(name, QString());
    SnsHost::Get().SetPreference(PreferenceName(name), QString());
    if (backend_ == Backend::Options) return;
    auto* job = new QKeychain::DeletePasswordJob(kService, this);
    job->setKey(name);
    job->start();
}
