#include "platform/controls/Label.h"

#include "platform/Accessibility.h"

#include <QLabel>

Label::Label(Form &form, const ControlDef &def, Control *container) : Control(form, def, container)
{
    auto *w = new QLabel(parentWidget());
    // Known as this program's label before its text is set: Qt describes a
    // widget to assistive tools as soon as its text changes, and would
    // otherwise make a description of its own only to have it replaced.
    Accessibility::describe(w, ControlKind::Label);
    w->setTextFormat(Qt::PlainText);
    w->setWordWrap(def.wordWrap);
    w->setMargin(0);
    w->setIndent(0);
    w->setAlignment((def.align == Align::Center  ? Qt::AlignHCenter
                     : def.align == Align::Right ? Qt::AlignRight
                                                 : Qt::AlignLeft) |
                    Qt::AlignTop);
    w->setAutoFillBackground(!def.transparent);
    if (def.border)
        w->setFrameStyle(QFrame::Box | QFrame::Plain);
    w->setText(def.caption);
    w->setFocusPolicy(Qt::NoFocus);
    if (!def.tip.isEmpty())
        w->setToolTip(def.tip);
    setWidget(w);
}

QLabel *Label::label() const
{
    return static_cast<QLabel *>(widget());
}

void Label::setCaption(const QString &caption)
{
    if (label())
        label()->setText(caption);
    Control::setCaption(caption);
}
