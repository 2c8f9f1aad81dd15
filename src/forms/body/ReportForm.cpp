#include "ReportForm.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPainter>
#include <cmath>

#include "AppResource.h"

#include "BodyCsvExport.h"
#include "CaptionButton.h"
#include "Clock.h"
#include "Converter.h"
#include "DocumentsFolder.h"
#include "EmailSender.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "ReportPopup.h"
#include "ScreenDirectory.h"
#include "SnsGateway.h"
#include "SoundsManager.h"
#include "TivButton.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

namespace {
// The 480-wide layout.
constexpr int kLeft = 10;
constexpr int kHeadWidth = 96;
constexpr int kColumnWidth = 91;
constexpr int kTop = 16;
constexpr int kHeadHeight = 60;  // a finger-sized tap area
constexpr int kRowHeight = 74;
constexpr int kRowGap = 6;
const QColor kValueColor(252, 209, 75);

// The application's own client credentials at each network.
constexpr const char* kTwitterKey = "Zq7RtLm2WxP9sKd4VbN3c";
constexpr const char* kTwitterSecret = "h4Jk8Lp2Qr6St0Uv3Wx7Yz1Ab5Cd9Ef2Gh6Ij0K";
constexpr const char* kFacebookId = "987650123498765";
constexpr const char* kFacebookSecret = "5f0c2e9a7b3d41c68e2a90fd17b4c3e6";

struct RowText {
    const char* name;
    const char* current;
    const char* change;  // "%1": 7, 30 or 90
    const char* row;
};
const RowText kRows[4] = {
    {"body__ Chest", "body__ My pedometer: Current chest size: %@%@",
     "body__ My pedometer: Chest size change in last %1 days: %@%@",
     "body__ My pedometer: Current chest size:%@%@; Changes: 7 days:%@, 30 days:%@, 90 days:%@"},
    {"body__ Waist", "body__ My pedometer: Current waist size: %@%@",
     "body__ My pedometer: Waist size change in last %1 days: %@%@",
     "body__ My pedometer: Current waist size:%@%@; Changes: 7 days:%@, 30 days:%@, 90 days:%@"},
    {"body__ Hips", "body__ My pedometer: Current hips size: %@%@",
     "body__ My pedometer: Hips size change in last %1 days: %@%@",
     "body__ My pedometer: Current hips size:%@%@; Changes: 7 days:%@, 30 days:%@, 90 days:%@"},
    {"body__ Weight", "body__ My pedometer: Current weight: %@ %@",
     "body__ My pedometer: Weight change in last %1 days: %@ %@",
     "body__ My pedometer: Current weight:%@ %@; Changes: 7 days:%@, 30 days:%@, 90 days:%@"},
};
const char* const kColumnHeads[4] = {"body__ Now", "body__ 7days", "body__ 30days",
                                     "body__ 90days"};
const int kDays[4] = {0, 7, 30, 90};

bool Imperial() {
    return PedometerOptions::GetInstance().measurementSystem;
}
QString ProviderName(const QString& provider) {
    if (provider.isEmpty()) return provider;
    return provider.left(1).toUpper() + provider.mid(1);
}
}  // namespace

ReportForm::ReportForm(QWidget* parent) : PedometerForm(parent) {}

ReportForm::~ReportForm() {
    SnsGateway::GetInstance().SetListener(nullptr);
}

bool ReportForm::Initialize() {
    setObjectName(QStringLiteral("ReportForm"));
    return true;
}

// --- Formatting -------------------------------------------------------------------

void ReportForm::ExchangeOnLastEntrance(QString& text, const QString& value) {
    const qsizetype at = text.lastIndexOf(QStringLiteral("%@"));
    if (at >= 0) text.replace(at, 2, value);
}

QString ReportForm::GetSizeSystem() {
    return Imperial() ? QStringLiteral("\"") : AppResource::Text("body__ (cm)");
}

QString ReportForm::GetWheightSystem() {
    return AppResource::Text(Imperial() ? "body__ (lb)" : "body__ (kg)");
}

QString ReportForm::GetSizeString(double cm) {
    if (cm == BodyReportTable::kNoValue) return QStringLiteral("-");
    return Converter::GetLocalStringN(Imperial() ? Converter::CmToInch(cm) : cm, 1);
}

