#pragma once

#include "model/gps_pos.h"

#include <vn/exif_tag_map.h>

#include <QString>
#include <QStringList>

class exif_cache;

// The tag maps that the write flows hand to vn::exiftool::write_tags: the
// position of one photo, the removal of all GPS data, and the record that
// brings a photo back to what it held. Plain functions of their inputs; main
// thread only because exif_cache is. Nothing here talks to ExifTool.
class gps_tag_maps
{
public:
    gps_tag_maps() = delete;

    // The 32 EXIF GPS tags of the undo record, in write order.
    static const QStringList &gps_tags();
    // "XMP:GPSLatitude", "XMP:GPSLongitude", "XMP:GPSAltitude".
    static const QStringList &xmp_gps_tags();
    // gps_tags() without the four position tags and GPSVersionID: emptied
    // beside a typed position, so that nothing of an old position stays.
    static const QStringList &user_position_cleared_tags();

    // What brings `file` back to the GPS tags it had when it was read. The 32
    // tags take the values that the group read holds in the GPS group, and an
    // empty value (which deletes) where the file has no such tag there: a
    // value that ExifTool only derives (Composite) or finds elsewhere (XMP,
    // QuickTime, maker notes) must not come back as a new EXIF tag. With
    // "has_xmp_gps" true the three XMP tags take the values of the XMP group
    // that holds them; any other of the 32 tags that an XMP group holds comes
    // back under "XMP:<tag>", since the typed-position write deletes it there.
    // Values are the printed texts, written back without "#".
    static exif_tag_map build_undo_tags(const exif_cache &cache, const QString &file);

    // What a write flow reads of each file just before it writes it, with
    // vn::exiftool::read_numeric_tags: "GPS:all" and "XMP:GPS*", of the tags
    // named in exact_read_names(): the 32 GPS tags and XMP's GPSDateTime.
    static const QStringList &exact_read_tags();
    static const QStringList &exact_read_names();
    // What brings a file back exactly, from that read: each tag of the GPS
    // group and of an XMP group under its own group, with "#" and the number
    // as read ("GPS:GPSLatitude#" = "43.4674483333333"); each of the 32 GPS
    // tags the file doesn't have, and the three XMP position tags where no
    // XMP group holds them, empty (deleted: a write may have added them). An
    // empty value comes back as an empty text ("GPS:GPSMapDatum#^") where the
    // tag holds text; a number ExifTool read as empty (a rational of 0/0)
    // can't be written back, and is deleted.
    static exif_tag_map exact_undo_tags(const exif_tag_map &read);
    // That read, made of the numbers a load took of the same tags (without
    // the names outside exact_read_names()): exif_cache's `gps_numbers`.
    static exif_tag_map exact_read_of(const exif_tag_map &numbers);

    // The position write for one photo: "GPSLatitude#", "GPSLatitudeRef",
    // "GPSLongitude#", "GPSLongitudeRef"; with `has_xmp_gps` also
    // "XMP:GPSLatitude#" and "XMP:GPSLongitude#"; with `user_position` the 27
    // cleared tags (and "XMP:GPSAltitude" beside XMP GPS) with empty values.
    // With an altitude that reads, "GPSAltitude" (its size, six decimals) and
    // "GPSAltitudeRef" ("Above Sea Level" or "Below Sea Level"); XMP's
    // altitude is left as it is.
    static exif_tag_map sync_tags(const gps_pos &position, bool has_xmp_gps, bool user_position);

    // The same map for every file: "GPS:all" and the three XMP tags, empty.
    static const exif_tag_map &remove_tags();

    // Whether `position` can be written as a whole. ExifTool writes a
    // reference letter even when it can't read the number beside it
    // ("abc", "46,5", "19°10'41.5\"S" or "nan" leave a letter and no
    // coordinate), so a half-new position would remain. Writable are: the
    // empty position (it clears), or two plain decimal numbers within
    // +-90/+-180 with the letters N/S and E/W that agree with their signs,
    // and no altitude or a plain number within max_altitude_m.
    // Otherwise false, with the reason in `why`.
    static bool is_writable(const gps_pos &position, QString *why = nullptr);
};
