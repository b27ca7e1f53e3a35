#include "model/gps_pos.h"

#include <QLocale>

#include <cfloat>
#include <cmath>
#include <limits>

namespace {

const int gps_pos_meta_type_id = qRegisterMetaType<gps_pos>("gps_pos");

const QChar degree_sign(0x00B0);

// Whole part of a non-negative value as decimal text. Printing the floored
// double avoids a cast to an integer type, which is undefined for NaN,
// infinity and anything beyond the integer's range.
QString whole_text(double value, int width = 0)
{
    return QStringLiteral("%1").arg(std::floor(value), width, 'f', 0, QLatin1Char('0'));
}

// A double outside float's range turned into a float is undefined behaviour;
// such values become infinities of their sign instead.
float to_float(double value)
{
    if (std::isnan(value))
        return std::numeric_limits<float>::quiet_NaN();
    if (value > double(FLT_MAX))
        return std::numeric_limits<float>::infinity();
    if (value < -double(FLT_MAX))
        return -std::numeric_limits<float>::infinity();
    return float(value);
}

// Typed text to a number for the range test: C locale first, then the
// default locale, then the text with its commas as points, then degrees,
// minutes and seconds. `text` keeps or becomes
// what is written as the numerical value.
float read_typed_coordinate(QString &text)
{
    bool ok = false;
    float value = text.toFloat(&ok);
    if (ok)
        return value;
    value = QLocale().toFloat(text, &ok);
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    if (ok)
        return value;
    // A decimal comma typed where the locale writes a point ("46,5" on an
    // English system) is still that number, not a text without marks that
    // reads as 0: a silent 0°0'0" would be written into every photo.
    value = text.toFloat(&ok);
    if (ok)
        return value;
    value = parse_dms_coordinate(text.toLocal8Bit().toStdString());
    text = QString::number(double(value), 'f', 6);
    return value;
}

} // namespace

QString format_gps_coordinate(float value, bool is_latitude)
{
    const double absolute = std::fabs(double(value));
    const double degrees = std::floor(absolute);
    const double minutes_exact = (absolute - degrees) * 60.0;
    const double minutes = std::floor(minutes_exact);
    const double seconds = std::floor((minutes_exact - minutes) * 60.0);
    QString letter;
    if (is_latitude)
        letter = value > 0 ? QStringLiteral("N") : QStringLiteral("S");
    else
        letter = value > 0 ? QStringLiteral("E") : QStringLiteral("W");
    return QStringLiteral("%1%2%3'%4\"%5")
        .arg(whole_text(degrees), degree_sign, whole_text(minutes), whole_text(seconds), letter);
}

