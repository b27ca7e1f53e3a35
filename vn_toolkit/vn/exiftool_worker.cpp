#include <vn/exiftool_worker.h>

#include <vn/exif_response.h>
#include <vn/exiftool_process.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <csignal>

#include <signal.h>
#endif

namespace vn {

namespace {
constexpr int start_limit_ms = 2000;
constexpr int restart_limit_ms = 5000;
constexpr int restart_close_ms = 500;
constexpr int max_write_attempts = 10; // the loop below makes one more
constexpr int read_chunk_size = 2048;
// Shutdown passes: both add up to 5 s. With a command out ExifTool may be in
// the middle of a long write, so each pass waits longer.
constexpr int idle_pass_ms = 200;
constexpr int idle_passes = 25;
constexpr int busy_pass_ms = 1000;
constexpr int busy_passes = 5;
constexpr int reap_after_kill_ms = 2000;
// Stopping a process that didn't answer: it may be hung in a write, so the
// interrupt gets the longest wait (ExifTool finishes copying the file back
// in place before it obeys).
constexpr int abandon_close_ms = 1000;
constexpr int abandon_interrupt_ms = 5000;
const char close_command[] = "-stay_open\n0\n";
} // namespace

exiftool_worker::exiftool_worker()
    : process_(new exiftool_process(this))
    , restart_open_mode_(QIODevice::ReadWrite | QIODevice::Text | QIODevice::Unbuffered)
{
    process_->setReadChannel(QProcess::StandardOutput);
    connect(process_, &QProcess::readyReadStandardOutput, this, &exiftool_worker::read_output);
    connect(process_, &QProcess::readyReadStandardError, this, &exiftool_worker::read_errors);
    connect(process_, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &exiftool_worker::process_ended);
    connect(process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        // Timeouts of waitFor... and write errors leave the process running,
        // and a failed start is reported by start() itself.
        if (error != QProcess::FailedToStart && process_->state() == QProcess::NotRunning)
            process_ended();
    });

    const QString program = program_path();
    if (!QFileInfo::exists(program))
        qCritical("exiftool: Executable '%s' does not exist...", qUtf8Printable(program));
    process_->setProgram(program);
    process_->setArguments(arguments());
}

exiftool_worker::~exiftool_worker()
{
    shutdown(); // the process must be gone before its QProcess object is
}

QByteArray exiftool_worker::execute_line(qint32 id)
{
    return QStringLiteral("\n-execute%1\n").arg(id).toUtf8();
}

QByteArray exiftool_worker::marker_for(qint32 id)
{
#ifdef Q_OS_WIN
    return QStringLiteral("{ready%1}\r\n").arg(id).toUtf8();
#else
    return QStringLiteral("{ready%1}\n").arg(id).toUtf8();
#endif
}

QByteArray exiftool_worker::errors_request(qint32 id)
{
    return QStringLiteral("-echo4\n{errors%1}\n").arg(id).toUtf8();
}

QByteArray exiftool_worker::errors_marker_for(qint32 id)
{
#ifdef Q_OS_WIN
    return QStringLiteral("{errors%1}\r\n").arg(id).toUtf8();
#else
    return QStringLiteral("{errors%1}\n").arg(id).toUtf8();
#endif
}

QString exiftool_worker::program_path()
{
#ifdef Q_OS_WIN
    const QString name = QStringLiteral("exiftool.exe");
#else
    const QString name = QStringLiteral("exiftool");
#endif
    return QCoreApplication::applicationDirPath() + QDir::separator() + name;
}

QStringList exiftool_worker::arguments()
{
    return {QStringLiteral("-stay_open"),
            QStringLiteral("1"),
            QStringLiteral("-@"),
            QStringLiteral("-"),
            QStringLiteral("-common_args"),
            QStringLiteral("-charset"),
            QStringLiteral("filename=utf8"),
            QStringLiteral("-args"),
            QStringLiteral("-sort"),
            QStringLiteral("-fast"),
            QStringLiteral("-userParam"),
            QStringLiteral("processOwner=%1").arg(QCoreApplication::applicationName())};
}

// Not used by the application's flows. The Text open mode drops carriage
// returns, so on a platform whose marker holds one it would never be found.
bool exiftool_worker::send_restart()
{
    stopping_ = true;
    while (process_->state() != QProcess::NotRunning) {
        write(QString::fromLatin1(close_command));
        if (!process_->waitForFinished(restart_close_ms))
            process_->kill();
    }
    stopping_ = false;
    end_handled_ = false;
    process_->start(restart_open_mode_);
    qDebug("%s: Waiting for exiftool to start.", Q_FUNC_INFO);
    if (!process_->waitForStarted(restart_limit_ms))
        qWarning("%s: Could not start exiftool: %s (%d).", Q_FUNC_INFO,
                 qUtf8Printable(process_->errorString()), int(process_->error()));
    return process_->state() == QProcess::Running;
}

