#pragma once

#include <QHash>
#include <QString>
#include <mutex>

// Localised texts by key.
//
// A key is a group word, two underscores (a few keys have one), a blank and the
// English text: "meter__ STOP". The texts live in res/strings/<language>.xml as
// <text id="KEY">text</text> entries. The language comes from the default QLocale;
// a key missing from that language falls back to English, and a key missing
// everywhere shows its own English part, so a screen never shows an empty label.
class AppResource {
public:
    static AppResource& GetInstance();

    QString GetString(const QString& key);

    // Two-letter language code ("en", "de"); empty means the default locale's.
    void SetLanguage(const QString& language);
    QString Language();

    // The English text carried by the key itself: "meter__ STOP" gives "STOP".
    static QString TextOfKey(const QString& key);

private:
    AppResource() = default;
    void EnsureLoaded();
    static QHash<QString, QString> Load(const QString& language);

    std::mutex mutex_;
    bool loaded_ = false;
    QString language_;
    QHash<QString, QString> texts_;
    QHash<QString, QString> english_;
};
