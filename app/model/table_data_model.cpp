#include "model/table_data_model.h"

#include "model/exif_cache.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QSize>
#include <QTime>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace {

const QString arrow_left = QString(QChar(0x2190));
const QString arrow_up = QString(QChar(0x2191));
const QString arrow_down = QString(QChar(0x2193));
const QString indicator_gpx = QStringLiteral("G");
const QString indicator_user = QStringLiteral("=");
const QString indicator_none = QStringLiteral("?");

const int max_zone_seconds = 14 * 3600;

// Keys of exif_cache values, made once: a key built per lookup would cost an
// allocation for each of the ten lookups per photo and rebuild.
const QString key_year = QStringLiteral("rec_year");
const QString key_month = QStringLiteral("rec_month");
const QString key_day = QStringLiteral("rec_day");
const QString key_hour = QStringLiteral("rec_hour");
const QString key_minute = QStringLiteral("rec_minute");
const QString key_second = QStringLiteral("rec_second");
const QString key_zone = QStringLiteral("iptc_timezone");
const QString key_has_position = QStringLiteral("has_gps_position");
const QString key_lat = QStringLiteral("gps_lat");
const QString key_lat_ref = QStringLiteral("gps_lat_ref");
const QString key_lon = QStringLiteral("gps_lon");
const QString key_lon_ref = QStringLiteral("gps_lon_ref");
const QString key_numerical = QStringLiteral("gps_numerical");
const QString key_quicktime = QStringLiteral("has_quicktime_gps");

// An IPTC zone as ExifTool prints it, sign included: "+02:00" == 7200,
// "-05:00" == -18000, "+05:30" == 19800. Hours and minutes are both honoured,
// so half-hour zones keep their half hour; "+0530" and "+05" read the same way.
// Text that doesn't read as a zone, or one beyond 14 hours, gives 0 (UTC).
int iptc_offset_seconds(const QString &zone)
{
    if (zone.size() < 2)
        return 0;
    const QChar sign = zone.at(0);
    if (sign != QLatin1Char('+') && sign != QLatin1Char('-'))
        return 0;
    QString rest = zone.mid(1);
    QString hours_text;
    QString minutes_text;
    const int colon = rest.indexOf(QLatin1Char(':'));
    if (colon >= 0) {
        hours_text = rest.left(colon);
        minutes_text = rest.mid(colon + 1);
    } else if (rest.size() == 4) {
        hours_text = rest.left(2);
        minutes_text = rest.mid(2);
    } else {
        hours_text = rest;
    }
    bool hours_ok = false;
    const int hours = hours_text.toInt(&hours_ok, 10);
    bool minutes_ok = true;
    const int minutes = minutes_text.isEmpty() ? 0 : minutes_text.toInt(&minutes_ok, 10);
    if (!hours_ok || !minutes_ok || hours < 0 || minutes < 0 || minutes > 59)
        return 0;
    const int seconds = hours * 3600 + minutes * 60;
    if (seconds > max_zone_seconds)
        return 0;
    return sign == QLatin1Char('-') ? -seconds : seconds;
}

// A date reduced to what QDateTime::operator< looks at (Qt 5.15, observed):
// every invalid value sorts before every valid one, invalid values are equal
// among themselves, and valid ones compare as instants. Comparing these is
// far cheaper than comparing QDateTime values of local time, which go through
// the C library's time zone code whenever their daylight-saving states differ.
struct date_key
{
    bool valid = false;
    qint64 msecs = 0;

    date_key() = default;
    explicit date_key(const QDateTime &date)
        : valid(date.isValid())
        , msecs(valid ? date.toMSecsSinceEpoch() : 0)
    {}

    bool operator<(const date_key &other) const
    {
        if (valid != other.valid)
            return other.valid;
        return msecs < other.msecs;
    }
};

// QDateTime::secsTo as an absolute value: 0 if either date is invalid, else the
// difference in milliseconds truncated towards zero to whole seconds (so
// 10:00:00.900 to 10:00:01.100 is 0).
qint64 abs_secs_between(const date_key &a, const date_key &b)
{
    if (!a.valid || !b.valid)
        return 0;
    return std::llabs((b.msecs - a.msecs) / 1000);
}

// A difference of exactly the limit passes: 600 s is within 10 minutes.
bool within_limit(qint64 secs, bool limited, int minutes)
{
    return !limited || !(qint64(minutes) * 60 < secs);
}

