#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QMessageLogContext;
class QMutex;
class QString;
QT_END_NAMESPACE

namespace vn {

// Turns every qDebug/qInfo/qWarning/qCritical/qFatal of the process into one
// line on a standard stream: Debug, Info and Warning go to std::cout, Critical
// and Fatal to std::cerr, each behind its level prefix ("Warning: ...").
// Callable from any thread; log_mutex() keeps the lines of different threads
// apart, and the application log's taps write their capture under the same lock.
void install_message_handler();

void message_handler(QtMsgType type, const QMessageLogContext &context, const QString &message);

// The one process-wide lock of the standard streams. Non-recursive: never call
// anything that logs while holding it.
QMutex &log_mutex();

} // namespace vn
