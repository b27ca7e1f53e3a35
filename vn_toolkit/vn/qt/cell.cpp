#include "cell.h"

#include <vn/qt/layout.h>
#include <vn/qt/stylesheet.h>

#include <chrono>
#include <thread>

namespace vn::qt {

namespace {

// Animations run 25 steps a second.
constexpr float steps_per_second = 25;

const char no_background_sheet[] = "background-color:none;background-image:none;";

} // namespace

cell::cell() = default;

cell::cell(QWidget *widget)
    : widget_(widget)
{}

void cell::apply(const keyword_value &keyword)
{
    const auto &n = keyword.numbers;
    switch (keyword.key) {
    case attribute::margin:
        margin_top = float(n[0]);
        margin_right = float(n[1]);
        margin_bottom = float(n[2]);
        margin_left = float(n[3]);
        break;
    case attribute::margin_top:
        margin_top = float(n[0]);
        break;
    case attribute::margin_bottom:
        margin_bottom = float(n[0]);
        break;
    case attribute::margin_left:
        margin_left = float(n[0]);
        break;
    case attribute::margin_right:
        margin_right = float(n[0]);
        break;
    case attribute::padding:
        padding_top = float(n[0]);
        padding_right = float(n[1]);
        padding_bottom = float(n[2]);
        padding_left = float(n[3]);
        break;
    case attribute::padding_top:
        padding_top = float(n[0]);
        break;
    case attribute::padding_bottom:
        padding_bottom = float(n[0]);
        break;
    case attribute::padding_left:
        padding_left = float(n[0]);
        break;
    case attribute::padding_right:
        padding_right = float(n[0]);
        break;
    case attribute::width:
        width = float(n[0]);
        break;
    case attribute::height:
        height = float(n[0]);
        break;
    case attribute::size:
        width = float(n[0]);
        height = float(n[1]);
        if (widget_)
            widget_->setFixedSize(n[0], n[1]);
        break;
    case attribute::style:
        if (widget_)
            stylesheet(widget_->styleSheet() + keyword.text).apply(widget_);
        break;
    case attribute::background_style:
        background_sheet_ += keyword.text;
        if (background_)
            background_->setStyleSheet(background_->styleSheet() + keyword.text);
        break;
    case attribute::no_background:
        background_sheet_ += QLatin1String(no_background_sheet);
        if (background_)
            background_->setStyleSheet(background_->styleSheet() + no_background_sheet);
        break;
    case attribute::row_height:
        row_height = n[0];
        break;
    case attribute::column_width:
        column_width = n[0];
        break;
    case attribute::row_span:
        row_span = n[0];
        break;
    case attribute::column_span:
        column_span = n[0];
        break;
    case attribute::hidden:
        if (widget_)
            widget_->setVisible(false);
        break;
    case attribute::disabled:
        if (widget_)
            widget_->setEnabled(false);
        break;
    case attribute::slot_width:
        slot_width = n[0];
        break;
    case attribute::line_break:
        line_break = true;
        break;
    case attribute::offset_x:
        offset_x = n[0];
        break;
    case attribute::offset_y:
        offset_y = n[0];
        break;
    case attribute::offset:
        offset_x = n[0];
        offset_y = n[1];
        break;
    case attribute::fit_widget:
    case attribute::fit_widget_slot:
        if (!widget_)
            break;
        width = float(widget_->width());
        height = float(widget_->height());
        if (keyword.key == attribute::fit_widget_slot)
            slot_width = widget_->width();
        break;
    }
}

void cell::set_margins(float all)
{
    margin_left = margin_right = margin_top = margin_bottom = all;
}

void cell::set_paddings(float all)
{
    padding_left = padding_right = padding_top = padding_bottom = all;
}

void cell::animate_height(int height, float seconds)
{
    animate(0, height, false, true, seconds, true);
}

void cell::animate_width(int width, float seconds)
{
    animate(width, 0, true, false, seconds, false);
}

void cell::animate_size(int width, int height, float seconds)
{
    animate(width, height, true, true, seconds, false);
}

void cell::animate(int target_width, int target_height, bool step_width_track,
                   bool step_height_track, float seconds, bool repaint)
{
    if (!layout_ || !layout_->parentWidget()) {
        qWarning("%s: Not animating: the cell stands in no layout of a widget.", Q_FUNC_INFO);
        return;
    }
    QWidget *top = layout_->parentWidget();
    while (top->parentWidget())
        top = top->parentWidget();
    const int w = top->width();
    const int h = top->height();
    // The references are fetched anew each time: a vector that grows moves.
    const auto track_width = [this]() -> int & { return layout_->column_width(column); };
    const auto track_height = [this]() -> int & { return layout_->row_height(row); };
    // A one-pixel change of the window is what gets the layouts a new
    // geometry pass past their repeat guard.
    const auto nudge = [top, w, h, repaint] {
        top->resize(w, h + 1);
        top->resize(w, h);
        if (repaint)
            top->repaint();
    };

    const int delta_width = step_width_track ? track_width() - target_width : 0;
    const int delta_height = step_height_track ? track_height() - target_height : 0;
    if ((step_width_track && delta_width == 0) || (step_height_track && delta_height == 0))
        return;

    if (seconds > 0 && seconds * steps_per_second > 0) {
        const int step_width = int(float(delta_width) / seconds / steps_per_second);
        const int step_height = int(float(delta_height) / seconds / steps_per_second);
        const auto passed = [](int value, int target, int delta) {
            return delta > 0 ? value < target : value > target;
        };
        const std::chrono::duration<double> pause(double(seconds) /
                                                  double(seconds * steps_per_second));
        for (int i = 1; i < seconds * steps_per_second; ++i) {
            if (step_width_track)
                track_width() -= step_width;
            if (step_height_track)
                track_height() -= step_height;
            if ((step_width_track && passed(track_width(), target_width, delta_width)) ||
                (step_height_track && passed(track_height(), target_height, delta_height)))
                break;
            nudge();
            std::this_thread::sleep_for(pause); // restarts itself when a signal interrupts it
        }
    }
    if (step_width_track)
        track_width() = target_width;
    if (step_height_track)
        track_height() = target_height;
    nudge();
}

QSize cell::sizeHint() const
{
    return QSize(100, 100);
}

QSize cell::minimumSize() const
{
    return QSize(100, 100);
}

QSize cell::maximumSize() const
{
    return QSize(100, 100);
}

Qt::Orientations cell::expandingDirections() const
{
    return Qt::Horizontal | Qt::Vertical;
}

void cell::setGeometry(const QRect &)
{}

QRect cell::geometry() const
{
    return QRect(0, 0, 100, 100);
}

bool cell::isEmpty() const
{
    return !placeholder && !widget_;
}

QWidget *cell::widget()
{
    return widget_;
}

} // namespace vn::qt
