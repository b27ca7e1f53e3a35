#include <vn/button_dark_flat.h>

namespace vn {

button_dark_flat::button_dark_flat(QWidget *parent)
    : button_dark_flat(QString(), parent)
{}

button_dark_flat::button_dark_flat(const QString &text, QWidget *parent)
    : button_dark(text, parent)
{
    base_sheet_ = QStringLiteral(
        "QPushButton{color:rgb(146,152,148);border-style:none;border-width:3px;"
        "border-image:url(:/gui/button/blank_normal.png) 3 stretch;font-size:12px;}"
        "QPushButton::hover{color:#d0d0d0;}QToolTip{border:1px solid rgb(99,99,99);"
        "background-image:none;background-color:rgb(47,47,47);color:rgb(228,228,228);"
        "font-size:10px;}");
    checked_sheet_ = QStringLiteral("QPushButton::checked      {color:rgb(228,228,228);}"
                                    "QPushButton::checked:hover{color:rgb(255,255,255);}");
    pressed_sheet_ = QStringLiteral("QPushButton::checked      {color:rgb(228,228,228);}");
    setContentsMargins(0, 0, 0, 0);
    rebuild_sheet();
}

button_dark_flat::~button_dark_flat() = default;

} // namespace vn
