#pragma once

#include <QColor>
#include <QString>
#include <atomic>

// The user's body profile, one per process.
//
// Each value is stored as entered; -1 means "not set" and the getters substitute a
// default, so -1 never reaches the screen. The database manager fills the values at
// start-up and stores them back; screens may set one value and save. Values are read
// from the sensor and updater threads while the GUI thread may write them, so every
// cell is atomic.
class Body {
public:
    static Body& GetInstance();

    // Sex: true only when the stored value is 1.
    bool isMen() const { return men_.load() == 1; }
    int getAge() const;
    double getHeight() const;
    bool hasHeight() const { return height_.load() != -1.0; }
    double getWeight() const;

    // Step lengths in metres; unset lengths follow from the height.
    double getAutoStepSize() const;
    double getWalkStepSize() const;
    double getJogStepSize() const;
    double getRunStepSize() const;
    // Step length of a gait code (1 walk, 2 jog, 3 run); 0 for any other code.
    double getStepSize(int gait) const;

    // Detector sensitivities: the dead-band of each gait's eight-sample sum.
    double getWalkCoef() const;
    double getJogCoef() const;
    double getRunCoef() const;

    // Kilocalories burnt per minute at the given speed.
    double calculateCalories(float speedKmh) const;

    double GetBMI() const;
    double GetIdealWheight() const;
    double GetMinWheight() const;
    double GetMaxWheight() const;
    QColor GetBMIColor() const;
    // Localised BMI verdict; empty for users aged 17 or less.
    QString GetBMIString() const;

    // The stored values, -1 where unset.
    int storedMen() const { return men_.load(); }
    int storedAge() const { return age_.load(); }
    double storedHeight() const { return height_.load(); }
    double storedWeight() const { return weight_.load(); }
    double storedWalkStepSize() const { return walkStep_.load(); }
    double storedJogStepSize() const { return jogStep_.load(); }
    double storedRunStepSize() const { return runStep_.load(); }
    double storedRunCoef() const { return runCoef_.load(); }
    double storedJogCoef() const { return jogCoef_.load(); }
    double storedWalkCoef() const { return walkCoef_.load(); }

    // Setters take -1 (unset) or a value a person can have; anything else (a negative
    // weight, a step of 1e308 m, not a number) is stored as unset, so the default applies,
    // and a warning names the value. Nothing infinite ever reaches a calculation.
    void setMen(int men);
    void setAge(int age);
    void setHeight(double cm);
    void setWeight(double kg);
    void setWalkStepSize(double m);
    void setJogStepSize(double m);
    void setRunStepSize(double m);
    void setRunCoef(double c);
    void setJogCoef(double c);
    void setWalkCoef(double c);

    // Sets every value to unset (-1).
    void clear();

    // The sensitivity a slider position (0..100) stands for, per gait.
    static double WalkCoefForSlider(int position);
    static double JogCoefForSlider(int position);
    static double RunCoefForSlider(int position);

private:
    Body() = default;

    std::atomic<int> men_{-1};
    std::atomic<int> age_{-1};
    std::atomic<double> height_{-1.0};
    std::atomic<double> weight_{-1.0};
    std::atomic<double> walkStep_{-1.0};
    std::atomic<double> jogStep_{-1.0};
    std::atomic<double> runStep_{-1.0};
    std::atomic<double> runCoef_{-1.0};
    std::atomic<double> jogCoef_{-1.0};
    std::atomic<double> walkCoef_{-1.0};
};
