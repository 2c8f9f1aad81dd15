#pragma once

#include <QObject>

#include "SnsPlugin.h"

// The social plug-in: the providers on Qt Network and NetworkAuth, the tokens in the
// keyring through QtKeychain.
class NetworkSnsPlugin : public QObject, public SnsPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID SnsPlugin_iid)
    Q_INTERFACES(SnsPlugin)

public:
    void UseHost(SnsHost* host) override;
    SnsTokenStore* MakeTokenStore(std::optional<SnsTokenStore::Backend> backend,
                                  QObject* parent) override;
    SnsProvider* MakeTwitter(const SnsEndpoints& endpoints, QObject* parent) override;
    SnsProvider* MakeOAuth2(const QString& name, const QString& title,
                            const SnsEndpoints& endpoints, bool registers,
                            QObject* parent) override;
};
