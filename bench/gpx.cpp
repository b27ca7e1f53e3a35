// Reads a generated GPX file of 100,000 track points and prints how long the
// read took and the peak memory of the process. Target: 0.4 s. Then the same
// track as FIT and as KML, written by GPSBabel beforehand, is converted and
// read the way the program loads it. Target: 2 s each.

#include "model/gpx_parser.h"
#include "model/track_loader.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>
#include <iostream>
#include <sstream>
#include <sys/resource.h>

namespace {

constexpr int point_count = 100000;

// Peak resident set size in kB, from the kernel's own count.
long peak_kb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly | QIODevice::Text))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

// Ten segments of points one second apart, each with elevation and time,
// as a logger writes them.
bool write_gpx(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream out(&file);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<gpx version=\"1.1\" creator=\"bench\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n"
           "<metadata><time>2021-06-01T00:00:00Z</time></metadata>\n<trk><name>bench</name>\n";
    const QDateTime start(QDate(2021, 6, 1), QTime(6, 0), Qt::UTC);
    for (int i = 0; i < point_count; ++i) {
        if (i % (point_count / 10) == 0)
            out << (i == 0 ? "" : "</trkseg>\n") << "<trkseg>\n";
        out << "<trkpt lat=\"" << QString::number(46.0 + i * 1e-6, 'f', 7) << "\" lon=\""
            << QString::number(13.0 + i * 2e-6, 'f', 7) << "\"><ele>"
            << QString::number(400.0 + (i % 500) * 0.1, 'f', 1) << "</ele><time>"
            << start.addSecs(i).toString(Qt::ISODate) << "</time></trkpt>\n";
    }
    out << "</trkseg>\n</trk>\n</gpx>\n";
    out.flush();
    return file.error() == QFile::NoError;
}

// Processor time in ms of this process, or of its ended children: on a busy
// machine it says more about the code than the wall clock does.
long cpu_ms(int who = RUSAGE_SELF)
{
    rusage usage{};
    getrusage(who, &usage);
    return long(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000 +
           long(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

bool gpsbabel_write(const QString &gpx, const QString &format, const QString &target)
{
    QProcess process;
    process.start(QStringLiteral("gpsbabel"),
                  {QStringLiteral("-t"), QStringLiteral("-i"), QStringLiteral("gpx"),
                   QStringLiteral("-f"), gpx, QStringLiteral("-o"), format, QStringLiteral("-F"),
                   target});
    return process.waitForFinished(120000) && process.exitCode() == 0;
}

// The track loader on `path`: points read, and the figures printed.
int measure_loader(const char *label, const QString &path)
{
    std::ostringstream sink;
    std::streambuf *old = std::cout.rdbuf(sink.rdbuf());
    const long cpu_before = cpu_ms();
    const long children_before = cpu_ms(RUSAGE_CHILDREN);
    QElapsedTimer timer;
    timer.start();
    QString error;
    int points = 0;
    for (const gpx_track &track : track_loader::read(path, &error))
        points += track.points.size();
    const qint64 elapsed_ms = timer.elapsed();
    const long cpu_used = cpu_ms() - cpu_before;
    const long children_used = cpu_ms(RUSAGE_CHILDREN) - children_before;
    std::cout.rdbuf(old);
    std::printf("%s: %d points from %lld bytes, converted and read in %lld ms wall, %ld ms "
                "processor time here and %ld ms in GPSBabel (target <= 2000 ms)%s%s\n",
                label, points, QFile(path).size(), elapsed_ms, cpu_used, children_used,
                error.isEmpty() ? "" : ": ", qUtf8Printable(error));
    return points;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bench.gpx"));
    if (!dir.isValid() || !write_gpx(path)) {
        std::fprintf(stderr, "Could not write %s\n", qUtf8Printable(path));
        return 1;
    }
    const long before_kb = peak_kb();

    // The parser prints a line for the named track; keep it out of the figures.
    std::ostringstream sink;
    std::streambuf *old = std::cout.rdbuf(sink.rdbuf());
    const long cpu_before = cpu_ms();
    QElapsedTimer timer;
    timer.start();
    int points = 0;
    {
        const gpx_parser parser(path);
        for (const gpx_track &track : parser.tracks)
            points += track.points.size();
    }
    const qint64 elapsed_ms = timer.elapsed();
    const long cpu_used = cpu_ms() - cpu_before;
    std::cout.rdbuf(old);

    std::printf("gpx: %d points from %lld bytes\n", points, QFile(path).size());
    std::printf("gpx: read in %lld ms wall, %ld ms processor time (target <= 400 ms)\n", elapsed_ms,
                cpu_used);
    std::printf("gpx: peak memory %ld kB (%ld kB before the read)\n", peak_kb(), before_kb);

    // A watch's FIT, and a KML as phones write it: one gx:Track, no placemarks.
    const QString fit = dir.filePath(QStringLiteral("bench.fit"));
    const QString kml = dir.filePath(QStringLiteral("bench.kml"));
    if (!gpsbabel_write(path, QStringLiteral("garmin_fit"), fit) ||
        !gpsbabel_write(path, QStringLiteral("kml,track=1,lines=0,points=0"), kml)) {
        std::fprintf(stderr, "Could not write the FIT and KML files with gpsbabel\n");
        return 1;
    }
    const int fit_points = measure_loader("fit", fit);
    const int kml_points = measure_loader("kml", kml);
    return points == point_count && fit_points == point_count && kml_points == point_count ? 0 : 1;
}
