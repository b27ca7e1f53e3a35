#include "mainwindow.h"

#include <vn/application.h>

int main(int argc, char **argv)
{
    vn::application<MainWindow> app(argc, argv);
    app.main_window = new MainWindow(nullptr);
    app.main_window->setAttribute(Qt::WA_DeleteOnClose, true);
    app.main_window->show();
    return app.exec();
}
