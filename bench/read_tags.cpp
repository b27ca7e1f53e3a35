// Measures what the bridge costs on top of ExifTool itself: 200 photos of
// about 1.5 MB, each read twice (plain and with groups) through
// vn::exiftool::read_tags, and the same commands sent straight to an
// "exiftool -stay_open" process through blocking pipe reads without Qt.
// Prints both times, their ratio and this process's CPU time per file.
#include "raw_exiftool.h"

#include <vn/exiftool.h>
#include <vn/exiftool_worker.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int file_count = 200;
constexpr qint64 target_bytes = 1500 * 1000;
constexpr int rounds = 8;
constexpr int block_size = 20;

double cpu_seconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Noise does not compress, so the JPEG reaches the wanted size.
QByteArray make_jpeg(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QRandomGenerator random(42);
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
            line[x] = random.generate() | 0xff000000u;
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 80);
    return bytes;
}

bool make_photo(const QString &path)
{
    int width = 1000;
    int height = 750;
    QByteArray bytes = make_jpeg(width, height);
    const double scale = std::sqrt(double(target_bytes) / double(bytes.size()));
    width = int(width * scale);
    height = int(height * scale);
    bytes = make_jpeg(width, height);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return false;
    file.close();
    // Some EXIF, once, with the real tool.
    const int code = QProcess::execute(
        vn::exiftool_worker::program_path(),
        {"-q", "-overwrite_original", "-Make=Loxmere", "-Model=Bench",
         "-DateTimeOriginal=2024:05:01 12:00:00", "-GPSLatitude=48.137", "-GPSLatitudeRef=N",
         "-GPSLongitude=11.575", "-GPSLongitudeRef=E", "-XMP:Title=bench", path});
    return code == 0;
}

struct figures
{
    double wall = 0;
    double cpu = 0;
    int failures = 0;

    void add(const figures &other)
    {
        wall += other.wall;
        cpu += other.cpu;
        failures += other.failures;
    }
};

// Both reads of one file through the program's bridge.
int read_with_bridge(const QString &file)
{
    int failures = 0;
    if (vn::exiftool::read_tags(file, false).value("Make") != QLatin1String("Loxmere"))
        ++failures;
    if (vn::exiftool::read_tags(file, true).value("IFD0:Make") != QLatin1String("Loxmere"))
        ++failures;
    return failures;
}

// The same two commands straight through the pipes.
int read_with_pipes(raw_exiftool &tool, const QString &file, int *next_id)
{
    int failures = 0;
    std::string reply;
    const std::string name = file.toStdString();
    if (!tool.run(name + "\n", (*next_id)++, &reply) ||
        reply.find("-Make=Loxmere") == std::string::npos)
        ++failures;
    if (!tool.run("-G1\n-a\n" + name + "\n", (*next_id)++, &reply) ||
        reply.find("-IFD0:Make=Loxmere") == std::string::npos)
        ++failures;
    return failures;
}

// Adds the wall and CPU time of reading a block of files to the figures.
template <typename Read> void measure(figures *into, const QStringList &block, Read read)
{
    QElapsedTimer clock;
    const double cpu_start = cpu_seconds();
    clock.start();
    for (const QString &file : block)
        into->failures += read(file);
    into->wall += clock.nsecsElapsed() / 1e9;
    into->cpu += cpu_seconds() - cpu_start;
}

} // namespace

int main(int argc, char **argv)
{
    raw_exiftool::steady_child_speed();
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    const QString first = dir.filePath("photo_000.jpg");
    if (!make_photo(first)) {
        std::fprintf(stderr, "could not make the photo with %s\n",
                     qUtf8Printable(vn::exiftool_worker::program_path()));
        return 1;
    }
    QStringList files{first};
    for (int i = 1; i < file_count; ++i) {
        files << dir.filePath(QString::asprintf("photo_%03d.jpg", i));
        if (!QFile::copy(first, files.last()))
            return 1;
    }
    std::printf("%d files of %lld bytes\n", file_count, QFile(first).size());

    std::vector<std::string> args;
    for (const QString &arg : vn::exiftool_worker::arguments())
        args.push_back(arg.toStdString());

    // Each round starts both ExifTool processes afresh: one process may run
    // a few per cent faster than another for its whole life (where its pages
    // happen to lie), and over several pairs that evens out. Within a round
    // the two paths take turns block by block, each going first for every
    // other block, so that a drift in the machine's speed falls on both
    // alike while each path stays warm for the files of its block.
    figures bridge;
    figures pipes;
    std::vector<double> round_ratios;
    for (int round = 0; round < rounds; ++round) {
        raw_exiftool tool;
        if (!tool.start(vn::exiftool_worker::program_path().toStdString(), args))
            return 1;
        int raw_id = 0;
        const auto bridge_read = [](const QString &file) { return read_with_bridge(file); };
        const auto pipe_read = [&](const QString &file) {
            return read_with_pipes(tool, file, &raw_id);
        };
        // Both processes past their start-up, the files in the page cache.
        for (const QString &file : files.mid(0, 5)) {
            bridge_read(file);
            pipe_read(file);
        }
        figures b;
        figures p;
        for (int first_file = 0; first_file < files.size(); first_file += block_size) {
            const QStringList block = files.mid(first_file, block_size);
            if ((round + first_file / block_size) % 2 == 0) {
                measure(&b, block, bridge_read);
                measure(&p, block, pipe_read);
            } else {
                measure(&p, block, pipe_read);
                measure(&b, block, bridge_read);
            }
        }
        tool.stop();
        vn::exiftool::shutdown(); // the next read starts a new process
        round_ratios.push_back(b.wall / p.wall);
        bridge.add(b);
        pipes.add(p);
    }

    std::printf("ratio per round (fresh processes each):");
    for (double ratio : round_ratios)
        std::printf(" %.3f", ratio);
    std::printf("\n");
    const int reads = rounds * file_count;
    std::printf("rounds: %d, files read per path: %d (two reads each)\n", rounds, reads);
    std::printf("read_tags:    %.3f s  (%.2f ms per file), failures: %d\n", bridge.wall,
                1000 * bridge.wall / reads, bridge.failures);
    std::printf("plain pipes:  %.3f s  (%.2f ms per file), failures: %d\n", pipes.wall,
                1000 * pipes.wall / reads, pipes.failures);
    std::printf("ratio read_tags / pipes: %.3f (target <= 1.05)\n", bridge.wall / pipes.wall);
    std::printf("our CPU per file: %.3f ms = %.1f %% of the wall time per file (target <= 10 %%)\n",
                1000 * bridge.cpu / reads, 100 * bridge.cpu / bridge.wall);
    std::printf("pipes CPU per file: %.3f ms\n", 1000 * pipes.cpu / reads);
    return bridge.failures + pipes.failures == 0 ? 0 : 2;
}
