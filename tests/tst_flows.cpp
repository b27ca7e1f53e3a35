#include "mainwindow.h"

#include "gps_tag_maps.h"
#include "gps_writer.h"
#include "model/exif_cache.h"
#include "model/table_data_model.h"
#include "write_journal.h"

#include <vn/button_dark.h>
#include <vn/checkbox.h>
#include <vn/exif_response.h>
#include <vn/exiftool.h>
#include <vn/lineedit.h>
#include <vn/radio.h>

#include <QtTest>

#include <QApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QProcess>
#include <QProgressBar>
#include <QProgressDialog>
#include <QSettings>
#include <QTemporaryDir>

#include <qpa/qwindowsysteminterface.h>

#include <cstdio>

#include <signal.h>
#include <unistd.h>

// The write, undo, clear and GPX flows of the window against the real
// ExifTool, on copies of the corpus photos.
class tst_flows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void write_and_undo_corpus_data();
    void write_and_undo_corpus();

    void questions_data();
    void questions();

    void unwritable_position();

    void files_changed_after_loading();
    void exiftool_killed_during_sync();
    void interrupted_sync_is_undone_at_start();
    void input_during_sync_is_dropped();
    void journal_at_start_data();
    void journal_at_start();
    void data_folder_not_writable_data();
    void data_folder_not_writable();
    void leftover_data();
    void leftover();

    void gpx_tracks_data();
    void gpx_tracks();

    void between_points_data();
    void between_points();

public:
    // In a child process: syncs every file of `folder` through a window,
    // printing "step N" as the progress moves, until it is killed.
    static int sync_in_child(const QString &folder);

private:
    struct asked
    {
        QString title;
        QString text;
        QString yes_text;
        QString no_text;
        QMessageBox::StandardButton default_button;
    };

    QString copy_photo(const QString &name, const QString &as = QString());
    QString write_gpx(const QString &name, const QByteArray &content);
    void answer_all(QMessageBox::StandardButton answer, int no_at = -1);
    void use_track(const QString &gpx_file);
    static void use_position(MainWindow *window, const char *lat, const char *lon);
    // Replaces window_ by a new one that reports into warnings_ and results_.
    void renew_window();
    // Paths of the journal's entries, sorted.
    QStringList journal_paths() const;

    QTemporaryDir dir_;
    QString root_;
    MainWindow *window_ = nullptr;
    QList<asked> asked_;
    QStringList warnings_;
    QList<QStringList> item_lists_;
    QList<gps_writer::result> results_; // summaries shown, with the undo flag in `stopped`
};

namespace {

const QString corpus_photos = QStringLiteral(VN_CORPUS_DIR "/photos/");
const QString corpus_gpx = QStringLiteral(VN_CORPUS_DIR "/gpx/");

// Files that ExifTool reads but refuses to write: their reply reports an
// error ("Not a valid NEF", "Bad format (0) for IFD0 entry 0", "Invalid
// format (string) for IFD0 ExifOffset").
const QStringList unwritable_photos = {QStringLiteral("Issue 247-1.nef"),
                                       QStringLiteral("Sony DSC-HX5V (2).jpg"),
                                       QStringLiteral("30-type_error.jpg")};

QByteArray file_hash(const QString &file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray();
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&f);
    return hash.result();
}

// The GPS tags of a file as "exiftool -a -G1 -n" prints them: the GPS group,
// every XMP group's GPS tags and QuickTime's coordinates, empty tags included.
exif_tag_map gps_state(const QString &file)
{
    return vn::exiftool::read_numeric_tags(file, {"GPS:all", "XMP:GPS*", "Keys:GPSCoordinates"})
        .value_or(exif_tag_map{{"unreadable", file}});
}

// ExifTool stores a number it writes as the simplest rational within 1e-8 of
// it: a camera's 645599999/100000000 seconds come back as 807/125, so
// DSCN0010's longitude reads 11.8851266666667 instead of 11.8851266666639,
// and an iPhone's altitude 260.5606407 instead of 260.5606383. Numbers equal
// within that count as equal (a position rounded to 0.01" is 25 times
// further off); texts and presence must match exactly.
bool same_value(const QString &a, const QString &b)
{
    bool ok_a = false;
    bool ok_b = false;
    const double x = a.toDouble(&ok_a);
    const double y = b.toDouble(&ok_b);
    return a == b || (ok_a && ok_b && std::fabs(x - y) <= 1e-8 * std::fabs(x));
}

QString state_difference(const exif_tag_map &before, const exif_tag_map &after)
{
    QStringList keys = before.keys() + after.keys();
    keys.removeDuplicates();
    QStringList lines;
    for (const QString &key : keys) {
        if (!same_value(before.value(key, "(none)"), after.value(key, "(none)")))
            lines << QStringLiteral("%1: '%2' -> '%3'")
                         .arg(key, before.value(key, "(none)"), after.value(key, "(none)"));
    }
    return lines.join(QStringLiteral("; "));
}

// What -validate warns and errs about in a file, without the count line. A process
// that stays open names an unknown maker note by the directory it read last
// ("Unrecognized MakerNoteUnknown" where a fresh one says "MakerNotes").
QSet<QString> validate_warnings(const QString &file)
{
    static const QRegularExpression unknown_maker_note(QStringLiteral("MakerNote\\w*$"));
    vn::exif_response *response = vn::exiftool::start_task(
        (QStringLiteral("-validate\n-warning\n-error\n-a\n") + file + QLatin1Char('\n')).toUtf8());
    QSet<QString> warnings;
    if (response->wait(vn::exiftool::time_limit_ms)) {
        const QStringList lines =
            vn::exiftool::reply_text(response->data()).split(QLatin1Char('\n'));
        for (const QString &line : lines) {
            if (line.startsWith(QLatin1String("-Warning=")) ||
                line.startsWith(QLatin1String("-Error=")))
                warnings.insert(QString(line).replace(unknown_maker_note, "MakerNotes"));
        }
    } else {
        warnings.insert(QStringLiteral("no reply"));
    }
    response->release();
    return warnings;
}

bool qt_decodes(const QString &file)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    return suffix == QLatin1String("jpg") || suffix == QLatin1String("png") ||
           suffix == QLatin1String("tiff");
}

QList<qint64> exiftool_pids()
{
    QList<qint64> pids;
    const QString self = QString::number(getpid());
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &entry : entries) {
        bool numeric = false;
        const qint64 pid = entry.toLongLong(&numeric);
        if (!numeric)
            continue;
        QFile stat(QStringLiteral("/proc/%1/stat").arg(entry));
        QFile cmdline(QStringLiteral("/proc/%1/cmdline").arg(entry));
        if (!stat.open(QIODevice::ReadOnly) || !cmdline.open(QIODevice::ReadOnly))
            continue;
        const QByteArray fields = stat.readAll();
        // "pid (name) state ppid ...": the name may hold blanks, so read after ')'.
        const QList<QByteArray> rest = fields.mid(fields.lastIndexOf(')') + 2).split(' ');
        if (rest.size() > 1 && rest.at(1) == self.toLatin1() &&
            cmdline.readAll().contains("-stay_open"))
            pids << pid;
    }
    return pids;
}

