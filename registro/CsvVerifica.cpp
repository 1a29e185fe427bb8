#include "registro/CsvVerifica.h"

#include "platform/Texts.h"
#include "registro/CsvRegistro.h"
#include "registro/ModelloSerie.h"

QByteArray CsvVerifica::testo(const TabellaVerifica &t)
{
    QStringList intestazione{QStringLiteral("Verifica"),  QStringLiteral("Alunno"),
                             QStringLiteral("Tentativo"), QStringLiteral("Data"),
                             QStringLiteral("Ora"),       QStringLiteral("Postazione")};
    for (int i = 1; i <= t.esercizi; ++i)
        intestazione << QStringLiteral("Es. %1").arg(i);
    for (int i = 1; i <= t.esercizi; ++i)
        intestazione << QStringLiteral("Sec. %1").arg(i);
    intestazione << QStringLiteral("Esatte") << QStringLiteral("Tempo (s)")
                 << QStringLiteral("Completata");
    QString testo = CsvRegistro::riga(intestazione);
    for (const TabellaVerifica::Riga &r : t.righe) {
        QStringList campi{t.codice,
                          ModelloSerie::nomeMostrato(r.alunno),
                          QString::number(r.tentativo),
                          r.inizio.toString(QStringLiteral("dd/MM/yyyy")),
                          r.inizio.toString(QStringLiteral("HH:mm:ss")),
                          r.postazione};
        for (const TabellaVerifica::Cella &c : r.celle)
            campi << QString(TabellaVerifica::Lettera(c.esito));
        for (const TabellaVerifica::Cella &c : r.celle)
            campi << (c.esito == TabellaVerifica::NonRaggiunto ? QString()
                                                               : Texts::fromDouble(c.secondi));
        campi << QString::number(r.esatte) << Texts::fromDouble(r.secondi)
              << (r.terminata ? QStringLiteral("sì") : QStringLiteral("no"));
        testo += CsvRegistro::riga(campi);
    }
    QStringList totali{t.codice,  QStringLiteral("Esatte al primo tentativo"),
                       QString(), QString(),
                       QString(), QString()};
    for (int n : t.esattePrimoTentativo)
        totali << QString::number(n);
    testo += CsvRegistro::riga(totali);
    return QByteArray("\xEF\xBB\xBF") + testo.toUtf8();
}
