#pragma once

#include <vn/exif_tag_map.h>

#include <QMap>
#include <QString>

#include <memory>

// What ExifTool reported for every loaded photo, by full path. `values` holds
// the derived keys (rec_year ... has_data), `tags` the plain read, `group_tags`
// the read with family-1 group names. Main thread only.
class exif_cache
{
public:
    static std::shared_ptr<exif_cache> instance();

    // Reads the file twice through ExifTool and fills the three maps.
    // Blocks (with events running) for up to two ExifTool time limits.
    void read_file(const QString &file);

    void clear();

    QMap<QString, exif_tag_map> values;
    QMap<QString, exif_tag_map> tags;
    QMap<QString, exif_tag_map> group_tags;
};
