#include "gps_tag_maps.h"
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

namespace {

// "Key=value;Key=value" as a map.
exif_tag_map tag_map(const QString &spec)
{
    exif_tag_map map;
    for (const QString &pair : spec.split(';', Qt::SkipEmptyParts))
        map.insert(pair.section('=', 0, 0), pair.section('=', 1));
    return map;
}

// Compares the derived keys of "key=value;..." ("-" for a key that isn't
// set). The keys "date" and "time" stand for the three recording keys each,
// joined by "|"; their value "file" for the file's own time.
void check(const QString &file, const exif_tag_map &derived, const QString &expected)
{
    const QFileInfo info(file);
    const QDateTime file_time =
        info.birthTime().isValid() ? info.birthTime() : info.metadataChangeTime();
    QVERIFY(file_time.isValid() || !expected.contains("=file"));
    const QMap<QString, QPair<QStringList, QString>> joined_keys = {
        {"date", {{"rec_year", "rec_month", "rec_day"}, "yyyy|MM|dd"}},
        {"time", {{"rec_hour", "rec_minute", "rec_second"}, "HH|mm|ss"}}};
    const exif_tag_map wanted = tag_map(expected);
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        QStringList parts;
        const QStringList keys =
            joined_keys.value(it.key(), qMakePair(QStringList{it.key()}, QString())).first;
        for (const QString &key : keys)
            parts << (derived.contains(key) ? derived.value(key) : QStringLiteral("-"));
        const QString value = it.value() == QLatin1String("file")
                                  ? file_time.toString(joined_keys.value(it.key()).second)
                                  : it.value();
        QVERIFY2(parts.join('|') == value,
                 qPrintable(it.key() + ": " + parts.join('|') + " vs " + value));
    }
}

} // namespace

// The tags of one read ("Tag=value;Group:Tag=value", the second of the
// grouped read), the derived keys expected as check() reads them, the text
// printed after "Can't parse exif recording " and a warning after "Ignoring ".
struct derive_row
{
    const char *tag, *tags, *expected;
    const char *printed = "", *logged = "";
};
Q_DECLARE_METATYPE(derive_row)