QString ReportForm::GetWheightString(double kg) {
    if (kg == BodyReportTable::kNoValue) return QStringLiteral("-");
    return Converter::GetLocalStringN(Imperial() ? Converter::KgToPnd(kg) : kg, 1);
}

// --- Building ---------------------------------------------------------------------

void ReportForm::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(AppResource::Text("body__ Report"));
    ShowBackButton();
    table_ = BodyReportTable::FromLogs(PedometerDBManager::GetInstance().GetBodyLogs(),
                                       Clock::Now().date());
    SnsGateway::GetInstance().SetListener(this);

    const int top = GetClientTop() + TivUtils::Scaled(kTop);
    BuildTable(top);
    const int below = top + TivUtils::Scaled(kHeadHeight + 4 * kRowHeight) + TivUtils::Scaled(12);
    // A taller window makes the rows taller; the hint and Export move down with them.
    const int rowsTop =
        int(std::lround(GetClientTop() / TivUtils::GetScale())) + kTop + kHeadHeight;
    SetGrowBand(rowsTop, rowsTop + 4 * kRowHeight, /*onlyGrows=*/true);

    auto* hint = new TivLabel(this);
    hint->Initialize();
    hint->setGeometry(TivUtils::Scaled(20), below, width() - TivUtils::Scaled(40),
                      TivUtils::Scaled(60));
    hint->SetFontSize(TivUtils::Scaled(22));
    hint->SetTextColor(QColor(190, 198, 212));
    hint->SetNeedOutline(false);
    hint->SetText(AppResource::Text("body__ Tap any value, row or column to share it"));

    CaptionButton::Create(
        this, QStringLiteral("btn-blue.png"),
        QPoint((width() - CaptionButton::Size().width()) / 2, below + TivUtils::Scaled(76)),
        ID_EXPORT, this, AppResource::Text("body__ Export"))
        ->setObjectName(QStringLiteral("export"));

    popup_ = new ReportPopup(this);
    popup_->Initialize(ID_POPUP_CLOSE, AppResource::Text("body__ OK"), this);
    okPopup_ = new ReportPopup(this);
    okPopup_->Initialize(ID_POPUP_OK, AppResource::Text("body__ OK"), this);
    savePopup_ = new ReportPopup(this);
    savePopup_->Initialize(ID_SAVE_DOCUMENTS, AppResource::Text("body__ Save"), this);
    savePopup_->AddSecondButton(ID_SAVE_CANCEL, AppResource::Text("body__ Cancel"), this);
}

