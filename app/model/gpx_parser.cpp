#include "model/gpx_parser.h"

#include <QFile>
#include <QStringList>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <charconv>
#include <cmath>
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

// The points left out of one file are logged one by one up to this count,
// then as a number: a broken export can hold a hundred thousand of them.
constexpr int left_out_lines = 10;

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

// A decimal number as ExifTool and QString::toDouble read it alike ("48.1",
// "-.5", "1e-3"); no group marks, no decimal comma, no "nan" or "inf". The
// schema's blanks around it are trimmed by the caller. Checked by hand: a
// regular expression per coordinate made a read of 100,000 points a third
// slower.
bool read_number(const QString &text, double *value)
{
    const QChar *c = text.constData();
    const QChar *end = c + text.size();
    auto digits = [&c, end] {
        const QChar *start = c;
        while (c != end && *c >= QLatin1Char('0') && *c <= QLatin1Char('9'))
            ++c;
        return c != start;
    };
    if (c != end && (*c == QLatin1Char('+') || *c == QLatin1Char('-')))
        ++c;
    bool mantissa = digits();
    if (c != end && *c == QLatin1Char('.')) {
        ++c;
        mantissa = digits() || mantissa;
    }
    if (!mantissa)
        return false;
    if (c != end && (*c == QLatin1Char('e') || *c == QLatin1Char('E'))) {
        ++c;
        if (c != end && (*c == QLatin1Char('+') || *c == QLatin1Char('-')))
            ++c;
        if (!digits())
            return false;
    }
    if (c != end)
        return false;
    // Only ASCII is left, which std::from_chars reads as QString::toDouble
    // does, rounded the same, at a third of the cost.
    char ascii[64];
    const int skip = text.startsWith(QLatin1Char('+')) ? 1 : 0;
    const int length = text.size() - skip;
    if (length <= int(sizeof ascii)) {
        for (int i = 0; i < length; ++i)
            ascii[i] = char(text.at(skip + i).unicode());
        const std::from_chars_result result = std::from_chars(ascii, ascii + length, *value);
        if (result.ec == std::errc() && result.ptr == ascii + length)
            return std::isfinite(*value);
    }
    bool ok = false;
    *value = text.toDouble(&ok);
    return ok && std::isfinite(*value);
}

// Text of the file for a log line: one line, and short.
QString loggable(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format)
            c = QLatin1Char('?');
    }
    return text.size() > 40 ? text.left(40) + QStringLiteral("...") : text;
}

bool is_coordinate(const QString &text, double limit)
{
    double value = 0;
    return read_number(text, &value) && std::fabs(value) <= limit;
}

// The line of the first character that XML 1.0 allows nowhere (a control
// character other than tab, line feed and carriage return), or 0.
// QXmlStreamReader lets one through inside a tag: `<trkpt x\1="1"/>` reads as
// well-formed.
qint64 control_character_line(const QByteArray &data)
{
    auto allowed = [](uint c) { return c >= 0x20 || c == '\t' || c == '\n' || c == '\r'; };
    const bool wide =
        data.size() >= 2 && (data.at(0) == '\0' || data.at(1) == '\0' ||
                             data.startsWith("\xff\xfe") || data.startsWith("\xfe\xff"));
    qint64 line = 1;
    if (wide) {
        const QString text = QTextCodec::codecForUtfText(data)->toUnicode(data);
        for (const QChar c : text) {
            if (!allowed(c.unicode()))
                return line;
            line += c == QLatin1Char('\n');
        }
        return 0;
    }
    for (const char c : data) {
        if (!allowed(uchar(c)))
            return line;
        line += c == '\n';
    }
    return 0;
}

// The time of a point. A track logger writes "2021-06-01T06:00:00Z" a
// hundred thousand times; that form is read here directly, every other one
// by Qt, which costs a third of a whole point's read.
QDateTime read_time(const QString &text)
{
    const QChar *c = text.constData();
    auto two = [c](int at, int *value) {
        const ushort a = c[at].unicode() - '0';
        const ushort b = c[at + 1].unicode() - '0';
        *value = a * 10 + b;
        return a <= 9 && b <= 9;
    };
    int century = 0, year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (text.size() == 20 && c[4] == QLatin1Char('-') && c[7] == QLatin1Char('-') &&
        c[10] == QLatin1Char('T') && c[13] == QLatin1Char(':') && c[16] == QLatin1Char(':') &&
        c[19] == QLatin1Char('Z') && two(0, &century) && two(2, &year) && two(5, &month) &&
        two(8, &day) && two(11, &hour) && two(14, &minute) && two(17, &second)) {
        const QDate date(century * 100 + year, month, day);
        const QTime time(hour, minute, second);
        if (date.isValid() && time.isValid())
            return QDateTime(date, time, Qt::UTC);
    }
    return QDateTime::fromString(text, Qt::ISODate);
}

} // namespace

// What one read collects on its way through the file; printed or logged only
// once the whole file has proved well-formed.
struct gpx_parser::reading
{
    QStringList printed;
    QStringList left_out;
};

// The file is read as a stream rather than into a DOM: a DOM of a day's log
// at one point a second takes seconds to build and many times the file's size
// in memory. It is read from memory so that the reader's verdict covers the
// whole document, and a broken file reports nothing and gives nothing.
gpx_parser::gpx_parser(const QString &file_name, QObject *parent)
    : QObject(parent)
{
    QFile file(file_name);
    if (!file.open(QIODevice::ReadOnly)) {
        error = tr("The file can't be opened: %1").arg(file.errorString());
        return;
    }
    const QByteArray data = file.readAll();
    if (file.error() != QFile::NoError) {
        error = tr("The file can't be read: %1").arg(file.errorString());
        return;
    }
    file.close();
    read(data);
}

