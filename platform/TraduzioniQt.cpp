#include "platform/TraduzioniQt.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <cstdio>

bool TraduzioniQt::installa(QCoreApplication &app)
{
    // Only the base module's catalogue: the dialogs are all in it, and
    // "qt_it" would pull in the catalogues of modules the program never uses.
    auto *catalogo = new QTranslator(&app);
    const QString cartella = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!catalogo->load(QStringLiteral("qtbase_it"), cartella)) {
        std::fprintf(stderr, "Quadrivo: traduzione italiana di Qt non trovata in %s\n",
                     qPrintable(cartella));
        delete catalogo;
        return false;
    }
    return QCoreApplication::installTranslator(catalogo);
}