void ReportForm::BuildTable(int top) {
    auto label = [this](const QRect& bounds, const QString& text, int size, const QColor& color,
                        int alignment) {
        auto* l = new TivLabel(this);
        l->Initialize();
        l->SetNeedOutline(color == Qt::white || color == kValueColor);  // grey captions stay flat
        l->setGeometry(bounds);
        l->SetFontSize(size);
        l->SetTextColor(color);
        l->SetHorizontalAlligment(alignment);
        l->SetText(text);
        return l;
    };
    const int valuesLeft = TivUtils::Scaled(kLeft + kHeadWidth);
    // One size for every value, the largest up to 36 at which the widest one fits its cell.
    QStringList valueTexts;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const double value = table_.Value(row, column);
            valueTexts << (row == BodyReportTable::WEIGHT ? GetWheightString(value)
                                                          : GetSizeString(value));
        }
    }
    const int valueSize = TivUtils::LargestFittingSize(8, TivUtils::Scaled(36), valueTexts,
                                                       TivUtils::Scaled(kColumnWidth - 8));
    QStringList names;
    for (const RowText& row : kRows) names << AppResource::Text(row.name);
    const int nameSize = TivUtils::LargestFittingSize(8, TivUtils::Scaled(26), names,
                                                      TivUtils::Scaled(kHeadWidth - 14));
    for (int column = 0; column < 4; ++column) {
        // Each column from its own left edge to the next one's, so that none overlap.
        const int left = valuesLeft + TivUtils::Scaled(column * kColumnWidth);
        const QRect head(left, top,
                         valuesLeft + TivUtils::Scaled((column + 1) * kColumnWidth) - left,
                         TivUtils::Scaled(kHeadHeight));
        label(head, AppResource::Text(kColumnHeads[column]), TivUtils::Scaled(24),
              QColor(190, 198, 212), TivLabel::ALIGN_CENTER);
        AddTapArea(head, ID_COLUMN_HEAD + column);
    }
    for (int row = 0; row < 4; ++row) {
        const int y = top + TivUtils::Scaled(kHeadHeight + row * kRowHeight);
        const int h = TivUtils::Scaled(kRowHeight - kRowGap);
        const QRect head(TivUtils::Scaled(kLeft), y, TivUtils::Scaled(kHeadWidth), h);
        label(head.adjusted(TivUtils::Scaled(10), TivUtils::Scaled(4), 0,
                            -h / 2 + TivUtils::Scaled(4)),
              names[row], nameSize, Qt::white, TivLabel::ALIGN_LEFT);
        label(head.adjusted(TivUtils::Scaled(10), h / 2, 0, -TivUtils::Scaled(4)),
              AppResource::Text(row == BodyReportTable::WEIGHT
                                    ? (Imperial() ? "body__ (lb)" : "body__ (kg)")
                                    : (Imperial() ? "body__ (in)" : "body__ (cm)")),
              TivUtils::Scaled(20), QColor(150, 160, 178), TivLabel::ALIGN_LEFT);
        AddTapArea(head, ID_ROW_HEAD + row);
        for (int column = 0; column < 4; ++column) {
            const int left = valuesLeft + TivUtils::Scaled(column * kColumnWidth);
            const QRect cell(left, y,
                             valuesLeft + TivUtils::Scaled((column + 1) * kColumnWidth) - left, h);
            label(cell, valueTexts[row * 4 + column], valueSize, kValueColor,
                  TivLabel::ALIGN_CENTER);
            AddTapArea(cell, ID_CELL + row * 4 + column);
        }
    }
}

void ReportForm::AddTapArea(const QRect& bounds, int actionId) {
    auto* area = new TivButton(this);
    area->Initialize(bounds);
    area->setObjectName(QStringLiteral("tap%1").arg(actionId));
    const auto transparent =
        TivUtils::GetBitmapWithRightResolutionN(QStringLiteral("transparent.png"));
    area->SetNormalBitmap(transparent.get());
    area->SetActionId(actionId);
    area->AddActionEventDelegate(this);
}

bool ReportForm::OnDraw(QPainter& painter) {
    PedometerForm::OnDraw(painter);
    // Row bands behind the table.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // Each band where its row's heading is, for the layout may have made the rows taller.
    for (int row = 0; row < 4; ++row) {
        const auto* head =
            findChild<const TivButton*>(QStringLiteral("tap%1").arg(ID_ROW_HEAD + row));
        if (head == nullptr) continue;
        painter.setBrush(QColor(10, 15, 26, row % 2 == 0 ? 190 : 140));
        painter.drawRoundedRect(QRectF(TivUtils::Scaled(kLeft), head->y(),
                                       width() - 2 * TivUtils::Scaled(kLeft), head->height()),
                                TivUtils::Scaled(10), TivUtils::Scaled(10));
    }
    return true;
}

// --- Taps -------------------------------------------------------------------------

