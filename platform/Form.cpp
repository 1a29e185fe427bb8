#include "platform/Form.h"

#include "platform/Accessibility.h"
#include "platform/BarraMenu.h"
#include "platform/CaratteriInAnticipo.h"
#include "platform/FocusReturn.h"
#include "platform/HeldKeys.h"
#include "platform/ScreenRegistry.h"
#include "platform/Services.h"
#include "platform/Twips.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Image.h"
#include "platform/controls/Label.h"
#include "platform/controls/Line.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/Shape.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/Timer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QMenuBar>
#include <QVBoxLayout>
#include <QWindow>

Form::Form(Services &services, const QString &name)
    : QWidget(nullptr, Qt::Window), m_services(services), m_name(name)
{
    setObjectName(name);
    setAttribute(Qt::WA_DeleteOnClose, false);
    Accessibility::describeScreen(this);
    HeldKeys::install();
    FocusReturn::install();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_client = new QWidget(this);
    m_client->setObjectName(QStringLiteral("client"));
    m_client->setAutoFillBackground(true);
    m_client->installEventFilter(this);
    layout->addWidget(m_client, 1);
}

Form::~Form() = default;

QMenuBar *Form::menuBar()
{
    if (!m_menuBar) {
        m_menuBar = new BarraMenu(this);
        m_menuBar->setNativeMenuBar(false);
        static_cast<QVBoxLayout *>(layout())->setMenuBar(m_menuBar);
    }
    return m_menuBar;
}

void Form::design(double width, double height, std::initializer_list<ControlDef> table)
{
    for (const ControlDef &def : table)
        create(def);
    setInnerSize(width, height);
}

void Form::design(double width, double height, const std::vector<ControlDef> &table)
{
    for (const ControlDef &def : table)
        create(def);
    setInnerSize(width, height);
}

void Form::setDesignFont(const FontDef &def)
{
    QFont f = m_fontProprio ? m_fontProgetto : font();
    if (!def.family.isEmpty())
        f.setFamily(def.family);
    if (def.size > 0)
        f.setPointSizeF(def.size);
    f.setBold(def.bold);
    m_fontProgetto = f;
    m_fontProprio = true;
    setFont(m_services.caratteriLeggibili().adatta(f));
}

void Form::applicaCaratteri()
{
    if (m_fontProprio)
        setFont(m_services.caratteriLeggibili().adatta(m_fontProgetto));
    for (Control *c : m_order)
        c->applicaCaratteri();
}

Control *Form::create(const ControlDef &def)
{
    Control *container = def.in ? findControl(QString::fromLatin1(def.in), def.inIndex) : nullptr;
    Q_ASSERT_X(!def.in || container, "Form::design", def.in);
    std::unique_ptr<Control> c;
    switch (def.kind) {
    case ControlKind::Label:
        c = std::make_unique<Label>(*this, def, container);
        break;
    case ControlKind::Frame:
        c = std::make_unique<Frame>(*this, def, container);
        break;
    case ControlKind::OptionButton:
        c = std::make_unique<OptionButton>(*this, def, container);
        break;
    case ControlKind::CommandButton:
        c = std::make_unique<CommandButton>(*this, def, container);
        break;
    case ControlKind::TextBox:
        c = std::make_unique<TextBox>(*this, def, container);
        break;
    case ControlKind::PictureBox:
        c = std::make_unique<PictureBox>(*this, def, container);
        break;
    case ControlKind::Image:
        c = std::make_unique<Image>(*this, def, container);
        break;
    case ControlKind::Line:
        c = std::make_unique<Line>(*this, def, container);
        break;
    case ControlKind::Shape:
        c = std::make_unique<Shape>(*this, def, container);
        break;
    case ControlKind::ComboBox:
        c = std::make_unique<ComboBox>(*this, def, container);
        break;
    case ControlKind::Timer:
        c = std::make_unique<Timer>(*this, def, container);
        break;
    case ControlKind::Menu:
        c = std::make_unique<Menu>(*this, def, container);
        break;
    }
    if (c->widget()) {
        if (!def.font.family.isEmpty() || def.font.size > 0 || def.font.bold)
            c->setFont(def.font);
        if (def.kind == ControlKind::PictureBox)
            static_cast<PictureBox *>(c.get())->setDrawFont(c->widget()->font());
    }
    if (def.kind == ControlKind::OptionButton && def.value)
        m_designChosen.push_back(static_cast<OptionButton *>(c.get()));
    m_order.push_back(c.get());
    if (QWidget *w = c->widget())
        m_perWidget.insert(w, c.get());
    m_controls.push_back(std::move(c));
    return m_order.back();
}

void Form::setTabOrder(std::initializer_list<Control *> order)
{
    QWidget *previous = nullptr;
    for (Control *c : order) {
        if (previous && c->widget())
            QWidget::setTabOrder(previous, c->widget());
        if (c->widget())
            previous = c->widget();
    }
}

Control *Form::findControl(const QString &name, int index) const
{
    for (Control *c : m_order)
        if (c->name() == name && c->index() == index)
            return c;
    return nullptr;
}

Control *Form::controlOf(QObject *widget) const
{
    // A widget gone and another made at its address is nobody's.
    Control *c = m_perWidget.value(widget);
    return c && c->widget() == widget ? c : nullptr;
}

double Form::ScaleWidth() const
{
    return Twips::fromPixels(m_client->width());
}

