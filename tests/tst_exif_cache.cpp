#include "model/exif_cache.h"
#include "stream_capture.h"

#include <vn/exiftool.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <iostream>
#include <sstream>

class tst_exif_cache : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void recording_date_data();
    void recording_date();

    void position_data();
    void position();

    void camera_data();
    void camera();

    void group_flags_data();
    void group_flags();

    void store_keeps_unset_keys_and_shares_names();
    void unsafe_path_never_reaches_exiftool_data();
    void unsafe_path_never_reaches_exiftool();

    void corpus_positions_data();
    void corpus_positions();
    void corpus_flags_data();
    void corpus_flags();
    void corpus_dates_data();
    void corpus_dates();

private:
    QTemporaryDir dir_;
    QString photo_; // an existing file, for the dates taken from the file
};

namespace {

QDateTime expected_file_time(const QString &file)
{
    const QFileInfo info(file);
    return info.birthTime().isValid() ? info.birthTime() : info.metadataChangeTime();
}

// "2015|06|01" of the derived date or time keys, "-" for keys not set.
QString joined(const exif_tag_map &derived, const QStringList &keys)
{
    QStringList parts;
    for (const QString &key : keys)
        parts << (derived.contains(key) ? derived.value(key) : QStringLiteral("-"));
    return parts.join(QLatin1Char('|'));
}

const QStringList date_keys{"rec_year", "rec_month", "rec_day"};
const QStringList time_keys{"rec_hour", "rec_minute", "rec_second"};

} // namespace

void tst_exif_cache::initTestCase()
{
    QVERIFY(dir_.isValid());
    photo_ = dir_.filePath(QStringLiteral("photo.jpg"));
    QFile file(photo_);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("not really a photo");
    file.close();
    QVERIFY(expected_file_time(photo_).isValid());
}

void tst_exif_cache::cleanup()
{
    exif_cache::instance()->clear();
}

void tst_exif_cache::cleanupTestCase()
{
    vn::exiftool::shutdown();
}

void tst_exif_cache::recording_date_data()
{
    QTest::addColumn<bool>("has_tag");
    QTest::addColumn<QString>("text");
    // "file": from the file's time; "-|-|-": nothing set
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("printed"); // %1 stands for the file name

    QTest::addRow("plain") << true << "2015:06:01 12:34:56"
                           << "2015|06|01"
                           << "12|34|56"
                           << "";
    QTest::addRow("zone east dropped") << true << "2015:06:01 12:34:56+02:00"
                                       << "2015|06|01"
                                       << "12|34|56"
                                       << "";
    QTest::addRow("zone west dropped") << true << "2015:06:01 12:34:56-05:00"
                                       << "2015|06|01"
                                       << "12|34|56"
                                       << "";
    QTest::addRow("sub-seconds kept with zone") << true << "2021:05:16 12:27:36.107-07:00"
                                                << "2021|05|16"
                                                << "12|27|36.107"
                                                << "";
    QTest::addRow("trailing Z kept") << true << "2013:07:05 03:18:27Z"
                                     << "2013|07|05"
                                     << "03|18|27Z"
                                     << "";
    QTest::addRow("zeros stand as they are") << true << "0000:00:00 00:00:00"
                                             << "0000|00|00"
                                             << "00|00|00"
                                             << "";
    QTest::addRow("missing tag") << false << ""
                                 << "file"
                                 << "file"
                                 << "";
    QTest::addRow("empty tag") << true << ""
                               << "file"
                               << "file"
                               << "";
    QTest::addRow("no blank") << true << "2015:06:01"
                              << "file"
                              << "file"
                              << "Error[%1]: Can't parse exif recording date/time '2015:06:01'\n";
    QTest::addRow("two blanks")
        << true << "2015:06:01  12:34:56"
        << "file"
        << "file"
        << "Error[%1]: Can't parse exif recording date/time '2015:06:01  12:34:56'\n";
    QTest::addRow("blanks and colons")
        << true << "    :  :     :  :"
        << "file"
        << "file"
        << "Error[%1]: Can't parse exif recording date/time '    :  :     :  :'\n";
    QTest::addRow("empty day") << true << "2015:06: 12:34:56"
                               << "file"
                               << "12|34|56"
                               << "Error[%1]: Can't parse exif recording date '2015:06:'\n";
    QTest::addRow("empty minute") << true << "2015:06:01 12::56+01:00"
                                  << "2015|06|01"
                                  << "file"
                                  << "Error[%1]: Can't parse exif recording time '12::56'\n";
    QTest::addRow("date without colons, silent") << true << "2015-06-01 12:34:56"
                                                 << "-|-|-"
                                                 << "12|34|56"
                                                 << "";
    QTest::addRow("time with one colon, silent") << true << "2015:06:01 12:34"
                                                 << "2015|06|01"
                                                 << "-|-|-"
                                                 << "";
}

