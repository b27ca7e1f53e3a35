#include "corpus_photo.h"
#include "model/exif_cache.h"
#include "model/gpx_parser.h"
#include "model/table_data_model.h"

#include <vn/exiftool.h>

#include <QProcess>
#include <QtTest>

Q_DECLARE_METATYPE(camera_clock)

// Photo times from real files to chosen track points, against the real
// ExifTool and a corpus track. Registered under UTC and America/Los_Angeles:
// with a zone recorded or a camera zone set, the computer's zone must not
// matter.
class tst_camera_clock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QFileInfo::exists(QCoreApplication::applicationDirPath() + "/exiftool"));
        const gpx_parser parser(QStringLiteral(VN_CORPUS_DIR "/gpx/around-visnjan-with-car.gpx"));
        QCOMPARE(parser.tracks.size(), 1);
        track_ = parser.tracks.first();
    }

    void cleanupTestCase() { vn::exiftool::shutdown(); }

    // The track runs from 06:15:50Z to 06:24:24Z on 2020-12-18, a point every
    // few seconds; the expected point is the one at the expected instant.
    void track_point_data()
    {
        QTest::addColumn<QString>("photo");
        QTest::addColumn<QStringList>("tags"); // written on the copy with ExifTool
        QTest::addColumn<camera_clock>("clock");
        QTest::addColumn<QString>("utc");
        QTest::addColumn<QString>("point");

        QTest::addRow("recorded offset")
            << "DSCN0010.jpg"
            << QStringList{"-DateTimeOriginal=2020:12:18 15:17:05", "-OffsetTimeOriginal=+09:00"}
            << camera_clock{"America/New_York", 0} << "2020-12-18T06:17:05Z"
            << "45.2725250088, 13.7124552112";
        QTest::addRow("camera zone and a clock 3 minutes fast")
            << "Canon_40D.jpg" << QStringList{"-DateTimeOriginal=2020:12:18 07:25:11"}
            << camera_clock{"Europe/Zagreb", -180} << "2020-12-18T06:22:11Z"
            << "45.2745928243, 13.7170127872";
        // tst_exif_cache checks the warning for the garbage offset.
        QTest::addRow("garbage offset, fixed camera zone")
            << "Nikon D5000.jpg"
            << QStringList{"-DateTimeOriginal=2020:12:18 07:16:00", "-OffsetTimeOriginal=+99:99"}
            << camera_clock{"UTC+01:00", 0} << "2020-12-18T06:16:00Z"
            << "45.2734133229, 13.7141885050";
    }

    void track_point()
    {
        QFETCH(QString, photo);
        QFETCH(QStringList, tags);
        QFETCH(camera_clock, clock);
        QFETCH(QString, utc);
        QFETCH(QString, point);

        const QString file = copy_corpus_photo(dir_, photo, QStringLiteral("photo.jpg"));
        QVERIFY(!file.isEmpty());
        QProcess tool;
        tool.start(QCoreApplication::applicationDirPath() + QStringLiteral("/exiftool"),
                   QStringList{"-overwrite_original", "-gps:all=", "-xmp:all="} + tags +
                       QStringList{file});
        QVERIFY(tool.waitForFinished(30000));
        QCOMPARE(tool.exitCode(), 0);

        table_data_model model;
        model.add_file(file);
        const QString camera = exif_cache::instance()->values.value(file).value("camera");
        QVERIFY(!camera.isEmpty());
        model.set_gpx_track(track_);
        model.gps_max_time_difference(1, 1);
        model.gps_sync_order_changed(int(sync_mode::sync_gpx));
        model.set_camera_clock(camera, clock);

        QCOMPARE(model.recording_datetime(file).toUTC(), QDateTime::fromString(utc, Qt::ISODate));
        const cache_entry entry = model.cache().value(file);
        QCOMPARE(entry.indicator, QStringLiteral("G"));
        QCOMPARE(entry.source_text, point);
    }

private:
    QTemporaryDir dir_;
    gpx_track track_;
};

QTEST_GUILESS_MAIN(tst_camera_clock)
#include "tst_camera_clock.moc"
