// Measures what the sync flow costs on top of ExifTool itself: copies of
// photos get a typed position through the window's sync flow (offscreen,
// every question answered Yes), with its exact numbers of each file (those
// of the load's read while the file's stamp holds, else a read) and its undo
// journal, and the same tag maps go to as many other copies straight
// through an "exiftool -stay_open" process over blocking pipes, without Qt
// and without a read. Loading the photos isn't timed. Two sets: 1,000 copies
// of the corpus photos (small: ExifTool's read costs nearly what its write
// does), and 100 copies of a camera-size JPEG (4000x3000, 4 MB, with a
// corpus photo's metadata), whose write moves the whole file. Prints both
// times and their ratio, the flow's read pass per file, and what the journal
// costs per file (saving the record and one flushed mark per file).
#include "raw_exiftool.h"

#include "gps_tag_maps.h"
#include "mainwindow.h"
#include "model/exif_cache.h"
#include "model/gps_pos.h"
#include "write_journal.h"

#include <vn/exiftool.h>
#include <vn/exiftool_worker.h>
#include <vn/lineedit.h>
#include <vn/radio.h>

#include <QAbstractItemModel>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProgressBar>
#include <QProgressDialog>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int corpus_copies = 1000;
constexpr int camera_copies = 100;
constexpr int rounds = 4;

// The corpus photos that ExifTool writes (some it only reads), JPEG only so
// that 2,000 copies stay small.
QStringList writable_photos()
{
    const QDir corpus(QStringLiteral(VN_CORPUS_DIR "/photos"));
    QStringList photos;
    for (const QString &name : corpus.entryList({"*.jpg", "*.JPG"}, QDir::Files, QDir::Name)) {
        if (name != QLatin1String("Sony DSC-HX5V (2).jpg") &&
            name != QLatin1String("30-type_error.jpg"))
            photos << corpus.filePath(name);
    }
    return photos;
}

bool make_copies(const QStringList &photos, int count, const QString &folder, QStringList *files)
{
    if (!QDir().mkpath(folder))
        return false;
    for (int i = 0; i < count; ++i) {
        const QString source = photos.at(i % photos.size());
        const QString target =
            QString::asprintf("%s/%04d_", qUtf8Printable(folder), i) + QFileInfo(source).fileName();
        if (!QFile::copy(source, target))
            return false;
        QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
        *files << target;
    }
    return true;
}

// The journal alone: the records of `files` saved, and a flushed mark for
// each, as the flow does it. Seconds.
double journal_seconds(const QString &path, const QStringList &files)
{
    write_journal::record record;
    record.kind = QStringLiteral("sync");
    record.started = QDateTime::currentDateTimeUtc();
    for (const QString &file : files) {
        write_journal::entry entry;
        entry.path = file;
        entry.tags = gps_tag_maps::exact_undo_tags(
            *vn::exiftool::read_numeric_tags(file, gps_tag_maps::exact_read_tags()));
        entry.before = write_journal::stamp::of(file);
        record.entries.append(entry);
    }
    QElapsedTimer clock;
    clock.start();
    write_journal journal(path);
    QString error;
    if (!journal.start(record, &error))
        return -1;
    for (int i = 0; i < files.size(); ++i)
        journal.mark_done(i, write_journal::stamp::of(files.at(i)));
    journal.mark_finished();
    const double seconds = clock.nsecsElapsed() / 1e9;
    journal.clear();
    return seconds;
}

// A 4000x3000 JPEG of some texture, so that it compresses like a photo,
// with DSCN0010's metadata.
QString make_camera_photo(const QString &folder, raw_exiftool &tool)
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    quint32 noise = 12345;
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            noise = noise * 1103515245u + 12345u;
            const int grain = int((noise >> 16) & 0x3f);
            line[x] = qRgb((x / 16 + grain) & 0xff, (y / 12 + grain) & 0xff, (x + y) / 28 & 0xff);
        }
    }
    const QString path = folder + QStringLiteral("/camera.jpg");
    if (!QDir().mkpath(folder) || !image.save(path, "JPEG", 92))
        return QString();
    const std::string corpus = VN_CORPUS_DIR "/photos/DSCN0010.jpg";
    tool.run("-tagsFromFile\n" + corpus + "\n-all:all\n-overwrite_original\n" + path.toStdString() +
             "\n");
    return path;
}

