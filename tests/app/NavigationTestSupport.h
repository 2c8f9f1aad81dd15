#pragma once

// Forms that write down what happens to them, for the navigation and frame tests.
#include <QString>
#include <QStringList>

#include "AppFrame.h"
#include "PedometerForm.h"

// One shared journal per test: "A init", "A appear", "A terminate (current B)", "A gone".
struct Journal {
    QStringList lines;
    int Count(const QString& line) const { return int(lines.count(line)); }
};

class ProbeForm : public PedometerForm {
public:
    ProbeForm(const QString& name, Journal& journal, AppFrame& frame)
        : name_(name), journal_(journal), frame_(frame) {
        setObjectName(name);
    }
    ~ProbeForm() override { journal_.lines << name_ + " gone"; }

    void OnInitializing() override { journal_.lines << name_ + " init"; }
    void FormWillAppear() override {
        journal_.lines << name_ + " appear";
        // The screen being told must already be the frame's current one.
        if (frame_.GetCurrentForm() != this) journal_.lines << name_ + " appear while hidden";
    }
    void ProgramWillPause() override { journal_.lines << name_ + " pause"; }
    void OnTerminating() override {
        const TivForm* current = frame_.GetCurrentForm();
        journal_.lines << name_ + " terminate (current " +
                              (current != nullptr ? current->objectName()
                                                  : QStringLiteral("none")) +
                              ")";
    }
    void OnActionPerformed(const QWidget& source, int actionId) override {
        actions << actionId;
        if (actionId == kOptionKey) ShowOptionMenu();
        PedometerForm::OnActionPerformed(source, actionId);
    }

    static constexpr int kOptionKey = 120;
    QList<int> actions;

private:
    QString name_;
    Journal& journal_;
    AppFrame& frame_;
};
