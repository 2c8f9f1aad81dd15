#include "AccelerationCsvReader.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <QFile>
#include <charconv>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "AccelerationRecorder.h"
#include "AccelerationRecording.h"
#include "TestData.h"

namespace {

constexpr double kG = 9.80665;

struct Parsed {
    bool ok = false;
    AccelerationRecording recording;
    QString error;
};

Parsed parse(std::string_view text) {
    Parsed p;
    p.ok =
        AccelerationCsvReader::ReadText(text, QStringLiteral("walk.csv"), &p.recording, &p.error);
    return p;
}

const char kPhoneHeader[] =
    "\"Time (s)\",\"Acceleration x (m/s^2)\",\"Acceleration y (m/s^2)\","
    "\"Acceleration z (m/s^2)\"\n";

TEST(AccelerationCsvReaderTest, ReadsPhoneExportAndConvertsToG) {
    const std::string text = std::string(kPhoneHeader) +
                             "0.000000000,0.5722142,3.430891,9.80665\n"
                             "0.003807958,-0.81163436,3.4141316,10.058042\n";
    const Parsed p = parse(text.c_str());
    ASSERT_TRUE(p.ok) << p.error.toStdString();
    ASSERT_EQ(p.recording.Size(), 2u);
    EXPECT_EQ(p.recording.TimeNs(0), 0);
    EXPECT_EQ(p.recording.TimeNs(1), 3'807'958);
    EXPECT_EQ(p.recording.Sample(0).z, 1.0f);
    // Divided in double, rounded to float once.
    EXPECT_EQ(p.recording.Sample(1).x, static_cast<float>(-0.81163436 / kG));
    EXPECT_EQ(p.recording.Sample(0).y, static_cast<float>(3.430891 / kG));
    EXPECT_EQ(p.recording.DurationNs(), 3'807'958);
}

TEST(AccelerationCsvReaderTest, EveryValueReadsAsTheCorrectlyRoundedDouble) {
    // Plain decimals take a fast path; it must agree with std::from_chars to the bit.
    std::mt19937_64 random(11);
    std::string text = "Time (s),Acceleration x (g),Acceleration y (g),Acceleration z (g)\n";
    std::vector<std::string> values;
    for (int i = 0; i < 20000; ++i) {
        const int digits = 1 + static_cast<int>(random() % 19);
        std::string digitsText;
        for (int d = 0; d < digits; ++d) digitsText += static_cast<char>('0' + random() % 10);
        // At most three digits before the point: readings beyond 1000 g are refused.
        const std::size_t point = random() % std::min<std::size_t>(4, digitsText.size() + 1);
        std::string value = random() % 2 ? "-" : "";
        value += digitsText.substr(0, point) + '.' + digitsText.substr(point);
        if (random() % 8 == 0) value += "e-" + std::to_string(random() % 5);
        values.push_back(value);
        text += std::to_string(i) + ",0," + value + ",1\n";
    }
    const Parsed p = parse(text.c_str());
    ASSERT_TRUE(p.ok) << p.error.toStdString();
    for (std::size_t i = 0; i < values.size(); ++i) {
        double expected = 0.0;
        std::from_chars(values[i].data(), values[i].data() + values[i].size(), expected);
        ASSERT_EQ(p.recording.Sample(i).y, static_cast<float>(expected)) << values[i];
    }
}

// The cases of tests/data/recording-times.tsv.
TEST(AccelerationCsvReaderTest, TimeUnitsAllGiveNanoseconds) {
    for (const QByteArrayList& c : testdata::Table("recording-times.tsv")) {
        const QByteArray text = "Time (" + c[0] +
                                "),Acceleration x (g),Acceleration y (g),Acceleration z (g)\n" +
                                c[1] + ",0,0,1\n";
        const Parsed p = parse(std::string_view(text.constData(), text.size()));
        ASSERT_TRUE(p.ok) << text.constData() << p.error.toStdString();
        EXPECT_EQ(p.recording.TimeNs(0), c[2].toLongLong()) << text.constData();
    }
}

TEST(AccelerationCsvReaderTest, AcceptsLooseLayouts) {
    // Unquoted header, extra columns (another sensor's axes among them), columns in any
    // order, units per column, CRLF line ends, a byte-order mark, quoted values and
    // blank lines.
    const Parsed p = parse(
        "\xEF\xBB\xBFGyroscope x (rad/s),Acceleration z (g), Time (ms) ,Acceleration x "
        "(m/s^2),Acceleration y (g),note\r\n"
        "\r\n"
        "0.1,1,0,9.80665,0.5,start\r\n"
        "0.2,\"2\",30,0,-0.5,\r\n"
        "\n");
    ASSERT_TRUE(p.ok) << p.error.toStdString();
    ASSERT_EQ(p.recording.Size(), 2u);
    EXPECT_EQ(p.recording.Sample(0), (AccelerationSample{1.0f, 0.5f, 1.0f}));
    EXPECT_EQ(p.recording.Sample(1), (AccelerationSample{0.0f, -0.5f, 2.0f}));
    EXPECT_EQ(p.recording.TimeNs(1), 30'000'000);
}

// The cases of tests/data/malformed-recordings.tsv, and lines too long to be a recording's.
TEST(AccelerationCsvReaderTest, MalformedFilesAreRejectedWithFileLineAndProblem) {
    QList<QByteArrayList> cases = testdata::Table("malformed-recordings.tsv");
    cases.append({QByteArray(9000, 'x'), "walk.csv: line 1: the line is longer than 8192 bytes"});
    cases.append({"Time (s),Acceleration x (g),Acceleration y (g),Acceleration z (g)\n" +
                      QByteArray(9000, '1') + "\n",
                  "walk.csv: line 2: the line is longer"});
    for (const QByteArrayList& c : cases) {
        const Parsed p = parse(std::string_view(c[0].constData(), c[0].size()));
        EXPECT_FALSE(p.ok) << c[0].constData();
        EXPECT_TRUE(p.error.contains(QString::fromUtf8(c[1])))
            << "got: " << p.error.toStdString() << "\nwanted: " << c[1].constData();
        EXPECT_TRUE(p.recording.IsEmpty()) << "half a recording was kept: " << c[0].constData();
    }
}

TEST(AccelerationCsvReaderTest, UnreadableFileNamesTheFile) {
    AccelerationRecording recording;
    QString error;
    EXPECT_FALSE(AccelerationCsvReader::ReadFile(QStringLiteral("/nonexistent/walk.csv"),
                                                 &recording, &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("/nonexistent/walk.csv: cannot open")))
        << error.toStdString();

    // Neither a pipe without a writer nor an endless device may block or fill the memory.
    const auto dir = testdata::MakeTempDir();
    const QString fifo = dir->filePath(QStringLiteral("fifo"));
    ASSERT_EQ(mkfifo(fifo.toLocal8Bit().constData(), 0600), 0);
    const QString endless = dir->filePath(QStringLiteral("endless.csv"));
    ASSERT_TRUE(testdata::WriteFile(endless, QByteArray(5 << 20, '7')));
    for (const QString& path : {dir->path(), fifo, QStringLiteral("/dev/zero"), endless}) {
        EXPECT_FALSE(AccelerationCsvReader::ReadFile(path, &recording, &error));
        EXPECT_EQ(error, path + (path == endless ? QStringLiteral(": line 1: the line is longer "
                                                                  "than 8192 bytes; this is not "
                                                                  "a recording")
                                                 : QStringLiteral(": not a regular file")));
    }
}

TEST(AccelerationCsvReaderTest, RecorderOutputReadsBackExactlyAcrossBlocks) {
    // Well over one 4 MiB read block, so lines straddle block boundaries.
    const auto dir = testdata::MakeTempDir();
    const QString path = dir->filePath(QStringLiteral("recorded.csv"));
    AccelerationRecorder recorder;
    QString error;
    ASSERT_TRUE(recorder.Open(path, &error)) << error.toStdString();
    AccelerationRecording expected;
    const qint64 start = 987'654'321'000;
    for (int i = 0; i < 150'000; ++i) {
        const AccelerationSample s{0.1f * (i % 17) - 0.7f, 1.0f / (1 + i % 29),
                                   -9.5f + 1e-3f * (i % 1000)};
        const qint64 t = start + i * 10'000'037LL;
        recorder.Append(t, s.x, s.y, s.z);
        expected.Append(t - start, s);
    }
    ASSERT_TRUE(recorder.Close(&error)) << error.toStdString();
    EXPECT_GT(QFile(path).size(), 5 << 20);

    AccelerationRecording read;
    ASSERT_TRUE(AccelerationCsvReader::ReadFile(path, &read, &error)) << error.toStdString();
    ASSERT_EQ(read.Size(), expected.Size());
    for (std::size_t i = 0; i < read.Size(); ++i) {
        ASSERT_EQ(read.TimeNs(i), expected.TimeNs(i)) << i;
        ASSERT_EQ(read.Sample(i), expected.Sample(i)) << i;
    }
}

TEST(AccelerationCsvReaderTest, RecorderWritesMetresPerSecondSquaredWhenAsked) {
    const auto dir = testdata::MakeTempDir();
    const QString path = dir->filePath(QStringLiteral("phone.csv"));
    AccelerationRecorder recorder(AccelerationRecorder::Unit::MetresPerSecondSquared);
    ASSERT_TRUE(recorder.Open(path, nullptr));
    recorder.Append(5'000'000'000, 0.0f, 0.0f, 9.80665f);
    recorder.Append(5'030'000'001, 0.0f, 0.0f, -9.80665f);
    ASSERT_TRUE(recorder.Close(nullptr));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(),
              QByteArray("\"Time (s)\",\"Acceleration x (m/s^2)\",\"Acceleration y (m/s^2)\","
                         "\"Acceleration z (m/s^2)\"\n"
                         "0.000000000,0,0,9.80665\n"
                         "0.030000001,0,0,-9.80665\n"));
}

TEST(AccelerationCsvReaderTest, RecorderReportsAnUnwritableFile) {
    AccelerationRecorder recorder;
    QString error;
    EXPECT_FALSE(recorder.Open(QStringLiteral("/nonexistent/dir/out.csv"), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("/nonexistent/dir/out.csv: cannot write")));
    recorder.Append(0, 1.0f, 2.0f, 3.0f);  // ignored, no crash
    EXPECT_EQ(recorder.SampleCount(), 0);
}

}  // namespace
