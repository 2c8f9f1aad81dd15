#include "DocumentsFolder.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "UserDataFile.h"

namespace {
QString& FolderForTesting() {
    static QString folder;
    return folder;
}

DocumentsFolder::Opener& OpenerForTesting() {
    static DocumentsFolder::Opener opener;
    return opener;
}
}  // namespace

QString DocumentsFolder::Path() {
    const QString folder = FolderForTesting().isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                               : FolderForTesting();
    if (folder.isEmpty() || !QDir().mkpath(folder)) return {};
    return folder;
}

QString DocumentsFolder::Save(const QString& name, const QByteArray& bytes, QString* error) {
    const QString folder = Path();
    if (folder.isEmpty()) {
        *error = QStringLiteral("there is no documents folder");
        return {};
    }
    const QFileInfo info(name);
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    for (int n = 1; n < 1000; ++n) {
        const QString candidate =
            folder + QLatin1Char('/') + info.completeBaseName() +
            (n == 1 ? QString() : QStringLiteral("-%1").arg(n)) + suffix;
        // A link counts as taken too: UserDataFile would refuse it anyway.
        if (QFileInfo::exists(candidate) || QFileInfo(candidate).isSymLink()) continue;
        return UserDataFile::Write(candidate, bytes, error) ? candidate : QString();
    }
    *error = QStringLiteral("%1 has no free name left for %2").arg(folder, name);
    return {};
}

bool DocumentsFolder::Show() {
    const QString folder = Path();
    if (folder.isEmpty()) return false;
    const QUrl url = QUrl::fromLocalFile(folder);
    return OpenerForTesting() ? OpenerForTesting()(url) : QDesktopServices::openUrl(url);
}

void DocumentsFolder::SetForTesting(const QString& folder, Opener opener) {
    FolderForTesting() = folder;
    OpenerForTesting() = std::move(opener);
}
