#include "mainwindow.h"

#include "drop_files_widget.h"
#include "model/exif_cache.h"
#include "model/gps_pos.h"
#include "model/table_data_model.h"

#include "dialog_settings.h"

#include <vn/button_dark.h>
#include <vn/lineedit.h>
#include <vn/radio.h>

#include <QtTest>

#include <QButtonGroup>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileOpenEvent>
#include <QLabel>
#include <QMimeData>
#include <QProcess>
#include <QProgressBar>
#include <QProgressDialog>
#include <QSettings>
#include <QTemporaryDir>

// The window against the real ExifTool, on copies of corpus photos.
class tst_mainwindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void load_data();
    void load();
    void load_more_and_clear();
    void open_or_drop_data();
    void open_or_drop();
    void drop_during_load_waits();
    void close_during_load_waits();
    void bad_input();
    void max_time_difference_data();
    void max_time_difference();
    void typed_position_data();
    void typed_position();
    void warning_picture_data();
    void warning_picture();
    void settings_dialog_applies_format_data();
    void settings_dialog_applies_format();

private:
    QString copy_photo(const QString &name, const QString &as = QString());
    QString set_date_without_gps(const QString &file, const QString &date);
    static QStringList row_files(const MainWindow &window);

    QTemporaryDir dir_;
    QString root_;
    MainWindow *window_ = nullptr;
};

QString tst_mainwindow::copy_photo(const QString &name, const QString &as)
{
    const QString target = root_ + '/' + (as.isEmpty() ? name : as);
    QDir().mkpath(QFileInfo(target).absolutePath());
    if (!QFile::copy(QStringLiteral(VN_CORPUS_DIR "/photos/") + name, target))
        return QString();
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    return target;
}

// A photo with a chosen date and no position: a copy whose GPS group is
// removed by the command-line tool, beside the test as the program finds it.
QString tst_mainwindow::set_date_without_gps(const QString &file, const QString &date)
{
    QProcess tool;
    tool.start(
        QCoreApplication::applicationDirPath() + QStringLiteral("/exiftool"),
        {"-overwrite_original", "-gps:all=", "-xmp:all=", "-DateTimeOriginal=" + date, file});
    if (!tool.waitForFinished(30000) || tool.exitCode() != 0)
        return QString();
    return file;
}

QStringList tst_mainwindow::row_files(const MainWindow &window)
{
    QStringList files;
    for (int row = 0; row < window.model->rowCount(); ++row)
        files << QFileInfo(window.model->index(row, 0).data(Qt::UserRole).toString()).fileName();
    return files;
}

void tst_mainwindow::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    QVERIFY(QFileInfo::exists(QCoreApplication::applicationDirPath() + "/exiftool"));
    QVERIFY(QFileInfo::exists(QStringLiteral(VN_CORPUS_DIR "/photos/Canon_40D.jpg")));
}

void tst_mainwindow::init()
{
    QSettings().clear();
    QVERIFY(dir_.isValid());
    root_ = dir_.path() + '/' + QTest::currentTestFunction() + '_' +
            (QTest::currentDataTag() ? QTest::currentDataTag() : "");
    QVERIFY(QDir().mkpath(root_));
    exif_cache::instance()->clear();
    window_ = new MainWindow;
}

void tst_mainwindow::cleanup()
{
    delete window_;
    window_ = nullptr;
    QDir(root_).removeRecursively();
}

void tst_mainwindow::load_data()
{
    QTest::addColumn<QStringList>("names");    // corpus names, in load order
    QTest::addColumn<QStringList>("expected"); // rows, in date order
    QTest::addRow("sorted by date")
        << QStringList{"DSCN0010.jpg", "Canon_40D.jpg", "Olympus_C8080WZ.jpg"}
        << QStringList{"Olympus_C8080WZ.jpg", "Canon_40D.jpg", "DSCN0010.jpg"};
    QTest::addRow("same file twice")
        << QStringList{"Canon_40D.jpg", "Canon_40D.jpg"} << QStringList{"Canon_40D.jpg"};
    QTest::addRow("upper-case suffix")
        << QStringList{"IMG_5195.HEIC"} << QStringList{"IMG_5195.HEIC"};
    QTest::addRow("unsupported only") << QStringList{"MANIFEST.tsv"} << QStringList{};
}

