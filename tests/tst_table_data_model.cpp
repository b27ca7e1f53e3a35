#include "model/exif_cache.h"
#include "model/gps_pos.h"
#include "model/gpx_track.h"
#include "model/table_data_model.h"
#include "stream_capture.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

// Runs with TZ=Europe/Berlin: local dates are +01:00 in winter, +02:00 in summer.
class tst_table_data_model : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void assignment_data();
    void assignment();
    void user_position_data();
    void user_position();
    void track_point_text_data();
    void track_point_text();
    void copied_position_reaches_user_role();
    void rebuild_signals();

    void cell_roles();
    void date_text_data();
    void date_text();
    void sort_rows_data();
    void sort_rows();
    void date_order_matches_qdatetime();
    void other_column_keeps_sort_data();
    void other_column_keeps_sort();
    void clear_keeps_settings();
    void add_file_reads_metadata();
    void refused_path_keeps_its_row_data();
    void refused_path_keeps_its_row();
    void new_metadata_moves_the_row();

private:
    QString add_photo(const QString &name, const exif_tag_map &values);
    static exif_tag_map date_values(const QDateTime &local, const QString &zone = QString());

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<table_data_model> model_;
};

namespace {

const QString left_arrow = QString(QChar(0x2190));
const QString up_arrow = QString(QChar(0x2191));
const QString down_arrow = QString(QChar(0x2193));

// Local (Europe/Berlin) time of the scenarios; seconds are counted from it.
const QDateTime scenario_base(QDate(2020, 6, 1), QTime(12, 0, 0), Qt::LocalTime);

QString swap_arrows(QString text)
{
    text.replace(up_arrow, QStringLiteral("#"));
    text.replace(down_arrow, up_arrow);
    text.replace(QStringLiteral("#"), down_arrow);
    return text;
}

exif_tag_map position_values(const QString &lat, const QString &lat_ref, const QString &lon,
                             const QString &lon_ref)
{
    return {{"has_gps_position", "true"}, {"gps_lat", lat},
            {"gps_lat_ref", lat_ref},     {"gps_lon", lon},
            {"gps_lon_ref", lon_ref},     {"gps_numerical", lat + ", " + lon}};
}

// lat|lat_ref|lon|lon_ref|lat_numerical|lon_numerical
QString fields(const gps_pos &p)
{
    return QStringList({p.lat, p.lat_ref, p.lon, p.lon_ref, p.lat_numerical, p.lon_numerical})
        .join('|');
}

} // namespace

void tst_table_data_model::initTestCase()
{
    QVERIFY(QFileInfo::exists(QCoreApplication::applicationDirPath() + "/exiftool"));
    qRegisterMetaType<Qt::SortOrder>();
    qRegisterMetaType<QList<QPersistentModelIndex>>();
    qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
}

