#include "vn/message_handler.h"

#include <QApplication>
#include <QByteArray>
#include <QMessageBox>
#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QThread>

#include <iostream>

namespace vn {

namespace {

const char *level_prefix(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "Debug: ";
    case QtInfoMsg:
        return "Info: ";
    case QtWarningMsg:
        return "Warning: ";
    case QtCriticalMsg:
        return "Critical: ";
    case QtFatalMsg:
        return "Fatal: ";
    }
    return "";
}

// Qt's PNG reader prints this for many harmless images; it says nothing about
// the user's photos, so it never reaches the streams.
const QString dropped_libpng_line =
    QStringLiteral("libpng warning: iCCP: known incorrect sRGB profile");

bool on_gui_thread()
{
    const QCoreApplication *app = QCoreApplication::instance();
    return app && qobject_cast<const QApplication *>(app) &&
           QThread::currentThread() == app->thread();
}

} // namespace

QMutex &log_mutex()
{
    static QMutex mutex;
    return mutex;
}

void install_message_handler()
{
    qInstallMessageHandler(message_handler);
}

void message_handler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message == dropped_libpng_line)
        return;

    const QByteArray line =
        QByteArray(level_prefix(type)) + qFormatLogMessage(type, context, message).toUtf8() + '\n';
    const bool to_cerr = type == QtCriticalMsg || type == QtFatalMsg;
    {
        QMutexLocker lock(&log_mutex());
        std::ostream &stream = to_cerr ? std::cerr : std::cout;
        stream.write(line.constData(), line.size());
        stream.flush();
    }

    // A box can only be shown on the GUI thread; from any other thread the
    // line above is all the user gets before Qt ends the process.
    if (type == QtFatalMsg && on_gui_thread()) {
        QMessageBox::critical(
            nullptr, QObject::tr("Fatal error"),
            QObject::tr("%1 encountered a fatal error and must be terminated:\n%2")
                .arg(QGuiApplication::applicationDisplayName(), message),
            QMessageBox::Ok);
    }
}

} // namespace vn