void tst_mainwindow::load()
{
    QFETCH(QStringList, names);
    QFETCH(QStringList, expected);

    QStringList paths;
    for (const QString &name : qAsConst(names)) {
        const QString source = name == "MANIFEST.tsv" ? QStringLiteral("../MANIFEST.tsv") : name;
        const QString path = root_ + '/' + name;
        if (!QFileInfo::exists(path))
            QVERIFY(!copy_photo(source, name).isEmpty());
        paths << path;
    }
    QProgressBar *bar = window_->load_progress->findChild<QProgressBar *>();
    QVERIFY(bar);
    QSignalSpy progress(bar, &QProgressBar::valueChanged);
    // Rows show up one by one while the load runs; the table is sorted and
    // assigned once, after the last file.
    QStringList events;
    connect(window_->model, &QAbstractItemModel::rowsInserted, this,
            [&] { events << QStringLiteral("row"); });
    connect(window_->model, &table_data_model::cache_rebuilt, this,
            [&] { events << QStringLiteral("rebuilt"); });

    window_->load_files(paths);

    QCOMPARE(events.count(QStringLiteral("row")), expected.size());
    const int first_rebuild = events.indexOf(QStringLiteral("rebuilt"));
    QVERIFY(first_rebuild >= 0);
    QVERIFY(events.lastIndexOf(QStringLiteral("row")) < first_rebuild);

    QCOMPARE(row_files(*window_), expected);
    QCOMPARE(window_->sync_button->isEnabled(), !expected.isEmpty());
    QCOMPARE(window_->undo_button->isEnabled(), false);
    // Every path counts on the bar, accepted or not.
    QCOMPARE(bar->maximum(), paths.size());
    QVERIFY(!progress.isEmpty());
    QCOMPARE(progress.first().first().toInt(), 0);
    bool reached_end = false;
    for (const QList<QVariant> &value : qAsConst(progress))
        reached_end = reached_end || value.first().toInt() == paths.size();
    QVERIFY(reached_end);
    // Each accepted file was read through ExifTool.
    for (const QString &path : qAsConst(paths)) {
        if (expected.contains(QFileInfo(path).fileName()))
            QVERIFY2(exif_cache::instance()->tags.contains(path), qPrintable(path));
    }
}

// Loads add up and sort again; clearing empties table and cache, and a file
// loaded after it is read afresh.
void tst_mainwindow::load_more_and_clear()
{
    const QString newest = copy_photo("DSCN0010.jpg");
    const QString oldest = copy_photo("Olympus_C8080WZ.jpg");
    const QString middle = copy_photo("Canon_40D.jpg");
    window_->load_files({newest});
    window_->load_files({oldest, middle});
    QCOMPARE(row_files(*window_),
             (QStringList{"Olympus_C8080WZ.jpg", "Canon_40D.jpg", "DSCN0010.jpg"}));
    QVERIFY(window_->sync_button->isEnabled());
    QSignalSpy rebuilt(window_->model, &table_data_model::cache_rebuilt);

    window_->clear_button->click();

    QCOMPARE(window_->model->rowCount(), 0);
    QVERIFY(!window_->sync_button->isEnabled());
    QVERIFY(exif_cache::instance()->values.isEmpty());
    QVERIFY(exif_cache::instance()->tags.isEmpty());
    QVERIFY(exif_cache::instance()->group_tags.isEmpty());
    QCOMPARE(rebuilt.count(), 1);
    QCOMPARE(rebuilt.first(), (QList<QVariant>{0, 0, 0}));
    window_->load_files({newest});
    QCOMPARE(window_->model->rowCount(), 1);
    QVERIFY(exif_cache::instance()->tags.contains(newest));
}

void tst_mainwindow::open_or_drop_data()
{
    QTest::addColumn<bool>("drop");
    QTest::addColumn<QStringList>("opened"); // relative to the test folder, or a web link
    QTest::addColumn<QStringList>("expected");
    QTest::addRow("open file") << false << QStringList{"folder/DSCN0010.jpg"}
                               << QStringList{"DSCN0010.jpg"};
    // Only the supported files directly in the folder.
    QTest::addRow("open folder") << false << QStringList{"folder"}
                                 << QStringList{"Canon_40D.jpg", "DSCN0010.jpg"};
    QTest::addRow("open missing file") << false << QStringList{"folder/gone.jpg"} << QStringList{};
    QTest::addRow("drop folder, file and web link")
        << true
        << QStringList{"folder", "folder/sub/Pentax_K10D.jpg", "https://example.org/photo.jpg"}
        << QStringList{"Pentax_K10D.jpg", "Canon_40D.jpg", "DSCN0010.jpg"};
}