void tst_exif_cache::recording_date()
{
    QFETCH(bool, has_tag);
    QFETCH(QString, text);
    QFETCH(QString, date);
    QFETCH(QString, time);
    QFETCH(QString, printed);

    exif_tag_map plain;
    if (has_tag)
        plain.insert(QStringLiteral("DateTimeOriginal"), text);
    exif_tag_map derived;
    stream_capture out;
    exif_cache::derive(photo_, plain, exif_tag_map(), derived);
    QCOMPARE(out.text(), printed.isEmpty() ? QString() : printed.arg(photo_));

    const QDateTime file_time = expected_file_time(photo_);
    if (date == QLatin1String("file"))
        date = file_time.toString(QStringLiteral("yyyy|MM|dd"));
    if (time == QLatin1String("file"))
        time = file_time.toString(QStringLiteral("HH|mm|ss"));
    QCOMPARE(joined(derived, date_keys), date);
    QCOMPARE(joined(derived, time_keys), time);
    QCOMPARE(derived.value(QStringLiteral("has_data")), QStringLiteral("true"));
}

void tst_exif_cache::position_data()
{
    QTest::addColumn<bool>("has_tag");
    QTest::addColumn<QString>("position");
    // has_gps_position|gps_lat|gps_lat_ref|gps_lon|gps_lon_ref|gps_numerical
    QTest::addColumn<QString>("expected");

    QTest::addRow("south west") << true << "48 deg 8' 13.20\" S, 11 deg 34' 30.00\" W"
                                << "true|-48.137000|S|-11.575000|W|-48.137000, -11.575000";
    QTest::addRow("north east") << true << "43 deg 28' 2.81\" N, 11 deg 53' 6.46\" E"
                                << "true|43.467447|N|11.885128|E|43.467447, 11.885128";
    QTest::addRow("zero degrees, south") << true << "0 deg 22' 16.68\" S, 36 deg 3' 23.10\" E"
                                         << "true|-0.371300|S|36.056417|E|-0.371300, 36.056417";
    QTest::addRow("0/0 is a position") << true << "0 deg 0' 0.00\" N, 0 deg 0' 0.00\" E"
                                       << "true|0.000000|N|0.000000|E|0.000000, 0.000000";
    QTest::addRow("dash is no position") << true << "-"
                                         << "|||||";
    QTest::addRow("missing tag") << false << ""
                                 << "|||||";
    QTest::addRow("empty value") << true << ""
                                 << "true|||||";
    QTest::addRow("three parts") << true << "1, 2, 3"
                                 << "true|||||";
    QTest::addRow("too few tokens") << true << "48 deg, 11 deg"
                                    << "true|||||";
    QTest::addRow("longitude short") << true << "48 deg 8' 13.20\" N, 11"
                                     << "true|48.137000|N|||";
    QTest::addRow("unknown letter counts as negative")
        << true << "48 deg 8' 13.20\" X, 11 deg 34' 30.00\" Y"
        << "true|-48.137000|X|-11.575000|Y|-48.137000, -11.575000";
}

void tst_exif_cache::position()
{
    QFETCH(bool, has_tag);
    QFETCH(QString, position);
    QFETCH(QString, expected);

    exif_tag_map plain{{"DateTimeOriginal", "2015:06:01 12:34:56"},
                       // alone, these never make a position
                       {"GPSLatitude", "1 deg 0' 0.00\" N"},
                       {"GPSLongitude", "1 deg 0' 0.00\" E"}};
    if (has_tag)
        plain.insert(QStringLiteral("GPSPosition"), position);
    // a position from an earlier read must not survive
    exif_tag_map derived{{"gps_lat", "9.000000"}, {"has_gps_position", "true"}};
    exif_cache::derive(photo_, plain, exif_tag_map(), derived);
    QCOMPARE(joined(derived, {"has_gps_position", "gps_lat", "gps_lat_ref", "gps_lon",
                              "gps_lon_ref", "gps_numerical"}),
             expected);
}

