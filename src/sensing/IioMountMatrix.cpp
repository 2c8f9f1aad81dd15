#include "IioMountMatrix.h"

#include <QStringList>
#include <cmath>

bool IioMountMatrix::Parse(const QString& text, IioMountMatrix* matrix) {
    const QStringList rows = text.trimmed().split(QLatin1Char(';'));
    if (rows.size() != 3) return false;
    IioMountMatrix parsed;
    for (int r = 0; r < 3; ++r) {
        const QStringList cells = rows[r].split(QLatin1Char(','));
        if (cells.size() != 3) return false;
        bool rowUsed = false;
        for (int c = 0; c < 3; ++c) {
            bool ok = false;
            const double value = cells[c].trimmed().toDouble(&ok);
            if (!ok || !std::isfinite(value)) return false;
            parsed.rows_[r][c] = value;
            rowUsed = rowUsed || value != 0.0;
        }
        // A row of zeros would pin one screen axis at 0 whatever the phone does.
        if (!rowUsed) return false;
    }
    *matrix = parsed;
    return true;
}

std::array<double, 3> IioMountMatrix::Apply(const std::array<double, 3>& chip) const {
    std::array<double, 3> screen{};
    for (int r = 0; r < 3; ++r) {
        screen[r] = rows_[r][0] * chip[0] + rows_[r][1] * chip[1] + rows_[r][2] * chip[2];
    }
    return screen;
}
