#include "gps_tag_maps.h"

#include "model/exif_cache.h"

#include <QRegularExpression>

#include <cmath>

namespace {

const QString xmp_prefix = QStringLiteral("XMP:");
const QString gps_group_prefix = QStringLiteral("GPS:");

// "XMP-exif:GPSAltitude" gives "GPSAltitude"; keys of other groups give "".
// The group read names XMP groups by their family-1 names (XMP-exif), never
// plain "XMP".
QString xmp_tag_name(const QString &key)
{
    if (!key.startsWith(QLatin1String("XMP")))
        return QString();
    const int colon = key.indexOf(QLatin1Char(':'));
    if (colon < 3)
        return QString();
    const QStringRef group = key.leftRef(colon);
    if (group != QLatin1String("XMP") && !group.startsWith(QLatin1String("XMP-")))
        return QString();
    return key.mid(colon + 1);
}

bool read_coordinate(const QString &text, double limit, double *value)
{
    // What Perl reads as a number, and QString::toDouble as the same one:
    // no group marks, no decimal comma, no hex, no "nan" or "inf".
    static const QRegularExpression plain_number(
        QStringLiteral("^[+-]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([eE][+-]?[0-9]+)?$"));
    if (!plain_number.match(text).hasMatch())
        return false;
    bool ok = false;
    *value = text.toDouble(&ok);
    return ok && std::isfinite(*value) && std::fabs(*value) <= limit;
}

// Metres as a plain number within max_altitude_m of sea level.
bool read_altitude(const QString &text, double *value)
{
    return read_coordinate(text, max_altitude_m, value);
}

bool letter_agrees(double value, const QString &letter, QLatin1String positive,
                   QLatin1String negative)
{
    if (letter == positive)
        return value >= 0;
    if (letter == negative)
        return value <= 0;
    return false;
}

} // namespace

const QStringList &gps_tag_maps::gps_tags()
{
    static const QStringList tags = {
        QStringLiteral("GPSAltitude"),          QStringLiteral("GPSAltitudeRef"),
        QStringLiteral("GPSAreaInformation"),   QStringLiteral("GPSDOP"),
        QStringLiteral("GPSDateStamp"),         QStringLiteral("GPSDestBearing"),
        QStringLiteral("GPSDestBearingRef"),    QStringLiteral("GPSDestDistance"),
        QStringLiteral("GPSDestDistanceRef"),   QStringLiteral("GPSDestLatitude"),
        QStringLiteral("GPSDestLatitudeRef"),   QStringLiteral("GPSDestLongitude"),
        QStringLiteral("GPSDestLongitudeRef"),  QStringLiteral("GPSDifferential"),
        QStringLiteral("GPSHPositioningError"), QStringLiteral("GPSImgDirection"),
        QStringLiteral("GPSImgDirectionRef"),   QStringLiteral("GPSLatitude"),
        QStringLiteral("GPSLatitudeRef"),       QStringLiteral("GPSLongitude"),
        QStringLiteral("GPSLongitudeRef"),      QStringLiteral("GPSMapDatum"),
        QStringLiteral("GPSMeasureMode"),       QStringLiteral("GPSProcessingMethod"),
        QStringLiteral("GPSSatellites"),        QStringLiteral("GPSSpeed"),
        QStringLiteral("GPSSpeedRef"),          QStringLiteral("GPSStatus"),
        QStringLiteral("GPSTimeStamp"),         QStringLiteral("GPSTrack"),
        QStringLiteral("GPSTrackRef"),          QStringLiteral("GPSVersionID"),
    };
    return tags;
}

const QStringList &gps_tag_maps::xmp_gps_tags()
{
    static const QStringList tags = {QStringLiteral("XMP:GPSLatitude"),
                                     QStringLiteral("XMP:GPSLongitude"),
                                     QStringLiteral("XMP:GPSAltitude")};
    return tags;
}