void tst_table_data_model::init()
{
    dir_ = std::make_unique<QTemporaryDir>();
    QVERIFY(dir_->isValid());
    model_ = std::make_unique<table_data_model>();
    model_->gps_datetime_format_changed(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

void tst_table_data_model::cleanup()
{
    model_.reset();
    exif_cache::instance()->values.clear();
    exif_cache::instance()->tags.clear();
    exif_cache::instance()->group_tags.clear();
    dir_.reset();
}

// Puts the metadata that the test is about in the cache and adds the row
// without a read; add_file_reads_metadata covers the read.
QString tst_table_data_model::add_photo(const QString &name, const exif_tag_map &values)
{
    const QString path = dir_->filePath(name);
    exif_cache::instance()->values[path] = values;
    model_->add_cached_file(path);
    return path;
}

exif_tag_map tst_table_data_model::date_values(const QDateTime &local, const QString &zone)
{
    exif_tag_map values;
    const QStringList parts = local.toString("yyyy|MM|dd|HH|mm|ss").split('|');
    const QStringList keys{"rec_year", "rec_month",  "rec_day",
                           "rec_hour", "rec_minute", "rec_second"};
    for (int i = 0; local.isValid() && i < keys.size(); ++i)
        values[keys.at(i)] = parts.at(i);
    values["iptc_timezone"] = zone;
    values["has_data"] = "true";
    return values;
}

// A scenario lists photos in load order as "<seconds>[+]" ("+": a position of
// its own; "x" for a date that can't be read) and track points as seconds
// ("x": no time); "-" is no track at all. The expectation gives, per photo in
// load order, the indicator and where the position came from: "p<i>" photo i,
// "t<j>" track point j, "-" nothing, "_" untouched; "*" matches any indicator.
// Expectations are for an ascending table; each scenario also runs descending,
// where the arrows swap and nothing else changes.
void tst_table_data_model::assignment_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("order");
    QTest::addColumn<int>("minutes_closest");
    QTest::addColumn<int>("minutes_gpx");
    QTest::addColumn<QString>("photos");
    QTest::addColumn<QString>("track");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QList<int>>("counters");

    struct scenario
    {
        const char *tag;
        int mode;
        int minutes_closest;
        int minutes_gpx;
        const char *photos;
        const char *track;
        const char *expected;
        QList<int> counters; // assigned, not assigned, total
    };
    const QList<scenario> scenarios = {
        {"previous, no positions", 0, 0, 0, "0 60 120", "-", "?- ?- ?-", {0, 3, 3}},
        {"following, no positions", 1, 0, 0, "0 60 120", "-", "?- ?- ?-", {0, 3, 3}},
        {"closest, no positions", 2, 0, 0, "0 60 120", "-", "?- ?- ?-", {0, 3, 3}},
        {"previous from the first", 0, 0, 0, "0+ 60 120", "-", "←p0 ↑p0 ↑p0", {2, 0, 3}},
        {"previous, load order unsorted", 0, 0, 0, "120 0+ 60", "-", "↑p1 ←p1 ↑p1", {2, 0, 3}},
        {"previous, nothing earlier", 0, 0, 0, "0 60+ 120", "-", "?- ←p1 ↑p1", {1, 1, 3}},
        {"following, nothing later", 1, 0, 0, "0+ 60 120", "-", "←p0 ?- ?-", {0, 2, 3}},
        {"following from the last", 1, 0, 0, "0 60 120+", "-", "↓p2 ↓p2 ←p2", {2, 0, 3}},
        {"previous takes the nearest", 0, 0, 0, "0+ 30+ 60", "-", "←p0 ←p1 ↑p1", {1, 0, 3}},
        {"previous, 600 s pass 10 min", 0, 10, 0, "0+ 600 601", "-", "←p0 ↑p0 ?-", {1, 1, 3}},
        {"previous, no chain", 0, 5, 0, "0+ 300 600", "-", "←p0 ↑p0 ?-", {1, 1, 3}},
        {"following, 600 s pass 10 min", 1, 10, 0, "0 1 601+", "-", "?- ↓p2 ←p2", {1, 1, 3}},
        {"previous ignores gpx limit", 0, 0, 1, "0+ 3600", "-", "←p0 ↑p0", {1, 0, 2}},
        {"closest, half way: later", 2, 0, 0, "0+ 60 120+", "-", "←p0 ↓p2 ←p2", {1, 0, 3}},
        {"closest, earlier nearer", 2, 0, 0, "0+ 59 120+", "-", "←p0 ↑p0 ←p2", {1, 0, 3}},
        {"closest, later nearer", 2, 0, 0, "0+ 61 120+", "-", "←p0 ↓p2 ←p2", {1, 0, 3}},
        {"closest, nearer side too far", 2, 10, 0, "0+ 700 1250+", "-", "←p0 ↓p2 ←p2", {1, 0, 3}},
        {"closest, 600 s pass, 601 not", 2, 10, 0, "0+ 600 1201+", "-", "←p0 ↑p0 ←p2", {1, 0, 3}},
        {"closest, both too far", 2, 10, 0, "0+ 601 1202+", "-", "←p0 ?- ←p2", {0, 1, 3}},
        {"closest, side given up", 2, 10, 0, "x+ 0+ 1000", "-", "←p0 ←p1 ?-", {0, 1, 3}},
        {"closest, same time", 2, 0, 0, "0+ 0 500", "-", "←p0 *p0 ↑p0", {2, 0, 3}},
        {"closest, invalid date", 2, 1, 0, "x 0+ 5000", "-", "↓p1 ←p1 ?-", {1, 1, 3}},
        {"closest, many gaps",
         2,
         0,
         0,
         "0+ 10 20 100+ 190 200+ 300",
         "-",
         "←p0 ↑p0 ↑p0 ←p3 ↓p5 ←p5 ↑p5",
         {4, 0, 7}},
        {"gpx without track", 4, 0, 1, "0+ 30 200+", "-", "←p0 ↑p0 ←p2", {1, 0, 3}},
        {"gpx without track, limit", 4, 0, 1, "0+ 61 200+", "-", "←p0 ?- ←p2", {0, 1, 3}},
        {"gpx ignores closest limit", 4, 1, 0, "0+ 1000", "-", "←p0 ↑p0", {1, 0, 2}},
        {"gpx, empty track", 4, 0, 1, "0+ 30 200+", "", "←p0 ↑p0 ←p2", {1, 0, 3}},
        {"gpx, points", 4, 0, 0, "0 100+ 400", "50 390", "Gt0 ←p1 Gt1", {2, 0, 5}},
        {"gpx, before the first point", 4, 0, 5, "0", "300 600", "Gt0", {1, 0, 3}},
        {"gpx, first point too far", 4, 0, 4, "0", "300 600", "?-", {0, 1, 3}},
        {"gpx, after the last point", 4, 0, 0, "900", "300 600", "Gt1", {1, 0, 3}},
        {"gpx, photo nearer than point", 4, 0, 0, "0+ 10", "30", "←p0 ↑p0", {1, 0, 3}},
        {"gpx, tie goes to later point", 4, 0, 0, "0+ 10", "20", "←p0 Gt0", {1, 0, 3}},
        {"gpx, tie goes to later photo", 4, 0, 0, "10 20+", "0", "↓p1 ←p1", {1, 0, 3}},
        {"gpx, unsorted points", 4, 0, 0, "100 250", "300 0 200", "Gt2 Gt0", {2, 0, 5}},
        {"gpx, 600 s pass, 601 not", 4, 0, 10, "0 1201", "600", "Gt0 ?-", {1, 1, 3}},
        // secsTo is 0 when a date is invalid, so a point without time passes any limit.
        // secsTo truncates the difference towards zero: -600.999 s is 600 s.
        {"gpx, milliseconds truncated", 4, 0, 10, "0", "-600.999", "Gt0", {1, 0, 2}},
        {"gpx, point without time", 4, 0, 1, "x 5000", "x", "Gt0 Gt0", {2, 0, 3}},
        {"unknown mode", 7, 0, 0, "0+ 60", "-", "←p0 _", {0, 0, 0}},
        {"closest, empty list", 2, 0, 0, "", "-", "", {0, 0, 0}},
        {"gpx, empty list", 4, 0, 0, "", "10 20", "", {0, 0, 2}},
    };
    for (const scenario &s : scenarios) {
        const QString expected = QString::fromUtf8(s.expected);
        QTest::addRow("%s, ascending", s.tag)
            << s.mode << int(Qt::AscendingOrder) << s.minutes_closest << s.minutes_gpx
            << QString(s.photos) << QString(s.track) << expected << s.counters;
        QTest::addRow("%s, descending", s.tag)
            << s.mode << int(Qt::DescendingOrder) << s.minutes_closest << s.minutes_gpx
            << QString(s.photos) << QString(s.track) << swap_arrows(expected) << s.counters;
    }
}

void tst_table_data_model::assignment()
{
    QFETCH(int, mode);
    QFETCH(int, order);
    QFETCH(int, minutes_closest);
    QFETCH(int, minutes_gpx);
    QFETCH(QString, photos);
    QFETCH(QString, track);
    QFETCH(QString, expected);
    QFETCH(QList<int>, counters);

    QMap<QString, QString> source_ids{{QStringLiteral("-"), QStringLiteral("-")},
                                      {QString(), QStringLiteral("_")}};
    QStringList paths;
    const QStringList photo_specs = photos.split(' ', Qt::SkipEmptyParts);
    for (int i = 0; i < photo_specs.size(); ++i) {
        QString spec = photo_specs.at(i);
        const bool has_position = spec.endsWith('+');
        spec.remove('+');
        exif_tag_map values =
            date_values(spec == "x" ? QDateTime() : scenario_base.addSecs(spec.toInt()));
        if (has_position) {
            values.insert(position_values(QString("%1.500000").arg(10 + i), "N",
                                          QString("-%1.250000").arg(20 + i), "W"));
            source_ids[values["gps_numerical"]] = QString("p%1").arg(i);
        }
        paths << add_photo(QString("photo%1.jpg").arg(i), values);
    }
    if (track != "-") {
        gpx_track gpx{QStringLiteral("walk"), {}};
        const QStringList point_specs = track.split(' ', Qt::SkipEmptyParts);
        for (int j = 0; j < point_specs.size(); ++j) {
            const QString spec = point_specs.at(j);
            gpx_point point{QString("4%1.123").arg(j), QString("7.%1").arg(j),
                            spec == "x"
                                ? QDateTime()
                                : scenario_base.toUTC().addMSecs(qRound64(spec.toDouble() * 1000))};
            source_ids[point.lat + ", " + point.lon] = QString("t%1").arg(j);
            gpx.points << point;
        }
        model_->set_gpx_track(gpx);
    }
    model_->gps_max_time_difference(minutes_closest, minutes_gpx);
    model_->sort(1, Qt::SortOrder(order));
    QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
    QString printed;
    QString printed_err;
    {
        const stream_capture capture;
        model_->gps_sync_order_changed(mode);
        printed = capture.text();
        printed_err = capture.err_text();
    }
    QCOMPARE(printed, QString("Sync order changed to %1\n").arg(mode));
    QCOMPARE(printed_err,
             mode >= 0 && mode <= 4 ? QString() : QString("Unknown sync_order %1\n").arg(mode));
    QCOMPARE(rebuilt.count(), 1);
    QCOMPARE(rebuilt.at(0), QVariantList({counters.at(0), counters.at(1), counters.at(2)}));
    QCOMPARE(model_->all_assigned(), counters.at(1) == 0);

    QStringList actual;
    const QStringList expected_rows = expected.split(' ', Qt::SkipEmptyParts);
    for (int i = 0; i < paths.size(); ++i) {
        const int row = model_->files().indexOf(paths.at(i));
        QVERIFY(row >= 0);
        const QString cell = model_->index(row, 2).data().toString();
        const cache_entry entry = model_->cache().value(paths.at(i));
        QCOMPARE(cell, entry.indicator + "  " + entry.source_text);
        QVERIFY2(source_ids.contains(entry.source_text), qPrintable(entry.source_text));
        const QString indicator = expected_rows.value(i).startsWith('*') ? "*" : entry.indicator;
        actual << indicator + source_ids.value(entry.source_text);
        // A position copied from a photo names that photo; nothing else names one.
        const QString id = source_ids.value(entry.source_text);
        const bool copied = !entry.is_source && id.startsWith('p');
        QCOMPARE(entry.source_file, copied ? paths.at(id.mid(1).toInt()) : QString());
    }
    QCOMPARE(actual.join(' '), expected_rows.join(' '));
}

void tst_table_data_model::user_position_data()
{
    QTest::addColumn<QString>("lat");
    QTest::addColumn<QString>("lon");
    QTest::addColumn<bool>("photo_has_position");
    QTest::addColumn<QString>("expected_text");

    const QString lat = "-19.178194", lon = "46.501221", none;
    QTest::addRow("typed") << lat << lon << false << lat + ", " + lon;
    QTest::addRow("typed, overwrites") << lat << lon << true << lat + ", " + lon;
    QTest::addRow("nothing typed clears") << none << none << true << "Clear GPS data";
}

void tst_table_data_model::user_position()
{
    QFETCH(QString, lat);
    QFETCH(QString, lon);
    QFETCH(bool, photo_has_position);
    QFETCH(QString, expected_text);

    exif_tag_map with_position = date_values(scenario_base);
    if (photo_has_position)
        with_position.insert(position_values("1.000000", "N", "2.000000", "E"));
    const QString first = add_photo("a.jpg", with_position);
    const QString second = add_photo("b.jpg", date_values(scenario_base.addSecs(60)));
    gps_pos typed;
    if (!lat.isEmpty()) {
        typed = {lat, "S", lon, "E", lat, lon};
        typed.lat = "19°10'41\"";
        typed.lon = "46°30'4\"";
    }
    model_->gps_set_pos_changed(typed);
    QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
    model_->gps_sync_order_changed(table_data_model::sync_user_position);

    QCOMPARE(rebuilt.count(), 1);
    QCOMPARE(rebuilt.at(0), QVariantList({2, 0, 2}));
    QVERIFY(model_->is_user_position());
    QVERIFY(model_->all_assigned());
    QCOMPARE(model_->overwrites_gps(), photo_has_position);
    for (const QString &path : {first, second}) {
        const int row = model_->files().indexOf(path);
        QCOMPARE(model_->index(row, 2).data().toString(), "=  " + expected_text);
        const QVariant value = model_->index(row, 2).data(Qt::UserRole);
        QVERIFY(value.canConvert<gps_pos>());
        QCOMPARE(fields(value.value<gps_pos>()), fields(typed));
    }
}

// Track text is shown and written as it stands; only the reference letters
// come from the text read as a number, whatever the text holds.
void tst_table_data_model::track_point_text_data()
{
    QTest::addColumn<QString>("lat");
    QTest::addColumn<QString>("lon");
    QTest::addColumn<QString>("lat_ref");
    QTest::addColumn<QString>("lon_ref");

    const QList<std::array<const char *, 5>> rows = {
        {"all digits kept", "48.1234567890", "11.5750000001", "N", "E"},
        {"south west", "-33.9", "-70.6", "S", "W"},
        {"zero is south west", "0", "0.0", "S", "W"},
        {"no number", "abc", "", "S", "W"},
        {"nan", "nan", "NaN", "S", "W"},
        {"infinity", "inf", "-inf", "N", "W"},
        {"huge", "1e30", "-1e30", "N", "W"},
        {"out of range", "-91", "181", "S", "E"},
    };
    for (const auto &r : rows)
        QTest::newRow(r[0]) << QString(r[1]) << QString(r[2]) << QString(r[3]) << QString(r[4]);
}

void tst_table_data_model::track_point_text()
{
    QFETCH(QString, lat);
    QFETCH(QString, lon);
    QFETCH(QString, lat_ref);
    QFETCH(QString, lon_ref);

    const QString path = add_photo("a.jpg", date_values(scenario_base));
    model_->set_gpx_track({"t", {{lat, lon, scenario_base.toUTC()}}});
    model_->gps_sync_order_changed(table_data_model::sync_gpx);

    QCOMPARE(model_->index(0, 2).data().toString(), "G  " + lat + ", " + lon);
    QCOMPARE(fields(model_->index(0, 2).data(Qt::UserRole).value<gps_pos>()),
             QStringList({lat, lat_ref, lon, lon_ref, lat, lon}).join('|'));
    QVERIFY(model_->cache().value(path).from_gpx);
}

// A source row gives nothing to write; the row that copied it gets all six
// fields, the numerical ones from the cached decimal texts.
void tst_table_data_model::copied_position_reaches_user_role()
{
    exif_tag_map values = date_values(scenario_base);
    values.insert(position_values("-48.137000", "S", "-11.575000", "W"));
    values["has_quicktime_gps"] = "true";
    add_photo("source.jpg", values);
    add_photo("later.jpg", date_values(scenario_base.addSecs(5)));
    model_->refresh();

    QCOMPARE(model_->index(0, 2).data().toString(), left_arrow + "  -48.137000, -11.575000");
    QVERIFY(!model_->index(0, 2).data(Qt::UserRole).isValid());
    QCOMPARE(model_->index(1, 2).data().toString(), up_arrow + "  -48.137000, -11.575000");
    QCOMPARE(fields(model_->index(1, 2).data(Qt::UserRole).value<gps_pos>()),
             "-48.137000|S|-11.575000|W|-48.137000|-11.575000");
    QVERIFY(model_->has_quicktime_gps());
    QVERIFY(!model_->overwrites_gps());

    // A row that found nothing carries an empty position, not an invalid value.
    model_->gps_sync_order_changed(table_data_model::sync_following);
    const QVariant none = model_->index(1, 2).data(Qt::UserRole);
    QVERIFY(none.canConvert<gps_pos>());
    QCOMPARE(fields(none.value<gps_pos>()), "|||||");
}

void tst_table_data_model::rebuild_signals()
{
    add_photo("a.jpg", date_values(scenario_base));
    add_photo("b.jpg", date_values(scenario_base.addSecs(1)));
    QSignalSpy changed(model_.get(), &QAbstractItemModel::dataChanged);
    QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
    QSignalSpy layout(model_.get(), &QAbstractItemModel::layoutChanged);

    model_->gps_max_time_difference(5, 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).value<QModelIndex>(), model_->index(0, 0));
    QCOMPARE(changed.at(0).at(1).value<QModelIndex>(), model_->index(1, 2));
    QCOMPARE(rebuilt.count(), 1);
    QCOMPARE(layout.count(), 1);

    // Loading ends in a sort and a rebuild in the current mode, each rebuilding.
    model_->refresh();
    QCOMPARE(rebuilt.count(), 3);
    // The date format only repaints.
    model_->gps_datetime_format_changed("HH:mm");
    QCOMPARE(rebuilt.count(), 3);
    QCOMPARE(model_->index(0, 1).data().toString(), "12:00  UTC+02:00");
}

