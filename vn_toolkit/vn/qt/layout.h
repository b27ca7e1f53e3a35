#pragma once

#include <vn/qt/cell.h>

#include <QLayout>

#include <functional>
#include <map>
#include <set>
#include <vector>

namespace vn::qt {

// A grid of pixel-exact tracks filled by a flow cursor. Each add() puts a copy
// of a cell at the cursor, which then moves along its line (a row, or a column
// when vertical), wraps after wrap cells (0: never) and skips positions that a
// widget or a span already holds. A track is a fixed number of pixels, or 0:
// the 0 tracks share what the parent widget has left in equal parts.
//
// The layout grows only; nothing can be taken out. It places children itself
// with move() and setFixedSize() and never asks them for a size hint. Each
// placed cell has an empty background widget behind its widget. Widgets and
// backgrounds belong to the parent widget; the destructor deletes only
// backgrounds that never got a parent, and takes its cells out of
// cells_by_widget and current_cell.
//
// Adding through the QLayout interface (addItem, addWidget) is a wrong use and
// throws vn::exception. GUI thread only.
class layout : public QLayout
{
    Q_OBJECT
    Q_DISABLE_COPY(layout)

public:
    // layout(2, false): two columns; layout(1, false): a single column.
    layout(QWidget *parent, int wrap, bool vertical);
    layout(int wrap, bool vertical);
    ~layout() override;

    // Places a copy at the cursor and returns the stored cell.
    cell *add(const cell &item);
    // As add(item); clicking the cell's button then sets current_cell to the
    // stored cell and calls on_click.
    cell *add(const cell &item, std::function<void()> on_click);
    QWidget *add(QWidget *widget);
    // Nests sub on a new host widget: add(sub_layout, margin_left = 20).
    template <typename... K> QWidget *add(QLayout *sub, const K &...keywords)
    {
        if (!sub) {
            qWarning("%s: No layout to nest.", Q_FUNC_INFO);
            return nullptr;
        }
        auto *host = new QWidget;
        host->setLayout(sub);
        add(cell(host, keywords...));
        return host;
    }
    // Puts a copy at a fixed position; the cursor stays. Returns the stored
    // cell, or null for a negative position.
    cell *place(const cell &item, int column, int row, bool skip_fill = false);

    // Writable track sizes: layout.add(w); layout.row_height() = 37;
    // Without an index (or a negative one) they refer to the track of the cell
    // placed last; an index past the end grows the tracks with 0 first.
    int &column_width(int index = -1);
    int &row_height(int index = -1);

    cell *cell_at(int column, int row);
    int columns() const { return int(column_widths_.size()); }
    int rows() const { return int(row_heights_.size()); }
    int cursor_column() const { return cursor_column_; }
    int cursor_row() const { return cursor_row_; }
    int last_column() const { return last_column_; }
    int last_row() const { return last_row_; }
    bool vertical() const { return vertical_; }
    int wrap() const { return wrap_; }

    void addItem(QLayoutItem *item) override;
    Qt::Orientations expandingDirections() const override;
    QSize minimumSize() const override;
    // Places every cell in the parent widget's size from its (0, 0); the
    // rectangle is ignored. One size gets five passes at most: further calls
    // return at once until the parent's size changes.
    void setGeometry(const QRect &rect) override;
    // Runs a geometry pass now, past the repeat guard, for a caller that has
    // changed a placed cell while the parent's size stays.
    void place_now();
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    int count() const override;
    QSize sizeHint() const override;

private:
    struct position
    {
        int column;
        int row;
        bool operator<(const position &other) const
        {
            return row != other.row ? row < other.row : column < other.column;
        }
    };

    cell &store(const cell &item, position where);
    void fill();
    void grow_to(position where);
    bool occupied(position where) const;
    void step(position &where) const;
    void adopt(QWidget *child) const;
    void watch(QWidget *widget);

    std::map<position, cell> cells_;
    std::vector<int> row_heights_;
    std::vector<int> column_widths_;
    std::set<QWidget *> watched_;
    int last_column_ = 0;
    int last_row_ = 0;
    int cursor_column_ = 0;
    int cursor_row_ = 0;
    int seen_width_ = -1;
    int seen_height_ = -1;
    int same_size_count_ = 0;
    bool vertical_;
    int wrap_;
};

// The placed cell of each widget, last placement winning. Entries leave when
// their widget or their layout is destroyed.
extern std::map<QWidget *, cell *> cells_by_widget;
// The cell whose button was clicked last through add(item, on_click); null at
// start and once its layout is gone.
extern cell *current_cell;

} // namespace vn::qt
