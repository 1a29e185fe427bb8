#include "registro/RegistroQuadrivo.h"

#include "core/AppContext.h"
#include "core/FonteEsercizi.h"
#include "registro/ArchivioRegistro.h"
#include "registro/AttesaRegistro.h"
#include "registro/ScrittoreRegistro.h"
#include "registro/frmRegistro.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>
#include <QThread>

RegistroQuadrivo::RegistroQuadrivo(AppContext &ctx, const ImpostazioniRegistro &impostazioni,
                                   int intervalloRiprova)
    : m_ctx(ctx), m_impostazioni(impostazioni), m_intervallo(intervalloRiprova)
{
    // Series left waiting by an earlier run are written now, on the writer's
    // thread; with none (the usual case) nothing opens and nothing starts.
    const bool coda = m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL &&
                      !m_impostazioni.coda.isEmpty() && QFile::exists(m_impostazioni.coda);
    if (coda ||
        (!m_impostazioni.attesa.isEmpty() && !AttesaRegistro(m_impostazioni.attesa).vuota())) {
        avviaScrittore();
        ScrittoreRegistro *scrittore = m_scrittore;
        QMetaObject::invokeMethod(scrittore, [scrittore] { scrittore->riprendi(); });
    }
}

RegistroQuadrivo::~RegistroQuadrivo()
{
    if (!m_thread)
        return;
    // What is still queued is written (or kept for the server) before the end.
    ScrittoreRegistro *scrittore = m_scrittore;
    QMetaObject::invokeMethod(
        scrittore, [scrittore] { scrittore->chiudi(); }, Qt::BlockingQueuedConnection);
    m_thread->quit();
    m_thread->wait();
    delete m_scrittore;
}

void RegistroQuadrivo::inizioSerie(const StatoCondiviso &s)
{
    const FonteEsercizi *fonte = m_ctx.fonteEsercizi();
    m_serie.inizia(s, m_ctx.clock().now(), QSysInfo::machineHostName(),
                   fonte ? fonte->codice() : QString(), fonte ? fonte->alunno() : QString());
}

void RegistroQuadrivo::esercizioChiuso(const StatoCondiviso &s)
{
    m_serie.chiudiEsercizio(s);
}

void RegistroQuadrivo::fineSerie(const StatoCondiviso &s)
{
    if (auto serie = m_serie.termina(s, m_ctx.clock().now()))
        invia(*serie);
}

void RegistroQuadrivo::serieLasciata(const StatoCondiviso &s)
{
    if (auto serie = m_serie.lascia(s, m_ctx.clock().now()))
        invia(*serie);
}

void RegistroQuadrivo::nomeAlunno(const QString &nome)
{
    if (auto serie = m_serie.assegnaNome(nome))
        invia(*serie);
}

void RegistroQuadrivo::valutazione(const QString &nome, const QString &parola)
{
    if (auto serie = m_serie.assegnaValutazione(nome, parola))
        invia(*serie);
}

void RegistroQuadrivo::impostazioneSbagliata()
{
    // A mistaken setting line is told once; the default file serves meanwhile.
    if (m_impostazioni.errore.isEmpty() || m_erroreDetto)
        return;
    m_erroreDetto = true;
    m_ctx.notifications().notify(
        QStringLiteral("Registro: impostazione non valida (%1); si usa il file %2.")
            .arg(m_impostazioni.errore, m_impostazioni.descrizione()));
}

void RegistroQuadrivo::mostraRegistro()
{
    impostazioneSbagliata();
    m_ctx.screens()
        .get<frmRegistro>([this] { return new frmRegistro(m_ctx, m_impostazioni); })
        .Show();
}

void RegistroQuadrivo::invia(const SerieRegistrata &serie)
{
    impostazioneSbagliata();
    avviaScrittore();
    ScrittoreRegistro *scrittore = m_scrittore;
    QMetaObject::invokeMethod(scrittore, [scrittore, serie] { scrittore->scrivi(serie); });
}