void tst_table_data_model::cell_roles()
{
    QCOMPARE(model_->columnCount(), 3);
    QCOMPARE(model_->headerData(1, Qt::Horizontal, Qt::DisplayRole), QVariant("Recording Date"));
    const QString path = add_photo("IMG_0001.JPG", date_values(scenario_base));
    QCOMPARE(model_->rowCount(), 1);
    QCOMPARE(model_->index(0, 0).data().toString(), "IMG_0001.JPG");
    QCOMPARE(model_->index(0, 0).data(Qt::UserRole).toString(), path);
    QCOMPARE(model_->index(0, 1).data(Qt::UserRole).toDateTime(), scenario_base);
    // before the first rebuild
    QCOMPARE(model_->index(0, 2).data().toString(), "?  -");
    QVERIFY(!model_->index(0, 2).data(Qt::UserRole).isValid());
}

void tst_table_data_model::date_text_data()
{
    QTest::addColumn<QDateTime>("local");
    QTest::addColumn<QString>("zone");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("expected");

    const QDateTime summer(QDate(2015, 6, 1), QTime(12, 34, 56));
    const QDateTime winter(QDate(2015, 1, 1), QTime(8, 0, 0));
    const QString format = "yyyy-MM-dd HH:mm:ss";
    const QString s = "2015-06-01 12:34:56  UTC";
    QTest::addRow("local summer") << summer << "" << format << s + "+02:00";
    QTest::addRow("local winter") << winter << "" << format << "2015-01-01 08:00:00  UTC+01:00";
    QTest::addRow("iptc west") << summer << "-05:00" << format << s + "-05:00";
    QTest::addRow("iptc half hour") << summer << "+05:30" << format << s + "+05:30";
    QTest::addRow("iptc west half hour") << summer << "-03:30" << format << s + "-03:30";
    QTest::addRow("iptc without colon") << summer << "+0545" << format << s + "+05:45";
    QTest::addRow("iptc utc") << summer << "+00:00" << format << s + "+00:00";
    QTest::addRow("iptc unreadable") << summer << "+ab" << format << s + "+00:00";
    QTest::addRow("iptc beyond 14 hours") << summer << "+15:00" << format << s + "+00:00";
    QTest::addRow("invalid date") << QDateTime() << "" << format << "-";
    QTest::addRow("empty format") << summer << "" << QString() << "-";
}

