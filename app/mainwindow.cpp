#include "mainwindow.h"

#include "camera_clock_settings.h"
#include "dialog_cameras.h"
#include "dialog_settings.h"
#include "dialog_write_result.h"
#include "drop_files_widget.h"
#include "gps_tag_maps.h"
#include "gps_writer.h"
#include "gpx_choice.h"
#include "input_discarder.h"
#include "language.h"
#include "map_window.h"
#include "model/exif_cache.h"
#include "model/gps_pos.h"
#include "model/table_data_model.h"
#include "model/track_loader.h"
#include "number_validator.h"
#include "supported_extensions.h"

#include <vn/application_log.h>
#include <vn/button_dark.h>
#include <vn/checkbox.h>
#include <vn/datetime_format_selector.h>
#include <vn/diagnostics.h>
#include <vn/dialog_about.h>
#include <vn/input_dialog.h>
#include <vn/lineedit.h>
#include <vn/message_box.h>
#include <vn/qt/cell.h>
#include <vn/qt/keyword.h>
#include <vn/qt/layout.h>
#include <vn/qt/stylesheet.h>
#include <vn/radio.h>

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileOpenEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QProgressDialog>
#include <QSettings>
#include <QShortcut>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTableView>
#include <QTimer>

#include <memory>
#include <optional>
#include <utility>

namespace kw = vn::qt::keywords;

// Pictures, fonts and help pages live in static libraries, whose resources the
// linker keeps only when something names them; outside any namespace, as the
// macro requires.
static void init_window_resources()
{
    Q_INIT_RESOURCE(loxmere_images);
    Q_INIT_RESOURCE(loxmere_help);
    Q_INIT_RESOURCE(vn_gui);
}

namespace {

// Every icon of the window is a stencil painted in these two colours.
const vn::pixel_argb icon_highlight = 0xFFF0F0F0;
const vn::pixel_argb icon_normal = 0xFF818885;

const QString tooltip_rule = QStringLiteral(
    "QToolTip{border:1px solid rgb(99,99,99);background-image:none;background-color:rgb(47,47,47);"
    "}");
const QString panel_background =
    QStringLiteral("background-color: rgb(47,47,47); border-style:solid; border-width:3px; "
                   "border-image:url(:/gui/panel/border_topless.png) 3 stretch;");

const QString key_last_image_load_path = QStringLiteral("last_image_load_path");
const QString key_last_gpx_load_path = QStringLiteral("last_gpx_load_path");
const QString key_sync_order = QStringLiteral("sync_order");
const QString key_interpolate = QStringLiteral("gpx_interpolate");
const QString key_altitude = QStringLiteral("gpx_altitude");
const quint32 default_sync_order = 2; // closest
constexpr qint64 repaint_interval_ms = 100;

// "12" -> 12; "", "0", "x" -> -1, which the model reads as "no limit".
int minutes_or_no_limit(const QString &text)
{
    bool ok = false;
    const int minutes = text.toInt(&ok, 10);
    return ok && minutes != 0 ? minutes : -1;
}

// A coordinate field's text is read only if it is short, free of control
// characters and holds a digit. The reader takes any other text as 0, so pasted
// prose would move every photo to 0/0, and a line break would reach ExifTool
// inside the value that is written.
constexpr int max_coordinate_chars = 64;

bool is_readable_coordinate(const QString &text)
{
    if (text.size() > max_coordinate_chars)
        return false;
    bool has_digit = false;
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format)
            return false;
        has_digit = has_digit || c.isDigit();
    }
    return has_digit;
}

