#pragma once

#include "platform/Control.h"

class QLabel;

// A text label; its caption wraps at word boundaries, as designed labels do.
class Label : public Control
{
public:
    Label(Form &form, const ControlDef &def, Control *container);
    void setCaption(const QString &caption) override;
    QLabel *label() const;
};
