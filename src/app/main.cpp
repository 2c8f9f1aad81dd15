// pedometer: the windowed application.
#include <QApplication>
#include <cstdio>

#include "AppAssembly.h"
#include "FontConfigWarmUp.h"
#include "LaunchOptions.h"
#include "ProcessSettings.h"
#include "SingleInstance.h"

namespace {

// Prints what the command line asked for (status 0) or why it was refused (status 2);
// nullopt when the application is to run.
std::optional<int> Answer(LaunchOptions::Outcome outcome, const QString& message) {
    switch (outcome) {
        case LaunchOptions::Outcome::Run:
            return std::nullopt;
        case LaunchOptions::Outcome::Print:
            std::printf("%s", qPrintable(message));
            return 0;
        case LaunchOptions::Outcome::Fail:
            break;
    }
    std::fprintf(stderr, "pedometer: %s\n", qPrintable(message));
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication::setApplicationName(QStringLiteral("pedometer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PEDOMETER_VERSION));
    QStringList arguments;
    for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
    QString message;
    if (const auto status = Answer(LaunchOptions::ParseBeforeQt(arguments, &message), message))
        return *status;

    const FontConfigWarmUp fontConfig;  // meanwhile: ready for the first text laid out
    QApplication app(argc, argv);  // takes Qt's own options (-platform, ...) off the list
    QGuiApplication::setDesktopFileName(QLatin1String(SingleInstance::kAppId));
    LaunchOptions options;
    if (const auto status = Answer(
            LaunchOptions::Parse(QCoreApplication::arguments(), &options, &message), message))
        return *status;
    ProcessSettings::Apply(options);

    AppAssembly assembly(options);
    switch (assembly.Assemble(&message)) {
        case AppAssembly::Outcome::Ready:
            return assembly.Run();
        case AppAssembly::Outcome::HandedOver:
            return 0;
        case AppAssembly::Outcome::Failed:
            break;
    }
    return *Answer(LaunchOptions::Outcome::Fail, message);
}
