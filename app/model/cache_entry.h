#pragma once

#include "model/gps_pos.h"

#include <QDateTime>
#include <QString>

// One photo or track point of a rebuild: where its position comes from and
// what is to be written. A track point has an empty `file`.
struct cache_entry
{
    QString indicator;   // "←" own position, "↑"/"↓" from a neighbour row, "G", "=", "?"
    QString file;        // full path
    QString source_text; // the position as the GPS Tag column shows it
    gps_pos position;    // the value to be written
    QDateTime date;
    // The photo whose position this one takes ("↑", "↓", or the closest photo in
    // the GPX mode): its full path. Empty for a track point's, a typed or no position.
    QString source_file;
    bool is_source = false; // has a position of its own and serves as a source
    bool from_gpx = false;  // a track point, or a photo whose position came from one
};
