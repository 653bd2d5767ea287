#include "desk/Sounds.h"

#include <QApplication>
#include <QDataStream>
#include <QFile>
#include <QStandardPaths>

#include <cmath>
#include <numbers>
#include <vector>

namespace {

struct Tone {
    int hertz;
    int milliseconds;
};

// High and short is well, low and long is not; what has to be looked at goes up, what is odd goes down.
std::vector<Tone> tonesOf(Answer::Sound sound)
{
    switch (sound) {
    case Answer::SoundDone:
        return {{1320, 70}};
    case Answer::SoundAttention:
        return {{660, 90}, {990, 120}};
    case Answer::SoundRefused:
        return {{220, 320}};
    case Answer::SoundWaiting:
        return {{440, 60}, {0, 60}, {440, 60}};
    case Answer::SoundElsewhere:
        return {{660, 80}, {880, 80}, {1100, 100}};
    case Answer::SoundOut:
        return {{880, 90}, {0, 40}, {880, 90}, {0, 40}, {880, 90}};
    case Answer::SoundScrapped:
        return {{330, 120}, {220, 220}};
    case Answer::SoundUnknown:
        return {{220, 120}, {0, 60}, {220, 200}};
    case Answer::SoundAlready:
        return {{1320, 50}, {0, 50}, {1320, 50}};
    }
    return {};
}

constexpr int samplesPerSecond = 22050;
constexpr int mostToWait = 50; // milliseconds, for a player that is stopped

QByteArray samples(const std::vector<Tone> &tones)
{
    constexpr double loudness = 9000; // of 32767
    constexpr double ramp = samplesPerSecond / 200.0; // a tone that begins at once clicks
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    for (const Tone &tone : tones) {
        const int count = samplesPerSecond * tone.milliseconds / 1000;
        for (int i = 0; i < count; ++i) {
            const double fade = std::min({1.0, i / ramp, (count - i) / ramp});
            const double wave = std::sin(2 * std::numbers::pi * tone.hertz * i / samplesPerSecond);
            stream << qint16(loudness * fade * wave);
        }
    }
    return bytes;
}

}

Sounds::Sounds()
{
    for (const char *name : {"pw-play", "paplay", "aplay", "afplay"})
        if (const QString player = QStandardPaths::findExecutable(name); !player.isEmpty())
            m_players.append(player);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // One may be installed for a sound system that does not run here.
    QObject::connect(&m_process, &QProcess::finished, &m_process, [this](int code, QProcess::ExitStatus status) {
        if (status != QProcess::NormalExit || code == 0)
            return;
        m_players.removeFirst();
        play(m_playing);
    });
}

void Sounds::play(Answer::Sound sound)
{
    const QString file = m_players.isEmpty() ? QString() : fileOf(sound);
    if (file.isEmpty()) {
        QApplication::beep();
        return;
    }
    // Sounds of scans in a row may not queue up behind one that hangs; but none hides a worse one.
    if (m_process.state() != QProcess::NotRunning && Answer::gravity(sound) > Answer::gravity(m_playing)) {
        m_process.kill();
        m_process.waitForFinished(mostToWait);
    }
    if (m_process.state() == QProcess::NotRunning) {
        m_playing = sound;
        m_process.start(m_players.first(), {file});
    }
}

QString Sounds::fileOf(Answer::Sound sound)
{
    const QString name = m_folder.filePath(QString("%1.wav").arg(int(sound)));
    if (QFile::exists(name))
        return name;
    const QByteArray data = samples(tonesOf(sound));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    QDataStream stream(&file);
    stream.setByteOrder(QDataStream::LittleEndian);
    const quint16 plain = 1, channels = 1, bytesPerSample = 2, bitsPerSample = 16;
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + data.size());
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << plain << channels << quint32(samplesPerSecond)
           << quint32(samplesPerSecond * bytesPerSample) << bytesPerSample << bitsPerSample;
    stream.writeRawData("data", 4);
    stream << quint32(data.size());
    stream.writeRawData(data.constData(), int(data.size()));
    return file.flush() ? name : QString();
}
