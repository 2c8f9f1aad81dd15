#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

// Keeps the secrets of social posting (access tokens, the Mastodon application's client
// credentials) under short names ("twitter").
//
// With a Secret Service on the session bus (GNOME Keyring, KWallet) they go to the system
// keyring through QtKeychain, service "pedometer". Without one, or when the keyring
// refuses a write, they go to the Preferences table of Options.db3 (a file only the user
// may read) as "sns-secret-NAME"; a secret written to the keyring removes that copy.
// Values are never logged. The keyring answers asynchronously, so Read() always answers
// later, never inside the call; what was written in this run is answered from memory.
// GUI thread only.
class SnsTokenStore : public QObject {
    Q_OBJECT
public:
    enum class Backend { Keyring, Options };

    explicit SnsTokenStore(Backend backend, QObject* parent = nullptr);

    // Keyring when a Secret Service is registered on the session bus, else Options.
    static Backend Detect();
    Backend GetBackend() const { return backend_; }

    // `done` gets the stored text, empty when there is none.
    void Read(const QString& name, std::function<void(const QString&)> done);
    void Write(const QString& name, const QString& value);
    void Remove(const QString& name);

private:
    static QString PreferenceName(const QString& name);
    void ReadKeyring(const QString& name, std::function<void(const QString&)> done);

    Backend backend_;
    // What this run wrote or removed (nullopt: not known yet).
    QHash<QString, std::optional<QString>> cache_;
};
