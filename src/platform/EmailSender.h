#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>

class QProcess;

// One e-mail handed to the user's mail program: recipient, subject, text and an
// optional file to attach.
struct EmailMessage {
    QString to;
    QString subject;
    QString body;
    QString attachment;  // a file path; empty for none
};

// Hands an e-mail to the desktop's mail program, which lets the user check and send it.
//
// Normally this runs `xdg-email --subject S --body B [--attach F] ADDRESS` (found on
// PATH, started directly with an argument list, never through a shell). Inside a
// Flatpak sandbox, where xdg-email cannot reach the mail program, it asks the desktop
// portal (org.freedesktop.portal.Email on the session bus) instead.
//
// One message per sender. Send returns false when the message could not be handed over
// at all (no xdg-email, no portal); otherwise `done` is called once, later, from the
// event loop, with true when the mail program took the message. GUI thread only. The
// sender may be deleted at any time; from inside `done`, use deleteLater().
class EmailSender : public QObject {
    Q_OBJECT
public:
    using Done = std::function<void(bool sent)>;

    explicit EmailSender(QObject* parent = nullptr);
    ~EmailSender() override;

    // False (nothing started) when the address is not one plain address.
    bool Send(const EmailMessage& message, Done done);

    // One address: a local part and a domain with a dot, no blanks, one "@", and
    // nothing a mail command could read as more (no "mailto:", "?", "&", ",", ";", no
    // leading "-"), so a stored address can never add recipients or attachments.
    static bool IsPlainAddress(const QString& address);

    // The xdg-email arguments for `message`.
    static QStringList Arguments(const EmailMessage& message);
    // True inside a Flatpak sandbox (its marker file /.flatpak-info exists).
    static bool InSandbox();

private:
    bool SendWithXdgEmail(const EmailMessage& message);
    bool SendWithPortal(const EmailMessage& message);
    void Finish(bool sent);

    Done done_;
    QPointer<QProcess> process_;
    bool busy_ = false;
};
