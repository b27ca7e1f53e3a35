#pragma once

#include <QMessageBox>

namespace vn {

// A QMessageBox in the program's dark look, with static forms that mirror
// QMessageBox's and variants whose button labels are replaced. Every static
// form runs a nested event loop until the user answers: GUI thread only.
// Closing a box without a button (Escape) counts as Cancel when exec() gives -1.
class message_box : public QMessageBox
{
    Q_OBJECT
    Q_DISABLE_COPY(message_box)

public:
    message_box(QMessageBox::Icon icon, const QString &title, const QString &text,
                QMessageBox::StandardButtons buttons, QWidget *parent);
    ~message_box() override;

    static StandardButton information(QWidget *parent, const QString &title, const QString &text,
                                      StandardButtons buttons = Ok,
                                      StandardButton default_button = NoButton);
    static StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                   StandardButtons buttons = StandardButtons(Yes | No),
                                   StandardButton default_button = NoButton);
    static StandardButton warning(QWidget *parent, const QString &title, const QString &text,
                                  StandardButtons buttons = Ok,
                                  StandardButton default_button = NoButton);
    static StandardButton critical(QWidget *parent, const QString &title, const QString &text,
                                   StandardButtons buttons = Ok,
                                   StandardButton default_button = NoButton);

    // Yes and No, labelled with the texts.
    static StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                   const QString &yes_text, const QString &no_text,
                                   StandardButton default_button = NoButton);
    // Yes, No and Cancel.
    static StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                   const QString &yes_text, const QString &no_text,
                                   const QString &cancel_text,
                                   StandardButton default_button = NoButton);
    // Yes, No, Yes to all and No to all.
    static StandardButton question(QWidget *parent, const QString &title, const QString &text,
                                   const QString &yes_text, const QString &no_text,
                                   const QString &yes_all_text, const QString &no_all_text,
                                   StandardButton default_button = NoButton);

    // The picture-button rules shared with the input dialogs.
    static QString button_style_sheet();

    // Adds the buttons of `buttons` in value order, from OK upward. The first
    // one equal to `default_button`, or with `default_button` NoButton the
    // first with the accept role, becomes the default. A default that isn't
    // among `buttons` has no effect. Public so that the rule can be checked
    // without running a box.
    static void add_buttons(QMessageBox &box, StandardButtons buttons,
                            StandardButton default_button);

    // When set, every static form logs its answer at debug level.
    static bool trace;

private:
    static StandardButton run(QMessageBox &box);
    static StandardButton show_box(Icon icon, QWidget *parent, const QString &title,
                                   const QString &text, StandardButtons buttons,
                                   StandardButton default_button,
                                   const QList<QPair<StandardButton, QString>> &labels);
};

} // namespace vn
