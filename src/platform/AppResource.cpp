#include "AppResource.h"

#include <QFile>
#include <QLocale>
#include <QXmlStreamReader>

#include "AppPaths.h"

AppResource& AppResource::GetInstance() {
    static AppResource instance;
    return instance;
}

QString AppResource::Text(const char* key) {
    return GetInstance().GetString(QString::fromUtf8(key));
}

QString AppResource::GetString(const QString& key) {
    std::lock_guard lock(mutex_);
    EnsureLoaded();
    auto it = texts_.constFind(key);
    if (it != texts_.constEnd()) return *it;
    it = english_.constFind(key);
    if (it != english_.constEnd()) return *it;
    return TextOfKey(key);
}

QString AppResource::GetString(const QString& key, const QStringList& values) {
    QString text = GetString(key);
    qsizetype from = 0;
    for (const QString& value : values) {
        const qsizetype at = text.indexOf(QLatin1String("%@"), from);
        if (at < 0) break;
        text.replace(at, 2, value);
        from = at + value.size();
    }
    return text;
}

QString AppResource::GetCountString(const QString& key, long long count, const QString& countText,
                                    const QStringList& values) {
    const QString form = key + (count == 1 ? QStringLiteral("#one") : QStringLiteral("#other"));
    return GetString(form, QStringList{countText} + values);
}

void AppResource::SetLanguage(const QString& language) {
    std::lock_guard lock(mutex_);
    language_ = language;
    loaded_ = false;
}

QString AppResource::Language() {
    std::lock_guard lock(mutex_);
    EnsureLoaded();
    return language_;
}

QString AppResource::TextOfKey(const QString& key) {
    const int blank = key.indexOf(QLatin1Char(' '));
    return blank < 0 ? key : key.mid(blank + 1);
}

void AppResource::EnsureLoaded() {
    if (loaded_) return;
    if (language_.isEmpty()) language_ = QLocale().name().section('_', 0, 0);
    english_ = Load(QStringLiteral("en"));
    texts_ = language_ == QLatin1String("en") ? english_ : Load(language_);
    loaded_ = true;
}

QHash<QString, QString> AppResource::Load(const QString& language) {
    QHash<QString, QString> texts;
    QFile file(AppPaths::ResFile(QStringLiteral("strings/%1.xml").arg(language)));
    if (!file.open(QIODevice::ReadOnly)) return texts;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement &&
            xml.name() == QLatin1String("text")) {
            const QString id = xml.attributes().value(QLatin1String("id")).toString();
            texts.insert(id, xml.readElementText());
        }
    }
    return texts;
}