void tst_exif_cache::camera_data()
{
    QTest::addColumn<exif_tag_map>("plain");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");

    QTest::addRow("fstop plain") << exif_tag_map{{"FNumber", "2.8"}} << "fstop"
                                 << "2.8";
    QTest::addRow("fstop f") << exif_tag_map{{"FNumber", "f2.8"}} << "fstop"
                             << "2.8";
    QTest::addRow("fstop F and blank") << exif_tag_map{{"FNumber", "F 4.0"}} << "fstop"
                                       << "4.0";
    QTest::addRow("fstop one affix per end") << exif_tag_map{{"FNumber", "ff2.8f"}} << "fstop"
                                             << "f2.8";
    QTest::addRow("no fstop") << exif_tag_map{} << "fstop"
                              << "";
    QTest::addRow("focal length") << exif_tag_map{{"FocalLength", "5.0 mm"}} << "focal_length"
                                  << "5.0";
    // the unit is taken off the ends only
    QTest::addRow("focal length with equivalent")
        << exif_tag_map{{"FocalLength", "5.0 mm (35 mm equivalent: 28.0 mm)"}} << "focal_length"
        << "5.0 mm (35 mm equivalent: 28.0 mm)";
    QTest::addRow("iso") << exif_tag_map{{"ISO", "64"}} << "iso"
                         << "64";
    QTest::addRow("camera") << exif_tag_map{{"Model", "COOLPIX P6000"}} << "camera"
                            << "COOLPIX P6000";
    QTest::addRow("lens model first") << exif_tag_map{{"LensModel", "A"}, {"Lens", "B"}} << "lens"
                                      << "A";
    QTest::addRow("lens model empty still wins")
        << exif_tag_map{{"LensModel", ""}, {"Lens", "B"}} << "lens"
        << "";
    QTest::addRow("lens alone") << exif_tag_map{{"Lens", "B"}} << "lens"
                                << "B";
    QTest::addRow("exif width first")
        << exif_tag_map{{"ExifImageWidth", "640"}, {"ImageWidth", "320"}} << "image_w"
        << "640";
    QTest::addRow("image size when no exif size")
        << exif_tag_map{{"ExifImageWidth", ""}, {"ImageWidth", "320"}} << "image_w"
        << "320";
    QTest::addRow("exif height blocks image width")
        << exif_tag_map{{"ExifImageHeight", "480"}, {"ImageWidth", "320"}} << "image_w"
        << "";
    QTest::addRow("exif height") << exif_tag_map{{"ExifImageHeight", "480"}} << "image_h"
                                 << "480";
    QTest::addRow("rating") << exif_tag_map{{"Rating", "3"}} << "rating"
                            << "3";
    QTest::addRow("orientation") << exif_tag_map{{"Orientation", "Rotate 90 CW"}} << "orientation"
                                 << "Rotate 90 CW";
    QTest::addRow("shutter fraction")
        << exif_tag_map{{"ShutterSpeed", "1/200"}} << "shutter_speed_decimal"
        << "0.005";
    QTest::addRow("shutter thirds")
        << exif_tag_map{{"ShutterSpeed", "1/3"}} << "shutter_speed_decimal"
        << "0.333333";
    QTest::addRow("shutter as printed")
        << exif_tag_map{{"ShutterSpeed", "1/200"}} << "shutter_speed_fractional"
        << "1/200";
    QTest::addRow("whole seconds: no quotient")
        << exif_tag_map{{"ShutterSpeed", "2"}} << "shutter_speed_decimal"
        << "";
    QTest::addRow("whole seconds as printed")
        << exif_tag_map{{"ShutterSpeed", "2"}} << "shutter_speed_fractional"
        << "2";
    QTest::addRow("zero denominator")
        << exif_tag_map{{"ShutterSpeed", "1/0"}} << "shutter_speed_decimal"
        << "";
}

