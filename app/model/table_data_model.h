#pragma once

#include "model/assignment.h"
#include "model/cache_entry.h"
#include "model/camera_clock.h"
#include "model/gps_pos.h"
#include "model/gpx_point.h"
#include "model/gpx_track.h"

#include <vn/exif_tag_map.h>

#include <QAbstractTableModel>
#include <QDateTime>
#include <QFont>
#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

// The photo table: one row per loaded file, columns "Photo", "Recording Date"
// and "GPS Tag". Owns the file list, the assignment settings and the result of
// the last rebuild, which decides the position each photo is to receive. The
// result is a preview; nothing here writes to a file. Main thread only.
// Nothing fails: a photo without a position is a row marked "?".
//
// Every photo's time is the one its camera's clock gives it: read in the
// photo's own zone, else in the camera's zone, then corrected by the camera's
// correction. The table shows, sorts and assigns by that time.
class table_data_model : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY(table_data_model)

public:
    explicit table_data_model(QObject *parent = nullptr);
    ~table_data_model() override;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    // Adds one row at the end and reads the file's tags. Blocks (with events
    // running) while ExifTool reads the file. A path already in the list is
    // ignored; a path that is not absolute or holds a line break or NUL is
    // refused with a warning, since it would reach ExifTool as an argument.
    void add_file(const QString &file);
    // As add_file, for a file whose metadata is in exif_cache already: no
    // ExifTool read. For metadata filled by other means (benchmarks, tests).
    void add_cached_file(const QString &file);
    // Sorts by date and rebuilds in the current mode; for the end of a load.
    void refresh();
    // Removes every row and the last result; settings, the user position and
    // the track stay. Emits cache_rebuilt(0, 0, 0).
    void clear();
    // Stores the track; the next rebuild in sync_gpx uses its points.
    void set_gpx_track(const gpx_track &track);
    // Recomputes every row's position from scratch; ends with cache_rebuilt.
    void rebuild_cache();

    bool all_assigned() const { return all_assigned_; }
    bool overwrites_gps() const { return overwrites_gps_; }
    bool has_quicktime_gps() const { return has_quicktime_gps_; }
    bool is_user_position() const { return sync_order_ == int(sync_mode::sync_user_position); }

    const QStringList &files() const { return files_; }
    const QMap<QString, cache_entry> &cache() const { return cache_; }
    int sync_order() const { return sync_order_; }
    int sort_order() const { return sort_order_; }
    bool has_track() const { return has_track_; }
    const QString &track_name() const { return track_name_; }
    const QList<gpx_point> &track_points() const { return track_points_; }

    // How the photos of `camera` (exif_cache's "camera"; "" for photos that
    // name none) are read. A zone the time-zone database doesn't know and a
    // correction beyond ten years are ignored with a log line. A change sorts
    // and rebuilds, as a change of mode does.
    void set_camera_clock(const QString &camera, const camera_clock &clock);
    camera_clock clock_of(const QString &camera) const;
    // The cameras of the loaded photos, each with its number of photos.
    QMap<QString, int> cameras() const;
    // The loaded photos of one camera, in table order.
    QStringList files_of_camera(const QString &camera) const;

    // The photo's corrected recording time, from the metadata cache and its
    // camera's clock. Invalid if the date fields don't form a date.
    QDateTime recording_datetime(const QString &file) const;
    // The time from the date fields, in the photo's own zone (the EXIF zone,
    // else the IPTC zone), else in the clock's zone; then corrected.
    static QDateTime recording_datetime(const exif_tag_map &values,
                                        const camera_clock &clock = camera_clock());
    // The date as the table's date column shows it: "2015-06-01 12:34:56  UTC+02:00",
    // or "-" when the format gives no text.
    QString date_text(const QDateTime &date) const;

    // `files` ordered by recording date as QDateTime::operator< orders them
    // (invalid dates first), ascending or descending. Equal dates keep no
    // promised order. Reads `values` only, with every camera's clock at its
    // default; used by the benchmarks.
    static QStringList sorted_by_date(const QStringList &files, Qt::SortOrder order,
                                      const QMap<QString, exif_tag_map> &values);

    // The table's files in date order, as sorted_by_date orders them, with
    // each file's corrected date taken from the model's memo. sort() uses it.
    QStringList sorted_files(Qt::SortOrder order) const;

