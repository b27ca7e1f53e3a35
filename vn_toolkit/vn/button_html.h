#pragma once

#include <vn/button.h>

namespace vn {

// A vn::button whose face is rich text, rendered once into its icon.
// GUI thread only.
class button_html : public button
{
    Q_OBJECT
    Q_DISABLE_COPY(button_html)

public:
    explicit button_html(QWidget *parent = nullptr);
    button_html(const QString &html, QWidget *parent = nullptr);
    ~button_html() override;

    // Lays the html out and makes its picture the button's icon, at the
    // picture's size.
    void set_html(const QString &html);
};

} // namespace vn
