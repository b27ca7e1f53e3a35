#include <vn/clickable_label.h>

#include <QMouseEvent>

namespace vn {

clickable_label::clickable_label(QWidget *parent)
    : clickable_label(QString(), parent)
{}

clickable_label::clickable_label(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
    set_decoration(QStringLiteral("none"));
}

clickable_label::~clickable_label() = default;

void clickable_label::set_decoration(const QString &decoration)
{
    setStyleSheet(QStringLiteral("QLabel { text-decoration: %1; }QToolTip { border:1px solid "
                                 "rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47); }")
                      .arg(decoration));
}

void clickable_label::mousePressEvent(QMouseEvent *e)
{
    press_modifiers_ = int(e->modifiers());
    if (e->button() == Qt::LeftButton)
        emit clicked();
}

void clickable_label::mouseReleaseEvent(QMouseEvent *e)
{
    QLabel::mouseReleaseEvent(e);
    press_modifiers_ = 0;
}

void clickable_label::enterEvent(QEvent *e)
{
    QLabel::enterEvent(e);
    if (underline_on_hover)
        set_decoration(QStringLiteral("underline"));
}

void clickable_label::leaveEvent(QEvent *e)
{
    QLabel::leaveEvent(e);
    if (underline_on_hover)
        set_decoration(QStringLiteral("none"));
}

} // namespace vn
