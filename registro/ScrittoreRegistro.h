#pragma once

#include "registro/ArchivioRegistro.h"
#include "registro/ImpostazioniRegistro.h"
#include "registro/SerieRegistrata.h"

#include <QObject>
#include <memory>

class QTimer;

// Writes the register's series on a thread of its own, so a slow disk, a
// lock or a server that does not answer never holds up a screen. A series
// that cannot be written waits: in memory, and for a server also in a local
// file that outlives the program; it is written at the next series or at the
// next retry, whichever comes first.
class ScrittoreRegistro : public QObject
{
    Q_OBJECT

public:
    explicit ScrittoreRegistro(const ImpostazioniRegistro &impostazioni, int intervalloRiprova);
    ~ScrittoreRegistro() override;

    // All of these run on the writer's thread.
    void scrivi(const SerieRegistrata &serie);
    void riprova();
    // Last attempt for what waits, then the connections close.
    void chiudi();
    int inAttesa() const;

signals:
    // A series could not go where it belongs (ArchivioRegistro::Esito), or
    // the file was damaged and put aside (`messoDaParte`).
    void problema(int esito, const QString &dettaglio, const QString &messoDaParte);
    // Everything that waited has been written.
    void ripreso();
    void scritta(const QString &codice);

private:
    bool svuota();
    void accoda(const SerieRegistrata &serie);
    void segnala(int esito);

    ImpostazioniRegistro m_impostazioni;
    int m_intervallo;
    std::unique_ptr<ArchivioRegistro> m_archivio;
    std::unique_ptr<ArchivioRegistro> m_coda;
    QList<SerieRegistrata> m_memoria;
    QTimer *m_timer = nullptr;
    bool m_inDifficolta = false;
    QString m_messoDaParteDetto;
};