void tst_table_data_model::date_text()
{
    QFETCH(QDateTime, local);
    QFETCH(QString, zone);
    QFETCH(QString, format);
    QFETCH(QString, expected);

    add_photo("a.jpg", date_values(local, zone));
    model_->gps_datetime_format_changed(format);
    QCOMPARE(model_->index(0, 1).data().toString(), expected);
}

// Invalid dates sort as QDateTime sorts them: before every valid date.
void tst_table_data_model::sort_rows_data()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("ascending") << int(Qt::AscendingOrder)
                               << QStringList{"bad.jpg", "winter.jpg", "zone.jpg", "summer.jpg"};
    QTest::addRow("descending") << int(Qt::DescendingOrder)
                                << QStringList{"summer.jpg", "zone.jpg", "winter.jpg", "bad.jpg"};
}

void tst_table_data_model::sort_rows()
{
    QFETCH(int, order);
    QFETCH(QStringList, expected);

    add_photo("summer.jpg", date_values(QDateTime(QDate(2015, 6, 1), QTime(12, 0, 0))));
    add_photo("bad.jpg", date_values(QDateTime()));
    // 13:00 at +05:00 is 10:00 in Berlin: between by instant, last by its text.
    add_photo("zone.jpg", date_values(QDateTime(QDate(2015, 6, 1), QTime(13, 0, 0)), "+05:00"));
    add_photo("winter.jpg", date_values(QDateTime(QDate(2015, 1, 1), QTime(12, 0, 0))));
    QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
    QSignalSpy layout(model_.get(), &QAbstractItemModel::layoutChanged);
    model_->sort(1, Qt::SortOrder(order));

    QStringList names;
    for (int row = 0; row < model_->rowCount(); ++row)
        names << model_->index(row, 0).data().toString();
    QCOMPARE(names, expected);
    QCOMPARE(model_->sort_order(), order);
    QCOMPARE(rebuilt.count(), 1);
    QCOMPARE(layout.count(), 1);
}

