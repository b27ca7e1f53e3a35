#include "model/gpx_parser.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>

#include <iostream>

namespace {

// A GPX file is read whole into a DOM that takes several times its size in
// memory. Logs of a year at one point a second stay far below this.
constexpr qint64 max_file_bytes = qint64(512) * 1024 * 1024;

void print_line(const QString &line)
{
    std::cout << line.toStdString() << '\n' << std::flush;
}

// "lat" and "lon" stay the attribute text; a time without a zone is local.
gpx_point read_point(const QDomElement &element)
{
    gpx_point point;
    point.lat = element.attribute(QStringLiteral("lat"));
    point.lon = element.attribute(QStringLiteral("lon"));
    const QDomElement time = element.firstChildElement(QStringLiteral("time"));
    if (!time.isNull())
        point.time = QDateTime::fromString(time.text(), Qt::ISODate);
    return point;
}

} // namespace

gpx_parser::gpx_parser(const QString &file_name, QObject *parent) : QObject(parent)
{
    QDomDocument document(QStringLiteral("gpx"));
    QFile file(file_name);
    if (!file.open(QIODevice::ReadOnly))
        return;
    if (file.size() > max_file_bytes) {
        qWarning("%s: Not reading \"%s\": %lld bytes is more than a track log holds.",
                 Q_FUNC_INFO, qUtf8Printable(file_name), file.size());
        return;
    }
    if (!document.setContent(&file)) {
        file.close();
        return;
    }
    file.close();

    int track_number = 0;
    gpx_track waypoints;
    for (QDomNode node = document.documentElement().firstChild(); !node.isNull();
         node = node.nextSibling()) {
        if (!node.isElement()) {
            print_line(QStringLiteral("Unknown node type found: %1 node name is: %2")
                           .arg(int(node.nodeType()))
                           .arg(node.nodeName()));
            continue;
        }
        const QDomElement element = node.toElement();
        if (element.isNull()) {
            print_line(QStringLiteral("Could not convert node to element. nodeType indicates "
                                      "this should be possible... ")
                       + node.nodeName());
            continue;
        }
        const QString name = element.tagName();
        if (name == QLatin1String("trk"))
            read_track(element, ++track_number);
        else if (name == QLatin1String("wpt"))
            waypoints.points.append(read_point(element));
        else if (name != QLatin1String("metadata"))
            print_line(QStringLiteral("Unknown element found: ") + name);
    }
    if (!waypoints.points.isEmpty()) {
        waypoints.name = tr("Waypoints");
        tracks.append(waypoints);
    }
}

// Segments are joined: the assignment needs the points, not where the
// logger paused.
void gpx_parser::read_track(const QDomElement &element, int number)
{
    gpx_track track;
    const QDomElement name = element.firstChildElement(QStringLiteral("name"));
    if (!name.isNull()) {
        track.name = name.text();
        print_line(QStringLiteral("Track is named ") + track.name);
    } else {
        track.name = QStringLiteral("Track %1").arg(number);
    }
    const QString trkpt = QStringLiteral("trkpt");
    const QString trkseg = QStringLiteral("trkseg");
    for (QDomElement segment = element.firstChildElement(trkseg); !segment.isNull();
         segment = segment.nextSiblingElement(trkseg)) {
        for (QDomElement point = segment.firstChildElement(trkpt); !point.isNull();
             point = point.nextSiblingElement(trkpt))
            track.points.append(read_point(point));
    }
    tracks.append(track);
}
