#include <vn/button_dark_round.h>

namespace vn {

button_dark_round::button_dark_round(QWidget *parent)
    : button_dark_round(QString(), parent)
{}

button_dark_round::button_dark_round(const QString &text, QWidget *parent)
    : button_dark_flat(text, parent)
{
    base_sheet_ =
        QStringLiteral("QPushButton{color:rgb(146,152,148);border:1px solid rgb(75,75,75);"
                       "background-color:rgb(68,68,68);border-radius:5px;font-size:12px;}"
                       "QPushButton::checked{color:#d0d0d0;border:1px solid rgb(120,120,120);"
                       "background-color:rgb(113,113,113);}"
                       "QPushButton::hover{color:#d0d0d0;border:1px solid rgb(120,120,120);"
                       "background-color:rgb(133,133,133);}"
                       "QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                       "background-color:rgb(47,47,47);color:rgb(228,228,228);font-size:10px;}");
    rebuild_sheet();
}

button_dark_round::~button_dark_round() = default;

} // namespace vn
