#include <vn/radio.h>

namespace vn {

radio::radio(QWidget *parent)
    : radio(QString(), parent)
{}

radio::radio(const QString &text, QWidget *parent)
    : QRadioButton(text, parent)
{
    set_sheet();
}

radio::~radio() = default;

void radio::set_sheet()
{
    setStyleSheet(
        QStringLiteral(
            "QRadioButton{spacing:%1px;}"
            "QRadioButton::indicator:enabled:unchecked{image:url(:/gui/radio/unchecked.png);}"
            "QRadioButton::indicator:enabled:checked{image:url(:/gui/radio/checked.png);}"
            "QRadioButton::indicator:!enabled:unchecked"
            "{image:url(:/gui/radio/disabled_unchecked.png);}"
            "QRadioButton::indicator:!enabled:checked{image:url(:/gui/radio/disabled_checked.png);}"
            "QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
            "background-color:rgb(47,47,47);}")
            .arg(spacing));
}

} // namespace vn
