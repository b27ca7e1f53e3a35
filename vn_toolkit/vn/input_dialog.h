#pragma once

#include <QInputDialog>
#include <QLineEdit>

namespace vn {

// QInputDialog's static getters in the program's dark look. Each runs a
// nested event loop until the user answers: GUI thread only. `ok`, when given,
// tells whether the dialog was accepted; what a cancel returns is told per getter.
class input_dialog
{
public:
    input_dialog() = delete;

    // Cancel returns the start text: items[current], or "" when `current` is
    // outside the list (the combo box then shows the first item).
    static QString get_item(QWidget *parent, const QString &title, const QString &label,
                            const QStringList &items, int current = 0, bool editable = true,
                            bool *ok = nullptr, Qt::WindowFlags flags = Qt::WindowFlags(),
                            Qt::InputMethodHints hints = Qt::ImhNone);
    // Cancel returns `value`.
    static double get_double(QWidget *parent, const QString &title, const QString &label,
                             double value = 0, double minimum = -2147483647,
                             double maximum = 2147483647, int decimals = 1, bool *ok = nullptr,
                             Qt::WindowFlags flags = Qt::WindowFlags());
    // Cancel returns `value`.
    static int get_int(QWidget *parent, const QString &title, const QString &label, int value = 0,
                       int minimum = -2147483647, int maximum = 2147483647, int step = 1,
                       bool *ok = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    // Cancel returns "".
    static QString get_multi_line_text(QWidget *parent, const QString &title, const QString &label,
                                       const QString &text = QString(), bool *ok = nullptr,
                                       Qt::WindowFlags flags = Qt::WindowFlags(),
                                       Qt::InputMethodHints hints = Qt::ImhNone);
    // Cancel returns "". Non-empty `ok_text` and `cancel_text` relabel the buttons.
    static QString get_text(QWidget *parent, const QString &title, const QString &label,
                            QLineEdit::EchoMode echo = QLineEdit::Normal,
                            const QString &text = QString(), bool *ok = nullptr,
                            Qt::WindowFlags flags = Qt::WindowFlags(),
                            Qt::InputMethodHints hints = Qt::ImhNone,
                            const QString &ok_text = QString(),
                            const QString &cancel_text = QString());

    // The dark look, without context help button.
    static void apply_look(QInputDialog &dialog);
};

} // namespace vn
