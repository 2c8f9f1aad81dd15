#include "IioSamplingFrequency.h"

#include <QList>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "IioSysfs.h"

std::vector<double> IioSamplingFrequency::Offered(const QByteArray& text, double wantedHz) {
    std::vector<double> rates;
    const QByteArray trimmed = text.trimmed();
    if (trimmed.startsWith('[') && trimmed.endsWith(']')) {
        const QList<QByteArray> parts = trimmed.mid(1, trimmed.size() - 2).simplified().split(' ');
        bool ok[3] = {false, false, false};
        if (parts.size() != 3) return rates;
        const double low = parts[0].toDouble(&ok[0]);
        const double step = parts[1].toDouble(&ok[1]);
        const double high = parts[2].toDouble(&ok[2]);
        if (!ok[0] || !ok[1] || !ok[2] || step <= 0 || high < low) return rates;
        // The range's lowest rate, the first step at or above the wanted one, its highest.
        const double stepsUp = std::max(0.0, std::ceil((wantedHz - low) / step - 1e-9));
        rates = {low, std::min(high, low + stepsUp * step), high};
    } else {
        for (const QByteArray& item : trimmed.simplified().split(' ')) {
            bool ok = false;
            const double rate = item.toDouble(&ok);
            if (ok && rate > 0) rates.push_back(rate);
        }
    }
    std::sort(rates.begin(), rates.end());
    rates.erase(std::unique(rates.begin(), rates.end()), rates.end());
    return rates;
}

bool IioSamplingFrequency::ReadsWaitForSamples(const QByteArray& name) {
    for (const char* prefix : {"lis", "lsm", "iis", "ism", "asm", "ais", "h3lis", "lng", "accel_3d"})
        if (name.startsWith(prefix)) return true;
    return false;
}

double IioSamplingFrequency::Pick(const std::vector<double>& offered, double minimumHz) {
    for (const double rate : offered)
        if (rate >= minimumHz - 1e-9) return rate;
    return offered.empty() ? 0.0 : offered.back();
}

IioSamplingFrequency::Outcome IioSamplingFrequency::Apply(const QString& device, double minimumHz,
                                                          bool polled) {
    Outcome outcome;
    const QString names[] = {device + QStringLiteral("/in_accel_sampling_frequency"),
                             device + QStringLiteral("/sampling_frequency")};
    const QString* attribute = nullptr;
    for (const QString& name : names) {
        if (IioSysfs::Number(name, &outcome.hz)) {
            attribute = &name;
            break;
        }
    }
    if (attribute == nullptr) return outcome;
    if (polled && ReadsWaitForSamples(IioSysfs::Text(device + QStringLiteral("/name"))))
        minimumHz = std::max(minimumHz, kSlowReadsHz);
    QByteArray available = IioSysfs::Text(*attribute + QStringLiteral("_available"));
    for (const QString& name : names)
        if (available.isEmpty()) available = IioSysfs::Text(name + QStringLiteral("_available"));
    const double wanted = Pick(Offered(available, minimumHz), minimumHz);
    if (wanted == 0.0 || std::abs(wanted - outcome.hz) < 1e-6) return outcome;
    if (polled && outcome.hz >= minimumHz) return outcome;
    const int error = IioSysfs::Write(*attribute, QByteArray::number(wanted));
    if (error == 0) {
        IioSysfs::Number(*attribute, &outcome.hz);
        return outcome;
    }
    outcome.problem = QStringLiteral("%1 Hz, not %2 Hz: %3")
                          .arg(outcome.hz)
                          .arg(wanted)
                          .arg(QString::fromLocal8Bit(std::strerror(error)));
    return outcome;
}
