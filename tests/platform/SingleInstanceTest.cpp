#include "SingleInstance.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "DataFolderLock.h"
#include "PrivateBus.h"
#include "TestData.h"

namespace {

TEST(SingleInstanceTest, ASecondLaunchBringsTheFirstForwardAndASecondWriterIsRefused) {
    PrivateBus bus;
    ASSERT_TRUE(bus.IsRunning());
    QStringList tokens;
    auto first = std::make_unique<SingleInstance>(bus.Connect(QStringLiteral("first")));
    first->SetOnActivate([&](const QString& token) { tokens << token; });
    ASSERT_EQ(first->Claim(), SingleInstance::Outcome::First);
    qputenv("XDG_ACTIVATION_TOKEN", "token-42");
    EXPECT_EQ(SingleInstance(bus.Connect(QStringLiteral("second"))).Claim(),
              SingleInstance::Outcome::HandedOver);
    qunsetenv("XDG_ACTIVATION_TOKEN");
    EXPECT_EQ(tokens, QStringList{QStringLiteral("token-42")});
    first.reset();  // gone: the next launch is the first again
    SingleInstance third(bus.Connect(QStringLiteral("third")));
    EXPECT_TRUE(SpinUntil([&] { return third.Claim() == SingleInstance::Outcome::First; }));

    auto dir = testdata::MakeTempDir();
    QString error;
    auto lock = DataFolderLock::Acquire(dir->path(), &error);
    ASSERT_TRUE(lock);
    EXPECT_FALSE(DataFolderLock::Acquire(dir->path(), &error));
    EXPECT_EQ(error, QStringLiteral("another pedometer (process %1) is using the data folder %2")
                         .arg(::getpid())
                         .arg(dir->path()));
    lock.reset();
    EXPECT_TRUE(DataFolderLock::Acquire(dir->path(), &error));
}

}  // namespace
