#include <vn/button_toggle_switch.h>

#include <QMouseEvent>

namespace vn {

button_toggle_switch::button_toggle_switch(QWidget *parent)
    : button_toggle_switch(QString(), parent)
{}

button_toggle_switch::button_toggle_switch(const QString &text, QWidget *parent)
    : button_toggle(text, parent)
{}

button_toggle_switch::~button_toggle_switch() = default;

QString button_toggle_switch::state_sheet() const
{
    return QStringLiteral("QPushButton{background-image:url(") +
           (isChecked() ? image_on : image_off) +
           QStringLiteral(");}QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                          "background-color:rgb(47,47,47);}");
}

void button_toggle_switch::apply_state_sheet()
{
    const QString sheet = state_sheet();
    if (sheet != styleSheet())
        setStyleSheet(sheet);
}

void button_toggle_switch::mousePressEvent(QMouseEvent *e)
{
    if (latch) {
        // The base press is left out, so the release that follows finds the
        // button up and doesn't toggle it back.
        set_checked(e->button() == Qt::LeftButton ? true : !isChecked());
        follow_check();
        repaint();
    } else {
        button_toggle::mousePressEvent(e);
    }
    apply_state_sheet();
}

void button_toggle_switch::mouseReleaseEvent(QMouseEvent *e)
{
    button_toggle::mouseReleaseEvent(e);
    apply_state_sheet();
}

void button_toggle_switch::paintEvent(QPaintEvent *e)
{
    button_toggle::paintEvent(e);
    apply_state_sheet();
}

} // namespace vn
