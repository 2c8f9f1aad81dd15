#pragma once

#include <QDateTime>
#include <QTemporaryDir>

// A clean world for a test of the counting pipeline or the screens: an empty data
// folder (the databases are seeded there on first use), an unset body profile, the
// default settings, a configuration folder of its own (XDG_CONFIG_HOME) and virtual
// time standing at `now`. Everything is put back when the
// object goes: the system clock, and a database manager that reopens wherever the next
// test points it.
class FreshProfile {
public:
    explicit FreshProfile(const QDateTime& now = QDateTime(QDate(2026, 6, 15), QTime(9, 0, 0)));
    ~FreshProfile();
    FreshProfile(const FreshProfile&) = delete;
    FreshProfile& operator=(const FreshProfile&) = delete;

    bool IsValid() const { return dir_.isValid(); }
    QString Path() const { return dir_.path(); }

private:
    QTemporaryDir dir_;
    QByteArray configHome_;  // the one to put back
};