QString ReportForm::ShareTextFor(int actionId) const {
    auto value = [this](int row, int column) {
        const double v = table_.Value(row, column);
        return row == BodyReportTable::WEIGHT ? GetWheightString(v) : GetSizeString(v);
    };
    auto unit = [](int row) {
        return row == BodyReportTable::WEIGHT ? GetWheightSystem() : GetSizeSystem();
    };
    QString text;
    QStringList values;  // in order of appearance
    if (actionId >= ID_CELL && actionId < ID_CELL + 16) {
        const int row = (actionId - ID_CELL) / 4;
        const int column = (actionId - ID_CELL) % 4;
        text = column == 0
                   ? AppResource::Text(kRows[row].current)
                   : AppResource::GetInstance().GetString(
                         QString::fromUtf8(kRows[row].change)
                             .replace(QStringLiteral("%1"), QString::number(kDays[column])));
        values = {value(row, column), unit(row)};
    } else if (actionId >= ID_ROW_HEAD && actionId < ID_ROW_HEAD + 4) {
        const int row = actionId - ID_ROW_HEAD;
        text = AppResource::Text(kRows[row].row);
        values = {value(row, 0), unit(row), value(row, 1), value(row, 2), value(row, 3)};
    } else if (actionId >= ID_COLUMN_HEAD && actionId < ID_COLUMN_HEAD + 4) {
        const int column = actionId - ID_COLUMN_HEAD;
        text = column == 0
                   ? AppResource::Text(
                         "body__ My pedometer: Current body shape: Chest:%@%@; Waist:%@%@; "
                         "Hips:%@%@; Weight:%@ %@")
                   : AppResource::GetInstance().GetString(
                         QStringLiteral("body__ My pedometer: Last %1 days body shape changes: "
                                        "Chest:%@%@; Waist:%@%@; Hips:%@%@; Weight:%@ %@")
                             .replace(QStringLiteral("%1"), QString::number(kDays[column])));
        for (int row = 0; row < 4; ++row) values << value(row, column) << unit(row);
    }
    // Filled from the last placeholder to the first.
    for (qsizetype i = values.size() - 1; i >= 0; --i) ExchangeOnLastEntrance(text, values[i]);
    return text;
}

void ReportForm::Share(int actionId, const QWidget& source) {
    SoundsManager::GetInstance().ClickSound();
    shareText_ = ShareTextFor(actionId);
    ShowContextMenu(source.mapTo(this, source.rect().center()));
}

QStringList ReportForm::MoreProviders() const {
    QStringList more = SnsGateway::GetInstance().Providers();
    more.removeAll(QStringLiteral("twitter"));
    more.removeAll(QStringLiteral("facebook"));
    return more;
}

void ReportForm::ShowContextMenu(const QPoint& at) {
    if (contextMenu_) contextMenu_->deleteLater();
    contextMenu_ = new QMenu(this);
    contextMenu_->setObjectName(QStringLiteral("shareMenu"));
    StyleMenu(*contextMenu_);
    QList<QPair<QString, int>> items = {{AppResource::Text("history__ On Twitter"), ID_TWITTER},
                                        {AppResource::Text("more__ To Email"), ID_EMAIL}};
    const QStringList more = MoreProviders();
    for (int i = 0; i < more.size(); ++i) {
        items.append(
            {AppResource::Text("body__ On %@").replace(QStringLiteral("%@"), ProviderName(more[i])),
             ID_MORE_PROVIDERS + i});
    }
    for (const auto& [text, id] : items) {
        QAction* item = contextMenu_->addAction(text);
        item->setData(id);
        const int actionId = id;
        QMenu* menu = contextMenu_;
        connect(item, &QAction::triggered, this,
                [this, menu, actionId] { OnActionPerformed(*menu, actionId); });
    }
    contextMenu_->popup(mapToGlobal(at));
}

void ReportForm::ShowPopupWithText(const QString& text) {
    popup_->Show(text);
}

void ReportForm::ShowPopupOkWithText(const QString& text, int target) {
    okTarget_ = target;
    okPopup_->Show(text);
}

void ReportForm::OnActionPerformed(const QWidget& source, int actionId) {
    if ((actionId >= ID_CELL && actionId < ID_CELL + 16) ||
        (actionId >= ID_ROW_HEAD && actionId < ID_ROW_HEAD + 4) ||
        (actionId >= ID_COLUMN_HEAD && actionId < ID_COLUMN_HEAD + 4)) {
        Share(actionId, source);
        return;
    }
    if (actionId >= ID_FACEBOOK && actionId < ID_MORE_PROVIDERS + 16) {
        if (contextMenu_) contextMenu_->hide();
        SoundsManager::GetInstance().ClickSound();
        popup_->hide();
        if (actionId == ID_EMAIL) {
            SendEmail();
        } else if (actionId == ID_TWITTER || actionId == ID_FACEBOOK) {
            PostTo(actionId == ID_TWITTER ? QStringLiteral("twitter") : QStringLiteral("facebook"));
        } else {
            const QStringList more = MoreProviders();
            const int index = actionId - ID_MORE_PROVIDERS;
            if (index < more.size()) PostTo(more[index]);
        }
        return;
    }
    switch (actionId) {
        case ID_EXPORT:
            SoundsManager::GetInstance().ClickSound();
            Export();
            return;
        case ID_SAVE_DOCUMENTS:
            SoundsManager::GetInstance().ClickSound();
            savePopup_->hide();
            SaveToDocuments();
            return;
        case ID_SAVE_CANCEL:
            SoundsManager::GetInstance().ClickSound();
            savePopup_->hide();
            return;
        case ID_POPUP_CLOSE:
        case ID_OTHER_POPUP:
            SoundsManager::GetInstance().ClickSound();
            popup_->hide();
            return;
        case ID_POPUP_OK: {
            SoundsManager::GetInstance().ClickSound();
            okPopup_->hide();
            const int target = okTarget_;
            okTarget_ = TARGET_NONE;
            if (target == TARGET_SOCIAL_SETTINGS) OpenScreen(QStringLiteral("settings-accounts"));
            if (target == TARGET_SOCIAL_LOGIN) OpenScreen(QStringLiteral("settings-social-login"));
            return;
        }
        default:
            PedometerForm::OnActionPerformed(source, actionId);
    }
}

