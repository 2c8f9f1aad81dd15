#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <functional>

// The user's documents folder (QStandardPaths::DocumentsLocation), where sharing keeps
// its text or CSV when no mail program takes it. Files go through UserDataFile, so
// they are whole and private (0600) or not there at all; a name already taken gets
// "-2", "-3", ... before its suffix, so nothing earlier is replaced. Showing the folder
// goes through QDesktopServices (xdg-open, or the OpenURI portal inside Flatpak).
// Tests put a folder and an opener of their own in place (SetForTesting), so no file
// manager is ever started there. GUI thread only.
class DocumentsFolder {
public:
    using Opener = std::function<bool(const QUrl& folder)>;

    // The folder, made when missing; empty when the desktop names none.
    static QString Path();
    // Writes `bytes` as `name` (or the next free variant of it) in the folder. The path
    // written, or empty with `error` saying why.
    static QString Save(const QString& name, const QByteArray& bytes, QString* error);
    // Opens the folder in the file manager; false when nothing could.
    static bool Show();
    // A folder and an opener in place of the real ones; empty ones bring those back.
    static void SetForTesting(const QString& folder, Opener opener);
};
