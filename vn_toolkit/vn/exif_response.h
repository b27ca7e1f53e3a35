#pragma once

#include <QByteArray>
#include <QObject>

#include <atomic>

namespace vn {

// Error code carried by exif_response::error. 0: the wait ran out of time, or
// the ExifTool process ended or could not be started before the reply came.
using exif_error = qint32;

// The pending result of one ExifTool command. Created on the GUI thread by
// exiftool::start_task, filled in by the worker on its own thread. The worker
// writes the reply first and then publishes it through the completion flag
// (release order); wait() reads the flag with acquire order, then the reply.
//
// Lifetime: the QObject parent is the worker's thread object, so a response
// that nobody releases lives until shutdown. release() gives up the caller's
// hold; the worker gives up its own when it is through with the response. The
// second of the two frees it, so a late reply always finds its response alive
// and the caller may drop a response it has read without waiting for anything.
class exif_response : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(exif_response)

public:
    // With `collect_errors` the worker also hands over what ExifTool wrote to
    // its standard error for this command (errors()), and the response is
    // complete only when that text is whole.
    exif_response(qint32 id, QObject *parent, bool collect_errors = false);

    // Runs the calling thread's event loop without user input until the
    // reply is there, the worker reports failure or timeout_ms has passed.
    // True when the reply is there and the response isn't cancelled. Sleeps
    // in the event loop: the worker wakes this thread when it completes.
    bool wait(int timeout_ms);

    // The reply once the worker has stored it (also for a cancelled
    // response), else a null array.
    QByteArray data() const;
    // ExifTool's standard error for this command, once the reply is there;
    // always empty unless the response collects errors.
    QByteArray errors() const;
    bool collects_errors() const { return collect_errors_; }
    qint32 id() const { return id_; }
    qint64 start_time() const { return start_time_; }
    bool is_ready() const;
    bool is_failed() const;
    bool is_cancelled() const;

    // Worker side: stores the reply, then marks it complete unless cancelled
    // and wakes the thread that waits for it.
    void set_reply(const QByteArray &reply);
    // Worker side, before set_reply: the command's standard error.
    void set_errors(const QByteArray &errors);
    // Unless cancelled, sets complete, emits ready(this), then finished().
    void set_ready();
    // Unless cancelled, clears complete, emits error(code) and finished().
    void set_error(vn::exif_error code);
    // Worker side: the process is gone; the reply will never come.
    void set_failed();
    void cancel();

    // Gives up one hold (the caller's or the worker's). Each side calls it
    // at most once; the response is deleted (later, on its own thread) when
    // both have. The caller must not touch the response after release().
    void release();

signals:
    void ready(vn::exif_response *request); // reply stored, complete set
    void error(vn::exif_error code);        // failed or out of time
    void finished();                        // after ready or error

private:
    void wake_owner_thread();

    const qint32 id_;
    const bool collect_errors_;
    std::atomic<bool> complete_{false};
    std::atomic<bool> cancelled_{false};
    std::atomic<bool> failed_{false};
    std::atomic<bool> stored_{false}; // data_ holds the reply, also when cancelled
    std::atomic<int> holds_{2};
    QByteArray data_;
    QByteArray errors_;
    qint64 start_time_;
};

} // namespace vn

Q_DECLARE_METATYPE(vn::exif_response *)
