#include <vn/button_custom.h>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QPainter>

#include <utility>

namespace vn {

button_custom::button_custom(QWidget *parent)
    : button_custom(QString(), parent)
{}

button_custom::button_custom(const QString &text, QWidget *parent)
    : QPushButton(text, parent)
{
    setStyleSheet(QStringLiteral("QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}"));
}

button_custom::~button_custom() = default;

void button_custom::set_paint(paint_function paint)
{
    paint_ = std::move(paint);
    update();
}

void button_custom::set_drop_handler(drop_function handler)
{
    drop_handler_ = std::move(handler);
}

void button_custom::paintEvent(QPaintEvent *)
{
    if (!paint_)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    paint_(painter, this);
}

void button_custom::dragEnterEvent(QDragEnterEvent *e)
{
    e->acceptProposedAction();
}

void button_custom::dropEvent(QDropEvent *e)
{
    if (drop_handler_)
        drop_handler_(e, this);
    else
        QWidget::dropEvent(e);
}

} // namespace vn
