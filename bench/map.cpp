// Times the map window on 10,000 generated photos and a 100,000-point track:
// the map's update after a rebuild (the scene made from the model's result,
// in every mode), one repaint of the whole fitted view on each theme, and
// the layer's own share of it; then prints the peak memory of the process
// with the map open. Targets: update <= 50 ms, repaint <= 30 ms.
//
//   bench/map [photos] [points]
//
// Runs offscreen unless QT_QPA_PLATFORM says otherwise. Metadata goes straight
// into exif_cache; ExifTool is not involved. Marble downloads nothing: the
// OpenStreetMap theme shows what its tile cache holds.
#include "map_layer.h"
#include "map_scene.h"
#include "map_window.h"
#include "model/exif_cache.h"
#include "model/gpx_track.h"
#include "model/table_data_model.h"

#include <marble/MarbleModel.h>
#include <marble/MarbleWidget.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace {

struct timing
{
    double best = 0;
    double median = 0;
};

timing measure(int runs, const std::function<void()> &work)
{
    std::vector<double> ms;
    for (int r = 0; r < runs; ++r) {
        QElapsedTimer timer;
        timer.start();
        work();
        ms.push_back(timer.nsecsElapsed() / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return {ms.front(), ms[ms.size() / 2]};
}

// "VmHWM" (peak) or "VmRSS" (now) of /proc/self/status, in kB; -1 elsewhere.
long status_kb(const char *key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(int(qstrlen(key)) + 1).trimmed().split(' ').first().toLong();
    }
    return -1;
}

const QDateTime first(QDate(2020, 6, 1), QTime(8, 0), Qt::UTC);

// A track over the hours of the photos. A walk keeps its heading for a while,
// about five metres a point, as a logger records one; a tangle turns at
// random every point within a few hundred metres, as a logger left lying
// does, and is the worst case for drawing: no point is thinned away.
gpx_track make_track(int photos, int points, bool tangle)
{
    std::mt19937 random(tangle ? 7 : 20200601);
    std::normal_distribution<double> turn(0, 0.15);
    std::normal_distribution<double> jitter(0, 1e-4);
    double lat = 47.0, lon = 11.0, heading = 0;
    gpx_track track{QStringLiteral("bench"), {}};
    track.points.reserve(points);
    for (int j = 0; j < points; ++j) {
        if (tangle) {
            lat = 47.0 + std::fmod(lat - 47.0 + jitter(random), 0.004);
            lon = 11.0 + std::fmod(lon - 11.0 + jitter(random), 0.006);
        } else {
            heading += turn(random);
            lat += 4.5e-5 * std::cos(heading);
            lon += 6.6e-5 * std::sin(heading);
        }
        track.points.append({QString::number(lat, 'f', 7), QString::number(lon, 'f', 7),
                             first.addMSecs(qint64(j) * 1000 * photos * 31 / points)});
    }
    return track;
}

// Photos 2 to 60 seconds apart, a third with a position of their own on the track.
void add_photos(table_data_model &model, int photos, const gpx_track &track)
{
    std::mt19937 random(20200601);
    std::uniform_int_distribution<int> seconds(2, 60);
    QDateTime when = first;
    const int points = track.points.size();
    const auto cache = exif_cache::instance();
    for (int i = 0; i < photos; ++i) {
        when = when.addSecs(seconds(random));
        const QString file = QStringLiteral("/bench/photos/IMG_%1.JPG").arg(i, 6, 10, QChar('0'));
        exif_tag_map values{{"rec_year", "2020"},
                            {"rec_month", "6"},
                            {"rec_day", QString::number(when.date().day())},
                            {"rec_hour", QString::number(when.time().hour())},
                            {"rec_minute", QString::number(when.time().minute())},
                            {"rec_second", QString::number(when.time().second())}};
        if (i % 3 == 0) {
            const gpx_point &near = track.points.at(std::min(points - 1, i * points / photos));
            values["has_gps_position"] = "true";
            values["gps_lat"] = near.lat;
            values["gps_lon"] = near.lon;
            values["gps_numerical"] = near.lat + ", " + near.lon;
        }
        cache->values.insert(file, values);
        model.add_cached_file(file);
    }
}

const char *const mode_names[] = {"previous", "following", "closest", "typed", "gpx"};

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    qputenv("QT_QUICK_BACKEND", "software");
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere bench"));

    const int photos = argc > 1 ? QByteArray(argv[1]).toInt() : 10000;
    const int points = argc > 2 ? QByteArray(argv[2]).toInt() : 100000;
    const int runs = 15;

    table_data_model model;
    const gpx_track track = make_track(photos, points, false);
    add_photos(model, photos, track);
    model.set_gpx_track(track);
    model.gps_max_time_difference(10, 5);
    model.gps_set_pos_changed({"47°0'0\"", "N", "11°0'0\"", "E", "47.0", "11.0"});
    model.refresh();
    const long before_kb = status_kb("VmHWM:");

    map_window window(&model);
    window.resize(1200, 800);
    window.set_tracks({track});
    window.show();
    QCoreApplication::processEvents();
    auto *marble = window.findChild<Marble::MarbleWidget *>();

    std::printf("Map of %d photos and a %d-point track; best and median of %d runs, "
                "milliseconds.\nTargets: update after a rebuild <= 50, repaint of the whole "
                "view <= 30.\n\n",
                photos, points, runs);
    double slowest_update = 0;
    for (int mode = 0; mode < 5; ++mode) {
        model.gps_sync_order_changed(mode);
        const timing update = measure(runs, [&] { window.update_scene(); });
        const map_scene &scene = window.scene();
        std::printf("update after a rebuild  %-9s %6.2f best %6.2f median   (%d markers, %d "
                    "followers' lines, %d without)\n",
                    mode_names[mode], update.best, update.median, int(scene.markers.size()),
                    scene.kind_counts[map_marker::from_photo], scene.without_position);
        slowest_update = std::max(slowest_update, update.median);
    }

    // The view that shows a full preview: the GPX mode, everything fitted;
    // the followers of the closest mode add their lines.
    std::printf("\n");
    double slowest_repaint = 0;
    for (const int mode : {4, 2}) {
        model.gps_sync_order_changed(mode);
        for (const int theme : {int(map_window::plain), int(map_window::openstreetmap)}) {
            window.set_theme(theme);
            window.fit_view();
            marble->repaint(); // loads the theme's data and tiles
            QCoreApplication::processEvents();
            const timing repaint = measure(runs, [&] { marble->repaint(); });
            std::printf("repaint of the whole view, %-9s %-13s %6.2f best %6.2f median  "
                        "(%dx%d)\n",
                        mode_names[mode], theme == map_window::plain ? "plain" : "openstreetmap",
                        repaint.best, repaint.median, marble->width(), marble->height());
            slowest_repaint = std::max(slowest_repaint, repaint.median);
        }
    }
    QImage image(marble->size(), QImage::Format_ARGB32_Premultiplied);
    map_scene track_only = window.scene();
    track_only.markers.clear();
    map_scene markers_only = window.scene();
    markers_only.track_lines.clear();
    using part_type = std::pair<const char *, const map_scene *>;
    for (const part_type &part :
         {part_type("markers and track", &window.scene()), part_type("track alone", &track_only),
          part_type("markers alone", &markers_only)}) {
        const timing layer = measure(runs, [&] {
            QPainter painter(&image);
            map_layer::paint(painter, *part.second, window.view(), QSizeF(marble->size()), -1);
        });
        std::printf("  of which the layer, %-18s %6.2f best %6.2f median\n", part.first, layer.best,
                    layer.median);
    }

    // The worst case for the track: every point a step of a few pixels.
    window.set_tracks({make_track(photos, points, true)});
    window.fit_view();
    marble->repaint();
    const timing tangle = measure(runs, [&] { marble->repaint(); });
    std::printf("repaint of the whole view, a tangled track %6.2f best %6.2f median\n", tangle.best,
                tangle.median);

    std::printf("\nslowest median: update %.2f ms, repaint %.2f ms (tangle %.2f ms)\n",
                slowest_update, slowest_repaint, tangle.median);
    std::printf("peak memory %ld kB with the map open (%ld kB before it opened), now %ld kB\n",
                status_kb("VmHWM:"), before_kb, status_kb("VmRSS:"));
    return 0;
}
