#pragma once

#include "voce/Sintetizzatore.h"

#include <QObject>
#include <atomic>
#include <memory>

class AlsaPlayer;
class MotoreEspeak;
class QThread;

// Speech through espeak-ng: each sentence is made into sound on a thread of
// its own (the library is loaded there at the first sentence) and played
// from memory through the program's ALSA output. A new sentence drops the
// one being made and stops the one being played, so the interface never
// waits for the voice.
class SintesiEspeak : public QObject, public Sintetizzatore
{
    Q_OBJECT

public:
    explicit SintesiEspeak(const QString &libreria = QStringLiteral("libespeak-ng.so.1"),
                           const QString &dispositivo = QStringLiteral("default"),
                           QObject *parent = nullptr);
    ~SintesiEspeak() override;

    void pronuncia(const QString &frase) override;
    void interrompi() override;

    // Whether a sentence is being made or played.
    bool occupata() const;

signals:
    // A sentence's sound began playing (tests wait for it).
    void suonoIniziato(const QString &frase);

private:
    void pronta(quint64 generazione, const QString &frase, const QByteArray &wav,
                const QString &errore);

    QString m_libreria;
    QString m_dispositivo;
    std::unique_ptr<AlsaPlayer> m_suono;
    QThread *m_filo = nullptr;
    QObject *m_lavoratore = nullptr; // lives on m_filo
    std::shared_ptr<std::atomic<quint64>> m_generazione;
    std::atomic<int> m_inCorso{0};
};
