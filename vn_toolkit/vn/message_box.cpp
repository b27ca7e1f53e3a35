#include "vn/message_box.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>

namespace vn {

bool message_box::trace = false;

namespace {

const char *const icon_label_sheet =
    "background: none; background-color: rgb(47,47,47); color: rgb(184,196,191);";

} // namespace

QString message_box::button_style_sheet()
{
    return QStringLiteral(
        "QAbstractButton {padding-left: 0.5em;padding-right: 0.5em;padding-top: 0.5ex;"
        "padding-bottom: 0.25ex;border-width:3px;border-style: none;"
        "border-image: url(:/gui/button/dark_normal.png) 3 stretch; }"
        "QAbstractButton::pressed {padding-left: 0.5em;padding-right: 0.5em;padding-top: 0.5ex;"
        "padding-bottom: 0.25ex;border-width:3px;border-style: none;"
        "border-image: url(:/gui/button/dark_pressed.png) 3 stretch; }"
        "QAbstractButton::hover {color: #f0f0f0; }"
        "QAbstractButton::disabled {color: rgba(129,136,133,50%); }");
}

message_box::message_box(QMessageBox::Icon icon, const QString &title, const QString &text,
                         QMessageBox::StandardButtons buttons, QWidget *parent)
    : QMessageBox(icon, title, text, buttons, parent, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint)
{
    setStyleSheet(QStringLiteral("* {background-color: rgb(47,47,47);color: rgb(198,213,210); }") +
                  button_style_sheet());
}

message_box::~message_box() = default;

void message_box::add_buttons(QMessageBox &box, StandardButtons buttons,
                              StandardButton default_button)
{
    if (auto *icon_label = box.findChild<QLabel *>(QStringLiteral("qt_msgboxex_icon_label")))
        icon_label->setStyleSheet(QString::fromLatin1(icon_label_sheet));
    auto *button_box = box.findChild<QDialogButtonBox *>();

    bool has_default = false;
    unsigned value = Ok;
    for (int i = 0; i < 18; ++i, value <<= 1) {
        const auto standard = StandardButton(value);
        if (!buttons.testFlag(standard))
            continue;
        QPushButton *button = box.addButton(standard);
        if (has_default || !button)
            continue;
        const bool accepts =
            button_box && button_box->buttonRole(button) == QDialogButtonBox::AcceptRole;
        if (standard == default_button || (default_button == NoButton && accepts)) {
            box.setDefaultButton(button);
            has_default = true;
        }
    }
}

QMessageBox::StandardButton message_box::run(QMessageBox &box)
{
    const int result = box.exec();
    QAbstractButton *clicked = box.clickedButton();
    if (trace) {
        const QString answer =
            result == -1 || !clicked ? QStringLiteral("Cancel") : clicked->text();
        qDebug("MessageBox \"%s\" \"%s\": %s", qUtf8Printable(box.windowTitle()),
               qUtf8Printable(box.text()), qUtf8Printable(answer));
    }
    if (result == -1)
        return Cancel;
    if (clicked)
        return box.standardButton(clicked);
    return StandardButton(result);
}

QMessageBox::StandardButton
message_box::show_box(Icon icon, QWidget *parent, const QString &title, const QString &text,
                      StandardButtons buttons, StandardButton default_button,
                      const QList<QPair<StandardButton, QString>> &labels)
{
    message_box box(icon, title, text, NoButton, parent);
    add_buttons(box, buttons, default_button);
    for (const auto &label : labels) {
        if (QAbstractButton *button = box.button(label.first))
            button->setText(label.second);
    }
    return run(box);
}

QMessageBox::StandardButton message_box::information(QWidget *parent, const QString &title,
                                                     const QString &text, StandardButtons buttons,
                                                     StandardButton default_button)
{
    return show_box(Information, parent, title, text, buttons, default_button, {});
}

QMessageBox::StandardButton message_box::question(QWidget *parent, const QString &title,
                                                  const QString &text, StandardButtons buttons,
                                                  StandardButton default_button)
{
    return show_box(Question, parent, title, text, buttons, default_button, {});
}

QMessageBox::StandardButton message_box::warning(QWidget *parent, const QString &title,
                                                 const QString &text, StandardButtons buttons,
                                                 StandardButton default_button)
{
    return show_box(Warning, parent, title, text, buttons, default_button, {});
}

QMessageBox::StandardButton message_box::critical(QWidget *parent, const QString &title,
                                                  const QString &text, StandardButtons buttons,
                                                  StandardButton default_button)
{
    return show_box(Critical, parent, title, text, buttons, default_button, {});
}

QMessageBox::StandardButton message_box::question(QWidget *parent, const QString &title,
                                                  const QString &text, const QString &yes_text,
                                                  const QString &no_text,
                                                  StandardButton default_button)
{
    return show_box(Question, parent, title, text, Yes | No, default_button,
                    {{Yes, yes_text}, {No, no_text}});
}

QMessageBox::StandardButton message_box::question(QWidget *parent, const QString &title,
                                                  const QString &text, const QString &yes_text,
                                                  const QString &no_text,
                                                  const QString &cancel_text,
                                                  StandardButton default_button)
{
    return show_box(Question, parent, title, text, Yes | No | Cancel, default_button,
                    {{Yes, yes_text}, {No, no_text}, {Cancel, cancel_text}});
}

QMessageBox::StandardButton
message_box::question(QWidget *parent, const QString &title, const QString &text,
                      const QString &yes_text, const QString &no_text, const QString &yes_all_text,
                      const QString &no_all_text, StandardButton default_button)
{
    return show_box(
        Question, parent, title, text, Yes | No | YesToAll | NoToAll, default_button,
        {{Yes, yes_text}, {No, no_text}, {YesToAll, yes_all_text}, {NoToAll, no_all_text}});
}

} // namespace vn
