#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

// The reading of recorded offsets, camera zones and clock corrections. Plain
// functions; zones come from the system's time-zone database through
// QTimeZone.
class photo_time
{
public:
    photo_time() = delete;

    // The largest correction in either direction: ten years and their leap days.
    static constexpr qint64 max_correction_s = 3653LL * 24 * 3600;

    // A recorded offset in the form ExifTool prints: read_offset("+09:00") ==
    // 32400, "-05:30" == -19800. Nothing for any other text ("+9:00", "+0900",
    // "+99:99", "+15:00", "abc", "").
    static std::optional<int> read_offset(const QString &text);

    // Empty (this computer's zone), a fixed offset "UTC+05:30" or "UTC-03:00",
    // or an id that the time-zone database knows.
    static bool is_known_zone(const QByteArray &zone);

    // The date and time as a clock in `zone` shows them: local time for an
    // empty zone, a fixed offset, or the zone's rules on that date, daylight
    // saving included. An unknown zone reads as this computer's zone.
    static QDateTime in_zone(const QDate &date, const QTime &time, const QByteArray &zone);
    // The same instant as a clock in `zone` shows it.
    static QDateTime to_zone(const QDateTime &instant, const QByteArray &zone);

    // correction_text(183) == "+00:03:03", (-90000) == "-1d 01:00:00"
    static QString correction_text(qint64 seconds);
    // Reads "[+|-][<days>d] [H]H:MM[:SS]" or "[+|-]<days>d": "-3:00" == -10800,
    // "+1d 0:00:30" == 86430, "2d" == 172800. Nothing for other text. The
    // ten-year limit is the caller's to check.
    static std::optional<qint64> read_correction(const QString &text);

    // The correction that turns `recorded` into the time a reference photo
    // shows, `shown` being a clock time in `zone`: "yyyy-MM-dd HH:mm[:ss]" (or
    // with ":" in the date, as ExifTool prints it), or a time alone, which
    // takes the date that puts it nearest the recorded time. Nothing for text
    // that doesn't read as one of these or an invalid `recorded`.
    static std::optional<qint64>
    reference_correction(const QString &shown, const QDateTime &recorded, const QByteArray &zone);
};
