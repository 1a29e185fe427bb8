#pragma once

#include "registro/MotoreArchivio.h"

#include <QString>
#include <QStringList>

// Where the register's storage comes from. The SQL code is a module of its
// own (libquadrivo_archivio.so, linking Qt's SQL library), opened the first
// time the register is used; a program that links that code in (the tests)
// uses it directly.
namespace ModuloArchivio {

// libquadrivo_archivio.so
extern const char *const NomeFile;

struct Caricato
{
    CreaArchivio *crea = nullptr; // null when the module could not be used
    QString errore;               // why, for the teacher
};

// The files tried, in order, for a program in `cartellaProgramma`: the
// installed place (beside the other libraries, reached from the program's
// own folder, so an installation moved elsewhere still finds it), then the
// program's folder, where the build puts it.
QStringList percorsi(const QString &cartellaProgramma);

// The first of `percorsi` that opens and has the entry point.
Caricato carica(const QStringList &percorsi);

// This process's storage maker: the code linked in, else the module beside
// the running program, opened once and kept to the end of the process.
const Caricato &diQuestoProgramma();

} // namespace ModuloArchivio
