#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <optional>

class QTimer;
typedef struct _snd_pcm snd_pcm_t;

// Plays a short WAV image from memory on an ALSA device without waiting for
// it: the samples go into the device's buffer and a timer feeds the rest and
// closes the device when the sound is over. Without a usable device, play()
// just returns false: a missing sound is never an error.
class AlsaPlayer : public QObject
{
    Q_OBJECT

public:
    // PCM samples of a WAV image: 8-bit unsigned or 16-bit little-endian.
    struct Clip
    {
        int channels = 0;
        int rate = 0;
        int bitsPerSample = 0;
        QByteArray samples;

        int bytesPerFrame() const { return channels * bitsPerSample / 8; }
        qint64 frames() const { return bytesPerFrame() ? samples.size() / bytesPerFrame() : 0; }
        double seconds() const { return rate ? double(frames()) / rate : 0; }
    };

    explicit AlsaPlayer(const QString &device = QStringLiteral("default"),
                        QObject *parent = nullptr);
    ~AlsaPlayer() override;

    // The clip of a RIFF/WAVE image, or nothing if it is not one we can play.
    static std::optional<Clip> parseWav(const QByteArray &wav);

    // Starts playing, stopping whatever was still playing; false when the
    // image is not playable or the device cannot be opened.
    bool play(const QByteArray &wav);
    void stop();
    bool isPlaying() const { return m_pcm != nullptr; }

signals:
    void finished();

private:
    void feed();
    void tick();

    QString m_device;
    snd_pcm_t *m_pcm = nullptr;
    Clip m_clip;
    qint64 m_written = 0;
    qint64 m_deadline = 0;
    QTimer *m_timer;
};
