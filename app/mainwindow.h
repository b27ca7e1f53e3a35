#pragma once

#include "gps_writer.h"
#include "model/gpx_track.h"
#include "write_journal.h"

#include <vn/exif_tag_map.h>
#include <vn/main_window.h>

#include <QList>
#include <QMap>
#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QButtonGroup;
class QLabel;
class QProgressDialog;
class QTableView;
QT_END_NAMESPACE

namespace vn {
class application_log;
class button_dark;
class checkbox;
class lineedit;
class radio;
namespace qt {
class layout;
}
} // namespace vn

class dialog_settings;
class drop_files_widget;
class map_window;
class table_data_model;

// The program's one window and the owner of all its flows: three bands (head
// bar, action bar, drop area with the two source panels) over the photo table.
// Every way of bringing photos in ends in load_files. A flow (a load, later a
// sync) runs nested in its handler on the GUI thread and feeds the event loop
// without user input; a request that still arrives meanwhile (a drop, a
// file-open event) waits in a queue and is loaded when the flow has ended, so
// no flow ever runs inside another. A close request waits the same way: the
// window closes when the flow has ended, and what waited is not loaded.
// Input that arrives while a flow runs is dropped, not carried out after it.
// The write flows keep their undo record in a journal on disk; at start an
// interrupted write is offered for undoing. A write flow that didn't go
// through cleanly ends in a summary of the files that failed; other failures
// are log lines and rows without a position. GUI thread only.
class MainWindow : public vn::main_window
{
    Q_OBJECT
    Q_DISABLE_COPY(MainWindow)

    friend class tst_mainwindow;
    friend class tst_mainwindow_state;
    friend class tst_flows;
    friend class tst_map_window;

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // The photo file dialog: (parent, caption, folder, filter) to the chosen
    // paths, empty when cancelled. QFileDialog::getOpenFileNames by default;
    // tests put a function here that answers without a dialog.
    using choose_files_function = std::function<QStringList(
        QWidget *parent, const QString &caption, const QString &folder, const QString &filter)>;
    choose_files_function choose_image_files;
    choose_files_function choose_gpx_files;

    // The questions of the write flows: (parent, title, text, yes text, no
    // text, default button) to the button pressed. Empty texts keep the
    // standard labels. A vn::message_box by default; tests answer here.
    using ask_function = std::function<QMessageBox::StandardButton(
        QWidget *parent, const QString &title, const QString &text, const QString &yes_text,
        const QString &no_text, QMessageBox::StandardButton default_button)>;
    ask_function ask_question;
    // A warning with an OK button: (parent, title, text).
    using warn_function =
        std::function<void(QWidget *parent, const QString &title, const QString &text)>;
    warn_function show_warning;
    // A choice from a list, first entry current, not editable: (parent,
    // title, label, items, accepted) to the chosen text.
    using choose_item_function =
        std::function<QString(QWidget *parent, const QString &title, const QString &label,
                              const QStringList &items, bool *ok)>;
    choose_item_function choose_item;
    // The summary of a write flow with failures: (parent, result, undo).
    // A dialog_write_result by default; tests look here.
    using show_result_function =
        std::function<void(QWidget *parent, const gps_writer::result &result, bool undo)>;
    show_result_function show_write_result;

    // Loads what the desktop names (a file-open request, the command line) as
    // a drop would: a folder brings the files directly in it, and whatever
    // isn't an existing plain file is left out.
    void open_paths(const QStringList &paths);

    // The tags that bring `file` back to what it held when it was read.
    static exif_tag_map build_undo_tags(const QString &file);

    // Stores the mode, the two track options and the two folders of the file
    // dialogs at once.
    void save_state();
    // Reads them back, checks the mode's radio and the options and hands
    // them, the date format and the stored camera clocks to the model. Part
    // of construction.
    void restore_state();

protected:
    bool event(QEvent *e) override;
    // While a flow runs the window stays: closed, it would vanish while the
    // flow goes on reading or writing files. It closes when the flow ends.
    void closeEvent(QCloseEvent *e) override;

private slots:
    // Loads photos one at a time into the table; see the class comment for
    // what happens to a call made while a flow runs.
    void load_files(QStringList files);

