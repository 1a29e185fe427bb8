#pragma once

#include "registro/ArchivioRegistro.h"
#include "registro/AttesaRegistro.h"
#include "registro/ImpostazioniRegistro.h"
#include "registro/SerieRegistrata.h"

#include <QObject>
#include <memory>

class QTimer;

// Writes the register's series on a thread of its own, so a slow disk, a
// lock or a server that does not answer never holds up a screen. A series
// that cannot be written waits in a folder of its own (AttesaRegistro) that
// outlives the program, or in memory where that folder cannot be written; it
// is written at the next series, at the next retry, or at the next start,
// whichever comes first.
class ScrittoreRegistro : public QObject
{
    Q_OBJECT

public:
    explicit ScrittoreRegistro(const ImpostazioniRegistro &impostazioni, int intervalloRiprova);
    ~ScrittoreRegistro() override;

    // All of these run on the writer's thread.
    void scrivi(const SerieRegistrata &serie);
    void riprova();
    // Writes what an earlier run left waiting, if anything.
    void riprendi();
    // Last attempt for what waits, then the connections close.
    void chiudi();
    int inAttesa() const;

signals:
    // A series could not go where it belongs (ArchivioRegistro::Esito), or
    // the file was damaged and put aside (`messoDaParte`). `attesa` is the
    // folder where the series wait, empty when they wait in memory only.
    void problema(int esito, const QString &dettaglio, const QString &messoDaParte,
                  const QString &attesa);
    // Everything that waited has been written.
    void ripreso();
    void scritta(const QString &codice);

private:
    bool svuota();
    ArchivioRegistro::Esito scriviUna(const SerieRegistrata &serie);
    // Everything in memory goes to the waiting folder, where it can.
    void mettiInAttesa();
    bool fallita(ArchivioRegistro::Esito esito);
    void apriArchivio();

    ImpostazioniRegistro m_impostazioni;
    int m_intervallo;
    std::unique_ptr<ArchivioRegistro> m_archivio;
    std::unique_ptr<ArchivioRegistro> m_coda;
    std::unique_ptr<AttesaRegistro> m_attesa;
    QList<SerieRegistrata> m_memoria;
    QTimer *m_timer = nullptr;
    bool m_inDifficolta = false;
    QString m_messoDaParteDetto;
};
