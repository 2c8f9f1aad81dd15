#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
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
    // The text of `key` in the current language: AppResource::Text("meter__ STOP").
    static QString Text(const char* key);
    // The text with its "%@" placeholders filled in order of appearance.
    QString GetString(const QString& key, const QStringList& values);
    // A text about `count` things: the key with "#one" appended when the count is 1,
    // "#other" otherwise, its first "%@" filled with `countText` (the count as shown)
    // and any further ones with `values`. "history__ %@ days" gives "1 day", "3 days".
    QString GetCountString(const QString& key, long long count, const QString& countText,
                           const QStringList& values = {});

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
