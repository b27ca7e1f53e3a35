#pragma once

#include <vn/button_toggle.h>

namespace vn {

// A toggle button that shows its state by a background image, image_on while
// checked and image_off otherwise. With latch set a left press only switches
// on; any other press toggles. GUI thread only.
class button_toggle_switch : public button_toggle
{
    Q_OBJECT
    Q_DISABLE_COPY(button_toggle_switch)

public:
    explicit button_toggle_switch(QWidget *parent = nullptr);
    button_toggle_switch(const QString &text, QWidget *parent = nullptr);
    ~button_toggle_switch() override;

    // The sheet for the current state; set only when it differs from the
    // widget's, since setting a sheet repaints.
    QString state_sheet() const;
    void apply_state_sheet();

    QString image_off;
    QString image_on;
    bool latch = false;

protected:
    void mousePressEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
};

} // namespace vn
