#include "NetworkSnsPlugin.h"

#include "KeyringTokenStore.h"
#include "OAuth2Provider.h"
#include "SnsHost.h"
#include "TwitterProvider.h"

void NetworkSnsPlugin::UseHost(SnsHost* host) {
    SnsHost::Set(host);
}

SnsTokenStore* NetworkSnsPlugin::MakeTokenStore(std::optional<SnsTokenStore::Backend> backend,
                                                QObject* parent) {
    return new KeyringTokenStore(backend.value_or(KeyringTokenStore::Detect()), parent);
}

SnsProvider* NetworkSnsPlugin::MakeTwitter(const SnsEndpoints& endpoints, QObject* parent) {
    return new TwitterProvider(endpoints, parent);
}

SnsProvider* NetworkSnsPlugin::MakeOAuth2(const QString& name, const QString& title,
                                          const SnsEndpoints& endpoints, bool registers,
                                          QObject* parent) {
    return new OAuth2Provider(name, title, endpoints, registers, parent);
}
