#include "input_discarder.h"

#include <QCoreApplication>
#include <QEvent>

input_discarder::input_discarder()
{
    QCoreApplication::instance()->installEventFilter(this);
}

input_discarder::~input_discarder()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

void input_discarder::discard_pending()
{
    const input_discarder discarder;
    QCoreApplication::processEvents();
}

bool input_discarder::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}
