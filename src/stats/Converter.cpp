#include "Converter.h"

#include <QLocale>

double Converter::GetAverageSpeedKMH(double metres, int seconds) {
    if (seconds == 0 || metres == 0.0) return 0.0;
    return metres / seconds * 3.6;
}

QString Converter::GetLocalStringN(double value, int decimals) {
    return QLocale().toString(value, 'f', decimals);
}

QString Converter::GetCountString(long long value) {
    return QLocale().toString(value);
}

QString Converter::WithUnit(const QString& number, const QString& unit) {
    const QString trimmed = unit.trimmed();
    return trimmed.isEmpty() ? number : number + QLatin1Char(' ') + trimmed;
}

QString Converter::GetTimeStringN(int seconds) {
    const int m = seconds / 60;
    const int s = seconds % 60;
    QString text;
    if (m <= 9) text += QLatin1Char('0');
    text += QString::number(m) + QLatin1Char(':');
    if (s <= 9) text += QLatin1Char('0');
    text += QString::number(s);
    return text;
}
