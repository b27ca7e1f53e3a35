#include <vn/lineedit.h>

namespace vn {

lineedit::lineedit(QWidget *parent)
    : lineedit(QString(), parent)
{}

lineedit::lineedit(const QString &text, QWidget *parent)
    : QLineEdit(text, parent)
    , border_colour_(99, 99, 99)
{
    setAttribute(Qt::WA_MacShowFocusRect, false);
    set_sheet();
}

lineedit::~lineedit() = default;

void lineedit::set_border_colour(const QColor &colour)
{
    border_colour_ = colour;
    set_sheet();
}

void lineedit::set_sheet()
{
    const QString rgb = QStringLiteral("%1,%2,%3")
                            .arg(border_colour_.red())
                            .arg(border_colour_.green())
                            .arg(border_colour_.blue());
    // Qt's sheets select a namespaced class with "--" for "::".
    setStyleSheet(QStringLiteral("vn--lineedit{    background:rgb(38,38,38);    "
                                 "color:rgb(198,213,210);    border: 1px solid rgb(%1);    "
                                 "selection-background-color:rgb(198,213,210);    "
                                 "selection-color: #000;}vn--lineedit:disabled{    "
                                 "border: 1px solid rgb(75,75,75);    background: rgb(47,47,47);"
                                 "    color: rgb(100,100,100);}QToolTip{border:1px solid "
                                 "rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}")
                      .arg(rgb));
}

} // namespace vn
