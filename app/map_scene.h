#pragma once

#include "map_marker.h"
#include "map_projection.h"
#include "model/cache_entry.h"
#include "model/gpx_track.h"

#include <QList>
#include <QMap>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <optional>

// What the map shows of one rebuild: a marker for each photo that has a place,
// the number of those that have none, and the chosen tracks as lines. Made
// from scratch from the model's result, as the table is; it holds nothing
// else. A position that isn't a number or lies out of range stays off the map
// with a log line. Plain data and pure functions; any thread.
class map_scene
{
public:
    QVector<map_marker> markers;    // table order; the last is drawn on top
    QVector<QPolygonF> track_lines; // world coordinates; one per unbroken run
    std::array<int, map_marker::kind_count> kind_counts{};
    int without_position = 0; // "?": no position found
    int cleared = 0;          // "=" with nothing typed: GPS data to be removed
    int off_map = 0;          // a position the map can't place
    QRectF bounds;            // world box of markers and lines, if has_bounds
    bool has_bounds = false;

    // The markers of `files` (table order) from a rebuild's `cache`, with
    // `track_lines` (made once per track by lines_of) beside them.
    static map_scene build(const QStringList &files, const QMap<QString, cache_entry> &cache,
                           const QVector<QPolygonF> &track_lines);

    // Each track as lines in world coordinates, in point order. A point that
    // can't be placed breaks its line (one log line per track), and so does a
    // step across the 180th meridian, which would otherwise cross the world.
    static QVector<QPolygonF> lines_of(const QList<gpx_track> &tracks);

    // "48.1", "-11.5" (degrees as the positions carry them) to world
    // coordinates; nothing for text that isn't a finite number or lies out of range.
    static std::optional<QPointF> world_position(const QString &latitude, const QString &longitude);

    // Where a follower sits beside its source, in pixels: index 0 up and to
    // the right, then on a spiral that keeps them from covering each other.
    static QPointF follower_offset(int follower);
    QPointF screen_position(const map_marker &marker, const map_projection &view) const;

    // The markers within `reach` pixels of `screen`, nearest first; at equal
    // distance the one drawn on top first.
    QVector<int> markers_at(const map_projection &view, const QPointF &screen, double reach) const;
};
