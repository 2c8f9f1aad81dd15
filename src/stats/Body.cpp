#include "Body.h"

#include <QtGlobal>

#include "AppResource.h"

namespace {
double orDefault(double value, double fallback) {
    return value == -1.0 ? fallback : value;
}

// Lower speed bound (km/h, inclusive) of each activity band and its MET value.
// The bounds are single precision, like the speed handed in, so that a speed of
// exactly 4.02 lands in the band that starts at 4.02.
struct MetBand {
    float fromKmh;
    double met;
};
constexpr MetBand kMetBands[] = {
    {16.09, 16.0}, {12.87, 13.5}, {9.66, 10.0}, {8.05, 8.0},  {7.4, 6.0},
    {6.44, 5.0},   {5.63, 4.0},   {4.83, 3.5},  {4.02, 2.75},
};
constexpr double kSlowWalkMet = 2.0;
constexpr double kRestingMet = 1.55;

constexpr double kIdealBmi = 23.2;
constexpr double kMinNormalBmi = 18.5;
constexpr double kMaxNormalBmi = 24.9;

// `value` when it is -1 (unset) or within [min, max]; otherwise -1, with a warning.
double possibleOrUnset(const char* what, double value, double min, double max, const char* unit) {
    if (value == -1.0 || (value >= min && value <= max)) return value;  // false for NaN
    qWarning("body profile: a %s of %g %s is impossible; the default is used instead", what, value,
             unit);
    return -1.0;
}
}  // namespace

Body& Body::GetInstance() {
    static Body instance;
    return instance;
}

void Body::setMen(int men) {
    men_.store(men == 0 || men == 1 ? men : -1);
}

void Body::setAge(int age) {
    age_.store(static_cast<int>(possibleOrUnset("age", age, 0, 150, "years")));
}

void Body::setHeight(double cm) {
    height_.store(possibleOrUnset("height", cm, 30.0, 300.0, "cm"));
}

void Body::setWeight(double kg) {
    weight_.store(possibleOrUnset("weight", kg, 1.0, 1000.0, "kg"));
}

void Body::setWalkStepSize(double m) {
    walkStep_.store(possibleOrUnset("walking step", m, 0.01, 10.0, "m"));
}

void Body::setJogStepSize(double m) {
    jogStep_.store(possibleOrUnset("jogging step", m, 0.01, 10.0, "m"));
}

void Body::setRunStepSize(double m) {
    runStep_.store(possibleOrUnset("running step", m, 0.01, 10.0, "m"));
}

void Body::setRunCoef(double c) {
    runCoef_.store(possibleOrUnset("running sensitivity", c, 0.0, 1000.0, ""));
}

void Body::setJogCoef(double c) {
    jogCoef_.store(possibleOrUnset("jogging sensitivity", c, 0.0, 1000.0, ""));
}

void Body::setWalkCoef(double c) {
    walkCoef_.store(possibleOrUnset("walking sensitivity", c, 0.0, 1000.0, ""));
}

int Body::getAge() const {
    const int age = age_.load();
    return age == -1 ? 30 : age;
}

double Body::getHeight() const {
    return orDefault(height_.load(), 172.0);
}

double Body::getWeight() const {
    return orDefault(weight_.load(), 68.0);
}

double Body::getAutoStepSize() const {
    return getHeight() / 100.0 * (isMen() ? 0.415 : 0.413);
}

double Body::getWalkStepSize() const {
    return orDefault(walkStep_.load(), getAutoStepSize());
}

double Body::getJogStepSize() const {
    const double stored = jogStep_.load();
    return stored == -1.0 ? getAutoStepSize() * 1.5 : stored;
}

double Body::getRunStepSize() const {
    const double stored = runStep_.load();
    if (stored != -1.0) return stored;
    const double autoSize = getAutoStepSize();
    return autoSize + autoSize;
}

double Body::getStepSize(int gait) const {
    switch (gait) {
        case 1:
            return getWalkStepSize();
        case 2:
            return getJogStepSize();
        case 3:
            return getRunStepSize();
        default:
            return 0.0;
    }
}

double Body::getWalkCoef() const {
    return orDefault(walkCoef_.load(), 0.3);
}
double Body::getJogCoef() const {
    return orDefault(jogCoef_.load(), 0.9);
}
double Body::getRunCoef() const {
    return orDefault(runCoef_.load(), 1.4);
}

double Body::calculateCalories(float speedKmh) const {
    double met = 0.0;
    if (speedKmh == 0.0f) {
        met = kRestingMet;
    } else if (speedKmh > 0.0f) {
        const double v = speedKmh;
        met = kSlowWalkMet;
        for (const MetBand& band : kMetBands) {
            if (v >= static_cast<double>(band.fromKmh)) {
                met = band.met;
                break;
            }
        }
    }
    // The MET product is taken in single precision, the rest in double.
    const float metTimesOxygen = static_cast<float>(met) * 3.5f;
    return static_cast<double>(metTimesOxygen) * getWeight() / 200.0;
}

double Body::GetBMI() const {
    const double h = getHeight() / 100.0;
    return getWeight() / (h * h);
}

double Body::GetIdealWheight() const {
    const double h = getHeight() / 100.0;
    return h * h * kIdealBmi;
}

double Body::GetMinWheight() const {
    const double h = getHeight() / 100.0;
    return h * h * kMinNormalBmi;
}

double Body::GetMaxWheight() const {
    const double h = getHeight() / 100.0;
    return h * h * kMaxNormalBmi;
}

QColor Body::GetBMIColor() const {
    if (getAge() <= 17) return QColor(Qt::green);
    const double bmi = GetBMI();
    if (bmi < 18.5) return QColor(Qt::yellow);
    if (bmi < 25.0) return QColor(Qt::green);
    if (bmi < 30.0) return QColor(Qt::yellow);
    return QColor(Qt::red);
}

QString Body::GetBMIString() const {
    if (getAge() <= 17) return {};
    const double bmi = GetBMI();
    const char* key = "pedometer__ Obese";
    if (bmi < 18.5) {
        key = "pedometer__ Underweight";
    } else if (bmi < 25.0) {
        key = "pedometer__ Normal Weight";
    } else if (bmi < 30.0) {
        key = "pedometer__ Overweight";
    }
    return AppResource::GetInstance().GetString(QString::fromLatin1(key));
}

void Body::clear() {
    men_ = -1;
    age_ = -1;
    for (std::atomic<double>* cell :
         {&height_, &weight_, &walkStep_, &jogStep_, &runStep_, &runCoef_, &jogCoef_, &walkCoef_}) {
        cell->store(-1.0);
    }
}

double Body::WalkCoefForSlider(int position) {
    return position / 100.0 * 1.2 * 0.5;
}

double Body::JogCoefForSlider(int position) {
    return (position / 100.0 * 1.6 + 1.0) * 0.5;
}

double Body::RunCoefForSlider(int position) {
    return (position / 100.0 * 3.3 + 1.1) * 0.5;
}
