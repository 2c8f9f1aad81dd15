#pragma once

#include <QString>
#include <QTemporaryDir>
#include <memory>

// Helpers shared by the test programs.
namespace testdata {

// The folder of real walk recordings beside the checkout; empty if absent.
QString WalksDir();

// Path of the built pedometer-cli.
QString CliPath();

// A fresh temporary folder that is removed with the object.
std::unique_ptr<QTemporaryDir> MakeTempDir();

// Writes `text` to `path`; returns false on failure.
bool WriteFile(const QString& path, const QByteArray& text);

}  // namespace testdata
