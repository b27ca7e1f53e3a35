#pragma once

#include <QComboBox>
#include <QPointer>

#include <functional>

namespace vn {

// A combo box used as a button: painted only by its paint callable, it
// reports a press as clicked() and, instead of a list, shows and hides a
// widget of the caller's (combo_box_widget) just below itself in its window.
// GUI thread only.
class button_combobox : public QComboBox
{
    Q_OBJECT
    Q_DISABLE_COPY(button_combobox)

public:
    // The drop-down panel; a plain widget that a caller fills. It stands in
    // the button's window while shown, and the button deletes it.
    class combo_box_widget : public QWidget
    {
    public:
        using QWidget::QWidget;
    };

    using paint_function = std::function<void(QPainter &, button_combobox *)>;

    explicit button_combobox(QWidget *parent = nullptr);
    ~button_combobox() override;

    combo_box_widget *widget() const { return widget_; }
    void set_paint(paint_function paint);

    void showPopup() override;

    // Set by a caller that opens the popup itself: the next showPopup only
    // clears it and repaints.
    bool popup_pending = false;

signals:
    void clicked(); // on a press, after the base handling

protected:
    void mousePressEvent(QMouseEvent *e) override;
    void paintEvent(QPaintEvent *e) override;

private:
    paint_function paint_;
    QPointer<combo_box_widget> widget_;
};

} // namespace vn
