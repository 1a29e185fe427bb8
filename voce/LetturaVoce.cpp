#include "voce/LetturaVoce.h"

#include "core/FamiglieSimboli.h"
#include "core/StatoCondiviso.h"
#include "platform/Services.h"
#include "voce/ImpostazioniUtente.h"
#include "voce/Parole.h"
#include "voce/Sintetizzatore.h"

#include <QRegularExpression>
#include <QTimer>

namespace {

bool misura(const StatoCondiviso &s)
{
    const FamigliaSimboli *f = FamiglieSimboli::trova(s.FamigliaSimboli);
    return f && f->metrica;
}

} // namespace

const QString LetturaVoce::NonDisponibile =
    QStringLiteral("La voce non è disponibile: il programma continua senza leggere ad alta voce.");

LetturaVoce::LetturaVoce(Services &services, std::unique_ptr<Sintetizzatore> motore,
                         std::optional<ImpostazioniUtente> impostazioni)
    : m_services(services), m_motore(std::move(motore)), m_impostazioni(std::move(impostazioni)),
      m_attiva(m_impostazioni && m_impostazioni->voce()), m_contesto(std::make_unique<QObject>())
{
    m_motore->nonDisponibile = [this](const QString &motivo) { nonDisponibile(motivo); };
}

LetturaVoce::~LetturaVoce()
{
    m_motore->nonDisponibile = nullptr;
}

void LetturaVoce::setAttiva(bool attiva)
{
    m_attiva = attiva;
    // Turned on again, the voice tries again.
    m_muta = false;
    if (!attiva)
        m_motore->interrompi();
    if (m_impostazioni)
        m_impostazioni->setVoce(attiva);
}

void LetturaVoce::di(const QString &frase)
{
    if (!m_attiva || m_muta || frase.isEmpty())
        return;
    QString tutta = frase;
    if (!m_premessa.isEmpty())
        tutta = m_premessa + QStringLiteral(". ") + frase;
    m_premessa.clear();
    m_motore->pronuncia(tutta);
}

void LetturaVoce::premetti(const QString &frase)
{
    if (!m_attiva || m_muta)
        return;
    m_premessa = frase;
    // Nothing followed in the same handler (Avanti at the end of a series):
    // the command's words are said alone.
    QTimer::singleShot(0, m_contesto.get(), [this] {
        if (m_premessa.isEmpty())
            return;
        const QString frase = m_premessa;
        m_premessa.clear();
        di(frase);
    });
}

void LetturaVoce::nonDisponibile(const QString &)
{
    m_muta = true;
    m_motore->interrompi();
    if (m_avvisato)
        return;
    m_avvisato = true;
    m_services.notifications().notify(NonDisponibile);
}

QString LetturaVoce::fraseDomanda(const StatoCondiviso &s, const QString &testo)
{
    // The question as shown: a number, then its symbol or unit.
    static const QRegularExpression forma(QStringLiteral("^\\s*([0-9.,]+)\\s*(\\S*)\\s*$"));
    const QRegularExpressionMatch m = forma.match(testo);
    const QString parole =
        m.hasMatch() ? Parole::quantita(m.captured(1), m.captured(2), misura(s)) : QString();
    return parole.isEmpty() ? testo.simplified() : parole;
}

QString LetturaVoce::fraseTasto(const StatoCondiviso &s, const QString &caption)
{
    const QString t = caption.trimmed();
    if (t.size() == 1 && t.front().isDigit())
        return Parole::intero(t.front().digitValue());
    if (t == QStringLiteral("Cancella"))
        return QStringLiteral("Cancella la risposta");
    if (t == QStringLiteral("Verifica"))
        return QStringLiteral("Verifica la risposta");
    const QString unita = Parole::nomeUnita(t, misura(s), true);
    return unita.isEmpty() ? t : unita;
}

QString LetturaVoce::fraseSoluzione(const StatoCondiviso &s)
{
    const QString parole = Parole::scomposizione(s.Risposta, misura(s));
    return QStringLiteral("La soluzione è: ") +
           (parole.isEmpty() ? s.Risposta.simplified() : parole);
}

void LetturaVoce::domanda(const StatoCondiviso &s, const QString &testo)
{
    di(fraseDomanda(s, testo));
}

void LetturaVoce::tasto(const StatoCondiviso &s, const QString &caption)
{
    const QString t = caption.trimmed();
    if (t == QStringLiteral("Verifica") || t == QStringLiteral("Avanti"))
        premetti(fraseTasto(s, caption));
    else
        di(fraseTasto(s, caption));
}

void LetturaVoce::esatto(const StatoCondiviso &)
{
    di(QStringLiteral("Esatto"));
}

void LetturaVoce::errato(const StatoCondiviso &)
{
    di(QStringLiteral("Errato. Ti aiuto?"));
}

void LetturaVoce::intervento(const StatoCondiviso &)
{
    di(QStringLiteral("Intervengo io"));
}

void LetturaVoce::soluzione(const StatoCondiviso &s)
{
    di(fraseSoluzione(s));
}

void LetturaVoce::lettera(const QString &testo)
{
    di(Parole::lettera(testo));
}