void tst_exif_cache::camera()
{
    QFETCH(exif_tag_map, plain);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    plain.insert(QStringLiteral("DateTimeOriginal"), QStringLiteral("2015:06:01 12:34:56"));
    // every camera key is reset by a new read
    exif_tag_map derived{{key, "old"}};
    exif_cache::derive(photo_, plain, exif_tag_map(), derived);
    QVERIFY(derived.contains(key));
    QCOMPARE(derived.value(key), expected);
}

void tst_exif_cache::group_flags_data()
{
    QTest::addColumn<exif_tag_map>("grouped");
    // has_iptc_date|has_iptc_time|iptc_timezone|has_xmp_gps|has_quicktime_gps
    QTest::addColumn<QString>("expected");

    QTest::addRow("nothing") << exif_tag_map{} << "false|false||false|false";
    QTest::addRow("time without zone")
        << exif_tag_map{{"IPTC:TimeCreated", "12:34:56"}} << "false|true||false|false";
    QTest::addRow("zone west") << exif_tag_map{{"IPTC:DateCreated", "2003:08:06"},
                                               {"IPTC:TimeCreated", "18:04:34-05:00"}}
                               << "true|true|-05:00|false|false";
    QTest::addRow("second record")
        << exif_tag_map{{"IPTC:DateCreated", "2002:01:19"}, {"IPTC2:TimeCreated", "16:47:42+00:00"}}
        << "true|true|+00:00|false|false";
    QTest::addRow("first record wins") << exif_tag_map{{"IPTC:TimeCreated", "10:00:00+01:00"},
                                                       {"IPTC2:TimeCreated", "10:00:00+02:00"}}
                                       << "false|true|+01:00|false|false";
    QTest::addRow("XMP date beside IPTC date")
        << exif_tag_map{{"IPTC:DateCreated", "2002:06:20"},
                        {"XMP-photoshop:DateCreated", "2002:06:20"}}
        << "true|false||false|false";
    QTest::addRow("XMP date alone")
        << exif_tag_map{{"XMP-photoshop:DateCreated", "2002:06:20"}} << "false|false||false|false";
    QTest::addRow("empty IPTC tags exist")
        << exif_tag_map{{"IPTC:DateCreated", ""}, {"IPTC:TimeCreated", ""}}
        << "true|true||false|false";
    QTest::addRow("not an IPTC record")
        << exif_tag_map{{"IPTCX:DateCreated", "2002:06:20"}} << "false|false||false|false";
    QTest::addRow("XMP-exif latitude")
        << exif_tag_map{{"XMP-exif:GPSLatitude", "48.1"}} << "false|false||true|false";
    QTest::addRow("XMP latitude") << exif_tag_map{{"XMP:GPSLatitude", "48.1"}}
                                  << "false|false||true|false";
    QTest::addRow("XMP latitude empty")
        << exif_tag_map{{"XMP-exif:GPSLatitude", ""}} << "false|false||false|false";
    QTest::addRow("composite latitude")
        << exif_tag_map{{"Composite:GPSLatitude", "48.1"}} << "false|false||false|false";
    QTest::addRow("not an XMP group")
        << exif_tag_map{{"XMPfoo:GPSLatitude", "48.1"}} << "false|false||false|false";
    QTest::addRow("latitude ref") << exif_tag_map{{"XMP-exif:GPSLatitudeRef", "N"}}
                                  << "false|false||false|false";
    QTest::addRow("Keys coordinates")
        << exif_tag_map{{"Keys:GPSCoordinates", "32 deg"}} << "false|false||false|true";
    QTest::addRow("UserData coordinates")
        << exif_tag_map{{"UserData:GPSCoordinates", "32 deg"}} << "false|false||false|true";
    QTest::addRow("ItemList coordinates")
        << exif_tag_map{{"ItemList:GPSCoordinates", "32 deg"}} << "false|false||false|true";
    QTest::addRow("QuickTime coordinates")
        << exif_tag_map{{"QuickTime:GPSCoordinates", "32 deg"}} << "false|false||false|true";
    QTest::addRow("QuickTime coordinates empty")
        << exif_tag_map{{"Keys:GPSCoordinates", ""}} << "false|false||false|false";
    QTest::addRow("other group coordinates")
        << exif_tag_map{{"Composite:GPSCoordinates", "32 deg"}} << "false|false||false|false";
}

