#include "BodyCsvExport.h"

#include <QLocale>

#include "AppPaths.h"
#include "AppResource.h"
#include "Converter.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "UserDataFile.h"

namespace {
QString Number(double value) {
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}
}  // namespace

QString BodyCsvExport::Text(const std::vector<DAOBodyLog>& logs, bool imperial) {
    const QLocale locale;
    QString text = QStringLiteral(";");
    for (auto log = logs.rbegin(); log != logs.rend(); ++log)
        text += locale.toString(log->logDate.date(), QLocale::ShortFormat) + QLatin1Char(';');

    struct Row {
        const char* key;
        double DAOBodyLog::*field;
        bool weight;
    };
    static const Row kRows[] = {{"body__ Chest", &DAOBodyLog::chest, false},
                                {"body__ Waist", &DAOBodyLog::waist, false},
                                {"body__ Hips", &DAOBodyLog::hip, false},
                                {"body__ Weight", &DAOBodyLog::weight, true}};
    for (const Row& row : kRows) {
        text += QLatin1Char('\n') +
                AppResource::GetInstance().GetString(QString::fromUtf8(row.key)) + QLatin1Char(';');
        for (auto log = logs.rbegin(); log != logs.rend(); ++log) {
            double value = (*log).*row.field;
            if (imperial)
                value = row.weight ? Converter::KgToPnd(value) : Converter::CmToInch(value);
            text += Number(value) + QLatin1Char(';');
        }
    }
    return text;
}

bool BodyCsvExport::Write(const QString& path, const QString& text, QString* error) {
    return UserDataFile::Write(path, text.toUtf8(), error);
}

bool BodyCsvExport::Export(const QString& path, QString* error) {
    PedometerDBManager& db = PedometerDBManager::GetInstance();
    const DatabaseStatus status = db.StatisticsStatus();
    if (!status.open) {
        if (error != nullptr) *error = status.error;
        return false;
    }
    return Write(path, Text(db.GetBodyLogs(), PedometerOptions::GetInstance().measurementSystem),
                 error);
}

QString BodyCsvExport::DefaultPath() {
    return AppPaths::HomeFile(QStringLiteral("export.csv"));
}
