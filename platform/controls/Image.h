#pragma once

#include "platform/Control.h"

#include <QSize>
#include <functional>

class QPainter;
class QRectF;

// A picture shown at its own size, not stretched: a bitmap, or a drawing
// painted at the screen's own resolution (sharp at any scale factor).
class Image : public Control
{
public:
    using Disegno = std::function<void(QPainter &, const QRectF &)>;

    Image(Form &form, const ControlDef &def, Control *container);
    void setPicture(const QString &resource);
    // The picture becomes `disegno`, `lato` pixels of a plain screen each
    // way, at the control's top left corner.
    void setDisegno(QSize lato, Disegno disegno);
    bool hasPicture() const;
};
