#include "platform/controls/Menu.h"

#include "platform/Form.h"
#include "platform/Services.h"
#include "platform/printing/BoundedProcess.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

Menu::Menu(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container), m_action(new QAction(def.caption, &form)), m_checked(def.value)
{
    m_action->setObjectName(objectName());
    m_action->setCheckable(def.checkable);
    m_action->setChecked(m_checked);
    m_action->setEnabled(def.enabled);
    m_action->setVisible(def.visible);
    QObject::connect(m_action, &QAction::triggered, m_action, [this] {
        // A menu command that reaches us while a print waits (a shortcut, an
        // assistive tool) is not carried out: it could start the print again.
        m_action->setChecked(m_checked);
        if (BoundedProcess::isWaiting())
            return;
        m_form.services().runHandler([this] { raiseClick(); });
    });
    auto *parentMenu = dynamic_cast<Menu *>(container);
    if (parentMenu) {
        QMenu *sub = parentMenu->action()->menu();
        if (!sub) {
            sub = new QMenu(&form);
            parentMenu->action()->setMenu(sub);
        }
        sub->addAction(m_action);
    } else {
        form.menuBar()->addAction(m_action);
    }
}

void Menu::setCaption(const QString &caption)
{
    m_action->setText(caption);
    Control::setCaption(caption);
}

void Menu::setChecked(bool checked)
{
    m_checked = checked;
    m_action->setChecked(checked);
}

void Menu::setEnabled(bool enabled)
{
    Control::setEnabled(enabled);
    m_action->setEnabled(enabled);
}

void Menu::setVisible(bool visible)
{
    Control::setVisible(visible);
    m_action->setVisible(visible);
}
