#pragma once

#include "platform/Control.h"

class QAction;

// An entry of the screen's menu bar; Click when chosen.
class Menu : public Control
{
public:
    Menu(Form &form, const ControlDef &def, Control *container);
    void setCaption(const QString &caption) override;
    void setEnabled(bool enabled) override;
    void setVisible(bool visible) override;
    QAction *action() const { return m_action; }

private:
    QAction *m_action;
};
