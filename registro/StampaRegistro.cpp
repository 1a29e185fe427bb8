#include "registro/StampaRegistro.h"

#include "platform/Texts.h"
#include "platform/printing/Printer.h"
#include "registro/ModelloSerie.h"
#include "registro/UnitaSerie.h"

#include <cmath>

namespace {

constexpr double Margine = 1000;
// An A4 page less the margins, in twips.
constexpr double FondoPagina = 16838 - 1400;

QString colonna(const QString &testo, int larghezza)
{
    return testo.left(larghezza).leftJustified(larghezza);
}

QString numero(const QString &testo, int larghezza)
{
    return testo.rightJustified(larghezza);
}

} // namespace

QStringList StampaRegistro::righe(const QList<SerieRegistrata> &serie,
                                  const QList<RiepilogoAlunni::Alunno> &alunni)
{
    QStringList r;
    r << QStringLiteral("ALUNNI") << QString();
    r << colonna(QStringLiteral("Alunno"), 22) + numero(QStringLiteral("Serie"), 7) +
             numero(QStringLiteral("Esatte %"), 10) + numero(QStringLiteral("Sec./es."), 10);
    for (const RiepilogoAlunni::Alunno &a : alunni)
        r << colonna(ModelloSerie::nomeMostrato(a.nome), 22) + numero(QString::number(a.serie), 7) +
                 numero(Texts::fromDouble(std::round(a.percentuale())), 10) +
                 numero(Texts::fromDouble(std::round(a.tempoMedio() * 10) / 10), 10);
    r << QString() << QStringLiteral("SERIE") << QString();
    r << colonna(QStringLiteral("Data e ora"), 17) + colonna(QStringLiteral("Alunno"), 18) +
             numero(QStringLiteral("Es."), 4) + numero(QStringLiteral("Esatte"), 7) +
             numero(QStringLiteral("Errate"), 7) + numero(QStringLiteral("Sec."), 6) + "  " +
             colonna(QStringLiteral("Valutazione"), 17) + QStringLiteral("Unità");
    for (const SerieRegistrata &s : serie)
        r << colonna(s.inizio.toString(QStringLiteral("dd/MM/yyyy HH:mm")), 17) +
                 colonna(ModelloSerie::nomeMostrato(s.nome), 18) +
                 numero(QString::number(s.quantiEsercizi()), 4) +
                 numero(QString::number(s.esatte), 7) + numero(QString::number(s.errate), 7) +
                 numero(Texts::fromDouble(s.tempoTotale), 6) + "  " +
                 colonna(s.terminata ? s.valutazione : QStringLiteral("(interrotta)"), 17) +
                 UnitaSerie::Nome(s);
    return r;
}

void StampaRegistro::stampa(Printer &p, const QString &titolo, const QList<SerieRegistrata> &serie,
                            const QList<RiepilogoAlunni::Alunno> &alunni)
{
    const QStringList testo = righe(serie, alunni);
    int pagina = 1;
    auto intestazione = [&] {
        p.setFontName(QStringLiteral("Courier New"));
        p.setFontBold(true);
        p.setFontSize(12);
        p.setCurrentX(Margine);
        p.setCurrentY(Margine);
        p.Print(QStringLiteral("%1  -  pagina %2").arg(titolo).arg(pagina));
        p.setFontBold(false);
        p.setFontSize(9);
        p.setCurrentY(p.CurrentY() + 200);
    };
    intestazione();
    for (const QString &riga : testo) {
        if (p.CurrentY() + p.TextHeight() > FondoPagina) {
            p.NewPage();
            ++pagina;
            intestazione();
        }
        p.setCurrentX(Margine);
        p.Print(riga);
    }
    p.EndDoc();
}
