#include "platform/controls/ButtonWidget.h"

#include "platform/Control.h"

#include <QLinearGradient>
#include <QPainter>

ButtonWidget::ButtonWidget(Control *control, QWidget *parent)
    : QAbstractButton(parent), m_control(control)
{
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(false);
}

QSize ButtonWidget::sizeHint() const
{
    return QSize(120, 40);
}

void ButtonWidget::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);

    QColor face = m_control->BackColor().isValid() ? m_control->BackColor()
                                                   : palette().color(QPalette::Button);
    const bool pressed = isDown() || isChecked();
    const bool usable = isEnabled();
    if (!usable)
        face = QColor::fromHsv(face.hsvHue(), face.hsvSaturation() / 3, face.value());

    const QRectF box = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const qreal radius = std::min(10.0, std::min(box.width(), box.height()) / 4);

    // A soft shadow under a raised face; none when pressed.
    if (!pressed && usable) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0, 0, 0, 40));
        p.drawRoundedRect(box.translated(0, 1.5), radius, radius);
    }
    QLinearGradient g(box.topLeft(), box.bottomLeft());
    g.setColorAt(0, pressed ? face.darker(112) : face.lighter(110));
    g.setColorAt(1, pressed ? face.darker(102) : face.darker(108));
    p.setBrush(g);
    p.setPen(QPen(face.darker(usable ? 150 : 125), 1.2));
    p.drawRoundedRect(box, radius, radius);

    if (hasFocus()) {
        QPen ring(face.darker(220), 2.0);
        p.setPen(ring);
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(box.adjusted(3, 3, -3, -3), std::max(2.0, radius - 3),
                          std::max(2.0, radius - 3));
    }

    QColor ink = m_control->ForeColor().isValid() ? m_control->ForeColor()
                                                  : palette().color(QPalette::ButtonText);
    if (!usable)
        ink = face.darker(170);
    p.setPen(ink);
    p.setFont(font());
    const QRectF textBox = box.adjusted(6, 3, -6, -3).translated(pressed ? 1 : 0, pressed ? 1 : 0);
    p.drawText(textBox, Qt::AlignCenter | Qt::TextWordWrap, m_control->Caption());
}
