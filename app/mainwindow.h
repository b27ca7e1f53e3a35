#pragma once

#include <vn/main_window.h>

class MainWindow : public vn::main_window
{
    Q_OBJECT
    Q_DISABLE_COPY(MainWindow)

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;
};