void tst_mainwindow::open_or_drop()
{
    QFETCH(bool, drop);
    QFETCH(QStringList, opened);
    QFETCH(QStringList, expected);
    QVERIFY(!copy_photo("DSCN0010.jpg", "folder/DSCN0010.jpg").isEmpty());
    QVERIFY(!copy_photo("Canon_40D.jpg", "folder/Canon_40D.jpg").isEmpty());
    QVERIFY(!copy_photo("Pentax_K10D.jpg", "folder/sub/Pentax_K10D.jpg").isEmpty());
    QVERIFY(QFile(root_ + "/folder/notes.txt").open(QIODevice::WriteOnly));

    if (drop) {
        QList<QUrl> urls;
        for (const QString &entry : qAsConst(opened))
            urls << (entry.contains("://") ? QUrl(entry)
                                           : QUrl::fromLocalFile(root_ + '/' + entry));
        QMimeData mime;
        mime.setUrls(urls);
        QDragEnterEvent enter(QPoint(150, 150), Qt::CopyAction, &mime, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(window_->drop_widget, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop_event(QPointF(150, 150), Qt::CopyAction, &mime, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(window_->drop_widget, &drop_event);
        // A drop doesn't move the folder in which the file dialog opens.
        QVERIFY(!QSettings().contains(QStringLiteral("last_image_load_path")));
    } else {
        QFileOpenEvent event(root_ + '/' + opened.first());
        QVERIFY(QApplication::sendEvent(window_, &event));
    }
    QCOMPARE(row_files(*window_), expected);
    QCOMPARE(window_->sync_button->isEnabled(), !expected.isEmpty());
}

void tst_mainwindow::drop_during_load_waits()
{
    const QString first = copy_photo("DSCN0010.jpg");
    const QString second = copy_photo("Canon_40D.jpg");
    const QString dropped = copy_photo("Olympus_C8080WZ.jpg");
    const QString opened = copy_photo("Pentax_K10D.jpg");

    // Both requests arrive while the load feeds the event loop. Neither may run
    // inside it: when the load returns, only its own rows are there.
    int rows_when_dropped = -1;
    QTimer::singleShot(0, window_, [&] {
        rows_when_dropped = window_->model->rowCount();
        emit window_->drop_widget->files_dropped({dropped});
        QFileOpenEvent event(opened);
        QApplication::sendEvent(window_, &event);
    });
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("A flow is running; 1 file"));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("A flow is running; 1 file"));
    window_->load_files({first, second});

    QCOMPARE(rows_when_dropped, 0);
    QCOMPARE(row_files(*window_), (QStringList{"Canon_40D.jpg", "DSCN0010.jpg"}));
    // ... and once it has ended, the waiting files are loaded.
    QTRY_COMPARE(window_->model->rowCount(), 4);
    QCOMPARE(row_files(*window_), (QStringList{"Olympus_C8080WZ.jpg", "Pentax_K10D.jpg",
                                               "Canon_40D.jpg", "DSCN0010.jpg"}));
    QVERIFY(!window_->flow_running_);
}

void tst_mainwindow::close_during_load_waits()
{
    const QString first = copy_photo("DSCN0010.jpg");
    const QString second = copy_photo("Canon_40D.jpg");
    const QString dropped = copy_photo("Olympus_C8080WZ.jpg");
    window_->show();

    // A close request (the title bar's button) and a drop arrive while the
    // load runs: the window stays and the load finishes, then it closes
    // without loading what was dropped.
    bool visible_after_close = false;
    QTimer::singleShot(0, window_, [&] {
        window_->close();
        visible_after_close = window_->isVisible();
        emit window_->drop_widget->files_dropped({dropped});
    });
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("the window closes when it has ended"));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("A flow is running; 1 file"));
    window_->load_files({first, second});

    QVERIFY(visible_after_close);
    QCOMPARE(window_->model->rowCount(), 2);
    QTRY_VERIFY(!window_->isVisible());
    QCOMPARE(window_->model->rowCount(), 2);
}

