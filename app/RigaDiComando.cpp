#include "app/RigaDiComando.h"

#ifndef QUADRIVO_VERSIONE
#error "QUADRIVO_VERSIONE comes from the build (app/CMakeLists.txt)"
#endif

RigaDiComando::Esito RigaDiComando::leggi(const QStringList &argomenti)
{
    Esito esito;
    // --help and --version win wherever they stand, as in most programs.
    for (const QString &a : argomenti) {
        if (a == QLatin1String("--help") || a == QLatin1String("-h"))
            return {Azione::Aiuto, false, {}};
    }
    for (const QString &a : argomenti) {
        if (a == QLatin1String("--version") || a == QLatin1String("-v"))
            return {Azione::Versione, false, {}};
    }
    for (const QString &a : argomenti) {
        if (a == QLatin1String("--prova-avvio")) {
            esito.provaAvvio = true;
            continue;
        }
        const QString che = a.startsWith(QLatin1Char('-'))
                                ? QStringLiteral("opzione non riconosciuta")
                                : QStringLiteral("argomento inatteso");
        return {Azione::Errore, false,
                QStringLiteral("Quadrivo: %1: '%2'\n"
                               "Usare 'Quadrivo --help' per l'elenco delle opzioni.\n")
                    .arg(che, a)};
    }
    return esito;
}

QString RigaDiComando::aiuto()
{
    return QStringLiteral(
        "Uso: Quadrivo [OPZIONE]\n"
        "Esercizi di scomposizione dei numeri nelle unità del sistema decimale\n"
        "per la scuola primaria (473 da = 4 uk 7 h 3 da), con schede, resoconto\n"
        "e attestato da stampare.\n"
        "\n"
        "  -h, --help        mostra questo aiuto ed esce\n"
        "  -v, --version     mostra la versione ed esce\n"
        "      --prova-avvio apre la schermata iniziale, attende che sia disegnata\n"
        "                    e chiude il programma (verifica dell'installazione)\n"
        "\n"
        "Accetta anche le opzioni comuni dei programmi Qt (-platform, -display, ...).\n"
        "Le impostazioni sono scritte nel file Quadrivo.dat della cartella in cui\n"
        "il programma è avviato. Vedere anche: man Quadrivo\n");
}

QString RigaDiComando::versione()
{
    return QStringLiteral("Quadrivo " QUADRIVO_VERSIONE "\n");
}
