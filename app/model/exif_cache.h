#pragma once

#include "model/file_stamp.h"

#include <vn/exif_tag_map.h>

#include <QMap>
#include <QSet>
#include <QString>

#include <memory>

// What ExifTool reported for every loaded photo, by full path. `values` holds
// the derived keys (rec_year ... has_data), `tags` the plain read, `group_tags`
// the read with family-1 group names. Main thread only.
//
// Among the derived keys: "exif_timezone", the zone the photo records for its
// own time ("+09:00", checked, or empty), and "camera", the name its make,
// model and serial number give it ("NIKON D70 #3010123"; empty when the file
// names none).
class exif_cache
{
public:
    static std::shared_ptr<exif_cache> instance();

    // Reads the file twice through ExifTool and fills the maps, the grouped
    // read with the GPS tags as numbers. Blocks (with events running) for up
    // to two ExifTool time limits.
    void read_file(const QString &file);

    // Stores the two reads of one file and derives its keys in `values`, as
    // read_file does after asking ExifTool. Keys of the grouped read that end
    // in "#" go to `gps_numbers`, without it. Tag names are shared with those
    // of photos stored before, so that a name isn't held once per photo.
    void store(const QString &file, const exif_tag_map &plain, const exif_tag_map &grouped);

    // The derived keys of one file from its two reads, written over `derived`:
    // keys that the reads don't set keep what they had. Date messages go to
    // standard output; a date taken from the file reads the file's times.
    static void derive(const QString &file, const exif_tag_map &plain, const exif_tag_map &grouped,
                       exif_tag_map &derived);

    void clear();

    QMap<QString, exif_tag_map> values;
    QMap<QString, exif_tag_map> tags;
    QMap<QString, exif_tag_map> group_tags;
    // The GPS and XMP GPS tags as plain numbers, "GPS:GPSLatitude" =
    // "43.4674483333333", from the grouped read; and each file's stamp, taken
    // just before its reads and kept only when they worked. While a file's
    // stamp holds, these are the numbers a read of it would give now.
    QMap<QString, exif_tag_map> gps_numbers;
    QMap<QString, file_stamp> stamps;

private:
    exif_tag_map shared_names(const exif_tag_map &map);

    QSet<QString> names_; // every tag name seen, one copy each
};
