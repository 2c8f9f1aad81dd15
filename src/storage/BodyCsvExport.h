#pragma once

#include <QString>
#include <vector>

#include "DAOBodyLog.h"

// The whole body log as a CSV file for a spreadsheet: "export.csv" in the data folder,
// which the report screen attaches to an e-mail and `pedometer-cli export-body` writes.
//
// The layout is transposed, one column per day, newest day first: a first row of ISO
// dates (2024-03-13) after an empty corner cell, then one row each for chest, waist,
// hips and weight headed by its localised name and unit ("Chest (cm)"). Every cell is
// followed by ";", and every row ends with a line break, the last one included. Values
// are numbers rounded to what is typed (grams; hundredths of a centimetre, inch or
// pound) and written briefly ("72.5", "0" for a day without that measurement),
// converted to inches and pounds when `imperial` is set.
//
// Any thread; Export reads the databases through PedometerDBManager.
class BodyCsvExport {
public:
    // The text for `logs`, given oldest first as PedometerDBManager::GetBodyLogs returns them.
    static QString Text(const std::vector<DAOBodyLog>& logs, bool imperial);

    // Replaces `path` with `text` as UTF-8 through UserDataFile (0600, the old file
    // untouched when writing fails, a link at `path` refused). False with the reason in
    // `error`.
    static bool Write(const QString& path, const QString& text, QString* error = nullptr);

    // Writes every stored body log, in the units of the settings record, to `path`.
    static bool Export(const QString& path, QString* error = nullptr);

    // "export.csv" in the data folder.
    static QString DefaultPath();
};
