#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QByteArray;
QT_END_NAMESPACE

// Turns a track file of another format into GPX 1.1 through GPSBabel, a
// program found on the PATH and run as a child process. Its arguments go as a
// list, never through a shell, and every path is absolute, so no file name
// can pass for an option. A conversion blocks the calling thread for as long
// as GPSBabel runs, at most the time limit. Fails with false and a reason for
// the user, which quotes GPSBabel's own message where it gave one.
class track_converter
{
    Q_DECLARE_TR_FUNCTIONS(track_converter)

public:
    // A day's log of 100,000 points converts in about a second.
    static constexpr int time_limit_ms = 60000;

    explicit track_converter(const QString &program = QStringLiteral("gpsbabel"),
                             int limit_ms = time_limit_ms);

    // GPSBabel's input format for a file with this suffix (lower case, no
    // dot) that begins with `head`: "kml" for .kml and .kmz, "garmin_fit",
    // "gtrnctr", "igc", "unicsv", "ozi", and for .nmea "nmea" or, where a
    // fix's RMC sentence comes before its GGA, "nmea,gpgga=0". The .txt and
    // .log files are read as NMEA when they hold NMEA sentences. Empty for
    // GPX, which the program reads itself, and for anything else.
    static QString input_format(const QString &suffix, const QByteArray &head);

    // "-t -i FORMAT -f INPUT -x nuketypes,waypoints,routes -o gpx,gpxver=1.1
    // -F OUTPUT": tracks only, so that lap marks and task points of the
    // device don't stand as tracks of their own.
    static QStringList arguments(const QString &format, const QString &input,
                                 const QString &output);

    // Converts `input` into `output`, which is replaced. On
    // success `messages` holds what GPSBabel printed, often nothing; on
    // failure the reason. A zero-point result is a success here: what counts
    // as a track is decided by the reader of `output`.
    bool convert(const QString &format, const QString &input, const QString &output,
                 QString *messages) const;

private:
    QString program_;
    int limit_ms_;
};
