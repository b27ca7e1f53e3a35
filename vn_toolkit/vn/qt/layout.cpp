#include "layout.h"

#include <vn/exception.h>

#include <QAbstractButton>
#include <QThread>
#include <QWidget>

#include <algorithm>

namespace vn::qt {

std::map<QWidget *, cell *> cells_by_widget;
cell *current_cell = nullptr;

namespace {

// Where a cell's content lies along one axis of its slot.
struct extent
{
    float start;
    float length;
};

// A margin below 0 is not set. Content that fills its slot loses the set
// margins and both paddings; fixed content is centred without margins, hangs
// on the side of the one margin that is set, and sits at the slot's start when
// both are set.
extent place_in_slot(float origin, float slot, float length, float lead, float trail,
                     float pad_lead, float pad_trail)
{
    const bool lead_set = lead >= 0;
    const bool trail_set = trail >= 0;
    if (length <= 0) {
        float start = origin + (lead_set ? lead : 0);
        float size = slot - (lead_set ? lead : 0) - (trail_set ? trail : 0);
        start += pad_lead;
        size -= pad_lead + pad_trail;
        return {start, size};
    }
    if (!lead_set && !trail_set)
        return {origin + slot * 0.5f - 0.5f * length, length};
    if (!lead_set)
        return {origin + slot - length - trail, length};
    if (!trail_set)
        return {origin + lead, length};
    return {origin, length};
}

int non_negative(float value)
{
    return std::max(0, int(value));
}

} // namespace

layout::layout(QWidget *parent, int wrap, bool vertical)
    : QLayout(parent)
    , vertical_(vertical)
    , wrap_(std::max(0, wrap))
{
    setContentsMargins(0, 0, 0, 0);
}

layout::layout(int wrap, bool vertical)
    : layout(nullptr, wrap, vertical)
{}

layout::~layout()
{
    for (auto &entry : cells_) {
        cell &item = entry.second;
        if (item.background_ && !item.background_->parent())
            delete item.background_.data(); // never placed in a geometry pass
    }
    for (auto it = cells_by_widget.begin(); it != cells_by_widget.end();) {
        if (it->second->layout_ == this)
            it = cells_by_widget.erase(it);
        else
            ++it;
    }
    if (current_cell && current_cell->layout_ == this)
        current_cell = nullptr;
}

cell *layout::add(const cell &item)
{
    adopt(item.widget());
    position where{cursor_column_, cursor_row_};
    while (occupied(where))
        step(where);
    store(item, where);
    fill();
    grow_to(where);
    last_column_ = where.column;
    last_row_ = where.row;
    if (item.column_width >= 1)
        column_widths_[size_t(where.column)] = item.column_width;
    if (item.row_height > 0)
        row_heights_[size_t(where.row)] = item.row_height;

    position next = where;
    if (item.line_break) {
        if (vertical_)
            next = {next.column + 1, 0};
        else
            next = {0, next.row + 1};
    } else {
        step(next);
    }
    while (occupied(next))
        step(next);
    cursor_column_ = next.column;
    cursor_row_ = next.row;
    return cell_at(where.column, where.row);
}

cell *layout::add(const cell &item, std::function<void()> on_click)
{
    cell *stored = add(item);
    auto *button = qobject_cast<QAbstractButton *>(item.widget());
    if (!on_click || !button || !stored)
        return stored;
    const position where{stored->column, stored->row};
    connect(button, &QAbstractButton::clicked, this, [this, where, on_click] {
        current_cell = cell_at(where.column, where.row);
        on_click();
    });
    return stored;
}

QWidget *layout::add(QWidget *widget)
{
    add(cell(widget));
    return widget;
}

cell *layout::place(const cell &item, int column, int row, bool skip_fill)
{
    if (column < 0 || row < 0) {
        qWarning("%s: Not placing a cell at column %d, row %d: positions start at 0.", Q_FUNC_INFO,
                 column, row);
        return nullptr;
    }
    adopt(item.widget());
    const position where{column, row};
    store(item, where);
    if (!skip_fill)
        fill();
    grow_to(where);
    last_column_ = column;
    last_row_ = row;
    return cell_at(column, row);
}

int &layout::column_width(int index)
{
    const size_t i = size_t(index < 0 ? last_column_ : index);
    if (i >= column_widths_.size())
        column_widths_.resize(i + 1, 0);
    return column_widths_[i];
}

int &layout::row_height(int index)
{
    const size_t i = size_t(index < 0 ? last_row_ : index);
    if (i >= row_heights_.size())
        row_heights_.resize(i + 1, 0);
    return row_heights_[i];
}

cell *layout::cell_at(int column, int row)
{
    const auto it = cells_.find(position{column, row});
    return it == cells_.end() ? nullptr : &it->second;
}

cell &layout::store(const cell &item, position where)
{
    // cells_by_widget and current_cell have no lock: the GUI thread alone may touch them
    Q_ASSERT(QThread::currentThread() == thread());
    auto it = cells_.find(where);
    if (it == cells_.end()) {
        it = cells_.emplace(where, item).first;
    } else {
        cell &old = it->second;
        delete old.background_.data();
        if (old.widget_ && old.widget_ != item.widget_) {
            const auto entry = cells_by_widget.find(old.widget_);
            if (entry != cells_by_widget.end() && entry->second == &old)
                cells_by_widget.erase(entry);
        }
        old = item;
    }
    cell &stored = it->second;
    stored.column = where.column;
    stored.row = where.row;
    stored.layout_ = this;
    // Every stored cell gets a background of its own; one the copy may have
    // brought along belongs to another stored cell.
    stored.background_ = new QWidget;
    if (!stored.background_sheet_.isEmpty())
        stored.background_->setStyleSheet(stored.background_sheet_);
    if (stored.widget_) {
        cells_by_widget[stored.widget_] = &stored;
        watch(stored.widget_);
    }
    return stored;
}

void layout::fill()
{
    std::vector<position> covered;
    for (const auto &[where, item] : cells_) {
        for (int r = 0; r < item.row_span; ++r) {
            for (int c = 0; c < item.column_span; ++c) {
                if (r != 0 || c != 0)
                    covered.push_back({where.column + c, where.row + r});
            }
        }
    }
    cell placeholder;
    placeholder.placeholder = true;
    for (const position &where : covered) {
        const auto it = cells_.find(where);
        if (it != cells_.end() && it->second.placeholder)
            continue; // already one: keep it and its background
        place(placeholder, where.column, where.row, true);
    }
    const cell blank;
    for (int r = 0; r < rows(); ++r) {
        for (int c = 0; c < columns(); ++c) {
            if (cells_.find(position{c, r}) == cells_.end())
                place(blank, c, r, true);
        }
    }
}

void layout::grow_to(position where)
{
    if (size_t(where.column) >= column_widths_.size())
        column_widths_.resize(size_t(where.column) + 1, 0);
    if (size_t(where.row) >= row_heights_.size())
        row_heights_.resize(size_t(where.row) + 1, 0);
}

bool layout::occupied(position where) const
{
    const auto it = cells_.find(where);
    return it != cells_.end() && (it->second.placeholder || it->second.widget_);
}

void layout::step(position &where) const
{
    if (vertical_) {
        ++where.row;
        if (wrap_ != 0 && where.row >= wrap_)
            where = {where.column + 1, 0};
    } else {
        ++where.column;
        if (wrap_ != 0 && where.column >= wrap_)
            where = {0, where.row + 1};
    }
}

// Gives child the parent widget, showing it as QLayout does when the parent is
// already on screen. Without a parent widget yet the child keeps its own
// parent: QWidget::setLayout hands the widgets over when the layout is set.
void layout::adopt(QWidget *child) const
{
    QWidget *parent = parentWidget();
    if (!child || !parent || child->parentWidget() == parent)
        return;
    const bool show = parent->isVisible() &&
                      !(child->isHidden() && child->testAttribute(Qt::WA_WState_ExplicitShowHide));
    child->setParent(parent);
    if (show)
        child->show();
}

void layout::watch(QWidget *widget)
{
    if (!watched_.insert(widget).second)
        return;
    connect(widget, &QObject::destroyed, this, [this, widget] {
        watched_.erase(widget);
        const auto entry = cells_by_widget.find(widget);
        if (entry != cells_by_widget.end() && entry->second->layout_ == this)
            cells_by_widget.erase(entry);
    });
}

void layout::addItem(QLayoutItem *item)
{
    delete item; // ours by QLayout's contract; nothing else would free it
    throw vn::exception("This layout works different. Use add() instead.");
}

Qt::Orientations layout::expandingDirections() const
{
    return Qt::Horizontal | Qt::Vertical;
}

QSize layout::minimumSize() const
{
    int w = 0;
    int h = 0;
    for (int c : column_widths_)
        w += c;
    for (int r : row_heights_)
        h += r;
    return QSize(w, h);
}

QSize layout::sizeHint() const
{
    int w = 0;
    int h = 0;
    for (int c : column_widths_)
        w += c == 0 ? 20 : c;
    for (int r : row_heights_)
        h += r == 0 ? 20 : r;
    return QSize(w, h);
}

void layout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    QWidget *parent = parentWidget();
    if (!parent)
        return;
    const int parent_width = parent->width();
    const int parent_height = parent->height();
    // Placing children changes their sizes, which can ask this layout for
    // another pass at the same size; five passes settle every nesting in use.
    if (parent_width == seen_width_ && parent_height == seen_height_) {
        if (same_size_count_ > 3)
            return;
        ++same_size_count_;
    } else {
        same_size_count_ = 0;
    }
    seen_width_ = parent_width;
    seen_height_ = parent_height;