vn::button_dark *make_icon_button(const QString &tooltip, const QString &icon, QWidget *parent)
{
    auto *button = new vn::button_dark(parent);
    button->setToolTip(tooltip);
    button->set_icon(icon, -1, -1, icon_highlight, icon_normal);
    return button;
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : vn::main_window(parent)
{
    choose_image_files = [](QWidget *dialog_parent, const QString &caption, const QString &folder,
                            const QString &filter) {
        return QFileDialog::getOpenFileNames(dialog_parent, caption, folder, filter);
    };
    choose_gpx_files = [](QWidget *dialog_parent, const QString &caption, const QString &folder,
                          const QString &filter) {
        return QFileDialog::getOpenFileNames(dialog_parent, caption, folder, filter);
    };
    ask_question = [](QWidget *box_parent, const QString &title, const QString &text,
                      const QString &yes_text, const QString &no_text,
                      QMessageBox::StandardButton default_button) {
        if (yes_text.isEmpty() && no_text.isEmpty())
            return vn::message_box::question(box_parent, title, text,
                                             QMessageBox::Yes | QMessageBox::No, default_button);
        return vn::message_box::question(box_parent, title, text, yes_text, no_text,
                                         default_button);
    };
    show_warning = [](QWidget *box_parent, const QString &title, const QString &text) {
        vn::message_box::warning(box_parent, title, text, QMessageBox::Ok, QMessageBox::NoButton);
    };
    choose_item = [](QWidget *dialog_parent, const QString &title, const QString &label,
                     const QStringList &items, bool *ok) {
        return vn::input_dialog::get_item(dialog_parent, title, label, items, 0, false, ok);
    };
    show_write_result = [](QWidget *dialog_parent, const gps_writer::result &result, bool undo) {
        dialog_write_result dialog(result, undo, dialog_parent);
        dialog.exec();
    };

    init_window_resources();
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/images/icon.png")));
    QFontDatabase::addApplicationFont(QStringLiteral(":/images/FreeSans.ttf"));
    QFontDatabase::addApplicationFont(QStringLiteral(":/images/FreeSansBold.ttf"));
    QFont font(QStringLiteral("FreeSans"), 9);
    QApplication::setFont(font);

    resize(925, 600);
    setMinimumSize(925, 600);

    auto *central = new QWidget(this);
    central->setStyleSheet(QStringLiteral("color: rgb(198,213,210);"));
    central_layout = new vn::qt::layout(central, 3, false);
    setCentralWidget(central);

    log = vn::application_log::instance();
    model = new table_data_model(this);
    settings_dialog = new dialog_settings(nullptr);

    build_head_bar();
    build_action_bar();
    build_drop_area();
    build_photo_mode_panel();
    build_position_panel();
    build_table();
    build_progress_dialogs();
    make_connections();
    make_shortcuts();
    restore_state();

    update_max_time_difference();
    model->refresh();
    // Once the window runs: its questions need the event loop.
    QTimer::singleShot(0, this, &MainWindow::check_write_journal);
}

MainWindow::~MainWindow()
{
    delete settings_dialog; // parentless, so that it is a window of its own
}

// ---------------------------------------------------------------- widget tree

void MainWindow::build_head_bar()
{
    head_layout = new vn::qt::layout(5, false);

    settings_button = make_icon_button(tr("Show settings dialog"),
                                       QStringLiteral(":/images/icon_settings.png"), this);
    cameras_button = make_icon_button(tr("Set the time zone and clock correction of each camera"),
                                      QStringLiteral(":/images/icon_cameras.png"), this);
    about_button = make_icon_button(tr("Show information about this program"),
                                    QStringLiteral(":/images/icon_about.png"), this);
    help_button = make_icon_button(tr("Display the help page for this program"),
                                   QStringLiteral(":/images/icon_help.png"), this);
    map_button = make_icon_button(tr("Show the photos and the track on a map (Ctrl+M)"),
                                  QStringLiteral(":/images/icon_map.png"), this);
    settings_button->setObjectName(QStringLiteral("settings_button"));
    cameras_button->setObjectName(QStringLiteral("cameras_button"));
    map_button->setObjectName(QStringLiteral("map_button"));
    about_button->setObjectName(QStringLiteral("about_button"));
    help_button->setObjectName(QStringLiteral("help_button"));

    head_layout->add(vn::qt::cell(settings_button, kw::size = {27, 27}, kw::margin_top = 5,
                                  kw::margin_left = 5));
    head_layout->row_height() = 37;
    head_layout->column_width() = 32;
    head_layout->add(
        vn::qt::cell(cameras_button, kw::size = {27, 27}, kw::margin_top = 5, kw::margin_left = 5));
    head_layout->column_width() = 32;
    head_layout->add(
        vn::qt::cell(map_button, kw::size = {27, 27}, kw::margin_top = 5, kw::margin_left = 5));
    head_layout->add(
        vn::qt::cell(about_button, kw::size = {27, 27}, kw::margin_top = 5, kw::margin_right = 5));
    head_layout->column_width() = 32;
    head_layout->add(
        vn::qt::cell(help_button, kw::size = {27, 27}, kw::margin_top = 5, kw::margin_right = 5));
    head_layout->column_width() = 32;

    central_layout->add(head_layout, kw::column_span = 3, kw::height = 37,
                        kw::background_style = "background-color: rgb(47,47,47);");
    central_layout->row_height() = 37;
}

void MainWindow::build_action_bar()
{
    action_layout = new vn::qt::layout(4, false);

    sync_button = new vn::button_dark(this);
    sync_button->setObjectName(QStringLiteral("sync_button"));
    sync_button->set_kind(QStringLiteral("header"));
    sync_button->set_icon(QStringLiteral(":/images/header_sync.png"), -1, -1, icon_highlight,
                          icon_normal);
    sync_button->setToolTip(
        tr("Change the GPS coordinates on all loaded images to their preview values"));
    sync_button->setEnabled(false);

    undo_button = new vn::button_dark(this);
    undo_button->setObjectName(QStringLiteral("undo_button"));
    undo_button->set_kind(QStringLiteral("header"));
    undo_button->set_icon(QStringLiteral(":/images/header_undo.png"), -1, -1, icon_highlight,
                          icon_normal);
    undo_button->setToolTip(tr("Undo the last edit of an images GPS coordinates"));
    undo_button->setEnabled(false);

    warning_label = new QLabel(this);
    warning_label->setObjectName(QStringLiteral("warning_label"));
    warning_label->setPixmap(QPixmap(QStringLiteral(":/images/warning_yellow.png")));
    warning_label->setFixedSize(47, 41);
    warning_label->setStyleSheet(QStringLiteral("QLabel{background:none;} ") + tooltip_rule);

    auto *logo = new QWidget(this);

    action_layout->add(
        vn::qt::cell(sync_button, kw::size = {119, 46}, kw::margin_left = 300, kw::no_background));
    action_layout->column_width() = 419;
    action_layout->row_height() = 66;
    action_layout->add(
        vn::qt::cell(undo_button, kw::size = {52, 46}, kw::margin_left = 10, kw::no_background));
    action_layout->column_width() = 62;
    action_layout->add(
        vn::qt::cell(warning_label, kw::size = {47, 46}, kw::margin_left = 10, kw::no_background));
    action_layout->add(
        vn::qt::cell(logo, kw::size = {217, 46}, kw::margin_right = 20, kw::no_background,
                     kw::style = "background-image: url(:/images/logo_header.png);"));
    action_layout->column_width() = 237;
    warning_label->setVisible(false);

    central_layout->add(action_layout, kw::column_span = 3, kw::height = 66,
                        kw::background_style =
                            "background-color: rgb(47,47,47); "
                            "background-image: url(:/images/head_medium_dark_without_shadow.png);",
                        kw::style = "background-color: none; background-image: none");
    central_layout->row_height() = 66;
}

void MainWindow::build_drop_area()
{
    drop_widget = new drop_files_widget(this);
    drop_widget->setObjectName(QStringLiteral("drop_widget"));
    drop_widget->setAcceptDrops(true);
    drop_layout = new vn::qt::layout(drop_widget, 2, false);

    clear_button = make_icon_button(tr("Clear the list of loaded files"),
                                    QStringLiteral(":/images/icon_undo.png"), drop_widget);
    clear_button->setObjectName(QStringLiteral("clear_button"));
    load_button = make_icon_button(tr("Load file(s) from disk"),
                                   QStringLiteral(":/images/icon_load.png"), drop_widget);
    load_button->setObjectName(QStringLiteral("load_button"));
    drop_layout->add(
        vn::qt::cell(clear_button, kw::size = {25, 24}, kw::margin_top = 45, kw::margin_right = 5));
    drop_layout->add(
        vn::qt::cell(load_button, kw::size = {25, 24}, kw::margin_top = 45, kw::margin_left = 5));

    const QString background =
        QStringLiteral("background-color: rgb(0,0,0);"
                       "background-image: url(:/images/drop_images_gps_%1.png);"
                       "background-repeat: no-repeat;background-position: center center;"
                       "background-origin: content;")
            .arg(current_language());
    central_layout->add(
        vn::qt::cell(drop_widget, kw::size = {300, 300}, kw::background_style = background));
    central_layout->column_width() = 300;
    central_layout->row_height() = 300;
}

void MainWindow::build_photo_mode_panel()
{
    photo_mode_layout = new vn::qt::layout(1, false);

    mode_group = new QButtonGroup(this);
    auto *grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(10);
    grid->setHorizontalSpacing(20);
    grid->setColumnStretch(1, 1);

    struct mode_row
    {
        vn::radio **radio;
        const char *name;
        QString tooltip;
        QString picture;
    };
    const mode_row rows[] = {
        {&previous_radio, "previous_radio", tr("Obtain data from the previous GPS-Tagged photo"),
         QStringLiteral(":/images/mode_1.png")},
        {&following_radio, "following_radio", tr("Obtain data from the following GPS-Tagged photo"),
         QStringLiteral(":/images/mode_2.png")},
        {&closest_radio, "closest_radio", tr("Obtain data from the closest GPS-Tagged photo"),
         QStringLiteral(":/images/mode_3.png")},
    };
    int row = 0;
    for (const mode_row &entry : rows) {
        auto *radio = new vn::radio(this);
        radio->setObjectName(QLatin1String(entry.name));
        radio->setToolTip(entry.tooltip);
        radio->setStyleSheet(radio->styleSheet() + tooltip_rule);
        *entry.radio = radio;
        auto *picture = new QLabel(this);
        picture->setPixmap(QPixmap(entry.picture));
        picture->setStyleSheet(QStringLiteral("margin-bottom: 13px;"));
        grid->addWidget(radio, row, 0);
        grid->addWidget(picture, row, 1, Qt::AlignLeft | Qt::AlignVCenter);
        ++row;
    }
    previous_radio->setChecked(true);
    auto *time_arrow = new QLabel(this);
    time_arrow->setPixmap(
        QPixmap(QStringLiteral(":/images/time_arrow_%1.png").arg(current_language())));
    time_arrow->setFixedHeight(20);
    grid->addWidget(time_arrow, 3, 1);

    auto *limit_row = new QHBoxLayout;
    limit_row->setContentsMargins(25, 0, 0, 0);
    limit_row->setSpacing(8);
    max_time_edit = new vn::lineedit(this);
    max_time_edit->setObjectName(QStringLiteral("max_time_edit"));
    max_time_edit->setToolTip(tr("If time difference in minutes between two images is greater "
                                 "than this number no GPS position will be assigned"));
    max_time_edit->setFixedWidth(45);
    max_time_edit->setText(QStringLiteral("5"));
    max_time_edit->setValidator(new number_validator(max_time_edit));
    limit_row->addWidget(new QLabel(tr("Max. time diff."), this));
    limit_row->addWidget(max_time_edit);
    limit_row->addWidget(new QLabel(tr("min."), this));
    limit_row->addStretch(1);

    photo_mode_layout->add(grid, kw::margin_left = 25, kw::margin_top = 25, kw::height = 227);
    photo_mode_layout->row_height() = 25 + 227;
    photo_mode_layout->add(limit_row, kw::height = 22, kw::margin_bottom = 15);

    central_layout->add(photo_mode_layout, kw::size = {220, 300},
                        kw::background_style = panel_background);
    central_layout->column_width() = 220;
}

void MainWindow::build_position_panel()
{
    position_layout = new vn::qt::layout(1, false);

    // Typed position: labels, radio and edits, examples.
    typed_position_layout = new vn::qt::layout(3, false);
    position_radio = new vn::radio(this);
    position_radio->setObjectName(QStringLiteral("position_radio"));
    position_radio->setToolTip(tr("Set GPS position of all photos to user specified value"));
    position_radio->setStyleSheet(position_radio->styleSheet() + tooltip_rule);
    latitude_edit = new vn::lineedit(this);
    latitude_edit->setObjectName(QStringLiteral("latitude_edit"));
    longitude_edit = new vn::lineedit(this);
    longitude_edit->setObjectName(QStringLiteral("longitude_edit"));

    typed_position_layout->add(vn::qt::cell());
    typed_position_layout->add(vn::qt::cell(new QLabel(tr("Latitude"), this)));
    typed_position_layout->column_width() = 170;
    typed_position_layout->row_height() = 20;
    typed_position_layout->add(vn::qt::cell(new QLabel(tr("Longitude"), this)));
    typed_position_layout->column_width() = 170;
    typed_position_layout->add(vn::qt::cell(position_radio, kw::size = {13, 13}));
    typed_position_layout->row_height() = 24;
    typed_position_layout->add(vn::qt::cell(latitude_edit, kw::height = 22, kw::margin_right = 10));
    typed_position_layout->add(vn::qt::cell(longitude_edit, kw::height = 22));
    typed_position_layout->add(vn::qt::cell());
    typed_position_layout->row_height() = 45;
    typed_position_layout->add(
        vn::qt::cell(new QLabel(tr("e.g. -19.178194\nor 19°10'41.5\"S"), this),
                     kw::style = "color: rgb(99,99,99);"));
    typed_position_layout->add(vn::qt::cell(new QLabel(tr("e.g. 46.501221\nor 46°30'4.4\"E"), this),
                                            kw::style = "color: rgb(99,99,99);"));

    // GPX source: radio, load button, track name, limit.
    gpx_layout = new vn::qt::layout(3, false);
    gpx_radio = new vn::radio(this);
    gpx_radio->setObjectName(QStringLiteral("gpx_radio"));
    gpx_radio->setStyleSheet(gpx_radio->styleSheet() + tooltip_rule);
    load_gpx_button = new vn::button_dark(this);
    load_gpx_button->setObjectName(QStringLiteral("load_gpx_button"));
    load_gpx_button->setToolTip(tr("Load tracks: GPX, KML, KMZ, FIT, TCX, IGC, NMEA, CSV or PLT "
                                   "files, several at once"));
    load_gpx_button->set_icon(QStringLiteral(":/images/icon_load.png"), -1, -1, icon_highlight,
                              icon_normal);
    gpx_name_edit = new vn::lineedit(this);
    gpx_name_edit->setObjectName(QStringLiteral("gpx_name_edit"));
    gpx_name_edit->setReadOnly(true);
    gpx_max_time_edit = new vn::lineedit(this);
    gpx_max_time_edit->setObjectName(QStringLiteral("gpx_max_time_edit"));
    gpx_max_time_edit->setToolTip(
        tr("If time difference in minutes between the image an the nearest gpx data point is "
           "greater than this number no GPS position will be assigned"));
    gpx_max_time_edit->setFixedWidth(45);
    gpx_max_time_edit->setText(QStringLiteral("5"));
    gpx_max_time_edit->setValidator(new number_validator(gpx_max_time_edit));
    interpolate_check = new vn::checkbox(tr("Interpolate"), this);
    interpolate_check->setObjectName(QStringLiteral("interpolate_check"));
    interpolate_check->setToolTip(
        tr("Place a photo between the two track points before and after it, by time,\ninstead "
           "of on the nearest point. Both points must lie within the time difference."));
    altitude_check = new vn::checkbox(tr("Altitude"), this);
    altitude_check->setObjectName(QStringLiteral("altitude_check"));
    altitude_check->setToolTip(
        tr("Also write the altitude of the track where it has one, below sea level included"));

    gpx_layout->add(vn::qt::cell());
    gpx_layout->column_width() = 47;
    gpx_layout->row_height() = 13;
    gpx_layout->add(vn::qt::cell(new QLabel(tr("Load GPX"), this), kw::column_span = 2));
    gpx_layout->add(vn::qt::cell(gpx_radio, kw::size = {13, 13}));
    gpx_layout->row_height() = 32;
    gpx_layout->add(vn::qt::cell(load_gpx_button, kw::size = {22, 23}, kw::margin_left = 0));
    gpx_layout->column_width() = 32;
    gpx_layout->add(vn::qt::cell(gpx_name_edit, kw::height = 22));
    auto *gpx_limit_row = new QHBoxLayout;
    gpx_limit_row->setContentsMargins(0, 0, 0, 0);
    gpx_limit_row->setSpacing(8);
    gpx_limit_row->addWidget(new QLabel(tr("Max. time diff."), this));
    gpx_limit_row->addWidget(gpx_max_time_edit);
    gpx_limit_row->addWidget(new QLabel(tr("min."), this));
    gpx_limit_row->addStretch(1);
    gpx_limit_row->addWidget(interpolate_check);
    gpx_limit_row->addWidget(altitude_check);
    gpx_layout->add(gpx_limit_row, kw::column_span = 3, kw::height = 22);
    gpx_layout->row_height() = 30;

    remove_gps_button = new vn::button_dark(tr("Remove GPS data from all files"), this);
    remove_gps_button->setObjectName(QStringLiteral("remove_gps_button"));

    position_layout->add(vn::qt::cell());
    position_layout->row_height() = 25;
    position_layout->add(typed_position_layout, kw::margin_left = 20, kw::margin_right = 20);
    position_layout->row_height() = 105;
    position_layout->add(gpx_layout, kw::margin_left = 20, kw::margin_right = 20);
    // The GPX rows take what the others leave: the button row is held to the bottom.
    position_layout->add(vn::qt::cell(remove_gps_button, kw::width = 220, kw::height = 30,
                                      kw::margin_left = 53, kw::margin_bottom = 17));
    position_layout->row_height() = 47;

    central_layout->add(position_layout, kw::height = 300, kw::background_style = panel_background);
}

void MainWindow::build_table()
{
    table_layout = new vn::qt::layout(1, false);

    table_view = new QTableView(this);
    table_view->setObjectName(QStringLiteral("table_view"));
    table_view->setShowGrid(false);
    table_view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table_view->setSortingEnabled(true);
    table_view->setFocusPolicy(Qt::NoFocus);
    table_view->setFrameShape(QFrame::NoFrame);
    table_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_view->setTabKeyNavigation(false);
    table_view->setDropIndicatorShown(false);
    table_view->setAlternatingRowColors(true);
    table_view->setCornerButtonEnabled(false);
    // One row at a time is current: the photo picked on the map.
    table_view->setSelectionMode(QAbstractItemView::SingleSelection);
    table_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_view->verticalHeader()->setVisible(false);
    table_view->setStyleSheet(QStringLiteral(
        "*{  alternate-background-color: rgb(68, 68, 68);  background-color: rgb(38, 38, 38);}"
        "QTableView::item {  padding-left: 1em;  border: 0px;  border-right: 1px solid black;}"
        "QTableView::item:selected {  background-color: rgb(86, 106, 102);"
        "  color: rgb(240, 240, 240);}"));
    table_view->setModel(model);
    table_view->resizeColumnsToContents();
    table_view->horizontalHeader()->setSortIndicator(1, Qt::AscendingOrder);
    QHeaderView *header = table_view->horizontalHeader();
    header->setSectionResizeMode(0, QHeaderView::Fixed);
    header->setSectionResizeMode(1, QHeaderView::Fixed);
    header->setSectionResizeMode(2, QHeaderView::Stretch);
    QStyle *header_style = QStyleFactory::create(QStringLiteral("fusion"));
    header_style->setParent(header);
    header->setStyle(header_style);
    header->setStyleSheet(
        QStringLiteral("QHeaderView::section {border-width: 3;border-style: solid;"
                       "border-image:url(:/gui/panel/border.png) 3 stretch;padding-left: 1em;}"));
    vn::qt::style_scroll_bars(table_view);

    table_layout->add(vn::qt::cell(table_view, kw::margin_left = 0, kw::margin_right = 0));
    central_layout->add(table_layout, kw::column_span = 3);
}

void MainWindow::build_progress_dialogs()
{
    const QString sheet = QStringLiteral(
        "* {    background-color: rgb(47,47,47);    color: rgb(198,213,210);}"
        "QProgressBar {    color: rgb(198,213,210);    background-color: rgb(47,47,47);    "
        "border: 2px solid rgb(55,63,61);    border-radius: 4px;    text-align: center;}"
        "QProgressBar::chunk {    background-color: rgb(91,91,91);    width: 5px}");

    load_progress = new QProgressDialog(this);
    load_progress->setObjectName(QStringLiteral("load_progress"));
    QStyle *load_style = QStyleFactory::create(QStringLiteral("fusion"));
    load_style->setParent(load_progress);
    load_progress->setStyle(load_style);
    // The user can't close it: a load ends when its last file is read.
    load_progress->setWindowFlags(load_progress->windowFlags() ^
                                  (Qt::WindowContextHelpButtonHint | Qt::WindowCloseButtonHint));
    load_progress->setLabelText(tr("Loading files"));
    load_progress->setCancelButton(nullptr);
    load_progress->setMinimumDuration(0);
    load_progress->setMinimum(1);
    load_progress->setFixedSize(load_progress->size());
    load_progress->setStyleSheet(sheet);
    auto *load_bar = new QProgressBar(load_progress);
    load_bar->setFormat(tr("%v of %m"));
    load_progress->setBar(load_bar);
    load_progress->hide();
    load_progress->close();

    sync_progress = new QProgressDialog(this);
    sync_progress->setObjectName(QStringLiteral("sync_progress"));
    QStyle *sync_style = QStyleFactory::create(QStringLiteral("fusion"));
    sync_style->setParent(sync_progress);
    sync_progress->setStyle(sync_style);
    sync_progress->setWindowFlags(sync_progress->windowFlags() ^
                                  (Qt::WindowContextHelpButtonHint | Qt::WindowCloseButtonHint));
    sync_progress->setLabelText(tr("Syncing GPS data"));
    sync_progress->setCancelButton(nullptr);
    sync_progress->setMinimumDuration(0);
    sync_progress->setMinimum(1);
    sync_progress->setFixedSize(sync_progress->size());
    sync_progress->setStyleSheet(sheet);
    auto *sync_bar = new QProgressBar(sync_progress);
    sync_bar->setFormat(tr("%v of %m"));
    sync_progress->setBar(sync_bar);
    sync_progress->hide();
    sync_progress->close();
}

void MainWindow::make_connections()
{
    connect(settings_button, &QAbstractButton::clicked, this, &MainWindow::on_settings_clicked);
    connect(cameras_button, &QAbstractButton::clicked, this, &MainWindow::on_cameras_clicked);
    connect(map_button, &QAbstractButton::clicked, this, &MainWindow::on_map_clicked);
    connect(table_view, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex &index) {
        if (map_ && map_->isVisible())
            map_->center_on(model->files().value(index.row()));
    });
    connect(about_button, &QAbstractButton::clicked, this, &MainWindow::about);
    connect(help_button, &QAbstractButton::clicked, this, &MainWindow::show_help);
    connect(load_button, &QAbstractButton::clicked, this, &MainWindow::on_load_clicked);
    connect(load_gpx_button, &QAbstractButton::clicked, this, &MainWindow::on_load_gpx_clicked);
    connect(clear_button, &QAbstractButton::clicked, this, &MainWindow::on_clear_list_clicked);
    connect(sync_button, &QAbstractButton::clicked, this, &MainWindow::on_sync_clicked);
    connect(undo_button, &QAbstractButton::clicked, this, &MainWindow::on_undo_clicked);
    connect(drop_widget, &drop_files_widget::files_dropped, this, &MainWindow::load_files);
    connect(model, &table_data_model::sort_order_override, table_view->horizontalHeader(),
            &QHeaderView::setSortIndicator);
    connect(model, &table_data_model::cache_rebuilt, this, &MainWindow::on_cache_rebuilt);

    const vn::radio *radios[] = {previous_radio, following_radio, closest_radio, position_radio,
                                 gpx_radio};
    for (int order = 0; order < 5; ++order) {
        mode_group->addButton(const_cast<vn::radio *>(radios[order]), order);
        connect(radios[order], &QAbstractButton::clicked, this,
                [this, order](bool checked) { on_mode_clicked(order, checked); });
    }

    connect(remove_gps_button, &QAbstractButton::clicked, this, &MainWindow::on_remove_gps_clicked);
    connect(latitude_edit, &QLineEdit::textChanged, this, &MainWindow::on_gps_position_edited);
    connect(longitude_edit, &QLineEdit::textChanged, this, &MainWindow::on_gps_position_edited);
    connect(max_time_edit, &QLineEdit::textChanged, this, &MainWindow::update_max_time_difference);
    connect(gpx_max_time_edit, &QLineEdit::textChanged, this,
            &MainWindow::update_max_time_difference);
    connect(interpolate_check, &QAbstractButton::clicked, this, [this](bool checked) {
        model->gps_interpolation_changed(checked);
        save_state();
    });
    connect(altitude_check, &QAbstractButton::clicked, this, [this](bool checked) {
        model->gps_altitude_changed(checked);
        save_state();
    });
}

