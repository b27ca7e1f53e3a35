#pragma once

#include "model/gpx_track.h"

#include <QList>
#include <QObject>
#include <QString>

QT_BEGIN_NAMESPACE
class QStringList;
class QXmlStreamReader;
QT_END_NAMESPACE

// Reads a GPX file into its tracks in file order, with the waypoints as one
// more track at the end. All the work happens in the constructor, on the
// calling thread, which it blocks for the length of the read. A file that
// can't be read or isn't well-formed XML leaves `tracks` empty and says why in
// `error`; content that isn't understood is reported on standard output and
// skipped. A point whose latitude or longitude is no number within range is
// left out, with a warning in the log.
class gpx_parser : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(gpx_parser)

public:
    explicit gpx_parser(const QString &file_name, QObject *parent = nullptr);

    QList<gpx_track> tracks;
    // Empty after a good read; otherwise the reason, translated, for the user:
    // "Line 3: Opening and ending tag mismatch."
    QString error;

private:
    struct reading;
    void read(const QByteArray &data);
    static gpx_track read_track(QXmlStreamReader &reader, int number, reading &state);
    static void read_point(QXmlStreamReader &reader, QList<gpx_point> &points, reading &state);
};
