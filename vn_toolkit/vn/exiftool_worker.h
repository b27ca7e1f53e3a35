#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QObject>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QProcess;
QT_END_NAMESPACE

namespace vn {

class exif_response;

// One command for the ExifTool process: the bytes to send and the response
// that receives the reply. The response is not owned here.
struct exif_task
{
    exif_response *response = nullptr;
    QByteArray data;
    qint32 id = 0;
};

// Owns the one ExifTool process and speaks its stay-open protocol, one command
// at a time. Lives on its own thread and is touched only there, so it has no
// lock. A command that gets no reply leaves its response open until the caller
// gives up and calls abandon(), which stops the process; a process that ends
// fails the open responses at once, and the next task starts a new process.
class exiftool_worker : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(exiftool_worker)

public:
    exiftool_worker();
    ~exiftool_worker() override;

    // Sends text to the process, at most 11 write attempts. Worker thread.
    bool write(const QString &text);

    // "\n-execute7\n" for id 7.
    static QByteArray execute_line(qint32 id);
    // "{ready7}\n" for id 7; on Windows "{ready7}\r\n", as ExifTool ends its
    // lines there and the process is opened without the Text flag.
    static QByteArray marker_for(qint32 id);
    // "-echo4\n{errors7}\n" for id 7: makes ExifTool write "{errors7}" to its
    // standard error once the command is through, before the marker.
    static QByteArray errors_request(qint32 id);
    // "{errors7}\n" for id 7, "{errors7}\r\n" on Windows, as marker_for.
    static QByteArray errors_marker_for(qint32 id);
    // Program path: the folder of the running executable, then "exiftool"
    // ("exiftool.exe" on Windows). Looked for nowhere else.
    static QString program_path();
    static QStringList arguments();
    // What one read of standard error puts in the log: the text without the
    // line ends that close it, so that the closing quote stays on its line.
    // Line breaks inside the text stay.
    static QByteArray error_text(const QByteArray &text);

private slots:
    bool send_restart();
    void read_output();
    void execute_task();
    void read_errors();
    void process_ended();

public slots:
    // Blocking: waits up to 2000 ms for the process to start. Worker thread.
    bool start();
    // Blocking: up to about 5 s of close commands, termination requests and
    // a kill. True when the process no longer runs. Worker thread.
    bool shutdown();
    void add_task(exif_response *response, QByteArray data);
    // For a command that got no reply in time. Blocking: stops the process
    // the safe way (the close command, then an interrupt, which ExifTool
    // holds back while it copies a written file in place, then a kill),
    // about 8 s at most, and fails the open commands. The next task starts a
    // new process. True when the process no longer runs. Worker thread.
    bool abandon();
    void verbose(bool value);
    void verbose();

private:
    void fail_open_tasks(const char *reason);
    void complete_head_task();
    void reset_command_state();

    QProcess *process_;
    QIODevice::OpenMode restart_open_mode_;
    bool verbose_flag_ = false;
    QList<exif_task> queue_;
    bool busy_ = false;
    QByteArray marker_;
    QByteArray output_;
    // For a command that collects its standard error: what has come so far,
    // and which of the two markers have been seen.
    QByteArray error_output_;
    QByteArray errors_marker_;
    QByteArray reply_;
    bool reply_seen_ = false;
    bool errors_seen_ = false;
    bool stopping_ = false;    // inside shutdown: an ending process is expected
    bool end_handled_ = false; // the end of the current process has been dealt with
};

} // namespace vn
