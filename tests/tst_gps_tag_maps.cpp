#include "gps_tag_maps.h"
#include "model/exif_cache.h"

#include <QTest>

class tst_gps_tag_maps : public QObject
{
    Q_OBJECT

private slots:
    void tag_lists();

    void sync_tags_data();
    void sync_tags();

    void undo_tags_data();
    void undo_tags();

    void exact_undo_tags_data();
    void exact_undo_tags();

    void writable_data();
    void writable();
};

namespace {

// "Key=value;Key=value" as a map.
exif_tag_map tag_map(const QString &spec)
{
    exif_tag_map map;
    for (const QString &pair : spec.split(';', Qt::SkipEmptyParts))
        map.insert(pair.section('=', 0, 0), pair.section('=', 1));
    return map;
}

gps_pos position(const QString &lat, const QString &lat_ref, const QString &lon,
                 const QString &lon_ref)
{
    gps_pos pos;
    pos.lat = lat;
    pos.lat_ref = lat_ref;
    pos.lon = lon;
    pos.lon_ref = lon_ref;
    pos.lat_numerical = lat;
    pos.lon_numerical = lon;
    return pos;
}

} // namespace

void tst_gps_tag_maps::tag_lists()
{
    const QStringList &all = gps_tag_maps::gps_tags();
    QCOMPARE(all.size(), 32);
    QCOMPARE(all.first(), QStringLiteral("GPSAltitude"));
    QCOMPARE(all.last(), QStringLiteral("GPSVersionID"));
    QStringList sorted = all;
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(all, sorted); // the record is written in this order, as the map sorts
    QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), 32);

    const QStringList &cleared = gps_tag_maps::user_position_cleared_tags();
    QCOMPARE(cleared.size(), 27);
    for (const char *kept :
         {"GPSLatitude", "GPSLatitudeRef", "GPSLongitude", "GPSLongitudeRef", "GPSVersionID"})
        QVERIFY2(!cleared.contains(QLatin1String(kept)), kept);
    QVERIFY(cleared.contains(QStringLiteral("GPSSpeed")));
    QVERIFY(cleared.contains(QStringLiteral("GPSDestLatitude")));

    QCOMPARE(gps_tag_maps::xmp_gps_tags(),
             QStringList({"XMP:GPSLatitude", "XMP:GPSLongitude", "XMP:GPSAltitude"}));
    QCOMPARE(gps_tag_maps::remove_tags(),
             tag_map("GPS:all=;XMP:GPSLatitude=;XMP:GPSLongitude=;XMP:GPSAltitude="));
}

void tst_gps_tag_maps::sync_tags_data()
{
    QTest::addColumn<gps_pos>("pos");
    QTest::addColumn<bool>("has_xmp_gps");
    QTest::addColumn<bool>("user_position");
    QTest::addColumn<QString>("expected_extra"); // beside the four position tags

    const gps_pos south_west = position("-19.178194", "S", "-46.501221", "W");
    const QString xmp = "XMP:GPSLatitude#=-19.178194;XMP:GPSLongitude#=-46.501221";
    QTest::addRow("photo mode, no XMP") << south_west << false << false << QString();
    QTest::addRow("photo mode, XMP GPS") << south_west << true << false << xmp;
    // the typed position empties the other 27 tags, and XMP's altitude
    QTest::addRow("typed position, no XMP") << south_west << false << true << "cleared";
    QTest::addRow("typed position, XMP GPS")
        << south_west << true << true << "cleared;XMP:GPSAltitude=;" + xmp;
    gps_pos below_sea = south_west;
    below_sea.altitude = "-4.305e2";
    QTest::addRow("below sea level") << below_sea << false << true
                                     << "cleared;GPSAltitude=430.500000;"
                                        "GPSAltitudeRef=Below Sea Level";
    // A row marked "?" hands an empty position: the write clears the tags.
    QTest::addRow("empty position") << gps_pos() << false << false << QString();
}

void tst_gps_tag_maps::sync_tags()
{
    QFETCH(gps_pos, pos);
    QFETCH(bool, has_xmp_gps);
    QFETCH(bool, user_position);
    QFETCH(QString, expected_extra);

    exif_tag_map expected = tag_map(expected_extra);
    if (expected.remove("cleared")) {
        for (const QString &name : gps_tag_maps::user_position_cleared_tags())
            expected.insert(name, expected.value(name));
    }
    expected.insert("GPSLatitude#", pos.lat_numerical);
    expected.insert("GPSLatitudeRef", pos.lat_ref);
    expected.insert("GPSLongitude#", pos.lon_numerical);
    expected.insert("GPSLongitudeRef", pos.lon_ref);
    QCOMPARE(gps_tag_maps::sync_tags(pos, has_xmp_gps, user_position), expected);
}