void tst_mainwindow::bad_input()
{
    // 10,000 paths in one drop: mostly unknown suffixes, some folders, files
    // that vanished, odd names; only the supported plain files make rows.
    QStringList paths;
    const QString good = copy_photo("Canon_40D.jpg");
    const QString umlaut = copy_photo(QString::fromUtf8("Grünwald Straße 1.jpg"));
    const QString blanks = copy_photo("Apple iPhone 4.jpg", "  lead and trail  .jpg");
    const QString line_feed = copy_photo("DSCN0010.jpg", "line\nfeed.jpg");
    const QString vanished = copy_photo("Pentax_K10D.jpg", "vanished.jpg");
    QVERIFY(!good.isEmpty() && !umlaut.isEmpty() && !blanks.isEmpty() && !line_feed.isEmpty() &&
            !vanished.isEmpty());
    QVERIFY(QFile::remove(vanished));
    const QString folder_with_suffix = root_ + "/album.jpg";
    QVERIFY(QDir().mkpath(folder_with_suffix));
    const QString not_a_photo = root_ + "/fake.jpg";
    QFile junk(not_a_photo);
    QVERIFY(junk.open(QIODevice::WriteOnly));
    junk.write(QByteArray(1000, 'x'));
    junk.close();

    paths << good << umlaut << blanks << line_feed << vanished << folder_with_suffix << not_a_photo
          << root_ << QString() << QStringLiteral("relative.jpg");
    for (int i = paths.size(); i < 10000; ++i)
        paths << QStringLiteral("%1/unknown_%2.%3").arg(root_).arg(i).arg(i % 2 ? "txt" : "");

    QProgressBar *bar = window_->load_progress->findChild<QProgressBar *>();
    int highest = 0;
    connect(bar, &QProgressBar::valueChanged, this,
            [&](int value) { highest = qMax(highest, value); });
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not reading.*line"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not absolute.*relative\\.jpg"));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("Skipping a folder.*album\\.jpg"));
    window_->load_files(paths);

    QCOMPARE(highest, 10000);
    QStringList rows = row_files(*window_);
    rows.sort();
    // A file ExifTool can't read, one gone by the time it is read, and one
    // whose name the guard refuses still stand in the table; the line feed
    // never reaches ExifTool.
    QCOMPARE(rows, (QStringList{"  lead and trail  .jpg", "Canon_40D.jpg",
                                QString::fromUtf8("Grünwald Straße 1.jpg"), "fake.jpg",
                                "line\nfeed.jpg", "vanished.jpg"}));
    QVERIFY(exif_cache::instance()->tags.value(line_feed).isEmpty());
    QVERIFY(!exif_cache::instance()->tags.value(good).isEmpty());
    QVERIFY(window_->sync_button->isEnabled());
}

void tst_mainwindow::max_time_difference_data()
{
    QTest::addColumn<QString>("limit");
    QTest::addColumn<int>("assigned");
    // The untagged photo lies 11 min 40 s after the nearest tagged one.
    QTest::addRow("within limit") << "12" << 1;
    QTest::addRow("beyond limit") << "11" << 0;
    QTest::addRow("zero means no limit") << "0" << 1;
    QTest::addRow("empty means no limit") << "" << 1;
}

void tst_mainwindow::max_time_difference()
{
    QFETCH(QString, limit);
    QFETCH(int, assigned);
    const QString tagged = copy_photo(QString::fromUtf8("Grünwald Straße 1.jpg"));
    const QString untagged =
        set_date_without_gps(copy_photo("DSCN0010.jpg", "untagged.jpg"), "2008:10:22 16:50:00");
    QVERIFY(!untagged.isEmpty());
    window_->closest_radio->click();
    window_->load_files({tagged, untagged});

    QSignalSpy rebuilt(window_->model, &table_data_model::cache_rebuilt);
    window_->max_time_edit->setText(limit);
    QVERIFY(!rebuilt.isEmpty());
    // assigned counts the photos that receive a position from another one.
    QCOMPARE(rebuilt.last().at(0).toInt(), assigned);
}

void tst_mainwindow::typed_position_data()
{
    QTest::addColumn<bool>("is_latitude"); // the field typed into; the other holds 2.5 or 1.5
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("latitude");  // what the row then shows as numbers,
    QTest::addColumn<QString>("longitude"); // "1.5" and "2.5" being the last accepted
    const QString old_lat = "1.5", old_lon = "2.5";
    QTest::addRow("decimal") << true << QString("-19.178194") << "-19.178194" << old_lon;
    QTest::addRow("blanks removed") << false << " 46.501221 " << old_lat << "46.501221";
    QTest::addRow("degrees minutes seconds")
        << true << QString::fromUtf8("19°10'41.5\"S") << "-19.178194" << old_lon;
    // none of these is taken
    QTest::addRow("latitude out of range") << true << QString("91") << old_lat << old_lon;
    QTest::addRow("longitude out of range") << false << QString("-180.5") << old_lat << old_lon;
    QTest::addRow("pasted garbage") << true << QString("lorem ipsum") << old_lat << old_lon;
    QTest::addRow("ten thousand digits") << true << QString(10000, '7') << old_lat << old_lon;
    QTest::addRow("ten thousand letters") << false << QString(10000, 'x') << old_lat << old_lon;
    QTest::addRow("line feed") << true << QString("12\n-execute") << old_lat << old_lon;
    QTest::addRow("carriage return") << false << QString("3\r") << old_lat << old_lon;
    QTest::addRow("NUL") << false << QString("3") + QChar(0) + "4" << old_lat << old_lon;
}