void MainWindow::make_shortcuts()
{
    // Ctrl+O works whether or not the load button is enabled.
    auto *open = new QShortcut(QKeySequence::Open, this);
    open->setContext(Qt::WindowShortcut);
    connect(open, &QShortcut::activated, load_button, [this] { emit load_button->clicked(); });
    for (const QKeySequence &keys :
         {QKeySequence(Qt::Key_F1), QKeySequence(QStringLiteral("Ctrl+?"))}) {
        auto *help = new QShortcut(keys, this);
        help->setContext(Qt::WindowShortcut);
        connect(help, &QShortcut::activated, help_button, [this] { emit help_button->clicked(); });
    }
    auto *map = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_M), this);
    map->setContext(Qt::WindowShortcut);
    connect(map, &QShortcut::activated, map_button, [this] { emit map_button->clicked(); });
    auto *quit = new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_Q), this);
    quit->setContext(Qt::WindowShortcut);
    connect(quit, &QShortcut::activated, qApp, &QCoreApplication::quit);

    for (const QKeySequence &keys : {QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_L),
                                     QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_R)}) {
        auto *log_keys = new QShortcut(keys, this);
        log_keys->setContext(Qt::WindowShortcut);
        connect(log_keys, &QShortcut::activated, this, [this] {
            if (log)
                log->open_log_window();
        });
    }
    auto *report = new QShortcut(QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_G), this);
    report->setContext(Qt::ApplicationShortcut);
    connect(report, &QShortcut::activated, this,
            [this] { vn::show_application_report(this, QMap<QString, QString>()); });
}

