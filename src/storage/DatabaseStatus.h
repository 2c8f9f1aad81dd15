#pragma once

#include <QString>

// Whether a database connection can be used, and if not, why: for telling the user.
struct DatabaseStatus {
    QString path;           // the database file
    bool open = false;      // opened and recognised as ours
    bool writable = false;  // changes are saved
    QString error;          // why it is not open or not writable; empty when it is
    bool olderApp = false;  // the file is from a newer version: read, never written
    QString lastFailure;    // the latest statement that failed on a usable connection

    bool usable() const { return open && writable; }
};
