#include "platform/controls/CommandButton.h"

#include "platform/Form.h"
#include "platform/Services.h"
#include "platform/controls/ButtonWidget.h"

#include <QKeyEvent>

CommandButton::CommandButton(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container)
{
    auto *w = new ButtonWidget(this, parentWidget());
    if (!def.tip.isEmpty())
        w->setToolTip(def.tip);
    QObject::connect(w, &QAbstractButton::clicked, w,
                     [this] { m_form.services().runHandler([this] { raiseClick(); }); });
    setWidget(w);
}

bool CommandButton::keyDefault(QKeyEvent *event, int)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat())
            raiseClick();
        return true;
    }
    return event->key() != Qt::Key_Space; // Space: the button clicks when released
}

void CommandButton::applyColors()
{
    if (widget())
        widget()->update();
}
