#include "FontConfigWarmUp.h"

#include <fontconfig/fontconfig.h>

#include <system_error>

FontConfigWarmUp::FontConfigWarmUp() {
    try {
        thread_ = std::thread([] { FcInit(); });
    } catch (const std::system_error&) {
        // No thread to spare: Qt loads the configuration when it first needs it.
    }
}

FontConfigWarmUp::~FontConfigWarmUp() {
    if (thread_.joinable()) thread_.join();
}
