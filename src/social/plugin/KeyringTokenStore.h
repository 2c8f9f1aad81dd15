#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "SnsTokenStore.h"

// The token store of the social plug-in.
//
// With a Secret Service on the session bus (GNOME Keyring, KWallet) the secrets go to the
// system keyring through QtKeychain, service "pedometer". Without one, or when the keyring
// refuses a write, they go to the Preferences table of Options.db3 (a file only the user
// may read, through SnsHost) as "sns-secret-NAME"; a secret written to the keyring removes
// that copy. Values are never logged. The keyring answers asynchronously; what was written
// in this run is answered from memory. GUI thread only.
class KeyringTokenStore : public SnsTokenStore {
    Q_OBJECT
public:
    explicit KeyringTokenStore(Backend backend, QObject* parent = nullptr);

    // Keyring when a Secret Service is registered on the session bus, else Options.
    static Backend Detect();
    Backend GetBackend() const override { return backend_; }

    void Read(const QString& name, std::function<void(const QString&)> done) override;
    void Write(const QString& name, const QString& value) override;
    void Remove(const QString& name) override;

private:
    static QString PreferenceName(const QString& name);
    void ReadKeyring(const QString& name, std::function<void(const QString&)> done);

    Backend backend_;
    // What this run wrote or removed (nullopt: not known yet).
    QHash<QString, std::optional<QString>> cache_;
};
