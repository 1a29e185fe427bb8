#include "registro/TabellaVerifica.h"

#include "classe/CodiceScheda.h"
#include "classe/UnitaClasse.h"
#include "registro/ModelloSerie.h"

#include <QHash>
#include <algorithm>

TabellaVerifica TabellaVerifica::Costruisci(const QString &codice,
                                            const QList<SerieRegistrata> &serie)
{
    TabellaVerifica t;
    t.codice = codice;
    if (const auto scelta = CodiceScheda::Leggi(codice))
        t.esercizi = scelta->righe;
    for (const SerieRegistrata &s : serie)
        for (const SerieRegistrata::Esercizio &e : s.esercizi)
            t.esercizi = std::max(t.esercizi, e.numero);

    QList<SerieRegistrata> ordinate = serie;
    std::stable_sort(ordinate.begin(), ordinate.end(),
                     [](const SerieRegistrata &a, const SerieRegistrata &b) {
                         const int c = QString::compare(a.nome, b.nome, Qt::CaseInsensitive);
                         if (c != 0)
                             return c < 0;
                         return a.inizio < b.inizio;
                     });
    QHash<QString, int> tentativi;
    for (const SerieRegistrata &s : ordinate) {
        Riga r;
        r.alunno = s.nome;
        r.tentativo = ++tentativi[s.nome.toCaseFolded()];
        r.postazione = s.postazione;
        r.inizio = s.inizio;
        r.terminata = s.terminata;
        r.celle.resize(t.esercizi);
        for (const SerieRegistrata::Esercizio &e : s.esercizi) {
            if (e.numero < 1 || e.numero > t.esercizi)
                continue;
            Cella &c = r.celle[e.numero - 1];
            c.esito = e.esito;
            c.secondi = e.secondi;
            r.secondi += e.secondi;
            if (e.esito == SerieRegistrata::PrimoTentativo ||
                e.esito == SerieRegistrata::SecondoTentativo)
                ++r.esatte;
        }
        t.righe << r;
    }

    t.esattePrimoTentativo.fill(0, t.esercizi);
    QList<int> soluzioni(t.esercizi, 0);
    for (const Riga &r : std::as_const(t.righe))
        for (int i = 0; i < t.esercizi; ++i) {
            const int e = r.celle.at(i).esito;
            if (e == SerieRegistrata::PrimoTentativo)
                ++t.esattePrimoTentativo[i];
            else if (e == SerieRegistrata::SoluzioneChiesta || e == SerieRegistrata::SoluzioneData)
                ++soluzioni[i];
        }
    // Fewest right at the first try; between equals, the one whose solution
    // was shown most often.
    if (!t.righe.isEmpty())
        for (int i = 0; i < t.esercizi; ++i)
            if (t.piuDifficile < 0 ||
                t.esattePrimoTentativo[i] < t.esattePrimoTentativo[t.piuDifficile] ||
                (t.esattePrimoTentativo[i] == t.esattePrimoTentativo[t.piuDifficile] &&
                 soluzioni[i] > soluzioni[t.piuDifficile]))
                t.piuDifficile = i;
    return t;
}

QChar TabellaVerifica::Lettera(int esito)
{
    switch (esito) {
    case SerieRegistrata::PrimoTentativo:
        return QLatin1Char('E');
    case SerieRegistrata::SecondoTentativo:
        return QLatin1Char('S');
    case SerieRegistrata::SoluzioneChiesta:
        return QLatin1Char('A');
    case SerieRegistrata::SoluzioneData:
        return QLatin1Char('I');
    default:
        return QLatin1Char('-');
    }
}

QString TabellaVerifica::Spiegazione(int esito)
{
    switch (esito) {
    case SerieRegistrata::PrimoTentativo:
        return QStringLiteral("esatto al primo tentativo");
    case SerieRegistrata::SecondoTentativo:
        return QStringLiteral("esatto al secondo tentativo");
    case SerieRegistrata::SoluzioneChiesta:
        return QStringLiteral("soluzione chiesta (Si)");
    case SerieRegistrata::SoluzioneData:
        return QStringLiteral("soluzione data (Intervengo io)");
    default:
        return QStringLiteral("non raggiunto");
    }
}

QString TabellaVerifica::Legenda()
{
    QStringList voci;
    for (int e : {int(SerieRegistrata::PrimoTentativo), int(SerieRegistrata::SecondoTentativo),
                  int(SerieRegistrata::SoluzioneChiesta), int(SerieRegistrata::SoluzioneData),
                  NonRaggiunto})
        voci << QString(Lettera(e)) + QStringLiteral(" = ") + Spiegazione(e);
    return voci.join(QStringLiteral(";  "));
}

QString TabellaVerifica::NomeRiga(const Riga &riga)
{
    const QString nome = ModelloSerie::nomeMostrato(riga.alunno);
    return riga.tentativo > 1 ? QStringLiteral("%1 (%2° tentativo)").arg(nome).arg(riga.tentativo)
                              : nome;
}

QString TabellaVerifica::Descrizione(const QString &codice)
{
    const auto scelta = CodiceScheda::Leggi(codice);
    if (!scelta)
        return QString();
    static const QStringList numeri = {QStringLiteral("numeri interi"),
                                       QStringLiteral("numeri con la virgola"),
                                       QStringLiteral("numeri interi e con la virgola")};
    return QStringLiteral("%1, simboli %2, %3 esercizi")
        .arg(numeri.at(scelta->tipoNumeri - 1), UnitaClasse::Descrizione(scelta->unita))
        .arg(scelta->righe);
}
