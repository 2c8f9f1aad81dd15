#pragma once

#include <QtPlugin>
#include <optional>

#include "SnsEndpoints.h"
#include "SnsTokenStore.h"

class QObject;
class SnsHost;
class SnsProvider;

// What the social plug-in ("pedometer-social", AppPlugins) offers SnsGateway: the providers
// and the token store, which bring Qt Network, Qt NetworkAuth, QtKeychain and their
// libraries (Kerberos, proxies, compression) with them. GUI thread only.
class SnsPlugin {
public:
    virtual ~SnsPlugin() = default;
    // The application's preferences and texts, for the plug-in's code; before anything else.
    virtual void UseHost(SnsHost* host) = 0;
    // `backend` nullopt: the keyring when a Secret Service is on the session bus.
    virtual SnsTokenStore* MakeTokenStore(std::optional<SnsTokenStore::Backend> backend,
                                          QObject* parent) = 0;
    // TwitterProvider.
    virtual SnsProvider* MakeTwitter(const SnsEndpoints& endpoints, QObject* parent) = 0;
    // OAuth2Provider; `registers` for a provider where the application registers first.
    virtual SnsProvider* MakeOAuth2(const QString& name, const QString& title,
                                    const SnsEndpoints& endpoints, bool registers,
                                    QObject* parent) = 0;
};

#define SnsPlugin_iid "io.github.pedometer_app.SnsPlugin/1"
Q_DECLARE_INTERFACE(SnsPlugin, SnsPlugin_iid)
