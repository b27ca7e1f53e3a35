#pragma once

#include <QApplication>
#include <QPointer>

namespace vn {

// The application object. It owns nothing but a guarded pointer to the main
// window, to which it hands the file-open requests of the desktop.
template <class window_type> class application : public QApplication
{
public:
    application(int &argc, char **argv)
        : QApplication(argc, argv)
    {}
    ~application() override = default;

    QPointer<window_type> main_window;

protected:
    bool event(QEvent *e) override
    {
        const bool result = QApplication::event(e);
        // Only file-open requests go on to the window: the application's own
        // events (queued calls among them) must stay with the application.
        if (e->type() == QEvent::FileOpen && main_window && main_window->isVisible())
            return static_cast<QObject *>(main_window.data())->event(e); // public in QObject
        return result;
    }
};

} // namespace vn
