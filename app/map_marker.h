#pragma once

#include <QPointF>
#include <QString>

// One photo on the map: where the preview puts it and where that comes from.
struct map_marker
{
    enum kind_type {
        own,        // "←": a position of its own, left alone
        from_photo, // "↑"/"↓": the position of another photo
        from_track, // "G": the position of a track point
        typed,      // "=": the typed position
    };
    static constexpr int kind_count = 4;

    kind_type kind = own;
    QString file;         // full path
    QString indicator;    // as the table shows it
    double latitude = 0;  // degrees
    double longitude = 0; // degrees
    QPointF world;        // map_projection::to_world(latitude, longitude)
    // from_photo: the marker of the photo whose position this one takes, and
    // this marker's place among that photo's followers (0, 1, ...). Drawn on
    // one spot they would hide each other; each sits a little apart, on a
    // line to its source. -1 when there is no such marker.
    int source = -1;
    int follower = -1;
};
