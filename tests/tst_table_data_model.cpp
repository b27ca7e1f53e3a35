#include "model/exif_cache.h"
#include "model/gps_pos.h"
#include "model/gpx_track.h"
#include "model/photo_time.h"
#include "model/table_data_model.h"
#include "stream_capture.h"

#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

// Local (Europe/Berlin) time of the scenarios; seconds are counted from it.
const QDateTime base(QDate(2020, 6, 1), QTime(12, 0, 0), Qt::LocalTime);

// The recording keys of `local`, none where it is invalid, and the keys of
// `more` ("key=value;key=value").
exif_tag_map date_values(const QDateTime &local, const QString &more = QString())
{
    exif_tag_map values{{"has_data", "true"}};
    const QStringList parts = local.toString("yyyy|MM|dd|HH|mm|ss").split('|');
    const QStringList keys{"rec_year", "rec_month",  "rec_day",
                           "rec_hour", "rec_minute", "rec_second"};
    for (int i = 0; local.isValid() && i < keys.size(); ++i)
        values[keys.at(i)] = parts.at(i);
    for (const QString &pair : more.split(';', Qt::SkipEmptyParts))
        values.insert(pair.section('=', 0, 0), pair.section('=', 1));
    return values;
}

// lat|lat_ref|lon|lon_ref|lat_numerical|lon_numerical
QString fields(const gps_pos &p)
{
    return QStringList({p.lat, p.lat_ref, p.lon, p.lon_ref, p.lat_numerical, p.lon_numerical})
        .join('|');
}

} // namespace

// Photo b's cell and what it is to receive in a mode; see positions().
struct position_row
{
    const char *tag;
    sync_mode mode;
    const char *lat, *lon, *shown, *written;
};
Q_DECLARE_METATYPE(position_row)

// A photo's date cell under its zones and its camera's clock; see date_text().
struct date_row
{
    const char *tag, *local, *zones, *expected;
    const char *warning = "";
};
Q_DECLARE_METATYPE(date_row)