bool is_running(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    const QByteArray fields = stat.readAll();
    const char state = fields.mid(fields.lastIndexOf(')') + 2, 1).at(0);
    return state != 'Z' && state != 'X';
}

} // namespace

void tst_flows::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    QVERIFY(QFileInfo::exists(QCoreApplication::applicationDirPath() + "/exiftool"));
    QVERIFY(QFileInfo::exists(corpus_photos + "Canon_40D.jpg"));
}

void tst_flows::init()
{
    QSettings().clear();
    QVERIFY(dir_.isValid());
    root_ = dir_.path() + '/' + QTest::currentTestFunction() + '_' +
            (QTest::currentDataTag() ? QTest::currentDataTag() : "");
    QVERIFY(QDir().mkpath(root_));
    exif_cache::instance()->clear();
    asked_.clear();
    warnings_.clear();
    item_lists_.clear();
    results_.clear();
    QFile::remove(write_journal::default_path());
    QFile::remove(write_journal::default_path() + ".unusable");
    renew_window();
}

void tst_flows::renew_window()
{
    delete window_;
    window_ = new MainWindow;
    window_->show_warning = [this](QWidget *, const QString &title, const QString &text) {
        warnings_ << title + ": " + text;
    };
    window_->show_write_result = [this](QWidget *, const gps_writer::result &result, bool) {
        results_ << result;
    };
    answer_all(QMessageBox::Yes);
}

void tst_flows::use_position(MainWindow *window, const char *lat, const char *lon)
{
    window->position_radio->click();
    window->latitude_edit->setText(lat);
    window->longitude_edit->setText(lon);
}

