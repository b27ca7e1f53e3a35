#include "model/exif_cache.h"

#include "gps_tag_maps.h"
#include "model/photo_time.h"

#include <vn/exiftool.h>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <initializer_list>
#include <iostream>

namespace {

// Keys and flag texts are static string data: every photo's map shares them.
const QString key_rec_year = QStringLiteral("rec_year");
const QString key_rec_month = QStringLiteral("rec_month");
const QString key_rec_day = QStringLiteral("rec_day");
const QString key_rec_hour = QStringLiteral("rec_hour");
const QString key_rec_minute = QStringLiteral("rec_minute");
const QString key_rec_second = QStringLiteral("rec_second");
const QString key_exif_timezone = QStringLiteral("exif_timezone");
const QString key_iptc_timezone = QStringLiteral("iptc_timezone");
const QString key_has_iptc_date = QStringLiteral("has_iptc_date");
const QString key_has_iptc_time = QStringLiteral("has_iptc_time");
const QString key_has_gps_position = QStringLiteral("has_gps_position");
const QString key_gps_lat = QStringLiteral("gps_lat");
const QString key_gps_lat_ref = QStringLiteral("gps_lat_ref");
const QString key_gps_lon = QStringLiteral("gps_lon");
const QString key_gps_lon_ref = QStringLiteral("gps_lon_ref");
const QString key_gps_numerical = QStringLiteral("gps_numerical");
const QString key_has_xmp_gps = QStringLiteral("has_xmp_gps");
const QString key_has_quicktime_gps = QStringLiteral("has_quicktime_gps");
const QString key_fstop = QStringLiteral("fstop");
const QString key_iso = QStringLiteral("iso");
const QString key_focal_length = QStringLiteral("focal_length");
const QString key_lens = QStringLiteral("lens");
const QString key_camera = QStringLiteral("camera");
const QString key_image_w = QStringLiteral("image_w");
const QString key_image_h = QStringLiteral("image_h");
const QString key_rating = QStringLiteral("rating");
const QString key_shutter_speed_decimal = QStringLiteral("shutter_speed_decimal");
const QString key_shutter_speed_fractional = QStringLiteral("shutter_speed_fractional");
const QString key_orientation = QStringLiteral("orientation");
const QString key_has_data = QStringLiteral("has_data");

const QString text_true = QStringLiteral("true");
const QString text_false = QStringLiteral("false");

// A path that could reach ExifTool as a second argument line, or as an
// option, never goes out.
bool is_safe_path(const QString &file)
{
    if (file.contains(QLatin1Char('\n')) || file.contains(QLatin1Char('\r')) ||
        file.contains(QChar(0)))
        return false;
    return QDir::isAbsolutePath(file);
}

void print_line(const QString &line)
{
    std::cout << line.toStdString() << '\n' << std::flush;
}

// The file's own creation time where the file system keeps one; elsewhere
// (many Linux file systems) the time its metadata last changed.
QDateTime file_time(const QString &file)
{
    if (file.contains(QChar(0)))
        return QDateTime(); // no file system has such a name
    const QFileInfo info(file);
    QDateTime time = info.birthTime();
    if (!time.isValid())
        time = info.metadataChangeTime();
    return time;
}

QString two_digits(int value)
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

void fill_date_from_file(const QString &file, exif_tag_map &derived)
{
    const QDate date = file_time(file).date();
    if (!date.isValid()) {
        qWarning("%s: No date for \"%s\": the file has no readable time.", Q_FUNC_INFO,
                 qUtf8Printable(file));
        return;
    }
    derived.insert(key_rec_year, QString::number(date.year()));
    derived.insert(key_rec_month, two_digits(date.month()));
    derived.insert(key_rec_day, two_digits(date.day()));
}

void fill_time_from_file(const QString &file, exif_tag_map &derived)
{
    const QDateTime when = file_time(file);
    if (!when.isValid()) {
        qWarning("%s: No time for \"%s\": the file has no readable time.", Q_FUNC_INFO,
                 qUtf8Printable(file));
        return;
    }
    const QTime time = when.time();
    derived.insert(key_rec_hour, two_digits(time.hour()));
    derived.insert(key_rec_minute, two_digits(time.minute()));
    derived.insert(key_rec_second, two_digits(time.second()));
}

// "2015:06:01 12:34:56+02:00": the date and the time each by itself; a zone
// is cut off, seconds keep any fraction.
void derive_recording_date(const QString &file, const QString &text, exif_tag_map &derived)
{
    if (text.count(QLatin1Char(' ')) != 1) {
        if (!text.isEmpty())
            print_line(QStringLiteral("Error[%1]: Can't parse exif recording date/time '%2'")
                           .arg(file, text));
        fill_date_from_file(file, derived);
        fill_time_from_file(file, derived);
        return;
    }
    const int blank = text.indexOf(QLatin1Char(' '));
    const QString date_part = text.left(blank);
    QString time_part = text.mid(blank + 1);

    if (date_part.count(QLatin1Char(':')) == 2) {
        const QStringList date = date_part.split(QLatin1Char(':'));
        if (!date.at(0).isEmpty() && !date.at(1).isEmpty() && !date.at(2).isEmpty()) {
            derived.insert(key_rec_year, date.at(0));
            derived.insert(key_rec_month, date.at(1));
            derived.insert(key_rec_day, date.at(2));
        } else {
            print_line(QStringLiteral("Error[%1]: Can't parse exif recording date '%2'")
                           .arg(file, date_part));
            fill_date_from_file(file, derived);
        }
    }

    const int plus = time_part.indexOf(QLatin1Char('+'));
    if (plus >= 0)
        time_part.truncate(plus);
    const int minus = time_part.indexOf(QLatin1Char('-'));
    if (minus >= 0)
        time_part.truncate(minus);

    if (time_part.count(QLatin1Char(':')) == 2) {
        const QStringList time = time_part.split(QLatin1Char(':'));
        if (!time.at(0).isEmpty() && !time.at(1).isEmpty() && !time.at(2).isEmpty()) {
            derived.insert(key_rec_hour, time.at(0));
            derived.insert(key_rec_minute, time.at(1));
            derived.insert(key_rec_second, time.at(2));
        } else {
            print_line(QStringLiteral("Error[%1]: Can't parse exif recording time '%2'")
                           .arg(file, time_part));
            fill_time_from_file(file, derived);
        }
    }
}

// The zone a photo records for its own time, as "+09:00", or empty:
// OffsetTimeOriginal, else a zone that ExifTool prints in DateTimeOriginal
// ("2021:05:16 12:27:36.107-07:00", "2013:07:05 03:18:27Z"). A zone that
// doesn't read as one is logged and passed over.
QString recorded_zone(const QString &file, const exif_tag_map &plain)
{
    const auto offset = plain.constFind(QStringLiteral("OffsetTimeOriginal"));
    if (offset != plain.constEnd()) {
        if (photo_time::read_offset(offset.value()))
            return offset.value();
        qWarning("%s: Ignoring OffsetTimeOriginal '%s' of \"%s\": not a zone such as +09:00.",
                 Q_FUNC_INFO, qUtf8Printable(offset.value()), qUtf8Printable(file));
    }
    const QString text = plain.value(QStringLiteral("DateTimeOriginal"));
    if (text.count(QLatin1Char(' ')) != 1)
        return QString();
    const QString time_part = text.mid(text.indexOf(QLatin1Char(' ')) + 1);
    if (time_part.endsWith(QLatin1Char('Z')))
        return QStringLiteral("+00:00");
    int sign = time_part.indexOf(QLatin1Char('+'));
    if (sign < 0)
        sign = time_part.indexOf(QLatin1Char('-'));
    if (sign < 0)
        return QString();
    const QString zone = time_part.mid(sign);
    if (photo_time::read_offset(zone))
        return zone;
    qWarning("%s: Ignoring the zone '%s' in DateTimeOriginal of \"%s\": not a zone such as "
             "+09:00.",
             Q_FUNC_INFO, qUtf8Printable(zone), qUtf8Printable(file));
    return QString();
}

// "NIKON CORPORATION NIKON D70 #3010123": make, model and serial number, each
// where the file has it; empty for a photo that names none of them.
QString camera_name(const exif_tag_map &plain)
{
    QStringList parts;
    for (const char *tag : {"Make", "Model"}) {
        const QString value = plain.value(QLatin1String(tag)).trimmed();
        if (!value.isEmpty())
            parts << value;
    }
    QString serial = plain.value(QStringLiteral("SerialNumber")).trimmed();
    if (serial.isEmpty())
        serial = plain.value(QStringLiteral("InternalSerialNumber")).trimmed();
    if (!serial.isEmpty())
        parts << QLatin1Char('#') + serial;
    return parts.join(QLatin1Char(' '));
}

QString remove_affix(QString text, const QString &affix)
{
    if (text.startsWith(affix))
        text.remove(0, affix.size());
    if (text.endsWith(affix))
        text.chop(affix.size());
    return text;
}

void derive_camera(const exif_tag_map &plain, exif_tag_map &derived)
{
    for (const QString &key :
         {key_fstop, key_iso, key_focal_length, key_lens, key_camera, key_image_w, key_image_h,
          key_rating, key_shutter_speed_decimal, key_shutter_speed_fractional, key_orientation})
        derived.insert(key, QString());

    auto copy = [&](const QString &tag, const QString &key) {
        const auto it = plain.constFind(tag);
        if (it == plain.constEnd())
            return false;
        derived.insert(key, it.value());
        return true;
    };

    if (plain.contains(QStringLiteral("FNumber"))) {
        QString fstop = plain.value(QStringLiteral("FNumber"));
        for (const char *affix : {"f", "F", " "})
            fstop = remove_affix(fstop, QLatin1String(affix));
        derived.insert(key_fstop, fstop);
    }
    copy(QStringLiteral("ISO"), key_iso);
    if (plain.contains(QStringLiteral("FocalLength"))) {
        QString focal = plain.value(QStringLiteral("FocalLength"));
        for (const char *affix : {"mm", " "})
            focal = remove_affix(focal, QLatin1String(affix));
        derived.insert(key_focal_length, focal);
    }
    derived.insert(key_camera, camera_name(plain));
    if (!copy(QStringLiteral("LensModel"), key_lens))
        copy(QStringLiteral("Lens"), key_lens);

    bool exif_size = false;
    const QString exif_w = plain.value(QStringLiteral("ExifImageWidth"));
    if (!exif_w.isEmpty()) {
        derived.insert(key_image_w, exif_w);
        exif_size = true;
    }
    const QString exif_h = plain.value(QStringLiteral("ExifImageHeight"));
    if (!exif_h.isEmpty()) {
        derived.insert(key_image_h, exif_h);
        exif_size = true;
    }
    if (!exif_size) {
        copy(QStringLiteral("ImageWidth"), key_image_w);
        copy(QStringLiteral("ImageHeight"), key_image_h);
    }

    copy(QStringLiteral("Rating"), key_rating);
    if (copy(QStringLiteral("ShutterSpeed"), key_shutter_speed_fractional)) {
        const QStringList parts =
            plain.value(QStringLiteral("ShutterSpeed")).split(QLatin1Char('/'));
        // A zero denominator leaves the quotient empty rather than infinite.
        const int denominator = parts.size() > 1 ? parts.at(1).toInt() : 0;
        if (denominator != 0) {
            const float quotient = float(parts.at(0).toInt()) / float(denominator);
            derived.insert(key_shutter_speed_decimal, QString::number(double(quotient), 'g', 6));
        }
    }
    copy(QStringLiteral("Orientation"), key_orientation);
}

// One half of a printed position, `48 deg 8' 13.20" N`, as signed decimal
// text; false when the half has fewer tokens than that form.
bool read_position_half(const QString &half, const QString &positive_letter, QString *number,
                        QString *letter)
{
    const QStringList tokens = half.trimmed().split(QLatin1Char(' '));
    if (tokens.size() < 5)
        return false;
    QString minutes = tokens.at(2);
    if (minutes.startsWith(QLatin1Char('\'')))
        minutes.remove(0, 1);
    if (minutes.endsWith(QLatin1Char('\'')))
        minutes.chop(1);
    QString seconds = tokens.at(3);
    if (seconds.startsWith(QLatin1Char('"')))
        seconds.remove(0, 1);
    if (seconds.endsWith(QLatin1Char('"')))
        seconds.chop(1);
    double value =
        tokens.at(0).toDouble() + minutes.toDouble() / 60.0 + seconds.toDouble() / 3600.0;
    if (tokens.at(4) != positive_letter)
        value = -value;
    *number = QString::number(value, 'f', 6).replace(QLatin1Char(','), QLatin1Char('.'));
    *letter = tokens.at(4);
    return true;
}

// ExifTool's composite GPSPosition is the one source of a photo's position.
void derive_position(const exif_tag_map &plain, exif_tag_map &derived)
{
    for (const QString &key : {key_gps_lat, key_gps_lat_ref, key_gps_lon, key_gps_lon_ref,
                               key_has_gps_position, key_gps_numerical})
        derived.insert(key, QString());
    const auto it = plain.constFind(QStringLiteral("GPSPosition"));
    if (it == plain.constEnd())
        return;
    if (it.value() != QLatin1String("-"))
        derived.insert(key_has_gps_position, text_true);
    const QStringList halves = it.value().split(QLatin1Char(','));
    if (halves.size() != 2)
        return;

    QString lat, lat_ref, lon, lon_ref;
    const bool has_lat = read_position_half(halves.at(0), QStringLiteral("N"), &lat, &lat_ref);
    const bool has_lon = read_position_half(halves.at(1), QStringLiteral("E"), &lon, &lon_ref);
    if (has_lat) {
        derived.insert(key_gps_lat, lat);
        derived.insert(key_gps_lat_ref, lat_ref);
    }
    if (has_lon) {
        derived.insert(key_gps_lon, lon);
        derived.insert(key_gps_lon_ref, lon_ref);
    }
    if (has_lat && has_lon)
        derived.insert(key_gps_numerical, lat + QLatin1String(", ") + lon);
}

// "IPTC:TimeCreated", and the same tag of a further record ("IPTC2:...").
bool is_iptc_key(const QString &key, QLatin1String tag)
{
    if (!key.startsWith(QLatin1String("IPTC")) || !key.endsWith(tag))
        return false;
    const int colon = key.size() - tag.size() - 1;
    if (colon < 4 || key.at(colon) != QLatin1Char(':'))
        return false;
    for (int i = 4; i < colon; ++i) {
        if (!key.at(i).isDigit())
            return false;
    }
    return true;
}

// The group of a "Group:Tag" key is one of `groups`, or, with `prefix_group`,
// starts with it and a dash ("XMP-exif").
bool key_in_groups(const QString &key, QLatin1String tag,
                   std::initializer_list<const char *> groups, const char *prefix_group)
{
    if (!key.endsWith(tag))
        return false;
    const int colon = key.size() - tag.size() - 1;
    if (colon < 1 || key.at(colon) != QLatin1Char(':'))
        return false;
    const QStringRef group = key.leftRef(colon);
    for (const char *name : groups) {
        if (group == QLatin1String(name))
            return true;
    }
    if (prefix_group != nullptr) {
        const QLatin1String prefix(prefix_group);
        return group.startsWith(prefix) && group.size() > prefix.size() &&
               group.at(prefix.size()) == QLatin1Char('-');
    }
    return false;
}

void derive_groups(const exif_tag_map &grouped, exif_tag_map &derived)
{
    derived.insert(key_has_iptc_date, text_false);
    derived.insert(key_has_iptc_time, text_false);
    derived.insert(key_iptc_timezone, QString());
    derived.insert(key_has_xmp_gps, text_false);
    derived.insert(key_has_quicktime_gps, text_false);

    const QLatin1String date_created("DateCreated");
    const QLatin1String time_created("TimeCreated");
    const QLatin1String gps_latitude("GPSLatitude");
    const QLatin1String gps_coordinates("GPSCoordinates");

    // The first record's time is the one that counts where there are two.
    QString time_value;
    bool has_time = false;
    for (auto it = grouped.constBegin(); it != grouped.constEnd(); ++it) {
        const QString &key = it.key();
        if (is_iptc_key(key, date_created)) {
            derived.insert(key_has_iptc_date, text_true);
        } else if (is_iptc_key(key, time_created)) {
            if (!has_time || key == QLatin1String("IPTC:TimeCreated"))
                time_value = it.value();
            has_time = true;
        } else if (!it.value().isEmpty() && key_in_groups(key, gps_latitude, {"XMP"}, "XMP")) {
            derived.insert(key_has_xmp_gps, text_true);
        } else if (!it.value().isEmpty() &&
                   key_in_groups(key, gps_coordinates,
                                 {"QuickTime", "Keys", "UserData", "ItemList"}, nullptr)) {
            derived.insert(key_has_quicktime_gps, text_true);
        }
    }
    if (!has_time)
        return;
    derived.insert(key_has_iptc_time, text_true);
    int zone = time_value.indexOf(QLatin1Char('+'));
    if (zone < 0)
        zone = time_value.indexOf(QLatin1Char('-'));
    if (zone >= 0)
        derived.insert(key_iptc_timezone, time_value.mid(zone));
}

} // namespace

