#include "drill/Faccina.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <array>
#include <stdexcept>

namespace {

const std::array<Faccina::Aspetto, Faccina::Quante> Aspetti{{
    {QColor(0xacf3ac), QColor(0x638e63), 1.5, false, false},
    {QColor(0x9eeb97), QColor(0x5b8a57), 1.8, false, false},
    {QColor(0x93e382), QColor(0x55854b), 2.1, false, false},
    {QColor(0x8adc6f), QColor(0x508040), 2.4, false, false},
    {QColor(0x84d45d), QColor(0x4d7c35), 2.7, false, false},
    {QColor(0x81cc4b), QColor(0x4b772b), 3.0, true, false},
    {QColor(0x80c53b), QColor(0x4a7222), 3.3, true, false},
    {QColor(0x80bd2c), QColor(0x4a6d19), 3.6, true, false},
    {QColor(0x82b51e), QColor(0x4c6911), 3.9, true, false},
    {QColor(0x86ad11), QColor(0x4d640a), 4.2, true, false},
    {QColor(0xfbdda0), QColor(0x94815c), 1.5, false, false},
    {QColor(0xf7cd8e), QColor(0x917851), 1.0, false, false},
    {QColor(0xf4bc7c), QColor(0x8f6d47), 0.4, false, false},
    {QColor(0xf0a96b), QColor(0x8d623d), 0.0, false, false},
    {QColor(0xec955b), QColor(0x8a5633), -0.8, false, false},
    {QColor(0xe87f4a), QColor(0x88492a), -1.5, false, false},
    {QColor(0xe4683b), QColor(0x863c21), -2.2, false, true},
    {QColor(0xe0502b), QColor(0x832e18), -2.6, false, true},
    {QColor(0xdd361d), QColor(0x811f10), -3.0, false, true},
    {QColor(0xd91c0e), QColor(0x7e0f07), -3.4, false, true},
}};

const QColor Occhi(0x28, 0x1e, 0x1e);
const QColor Bocca(0x42, 0x1f, 0x1c);
const QColor Guancia(235, 125, 90, 170);
const QColor Lacrima(70, 140, 240);

QColor schiarito(const QColor &c, double quanto)
{
    return QColor::fromRgbF(c.redF() + (1 - c.redF()) * quanto,
                            c.greenF() + (1 - c.greenF()) * quanto,
                            c.blueF() + (1 - c.blueF()) * quanto);
}

} // namespace

Faccina::Aspetto Faccina::aspetto(int numero)
{
    if (numero < 1 || numero > Quante)
        throw std::out_of_range("Faccina::aspetto");
    return Aspetti[std::size_t(numero - 1)];
}

void Faccina::disegna(QPainter &p, int numero, const QRectF &box)
{
    const Aspetto a = aspetto(numero);
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    // Shapes are placed in the 28 x 28 design square.
    p.translate(box.topLeft());
    p.scale(box.width() / Lato, box.height() / Lato);

    QRadialGradient luce(QPointF(10, 9), 16, QPointF(9, 8));
    luce.setColorAt(0, schiarito(a.corpo, 0.6));
    luce.setColorAt(0.45, schiarito(a.corpo, 0.15));
    luce.setColorAt(1, a.corpo);
    p.setPen(QPen(a.bordo, 1.1));
    p.setBrush(luce);
    p.drawEllipse(QPointF(14, 14), 12.9, 12.9);

    p.setPen(Qt::NoPen);
    if (a.guance) {
        p.setBrush(Guancia);
        p.drawEllipse(QPointF(6.8, 17.2), 2.3, 1.6);
        p.drawEllipse(QPointF(21.2, 17.2), 2.3, 1.6);
    }
    p.setBrush(Occhi);
    p.drawEllipse(QPointF(10, 10.5), 1.7, 2.0);
    p.drawEllipse(QPointF(18, 10.5), 1.7, 2.0);

    // A quadratic curve sags halfway to its control point.
    const double y = a.sorriso >= 0 ? 17.5 : 19.2;
    QPainterPath bocca(QPointF(8, y));
    bocca.quadTo(QPointF(14, y + 2 * a.sorriso), QPointF(20, y));
    p.setPen(QPen(Bocca, 1.5, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(bocca);

    if (a.lacrima) {
        QPainterPath goccia(QPointF(19.5, 12.8));
        goccia.cubicTo(QPointF(20.6, 14.4), QPointF(20.9, 15.2), QPointF(20.9, 15.8));
        goccia.arcTo(QRectF(18.1, 14.4, 2.8, 2.8), 0, -180);
        goccia.cubicTo(QPointF(18.1, 15.2), QPointF(18.4, 14.4), QPointF(19.5, 12.8));
        p.setPen(Qt::NoPen);
        p.setBrush(Lacrima);
        p.drawPath(goccia);
    }
    p.restore();
}