const QStringList &gps_tag_maps::user_position_cleared_tags()
{
    static const QStringList tags = [] {
        QStringList list = gps_tags();
        for (const char *kept :
             {"GPSLatitude", "GPSLatitudeRef", "GPSLongitude", "GPSLongitudeRef", "GPSVersionID"})
            list.removeOne(QLatin1String(kept));
        return list;
    }();
    return tags;
}

exif_tag_map gps_tag_maps::build_undo_tags(const exif_cache &cache, const QString &file)
{
    const exif_tag_map grouped = cache.group_tags.value(file);
    const exif_tag_map values = cache.values.value(file);

    exif_tag_map result;
    for (const QString &name : gps_tags())
        result.insert(name, grouped.value(gps_group_prefix + name));

    // An XMP tag may stand in more than one XMP group; the first in the
    // read's order wins, as ExifTool writes "XMP:<tag>" into one group.
    exif_tag_map xmp_values;
    for (auto it = grouped.cbegin(); it != grouped.cend(); ++it) {
        const QString name = xmp_tag_name(it.key());
        if (!name.isEmpty() && !xmp_values.contains(name))
            xmp_values.insert(name, it.value());
    }

    const bool has_xmp_gps = values.value(QStringLiteral("has_xmp_gps")) == QLatin1String("true");
    if (has_xmp_gps) {
        for (const QString &key : xmp_gps_tags())
            result.insert(key, xmp_values.value(key.mid(xmp_prefix.size())));
    }
    for (const QString &name : gps_tags()) {
        const QString key = xmp_prefix + name;
        if (xmp_gps_tags().contains(key))
            continue;
        auto found = xmp_values.constFind(name);
        if (found != xmp_values.cend())
            result.insert(key, found.value());
    }
    return result;
}

const QStringList &gps_tag_maps::exact_read_tags()
{
    static const QStringList tags = {QStringLiteral("GPS:all"), QStringLiteral("XMP:GPS*")};
    return tags;
}

const QStringList &gps_tag_maps::exact_read_names()
{
    static const QStringList names = gps_tags() + QStringList{QStringLiteral("GPSDateTime")};
    return names;
}

exif_tag_map gps_tag_maps::exact_undo_tags(const exif_tag_map &read)
{
    // ExifTool writes an empty text into these, but refuses an empty number
    // or date and leaves the tag as it was.
    static const QStringList text_tags = {
        QStringLiteral("GPSSatellites"),      QStringLiteral("GPSStatus"),
        QStringLiteral("GPSMeasureMode"),     QStringLiteral("GPSMapDatum"),
        QStringLiteral("GPSDateStamp"),       QStringLiteral("GPSProcessingMethod"),
        QStringLiteral("GPSAreaInformation"),
    };
    const auto holds_text = [](const QString &name) {
        return (name.endsWith(QLatin1String("Ref")) && name != QLatin1String("GPSAltitudeRef")) ||
               text_tags.contains(name);
    };

    exif_tag_map result;
    for (const QString &name : gps_tags())
        result.insert(gps_group_prefix + name + QLatin1Char('#'), QString());
    for (const QString &key : xmp_gps_tags())
        result.insert(key + QLatin1Char('#'), QString());
    for (auto it = read.cbegin(); it != read.cend(); ++it) {
        const QString group = it.key().section(QLatin1Char(':'), 0, 0);
        const QString name = it.key().section(QLatin1Char(':'), 1);
        const bool xmp = !xmp_tag_name(it.key()).isEmpty();
        if ((group != QLatin1String("GPS") && !xmp) || name.isEmpty())
            continue;
        if (xmp)
            result.remove(xmp_prefix + name + QLatin1Char('#'));
        result.remove(it.key() + QLatin1Char('#'));
        const bool empty_text = it.value().isEmpty() && holds_text(name);
        result.insert(it.key() + (empty_text ? QStringLiteral("#^") : QStringLiteral("#")),
                      it.value());
    }
    return result;
}

