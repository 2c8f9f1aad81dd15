#pragma once

// A fake xdg-email first on PATH for as long as the object lives: it writes each argument,
// NUL-terminated, into args.txt beside itself and exits with the status named in
// FAKE_XDG_EMAIL_EXIT (0 when unset).
#include <QFile>
#include <QStringList>

#include "TestData.h"

class FakeMailProgram {
public:
    FakeMailProgram() : oldPath_(qgetenv("PATH")) {
        const QString fake = dir_->path() + QStringLiteral("/xdg-email");
        valid_ = testdata::WriteFile(
            fake, "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\0' \"$a\"; done > \"$(dirname "
                  "\"$0\")/args.txt\"\nexit ${FAKE_XDG_EMAIL_EXIT:-0}\n");
        QFile::setPermissions(fake, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", dir_->path().toUtf8() + ':' + oldPath_);
    }
    ~FakeMailProgram() {
        qputenv("PATH", oldPath_);
        qunsetenv("FAKE_XDG_EMAIL_EXIT");
    }
    FakeMailProgram(const FakeMailProgram&) = delete;
    FakeMailProgram& operator=(const FakeMailProgram&) = delete;

    bool IsValid() const { return valid_ && dir_->isValid(); }
    // Takes every mail program off PATH.
    void Remove() { qputenv("PATH", dir_->path().toUtf8() + "/nowhere"); }
    // The arguments of the last run.
    QStringList Arguments() const {
        QFile file(dir_->path() + QStringLiteral("/args.txt"));
        if (!file.open(QIODevice::ReadOnly)) return {};
        return QString::fromUtf8(file.readAll()).split(QChar(0), Qt::SkipEmptyParts);
    }

private:
    std::unique_ptr<QTemporaryDir> dir_ = testdata::MakeTempDir();
    QByteArray oldPath_;
    bool valid_ = false;
};
