// Test entry for the display-free parts: a QCoreApplication so that event queues,
// timers and threads behave as in the application.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLocale>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pedometer-tests"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
