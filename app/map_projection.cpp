#include "map_projection.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

// Where the Mercator square ends: its height equals its width, 2 pi.
constexpr double max_latitude = 85.05112877980659;

// `x` moved by whole turns into [-pi, pi).
double wrapped(double x)
{
    const double turn = 2 * M_PI;
    return x - turn * std::floor((x + M_PI) / turn);
}

} // namespace

QPointF map_projection::to_world(double latitude, double longitude)
{
    const double held = std::clamp(latitude, -max_latitude, max_latitude);
    return QPointF(qDegreesToRadians(longitude), std::asinh(std::tan(qDegreesToRadians(held))));
}

double map_projection::latitude_of(const QPointF &world)
{
    return qRadiansToDegrees(std::atan(std::sinh(world.y())));
}

double map_projection::longitude_of(const QPointF &world)
{
    return qRadiansToDegrees(wrapped(world.x()));
}

QPointF map_projection::to_screen(const QPointF &world) const
{
    return QPointF(origin.x() + scale * wrapped(world.x() - center.x()),
                   origin.y() - scale * (world.y() - center.y()));
}

QPointF map_projection::world_at(const QPointF &screen) const
{
    return QPointF(center.x() + (screen.x() - origin.x()) / scale,
                   center.y() - (screen.y() - origin.y()) / scale);
}

map_projection map_projection::zoomed(double factor, const QPointF &anchor) const
{
    const QPointF world = world_at(anchor);
    map_projection view = *this;
    view.scale = scale * factor;
    view.center = QPointF(world.x() - (anchor.x() - origin.x()) / view.scale,
                          world.y() + (anchor.y() - origin.y()) / view.scale);
    return view;
}

map_projection map_projection::fitting(const QRectF &bounds, bool has_bounds, const QSizeF &size,
                                       double margin, double max_scale)
{
    map_projection view;
    view.origin = QPointF(size.width() / 2, size.height() / 2);
    const double room_x = std::max(1.0, size.width() - 2 * margin);
    const double room_y = std::max(1.0, size.height() - 2 * margin);
    if (!has_bounds) {
        view.scale = std::min(size.width(), size.height()) / (2 * M_PI);
        return view;
    }
    view.center = bounds.center();
    double scale = max_scale;
    if (bounds.width() > 0)
        scale = std::min(scale, room_x / bounds.width());
    if (bounds.height() > 0)
        scale = std::min(scale, room_y / bounds.height());
    view.scale = scale;
    return view;
}
