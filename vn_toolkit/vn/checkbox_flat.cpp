#include <vn/checkbox_flat.h>

#include <QPainter>

namespace vn {

checkbox_flat::checkbox_flat(QWidget *parent)
    : checkbox_flat(QString(), parent)
{}

checkbox_flat::checkbox_flat(const QString &text, QWidget *parent)
    : checkbox(text, parent)
{}

checkbox_flat::~checkbox_flat() = default;

void checkbox_flat::set_images(const QImage &checked, const QImage &unchecked,
                               const QImage &disabled)
{
    checked_ = checked;
    unchecked_ = unchecked;
    disabled_ = disabled;
    update();
}

QRect checkbox_flat::image_rect(const QSize &image, int widget_height)
{
    if (image.isEmpty())
        return {};
    const double ratio = double(image.width()) / image.height();
    // 9999 / 14: beyond it a 14-pixel high image would be wider than 9999.
    int w = 0;
    int h = 0;
    if (ratio > 9999.0 / 14.0) {
        w = 9999;
        h = int(9999 / ratio);
    } else {
        h = 14;
        w = int(ratio * 14);
    }
    return QRect(0, widget_height / 2 - h / 2, w, h);
}

void checkbox_flat::paintEvent(QPaintEvent *e)
{
    checkbox::paintEvent(e);
    const QImage &image = !isEnabled() ? disabled_ : isChecked() ? checked_ : unchecked_;
    const QRect target = image_rect(image.size(), height());
    if (target.isEmpty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
}

} // namespace vn
