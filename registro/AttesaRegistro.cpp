#include "registro/AttesaRegistro.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

namespace {

const QString Estensione = QStringLiteral(".json");
const int Formato = 1;

QString data(const QDateTime &t)
{
    return t.toString(Qt::ISODateWithMs);
}

} // namespace

AttesaRegistro::AttesaRegistro(const QString &cartella) : m_cartella(cartella)
{
}

QString AttesaRegistro::fileDi(const QString &codice) const
{
    // The code comes from a file or a server: it never names a path itself.
    const QByteArray nome =
        QCryptographicHash::hash(codice.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QDir(m_cartella).filePath(QString::fromLatin1(nome) + Estensione);
}

bool AttesaRegistro::metti(const SerieRegistrata &serie)
{
    m_errore.clear();
    if (serie.codice.isEmpty()) {
        m_errore = QStringLiteral("serie senza codice");
        return false;
    }
    QDir dir(m_cartella);
    if (!dir.mkpath(QStringLiteral("."))) {
        m_errore = QStringLiteral("impossibile creare la cartella %1").arg(m_cartella);
        return false;
    }
    // Names of pupils: the folder and its files are the owner's alone.
    QFile::setPermissions(m_cartella, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QSaveFile file(fileDi(serie.codice));
    if (!file.open(QIODevice::WriteOnly)) {
        m_errore = file.errorString();
        return false;
    }
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(inTesto(serie));
    if (!file.commit()) {
        m_errore = file.errorString();
        return false;
    }
    return true;
}

QList<SerieRegistrata> AttesaRegistro::tutte() const
{
    QList<SerieRegistrata> risultato;
    const QDir dir(m_cartella);
    for (const QString &nome : dir.entryList({QLatin1Char('*') + Estensione}, QDir::Files)) {
        QFile file(dir.filePath(nome));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        if (auto serie = daTesto(file.readAll()))
            risultato.append(*serie);
    }
    std::stable_sort(
        risultato.begin(), risultato.end(),
        [](const SerieRegistrata &a, const SerieRegistrata &b) { return a.inizio < b.inizio; });
    return risultato;
}

bool AttesaRegistro::togli(const QString &codice)
{
    const QString percorso = fileDi(codice);
    return !QFile::exists(percorso) || QFile::remove(percorso);
}

bool AttesaRegistro::vuota() const
{
    return QDir(m_cartella).entryList({QLatin1Char('*') + Estensione}, QDir::Files).isEmpty();
}

QByteArray AttesaRegistro::inTesto(const SerieRegistrata &s)
{
    QJsonArray esercizi;
    for (const SerieRegistrata::Esercizio &e : s.esercizi) {
        QJsonObject es{
            {QStringLiteral("numero"), e.numero},
            {QStringLiteral("riga"), e.riga},
            {QStringLiteral("secondi"), e.secondi},
        };
        // Only a verifica's exercises have one.
        if (e.esito != SerieRegistrata::Sconosciuto)
            es.insert(QStringLiteral("esito"), e.esito);
        esercizi.append(es);
    }
    QJsonObject o{
        {QStringLiteral("formato"), Formato},
        {QStringLiteral("codice"), s.codice},
        {QStringLiteral("inizio"), data(s.inizio)},
        {QStringLiteral("fine"), data(s.fine)},
        {QStringLiteral("nome"), s.nome},
        {QStringLiteral("tipoNumeri"), s.tipoNumeri},
        {QStringLiteral("numeri"), s.numeri},
        {QStringLiteral("famiglia"), s.famiglia},
        {QStringLiteral("simboli"), s.simboli},
        {QStringLiteral("ordine"), s.ordine},
        {QStringLiteral("esatte"), s.esatte},
        {QStringLiteral("errate"), s.errate},
        {QStringLiteral("tempoTotale"), s.tempoTotale},
        {QStringLiteral("terminata"), s.terminata},
        {QStringLiteral("valutazione"), s.valutazione},
        {QStringLiteral("postazione"), s.postazione},
        {QStringLiteral("numeroEsercizi"), s.numeroEsercizi},
        {QStringLiteral("esercizi"), esercizi},
    };
    if (!s.verifica.isEmpty())
        o.insert(QStringLiteral("verifica"), s.verifica);
    return QJsonDocument(o).toJson(QJsonDocument::Indented);
}

std::optional<SerieRegistrata> AttesaRegistro::daTesto(const QByteArray &testo)
{
    QJsonParseError errore;
    const QJsonDocument doc = QJsonDocument::fromJson(testo, &errore);
    if (errore.error != QJsonParseError::NoError || !doc.isObject())
        return std::nullopt;
    const QJsonObject o = doc.object();
    // A file from a newer program is left for that program.
    if (o.value(QStringLiteral("formato")).toInt() != Formato)
        return std::nullopt;
    SerieRegistrata s;
    s.codice = o.value(QStringLiteral("codice")).toString();
    s.inizio =
        QDateTime::fromString(o.value(QStringLiteral("inizio")).toString(), Qt::ISODateWithMs);
    s.fine = QDateTime::fromString(o.value(QStringLiteral("fine")).toString(), Qt::ISODateWithMs);
    if (s.codice.isEmpty() || !s.inizio.isValid() || !s.fine.isValid())
        return std::nullopt;
    s.nome = o.value(QStringLiteral("nome")).toString();
    s.tipoNumeri = o.value(QStringLiteral("tipoNumeri")).toInt();
    s.numeri = o.value(QStringLiteral("numeri")).toString();
    s.famiglia = o.value(QStringLiteral("famiglia")).toInt();
    s.simboli = o.value(QStringLiteral("simboli")).toString();
    s.ordine = o.value(QStringLiteral("ordine")).toString();
    s.esatte = o.value(QStringLiteral("esatte")).toInt();
    s.errate = o.value(QStringLiteral("errate")).toInt();
    s.tempoTotale = o.value(QStringLiteral("tempoTotale")).toDouble();
    s.terminata = o.value(QStringLiteral("terminata")).toBool();
    s.valutazione = o.value(QStringLiteral("valutazione")).toString();
    s.postazione = o.value(QStringLiteral("postazione")).toString();
    s.numeroEsercizi = o.value(QStringLiteral("numeroEsercizi")).toInt();
    s.verifica = o.value(QStringLiteral("verifica")).toString();
    for (const QJsonValue &v : o.value(QStringLiteral("esercizi")).toArray()) {
        const QJsonObject e = v.toObject();
        s.esercizi.append({e.value(QStringLiteral("numero")).toInt(),
                           e.value(QStringLiteral("riga")).toString(),
                           e.value(QStringLiteral("secondi")).toDouble(),
                           e.value(QStringLiteral("esito")).toInt()});
    }
    return s;
}
