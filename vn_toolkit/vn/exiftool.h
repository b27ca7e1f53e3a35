#pragma once

#include <vn/exif_tag_map.h>

#include <QObject>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QThread;
QT_END_NAMESPACE

namespace vn {

class exif_response;
class exiftool_worker;

// Creates the worker thread and the worker, and starts ExifTool, unless they
// exist already. GUI thread only; blocks up to 2 s for the process start.
void exiftool_worker_init();

// Facade of the one ExifTool process. Static members only. Every call here is
// for the main thread: the worker is reached by blocking queued invocations.
// Failures come back as an empty map or false, with a log line.
class exiftool : public QObject
{
    Q_OBJECT

public:
    // Every wait on ExifTool has this limit.
    static constexpr int time_limit_ms = 60000;

    static exif_response *start_task(const QByteArray &data);
    static void shutdown();

    static exif_tag_map read_tags(const QString &file, bool with_groups);
    static bool write_tags(const QString &file, const exif_tag_map &tags);

    // Reads only the named tags (plain names, "Group:Tag", "Tag#", wildcards
    // "*" and "?"). A name that ExifTool could take for an option, or that
    // holds anything else, refuses the whole read with a warning.
    static exif_tag_map read_tags(const QString &file, const QStringList &tags);
    // A copy of `tags` without what can't be copied to another file: the
    // unwritable tags, the look tags, "FileName" and "Directory" unless
    // `keep_file_tags`, and the image-structure tags. Keys match exactly, so
    // "File:FileSize" stays.
    static exif_tag_map filter_tags(const exif_tag_map &tags, bool keep_file_tags);
    // Names the application in the file: "Software" and "CreatorTool" become
    // "<application name> - <organization name>".
    static bool write_tags(const QString &file);

    // Reply bytes to tag map: "-Group:Tag=Value" lines, as read_tags does it.
    static exif_tag_map parse_tags(const QByteArray &reply);
    // The reply as text: the bytes up to the first NUL byte, read as UTF-8.
    static QString reply_text(const QByteArray &reply);

    // Whether the ExifTool conversation is set up (thread and worker exist).
    static bool is_started();

private:
    friend void exiftool_worker_init();

    static QThread *thread;
    static exiftool_worker *worker;
};

} // namespace vn
