#include <vn/button_html.h>

#include <QPainter>
#include <QPixmap>
#include <QTextDocument>

namespace vn {

button_html::button_html(QWidget *parent)
    : button(parent, QRect())
{}

button_html::button_html(const QString &html, QWidget *parent)
    : button(parent, QRect())
{
    set_html(html);
}

button_html::~button_html() = default;

void button_html::set_html(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    const QSizeF size = document.size();
    QPixmap picture(int(size.width()), int(size.height()));
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    document.drawContents(&painter);
    painter.end();
    setIcon(QIcon(picture));
    setIconSize(picture.size());
}

} // namespace vn