    float free_width = float(parent_width);
    int auto_columns = 0;
    for (int c : column_widths_) {
        free_width -= float(c);
        auto_columns += c == 0 ? 1 : 0;
    }
    float free_height = float(parent_height);
    int auto_rows = 0;
    for (int r : row_heights_) {
        free_height -= float(r);
        auto_rows += r == 0 ? 1 : 0;
    }
    const float auto_width = auto_columns > 0 ? free_width / float(auto_columns) : 0;
    const float auto_height = auto_rows > 0 ? free_height / float(auto_rows) : 0;
    const auto track = [](const std::vector<int> &tracks, int index, float share) {
        if (index < 0 || size_t(index) >= tracks.size())
            return 0.0f;
        const int size = tracks[size_t(index)];
        return size != 0 ? float(size) : share;
    };

    float y = 0;
    for (int r = 0; r < rows(); ++r) {
        float x = 0;
        for (int c = 0; c < columns(); ++c) {
            const auto it = cells_.find(position{c, r});
            if (it == cells_.end())
                continue;
            cell &item = it->second;
            float slot_width = 0;
            for (int i = 0; i < item.column_span; ++i) {
                if (i == 0 && item.slot_width > 0)
                    slot_width += float(item.slot_width);
                else
                    slot_width += track(column_widths_, c + i, auto_width);
            }
            float slot_height = 0;
            for (int i = 0; i < item.row_span; ++i)
                slot_height += track(row_heights_, r + i, auto_height);

            const extent across =
                place_in_slot(x, slot_width, item.width, item.margin_left, item.margin_right,
                              item.padding_left, item.padding_right);
            const extent down =
                place_in_slot(y, slot_height, item.height, item.margin_top, item.margin_bottom,
                              item.padding_top, item.padding_bottom);
            if (item.widget_) {
                item.widget_->move(int(across.start) + item.offset_x,
                                   int(down.start) + item.offset_y);
                item.widget_->setFixedSize(non_negative(across.length), non_negative(down.length));
            }
            if (item.background_) {
                QWidget *background = item.background_;
                background->move(int(across.start - item.padding_left),
                                 int(down.start - item.padding_top));
                background->setFixedSize(
                    non_negative(across.length + item.padding_left + item.padding_right),
                    non_negative(down.length + item.padding_top + item.padding_bottom));
                if (background->parentWidget() != parent) {
                    adopt(background);
                    background->lower();
                }
            }
            if (item.widget_) {
                adopt(item.widget_);
                item.widget_->raise();
                x += slot_width; // a cell without a widget moves x on by nothing
            }
        }
        y += track(row_heights_, r, auto_height);
    }
}

void layout::place_now()
{
    same_size_count_ = 0;
    setGeometry(geometry());
}

QLayoutItem *layout::itemAt(int index) const
{
    if (index < 0)
        return nullptr;
    for (const auto &entry : cells_) {
        const cell &item = entry.second;
        if (!item.placeholder && !item.widget_)
            continue;
        if (index-- == 0)
            return const_cast<cell *>(&item);
    }
    return nullptr;
}

QLayoutItem *layout::takeAt(int)
{
    return nullptr;
}

int layout::count() const
{
    return int(std::count_if(cells_.begin(), cells_.end(), [](const auto &entry) {
        return entry.second.placeholder || entry.second.widget_;
    }));
}

} // namespace vn::qt