// Runs with TZ=Europe/Berlin: local dates are +01:00 in winter, +02:00 in summer.
// Which photo gets whose position is tst_assignment's; here, what the model
// makes of it: cells, signals, sorting, the camera clocks and the memo.
class tst_table_data_model : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QFileInfo::exists(QCoreApplication::applicationDirPath() + "/exiftool"));
        qRegisterMetaType<Qt::SortOrder>();
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
    }

    void init()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        QVERIFY(dir_->isValid());
        model_ = std::make_unique<table_data_model>();
        model_->gps_datetime_format_changed(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }

    void cleanup()
    {
        model_.reset();
        exif_cache::instance()->clear();
        dir_.reset();
    }

    // Photo b, 5 s after photo a with a position of its own, in each mode: its
    // cell and the position it is to receive as fields() gives them. %1 and %2
    // stand for the typed or track point's lat and lon. Track text is shown and
    // written as it stands; only the reference letters come from the text read
    // as a number, whatever the text holds.
    void positions_data()
    {
        QTest::addColumn<position_row>("row");
        const position_row rows[] = {
            {"copied", sync_mode::sync_previous, "", "", "↑  -48.137000, -11.575000", ""},
            {"none found", sync_mode::sync_following, "", "", "?  -", "|||||"},
            {"typed", sync_mode::sync_user_position, "-19.178194", "46.501221", "=  %1, %2",
             "19°10'41\"|S|46°30'4\"|E|%1|%2"},
            {"nothing typed clears", sync_mode::sync_user_position, "", "", "=  Clear GPS data",
             "|||||"},
            {"track, all digits kept", sync_mode::sync_gpx, "48.1234567890", "11.5750000001",
             "G  %1, %2", "%1|N|%2|E|%1|%2"},
            {"track, no number and nan", sync_mode::sync_gpx, "abc", "nan", "G  %1, %2",
             "%1|S|%2|W|%1|%2"},
        };
        for (const position_row &r : rows)
            QTest::newRow(r.tag) << r;
    }

    void positions()
    {
        QFETCH(position_row, row);
        const sync_mode mode = row.mode;
        const QString lat(row.lat), lon(row.lon);
        const QString written =
            *row.written ? row.written : "-48.137000|S|-11.575000|W|-48.137000|-11.575000";
        const auto filled = [&](QString t) { return t.replace("%1", lat).replace("%2", lon); };

        const QString a = add_photo(
            "a.jpg",
            date_values(base, "has_gps_position=true;has_quicktime_gps=true;gps_lat=-48.137000;"
                              "gps_lat_ref=S;gps_lon=-11.575000;gps_lon_ref=W;"
                              "gps_numerical=-48.137000, -11.575000"));
        const QString b = add_photo("b.jpg", date_values(base.addSecs(5)));
        if (mode == sync_mode::sync_gpx)
            model_->set_gpx_track({"t", {{lat, lon, base.addSecs(5).toUTC()}}});
        if (mode == sync_mode::sync_user_position && !lat.isEmpty())
            model_->gps_set_pos_changed({"19°10'41\"", "S", "46°30'4\"", "E", lat, lon});
        model_->gps_sync_order_changed(int(mode));

        QCOMPARE(model_->index(1, 0).data(Qt::UserRole).toString(), b);
        QCOMPARE(model_->index(1, 2).data().toString(), filled(QString::fromUtf8(row.shown)));
        const QVariant value = model_->index(1, 2).data(Qt::UserRole);
        QVERIFY(value.canConvert<gps_pos>());
        QCOMPARE(fields(value.value<gps_pos>()), filled(written));
        QCOMPARE(model_->cache().value(b).source_file,
                 mode == sync_mode::sync_previous ? a : QString());
        QCOMPARE(model_->cache().value(b).from_gpx, mode == sync_mode::sync_gpx);
        QCOMPARE(model_->overwrites_gps(), mode == sync_mode::sync_user_position);
        QCOMPARE(model_->all_assigned(), mode != sync_mode::sync_following);
        QVERIFY(model_->has_quicktime_gps());
        // A photo's own position is shown, and nothing is written to it.
        if (mode != sync_mode::sync_user_position) {
            QCOMPARE(model_->index(0, 2).data().toString(), "←  -48.137000, -11.575000");
            QVERIFY(!model_->index(0, 2).data(Qt::UserRole).isValid());
        }
    }

    void rebuild_signals()
    {
        const QString a = add_photo("a.jpg", date_values(base));
        add_photo("b.jpg", date_values(base.addSecs(1)));
        QCOMPARE(model_->index(0, 2).data().toString(), "?  -"); // before the first rebuild
        QSignalSpy changed(model_.get(), &QAbstractItemModel::dataChanged);
        QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
        QSignalSpy layout(model_.get(), &QAbstractItemModel::layoutChanged);

        model_->gps_max_time_difference(5, 0);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).value<QModelIndex>(), model_->index(0, 0));
        QCOMPARE(changed.at(0).at(1).value<QModelIndex>(), model_->index(1, 2));
        QCOMPARE(rebuilt.count(), 1);
        QCOMPARE(rebuilt.at(0), QVariantList({0, 2, 2}));
        QCOMPARE(layout.count(), 1);

        // The date format only repaints.
        model_->gps_datetime_format_changed("HH:mm");
        QCOMPARE(rebuilt.count(), 1);
        QCOMPARE(model_->index(0, 1).data().toString(), "12:00  UTC+02:00");
        const stream_capture capture;
        model_->gps_sync_order_changed(9);
        QCOMPARE(capture.err_text(), "Unknown sync_order 9\n");

        // Clearing rebuilds to nothing; the settings, the track and the metadata stay.
        model_->set_gpx_track({"walk", {{"1", "2", base}}});
        QSignalSpy reset(model_.get(), &QAbstractItemModel::modelReset);
        model_->clear();
        QCOMPARE(rebuilt.count(), 4);
        QCOMPARE(rebuilt.last(), QVariantList({0, 0, 0}));
        QCOMPARE(reset.count(), 1);
        QCOMPARE(model_->rowCount(), 0);
        QVERIFY(model_->cache().isEmpty());
        QCOMPARE(model_->sync_order(), 9);
        QVERIFY(model_->has_track());
        QVERIFY(exif_cache::instance()->values.contains(a));
    }

    // A summer date unless `local` says otherwise ("-": none). `zones` is
    // "<iptc zone>;<exif zone>;<camera zone>;<correction>"; a camera
    // zone that the database doesn't know and a correction beyond ten years are
    // dropped with a warning, the rest of the clock kept.
    void date_text_data()
    {
        QTest::addColumn<date_row>("row");
        const date_row rows[] = {
            {"local winter", "2015-01-01T08:00:00", "", "2015-01-01 08:00:00  UTC+01:00"},
            {"iptc west half hour", "", "-03:30", "2015-06-01 12:34:56  UTC-03:30"},
            {"iptc without colon", "", "+0545", "2015-06-01 12:34:56  UTC+05:45"},
            {"iptc unreadable", "", "+ab", "2015-06-01 12:34:56  UTC+00:00"},
            {"iptc beyond 14 hours", "", "+15:00", "2015-06-01 12:34:56  UTC+00:00"},
            {"exif over iptc", "", "-05:00;+09:00", "2015-06-01 12:34:56  UTC+09:00"},
            {"own zone over camera's, correction", "", "+01:00;;Asia/Tokyo;86400",
             "2015-06-02 12:34:56  UTC+01:00"},
            {"unknown camera zone", "", ";;Mars/Olympus;61", "2015-06-01 12:35:57  UTC+02:00",
             "unknown time zone 'Mars/Olympus'"},
            {"correction beyond ten years", "", ";;UTC+01:00;315619201",
             "2015-06-01 12:34:56  UTC+01:00", "more than ten years"},
            {"ten years back", "", ";;;-315619200", "2005-05-31 12:34:56  UTC+02:00"},
            {"invalid date", "-", "", "-"},
        };
        for (const date_row &r : rows)
            QTest::newRow(r.tag) << r;
    }

    void date_text()
    {
        QFETCH(date_row, row);
        const QDateTime local = *row.local ? QDateTime::fromString(row.local, Qt::ISODate)
                                           : QDateTime(QDate(2015, 6, 1), QTime(12, 34, 56));
        const QStringList zone = QString(row.zones).split(';');
        add_photo("a.jpg", date_values(local, QString("camera=X;iptc_timezone=%1;exif_timezone=%2")
                                                  .arg(zone.at(0), zone.value(1))));
        if (*row.warning)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(row.warning));
        model_->set_camera_clock("X", {zone.value(2).toLatin1(), zone.value(3).toLongLong()});
        QCOMPARE(model_->index(0, 1).data().toString(), QString(row.expected));
        QVERIFY(photo_time::is_known_zone(model_->clock_of("X").zone));
    }

    void sort_by_date_data()
    {
        QTest::addColumn<int>("order");
        QTest::addRow("ascending") << int(Qt::AscendingOrder);
        QTest::addRow("descending") << int(Qt::DescendingOrder);
    }

    // The table and sorted_by_date must order these dates as QDateTime::operator<
    // does: invalid values first, a local time in the hour that is passed twice
    // in autumn, the hour that is skipped in spring, zones east and west. A click
    // on another column keeps the sort.
    void sort_by_date()
    {
        QFETCH(int, order);
        const QList<QPair<QDateTime, QString>> dates = {
            {QDateTime(QDate(2020, 10, 25), QTime(2, 30, 0)), ""},
            {QDateTime(), ""},
            {QDateTime(QDate(2020, 10, 25), QTime(1, 45, 0)), ""},
            {QDateTime(QDate(2020, 10, 25), QTime(3, 10, 0)), ""},
            {QDateTime(QDate(2020, 10, 25), QTime(1, 0, 0)), "+00:00"},
            {QDateTime(QDate(2020, 3, 29), QTime(2, 30, 0)), ""},
            {QDateTime(QDate(2020, 3, 29), QTime(3, 30, 0)), "+05:00"},
            {QDateTime(QDate(2020, 3, 29), QTime(1, 59, 59)), ""},
            {QDateTime(QDate(1960, 1, 1), QTime(0, 0, 0)), "-03:30"},
            {QDateTime(QDate(1960, 1, 1), QTime(0, 0, 0)), ""},
        };
        for (int i = 0; i < dates.size(); ++i)
            add_photo(QString("%1.jpg").arg(i),
                      date_values(dates.at(i).first, "iptc_timezone=" + dates.at(i).second));
        QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
        QSignalSpy layout(model_.get(), &QAbstractItemModel::layoutChanged);
        QSignalSpy override(model_.get(), &table_data_model::sort_order_override);
        model_->sort(1, Qt::SortOrder(order));
        QCOMPARE(model_->sort_order(), order);
        QCOMPARE(rebuilt.count(), 1);
        QCOMPARE(layout.count(), 1);

        const auto values = exif_cache::instance()->values;
        for (const QStringList &sorted :
             {model_->files(),
              table_data_model::sorted_by_date(values.keys(), Qt::SortOrder(order), values)}) {
            QCOMPARE(sorted.size(), dates.size());
            for (int i = 1; i < sorted.size(); ++i) {
                const QDateTime before = model_->recording_datetime(sorted.at(i - 1));
                const QDateTime after = model_->recording_datetime(sorted.at(i));
                QVERIFY2(!(order == Qt::AscendingOrder ? after < before : before < after),
                         qPrintable(sorted.join(' ')));
            }
        }

        const QStringList files = model_->files();
        const int other = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
        model_->sort(order == Qt::AscendingOrder ? 0 : 2, Qt::SortOrder(other));
        QCOMPARE(override.count(), 1);
        QCOMPARE(override.at(0).at(0).toInt(), 1);
        QCOMPARE(override.at(0).at(1).value<Qt::SortOrder>(), Qt::SortOrder(order));
        QCOMPARE(model_->files(), files);
        QCOMPARE(model_->sort_order(), order);
        QCOMPARE(rebuilt.count(), 1);
    }

    // A file added twice has one row, dated by the file when ExifTool (the fake
    // here) tells nothing. A name with a carriage return never reaches ExifTool,
    // yet it stands in the table like any file that ExifTool can't read;
    // tst_mainwindow's bad input meets the line feed and the relative path.
    void add_file()
    {
        QStringList paths;
        for (const QString name : {"IMG_0002.JPG", "a\r-all=.jpg"}) {
            QFile file(dir_->filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            paths << file.fileName();
        }
        QSignalSpy inserted(model_.get(), &QAbstractItemModel::rowsInserted);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not reading"));
        for (const QString &path : paths + paths)
            model_->add_file(path);
        QCOMPARE(inserted.count(), 2);
        QCOMPARE(model_->files(), paths);
        for (const QString &path : paths)
            QCOMPARE(model_->recording_datetime(path).secsTo(QDateTime::currentDateTime()) / 3600,
                     0);
    }

    // Dates are kept between rebuilds only while the file's metadata is the same:
    // a file read again with another date moves in the next sort, both ways of
    // changing the cache's map.
    void new_metadata_moves_the_row()
    {
        const QString a = add_photo("a.jpg", date_values(base));
        const QString b = add_photo("b.jpg", date_values(base.addSecs(3600)));
        model_->sort(1, Qt::AscendingOrder);
        QCOMPARE(model_->files(), (QStringList{a, b}));

        exif_cache::instance()->values[a] = date_values(base.addSecs(7200));
        model_->sort(1, Qt::AscendingOrder);
        QCOMPARE(model_->files(), (QStringList{b, a}));
        QCOMPARE(model_->recording_datetime(a), base.addSecs(7200));

        exif_cache::instance()->values[a]["rec_hour"] = QStringLiteral("00");
        model_->sort(1, Qt::AscendingOrder);
        QCOMPARE(model_->files(), (QStringList{a, b}));
    }

    // Setting a camera's clock moves its photos in time: the rows sort anew and
    // the rebuild picks the track point nearest the corrected time. Another
    // camera's photos stay as they were.
    void camera_clock_resorts_and_reassigns()
    {
        const QString a = add_photo("a.jpg", date_values(base, "camera=A"));
        const QString b = add_photo("b.jpg", date_values(base.addSecs(60), "camera=B"));
        model_->set_gpx_track(
            {"walk", {{"1.0", "1.0", base.addSecs(-600)}, {"2.0", "2.0", base.addSecs(60)}}});
        model_->gps_sync_order_changed(int(sync_mode::sync_gpx));
        QCOMPARE(model_->cache().value(b).source_text, "2.0, 2.0");
        QVERIFY(!model_->index(1, 1).data(Qt::ToolTipRole).isValid());

        QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
        QSignalSpy layout(model_.get(), &QAbstractItemModel::layoutChanged);
        model_->set_camera_clock("B", {QByteArray(), -15 * 60});
        QCOMPARE(rebuilt.count(), 1);
        QCOMPARE(layout.count(), 1);
        QCOMPARE(model_->files(), (QStringList{b, a}));
        QCOMPARE(model_->recording_datetime(b), base.addSecs(60 - 15 * 60));
        QCOMPARE(model_->cache().value(b).source_text, "1.0, 1.0");
        QCOMPARE(model_->index(0, 1).data(Qt::ToolTipRole).toString(),
                 "Recorded 2020-06-01 12:01:00  UTC+02:00, corrected by -00:15:00");

        // Setting the clock it has changes nothing; the default clock undoes it.
        model_->set_camera_clock("B", {QByteArray(), -15 * 60});
        QCOMPARE(rebuilt.count(), 1);
        model_->set_camera_clock("B", camera_clock());
        QCOMPARE(model_->files(), (QStringList{a, b}));
        QCOMPARE(model_->cache().value(b).source_text, "2.0, 2.0");
    }

private:
    // Puts the metadata that the test is about in the cache and adds the row
    // without a read; add_file covers the read.
    QString add_photo(const QString &name, const exif_tag_map &values)
    {
        const QString path = dir_->filePath(name);
        exif_cache::instance()->values[path] = values;
        model_->add_cached_file(path);
        return path;
    }

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<table_data_model> model_;
};

QTEST_MAIN(tst_table_data_model)
#include "tst_table_data_model.moc"
