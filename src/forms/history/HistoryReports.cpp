#include "HistoryReports.h"

#include <QDateEdit>
#include <QEvent>
#include <cmath>

#include "AppResource.h"
#include "Clock.h"
#include "HistoryPanel.h"
#include "PedometerDBManager.h"
#include "ReferenceLayout.h"
#include "ScreenDirectory.h"
#include "SoundsManager.h"
#include "StreakRows.h"
#include "TivDatePicker.h"
#include "TivLabel.h"
#include "TivNavigationController.h"
#include "TivUtils.h"

HistoryReports::HistoryReports(QWidget* parent) : PedometerForm(parent) {}

bool HistoryReports::Initialize() {
    setObjectName(QStringLiteral("HistoryReports"));
    return true;
}

void HistoryReports::OnInitializing() {
    SetBackgroundImage(QStringLiteral("MainScreen_bg.png"));
    SetTitleText(AppResource::Text("history__ Reports"));
    ShowBackButton();
    panel_ = new HistoryPanel(this);
    panel_->setGeometry(0, GetClientTop(), width(), height() - GetClientTop());
    SetGrowBandBelowHeader();
    panel_->AddHeader(AppResource::Text("history__ Goal streaks"));
    for (TivLabel*& row : streakRows_) row = panel_->AddRow(QString());
    panel_->AddGap(12);
    panel_->AddRowButton(AppResource::Text("history__ All days"), ID_ALL_DAYS, this);
    panel_->AddRowButton(AppResource::Text("history__ Last 7 days"), ID_LAST_7, this);
    panel_->AddRowButton(AppResource::Text("history__ Last 30 days"), ID_LAST_30, this);
    panel_->AddRowButton(AppResource::Text("history__ Last 180 days"), ID_LAST_180, this);
    panel_->AddHeader(AppResource::Text("history__ Date range"));

    // Two dates side by side, each under its caption; the range always runs forward.
    auto* row = new QWidget;
    panel_->AddWidget(row, 100);
    const QDate today = Clock::Now().date();
    constexpr int half = (ReferenceLayout::kWidth - 30) / 2;
    from_ = AddDateField(row, "picker__ From", today.addDays(-13), 10, half);
    to_ = AddDateField(row, "picker__ To", today, 20 + half, half);
    from_->setMaximumDate(to_->date());
    to_->setMinimumDate(from_->date());
    connect(from_, &QDateEdit::dateChanged, to_, &QDateEdit::setMinimumDate);
    connect(to_, &QDateEdit::dateChanged, from_, &QDateEdit::setMaximumDate);
    panel_->AddRowButton(AppResource::Text("history__ Show"), ID_RANGE, this);
    panel_->show();
    picker_ = new TivDatePicker(*this);
}

bool HistoryReports::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonRelease)
        return PedometerForm::eventFilter(watched, event);
    QDateEdit* field = nullptr;
    for (QDateEdit* candidate : {from_.data(), to_.data()}) {
        if (candidate != nullptr &&
            (watched == candidate || candidate->isAncestorOf(qobject_cast<QWidget*>(watched))))
            field = candidate;
    }
    if (field == nullptr) return PedometerForm::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonRelease && picker_ != nullptr) {
        SoundsManager::GetInstance().ClickSound();
        const bool isFrom = field == from_;
        const QPointer<QDateEdit> target = field;
        picker_->Open(field->date(), isFrom ? QDate() : from_->date(),
                      isFrom ? to_->date() : QDate(), [target](const QDate& day) {
                          if (target) target->setDate(day);
                      });
    }
    return true;  // the field's own editing by touch stays closed: the picker edits it
}

QDateEdit* HistoryReports::AddDateField(QWidget* row, const char* captionKey, const QDate& date,
                                        int x, int width) {
    auto* caption = new TivLabel(row);
    caption->Initialize();
    caption->SetText(AppResource::Text(captionKey));
    caption->SetFontSize(TivUtils::Scaled(20));
    caption->SetTextColor(QColor(196, 212, 232));
    caption->SetNeedOutline(false);
    caption->SetHorizontalAlligment(TivLabel::ALIGN_LEFT);
    ReferenceLayout::Place(*caption, QRect(x, 0, width, 30), TivUtils::GetScale());
    auto* field = new QDateEdit(date, row);
    field->setCalendarPopup(false);
    field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    field->installEventFilter(this);
    for (QWidget* part : field->findChildren<QWidget*>()) part->installEventFilter(this);
    field->setDisplayFormat(QLocale().dateFormat(QLocale::ShortFormat));
    field->setFont(TivUtils::CreateFont(TivUtils::FONT_STYLE_BOLD, TivUtils::Scaled(30)));
    field->setStyleSheet(
        QStringLiteral("QDateEdit { color: #FCD14B; background: rgba(10, 15, 26, 200);"
                       " border: %1px solid #3A4458; border-radius: %2px; padding-left: %3px; }"
                       "QDateEdit:focus { border-color: #0C9FF9; }")
            .arg(std::max(1, TivUtils::Scaled(2)))
            .arg(TivUtils::Scaled(10))
            .arg(TivUtils::Scaled(8)));
    ReferenceLayout::Place(*field, QRect(x, 32, width, 60), TivUtils::GetScale());
    return field;
}

void HistoryReports::FormWillAppear() {
    if (streakRows_[0] == nullptr) return;
    const QStringList rows =
        StreakRows::Rows(PedometerDBManager::GetInstance().GetGoalStreaks({}, Clock::Now().date()));
    for (int i = 0; i < 2; ++i) {
        streakRows_[i]->SetText(rows.value(i));
        streakRows_[i]->update();
    }
}

void HistoryReports::OnActionPerformed(const QWidget& source, int actionId) {
    ScreenRequest request;
    QString name;
    switch (actionId) {
        case ID_ALL_DAYS:
            name = QStringLiteral("history-days");
            break;
        case ID_LAST_7:
            name = QStringLiteral("history-7");
            break;
        case ID_LAST_30:
            name = QStringLiteral("history-30");
            break;
        case ID_LAST_180:
            name = QStringLiteral("history-180");
            break;
        case ID_RANGE:
            name = QStringLiteral("history-range");
            request.from = from_->date();
            request.to = to_->date();
            break;
        default:
            PedometerForm::OnActionPerformed(source, actionId);
            return;
    }
    SoundsManager::GetInstance().ClickSound();
    TivNavigationController* navigation = getNavigationController();
    QString error;
    if (navigation != nullptr &&
        ScreenDirectory::Open(name, *navigation, request, &error) == nullptr) {
        qWarning("%s", qPrintable(error));
    }
}

PEDOMETER_SCREEN("history-reports", [](const ScreenRequest&, QString*) -> PedometerForm* {
    auto* reports = new HistoryReports;
    reports->Initialize();
    return reports;
});
