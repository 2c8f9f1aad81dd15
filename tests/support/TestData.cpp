#include "TestData.h"

#include <gtest/gtest.h>

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

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<QByteArrayList> Table(const QString& name) {
    QFile file(QStringLiteral(PEDOMETER_SOURCE_DIR "/tests/data/") + name);
    QList<QByteArrayList> rows;
    for (const QByteArray& line : file.open(QIODevice::ReadOnly) ? file.readAll().split('\n')
                                                                 : QByteArrayList()) {
        if (line.trimmed().isEmpty() || line.startsWith('#')) continue;
        QByteArrayList row;
        for (const QByteArray& cell : line.split('\t')) {
            QByteArray text;
            for (qsizetype i = 0; i < cell.size(); ++i) {
                if (cell[i] != '\\' || i + 1 == cell.size()) {
                    text += cell[i];
                } else if (const char c = cell[++i]; c == 'x') {
                    text += char(cell.mid(i + 1, 2).toInt(nullptr, 16));
                    i += 2;
                } else {
                    text += c == 'n' ? '\n' : c == 't' ? '\t' : c;
                }
            }
            row << text;
        }
        rows << row;
    }
    EXPECT_FALSE(rows.isEmpty()) << "no cases in " << name.toStdString();
    return rows;
}

}  // namespace testdata