void tst_flows::cleanup()
{
    delete window_;
    window_ = nullptr;
    for (QDirIterator it(root_, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
         it.hasNext();)
        QFile::setPermissions(it.next(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QDir(root_).removeRecursively();
}

QString tst_flows::copy_photo(const QString &name, const QString &as)
{
    const QString target = root_ + '/' + (as.isEmpty() ? name : as);
    if (!QFile::copy(corpus_photos + name, target))
        return QString();
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    return target;
}

QString tst_flows::write_gpx(const QString &name, const QByteArray &content)
{
    QFile file(root_ + '/' + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return QString();
    return file.fileName();
}

// Every question gets `answer`, except the one at index `no_at`, which
// gets No.
void tst_flows::answer_all(QMessageBox::StandardButton answer, int no_at)
{
    window_->ask_question = [this, answer, no_at](QWidget *, const QString &title,
                                                  const QString &text, const QString &yes_text,
                                                  const QString &no_text,
                                                  QMessageBox::StandardButton default_button) {
        asked_.append({title, text, yes_text, no_text, default_button});
        return asked_.size() - 1 == no_at ? QMessageBox::No : answer;
    };
}

QStringList tst_flows::journal_paths() const
{
    QStringList paths;
    for (const write_journal::entry &entry : window_->journal.current().entries)
        paths << entry.path;
    paths.sort();
    return paths;
}

void tst_flows::use_track(const QString &gpx_file)
{
    window_->gpx_radio->click();
    window_->choose_gpx_files = [gpx_file](QWidget *, const QString &, const QString &,
                                           const QString &) { return QStringList(gpx_file); };
    window_->on_load_gpx_clicked();
}

void tst_flows::write_and_undo_corpus_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addRow("closest photo") << "closest";
    QTest::addRow("typed position") << "typed";
    QTest::addRow("gpx track") << "gpx";
    QTest::addRow("remove gps") << "remove";
}

// Every photo of the corpus: the flow writes what the table previewed, the
// image data stays as it was, and the undo brings back every GPS tag.
void tst_flows::write_and_undo_corpus()
{
    QFETCH(QString, mode);

    const QStringList names = QDir(corpus_photos).entryList(QDir::Files, QDir::Name);
    QVERIFY(names.size() >= 30);
    QStringList files;
    QMap<QString, QByteArray> hash_before;
    QMap<QString, exif_tag_map> state_before;
    QMap<QString, QImage> image_before;
    QMap<QString, QSet<QString>> validate_before;
    for (const QString &name : names) {
        const QString file = copy_photo(name);
        QVERIFY2(!file.isEmpty(), qPrintable(name));
        files << file;
        hash_before[file] = file_hash(file);
        state_before[file] = gps_state(file);
        validate_before[file] = validate_warnings(file);
        if (qt_decodes(file)) {
            image_before[file] = QImage(file);
            QVERIFY2(!image_before[file].isNull(), qPrintable(name));
        }
    }

    if (mode == QLatin1String("gpx")) {
        const QString gpx = write_gpx(
            "track.gpx",
            "<?xml version=\"1.0\"?>\n<gpx><trk><name>Far</name><trkseg>"
            "<trkpt lat=\"-12.5\" lon=\"-45.25\"><time>2000-01-01T00:00:00Z</time></trkpt>"
            "<trkpt lat=\"-12.5\" lon=\"-45.25\"><time>2030-01-01T00:00:00Z</time></trkpt>"
            "</trkseg></trk></gpx>\n");
        use_track(gpx);
        QCOMPARE(window_->gpx_name_edit->text(), QStringLiteral("Far"));
        window_->gpx_max_time_edit->setText(QString());
    } else if (mode == QLatin1String("typed")) {
        use_position(window_, "-12.5", "-45.25");
    } else {
        window_->closest_radio->click();
        window_->max_time_edit->setText(QString());
    }
    window_->load_files(files);
    table_data_model *model = window_->model;
    QCOMPARE(model->rowCount(), files.size());
    QVERIFY(model->has_quicktime_gps()); // with-gps.mov

    // What each row is to receive, as the table shows it.
    QMap<QString, gps_pos> expected;
    for (int row = 0; row < model->rowCount(); ++row) {
        const QString path = model->data(model->index(row, 0), Qt::UserRole).toString();
        const QVariant value = model->data(model->index(row, 2), Qt::UserRole);
        if (mode == QLatin1String("remove") || value.isValid())
            expected.insert(path, value.value<gps_pos>());
    }
    // In the photo and track modes a photo with a position of its own is a
    // source: neither written nor recorded.
    if (mode == QLatin1String("typed") || mode == QLatin1String("remove"))
        QCOMPARE(expected.size(), files.size());
    else
        QVERIFY(expected.size() > 5 && expected.size() < files.size());

    const auto expect_failures = [&] {
        for (const QString &name : unwritable_photos) {
            if (expected.contains(root_ + '/' + name))
                QTest::ignoreMessage(QtWarningMsg,
                                     QRegularExpression("Failed to execute command on '.*" +
                                                        QRegularExpression::escape(name)));
        }
    };
    expect_failures();
    if (mode == QLatin1String("remove"))
        window_->on_remove_gps_clicked();
    else
        window_->on_sync_clicked();

    // The QuickTime question comes last, and each flow asks it.
    QVERIFY(!asked_.isEmpty());
    QVERIFY(asked_.last().text.startsWith("QuickTime GPS coordinates are read only"));
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(journal_paths(), expected.keys());
    QVERIFY(window_->undo_button->isEnabled());
    // Removing GPS data leaves the sync button as it was.
    QCOMPARE(window_->sync_button->isEnabled(), mode == QLatin1String("remove"));

    for (const QString &file : files) {
        const QString name = QFileInfo(file).fileName();
        const exif_tag_map state = gps_state(file);
        if (!expected.contains(file) || unwritable_photos.contains(name)) {
            QVERIFY2(file_hash(file) == hash_before[file], qPrintable(name));
            continue;
        }
        // QuickTime's coordinates are never touched.
        QCOMPARE(state.value("Keys:GPSCoordinates"),
                 state_before[file].value("Keys:GPSCoordinates"));
        const gps_pos pos = expected[file];
        if (mode == QLatin1String("remove")) {
            // The GPS group goes whole, and of XMP the three position tags;
            // other XMP GPS tags (Nikon D5000's GPSAltitudeRef) stay.
            for (const QString &key : state.keys()) {
                const QString tag = key.section(QLatin1Char(':'), 1);
                QVERIFY2(!key.startsWith(QLatin1String("GPS:")), qPrintable(name + ": " + key));
                QVERIFY2(!key.startsWith(QLatin1String("XMP")) ||
                             !gps_tag_maps::xmp_gps_tags().contains("XMP:" + tag),
                         qPrintable(name + ": " + key));
            }
        } else {
            QVERIFY2(!pos.lat_numerical.isEmpty(), qPrintable(name));
            // The position reads back as the one previewed, to ExifTool's
            // printed 0.01".
            // A video has no EXIF: ExifTool puts the position into XMP, and
            // QuickTime's coordinates still make the Composite one.
            const bool video = name.endsWith(QLatin1String(".mov"));
            const exif_tag_map printed = vn::exiftool::read_tags(file, video);
            const QString lat = printed.value(video ? "XMP-exif:GPSLatitude" : "GPSLatitude");
            QVERIFY2(lat.endsWith(pos.lat_ref), qPrintable(name + ": " + lat));
            const QString lon = printed.value(video ? "XMP-exif:GPSLongitude" : "GPSLongitude");
            QVERIFY2(lon.endsWith(pos.lon_ref), qPrintable(name + ": " + lon));
            // A photo with a position of its own may be written with it again.
            if (pos.lat_numerical == QLatin1String("-12.5")) {
                QCOMPARE(lat, QStringLiteral("12 deg 30' 0.00\" S"));
                QCOMPARE(lon, QStringLiteral("45 deg 15' 0.00\" W"));
            }
            const bool had_xmp =
                exif_cache::instance()->values.value(file).value("has_xmp_gps") == "true";
            QCOMPARE(state.contains("XMP-exif:GPSLatitude"), had_xmp || video);
            if (mode == QLatin1String("typed")) {
                for (const QString &cleared : gps_tag_maps::user_position_cleared_tags())
                    QVERIFY2(!state.contains("GPS:" + cleared), qPrintable(name + " " + cleared));
            }
        }
        if (image_before.contains(file))
            QVERIFY2(QImage(file) == image_before[file], qPrintable(name));
        QSet<QString> added = validate_warnings(file) - validate_before[file];
        // ExifTool's validation wants GPSProcessingMethod in every TIFF that
        // has GPS tags; the photo's own position never brings one.
        added.remove("-Warning=Missing required TIFF GPS tag 0x001b GPSProcessingMethod");
        QVERIFY2(added.isEmpty(), qPrintable(name + ": " + QStringList(added.values()).join(", ")));
    }

    // Each failure is in the summary, with ExifTool's reason.
    QStringList failed;
    QStringList reported;
    for (const QString &name : unwritable_photos)
        failed << (expected.contains(root_ + '/' + name) ? name : QString());
    static const QRegularExpression reason("^(Not a valid|Bad format|Invalid format)");
    for (const gps_writer::failure &f : results_.value(0).failures)
        reported << (reason.match(f.reason).hasMatch() ? QFileInfo(f.path).fileName() : f.reason);
    failed.removeAll(QString());
    failed.sort();
    reported.sort();
    QCOMPARE(reported, failed);

    window_->on_undo_clicked();
    QVERIFY(window_->journal.is_empty());
    QVERIFY(!QFileInfo::exists(write_journal::default_path()));
    QVERIFY(!window_->undo_button->isEnabled());
    for (const QString &file : files) {
        const QString name = QFileInfo(file).fileName();
        // ExifTool reads Nikon D5000's EXIF latitude and longitude (48/1
        // 5332358/100000 0/0) as empty and can't write such a number back:
        // the undo deletes them. Everything else comes back exactly.
        const QString known = name == QLatin1String("Nikon D5000.jpg") && expected.contains(file)
                                  ? "GPS:GPSLatitude: '' -> '(none)'; "
                                    "GPS:GPSLongitude: '' -> '(none)'"
                                  : "";
        QCOMPARE(state_difference(state_before[file], gps_state(file)), known);
        if (image_before.contains(file))
            QVERIFY2(QImage(file) == image_before[file], qPrintable(name));
        if (state_before[file].isEmpty())
            QVERIFY2(gps_state(file).isEmpty(), qPrintable(name));
    }
}

void tst_flows::questions_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QStringList>("photos");
    QTest::addColumn<int>("no_at");
    QTest::addColumn<QStringList>("expected_yes_texts");

    const QStringList mixed = {"Canon_40D.jpg", "DSCN0010.jpg", "with-gps.mov"};
    const QStringList two = {"Canon_40D.jpg", "DSCN0010.jpg"};
    // Canon_40D is the earliest photo and has no previous source: a "?" row.
    QTest::addRow("unassigned, No") << "previous" << mixed << 0 << QStringList({"Continue anyway"});
    QTest::addRow("unassigned, No to QuickTime")
        << "previous" << mixed << 1 << QStringList({"Continue anyway", "Continue"});
    // "Continue anyway" writes the "?" row's empty position: it clears.
    QTest::addRow("unassigned, Yes to all")
        << "previous" << mixed << -1 << QStringList({"Continue anyway", "Continue"});
    QTest::addRow("overwrite, No") << "typed" << mixed << 0 << QStringList({"Continue"});
    QTest::addRow("overwrite and QuickTime, Yes")
        << "typed" << mixed << -1 << QStringList({"Continue", "Continue"});
    QTest::addRow("nothing to ask") << "closest" << two << -1 << QStringList();
    // Removing asks plainly first (Yes and No, no default), then about QuickTime.
    QTest::addRow("remove, No") << "remove" << mixed << 0 << QStringList({""});
    QTest::addRow("remove, No to QuickTime")
        << "remove" << mixed << 1 << QStringList({"", "Continue"});
    QTest::addRow("remove, Yes to both")
        << "remove" << mixed << -1 << QStringList({"", "Continue"});
    QTest::addRow("remove photos only") << "remove" << two << -1 << QStringList({""});
}

void tst_flows::questions()
{
    QFETCH(QString, mode);
    QFETCH(QStringList, photos);
    QFETCH(int, no_at);
    QFETCH(QStringList, expected_yes_texts);

    const bool remove = mode == QLatin1String("remove");
    QStringList files;
    QMap<QString, QByteArray> hashes;
    QMap<QString, exif_tag_map> states;
    for (const QString &name : photos) {
        files << copy_photo(name);
        hashes[files.last()] = file_hash(files.last());
        states[files.last()] = gps_state(files.last());
    }
    if (mode == QLatin1String("typed")) {
        use_position(window_, "10.5", "20.25");
    } else if (mode == QLatin1String("previous")) {
        window_->previous_radio->click();
    } else {
        window_->closest_radio->click();
    }
    window_->max_time_edit->setText(QString());
    window_->load_files(files);
    // A record from an earlier write, which "No" must leave in place.
    const QString earlier_file = root_ + "/earlier.jpg";
    write_journal::record earlier;
    earlier.kind = "sync";
    earlier.started = QDateTime::currentDateTimeUtc();
    earlier.entries.append({earlier_file, {{"GPS:GPSLatitude#", "1"}}, {}, {}, {}, true});
    earlier.entries.first().status = write_journal::state::done;
    QString error;
    QVERIFY(window_->journal.start(earlier, &error));
    window_->update_undo_button();
    answer_all(QMessageBox::Yes, no_at);

    if (remove)
        window_->on_remove_gps_clicked();
    else
        window_->on_sync_clicked();

    QStringList yes_texts;
    for (const asked &a : qAsConst(asked_)) {
        QCOMPARE(a.title, remove ? QStringLiteral("Confirm") : QStringLiteral("Continue?"));
        yes_texts << a.yes_text;
    }
    QCOMPARE(yes_texts, expected_yes_texts);
    if (!asked_.isEmpty()) {
        const QString first = asked_.first().text;
        if (remove)
            QCOMPARE(first, QStringLiteral("Do you really want to delete all GPS information from "
                                           "all currently loaded (%1) images?")
                                .arg(files.size()));
        else if (mode == QLatin1String("typed"))
            QCOMPARE(first, QStringLiteral("Some loaded images already had GPS data which would "
                                           "be overwritten"));
        else
            QCOMPARE(first, QStringLiteral("Could not assign a GPS position to all files using "
                                           "the current assignment mode"));
        QCOMPARE(asked_.first().default_button, remove ? QMessageBox::NoButton : QMessageBox::Yes);
        if (mode == QLatin1String("previous"))
            QCOMPARE(asked_.first().no_text, QStringLiteral("Select a different assignment mode"));
        if (mode == QLatin1String("typed"))
            QCOMPARE(asked_.first().no_text, QStringLiteral("Abort"));
        if (asked_.size() > 1) {
            QVERIFY(asked_.at(1).text.startsWith("QuickTime GPS coordinates are read only"));
            QCOMPARE(asked_.at(1).no_text, QStringLiteral("Abort"));
        }
    }

    if (no_at >= 0) {
        QCOMPARE(window_->model->rowCount(), files.size());
        QCOMPARE(journal_paths(), QStringList({earlier_file}));
        QVERIFY(window_->undo_button->isEnabled());
        QVERIFY(window_->sync_button->isEnabled());
        for (const QString &file : files)
            QVERIFY2(file_hash(file) == hashes[file], qPrintable(file));
        return;
    }
    QCOMPARE(window_->model->rowCount(), 0);
    QVERIFY(!journal_paths().contains(earlier_file));
    // Removing leaves the sync button as it was.
    QCOMPARE(window_->sync_button->isEnabled(), remove);
    QVERIFY(window_->undo_button->isEnabled());
    // In the photo modes the source photos are neither written nor recorded.
    if (mode == QLatin1String("previous") || mode == QLatin1String("closest")) {
        QCOMPARE(journal_paths(), QStringList({files.first()}));
        for (const QString &source : files.mid(1))
            QVERIFY2(file_hash(source) == hashes[source], qPrintable(source));
    } else {
        QCOMPARE(journal_paths(), files);
    }
    if (mode == QLatin1String("previous")) {
        const exif_tag_map plain = vn::exiftool::read_tags(files.first(), false);
        QVERIFY(!plain.contains("GPSLatitude") && !plain.contains("GPSLatitudeRef"));
        QCOMPARE(plain.value("GPSVersionID"), QStringLiteral("2.2.0.0"));
    }
    // A typed position replaces the old one whole, and removing takes it
    // all: DSCN0010's satellite count goes, and comes back with the undo.
    if (mode == QLatin1String("typed") || remove)
        QVERIFY(!gps_state(files.at(1)).contains("GPS:GPSSatellites"));
    if (remove) {
        for (const QString &file : files)
            QVERIFY2(!gps_state(file).contains("GPS:GPSLatitude"), qPrintable(file));
    }
    QVERIFY(!window_->sync_progress->isVisible());
    window_->on_undo_clicked();
    QVERIFY(!window_->sync_progress->isVisible());
    QVERIFY(!window_->undo_button->isEnabled());
    for (const QString &file : files)
        QCOMPARE(state_difference(states[file], gps_state(file)), QString());
    // Once only: a second undo finds nothing to write.
    window_->on_undo_clicked();
    QVERIFY(!window_->sync_progress->isVisible());
    QCOMPARE(gps_state(files.at(1)).value("GPS:GPSSatellites"), QStringLiteral("06"));
}

// A GPX position whose line feed would make "-all=" a line of its own for
// ExifTool is left out when the track is read: the photo never shows it and
// gets the track's other point, days later.
void tst_flows::unwritable_position()
{
    const QString photo = copy_photo("Canon_40D.jpg");
    const exif_tag_map before = gps_state(photo);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Leaving out the point of line 2"));
    use_track(write_gpx("two.gpx",
                        "<?xml version=\"1.0\"?>\n<gpx><trk><trkseg>"
                        "<trkpt lat=\"48.1&#10;-all=\" lon=\"-45.25\">"
                        "<time>2008-05-30T15:00:00Z</time></trkpt>\n"
                        "<trkpt lat=\"33.25\" lon=\"-45.25\">"
                        "<time>2008-06-02T15:00:00Z</time></trkpt></trkseg></trk></gpx>"));
    window_->gpx_max_time_edit->setText(QString());
    window_->load_files({photo});
    QCOMPARE(window_->model->index(0, 2).data().toString(), "G  33.25, -45.25");
    window_->on_sync_clicked();
    QCOMPARE(vn::exiftool::read_tags(photo, false).value("GPSLatitude"), "33 deg 15' 0.00\" N");
    window_->on_undo_clicked();
    QCOMPARE(gps_state(photo), before);
}

// Files that change between loading and writing fail one by one, each with
// its reason in the summary; every other file is written. The undo leaves a
// file alone that another program changed after the write.
void tst_flows::files_changed_after_loading()
{
    const QString gone = copy_photo("Canon_40D.jpg", "gone.jpg");
    const QString read_only = copy_photo("DSCN0010.jpg", "read_only.jpg");
    const QString folder = copy_photo("Pentax_K10D.jpg", "folder.jpg");
    const QString truncated = copy_photo("HTC Desire.jpg", "truncated.jpg");
    const QString refused = copy_photo("Sony DSC-HX5V (2).jpg", "refused.jpg");
    const QString blocked = copy_photo("Olympus_C8080WZ.jpg", "blocked.jpg");
    const QString good = copy_photo("Kodak_CX7530.jpg", "good.jpg");
    const QString changed = copy_photo("Apple iPhone 4.jpg", "changed.jpg");
    const QString moved = copy_photo("DSCN0010.jpg", "moved.jpg");
    use_position(window_, "33.5", "-7.25");
    window_->load_files(
        {gone, read_only, folder, truncated, refused, blocked, good, changed, moved});
    QCOMPARE(window_->model->rowCount(), 9);
    const exif_tag_map good_state = gps_state(good);
    // Another program's position after the load: the undo must bring back
    // this one, not the numbers the load read.
    QVERIFY(vn::exiftool::write_tags(moved, {{"GPSLatitude#", "1.25"}}));
    const exif_tag_map moved_state = gps_state(moved);

    QVERIFY(QFile::remove(gone));
    QVERIFY(QFile::setPermissions(read_only, QFile::ReadOwner)); // refused even for root
    QVERIFY(QFile::remove(folder));
    QVERIFY(QDir().mkdir(folder));
    QVERIFY(QFile::copy(corpus_photos + "Canon_40D.jpg", folder + "/inside.jpg"));
    QVERIFY(QFile(truncated).resize(4000));
    // Not this program's leftover: it stays, and so does the photo.
    QVERIFY(QFile::copy(blocked, gps_writer::leftover_path(blocked)));
    QMap<QString, QByteArray> hashes;
    for (const QString &file : {read_only, truncated, refused, blocked, folder + "/inside.jpg",
                                gps_writer::leftover_path(blocked)})
        hashes[file] = file_hash(file);

    for (const char *warning :
         {"isn't an existing file: '.*gone", "isn't an existing file: '.*folder",
          "read-only file: '.*read_only", "command on '.*trunc", "command on '.*refused",
          "'.*blocked.jpg': ExifTool's temporary file"})
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
    window_->on_sync_clicked();

    for (auto it = hashes.cbegin(); it != hashes.cend(); ++it)
        QVERIFY2(file_hash(it.key()) == it.value(), qPrintable(it.key()));
    QCOMPARE(vn::exiftool::read_tags(good, false).value("GPSLatitude"),
             QStringLiteral("33 deg 30' 0.00\" N"));
    QCOMPARE(results_.size(), 1);
    QCOMPARE(results_.first().written, 3);
    QMap<QString, QString> reasons;
    for (const gps_writer::failure &f : results_.first().failures)
        reasons[QFileInfo(f.path).fileName()] = f.reason;
    const QMap<QString, QString> expected = {
        {"gone.jpg", "file not found"},
        {"read_only.jpg", "read-only"},
        {"folder.jpg", "a folder, not a file"},
        {"truncated.jpg", "Corrupted JPEG image"},
        {"refused.jpg", "Bad format (0) for IFD0 entry 0"},
        {"blocked.jpg", "ExifTool's temporary file 'blocked.jpg_exiftool_tmp' is in the way, "
                        "left by an earlier write that was cut off"}};
    QCOMPARE(reasons, expected);

    exif_tag_map comment{{"Comment", "edited elsewhere"}};
    QVERIFY(vn::exiftool::write_tags(changed, comment));
    const QByteArray changed_hash = file_hash(changed);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not undoing '.*changed.jpg'"));
    window_->on_undo_clicked();
    QCOMPARE(state_difference(good_state, gps_state(good)), QString());
    QCOMPARE(state_difference(moved_state, gps_state(moved)), QString());
    QVERIFY(file_hash(changed) == changed_hash);
    QCOMPARE(results_.size(), 2);
    QCOMPARE(results_.last().written, 2);
    QCOMPARE(results_.last().failures.size(), 1);
    QCOMPARE(results_.last().failures.first().path, changed);
}

// ExifTool killed between two files: the bridge starts a new process for
// the next command, so at most the file in hand fails and the rest is written.
void tst_flows::exiftool_killed_during_sync()
{
    QStringList files;
    QMap<QString, exif_tag_map> before;
    QMap<QString, QImage> images;
    for (const char *name : {"Canon_40D.jpg", "DSCN0010.jpg", "Kodak_CX7530.jpg",
                             "Olympus_C8080WZ.jpg", "UPPER.JPG", "HTC Desire.jpg"}) {
        files << copy_photo(QString::fromLatin1(name));
        before[files.last()] = gps_state(files.last());
        images[files.last()] = QImage(files.last());
    }
    use_position(window_, "-33.75", "151.5");
    window_->load_files(files);

    QList<qint64> killed;
    QProgressBar *bar = window_->sync_progress->findChild<QProgressBar *>();
    QVERIFY(bar);
    // The six reads come first, then the writes: killed after two writes.
    connect(bar, &QProgressBar::valueChanged, this, [&killed](int value) {
        if (value != 8 || !killed.isEmpty())
            return;
        killed = exiftool_pids();
        for (qint64 pid : qAsConst(killed))
            ::kill(pid_t(pid), SIGKILL);
    });
    window_->on_sync_clicked();
    QCOMPARE(killed.size(), 1);

    int written = 0;
    for (const QString &file : files) {
        if (vn::exiftool::read_tags(file, false).value("GPSLatitude") ==
            QLatin1String("33 deg 45' 0.00\" S"))
            ++written;
        QVERIFY2(QImage(file) == images[file], qPrintable(file));
    }
    QVERIFY2(written >= files.size() - 1, qPrintable(QString::number(written)));
    QVERIFY(!exiftool_pids().contains(killed.first()));

    window_->on_undo_clicked();
    for (const QString &file : files) {
        const QString difference = state_difference(before[file], gps_state(file));
        QVERIFY2(difference.isEmpty(), qPrintable(file + ": " + difference));
    }
}

void tst_flows::gpx_tracks_data()
{
    QTest::addColumn<QString>("file");          // corpus names joined by '|', or "<none>.gpx"
    QTest::addColumn<QString>("choice");        // "" cancels; "-" when no list is shown
    QTest::addColumn<QString>("expected_name"); // "" keeps the earlier track
    QTest::addColumn<int>("expected_points");
    QTest::addColumn<QStringList>("expected_items_start");
    QTest::addColumn<QString>("warning"); // the files that gave nothing, and why

    struct row
    {
        const char *tag, *file, *choice, *name;
        int points;
        const char *items; // joined by '|'
        const char *warning = "";
    };
    const QList<row> rows = {
        {"one track, no question", "around-visnjan-with-car.gpx", "-", "2020-12-18 07:24:29", 104,
         ""},
        {"several tracks, one chosen", "korita-zbevnica.gpx", "ACTIVE LOG (176 Points)",
         "ACTIVE LOG", 176,
         "Load all tracks|03-OCT-10 (0 Points)|03-OCT-10 #2 (358 Points)|ACTIVE LOG (176 Points)|"
         "ACTIVE LOG #2 (337 Points)|Waypoints (2 Points)"},
        {"several tracks, all merged", "cerknicko-jezero.gpx", "Load all tracks", "Merged Track",
         303, "Load all tracks|ACTIVE LOG (0 Points)|ACTIVE LOG #2 (173 Points)"},
        {"several tracks, cancelled", "tracks.gpx", "", "", 0, "Load all tracks"},
        {"fit and kml, merged", "../tracks/garmin-edge-800.fit|../tracks/google_ext.kml",
         "Load all tracks", "Merged Track", 1737, "Load all tracks|Track 1 (1286 Points)"},
        {"names of two files", "cerknicko-jezero.gpx|korita-zbevnica.gpx",
         "korita-zbevnica.gpx: ACTIVE LOG (176 Points)", "korita-zbevnica.gpx: ACTIVE LOG", 176,
         "Load all tracks|cerknicko-jezero.gpx: ACTIVE LOG (0 Points)"},
        {"a good file and a broken one",
         "around-visnjan-with-car.gpx|../tracks/segmented_tracks.kml", "-", "2020-12-18 07:24:29",
         104, "",
         "segmented_tracks.kml: None of its track points has a time. KML keeps times only in "
         "tracks written as gx:Track."},
        {"route only", "route.gpx", "-", "", 0, "", "route.gpx: It holds no track point."},
        {"missing file", "<none>.gpx", "-", "", 0, "",
         "none.gpx: The file can't be opened: No such file or directory"},
    };
    for (const row &r : rows)
        QTest::newRow(r.tag) << QString(r.file) << QString(r.choice) << QString(r.name) << r.points
                             << QString(r.items).split('|', Qt::SkipEmptyParts)
                             << QString(r.warning);
}

void tst_flows::gpx_tracks()
{
    QFETCH(QString, file);
    QFETCH(QString, choice);
    QFETCH(QString, expected_name);
    QFETCH(int, expected_points);
    QFETCH(QStringList, expected_items_start);
    QFETCH(QString, warning);

    // An earlier track, which a cancel or a file without tracks keeps.
    use_track(corpus_gpx + "gpx-with-node-with-comments.gpx");
    QCOMPARE(window_->gpx_name_edit->text(), QStringLiteral("2014-05-06_132925"));
    QCOMPARE(window_->model->track_points().size(), 1);

    QStringList paths;
    for (const QString &name : file.split('|'))
        paths << corpus_gpx + name;
    if (file == QLatin1String("<none>.gpx"))
        paths[0] = root_ + "/none.gpx";
    const QString path = paths.first();

    window_->choose_item = [&](QWidget *, const QString &, const QString &,
                               const QStringList &items, bool *ok) {
        item_lists_ << items;
        *ok = !choice.isEmpty();
        return choice.isEmpty() ? items.first() : choice;
    };
    window_->choose_gpx_files = [&](QWidget *, const QString &, const QString &, const QString &) {
        return paths;
    };
    window_->on_load_gpx_clicked();

    QCOMPARE(item_lists_.size(), choice == QLatin1String("-") ? 0 : 1);
    QCOMPARE(item_lists_.value(0).mid(0, expected_items_start.size()), expected_items_start);
    // The folder moves whether or not the file gave a track.
    QCOMPARE(QSettings().value("last_gpx_load_path").toString(), QFileInfo(path).absolutePath());

    QCOMPARE(warnings_.join(""),
             warning.isEmpty() ? "" : "Error: This track file could not be loaded:\n\n" + warning);
    // The tracks the choice stands for: all offered, or the one taken.
    QCOMPARE(window_->chosen_tracks_.size(),
             choice == QLatin1String("Load all tracks") ? item_lists_.first().size() - 1 : 1);
    if (expected_name.isEmpty()) {
        QCOMPARE(window_->gpx_name_edit->text(), QStringLiteral("2014-05-06_132925"));
        QCOMPARE(window_->model->track_points().size(), 1);
        return;
    }
    QCOMPARE(window_->gpx_name_edit->text(), expected_name);
    const QList<gpx_point> &points = window_->model->track_points();
    QCOMPARE(points.size(), expected_points);
    if (expected_name == QLatin1String("Merged Track")) {
        for (int i = 1; i < points.size(); ++i)
            QVERIFY2(!(points.at(i).time < points.at(i - 1).time), qPrintable(QString::number(i)));
    }
}

// A photo of 06:15:55 UTC, 7 m below sea level; points at 06:15:50 and 06:16:00, or a
// waypoint years away. The preview, what ExifTool wrote; the undo brings all back.
void tst_flows::between_points_data()
{
    QTest::addColumn<QString>("track");
    QTest::addColumn<bool>("options"); // interpolation and altitude
    QTest::addColumn<QString>("expected");
    const QString visnjan = "around-visnjan-with-car.gpx";
    QTest::addRow("nearest") << visnjan << false
                             << "G  45.2734133229, 13.7141885050|45.2734133228417|7|1";
    QTest::addRow("between") << visnjan << true << "G  45.273466, 13.714199|45.273466|211.39|0";
    QTest::addRow("below sea level")
        << "unicode_with_bom.gpx" << true << "G  43.309634, 3.515386|43.309634|14.6|1";
}

void tst_flows::between_points()
{
    QFETCH(QString, track);
    QFETCH(bool, options);
    QFETCH(QString, expected);
    const QString file = copy_photo("Canon_40D.jpg");
    QVERIFY(vn::exiftool::write_tags(file, {{"DateTimeOriginal", "2020:12:18 06:15:55"},
                                            {"OffsetTimeOriginal", "+00:00"},
                                            {"GPSAltitude", "7"},
                                            {"GPSAltitudeRef", "Below Sea Level"}}));
    const exif_tag_map before = gps_state(file);
    use_track(corpus_gpx + track);
    window_->gpx_max_time_edit->setText(QString());
    if (options) {
        window_->interpolate_check->click();
        window_->altitude_check->click();
    }
    window_->load_files({file});
    const QString shown = window_->model->index(0, 2).data().toString();
    window_->on_sync_clicked();
    const exif_tag_map tags = gps_state(file);
    QCOMPARE(shown + '|' + tags.value("GPS:GPSLatitude") + '|' + tags.value("GPS:GPSAltitude") +
                 '|' + tags.value("GPS:GPSAltitudeRef"),
             expected);
    window_->on_undo_clicked();
    QCOMPARE(state_difference(before, gps_state(file)), QString());
}

int tst_flows::sync_in_child(const QString &folder)
{
    QStringList files;
    for (const QString &name : QDir(folder).entryList(QDir::Files, QDir::Name))
        files << folder + '/' + name;
    MainWindow window;
    window.ask_question = [](QWidget *, const QString &, const QString &, const QString &,
                             const QString &,
                             QMessageBox::StandardButton) { return QMessageBox::Yes; };
    use_position(&window, "-33.75", "151.5");
    window.load_files(files);
    std::printf("exiftool %lld\n", exiftool_pids().value(0));
    QProgressBar *bar = window.sync_progress->findChild<QProgressBar *>();
    connect(bar, &QProgressBar::valueChanged, bar, [](int value) {
        std::printf("step %d\n", value);
        std::fflush(stdout);
    });
    window.on_sync_clicked();
    return 1; // the parent kills it before
}

// Loxmere killed part way through a sync of 50 files: a new window finds
// the journal, offers to undo, and the undo brings every written file back;
// the files not reached were never touched, and nothing is damaged.
void tst_flows::interrupted_sync_is_undone_at_start()
{
    QStringList names = QDir(corpus_photos).entryList({"*.jpg", "*.JPG"}, QDir::Files);
    for (const QString &name : unwritable_photos + QStringList{"Nikon D5000.jpg"})
        names.removeAll(name);
    QMap<QString, exif_tag_map> states;
    QMap<QString, QByteArray> hashes;
    QMap<QString, QSet<QString>> validation;
    for (int i = 0; i < 50; ++i) {
        const QString file = copy_photo(names.at(i % names.size()),
                                        QString::asprintf("%02d_", i) + names.at(i % names.size()));
        states[file] = gps_state(file);
        hashes[file] = file_hash(file);
        validation[file] = validate_warnings(file);
    }

    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {"--sync-in-child", root_});
    int child_exiftool = 0;
    int step = 0;
    const QDeadlineTimer deadline(120000);
    // 50 reads, then 20 writes done and the 21st under way.
    while (step < 70 && child.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime())))) {
        while (child.canReadLine()) {
            const QList<QByteArray> line = child.readLine().trimmed().split(' ');
            (line.first() == "step" ? step : child_exiftool) = line.last().toInt();
        }
    }
    QCOMPARE(step, 70);
    ::kill(pid_t(child.processId()), SIGKILL);
    QVERIFY(child.waitForFinished(10000));
    // The system interrupts the child's ExifTool, which finishes the file in hand.
    QVERIFY(child_exiftool > 0);
    QTRY_VERIFY_WITH_TIMEOUT(!is_running(child_exiftool), 10000);

    renew_window();
    QTRY_COMPARE(asked_.size(), 1);
    // The file in hand when the child died may be marked or not.
    QVERIFY2(QRegularExpression("write: 50\nPhotos it may have changed: 2[01]\n")
                 .match(asked_.first().text)
                 .hasMatch(),
             qPrintable(asked_.first().text));
    QTRY_VERIFY(window_->journal.is_empty());
    QVERIFY(results_.isEmpty());
    QVERIFY(!QFileInfo::exists(write_journal::default_path()));

    int untouched = 0;
    for (const QString &file : states.keys()) {
        QCOMPARE(state_difference(states[file], gps_state(file)), QString());
        untouched += file_hash(file) == hashes[file] ? 1 : 0;
        // No new warning; ExifTool's rewrite may drop old ones (Nikon D1X's
        // "Bad format (0) for GPS entry 1").
        const QSet<QString> added = validate_warnings(file) - validation[file];
        QVERIFY2(added.isEmpty(), qPrintable(file + ": " + QStringList(added.values()).join(", ")));
        QCOMPARE(QImage(file), QImage(corpus_photos + QFileInfo(file).fileName().mid(3)));
    }
    QVERIFY2(untouched >= 29, qPrintable(QString::number(untouched)));
    QCOMPARE(QDir(root_).entryList({"*_exiftool_tmp"}, QDir::Files | QDir::Hidden), QStringList());
}

