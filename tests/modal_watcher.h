#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

#include <functional>

// While alive, hands every modal widget that comes up to `act`, which must
// close it; tests use it to answer the boxes and dialogs that the code under
// test runs in nested event loops.
class modal_watcher : public QObject
{
public:
    explicit modal_watcher(std::function<void(QWidget *)> act)
    {
        connect(&timer_, &QTimer::timeout, this, [act] {
            if (QWidget *modal = QApplication::activeModalWidget())
                act(modal);
        });
        timer_.start(10);
    }

    // Clicks the button of `modal` labelled `text` (mnemonics ignored); false
    // when there is none.
    static bool click(QWidget *modal, const QString &text)
    {
        for (QAbstractButton *button : modal->findChildren<QAbstractButton *>()) {
            if (button->text().remove(QLatin1Char('&')) == text) {
                button->click();
                return true;
            }
        }
        return false;
    }

private:
    QTimer timer_;
};
