#include "SingleInstance.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "DataFolderLock.h"
#include "PrivateBus.h"
#include "TestData.h"

namespace {

TEST(SingleInstanceTest, ASecondLaunchBringsTheFirstForwardWithItsToken) {
    PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    QStringList activations;
    auto first = std::make_unique<SingleInstance>(bus.Connect(QStringLiteral("first")));
    first->SetOnActivate([&](const QString& token) { activations << token; });
    ASSERT_EQ(first->Claim(), SingleInstance::Outcome::First);

    qputenv("XDG_ACTIVATION_TOKEN", "token-42");
    SingleInstance second(bus.Connect(QStringLiteral("second")));
    EXPECT_EQ(second.Claim(), SingleInstance::Outcome::HandedOver);
    qunsetenv("XDG_ACTIVATION_TOKEN");
    EXPECT_EQ(activations, QStringList{QStringLiteral("token-42")});

    first.reset();  // gone: the next launch runs as the first again
    SingleInstance third(bus.Connect(QStringLiteral("third")));
    EXPECT_TRUE(SpinUntil([&] { return third.Claim() == SingleInstance::Outcome::First; }));

    SingleInstance alone(QDBusConnection(QStringLiteral("not-connected")));
    EXPECT_EQ(alone.Claim(), SingleInstance::Outcome::NoBus);
}

TEST(SingleInstanceTest, OneWriterPerDataFolder) {
    auto dir = testdata::MakeTempDir();
    QString error;
    auto lock = DataFolderLock::Acquire(dir->path(), &error);
    ASSERT_TRUE(lock) << error.toStdString();

    EXPECT_FALSE(DataFolderLock::Acquire(dir->path(), &error));
    EXPECT_EQ(error, QStringLiteral("another pedometer (process %1) is using the data folder %2")
                         .arg(::getpid())
                         .arg(dir->path()));

    lock.reset();
    EXPECT_TRUE(DataFolderLock::Acquire(dir->path(), &error));
    EXPECT_FALSE(DataFolderLock::Acquire(dir->path() + QStringLiteral("/missing"), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("cannot make the lock file")))
        << error.toStdString();
}

}  // namespace
