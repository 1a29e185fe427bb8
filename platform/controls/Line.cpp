#include "platform/controls/Line.h"

#include "platform/Twips.h"

#include <QPainter>

namespace {

class LineWidget : public QWidget
{
public:
    LineWidget(Line *line, QWidget *parent) : QWidget(parent), m_line(line)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_TranslucentBackground);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QColor ink = m_line->ForeColor().isValid() ? m_line->ForeColor() : QColor(Qt::black);
        p.setPen(QPen(ink, m_line->borderWidth(), Qt::SolidLine, Qt::RoundCap));
        const QPointF origin = pos();
        const QPointF a(Twips::toPixels(m_line->X1()) - origin.x(),
                        Twips::toPixels(m_line->Y1()) - origin.y());
        const QPointF b(Twips::toPixels(m_line->X2()) - origin.x(),
                        Twips::toPixels(m_line->Y2()) - origin.y());
        p.drawLine(a, b);
    }

private:
    Line *m_line;
};

} // namespace

Line::Line(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container), m_x1(def.left), m_y1(def.top), m_x2(def.width),
      m_y2(def.height), m_borderWidth(def.borderWidth)
{
    setWidget(new LineWidget(this, parentWidget()));
    place();
}

void Line::setPoints(double x1, double y1, double x2, double y2)
{
    m_x1 = x1;
    m_y1 = y1;
    m_x2 = x2;
    m_y2 = y2;
    place();
}

void Line::place()
{
    if (!widget())
        return;
    const int pad = m_borderWidth + 1;
    const int x = Twips::toPixels(std::min(m_x1, m_x2)) - pad;
    const int y = Twips::toPixels(std::min(m_y1, m_y2)) - pad;
    const int w = Twips::toPixels(std::abs(m_x2 - m_x1)) + 2 * pad;
    const int h = Twips::toPixels(std::abs(m_y2 - m_y1)) + 2 * pad;
    widget()->setGeometry(x, y, w, h);
    widget()->update();
}

void Line::applyColors()
{
    if (widget())
        widget()->update();
}

double Line::Left() const
{
    unsupported();
    return 0;
}

double Line::Top() const
{
    unsupported();
    return 0;
}

double Line::Width() const
{
    unsupported();
    return 0;
}

double Line::Height() const
{
    unsupported();
    return 0;
}

void Line::Move(double, double, double, double)
{
    unsupported();
}
