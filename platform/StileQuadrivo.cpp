#include "platform/StileQuadrivo.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPointer>
#include <QStyleFactory>
#include <QWidget>

namespace {

// An icon of the style, asked of it the first time anything of it is
// wanted; from then on the style's own icon answers every question as it
// would on its own.
class IconaDifferita final : public QIconEngine
{
public:
    IconaDifferita(const QStyle *stile, QStyle::StandardPixmap quale, const QWidget *widget)
        : m_stile(stile), m_quale(quale), m_widget(widget)
    {
    }

    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return icona().actualSize(size, mode, state);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return icona().pixmap(size, 1.0, mode, state);
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        // `size` is in device pixels; the icon wants it in its own and
        // multiplies it back by `scale`.
        if (!(scale > 1.0))
            return pixmap(size, mode, state);
        return icona().pixmap(size / scale, scale, mode, state);
    }

    // As an icon made of pictures paints: its pixmap for the rectangle at
    // the device's pixel ratio, stretched over it. (The icon's own paint
    // would centre it once more in a rectangle already fitted to it.)
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const QPaintDevice *device = painter->device();
        const qreal dpr = device ? device->devicePixelRatio() : qApp->devicePixelRatio();
        painter->drawPixmap(rect, icona().pixmap(rect.size(), dpr, mode, state));
    }

    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override
    {
        return icona().availableSizes(mode, state);
    }

    bool isNull() override { return icona().isNull(); }
    QString iconName() override { return icona().name(); }
    QString key() const override { return QStringLiteral("IconaDifferita"); }
    QIconEngine *clone() const override { return new IconaDifferita(*this); }

private:
    const QIcon &icona() const
    {
        if (!m_letta) {
            m_letta = true;
            // A style replaced before its icon was wanted: the
            // application's own answers.
            const QStyle *stile = m_stile ? m_stile.data() : QApplication::style();
            m_icona = stile->standardIcon(m_quale, nullptr, m_widget);
        }
        return m_icona;
    }

    QPointer<const QStyle> m_stile;
    QStyle::StandardPixmap m_quale;
    QPointer<const QWidget> m_widget;
    mutable QIcon m_icona;
    mutable bool m_letta = false;
};

} // namespace

StileQuadrivo::StileQuadrivo(QStyle *base)
    : QProxyStyle(base ? base : QStyleFactory::create(QStringLiteral("Fusion")))
{
}

QIcon StileQuadrivo::standardIcon(StandardPixmap icona, const QStyleOption *opzione,
                                  const QWidget *widget) const
{
    // Only an icon that depends on nothing but its name waits: an option
    // would be gone by the time the icon is drawn.
    if (!opzione && (icona == SP_ToolBarHorizontalExtensionButton ||
                     icona == SP_ToolBarVerticalExtensionButton))
        return QIcon(new IconaDifferita(baseStyle(), icona, widget));
    return QProxyStyle::standardIcon(icona, opzione, widget);
}