// ----------------------------------------------------------- source controls

void MainWindow::on_mode_clicked(int order, bool checked)
{
    if (checked) {
        model->gps_sync_order_changed(order);
        sync_order = quint32(order);
        save_state();
    }
    update_source_controls();
}

void MainWindow::update_source_controls()
{
    latitude_edit->setEnabled(sync_order == 3);
    longitude_edit->setEnabled(sync_order == 3);
    max_time_edit->setEnabled(sync_order < 3);
    gpx_max_time_edit->setEnabled(sync_order == 4);
    interpolate_check->setEnabled(sync_order == 4);
    altitude_check->setEnabled(sync_order == 4);
    gpx_name_edit->setEnabled(sync_order == 4);
    load_gpx_button->setEnabled(sync_order == 4);
}

void MainWindow::update_max_time_difference()
{
    model->gps_max_time_difference(minutes_or_no_limit(max_time_edit->text()),
                                   minutes_or_no_limit(gpx_max_time_edit->text()));
}

void MainWindow::on_gps_position_edited()
{
    // A position that can't be read or lies out of range keeps the last one.
    const QString latitude = latitude_edit->text();
    const QString longitude = longitude_edit->text();
    // One empty field (blanks don't count) is enough to mean "clear".
    const bool clearing = QString(latitude).remove(QLatin1Char(' ')).isEmpty() ||
                          QString(longitude).remove(QLatin1Char(' ')).isEmpty();
    if (!clearing && (!is_readable_coordinate(latitude) || !is_readable_coordinate(longitude)))
        return;
    const std::optional<gps_pos> position = read_typed_position(latitude, longitude);
    if (position)
        model->gps_set_pos_changed(*position);
}

