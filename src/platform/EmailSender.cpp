#include "EmailSender.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QVariantMap>

EmailSender::EmailSender(QObject* parent) : QObject(parent) {}

EmailSender::~EmailSender() {
    // The mail program may outlive us; it is not ours to stop.
    if (process_ && process_->state() != QProcess::NotRunning) {
        process_->disconnect(this);
        process_->setParent(nullptr);
        QObject::connect(process_, &QProcess::finished, process_, &QObject::deleteLater);
    }
}

QStringList EmailSender::Arguments(const EmailMessage& message) {
    QStringList arguments{QStringLiteral("--subject"), message.subject, QStringLiteral("--body"),
                          message.body};
    if (!message.attachment.isEmpty())
        arguments << QStringLiteral("--attach") << message.attachment;
    arguments << message.to;
    return arguments;
}

bool EmailSender::InSandbox() {
    return QFile::exists(QStringLiteral("/.flatpak-info"));
}

bool EmailSender::IsPlainAddress(const QString& address) {
    static const QRegularExpression kAddress(
        QStringLiteral("^(?!-)[^@\\s?&,;:<>\"()\\[\\]\\\\]+@[^@\\s.?&,;:<>\"()\\[\\]\\\\/]+"
                       "(\\.[^@\\s.?&,;:<>\"()\\[\\]\\\\/]+)+$"));
    return kAddress.match(address).hasMatch();
}

bool EmailSender::Send(const EmailMessage& message, Done done) {
    if (busy_ || !IsPlainAddress(message.to)) return false;
    done_ = std::move(done);
    busy_ = InSandbox() ? SendWithPortal(message) : SendWithXdgEmail(message);
    return busy_;
}

bool EmailSender::SendWithXdgEmail(const EmailMessage& message) {
    auto* process = new QProcess(this);
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->start(QStringLiteral("xdg-email"), Arguments(message));
    if (!process->waitForStarted()) {
        qWarning("EmailSender: xdg-email could not be started: %s",
                 qPrintable(process->errorString()));
        delete process;
        return false;
    }
    process_ = process;
    connect(process, &QProcess::finished, this,
            [this, process](int exitCode, QProcess::ExitStatus status) {
        process->deleteLater();
        // xdg-email's exit codes: 0 handed over, 3 no mail program, 4 the program failed.
        Finish(status == QProcess::NormalExit && exitCode == 0);
    });
    return true;
}

bool EmailSender::SendWithPortal(const EmailMessage& message) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    qDBusRegisterMetaType<QList<QDBusUnixFileDescriptor>>();
    QVariantMap options;
    options.insert(QStringLiteral("address"), message.to);  // portal version 1
    options.insert(QStringLiteral("addresses"), QStringList{message.to});
    options.insert(QStringLiteral("subject"), message.subject);
    options.insert(QStringLiteral("body"), message.body);
    if (!message.attachment.isEmpty()) {
        QFile file(message.attachment);
        if (!file.open(QIODevice::ReadOnly)) return false;
        // The descriptor is duplicated into the message, so the file may close after.
        options.insert(QStringLiteral("attachment_fds"),
                       QVariant::fromValue(QList<QDBusUnixFileDescriptor>{
                           QDBusUnixFileDescriptor(file.handle())}));
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Email"), QStringLiteral("ComposeEmail"));
    call << QString() << options;
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        if (w->isError())
            qWarning("EmailSender: the e-mail portal refused: %s", qPrintable(w->error().message()));
        Finish(!w->isError());
    });
    return true;
}

void EmailSender::Finish(bool sent) {
    busy_ = false;
    Done done = std::move(done_);
    done_ = nullptr;
    if (done) done(sent);
}
