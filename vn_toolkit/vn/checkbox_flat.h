#pragma once

#include <vn/checkbox.h>

#include <QImage>

namespace vn {

// A check box that paints its own state image, 14 pixels high at the left,
// over the base painting. Without images it looks like a vn::checkbox.
// GUI thread only.
class checkbox_flat : public checkbox
{
    Q_OBJECT
    Q_DISABLE_COPY(checkbox_flat)

public:
    explicit checkbox_flat(QWidget *parent = nullptr);
    checkbox_flat(const QString &text, QWidget *parent = nullptr);
    ~checkbox_flat() override;

    void set_images(const QImage &checked, const QImage &unchecked, const QImage &disabled);

    // The rectangle the state image takes in a widget of the given height:
    // 14 high and as wide as its ratio allows, or 9999 wide for a very wide
    // image; at x 0, centred by integer halves.
    static QRect image_rect(const QSize &image, int widget_height);

protected:
    void paintEvent(QPaintEvent *e) override;

private:
    QImage checked_;
    QImage unchecked_;
    QImage disabled_;
};

} // namespace vn
