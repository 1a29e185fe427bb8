#include "platform/IconaApplicazione.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QSet>
#include <QStandardPaths>

QIcon IconaApplicazione::installata(const QString &id)
{
    QIcon icona;
    QSet<int> trovati;
    const QString file = QStringLiteral("/apps/") + id + QStringLiteral(".png");
    const QStringList cartelleDati =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString &dati : cartelleDati) {
        const QDir hicolor(dati + QStringLiteral("/icons/hicolor"));
        const QStringList misure = hicolor.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &misura : misure) {
            // "48x48" only: "scalable" is SVG, which Qt draws only with a
            // module the program does not use, and "48x48@2" a doubled size.
            const QStringList lati = misura.split(QLatin1Char('x'));
            bool numero = false;
            const int lato = lati.size() == 2 && lati[0] == lati[1] ? lati[0].toInt(&numero) : 0;
            if (!numero || lato <= 0 || trovati.contains(lato))
                continue;
            const QString percorso = hicolor.path() + QLatin1Char('/') + misura + file;
            if (!QFileInfo::exists(percorso))
                continue;
            icona.addFile(percorso, QSize(lato, lato));
            trovati.insert(lato);
        }
    }
    return icona;
}
