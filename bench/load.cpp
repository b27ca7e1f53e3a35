// Loads 1,000 copies of corpus photos through the main window, as a drop
// would, and sends the same two reads per file straight to a stay-open
// ExifTool with plain pipes; prints both times, their ratio, and the resident
// memory that each loaded photo costs.
//
//   load [copies [rounds]]      (default 1000 and 4; runs offscreen)

#include "raw_exiftool.h"

#include "drop_files_widget.h"
#include "mainwindow.h"
#include "model/exif_cache.h"
#include "model/table_data_model.h"

#include <vn/exiftool.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// CPU time of the calling thread, user and system, in milliseconds.
double thread_cpu_ms()
{
    rusage usage{};
    if (getrusage(RUSAGE_THREAD, &usage) != 0)
        return 0;
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1e3 +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
}

long resident_kib()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return -1;
}

} // namespace

int main(int argc, char **argv)
{
    raw_exiftool::steady_child_speed();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    signal(SIGPIPE, SIG_IGN);
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere bench"));
    const int copies = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
    const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 4;

    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/exiftool");
    if (!QFileInfo::exists(program)) {
        std::fprintf(stderr, "No exiftool beside the benchmark: %s\n", qPrintable(program));
        return 1;
    }
    QTemporaryDir dir;
    const QStringList corpus = QDir(QStringLiteral(VN_CORPUS_DIR "/photos"))
                                   .entryList({QStringLiteral("*.jpg")}, QDir::Files, QDir::Name);
    if (!dir.isValid() || corpus.isEmpty())
        return 1;
    QStringList files;
    for (int i = 0; i < copies; ++i) {
        const QString source =
            QStringLiteral(VN_CORPUS_DIR "/photos/") + corpus.at(i % corpus.size());
        const QString target =
            dir.path() + QStringLiteral("/photo_%1.jpg").arg(i, 4, 10, QChar('0'));
        if (!QFile::copy(source, target))
            return 1;
        files << target;
    }

    // Warm both the page cache and ExifTool's own start-up out of the figures.
    {
        raw_exiftool warm;
        warm.start(program.toStdString(), raw_exiftool::program_arguments());
        for (const QString &file : qAsConst(files))
            warm.run(file.toStdString() + "\n");
    }

    MainWindow window;
    window.show();
    QCoreApplication::processEvents();
    auto *drop = window.findChild<drop_files_widget *>();
    auto *table = window.findChild<QTableView *>();
    auto *clear = window.findChild<QAbstractButton *>(QStringLiteral("clear_button"));
    if (!drop || !table || !clear)
        return 1;

    // Each round starts both ExifTool processes afresh: one process may run a
    // few per cent faster than another for its whole life (where its pages
    // happen to lie), and over several pairs that evens out. The ways take
    // turns, window and raw reads swapping places every other round, so that
    // the load of a shared machine falls on all of them alike.
    std::vector<double> window_ms;
    std::vector<double> cache_ms;
    std::vector<double> raw_ms;
    std::vector<double> window_cpu_ms;
    std::vector<double> cache_cpu_ms;
    long rss_before = 0;
    long rss_after = 0;
    int rows = 0;
    std::size_t cached_chars = 0;
    std::size_t cached_entries = 0;
    std::size_t reply_bytes = 0;
    for (int round = 0; round < rounds; ++round) {
        vn::exiftool::shutdown(); // the next read starts a new process
        exif_cache::instance()->read_file(files.first());
        raw_exiftool raw;
        if (!raw.start(program.toStdString(), raw_exiftool::program_arguments()))
            return 1;
        raw.run(files.first().toStdString() + "\n"); // started, as the window's was

        const auto load_window = [&] {
            clear->click(); // empties the table and the metadata cache
            // Memory counts in the first round only: later loads reuse what
            // the allocator kept from the one before.
            if (round == 0)
                rss_before = resident_kib();
            QElapsedTimer window_timer;
            const double window_cpu_start = thread_cpu_ms();
            window_timer.start();
            emit drop->files_dropped(files);
            window_ms.push_back(double(window_timer.nsecsElapsed()) / 1e6);
            window_cpu_ms.push_back(thread_cpu_ms() - window_cpu_start);
            if (round == 0)
                rss_after = resident_kib();
            rows = table->model()->rowCount();

            cached_chars = 0;
            cached_entries = 0;
            const auto cache = exif_cache::instance();
            for (const auto *map : {&cache->values, &cache->tags, &cache->group_tags}) {
                for (const exif_tag_map &tags : *map) {
                    for (auto it = tags.cbegin(); it != tags.cend(); ++it) {
                        cached_chars += std::size_t(it.key().size() + it.value().size());
                        ++cached_entries;
                    }
                }
            }
        };
        // The same reads through the program's bridge alone, without the
        // window: what is left over is the table, the progress dialog and
        // their repaints.
        const auto load_cache = [&] {
            exif_cache::instance()->clear();
            QElapsedTimer cache_timer;
            const double cache_cpu_start = thread_cpu_ms();
            cache_timer.start();
            for (const QString &file : qAsConst(files))
                exif_cache::instance()->read_file(file);
            cache_ms.push_back(double(cache_timer.nsecsElapsed()) / 1e6);
            cache_cpu_ms.push_back(thread_cpu_ms() - cache_cpu_start);
        };
        const auto load_raw = [&] {
            const auto raw_start = std::chrono::steady_clock::now();
            reply_bytes = 0;
            for (const QString &file : qAsConst(files)) {
                const std::string path = file.toStdString();
                reply_bytes += raw.run(path + "\n").size();
                reply_bytes +=
                    raw.run("-G1\n-a\n-all\n-GPS:all#\n-XMP:GPS*#\n" + path + "\n").size();
            }
            raw_ms.push_back(std::chrono::duration<double, std::milli>(
                                 std::chrono::steady_clock::now() - raw_start)
                                 .count());
        };
        if (round % 2 == 0) {
            load_window();
            load_cache();
            load_raw();
        } else {
            load_raw();
            load_cache();
            load_window();
        }
        std::fprintf(stderr,
                     "round %d: window %.0f ms (GUI thread CPU %.0f ms), cache %.0f ms (CPU %.0f "
                     "ms), raw %.0f ms\n",
                     round + 1, window_ms.back(), window_cpu_ms.back(), cache_ms.back(),
                     cache_cpu_ms.back(), raw_ms.back());
    }
    vn::exiftool::shutdown();

    const auto best = [](const std::vector<double> &v) {
        return *std::min_element(v.begin(), v.end());
    };
    const auto median = [](std::vector<double> v) {
        std::sort(v.begin(), v.end());
        return v[v.size() / 2];
    };
    std::printf("files                 %d (rows %d), %d rounds\n", copies, rows, rounds);
    std::printf("window load           best %.0f ms (%.2f ms per file), median %.0f ms\n",
                best(window_ms), best(window_ms) / copies, median(window_ms));
    std::printf("metadata cache alone  best %.0f ms (%.2f ms per file), median %.0f ms\n",
                best(cache_ms), best(cache_ms) / copies, median(cache_ms));
    std::printf("raw stay-open reads   best %.0f ms (%.2f ms per file), median %.0f ms, "
                "%zu reply bytes\n",
                best(raw_ms), best(raw_ms) / copies, median(raw_ms), reply_bytes);
    std::printf("GUI thread CPU        window %.2f ms per file, metadata cache alone %.2f ms per "
                "file (best rounds)\n",
                best(window_cpu_ms) / copies, best(cache_cpu_ms) / copies);
    const auto total = [](const std::vector<double> &v) {
        return std::accumulate(v.begin(), v.end(), 0.0);
    };
    std::printf("ratio window / raw    %.3f all rounds (target <= 1.10), %.3f best to best, "
                "%.3f median\n",
                total(window_ms) / total(raw_ms), best(window_ms) / best(raw_ms),
                median(window_ms) / median(raw_ms));
    std::printf("ratio cache / raw     %.3f all rounds\n", total(cache_ms) / total(raw_ms));
    std::printf("resident memory       %ld KiB before, %ld KiB after the first load: %.1f KiB per "
                "photo\n",
                rss_before, rss_after, double(rss_after - rss_before) / copies);
    std::printf("metadata cache        %zu tags, %zu characters: about %.1f KiB per photo as "
                "UTF-16 text alone\n",
                cached_entries, cached_chars, double(cached_chars) * 2 / 1024 / copies);
    return rows == copies ? 0 : 1;
}
