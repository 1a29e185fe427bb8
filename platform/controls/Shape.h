#pragma once

#include "platform/Control.h"

// A filled rectangle, rounded rectangle or oval.
class Shape : public Control
{
public:
    enum Kind
    {
        Rectangle = 0,
        Oval = 2,
        RoundedRectangle = 4
    };
    Shape(Form &form, const ControlDef &def, Control *container, Kind kind = RoundedRectangle);
    Kind shape() const { return m_shape; }

private:
    Kind m_shape;
};
