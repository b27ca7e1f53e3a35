#pragma once

#include <QLabel>

namespace vn {

// A label that acts as a link: clicked() on a left press (not on the
// release), and an underline while the mouse is over it. GUI thread only.
class clickable_label : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY(clickable_label)

public:
    explicit clickable_label(QWidget *parent = nullptr);
    clickable_label(const QString &text, QWidget *parent = nullptr);
    ~clickable_label() override;

    // Keyboard modifiers of the press under way, 0 outside one.
    int press_modifiers() const { return press_modifiers_; }

    bool underline_on_hover = true;

signals:
    void clicked(); // on a left press

protected:
    void mousePressEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void enterEvent(QEvent *e) override;
    void leaveEvent(QEvent *e) override;

private:
    void set_decoration(const QString &decoration);

    int press_modifiers_ = 0;
};

} // namespace vn
