#include "model/track_loader.h"

#include <KZip>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// Track files of every format through the real GPSBabel: the corpus's device
// files, tracks that GPSBabel itself writes from a known GPX, and broken files.
class tst_track_loader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void corpus_data();
    void corpus();

    void round_trip_data();
    void round_trip();

    void bad_input_data();
    void bad_input();

private:
    QString write(const QString &name, const QByteArray &content);

    QTemporaryDir dir_;
    QString temp_; // TMPDIR of the code under test; empty after every read
};

namespace {

const QString corpus_dir = QStringLiteral(VN_CORPUS_DIR "/");

bool gpsbabel(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("gpsbabel"), arguments);
    return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

// Five points across both hemispheres, one without elevation, one with
// milliseconds.
const QByteArray known_gpx =
    "<?xml version=\"1.0\"?>\n<gpx version=\"1.1\" creator=\"t\" "
    "xmlns=\"http://www.topografix.com/GPX/1/1\"><trk><name>Known</name><trkseg>\n"
    "<trkpt lat=\"48.100000\" lon=\"11.500000\"><ele>500.5</ele>"
    "<time>2021-06-01T10:00:00Z</time><fix>3d</fix><sat>8</sat></trkpt>\n"
    "<trkpt lat=\"48.101000\" lon=\"-11.501000\"><ele>505.5</ele>"
    "<time>2021-06-01T10:00:10Z</time><fix>3d</fix><sat>8</sat></trkpt>\n"
    "<trkpt lat=\"-48.102000\" lon=\"11.502000\">"
    "<time>2021-06-01T10:00:20.500Z</time><fix>3d</fix><sat>8</sat></trkpt>\n"
    "<trkpt lat=\"-48.103000\" lon=\"-11.503000\"><ele>-12.0</ele>"
    "<time>2021-06-01T10:00:40Z</time><fix>3d</fix><sat>8</sat></trkpt>\n"
    "<trkpt lat=\"0.000500\" lon=\"179.900000\"><ele>0.0</ele>"
    "<time>2021-06-01T23:59:59Z</time><fix>3d</fix><sat>8</sat></trkpt>\n"
    "</trkseg></trk></gpx>\n";

} // namespace

void tst_track_loader::initTestCase()
{
    QVERIFY(dir_.isValid());
    temp_ = dir_.filePath(QStringLiteral("tmp"));
    QVERIFY(QDir().mkpath(temp_));
    qputenv("TMPDIR", QFile::encodeName(temp_));
    QCOMPARE(QDir::tempPath(), temp_);
    QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("gpsbabel")).isEmpty(),
             "the tests need the real GPSBabel");
}

void tst_track_loader::cleanup()
{
    QCOMPARE(QDir(temp_).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             QStringList());
}

QString tst_track_loader::write(const QString &name, const QByteArray &content)
{
    QFile file(dir_.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return QString();
    return file.fileName();
}

void tst_track_loader::corpus_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("first"); // time of the first timed point
    QTest::addColumn<QString>("last");  // and of the last, in file order
    QTest::addColumn<QString>("error"); // start of the reason

    // As MANIFEST.tsv gives them, but for the IGC's first time: the
    // manifest's is the task's declaration, a route, which isn't read.
    QTest::addRow("plt") << "tracks/20070813_short.plt" << 44 << "2007-08-13T07:52:19.328Z"
                         << "2007-08-13T07:57:01.331Z"
                         << "";
    QTest::addRow("igc") << "tracks/27GLQKF3.igc" << 2140 << "2022-07-16T19:41:31.000Z"
                         << "2022-07-16T21:11:20.000Z"
                         << "";
    QTest::addRow("nmea without dates")
        << "tracks/adddate.nmea" << 0 << ""
        << ""
        << "GPSBabel read no track point from it.\nnmea: No date found within track";
    QTest::addRow("tcx") << "tracks/bike.tcx" << 1812 << "2013-04-30T19:23:57.000Z"
                         << "2013-04-30T19:54:11.000Z"
                         << "";
    QTest::addRow("fit") << "tracks/garmin-edge-800.fit" << 1286 << "2012-04-12T12:53:58.000Z"
                         << "2012-04-12T13:54:19.000Z"
                         << "";
    QTest::addRow("fit 2") << "tracks/garmin-forerunner-10.fit" << 514 << "2013-06-13T03:56:35.000Z"
                           << "2013-06-13T04:24:51.000Z"
                           << "";
    QTest::addRow("kml gx:Track") << "tracks/google_ext.kml" << 451 << "2014-05-25T18:30:59.000Z"
                                  << "2014-05-25T20:13:09.000Z"
                                  << "";
    QTest::addRow("tcx 2") << "tracks/kona2013.tcx" << 5 << "2013-10-12T18:17:26.000Z"
                           << "2013-10-12T18:17:30.000Z"
                           << "";
    QTest::addRow("fit of the other byte order")
        << "tracks/lezyne_super_gps-garmin_fit-sample-bad-endian.fit" << 0 << ""
        << ""
        << "fit: File CRC mismatch in file " +
               QDir::cleanPath(corpus_dir +
                               "tracks/lezyne_super_gps-garmin_fit-sample-bad-endian.fit");
    QTest::addRow("nmea") << "tracks/nmeadatetime.nmea" << 19 << "2019-10-23T22:25:07.000Z"
                          << "2019-10-23T00:00:00.000Z"
                          << "";
    QTest::addRow("kml opentracks") << "tracks/opentracks.kml" << 2 << "2021-03-02T09:30:41.890Z"
                                    << "2021-03-02T12:34:53.912Z"
                                    << "";
    QTest::addRow("kml without times")
        << "tracks/segmented_tracks.kml" << 0 << ""
        << ""
        << "None of its track points has a time. KML keeps times only in tracks written as "
           "gx:Track.";
    QTest::addRow("gpx") << "gpx/dg100.gpx" << 12027 << "2020-02-14T18:04:30.000Z"
                         << "2020-05-08T15:34:22.000Z"
                         << "";
    QTest::addRow("gpx, waypoints as a track") << "gpx/cerknicko-jezero.gpx" << 303 << ""
                                               << ""
                                               << "";
    QTest::addRow("gpx route only") << "gpx/route.gpx" << 0 << ""
                                    << ""
                                    << "It holds no track point.";
    QTest::addRow("gpx, one time for all")
        << "gpx/Mojstrovka.gpx" << 0 << ""
        << ""
        << "All its track points have the same time, 1901-12-13T20:45:52.207Z: the clock "
           "didn't run.";
}

