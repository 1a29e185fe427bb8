#include "voce/SintesiEspeak.h"

#include "platform/AlsaPlayer.h"
#include "voce/MotoreEspeak.h"

#include <QThread>

SintesiEspeak::SintesiEspeak(const QString &libreria, const QString &dispositivo, QObject *parent)
    : QObject(parent), m_libreria(libreria), m_dispositivo(dispositivo),
      m_generazione(std::make_shared<std::atomic<quint64>>(0))
{
}

SintesiEspeak::~SintesiEspeak()
{
    ++*m_generazione;
    if (m_filo) {
        // The sentences still queued there see they were overtaken and make
        // nothing.
        m_filo->quit();
        m_filo->wait();
        delete m_lavoratore;
        delete m_filo;
    }
}

bool SintesiEspeak::occupata() const
{
    return m_inCorso > 0 || (m_suono && m_suono->isPlaying());
}

void SintesiEspeak::interrompi()
{
    ++*m_generazione;
    if (m_suono)
        m_suono->stop();
}

void SintesiEspeak::pronuncia(const QString &frase)
{
    const quint64 generazione = ++*m_generazione;
    if (m_suono)
        m_suono->stop();
    if (!m_filo) {
        // Nothing of the voice exists before its first sentence.
        m_suono = std::make_unique<AlsaPlayer>(m_dispositivo);
        m_filo = new QThread;
        m_filo->setObjectName(QStringLiteral("SintesiEspeak"));
        m_lavoratore = new QObject;
        m_lavoratore->moveToThread(m_filo);
        m_filo->start();
    }
    ++m_inCorso;
    auto contatore = m_generazione;
    const QString libreria = m_libreria;
    QMetaObject::invokeMethod(
        m_lavoratore,
        [=, this] {
            QByteArray wav;
            QString errore;
            // A sentence already overtaken by another is not made at all.
            if (*contatore == generazione) {
                // The library is loaded here, at the first sentence.
                MotoreEspeak &motore = MotoreEspeak::di(libreria);
                errore = motore.carica();
                if (errore.isEmpty())
                    wav = motore.sintetizza(frase, [&] { return *contatore != generazione; });
            }
            // This object outlives the thread: its destructor joins it.
            QMetaObject::invokeMethod(
                this, [=, this] { pronta(generazione, frase, wav, errore); }, Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
}

void SintesiEspeak::pronta(quint64 generazione, const QString &frase, const QByteArray &wav,
                           const QString &errore)
{
    --m_inCorso;
    if (!errore.isEmpty()) {
        if (nonDisponibile)
            nonDisponibile(errore);
        return;
    }
    if (generazione != *m_generazione || wav.isEmpty())
        return;
    if (!m_suono->play(wav)) {
        if (nonDisponibile)
            nonDisponibile(QStringLiteral("nessun dispositivo audio"));
        return;
    }
    emit suonoIniziato(frase);
}
