#include "SoundEffectPlayer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QtEndian>

#include "AppPaths.h"
#include "TestData.h"

namespace {

QStringList capturedMessages;

void CaptureMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    capturedMessages << message;
}

// Collects Qt's messages for as long as it lives.
class MessageCapture {
public:
    MessageCapture() {
        capturedMessages.clear();
        previous = qInstallMessageHandler(CaptureMessage);
    }
    ~MessageCapture() { qInstallMessageHandler(previous); }

private:
    QtMessageHandler previous;
};

using State = SoundPlayer::State;

TEST(SoundEffectPlayerTest, PlaysAShippedClipWithoutASingleMessage) {
    MessageCapture capture;
    SoundEffectPlayer player;
    player.SetVolume(80);
    player.Open(AppPaths::ResFile(QStringLiteral("sounds/Pop1.wav")));
    EXPECT_EQ(player.GetState(), State::Opened);

    player.Play();
    QCoreApplication::processEvents();
    // Playing where there is a sound output, already over where there is none.
    EXPECT_TRUE(player.GetState() == State::Playing || player.GetState() == State::EndOfClip);
    player.Stop();
    EXPECT_EQ(player.GetState(), State::Stopped);
    player.Play();
    player.Stop();
    EXPECT_TRUE(capturedMessages.isEmpty()) << qPrintable(capturedMessages.join('\n'));
}

TEST(SoundEffectPlayerTest, AMissingClipIsAnErrorSaidOnceAndNeverPlays) {
    MessageCapture capture;
    static int run = 0;  // a new name on every run, since each name is reported once
    const QString path = AppPaths::ResFile(QStringLiteral("sounds/no-such-clip-%1.wav").arg(++run));
    SoundEffectPlayer player;
    player.Open(path);
    EXPECT_EQ(player.GetState(), State::Error);
    player.Play();
    EXPECT_EQ(player.GetState(), State::Error);

    SoundEffectPlayer again;
    again.Open(path);
    ASSERT_EQ(capturedMessages.size(), 1);
    EXPECT_TRUE(capturedMessages[0].contains(path));
}

// The shipped clips: 44.1 kHz 16-bit mono PCM, short where they must be short, and
// clean at the edges (no click on start or stop) and below full scale (no clipping).
TEST(SoundEffectPlayerTest, ShippedClipsAreShortCleanMonoPcm) {
    for (const QByteArrayList& clip : testdata::Table("clip-lengths.tsv")) {
        SCOPED_TRACE(clip[0].toStdString());
        QFile file(AppPaths::ResFile(QStringLiteral("sounds/") + QString::fromUtf8(clip[0])));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray wav = file.readAll();
        ASSERT_GT(wav.size(), 44);
        ASSERT_EQ(wav.left(4), "RIFF");
        ASSERT_EQ(wav.mid(8, 8), "WAVEfmt ");
        const auto* bytes = reinterpret_cast<const uchar*>(wav.constData());
        EXPECT_EQ(qFromLittleEndian<quint16>(bytes + 20), 1) << "PCM";
        EXPECT_EQ(qFromLittleEndian<quint16>(bytes + 22), 1) << "mono";
        EXPECT_EQ(qFromLittleEndian<quint32>(bytes + 24), 44100u);
        EXPECT_EQ(qFromLittleEndian<quint16>(bytes + 34), 16);
        ASSERT_EQ(wav.mid(36, 4), "data");
        const int dataBytes = static_cast<int>(qFromLittleEndian<quint32>(bytes + 40));
        ASSERT_EQ(dataBytes, wav.size() - 44);

        const int frames = dataBytes / 2;
        const int ms = frames * 1000 / 44100;
        EXPECT_GE(ms, clip[1].toInt());
        EXPECT_LE(ms, clip[2].toInt());
        auto sample = [&](int i) { return qFromLittleEndian<qint16>(bytes + 44 + 2 * i); };
        EXPECT_EQ(sample(0), 0);
        EXPECT_EQ(sample(frames - 1), 0);
        int peak = 0;
        for (int i = 0; i < frames; ++i) peak = std::max(peak, std::abs(int{sample(i)}));
        EXPECT_LT(peak, 32000);
        EXPECT_GT(peak, 8000) << "too quiet to hear";
    }
}

}  // namespace