void tst_mainwindow::typed_position()
{
    QFETCH(bool, is_latitude);
    QFETCH(QString, text);
    QFETCH(QString, latitude);
    QFETCH(QString, longitude);
    const QString photo = copy_photo("Canon_40D.jpg");
    window_->position_radio->click();
    window_->load_files({photo});
    const QModelIndex target = window_->model->index(0, 2);
    const auto shown = [&] { return target.data(Qt::UserRole).value<gps_pos>(); };

    window_->latitude_edit->setText("1.5");
    window_->longitude_edit->setText("2.5");
    QCOMPARE(shown().lat_numerical, QStringLiteral("1.5"));
    QCOMPARE(shown().lon_numerical, QStringLiteral("2.5"));

    (is_latitude ? window_->latitude_edit : window_->longitude_edit)->setText(text);
    QCOMPARE(shown().lat_numerical.left(10), latitude.left(10));
    QCOMPARE(shown().lon_numerical.left(10), longitude.left(10));

    // Emptying one field turns the preview into clearing.
    window_->longitude_edit->clear();
    QCOMPARE(shown().lat_numerical, QString());
    QCOMPARE(shown().lon_numerical, QString());
}

void tst_mainwindow::warning_picture_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("visible");
    QTest::addRow("no tagged photo") << QStringList{"Canon_40D.jpg", "Pentax_K10D.jpg"} << true;
    QTest::addRow("tagged neighbour") << QStringList{"DSCN0010.jpg", "Canon_40D.jpg"} << false;
    QTest::addRow("empty table") << QStringList{} << false;
}

void tst_mainwindow::warning_picture()
{
    QFETCH(QStringList, names);
    QFETCH(bool, visible);
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(window_));
    QStringList paths;
    for (const QString &name : qAsConst(names))
        paths << copy_photo(name);
    window_->closest_radio->click();
    window_->max_time_edit->setText("0");
    window_->load_files(paths);

    QCOMPARE(window_->warning_label->isVisible(), visible);
    window_->clear_button->click();
    QVERIFY(!window_->warning_label->isVisible());
}

void tst_mainwindow::settings_dialog_applies_format_data()
{
    QTest::addColumn<QString>("date_button");
    QTest::addColumn<QString>("time_button");
    QTest::addColumn<QString>("shown");
    QTest::addRow("iso date") << "YYYY-MM-DD" << QString("hh:mm:ss")
                              << "2008-05-30 - 15:56:01  UTC";
    QTest::addRow("us date, no seconds")
        << "MM/DD/YYYY" << QString("hh:mm") << "05/30/2008 - 15:56  UTC";
}

// The dialog has no apply step: whichever way it closes, the table follows the
// chosen format at once.
void tst_mainwindow::settings_dialog_applies_format()
{
    QFETCH(QString, date_button);
    QFETCH(QString, time_button);
    QFETCH(QString, shown);
    window_->load_files({copy_photo("Canon_40D.jpg")});
    const QModelIndex date = window_->model->index(0, 1);
    QVERIFY2(date.data().toString().startsWith(QStringLiteral("30.05.2008 - 15:56:01  UTC")),
             qPrintable(date.data().toString()));

    bool clicked = false;
    QTimer::singleShot(0, window_, [&] {
        const QList<QRadioButton *> radios =
            window_->settings_dialog->findChildren<QRadioButton *>();
        for (QRadioButton *radio : radios) {
            if (radio->text() == date_button || radio->text() == time_button) {
                radio->click();
                clicked = true;
            }
        }
        window_->settings_dialog->close(); // as the title bar's close button does
    });
    window_->on_settings_clicked();

    QVERIFY(clicked);
    QVERIFY2(date.data().toString().startsWith(shown), qPrintable(date.data().toString()));
}

QTEST_MAIN(tst_mainwindow)
#include "tst_mainwindow.moc"
