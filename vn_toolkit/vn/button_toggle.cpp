#include <vn/button_toggle.h>

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace vn {

button_toggle::button_toggle(QWidget *parent)
    : button_toggle(QString(), parent)
{}

button_toggle::button_toggle(const QString &text, QWidget *parent)
    : QPushButton(text, parent)
{
    setCheckable(true);
    setStyleSheet(QStringLiteral("QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}"));
    connect(this, &QAbstractButton::toggled, this, &button_toggle::group_integrity_check);
}

button_toggle::~button_toggle()
{
    leave_group();
}

void button_toggle::leave_group()
{
    if (!group_)
        return;
    group_->erase(std::remove(group_->begin(), group_->end(), this), group_->end());
    group_.reset();
}

void button_toggle::make_group(const QVector<button_toggle *> &buttons, bool exclusive)
{
    auto group = std::make_shared<std::vector<button_toggle *>>();
    for (button_toggle *b : buttons) {
        b->leave_group();
        b->group_ = group;
        b->exclusive = exclusive;
        group->push_back(b);
    }
}

bool button_toggle::other_checked() const
{
    if (!group_)
        return false;
    return std::any_of(group_->begin(), group_->end(),
                       [this](const button_toggle *b) { return b != this && b->isChecked(); });
}

void button_toggle::uncheck_others()
{
    if (!group_)
        return;
    // A copy: unchecking runs slots that could change the group.
    const std::vector<button_toggle *> members = *group_;
    for (button_toggle *b : members)
        if (b != this)
            b->set_checked(false);
}

void button_toggle::follow_check()
{
    if (frame_follows_check)
        frame_on_ = isChecked();
}

void button_toggle::set_checked(bool checked)
{
    if (exclusive && isChecked() && !other_checked())
        return;
    setChecked(checked);
    if (isChecked())
        uncheck_others();
    follow_check();
}

void button_toggle::group_integrity_check(bool)
{
    if (exclusive && !isChecked() && !other_checked())
        setChecked(true);
    if (isChecked())
        uncheck_others();
    follow_check();
}

void button_toggle::mousePressEvent(QMouseEvent *e)
{
    follow_check();
    QPushButton::mousePressEvent(e);
    repaint();
}

void button_toggle::mouseReleaseEvent(QMouseEvent *e)
{
    follow_check();
    QPushButton::mouseReleaseEvent(e);
    repaint();
}

void button_toggle::mouseDoubleClickEvent(QMouseEvent *e)
{
    mousePressEvent(e);
}

bool button_toggle::hitButton(const QPoint &pos) const
{
    return QPushButton::hitButton(pos);
}

void button_toggle::paintEvent(QPaintEvent *e)
{
    if (frame_rect.isNull())
        frame_rect = QRect(QPoint(1, 1), QPoint(width(), height()));
    follow_check();
    last_checked_ = isChecked();
    QPushButton::paintEvent(e);
    if (!frame_on_)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(222, 222, 222), 2));
    painter.drawRect(frame_rect);
}

} // namespace vn
