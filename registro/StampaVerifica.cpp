#include "registro/StampaVerifica.h"

#include "platform/Texts.h"
#include "platform/printing/Printer.h"

#include <cmath>

namespace {

constexpr double Margine = 900;
constexpr int LarghezzaNome = 22;

QString colonna(const QString &testo, int larghezza)
{
    return testo.left(larghezza).leftJustified(larghezza);
}

QString numero(const QString &testo, int larghezza)
{
    return testo.rightJustified(larghezza);
}

} // namespace

QStringList StampaVerifica::intestazione(const TabellaVerifica &t)
{
    QString r = colonna(QStringLiteral("Alunno"), LarghezzaNome);
    for (int i = 1; i <= t.esercizi; ++i)
        r += numero(QString::number(i), 3);
    r += numero(QStringLiteral("Esatte"), 8) + numero(QStringLiteral("Sec."), 7);
    return {r};
}

QString StampaVerifica::riga(const TabellaVerifica &t, const TabellaVerifica::Riga &r)
{
    QString s = colonna(TabellaVerifica::NomeRiga(r), LarghezzaNome);
    for (int i = 0; i < t.esercizi; ++i)
        s += numero(QString(TabellaVerifica::Lettera(r.celle.at(i).esito)), 3);
    s += numero(QStringLiteral("%1/%2").arg(r.esatte).arg(t.esercizi), 8) +
         numero(Texts::fromDouble(std::round(r.secondi)), 7);
    return s;
}

QStringList StampaVerifica::piede(const TabellaVerifica &t)
{
    QString totali = colonna(QStringLiteral("Esatte al 1° tentativo"), LarghezzaNome);
    QString segno = colonna(QStringLiteral("Il più difficile"), LarghezzaNome);
    for (int i = 0; i < t.esercizi; ++i) {
        totali += numero(QString::number(t.esattePrimoTentativo.value(i)), 3);
        segno += numero(i == t.piuDifficile ? QStringLiteral("^^") : QString(), 3);
    }
    QStringList p{totali};
    if (t.piuDifficile >= 0)
        p << segno;
    return p;
}

void StampaVerifica::stampa(Printer &p, const TabellaVerifica &t)
{
    const int pagine = std::max(1, int((t.righe.size() + AlunniPerPagina - 1) / AlunniPerPagina));
    for (int pagina = 1; pagina <= pagine; ++pagina) {
        if (pagina > 1)
            p.NewPage();
        p.setFontName(QStringLiteral("Courier New"));
        p.setFontBold(true);
        p.setFontSize(12);
        p.setCurrentX(Margine);
        p.setCurrentY(Margine);
        p.Print(QStringLiteral("VERIFICA %1  -  pagina %2 di %3")
                    .arg(t.codice)
                    .arg(pagina)
                    .arg(pagine));
        p.setFontBold(false);
        p.setFontSize(9);
        p.setCurrentX(Margine);
        p.Print(TabellaVerifica::Descrizione(t.codice));
        p.setCurrentY(p.CurrentY() + 200);
        p.setFontSize(8);
        auto stampaRiga = [&](const QString &testo) {
            p.setCurrentX(Margine);
            p.Print(testo);
        };
        p.setFontBold(true);
        for (const QString &r : intestazione(t))
            stampaRiga(r);
        p.setFontBold(false);
        const qsizetype da = qsizetype(pagina - 1) * AlunniPerPagina;
        for (qsizetype i = da; i < std::min(t.righe.size(), da + AlunniPerPagina); ++i)
            stampaRiga(riga(t, t.righe.at(i)));
        p.setCurrentY(p.CurrentY() + 100);
        p.setFontBold(true);
        for (const QString &r : piede(t))
            stampaRiga(r);
        p.setFontBold(false);
        p.setCurrentY(p.CurrentY() + 200);
        for (const QString &voce : TabellaVerifica::Legenda().split(QStringLiteral(";  ")))
            stampaRiga(voce);
    }
    p.EndDoc();
}