void MainWindow::on_cache_rebuilt(int assigned, int not_assigned, int total_entries)
{
    warning_label->setVisible(assigned == 0 && not_assigned >= 1 && total_entries != 0);
    warning_label->setToolTip(
        tr("There are no images with assigned GPS coordinate.\n\nIf you are sure the GPS source "
           "belongs to the loaded photos,please consult the manual."));
}

// ------------------------------------------------------------------- loading

bool MainWindow::event(QEvent *e)
{
    if (e->type() != QEvent::FileOpen)
        return QMainWindow::event(e);

    open_paths({static_cast<QFileOpenEvent *>(e)->file()});
    return true;
}

void MainWindow::open_paths(const QStringList &paths)
{
    load_files(drop_files_widget::plain_files(paths));
}

void MainWindow::on_load_clicked()
{
    const QStringList files =
        choose_image_files(this, tr("Select files"), last_image_load_path,
                           supported_files_filter(tr("All supported files ")));
    if (files.isEmpty())
        return;
    last_image_load_path = QFileInfo(files.first()).absolutePath();
    save_state();
    load_files(files);
}

void MainWindow::load_files(QStringList files)
{
    if (flow_running_) {
        // A drop or a file-open request that arrives while a flow feeds the
        // event loop would otherwise start a second flow inside the first.
        pending_loads_.append(files);
        qInfo("%s: A flow is running; %d file(s) will be loaded when it has ended.", Q_FUNC_INFO,
              int(files.size()));
        return;
    }
    begin_flow();
    run_load(files);
    end_flow();
}

