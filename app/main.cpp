#include "language.h"
#include "mainwindow.h"

#include <vn/application.h>
#include <vn/application_log.h>
#include <vn/message_handler.h>
#include <vn/proxy_style.h>

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>

#include <functional>

int main(int argc, char **argv)
{
    vn::install_message_handler();

    // QSettings keys its store on the organization and application names.
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("orvane.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2.1.0"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Loxmere"));

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

    vn::application_log::create(&app);

    const std::function<MainWindow *()> boot_main_window = [&app] {
        app.main_window = new MainWindow(nullptr);
        return app.main_window.data();
    };
    MainWindow *window = boot_main_window();
    QGuiApplication::setQuitOnLastWindowClosed(true);
    window->setAttribute(Qt::WA_DeleteOnClose, true);
    window->show();

    return app.exec();
}