exif_tag_map gps_tag_maps::exact_read_of(const exif_tag_map &numbers)
{
    exif_tag_map read;
    for (auto it = numbers.cbegin(); it != numbers.cend(); ++it)
        if (exact_read_names().contains(it.key().section(QLatin1Char(':'), 1)))
            read.insert(read.cend(), it.key(), it.value());
    return read;
}

exif_tag_map gps_tag_maps::sync_tags(const gps_pos &position, bool has_xmp_gps, bool user_position)
{
    exif_tag_map tags;
    tags.insert(QStringLiteral("GPSLatitude#"), position.lat_numerical);
    tags.insert(QStringLiteral("GPSLatitudeRef"), position.lat_ref);
    tags.insert(QStringLiteral("GPSLongitude#"), position.lon_numerical);
    tags.insert(QStringLiteral("GPSLongitudeRef"), position.lon_ref);
    if (has_xmp_gps) {
        tags.insert(QStringLiteral("XMP:GPSLatitude#"), position.lat_numerical);
        tags.insert(QStringLiteral("XMP:GPSLongitude#"), position.lon_numerical);
        if (user_position)
            tags.insert(QStringLiteral("XMP:GPSAltitude"), QString());
    }
    if (user_position) {
        for (const QString &name : user_position_cleared_tags())
            tags.insert(name, QString());
    }
    // ExifTool 12.57 writes "GPSAltitude#=-12.5" as 12.5 m above sea level
    // and "1e3" as 1 m: the altitude goes as its plain size, below sea level
    // in the reference. The print forms replace the emptied entries above.
    double altitude = 0;
    if (!position.altitude.isEmpty() && read_altitude(position.altitude, &altitude)) {
        tags.insert(QStringLiteral("GPSAltitude"), format_decimal(std::fabs(altitude)));
        tags.insert(QStringLiteral("GPSAltitudeRef"), altitude < 0
                                                          ? QStringLiteral("Below Sea Level")
                                                          : QStringLiteral("Above Sea Level"));
    }
    return tags;
}

const exif_tag_map &gps_tag_maps::remove_tags()
{
    static const exif_tag_map tags = {
        {QStringLiteral("GPS:all"), QString()},
        {QStringLiteral("XMP:GPSLatitude"), QString()},
        {QStringLiteral("XMP:GPSLongitude"), QString()},
        {QStringLiteral("XMP:GPSAltitude"), QString()},
    };
    return tags;
}

bool gps_tag_maps::is_writable(const gps_pos &position, QString *why)
{
    auto fail = [why](const QString &reason) {
        if (why)
            *why = reason;
        return false;
    };
    if (position.lat_numerical.isEmpty() && position.lon_numerical.isEmpty() &&
        position.lat_ref.isEmpty() && position.lon_ref.isEmpty() && position.altitude.isEmpty())
        return true;

    double lat = 0;
    double lon = 0;
    if (!read_coordinate(position.lat_numerical, 90.0, &lat))
        return fail(QStringLiteral("latitude '%1' is no number within 90 degrees")
                        .arg(position.lat_numerical));
    if (!read_coordinate(position.lon_numerical, 180.0, &lon))
        return fail(QStringLiteral("longitude '%1' is no number within 180 degrees")
                        .arg(position.lon_numerical));
    if (!letter_agrees(lat, position.lat_ref, QLatin1String("N"), QLatin1String("S")))
        return fail(QStringLiteral("latitude reference '%1' doesn't fit '%2'")
                        .arg(position.lat_ref, position.lat_numerical));
    if (!letter_agrees(lon, position.lon_ref, QLatin1String("E"), QLatin1String("W")))
        return fail(QStringLiteral("longitude reference '%1' doesn't fit '%2'")
                        .arg(position.lon_ref, position.lon_numerical));
    double altitude = 0;
    if (!position.altitude.isEmpty() && !read_altitude(position.altitude, &altitude))
        return fail(QStringLiteral("altitude '%1' is no number within %2 m")
                        .arg(position.altitude)
                        .arg(max_altitude_m, 0, 'f', 0));
    return true;
}
