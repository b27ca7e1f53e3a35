#include "command_line.h"
#include "language.h"
#include "mainwindow.h"

#include <vn/application.h>
#include <vn/application_log.h>
#include <vn/message_handler.h>
#include <vn/proxy_style.h>

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QTimer>

#include <functional>

int main(int argc, char **argv)
{
    vn::install_message_handler();

    // QSettings keys its store on the organization and application names.
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("orvane.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LOXMERE_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Loxmere"));
    // Lets the desktop match the window to its menu entry and icon.
    QGuiApplication::setDesktopFileName(QStringLiteral(LOXMERE_APP_ID));

    // Only takes effect before the application object exists.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    // Marble's map widget starts QtWebEngine, which wants the contexts shared
    // from the start and refuses to run as root inside its sandbox. Loxmere
    // never shows web content, so the sandbox guards nothing here; without
    // this, opening the map ends the program when it runs as root.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    if (!qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");

    vn::application<MainWindow> app(argc, argv);

    auto *style = new vn::proxy_style();
    style->set_tooltip_delay(2000);
    QApplication::setStyle(style); // the application takes it over

    install_translators();

    // After the translators, so that the help text is in the user's language.
    const command_line request =
        command_line::parse(QCoreApplication::arguments(), QDir::currentPath());
    if (!request.run)
        return request.report();

    vn::application_log::create(&app);

    const std::function<MainWindow *()> boot_main_window = [&app] {
        app.main_window = new MainWindow(nullptr);
        return app.main_window.data();
    };
    MainWindow *window = boot_main_window();
    QGuiApplication::setQuitOnLastWindowClosed(true);
    window->setAttribute(Qt::WA_DeleteOnClose, true);
    window->show();
    if (!request.paths.isEmpty()) {
        // Loaded from the event loop, as a drop is, once the window is up.
        QTimer::singleShot(0, window,
                           [window, paths = request.paths] { window->open_paths(paths); });
    }

    return app.exec();
}
