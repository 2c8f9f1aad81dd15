#include "SnsHost.h"

namespace {
SnsHost* current = nullptr;
}

SnsHost& SnsHost::Get() {
    return *current;
}

void SnsHost::Set(SnsHost* host) {
    current = host;
}