void gpx_parser::read(const QByteArray &data)
{
    QXmlStreamReader reader(data);
    reader.setNamespaceProcessing(false); // names as written, prefix and all

    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::StartElement) {
    }

    reading state;
    QList<gpx_track> read_tracks;
    int track_number = 0;
    gpx_track waypoints;
    bool root_ended = !reader.isStartElement();
    while (!root_ended && !reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            const QStringRef name = reader.qualifiedName();
            if (name == QLatin1String("trk")) {
                read_tracks.append(read_track(reader, ++track_number, state));
            } else if (name == QLatin1String("wpt")) {
                read_point(reader, waypoints.points, state);
            } else {
                if (name != QLatin1String("metadata"))
                    state.printed << QStringLiteral("Unknown element found: ") + name;
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
                state.printed << unknown_node(reader.isCDATA() ? cdata_node : text_node,
                                              reader.isCDATA() ? QStringLiteral("#cdata-section")
                                                               : QStringLiteral("#text"));
            break;
        case QXmlStreamReader::Comment:
            state.printed << unknown_node(comment_node, QStringLiteral("#comment"));
            break;
        case QXmlStreamReader::ProcessingInstruction:
            state.printed << unknown_node(processing_instruction_node,
                                          reader.processingInstructionTarget().toString());
            break;
        case QXmlStreamReader::EntityReference:
            state.printed << unknown_node(entity_reference_node, reader.name().toString());
            break;
        default:
            break;
        }
    }
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError()) {
        error = tr("Line %1: %2").arg(reader.lineNumber()).arg(reader.errorString());
        return;
    }
    if (const qint64 line = control_character_line(data)) {
        error = tr("Line %1: A control character, which XML doesn't allow.").arg(line);
        return;
    }
    for (const QString &line : qAsConst(state.printed))
        std::cout << line.toStdString() << '\n';
    std::cout << std::flush;
    for (int i = 0; i < state.left_out.size() && i < left_out_lines; ++i)
        qWarning("%s: Leaving out the point of %s.", Q_FUNC_INFO,
                 qUtf8Printable(state.left_out.at(i)));
    if (state.left_out.size() > left_out_lines)
        qWarning("%s: Leaving out %d more points of the same kind.", Q_FUNC_INFO,
                 int(state.left_out.size() - left_out_lines));
    if (!waypoints.points.isEmpty()) {
        waypoints.name = tr("Waypoints");
        read_tracks.append(waypoints);
    }
    tracks = read_tracks;
}

// Segments are joined: the assignment needs the points, not where the
// logger paused.
gpx_track gpx_parser::read_track(QXmlStreamReader &reader, int number, reading &state)
{
    gpx_track track;
    bool has_name = false;
    while (reader.readNextStartElement()) {
        const QStringRef name = reader.qualifiedName();
        if (!has_name && name == QLatin1String("name")) {
            has_name = true;
            // A name on lines of its own, or as CDATA between line breaks, is
            // the name alone.
            track.name = element_text(reader).trimmed();
        } else if (name == QLatin1String("trkseg")) {
            while (reader.readNextStartElement()) {
                if (reader.qualifiedName() == QLatin1String("trkpt"))
                    read_point(reader, track.points, state);
                else
                    reader.skipCurrentElement();
            }
        } else {
            reader.skipCurrentElement();
        }
    }
    if (has_name)
        state.printed << QStringLiteral("Track is named ") + track.name;
    else
        track.name = QStringLiteral("Track %1").arg(number);
    return track;
}

// "lat", "lon" and "ele" keep their text without the blanks that the schema
// allows around a number; a time without a zone is local. A point whose
// position is no number within range would reach the preview as if it were
// one, so it is left out here.
void gpx_parser::read_point(QXmlStreamReader &reader, QList<gpx_point> &points, reading &state)
{
    gpx_point point;
    const qint64 line = reader.lineNumber();
    const QXmlStreamAttributes attributes = reader.attributes();
    point.lat = attributes.value(QLatin1String("lat")).trimmed().toString();
    point.lon = attributes.value(QLatin1String("lon")).trimmed().toString();
    bool has_time = false;
    bool has_ele = false;
    while (reader.readNextStartElement()) {
        const QStringRef name = reader.qualifiedName();
        if (!has_time && name == QLatin1String("time")) {
            has_time = true;
            point.time = read_time(element_text(reader).trimmed());
        } else if (!has_ele && name == QLatin1String("ele")) {
            has_ele = true;
            point.ele = element_text(reader).trimmed();
            double value = 0;
            if (!read_number(point.ele, &value))
                point.ele.clear();
        } else {
            reader.skipCurrentElement();
        }
    }
    if (!is_coordinate(point.lat, 90.0))
        state.left_out << QStringLiteral("line %1: latitude '%2' is no number within 90 degrees")
                              .arg(line)
                              .arg(loggable(point.lat));
    else if (!is_coordinate(point.lon, 180.0))
        state.left_out << QStringLiteral("line %1: longitude '%2' is no number within 180 degrees")
                              .arg(line)
                              .arg(loggable(point.lon));
    else
        points.append(point);
}
