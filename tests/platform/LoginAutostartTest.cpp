#include "LoginAutostart.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "FreshProfile.h"

namespace {

// Turning it on writes an entry that starts this program counting with no window; off
// removes it; an autostart folder that cannot be made leaves it off with a reason.
TEST(LoginAutostartTest, WritesAndRemovesTheEntryAndSaysWhyWhenItCannot) {
    FreshProfile profile;  // XDG_CONFIG_HOME inside the profile
    EXPECT_TRUE(LoginAutostart::EntryPath().startsWith(profile.Path()));
    EXPECT_FALSE(LoginAutostart::IsOn());
    ASSERT_TRUE(LoginAutostart::SetOn(true));
    EXPECT_TRUE(LoginAutostart::IsOn());
    QFile entry(LoginAutostart::EntryPath());
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(entry.readAll());
    EXPECT_TRUE(text.startsWith(QStringLiteral("[Desktop Entry]\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("\nExec=") + QCoreApplication::applicationFilePath() +
                              QStringLiteral(" --background\n")))
        << text.toStdString();
    ASSERT_TRUE(LoginAutostart::SetOn(false));
    EXPECT_FALSE(LoginAutostart::IsOn());
    EXPECT_TRUE(LoginAutostart::SetOn(false)) << "already off";

    // A file where the folder should be: no entry can be written below it, not even by root.
    const QString folder = QFileInfo(LoginAutostart::EntryPath()).absolutePath();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    QFile blocker(folder);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    QString error;
    EXPECT_FALSE(LoginAutostart::SetOn(true, &error));
    EXPECT_TRUE(error.contains(LoginAutostart::EntryPath())) << error.toStdString();
    EXPECT_FALSE(LoginAutostart::IsOn());
}

}  // namespace