void tst_exif_cache::group_flags()
{
    QFETCH(exif_tag_map, grouped);
    QFETCH(QString, expected);
    const exif_tag_map plain{{"DateTimeOriginal", "2015:06:01 12:34:56"}};
    exif_tag_map derived{{"iptc_timezone", "+09:00"}, {"has_xmp_gps", "true"}};
    exif_cache::derive(photo_, plain, grouped, derived);
    QCOMPARE(joined(derived, {"has_iptc_date", "has_iptc_time", "iptc_timezone", "has_xmp_gps",
                              "has_quicktime_gps"}),
             expected);
}

void tst_exif_cache::store_keeps_unset_keys_and_shares_names()
{
    const std::shared_ptr<exif_cache> cache = exif_cache::instance();
    QCOMPARE(exif_cache::instance().get(), cache.get());

    const QString a = dir_.filePath(QStringLiteral("a.jpg"));
    const QString b = dir_.filePath(QStringLiteral("b.jpg"));
    cache->store(a, {{"DateTimeOriginal", "2015:06:01 12:34:56"}, {"Model", "X"}},
                 {{"IPTC:DateCreated", "2015:06:01"}});
    // a second read whose date part can't be split keeps the date of the first
    cache->store(a, {{"DateTimeOriginal", "2016-07-02 01:02:03"}}, {});
    QCOMPARE(joined(cache->values.value(a), date_keys), QStringLiteral("2015|06|01"));
    QCOMPARE(joined(cache->values.value(a), time_keys), QStringLiteral("01|02|03"));
    QCOMPARE(cache->values.value(a).value("camera"), QString());
    QCOMPARE(cache->values.value(a).value("has_iptc_date"), QStringLiteral("false"));
    QCOMPARE(cache->tags.value(a).size(), 1);
    QCOMPARE(cache->group_tags.value(a).size(), 0);

    // Two photos hold one copy of a tag name between them.
    {
        exif_tag_map plain_b;
        plain_b.insert(QString::fromLatin1("DateTimeOriginal"), "2017:01:01 00:00:00");
        cache->store(b, plain_b, {});
    }
    QCOMPARE(cache->tags.size(), 2);
    QCOMPARE(cache->tags.value(a).firstKey(), cache->tags.value(b).firstKey());
    QCOMPARE(cache->tags.value(a).firstKey().constData(),
             cache->tags.value(b).firstKey().constData());

    cache->clear();
    QVERIFY(cache->values.isEmpty());
    QVERIFY(cache->tags.isEmpty());
    QVERIFY(cache->group_tags.isEmpty());
}

void tst_exif_cache::unsafe_path_never_reaches_exiftool_data()
{
    QTest::addColumn<QString>("file");
    QTest::addRow("relative") << "photo.jpg";
    QTest::addRow("option") << "-ver";
    QTest::addRow("line feed") << "/tmp/a\n-ver";
    QTest::addRow("carriage return") << "/tmp/a\r.jpg";
    QTest::addRow("nul") << QString("/tmp/a") + QChar(0) + QString(".jpg");
}

void tst_exif_cache::unsafe_path_never_reaches_exiftool()
{
    QFETCH(QString, file);
    const std::shared_ptr<exif_cache> cache = exif_cache::instance();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not reading"));
    // the file doesn't exist, so the dates can't come from it either
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No date for"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No time for"));
    cache->read_file(file);
    QCOMPARE(cache->values.value(file).value("has_data"), QStringLiteral("true"));
    QCOMPARE(cache->values.value(file).value("has_gps_position"), QString());
    QVERIFY(cache->tags.value(file).isEmpty());
}

