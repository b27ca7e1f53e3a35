#pragma once

#include <QComboBox>

namespace vn {

// Themed combo box. It ignores the mouse wheel unless told otherwise, so that
// scrolling a page over it doesn't change the choice, and reports a mouse
// release as clicked(). GUI thread only.
class combobox : public QComboBox
{
    Q_OBJECT
    Q_DISABLE_COPY(combobox)

public:
    explicit combobox(QWidget *parent = nullptr);
    ~combobox() override;

    // While set, a wheel event is ignored and goes on to the parent.
    bool ignore_wheel = true;

signals:
    void clicked(); // after a mouse release on the box

protected:
    void mouseReleaseEvent(QMouseEvent *e) override;
    void wheelEvent(QWheelEvent *e) override;
};

} // namespace vn
