#pragma once

#include <thread>

// Reads the system's font configuration (fontconfig parses dozens of XML files and its
// caches) on a thread of its own while the application opens its data, so that the first
// text the window lays out finds it ready. Qt asks for the same configuration later and
// gets the one loaded here; if it asks first, it loads it itself and this work is dropped.
// The thread is joined when the object goes.
class FontConfigWarmUp {
public:
    FontConfigWarmUp();
    ~FontConfigWarmUp();
    FontConfigWarmUp(const FontConfigWarmUp&) = delete;
    FontConfigWarmUp& operator=(const FontConfigWarmUp&) = delete;

private:
    std::thread thread_;
};