    void on_load_clicked();
    void on_clear_list_clicked();
    void on_settings_clicked();
    // The cameras of the loaded photos: their zones and clock corrections.
    void on_cameras_clicked();
    // Asks what it must, notes each file's old tags in the journal, writes
    // the previewed positions and empties the table.
    void on_sync_clicked();
    // Writes the journal's record back once, asking nothing.
    void on_undo_clicked();
    // Asks, notes each file's old tags in the journal, removes all GPS data
    // and empties the table.
    void on_remove_gps_clicked();
    // Once, at start (or when the flow then running has ended, and before
    // any write): reads the journal of the last write, says what of it
    // can't be used, and offers to undo a write that was cut off.
    void check_write_journal();
    // Reads track files and hands one of their tracks, or all merged, to the
    // model. Blocks while GPSBabel converts; tells which files gave nothing.
    void on_load_gpx_clicked();
    // Opens the map window, made on first use; says why if Marble can't show one.
    void on_map_clicked();
    void about();

    void update_source_controls();
    void update_max_time_difference();
    void on_gps_position_edited();
    void on_cache_rebuilt(int assigned, int not_assigned, int total_entries);
    void on_mode_clicked(int order, bool checked);
    void show_help();

    // Makes the photo's row current and scrolls it into view.
    void show_photo_row(const QString &file);
    // Puts a position picked on the map into the two fields, in the typed
    // mode only; it then works as if typed.
    void use_map_position(double latitude, double longitude);

private:
    void build_head_bar();
    void build_action_bar();
    void build_drop_area();
    void build_photo_mode_panel();
    void build_position_panel();
    void build_table();
    void build_progress_dialogs();
    void make_connections();
    void make_shortcuts();

    // A flow marks itself running for its length; end_flow hands the loads
    // that arrived meanwhile to the event loop, to run one after another.
    void begin_flow();
    void end_flow();
    void run_pending_loads();
    void run_load(const QStringList &files);
    // Shows sync_progress at 0 of `total`; the returned function moves it on
    // after each file and lets the window repaint, without user input.
    std::function<void(int, int)> start_sync_progress();
    // The question of a write flow whose undo record can't be saved.
    gps_writer::ask_function ask_without_record();
    // Ends the work of a write flow: drops the input that waited, hides the
    // progress and shows the summary when files failed.
    void finish_write_flow(const gps_writer::result &result, bool undo);
    // Enabled while the journal holds something to undo; the tooltip says what.
    void update_undo_button();

    vn::button_dark *settings_button = nullptr;
    vn::button_dark *cameras_button = nullptr;
    vn::button_dark *map_button = nullptr;
    vn::button_dark *about_button = nullptr;
    vn::button_dark *help_button = nullptr;
    vn::button_dark *sync_button = nullptr;
    vn::button_dark *undo_button = nullptr;
    vn::button_dark *clear_button = nullptr;
    vn::button_dark *load_button = nullptr;
    QLabel *warning_label = nullptr;
    vn::radio *previous_radio = nullptr;
    vn::radio *following_radio = nullptr;
    vn::radio *closest_radio = nullptr;
    vn::radio *position_radio = nullptr;
    vn::radio *gpx_radio = nullptr;
    QButtonGroup *mode_group = nullptr;
    vn::lineedit *latitude_edit = nullptr;
    vn::lineedit *longitude_edit = nullptr;
    vn::lineedit *max_time_edit = nullptr;
    vn::lineedit *gpx_max_time_edit = nullptr;
    vn::checkbox *interpolate_check = nullptr;
    vn::checkbox *altitude_check = nullptr;
    vn::button_dark *load_gpx_button = nullptr;
    vn::lineedit *gpx_name_edit = nullptr;
    vn::button_dark *remove_gps_button = nullptr;
    QTableView *table_view = nullptr;
    table_data_model *model = nullptr;
    drop_files_widget *drop_widget = nullptr;
    vn::qt::layout *central_layout = nullptr;
    vn::qt::layout *head_layout = nullptr;
    vn::qt::layout *action_layout = nullptr;
    vn::qt::layout *drop_layout = nullptr;
    vn::qt::layout *photo_mode_layout = nullptr;
    vn::qt::layout *position_layout = nullptr;
    vn::qt::layout *typed_position_layout = nullptr;
    vn::qt::layout *gpx_layout = nullptr;
    vn::qt::layout *table_layout = nullptr;
    QProgressDialog *load_progress = nullptr;
    QProgressDialog *sync_progress = nullptr;
    write_journal journal;
    quint32 sync_order = 0;

    vn::application_log *log = nullptr; // null where no log was created (tests)
    dialog_settings *settings_dialog = nullptr;
    QString last_image_load_path;
    QString last_gpx_load_path;
    // The tracks the model's track stands for: the chosen one, or all tracks
    // of all files loaded together when the merge was chosen.
    QList<gpx_track> chosen_tracks_;

    map_window *map_ = nullptr; // made on the first click of map_button
    bool flow_running_ = false;
    QList<QStringList> pending_loads_;
    bool close_pending_ = false;
    bool journal_checked_ = false;
};