void RegistroQuadrivo::avviaScrittore()
{
    if (!m_thread) {
        m_thread = std::make_unique<QThread>();
        m_thread->setObjectName(QStringLiteral("registro"));
        m_scrittore = new ScrittoreRegistro(m_impostazioni, m_intervallo);
        m_scrittore->moveToThread(m_thread.get());
        connect(m_scrittore, &ScrittoreRegistro::problema, this, &RegistroQuadrivo::problema);
        connect(m_scrittore, &ScrittoreRegistro::scritta, this, &RegistroQuadrivo::scritta);
        connect(m_scrittore, &ScrittoreRegistro::ripreso, this, [this] {
            if (m_avvisati.isEmpty())
                return;
            m_avvisati.clear();
            m_ctx.notifications().notify(
                QStringLiteral("Registro: le serie in attesa sono state scritte in %1.")
                    .arg(m_impostazioni.descrizione()));
        });
        m_thread->start();
    }
}

void RegistroQuadrivo::attendi()
{
    if (!m_thread)
        return;
    QMetaObject::invokeMethod(
        m_scrittore, [] {}, Qt::BlockingQueuedConnection);
    // And what the writer has told meanwhile reaches the user.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void RegistroQuadrivo::riprova()
{
    if (!m_thread)
        return;
    ScrittoreRegistro *scrittore = m_scrittore;
    QMetaObject::invokeMethod(scrittore, [scrittore] { scrittore->riprova(); });
}

void RegistroQuadrivo::problema(int esito, const QString &dettaglio, const QString &messoDaParte,
                                const QString &attesa)
{
    // Once for each kind of trouble until the register works again; a
    // damaged file is told every time, since each time it is another file.
    if (esito != ArchivioRegistro::Danneggiato) {
        if (m_avvisati.contains(esito))
            return;
        m_avvisati.insert(esito);
    }
    m_ctx.notifications().notify(testoProblema(esito, dettaglio, messoDaParte, attesa));
}

QString RegistroQuadrivo::testoProblema(int esito, const QString &dettaglio,
                                        const QString &messoDaParte,
                                        const QString &cartellaAttesa) const
{
    const bool server = m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL;
    const QString dove = m_impostazioni.descrizione();
    const QString quando = server && esito == ArchivioRegistro::NonRaggiungibile
                               ? QStringLiteral("quando il server sarà di nuovo raggiungibile")
                               : QStringLiteral("appena possibile");
    const QString come = server ? QStringLiteral("inviate") : QStringLiteral("scritte");
    // Where they wait, so the teacher knows whether closing loses them.
    const QString attesa =
        cartellaAttesa.isEmpty()
            ? QStringLiteral("Le serie restano in attesa e saranno %1 %2; non chiudere Quadrivo "
                             "fino ad allora.")
                  .arg(come, quando)
            : QStringLiteral("Le serie sono tenute su questo computer, in %1, e saranno %2 %3, "
                             "anche se Quadrivo viene chiuso.")
                  .arg(cartellaAttesa, come, quando);
    const QString motivo = dettaglio.trimmed().isEmpty()
                               ? QString()
                               : QStringLiteral(" (%1)").arg(dettaglio.trimmed());
    switch (esito) {
    case ArchivioRegistro::NonRaggiungibile:
        return server ? QStringLiteral("Registro: il server %1 non risponde%2. %3")
                            .arg(dove, motivo, attesa)
                      : QStringLiteral("Registro: impossibile scrivere il file %1%2. %3")
                            .arg(dove, motivo, attesa);
    case ArchivioRegistro::SolaLettura:
        return QStringLiteral("Registro: %1 è di sola lettura. %2").arg(dove, attesa);
    case ArchivioRegistro::Bloccato:
        return QStringLiteral("Registro: %1 è in uso da un altro programma (un'altra copia di "
                              "Quadrivo?). %2")
            .arg(dove, attesa);
    case ArchivioRegistro::Danneggiato:
        return QStringLiteral("Registro: il file %1 era danneggiato. È stato messo da parte "
                              "in %2 e ne è stato iniziato uno nuovo.")
            .arg(dove, messoDaParte);
    case ArchivioRegistro::VersioneFutura:
        return QStringLiteral("Registro: %1 è stato scritto da una versione più recente di "
                              "Quadrivo%2. %3")
            .arg(dove, motivo, attesa);
    default:
        return QStringLiteral("Registro: errore nello scrivere in %1%2. %3")
            .arg(dove, motivo, attesa);
    }
}
