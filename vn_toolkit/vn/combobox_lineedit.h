#pragma once

#include <QLineEdit>

namespace vn {

// Line edit for an editable combo box: entering it by mouse or tab selects
// its whole text, so typing replaces it. GUI thread only.
class combobox_lineedit : public QLineEdit
{
    Q_OBJECT
    Q_DISABLE_COPY(combobox_lineedit)

public:
    explicit combobox_lineedit(QWidget *parent = nullptr);
    ~combobox_lineedit() override;

protected:
    void focusInEvent(QFocusEvent *e) override;
};

} // namespace vn
