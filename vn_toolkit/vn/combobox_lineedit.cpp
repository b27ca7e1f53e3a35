#include <vn/combobox_lineedit.h>

#include <QTimer>

namespace vn {

combobox_lineedit::combobox_lineedit(QWidget *parent)
    : QLineEdit(parent)
{
    setStyleSheet(QStringLiteral("QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                                 "background-color:rgb(47,47,47);}"));
}

combobox_lineedit::~combobox_lineedit() = default;

void combobox_lineedit::focusInEvent(QFocusEvent *e)
{
    QLineEdit::focusInEvent(e);
    // A mouse focus places the cursor after this handler, which would undo a
    // selection made here; the selection waits for the next event loop pass.
    QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

} // namespace vn
