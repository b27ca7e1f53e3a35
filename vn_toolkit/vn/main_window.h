#pragma once

#include <QMainWindow>

namespace vn {

// Base of an application's main window. It adds nothing yet but a common type
// that vn::application can own.
class main_window : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY(main_window)

public:
    explicit main_window(QWidget *parent = nullptr);
    ~main_window() override;
};

} // namespace vn
