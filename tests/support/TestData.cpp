#include "TestData.h"

#include <QDir>
#include <QFile>

namespace testdata {

QString WalksDir() {
    const QString dir = QStringLiteral(PEDOMETER_SHARED_DATA) + QStringLiteral("/walks");
    return QDir(dir).exists() ? QDir(dir).canonicalPath() : QString();
}

bool InCi() {
    const QByteArray ci = qgetenv("CI");
    return !ci.isEmpty() && ci != "false" && ci != "0";
}

QString CliPath() {
    return QStringLiteral(PEDOMETER_CLI_PATH);
}

std::unique_ptr<QTemporaryDir> MakeTempDir() {
    auto dir = std::make_unique<QTemporaryDir>();
    dir->setAutoRemove(true);
    return dir;
}

bool WriteFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    return file.write(text) == text.size();
}

}  // namespace testdata
