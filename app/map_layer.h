#pragma once

#include "map_marker.h"
#include "map_projection.h"

#include <marble/LayerInterface.h>

#include <QColor>
#include <QSizeF>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace Marble {
class GeoPainter;
class GeoSceneLayer;
class ViewportParams;
} // namespace Marble

class map_scene;

// Draws a map_scene over Marble's map: the track lines, a thin line from each
// follower to its source, and one marker per photo in the colour of its kind.
// Markers are small images made once and copied into place: ten thousand
// antialiased shapes would cost more than a repaint may. Track lines are
// thinned to one point per pixel and cut where they leave the view. Reads the
// window's scene through a pointer and owns nothing. GUI thread only, where
// Marble paints.
class map_layer : public Marble::LayerInterface
{
public:
    explicit map_layer(const map_scene *scene);
    ~map_layer() override;

    QStringList renderPosition() const override;
    bool render(Marble::GeoPainter *painter, Marble::ViewportParams *viewport,
                const QString &render_position, Marble::GeoSceneLayer *layer) override;

    // The marker drawn with a ring around it; -1 for none.
    int highlighted = -1;

    // Marble's Mercator view as a map_projection, measured by projecting the
    // centre and a point beside it, so that markers land where Marble puts
    // those coordinates.
    static map_projection projection_of(const Marble::ViewportParams *viewport);

    static QColor colour_of(map_marker::kind_type kind);
    static QColor track_colour();

    // Paints `scene` as `view` shows it on a device of `size` pixels.
    static void paint(QPainter &painter, const map_scene &scene, const map_projection &view,
                      const QSizeF &size, int highlighted);

private:
    const map_scene *scene_;
};