// The sort compares precomputed keys; for every pair of these dates it must
// agree with QDateTime::operator<, including invalid values, a local time in
// the hour that is passed twice in autumn, the hour that is skipped in spring
// and zones east and west.
void tst_table_data_model::date_order_matches_qdatetime()
{
    const QList<QPair<QDateTime, QString>> dates = {
        {QDateTime(), ""},
        {QDateTime(QDate(2020, 10, 25), QTime(2, 30, 0)), ""},
        {QDateTime(QDate(2020, 10, 25), QTime(1, 45, 0)), ""},
        {QDateTime(QDate(2020, 10, 25), QTime(3, 10, 0)), ""},
        {QDateTime(QDate(2020, 10, 25), QTime(1, 0, 0)), "+00:00"},
        {QDateTime(QDate(2020, 3, 29), QTime(2, 30, 0)), ""},
        {QDateTime(QDate(2020, 3, 29), QTime(3, 30, 0)), "+05:00"},
        {QDateTime(QDate(2020, 3, 29), QTime(1, 59, 59)), ""},
        {QDateTime(QDate(1960, 1, 1), QTime(0, 0, 0)), "-03:30"},
        {QDateTime(QDate(1960, 1, 1), QTime(0, 0, 0)), ""},
    };
    QMap<QString, exif_tag_map> values;
    QStringList files;
    for (int i = 0; i < dates.size(); ++i) {
        files << QString("/photos/%1.jpg").arg(i);
        values[files.last()] = date_values(dates.at(i).first, dates.at(i).second);
    }
    for (int a = 0; a < files.size(); ++a) {
        for (int b = 0; b < files.size(); ++b) {
            const QDateTime date_a = table_data_model::recording_datetime(values[files.at(a)]);
            const QDateTime date_b = table_data_model::recording_datetime(values[files.at(b)]);
            if (!(date_a < date_b) && !(date_b < date_a))
                continue; // equal dates keep no promised order
            const QStringList pair{files.at(a), files.at(b)};
            const QString first = date_a < date_b ? files.at(a) : files.at(b);
            const QString last = date_a < date_b ? files.at(b) : files.at(a);
            QCOMPARE(table_data_model::sorted_by_date(pair, Qt::AscendingOrder, values),
                     QStringList({first, last}));
            QCOMPARE(table_data_model::sorted_by_date(pair, Qt::DescendingOrder, values),
                     QStringList({last, first}));
        }
    }
}

