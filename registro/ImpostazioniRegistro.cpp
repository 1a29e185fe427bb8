#include "registro/ImpostazioniRegistro.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

const char *const NomeFile = "registro.sqlite";
const char *const NomeCoda = "registro-in-attesa.sqlite";
const char *const NomeAttesa = "registro-in-attesa";

} // namespace

QString ImpostazioniRegistro::descrizione() const
{
    if (tipo == SQLite)
        return percorso;
    return QStringLiteral("%1@%2:%3/%4").arg(utente, host).arg(porta).arg(database);
}

QString ImpostazioniRegistro::cartellaDati()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

ImpostazioniRegistro ImpostazioniRegistro::sqlite(const QString &percorso)
{
    ImpostazioniRegistro i;
    i.tipo = SQLite;
    i.percorso = percorso;
    return i;
}

ImpostazioniRegistro ImpostazioniRegistro::daRiga(const QString &riga, const QString &cartella)
{
    ImpostazioniRegistro predefinite = sqlite(QDir(cartella).filePath(QLatin1String(NomeFile)));
    predefinite.attesa = QDir(cartella).filePath(QLatin1String(NomeAttesa));
    const QString testo = riga.trimmed();
    if (testo.isEmpty())
        return predefinite;
    const QString tipo = testo.section(QLatin1Char(' '), 0, 0).toLower();
    const QString resto = testo.section(QLatin1Char(' '), 1).trimmed();
    if (tipo == QLatin1String("sqlite")) {
        if (resto.isEmpty()) {
            predefinite.errore = QStringLiteral("manca il percorso del file SQLite");
            return predefinite;
        }
        ImpostazioniRegistro i = sqlite(resto);
        i.attesa = predefinite.attesa;
        return i;
    }
    if (tipo != QLatin1String("postgresql")) {
        predefinite.errore = QStringLiteral("tipo di registro sconosciuto: %1").arg(tipo);
        return predefinite;
    }
    ImpostazioniRegistro i;
    i.tipo = PostgreSQL;
    i.coda = QDir(cartella).filePath(QLatin1String(NomeCoda));
    i.attesa = predefinite.attesa;
    const QStringList parti =
        resto.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    for (const QString &parte : parti) {
        const QString chiave = parte.section(QLatin1Char('='), 0, 0).toLower();
        const QString valore = parte.section(QLatin1Char('='), 1);
        if (chiave == QLatin1String("host"))
            i.host = valore;
        else if (chiave == QLatin1String("dbname"))
            i.database = valore;
        else if (chiave == QLatin1String("user"))
            i.utente = valore;
        else if (chiave == QLatin1String("port") && valore.toInt() > 0)
            i.porta = valore.toInt();
        else if (chiave == QLatin1String("password"))
            predefinite.errore = QStringLiteral(
                "la password non va scritta qui: va nel file delle password di PostgreSQL "
                "(~/.pgpass)");
        else
            predefinite.errore = QStringLiteral("voce non riconosciuta: %1").arg(parte);
        if (!predefinite.errore.isEmpty())
            return predefinite;
    }
    if (i.host.isEmpty() || i.database.isEmpty() || i.utente.isEmpty()) {
        predefinite.errore = QStringLiteral("servono host, dbname e user");
        return predefinite;
    }
    return i;
}

ImpostazioniRegistro ImpostazioniRegistro::dalSistema()
{
    QString riga = qEnvironmentVariable("QUADRIVO_REGISTRO");
    if (riga.trimmed().isEmpty()) {
        QFile file(QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation))
                       .filePath(QStringLiteral("registro.conf")));
        if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
            // The first line that is not a comment.
            for (const QString &l : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')))
                if (!l.trimmed().isEmpty() && !l.trimmed().startsWith(QLatin1Char('#'))) {
                    riga = l;
                    break;
                }
        }
    }
    return daRiga(riga, cartellaDati());
}
