#pragma once

#include <QDialog>

namespace vn {
class combobox;
class datetime_format_selector;
} // namespace vn

// The settings dialog: date and time format, and the language. It has no
// "apply" step: every choice is stored in the default QSettings the moment it
// is made, so closing the dialog in any way keeps it. A new language takes
// effect at the next start. Made once by the main window and reused.
// GUI thread only.
class dialog_settings : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(dialog_settings)

public:
    explicit dialog_settings(QWidget *parent = nullptr);
    ~dialog_settings() override;

    vn::datetime_format_selector *datetime_selector() const { return datetime_selector_; }
    vn::combobox *language_box() const { return language_box_; }

private:
    void on_language_changed();

    vn::combobox *language_box_ = nullptr;
    vn::datetime_format_selector *datetime_selector_ = nullptr;
};
