#include <vn/button_combobox.h>

#include <QPainter>

#include <utility>

namespace vn {

button_combobox::button_combobox(QWidget *parent)
    : QComboBox(parent)
    , widget_(new combo_box_widget)
{
    widget_->hide();
    setStyleSheet(QStringLiteral("QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}"));
}

button_combobox::~button_combobox()
{
    delete widget_.data(); // null if its window has deleted it already
}

void button_combobox::set_paint(paint_function paint)
{
    paint_ = std::move(paint);
    update();
}

void button_combobox::showPopup()
{
    QComboBox::showPopup();
    if (popup_pending) {
        popup_pending = false;
        update();
        return;
    }
    if (widget_) {
        if (widget_->isHidden()) {
            QWidget *top = window();
            if (widget_->parentWidget() != top)
                widget_->setParent(top);
            widget_->move(mapTo(top, QPoint(0, height() - 1)));
            widget_->show();
            widget_->raise();
        } else {
            widget_->hide();
            hidePopup();
        }
    }
    update();
}

void button_combobox::mousePressEvent(QMouseEvent *e)
{
    QComboBox::mousePressEvent(e);
    emit clicked();
    update();
}

void button_combobox::paintEvent(QPaintEvent *)
{
    if (!paint_)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    paint_(painter, this);
}

} // namespace vn
