#pragma once

#include "core/RegistroSerie.h"
#include "registro/ImpostazioniRegistro.h"
#include "registro/SerieInCorso.h"

#include <QObject>
#include <QSet>
#include <memory>

class AppContext;
class QThread;
class ScrittoreRegistro;

// The pupils' register as the screens see it: it follows the series in
// progress and hands each ended or left series to the writer's thread. The
// database is opened only then, or when the teacher's view opens, so
// starting the program costs nothing. A problem is told to the user once,
// as a notice; the drill never waits for it.
class RegistroQuadrivo final : public QObject, public RegistroSerie
{
    Q_OBJECT

public:
    RegistroQuadrivo(AppContext &ctx, const ImpostazioniRegistro &impostazioni,
                     int intervalloRiprova = 30000);
    ~RegistroQuadrivo() override;

    void inizioSerie(const StatoCondiviso &s) override;
    void esercizioChiuso(const StatoCondiviso &s) override;
    void fineSerie(const StatoCondiviso &s) override;
    void serieLasciata(const StatoCondiviso &s) override;
    void nomeAlunno(const QString &nome) override;
    void valutazione(const QString &nome, const QString &parola) override;
    void mostraRegistro() override;

    const ImpostazioniRegistro &impostazioni() const { return m_impostazioni; }
    // Waits until every series handed over so far has been tried.
    void attendi();
    // Tries again now what waits (the writer also does it by itself).
    void riprova();

signals:
    void scritta(const QString &codice);

private:
    void invia(const SerieRegistrata &serie);
    void avviaScrittore();
    void impostazioneSbagliata();
    void problema(int esito, const QString &dettaglio, const QString &messoDaParte,
                  const QString &attesa);
    QString testoProblema(int esito, const QString &dettaglio, const QString &messoDaParte,
                          const QString &attesa) const;

    AppContext &m_ctx;
    ImpostazioniRegistro m_impostazioni;
    int m_intervallo;
    SerieInCorso m_serie;
    std::unique_ptr<QThread> m_thread;
    ScrittoreRegistro *m_scrittore = nullptr;
    QSet<int> m_avvisati;
    bool m_erroreDetto = false;
};
