#include "platform/controls/Shape.h"

#include <QPainter>

namespace {

class ShapeWidget : public QWidget
{
public:
    ShapeWidget(Shape *shape, QWidget *parent) : QWidget(parent), m_shape(shape)
    {
        setAttribute(Qt::WA_TranslucentBackground);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QColor fill =
            m_shape->BackColor().isValid() ? m_shape->BackColor() : QColor(Qt::white);
        const QColor edge =
            m_shape->ForeColor().isValid() ? m_shape->ForeColor() : fill.darker(140);
        p.setBrush(fill);
        p.setPen(QPen(edge, 1.5));
        const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
        switch (m_shape->shape()) {
        case Shape::Oval:
            p.drawEllipse(r);
            break;
        case Shape::Rectangle:
            p.drawRect(r);
            break;
        case Shape::RoundedRectangle:
            p.drawRoundedRect(r, 12, 12);
            break;
        }
    }

private:
    Shape *m_shape;
};

} // namespace

Shape::Shape(Form &form, const ControlDef &def, Control *container, Kind kind)
    : Control(form, def, container), m_shape(kind)
{
    setWidget(new ShapeWidget(this, parentWidget()));
}