void MainWindow::run_load(const QStringList &files)
{
    load_progress->setRange(0, int(files.size()));
    load_progress->setValue(0);
    QCoreApplication::processEvents(); // shows the dialog before the first file blocks

    // Painting the table and the bar after every file cost the GUI thread more
    // than the file's own bookkeeping (1.4 ms a file); ten pictures a second
    // still show every row and count arrive.
    QProgressBar *bar = load_progress->findChild<QProgressBar *>();
    const auto paint = [&](bool enabled) {
        table_view->setUpdatesEnabled(enabled);
        if (bar)
            bar->setUpdatesEnabled(enabled);
    };
    QElapsedTimer since_paint;
    since_paint.start();
    paint(false);

    int count = 0;
    int taken = 0;
    for (const QString &path : files) {
        if (has_supported_extension(path)) {
            // ExifTool would read every file in a folder as if it were this one.
            if (QFileInfo(path).isDir()) {
                qInfo("%s: Skipping a folder: %s", Q_FUNC_INFO, qUtf8Printable(path));
            } else {
                model->add_file(path);
                ++taken;
            }
        }
        const bool show = since_paint.elapsed() >= repaint_interval_ms;
        if (show) {
            paint(true);
            since_paint.restart();
        }
        load_progress->setValue(++count);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50);
        if (show)
            paint(false);
    }
    paint(true);
    model->refresh();
    sync_button->setEnabled(model->rowCount() > 0);

    int positioned = 0;
    for (const cache_entry &entry : model->cache())
        positioned += entry.position.lat.isEmpty() ? 0 : 1;
    qInfo("%s: Took %d of %d file(s); the table holds %d, %d of them with a position.",
          Q_FUNC_INFO, taken, int(files.size()), model->rowCount(), positioned);

    if (map_ && map_->isVisible())
        map_->fit_view();
}

void MainWindow::closeEvent(QCloseEvent *e)
{
    if (!flow_running_) {
        vn::main_window::closeEvent(e);
        return;
    }
    e->ignore();
    close_pending_ = true;
    qInfo("%s: A flow is running; the window closes when it has ended.", Q_FUNC_INFO);
}

void MainWindow::begin_flow()
{
    Q_ASSERT(!flow_running_);
    flow_running_ = true;
}

void MainWindow::end_flow()
{
    input_discarder::discard_pending();
    flow_running_ = false;
    if (!journal_checked_)
        QTimer::singleShot(0, this, &MainWindow::check_write_journal);
    if (close_pending_) {
        close_pending_ = false;
        pending_loads_.clear();
        QTimer::singleShot(0, this, &QWidget::close);
        return;
    }
    if (!pending_loads_.isEmpty())
        QTimer::singleShot(0, this, &MainWindow::run_pending_loads);
}

void MainWindow::run_pending_loads()
{
    if (flow_running_ || pending_loads_.isEmpty())
        return; // the flow now running hands them on when it ends
    QStringList files;
    for (const QStringList &request : qAsConst(pending_loads_))
        files += request;
    pending_loads_.clear();
    load_files(files);
}

void MainWindow::on_clear_list_clicked()
{
    model->clear();
    exif_cache::instance()->clear();
    sync_button->setEnabled(false);
}

// ------------------------------------------------------------------ settings

void MainWindow::on_settings_clicked()
{
    const QString old_language = current_language();
    settings_dialog->exec();
    model->gps_datetime_format_changed(settings_dialog->datetime_selector()->datetime_format());
    confirm_language_change(this, old_language);
}

void MainWindow::on_cameras_clicked()
{
    if (flow_running_)
        return;
    dialog_cameras dialog(model, this);
    dialog.exec();
}

void MainWindow::save_state()
{
    QSettings settings;
    settings.setValue(key_last_image_load_path, last_image_load_path);
    settings.setValue(key_last_gpx_load_path, last_gpx_load_path);
    settings.setValue(key_sync_order, sync_order);
    settings.setValue(key_interpolate, interpolate_check->isChecked());
    settings.setValue(key_altitude, altitude_check->isChecked());
}

