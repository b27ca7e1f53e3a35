#pragma once

#include <QString>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QPushButton;
QT_END_NAMESPACE

namespace vn::qt {

class cell;
class layout;

// A panel with a header row (button and header) and a content area that folds
// away. A click on the button animates the height of the row that the fold
// itself stands in, in the vn::qt::layout of its parent, between the height
// the row had and header_height; the animation blocks the GUI thread for
// seconds. Standing in no vn::qt::layout, a click only logs a warning.
//
// Without a button of the caller's, the fold makes one and labels it "fold"
// or "unfold"; a caller's button keeps its text. The content is given the full
// height of the open row, so folding cuts it off rather than squeezing it.
// GUI thread only.
class widget_fold : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(widget_fold)

public:
    widget_fold(QString text, QPushButton *button, double seconds, int header_height);

    vn::qt::layout *header_layout() const { return header_layout_; }
    vn::qt::layout *content_layout() const { return content_layout_; }
    bool closed() const { return closed_; }

signals:
    void folded(bool open); // after each toggle: true once opened, false once closed

private:
    void toggle();
    void synchronise();
    cell *holding_cell() const;

    vn::qt::layout *main_layout_ = nullptr;
    bool own_button_ = false;
    bool closed_ = false;
    int header_height_;
    int open_height_ = 25; // the row's height to go back to, saved at each folding
    vn::qt::layout *header_layout_ = nullptr;
    vn::qt::layout *content_layout_ = nullptr;
    double seconds_;
    QPushButton *button_;
};

} // namespace vn::qt
