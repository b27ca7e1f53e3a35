#pragma once

#include <QMetaType>
#include <QString>

#include <optional>
#include <string>

// A position as text, end to end: what was read or typed reaches the file as it
// stands. lat/lon are for display; lat_numerical/lon_numerical are written.
// Both lat and lon empty means "no position" (as a user position: clear GPS).
struct gps_pos
{
    QString lat;
    QString lat_ref;
    QString lon;
    QString lon_ref;
    QString lat_numerical;
    QString lon_numerical;
    // Metres above sea level, negative below; empty: no altitude is written.
    // Initialised, so that brace lists of the six fields stay complete.
    QString altitude{};
};

Q_DECLARE_METATYPE(gps_pos)

// format_gps_coordinate(-19.178194f, true) == "19°10'41\"S"; minutes and
// seconds are truncated; the reference letter is always the last character.
QString format_gps_coordinate(float value, bool is_latitude);

// An altitude beyond 100 km, or what claims to be one, is no place a photo
// was taken; such a value is never written.
constexpr double max_altitude_m = 100000.0;

// format_decimal(-12.5) == "-12.500000", format_decimal(-0.0000004) ==
// "0.000000": six decimals, rounded half away from zero, no minus sign on a
// zero. Many times faster than QString::number, which a rebuild of 10,000
// interpolated photos can't afford.
QString format_decimal(double value);

// format_utc_offset(5.5) == "+05:30"; minutes are truncated.
QString format_utc_offset(float hours);

// Reads "19°10'41.5\"S" style text (local 8-bit encoding). Never fails.
float parse_dms_coordinate(const std::string &text);

// Reads a number from the right, tolerating group marks and junk.
double lenient_to_double(const std::string &text, double default_value);

// Reads the two position fields of the main window; no value means "keep".
std::optional<gps_pos> read_typed_position(const QString &latitude_text,
                                           const QString &longitude_text);
