#pragma once

#include <QByteArrayList>
#include <QString>
#include <QTemporaryDir>
#include <memory>

// Helpers shared by the test programs.
namespace testdata {

// The folder of real walk recordings beside the checkout; empty if absent.
QString WalksDir();

// Whether the tests run in CI (the CI variable is set and not "false"), where the walk
// recordings are always present and their absence is an error.
bool InCi();

// Path of the built pedometer-cli.
QString CliPath();

// A fresh temporary folder that is removed with the object.
std::unique_ptr<QTemporaryDir> MakeTempDir();

// Writes `text` to `path`; returns false on failure.
bool WriteFile(const QString& path, const QByteArray& text);
// The bytes of the file at `path`; empty when it cannot be read.
QByteArray ReadFile(const QString& path);

// The rows of tests/data/NAME, a table of cases: cells separated by tabs, blank lines and
// lines starting with '#' left out. In a cell \n, \t, \\ and \xHH stand for those bytes.
// A missing or empty table fails the test.
QList<QByteArrayList> Table(const QString& name);

}  // namespace testdata

// Declares `var` as the walk recordings folder, or ends the test when they are missing:
// a failure in CI, a skip with a message elsewhere.
#define PEDOMETER_WALKS_DIR(var)                                                               \
    const QString var = testdata::WalksDir();                                                  \
    if (var.isEmpty()) {                                                                       \
        if (testdata::InCi()) FAIL() << "the walk recordings are missing beside the checkout"; \
        GTEST_SKIP() << "no walk recordings beside the checkout";                              \
    }
