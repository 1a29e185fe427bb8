#include "registro/ModuloArchivio.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

// The storage code, when this program links it (the tests do); the program
// itself leaves it to the module, so this is null there.
#pragma weak quadrivo_archivio_crea

namespace ModuloArchivio {

// As the build names it.
const char *const NomeFile = QUADRIVO_MODULO_ARCHIVIO;

QStringList percorsi(const QString &cartellaProgramma)
{
    const QDir cartella(cartellaProgramma);
    return {QDir::cleanPath(cartella.filePath(QStringLiteral(QUADRIVO_MODULI_DAL_PROGRAMMA "/") +
                                              QLatin1String(NomeFile))),
            cartella.filePath(QLatin1String(NomeFile))};
}

Caricato carica(const QStringList &percorsi)
{
    QStringList motivi;
    for (const QString &percorso : percorsi) {
        if (!QFileInfo::exists(percorso))
            continue;
        // Local: its symbols, Qt's template copies among them, stay its own.
        void *modulo = dlopen(QFile::encodeName(percorso).constData(), RTLD_NOW | RTLD_LOCAL);
        if (!modulo) {
            motivi << QString::fromLocal8Bit(dlerror());
            continue;
        }
        if (auto *crea = reinterpret_cast<CreaArchivio *>(dlsym(modulo, NomeCreaArchivio)))
            return {crea, {}};
        motivi << QStringLiteral("%1 non è il modulo del registro").arg(percorso);
        dlclose(modulo);
    }
    if (motivi.isEmpty())
        motivi << QStringLiteral("manca il file %1")
                      .arg(percorsi.isEmpty() ? QLatin1String(NomeFile) : percorsi.first());
    return {nullptr,
            QStringLiteral("il modulo del registro non si apre (%1): reinstallare Quadrivo")
                .arg(motivi.join(QStringLiteral("; ")))};
}

const Caricato &diQuestoProgramma()
{
    // Made once, by whichever thread asks first (the writer's, or the view's).
    static const Caricato caricato = [] {
        if (quadrivo_archivio_crea)
            return Caricato{&quadrivo_archivio_crea, {}};
        // /proc rather than QCoreApplication: the writer's thread may ask.
        const QFileInfo programma(QStringLiteral("/proc/self/exe"));
        return carica(percorsi(QFileInfo(programma.canonicalFilePath()).absolutePath()));
    }();
    return caricato;
}

} // namespace ModuloArchivio
