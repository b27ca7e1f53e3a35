#pragma once

#include <QPushButton>
#include <QRect>

namespace vn {

// A push button that shows each click by a light frame for 200 ms. Without a
// highlight rect the frame is a 2-pixel border that takes the place of a
// 2-pixel margin in the sheet, so the button doesn't shift; with one, a
// frame of that rect is painted. A click is reported on the release, without
// the base class's release handling. Takes no keyboard focus. GUI thread
// only.
class button : public QPushButton
{
    Q_OBJECT
    Q_DISABLE_COPY(button)

public:
    explicit button(const QString &text, QWidget *parent = nullptr);
    // rect in the button's coordinates; the frame is drawn 4 pixels inside
    // its top left and 1 pixel beyond its bottom right.
    button(QWidget *parent, const QRect &rect);
    ~button() override;

    bool highlighted() const { return highlighted_; }
    QRect highlight_rect() const { return highlight_rect_; }

    static constexpr int highlight_ms = 200;

public slots:
    void deaktivate_highlight(); // ends the highlight of the last click

protected:
    void mouseReleaseEvent(QMouseEvent *e) override;
    void paintEvent(QPaintEvent *e) override;

private:
    bool highlighted_ = false;
    QRect highlight_rect_;
};

} // namespace vn
