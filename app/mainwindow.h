#pragma once

#include "model/gpx_track.h"

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
// Nothing here shows an error: failures are log lines and rows without a
// position. GUI thread only.
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

    // The tags that bring `file` back to what it held when it was read.
    static exif_tag_map build_undo_tags(const QString &file);

    // Stores the mode and the two folders of the file dialogs at once.
    void save_state();
    // Reads them back, checks the mode's radio and hands mode and date format
    // to the model. Part of construction.
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
    // Asks what it must, notes each file's old tags in undo_tags, writes the
    // previewed positions and empties the table.
    void on_sync_clicked();
    // Writes undo_tags back once, asking nothing.
    void on_undo_clicked();
    // Asks, notes each file's old tags in undo_tags, removes all GPS data
    // and empties the table.
    void on_remove_gps_clicked();
    // Reads a GPX file and hands one of its tracks, or all merged, to the model.
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
    std::function<void(int)> start_sync_progress(int total);

    vn::button_dark *settings_button = nullptr;
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
    QMap<QString, exif_tag_map> undo_tags;
    quint32 sync_order = 0;

    vn::application_log *log = nullptr; // null where no log was created (tests)
    dialog_settings *settings_dialog = nullptr;
    QString last_image_load_path;
    QString last_gpx_load_path;

    map_window *map_ = nullptr; // made on the first click of map_button
    // The tracks that the chosen GPX entry stands for: the one track, or each
    // track of the file when all were merged. The map draws them.
    QList<gpx_track> chosen_tracks_;

    bool flow_running_ = false;
    QList<QStringList> pending_loads_;
    bool close_pending_ = false;
};
