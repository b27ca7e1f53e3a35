#pragma once

#include <QStringList>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QDragEnterEvent;
class QDropEvent;
QT_END_NAMESPACE

// The square on which the user drops photos and folders. It turns a drop into a
// list of plain files and hands it on by files_dropped; which of them are
// photos is not its business. A folder gives the readable files directly in it,
// not those of its sub-folders. It accepts a drag only if it carries a URI list,
// and does not switch drops on itself: its owner calls setAcceptDrops.
// GUI thread only.
class drop_files_widget : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(drop_files_widget)

public:
    explicit drop_files_widget(QWidget *parent = nullptr);
    ~drop_files_widget() override;

    // Expands each folder of `paths` into the readable files directly in it (in
    // the order the file system lists them), keeps other paths as they are, then
    // drops everything that is not an existing plain file. Order is kept.
    static QStringList plain_files(const QStringList &paths);

signals:
    // After every drop, also when it held no local file (then the list is empty).
    void files_dropped(QStringList filenames);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};