void MainWindow::restore_state()
{
    QSettings settings;
    last_image_load_path =
        settings
            .value(key_last_image_load_path,
                   QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
            .toString();
    last_gpx_load_path =
        settings
            .value(key_last_gpx_load_path,
                   QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
            .toString();
    sync_order = settings.value(key_sync_order, default_sync_order).toUInt();

    // An unknown stored mode checks nothing and leaves the first radio checked.
    if (QAbstractButton *radio = mode_group->button(int(sync_order)); radio && sync_order <= 4)
        radio->setChecked(true);
    interpolate_check->setChecked(settings.value(key_interpolate, false).toBool());
    altitude_check->setChecked(settings.value(key_altitude, false).toBool());
    update_source_controls();
    model->gps_interpolation_changed(interpolate_check->isChecked());
    model->gps_altitude_changed(altitude_check->isChecked());
    model->gps_sync_order_changed(int(sync_order));
    model->gps_datetime_format_changed(settings_dialog->datetime_selector()->datetime_format());
    const QHash<QString, camera_clock> clocks = camera_clock_settings::load();
    for (auto it = clocks.cbegin(); it != clocks.cend(); ++it)
        model->set_camera_clock(it.key(), it.value());
}

// ------------------------------------------------------ writing and undoing

exif_tag_map MainWindow::build_undo_tags(const QString &file)
{
    return gps_tag_maps::build_undo_tags(*exif_cache::instance(), file);
}

std::function<void(int, int)> MainWindow::start_sync_progress()
{
    sync_progress->setRange(0, 1);
    sync_progress->setValue(0);
    QCoreApplication::processEvents();
    // A flow reads and writes each file; painting the bar at each of those
    // steps would cost more than the bookkeeping around them, so it is
    // painted ten times a second, as the load does it.
    QProgressBar *bar = sync_progress->findChild<QProgressBar *>();
    auto since_paint = std::make_shared<QElapsedTimer>();
    since_paint->start();
    return [this, bar, since_paint](int done, int total) {
        const bool show = done == total || since_paint->elapsed() >= repaint_interval_ms;
        if (bar)
            bar->setUpdatesEnabled(show);
        sync_progress->setRange(0, total);
        sync_progress->setValue(done);
        if (show) {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50);
            since_paint->restart();
        }
    };
}

gps_writer::ask_function MainWindow::ask_without_record()
{
    return [this](const QString &error) {
        input_discarder::discard_pending();
        sync_progress->hide();
        return ask_question(
                   this, tr("Continue?"),
                   tr("Loxmere can't save its undo record in\n%1\n(%2).\n\nWithout it the "
                      "write can be undone only until Loxmere is closed, and a write that is "
                      "cut off can't be undone at all.")
                       .arg(QDir::toNativeSeparators(QFileInfo(journal.path()).absolutePath()),
                            error),
                   tr("Write without undo record"), tr("Abort"),
                   QMessageBox::No) == QMessageBox::Yes;
    };
}

void MainWindow::finish_write_flow(const gps_writer::result &result, bool undo)
{
    sync_progress->reset();
    update_undo_button();
    // What was clicked during the flow mustn't land in the summary either.
    input_discarder::discard_pending();
    if (!result.failures.isEmpty())
        show_write_result(this, result, undo);
}

void MainWindow::update_undo_button()
{
    const write_journal::record &record = journal.current();
    const int files = write_journal::undoable_count(record);
    undo_button->setEnabled(files > 0);
    QString tooltip = tr("Undo the last edit of an images GPS coordinates");
    if (files > 0) {
        const QString when = QLocale().toString(record.started.toLocalTime(), QLocale::ShortFormat);
        tooltip +=
            QLatin1Char('\n') + (record.kind == QLatin1String("remove")
                                     ? tr("Puts back the GPS data removed on %1 (photos: %2)")
                                     : tr("Puts back the GPS data as it was before the sync "
                                          "of %1 (photos: %2)"))
                                    .arg(when)
                                    .arg(files);
    }
    undo_button->setToolTip(tooltip);
}

void MainWindow::on_sync_clicked()
{
    if (flow_running_ || model->rowCount() == 0)
        return;
    check_write_journal(); // the write replaces the journal

    struct question
    {
        bool asked;
        QString text;
        QString yes_text;
        QString no_text;
    };
    const question questions[] = {
        {!model->all_assigned(),
         tr("Could not assign a GPS position to all files using the current assignment mode"),
         tr("Continue anyway"), tr("Select a different assignment mode")},
        {model->overwrites_gps(),
         tr("Some loaded images already had GPS data which would be overwritten"), tr("Continue"),
         tr("Abort")},
        {model->has_quicktime_gps(),
         tr("QuickTime GPS coordinates are read only and can't be modified or deleted.\nIf you "
            "set GPS tags they will be written into EXIF.\nIn most application the EXIF tag is "
            "preferred over the QuickTime tag."),
         tr("Continue"), tr("Abort")},
    };
    for (const question &q : questions) {
        if (q.asked && ask_question(this, tr("Continue?"), q.text, q.yes_text, q.no_text,
                                    QMessageBox::Yes) != QMessageBox::Yes)
            return;
    }

    begin_flow();
    undo_button->setEnabled(false);
    const gps_writer::result result =
        gps_writer::write_positions(*model, journal, start_sync_progress(), ask_without_record());
    if (!result.stopped) {
        model->clear();
        sync_button->setEnabled(false);
    }
    finish_write_flow(result, false);
    end_flow();
}

void MainWindow::on_undo_clicked()
{
    if (flow_running_)
        return;
    undo_button->setEnabled(false);
    if (write_journal::undoable_count(journal.current()) == 0)
        return; // a progress dialog of no steps would stay open
    begin_flow();
    const gps_writer::result result = gps_writer::undo(journal, start_sync_progress());
    finish_write_flow(result, true);
    end_flow();
}

void MainWindow::on_remove_gps_clicked()
{
    const int rows = model->rowCount();
    if (flow_running_ || rows == 0)
        return;
    check_write_journal(); // the write replaces the journal
    if (ask_question(this, tr("Confirm"),
                     tr("Do you really want to delete all GPS information from all currently "
                        "loaded (%1) images?")
                         .arg(rows),
                     QString(), QString(), QMessageBox::NoButton) != QMessageBox::Yes)
        return;
    if (model->has_quicktime_gps() &&
        ask_question(this, tr("Confirm"),
                     tr("QuickTime GPS coordinates are read only and can't be modified or "
                        "deleted.\nIf you set GPS tags they will be written into EXIF.\nIn "
                        "most application the EXIF tag is preferred over the QuickTime tag."),
                     tr("Continue"), tr("Abort"), QMessageBox::NoButton) != QMessageBox::Yes)
        return;

    begin_flow();
    undo_button->setEnabled(false);
    const gps_writer::result result =
        gps_writer::remove_gps(*model, journal, start_sync_progress(), ask_without_record());
    if (!result.stopped)
        model->clear();
    finish_write_flow(result, false);
    end_flow();
}

void MainWindow::check_write_journal()
{
    if (journal_checked_ || flow_running_)
        return; // end_flow comes back here
    journal_checked_ = true;
    QString problem;
    if (!journal.load(&problem)) {
        if (!problem.isEmpty()) {
            const bool aside = journal.set_aside();
            qWarning("%s: Unusable undo record '%s': %s.", Q_FUNC_INFO,
                     qUtf8Printable(journal.path()), qUtf8Printable(problem));
            show_warning(this, tr("Undo record"),
                         tr("Loxmere found the undo record of an earlier write but can't use "
                            "it: %1.\n\nNo file was changed.%2")
                             .arg(problem, aside ? tr(" The record was set aside as\n%1")
                                                       .arg(QDir::toNativeSeparators(
                                                           journal.path() + ".unusable"))
                                                 : QString()));
        }
        update_undo_button();
        return;
    }
    const write_journal::record &record = journal.current();
    if (!record.problems.isEmpty())
        show_warning(this, tr("Undo record"),
                     tr("Parts of the undo record of the last write can't be used:\n%1\n\n"
                        "Those files won't be written back.")
                         .arg(record.problems.join(QLatin1Char('\n'))));
    const int reached = write_journal::undoable_count(record);
    if (!record.finished && reached == 0) {
        journal.clear(); // cut off before the first file
    } else if (!record.finished) {
        const QString when = QLocale().toString(record.started.toLocalTime(), QLocale::ShortFormat);
        const int files = int(record.entries.size());
        const bool undo =
            ask_question(this, tr("Interrupted write"),
                         tr("Loxmere was closed on %1 in the middle of writing GPS data.\n\n"
                            "Photos it was to write: %2\nPhotos it may have changed: %3\n"
                            "The others were never touched.\n\n"
                            "Undo these changes now, or keep them?")
                             .arg(when)
                             .arg(files)
                             .arg(reached),
                         tr("Undo the changes"), tr("Keep them"),
                         QMessageBox::Yes) == QMessageBox::Yes;
        journal.mark_finished(); // answered: the undo button holds it from now on
        update_undo_button();
        if (undo)
            on_undo_clicked();
    }
    update_undo_button();
}

// ---------------------------------------------------------------- GPX tracks

void MainWindow::on_load_gpx_clicked()
{
    if (flow_running_)
        return;
    const QStringList paths =
        choose_gpx_files(this, tr("Select track files"), last_gpx_load_path,
                         tr("Track files (%1)").arg(track_loader::name_patterns()) +
                             QStringLiteral(";;") + tr("All files (*)"));
    if (paths.isEmpty())
        return;
    // Stored before the files are read, so that a bad file still moves the folder.
    last_gpx_load_path = QFileInfo(paths.first()).absolutePath();
    save_state();

    QStringList failures;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor); // GPSBabel may take a second
    const QList<gpx_track> tracks = track_loader::read_files(paths, &failures);
    QGuiApplication::restoreOverrideCursor();
    if (!failures.isEmpty())
        show_warning(this, tr("Error"),
                     (failures.size() == 1 ? tr("This track file could not be loaded:")
                                           : tr("These track files could not be loaded:")) +
                         QStringLiteral("\n\n") + failures.join(QStringLiteral("\n\n")));
    if (tracks.isEmpty())
        return;
    QList<gpx_track> chosen = tracks;
    gpx_track track = tracks.first();
    if (tracks.size() > 1) {
        bool ok = false;
        const QString label =
            paths.size() - failures.size() == 1
                ? tr("There are multiple tracks inside the selected track file. Please select one.")
                : tr("There are multiple tracks inside the selected track files. Please select "
                     "one.");
        const QString text =
            choose_item(this, tr("Select track"), label, gpx_choice::choice_texts(tracks), &ok);
        if (!ok)
            return;
        std::optional<gpx_track> found = gpx_choice::chosen_track(tracks, text);
        if (!found)
            return;
        track = std::move(*found);
        chosen = gpx_choice::chosen_tracks(tracks, text);
    }
    chosen_tracks_ = chosen;
    if (map_)
        map_->set_tracks(chosen_tracks_);
    gpx_name_edit->setText(track.name);
    model->set_gpx_track(track); // rebuilds the preview
    if (map_ && map_->isVisible())
        map_->fit_view();
}

