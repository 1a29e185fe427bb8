#include "platform/controls/ButtonWidget.h"

#include "platform/Control.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPixmapCache>

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

namespace {

// The face of a button (shadow, shaded body, border, focus ring) depends on
// its size and state only, and a screen repaints many buttons per click: each
// face is drawn once and kept in Qt's pixmap cache.
QPixmap face(QSize size, qreal dpr, const QColor &color, bool pressed, bool usable, bool focus)
{
    const QString key = QStringLiteral("quadrivo-button-%1x%2-%3-%4%5%6-%7")
                            .arg(size.width())
                            .arg(size.height())
                            .arg(color.rgba(), 0, 16)
                            .arg(int(pressed))
                            .arg(int(usable))
                            .arg(int(focus))
                            .arg(dpr);
    QPixmap pm;
    if (QPixmapCache::find(key, &pm))
        return pm;
    pm = QPixmap(size * dpr);
    pm.setDevicePixelRatio(dpr);
    pm.fill(Qt::transparent);

    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(QPointF(0, 0), QSizeF(size)).adjusted(1.5, 1.5, -1.5, -1.5);
    const qreal radius = std::min(10.0, std::min(box.width(), box.height()) / 4);
    // A soft shadow under a raised face; none when pressed.
    if (!pressed && usable) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0, 0, 0, 40));
        p.drawRoundedRect(box.translated(0, 1.5), radius, radius);
    }
    QLinearGradient g(box.topLeft(), box.bottomLeft());
    g.setColorAt(0, pressed ? color.darker(112) : color.lighter(110));
    g.setColorAt(1, pressed ? color.darker(102) : color.darker(108));
    p.setBrush(g);
    p.setPen(QPen(color.darker(usable ? 150 : 125), 1.2));
    p.drawRoundedRect(box, radius, radius);
    if (focus) {
        p.setPen(QPen(color.darker(220), 2.0));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(box.adjusted(3, 3, -3, -3), std::max(2.0, radius - 3),
                          std::max(2.0, radius - 3));
    }
    p.end();
    QPixmapCache::insert(key, pm);
    return pm;
}

} // namespace

void ButtonWidget::paintEvent(QPaintEvent *)
{
    QColor color = m_control->BackColor().isValid() ? m_control->BackColor()
                                                    : palette().color(QPalette::Button);
    const bool pressed = isDown() || isChecked();
    const bool usable = isEnabled();
    if (!usable)
        color = QColor::fromHsv(color.hsvHue(), color.hsvSaturation() / 3, color.value());

    QPainter p(this);
    p.drawPixmap(0, 0, face(size(), devicePixelRatioF(), color, pressed, usable, hasFocus()));

    QColor ink = m_control->ForeColor().isValid() ? m_control->ForeColor()
                                                  : palette().color(QPalette::ButtonText);
    if (!usable)
        ink = color.darker(170);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setPen(ink);
    p.setFont(font());
    const QRectF box = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const QRectF textBox = box.adjusted(6, 3, -6, -3).translated(pressed ? 1 : 0, pressed ? 1 : 0);
    p.drawText(textBox, Qt::AlignCenter | Qt::TextWordWrap, m_control->Caption());
}
