#pragma once

#include <vn/button_dark_flat.h>

namespace vn {

// A vn::button_dark_flat drawn as a rounded grey face with a thin border,
// lighter when hovered or checked. GUI thread only.
class button_dark_round : public button_dark_flat
{
    Q_OBJECT
    Q_DISABLE_COPY(button_dark_round)

public:
    explicit button_dark_round(QWidget *parent = nullptr);
    button_dark_round(const QString &text, QWidget *parent = nullptr);
    ~button_dark_round() override;
};

} // namespace vn
