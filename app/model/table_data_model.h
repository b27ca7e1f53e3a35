#pragma once

#include "model/cache_entry.h"
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

// The photo table: one row per loaded file, columns "Photo", "Recording Date"
// and "GPS Tag". Owns the file list, the assignment settings and the result of
// the last rebuild, which decides the position each photo is to receive. The
// result is a preview; nothing here writes to a file. Main thread only.
// Nothing fails: a photo without a position is a row marked "?".
class table_data_model : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY(table_data_model)

public:
    enum sync_mode {
        sync_previous = 0,
        sync_following = 1,
        sync_closest = 2,
        sync_user_position = 3,
        sync_gpx = 4,
    };

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
    bool is_user_position() const { return sync_order_ == sync_user_position; }

    const QStringList &files() const { return files_; }
    const QMap<QString, cache_entry> &cache() const { return cache_; }
    int sync_order() const { return sync_order_; }
    int sort_order() const { return sort_order_; }
    bool has_track() const { return has_track_; }
    const QString &track_name() const { return track_name_; }
    const QList<gpx_point> &track_points() const { return track_points_; }

    // The photo's recording date from the metadata cache: local time, or
    // the offset of its IPTC zone if it has one. Invalid if the date fields
    // don't form a date.
    QDateTime recording_datetime(const QString &file) const;
    static QDateTime recording_datetime(const exif_tag_map &values);
    // The date as the table's date column shows it: "2015-06-01 12:34:56  UTC+02:00",
    // or "-" when the format gives no text.
    QString date_text(const QString &file) const;

    // `files` ordered by recording date as QDateTime::operator< orders them
    // (invalid dates first), ascending or descending. Equal dates keep no
    // promised order. Reads `values` only; used by sort() and the benchmarks.
    static QStringList sorted_by_date(const QStringList &files, Qt::SortOrder order,
                                      const QMap<QString, exif_tag_map> &values);

    // The table's files in date order, as sorted_by_date orders them, with
    // each file's date taken from the model's memo. sort() uses it.
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

private:
    // A file's recording date with its sort key, kept while the file's
    // metadata stays the same map. Turning the date fields into a local time
    // costs a trip through the C library's time zone code, which re-reads the
    // zone file when TZ isn't set; a rebuild must not pay that per photo.
    struct dated
    {
        exif_tag_map values; // shares the cache's map; tells when it changed
        QDateTime date;
        bool valid = false;
        qint64 msecs = 0;
    };
    const dated &dated_of(const QString &file, const QMap<QString, exif_tag_map> &values) const;

    void insert_file(const QString &file, bool read_metadata);

    QStringList files_;
    QSet<QString> file_set_; // the same paths, for the duplicate test of a load
    int sort_order_ = Qt::AscendingOrder;
    int sort_column_ = 1;
    int sync_order_ = sync_previous;
    QFont header_font_;
    QFont cell_font_;
    QMap<QString, cache_entry> cache_;
    bool all_assigned_ = false;
    bool overwrites_gps_ = false;
    gps_pos set_pos_;
    bool closest_limited_ = false;
    bool gpx_limited_ = false;
    int minutes_closest_ = -1;
    int minutes_gpx_ = -1;
    QString datetime_format_;
    bool has_track_ = false;
    bool has_quicktime_gps_ = false;
    QString track_name_;
    QList<gpx_point> track_points_;

    // The track's points as rebuild entries, in time order, made once per
    // track: a rebuild reads them but never changes a source.
    QVector<cache_entry> track_entries_;
    QVector<qint64> track_msecs_;
    QVector<bool> track_valid_;

    mutable QHash<QString, dated> dates_;
};
