#include "services/GruppoScelte.h"

#include "platform/RuntimeError.h"

namespace GruppoScelte {

namespace {

int numeroDelCarattere(int codice)
{
    const QString testo{QChar(char16_t(codice))};
    bool numero = false;
    const int valore = testo.toInt(&numero);
    if (!numero)
        throw RuntimeError(RuntimeError::TypeMismatch, testo);
    return valore;
}

} // namespace

void NavigaConSpazio(const ControlArray<OptionButton> &gruppo, bool &BloccoSpazio, int Index,
                     int &KeyAscii)
{
    if (BloccoSpazio)
        return;
    if (KeyAscii != 32) {
        KeyAscii = 0;
        return;
    }
    const int conteggio = gruppo.Count();
    int indice = Index;
    do {
        indice = indice + 1 >= conteggio ? 0 : indice + 1;
    } while (!gruppo(indice).Enabled() && indice != Index);
    gruppo(indice).SetFocus();
    BloccoSpazio = true;
}

bool TastoAccettato(int KeyCode)
{
    return (KeyCode >= 48 && KeyCode <= 50) || (KeyCode >= 97 && KeyCode <= 99) || KeyCode == 13;
}

int IndiceDaTasto(int KeyCode)
{
    if (KeyCode >= 48 && KeyCode <= 50)
        return numeroDelCarattere(KeyCode - 1);
    if (KeyCode == 97 || KeyCode == 98)
        return numeroDelCarattere(KeyCode - 49);
    return -1;
}

} // namespace GruppoScelte
