// Times table_data_model::rebuild_cache in every mode (the GPX mode with and
// without placing photos between points) and both table
// directions, the date sort of the file list alone, and a change of one
// camera's clock, on generated photos of five cameras with different zones
// and corrections and a generated track. Metadata goes straight into
// exif_cache; ExifTool is not involved. Prints one line per figure and the
// slowest rebuild last.
#include "model/camera_clock.h"
#include "model/exif_cache.h"
#include "model/gpx_track.h"
#include "model/photo_time.h"
#include "model/table_data_model.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>

#include <time.h>

namespace {

// Fewer runs for the largest set, whose single rebuild takes long enough to
// be measured once.
int repeats_for(int photos)
{
    return photos >= 100000 ? 1 : 5;
}

struct data_set
{
    QStringList files;
    gpx_track track;
};

// Five cameras: this computer's zone, places on both sides of UTC (with their
// daylight saving), a fixed offset, and one that records its zone in each photo.
struct camera_setup
{
    const char *name;
    camera_clock clock;
    const char *recorded_zone;
};
const camera_setup cameras[] = {
    {"Local Cam", {QByteArray(), 45}, ""},    {"Tokyo Cam", {"Asia/Tokyo", 180}, ""},
    {"Offset Cam", {"UTC+05:30", -3600}, ""}, {"New York Cam", {"America/New_York", 86430}, ""},
    {"Phone", {QByteArray(), -90}, "+02:00"},
};

// Photos a few seconds to a few hours apart, a third with a position, taken
// in turn by the five cameras, whose clocks show the instant as their zone
// and error make them; and `points_per_photo` track points spread evenly
// over the same span, in UTC.
data_set make_data(int photos, int points_per_photo)
{
    std::mt19937 random(20200601);
    std::uniform_int_distribution<int> percent(0, 99);
    std::uniform_int_distribution<int> seconds(2, 60);
    std::uniform_int_distribution<int> minutes(1, 30);
    std::uniform_int_distribution<int> hours(1, 3);

    auto cache = exif_cache::instance();
    cache->values.clear();
    data_set data;
    QDateTime when(QDate(2020, 6, 1), QTime(8, 0, 0), Qt::LocalTime);
    const QDateTime first = when;
    for (int i = 0; i < photos; ++i) {
        const int kind = percent(random);
        when = when.addSecs(kind < 70   ? seconds(random)
                            : kind < 95 ? minutes(random) * 60
                                        : hours(random) * 3600);
        const QString file = QString("/bench/photos/IMG_%1.JPG").arg(i, 6, 10, QChar('0'));
        const camera_setup &camera = cameras[i % 5];
        const QDateTime recorded = QString(camera.recorded_zone).isEmpty()
                                       ? photo_time::to_zone(when, camera.clock.zone)
                                       : when.toOffsetFromUtc(7200);
        const QDateTime shown = recorded.addSecs(-camera.clock.correction_s);
        exif_tag_map values;
        values["rec_year"] = QString::number(shown.date().year());
        values["rec_month"] = QString::number(shown.date().month());
        values["rec_day"] = QString::number(shown.date().day());
        values["rec_hour"] = QString::number(shown.time().hour());
        values["rec_minute"] = QString::number(shown.time().minute());
        values["rec_second"] = QString::number(shown.time().second());
        values["exif_timezone"] = camera.recorded_zone;
        values["camera"] = camera.name;
        values["has_data"] = "true";
        if (i % 3 == 0) {
            const QString lat = QString::number(47.0 + i * 1e-5, 'f', 6);
            const QString lon = QString::number(11.0 + i * 1e-5, 'f', 6);
            values["has_gps_position"] = "true";
            values["gps_lat"] = lat;
            values["gps_lat_ref"] = "N";
            values["gps_lon"] = lon;
            values["gps_lon_ref"] = "E";
            values["gps_numerical"] = lat + ", " + lon;
        }
        cache->values.insert(file, values);
        data.files << file;
    }
    // Load order is not time order: shuffle so that the first sort has work.
    std::shuffle(data.files.begin(), data.files.end(), random);

    const int points = photos * points_per_photo;
    const qint64 span = std::max<qint64>(1, first.secsTo(when));
    const QDateTime start = first.toUTC();
    data.track.name = "bench";
    data.track.points.reserve(points);
    for (int j = 0; j < points; ++j) {
        data.track.points.append({QString::number(46.5 + j * 1e-6, 'f', 7),
                                  QString::number(10.5 + j * 1e-6, 'f', 7),
                                  start.addMSecs(span * 1000 * j / std::max(1, points)),
                                  QString::number(500 + j % 1000 * 0.1, 'f', 1)});
    }
    return data;
}

double thread_cpu_ms()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

struct timing
{
    double wall_ms = 1e300;
    double cpu_ms = 1e300;
};

// Best wall time and best thread CPU time of the runs. On a shared machine the
// CPU time is the steadier figure; the wall time is what a user waits.
timing best_ms(int repeats, const std::function<void()> &work)
{
    timing best;
    for (int r = 0; r < repeats; ++r) {
        QElapsedTimer timer;
        const double cpu_start = thread_cpu_ms();
        timer.start();
        work();
        best.wall_ms = std::min(best.wall_ms, timer.nsecsElapsed() / 1e6);
        best.cpu_ms = std::min(best.cpu_ms, thread_cpu_ms() - cpu_start);
    }
    return best;
}

// The GPX mode twice: as it starts, then placing photos between points,
// with altitudes.
const char *const mode_names[] = {"previous",      "following", "closest",
                                  "user position", "gpx",       "gpx between"};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);

    // Photo counts to measure may be given as arguments; 10 points per photo.
    QList<int> sizes;
    for (int i = 1; i < argc; ++i)
        sizes << QByteArray(argv[i]).toInt();
    if (sizes.isEmpty())
        sizes = {1000, 10000, 100000};

    std::printf("Rebuild and sort, best of %d runs (%d at 100,000 photos), milliseconds.\n",
                repeats_for(0), repeats_for(100000));
    std::printf("Targets at 10,000 photos of 5 cameras and 100,000 points: rebuild <= 10, "
                "sort <= 20.\n\n");

    double slowest = 0;
    double slowest_cpu = 0;
    QString slowest_what;
    for (const int photos : sizes) {
        const data_set data = make_data(photos, 10);
        table_data_model model;
        for (const camera_setup &camera : cameras)
            model.set_camera_clock(camera.name, camera.clock);
        for (const QString &file : data.files)
            model.add_cached_file(file);
        const timing track_ms = best_ms(1, [&] { model.set_gpx_track(data.track); });
        model.gps_max_time_difference(10, 5);
        model.gps_set_pos_changed({"47°0'0\"", "N", "11°0'0\"", "E", "47.0", "11.0"});

        // As after a load: the table in ascending date order.
        model.sort(1, Qt::AscendingOrder);
        const auto values = exif_cache::instance()->values;
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            // As the table holds them (in date order, so a header click sorts
            // them the other way round), and in load order, which is shuffled.
            const timing sort_ms = best_ms(repeats_for(photos), [&] {
                const QStringList sorted = model.sorted_files(order);
                Q_UNUSED(sorted)
            });
            const timing shuffled_ms = best_ms(repeats_for(photos), [&] {
                const QStringList sorted =
                    table_data_model::sorted_by_date(data.files, order, values);
                Q_UNUSED(sorted)
            });
            const char *const order_name = order == Qt::AscendingOrder ? "ascending" : "descending";
            std::printf("photos %6d points %7d  sort    %-13s %-10s %9.2f ms wall %9.2f ms cpu\n",
                        photos, data.track.points.size(), "table files", order_name,
                        sort_ms.wall_ms, sort_ms.cpu_ms);
            std::printf("photos %6d points %7d  sort    %-13s %-10s %9.2f ms wall %9.2f ms cpu\n",
                        photos, data.track.points.size(), "load order", order_name,
                        shuffled_ms.wall_ms, shuffled_ms.cpu_ms);
            model.sort(1, order);
            for (int mode = 0; mode < 6; ++mode) {
                model.gps_interpolation_changed(mode == 5);
                model.gps_altitude_changed(mode == 5);
                model.gps_sync_order_changed(std::min(mode, 4));
                const timing ms = best_ms(repeats_for(photos), [&] { model.rebuild_cache(); });
                std::printf(
                    "photos %6d points %7d  rebuild %-13s %-10s %9.2f ms wall %9.2f ms cpu\n",
                    photos, data.track.points.size(), mode_names[mode],
                    order == Qt::AscendingOrder ? "ascending" : "descending", ms.wall_ms,
                    ms.cpu_ms);
                if (photos == 10000 && ms.wall_ms > slowest) {
                    slowest = ms.wall_ms;
                    slowest_cpu = ms.cpu_ms;
                    slowest_what = QString("%1, %2").arg(
                        mode_names[mode], order == Qt::AscendingOrder ? "ascending" : "descending");
                }
            }
        }
        std::printf("photos %6d points %7d  set_gpx_track (once per track)  %9.2f ms wall %9.2f ms "
                    "cpu\n",
                    photos, data.track.points.size(), track_ms.wall_ms, track_ms.cpu_ms);
        // A new correction for the Tokyo camera: its photos' times anew, then
        // the sort and the rebuild in the GPX mode.
        qint64 correction = cameras[1].clock.correction_s;
        const timing clock_ms = best_ms(repeats_for(photos), [&] {
            model.set_camera_clock(cameras[1].name, {cameras[1].clock.zone, ++correction});
        });
        std::printf("photos %6d points %7d  set_camera_clock (one camera)   %9.2f ms wall %9.2f ms "
                    "cpu\n\n",
                    photos, data.track.points.size(), clock_ms.wall_ms, clock_ms.cpu_ms);
    }
    if (!slowest_what.isEmpty())
        std::printf(
            "slowest rebuild at 10,000 photos of 5 cameras and 100,000 points: %.2f ms wall, "
            "%.2f ms cpu (%s)\n",
            slowest, slowest_cpu, qPrintable(slowest_what));
    return 0;
}
