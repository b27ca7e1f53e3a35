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
// can't be read or isn't well-formed XML leaves `tracks` empty; content that
// isn't understood is reported on standard output and skipped.
class gpx_parser : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(gpx_parser)

public:
    explicit gpx_parser(const QString &file_name, QObject *parent = nullptr);

    QList<gpx_track> tracks;

private:
    static gpx_track read_track(QXmlStreamReader &reader, int number, QStringList &printed);
};
