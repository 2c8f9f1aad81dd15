#include "SnsGateway.h"

// No provider is reachable yet: every request is refused at once.

SnsGateway& SnsGateway::GetInstance() {
    static SnsGateway gateway;
    return gateway;
}

void SnsGateway::SetListener(SnsListener* listener) {
    listener_ = listener;
}

QStringList SnsGateway::Providers() const {
    return {};
}

int SnsGateway::IsLoggedIn(const QString&) {
    return -1;
}

bool SnsGateway::Authenticate(const QString&, const QString&, const QString&) {
    return false;
}

void SnsGateway::AddAuthResult(const QString&, const SnsAuthResult&) {}

int SnsGateway::UpdateMyStatusText(const QString&, const QString&) {
    return -1;
}

void SnsGateway::SignOut(const QString&) {}
