#pragma once

#include "platform/Control.h"

// A frame: a panel that holds other controls, with its caption on its top
// edge. Disabling it makes everything inside unreachable.
class Frame : public Control
{
public:
    Frame(Form &form, const ControlDef &def, Control *container);
    bool bordered() const { return m_border; }

private:
    bool m_border;
};
