#include "core/FamiglieSimboli.h"

#include "core/StatoCondiviso.h"

namespace FamiglieSimboli {

namespace {

const FamigliaSimboli &riga(int numero)
{
    // Families 6 and 8 have no symbol of their own for the first place: they
    // keep whatever the previous family left there.
    static const std::array<FamigliaSimboli, 12> tabella = {{
        {1,
         true,
         {" u ", " d ", " c ", " m "},
         4,
         false,
         " unità,    decimi, centesimi, millesimi"},
        {2, true, {"     ", "  h  ", " da  ", "  u  "}, 3, false, "centinaia, decine, unità"},
        {3,
         true,
         {" uk  ", "  h  ", " da  ", "  u  "},
         4,
         false,
         " migliaia,    centinaia, decine, unità"},
        {4,
         true,
         {"  m ", " dm ", " cm ", " mm "},
         4,
         true,
         " metri,    decimetri, centimetri, millimetri"},
        {5, true, {"     ", "  hm ", " dam ", "   m "}, 3, true, " ettometri, decametri, metri"},
        {6,
         false,
         {"", "  hm ", " dam ", "   m "},
         4,
         true,
         " chilometri,    ettometri, decametri, metri"},
        {7,
         true,
         {"  g ", " dg ", " cg ", " mg "},
         4,
         true,
         " grammi,    decigrammi, centigrammi, milligrammi"},
        {8, false, {"", "  hg ", " dag ", "   g "}, 3, true, " ettogrammi, decagrammi, grammi"},
        {9,
         true,
         {"  kg ", "  hg ", " dag ", "   g "},
         4,
         true,
         " chilogrammi    ettogrammi, decagrammi, grammi"},
        {10,
         true,
         {"  t ", "  q ", " Mg ", " kg "},
         4,
         true,
         " tonnellate,    quintali, miriagrammi, chilogrammi"},
        {11,
         true,
         {"  l ", " dl ", " cl ", " ml"},
         4,
         true,
         " litri,    decilitri, centilitri, millilitri"},
        {12, true, {"     ", "  hl ", " dal ", "   l "}, 3, true, " ettolitri, decalitri, litri"},
    }};
    return tabella[static_cast<std::size_t>(numero - 1)];
}

} // namespace

const FamigliaSimboli *trova(int numero)
{
    if (numero < Prima || numero > Ultima)
        return nullptr;
    return &riga(numero);
}

bool applica(StatoCondiviso &stato, int numero)
{
    const FamigliaSimboli *famiglia = trova(numero);
    if (!famiglia)
        return false;
    if (famiglia->cambiaSimbolo1)
        stato.Simbolo1 = famiglia->simboli[0];
    stato.Simbolo2 = famiglia->simboli[1];
    stato.Simbolo3 = famiglia->simboli[2];
    stato.Simbolo4 = famiglia->simboli[3];
    if (famiglia->conteggio == 4) {
        stato.NumeroSimboli = 4;
        stato.PrimoSimbolo = 1;
        stato.NumeroCifre = 4;
    } else {
        stato.NumeroSimboli = 3;
        stato.PrimoSimbolo = 2;
        stato.NumeroCifre = 3;
    }
    return true;
}

} // namespace FamiglieSimboli
