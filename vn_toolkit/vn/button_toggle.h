#pragma once

#include <QPushButton>
#include <QRect>
#include <QVector>

#include <memory>
#include <vector>

namespace vn {

// A checkable push button that may share a group with others: at most one
// button of a group is checked, and in an exclusive group the last checked
// one stays checked. A checked button can show a light frame. The group is a
// vector shared by its members; a button leaves it when destroyed.
// GUI thread only.
class button_toggle : public QPushButton
{
    Q_OBJECT
    Q_DISABLE_COPY(button_toggle)

public:
    using group_type = std::shared_ptr<std::vector<button_toggle *>>;

    explicit button_toggle(QWidget *parent = nullptr);
    button_toggle(const QString &text, QWidget *parent = nullptr);
    ~button_toggle() override;

    // Puts the buttons into one new group, each with the given exclusive flag,
    // taking them out of the groups they were in.
    static void make_group(const QVector<button_toggle *> &buttons, bool exclusive);
    group_type group() const { return group_; }

    // Checks or unchecks by the group rules: an exclusive button that is the
    // only checked one of its group stays checked; a button that becomes
    // checked unchecks the others.
    void set_checked(bool checked);

    bool frame_on() const { return frame_on_; }
    bool last_checked() const { return last_checked_; }

    bool exclusive = false;
    bool frame_follows_check = true;
    QRect frame_rect; // null: 1, 1 to width, height at the first paint

public slots:
    // Restores the group rules after a change of the check state (connected
    // to toggled): an exclusive button left unchecked with no other checked
    // is checked again, and a checked one unchecks the others.
    void group_integrity_check(bool checked);

protected:
    void mousePressEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void mouseDoubleClickEvent(QMouseEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    bool hitButton(const QPoint &pos) const override;

    bool other_checked() const;
    void uncheck_others();
    void follow_check();

private:
    void leave_group();

    group_type group_;
    bool last_checked_ = false;
    bool frame_on_ = false;
};

} // namespace vn
