#include "widget_fold.h"

#include <vn/qt/layout.h>

#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace vn::qt {

widget_fold::widget_fold(QString text, QPushButton *button, double seconds, int header_height)
    : header_height_(header_height)
    , seconds_(seconds)
    , button_(button)
{
    main_layout_ = new vn::qt::layout(2, false);
    if (!button_) {
        button_ = new QPushButton(QStringLiteral("fold"));
        own_button_ = true;
    }
    main_layout_->add(cell(button_, vn::qt::row_height = header_height), [this] { toggle(); });
    const int hint_width = button_->sizeHint().width();
    main_layout_->column_width() = hint_width > 0 ? hint_width - 20 : header_height;

    auto *header = new QWidget;
    header_layout_ = new vn::qt::layout(header, 1, false);
    main_layout_->place(cell(header), 1, 0);
    if (!text.isEmpty())
        header_layout_->add(new QLabel(text));

    auto *content = new QWidget;
    content_layout_ = new vn::qt::layout(content, 1, false);
    main_layout_->add(
        cell(content, vn::qt::margin_top = 0, vn::qt::height = 400, vn::qt::column_span = 2));

    // The holding cell exists only once the caller has added the fold to its
    // layout, after this constructor; the second shot comes after the first
    // round of layout work.
    QTimer::singleShot(0, this, &widget_fold::synchronise);
    QTimer::singleShot(0, this, &widget_fold::synchronise);

    setLayout(main_layout_);
    // A size change is what runs a geometry pass past the repeat guard.
    QWidget *top = window();
    const int w = top->width();
    const int h = top->height();
    top->resize(w, h + 1);
    top->resize(w, h);
    top->repaint();
}

cell *widget_fold::holding_cell() const
{
    const auto it = cells_by_widget.find(const_cast<widget_fold *>(this));
    return it == cells_by_widget.end() ? nullptr : it->second;
}

void widget_fold::synchronise()
{
    cell *holder = holding_cell();
    if (!holder)
        return;
    cell *content = main_layout_->cell_at(0, 1);
    const float open = float(holder->parent_layout()->row_height(holder->row));
    if (!content || content->height == open)
        return;
    content->height = open;
    // The fold's own size stays, so no resize would place the content anew.
    main_layout_->place_now();
}

// Blocks for the length of the animation.
void widget_fold::toggle()
{
    cell *holder = holding_cell();
    if (!holder) {
        qWarning("%s: Not folding: the fold stands in no vn::qt::layout.", Q_FUNC_INFO);
        return;
    }
    closed_ = !closed_;
    int target = open_height_;
    if (closed_) {
        open_height_ = holder->parent_layout()->row_height(holder->row);
        target = header_height_;
        if (own_button_)
            button_->setText(QStringLiteral("unfold"));
    } else if (own_button_) {
        button_->setText(QStringLiteral("fold"));
    }
    holder->animate_height(target, float(seconds_));
    emit folded(!closed_);
}

} // namespace vn::qt
