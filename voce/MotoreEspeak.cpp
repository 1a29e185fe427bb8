#include "voce/MotoreEspeak.h"

#include "platform/LibreriaDinamica.h"

#include <QFile>
#include <QMutexLocker>
#include <QtEndian>
#include <map>

#include <espeak-ng/speak_lib.h>

namespace {

// Where the synchronous callback puts the samples of the sentence in hand.
struct Raccolta
{
    QByteArray campioni;
    const std::function<bool()> *interrotta = nullptr;
};
thread_local Raccolta *raccolta = nullptr;

int riceviCampioni(short *campioni, int quanti, espeak_EVENT *)
{
    if (!raccolta)
        return 1;
    if (campioni && quanti > 0)
        raccolta->campioni.append(reinterpret_cast<const char *>(campioni),
                                  qsizetype(quanti) * qsizetype(sizeof(short)));
    // A non-zero answer stops the synthesis.
    return raccolta->interrotta && *raccolta->interrotta && (*raccolta->interrotta)() ? 1 : 0;
}

QByteArray immagineWav(const QByteArray &campioni, int frequenza)
{
    QByteArray wav(44, '\0');
    char *h = wav.data();
    auto le32 = [](char *p, quint32 v) { qToLittleEndian<quint32>(v, p); };
    auto le16 = [](char *p, quint16 v) { qToLittleEndian<quint16>(v, p); };
    memcpy(h, "RIFF", 4);
    le32(h + 4, quint32(36 + campioni.size()));
    memcpy(h + 8, "WAVEfmt ", 8);
    le32(h + 16, 16);
    le16(h + 20, 1); // PCM
    le16(h + 22, 1); // mono
    le32(h + 24, quint32(frequenza));
    le32(h + 28, quint32(frequenza * 2));
    le16(h + 32, 2);
    le16(h + 34, 16);
    memcpy(h + 36, "data", 4);
    le32(h + 40, quint32(campioni.size()));
    return wav + campioni;
}

} // namespace

struct MotoreEspeak::Funzioni
{
    decltype(&espeak_Initialize) initialize = nullptr;
    decltype(&espeak_SetSynthCallback) setSynthCallback = nullptr;
    decltype(&espeak_SetVoiceByName) setVoiceByName = nullptr;
    decltype(&espeak_SetParameter) setParameter = nullptr;
    decltype(&espeak_Synth) synth = nullptr;
    decltype(&espeak_Synchronize) synchronize = nullptr;
};

MotoreEspeak &MotoreEspeak::di(const QString &libreria)
{
    static QMutex mutex;
    // Never destroyed: ending the library and starting it again hangs it,
    // and at exit the process lets it go with everything else.
    static auto *motori = new std::map<QString, MotoreEspeak *>;
    QMutexLocker blocco(&mutex);
    MotoreEspeak *&m = (*motori)[libreria];
    if (!m)
        m = new MotoreEspeak(libreria);
    return *m;
}

MotoreEspeak::MotoreEspeak(const QString &libreria) : m_libreria(libreria)
{
}

MotoreEspeak::~MotoreEspeak()
{
    delete m_f;
}

QString MotoreEspeak::carica()
{
    QMutexLocker blocco(&m_mutex);
    return caricaGiaBloccato();
}

QString MotoreEspeak::caricaGiaBloccato()
{
    if (m_provato)
        return m_errore;
    m_provato = true;
    LibreriaDinamica libreria(QFile::encodeName(m_libreria).constData());
    if (!libreria.caricata()) {
        m_errore = QStringLiteral("manca la libreria della sintesi vocale (espeak-ng)");
        return m_errore;
    }
    auto *f = new Funzioni;
    m_f = f;
    libreria.trova(f->initialize, "espeak_Initialize");
    libreria.trova(f->setSynthCallback, "espeak_SetSynthCallback");
    libreria.trova(f->setVoiceByName, "espeak_SetVoiceByName");
    libreria.trova(f->setParameter, "espeak_SetParameter");
    libreria.trova(f->synth, "espeak_Synth");
    libreria.trova(f->synchronize, "espeak_Synchronize");
    if (!libreria.tutte()) {
        m_errore = QStringLiteral("la libreria della sintesi vocale non è quella attesa");
        return m_errore;
    }
    m_frequenza = f->initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, 0);
    if (m_frequenza <= 0) {
        m_errore = QStringLiteral("i dati della sintesi vocale (espeak-ng-data) non ci sono");
        return m_errore;
    }
    f->setSynthCallback(riceviCampioni);
    if (f->setVoiceByName("it") != EE_OK) {
        m_errore = QStringLiteral("manca la voce italiana");
        return m_errore;
    }
    f->setParameter(espeakRATE, Velocita, 0);
    return m_errore;
}

QByteArray MotoreEspeak::sintetizza(const QString &frase, const std::function<bool()> &interrotta)
{
    QMutexLocker blocco(&m_mutex);
    if (!caricaGiaBloccato().isEmpty())
        return {};
    Raccolta r;
    r.interrotta = &interrotta;
    raccolta = &r;
    const QByteArray testo = frase.toUtf8();
    const espeak_ERROR esito = m_f->synth(testo.constData(), size_t(testo.size() + 1), 0,
                                          POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr, nullptr);
    m_f->synchronize();
    raccolta = nullptr;
    if (esito != EE_OK || (interrotta && interrotta()) || r.campioni.isEmpty())
        return {};
    return immagineWav(r.campioni, m_frequenza);
}
