#pragma once

// Receives accelerometer samples from an AccelerometerSource.
//
// Components are in standard gravity (g), so a phone lying still reads a magnitude of
// about 1. A source calls OnDataReceived on its own sensor thread, about every 30 ms, and
// only when x, y or z changed since the sample it delivered before; a 30 ms tick that
// brought nothing new (a sensor slower than the ticks, or one that did not move) calls
// OnTickWithoutSample instead, so that a listener can keep time in ticks whatever the
// sensor's own rate.
class AccelerometerListener {
public:
    virtual ~AccelerometerListener() = default;
    virtual void OnDataReceived(float x, float y, float z) = 0;
    virtual void OnTickWithoutSample() {}
    // `steps` walking steps counted by the chip itself (a hardware step counter), on the
    // source's thread; listeners that count steps take them, others ignore them.
    virtual void OnStepsCounted(int /*steps*/) {}
};
