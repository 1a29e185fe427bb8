#pragma once

#include "registro/SerieRegistrata.h"

#include <QAbstractTableModel>

// The series of the teacher's view as a table, newest first. Held as plain
// values, so ten thousand series cost one query and no widget per cell.
class ModelloSerie : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void imposta(QList<SerieRegistrata> serie);
    const QList<SerieRegistrata> &serie() const { return m_serie; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    static QString nomeMostrato(const QString &nome);

private:
    QList<SerieRegistrata> m_serie;
};
