#pragma once

#include <QLabel>

#include <functional>

namespace vn {

// Themed label whose painting a caller may take over with `paint`. Without
// it the label paints as a QLabel. GUI thread only.
class label : public QLabel
{
    Q_DISABLE_COPY(label)

public:
    explicit label(QWidget *parent = nullptr);
    label(const QString &text, QWidget *parent = nullptr);
    ~label() override;

    std::function<void(QPainter &, label *)> paint;

protected:
    void paintEvent(QPaintEvent *e) override;
};

} // namespace vn
