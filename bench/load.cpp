// Loads 1,000 copies of corpus photos through the main window, as a drop
// would, and sends the same two reads per file straight to a stay-open
// ExifTool with plain pipes; prints both times, their ratio, and the resident
// memory that each loaded photo costs.
//
//   load [copies]      (default 1000; runs offscreen)

#include "drop_files_widget.h"
#include "mainwindow.h"
#include "model/exif_cache.h"
#include "model/table_data_model.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTableView>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

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

// The same conversation as the program's, over two pipes and nothing else.
class raw_exiftool
{
public:
    explicit raw_exiftool(const std::string &program)
    {
        int to_child[2];
        int from_child[2];
        if (pipe(to_child) != 0 || pipe(from_child) != 0)
            return;
        pid_ = fork();
        if (pid_ == 0) {
            dup2(to_child[0], 0);
            dup2(from_child[1], 1);
            const int null_fd = open("/dev/null", O_WRONLY);
            dup2(null_fd, 2);
            close(to_child[1]);
            close(from_child[0]);
            execl(program.c_str(), program.c_str(), "-stay_open", "1", "-@", "-", "-common_args",
                  "-charset", "filename=utf8", "-args", "-sort", "-fast", "-userParam",
                  "processOwner=Loxmere", static_cast<char *>(nullptr));
            _exit(127);
        }
        close(to_child[0]);
        close(from_child[1]);
        in_ = to_child[1];
        out_ = from_child[0];
    }

    ~raw_exiftool()
    {
        if (pid_ <= 0)
            return;
        const char close_command[] = "-stay_open\n0\n";
        write_all(close_command, sizeof close_command - 1);
        close(in_);
        close(out_);
        waitpid(pid_, nullptr, 0);
    }

    // Sends one command and returns its reply, without the marker.
    std::string run(const std::string &command)
    {
        ++id_;
        const std::string request = command + "\n-execute" + std::to_string(id_) + "\n";
        if (!write_all(request.data(), request.size()))
            return std::string();
        const std::string marker = "{ready" + std::to_string(id_) + "}";
        char chunk[65536];
        for (;;) {
            const std::size_t at = buffer_.find(marker);
            const std::size_t end = at == std::string::npos ? at : buffer_.find('\n', at);
            if (end != std::string::npos) {
                std::string reply = buffer_.substr(0, at);
                buffer_.erase(0, end + 1);
                return reply;
            }
            const ssize_t got = read(out_, chunk, sizeof chunk);
            if (got <= 0)
                return std::string();
            buffer_.append(chunk, std::size_t(got));
        }
    }

private:
    bool write_all(const char *data, std::size_t size)
    {
        while (size > 0) {
            const ssize_t done = write(in_, data, size);
            if (done <= 0)
                return false;
            data += done;
            size -= std::size_t(done);
        }
        return true;
    }

    pid_t pid_ = -1;
    int in_ = -1;
    int out_ = -1;
    int id_ = 0;
    std::string buffer_;
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    signal(SIGPIPE, SIG_IGN);
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere bench"));
    const int copies = argc > 1 ? std::atoi(argv[1]) : 1000;

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
        raw_exiftool warm(program.toStdString());
        for (const QString &file : qAsConst(files))
            warm.run(file.toStdString() + "\n");
    }

    MainWindow window;
    window.show();
    QCoreApplication::processEvents();
    auto *drop = window.findChild<drop_files_widget *>();
    auto *table = window.findChild<QTableView *>();
    if (!drop || !table)
        return 1;
    exif_cache::instance()->read_file(files.first()); // starts the program's ExifTool
    exif_cache::instance()->clear();

    const long rss_before = resident_kib();
    QElapsedTimer window_timer;
    window_timer.start();
    emit drop->files_dropped(files);
    const qint64 window_ms = window_timer.elapsed();
    const long rss_after = resident_kib();
    const int rows = table->model()->rowCount();

    std::size_t cached_chars = 0;
    std::size_t cached_entries = 0;
    const auto cache = exif_cache::instance();
    for (const auto *map : {&cache->values, &cache->tags, &cache->group_tags}) {
        for (const exif_tag_map &tags : *map) {
            for (auto it = tags.cbegin(); it != tags.cend(); ++it) {
                cached_chars += std::size_t(it.key().size() + it.value().size());
                ++cached_entries;
            }
        }
    }

    const auto raw_start = std::chrono::steady_clock::now();
    std::size_t reply_bytes = 0;
    {
        raw_exiftool raw(program.toStdString());
        raw.run(files.first().toStdString() + "\n"); // started, as the window's was
        for (const QString &file : qAsConst(files)) {
            const std::string path = file.toStdString();
            reply_bytes += raw.run(path + "\n").size();
            reply_bytes += raw.run("-G1\n" + path + "\n").size();
        }
    }
    const double raw_ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - raw_start)
            .count();

    std::printf("files                 %d (rows %d)\n", copies, rows);
    std::printf("window load           %lld ms (%.2f ms per file)\n", window_ms,
                double(window_ms) / copies);
    std::printf("raw stay-open reads   %.0f ms (%.2f ms per file, %zu reply bytes)\n", raw_ms,
                raw_ms / copies, reply_bytes);
    std::printf("ratio window / raw    %.3f (target <= 1.10)\n", double(window_ms) / raw_ms);
    std::printf("resident memory       %ld KiB before, %ld KiB after: %.1f KiB per photo\n",
                rss_before, rss_after, double(rss_after - rss_before) / copies);
    std::printf("metadata cache        %zu tags, %zu characters: about %.1f KiB per photo as "
                "UTF-16 text alone\n",
                cached_entries, cached_chars, double(cached_chars) * 2 / 1024 / copies);
    return rows == copies ? 0 : 1;
}
