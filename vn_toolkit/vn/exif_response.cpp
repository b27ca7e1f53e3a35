#include <vn/exif_response.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

namespace vn {

namespace {
// Wake-up interval while waiting. The worker wakes the waiting thread when a
// reply is complete; this only bounds the delay should that wake-up be lost.
constexpr int idle_wake_ms = 250;
} // namespace

exif_response::exif_response(qint32 id, QObject *parent, bool collect_errors)
    : QObject(parent)
    , id_(id)
    , collect_errors_(collect_errors)
    , start_time_(QDateTime::currentMSecsSinceEpoch())
{}

// GUI thread (the thread the response lives on). Event handlers that run in
// here may start further commands; each wait watches only its own response.
bool exif_response::wait(int timeout_ms)
{
    QTimer clock; // its expiry alone wakes the event loop at the limit
    clock.setSingleShot(true);
    clock.setTimerType(Qt::PreciseTimer);
    clock.start(qMax(0, timeout_ms));
    QTimer heartbeat;
    heartbeat.start(idle_wake_ms);

    for (;;) {
        if (complete_.load(std::memory_order_acquire))
            return !cancelled_.load(std::memory_order_acquire);
        if (cancelled_.load(std::memory_order_acquire) || failed_.load(std::memory_order_acquire))
            return false;
        if (clock.remainingTime() < 1) {
            set_error(0);
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::WaitForMoreEvents);
    }
}

QByteArray exif_response::data() const
{
    // The flag publishes the reply; before it the worker may still be writing.
    if (!stored_.load(std::memory_order_acquire))
        return QByteArray();
    return data_;
}

QByteArray exif_response::errors() const
{
    if (!stored_.load(std::memory_order_acquire))
        return QByteArray();
    return errors_;
}

bool exif_response::is_ready() const
{
    return complete_.load(std::memory_order_acquire) && !cancelled_.load(std::memory_order_acquire);
}

bool exif_response::is_failed() const
{
    return failed_.load(std::memory_order_acquire);
}

bool exif_response::is_cancelled() const
{
    return cancelled_.load(std::memory_order_acquire);
}

// Worker thread; published with the reply by set_reply.
void exif_response::set_errors(const QByteArray &errors)
{
    errors_ = errors;
}

// Worker thread. The reply is stored even for a cancelled response; only the
// completion is held back.
void exif_response::set_reply(const QByteArray &reply)
{
    data_ = reply;
    stored_.store(true, std::memory_order_release);
    set_ready();
    wake_owner_thread();
}

void exif_response::set_ready()
{
    if (cancelled_.load(std::memory_order_acquire))
        return;
    complete_.store(true, std::memory_order_release);
    emit ready(this);
    emit finished();
}

void exif_response::set_error(exif_error code)
{
    if (cancelled_.load(std::memory_order_acquire))
        return;
    complete_.store(false, std::memory_order_release);
    emit error(code);
    emit finished();
}

// Worker thread.
void exif_response::set_failed()
{
    failed_.store(true, std::memory_order_release);
    set_error(0);
    wake_owner_thread();
}

void exif_response::cancel()
{
    cancelled_.store(true, std::memory_order_release);
}

void exif_response::release()
{
    if (holds_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    // On its own thread the response goes at once: a deferred delete posted
    // from inside a long flow would wait for the flow to end, and a batch
    // would pile up every reply until then. From the worker's thread (a reply
    // that came after its caller gave up) it is handed over with deleteLater.
    if (QThread::currentThread() == thread())
        delete this;
    else
        deleteLater();
}

void exif_response::wake_owner_thread()
{
    if (QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance(thread()))
        dispatcher->wakeUp();
}

} // namespace vn