class tst_exif_cache : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(dir_.isValid());
        photo_ = dir_.filePath(QStringLiteral("photo.jpg"));
        QFile file(photo_);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not really a photo");
    }

    void cleanup() { exif_cache::instance()->clear(); }

    void cleanupTestCase() { vn::exiftool::shutdown(); }

    void derive_data()
    {
        QTest::addColumn<derive_row>("row");
        const derive_row rows[] = {
            // recording date and time
            {"offset tag first",
             "DateTimeOriginal=2015:06:01 12:34:56-05:00;OffsetTimeOriginal=+09:00;"
             "IPTC:TimeCreated=12:34:56+01:00",
             "exif_timezone=+09:00;iptc_timezone=+01:00"},
            {"offset tag garbage, zone in date",
             "DateTimeOriginal=2015:06:01 12:34:56-05:00;OffsetTimeOriginal=+99:99",
             "time=12|34|56;exif_timezone=-05:00", "", "OffsetTimeOriginal '\\+99:99'"},
            {"offset empty", "OffsetTimeOriginal=", "exif_timezone=", "", "OffsetTimeOriginal ''"},
            {"zone in date garbage", "DateTimeOriginal=2015:06:01 12:34:56+5", "exif_timezone=", "",
             "the zone '\\+5' in DateTimeOriginal"},
            {"Z is UTC, kept in the time", "DateTimeOriginal=2013:07:05 03:18:27Z",
             "time=03|18|27Z;exif_timezone=+00:00"},
            {"empty day", "DateTimeOriginal=2015:06: 12:34:56", "date=file;time=12|34|56",
             "date '2015:06:'"},
            {"empty minute", "DateTimeOriginal=2015:06:01 12::56+01:00",
             "date=2015|06|01;time=file", "time '12::56'"},
            {"one colon short", "DateTimeOriginal=2015-06-01 12:34", "date=-|-|-;time=-|-|-"},
            // GPSPosition; the latitude and longitude tags alone never make one
            {"dash", "GPSPosition=-;GPSLatitude=1 deg 0' 0.00\" N;GPSLongitude=1 deg 0' 0.00\" E",
             "has_gps_position=;gps_lat=;gps_lon=;gps_numerical="},
            {"no position", "GPSLatitude=1 deg 0' 0.00\" N;GPSLongitude=1 deg 0' 0.00\" E",
             "has_gps_position=;gps_lat=;gps_lat_ref="},
            {"empty position", "GPSPosition=", "has_gps_position=true;gps_lat=;gps_lon="},
            {"longitude short", "GPSPosition=48 deg 8' 13.20\" N, 11",
             "gps_lat=48.137000;gps_lat_ref=N;gps_lon=;gps_lon_ref=;gps_numerical="},
            {"unknown letter negative", "GPSPosition=48 deg 8' 13.20\" X, 11 deg 34' 30.00\" Y",
             "gps_lat=-48.137000;gps_lat_ref=X;gps_lon=-11.575000;gps_lon_ref=Y"},
            // camera keys
            {"affixes", "FNumber=F 4.0;FocalLength=5.0 mm", "fstop=4.0;focal_length=5.0"},
            {"one affix per end", "FNumber=ff2.8f", "fstop=f2.8"},
            {"no camera keys", "",
             "fstop=;focal_length=;lens=;image_w=;image_h=;shutter_speed_decimal="},
            {"copied keys", "ISO=64;Model=COOLPIX P6000;Rating=3;Orientation=Rotate 90 CW",
             "iso=64;camera=COOLPIX P6000;rating=3;orientation=Rotate 90 CW"},
            {"camera with serial",
             "Make=NIKON CORPORATION;Model=NIKON D70;SerialNumber=3010123;InternalSerialNumber=9",
             "camera=NIKON CORPORATION NIKON D70 #3010123"},
            {"internal serial", "Make=Canon;Model= ;InternalSerialNumber=A1", "camera=Canon #A1"},
            {"lens model empty wins", "LensModel=;Lens=B", "lens="},
            {"lens alone", "Lens=B", "lens=B"},
            {"exif size first", "ExifImageWidth=640;ImageWidth=320;ExifImageHeight=480",
             "image_w=640;image_h=480"},
            {"image size without exif", "ExifImageWidth=;ImageWidth=320", "image_w=320"},
            {"exif height blocks width", "ExifImageHeight=480;ImageWidth=320", "image_w="},
            {"shutter fraction", "ShutterSpeed=1/200",
             "shutter_speed_decimal=0.005;shutter_speed_fractional=1/200"},
            {"2 s", "ShutterSpeed=2", "shutter_speed_decimal=;shutter_speed_fractional=2"},
            // flags of the group read
            {"no groups", "",
             "has_iptc_date=false;has_iptc_time=false;iptc_timezone=;has_xmp_gps=false;"
             "has_quicktime_gps=false"},
            {"time without zone", "IPTC:TimeCreated=12:34:56",
             "has_iptc_date=false;has_iptc_time=true;iptc_timezone="},
            {"first wins", "IPTC:TimeCreated=10:00:00+01:00;IPTC2:TimeCreated=10:00:00+02:00",
             "iptc_timezone=+01:00"},
            {"not an IPTC record", "IPTCX:DateCreated=2002:06:20", "has_iptc_date=false"},
            {"XMP latitude", "XMP:GPSLatitude=48.1", "has_xmp_gps=true"},
            {"not XMP latitude",
             "XMP-exif:GPSLatitude=;Composite:GPSLatitude=48.1;XMPfoo:GPSLatitude=48.1;"
             "XMP-exif:GPSLatitudeRef=N",
             "has_xmp_gps=false"},
            {"QuickTime coordinates", "QuickTime:GPSCoordinates=32", "has_quicktime_gps=true"},
            {"not QuickTime coordinates", "Keys:GPSCoordinates=;Composite:GPSCoordinates=32 deg",
             "has_quicktime_gps=false"},
        };
        for (const derive_row &r : rows)
            QTest::newRow(r.tag) << r;
    }

    void derive()
    {
        QFETCH(derive_row, row);

        // Keys from an earlier read that every read sets again.
        exif_tag_map derived = tag_map("gps_lat=9;has_gps_position=true;iptc_timezone=+09:00;"
                                       "has_xmp_gps=true;fstop=1;lens=old;image_w=1;"
                                       "shutter_speed_decimal=1");
        if (*row.logged)
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression(QString("Ignoring ") + row.logged));
        stream_capture out;
        exif_tag_map plain, grouped;
        const exif_tag_map all = tag_map(row.tags);
        for (auto it = all.cbegin(); it != all.cend(); ++it)
            (it.key().contains(':') ? grouped : plain).insert(it.key(), it.value());
        exif_cache::derive(photo_, plain, grouped, derived);
        QCOMPARE(
            out.text(),
            *row.printed
                ? QString("Error[%1]: Can't parse exif recording %2\n").arg(photo_, row.printed)
                : QString());
        check(photo_, derived, row.expected);
    }

    void store_keeps_unset_keys_and_shares_names()
    {
        const std::shared_ptr<exif_cache> cache = exif_cache::instance();

        const QString a = dir_.filePath(QStringLiteral("a.jpg"));
        const QString b = dir_.filePath(QStringLiteral("b.jpg"));
        cache->store(a, tag_map("DateTimeOriginal=2015:06:01 12:34:56;Model=X"),
                     tag_map("IPTC:DateCreated=2015:06:01"));
        // a second read whose date part can't be split keeps the date of the first
        cache->store(a, tag_map("DateTimeOriginal=2016-07-02 01:02:03"), {});
        check(a, cache->values.value(a),
              "date=2015|06|01;time=01|02|03;camera=;has_iptc_date=false");
        QCOMPARE(cache->tags.value(a).size(), 1);
        QCOMPARE(cache->group_tags.value(a).size(), 0);

        // Two photos hold one copy of a tag name between them.
        cache->store(b, {{QString::fromLatin1("DateTimeOriginal"), "2017:01:01 00:00:00"}}, {});
        QCOMPARE(cache->tags.value(a).firstKey().constData(),
                 cache->tags.value(b).firstKey().constData());

        cache->clear();
        QVERIFY(cache->values.isEmpty() && cache->tags.isEmpty() && cache->group_tags.isEmpty());
    }

    // A relative name would reach ExifTool as an option, a NUL would cut the
    // name short; the file is kept as one that ExifTool told nothing about.
    void unsafe_path_never_reaches_exiftool()
    {
        const std::shared_ptr<exif_cache> cache = exif_cache::instance();
        for (const QString &file : {QString("-ver"), QString("/tmp/a") + QChar(0) + ".jpg"}) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Not reading"));
            // the file doesn't exist, so the dates can't come from it either
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No date for"));
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No time for"));
            cache->read_file(file);
            QCOMPARE(cache->values.value(file).value("has_data"), QStringLiteral("true"));
            QVERIFY(cache->tags.value(file).isEmpty());
        }
    }

    // Every photo of the corpus manifest: its position against what "exiftool -n"
    // printed for it, or none, and the derived keys that a file is here for
    // ("key=value;...", as check() reads them).
    void corpus_files_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("position"); // "<lat> <lon>", or empty for none
        QTest::addColumn<QString>("expected");

        const QHash<QString, QString> expected = {
            // an XMP position, empty EXIF
            {"Nikon D5000.jpg", "has_xmp_gps=true;camera=NIKON CORPORATION NIKON D5000 #6607572"},
            {"with-gps.mov", "has_quicktime_gps=true;has_xmp_gps=false"},
            {"Pentax_K10D.jpg", "has_xmp_gps=false"}, // XMP without GPS
            {"Nikon D1X.jpg", "iptc_timezone=-05:00"},
            {"Issue 122.jpg", "has_iptc_time=true;iptc_timezone=+00:00"}, // second IPTC record
            {"FujiFilm FinePixS1Pro (1).jpg", "has_iptc_date=true;has_iptc_time=false"},
            {"Issue 247-1.nef", "has_iptc_date=true;iptc_timezone="}, // empty IPTC tags
            {"DSCN0010.jpg",
             "camera=NIKON COOLPIX P6000;date=2008|10|22;time=16|28|39;exif_timezone="},
            {"FLIR iPhone device.jpg", "date=2021|05|16;time=12|27|36.107;exif_timezone=-07:00"},
            {"67-0_length_string.jpg", "date=file;time=file"},
            {"FujiFilm DX-5.jpg", "date=file;time=file"},
            {"Olympus C4040Z.jpg", "date=0000|00|00;time=00|00|00"},
        };
        QFile manifest(QStringLiteral(VN_CORPUS_DIR "/MANIFEST.tsv"));
        QVERIFY(manifest.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(manifest.readAll()).split('\n');
        const QStringList header = lines.value(0).split('\t');
        const int path_column = header.indexOf("path");
        const int position_column = header.indexOf("GPSPosition (-n)");
        QVERIFY(path_column >= 0 && position_column >= 0);
        QStringList names;
        for (const QString &line : lines.mid(1)) {
            const QStringList cells = line.split('\t');
            const QString path = cells.value(path_column);
            if (cells.size() != header.size() || !path.startsWith("photos/"))
                continue;
            names << path.mid(7);
            QTest::newRow(qPrintable(names.last()))
                << QString(VN_CORPUS_DIR "/" + path) << cells.value(position_column)
                << expected.value(names.last());
        }
        // A parse fault must not shrink the test to nothing.
        for (auto it = expected.cbegin(); it != expected.cend(); ++it)
            QVERIFY2(names.contains(it.key()), qPrintable(it.key()));
    }

    void corpus_files()
    {
        QFETCH(QString, file);
        QFETCH(QString, position);
        QFETCH(QString, expected);
        const std::shared_ptr<exif_cache> cache = exif_cache::instance();
        {
            stream_capture out;
            cache->read_file(file);
            // The reader trims the value: the leading blanks are gone.
            const QString error =
                "Error[%1]: Can't parse exif recording date/time ':  :     :  :'\n";
            QCOMPARE(out.text(), file.endsWith("/FujiFilm DX-5.jpg") ? error.arg(file) : QString());
        }
        const exif_tag_map values = cache->values.value(file);
        check(file, values, expected + ";has_data=true");
        // The numbers kept for a write flow are those its own read would give.
        const std::optional<exif_tag_map> read = vn::exiftool::read_numeric_tags(
            file, gps_tag_maps::exact_read_tags(), nullptr, gps_tag_maps::exact_read_names());
        QVERIFY(read && cache->stamps.contains(file));
        QCOMPARE(gps_tag_maps::exact_read_of(cache->gps_numbers.value(file)), *read);
        QCOMPARE(values.value("has_gps_position"), position.isEmpty() ? "" : "true");
        if (position.isEmpty())
            return;
        // ExifTool prints seconds with two decimals: 0.01" is 2.8e-6 degrees,
        // and the six decimals kept here add half of 1e-6.
        const double limit = 0.01 / 3600 + 0.5e-6 + 1e-9;
        for (const int i : {0, 1}) {
            const QString key = i == 0 ? "gps_lat" : "gps_lon";
            const double wanted = position.section(' ', i, i).toDouble();
            bool ok = false;
            const double cached = values.value(key).toDouble(&ok);
            QVERIFY2(ok && std::fabs(cached - wanted) <= limit,
                     qPrintable(values.value(key) + " vs " + position));
            QCOMPARE(values.value(key + "_ref"), QString((wanted < 0 ? "SW" : "NE")[i]));
        }
        QCOMPARE(values.value("gps_numerical"),
                 values.value("gps_lat") + ", " + values.value("gps_lon"));
    }

private:
    QTemporaryDir dir_;
    QString photo_; // an existing file, for the dates taken from the file
};

QTEST_GUILESS_MAIN(tst_exif_cache)
#include "tst_exif_cache.moc"
