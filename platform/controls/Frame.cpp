#include "platform/controls/Frame.h"

#include <QPainter>
#include <QPainterPath>

namespace {

class FrameWidget : public QWidget
{
public:
    FrameWidget(Frame *frame, QWidget *parent) : QWidget(parent), m_frame(frame)
    {
        setAutoFillBackground(false);
        // Every paint fills the whole frame: what lies under it (the drill's
        // overlay frames share one place) need not be painted first.
        setAttribute(Qt::WA_OpaquePaintEvent);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QColor back = palette().color(QPalette::Window);
        const QString caption = m_frame->Caption();
        const QFontMetrics fm(font());
        const qreal top = caption.isEmpty() ? 0.5 : fm.height() / 2.0;
        if (m_frame->bordered() || !caption.isEmpty()) {
            p.fillRect(rect(), back);
            const QRectF box = QRectF(rect()).adjusted(1, top, -1, -1);
            p.setPen(QPen(back.darker(135), 1.5));
            p.setBrush(Qt::NoBrush);
            p.drawRoundedRect(box, 6, 6);
        } else {
            p.fillRect(rect(), back);
        }
        if (!caption.isEmpty()) {
            const int w = fm.horizontalAdvance(caption) + 8;
            const QRect title(8, 0, w, fm.height());
            p.fillRect(title, back);
            p.setPen(isEnabled() ? palette().color(QPalette::WindowText)
                                 : palette().color(QPalette::Disabled, QPalette::WindowText));
            p.drawText(title, Qt::AlignCenter, caption);
        }
    }

private:
    Frame *m_frame;
};

} // namespace

Frame::Frame(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container), m_border(def.border)
{
    setWidget(new FrameWidget(this, parentWidget()));
}
