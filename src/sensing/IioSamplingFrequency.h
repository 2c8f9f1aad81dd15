#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

// Chooses and sets an accelerometer's sampling frequency.
//
// Drivers name the attribute in_accel_sampling_frequency or sampling_frequency, and
// the offered rates sit beside either name (bmc150 mixes the two), as a list
// "12.5 25 50" or a range "[min step max]". ST parts (st_accel, st_lsm6dsx) and HID
// sensors power the chip up for each raw read and wait a few sample periods, so polling
// them wants a fast rate; everything else gets the slowest offered rate that is fast
// enough, which saves power. A rate that cannot be written (root-only as an ordinary
// user) is reported, not hidden.
class IioSamplingFrequency {
public:
    // Polling a part whose reads wait a few periods wants at least this rate.
    static constexpr double kSlowReadsHz = 200.0;

    struct Outcome {
        double hz = 0.0;  // the rate the device runs at now; 0 when it has no such attribute
        QString problem;  // why the wanted rate could not be set; empty when it was or needs none
    };

    // The offered rates of a list or range text, in rising order; empty for neither.
    static std::vector<double> Offered(const QByteArray& text, double wantedHz);
    // Whether raw reads of the part named `name` wait a few sample periods.
    static bool ReadsWaitForSamples(const QByteArray& name);
    // The rate to ask for among `offered` (rising): the slowest >= `minimumHz`, else the
    // fastest; 0 when none is offered.
    static double Pick(const std::vector<double>& offered, double minimumHz);
    // Sets `device` to the rate it should run at for `minimumHz`, polled or buffered. A
    // polled device already fast enough is left alone.
    static Outcome Apply(const QString& device, double minimumHz, bool polled);
};
