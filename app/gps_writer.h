#pragma once

#include <vn/exif_tag_map.h>

#include <QMap>
#include <QString>

#include <functional>

class table_data_model;

// The loops of the three flows that change files: write the previewed
// positions, remove all GPS data, and write the undo record back. One ExifTool
// command per file, in row order (the undo in path order). A file that fails
// is a warning in the log and the loop goes on; nothing is asked here and
// nothing stops early. Each call blocks the GUI thread for the whole loop,
// feeding the event loop only through `progress`, which gets the number of
// files done after each one. GUI thread only.
class gps_writer
{
public:
    // Ordered map from full path to the tags that bring that file back.
    using undo_map = QMap<QString, exif_tag_map>;
    using progress_function = std::function<void(int done)>;

    gps_writer() = delete;

    // Empties `undo_tags`, then writes the position of every row that has one
    // to write (column 2's user role), noting each such file's old tags first.
    // Rows of source photos are neither written nor noted. A position that
    // can't be written as a whole is refused with a warning and not noted.
    static void write_positions(const table_data_model &model, undo_map &undo_tags,
                                const progress_function &progress);

    // Empties `undo_tags`, then removes the GPS data of every row, noting
    // each file's old tags first.
    static void remove_gps(const table_data_model &model, undo_map &undo_tags,
                           const progress_function &progress);

    // Writes each entry back, in ascending path order, and empties the map.
    static void undo(undo_map &undo_tags, const progress_function &progress);
};