// The last character of format_gps_coordinate(value, is_latitude): "N"/"E"
// above 0, else "S"/"W" (0 and NaN included). Formatting the whole text for
// each of 100,000 track points only to keep its last letter took a second.
QString reference_letter(float value, bool is_latitude)
{
    if (value > 0)
        return is_latitude ? QStringLiteral("N") : QStringLiteral("E");
    return is_latitude ? QStringLiteral("S") : QStringLiteral("W");
}

struct rebuild_slot
{
    date_key key;
    cache_entry *entry;
};

bool slot_less(const rebuild_slot &a, const rebuild_slot &b)
{
    return a.key < b.key;
}

// `files` ordered by the date key that `key_of` gives each, ascending or
// descending; equal keys keep no promised order.
template <class key_function>
QStringList sorted_by_keys(const QStringList &files, Qt::SortOrder order, key_function key_of)
{
    struct keyed_file
    {
        date_key key;
        int index;
    };
    std::vector<keyed_file> keyed;
    keyed.reserve(size_t(files.size()));
    for (int i = 0; i < files.size(); ++i)
        keyed.push_back({key_of(files.at(i)), i});
    if (order == Qt::AscendingOrder)
        std::sort(keyed.begin(), keyed.end(),
                  [](const keyed_file &a, const keyed_file &b) { return a.key < b.key; });
    else
        std::sort(keyed.begin(), keyed.end(),
                  [](const keyed_file &a, const keyed_file &b) { return b.key < a.key; });
    QStringList sorted;
    sorted.reserve(files.size());
    for (const keyed_file &k : keyed)
        sorted.append(files.at(k.index));
    return sorted;
}

} // namespace

table_data_model::table_data_model(QObject *parent)
    : QAbstractTableModel(parent)
    , header_font_(QStringLiteral("FreeSansBold"), 9, 75)
    , cell_font_(QStringLiteral("FreeSans"), 9)
{}

table_data_model::~table_data_model() = default;

int table_data_model::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : files_.size();
}

int table_data_model::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 3;
}

QVariant table_data_model::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= files_.size())
        return QVariant();
    const QString &file = files_.at(index.row());
    const int column = index.column();
    if (role == Qt::FontRole && column >= 0 && column < 3)
        return cell_font_;
    if (role == Qt::DisplayRole) {
        switch (column) {
        case 0:
            return QFileInfo(file).fileName();
        case 1:
            return date_text(file);
        case 2: {
            const auto it = cache_.constFind(file);
            if (it == cache_.constEnd())
                return QStringLiteral("?  -");
            return QStringLiteral("%1  %2").arg(it->indicator, it->source_text);
        }
        default:
            return QVariant();
        }
    }
    if (role == Qt::UserRole) {
        switch (column) {
        case 0:
            return file;
        case 1:
            return recording_datetime(file);
        case 2: {
            const auto it = cache_.constFind(file);
            if (it == cache_.constEnd() || it->is_source)
                return QVariant();
            return QVariant::fromValue(it->position);
        }
        default:
            return QVariant();
        }
    }
    return QVariant();
}

QVariant table_data_model::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (role) {
    case Qt::DisplayRole:
        switch (section) {
        case 0:
            return tr("Photo");
        case 1:
            return tr("Recording Date");
        case 2:
            return tr("GPS Tag");
        default:
            return QAbstractTableModel::headerData(section, orientation, role);
        }
    case Qt::SizeHintRole: {
        QSize size = QAbstractTableModel::headerData(section, orientation, role).toSize();
        size.setHeight(30);
        if (section == 0)
            size.setWidth(300);
        else if (section == 1)
            size.setWidth(220);
        return size;
    }
    case Qt::InitialSortOrderRole:
        return int(Qt::AscendingOrder);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::FontRole:
        return header_font_;
    default:
        return QAbstractTableModel::headerData(section, orientation, role);
    }
}

void table_data_model::sort(int column, Qt::SortOrder order)
{
    if (column != 1) {
        emit sort_order_override(sort_column_, Qt::SortOrder(sort_order_));
        return;
    }
    emit layoutAboutToBeChanged();
    files_ = sorted_files(order);
    emit layoutChanged();
    sort_order_ = order;
    sort_column_ = column;
    rebuild_cache();
}

void table_data_model::add_file(const QString &file)
{
    insert_file(file, true);
}

void table_data_model::add_cached_file(const QString &file)
{
    insert_file(file, false);
}