// Clicks while a sync runs wait in the window system's queue; neither a
// click on undo (which would undo the sync) nor one on a mode radio may be
// carried out when the sync ends.
void tst_flows::input_during_sync_is_dropped()
{
    const QString file = copy_photo("Canon_40D.jpg");
    use_position(window_, "-33.75", "151.5");
    window_->load_files({file});
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(window_));
    QWindow *window = window_->windowHandle();
    const auto click = [window, this](QWidget *target) {
        const QPointF at = target->mapTo(window_, target->rect().center());
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::AsynchronousDelivery>(
                window, at, window->mapToGlobal(at.toPoint()),
                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton,
                type);
    };
    QProgressBar *bar = window_->sync_progress->findChild<QProgressBar *>();
    int clicked = 0;
    connect(bar, &QProgressBar::valueChanged, this, [&](int value) {
        if (value == 2 && clicked++ == 0) {
            click(window_->undo_button);
            click(window_->previous_radio);
        }
    });
    window_->on_sync_clicked();
    QCOMPARE(clicked, 1);
    QVERIFY(window_->undo_button->isEnabled());
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QVERIFY(window_->position_radio->isChecked());
    QCOMPARE(window_->journal.current().entries.size(), 1);
    QCOMPARE(vn::exiftool::read_tags(file, false).value("GPSLatitude"),
             QStringLiteral("33 deg 45' 0.00\" S"));
}

