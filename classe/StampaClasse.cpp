#include "classe/StampaClasse.h"

#include "platform/RuntimeError.h"
#include "platform/printing/Printer.h"
#include "sheets/RigheScheda.h"

#include <cmath>

namespace {

const QString CourierNew = QStringLiteral("Courier New");

// Sizes go down by tenths of a point.
double tronca(double punti)
{
    return std::floor(punti * 10) / 10;
}

} // namespace

const QString StampaClasse::Titolo = QStringLiteral("SCHEDA DI SCOMPOSIZIONE");

StampaClasse::StampaClasse(Printer &stampante, const QString &sottotitolo, const QString &titolo)
    : m_stampante(stampante), m_sottotitolo(sottotitolo), m_titolo(titolo)
{
}

bool StampaClasse::Stampa(const QList<Foglio> &fogli, const Avanzamento &avanti)
{
    try {
        for (int i = 0; i < fogli.size(); ++i) {
            if (i > 0)
                m_stampante.NewPage();
            stampaFoglio(fogli[i]);
            if (avanti && !avanti(i + 1, int(fogli.size()))) {
                m_stampante.KillDoc();
                return false;
            }
        }
        m_stampante.EndDoc();
    } catch (const RuntimeError &) {
        try {
            m_stampante.KillDoc();
        } catch (const RuntimeError &) {
        }
        throw;
    }
    return true;
}

double StampaClasse::CorpoRighe(const Foglio &foglio)
{
    const double proprio = foglio.docenti ? 14 : 12;
    m_stampante.setFontName(CourierNew);
    m_stampante.setFontSize(proprio);
    QString piuLunga;
    double larghezza = 0;
    for (const QString &riga : foglio.righe) {
        const double w = m_stampante.TextWidth(riga);
        if (w > larghezza) {
            larghezza = w;
            piuLunga = riga;
        }
    }
    const double spazio = m_stampante.ScaleWidth() - MargineRighe;
    if (larghezza <= spazio)
        return proprio;
    // A monospace row grows with the size; start from the proportion and
    // step down while the metrics still say it is too wide.
    double corpo = tronca(proprio * spazio / larghezza);
    m_stampante.setFontSize(corpo);
    while (corpo > 1 && m_stampante.TextWidth(piuLunga) > spazio) {
        corpo = tronca(corpo - 0.1);
        m_stampante.setFontSize(corpo);
    }
    return corpo;
}

void StampaClasse::stampaFoglio(const Foglio &foglio)
{
    Printer &p = m_stampante;
    p.setFontName(CourierNew);
    p.setCurrentX(1000);
    p.setCurrentY(1000);
    p.setFontSize(14);
    p.Print(QStringLiteral("Nome e cognome"));
    p.setCurrentX(1000);
    p.setCurrentY(1500);
    p.setFontSize(12);
    p.Print(m_titolo);

    CorpoRighe(foglio);
    for (int i = 0; i < foglio.righe.size(); ++i) {
        p.setCurrentX(MargineRighe);
        if (const auto y = RigheScheda::PosizioneStampa(i + 1))
            p.setCurrentY(*y);
        p.Print(foglio.righe[i]);
    }

    p.setFontName(CourierNew);
    p.setFontSize(8);
    p.setCurrentX(1000);
    p.setCurrentY(15100);
    p.Print(m_sottotitolo);
    p.setCurrentX(1000);
    p.setCurrentY(15300);
    p.Print(QStringLiteral("Livello di difficoltà: ") + m_sottotitolo);
    p.setCurrentX(1000);
    p.setCurrentY(15500);
    p.Print(foglio.piede);
}