bool exiftool_worker::start()
{
    // Plain ReadWrite: without the Text flag the reply keeps its bytes as
    // ExifTool wrote them, line ends included.
    end_handled_ = false;
    process_->start(QIODevice::ReadWrite);
    if (process_->waitForStarted(start_limit_ms))
        return true;
    qWarning("%s: Could not start exiftool: %s (%d).", Q_FUNC_INFO,
             qUtf8Printable(process_->errorString()), int(process_->error()));
    return false;
}

bool exiftool_worker::shutdown()
{
    const bool was_busy = busy_;
    const int pass_ms = was_busy ? busy_pass_ms : idle_pass_ms;
    const int max_passes = was_busy ? busy_passes : idle_passes;
    int iterations = 0;
    stopping_ = true;
    while (process_->state() != QProcess::NotRunning && iterations < max_passes) {
        if (!write(QString::fromLatin1(close_command)))
            qDebug("%s: Failed to write close command.", Q_FUNC_INFO);
        if (process_->waitForFinished(pass_ms)) {
            qDebug("%s: Process finished on iteration %d", Q_FUNC_INFO, iterations);
            continue;
        }
        if (iterations < max_passes - 1) {
            qDebug("%s: Sending termination signal to process.", Q_FUNC_INFO);
            process_->terminate();
        } else {
            qDebug("%s: Sending kill signal to process.", Q_FUNC_INFO);
            process_->kill();
            // A killed process still has to be reaped, or its QProcess would
            // be destroyed while it runs.
            process_->waitForFinished(reap_after_kill_ms);
        }
        ++iterations;
    }
    stopping_ = false;
    const QProcess::ProcessState state = process_->state();
    qDebug("%s: Did %d iterations, state: %d", Q_FUNC_INFO, iterations, int(state));
    return state == QProcess::NotRunning;
}

bool exiftool_worker::abandon()
{
    const char *how = "it had ended";
    stopping_ = true;
    if (process_->state() != QProcess::NotRunning) {
        how = "close command";
        write(QString::fromLatin1(close_command));
        if (!process_->waitForFinished(abandon_close_ms)) {
#ifdef Q_OS_UNIX
            how = "interrupt";
            ::kill(pid_t(process_->processId()), SIGINT);
            if (!process_->waitForFinished(abandon_interrupt_ms)) {
                how = "kill";
                process_->kill();
                process_->waitForFinished(reap_after_kill_ms);
            }
#else
            how = "kill";
            process_->kill();
            process_->waitForFinished(reap_after_kill_ms);
#endif
        }
    }
    const bool stopped = process_->state() == QProcess::NotRunning;
    qWarning("%s: ExifTool didn't answer in time; stopped by %s%s.", Q_FUNC_INFO, how,
             stopped ? "" : ", but it still runs");
    fail_open_tasks("ExifTool was stopped");
    stopping_ = false;
    return stopped;
}

void exiftool_worker::add_task(exif_response *response, QByteArray data)
{
    queue_.append(exif_task{response, data, response->id()});
    execute_task();
}

void exiftool_worker::verbose(bool value)
{
    verbose_flag_ = value;
}

void exiftool_worker::verbose()
{
    verbose_flag_ = true;
}

void exiftool_worker::execute_task()
{
    if (busy_ || queue_.isEmpty())
        return;
    if (process_->state() == QProcess::NotRunning && !start()) {
        fail_open_tasks("ExifTool could not be started");
        return;
    }
    busy_ = true;
    const exif_task &task = queue_.first();
    // The text ends at a NUL byte. The cut comes before the execute line, so
    // the command still runs and nothing is left over to lead the next one.
    QByteArray command = task.data;
    const int nul = command.indexOf('\0');
    if (nul >= 0)
        command.truncate(nul);
    marker_ = marker_for(task.id);
    if (task.response->collects_errors()) {
        errors_marker_ = errors_marker_for(task.id);
        command += errors_request(task.id);
    }
    command += execute_line(task.id);
    // On failure the task stays at the head; the caller's wait ends it.
    write(QString::fromUtf8(command));
}

