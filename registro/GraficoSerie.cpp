#include "registro/GraficoSerie.h"

#include <QPainter>

void GraficoSerie::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, QModelIndex());
    const QVariantList valori = index.data(Ruolo).toList();
    if (valori.isEmpty())
        return;
    const QRectF area = QRectF(option.rect).adjusted(4, 3, -4, -3);
    const double passo = area.width() / 10;
    const double larghezza = std::max(2.0, passo - 2);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(QColor(200, 200, 200));
    painter->drawLine(area.bottomLeft(), area.bottomRight());
    painter->setPen(Qt::NoPen);
    for (int i = 0; i < valori.size(); ++i) {
        const int p = std::clamp(valori[i].toInt(), 0, 100);
        const double h = std::max(1.0, area.height() * p / 100.0);
        const QColor colore = p >= 80   ? QColor(40, 160, 60)
                              : p >= 50 ? QColor(230, 180, 30)
                                        : QColor(210, 50, 40);
        painter->setBrush(colore);
        painter->drawRect(QRectF(area.left() + i * passo, area.bottom() - h, larghezza, h));
    }
    painter->restore();
}

QSize GraficoSerie::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {110, 24};
}
