#pragma once

#include <QObject>
#include <QString>
#include <functional>

// Keeps the secrets of social posting (access tokens, the Mastodon application's client
// credentials) under short names ("twitter"): in the system keyring, or in Options.db3
// without one (KeyringTokenStore, in the social plug-in). Read() always answers later,
// never inside the call. GUI thread only.
class SnsTokenStore : public QObject {
public:
    enum class Backend { Keyring, Options };

    using QObject::QObject;

    virtual Backend GetBackend() const = 0;
    // `done` gets the stored text, empty when there is none.
    virtual void Read(const QString& name, std::function<void(const QString&)> done) = 0;
    virtual void Write(const QString& name, const QString& value) = 0;
    virtual void Remove(const QString& name) = 0;
};
