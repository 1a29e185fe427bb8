// Quadrivo: starts the program on its start screen.
#include "app/Avvio.h"

int main(int argc, char *argv[])
{
    return Avvio::esegui(argc, argv);
}
