#include <vn/exiftool_process.h>

#include <QCoreApplication>

#ifdef Q_OS_LINUX
#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>
#endif

namespace vn {

exiftool_process::exiftool_process(QObject *parent)
    : QProcess(parent)
    , parent_pid_(QCoreApplication::applicationPid())
{}

void exiftool_process::setupChildProcess()
{
#ifdef Q_OS_LINUX
    // Sent when the thread that started the process ends: the worker's
    // thread, which outlives the process in a normal run.
    prctl(PR_SET_PDEATHSIG, SIGINT);
    // The program may have ended before the request was made.
    if (getppid() != pid_t(parent_pid_))
        _exit(1);
#endif
}

} // namespace vn
