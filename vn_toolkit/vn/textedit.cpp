#include <vn/textedit.h>

namespace vn {

textedit::textedit(QWidget *parent)
    : QTextEdit(parent)
{
    setStyleSheet(QStringLiteral("vn--textedit{background:rgb(38,38,38);color:rgb(198,213,210);"
                                 "border: 1px solid rgb(99,99,99);"
                                 "selection-background-color:rgb(198,213,210);"
                                 "selection-color: #000;}"
                                 "QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}"));
}

textedit::~textedit() = default;

} // namespace vn