namespace {

QString corpus_photo(const QString &name)
{
    return QStringLiteral(VN_CORPUS_DIR "/photos/") + name;
}

// Rows of the corpus manifest by path, each a map from column to cell.
QList<QMap<QString, QString>> manifest_rows()
{
    QList<QMap<QString, QString>> rows;
    QFile file(QStringLiteral(VN_CORPUS_DIR "/MANIFEST.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    const QList<QByteArray> lines = file.readAll().split('\n');
    const QStringList header = QString::fromUtf8(lines.value(0)).split(QLatin1Char('\t'));
    for (int i = 1; i < lines.size(); ++i) {
        const QStringList cells = QString::fromUtf8(lines.at(i)).split(QLatin1Char('\t'));
        if (cells.size() != header.size())
            continue;
        QMap<QString, QString> row;
        for (int c = 0; c < header.size(); ++c)
            row.insert(header.at(c), cells.at(c));
        rows << row;
    }
    return rows;
}

} // namespace

void tst_exif_cache::corpus_positions_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<double>("lat");
    QTest::addColumn<double>("lon");

    int count = 0;
    for (const QMap<QString, QString> &row : manifest_rows()) {
        const QString path = row.value(QStringLiteral("path"));
        const QStringList position =
            row.value(QStringLiteral("GPSPosition (-n)")).split(QLatin1Char(' '));
        if (!path.startsWith(QLatin1String("photos/")) || position.size() != 2)
            continue;
        QTest::addRow("%s", qPrintable(path.mid(7)))
            << QString(VN_CORPUS_DIR "/" + path) << position.at(0).toDouble()
            << position.at(1).toDouble();
        ++count;
    }
    // the manifest lists 20 photos with a position; a parse fault must not
    // shrink the test to nothing
    QVERIFY(count >= 15);
}

void tst_exif_cache::corpus_positions()
{
    QFETCH(QString, file);
    QFETCH(double, lat);
    QFETCH(double, lon);

    const std::shared_ptr<exif_cache> cache = exif_cache::instance();
    cache->read_file(file);
    const exif_tag_map values = cache->values.value(file);
    QCOMPARE(values.value("has_data"), QStringLiteral("true"));
    QCOMPARE(values.value("has_gps_position"), QStringLiteral("true"));
    // ExifTool prints seconds with two decimals: 0.01" is 2.8e-6 degrees,
    // and the six decimals kept here add half of 1e-6.
    const double limit = 0.01 / 3600 + 0.5e-6 + 1e-9;
    bool ok = false;
    const double cached_lat = values.value("gps_lat").toDouble(&ok);
    QVERIFY2(ok, qPrintable(values.value("gps_lat")));
    const double cached_lon = values.value("gps_lon").toDouble(&ok);
    QVERIFY2(ok, qPrintable(values.value("gps_lon")));
    QVERIFY2(std::fabs(cached_lat - lat) <= limit,
             qPrintable(QStringLiteral("%1 vs %2").arg(cached_lat).arg(lat)));
    QVERIFY2(std::fabs(cached_lon - lon) <= limit,
             qPrintable(QStringLiteral("%1 vs %2").arg(cached_lon).arg(lon)));
    QCOMPARE(values.value("gps_lat_ref"), QString(lat < 0 ? "S" : "N"));
    QCOMPARE(values.value("gps_lon_ref"), QString(lon < 0 ? "W" : "E"));
    QCOMPARE(values.value("gps_numerical"),
             values.value("gps_lat") + QStringLiteral(", ") + values.value("gps_lon"));
    QVERIFY(!cache->tags.value(file).isEmpty());
    QVERIFY(!cache->group_tags.value(file).isEmpty());
}

void tst_exif_cache::corpus_flags_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");

