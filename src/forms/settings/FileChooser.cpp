#include "FileChooser.h"

#include <QFileDialog>
#include <QStandardPaths>

namespace {
FileChooser::Chooser& Replacement() {
    static FileChooser::Chooser chooser;
    return chooser;
}
}  // namespace

QString FileChooser::ChooseFile(QWidget* parent, const QString& title, const QString& filter) {
    if (Replacement()) return Replacement()(parent, title, filter);
    return QFileDialog::getOpenFileName(
        parent, title, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), filter);
}

void FileChooser::SetForTesting(Chooser chooser) {
    Replacement() = std::move(chooser);
}
