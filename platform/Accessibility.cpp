#include "platform/Accessibility.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

namespace {

const char *const KindProperty = "quadrivoControlKind";

// Holds only the kind, not the control: the control goes before its window
// when a screen is destroyed.
class ControlInterface final : public QAccessibleWidget
{
public:
    ControlInterface(QWidget *widget, ControlKind kind)
        : QAccessibleWidget(widget, roleOf(kind)), m_kind(kind)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        if (auto *b = button()) {
            s.checkable = b->isCheckable();
            s.checked = b->isChecked();
            s.pressed = b->isDown();
        }
        return s;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (button())
            names.prepend(pressAction());
        return names;
    }

    // A press is a left click at the button's centre: the same handlers run
    // as for the mouse (option buttons act on the button going down).
    void doAction(const QString &action) override
    {
        if (action != pressAction() || !button()) {
            QAccessibleWidget::doAction(action);
            return;
        }
        const QPointer<QWidget> w = widget();
        if (!w->isEnabled() || !w->isVisible())
            return;
        const QPointF at = QRectF(w->rect()).center();
        QMouseEvent down(QEvent::MouseButtonPress, at, w->mapToGlobal(at), Qt::LeftButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &down);
        if (!w)
            return;
        QMouseEvent up(QEvent::MouseButtonRelease, at, w->mapToGlobal(at), Qt::LeftButton,
                       Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &up);
    }

private:
    static QAccessible::Role roleOf(ControlKind kind)
    {
        switch (kind) {
        case ControlKind::CommandButton:
            return QAccessible::PushButton;
        case ControlKind::OptionButton:
            return QAccessible::RadioButton;
        case ControlKind::Frame:
            return QAccessible::Grouping;
        case ControlKind::Line:
            return QAccessible::Separator;
        default:
            return QAccessible::Graphic;
        }
    }

    QAbstractButton *button() const
    {
        if (m_kind != ControlKind::CommandButton && m_kind != ControlKind::OptionButton)
            return nullptr;
        return static_cast<QAbstractButton *>(widget());
    }

    ControlKind m_kind;
};

QAccessibleInterface *factory(const QString &, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    const QVariant kind = object->property(KindProperty);
    if (!kind.isValid())
        return nullptr;
    return new ControlInterface(static_cast<QWidget *>(object), ControlKind(kind.toInt()));
}

bool ownDescription(ControlKind kind)
{
    switch (kind) {
    case ControlKind::CommandButton:
    case ControlKind::OptionButton:
    case ControlKind::Frame:
    case ControlKind::PictureBox:
    case ControlKind::Image:
    case ControlKind::Line:
    case ControlKind::Shape:
        return true;
    default:
        return false;
    }
}

} // namespace

namespace Accessibility {

void describe(QWidget *widget, ControlKind kind)
{
    // Installed once, before the first interface is asked for; factories
    // installed later are asked first, so this one wins over Qt's own.
    static const bool installed = (QAccessible::installFactory(factory), true);
    (void)installed;
    if (ownDescription(kind))
        widget->setProperty(KindProperty, int(kind));
}

} // namespace Accessibility
