#include "model/file_stamp.h"

#include <QDateTime>
#include <QFileInfo>

file_stamp file_stamp::of(const QString &file)
{
    const QFileInfo info(file);
    file_stamp result;
    if (info.isFile()) {
        result.size = info.size();
        result.modified_ms = info.lastModified().toMSecsSinceEpoch();
    }
    return result;
}
