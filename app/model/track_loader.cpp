#include "model/track_loader.h"

#include "model/gpx_parser.h"

#include <KZip>

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QPair>
#include <QSet>
#include <QTemporaryDir>

#include <memory>

namespace {

// Enough for the sentence order of an NMEA log and the test for NMEA in .txt
// and .log files.
constexpr qint64 head_bytes = 64 * 1024;

const QStringList &suffixes()
{
    static const QStringList list = {
        QStringLiteral("gpx"), QStringLiteral("kml"), QStringLiteral("kmz"),  QStringLiteral("fit"),
        QStringLiteral("tcx"), QStringLiteral("igc"), QStringLiteral("nmea"), QStringLiteral("txt"),
        QStringLiteral("log"), QStringLiteral("csv"), QStringLiteral("plt")};
    return list;
}

// The KML of a KMZ archive: "doc.kml" at the top, as Google Earth writes it,
// or else the first .kml by name, at the top before any in a folder.
const KArchiveFile *main_kml(const KArchiveDirectory *directory)
{
    if (const KArchiveFile *doc = directory->file(QStringLiteral("doc.kml")))
        return doc;
    QStringList names = directory->entries();
    names.sort();
    for (const QString &name : qAsConst(names)) {
        const KArchiveEntry *entry = directory->entry(name);
        if (entry->isFile() && name.endsWith(QLatin1String(".kml"), Qt::CaseInsensitive))
            return static_cast<const KArchiveFile *>(entry);
    }
    for (const QString &name : qAsConst(names)) {
        const KArchiveEntry *entry = directory->entry(name);
        if (!entry->isDirectory())
            continue;
        if (const KArchiveFile *found = main_kml(static_cast<const KArchiveDirectory *>(entry)))
            return found;
    }
    return nullptr;
}

// Unpacked through a stream, in pieces: a KMZ's KML can be many times its size.
bool unpack_kml(const QString &kmz, const QString &target, QString *error)
{
    KZip zip(kmz);
    if (!zip.open(QIODevice::ReadOnly)) {
        *error = track_loader::tr("The KMZ archive can't be read: %1").arg(zip.errorString());
        return false;
    }
    const KArchiveFile *kml = main_kml(zip.directory());
    if (!kml) {
        *error = track_loader::tr("The KMZ archive holds no KML file.");
        return false;
    }
    const std::unique_ptr<QIODevice> in(kml->createDevice());
    QFile out(target);
    if (!in || !out.open(QIODevice::WriteOnly)) {
        *error = track_loader::tr("The KMZ archive can't be unpacked: %1").arg(out.errorString());
        return false;
    }
    QByteArray chunk(1024 * 1024, Qt::Uninitialized);
    qint64 total = 0;
    qint64 read = 0;
    while ((read = in->read(chunk.data(), chunk.size())) > 0) {
        if (out.write(chunk.constData(), read) != read)
            break;
        total += read;
    }
    if (total != kml->size()) {
        *error = track_loader::tr("The KMZ archive can't be unpacked: %1")
                     .arg(read < 0 ? in->errorString() : out.errorString());
        return false;
    }
    return true;
}

// Converts and reads; the conversion's messages stay in `messages` either way.
bool convert_and_read(const track_converter &converter, const QString &format, const QString &input,
                      const QString &output, QList<gpx_track> *tracks, QString *messages)
{
    if (!converter.convert(format, input, output, messages))
        return false;
    const gpx_parser parser(output);
    if (!parser.error.isEmpty()) {
        qWarning("%s: GPSBabel's GPX of '%s' can't be read: %s", Q_FUNC_INFO, qUtf8Printable(input),
                 qUtf8Printable(parser.error));
        *messages = track_loader::tr("GPSBabel's GPX can't be read: %1").arg(parser.error);
        return false;
    }
    *tracks = parser.tracks;
    return true;
}

QDateTime first_time(const QList<gpx_track> &tracks)
{
    for (const gpx_track &track : tracks) {
        for (const gpx_point &point : track.points) {
            if (point.time.isValid())
                return point.time;
        }
    }
    return QDateTime();
}

} // namespace

QString track_loader::name_patterns()
{
    QStringList patterns;
    for (const QString &suffix : suffixes())
        patterns << QStringLiteral("*.") + suffix;
    return patterns.join(QLatin1Char(' '));
}