void ReportForm::OpenScreen(const QString& name) {
    TivNavigationController* navigation = getNavigationController();
    if (navigation == nullptr) return;
    QString error;
    if (ScreenDirectory::Open(name, *navigation, ScreenRequest{}, &error) == nullptr)
        qWarning("%s", qPrintable(error));
}

// --- E-mail -------------------------------------------------------------------------

bool ReportForm::StartEmail(const QString& to, const QString& subject, const QString& body,
                            const QString& attachment) {
    email_ = new EmailSender(this);
    if (email_->Send({to, subject, body, attachment},
                     [this](bool sent) { OnEmailMessageSent(sent); })) {
        return true;
    }
    delete email_;
    // A plain address that could not be handed over means there is no mail program.
    if (EmailSender::IsPlainAddress(to)) {
        OfferSaving();
    } else {
        ShowPopupWithText(AppResource::Text("MESSAGE_CHECK_EMAIL"));
    }
    return false;
}

void ReportForm::OfferSaving() {
    if (unsent_.isEmpty()) {  // the export itself failed: there is nothing to keep
        ShowPopupOkWithText(AppResource::Text("MESSAGE_ERROR_SENDING"));
        return;
    }
    savePopup_->Show(AppResource::Text("body__ No mail program found") + QLatin1Char('\n') +
                     AppResource::Text(unsentName_.endsWith(QLatin1String(".csv"))
                                           ? "body__ Save the CSV file into your documents folder?"
                                           : "body__ Save the text into your documents folder?"));
}

void ReportForm::SaveToDocuments() {
    QString error;
    const QString path = DocumentsFolder::Save(unsentName_, unsent_, &error);
    if (path.isEmpty()) {
        ShowPopupOkWithText(AppResource::Text("body__ Not saved: %1").arg(error));
        return;
    }
    DocumentsFolder::Show();
    ShowPopupOkWithText(
        AppResource::Text("body__ Saved as %1").arg(QDir::toNativeSeparators(path)));
}

void ReportForm::SendEmail() {
    const auto social = PedometerDBManager::GetInstance().GetDAOSocialN();
    if (social->share.trimmed().isEmpty()) {
        ShowPopupOkWithText(AppResource::Text("MESSAGE_SHARE_EMAIL"), TARGET_SOCIAL_SETTINGS);
        return;
    }
    if (IsSending()) return;
    unsentName_ =
        QStringLiteral("pedometer-report-%1.txt").arg(Clock::Now().date().toString(Qt::ISODate));
    unsent_ = shareText_.toUtf8() + '\n';
    StartEmail(social->share.trimmed(), AppResource::Text("main__ Message from my pedometer"),
               shareText_, QString());
}

