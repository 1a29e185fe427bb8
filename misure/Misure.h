#pragma once

#include <QList>
#include <QString>
#include <vector>

struct StatoCondiviso;

// The measures a pupil can decompose besides numbers: lengths, masses and
// capacities, each one a symbol family of the shared state. One entry of the
// start screen's "Misure" menu per measure, the first one back to numbers.
// No window here: the screens ask what to show and apply an entry to the
// state, and the drill, sheets and register read the family as they always
// have.
class Misure
{
public:
    enum class Unita
    {
        Numeri,
        Lunghezze,
        Masse,
        Capacita
    };

    struct Voce
    {
        QString caption;  // the menu entry, naming the units as the keypad shows them
        int famiglia;     // the symbol family it sets
        QString simbolo1; // the first symbol it gives the family
        Unita unita;
    };

    // The entries in menu order: numbers first, then the eight measures.
    static const std::vector<Voce> &Voci();

    // Sets entry `indice` in the state: the family and its symbols (with the
    // first symbol of kilometres, or the blank of a three-symbol family,
    // where the family has none of its own) and the topic texts the
    // certificate prints. The start screen then shows it with SceltaSimboli.
    static void Applica(StatoCondiviso &stato, int indice);

    // The entry the state holds: 0 for any family of numbers, the measure's
    // entry otherwise, -1 for a family no entry offers.
    static int VoceInVigore(const StatoCondiviso &stato);
    static bool MisuraInVigore(const StatoCondiviso &stato);

    // The kind of units of a family, and its name for the teacher
    // ("numeri", "lunghezze", "masse", "capacità"); families outside the
    // table count as numbers.
    static Unita UnitaDiFamiglia(int famiglia);
    static QString NomeUnita(Unita unita);
    static QString NomeUnita(int famiglia);
    static const QList<Unita> &TutteLeUnita();

    // The topic texts of a family: "SISTEMA METRICO" and "Scomposizione
    // delle misure" for a measure, the numbers' own otherwise.
    static QString TitoloArgomento(int famiglia);
    static QString SottotitoloArgomento(int famiglia);

    // A worksheet's title: the numbers' one as it has always been, and for a
    // measure the same followed by its entry ("... - Lunghezze: km hm dam m").
    static QString TitoloScheda(int famiglia);

    static const QString TitoloSchedaNumeri;
};
