#pragma once

#include <QStyledItemDelegate>

// Draws a cell's list of percents (the last series of a pupil, oldest
// first) as small bars: green from 80, yellow from 50, red below, so a
// teacher sees at a glance whether the errors go down.
class GraficoSerie : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // The role that holds the QVariantList of percents.
    static constexpr int Ruolo = Qt::UserRole + 1;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
