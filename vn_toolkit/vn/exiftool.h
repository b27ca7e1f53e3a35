#pragma once

#include <vn/exif_tag_map.h>

#include <QObject>
#include <QStringList>

#include <optional>

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

    // With `collect_errors` the response also gets the command's standard
    // error (exif_response::errors).
    static exif_response *start_task(const QByteArray &data, bool collect_errors = false);
    static void shutdown();

    // The limit of every wait on ExifTool: time_limit_ms unless a test set
    // a shorter one. A command that runs into it stops the process (see
    // exiftool_worker::abandon), so a hung ExifTool costs one wait.
    static int wait_limit_ms();
    static void set_wait_limit_ms(int ms);

    // All tags of the file as ExifTool prints them, with family-1 groups and
    // every duplicate if `with_groups`. With `numbers_of` (tag names as the
    // command line takes them, "GPS:all"), those tags come a second time as
    // plain numbers (-n) under their key with "#" appended,
    // "GPS:GPSLatitude#" = "43.4674483333333"; the printed tags stay as they
    // are. Empty when the file can't be read.
    static exif_tag_map read_tags(const QString &file, bool with_groups,
                                  const QStringList &numbers_of = {});
    static bool write_tags(const QString &file, const exif_tag_map &tags);
    // The same write, with why it failed in `reason` (untouched on success):
    // "file not found", "a folder, not a file", "read-only", ExifTool's own
    // error text for the file ("Not a valid JPEG"), or that ExifTool ended or
    // didn't answer. A file whose permissions allow no writing at all is
    // refused even where the system would let this process write it. Keys
    // are tag names as the toolkit guards them, with "#" (a plain number)
    // and "^" (an empty value writes an empty text instead of deleting):
    // "GPS:GPSMapDatum#^" with "" gives the line "-GPS:GPSMapDatum#^=".
    static bool write_tags(const QString &file, const exif_tag_map &tags, QString *reason);
    // Reads the named tags as numbers (-n) with their family-1 groups, all
    // duplicates (-a), without the maker notes (-fast2): "GPS:GPSLatitude" =
    // "43.4674483333333". With `extract_only` (plain tag names) ExifTool
    // takes nothing else from the file, which spares it a good part of the
    // read; `tags` then only picks among those. Nothing when the file can't
    // be read, with why in `reason`; an empty map is a file without such
    // tags. Blocks like read_tags.
    static std::optional<exif_tag_map> read_numeric_tags(const QString &file,
                                                         const QStringList &tags,
                                                         QString *reason = nullptr,
                                                         const QStringList &extract_only = {});
    // The guards every command runs on its file, alone: one argument line,
    // an absolute path, an existing file and, for `to_write`, one that may
    // be written. False with the reason (as write_tags gives it) and the
    // guard's warning in the log.
    static bool check_file(const QString &file, bool to_write, QString *reason);
    // ExifTool's error about `file` in its standard error: "Error: Not a
    // valid JPEG - /a/b.jpg" gives "Not a valid JPEG". Lines about other
    // files, and warnings, don't count. Empty when there is none.
    static QString error_for_file(const QByteArray &errors, const QString &file);

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

    // Waits for `response` and releases it; on a time-out stops the process.
    // The reply, or nothing with why in `reason`.
    static std::optional<QByteArray> finish(exif_response *response, QByteArray *errors,
                                            QString *reason);

    static QThread *thread;
    static exiftool_worker *worker;
    static int wait_limit;
};

} // namespace vn
