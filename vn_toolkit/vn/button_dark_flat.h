#pragma once

#include <vn/button_dark.h>

namespace vn {

// A vn::button_dark without the raised image: a blank border image, muted
// text that lights up on hover and when checked. Its base sheet has no kind,
// alignment or extra declarations, so only the disabled colour of the text
// colour setters applies. GUI thread only.
class button_dark_flat : public button_dark
{
    Q_OBJECT
    Q_DISABLE_COPY(button_dark_flat)

public:
    explicit button_dark_flat(QWidget *parent = nullptr);
    button_dark_flat(const QString &text, QWidget *parent = nullptr);
    ~button_dark_flat() override;
};

} // namespace vn