    QTest::addRow("EXIF and XMP position: xmp") << "DSCN0012_xmp_gps.jpg"
                                                << "has_xmp_gps"
                                                << "true";
    QTest::addRow("EXIF and XMP position: quicktime") << "DSCN0012_xmp_gps.jpg"
                                                      << "has_quicktime_gps"
                                                      << "false";
    QTest::addRow("XMP position, empty EXIF: xmp") << "Nikon D5000.jpg"
                                                   << "has_xmp_gps"
                                                   << "true";
    QTest::addRow("XMP position, empty EXIF: no position") << "Nikon D5000.jpg"
                                                           << "has_gps_position"
                                                           << "";
    QTest::addRow("XMP only: xmp") << "Olympus_C8080WZ_xmp_only_gps.jpg"
                                   << "has_xmp_gps"
                                   << "true";
    QTest::addRow("XMP only: latitude") << "Olympus_C8080WZ_xmp_only_gps.jpg"
                                        << "gps_lat"
                                        << "-33.856783";
    QTest::addRow("video: quicktime") << "with-gps.mov"
                                      << "has_quicktime_gps"
                                      << "true";
    QTest::addRow("video: xmp") << "with-gps.mov"
                                << "has_xmp_gps"
                                << "false";
    QTest::addRow("no XMP: xmp") << "Canon_40D.jpg"
                                 << "has_xmp_gps"
                                 << "false";
    QTest::addRow("no XMP: quicktime") << "Canon_40D.jpg"
                                       << "has_quicktime_gps"
                                       << "false";
    QTest::addRow("no XMP: position") << "Canon_40D.jpg"
                                      << "has_gps_position"
                                      << "";
    QTest::addRow("XMP without GPS") << "Pentax_K10D.jpg"
                                     << "has_xmp_gps"
                                     << "false";
    QTest::addRow("IPTC zone west") << "Nikon D1X.jpg"
                                    << "iptc_timezone"
                                    << "-05:00";
    QTest::addRow("second IPTC record: time") << "Issue 122.jpg"
                                              << "has_iptc_time"
                                              << "true";
    QTest::addRow("second IPTC record: zone") << "Issue 122.jpg"
                                              << "iptc_timezone"
                                              << "+00:00";
    QTest::addRow("IPTC date beside XMP date") << "FujiFilm FinePixS1Pro (1).jpg"
                                               << "has_iptc_date"
                                               << "true";
    QTest::addRow("IPTC date without time") << "FujiFilm FinePixS1Pro (1).jpg"
                                            << "has_iptc_time"
                                            << "false";
    QTest::addRow("empty IPTC tags: date") << "Issue 247-1.nef"
                                           << "has_iptc_date"
                                           << "true";
    QTest::addRow("empty IPTC tags: zone") << "Issue 247-1.nef"
                                           << "iptc_timezone"
                                           << "";
    QTest::addRow("camera") << "DSCN0010.jpg"
                            << "camera"
                            << "COOLPIX P6000";
    QTest::addRow("umlaut name") << "Grünwald Straße 1.jpg"
                                 << "gps_lat_ref"
                                 << "N";
}

void tst_exif_cache::corpus_flags()
{
    QFETCH(QString, name);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    const QString file = corpus_photo(name);
    QVERIFY(QFileInfo::exists(file));
    const std::shared_ptr<exif_cache> cache = exif_cache::instance();
    cache->read_file(file);
    const exif_tag_map values = cache->values.value(file);
    QCOMPARE(values.value("has_data"), QStringLiteral("true"));
    QVERIFY(values.contains(key));
    QCOMPARE(values.value(key), expected);
}

void tst_exif_cache::corpus_dates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("date"); // "file": from the file's own time
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("printed");

    QTest::addRow("plain") << "DSCN0010.jpg"
                           << "2008|10|22"
                           << "16|28|39"
                           << "";
    QTest::addRow("sub-seconds and zone") << "FLIR iPhone device.jpg"
                                          << "2021|05|16"
                                          << "12|27|36.107"
                                          << "";
    QTest::addRow("no date") << "67-0_length_string.jpg"
                             << "file"
                             << "file"
                             << "";
    // the reader trims the value: the leading blanks are gone
    QTest::addRow("blanks and colons")
        << "FujiFilm DX-5.jpg"
        << "file"
        << "file"
        << "Error[%1]: Can't parse exif recording date/time ':  :     :  :'\n";
    QTest::addRow("zeros") << "Olympus C4040Z.jpg"
                           << "0000|00|00"
                           << "00|00|00"
                           << "";
}

void tst_exif_cache::corpus_dates()
{
    QFETCH(QString, name);
    QFETCH(QString, date);
    QFETCH(QString, time);
    QFETCH(QString, printed);
    const QString file = corpus_photo(name);
    QVERIFY(QFileInfo::exists(file));
    const std::shared_ptr<exif_cache> cache = exif_cache::instance();
    {
        stream_capture out;
        cache->read_file(file);
        QCOMPARE(out.text(), printed.isEmpty() ? QString() : printed.arg(file));
    }
    const QDateTime file_time = expected_file_time(file);
    if (date == QLatin1String("file"))
        date = file_time.toString(QStringLiteral("yyyy|MM|dd"));
    if (time == QLatin1String("file"))
        time = file_time.toString(QStringLiteral("HH|mm|ss"));
    QCOMPARE(joined(cache->values.value(file), date_keys), date);
    QCOMPARE(joined(cache->values.value(file), time_keys), time);
}

QTEST_GUILESS_MAIN(tst_exif_cache)
#include "tst_exif_cache.moc"
