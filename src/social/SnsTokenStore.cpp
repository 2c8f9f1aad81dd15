#include "SnsTokenStore.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTimer>
#include <qt6keychain/keychain.h>

#include "PedometerDBManager.h"

namespace {
const QString kService = QStringLiteral("pedometer");
}

SnsTokenStore::SnsTokenStore(Backend backend, QObject* parent)
    : QObject(parent), backend_(backend) {}

SnsTokenStore::Backend SnsTokenStore::Detect() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || bus.interface() == nullptr) return Backend::Options;
    return bus.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.secrets"))
               ? Backend::Keyring
               : Backend::Options;
}

QString SnsTokenStore::PreferenceName(const QString& name) {
    return QStringLiteral("sns-secret-") + name;
}

void SnsTokenStore::Read(const QString& name, std::function<void(const QString&)> done) {
    const auto cached = cache_.value(name);
    if (cached || backend_ == Backend::Options) {
        const QString value =
            cached ? *cached : PedometerDBManager::GetInstance().GetPreference(PreferenceName(name));
        QTimer::singleShot(0, this, [value, done = std::move(done)] { done(value); });
        return;
    }
    ReadKeyring(name, std::move(done));
}

void SnsTokenStore::ReadKeyring(const QString& name, std::function<void(const QString&)> done) {
    auto* job = new QKeychain::ReadPasswordJob(kService, this);
    job->setKey(name);
    connect(job, &QKeychain::Job::finished, this, [name, done = std::move(done)](QKeychain::Job* j) {
        // A secret written while the keyring was away is still in the settings file.
        const QString value = j->error() == QKeychain::NoError
                                  ? static_cast<QKeychain::ReadPasswordJob*>(j)->textData()
                                  : PedometerDBManager::GetInstance().GetPreference(
                                        PreferenceName(name));
        done(value);
    });
    job->start();
}

void SnsTokenStore::Write(const QString& name, const QString& value) {
    cache_.insert(name, value);
    if (backend_ == Backend::Options) {
        PedometerDBManager::GetInstance().SetPreference(PreferenceName(name), value);
        return;
    }
    auto* job = new QKeychain::WritePasswordJob(kService, this);
    job->setKey(name);
    job->setTextData(value);
    connect(job, &QKeychain::Job::finished, this, [name, value](QKeychain::Job* j) {
        PedometerDBManager::GetInstance().SetPreference(
            PreferenceName(name), j->error() == QKeychain::NoError ? QString() : value);
    });
    job->start();
}

void SnsTokenStore::Remove(const QString& name) {
    cache_.insert(name, QString());
    PedometerDBManager::GetInstance().SetPreference(PreferenceName(name), QString());
    if (backend_ == Backend::Options) return;
    auto* job = new QKeychain::DeletePasswordJob(kService, this);
    job->setKey(name);
    job->start();
}
