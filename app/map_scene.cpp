#include "map_scene.h"

#include <QHash>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

const QString arrow_left = QString(QChar(0x2190));
const QString arrow_up = QString(QChar(0x2191));
const QString arrow_down = QString(QChar(0x2193));

// Followers of one photo lie on a sunflower spiral around it: each new one
// turns by the golden angle and takes the same area as the one before, so
// that a hundred of them still don't cover each other.
constexpr double follower_first_radius = 22; // clear of the source, with a line to it
constexpr double follower_spacing = 14;      // a marker is 11 pixels wide
const double golden_angle = M_PI * (3 - std::sqrt(5.0));

std::optional<double> number_in(const QString &text, double limit)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value) || std::fabs(value) > limit)
        return std::nullopt;
    return value;
}

void include(QRectF &bounds, bool &has_bounds, const QPointF &p)
{
    if (!has_bounds) {
        bounds = QRectF(p, p);
        has_bounds = true;
        return;
    }
    bounds.setLeft(std::min(bounds.left(), p.x()));
    bounds.setRight(std::max(bounds.right(), p.x()));
    bounds.setTop(std::min(bounds.top(), p.y()));
    bounds.setBottom(std::max(bounds.bottom(), p.y()));
}

} // namespace

std::optional<QPointF> map_scene::world_position(const QString &latitude, const QString &longitude)
{
    const std::optional<double> lat = number_in(latitude, 90);
    const std::optional<double> lon = number_in(longitude, 180);
    if (!lat || !lon)
        return std::nullopt;
    return map_projection::to_world(*lat, *lon);
}

map_scene map_scene::build(const QStringList &files, const QMap<QString, cache_entry> &cache,
                           const QVector<QPolygonF> &track_lines)
{
    map_scene scene;
    scene.track_lines = track_lines;
    scene.markers.reserve(files.size());
    QHash<QString, int> marker_of_file;
    marker_of_file.reserve(files.size());

    for (const QString &file : files) {
        const auto it = cache.constFind(file);
        if (it == cache.constEnd() || it->indicator == QLatin1String("?")) {
            ++scene.without_position;
            continue;
        }
        const cache_entry &entry = *it;
        map_marker marker;
        if (entry.indicator == arrow_left)
            marker.kind = map_marker::own;
        else if (entry.indicator == arrow_up || entry.indicator == arrow_down)
            marker.kind = map_marker::from_photo;
        else if (entry.indicator == QLatin1String("G"))
            marker.kind = map_marker::from_track;
        else
            marker.kind = map_marker::typed;
        const gps_pos &position = entry.position;
        if (marker.kind == map_marker::typed && position.lat_numerical.isEmpty() &&
            position.lon_numerical.isEmpty()) {
            ++scene.cleared;
            continue;
        }
        const std::optional<QPointF> world =
            world_position(position.lat_numerical, position.lon_numerical);
        if (!world) {
            qWarning("%s: %s stays off the map: its position \"%s, %s\" is out of range or not a "
                     "number.",
                     Q_FUNC_INFO, qUtf8Printable(file), qUtf8Printable(position.lat_numerical),
                     qUtf8Printable(position.lon_numerical));
            ++scene.off_map;
            continue;
        }
        marker.file = file;
        marker.indicator = entry.indicator;
        marker.world = *world;
        marker.latitude = position.lat_numerical.trimmed().toDouble();
        marker.longitude = position.lon_numerical.trimmed().toDouble();
        if (marker.kind == map_marker::from_photo)
            marker.source = -2; // resolved below, once every source has its marker
        marker_of_file.insert(file, scene.markers.size());
        ++scene.kind_counts[marker.kind];
        include(scene.bounds, scene.has_bounds, marker.world);
        scene.markers.append(marker);
    }

    QHash<int, int> followers_of_source;
    for (map_marker &marker : scene.markers) {
        if (marker.source != -2)
            continue;
        marker.source = marker_of_file.value(cache.value(marker.file).source_file, -1);
        if (marker.source >= 0)
            marker.follower = followers_of_source[marker.source]++;
    }
    for (const QPolygonF &line : track_lines) {
        for (const QPointF &p : line)
            include(scene.bounds, scene.has_bounds, p);
    }
    return scene;
}

QVector<QPolygonF> map_scene::lines_of(const QList<gpx_track> &tracks)
{
    QVector<QPolygonF> lines;
    for (const gpx_track &track : tracks) {
        QPolygonF run;
        int off_map = 0;
        const auto end_run = [&] {
            if (!run.isEmpty())
                lines.append(run);
            run.clear();
        };
        run.reserve(track.points.size());
        for (const gpx_point &point : track.points) {
            const std::optional<QPointF> world = world_position(point.lat, point.lon);
            if (!world) {
                ++off_map;
                end_run();
                continue;
            }
            if (!run.isEmpty() && std::fabs(world->x() - run.last().x()) > M_PI)
                end_run();
            run.append(*world);
        }
        end_run();
        if (off_map > 0)
            qWarning("%s: %d point(s) of the track \"%s\" stay off the map: their positions are "
                     "out of range or not numbers.",
                     Q_FUNC_INFO, off_map, qUtf8Printable(track.name));
    }
    return lines;
}

QPointF map_scene::follower_offset(int follower)
{
    // Each follower adds a ring area of spacing^2: pi (r_k^2 - r_0^2) = k spacing^2.
    const double radius = std::sqrt(follower_first_radius * follower_first_radius +
                                    follower * follower_spacing * follower_spacing / M_PI);
    const double angle = -M_PI / 4 + follower * golden_angle;
    return QPointF(radius * std::cos(angle), radius * std::sin(angle));
}

QPointF map_scene::screen_position(const map_marker &marker, const map_projection &view) const
{
    const QPointF at = view.to_screen(marker.world);
    if (marker.follower < 0)
        return at;
    return at + follower_offset(marker.follower);
}

QVector<int> map_scene::markers_at(const map_projection &view, const QPointF &screen,
                                   double reach) const
{
    struct hit
    {
        double distance;
        int index;
    };
    QVector<hit> hits;
    for (int i = markers.size() - 1; i >= 0; --i) {
        const QPointF d = screen_position(markers.at(i), view) - screen;
        const double distance = std::hypot(d.x(), d.y());
        if (distance <= reach)
            hits.append({distance, i});
    }
    std::stable_sort(hits.begin(), hits.end(),
                     [](const hit &a, const hit &b) { return a.distance < b.distance; });
    QVector<int> indices;
    indices.reserve(hits.size());
    for (const hit &h : qAsConst(hits))
        indices.append(h.index);
    return indices;
}
