#include "platform/AlsaPlayer.h"

#include "platform/LibreriaDinamica.h"

#include <QDateTime>
#include <QTimer>
#include <QtEndian>

#include <alsa/asoundlib.h>

namespace {

// The ALSA library, opened at the first sound rather than with the program:
// its loading is start-up work (about 2 % of a bare Qt window's) for a sound
// that plays only in the drill. Without the library there is no sound, as
// without a card.
struct Alsa
{
    decltype(&snd_lib_error_set_handler) lib_error_set_handler = nullptr;
    decltype(&snd_pcm_open) pcm_open = nullptr;
    decltype(&snd_pcm_set_params) pcm_set_params = nullptr;
    decltype(&snd_pcm_close) pcm_close = nullptr;
    decltype(&snd_pcm_writei) pcm_writei = nullptr;
    decltype(&snd_pcm_recover) pcm_recover = nullptr;
    decltype(&snd_pcm_state) pcm_state = nullptr;
    decltype(&snd_pcm_start) pcm_start = nullptr;
    decltype(&snd_pcm_delay) pcm_delay = nullptr;
};

// Null when the library or one of its functions is missing.
const Alsa *alsa()
{
    static const Alsa *const caricata = []() -> const Alsa * {
        LibreriaDinamica libreria("libasound.so.2");
        static Alsa a;
        libreria.trova(a.lib_error_set_handler, "snd_lib_error_set_handler");
        libreria.trova(a.pcm_open, "snd_pcm_open");
        libreria.trova(a.pcm_set_params, "snd_pcm_set_params");
        libreria.trova(a.pcm_close, "snd_pcm_close");
        libreria.trova(a.pcm_writei, "snd_pcm_writei");
        libreria.trova(a.pcm_recover, "snd_pcm_recover");
        libreria.trova(a.pcm_state, "snd_pcm_state");
        libreria.trova(a.pcm_start, "snd_pcm_start");
        libreria.trova(a.pcm_delay, "snd_pcm_delay");
        return libreria.tutte() ? &a : nullptr;
    }();
    return caricata;
}

// ALSA writes its own complaints to stderr (no card, unknown device); a
// program that may well run without sound keeps quiet about it.
void silenzio(const char *, int, const char *, int, const char *, ...)
{
}

quint32 le32(const char *p)
{
    return qFromLittleEndian<quint32>(p);
}

quint16 le16(const char *p)
{
    return qFromLittleEndian<quint16>(p);
}

// How often the timer feeds the device and checks whether the sound ended.
constexpr int PassoMs = 20;
// Latency asked of the device: more than a short sound, so it fits at once.
constexpr unsigned LatenzaUs = 500000;

} // namespace

AlsaPlayer::AlsaPlayer(const QString &device, QObject *parent)
    : QObject(parent), m_device(device), m_timer(new QTimer(this))
{
    m_timer->setInterval(PassoMs);
    connect(m_timer, &QTimer::timeout, this, &AlsaPlayer::tick);
}

AlsaPlayer::~AlsaPlayer()
{
    if (m_pcm)
        alsa()->pcm_close(m_pcm);
}

std::optional<AlsaPlayer::Clip> AlsaPlayer::parseWav(const QByteArray &wav)
{
    if (wav.size() < 12 || !wav.startsWith("RIFF") || wav.mid(8, 4) != "WAVE")
        return std::nullopt;
    Clip clip;
    bool format = false;
    qsizetype pos = 12;
    while (pos + 8 <= wav.size()) {
        const QByteArray id = wav.mid(pos, 4);
        const qint64 size = le32(wav.constData() + pos + 4);
        const qsizetype body = pos + 8;
        if (id == "fmt ") {
            if (size < 16 || body + 16 > wav.size())
                return std::nullopt;
            const char *f = wav.constData() + body;
            if (le16(f) != 1) // PCM only
                return std::nullopt;
            clip.channels = le16(f + 2);
            clip.rate = int(le32(f + 4));
            clip.bitsPerSample = le16(f + 14);
            format = true;
        } else if (id == "data") {
            if (!format)
                return std::nullopt;
            // A truncated image plays what it has.
            clip.samples = wav.mid(body, qsizetype(std::min<qint64>(size, wav.size() - body)));
            break;
        }
        pos = body + size + (size & 1);
    }
    if (!format || clip.channels < 1 || clip.rate < 1 ||
        (clip.bitsPerSample != 8 && clip.bitsPerSample != 16) || clip.frames() == 0)
        return std::nullopt;
    return clip;
}

bool AlsaPlayer::play(const QByteArray &wav)
{
    stop();
    const std::optional<Clip> clip = parseWav(wav);
    if (!clip)
        return false;

    const Alsa *a = alsa();
    if (!a)
        return false;
    a->lib_error_set_handler(silenzio);
    snd_pcm_t *pcm = nullptr;
    // Non-blocking: a busy or absent device must not hold up the screen.
    if (a->pcm_open(&pcm, m_device.toLocal8Bit().constData(), SND_PCM_STREAM_PLAYBACK,
                    SND_PCM_NONBLOCK) < 0)
        return false;
    const snd_pcm_format_t formato =
        clip->bitsPerSample == 8 ? SND_PCM_FORMAT_U8 : SND_PCM_FORMAT_S16_LE;
    if (a->pcm_set_params(pcm, formato, SND_PCM_ACCESS_RW_INTERLEAVED, unsigned(clip->channels),
                          unsigned(clip->rate), 1, LatenzaUs) < 0) {
        a->pcm_close(pcm);
        return false;
    }
    m_pcm = pcm;
    m_clip = *clip;
    m_written = 0;
    // Whatever happens on the device, it is closed a second after the end.
    m_deadline = QDateTime::currentMSecsSinceEpoch() + qint64(m_clip.seconds() * 1000) + 1000;
    feed();
    if (m_pcm)
        m_timer->start();
    return true;
}

void AlsaPlayer::feed()
{
    while (m_pcm && m_written < m_clip.frames()) {
        const char *from = m_clip.samples.constData() + m_written * m_clip.bytesPerFrame();
        const snd_pcm_sframes_t n =
            alsa()->pcm_writei(m_pcm, from, snd_pcm_uframes_t(m_clip.frames() - m_written));
        if (n == -EAGAIN)
            break; // the buffer is full: the timer brings the rest
        if (n < 0) {
            if (alsa()->pcm_recover(m_pcm, int(n), 1) < 0) {
                stop();
                return;
            }
            continue;
        }
        m_written += n;
    }
    // The device starts by itself only once its buffer is full; a short sound
    // never fills it.
    if (m_pcm && alsa()->pcm_state(m_pcm) == SND_PCM_STATE_PREPARED)
        alsa()->pcm_start(m_pcm);
}

void AlsaPlayer::tick()
{
    if (!m_pcm) {
        m_timer->stop();
        return;
    }
    if (m_written < m_clip.frames())
        feed();
    if (!m_pcm)
        return;
    bool over = QDateTime::currentMSecsSinceEpoch() > m_deadline;
    if (m_written >= m_clip.frames()) {
        snd_pcm_sframes_t delay = 0;
        const snd_pcm_state_t state = alsa()->pcm_state(m_pcm);
        if (state != SND_PCM_STATE_RUNNING || alsa()->pcm_delay(m_pcm, &delay) < 0 || delay <= 0)
            over = true;
    }
    if (over)
        stop();
}

void AlsaPlayer::stop()
{
    m_timer->stop();
    if (!m_pcm)
        return;
    alsa()->pcm_close(m_pcm);
    m_pcm = nullptr;
    emit finished();
}