QList<gpx_track> track_loader::read(const QString &file, QString *error,
                                    const track_converter &converter)
{
    error->clear();
    const QFileInfo info(file);
    const QString path = info.absoluteFilePath();
    const QString suffix = info.suffix().toLower();
    QList<gpx_track> tracks;
    QString format;
    QString messages; // GPSBabel's, told where the file gives no point
    if (suffix == QLatin1String("gpx")) {
        const gpx_parser parser(path);
        *error = parser.error;
        tracks = parser.tracks;
    } else {
        tracks = convert(path, suffix, converter, &format, &messages, error);
    }
    if (!error->isEmpty())
        return {};

    int points = 0;
    int timed = 0;
    bool one_time = true;
    QDateTime seen;
    for (const gpx_track &track : qAsConst(tracks)) {
        points += track.points.size();
        for (const gpx_point &point : track.points) {
            if (!point.time.isValid())
                continue;
            ++timed;
            one_time = one_time && (!seen.isValid() || point.time == seen);
            seen = point.time;
        }
    }
    if (points == 0) {
        *error = format.isEmpty() ? tr("It holds no track point.")
                                  : tr("GPSBabel read no track point from it.");
        if (!messages.isEmpty())
            *error += QLatin1Char('\n') + messages;
    } else if (timed == 0) {
        *error = format == QLatin1String("kml")
                     ? tr("None of its track points has a time. KML keeps times only in tracks "
                          "written as gx:Track.")
                     : tr("None of its track points has a time.");
    } else if (timed > 1 && one_time) {
        *error = tr("All its track points have the same time, %1: the clock didn't run.")
                     .arg(seen.toString(Qt::ISODateWithMs));
    }
    if (!error->isEmpty())
        return {};
    return tracks;
}

QList<gpx_track> track_loader::convert(const QString &path, const QString &suffix,
                                       const track_converter &converter, QString *format,
                                       QString *messages, QString *error)
{
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = tr("The file can't be opened: %1").arg(in.errorString());
        return {};
    }
    *format = track_converter::input_format(suffix, in.read(head_bytes));
    in.close();
    if (format->isEmpty()) {
        *error = tr("This isn't a kind of track file that Loxmere reads: GPX, KML, KMZ, FIT, "
                    "TCX, IGC, NMEA, CSV or PLT.");
        return {};
    }
    const QTemporaryDir temporary;
    if (!temporary.isValid()) {
        *error = tr("No temporary folder for the conversion: %1").arg(temporary.errorString());
        return {};
    }
    QString input = path;
    if (suffix == QLatin1String("kmz")) {
        input = temporary.filePath(QStringLiteral("doc.kml"));
        if (!unpack_kml(path, input, error))
            return {};
    }
    const QString output = temporary.filePath(QStringLiteral("track.gpx"));
    QList<gpx_track> tracks;
    const bool converted = convert_and_read(converter, *format, input, output, &tracks, messages);
    // GPSBabel names the file it read; that is the user's file, not ours.
    messages->replace(input, path);
    if (!converted) {
        *error = *messages;
        return {};
    }
    if (*format == QLatin1String("nmea,gpgga=0")) {
        // The GGA sentences alone, dated by the RMC read; only their
        // elevations are used, matched by the time of day.
        const QDateTime day = first_time(tracks).toUTC();
        QList<gpx_track> with_ele;
        QString ignored;
        if (day.isValid() && convert_and_read(converter,
                                              QStringLiteral("nmea,gprmc=0,date=") +
                                                  day.date().toString(QStringLiteral("yyyyMMdd")),
                                              input, output, &with_ele, &ignored))
            add_elevations(tracks, with_ele);
    }
    return tracks;
}

QList<gpx_track> track_loader::read_files(const QStringList &files, QStringList *failures,
                                          const track_converter &converter)
{
    QList<QPair<QString, QList<gpx_track>>> read_tracks;
    QHash<QString, QSet<QString>> files_of_name;
    for (const QString &file : files) {
        const QString name = QFileInfo(file).fileName();
        QString why;
        const QList<gpx_track> tracks = read(file, &why, converter);
        if (tracks.isEmpty()) {
            qWarning("%s: No track from '%s': %s", Q_FUNC_INFO, qUtf8Printable(file),
                     qUtf8Printable(why));
            *failures << tr("%1: %2").arg(name, why);
            continue;
        }
        read_tracks.append({name, tracks});
        for (const gpx_track &track : tracks)
            files_of_name[track.name].insert(file);
    }
    QList<gpx_track> all;
    for (const auto &file_tracks : qAsConst(read_tracks)) {
        for (gpx_track track : file_tracks.second) {
            if (files_of_name.value(track.name).size() > 1)
                track.name = tr("%1: %2").arg(file_tracks.first, track.name);
            all << track;
        }
    }
    return all;
}

void track_loader::add_elevations(QList<gpx_track> &tracks, const QList<gpx_track> &with_ele)
{
    auto key = [](const gpx_point &point) {
        return QStringLiteral("%1 %2 %3")
            .arg(point.time.toUTC().time().msecsSinceStartOfDay())
            .arg(point.lat, point.lon);
    };
    QHash<QString, QString> elevations;
    for (const gpx_track &track : with_ele) {
        for (const gpx_point &point : track.points) {
            if (point.time.isValid() && !point.ele.isEmpty())
                elevations.insert(key(point), point.ele);
        }
    }
    if (elevations.isEmpty())
        return;
    for (gpx_track &track : tracks) {
        for (gpx_point &point : track.points) {
            if (point.ele.isEmpty() && point.time.isValid())
                point.ele = elevations.value(key(point));
        }
    }
}