double Form::ScaleHeight() const
{
    return Twips::fromPixels(m_client->height());
}

void Form::setInnerSize(double width, double height)
{
    // The menu bar's height is the program's first font measurement.
    CaratteriInAnticipo::attendi();
    const int w = Twips::toPixels(width);
    const int h = Twips::toPixels(height);
    const int menu = m_menuBar ? m_menuBar->sizeHint().height() : 0;
    resize(w, h + menu);
    // The layout gives the client its size when it next runs; do it now, so
    // the inner area is right before the screen is first shown.
    m_client->setGeometry(0, menu, w, h);
    // A hidden screen hears of its new size only when shown; its controls
    // follow at once all the same.
    if (!isVisible())
        clientResized();
}

void Form::clientResized()
{
    for (Control *c : m_order)
        c->redock();
    // The resize handler is the loaded screen's: not while it is being built.
    if (m_loaded && !m_unloaded)
        runHandler([this] { Form_Resize(); });
}

void Form::setBackColor(const QColor &color)
{
    m_back = color;
    QPalette pal = m_client->palette();
    pal.setColor(QPalette::Window, color);
    m_client->setPalette(pal);
    QPalette own = palette();
    own.setColor(QPalette::Window, color);
    setPalette(own);
}

void Form::runHandler(const std::function<void()> &handler)
{
    m_services.runHandler(handler);
}

void Form::load()
{
    // Option buttons chosen at design become chosen as the screen loads, and
    // their Click handlers run then, before the load handler.
    m_loaded = true;
    for (OptionButton *b : m_designChosen)
        b->setValue(true);
    Form_Load();
}

void Form::Show()
{
    if (m_unloaded)
        return;
    show();
    raise();
    activateWindow();
}

void Form::ShowModal()
{
    if (m_unloaded)
        return;
    const QPointer<Form> self = this;
    setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    connect(this, &Form::closedOrHidden, &loop, &QEventLoop::quit);
    Show();
    if (isVisible())
        loop.exec();
    if (self)
        setWindowModality(Qt::NonModal);
}

void Form::Hide()
{
    hide();
}

void Form::Unload()
{
    if (m_unloading || m_unloaded)
        return;
    m_unloading = true;
    int cancel = 0;
    Form_Unload(cancel);
    if (cancel != 0) {
        m_unloading = false;
        return;
    }
    m_unloaded = true;
    for (Control *c : m_order)
        if (c->kind() == ControlKind::Timer)
            c->setEnabled(false);
    m_services.screens().remove(this);
    hide();
    emit closedOrHidden();
    deleteLater();
}

void Form::focusControl(Control *c)
{
    if (!isVisible()) {
        m_pendingFocus = c->widget();
        return;
    }
    c->widget()->setFocus(Qt::OtherFocusReason);
    // A notice or message box this screen put up keeps the keyboard; it comes
    // back to the control when that window closes.
    const QWidget *active = QApplication::activeWindow();
    const bool ownWindowOnTop = active && active != this && active->parentWidget() &&
                                active->parentWidget()->window() == this;
    if (!isActiveWindow() && !ownWindowOnTop)
        activateWindow();
}

void Form::updateTimers()
{
    for (Control *c : m_order)
        if (c->kind() == ControlKind::Timer)
            static_cast<Timer *>(c)->update();
}

void Form::stopAwaitingFrame()
{
    m_awaitingFrame = false;
    if (QWindow *w = windowHandle())
        w->removeEventFilter(this);
}

bool Form::eventFilter(QObject *watched, QEvent *event)
{
    if (m_awaitingFrame && watched == windowHandle()) {
        // The window paints itself as it handles this event: the timers
        // start after it, from the events it leaves queued.
        if (event->type() == QEvent::Expose && windowHandle()->isExposed()) {
            stopAwaitingFrame();
            m_framed = true;
            QMetaObject::invokeMethod(this, &Form::updateTimers, Qt::QueuedConnection);
        }
        return false;
    }
    if (watched == m_client) {
        if (event->type() == QEvent::Resize)
            clientResized();
        return false;
    }
    // Most of what Qt sends a control (paint, layout, palette, polish...) is
    // none of the control's business: passed on without a lookup.
    if (m_unloaded || !Control::handles(event->type()))
        return false;
    Control *c = controlOf(watched);
    if (!c)
        return false;
    bool used = false;
    bool failed = true;
    runHandler([&] {
        used = c->handleEvent(event);
        failed = false;
    });
    return used || failed;
}

bool Form::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && !m_unloaded)
        runHandler([this] { Form_Activate(); });
    return QWidget::event(event);
}

void Form::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_framed && !m_awaitingFrame && windowHandle()) {
        m_awaitingFrame = true;
        windowHandle()->installEventFilter(this);
        updateTimers();
    }
    if (m_pendingFocus) {
        QWidget *w = m_pendingFocus;
        m_pendingFocus = nullptr;
        w->setFocus(Qt::OtherFocusReason);
    }
}

void Form::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    // Hidden before it was ever on screen: its timers run as a hidden
    // screen's do.
    if (m_awaitingFrame) {
        stopAwaitingFrame();
        updateTimers();
    }
    if (!event->spontaneous())
        emit closedOrHidden();
}

void Form::closeEvent(QCloseEvent *event)
{
    // The close box unloads the screen, as its own exit button would.
    if (m_unloaded) {
        event->accept();
        return;
    }
    event->ignore();
    runHandler([this] { Unload(); });
}