void table_data_model::insert_file(const QString &file, bool read_metadata)
{
    if (file_set_.contains(file))
        return;
    // A path with a line break or NUL still gets its row: exif_cache refuses to
    // hand it to ExifTool and takes the file's own date, as for any file that
    // ExifTool can't read. The write flows refuse it the same way.
    if (!QDir::isAbsolutePath(file)) {
        qWarning("%s: Refusing a path that is not absolute: %s", Q_FUNC_INFO, qUtf8Printable(file));
        return;
    }
    const int row = files_.size();
    beginInsertRows(QModelIndex(), row, row);
    files_.append(file);
    file_set_.insert(file);
    if (read_metadata)
        exif_cache::instance()->read_file(file);
    endInsertRows();
}

void table_data_model::refresh()
{
    sort(sort_column_, Qt::SortOrder(sort_order_));
    gps_sync_order_changed(sync_order_);
}

void table_data_model::clear()
{
    beginResetModel();
    files_.clear();
    file_set_.clear();
    dates_.clear();
    endResetModel();
    cache_.clear();
    emit cache_rebuilt(0, 0, 0);
}

void table_data_model::set_gpx_track(const gpx_track &track)
{
    has_track_ = true;
    track_name_ = track.name;
    track_points_ = track.points;

    const int n = track_points_.size();
    std::vector<rebuild_slot> order;
    order.reserve(size_t(n));
    QVector<cache_entry> entries(n);
    for (int i = 0; i < n; ++i) {
        const gpx_point &point = track_points_.at(i);
        cache_entry &entry = entries[i];
        entry.source_text = point.lat + QStringLiteral(", ") + point.lon;
        entry.position.lat = point.lat;
        entry.position.lat_numerical = point.lat;
        entry.position.lon = point.lon;
        entry.position.lon_numerical = point.lon;
        // toFloat gives 0 for text that is no number and ±inf or NaN for
        // "inf" and "nan"; the letter is defined for all of them.
        entry.position.lat_ref = reference_letter(point.lat.toFloat(), true);
        entry.position.lon_ref = reference_letter(point.lon.toFloat(), false);
        entry.date = point.time;
        entry.is_source = true;
        entry.from_gpx = true;
        order.push_back({date_key(point.time), &entry});
    }
    // Sorted once here, so that a rebuild only merges the photos in.
    std::sort(order.begin(), order.end(), slot_less);
    track_entries_.clear();
    track_entries_.reserve(n);
    track_msecs_.clear();
    track_msecs_.reserve(n);
    track_valid_.clear();
    track_valid_.reserve(n);
    for (const rebuild_slot &slot : order) {
        track_entries_.append(std::move(*slot.entry));
        track_msecs_.append(slot.key.msecs);
        track_valid_.append(slot.key.valid);
    }
    rebuild_cache();
}

QDateTime table_data_model::recording_datetime(const QString &file) const
{
    return dated_of(file, exif_cache::instance()->values).date;
}

QDateTime table_data_model::recording_datetime(const exif_tag_map &values)
{
    // The six keys stand side by side in the ordered map, from "rec_day" to
    // "rec_year": one search and a short walk instead of six searches, each
    // of which costs cache misses when thousands of photos are sorted.
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    for (auto it = values.lowerBound(key_day); it != values.constEnd() && !(key_year < it.key());
         ++it) {
        const QString &key = it.key();
        int *field = key == key_day      ? &day
                     : key == key_hour   ? &hour
                     : key == key_minute ? &minute
                     : key == key_month  ? &month
                     : key == key_second ? &second
                     : key == key_year   ? &year
                                         : nullptr;
        if (field)
            *field = it.value().toInt(nullptr, 10);
    }
    const QDate date(year, month, day);
    const QTime time(hour, minute, second, 0);
    const QString zone = values.value(key_zone);
    if (zone.isEmpty())
        return QDateTime(date, time, Qt::LocalTime);
    return QDateTime(date, time, Qt::OffsetFromUTC, iptc_offset_seconds(zone));
}

const table_data_model::dated &
table_data_model::dated_of(const QString &file, const QMap<QString, exif_tag_map> &values) const
{
    const exif_tag_map file_values = values.value(file);
    auto it = dates_.find(file);
    if (it != dates_.end() && it->values.isSharedWith(file_values))
        return *it;
    dated fresh;
    fresh.values = file_values;
    fresh.date = recording_datetime(file_values);
    const date_key key(fresh.date);
    fresh.valid = key.valid;
    fresh.msecs = key.msecs;
    return *dates_.insert(file, fresh);
}