void tst_flows::journal_at_start_data()
{
    QTest::addColumn<bool>("newer");
    QTest::addColumn<QString>("warning");
    QTest::addColumn<QStringList>("failures"); // of the undo: file name and reason
    QTest::addRow("newer format") << true
                                  << "can't use it: it was written by a newer version of "
                                     "Loxmere (format 2)"
                                  << QStringList();
    // Hand-made entries (with their checksums) meet the guards of every
    // ExifTool argument; a damaged one is never written from.
    QTest::addRow("bad entries")
        << false << "line 4 can't be read"
        << QStringList({"(entry 3 of the undo record): its entry can't be read; nothing was "
                        "written",
                        "gone.jpg: file not found", "line\nbreak.jpg: the name holds a line break",
                        "odd.jpg: 'o' isn't a tag name", "relative.jpg: the path isn't absolute"});
}

// Loxmere starts normally with any journal, says what it can't use, and
// writes back only what it read whole.
void tst_flows::journal_at_start()
{
    QFETCH(bool, newer);
    QFETCH(QString, warning);
    QFETCH(QStringList, failures);

    const QString file = copy_photo("DSCN0010.jpg");
    const QString odd = copy_photo("Canon_40D.jpg", "odd.jpg");
    const exif_tag_map before = gps_state(file);
    use_position(window_, "-33.75", "151.5");
    window_->load_files({file});
    window_->on_sync_clicked();
    delete window_;
    window_ = nullptr;

    QFile journal(write_journal::default_path());
    QVERIFY(journal.open(QIODevice::ReadOnly));
    QList<QByteArray> lines = journal.readAll().split('\n');
    journal.close();
    lines[newer ? 0 : 1] =
        newer ? "loxmere-journal 2"
              : write_journal::line({"flow", "sync", "2026-11-23T12:30:00Z", "6"}).trimmed();
    for (const QStringList &entry : {QStringList{"1", "/nowhere/gone.jpg"},
                                     {"3", "relative.jpg"},
                                     {"4", root_ + "/line\nbreak.jpg"},
                                     {"5", odd, "o", "x"}})
        lines.insert(3, write_journal::line(QStringList{"file"} + entry.mid(0, 2) +
                                            QStringList{"1", "1"} + entry.mid(2))
                            .trimmed());
    lines.insert(3, "file 2 x");
    for (const char *n : {"1", "2", "3", "4", "5"})
        lines.insert(lines.size() - 1, write_journal::line({"done", n, "1", "1"}).trimmed());
    QFile stamped(odd); // its stamp must fit the journal's
    QVERIFY(
        stamped.open(QIODevice::ReadWrite) && stamped.resize(1) &&
        stamped.setFileTime(QDateTime::fromMSecsSinceEpoch(1), QFileDevice::FileModificationTime));
    QVERIFY(journal.open(QIODevice::WriteOnly | QIODevice::Truncate));
    journal.write(lines.join('\n'));
    journal.close();

    if (newer)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Unusable undo record"));
    renew_window();
    QTRY_COMPARE(warnings_.size(), 1);
    QVERIFY2(warnings_.first().contains(warning), qPrintable(warnings_.first()));
    QCOMPARE(window_->undo_button->isEnabled(), !newer);
    QCOMPARE(QFileInfo::exists(write_journal::default_path() + ".unusable"), newer);
    if (newer)
        return;
    for (const char *refused :
         {"isn't an existing file", "isn't absolute", "line break", "takes for an option: 'o'"})
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(refused));
    window_->on_undo_clicked();
    QCOMPARE(state_difference(before, gps_state(file)), QString());
    QCOMPARE(results_.size(), 1);
    QCOMPARE(results_.first().written, 1);
    QStringList reported;
    for (const gps_writer::failure &f : results_.first().failures)
        reported << QFileInfo(f.path).fileName() + ": " + f.reason;
    reported.sort();
    QCOMPARE(reported, failures);
}

