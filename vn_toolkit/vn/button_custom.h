#pragma once

#include <QPushButton>

#include <functional>

namespace vn {

// A push button painted entirely by its paint callable: without one nothing
// is painted. Drops go to its drop handler as on vn::button_dark.
// GUI thread only.
class button_custom : public QPushButton
{
    Q_OBJECT
    Q_DISABLE_COPY(button_custom)

public:
    using paint_function = std::function<void(QPainter &, button_custom *)>;
    using drop_function = std::function<void(QDropEvent *, button_custom *)>;

    explicit button_custom(QWidget *parent = nullptr);
    button_custom(const QString &text, QWidget *parent = nullptr);
    ~button_custom() override;

    void set_paint(paint_function paint);
    void set_drop_handler(drop_function handler);

protected:
    void paintEvent(QPaintEvent *e) override;
    void dragEnterEvent(QDragEnterEvent *e) override;
    void dropEvent(QDropEvent *e) override;

private:
    paint_function paint_;
    drop_function drop_handler_;
};

} // namespace vn
