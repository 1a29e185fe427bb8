#include "classe/UnitaClasse.h"

#include "core/FamiglieSimboli.h"
#include "core/StatoCondiviso.h"

#include <QStringList>
#include <vector>

namespace {

struct Voce
{
    int famiglia;
    QString simbolo1;
};

// A state never holds family 6 with no first symbol (the start screen sets
// a family when it loads, and only the measures reach 6, with kilometres), so
// that place of the list names kilometres: the list keeps its length and every
// code keeps its sheet.
const QString Chilometri = QStringLiteral(" km ");

const std::vector<Voce> &elenco()
{
    static const std::vector<Voce> voci = [] {
        // The first symbols a family can leave behind, and the empty one of a
        // state where none was ever set.
        QStringList primi{QString()};
        for (int f = FamiglieSimboli::Prima; f <= FamiglieSimboli::Ultima; ++f) {
            const FamigliaSimboli *famiglia = FamiglieSimboli::trova(f);
            if (famiglia->cambiaSimbolo1 && !primi.contains(famiglia->simboli[0]))
                primi << famiglia->simboli[0];
        }
        std::vector<Voce> v;
        for (int f = FamiglieSimboli::Prima; f <= FamiglieSimboli::Ultima; ++f) {
            const FamigliaSimboli *famiglia = FamiglieSimboli::trova(f);
            if (famiglia->cambiaSimbolo1)
                v.push_back({f, famiglia->simboli[0]});
            else
                for (const QString &primo : primi)
                    v.push_back({f, primo.isEmpty() && f == 6 ? Chilometri : primo});
        }
        return v;
    }();
    return voci;
}

} // namespace

int UnitaClasse::Conteggio()
{
    return int(elenco().size());
}

int UnitaClasse::IndiceDi(const StatoCondiviso &stato)
{
    const FamigliaSimboli *famiglia = FamiglieSimboli::trova(stato.FamigliaSimboli);
    if (!famiglia || stato.Simbolo2 != famiglia->simboli[1] ||
        stato.Simbolo3 != famiglia->simboli[2] || stato.Simbolo4 != famiglia->simboli[3] ||
        stato.NumeroCifre != famiglia->conteggio)
        return -1;
    const auto &voci = elenco();
    for (std::size_t i = 0; i < voci.size(); ++i)
        if (voci[i].famiglia == famiglia->numero && voci[i].simbolo1 == stato.Simbolo1)
            return int(i);
    return -1;
}

void UnitaClasse::Applica(StatoCondiviso &stato, int indice)
{
    const Voce &voce = elenco().at(static_cast<std::size_t>(indice));
    stato.FamigliaSimboli = voce.famiglia;
    FamiglieSimboli::applica(stato, voce.famiglia);
    stato.Simbolo1 = voce.simbolo1;
}

int UnitaClasse::Famiglia(int indice)
{
    return elenco().at(static_cast<std::size_t>(indice)).famiglia;
}

QString UnitaClasse::Descrizione(int indice)
{
    StatoCondiviso s;
    Applica(s, indice);
    QStringList simboli;
    const QString tutti[] = {s.Simbolo1, s.Simbolo2, s.Simbolo3, s.Simbolo4};
    for (int i = s.NumeroCifre == 3 ? 1 : 0; i < 4; ++i)
        simboli << (tutti[i].trimmed().isEmpty() ? QStringLiteral("_") : tutti[i].trimmed());
    return simboli.join(QLatin1Char(' '));
}
