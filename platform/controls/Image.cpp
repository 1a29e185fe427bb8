#include "platform/controls/Image.h"

#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>

namespace {

// A label that paints a drawing when it has one, a bitmap otherwise.
class ImageLabel final : public QLabel
{
public:
    using QLabel::QLabel;

    QSize lato;
    Image::Disegno disegno;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        if (!disegno) {
            QLabel::paintEvent(event);
            return;
        }
        QPainter p(this);
        disegno(p, QRectF(QPointF(0, 0), QSizeF(lato)));
    }
};

} // namespace

Image::Image(Form &form, const ControlDef &def, Control *container) : Control(form, def, container)
{
    auto *w = new ImageLabel(parentWidget());
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
    auto *w = static_cast<ImageLabel *>(widget());
    w->disegno = nullptr;
    w->setPixmap(QPixmap(resource));
}

void Image::setDisegno(QSize lato, Disegno disegno)
{
    auto *w = static_cast<ImageLabel *>(widget());
    w->clear();
    w->lato = lato;
    w->disegno = std::move(disegno);
    w->update();
}

bool Image::hasPicture() const
{
    const auto *w = static_cast<const ImageLabel *>(widget());
    return w->disegno || !w->pixmap().isNull();
}