void tst_table_data_model::other_column_keeps_sort_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("kept_order");

    QTest::addRow("photo, ascending kept") << 0 << int(Qt::AscendingOrder);
    QTest::addRow("gps, descending kept") << 2 << int(Qt::DescendingOrder);
}

void tst_table_data_model::other_column_keeps_sort()
{
    QFETCH(int, column);
    QFETCH(int, kept_order);

    add_photo("b.jpg", date_values(scenario_base));
    add_photo("a.jpg", date_values(scenario_base.addSecs(60)));
    model_->sort(1, Qt::SortOrder(kept_order));
    const QStringList before = model_->files();
    QSignalSpy override(model_.get(), &table_data_model::sort_order_override);
    QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
    const Qt::SortOrder other =
        kept_order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    model_->sort(column, other);

    QCOMPARE(override.count(), 1);
    QCOMPARE(override.at(0).at(0).toInt(), 1);
    QCOMPARE(override.at(0).at(1).value<Qt::SortOrder>(), Qt::SortOrder(kept_order));
    QCOMPARE(model_->files(), before);
    QCOMPARE(model_->sort_order(), kept_order);
    QCOMPARE(rebuilt.count(), 0);
}

void tst_table_data_model::clear_keeps_settings()
{
    const QString path = add_photo("a.jpg", date_values(scenario_base));
    model_->gps_sync_order_changed(table_data_model::sync_closest);
    model_->set_gpx_track({"walk", {{"1", "2", scenario_base}}});
    QVERIFY(model_->cache().contains(path));

    QSignalSpy rebuilt(model_.get(), &table_data_model::cache_rebuilt);
    QSignalSpy reset(model_.get(), &QAbstractItemModel::modelReset);
    model_->clear();
    QCOMPARE(rebuilt.count(), 1);
    QCOMPARE(rebuilt.at(0), QVariantList({0, 0, 0}));
    QCOMPARE(reset.count(), 1);
    QCOMPARE(model_->rowCount(), 0);
    QVERIFY(model_->cache().isEmpty());
    QCOMPARE(model_->sync_order(), int(table_data_model::sync_closest));
    QVERIFY(model_->has_track());
    QCOMPARE(model_->track_name(), "walk");
    // The metadata stays for the flows that still need it.
    QVERIFY(exif_cache::instance()->values.contains(path));
}

