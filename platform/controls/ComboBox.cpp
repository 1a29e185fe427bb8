#include "platform/controls/ComboBox.h"

#include "platform/Form.h"
#include "platform/RuntimeError.h"
#include "platform/Services.h"
#include "platform/Twips.h"

#include <QComboBox>

ComboBox::ComboBox(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container)
{
    auto *w = new QComboBox(parentWidget());
    w->setEditable(false);
    QObject::connect(w, &QComboBox::activated, w,
                     [this](int) { m_form.services().runHandler([this] { raiseClick(); }); });
    setWidget(w);
    m_height = Twips::fromPixels(w->sizeHint().height());
    applyGeometry();
}

QComboBox *ComboBox::combo() const
{
    return static_cast<QComboBox *>(widget());
}

void ComboBox::AddItem(const QString &item)
{
    const QSignalBlocker block(combo());
    const int before = combo()->currentIndex();
    combo()->addItem(item);
    combo()->setCurrentIndex(before); // adding never chooses an entry
}

void ComboBox::Clear()
{
    const QSignalBlocker block(combo());
    combo()->clear();
}

int ComboBox::ListCount() const
{
    return combo()->count();
}

QString ComboBox::List(int index) const
{
    return combo()->itemText(index);
}

int ComboBox::ListIndex() const
{
    return combo()->currentIndex();
}

void ComboBox::setListIndex(int index)
{
    if (index < -1 || index >= combo()->count())
        throw RuntimeError(RuntimeError::InvalidProcedureCall, objectName());
    {
        const QSignalBlocker block(combo());
        combo()->setCurrentIndex(index);
    }
    raiseClick();
}

QString ComboBox::Text() const
{
    return combo()->currentText();
}

void ComboBox::Move(double left, double top, double width, double)
{
    Control::Move(left, top, width, Height());
}
