#pragma once

#include <QWidget>

namespace vn {

// A frame drawn by a 3-pixel border image around one content widget, which
// the panel takes over. The topless form leaves the top edge open, for a
// panel that hangs below a header. GUI thread only.
class panel : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(panel)

public:
    explicit panel(QWidget *content, QWidget *parent = nullptr, bool topless = false);
    ~panel() override;

    QWidget *content() const { return content_; }

private:
    QWidget *content_;
};

} // namespace vn
