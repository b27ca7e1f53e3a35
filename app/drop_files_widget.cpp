#include "drop_files_widget.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace {

const QString uri_list_format = QStringLiteral("text/uri-list");

} // namespace

drop_files_widget::drop_files_widget(QWidget *parent)
    : QWidget(parent)
{}

drop_files_widget::~drop_files_widget() = default;

void drop_files_widget::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasFormat(uri_list_format))
        event->acceptProposedAction();
}

QStringList drop_files_widget::plain_files(const QStringList &paths)
{
    QStringList collected;
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (!info.isDir()) {
            collected << path;
            continue;
        }
        const QFileInfoList entries =
            QDir(info.absoluteFilePath())
                .entryInfoList(QDir::Files | QDir::Readable | QDir::NoDotAndDotDot, QDir::NoSort);
        for (const QFileInfo &entry : entries)
            collected << entry.absoluteFilePath();
    }

    QStringList files;
    for (const QString &path : qAsConst(collected)) {
        if (QFileInfo(path).isFile())
            files << path;
    }
    return files;
}

void drop_files_widget::dropEvent(QDropEvent *event)
{
    QStringList paths;
    const QMimeData *mime = event->mimeData();
    if (mime->hasUrls()) {
        const QList<QUrl> urls = mime->urls();
        for (const QUrl &url : urls) {
            if (url.isLocalFile())
                paths << url.toLocalFile();
        }
    }
    emit files_dropped(plain_files(paths));
    event->acceptProposedAction();
}