void tst_flows::data_folder_not_writable_data()
{
    QTest::addColumn<bool>("go_on");
    QTest::addRow("abort") << false;
    QTest::addRow("write without the record") << true;
}

// Without a place for the undo record the flow asks; the undo of this run
// still works from memory.
void tst_flows::data_folder_not_writable()
{
    QFETCH(bool, go_on);
    const QString file = copy_photo("DSCN0010.jpg");
    const QByteArray hash = file_hash(file);
    const exif_tag_map before = gps_state(file);
    // A file where the folder should be stops even root.
    const QString blocker = QFileInfo(write_journal::default_path()).absolutePath();
    QVERIFY(QDir().mkpath(QFileInfo(blocker).absolutePath()));
    QDir(blocker).removeRecursively();
    QVERIFY(QFile(blocker).open(QIODevice::WriteOnly));
    use_position(window_, "-33.75", "151.5");
    window_->load_files({file});
    answer_all(QMessageBox::Yes, go_on ? -1 : 1);

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Can't save the undo record"));
    window_->on_sync_clicked();
    QFile::remove(blocker);
    QCOMPARE(asked_.size(), 2); // the overwrite question, then this one
    QVERIFY(asked_.last().text.startsWith("Loxmere can't save its undo record in"));
    QCOMPARE(asked_.last().default_button, QMessageBox::No);
    QVERIFY(!window_->journal.is_saved());
    QCOMPARE(window_->model->rowCount(), go_on ? 0 : 1);
    QCOMPARE(file_hash(file) == hash, !go_on);
    QCOMPARE(window_->undo_button->isEnabled(), go_on);
    window_->on_undo_clicked();
    QCOMPARE(state_difference(before, gps_state(file)), QString());
}

