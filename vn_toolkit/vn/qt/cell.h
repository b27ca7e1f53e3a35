#pragma once

#include <vn/qt/keyword.h>

#include <QLayoutItem>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <type_traits>

namespace vn::qt {

class layout;

// One widget of a vn::qt::layout with the attributes that place it in its
// slot. A value type: cells are copied freely, and the layout keeps its own
// copy. The widget is not owned.
//
// Margins below 0 count as not set (0 is set); a width or height that isn't
// positive fills the slot. The background widget is made when the cell is
// placed, not before, so a cell that is never placed leaves nothing behind;
// background_style and no_background given earlier are kept and applied then.
// The QLayoutItem answers are constants: the layout never asks for them.
// GUI thread only.
class cell : public QLayoutItem
{
public:
    cell();
    explicit cell(QWidget *widget);
    // cell(button, size = {27, 27}, margin_top = 5, hidden): keywords apply in
    // order, a later one overriding an earlier one.
    template <typename... K>
    cell(QWidget *widget, const K &...keywords)
        : cell(widget)
    {
        static_assert((std::is_convertible_v<K, keyword_value> && ...),
                      "a keyword that takes a value needs one, e.g. width = 10");
        (apply(keyword_value(keywords)), ...);
    }

    void apply(const keyword_value &keyword);
    void set_margins(float all);
    void set_paddings(float all);

    // The background widget of a placed cell; null before the cell is placed.
    QWidget *background() const { return background_; }
    vn::qt::layout *parent_layout() const { return layout_; }

    // Steps the cell's row (column, both) to the target in steps of 40 ms over
    // seconds, resizing the top-level widget by a pixel and back after each
    // step so that the layouts place their children anew. Blocks the GUI
    // thread for the whole time; no events are handled meanwhile. A step that
    // truncates to 0 leaves the track alone until it jumps to the target at
    // the end. A cell outside a layout, or in one without a widget, logs a
    // warning and does nothing.
    void animate_height(int height, float seconds);
    void animate_width(int width, float seconds);
    void animate_size(int width, int height, float seconds);

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;
    Qt::Orientations expandingDirections() const override;
    void setGeometry(const QRect &rect) override;
    QRect geometry() const override;
    bool isEmpty() const override;
    QWidget *widget() override;
    QWidget *widget() const { return widget_; }

    bool placeholder = false; // covered by another cell's span
    float margin_left = -1;
    float margin_right = -1;
    float margin_top = -1;
    float margin_bottom = -1;
    float padding_left = 0;
    float padding_right = 0;
    float padding_top = 0;
    float padding_bottom = 0;
    float width = -1;
    float height = -1;
    int row_span = 1;
    int column_span = 1;
    int column_width = -1; // track size imposed when added
    int row_height = -1;
    int slot_width = 0; // if positive, the first column counts this wide for this cell
    int offset_x = 0;   // shifts the widget, not the background
    int offset_y = 0;
    bool line_break = false;
    int row = 0;
    int column = 0;

private:
    friend class vn::qt::layout;

    void animate(int target_width, int target_height, bool step_width_track, bool step_height_track,
                 float seconds, bool repaint);

    // QPointer: a widget deleted by its parent must not leave the layout
    // holding a dangling pointer.
    QPointer<QWidget> background_;
    QPointer<QWidget> widget_;
    vn::qt::layout *layout_ = nullptr;
    QString background_sheet_; // applied to the background when it is made
};

} // namespace vn::qt