struct figures
{
    double flow = 0;
    double pipes = 0;
    double read = 0;
    double load = 0;
    int written = 0;
    int pipe_failures = 0;
};

// Syncs `flow_files` through `window` and writes the same maps into
// `pipe_files` through `tool`, in blocks that take turns, so that a change in
// the machine's load between them falls on both alike.
figures measure(MainWindow &window, raw_exiftool &tool, int *pipe_id, const QStringList &flow_files,
                const QStringList &pipe_files)
{
    figures result;
    // The flow reads all files first, then writes them: the moment the
    // progress reaches the number of files ends the read pass.
    QProgressBar *bar = window.findChild<QProgressDialog *>(QStringLiteral("sync_progress"))
                            ->findChild<QProgressBar *>();
    QElapsedTimer read_clock;
    const int block = int(flow_files.size()) / rounds;
    const QMetaObject::Connection watch =
        QObject::connect(bar, &QProgressBar::valueChanged, bar, [&](int value) {
            if (value == block)
                result.read += read_clock.nsecsElapsed() / 1e9;
        });
    std::string reply;
    QElapsedTimer clock;
    for (int round = 0; round < rounds; ++round) {
        clock.start();
        QMetaObject::invokeMethod(&window, "load_files",
                                  Q_ARG(QStringList, flow_files.mid(round * block, block)));
        result.load += clock.nsecsElapsed() / 1e9;

        // The maps the flow is to write, built the flow's way, for the
        // other copies.
        const QAbstractItemModel *model = window.findChild<QTableView *>()->model();
        std::vector<std::string> commands;
        const auto cache = exif_cache::instance();
        for (int row = 0; row < model->rowCount(); ++row) {
            const QString path = model->data(model->index(row, 0), Qt::UserRole).toString();
            const gps_pos pos = model->data(model->index(row, 2), Qt::UserRole).value<gps_pos>();
            const bool has_xmp = cache->values.value(path).value("has_xmp_gps") == "true";
            const exif_tag_map tags = gps_tag_maps::sync_tags(pos, has_xmp, true);
            QString command = QStringLiteral("\n%1\n-overwrite_original_in_place\n-m\n")
                                  .arg(QString(path).replace("/flow/", "/pipes/"));
            for (auto it = tags.cbegin(); it != tags.cend(); ++it)
                command += QStringLiteral("-%1=%2\n").arg(it.key(), it.value());
            commands.push_back(command.toStdString());
        }
        if (int(commands.size()) != block) {
            std::fprintf(stderr, "the table holds %d rows\n", int(commands.size()));
            result.pipe_failures = -1;
            return result;
        }

        // The other copies are read the same way, so that both paths write
        // files that ExifTool and the page cache have just seen.
        for (const QString &file : pipe_files.mid(round * block, block)) {
            tool.run(file.toStdString() + "\n", (*pipe_id)++, &reply);
            tool.run("-G1\n-a\n-all\n-GPS:all#\n-XMP:GPS*#\n" + file.toStdString() + "\n",
                     (*pipe_id)++, &reply);
        }

        clock.restart();
        read_clock.start();
        QMetaObject::invokeMethod(&window, "on_sync_clicked");
        result.flow += clock.nsecsElapsed() / 1e9;

        clock.restart();
        for (const std::string &command : commands) {
            if (!tool.run(command, (*pipe_id)++, &reply) ||
                reply.find("files weren't updated due to errors") != std::string::npos)
                ++result.pipe_failures;
        }
        result.pipes += clock.nsecsElapsed() / 1e9;
    }
    QObject::disconnect(watch);
    for (const QString &file : flow_files) {
        if (vn::exiftool::read_tags(file, false).value("GPSLatitude") ==
            QLatin1String("33 deg 51' 24.42\" S"))
            ++result.written;
    }
    return result;
}

