// Measures vn::qt::layout: adding cells (each add runs the fill pass) and one
// geometry pass, for grids of growing size. Prints one line per size.
#include <vn/qt/layout.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QWidget>

#include <cstdio>
#include <vector>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::printf("%8s %8s %14s %16s %16s\n", "cells", "columns", "add all (ms)", "first pass (ms)",
                "guarded (us)");
    for (int cells : {50, 200, 800}) {
        const int columns = 4;
        QWidget parent;
        parent.resize(1000, 800);
        auto *grid = new vn::qt::layout(&parent, columns, false);
        std::vector<QWidget *> widgets;
        for (int i = 0; i < cells; ++i)
            widgets.push_back(new QWidget(&parent));

        QElapsedTimer timer;
        timer.start();
        for (QWidget *w : widgets)
            grid->add(vn::qt::cell(w, vn::qt::margin_left = 2, vn::qt::height = 20));
        const double add_ms = double(timer.nsecsElapsed()) / 1e6;

        timer.restart();
        grid->setGeometry(QRect());
        const double pass_ms = double(timer.nsecsElapsed()) / 1e6;

        for (int i = 0; i < 4; ++i) // use up the passes the guard allows at this size
            grid->setGeometry(QRect());
        timer.restart();
        grid->setGeometry(QRect());
        const double guarded_us = double(timer.nsecsElapsed()) / 1e3;

        std::printf("%8d %8d %14.2f %16.2f %16.2f\n", cells, columns, add_ms, pass_ms, guarded_us);
    }
    return 0;
}
