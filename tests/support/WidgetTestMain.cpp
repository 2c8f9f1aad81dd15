// Test entry for widgets: a QApplication on the offscreen platform, so widget
// tests run without a display and drive controls with real mouse and key events.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pedometer-tests"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
