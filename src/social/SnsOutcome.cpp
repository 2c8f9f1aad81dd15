#include "SnsOutcome.h"

#include "SnsHost.h"

SnsOutcome SnsOutcome::Failure(const QString& code, const QString& message) {
    SnsOutcome outcome;
    outcome.errorCode = code;
    outcome.errorMessage = message;
    return outcome;
}

QString SnsOutcome::Text(const QString& key, const QStringList& values) {
    return SnsHost::Get().Text(key, values);
}
