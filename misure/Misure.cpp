#include "misure/Misure.h"

#include "core/FamiglieSimboli.h"
#include "core/StatoCondiviso.h"

const QString Misure::TitoloSchedaNumeri = QStringLiteral("SCHEDA DI SCOMPOSIZIONE");

const std::vector<Misure::Voce> &Misure::Voci()
{
    // Families 6 and 8 have no first symbol of their own: kilometres for
    // the one, the blank of a three-symbol family for the other.
    static const std::vector<Voce> voci = {
        {QStringLiteral("Numeri: uk h da u / h da u / u d c m"), 1, QStringLiteral(" u "),
         Unita::Numeri},
        {QStringLiteral("Lunghezze: km hm dam m"), 6, QStringLiteral(" km "), Unita::Lunghezze},
        {QStringLiteral("Lunghezze: hm dam m"), 5, QStringLiteral("     "), Unita::Lunghezze},
        {QStringLiteral("Lunghezze: m dm cm mm"), 4, QStringLiteral("  m "), Unita::Lunghezze},
        {QStringLiteral("Masse: kg hg dag g"), 9, QStringLiteral("  kg "), Unita::Masse},
        {QStringLiteral("Masse: hg dag g"), 8, QStringLiteral("     "), Unita::Masse},
        {QStringLiteral("Masse: g dg cg mg"), 7, QStringLiteral("  g "), Unita::Masse},
        {QStringLiteral("Capacità: hl dal l"), 12, QStringLiteral("     "), Unita::Capacita},
        {QStringLiteral("Capacità: l dl cl ml"), 11, QStringLiteral("  l "), Unita::Capacita},
    };
    return voci;
}

void Misure::Applica(StatoCondiviso &stato, int indice)
{
    const Voce &voce = Voci().at(static_cast<std::size_t>(indice));
    stato.FamigliaSimboli = voce.famiglia;
    stato.Simbolo1 = voce.simbolo1;
    FamiglieSimboli::applica(stato, voce.famiglia);
    stato.TitoloArgomento = TitoloArgomento(voce.famiglia);
    stato.SottotitoloArgomento = SottotitoloArgomento(voce.famiglia);
    stato.RigaSimboli = FamiglieSimboli::trova(voce.famiglia)->rigaSimboli;
}

int Misure::VoceInVigore(const StatoCondiviso &stato)
{
    const int famiglia = stato.FamigliaSimboli;
    if (UnitaDiFamiglia(famiglia) == Unita::Numeri)
        return famiglia >= 1 && famiglia <= 3 ? 0 : -1;
    const auto &voci = Voci();
    for (std::size_t i = 1; i < voci.size(); ++i)
        if (voci[i].famiglia == famiglia)
            return int(i);
    return -1;
}

bool Misure::MisuraInVigore(const StatoCondiviso &stato)
{
    return VoceInVigore(stato) > 0;
}

Misure::Unita Misure::UnitaDiFamiglia(int famiglia)
{
    // Families 4..6 are lengths, 7..10 masses, 11 and 12 capacities.
    if (famiglia >= 4 && famiglia <= 6)
        return Unita::Lunghezze;
    if (famiglia >= 7 && famiglia <= 10)
        return Unita::Masse;
    if (famiglia == 11 || famiglia == 12)
        return Unita::Capacita;
    return Unita::Numeri;
}

QString Misure::NomeUnita(Unita unita)
{
    switch (unita) {
    case Unita::Lunghezze:
        return QStringLiteral("lunghezze");
    case Unita::Masse:
        return QStringLiteral("masse");
    case Unita::Capacita:
        return QStringLiteral("capacità");
    case Unita::Numeri:
        break;
    }
    return QStringLiteral("numeri");
}

QString Misure::NomeUnita(int famiglia)
{
    return NomeUnita(UnitaDiFamiglia(famiglia));
}

const QList<Misure::Unita> &Misure::TutteLeUnita()
{
    static const QList<Unita> tutte = {Unita::Numeri, Unita::Lunghezze, Unita::Masse,
                                       Unita::Capacita};
    return tutte;
}

QString Misure::TitoloArgomento(int famiglia)
{
    return UnitaDiFamiglia(famiglia) == Unita::Numeri ? QStringLiteral("SISTEMA DECIMALE")
                                                      : QStringLiteral("SISTEMA METRICO");
}

QString Misure::SottotitoloArgomento(int famiglia)
{
    return UnitaDiFamiglia(famiglia) == Unita::Numeri
               ? QStringLiteral("Scomposizione dei numeri")
               : QStringLiteral("Scomposizione delle misure");
}

QString Misure::TitoloScheda(int famiglia)
{
    const auto &voci = Voci();
    for (std::size_t i = 1; i < voci.size(); ++i)
        if (voci[i].famiglia == famiglia)
            return TitoloSchedaNumeri + QStringLiteral(" - ") + voci[i].caption;
    return TitoloSchedaNumeri;
}
