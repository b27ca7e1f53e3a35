#pragma once

#include "model/camera_clock.h"

#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

namespace vn {
class button_dark;
class combobox;
class lineedit;
} // namespace vn

class table_data_model;

// The cameras of the loaded photos, each with its number of photos, its time
// zone and its clock correction. A correction is typed, or found from a
// reference photo: one of the camera's photos and the time that it shows.
// Every accepted change goes to the model at once, which re-sorts and
// rebuilds the table, and is stored in the settings; there is no "apply"
// step. Input that doesn't read is refused with a message in the dialog and
// the field shows the clock in force again. GUI thread only.
class dialog_cameras : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(dialog_cameras)

    friend class tst_dialog_cameras;

public:
    explicit dialog_cameras(table_data_model *model, QWidget *parent = nullptr);
    ~dialog_cameras() override;

    // A choice from a list, first entry current: (parent, title, label,
    // items, accepted) to the chosen index, -1 when cancelled.
    using choose_function = std::function<int(QWidget *parent, const QString &title,
                                              const QString &label, const QStringList &items)>;
    choose_function choose_item;
    // A line of text: (parent, title, label, start text, accepted) to the text.
    using ask_text_function =
        std::function<QString(QWidget *parent, const QString &title, const QString &label,
                              const QString &text, bool *ok)>;
    ask_text_function ask_text;

    // The name the dialog shows for a camera: "Unknown camera" for "".
    static QString display_name(const QString &camera);

private:
    struct camera_row
    {
        QString camera;
        vn::combobox *zone_box = nullptr;
        vn::lineedit *correction_edit = nullptr;
        vn::button_dark *reference_button = nullptr;
        vn::button_dark *reset_button = nullptr;
    };

    void fill_zones(vn::combobox *box) const;
    void show_clock(const camera_row &row);
    void apply(const camera_row &row, const camera_clock &clock);
    void on_zone_edited(const camera_row &row);
    void on_correction_edited(const camera_row &row);
    void on_reference_clicked(const camera_row &row);
    void refuse(const camera_row &row, const QString &message);
    // Stores a correction within ten years; refuses one beyond.
    void apply_correction(const camera_row &row, qint64 correction_s);

    table_data_model *model_;
    QList<camera_row> rows_;
    QLabel *message_label_ = nullptr;
};
