#include "platform/IconaApplicazione.h"

#include <QFileInfo>
#include <QIcon>
#include <QStandardPaths>

QIcon IconaApplicazione::installata(const QString &id, const QList<int> &lati)
{
    QIcon icona;
    const QStringList cartelleDati =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const int lato : lati) {
        const QString misura = QString::number(lato);
        const QString file = QStringLiteral("/icons/hicolor/") + misura + QLatin1Char('x') +
                             misura + QStringLiteral("/apps/") + id + QStringLiteral(".png");
        for (const QString &dati : cartelleDati) {
            if (QFileInfo::exists(dati + file)) {
                icona.addFile(dati + file, QSize(lato, lato));
                break;
            }
        }
    }
    return icona;
}
