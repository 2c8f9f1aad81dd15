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
    const std::vector<DAOBodyLog> two = {Log(QDate(2024, 3, 12), 72.0051, 90.5, 0, 100),
                                         Log(QDate(2024, 3, 13), 0, 0, 80.25, 0)};
    const struct {
        const char* name;
        std::vector<DAOBodyLog> logs;
        bool imperial;
        QString text;
    } cases[] = {
        {"two days", two, false,
         ";2024-03-13;2024-03-12;\nChest (cm);0;90.5;\nWaist (cm);80.25;0;\nHips (cm);0;100;\n"
         "Weight (kg);0;72.005;\n"},
        {"imperial", {Log(QDate(2024, 3, 12), 45.359237, 2.54, 0, 25.4)}, true,
         ";2024-03-12;\nChest (in);1;\nWaist (in);0;\nHips (in);10;\nWeight (lb);100;\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(BodyCsvExport::Text(c.logs, c.imperial), c.text);
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