void tst_track_loader::corpus()
{
    QFETCH(QString, file);
    QFETCH(int, points);
    QFETCH(QString, first);
    QFETCH(QString, last);
    QFETCH(QString, error);

    QString why;
    const QList<gpx_track> tracks = track_loader::read(corpus_dir + file, &why);
    QVERIFY2(error.isEmpty() ? why.isEmpty() : why.startsWith(error), qPrintable(why));
    QStringList times;
    int count = 0;
    for (const gpx_track &track : tracks) {
        count += track.points.size();
        for (const gpx_point &point : track.points) {
            if (point.time.isValid())
                times << point.time.toUTC().toString(Qt::ISODateWithMs);
        }
    }
    QCOMPARE(count, points);
    if (!first.isEmpty())
        QCOMPARE(times.first() + ' ' + times.last(), first + ' ' + last);
}

void tst_track_loader::round_trip_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("format"); // GPSBabel's writer
    QTest::addColumn<double>("seconds"); // the format's time resolution
    QTest::addColumn<double>("metres");  // and its elevation's; < 0 none kept

    QTest::addRow("kml") << "kml"
                         << "kml,track=1,lines=0,points=0" << 0.001 << 0.001;
    QTest::addRow("kmz") << "kmz"
                         << "kml,track=1,lines=0,points=0" << 0.001 << 0.001;
    QTest::addRow("fit") << "fit"
                         << "garmin_fit" << 1.0 << 0.2;
    QTest::addRow("tcx") << "tcx"
                         << "gtrnctr" << 0.001 << 0.001;
    QTest::addRow("igc") << "igc"
                         << "igc" << 1.0 << 1.0;
    QTest::addRow("csv") << "csv"
                         << "unicsv" << 0.001 << 0.001;
    QTest::addRow("plt") << "plt"
                         << "ozi" << 1.0 << 0.1;
    // GPSBabel writes RMC before GGA: read plainly, every position would
    // come one fix late.
    QTest::addRow("nmea, RMC first") << "nmea"
                                     << "nmea" << 0.001 << 0.001;
    QTest::addRow("nmea in a .log, GGA first") << "log"
                                               << "nmea" << 0.001 << 0.001;
}

