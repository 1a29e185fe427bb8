#pragma once

#include "platform/Control.h"

// A line drawn on its container between (X1, Y1) and (X2, Y2), in twips. It
// has no Left/Top/Width/Height: asking for them is a run-time error.
class Line : public Control
{
public:
    Line(Form &form, const ControlDef &def, Control *container);

    double X1() const { return m_x1; }
    double Y1() const { return m_y1; }
    double X2() const { return m_x2; }
    double Y2() const { return m_y2; }
    void setPoints(double x1, double y1, double x2, double y2);

    bool hasPosition() const override { return false; }
    double Left() const override;
    double Top() const override;
    double Width() const override;
    double Height() const override;
    void Move(double left, double top, double width, double height) override;

    int borderWidth() const { return m_borderWidth; }

protected:
    void applyColors() override;

private:
    void place();
    double m_x1, m_y1, m_x2, m_y2;
    int m_borderWidth;
};
