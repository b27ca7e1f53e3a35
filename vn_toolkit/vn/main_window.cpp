#include "vn/main_window.h"

namespace vn {

main_window::main_window(QWidget *parent)
    : QMainWindow(parent)
{}

main_window::~main_window() = default;

} // namespace vn
