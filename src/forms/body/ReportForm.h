#pragma once

#include <QPointer>

#include "BodyReportTable.h"
#include "EmailSender.h"
#include "PedometerForm.h"
#include "SnsListener.h"

class QMenu;
class ReportPopup;

// The body report: chest, waist, hips and weight now and as they were 7, 30 and 90
// days ago. Tapping a value, a row head or a column head turns it into a short text,
// which a menu posts to a social network (SnsGateway) or sends by e-mail to the share
// address; Export writes the whole log to export.csv (BodyCsvExport) and mails it to
// the export address. A missing address leads, through the popup's OK, to the social
// settings ("settings-accounts"); a network that cannot be reached to the social login
// ("settings-social-login"). Without a mail program (no xdg-email, or one that fails)
// the text or the CSV can be saved into the documents folder instead (DocumentsFolder),
// which is then shown, with the path in the message.
//
// Reads the body log once when built, the social record on every send and the units
// from the settings. At most one e-mail is handed over at a time. Opened by the body
// meter's option menu ("report"). GUI thread only; it is the SnsGateway's listener
// while it exists.
class ReportForm : public PedometerForm, public SnsListener {
    Q_OBJECT
public:
    static constexpr int ID_CELL = 200;        // + row * 4 + column
    static constexpr int ID_ROW_HEAD = 220;    // + row
    static constexpr int ID_COLUMN_HEAD = 230; // + column
    static constexpr int ID_POPUP_CLOSE = 105;
    static constexpr int ID_POPUP_OK = 106;
    static constexpr int ID_EXPORT = 108;
    static constexpr int ID_SAVE_DOCUMENTS = 109;  // the choice offered without a mail program
    static constexpr int ID_SAVE_CANCEL = 107;
    static constexpr int ID_FACEBOOK = 150;
    static constexpr int ID_TWITTER = 151;
    static constexpr int ID_EMAIL = 152;
    static constexpr int ID_MORE_PROVIDERS = 153;  // + index among the other providers
    static constexpr int ID_OTHER_POPUP = 50;
    // Where the OK popup leads.
    static constexpr int TARGET_NONE = -1;
    static constexpr int TARGET_SOCIAL_SETTINGS = 0;
    static constexpr int TARGET_SOCIAL_LOGIN = 1;

    explicit ReportForm(QWidget* parent = nullptr);
    ~ReportForm() override;
    // Always true.
    bool Initialize();
    void OnInitializing() override;
    void OnActionPerformed(const QWidget& source, int actionId) override;

    // Replaces the last "%@" in `text` with `value`.
    static void ExchangeOnLastEntrance(QString& text, const QString& value);
    static QString GetSizeSystem();
    static QString GetWheightSystem();
    static QString GetSizeString(double cm);
    static QString GetWheightString(double kg);

    void ShowContextMenu(const QPoint& at);
    void ShowPopupWithText(const QString& text);
    void ShowPopupOkWithText(const QString& text, int target = TARGET_NONE);

    void OnEmailMessageSent(bool sent);
    void OnSnsAuthenticated(const QString& provider, const SnsAuthResult& result,
                            const QString& errorMessage) override;
    void OnSnsLoggedInStatusReceived(int requestId, const QString& provider, bool isLoggedIn,
                                     bool ok, const QString& errorCode,
                                     const QString& errorMessage) override;
    void OnMySnsStatusTextUpdated(int requestId, const QString& provider, bool ok,
                                  const QString& errorCode, const QString& errorMessage) override;

    const BodyReportTable& GetTable() const { return table_; }
    QString GetShareText() const { return shareText_; }
    QMenu* GetContextMenu() const { return contextMenu_; }
    ReportPopup* GetPopup() const { return popup_; }
    ReportPopup* GetOkPopup() const { return okPopup_; }
    ReportPopup* GetSavePopup() const { return savePopup_; }
    int GetOkTarget() const { return okTarget_; }
    bool IsSending() const { return email_ != nullptr; }

protected:
    bool OnDraw(QPainter& painter) override;

private:
    void BuildTable(int top);
    void AddTapArea(const QRect& bounds, int actionId);
    void Share(int actionId, const QWidget& source);
    QString ShareTextFor(int actionId) const;
    void SendEmail();
    void Export();
    bool StartEmail(const QString& to, const QString& subject, const QString& body,
                    const QString& attachment);
    void OfferSaving();
    void SaveToDocuments();
    void PostTo(const QString& provider);
    void Authenticate(const QString& provider);
    QStringList MoreProviders() const;
    void OpenScreen(const QString& name);

    BodyReportTable table_;
    QString shareText_;
    QPointer<EmailSender> email_;
    QPointer<QMenu> contextMenu_;
    ReportPopup* popup_ = nullptr;
    ReportPopup* okPopup_ = nullptr;
    ReportPopup* savePopup_ = nullptr;
    int okTarget_ = TARGET_NONE;
    // What the mail would have carried, as a file for the documents folder.
    QString unsentName_;
    QByteArray unsent_;
};
