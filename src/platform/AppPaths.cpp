#include "AppPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <filesystem>
#include <mutex>
#include <system_error>

#include "UserDataFile.h"

namespace {
std::mutex pathsMutex;
QString homeDir;
QString homeError;
bool homeEmpty = false;  // an empty folder name was given: no data folder at all
QString resDir;

QString executableDir() {
    if (QCoreApplication::instance() != nullptr) return QCoreApplication::applicationDirPath();
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath().section('/', 0, -2);
}

QString findResources() {
    const QString fromEnv = qEnvironmentVariable("PEDOMETER_RES_DIR");
    if (!fromEnv.isEmpty()) return fromEnv;
    const QString exeDir = executableDir();
    const QStringList candidates{exeDir + "/../res", exeDir + "/../share/pedometer",
                                 exeDir + "/res"};
    for (const QString& c : candidates) {
        if (QFileInfo(c).isDir()) return QDir(c).canonicalPath();
    }
    return QDir::cleanPath(exeDir + "/../res");
}
}  // namespace

QString AppPaths::Home() {
    std::lock_guard lock(pathsMutex);
    if (homeEmpty) {
        // Never the current folder by accident: its permissions are not ours to change.
        homeError = QStringLiteral("the data folder name is empty; give a folder");
        return {};
    }
    if (homeDir.isEmpty()) {
        homeDir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        if (homeDir.isEmpty() || QCoreApplication::applicationName().isEmpty()) {
            homeDir = QDir::homePath() + "/.local/share/pedometer";
        }
    }
    QDir dir(homeDir);
    if (!dir.exists()) {
        std::error_code why;
        std::filesystem::create_directories(QFile::encodeName(homeDir).toStdString(), why);
        if (!dir.exists()) {
            homeError = QStringLiteral("cannot create the data folder %1: %2")
                            .arg(homeDir, QFileInfo::exists(homeDir)
                                              ? QStringLiteral("a file has that name")
                                              : UserDataFile::Reason(why.value()));
            return {};
        }
        QFile::setPermissions(homeDir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    homeError.clear();
    return homeDir;
}

void AppPaths::SetHome(const QString& dir) {
    std::lock_guard lock(pathsMutex);
    homeEmpty = dir.isEmpty();
    homeDir = homeEmpty ? QString() : QDir::cleanPath(QDir(dir).absolutePath());
}

QString AppPaths::HomeError() {
    std::lock_guard lock(pathsMutex);
    return homeError;
}

QString AppPaths::Res() {
    std::lock_guard lock(pathsMutex);
    if (resDir.isEmpty()) resDir = findResources();
    return resDir;
}

void AppPaths::SetRes(const QString& dir) {
    std::lock_guard lock(pathsMutex);
    resDir = QDir::cleanPath(QDir(dir).absolutePath());
}

QString AppPaths::Plugins() {
    const QString fromEnv = qEnvironmentVariable("PEDOMETER_PLUGIN_DIR");
    if (!fromEnv.isEmpty()) return fromEnv;
    return QDir::cleanPath(executableDir() + QStringLiteral("/../lib/pedometer"));
}

QString AppPaths::HomeFile(const QString& name) {
    const QString home = Home();
    return home.isEmpty() ? QString() : home + '/' + name;
}

QString AppPaths::ResFile(const QString& name) {
    return Res() + '/' + name;
}
