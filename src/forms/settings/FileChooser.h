#pragma once

#include <QString>
#include <functional>

class QWidget;

// Asks the user for a file to open: Qt's file dialog, which goes through the desktop's
// file-chooser portal where there is one (inside Flatpak, or with the portal platform
// theme). An empty path means the user cancelled. Tests put a chooser of their own in
// its place (SetForTesting), so no dialog is ever shown there. GUI thread only.
class FileChooser {
public:
    using Chooser = std::function<QString(QWidget* parent, const QString& title,
                                          const QString& filter)>;

    static QString ChooseFile(QWidget* parent, const QString& title, const QString& filter);
    // Replaces the dialog; an empty function brings it back.
    static void SetForTesting(Chooser chooser);
};
