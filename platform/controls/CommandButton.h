#pragma once

#include "platform/Control.h"

// A command button: clicked by the mouse, by Space, or by Enter when it has
// the focus.
class CommandButton : public Control
{
public:
    CommandButton(Form &form, const ControlDef &def, Control *container);

protected:
    bool passKeysToWidget() const override { return true; }
    bool passMouseToWidget() const override { return true; }
    bool keyDefault(QKeyEvent *event, int ascii) override;
    void applyColors() override;
};
