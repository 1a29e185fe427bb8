#pragma once

#include "platform/Control.h"

class QAction;

// An entry of the screen's menu bar, or of the menu of another entry (its
// container); Click when chosen. A checkable entry shows Checked as a check
// mark, which only the program changes: choosing it raises Click and leaves
// the mark as it was, so the handler says what it becomes.
class Menu : public Control
{
public:
    Menu(Form &form, const ControlDef &def, Control *container);
    bool Checked() const { return m_checked; }
    void setChecked(bool checked);
    void setCaption(const QString &caption) override;
    void setEnabled(bool enabled) override;
    void setVisible(bool visible) override;
    QAction *action() const { return m_action; }

private:
    QAction *m_action;
    bool m_checked;
};
