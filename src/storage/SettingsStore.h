#pragma once

#include <QString>
#include <memory>

#include "DAOSocial.h"
#include "PedometerOptions.h"

class Body;
class DatabaseConnection;

// The settings database: the settings record (SOUNDS and SCREEN), the body profile
// (BODY), the social accounts (SOCIAL) and named preferences (Preferences).
// PedometerDBManager forwards to it and documents each call.
class SettingsStore {
public:
    explicit SettingsStore(DatabaseConnection& options);

    void LoadOptions(PedometerOptions& options);
    void SaveOptions(const PedometerOptions& options);
    void LoadBody(Body& body);
    void SaveBody(const Body& body);
    std::unique_ptr<DAOSocial> GetDAOSocialN();
    void SetSocial(const DAOSocial& social);
    QString GetPreference(const QString& name, const QString& fallback);
    bool SetPreference(const QString& name, const QString& value);

private:
    DatabaseConnection& options_;
};