// GPSBabel writes the known track in the format; read back, every point
// has its own position, time and elevation.
void tst_track_loader::round_trip()
{
    QFETCH(QString, suffix);
    QFETCH(QString, format);
    QFETCH(double, seconds);
    QFETCH(double, metres);

    const QString source = write(QStringLiteral("known.gpx"), known_gpx);
    const QString file = dir_.filePath("trip." + suffix);
    const QString written = suffix == QLatin1String("kmz") ? dir_.filePath("doc.kml") : file;
    QVERIFY(gpsbabel({"-t", "-i", "gpx", "-f", source, "-o", format, "-F", written}));
    if (suffix == QLatin1String("kmz")) {
        KZip zip(file);
        QVERIFY(zip.open(QIODevice::WriteOnly));
        QVERIFY(zip.writeFile(QStringLiteral("images/unused.kml"), QByteArray("<kml/>")));
        QVERIFY(zip.addLocalFile(written, QStringLiteral("doc.kml")));
        QVERIFY(zip.close());
    } else if (suffix == QLatin1String("log")) {
        QFile nmea(file);
        QVERIFY(nmea.open(QIODevice::ReadOnly));
        QList<QByteArray> lines;
        for (const QByteArray &line : nmea.readAll().split('\n')) {
            if (!line.startsWith("$GPGSA"))
                lines << line;
        }
        nmea.close();
        for (int i = 0; i + 1 < lines.size(); i += 2)
            lines.swapItemsAt(i, i + 1);
        QVERIFY(write("trip.log", lines.join('\n')) == file);
    }

    QString why;
    const QList<gpx_track> tracks = track_loader::read(file, &why);
    QCOMPARE(why, QString());
    QCOMPARE(tracks.size(), 1);
    const QList<gpx_point> &points = tracks.first().points;
    const QList<gpx_point> known = track_loader::read(source, &why).first().points;
    QCOMPARE(points.size(), known.size());
    for (int i = 0; i < known.size(); ++i) {
        const gpx_point &p = points.at(i);
        const gpx_point &k = known.at(i);
        const QString at = QStringLiteral("point %1: %2 %3 %4 %5")
                               .arg(i)
                               .arg(p.lat, p.lon, p.time.toString(Qt::ISODateWithMs), p.ele);
        QVERIFY2(qAbs(p.lat.toDouble() - k.lat.toDouble()) < 1e-6, qPrintable(at));
        QVERIFY2(qAbs(p.lon.toDouble() - k.lon.toDouble()) < 1e-6, qPrintable(at));
        QVERIFY2(qAbs(p.time.msecsTo(k.time)) < seconds * 1000, qPrintable(at));
        if (metres >= 0 && !k.ele.isEmpty() && k.ele != QLatin1String("0.0"))
            QVERIFY2(qAbs(p.ele.toDouble() - k.ele.toDouble()) < metres, qPrintable(at));
    }
}

void tst_track_loader::bad_input_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content"); // null: a copy of the corpus file in `error`
    QTest::addColumn<QString>("error");      // start of the reason; empty: it loads

    QFile fit(corpus_dir + "tracks/garmin-edge-800.fit");
    QFile kml(corpus_dir + "tracks/opentracks.kml");
    QVERIFY(fit.open(QIODevice::ReadOnly) && kml.open(QIODevice::ReadOnly));
    const QByteArray fit_bytes = fit.readAll();
    QByteArray binary(3000, '\0');
    for (int i = 0; i < binary.size(); ++i)
        binary[i] = char((i * 37 + 11) & 0xff);
    const QByteArray point = "<trkpt lat=\"1\" lon=\"2\"><time>2020-01-01T00:00:00Z</time></trkpt>";

    QTest::addRow("truncated fit") << "t.fit" << fit_bytes.left(3000)
                                   << "fit: File CRC mismatch in file " + dir_.filePath("t.fit");
    QTest::addRow("binary kml")
        << "b.kml" << binary << "XML Reader:Read error: Encountered incorrectly encoded content.";
    QTest::addRow("binary igc") << "b.igc" << binary << "IGC bad input record: '";
    QTest::addRow("truncated tcx")
        << "t.tcx" << QByteArray("<?xml version=\"1.0\"?><Training") << "XML Reader:Read error: ";
    QTest::addRow("binary plt") << "b.plt" << binary << "OZI: Unsupported datum";
    QTest::addRow("garbage nmea") << "g.nmea" << QByteArray("no sentences\n")
                                  << "GPSBabel read no track point from it.";
    QTest::addRow("empty csv") << "e.csv" << QByteArray("") << "GPSBabel read no track point";
    QTest::addRow("prose in a .txt")
        << "p.txt" << QByteArray("hello\n") << "This isn't a kind of track file";
    QTest::addRow("kmz that isn't a zip") << "n.kmz" << binary << "The KMZ archive can't be read: ";
    QTest::addRow("missing file") << "none.fit" << QByteArray() << "The file can't be opened: ";
    QTest::addRow("gpx without times")
        << "u.gpx"
        << QByteArray("<gpx><trk><trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg></trk></gpx>")
        << "None of its track points has a time.";
    QTest::addRow("gpx with times all equal")
        << "s.gpx"
        << "<gpx><trk><trkseg>" + point + point + "</trkseg></trk></gpx>"
        << "All its track points have the same time, 2020-01-01T00:00:00.000Z";
    QTest::addRow("named like an option") << "-x.kml" << kml.readAll() << "";
    QTest::addRow("blanks and umlauts") << "Tour über den Berg.fit" << fit_bytes << "";
}

// A clear reason and no track, or the track where only the name is odd;
// either way no temporary file stays (see cleanup).
void tst_track_loader::bad_input()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, error);

    const QString file = content.isNull() ? dir_.filePath(name) : write(name, content);
    QVERIFY(!file.isEmpty());
    // By the bare name, as a file beside the program would be given.
    QVERIFY(QDir::setCurrent(dir_.path()));
    QString why;
    const QList<gpx_track> tracks = track_loader::read(name, &why);
    QVERIFY2(error.isEmpty() ? why.isEmpty() : why.startsWith(error), qPrintable(why));
    QCOMPARE(tracks.isEmpty(), !error.isEmpty());
    if (error.isEmpty())
        QCOMPARE(tracks.first().points.size(), name.endsWith(".kml") ? 2 : 1286);
}

QTEST_GUILESS_MAIN(tst_track_loader)
#include "tst_track_loader.moc"
