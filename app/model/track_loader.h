#pragma once

#include "model/gpx_track.h"
#include "model/track_converter.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

// Reads a track file of any format the program knows into its tracks: GPX
// itself, the others converted by GPSBabel into a temporary folder, which is
// gone when the read ends, KMZ unpacked there first. Every track then comes
// from the one GPX reader. Blocks the calling thread while GPSBabel runs.
// A file that gives nothing says why, in words for the user.
class track_loader
{
    Q_DECLARE_TR_FUNCTIONS(track_loader)

public:
    track_loader() = delete;

    // The file dialog's patterns: "*.gpx *.kml *.kmz ...".
    static QString name_patterns();

    // The tracks of `file`, in file order. Empty, with the reason in `error`,
    // when the file can't be read, holds no track point with a time, or when
    // all its timed points share one time (a clock that didn't run).
    static QList<gpx_track> read(const QString &file, QString *error,
                                 const track_converter &converter = track_converter());

    // The tracks of several files in one list, file after file. A name that
    // tracks of two or more files share gets the file's name in front:
    // "monday.fit: ACTIVE LOG". Each file that gives none adds a line to
    // `failures`, with its name and the reason, and is logged.
    static QList<gpx_track> read_files(const QStringList &files, QStringList *failures,
                                       const track_converter &converter = track_converter());

    // The elevations of `with_ele` given to the points of `tracks` that have
    // none and lie at the same position at the same time of day. Two reads of
    // one NMEA log meet here: the RMC sentences give the right time and
    // position, the GGA sentences the elevation.
    static void add_elevations(QList<gpx_track> &tracks, const QList<gpx_track> &with_ele);

private:
    // The tracks of a file that isn't GPX, through GPSBabel; `format` is the
    // one it was read with, `messages` what GPSBabel printed.
    static QList<gpx_track> convert(const QString &path, const QString &suffix,
                                    const track_converter &converter, QString *format,
                                    QString *messages, QString *error);
};
