#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

// A Mercator view of the earth as plain numbers: where a position lands on a
// screen, and which position lies under a pixel. World coordinates are the
// longitude in radians (x, east positive) and the Mercator ordinate
// ln(tan(pi/4 + latitude/2)) (y, north positive); screen coordinates are
// pixels with y pointing down. The Mercator square ends at +-85.0511 degrees;
// latitudes beyond it are held at its edge. A value type without state of its
// own; any thread.
class map_projection
{
public:
    QPointF center;     // world coordinates of the point at `origin`
    QPointF origin;     // its screen position, usually the middle of the view
    double scale = 1.0; // pixels per world unit, the same along both axes

    // to_world(0, 0) == (0, 0); to_world(85.0511, 180).y() is about pi.
    static QPointF to_world(double latitude, double longitude);
    static double latitude_of(const QPointF &world);  // degrees
    static double longitude_of(const QPointF &world); // degrees, -180 to 180

    // A point shows on the copy of the map nearest the centre: the map repeats
    // sideways every 2 pi, as Marble draws it when zoomed out.
    QPointF to_screen(const QPointF &world) const;
    QPointF world_at(const QPointF &screen) const;

    // The view `factor` times closer that keeps the point under `anchor` in place.
    map_projection zoomed(double factor, const QPointF &anchor) const;

    // The view of `size` pixels that shows all of `bounds` (world coordinates)
    // with `margin` pixels to spare on each side, its scale at most
    // `max_scale`. A bounds of no extent (one point, or all points in one
    // place) is shown at `max_scale`. The whole world when `has_bounds` is false.
    static map_projection fitting(const QRectF &bounds, bool has_bounds, const QSizeF &size,
                                  double margin, double max_scale);
};