void print(const char *title, const figures &f, int count)
{
    std::printf("%s\n", title);
    std::printf("  loading (not part of the ratio): %.3f s\n", f.load);
    std::printf("  sync flow:    %.3f s  (%.2f ms per file), files with the new position: %d\n",
                f.flow, 1000 * f.flow / count, f.written);
    std::printf("    of it the exact read pass: %.3f s  (%.2f ms per file)\n", f.read,
                1000 * f.read / count);
    std::printf("  plain pipes:  %.3f s  (%.2f ms per file), failures: %d\n", f.pipes,
                1000 * f.pipes / count, f.pipe_failures);
    std::printf("  ratio sync flow / pipes: %.3f (target <= 1.35)\n", f.flow / f.pipes);
}

} // namespace

int main(int argc, char **argv)
{
    raw_exiftool::steady_child_speed();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    // The flow's journal goes here, not into the user's data folder.
    qputenv("XDG_DATA_HOME", QFile::encodeName(dir.filePath("data")));
    QApplication app(argc, argv);
    // Settings of its own, so that the bench leaves the program's alone.
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere sync bench"));
    QSettings().clear();

    raw_exiftool tool;
    std::vector<std::string> args;
    for (const QString &arg : vn::exiftool_worker::arguments())
        args.push_back(arg.toStdString());
    if (!tool.start(vn::exiftool_worker::program_path().toStdString(), args))
        return 1;
    std::string reply;
    int pipe_id = 0;
    tool.run("-ver\n", pipe_id++, &reply); // the process is up before the clock runs

    const QStringList photos = writable_photos();
    const QString camera = make_camera_photo(dir.filePath("source"), tool);
    QStringList corpus_flow;
    QStringList corpus_pipes;
    QStringList camera_flow;
    QStringList camera_pipes;
    if (photos.isEmpty() || camera.isEmpty() ||
        !make_copies(photos, corpus_copies, dir.filePath("flow/corpus"), &corpus_flow) ||
        !make_copies(photos, corpus_copies, dir.filePath("pipes/corpus"), &corpus_pipes) ||
        !make_copies({camera}, camera_copies, dir.filePath("flow/camera"), &camera_flow) ||
        !make_copies({camera}, camera_copies, dir.filePath("pipes/camera"), &camera_pipes)) {
        std::fprintf(stderr, "could not make the copies\n");
        return 1;
    }

    MainWindow window;
    window.ask_question = [](QWidget *, const QString &, const QString &, const QString &,
                             const QString &,
                             QMessageBox::StandardButton) { return QMessageBox::Yes; };
    window.findChild<vn::radio *>(QStringLiteral("position_radio"))->click();
    window.findChild<vn::lineedit *>(QStringLiteral("latitude_edit"))->setText("-33.856784");
    window.findChild<vn::lineedit *>(QStringLiteral("longitude_edit"))->setText("151.215297");

    const figures corpus = measure(window, tool, &pipe_id, corpus_flow, corpus_pipes);
    const figures big = measure(window, tool, &pipe_id, camera_flow, camera_pipes);
    tool.stop();
    const double journal = journal_seconds(dir.filePath("alone.journal"), corpus_pipes);
    vn::exiftool::shutdown();

    char title[128];
    std::snprintf(title, sizeof title, "%d copies of %d corpus photos (%.0f kB on average)",
                  corpus_copies, int(photos.size()), [&] {
                      qint64 bytes = 0;
                      for (const QString &photo : photos)
                          bytes += QFileInfo(photo).size();
                      return bytes / 1024.0 / photos.size();
                  }());
    print(title, corpus, corpus_copies);
    std::snprintf(title, sizeof title, "%d copies of a camera-size JPEG (%.1f MB)", camera_copies,
                  QFileInfo(camera).size() / 1048576.0);
    print(title, big, camera_copies);
    std::printf("journal alone (save + flushed marks): %.3f s  (%.2f ms per file)\n", journal,
                1000 * journal / corpus_copies);
    const bool ok = corpus.written == corpus_copies && big.written == camera_copies &&
                    corpus.pipe_failures == 0 && big.pipe_failures == 0;
    return ok ? 0 : 2;
}
