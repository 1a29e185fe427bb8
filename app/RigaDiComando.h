#pragma once

#include <QString>
#include <QStringList>

// The program's command line: what it asks for, and the texts of --help and
// --version. No window: main() acts on the answer.
class RigaDiComando
{
public:
    enum class Azione
    {
        Avvia,    // open the start screen
        Aiuto,    // print the usage on stdout, end with status 0
        Versione, // print the version on stdout, end with status 0
        Errore,   // print `messaggio` on stderr, end with status 2
    };

    struct Esito
    {
        Azione azione = Azione::Avvia;
        bool provaAvvio = false; // --prova-avvio: start, wait until idle, end
        QString messaggio;
    };

    // `argomenti` without the program's own name. Qt takes its own options
    // (-platform, -display, ...) when the application object is made; read
    // the list again after that to find the ones nobody knows.
    static Esito leggi(const QStringList &argomenti);

    static QString aiuto();
    static QString versione();
};
