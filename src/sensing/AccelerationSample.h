#pragma once

// One accelerometer reading in standard gravity (g).
struct AccelerationSample {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    friend bool operator==(const AccelerationSample&, const AccelerationSample&) = default;
};
