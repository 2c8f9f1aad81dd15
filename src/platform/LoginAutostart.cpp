#include "LoginAutostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>

#include "SingleInstance.h"

namespace {
// Quotes a path for an Exec line when it needs it (desktop entry rules).
QString ExecArgument(QString path) {
    if (!path.contains(QRegularExpression(QStringLiteral("[\\s\"'\\\\$`]")))) return path;
    path.replace(QLatin1Char('\\'), QStringLiteral("\\\\\\\\"));
    for (const char* c : {"\"", "`", "$"})
        path.replace(QLatin1String(c), QStringLiteral("\\\\") + QLatin1String(c));
    return QLatin1Char('"') + path + QLatin1Char('"');
}
}  // namespace

QString LoginAutostart::EntryPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/") + QLatin1String(SingleInstance::kAppId) +
           QStringLiteral(".desktop");
}

bool LoginAutostart::IsOn() {
    return QFile::exists(EntryPath());
}

bool LoginAutostart::SetOn(bool on, QString* error) {
    const QString path = EntryPath();
    if (!on) {
        if (!QFile::exists(path) || QFile::remove(path)) return true;
        if (error) *error = QStringLiteral("cannot remove %1").arg(path);
        return false;
    }
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        const QString entry = QStringLiteral(
                                  "[Desktop Entry]\n"
                                  "Type=Application\n"
                                  "Name=Pedometer\n"
                                  "Comment=Counts steps in the background from login\n"
                                  "Exec=%1 --background\n"
                                  "Icon=%2\n"
                                  "NoDisplay=true\n"
                                  "X-GNOME-Autostart-enabled=true\n")
                                  .arg(ExecArgument(QCoreApplication::applicationFilePath()),
                                       QLatin1String(SingleInstance::kAppId));
        file.write(entry.toUtf8());
        if (file.commit()) return true;
    }
    if (error) *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
    return false;
}
