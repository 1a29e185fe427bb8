#include "platform/Accessibility.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QAction>
#include <QMenu>
#include <QCoreApplication>
#include <QHash>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

namespace {

// What the program says of a widget, kept beside it. A dynamic property
// would do, but every look-up of one first goes through all of Qt's own
// properties of the widget, and these are asked for whenever Qt describes a
// widget: on every text set, from the first screen on.
struct Scheda
{
    int kind = -1; // a ControlKind once described as a control
    bool screen = false;
    bool decorative = false;
    // Object names, looked up in the window when asked: a pointer could
    // outlive its widget while a screen is being destroyed.
    QString label;
    QStringList labelFor;
};

QHash<const QObject *, Scheda> &schede()
{
    // Never destroyed: a widget may still go after static destruction has
    // begun, and would then remove itself from a table already gone.
    static auto *tutte = new QHash<const QObject *, Scheda>;
    return *tutte;
}

// The record of `object`, made on first use and dropped with the object.
Scheda &scheda(QObject *object)
{
    auto &tutte = schede();
    auto it = tutte.find(object);
    if (it == tutte.end()) {
        it = tutte.insert(object, {});
        QObject::connect(object, &QObject::destroyed, [object] { schede().remove(object); });
    }
    return *it;
}

const Scheda *trova(const QObject *object)
{
    const auto &tutte = schede();
    const auto it = tutte.constFind(object);
    return it == tutte.cend() ? nullptr : &*it;
}

QWidget *named(const QWidget *from, const QString &name)
{
    return name.isEmpty() ? nullptr : from->window()->findChild<QWidget *>(name);
}

bool isFrame(const QWidget *w)
{
    const Scheda *s = trova(w);
    return s && s->kind == int(ControlKind::Frame);
}

// A shown sibling stacked above `w` that covers all of it.
bool covered(const QWidget *w)
{
    const QWidget *parent = w->parentWidget();
    if (!parent)
        return false;
    const QObjectList &siblings = parent->children(); // bottom to top
    bool above = false;
    for (const QObject *o : siblings) {
        if (o == w) {
            above = true;
            continue;
        }
        if (!above || !o->isWidgetType())
            continue;
        // Decorations (the start screen's curtain) hide nothing from a
        // screen reader: it passes over them.
        const auto *s = static_cast<const QWidget *>(o);
        if (s->isVisible() && !Accessibility::isDecorative(s) &&
            s->geometry().contains(w->geometry()))
            return true;
    }
    return false;
}

// A disabled or covered panel does not show, and neither does its content.
bool inHiddenPanel(const QWidget *w)
{
    for (; w && !w->isWindow(); w = w->parentWidget())
        if (isFrame(w) && (!w->isEnabled() || covered(w)))
            return true;
    return false;
}

// Holds only the kind, not the control: the control goes before its window
// when a screen is destroyed.
class ControlInterface final : public QAccessibleWidget
{
public:
    ControlInterface(QWidget *widget, ControlKind kind)
        : QAccessibleWidget(widget, roleOf(widget, kind)), m_kind(kind)
    {
    }

    // Asked each time: a screen marks its decorations after the interface
    // may have been made.
    QAccessible::Role role() const override { return roleOf(widget(), m_kind); }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        if (auto *b = button()) {
            s.checkable = b->isCheckable();
            s.checked = b->isChecked();
            s.pressed = b->isDown();
        }
        if (Accessibility::isDecorative(widget()))
            s.focusable = false;
        if (inHiddenPanel(widget())) {
            s.invisible = true;
            s.offscreen = true;
        }
        return s;
    }

    QString text(QAccessible::Text t) const override
    {
        // The name set by the control (its caption, or its label's).
        if (t == QAccessible::Name)
            return widget()->accessibleName();
        return QAccessibleWidget::text(t);
    }

