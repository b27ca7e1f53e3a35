#include "map_layer.h"

#include "map_scene.h"

#include <marble/GeoPainter.h>
#include <marble/ViewportParams.h>

#include <QHash>
#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

const QColor outline(20, 20, 20);
constexpr int marker_size = 15;      // pixels; the image is square
constexpr double marker_radius = 5;  // of the round markers, without the outline
constexpr double diamond_radius = 7; // of the own-position diamond
constexpr double view_margin = 20;   // markers and lines this far outside still show a part
constexpr double track_width = 3;
constexpr double source_line_width = 1; // Qt draws one-pixel lines on a fast path
constexpr int track_piece = 32;         // points per polyline drawn
constexpr int max_wide_segments = 4000; // in view; beyond, the track is drawn one pixel wide

// Cohen-Sutherland region code of `p` for `area`: 0 inside, one bit per side
// beyond which it lies. A segment whose two codes share a bit can't be seen.
int region_code(const QPointF &p, const QRectF &area)
{
    int code = 0;
    if (p.x() < area.left())
        code |= 1;
    else if (p.x() > area.right())
        code |= 2;
    if (p.y() < area.top())
        code |= 4;
    else if (p.y() > area.bottom())
        code |= 8;
    return code;
}

QImage paint_marker(map_marker::kind_type kind, qreal ratio)
{
    QImage image(QSize(marker_size, marker_size) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(outline, 1.5));
    p.setBrush(map_layer::colour_of(kind));
    const QPointF c(marker_size / 2.0, marker_size / 2.0);
    if (kind == map_marker::own) {
        const double r = diamond_radius;
        p.drawPolygon(QPolygonF(
            {c + QPointF(0, -r), c + QPointF(r, 0), c + QPointF(0, r), c + QPointF(-r, 0)}));
    } else {
        p.drawEllipse(c, marker_radius, marker_radius);
    }
    return image;
}

// One image per kind and pixel ratio, made on first use. GUI thread only.
const QImage &marker_image(map_marker::kind_type kind, qreal ratio)
{
    static QHash<int, QImage> images;
    const int key = int(kind) * 1000 + qRound(ratio * 100);
    auto it = images.find(key);
    if (it == images.end())
        it = images.insert(key, paint_marker(kind, ratio));
    return *it;
}

// The parts of `line` that show in `area`, in screen coordinates, thinned to
// points at least a pixel apart; a single point stays a run of one.
void visible_runs(const QPolygonF &line, const map_projection &view, const QRectF &area,
                  QVector<QPolygonF> &runs)
{
    // A step of more than half the world's width went round the back of the
    // map to the other copy; it is not part of the line.
    const double half_world = M_PI * view.scale;
    QPolygonF run;
    int last_code = 0;
    const auto flush = [&] {
        if (run.size() >= 2 || (run.size() == 1 && last_code == 0))
            runs.append(run);
        run.clear();
    };
    for (int i = 0; i < line.size(); ++i) {
        const QPointF at = view.to_screen(line.at(i));
        const int code = region_code(at, area);
        if (!run.isEmpty()) {
            const QPointF step = at - run.last();
            if ((code & last_code) != 0 || std::fabs(step.x()) > half_world) {
                flush();
            } else if (std::fabs(step.x()) + std::fabs(step.y()) < 1 && i + 1 < line.size()) {
                continue; // within a pixel of the last point drawn
            }
        }
        run.append(at);
        last_code = code;
    }
    flush();
}

void paint_track(QPainter &p, const map_scene &scene, const map_projection &view,
                 const QRectF &area)
{
    QVector<QPolygonF> runs;
    int segments = 0;
    for (const QPolygonF &line : scene.track_lines)
        visible_runs(line, view, area, runs);
    for (const QPolygonF &run : qAsConst(runs))
        segments += int(run.size()) - 1;
    // A wide pen costs Qt about 4 microseconds a segment, a one-pixel pen a
    // tenth of that. Beyond some thousands of segments in view the track is a
    // tangle in which the width no longer shows.
    const double width = segments > max_wide_segments ? 1 : track_width;
    p.setPen(QPen(map_layer::track_colour(), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QPolygonF &run : qAsConst(runs)) {
        if (run.size() == 1) {
            p.drawPoint(run.first());
            continue;
        }
        // Qt strokes a polyline as one outline, and a long track that crosses
        // itself made that cost seconds; short pieces cost in proportion to
        // their length, and round caps hide the seams.
        for (int from = 0; from + 1 < run.size(); from += track_piece - 1)
            p.drawPolyline(run.constData() + from, std::min(track_piece, int(run.size()) - from));
    }
}

} // namespace

