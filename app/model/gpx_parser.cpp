#include "model/gpx_parser.h"

#include <QFile>
#include <QStringList>
#include <QXmlStreamReader>

#include <iostream>

namespace {

// Node type numbers as the DOM counts them, for the lines about content that
// isn't read.
enum node_type {
    text_node = 3,
    cdata_node = 4,
    entity_reference_node = 5,
    processing_instruction_node = 7,
    comment_node = 8
};

QString unknown_node(int type, const QString &name)
{
    return QStringLiteral("Unknown node type found: %1 node name is: %2").arg(type).arg(name);
}

// The text of the current element and all its descendants; leaves the reader
// on the element's end.
QString element_text(QXmlStreamReader &reader)
{
    return reader.readElementText(QXmlStreamReader::IncludeChildElements);
}

// "lat" and "lon" stay the attribute text; a time without a zone is local.
gpx_point read_point(QXmlStreamReader &reader)
{
    gpx_point point;
    const QXmlStreamAttributes attributes = reader.attributes();
    point.lat = attributes.value(QLatin1String("lat")).toString();
    point.lon = attributes.value(QLatin1String("lon")).toString();
    bool has_time = false;
    while (reader.readNextStartElement()) {
        if (!has_time && reader.qualifiedName() == QLatin1String("time")) {
            has_time = true;
            point.time = QDateTime::fromString(element_text(reader), Qt::ISODate);
        } else {
            reader.skipCurrentElement();
        }
    }
    return point;
}

} // namespace

// The file is read as a stream rather than into a DOM: a DOM of a day's log
// at one point a second takes seconds to build and many times the file's size
// in memory. Lines about unknown content are held back until the whole file
// has proved well-formed, so a broken file reports nothing and gives nothing.
gpx_parser::gpx_parser(const QString &file_name, QObject *parent)
    : QObject(parent)
{
    QFile file(file_name);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QXmlStreamReader reader(&file);
    reader.setNamespaceProcessing(false); // names as written, prefix and all

    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::StartElement) {
    }
    if (!reader.isStartElement())
        return;

    QList<gpx_track> read_tracks;
    QStringList printed;
    int track_number = 0;
    gpx_track waypoints;
    bool root_ended = false;
    while (!root_ended && !reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            const QStringRef name = reader.qualifiedName();
            if (name == QLatin1String("trk")) {
                read_tracks.append(read_track(reader, ++track_number, printed));
            } else if (name == QLatin1String("wpt")) {
                waypoints.points.append(read_point(reader));
            } else {
                if (name != QLatin1String("metadata"))
                    printed << QStringLiteral("Unknown element found: ") + name;
                reader.skipCurrentElement();
            }
            break;
        }
        case QXmlStreamReader::EndElement:
            root_ended = true;
            break;
        case QXmlStreamReader::Characters:
            // Blank text between elements isn't a node of its own.
            if (!reader.isWhitespace())
                printed << unknown_node(reader.isCDATA() ? cdata_node : text_node,
                                        reader.isCDATA() ? QStringLiteral("#cdata-section")
                                                         : QStringLiteral("#text"));
            break;
        case QXmlStreamReader::Comment:
            printed << unknown_node(comment_node, QStringLiteral("#comment"));
            break;
        case QXmlStreamReader::ProcessingInstruction:
            printed << unknown_node(processing_instruction_node,
                                    reader.processingInstructionTarget().toString());
            break;
        case QXmlStreamReader::EntityReference:
            printed << unknown_node(entity_reference_node, reader.name().toString());
            break;
        default:
            break;
        }
    }
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        return;

    for (const QString &line : qAsConst(printed))
        std::cout << line.toStdString() << '\n';
    std::cout << std::flush;
    if (!waypoints.points.isEmpty()) {
        waypoints.name = tr("Waypoints");
        read_tracks.append(waypoints);
    }
    tracks = read_tracks;
}

// Segments are joined: the assignment needs the points, not where the
// logger paused.
gpx_track gpx_parser::read_track(QXmlStreamReader &reader, int number, QStringList &printed)
{
    gpx_track track;
    bool has_name = false;
    while (reader.readNextStartElement()) {
        const QStringRef name = reader.qualifiedName();
        if (!has_name && name == QLatin1String("name")) {
            has_name = true;
            track.name = element_text(reader);
        } else if (name == QLatin1String("trkseg")) {
            while (reader.readNextStartElement()) {
                if (reader.qualifiedName() == QLatin1String("trkpt"))
                    track.points.append(read_point(reader));
                else
                    reader.skipCurrentElement();
            }
        } else {
            reader.skipCurrentElement();
        }
    }
    if (has_name)
        printed << QStringLiteral("Track is named ") + track.name;
    else
        track.name = QStringLiteral("Track %1").arg(number);
    return track;
}
