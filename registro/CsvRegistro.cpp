#include "registro/CsvRegistro.h"

#include "platform/Texts.h"
#include "registro/UnitaSerie.h"

#include <cmath>

namespace {

QString campo(const QString &v)
{
    if (!v.contains(QLatin1Char(';')) && !v.contains(QLatin1Char('"')) &&
        !v.contains(QLatin1Char('\n')) && !v.contains(QLatin1Char('\r')))
        return v;
    QString q = v;
    q.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + q + QLatin1Char('"');
}

} // namespace

QStringList CsvRegistro::intestazione()
{
    return {QStringLiteral("Data"),
            QStringLiteral("Ora"),
            QStringLiteral("Alunno"),
            QStringLiteral("Numeri"),
            QStringLiteral("Simboli"),
            QStringLiteral("Ordine"),
            QStringLiteral("Esercizi"),
            QStringLiteral("Risposte esatte"),
            QStringLiteral("Risposte errate"),
            QStringLiteral("Tempo totale (s)"),
            QStringLiteral("Tempo medio (s)"),
            QStringLiteral("Valutazione"),
            QStringLiteral("Completata"),
            QStringLiteral("Postazione"),
            QStringLiteral("Unità")};
}

QStringList CsvRegistro::campi(const SerieRegistrata &s)
{
    const int n = s.quantiEsercizi();
    const double medio = n ? s.tempoTotale / n : 0;
    return {s.inizio.toString(QStringLiteral("dd/MM/yyyy")),
            s.inizio.toString(QStringLiteral("HH:mm:ss")),
            s.nome,
            s.numeri,
            s.simboli,
            s.ordine,
            QString::number(n),
            QString::number(s.esatte),
            QString::number(s.errate),
            Texts::fromDouble(s.tempoTotale),
            Texts::fromDouble(std::round(medio * 10) / 10),
            s.valutazione,
            s.terminata ? QStringLiteral("sì") : QStringLiteral("no"),
            s.postazione,
            UnitaSerie::Nome(s)};
}

QString CsvRegistro::riga(const QStringList &valori)
{
    QStringList q;
    for (const QString &v : valori)
        q << campo(v);
    return q.join(QLatin1Char(';')) + QLatin1String("\r\n");
}

QByteArray CsvRegistro::testo(const QList<SerieRegistrata> &serie)
{
    QString t;
    auto riga = [&t](const QStringList &valori) {
        QStringList q;
        for (const QString &v : valori)
            q << campo(v);
        t += q.join(QLatin1Char(';')) + QLatin1String("\r\n");
    };
    riga(intestazione());
    for (const SerieRegistrata &s : serie)
        riga(campi(s));
    return QByteArray("\xEF\xBB\xBF") + t.toUtf8();
}

QList<QStringList> CsvRegistro::leggi(const QByteArray &testo)
{
    QString t = QString::fromUtf8(testo);
    if (t.startsWith(QChar(0xFEFF)))
        t.remove(0, 1);
    QList<QStringList> righe;
    QStringList riga;
    QString valore;
    bool virgolette = false;
    for (qsizetype i = 0; i < t.size(); ++i) {
        const QChar c = t[i];
        if (virgolette) {
            if (c == QLatin1Char('"') && i + 1 < t.size() && t[i + 1] == QLatin1Char('"')) {
                valore += c;
                ++i;
            } else if (c == QLatin1Char('"')) {
                virgolette = false;
            } else {
                valore += c;
            }
        } else if (c == QLatin1Char('"')) {
            virgolette = true;
        } else if (c == QLatin1Char(';')) {
            riga << valore;
            valore.clear();
        } else if (c == QLatin1Char('\n')) {
            riga << valore;
            valore.clear();
            righe << riga;
            riga.clear();
        } else if (c != QLatin1Char('\r')) {
            valore += c;
        }
    }
    if (!valore.isEmpty() || !riga.isEmpty())
        righe << (riga << valore);
    return righe;
}