bool exiftool_worker::write(const QString &text)
{
    if (process_->state() != QProcess::Running) {
        qWarning("%s: Not writing: Process is not running.", Q_FUNC_INFO);
        return false;
    }
    const QByteArray bytes = text.toUtf8();
    if (verbose_flag_)
        qDebug("%s: Writing '%s' to process.", Q_FUNC_INFO, qUtf8Printable(text));
    qint64 written = 0;
    int attempts = 0;
    do {
        const qint64 n = process_->write(bytes.constData() + written, bytes.size() - written);
        if (n == -1)
            qWarning("%s: Failed to write to process: %s (%d).", Q_FUNC_INFO,
                     qUtf8Printable(process_->errorString()), int(process_->error()));
        else
            written += n;
        ++attempts;
    } while (written < bytes.size() && attempts <= max_write_attempts);
    if (written != bytes.size())
        qCritical("%s: Couldn't write all data. Wrote %d/%d bytes after %d attempts.", Q_FUNC_INFO,
                  int(written), int(bytes.size()), attempts);
    return written == bytes.size();
}

void exiftool_worker::read_output()
{
    char chunk[read_chunk_size];
    while (process_->bytesAvailable() != 0) {
        const qint64 n = process_->read(chunk, read_chunk_size);
        if (n < 0) {
            qWarning("%s: Reading process output failed: %s (%d).", Q_FUNC_INFO,
                     qUtf8Printable(process_->errorString()), int(process_->error()));
            // Left for the next readyRead: retrying here could loop forever.
            return;
        }
        output_.append(chunk, int(n));
        // Searched from the start each time, so a marker split across reads
        // is found once its last byte is in. Ids never repeat, so text that
        // looks like another command's marker stays part of the reply.
        for (;;) {
            if (!busy_ || marker_.isEmpty())
                break;
            const int at = output_.indexOf(marker_);
            if (at < 0)
                break;
            if (queue_.isEmpty()) {
                qCritical("%s: Got expected output marker but the command queue is empty?",
                          Q_FUNC_INFO);
                return;
            }
            reply_ = output_.left(at);
            reply_seen_ = true;
            output_.remove(0, at + marker_.size());
            marker_.clear();
            if (errors_marker_.isEmpty() || errors_seen_)
                complete_head_task();
        }
    }
}

// Both markers seen (or the only one): hands reply and standard error to the
// response and sends the next command.
void exiftool_worker::complete_head_task()
{
    exif_response *response = queue_.first().response;
    const QByteArray reply = reply_;
    const QByteArray errors = error_output_;
    queue_.removeFirst();
    reset_command_state();
    response->set_errors(errors);
    response->set_reply(reply);
    response->release(); // last touch: the caller may free it now
    execute_task();
}

void exiftool_worker::reset_command_state()
{
    busy_ = false;
    marker_.clear();
    errors_marker_.clear();
    error_output_.clear();
    reply_.clear();
    reply_seen_ = false;
    errors_seen_ = false;
}

QByteArray exiftool_worker::error_text(const QByteArray &text)
{
    int end = text.size();
    while (end > 0 && (text.at(end - 1) == '\n' || text.at(end - 1) == '\r'))
        --end;
    return text.left(end);
}

// ExifTool flushes its standard error before it writes the marker, but the
// two pipes are read apart, so either marker may be seen first.
void exiftool_worker::read_errors()
{
    QByteArray text = process_->readAllStandardError();
    if (!errors_marker_.isEmpty() && !errors_seen_) {
        error_output_.append(text);
        const int at = error_output_.indexOf(errors_marker_);
        if (at >= 0) {
            error_output_.truncate(at);
            errors_seen_ = true;
            text.replace(errors_marker_, QByteArray()); // not worth a log line
        }
    }
    text = error_text(text);
    if (!text.isEmpty())
        qDebug("exiftool cerr: '%s'", text.constData());
    if (errors_seen_ && reply_seen_ && !queue_.isEmpty())
        complete_head_task();
}

void exiftool_worker::process_ended()
{
    // Reached through finished and, for a crash, errorOccurred as well.
    if (end_handled_)
        return;
    end_handled_ = true;
    // Whatever the process wrote before it ended is still to be read.
    if (process_->bytesAvailable() != 0)
        read_output();
    if (!stopping_ || !queue_.isEmpty())
        fail_open_tasks("ExifTool ended");
}

void exiftool_worker::fail_open_tasks(const char *reason)
{
    if (!queue_.isEmpty())
        qWarning("%s: %s; %d open command(s) fail.", Q_FUNC_INFO, reason, int(queue_.size()));
    else if (!stopping_)
        qWarning("%s: %s.", Q_FUNC_INFO, reason);
    const QList<exif_task> open = queue_;
    queue_.clear();
    reset_command_state();
    output_.clear();
    for (const exif_task &task : open) {
        task.response->set_failed();
        task.response->release();
    }
}

} // namespace vn