QString format_decimal(double value)
{
    // Millionths as an integer are exact up to 2^53; beyond that, and for
    // NaN and infinities, the slow and general way.
    constexpr double exact_limit = 9.0e15;
    const double millionths = std::round(value * 1e6);
    if (!(std::fabs(millionths) < exact_limit))
        return QString::number(value, 'f', 6);
    qint64 rest = qint64(std::fabs(millionths));
    char text[24];
    char *end = text + sizeof text;
    char *c = end;
    for (int digit = 0; digit < 6; ++digit, rest /= 10)
        *--c = char('0' + rest % 10);
    *--c = '.';
    do {
        *--c = char('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (millionths < 0)
        *--c = '-';
    return QString::fromLatin1(c, int(end - c));
}

QString format_utc_offset(float hours)
{
    const double absolute = std::fabs(double(hours));
    const double whole_hours = std::floor(absolute);
    const double minutes = (absolute - whole_hours) * 60.0;
    return QStringLiteral("%1%2:%3")
        .arg(hours >= 0 ? QLatin1Char('+') : QLatin1Char('-'))
        .arg(whole_text(whole_hours, 2), whole_text(minutes, 2));
}

float parse_dms_coordinate(const std::string &text)
{
    // The degree sign is looked for as a character: in UTF-8 its second byte,
    // 0xB0, also ends other letters, so a byte search would cut those apart.
    QString rest = QString::fromLocal8Bit(text.data(), int(text.size()));
    int start = 0;
    while (start < rest.size() && rest.at(start) == QLatin1Char(' '))
        ++start;
    rest.remove(0, start);

    const bool negative = rest.startsWith(QLatin1Char('-'));
    if (negative)
        rest.remove(0, 1);

    auto piece = [&rest](QChar mark, double *value) {
        const int at = rest.indexOf(mark);
        if (at < 0)
            return false;
        *value = lenient_to_double(rest.left(at).toLocal8Bit().toStdString(), 0);
        rest.remove(0, at + 1);
        return true;
    };

    double value = 0;
    double part = 0;
    if (piece(degree_sign, &part))
        value = part;
    if (piece(QLatin1Char('\''), &part))
        value += part / 60.0;
    if (piece(QLatin1Char('"'), &part))
        value += part / 3600.0;

    const QString letter = rest.toUpper();
    if (letter == QLatin1String("W") || letter == QLatin1String("S"))
        value = -value;
    if (negative)
        value = -value;
    return to_float(value);
}

double lenient_to_double(const std::string &text, double default_value)
{
    // Read from the right: the first separator met is the decimal one, so
    // "1.234,5" and "1,234.5" both read 1234.5, while a separator seen twice
    // ("1.234.567") was a group mark all along.
    bool any_digit = false;
    double exponent = 0;

    double part = 0;       // the current part, integer digits after a separator
    double place = 1;      // place value of the next digit of `part`
    double all_digits = 0; // every digit of this part read as one integer
    double all_place = 1;
    double fraction = 0;  // digits right of the decimal separator
    char separator = 0;   // the decimal separator once met
    bool grouped = false; // the decimal separator came twice: all were group marks
    bool negative = false;

    auto part_value = [&]() {
        double value = grouped ? all_digits : part + fraction;
        return negative ? -value : value;
    };

    for (auto it = text.rbegin(); it != text.rend(); ++it) {
        const char c = *it;
        if (c >= '0' && c <= '9') {
            const int digit = c - '0';
            any_digit = true;
            // 0 * inf would be NaN: a zero digit adds nothing at any place.
            if (digit != 0) {
                part += digit * place;
                all_digits += digit * all_place;
            }
            place *= 10;
            all_place *= 10;
        } else if (c == '.' || c == ',') {
            if (grouped)
                continue;
            if (separator == 0) {
                separator = c;
                fraction = part / place;
                part = 0;
                place = 1;
            } else if (separator == c) {
                grouped = true;
            }
        } else if (c == '-') {
            negative = true;
        } else if (c == 'e' || c == 'E') {
            // Clamped before it becomes an integer: beyond +-400 every double
            // is already 0 or infinity.
            const double read = part_value() * std::pow(10.0, exponent);
            exponent = std::isnan(read) ? 0 : std::trunc(std::max(-400.0, std::min(400.0, read)));
            part = 0;
            place = 1;
            all_digits = 0;
            all_place = 1;
            fraction = 0;
            separator = 0;
            grouped = false;
            negative = false;
        }
    }
    if (!any_digit)
        return default_value;
    const double mantissa = part_value();
    if (mantissa == 0)
        return mantissa;
    return mantissa * std::pow(10.0, exponent);
}

std::optional<gps_pos> read_typed_position(const QString &latitude_text,
                                           const QString &longitude_text)
{
    QString latitude = latitude_text;
    QString longitude = longitude_text;
    latitude.remove(QLatin1Char(' '));
    longitude.remove(QLatin1Char(' '));
    if (latitude.isEmpty() || longitude.isEmpty())
        return gps_pos();

    const float lat = read_typed_coordinate(latitude);
    const float lon = read_typed_coordinate(longitude);
    // Written so that NaN fails the test as well.
    if (!(std::fabs(lat) <= 90.0f) || !(std::fabs(lon) <= 180.0f))
        return std::nullopt;

    gps_pos pos;
    const QString lat_text = format_gps_coordinate(lat, true);
    pos.lat = lat_text.left(lat_text.size() - 1);
    pos.lat_ref = lat_text.right(1);
    pos.lat_numerical = latitude;
    const QString lon_text = format_gps_coordinate(lon, false);
    pos.lon = lon_text.left(lon_text.size() - 1);
    pos.lon_ref = lon_text.right(1);
    pos.lon_numerical = longitude;
    return pos;
}