map_layer::map_layer(const map_scene *scene)
    : scene_(scene)
{}

map_layer::~map_layer() = default;

QStringList map_layer::renderPosition() const
{
    return {QStringLiteral("HOVERS_ABOVE_SURFACE")};
}

bool map_layer::render(Marble::GeoPainter *painter, Marble::ViewportParams *viewport,
                       const QString &, Marble::GeoSceneLayer *)
{
    paint(*painter, *scene_, projection_of(viewport), QSizeF(viewport->size()), highlighted);
    return true;
}

map_projection map_layer::projection_of(const Marble::ViewportParams *viewport)
{
    const qreal lon = viewport->centerLongitude(); // radians
    const qreal lat = viewport->centerLatitude();
    // The second point lies towards the middle of the map, so that it never
    // crosses the 180th meridian.
    const qreal step = lon > 0 ? -1e-3 : 1e-3;
    qreal x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    viewport->screenCoordinates(lon, lat, x0, y0);
    viewport->screenCoordinates(lon + step, lat, x1, y1);
    map_projection view;
    view.center = map_projection::to_world(qRadiansToDegrees(lat), qRadiansToDegrees(lon));
    view.origin = QPointF(x0, y0);
    view.scale = (x1 - x0) / step;
    return view;
}

QColor map_layer::colour_of(map_marker::kind_type kind)
{
    switch (kind) {
    case map_marker::own:
        return QColor(236, 188, 44);
    case map_marker::from_photo:
        return QColor(74, 158, 255);
    case map_marker::from_track:
        return QColor(64, 192, 96);
    case map_marker::typed:
        return QColor(224, 96, 208);
    }
    return QColor();
}

QColor map_layer::track_colour()
{
    return QColor(214, 56, 48);
}

void map_layer::paint(QPainter &painter, const map_scene &scene, const map_projection &view,
                      const QSizeF &size, int highlighted)
{
    const QRectF area(QPointF(-view_margin, -view_margin),
                      size + QSizeF(2 * view_margin, 2 * view_margin));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setBrush(Qt::NoBrush);

    paint_track(painter, scene, view, area);

    QVector<QLineF> source_lines;
    QVector<QPointF> at(scene.markers.size());
    for (int i = 0; i < scene.markers.size(); ++i) {
        const map_marker &marker = scene.markers.at(i);
        at[i] = scene.screen_position(marker, view);
        if (marker.source < 0)
            continue;
        const QLineF line(at[i], view.to_screen(scene.markers.at(marker.source).world));
        if ((region_code(line.p1(), area) & region_code(line.p2(), area)) == 0)
            source_lines.append(line);
    }
    QColor source_colour = colour_of(map_marker::from_photo);
    source_colour.setAlpha(200);
    painter.setPen(QPen(source_colour, source_line_width));
    painter.drawLines(source_lines);

    const qreal ratio = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    const QPointF half(marker_size / 2.0, marker_size / 2.0);
    for (int i = 0; i < scene.markers.size(); ++i) {
        if (!area.contains(at.at(i)))
            continue;
        const QPointF corner = at.at(i) - half;
        painter.drawImage(QPointF(std::round(corner.x()), std::round(corner.y())),
                          marker_image(scene.markers.at(i).kind, ratio));
    }
    if (highlighted >= 0 && highlighted < scene.markers.size()) {
        painter.setPen(QPen(Qt::white, 2));
        painter.drawEllipse(at.at(highlighted), 9.5, 9.5);
    }
    painter.restore();
}
