#include <vn/label.h>

#include <QPainter>

namespace vn {

label::label(QWidget *parent)
    : label(QString(), parent)
{}

label::label(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{
    setStyleSheet(QStringLiteral("QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}"));
}

label::~label() = default;

void label::paintEvent(QPaintEvent *e)
{
    if (!paint) {
        QLabel::paintEvent(e);
        return;
    }
    QPainter painter(this);
    paint(painter, this);
}

} // namespace vn