void tst_table_data_model::add_file_reads_metadata()
{
    const QString path = dir_->filePath("IMG_0002.JPG");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QSignalSpy inserted(model_.get(), &QAbstractItemModel::rowsInserted);
    model_->add_file(path);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(model_->files(), QStringList{path});
    QCOMPARE(exif_cache::instance()->values.value(path).value("has_data"), "true");

    model_->add_file(path); // a path in the list already is ignored in silence
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not absolute"));
    model_->add_file("-delete_original");
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(model_->files(), QStringList{path});
    QVERIFY(!exif_cache::instance()->values.contains("-delete_original"));
}

void tst_table_data_model::refused_path_keeps_its_row_data()
{
    QTest::addColumn<QString>("name");
    QTest::addRow("line feed") << "a\n-all=.jpg";
    QTest::addRow("carriage return") << "a\r-all=.jpg";
}

// A name that would split ExifTool's argument line never reaches it, yet the
// file stands in the table with the date of the file, like any photo that
// ExifTool can't read.
void tst_table_data_model::refused_path_keeps_its_row()
{
    QFETCH(QString, name);
    const QString path = dir_->path() + "/" + name;
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("not read");
    file.close();

    QSignalSpy inserted(model_.get(), &QAbstractItemModel::rowsInserted);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not reading"));
    model_->add_file(path);

    QCOMPARE(inserted.count(), 1);
    QCOMPARE(model_->files(), QStringList{path});
    const auto cache = exif_cache::instance();
    QVERIFY(cache->tags.value(path).isEmpty());
    QVERIFY(cache->group_tags.value(path).isEmpty());
    QCOMPARE(cache->values.value(path).value("has_data"), "true");
    const QDateTime date = model_->recording_datetime(path);
    QVERIFY(date.isValid());
    QVERIFY(qAbs(date.secsTo(QDateTime::currentDateTime())) < 3600);
}

// Dates are kept between rebuilds only while the file's metadata is the same:
// a file read again with another date moves in the next sort, both ways of
// changing the cache's map.
void tst_table_data_model::new_metadata_moves_the_row()
{
    const QString a = add_photo("a.jpg", date_values(scenario_base));
    const QString b = add_photo("b.jpg", date_values(scenario_base.addSecs(3600)));
    model_->sort(1, Qt::AscendingOrder);
    QCOMPARE(model_->files(), (QStringList{a, b}));

    exif_cache::instance()->values[a] = date_values(scenario_base.addSecs(7200));
    model_->sort(1, Qt::AscendingOrder);
    QCOMPARE(model_->files(), (QStringList{b, a}));
    QCOMPARE(model_->recording_datetime(a), scenario_base.addSecs(7200));

    exif_cache::instance()->values[a]["rec_hour"] = QStringLiteral("00");
    model_->sort(1, Qt::AscendingOrder);
    QCOMPARE(model_->files(), (QStringList{a, b}));
}

QTEST_MAIN(tst_table_data_model)
#include "tst_table_data_model.moc"
