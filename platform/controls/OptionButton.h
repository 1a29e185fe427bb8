#pragma once

#include "platform/Control.h"

class ButtonWidget;

// The choice button: an option button drawn as a big push button. It has no
// behaviour of its own (no click on space or Enter, no arrow navigation, no
// group exclusivity); it only reports its events. Value is its chosen state;
// becoming chosen (by a mouse click or by the program) raises Click.
class OptionButton : public Control
{
public:
    OptionButton(Form &form, const ControlDef &def, Control *container);

    bool Value() const { return m_value; }
    void setValue(bool value);

protected:
    void mouseClicked() override;
    void applyColors() override;

private:
    ButtonWidget *button() const;
    bool m_value = false;
};