std::shared_ptr<exif_cache> exif_cache::instance()
{
    static const std::shared_ptr<exif_cache> cache = std::make_shared<exif_cache>();
    return cache;
}

// Blocks the main thread, with events running, for both reads.
void exif_cache::read_file(const QString &file)
{
    if (!is_safe_path(file)) {
        // Such a name never reaches ExifTool: the file is kept as one that
        // ExifTool told nothing about.
        qWarning("%s: Not reading \"%s\": not an absolute path on a single line.", Q_FUNC_INFO,
                 qUtf8Printable(file));
        store(file, exif_tag_map(), exif_tag_map());
        return;
    }
    const file_stamp stamp = file_stamp::of(file);
    const exif_tag_map plain = vn::exiftool::read_tags(file, false);
    const exif_tag_map grouped =
        vn::exiftool::read_tags(file, true, gps_tag_maps::exact_read_tags());
    store(file, plain, grouped);
    // A read that failed gives no tags at all, not even the file's own:
    // its numbers would claim a photo without GPS data.
    if (!grouped.isEmpty())
        stamps.insert(file, stamp);
}

void exif_cache::store(const QString &file, const exif_tag_map &plain, const exif_tag_map &read)
{
    // The numbers come under their key with "#" appended; the rest of the
    // grouped read is as without them.
    exif_tag_map grouped;
    exif_tag_map numbers;
    for (auto it = read.cbegin(); it != read.cend(); ++it) {
        if (it.key().endsWith(QLatin1Char('#')))
            numbers.insert(it.key().chopped(1), it.value());
        else
            grouped.insert(grouped.cend(), it.key(), it.value());
    }
    stamps.remove(file);
    gps_numbers.insert(file, numbers);
    tags.insert(file, shared_names(plain));
    group_tags.insert(file, shared_names(grouped));
    exif_tag_map derived = values.value(file);
    derive(file, plain, grouped, derived);
    values.insert(file, derived);
}

void exif_cache::derive(const QString &file, const exif_tag_map &plain, const exif_tag_map &grouped,
                        exif_tag_map &derived)
{
    derive_recording_date(file, plain.value(QStringLiteral("DateTimeOriginal")), derived);
    derived.insert(key_exif_timezone, recorded_zone(file, plain));
    derive_camera(plain, derived);
    derive_position(plain, derived);
    derive_groups(grouped, derived);
    derived.insert(key_has_data, text_true);
}

exif_tag_map exif_cache::shared_names(const exif_tag_map &map)
{
    exif_tag_map result;
    for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
        auto name = names_.constFind(it.key());
        if (name == names_.constEnd())
            name = names_.insert(it.key());
        // Appending in key order: the map's hint insert stays linear.
        result.insert(result.constEnd(), *name, it.value());
    }
    return result;
}

void exif_cache::clear()
{
    values.clear();
    tags.clear();
    group_tags.clear();
    gps_numbers.clear();
    stamps.clear();
    names_.clear();
}
