#pragma once

#include <QAbstractButton>

class Control;

// The look of the program's big buttons: a rounded, softly shaded face in the
// control's back colour with its caption centred and wrapped; pressed when
// down or chosen, a clear ring when it has the focus.
class ButtonWidget : public QAbstractButton
{
public:
    ButtonWidget(Control *control, QWidget *parent);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Control *m_control;
};
