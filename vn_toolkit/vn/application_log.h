#pragma once

#include <vn/copy_streambuf.h>

#include <QMap>
#include <QMutex>
#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <sstream>

QT_BEGIN_NAMESPACE
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTextDocument;
class QPlainTextEdit;
class QTextEdit;
class QWidget;
QT_END_NAMESPACE

namespace vn {

// Keeps everything the process writes to std::cout and std::cerr and shows it
// in a log window with a filter, one tab per log, save and clear. One per
// process (create/instance). The streams may be written from any thread; the
// taps copy into `capture` under capture_lock_, and the poll on the GUI thread
// moves it into the window every 100 ms while the window is visible. All else
// is GUI thread only. Text grows without limit for the life of the process.
class application_log : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(application_log)

public:
    // The views are plain-text editors: their layout covers only the lines
    // on screen, so appending to or rebuilding a log of 200,000 lines never
    // lays out the whole text, as a rich-text editor would (seconds).
    struct log_tab
    {
        QString name;
        QPlainTextEdit *view = nullptr;
        QString text; // the whole log of the tab, whatever the filter shows
        int index = -1;
        QTextDocument *full_document = nullptr;     // `text` less `pending`
        QTextDocument *filtered_document = nullptr; // shown while a filter is set
        QString pending;                            // came while filtered; not yet in full_document
    };

    struct log_command
    {
        std::function<void(const QString &)> handler;
        bool hidden = false;
    };

    // Builds the singleton once and taps the streams; later calls do nothing.
    static application_log *create(QObject *parent);
    static application_log *instance();

    ~application_log() override;

    // Registers a command of the filter box; `name` matches case-insensitively.
    void add_command(const QString &name, std::function<void(const QString &)> handler,
                     bool hidden = false);

    // Text shown for `text` under `filter`: the lines that contain the filter,
    // case-insensitively, each with a line feed; `text` itself for an empty filter.
    static QString filtered_text(const QString &text, const QString &filter);

    // The whole log text of tab `name`, empty if there is no such tab.
    QString tab_text(const QString &name) const;
    QWidget *window() const { return window_; }
    QLineEdit *filter_edit() const { return filter_edit_; }
    QTabWidget *tab_widget() const { return tab_widget_; }
    QPlainTextEdit *view(const QString &name) const;

    // Log text in the saved file's format: header, network report, all tabs.
    QString log_file_text() const;
    // Where save_log() writes: the desktop, or the home folder where the
    // desktop folder doesn't exist.
    static QString log_file_name();

public slots:
    void open_log_window();
    // Writes all logs to log_file_name(); the name, or "" after a warning box.
    QString save_log();
    // Empties every tab; `capture` keeps what hasn't arrived yet.
    void clear_logs();
    // Moves `capture` into the window if it is visible.
    void poll();

    Q_INVOKABLE void add_data(const QString &name, const QString &data);

private:
    explicit application_log(QObject *parent);

    void install();
    log_tab &tab(const QString &name);
    void append_to_tab(log_tab &tab, const QString &data);
    void refilter(int index);
    void run_command();
    void on_save_button_clicked();
    void on_clear_button_clicked();
    void on_network_button_clicked();
    static void scroll_to_end(QPlainTextEdit *view);
    static QTextDocument *new_log_document(QPlainTextEdit *view);
    static void append_plain(QTextDocument *document, const QString &data);
    static void show_filtered(log_tab &entry, const QString &filter);

    QWidget *window_ = nullptr;
    QLineEdit *filter_edit_ = nullptr;
    QPushButton *save_button_ = nullptr;
    QPushButton *clear_button_ = nullptr;
    QPushButton *network_button_ = nullptr;
    QTabWidget *tab_widget_ = nullptr;
    QMutex capture_lock_; // taken by the taps and by poll(); never while logging
    std::ostringstream capture_;
    QTimer poll_timer_;
    bool installed_ = false;
    std::unique_ptr<copy_streambuf<char, std::char_traits<char>>> cout_copy_;
    std::unique_ptr<copy_streambuf<char, std::char_traits<char>>> cerr_copy_;
    QMap<QString, log_tab> tabs_;
    std::map<QString, log_command> commands_;
};

} // namespace vn
