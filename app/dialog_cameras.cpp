#include "dialog_cameras.h"

#include "camera_clock_settings.h"
#include "model/photo_time.h"
#include "model/table_data_model.h"

#include <vn/button_dark.h>
#include <vn/combobox.h>
#include <vn/input_dialog.h>
#include <vn/lineedit.h>
#include <vn/panel.h>

#include <QCompleter>
#include <QFileInfo>
#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QTimeZone>
#include <QVBoxLayout>

namespace {

const QString clock_text_format = QStringLiteral("yyyy-MM-dd HH:mm:ss");

// Offsets in use somewhere on earth, for cameras set to a fixed offset.
const int offset_minutes[] = {-720, -660, -600, -570, -540, -480, -420, -360, -300, -240,
                              -210, -180, -120, -60,  0,    60,   120,  180,  210,  240,
                              270,  300,  330,  345,  360,  390,  420,  480,  525,  540,
                              570,  600,  630,  660,  720,  765,  780,  840};

QString offset_zone(int minutes)
{
    const int a = qAbs(minutes);
    return QStringLiteral("UTC%1%2:%3")
        .arg(minutes < 0 ? QLatin1Char('-') : QLatin1Char('+'))
        .arg(a / 60, 2, 10, QLatin1Char('0'))
        .arg(a % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

dialog_cameras::dialog_cameras(table_data_model *model, QWidget *parent)
    : QDialog(parent)
    , model_(model)
{
    choose_item = [](QWidget *dialog_parent, const QString &title, const QString &label,
                     const QStringList &items) {
        bool ok = false;
        const QString chosen =
            vn::input_dialog::get_item(dialog_parent, title, label, items, 0, false, &ok);
        return ok ? int(items.indexOf(chosen)) : -1;
    };
    ask_text = [](QWidget *dialog_parent, const QString &title, const QString &label,
                  const QString &text, bool *ok) {
        return vn::input_dialog::get_text(dialog_parent, title, label, QLineEdit::Normal, text, ok);
    };

    setWindowTitle(tr("Cameras"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setStyleSheet(QStringLiteral("color: rgb(198,213,210)"));

    auto *column = new QVBoxLayout(this);
    column->setSpacing(0);
    column->setContentsMargins(0, 0, 0, 0);

    auto *content = new QWidget;
    auto *grid = new QGridLayout(content);
    grid->setContentsMargins(20, 20, 20, 20);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    const QFont title_font(QStringLiteral("FreeSansBold"), 11, 75);
    const QStringList titles{tr("Camera"), tr("Time zone"), tr("Correction")};
    for (int i = 0; i < titles.size(); ++i) {
        auto *title = new QLabel(titles.at(i), content);
        title->setFont(title_font);
        grid->addWidget(title, 0, i);
    }

    const QMap<QString, int> cameras = model_->cameras();
    for (auto it = cameras.cbegin(); it != cameras.cend(); ++it) {
        const int index = rows_.size();
        const int line = index + 1;
        camera_row row;
        row.camera = it.key();
        const QString count = it.value() == 1 ? tr("1 photo") : tr("%1 photos").arg(it.value());
        auto *name = new QLabel(display_name(it.key()) + QStringLiteral("\n") + count, content);
        name->setWordWrap(true);
        name->setMinimumWidth(200);
        name->setMaximumWidth(280);
        row.zone_box = new vn::combobox(content);
        row.zone_box->setEditable(true);
        row.zone_box->setInsertPolicy(QComboBox::NoInsert);
        row.zone_box->setMinimumWidth(190);
        row.zone_box->setToolTip(tr("The zone of the photos that don't record their own: this "
                                    "computer's zone, a fixed offset or a place"));
        fill_zones(row.zone_box);
        row.correction_edit = new vn::lineedit(content);
        row.correction_edit->setFixedWidth(120);
        row.correction_edit->setToolTip(
            tr("Added to the time of every photo of this camera, e.g. +00:03:00 or -1d 02:00:00"));
        row.reference_button = new vn::button_dark(tr("From a photo..."), content);
        row.reference_button->setToolTip(
            tr("Find the correction from a photo of a clock: type the time that it shows"));
        row.reset_button = new vn::button_dark(tr("Reset"), content);
        row.reset_button->setToolTip(tr("This computer's zone and no correction"));
        for (QWidget *w : {static_cast<QWidget *>(row.reference_button),
                           static_cast<QWidget *>(row.reset_button)})
            w->setFixedHeight(24);
        row.zone_box->setObjectName(QStringLiteral("zone_box_%1").arg(index));
        row.correction_edit->setObjectName(QStringLiteral("correction_edit_%1").arg(index));

        grid->addWidget(name, line, 0);
        grid->addWidget(row.zone_box, line, 1);
        grid->addWidget(row.correction_edit, line, 2);
        grid->addWidget(row.reference_button, line, 3);
        grid->addWidget(row.reset_button, line, 4);
        rows_.append(row);
        show_clock(row);

        connect(row.zone_box, QOverload<int>::of(&QComboBox::activated), this,
                [this, index] { on_zone_edited(rows_.at(index)); });
        connect(row.zone_box->lineEdit(), &QLineEdit::editingFinished, this,
                [this, index] { on_zone_edited(rows_.at(index)); });
        connect(row.correction_edit, &QLineEdit::editingFinished, this,
                [this, index] { on_correction_edited(rows_.at(index)); });
        connect(row.reference_button, &QAbstractButton::clicked, this,
                [this, index] { on_reference_clicked(rows_.at(index)); });
        connect(row.reset_button, &QAbstractButton::clicked, this,
                [this, index] { apply(rows_.at(index), camera_clock()); });
    }
    if (rows_.isEmpty())
        grid->addWidget(new QLabel(tr("Load photos to set the clocks of their cameras."), content),
                        1, 0, 1, 5);
    column->addWidget(new vn::panel(content, this));

    auto *notes = new QWidget;
    auto *notes_column = new QVBoxLayout(notes);
    notes_column->setContentsMargins(20, 12, 20, 12);
    auto *hint = new QLabel(tr("A photo that records its own time zone keeps it; the correction "
                               "is added to every photo of the camera. Changes apply at once "
                               "and are kept for the camera's next photos."),
                            notes);
    hint->setWordWrap(true);
    hint->setStyleSheet(QStringLiteral("color: rgb(146,152,148);"));
    message_label_ = new QLabel(notes);
    message_label_->setObjectName(QStringLiteral("message_label"));
    message_label_->setWordWrap(true);
    message_label_->setStyleSheet(QStringLiteral("color: rgb(236,188,44);"));
    auto *close_row = new QHBoxLayout;
    auto *close_button = new vn::button_dark(tr("Close"), notes);
    close_button->setFixedSize(90, 26);
    close_row->addStretch(1);
    close_row->addWidget(close_button);
    notes_column->addWidget(hint);
    notes_column->addWidget(message_label_);
    notes_column->addLayout(close_row);
    column->addWidget(new vn::panel(notes, this));
    connect(close_button, &QAbstractButton::clicked, this, &QDialog::accept);

    setMinimumWidth(820);
}

dialog_cameras::~dialog_cameras() = default;

QString dialog_cameras::display_name(const QString &camera)
{
    return camera.isEmpty() ? tr("Unknown camera") : camera;
}

void dialog_cameras::fill_zones(vn::combobox *box) const
{
    box->addItem(tr("This computer's zone"), QByteArray());
    for (const int minutes : offset_minutes) {
        const QString zone = offset_zone(minutes);
        box->addItem(zone, zone.toLatin1());
    }
    for (const QByteArray &id : QTimeZone::availableTimeZoneIds()) {
        if (!id.startsWith("UTC"))
            box->addItem(QString::fromLatin1(id), id);
    }
    // Typing "tokyo" or "+05" finds the entries that hold it.
    box->completer()->setCompletionMode(QCompleter::PopupCompletion);
    box->completer()->setFilterMode(Qt::MatchContains);
    box->completer()->setCaseSensitivity(Qt::CaseInsensitive);
}

void dialog_cameras::show_clock(const camera_row &row)
{
    const camera_clock clock = model_->clock_of(row.camera);
    const int index = row.zone_box->findData(clock.zone);
    if (index >= 0)
        row.zone_box->setCurrentIndex(index);
    else
        row.zone_box->setEditText(QString::fromLatin1(clock.zone));
    row.correction_edit->setText(photo_time::correction_text(clock.correction_s));
    row.reset_button->setEnabled(!clock.is_default());
}

void dialog_cameras::apply(const camera_row &row, const camera_clock &clock)
{
    model_->set_camera_clock(row.camera, clock);
    camera_clock_settings::save(row.camera, model_->clock_of(row.camera));
    message_label_->clear();
    show_clock(row);
}

void dialog_cameras::refuse(const camera_row &row, const QString &message)
{
    message_label_->setText(message);
    show_clock(row);
}

void dialog_cameras::on_zone_edited(const camera_row &row)
{
    const QString text = row.zone_box->currentText().trimmed();
    const int index = row.zone_box->findText(text);
    const QByteArray zone =
        index >= 0 ? row.zone_box->itemData(index).toByteArray() : text.toLatin1();
    camera_clock clock = model_->clock_of(row.camera);
    if (zone == clock.zone)
        return;
    // Text that isn't Latin-1 can't be a zone id; toLatin1 would make "?" of it.
    if (!photo_time::is_known_zone(zone) || (index < 0 && QString::fromLatin1(zone) != text)) {
        refuse(row, tr("\"%1\" is not a time zone known here. Choose one from the list, or type "
                       "an offset such as UTC+05:30.")
                        .arg(text));
        return;
    }
    clock.zone = zone;
    apply(row, clock);
}

void dialog_cameras::on_correction_edited(const camera_row &row)
{
    const QString text = row.correction_edit->text();
    const std::optional<qint64> correction = photo_time::read_correction(text);
    if (!correction) {
        refuse(row, tr("Can't read the correction \"%1\". Type it as +00:03:00 (hours, minutes, "
                       "seconds) or -1d 02:00:00 (with days).")
                        .arg(text));
        return;
    }
    if (*correction != model_->clock_of(row.camera).correction_s)
        apply_correction(row, *correction);
}

void dialog_cameras::apply_correction(const camera_row &row, qint64 correction_s)
{
    if (qAbs(correction_s) > photo_time::max_correction_s) {
        refuse(row, tr("A correction of more than ten years is refused."));
        return;
    }
    camera_clock clock = model_->clock_of(row.camera);
    clock.correction_s = correction_s;
    apply(row, clock);
}

void dialog_cameras::on_reference_clicked(const camera_row &row)
{
    const camera_clock clock = model_->clock_of(row.camera);
    const QStringList files = model_->files_of_camera(row.camera);
    QStringList items;
    QList<QDateTime> recorded;
    for (const QString &file : files) {
        // The time as the camera recorded it: without the correction in force.
        recorded << model_->recording_datetime(file).addSecs(-clock.correction_s);
        items << QStringLiteral("%1   %2").arg(QFileInfo(file).fileName(),
                                               recorded.last().toString(clock_text_format));
    }
    const int chosen = choose_item(this, tr("Reference photo"),
                                   tr("Choose a photo of %1 that shows a clock, such as a GPS "
                                      "device's or a phone's screen.")
                                       .arg(display_name(row.camera)),
                                   items);
    if (chosen < 0 || chosen >= files.size())
        return;
    const QDateTime when = recorded.at(chosen);
    // A photo that records its zone was taken by a clock in that zone.
    const QByteArray zone = when.timeSpec() == Qt::OffsetFromUTC
                                ? offset_zone(when.offsetFromUtc() / 60).toLatin1()
                                : clock.zone;
    const QString zone_name =
        zone.isEmpty() ? row.zone_box->itemText(0) : QString::fromLatin1(zone);
    bool ok = false;
    const QString shown =
        ask_text(this, tr("Reference photo"),
                 tr("Type the time that %1 shows, as a clock in the camera's time zone (%2). "
                    "The field starts with the time the camera recorded.")
                     .arg(QFileInfo(files.at(chosen)).fileName(), zone_name),
                 photo_time::to_zone(when, zone).toString(clock_text_format), &ok);
    if (!ok)
        return;
    const std::optional<qint64> correction = photo_time::reference_correction(shown, when, zone);
    if (!correction) {
        refuse(row, tr("Can't read the time \"%1\". Type it as 2021-06-01 14:03:00, or 14:03:00 "
                       "for the photo's day.")
                        .arg(shown));
        return;
    }
    apply_correction(row, *correction);
}
