#pragma once

#include <QByteArray>
#include <QMutex>
#include <QString>
#include <functional>

// espeak-ng's library, loaded when first needed (never at start-up) and
// used in its synchronous mode: a sentence becomes 16-bit mono samples in
// memory, a WAV image the program plays itself. The library keeps one state
// per process and cannot be started again once ended: there is one engine
// per library for the whole run, shared, one sentence at a time.
class MotoreEspeak
{
public:
    // The engine of that library, made at the first call and kept until the
    // process ends.
    static MotoreEspeak &di(const QString &libreria = QStringLiteral("libespeak-ng.so.1"));
    MotoreEspeak(const MotoreEspeak &) = delete;
    MotoreEspeak &operator=(const MotoreEspeak &) = delete;

    // Loads the library and the Italian voice; an Italian text saying what
    // is missing, or an empty text when ready. Only the first call works.
    QString carica();
    // The sentence as a WAV image; empty when the engine is not ready or
    // `interrotta` answered true while the sound was being made.
    QByteArray sintetizza(const QString &frase, const std::function<bool()> &interrotta = {});

    // Words a minute: a little slower than espeak's usual 175, for children.
    static constexpr int Velocita = 150;

private:
    explicit MotoreEspeak(const QString &libreria);
    ~MotoreEspeak();
    QString caricaGiaBloccato();

    QMutex m_mutex;
    struct Funzioni;
    QString m_libreria;
    Funzioni *m_f = nullptr;
    bool m_provato = false;
    QString m_errore;
    int m_frequenza = 0;
};