signals:
    // A header click on a column other than the date was refused; the
    // arguments are the sort that stays.
    void sort_order_override(int column, Qt::SortOrder order);
    // End of a rebuild; (0, 0, 0) after clear().
    void cache_rebuilt(int assigned, int not_assigned, int total_entries);

public slots:
    void gps_sync_order_changed(int order);
    void gps_set_pos_changed(gps_pos set_pos);
    void gps_max_time_difference(int minutes_closest, int minutes_gpx);
    void gps_datetime_format_changed(QString format);
    // In the track mode, places a photo between the two track points around
    // it by time instead of on the nearest one; see assignment::settings.
    void gps_interpolation_changed(bool interpolate);
    // A position from the track also carries the track's elevation there.
    void gps_altitude_changed(bool write_altitude);

private:
    // What a rebuild needs of one loaded photo, made from its metadata and its
    // camera's clock and kept while both stay the same. Reading the metadata
    // map and turning date fields into an instant (the C library's zone code,
    // which re-reads the zone file when TZ isn't set) cost more per photo
    // than the whole rebuild may.
    struct photo_fact
    {
        QString file;
        exif_tag_map values; // shares the cache's map; tells when it changed
        QString camera;
        camera_clock clock;    // the camera's clock when the fact was made
        bool own_zone = false; // the photo records its zone
        QDateTime date;        // corrected
        assignment::entry entry;
        gps_pos position; // own position, if entry.is_source
        QString source_text;
        bool quicktime = false;
    };
    void make_fact(photo_fact &fact, const exif_tag_map &values) const;
    // Brings every fact up to date with the metadata cache and the clocks;
    // cheap when neither changed since the last call.
    void refresh_facts() const;
    // The fact of a loaded file, up to date; null for a file not in the table.
    const photo_fact *fact_of(const QString &file) const;
    QVector<int> sorted_ids(Qt::SortOrder order) const;
    void store_results(const assignment::result &result);

    void insert_file(const QString &file, bool read_metadata);
    QString date_tooltip(const photo_fact &fact) const;

    QStringList files_;
    int sort_order_ = Qt::AscendingOrder;
    int sort_column_ = 1;
    int sync_order_ = int(sync_mode::sync_previous);
    QFont header_font_;
    QFont cell_font_;
    QMap<QString, cache_entry> cache_;
    bool all_assigned_ = false;
    bool overwrites_gps_ = false;
    gps_pos set_pos_;
    int minutes_closest_ = -1; // 0 or less: no limit
    int minutes_gpx_ = -1;
    QString datetime_format_;
    bool has_track_ = false;
    bool has_quicktime_gps_ = false;
    QString track_name_;
    QList<gpx_point> track_points_;
    QHash<QString, camera_clock> clocks_; // cameras whose clock isn't the default
    int clock_generation_ = 0;            // counts changes of clocks_

    // The track's points as rebuild entries and as times, in time order, made
    // once per track: a rebuild reads them but never changes a source.
    QVector<cache_entry> track_entries_;
    std::vector<assignment::entry> track_times_;
    std::vector<assignment::place> track_places_;
    bool interpolate_ = false;
    bool write_altitude_ = false;

    // Loaded photos by id, ids in load order. files_ row r is fact row_ids_[r].
    mutable std::vector<photo_fact> facts_;
    QHash<QString, int> ids_;
    QVector<int> row_ids_;
    // Ids in the key order of cache_, so that a rebuild of the same photos
    // writes into the map's nodes instead of making a new map.
    QVector<int> ids_by_path_;
    // The cache's map that the facts were last checked against.
    mutable QMap<QString, exif_tag_map> seen_values_;
    mutable int seen_clock_generation_ = 0;
};
