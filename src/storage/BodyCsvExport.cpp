#include "BodyCsvExport.h"

#include <QLocale>
#include <cmath>

#include "AppPaths.h"
#include "AppResource.h"
#include "Converter.h"
#include "PedometerDBManager.h"
#include "PedometerOptions.h"
#include "UserDataFile.h"

namespace {
// Rounded to what was typed (grams, a tenth of a centimetre) and written briefly.
QString Number(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return QString::number(std::round(value * scale) / scale, 'g', QLocale::FloatingPointShortest);
}
}  // namespace

QString BodyCsvExport::Text(const std::vector<DAOBodyLog>& logs, bool imperial) {
    // ISO dates read the same in every locale and sort as text.
    QString text = QStringLiteral(";");
    for (auto log = logs.rbegin(); log != logs.rend(); ++log)
        text += log->logDate.date().toString(Qt::ISODate) + QLatin1Char(';');

    struct Row {
        const char* key;
        double DAOBodyLog::*field;
        bool weight;
    };
    static const Row kRows[] = {{"body__ Chest", &DAOBodyLog::chest, false},
                                {"body__ Waist", &DAOBodyLog::waist, false},
                                {"body__ Hips", &DAOBodyLog::hip, false},
                                {"body__ Weight", &DAOBodyLog::weight, true}};
    AppResource& texts = AppResource::GetInstance();
    for (const Row& row : kRows) {
        const char* unit = row.weight ? (imperial ? "body__ (lb)" : "body__ (kg)")
                                      : (imperial ? "body__ (in)" : "body__ (cm)");
        text += QLatin1Char('\n') + texts.GetString(QString::fromUtf8(row.key)) + QLatin1Char(' ') +
                texts.GetString(QString::fromUtf8(unit)) + QLatin1Char(';');
        for (auto log = logs.rbegin(); log != logs.rend(); ++log) {
            double value = (*log).*row.field;
            if (imperial)
                value = row.weight ? Converter::KgToPnd(value) : Converter::CmToInch(value);
            text += Number(value, row.weight && !imperial ? 3 : 2) + QLatin1Char(';');
        }
    }
    return text + QLatin1Char('\n');
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
