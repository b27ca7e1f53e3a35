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
// lock. A command that gets no reply leaves its response open and callers time
// out; a process that ends fails the open responses at once, and the next task
// starts a new process.
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
    void verbose(bool value);
    void verbose();

private:
    void fail_open_tasks(const char *reason);
    void drop_head_task();

    QProcess *process_;
    QIODevice::OpenMode restart_open_mode_;
    bool verbose_flag_ = false;
    QList<exif_task> queue_;
    bool busy_ = false;
    QByteArray marker_;
    QByteArray output_;
    bool stopping_ = false;    // inside shutdown: an ending process is expected
    bool end_handled_ = false; // the end of the current process has been dealt with
};

} // namespace vn