QStringList table_data_model::sorted_files(Qt::SortOrder order) const
{
    const QMap<QString, exif_tag_map> values = exif_cache::instance()->values;
    return sorted_by_keys(files_, order, [&](const QString &file) {
        const dated &d = dated_of(file, values);
        date_key key;
        key.valid = d.valid;
        key.msecs = d.msecs;
        return key;
    });
}

QStringList table_data_model::sorted_by_date(const QStringList &files, Qt::SortOrder order,
                                             const QMap<QString, exif_tag_map> &values)
{
    return sorted_by_keys(files, order, [&](const QString &file) {
        return date_key(recording_datetime(values.value(file)));
    });
}

void table_data_model::rebuild_cache()
{
    cache_.clear();
    all_assigned_ = true;
    overwrites_gps_ = false;
    has_quicktime_gps_ = false;
    // Implicitly shared: the copy costs one reference count; value() never
    // detaches it.
    const QMap<QString, exif_tag_map> values = exif_cache::instance()->values;

    const QString true_text = QStringLiteral("true");
    const int photo_count = files_.size();
    std::vector<cache_entry> photos(static_cast<size_t>(photo_count));
    std::vector<rebuild_slot> photo_slots;
    photo_slots.reserve(size_t(photo_count));
    for (int i = 0; i < photo_count; ++i) {
        cache_entry &entry = photos[size_t(i)];
        entry.file = files_.at(i);
        const dated &d = dated_of(entry.file, values);
        const exif_tag_map &file_values = d.values;
        entry.date = d.date;
        if (file_values.value(key_has_position) == true_text) {
            entry.indicator = arrow_left;
            entry.position.lat = file_values.value(key_lat);
            entry.position.lat_ref = file_values.value(key_lat_ref);
            entry.position.lon = file_values.value(key_lon);
            entry.position.lon_ref = file_values.value(key_lon_ref);
            entry.position.lat_numerical = entry.position.lat;
            entry.position.lon_numerical = entry.position.lon;
            entry.source_text = file_values.value(key_numerical);
            entry.is_source = true;
        }
        if (file_values.value(key_quicktime) == true_text)
            has_quicktime_gps_ = true;
        date_key key;
        key.valid = d.valid;
        key.msecs = d.msecs;
        photo_slots.push_back({key, &entry});
    }

    // The list runs from early to late whatever the table shows; the table's
    // direction only decides which arrow means "earlier". Photos are sorted
    // here and merged with the track, which set_gpx_track sorted.
    std::sort(photo_slots.begin(), photo_slots.end(), slot_less);
    const bool with_track = sync_order_ == sync_gpx && has_track_;
    std::vector<rebuild_slot> list;
    if (with_track) {
        std::vector<rebuild_slot> track_slots;
        track_slots.reserve(size_t(track_entries_.size()));
        for (int i = 0; i < track_entries_.size(); ++i) {
            date_key key;
            key.valid = track_valid_.at(i);
            key.msecs = track_msecs_.at(i);
            track_slots.push_back({key, &track_entries_[i]});
        }
        list.resize(photo_slots.size() + track_slots.size());
        std::merge(photo_slots.begin(), photo_slots.end(), track_slots.begin(), track_slots.end(),
                   list.begin(), slot_less);
    } else {
        list = std::move(photo_slots);
    }

    const bool ascending = sort_order_ == Qt::AscendingOrder;
    const QString &earlier_text = ascending ? arrow_up : arrow_down;
    const QString &later_text = ascending ? arrow_down : arrow_up;

    int assigned = 0;
    int not_assigned = 0;
    int total = 0;
    const auto unassign = [&](cache_entry &entry) {
        entry.indicator = indicator_none;
        entry.source_text = QStringLiteral("-");
        ++not_assigned;
        all_assigned_ = false;
    };
    const auto take = [&](cache_entry &entry, const cache_entry &source) {
        entry.position = source.position;
        entry.source_text = source.source_text;
        entry.source_file = source.file;
        ++assigned;
    };
    const int n = int(list.size());

    switch (sync_order_) {
    case sync_previous:
    case sync_following: {
        const bool previous = sync_order_ == sync_previous;
        const QString &text = previous ? earlier_text : later_text;
        const rebuild_slot *last_source = nullptr;
        for (int step = 0; step < n; ++step) {
            rebuild_slot &slot = list[size_t(previous ? step : n - 1 - step)];
            ++total;
            if (slot.entry->is_source) {
                last_source = &slot;
                continue;
            }
            if (last_source && within_limit(abs_secs_between(slot.key, last_source->key),
                                            closest_limited_, minutes_closest_)) {
                slot.entry->indicator = text;
                take(*slot.entry, *last_source->entry);
            } else {
                unassign(*slot.entry);
            }
        }
        break;
    }
    case sync_closest:
    case sync_gpx: {
        const bool limited = sync_order_ == sync_gpx ? gpx_limited_ : closest_limited_;
        const int minutes = sync_order_ == sync_gpx ? minutes_gpx_ : minutes_closest_;
        total = n;
        // Nearest source on each side, found in two sweeps; a walk stops at
        // the first source it meets, so a side whose nearest source is beyond
        // the limit is given up.
        std::vector<int> earlier_source(size_t(n), -1);
        int last = -1;
        for (int i = 0; i < n; ++i) {
            earlier_source[size_t(i)] = last;
            if (list[size_t(i)].entry->is_source)
                last = i;
        }
        int next = -1;
        for (int i = n - 1; i >= 0; --i) {
            rebuild_slot &slot = list[size_t(i)];
            if (slot.entry->is_source) {
                next = i;
                continue;
            }
            const int before = earlier_source[size_t(i)];
            qint64 secs_before = 0;
            qint64 secs_after = 0;
            bool has_before = false;
            bool has_after = false;
            if (before >= 0) {
                secs_before = abs_secs_between(slot.key, list[size_t(before)].key);
                has_before = within_limit(secs_before, limited, minutes);
            }
            if (next >= 0) {
                secs_after = abs_secs_between(slot.key, list[size_t(next)].key);
                has_after = within_limit(secs_after, limited, minutes);
            }
            if (!has_before && !has_after) {
                unassign(*slot.entry);
                continue;
            }
            // At equal distance the later source wins.
            const bool take_later = has_after && (!has_before || secs_before >= secs_after);
            const cache_entry &source = *list[size_t(take_later ? next : before)].entry;
            slot.entry->indicator = take_later ? later_text : earlier_text;
            take(*slot.entry, source);
            slot.entry->from_gpx = source.from_gpx;
            if (slot.entry->from_gpx)
                slot.entry->indicator = indicator_gpx;
        }
        break;
    }
    case sync_user_position: {
        const QString text =
            set_pos_.lat.isEmpty() && set_pos_.lon.isEmpty()
                ? tr("Clear GPS data")
                : set_pos_.lat_numerical + QStringLiteral(", ") + set_pos_.lon_numerical;
        for (rebuild_slot &slot : list) {
            cache_entry &entry = *slot.entry;
            ++assigned;
            if (entry.is_source) {
                entry.is_source = false;
                overwrites_gps_ = true;
            }
            entry.indicator = indicator_user;
            entry.position = set_pos_;
            entry.source_text = text;
        }
        total = assigned;
        break;
    }
    default:
        std::cerr << "Unknown sync_order " << sync_order_ << std::endl;
        break;
    }

    for (const cache_entry &entry : photos)
        cache_.insert(entry.file, entry);

    if (!files_.isEmpty())
        emit dataChanged(index(0, 0), index(files_.size() - 1, columnCount() - 1));
    emit cache_rebuilt(assigned, not_assigned, total);
}

void table_data_model::gps_sync_order_changed(int order)
{
    std::cout << "Sync order changed to " << order << std::endl;
    emit layoutAboutToBeChanged();
    sync_order_ = order;
    rebuild_cache();
    emit layoutChanged();
}

void table_data_model::gps_set_pos_changed(gps_pos set_pos)
{
    set_pos_ = set_pos;
    rebuild_cache();
    emit layoutChanged();
}

void table_data_model::gps_max_time_difference(int minutes_closest, int minutes_gpx)
{
    minutes_closest_ = minutes_closest;
    minutes_gpx_ = minutes_gpx;
    closest_limited_ = minutes_closest > 0;
    gpx_limited_ = minutes_gpx > 0;
    rebuild_cache();
    emit layoutChanged();
}

void table_data_model::gps_datetime_format_changed(QString format)
{
    datetime_format_ = format;
    emit layoutChanged();
}

QString table_data_model::date_text(const QString &file) const
{
    const QDateTime dt = recording_datetime(file);
    const QString text = dt.toString(datetime_format_);
    if (text.isEmpty())
        return QStringLiteral("-");
    return text + QStringLiteral("  UTC") + format_utc_offset(float(dt.offsetFromUtc() / 3600.0));
}
