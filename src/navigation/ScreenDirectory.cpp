#include "ScreenDirectory.h"

#include <QWidget>
#include <map>

#include "PedometerForm.h"
#include "TivNavigationController.h"

namespace {

// Built on first use, so registrations from any translation unit's static
// initialisation find it ready.
std::map<QString, ScreenDirectory::Action>& Registry() {
    static std::map<QString, ScreenDirectory::Action> registry;
    return registry;
}

void SetError(QString* error, const QString& message) {
    if (error != nullptr) *error = message;
}

}  // namespace

bool ScreenDirectory::AddForm(const char* name, FormFactory factory) {
    return AddAction(name, [factory = std::move(factory)](TivNavigationController& navigation,
                                                           const ScreenRequest& request,
                                                           QString* error) -> QWidget* {
        PedometerForm* form = factory(request, error);
        if (form == nullptr) return nullptr;
        navigation.PushForm(form);
        return form;
    });
}

bool ScreenDirectory::AddForm(const char* name, EngineFormFactory factory) {
    return AddAction(name, [factory = std::move(factory)](TivNavigationController& navigation,
                                                           const ScreenRequest& request,
                                                           QString* error) -> QWidget* {
        CountingEngine* engine = navigation.GetEngine();
        if (engine == nullptr) {
            SetError(error, QStringLiteral("this screen needs the counting engine"));
            return nullptr;
        }
        PedometerForm* form = factory(*engine, request, error);
        if (form == nullptr) return nullptr;
        navigation.PushForm(form);
        return form;
    });
}

bool ScreenDirectory::AddAction(const char* name, Action action) {
    return Registry().emplace(QString::fromLatin1(name), std::move(action)).second;
}

QStringList ScreenDirectory::Names() {
    QStringList names;
    for (const auto& entry : Registry()) names.append(entry.first);
    return names;
}

bool ScreenDirectory::Contains(const QString& name) {
    return Registry().count(name) != 0;
}

QWidget* ScreenDirectory::Open(const QString& name, TivNavigationController& navigation,
                               const ScreenRequest& request, QString* error) {
    const auto found = Registry().find(name);
    if (found == Registry().end()) {
        SetError(error, QStringLiteral("no screen is called \"%1\"; --list-screens names them")
                            .arg(name));
        return nullptr;
    }
    QString refusal;
    QWidget* shown = found->second(navigation, request, &refusal);
    if (shown == nullptr) {
        SetError(error, refusal.isEmpty()
                            ? QStringLiteral("the screen \"%1\" cannot be shown").arg(name)
                            : refusal);
    }
    return shown;
}
