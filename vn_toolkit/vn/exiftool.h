#pragma once

#include <vn/exif_tag_map.h>

#include <QObject>
#include <QStringList>

namespace vn {

class exif_response;
class exiftool_worker;

void exiftool_worker_init();

// Facade of the one ExifTool process. Static members only. Every call here is
// for the main thread: the worker is reached by blocking queued invocations.
class exiftool : public QObject
{
    Q_OBJECT

public:
    static exif_response *start_task(const QByteArray &data);
    static void shutdown();

    static exif_tag_map read_tags(const QString &file, bool with_groups);
    static bool write_tags(const QString &file, const exif_tag_map &tags);
};

} // namespace vn
