#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>

// One running pedometer per user session, reachable as the desktop expects of a
// D-Bus activatable application: the well-known name of the application id, and the
// org.freedesktop.Application interface on the object path made from it.
//
// Claim() takes the name. When another pedometer holds it, Claim() asks that one to
// Activate (bringing its window forward, passing on this launch's activation token)
// and says so; the caller then leaves without opening the databases. Activate calls
// that reach the holder run the callback given to SetOnActivate, with the activation
// token the launcher passed (empty when none). GUI thread only.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    static constexpr const char* kAppId = "io.github.pedometer_app.Pedometer";
    static constexpr const char* kObjectPath = "/io/github/pedometer_app/Pedometer";

    enum class Outcome {
        First,       // this process holds the name now
        HandedOver,  // another one holds it and was asked to come forward
        NoBus        // no session bus (or the name cannot be had): run on alone
    };

    explicit SingleInstance(QDBusConnection bus);
    ~SingleInstance() override;

    Outcome Claim();
    void SetOnActivate(std::function<void(const QString& token)> onActivate) {
        onActivate_ = std::move(onActivate);
    }

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& actionName, const QVariantList& parameter,
                        const QVariantMap& platformData);

private:
    bool AskHolderToActivate();

    QDBusConnection bus_;
    bool registered_ = false;
    std::function<void(const QString&)> onActivate_;
};
