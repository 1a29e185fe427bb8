#pragma once

#include "platform/Control.h"

class QComboBox;

// A drop-down list. Its height follows its font and cannot be set. Choosing an
// entry, by the user or by the program (ListIndex), raises Click.
class ComboBox : public Control
{
public:
    ComboBox(Form &form, const ControlDef &def, Control *container);

    void AddItem(const QString &item);
    // Empties the list; no entry is chosen and no Click is raised.
    void Clear();
    int ListCount() const;
    QString List(int index) const;
    int ListIndex() const;
    void setListIndex(int index);
    QString Text() const;
    QString Caption() const override { return Text(); }

    void Move(double left, double top, double width, double height) override;

    QComboBox *combo() const;

protected:
    // The list opens and moves with the keys as any drop-down list does.
    bool passKeysToWidget() const override { return true; }
    bool passMouseToWidget() const override { return true; }
};
