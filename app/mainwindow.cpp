#include "mainwindow.h"

MainWindow::MainWindow(QWidget *parent) : vn::main_window(parent)
{
    resize(925, 600);
    setMinimumSize(925, 600);
}

MainWindow::~MainWindow() = default;
