#include "registro/UnitaSerie.h"

#include "misure/Misure.h"

namespace {

// A family outside the table: the symbols tell, where they are a measure's
// own (a bare "m" is also the thousandths of numbers).
Misure::Unita daiSimboli(const QString &simboli)
{
    static const QStringList lunghezze{"km", "hm", "dam", "dm", "cm", "mm"};
    static const QStringList masse{"kg", "hg", "dag", "g", "dg", "cg", "mg", "t", "q", "Mg"};
    static const QStringList capacita{"hl", "dal", "l", "dl", "cl", "ml"};
    for (const QString &s : simboli.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (lunghezze.contains(s))
            return Misure::Unita::Lunghezze;
        if (masse.contains(s))
            return Misure::Unita::Masse;
        if (capacita.contains(s))
            return Misure::Unita::Capacita;
    }
    return Misure::Unita::Numeri;
}

Misure::Unita unita(const SerieRegistrata &serie)
{
    if (serie.famiglia >= 1 && serie.famiglia <= 12)
        return Misure::UnitaDiFamiglia(serie.famiglia);
    return daiSimboli(serie.simboli);
}

} // namespace

QString UnitaSerie::Nome(const SerieRegistrata &serie)
{
    return Misure::NomeUnita(unita(serie));
}

QStringList UnitaSerie::Scelte()
{
    QStringList scelte{QStringLiteral("tutte")};
    for (Misure::Unita u : Misure::TutteLeUnita())
        scelte << Misure::NomeUnita(u);
    return scelte;
}

bool UnitaSerie::Passa(const SerieRegistrata &serie, int scelta)
{
    if (scelta <= 0 || scelta > Misure::TutteLeUnita().size())
        return true;
    return unita(serie) == Misure::TutteLeUnita().at(scelta - 1);
}