    QList<QPair<QAccessibleInterface *, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override
    {
        QList<QPair<QAccessibleInterface *, QAccessible::Relation>> out;
        if (match & QAccessible::Label) {
            const Scheda *s = trova(widget());
            if (QWidget *l = named(widget(), s ? s->label : QString()))
                if (QAccessibleInterface *a = QAccessible::queryAccessibleInterface(l))
                    out.append({a, QAccessible::Label});
        }
        if (match & QAccessible::Labelled) {
            const Scheda *s = trova(widget());
            const QStringList names = s ? s->labelFor : QStringList();
            for (const QString &n : names)
                if (QWidget *c = named(widget(), n))
                    if (QAccessibleInterface *a = QAccessible::queryAccessibleInterface(c))
                        out.append({a, QAccessible::Labelled});
        }
        return out;
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
    static QAccessible::Role roleOf(const QWidget *widget, ControlKind kind)
    {
        // A decoration is an unnamed filler, which screen readers pass over.
        if (Accessibility::isDecorative(widget))
            return QAccessible::Client;
        switch (kind) {
        case ControlKind::CommandButton:
            return QAccessible::PushButton;
        case ControlKind::OptionButton:
            return QAccessible::RadioButton;
        case ControlKind::Frame:
            return QAccessible::Grouping;
        case ControlKind::Label:
            return QAccessible::StaticText;
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

// A screen is a frame (a top-level window) named by its caption.
class ScreenInterface final : public QAccessibleWidget
{
public:
    explicit ScreenInterface(QWidget *widget) : QAccessibleWidget(widget, QAccessible::Window) {}
};

// A menu entry with a check mark (a switch, or one choice of several) is a
// check box to assistive tools: Qt would make it a plain menu item, whose
// state an AT-SPI reader hears only once it is checked.
class CheckableEntryInterface final : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    CheckableEntryInterface(QMenu *menu, QAction *action) : m_menu(menu), m_action(action) {}

    bool isValid() const override { return m_menu && m_action; }
    QObject *object() const override { return m_action; }
    QWindow *window() const override { return m_menu ? m_menu->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_menu);
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *focusChild() const override { return nullptr; }
    QString text(QAccessible::Text t) const override
    {
        if (t != QAccessible::Name || !m_action)
            return QString();
        return QString(m_action->text()).remove(QLatin1Char('&'));
    }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override
    {
        if (!isValid())
            return QRect();
        const QRect r = m_menu->actionGeometry(m_action);
        return QRect(m_menu->mapToGlobal(r.topLeft()), r.size());
    }
    QAccessible::Role role() const override { return QAccessible::CheckBox; }
    QAccessible::State state() const override
    {
        QAccessible::State s;
        if (!isValid())
            return s;
        s.checkable = true;
        s.checked = m_action->isChecked();
        s.focusable = true;
        s.disabled = !m_action->isEnabled();
        s.invisible = !m_menu->isVisible() || !m_action->isVisible();
        s.focused = m_menu->isVisible() && m_menu->activeAction() == m_action;
        return s;
    }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                    : nullptr;
    }

    QStringList actionNames() const override { return {toggleAction()}; }
    void doAction(const QString &name) override
    {
        if (name == toggleAction() && isValid() && m_action->isEnabled())
            m_action->trigger();
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    QPointer<QMenu> m_menu;
    QPointer<QAction> m_action;
};

QAccessibleInterface *factory(const QString &, QObject *object)
{
    if (auto *action = qobject_cast<QAction *>(object)) {
        if (!action->isCheckable())
            return nullptr;
        for (QObject *o : action->associatedObjects())
            if (auto *menu = qobject_cast<QMenu *>(o))
                return new CheckableEntryInterface(menu, action);
        return nullptr;
    }
    if (!object || !object->isWidgetType())
        return nullptr;
    const Scheda *s = trova(object);
    if (!s)
        return nullptr;
    auto *widget = static_cast<QWidget *>(object);
    if (s->screen)
        return new ScreenInterface(widget);
    if (s->kind < 0)
        return nullptr;
    return new ControlInterface(widget, ControlKind(s->kind));
}

bool ownDescription(ControlKind kind)
{
    switch (kind) {
    case ControlKind::Label:
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

void installFactory()
{
    // Installed once, before the first interface is asked for; factories
    // installed later are asked first, so this one wins over Qt's own.
    static const bool installed = (QAccessible::installFactory(factory), true);
    (void)installed;
}

} // namespace

namespace Accessibility {

void describe(QWidget *widget, ControlKind kind)
{
    installFactory();
    if (ownDescription(kind)) {
        scheda(widget).kind = int(kind);
        // Setting a new label's text already made Qt's description of it
        // (Qt describes a widget as soon as a text changes): make way.
        QAccessibleInterface *made = QAccessible::queryAccessibleInterface(widget);
        if (made && !dynamic_cast<ControlInterface *>(made))
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(made));
    }
    // Fixed pictures, lines and shapes only decorate in this program.
    if (kind == ControlKind::Image || kind == ControlKind::Line || kind == ControlKind::Shape)
        setDecorative(widget);
}

void describeScreen(QWidget *window)
{
    installFactory();
    scheda(window).screen = true;
}

void labelledBy(QWidget *widget, QWidget *label)
{
    // Qt describes text boxes and combo boxes itself: it finds their label
    // through the label's buddy.
    const Scheda *s = trova(widget);
    if (!s || s->kind < 0)
        if (auto *l = qobject_cast<QLabel *>(label))
            l->setBuddy(widget);
    scheda(widget).label = label->objectName();
    QStringList &labelFor = scheda(label).labelFor;
    if (!labelFor.contains(widget->objectName()))
        labelFor.append(widget->objectName());
}

void setDecorative(QWidget *widget)
{
    scheda(widget).decorative = true;
    widget->setFocusPolicy(Qt::NoFocus);
}

bool isDecorative(const QWidget *widget)
{
    const Scheda *s = trova(widget);
    return s && s->decorative;
}

} // namespace Accessibility
