#pragma once

#include "platform/Control.h"

class QLineEdit;

// A one-line text box; its Caption is its text.
class TextBox : public Control
{
public:
    TextBox(Form &form, const ControlDef &def, Control *container);
    QString Caption() const override;
    void setCaption(const QString &text) override;

protected:
    bool passKeysToWidget() const override { return true; }
    bool passMouseToWidget() const override { return true; }
    bool keyDefault(QKeyEvent *event, int ascii) override;

private:
    QLineEdit *edit() const;
};
