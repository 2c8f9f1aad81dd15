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

TEST(BodyCsvExportText, IsTransposedNewestFirstWithTrailingSeparatorsAndPlainNumbers) {
    const std::vector<DAOBodyLog> two = {Log(QDate(2024, 3, 12), 72.0051, 90.5, 0, 100),
                                         Log(QDate(2024, 3, 13), 0, 0, 80.25, 0)};
    const struct {
        const char* name;
        std::vector<DAOBodyLog> logs;
        bool imperial;
        QString text;
    } cases[] = {
        {"empty log", {}, false, ";\nChest;\nWaist;\nHips;\nWeight;"},
        {"two days", two, false,
         ";3/13/24;3/12/24;\nChest;0;90.5;\nWaist;80.25;0;\nHips;0;100;\nWeight;0;72.0051;"},
        {"imperial", {Log(QDate(2024, 3, 12), 45.359237, 2.54, 0, 25.4)}, true,
         ";3/12/24;\nChest;1;\nWaist;0;\nHips;10;\nWeight;100;"},
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
    EXPECT_EQ(ReadAll(path), ";\nChest;\nWaist;\nHips;\nWeight;");
    manager().GetTodayBodyLog();
    manager().SetTodayWeight(80.5);
    ASSERT_TRUE(BodyCsvExport::Export(path));
    EXPECT_EQ(ReadAll(path), ";3/14/24;\nChest;0;\nWaist;0;\nHips;0;\nWeight;80.5;");

    const QString out = home_ + QStringLiteral("/cli.csv");
    QProcess cli;
    cli.setEnvironment(QProcess::systemEnvironment() << QStringLiteral("LC_ALL=en_US.UTF-8"));
    cli.start(testdata::CliPath(), {"export-body", "--out", out, "--data-dir", home_});
    ASSERT_TRUE(cli.waitForFinished(60000));
    EXPECT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();
    EXPECT_TRUE(ReadAll(out).endsWith(";\nWeight;80.5;")) << ReadAll(out).toStdString();

    QString error;
    EXPECT_FALSE(BodyCsvExport::Write(home_ + QStringLiteral("/no/such/dir/x.csv"), "x", &error));
    EXPECT_TRUE(error.contains(QStringLiteral("no/such/dir"))) << error.toStdString();
}

}  // namespace
