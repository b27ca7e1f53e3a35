#include <vn/button.h>

#include <vn/qt/stylesheet.h>

#include <QPainter>
#include <QTimer>

namespace vn {

namespace {

const char *const resting_style = "border:none;margin:2px 2px 2px 2px;";
const char *const highlight_style = "margin:0px 0px 0px 0px;border:2px solid rgb(222,222,222);";

} // namespace

button::button(const QString &text, QWidget *parent)
    : QPushButton(text, parent)
{
    qt::merge_style_sheet(this, QString::fromLatin1(resting_style));
    setFocusPolicy(Qt::NoFocus);
}

button::button(QWidget *parent, const QRect &rect)
    : QPushButton(parent)
    , highlight_rect_(QPoint(rect.x() + 4, rect.y() + 4),
                      QPoint(rect.right() + 1, rect.bottom() + 1))
{
    qt::merge_style_sheet(this, QString::fromLatin1(resting_style));
    setFocusPolicy(Qt::NoFocus);
}

button::~button() = default;

void button::mouseReleaseEvent(QMouseEvent *)
{
    // A second click inside the 200 ms finds the highlight declarations in
    // place, so its merge changes nothing; the first click's timer ends the
    // highlight.
    if (!highlight_rect_.isValid())
        qt::merge_style_sheet(this, QString::fromLatin1(highlight_style));
    QTimer::singleShot(highlight_ms, this, &button::deaktivate_highlight);
    highlighted_ = true;
    // The base press set the down state; its release is not run, so the
    // button comes up here.
    setDown(false);
    update();
    emit clicked(false);
    emit released();
    emit toggled(isChecked());
}

void button::deaktivate_highlight()
{
    if (!highlight_rect_.isValid())
        qt::merge_style_sheet(this, QString::fromLatin1(resting_style));
    highlighted_ = false;
    update();
}

void button::paintEvent(QPaintEvent *e)
{
    QPushButton::paintEvent(e);
    if (!highlight_rect_.isValid() || !highlighted_)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(222, 222, 222), 2));
    painter.drawRect(highlight_rect_);
}

} // namespace vn
