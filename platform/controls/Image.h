#pragma once

#include "platform/Control.h"

// A picture shown at its own size, not stretched.
class Image : public Control
{
public:
    Image(Form &form, const ControlDef &def, Control *container);
    void setPicture(const QString &resource);
};