// ----------------------------------------------------------------------- map

void MainWindow::on_map_clicked()
{
    if (!map_) {
        const QString reason = map_window::unavailable_reason();
        if (!reason.isEmpty()) {
            qWarning("%s: No map: %s", Q_FUNC_INFO, qUtf8Printable(reason));
            show_warning(this, tr("Map"),
                         tr("The map can't be shown. %1\n\nEverything else works without it. "
                            "The map needs Marble's data and plugins (on Debian the packages "
                            "marble-qt-data and marble-plugins).")
                             .arg(reason));
            return;
        }
        map_ = new map_window(model, this);
        connect(map_, &map_window::marker_clicked, this, &MainWindow::show_photo_row);
        connect(map_, &map_window::position_picked, this, &MainWindow::use_map_position);
        map_->set_tracks(chosen_tracks_);
    }
    map_->show();
    map_->raise();
    map_->activateWindow();
}

void MainWindow::show_photo_row(const QString &file)
{
    const int row = model->files().indexOf(file);
    if (row < 0)
        return;
    table_view->selectRow(row);
    table_view->scrollTo(model->index(row, 0), QAbstractItemView::PositionAtCenter);
}

void MainWindow::use_map_position(double latitude, double longitude)
{
    if (sync_order != quint32(sync_mode::sync_user_position))
        return;
    latitude_edit->setText(QString::number(latitude, 'f', 6));
    longitude_edit->setText(QString::number(longitude, 'f', 6));
}

// Runs the About box modally; it is made anew at each click and gone after.
void MainWindow::about()
{
    vn::dialog_about dialog(
        this, true, QStringLiteral("#logobg{ background-image:url(:/images/Head.png);}"), 97, 10);
    dialog.default_3rdparty_libs(true, false);
    dialog.show_centred(this);
}

void MainWindow::show_help()
{
    show_help_page(QStringLiteral(":/help/index_%1.html"));
}
