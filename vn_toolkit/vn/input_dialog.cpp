#include "vn/input_dialog.h"

#include <vn/message_box.h>

namespace vn {

namespace {

bool run(QInputDialog &dialog, bool *ok)
{
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (ok)
        *ok = accepted;
    return accepted;
}

} // namespace

void input_dialog::apply_look(QInputDialog &dialog)
{
    dialog.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    dialog.setStyleSheet(
        QStringLiteral("* {background: none;background-color: rgb(47,47,47);border-image: none;"
                       "color: rgb(198,213,210); }") +
        message_box::button_style_sheet() +
        QStringLiteral(
            "QLineEdit { border: 1px solid rgb(99,99,99); background-color: rgb(38,38,38); }"
            "QComboBox {background-color: rgb(36,36,36);border: 1px solid rgb(99,99,99);"
            "selection-background-color: rgb(200,210,200);selection-color: #000;"
            "font-size: 12px;padding-left: 0.2em; }"
            "QComboBox QAbstractItemView {background-color: rgb(36,36,36);"
            "border: 1px solid rgb(99,99,99);selection-background-color: rgb(200,210,200);"
            "selection-color: #000; }"
            "QComboBox QAbstractItemView::item {padding-left: 0.5em; }"
            "QComboBox::drop-down {border-left: 1px solid rgb(99,99,99); }"
            "QComboBox::down-arrow {image: url(:/gui/combobox/arrow.png);width: 20px; }"
            "QToolTip {border: 1px solid rgb(99,99,99);background-image: none;"
            "background-color: rgb(47,47,47); }"
            "QScrollBar:vertical {width: 11px;background: rgb(47,47,47); }"
            "QScrollBar::handle:vertical {background: black;border-radius: 5px;"
            "min-height: 20px; }"
            "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical {height: 0px; }"));
}

QString input_dialog::get_item(QWidget *parent, const QString &title, const QString &label,
                               const QStringList &items, int current, bool editable, bool *ok,
                               Qt::WindowFlags flags, Qt::InputMethodHints hints)
{
    const QString start_text =
        current >= 0 && current < items.size() ? items.at(current) : QString();
    QInputDialog dialog(parent, flags);
    apply_look(dialog);
    dialog.setWindowTitle(title);
    dialog.setLabelText(label);
    dialog.setComboBoxItems(items);
    dialog.setTextValue(start_text);
    dialog.setComboBoxEditable(editable);
    dialog.setInputMethodHints(hints);
    return run(dialog, ok) ? dialog.textValue() : start_text;
}

double input_dialog::get_double(QWidget *parent, const QString &title, const QString &label,
                                double value, double minimum, double maximum, int decimals,
                                bool *ok, Qt::WindowFlags flags)
{
    QInputDialog dialog(parent, flags);
    apply_look(dialog);
    dialog.setWindowTitle(title);
    dialog.setLabelText(label);
    dialog.setInputMode(QInputDialog::DoubleInput);
    dialog.setDoubleDecimals(decimals);
    dialog.setDoubleRange(minimum, maximum);
    dialog.setDoubleValue(value);
    return run(dialog, ok) ? dialog.doubleValue() : value;
}

int input_dialog::get_int(QWidget *parent, const QString &title, const QString &label, int value,
                          int minimum, int maximum, int step, bool *ok, Qt::WindowFlags flags)
{
    QInputDialog dialog(parent, flags);
    apply_look(dialog);
    dialog.setWindowTitle(title);
    dialog.setLabelText(label);
    dialog.setInputMode(QInputDialog::IntInput);
    dialog.setIntRange(minimum, maximum);
    dialog.setIntStep(step);
    dialog.setIntValue(value);
    return run(dialog, ok) ? dialog.intValue() : value;
}

QString input_dialog::get_multi_line_text(QWidget *parent, const QString &title,
                                          const QString &label, const QString &text, bool *ok,
                                          Qt::WindowFlags flags, Qt::InputMethodHints hints)
{
    QInputDialog dialog(parent, flags);
    apply_look(dialog);
    dialog.setWindowTitle(title);
    dialog.setLabelText(label);
    dialog.setOptions(QInputDialog::UsePlainTextEditForTextInput);
    dialog.setTextValue(text);
    dialog.setInputMethodHints(hints);
    return run(dialog, ok) ? dialog.textValue() : QString();
}

QString input_dialog::get_text(QWidget *parent, const QString &title, const QString &label,
                               QLineEdit::EchoMode echo, const QString &text, bool *ok,
                               Qt::WindowFlags flags, Qt::InputMethodHints hints,
                               const QString &ok_text, const QString &cancel_text)
{
    QInputDialog dialog(parent, flags);
    apply_look(dialog);
    dialog.setWindowTitle(title);
    dialog.setLabelText(label);
    dialog.setTextEchoMode(echo);
    dialog.setTextValue(text);
    dialog.setInputMethodHints(hints);
    if (!ok_text.isEmpty())
        dialog.setOkButtonText(ok_text);
    if (!cancel_text.isEmpty())
        dialog.setCancelButtonText(cancel_text);
    return run(dialog, ok) ? dialog.textValue() : QString();
}

} // namespace vn
