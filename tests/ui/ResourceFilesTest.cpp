// The shipped string files: every text exists in English and German, the share texts keep
// their placeholders, and the per-language pictures they name exist.
#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include "AppPaths.h"
#include "TivUtils.h"

namespace {

QMap<QString, QString> LoadStrings(const QString& language, QStringList* duplicates) {
    QMap<QString, QString> texts;
    QFile file(QStringLiteral(PEDOMETER_SOURCE_DIR "/res/strings/%1.xml").arg(language));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << language.toStdString();
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement &&
            xml.name() == QLatin1String("text")) {
            const QString id = xml.attributes().value(QLatin1String("id")).toString();
            if (texts.contains(id)) duplicates->append(id);
            texts.insert(id, xml.readElementText());
        }
    }
    EXPECT_FALSE(xml.hasError()) << language.toStdString() << ": "
                                 << xml.errorString().toStdString();
    return texts;
}

TEST(ResourceFilesTest, EnglishAndGermanHaveTheSameKeysAndPlaceholders) {
    QStringList duplicates;
    const QMap<QString, QString> en = LoadStrings(QStringLiteral("en"), &duplicates);
    const QMap<QString, QString> de = LoadStrings(QStringLiteral("de"), &duplicates);
    EXPECT_TRUE(duplicates.isEmpty()) << duplicates.join(", ").toStdString();
    EXPECT_GE(en.size(), 200);
    EXPECT_EQ(en.keys(), de.keys());

    // group word, one or two underscores, a blank, the English text; or a plain name.
    const QRegularExpression keyForm(QStringLiteral("^([a-z_]+__? .+|[A-Za-z_]+)$"));
    const QString placeholder = QStringLiteral("%@");
    for (auto it = en.cbegin(); it != en.cend(); ++it) {
        const QString& key = it.key();
        SCOPED_TRACE(key.toStdString());
        EXPECT_TRUE(keyForm.match(key).hasMatch());
        EXPECT_FALSE(it.value().trimmed().isEmpty());
        EXPECT_FALSE(de.value(key).trimmed().isEmpty());
        // Placeholders are filled by position, from the last one back.
        EXPECT_EQ(it.value().count(placeholder), key.count(placeholder));
        EXPECT_EQ(de.value(key).count(placeholder), key.count(placeholder));
    }
}

TEST(ResourceFilesTest, EachLanguageNamesAnExistingTipsPicture) {
    const QString res = AppPaths::Res();
    AppPaths::SetRes(QStringLiteral(PEDOMETER_SOURCE_DIR "/res"));
    QStringList unused;
    QStringList pictures;
    for (const QString& lang : {QStringLiteral("en"), QStringLiteral("de")}) {
        const QString picture = LoadStrings(lang, &unused).value(QStringLiteral("acc_advice_file"));
        pictures << picture;
        EXPECT_NE(TivUtils::GetBitmapWithRightResolutionN(picture), nullptr) << lang.toStdString();
    }
    EXPECT_NE(pictures[0], pictures[1]);
    AppPaths::SetRes(res);
}

}  // namespace
