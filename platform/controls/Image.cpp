#include "platform/controls/Image.h"

#include <QLabel>
#include <QPixmap>

Image::Image(Form &form, const ControlDef &def, Control *container) : Control(form, def, container)
{
    auto *w = new QLabel(parentWidget());
    w->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    w->setFocusPolicy(Qt::NoFocus);
    w->setAttribute(Qt::WA_TranslucentBackground);
    if (!def.tip.isEmpty())
        w->setToolTip(def.tip);
    setWidget(w);
    if (!def.picture.isEmpty())
        setPicture(def.picture);
}

void Image::setPicture(const QString &resource)
{
    static_cast<QLabel *>(widget())->setPixmap(QPixmap(resource));
}
