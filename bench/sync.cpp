// Measures what the sync flow costs on top of ExifTool itself: 1,000 copies
// of corpus photos get a typed position through the window's sync flow
// (offscreen, every question answered Yes), and the same tag maps go to
// 1,000 other copies straight through an "exiftool -stay_open" process over
// blocking pipes, without Qt. Loading the photos isn't timed. Prints both
// times and their ratio.
#include "raw_exiftool.h"

#include "gps_tag_maps.h"
#include "mainwindow.h"
#include "model/exif_cache.h"
#include "model/gps_pos.h"

#include <vn/exiftool.h>
#include <vn/exiftool_worker.h>
#include <vn/lineedit.h>
#include <vn/radio.h>

#include <QAbstractItemModel>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
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

constexpr int file_count = 1000;
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

bool make_copies(const QStringList &photos, const QString &folder, QStringList *files)
{
    if (!QDir().mkpath(folder))
        return false;
    for (int i = 0; i < file_count; ++i) {
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

} // namespace

int main(int argc, char **argv)
{
    raw_exiftool::steady_child_speed();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // Settings of its own, so that the bench leaves the program's alone.
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere sync bench"));
    QSettings().clear();

    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    const QStringList photos = writable_photos();
    QStringList flow_files;
    QStringList pipe_files;
    if (photos.isEmpty() || !make_copies(photos, dir.filePath("flow"), &flow_files) ||
        !make_copies(photos, dir.filePath("pipes"), &pipe_files)) {
        std::fprintf(stderr, "could not copy the corpus photos\n");
        return 1;
    }
    std::printf("%d copies of %d corpus photos for each path, in %d blocks\n", file_count,
                int(photos.size()), rounds);

    MainWindow window;
    window.ask_question = [](QWidget *, const QString &, const QString &, const QString &,
                             const QString &,
                             QMessageBox::StandardButton) { return QMessageBox::Yes; };
    window.findChild<vn::radio *>(QStringLiteral("position_radio"))->click();
    window.findChild<vn::lineedit *>(QStringLiteral("latitude_edit"))->setText("-33.856784");
    window.findChild<vn::lineedit *>(QStringLiteral("longitude_edit"))->setText("151.215297");

    raw_exiftool tool;
    std::vector<std::string> args;
    for (const QString &arg : vn::exiftool_worker::arguments())
        args.push_back(arg.toStdString());
    if (!tool.start(vn::exiftool_worker::program_path().toStdString(), args))
        return 1;
    std::string reply;
    int pipe_id = 0;
    tool.run("-ver\n", pipe_id++, &reply); // the process is up before the clock runs

    // Blocks of the two paths take turns, so that a change in the machine's
    // load between them falls on both alike.
    const int block = file_count / rounds;
    double load_seconds = 0;
    double flow_seconds = 0;
    double pipe_seconds = 0;
    int pipe_failures = 0;
    QElapsedTimer clock;
    for (int round = 0; round < rounds; ++round) {
        clock.start();
        QMetaObject::invokeMethod(&window, "load_files",
                                  Q_ARG(QStringList, flow_files.mid(round * block, block)));
        load_seconds += clock.nsecsElapsed() / 1e9;

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
            return 1;
        }

        // The other copies are read the same way, so that both paths write
        // files that ExifTool and the page cache have just seen.
        for (const QString &file : pipe_files.mid(round * block, block)) {
            tool.run(file.toStdString() + "\n", pipe_id++, &reply);
            tool.run("-G1\n-a\n" + file.toStdString() + "\n", pipe_id++, &reply);
        }

        clock.restart();
        QMetaObject::invokeMethod(&window, "on_sync_clicked");
        flow_seconds += clock.nsecsElapsed() / 1e9;

        clock.restart();
        for (const std::string &command : commands) {
            if (!tool.run(command, pipe_id++, &reply) ||
                reply.find("files weren't updated due to errors") != std::string::npos)
                ++pipe_failures;
        }
        pipe_seconds += clock.nsecsElapsed() / 1e9;
    }
    tool.stop();
    std::printf("loading (not part of the ratio): %.3f s\n", load_seconds);

    int flow_written = 0;
    for (const QString &file : flow_files) {
        if (vn::exiftool::read_tags(file, false).value("GPSLatitude") ==
            QLatin1String("33 deg 51' 24.42\" S"))
            ++flow_written;
    }
    vn::exiftool::shutdown();

    std::printf("sync flow:    %.3f s  (%.2f ms per file), files with the new position: %d\n",
                flow_seconds, 1000 * flow_seconds / file_count, flow_written);
    std::printf("plain pipes:  %.3f s  (%.2f ms per file), failures: %d\n", pipe_seconds,
                1000 * pipe_seconds / file_count, pipe_failures);
    std::printf("ratio sync flow / pipes: %.3f (target <= 1.10)\n", flow_seconds / pipe_seconds);
    return flow_written == file_count && pipe_failures == 0 ? 0 : 2;
}
