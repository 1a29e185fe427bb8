#include "platform/controls/OptionButton.h"

#include "platform/controls/ButtonWidget.h"

OptionButton::OptionButton(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container)
{
    auto *w = new ButtonWidget(this, parentWidget());
    w->setCheckable(true);
    w->setAutoExclusive(false);
    if (!def.tip.isEmpty())
        w->setToolTip(def.tip);
    setWidget(w);
}

ButtonWidget *OptionButton::button() const
{
    return static_cast<ButtonWidget *>(widget());
}

void OptionButton::setValue(bool value)
{
    if (value == m_value)
        return;
    m_value = value;
    if (button())
        button()->setChecked(value);
    if (value)
        raiseClick();
}

void OptionButton::mouseClicked()
{
    setValue(true);
}

void OptionButton::applyColors()
{
    if (widget())
        widget()->update();
}
