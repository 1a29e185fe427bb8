#include "registro/ModelloSerie.h"

#include "platform/Texts.h"
#include "registro/UnitaSerie.h"

namespace {

enum Colonna
{
    Data,
    Alunno,
    Simboli,
    Unita,
    Esercizi,
    Esatte,
    Errate,
    Tempo,
    Valutazione,
    Stato,
    Colonne
};

} // namespace

QString ModelloSerie::nomeMostrato(const QString &nome)
{
    return nome.isEmpty() ? QStringLiteral("(senza nome)") : nome;
}

void ModelloSerie::imposta(QList<SerieRegistrata> serie)
{
    beginResetModel();
    m_serie = std::move(serie);
    endResetModel();
}

int ModelloSerie::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_serie.size());
}

int ModelloSerie::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Colonne;
}

QVariant ModelloSerie::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QStringList titoli{QStringLiteral("Data e ora"),  QStringLiteral("Alunno"),
                                    QStringLiteral("Simboli"),     QStringLiteral("Unità"),
                                    QStringLiteral("Esercizi"),    QStringLiteral("Esatte"),
                                    QStringLiteral("Errate"),      QStringLiteral("Tempo (s)"),
                                    QStringLiteral("Valutazione"), QStringLiteral("Stato")};
    return titoli.value(section);
}

QVariant ModelloSerie::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_serie.size())
        return {};
    const SerieRegistrata &s = m_serie[index.row()];
    if (role == Qt::TextAlignmentRole)
        return index.column() >= Esercizi && index.column() <= Tempo
                   ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                   : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Data:
        return s.inizio.toString(QStringLiteral("dd/MM/yyyy HH:mm"));
    case Alunno:
        return nomeMostrato(s.nome);
    case Simboli:
        return s.simboli;
    case Esercizi:
        return s.quantiEsercizi();
    case Esatte:
        return s.esatte;
    case Errate:
        return s.errate;
    case Tempo:
        return Texts::fromDouble(s.tempoTotale);
    case Valutazione:
        return s.valutazione;
    case Stato:
        return s.terminata ? QStringLiteral("completata") : QStringLiteral("interrotta");
    case Unita:
        return UnitaSerie::Nome(s);
    default:
        return {};
    }
}
