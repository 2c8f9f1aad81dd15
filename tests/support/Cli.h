#pragma once

// pedometer-cli run as the user runs it, for the tests of its commands.
//
// Started with posix_spawn rather than QProcess: Qt starts children with a vfork-style
// clone that the thread sanitizer cannot follow, after which it misses this process's
// locking and reports races in the threaded tests that run later in the same program.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QStringList>
#include <cstring>
#include <vector>

#include "TestData.h"

struct CliRun {
    int status = -1;  // the exit status; -1 when it did not start or did not exit
    QString out;
    QString err;
};

// Runs pedometer-cli with `args` under umask 022. `locale` (e.g. "de_DE.UTF-8") replaces
// LC_ALL and LANG; `fileBlocks` > 0 limits the files it writes to that many 512-byte
// blocks with the signal ignored, so that a write fails as on a full disk.
inline CliRun RunCli(const QStringList& args, const char* locale = nullptr, int fileBlocks = 0) {
    CliRun run;
    const auto dir = testdata::MakeTempDir();
    const QByteArray outPath = QFile::encodeName(dir->filePath(QStringLiteral("out")));
    const QByteArray errPath = QFile::encodeName(dir->filePath(QStringLiteral("err")));
    const QByteArray limit = fileBlocks > 0 ? "trap '' XFSZ; ulimit -f " +
                                                  QByteArray::number(fileBlocks) + "; "
                                            : QByteArray();
    std::vector<QByteArray> argBytes{"/bin/sh", "-c", limit + "umask 022; exec \"$0\" \"$@\"",
                                     QFile::encodeName(testdata::CliPath())};
    for (const QString& a : args) argBytes.push_back(a.toLocal8Bit());
    std::vector<QByteArray> envBytes;
    for (char** e = environ; *e != nullptr; ++e) {
        if (locale == nullptr || (std::strncmp(*e, "LC_ALL=", 7) != 0 &&
                                  std::strncmp(*e, "LANG=", 5) != 0))
            envBytes.emplace_back(*e);
    }
    if (locale != nullptr) {
        envBytes.push_back(QByteArray("LC_ALL=") + locale);
        envBytes.push_back(QByteArray("LANG=") + locale);
    }
    std::vector<char*> argv, envp;
    for (QByteArray& a : argBytes) argv.push_back(a.data());
    for (QByteArray& e : envBytes) envp.push_back(e.data());
    argv.push_back(nullptr);
    envp.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.constData(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.constData(), O_WRONLY | O_CREAT, 0600);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (spawned != 0 || waitpid(pid, &status, 0) != pid) return run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    QFile out(QFile::decodeName(outPath)), err(QFile::decodeName(errPath));
    if (out.open(QIODevice::ReadOnly)) run.out = QString::fromUtf8(out.readAll());
    if (err.open(QIODevice::ReadOnly)) run.err = QString::fromUtf8(err.readAll());
    return run;
}