void tst_gps_tag_maps::undo_tags_data()
{
    QTest::addColumn<QString>("grouped");
    QTest::addColumn<QString>("has_xmp_gps");
    QTest::addColumn<QString>("expected_set"); // all other of the 32 tags are empty

    QTest::addRow("no GPS at all") << "ExifIFD:DateTimeOriginal=2008:10:22"
                                   << "false" << QString();
    // The GPS group's own texts; Composite's (with its letter and rounding)
    // are not taken.
    QTest::addRow("EXIF GPS") << "GPS:GPSLatitude=43 deg 28' 2.81\";GPS:GPSLatitudeRef=North;"
                                 "GPS:GPSAltitude=260.5606383 m;GPS:GPSImgDirectionRef=Unknown ();"
                                 "Composite:GPSLatitude=43 deg 28' 2.81\" N;"
                                 "Composite:GPSAltitude=260.5 m Above Sea Level"
                              << "false"
                              << "GPSLatitude=43 deg 28' 2.81\";GPSLatitudeRef=North;"
                                 "GPSAltitude=260.5606383 m;GPSImgDirectionRef=Unknown ()";
    // GPS data of maker notes and QuickTime aren't EXIF tags of the file.
    QTest::addRow("maker note and QuickTime GPS")
        << "FLIR:GPSLatitude=34 deg 4' 31.53\" N;FLIR:GPSLongitudeRef=West;"
           "Keys:GPSCoordinates=32 deg 5' 34.44\" N, 34 deg 51' 43.20\" E;"
           "Composite:GPSLatitude=32 deg 5' 34.44\" N"
        << "false" << QString();
    QTest::addRow("XMP GPS, as the group read names it")
        << "GPS:GPSLatitude=;GPS:GPSAltitude=324.145 m;XMP-exif:GPSLatitude=48 deg 53' 19.41\" N;"
           "XMP-exif:GPSLongitude=21 deg 2' 35.70\" E;XMP-exif:GPSAltitudeRef=Above Sea Level"
        << "true"
        << "GPSAltitude=324.145 m;XMP:GPSLatitude=48 deg 53' 19.41\" N;XMP:GPSAltitude=;"
           "XMP:GPSLongitude=21 deg 2' 35.70\" E;XMP:GPSAltitudeRef=Above Sea Level";
    // Without the flag the three position tags aren't recorded for XMP.
    QTest::addRow("XMP flag false") << "XMP-exif:GPSLatitude=;XMP-exif:GPSMapDatum=WGS-84"
                                    << "false"
                                    << "XMP:GPSMapDatum=WGS-84";
    QTest::addRow("first XMP group wins")
        << "XMP-exif:GPSLatitude=1 deg 0' 0.00\" N;XMP-xxx:GPSLatitude=2 deg 0' 0.00\" N"
        << "true"
        << "XMP:GPSLatitude=1 deg 0' 0.00\" N;XMP:GPSLongitude=;XMP:GPSAltitude=";
    QTest::addRow("XMP-like group names that aren't XMP") << "XMPx:GPSSpeed=3;XMP-exif:NotGPS=1"
                                                          << "false" << QString();
}

void tst_gps_tag_maps::undo_tags()
{
    QFETCH(QString, grouped);
    QFETCH(QString, has_xmp_gps);
    QFETCH(QString, expected_set);

    const QString file = QStringLiteral("/photos/a.jpg");
    exif_cache cache;
    cache.group_tags.insert(file, tag_map(grouped));
    cache.values[file].insert("has_xmp_gps", has_xmp_gps);
    // The plain read holds Composite values under the same names; they must
    // not be the ones recorded.
    cache.tags[file] = tag_map("GPSLatitude=99 deg 0' 0.00\" N;GPSSpeed=12");
    cache.group_tags.insert("/photos/other.jpg", {{"GPS:GPSSpeed", "7"}});

    exif_tag_map expected;
    for (const QString &name : gps_tag_maps::gps_tags())
        expected.insert(name, QString());
    expected.insert(tag_map(expected_set));
    QCOMPARE(gps_tag_maps::build_undo_tags(cache, file), expected);
}