void tst_flows::leftover_data()
{
    QTest::addColumn<QString>("photo"); // as it is when the leftover is found
    QTest::addColumn<bool>("removed");
    QTest::addRow("photo as before") << "before" << true;
    QTest::addRow("photo as the leftover") << "leftover" << true;
    QTest::addRow("photo changed otherwise") << "changed" << false;
    QTest::addRow("photo cut short") << "cut" << false;
}

// ExifTool's temporary file, left by a write this program was making.
void tst_flows::leftover()
{
    QFETCH(QString, photo);
    QFETCH(bool, removed);
    const QString file = copy_photo("DSCN0010.jpg");
    const write_journal::stamp before = write_journal::stamp::of(file);
    const QString leftover = gps_writer::leftover_path(file);
    if (photo == QLatin1String("leftover")) {
        QVERIFY(QFile::remove(file) && QFile::copy(corpus_photos + "Kodak_CX7530.jpg", file));
    } else if (photo == QLatin1String("changed")) {
        QVERIFY(vn::exiftool::write_tags(file, {{"Comment", "changed"}}));
    } else if (photo == QLatin1String("cut")) {
        QVERIFY(QFile(file).resize(1000));
    }
    QVERIFY(QFile::copy(corpus_photos + "Kodak_CX7530.jpg", leftover));
    if (!removed)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Keeping '"));
    const QString note = gps_writer::resolve_leftover(file, before);
    QCOMPARE(QFileInfo::exists(leftover), !removed);
    QCOMPARE(note.isEmpty(), removed);
    QVERIFY(QFileInfo::exists(file));
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc > 2 && qstrcmp(argv[1], "--sync-in-child") == 0) {
        QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
        QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
        return tst_flows::sync_in_child(QString::fromLocal8Bit(argv[2]));
    }
    app.setAttribute(Qt::AA_Use96Dpi, true);
    tst_flows test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}
#include "tst_flows.moc"
