#pragma once

#include <QObject>

// Drops user input. A flow feeds the event loop without user input, so what
// the user clicks or types meanwhile waits in the window system's queue and
// would be carried out when the flow ends: a click on undo during a sync
// would undo the sync. While an object of this class lives, mouse, key,
// wheel, touch and shortcut events reach nothing; drops and file-open
// requests aren't user input here and go on as before. GUI thread only.
class input_discarder : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(input_discarder)

public:
    input_discarder();
    ~input_discarder() override;

    // Lets the input that waits in the queue through into a discarder.
    // Runs the event loop once, with everything else that is due.
    static void discard_pending();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