void tst_gps_tag_maps::exact_undo_tags_data()
{
    QTest::addColumn<QString>("read");         // -n -G1 read
    QTest::addColumn<QString>("expected_set"); // besides the deletions below
    QTest::addColumn<QString>("not_deleted");  // deletions that must not stand

    QTest::addRow("numbers come back with their group and '#'")
        << "GPS:GPSLatitude=43.4674483333333;GPS:GPSLatitudeRef=N;GPS:GPSVersionID=2 2 0 0"
        << "GPS:GPSLatitude#=43.4674483333333;GPS:GPSLatitudeRef#=N;GPS:GPSVersionID#=2 2 0 0"
        << "";
    // Nikon D5000: an empty EXIF latitude (0/0) and the position in XMP.
    QTest::addRow("empty number deleted, XMP position kept")
        << "GPS:GPSLatitude=;GPS:GPSLatitudeRef=N;XMP-exif:GPSLatitude=48.8887263666667"
        << "GPS:GPSLatitudeRef#=N;XMP-exif:GPSLatitude#=48.8887263666667"
        << "XMP:GPSLatitude#";
    QTest::addRow("empty texts stay empty")
        << "GPS:GPSMapDatum=;GPS:GPSLatitudeRef=;GPS:GPSAltitudeRef=;XMP-exif:GPSSatellites="
        << "GPS:GPSMapDatum#^=;GPS:GPSLatitudeRef#^=;XMP-exif:GPSSatellites#^="
        << "";
    QTest::addRow("other groups and tags aren't written")
        << "Keys:GPSCoordinates=32.09 34.86;Composite:GPSLatitude=1;XMPx:GPSSpeed=3;"
           "File:FileSize=10"
        << ""
        << "";
}

void tst_gps_tag_maps::exact_undo_tags()
{
    QFETCH(QString, read);
    QFETCH(QString, expected_set);
    QFETCH(QString, not_deleted);

    exif_tag_map expected;
    for (const QString &name : gps_tag_maps::gps_tags())
        expected.insert("GPS:" + name + '#', QString());
    for (const QString &key : gps_tag_maps::xmp_gps_tags())
        expected.insert(key + '#', QString());
    for (const QString &key : not_deleted.split(';', Qt::SkipEmptyParts))
        expected.remove(key);
    for (const QString &key : tag_map(expected_set).keys())
        expected.remove(QString(key).remove('^'));
    expected.insert(tag_map(expected_set));
    QCOMPARE(gps_tag_maps::exact_undo_tags(tag_map(read)), expected);
}

void tst_gps_tag_maps::writable_data()
{
    QTest::addColumn<gps_pos>("pos");
    QTest::addColumn<bool>("writable");

    QTest::addRow("plain decimals") << position("48.137", "N", "11.575", "E") << true;
    QTest::addRow("south west") << position("-0.3713", "S", "-85.48", "W") << true;
    QTest::addRow("limits") << position("90", "N", "-180.000", "W") << true;
    QTest::addRow("zero with either letter") << position("-0.000000", "N", "0", "W") << true;
    QTest::addRow("exponent in range") << position("1e1", "N", ".5", "E") << true;
    QTest::addRow("empty position clears") << gps_pos() << true;

    QTest::addRow("latitude beyond 90") << position("-91", "S", "10", "E") << false;
    QTest::addRow("latitude just beyond 90") << position("90.0001", "N", "10", "E") << false;
    QTest::addRow("longitude beyond 180") << position("10", "N", "180.5", "E") << false;
    QTest::addRow("huge exponent") << position("1e30", "N", "10", "E") << false;
    QTest::addRow("word") << position("abc", "N", "10", "E") << false;
    QTest::addRow("nan") << position("nan", "N", "10", "E") << false;
    QTest::addRow("inf") << position("10", "N", "inf", "E") << false;
    QTest::addRow("decimal comma") << position("46,5", "N", "10", "E") << false;
    QTest::addRow("degrees and minutes") << position("19°10'41.5\"S", "S", "10", "E") << false;
    QTest::addRow("hex") << position("0x10", "N", "10", "E") << false;
    QTest::addRow("trailing junk") << position("12.5abc", "N", "10", "E") << false;
    QTest::addRow("line break") << position("12.5\n-all=", "N", "10", "E") << false;
    QTest::addRow("one half empty") << position("12.5", "N", "", "") << false;
    QTest::addRow("letters only") << position("", "N", "", "E") << false;
    QTest::addRow("letter against sign") << position("-12.5", "N", "10", "E") << false;
    QTest::addRow("unknown letter") << position("12.5", "N", "10", "X") << false;
    QTest::addRow("word letter") << position("12.5", "North", "10", "E") << false;
    gps_pos too_high = position("1", "N", "2", "E");
    too_high.altitude = "100000.1";
    QTest::addRow("altitude beyond 100 km") << too_high << false;
}

void tst_gps_tag_maps::writable()
{
    QFETCH(gps_pos, pos);
    QFETCH(bool, writable);
    QString why;
    QCOMPARE(gps_tag_maps::is_writable(pos, &why), writable);
    QCOMPARE(why.isEmpty(), writable);
}

QTEST_GUILESS_MAIN(tst_gps_tag_maps)
#include "tst_gps_tag_maps.moc"
