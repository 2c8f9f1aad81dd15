#include "BodyCsvExport.h"

#include <QFile>
#include <QProcess>

#include "StorageTestSupport.h"

using storagetest::StorageTest;

namespace {

DAOBodyLog Log(const QDate& day, double weight, double chest, double waist, double hip) {
    DAOBodyLog log;
    log.logDate = day.startOfDay();
    log.weight = weight;
    log.chest = chest;
    log.waist = waist;
    log.hip = hip;
    return log;
}

QString ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("?");
}

TEST(BodyCsvExportText, IsTransposedNewestFirstWithIsoDatesUnitsAndRoundedNumbers) {
    for (const QByteArrayList& c : testdata::Table("body-csv-texts.tsv")) {
        SCOPED_TRACE(c[0].toStdString());
        std::vector<DAOBodyLog> logs;
        for (const QByteArray& day : c[2].split(';')) {
            const QByteArrayList v = day.split(' ');
            const QDate date = QDate::fromString(QString::fromLatin1(v[0]), Qt::ISODate);
            logs.push_back(
                Log(date, v[1].toDouble(), v[2].toDouble(), v[3].toDouble(), v[4].toDouble()));
        }
        EXPECT_EQ(BodyCsvExport::Text(logs, c[1] == "imperial"), QString::fromUtf8(c[3]));
    }
}

class BodyCsvExportTest : public StorageTest {};

// The file is replaced, not appended to, and the command line writes the same file.
TEST_F(BodyCsvExportTest, ExportingTwiceReplacesTheFileAndTheCommandLineWritesTheSame) {
    const QString path = BodyCsvExport::DefaultPath();
    ASSERT_TRUE(BodyCsvExport::Export(path));
    EXPECT_EQ(ReadAll(path), ";\nChest (cm);\nWaist (cm);\nHips (cm);\nWeight (kg);\n");
    manager().GetTodayBodyLog();
    manager().SetTodayWeight(80.5);
    ASSERT_TRUE(BodyCsvExport::Export(path));
    EXPECT_EQ(ReadAll(path),
              ";2024-03-14;\nChest (cm);0;\nWaist (cm);0;\nHips (cm);0;\nWeight (kg);80.5;\n");

    const QString out = home_ + QStringLiteral("/cli.csv");
    QProcess cli;
    cli.setEnvironment(QProcess::systemEnvironment() << QStringLiteral("LC_ALL=en_US.UTF-8"));
    cli.start(testdata::CliPath(), {"export-body", "--out", out, "--data-dir", home_});
    ASSERT_TRUE(cli.waitForFinished(60000));
    EXPECT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();
    EXPECT_TRUE(ReadAll(out).endsWith(";\nWeight (kg);80.5;\n")) << ReadAll(out).toStdString();

    QString error;
    EXPECT_FALSE(BodyCsvExport::Write(home_ + QStringLiteral("/no/such/dir/x.csv"), "x", &error));
    EXPECT_TRUE(error.contains(QStringLiteral("no/such/dir"))) << error.toStdString();
}

}  // namespace
