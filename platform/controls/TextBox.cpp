#include "platform/controls/TextBox.h"

#include "platform/Form.h"
#include "platform/Services.h"

#include <QKeyEvent>
#include <QLineEdit>

TextBox::TextBox(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container)
{
    auto *w = new QLineEdit(parentWidget());
    w->setText(def.caption);
    QObject::connect(w, &QLineEdit::textChanged, w,
                     [this] { m_form.services().runHandler([this] { raiseChange(); }); });
    setWidget(w);
}

QLineEdit *TextBox::edit() const
{
    return static_cast<QLineEdit *>(widget());
}

QString TextBox::Caption() const
{
    return edit() ? edit()->text() : QString();
}

void TextBox::setCaption(const QString &text)
{
    if (edit())
        edit()->setText(text);
}

bool TextBox::keyDefault(QKeyEvent *event, int ascii)
{
    // A key press handler that set the character to 0 swallowed it.
    return ascii == 0 && !event->text().isEmpty() && event->text().at(0).isPrint();
}
