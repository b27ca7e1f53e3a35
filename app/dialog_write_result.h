#pragma once

#include "gps_writer.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
QT_END_NAMESPACE

// Sums up a write flow that didn't go through cleanly: how many files were
// written, how many were left alone, and each file that failed with its
// reason, in a list that can be selected and copied whole. Dark, as the
// message boxes. A dialog for a single use, run with exec(). GUI thread only.
class dialog_write_result : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(dialog_write_result)

public:
    // `undo` words the summary for files written back.
    dialog_write_result(const gps_writer::result &result, bool undo, QWidget *parent);

    // "Written: 3\nLeft alone, with a position of their own: 1\nFailed: 2"
    static QString summary(const gps_writer::result &result, bool undo);
    // One line a file: "/photos/a.jpg: read-only".
    static QString list_text(const gps_writer::result &result);

private:
    void copy_list();

    QPlainTextEdit *list_ = nullptr;
};