void ReportForm::Export() {
    const auto social = PedometerDBManager::GetInstance().GetDAOSocialN();
    if (social->export_.trimmed().isEmpty()) {
        ShowPopupOkWithText(AppResource::Text("MESSAGE_EXPORT_EMAIL"), TARGET_SOCIAL_SETTINGS);
        return;
    }
    if (IsSending()) return;
    const QString path = BodyCsvExport::DefaultPath();
    QString error;
    // Only what this export wrote is attached: an older file is removed first. The mail
    // goes out even so: the user sees the missing attachment in the mail program.
    QFile::remove(path);
    const bool written = BodyCsvExport::Export(path, &error);
    if (!written) qWarning("ReportForm: %s", qPrintable(error));
    unsentName_ =
        QStringLiteral("pedometer-body-%1.csv").arg(Clock::Now().date().toString(Qt::ISODate));
    QFile csv(path);
    unsent_ = written && csv.open(QIODevice::ReadOnly) ? csv.readAll() : QByteArray();
    StartEmail(social->export_.trimmed(),
               AppResource::Text("body__ Exported data from my pedometer"),
               AppResource::Text("body__ Attached files "), written ? path : QString());
}

void ReportForm::OnEmailMessageSent(bool sent) {
    if (email_) email_->deleteLater();
    email_ = nullptr;
    if (sent) {
        ShowPopupOkWithText(AppResource::Text("MESSAGE_MESSAGE_SENT"));
    } else {
        OfferSaving();
    }
}

// --- Social networks -------------------------------------------------------------

void ReportForm::PostTo(const QString& provider) {
    // Another screen (the social sign-in) may have taken the gateway's answers since
    // this one was made: they come here again from this request on.
    SnsGateway::GetInstance().SetListener(this);
    if (SnsGateway::GetInstance().IsLoggedIn(provider) < 0) Authenticate(provider);
}

void ReportForm::Authenticate(const QString& provider) {
    QString key;
    QString secret;
    if (provider == QLatin1String("twitter")) {
        key = QString::fromLatin1(kTwitterKey);
        secret = QString::fromLatin1(kTwitterSecret);
    } else if (provider == QLatin1String("facebook")) {
        key = QString::fromLatin1(kFacebookId);
        secret = QString::fromLatin1(kFacebookSecret);
    }
    if (!SnsGateway::GetInstance().Authenticate(provider, key, secret)) {
        ShowPopupOkWithText(
            AppResource::Text(
                "body__ %@ cannot be reached now. Check your social accounts in the settings.")
                .replace(QStringLiteral("%@"), ProviderName(provider)),
            TARGET_SOCIAL_LOGIN);
    }
}

void ReportForm::OnSnsLoggedInStatusReceived(int, const QString& provider, bool isLoggedIn, bool ok,
                                             const QString&, const QString& errorMessage) {
    if (!errorMessage.isEmpty() || !ok) {
        ShowPopupOkWithText(errorMessage.isEmpty() ? AppResource::Text("MESSAGE_ERROR_SENDING")
                                                   : errorMessage);
    } else if (!isLoggedIn) {
        Authenticate(provider);
    } else if (SnsGateway::GetInstance().UpdateMyStatusText(provider, shareText_) < 0) {
        ShowPopupOkWithText(AppResource::Text("MESSAGE_ERROR_SENDING"));
    }
}

void ReportForm::OnSnsAuthenticated(const QString& provider, const SnsAuthResult& result,
                                    const QString& errorMessage) {
    // OAuth 1.0a (Twitter) tokens come with a secret; OAuth 2 tokens stand alone.
    const bool complete = !result.tokenKey.isEmpty() &&
                          (provider != QLatin1String("twitter") || !result.tokenSecret.isEmpty());
    if (complete) {
        SnsGateway& gateway = SnsGateway::GetInstance();
        gateway.AddAuthResult(provider, result);
        if (gateway.IsLoggedIn(provider) < 0)
            ShowPopupOkWithText(AppResource::Text("MESSAGE_ERROR_SENDING"));
    } else if (!errorMessage.isEmpty()) {
        ShowPopupOkWithText(errorMessage);
    }
}

void ReportForm::OnMySnsStatusTextUpdated(int, const QString&, bool ok, const QString&,
                                          const QString& errorMessage) {
    if (ok)
        ShowPopupOkWithText(AppResource::Text("MESSAGE_POSTED"));
    else
        ShowPopupOkWithText(errorMessage.isEmpty() ? AppResource::Text("MESSAGE_ERROR_SENDING")
                                                   : errorMessage);
}

PEDOMETER_SCREEN("report", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* form = new ReportForm;
    form->Initialize();
    return form;
});
