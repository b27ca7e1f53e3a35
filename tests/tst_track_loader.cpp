#include "model/track_loader.h"

#include <KZip>

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// Track files of every format through the real GPSBabel: device files, broken
// files, and a known track that GPSBabel writes. No read leaves a file behind.
class tst_track_loader : public QObject
{
    Q_OBJECT
    QTemporaryDir dir_;
    const QString temp_ = dir_.filePath("tmp");

private slots:
    void initTestCase();
    void cleanup();
    void read_data();
    void read();
    void round_trip_data();
    void round_trip();
    void converter_faults_data();
    void converter_faults();
};

namespace {

const QString corpus = QDir::cleanPath(VN_CORPUS_DIR) + '/';

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray read_all(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList outline(const QList<gpx_track> &tracks) // count, first and last time
{
    QStringList times;
    for (const gpx_track &track : tracks) {
        for (const gpx_point &point : track.points)
            times << point.time.toUTC().toString(Qt::ISODateWithMs);
    }
    return {QString::number(times.size()), times.value(0), times.value(times.size() - 1)};
}

} // namespace

void tst_track_loader::initTestCase()
{
    QVERIFY(QDir().mkpath(temp_));
    qputenv("TMPDIR", QFile::encodeName(temp_));
    QCOMPARE(QDir::tempPath(), temp_);
    QVERIFY(QDir::setCurrent(dir_.path())); // made files are read by bare name
}

void tst_track_loader::cleanup()
{
    QVERIFY(QDir(temp_).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden));
}

void tst_track_loader::read_data()
{
    QTest::addColumn<QString>("file"); // in the corpus, or made here from `content`
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("expected"); // outline, or "0" and the reason's start

    // Every row of the corpus manifest, but for the IGC's first time: the
    // manifest's is the task declaration's, a route.
    const QMap<QString, QString> errors = {
        {"tracks/adddate.nmea", "GPSBabel read no track point from it.\nnmea: No date found"},
        {"tracks/lezyne_super_gps-garmin_fit-sample-bad-endian.fit",
         "fit: File CRC mismatch in file " + corpus + "tracks/lezyne_super_gps-"},
        {"tracks/segmented_tracks.kml", "None of its track points has a time. KML keeps times"}};
    const QStringList manifest = QString(read_all(corpus + "tracks/MANIFEST.tsv")).split('\n');
    for (const QString &line : manifest.mid(1, manifest.size() - 2)) {
        const QStringList cells = line.split('\t');
        QStringList expected = QStringList({cells[4], cells[5], cells[6]})
                                   .replaceInStrings(QRegularExpression(":(\\d\\d)Z$"), ":\\1.000Z")
                                   .replaceInStrings("2022-07-03T19:52:42", "2022-07-16T19:41:31");
        if (errors.contains(cells[0]))
            expected = QStringList({"0", errors[cells[0]]});
        QTest::newRow(qPrintable(cells[0])) << corpus + cells[0] << QByteArray() << expected;
    }
    QTest::newRow("gpx, one time for all")
        << corpus + "gpx/Mojstrovka.gpx" << QByteArray()
        << QStringList({"0", "All its track points have the same time, 1901-12-13T20:45:52.207Z"});

    const QByteArray fit = read_all(corpus + "tracks/garmin-edge-800.fit");
    const QByteArray binary = QByteArray::fromHex("89504e470d0a1a0a0000fffe").repeated(250);
    auto made = [](const char *file, const QByteArray &content, const QStringList &expected) {
        QTest::newRow(file) << QString(file) << content << expected;
    };
    made("b.kml", binary, {"0", "XML Reader:Read error: Encountered incorrectly encoded"});
    made("b.igc", binary, {"0", "IGC bad input record: '"});
    made("b.plt", binary, {"0", "OZI: Unsupported datum"});
    made("p.txt", "hello\n", {"0", "This isn't a kind of track file that Loxmere reads"});
    made("n.kmz", binary, {"0", "The KMZ archive can't be read: "});
    made("-x.kml", read_all(corpus + "tracks/opentracks.kml"),
         {"2", "2021-03-02T09:30:41.890Z", "2021-03-02T12:34:53.912Z"});
    made("Tour über den Berg.fit", fit,
         {"1286", "2012-04-12T12:53:58.000Z", "2012-04-12T13:54:19.000Z"});
}

// The points, or a clear reason and no track.
void tst_track_loader::read()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(QStringList, expected);

    QVERIFY(content.isNull() || write(file, content));
    QString why;
    const QStringList got = outline(track_loader::read(file, &why));
    if (expected.first() == QLatin1String("0"))
        QVERIFY2(got.first() == "0" && why.startsWith(expected.last()), qPrintable(why));
    else
        QCOMPARE(got + QStringList(why), expected + QStringList(QString()));
}

void tst_track_loader::round_trip_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("format"); // GPSBabel's writer

    // GPSBabel writes NMEA with RMC before GGA; read plainly, each position
    // and elevation would come one fix late. The .log gets GGA first.
    for (const char *row :
         {"kml kml,track=1,lines=0,points=0", "kmz kml,track=1,lines=0,points=0", "fit garmin_fit",
          "tcx gtrnctr", "igc igc", "csv unicsv", "plt ozi", "nmea nmea", "log nmea"})
        QTest::newRow(row) << QString(row).section(' ', 0, 0) << QString(row).section(' ', 1);
}

// GPSBabel's faults that the real program won't show on demand, from
// stand-ins: one reason each, and nothing left behind.
void tst_track_loader::converter_faults_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("expected");

    QTest::addRow("hangs") << QByteArray("exec sleep 30")
                           << "GPSBabel did not finish within 0.3 seconds.";
    // Binary input quoted once per line of it: a few readable lines.
    QTest::addRow("long message")
        << QByteArray(
               "for i in 1 2 3 4 5 6 7 8; do printf 'bad \\001 %s\\n\\n' $i >&2; done; exit 1")
        << "bad ? 1\nbad ? 2\nbad ? 3\nbad ? 4\nbad ? 5\nbad ? 6\n...";
    QTest::addRow("not installed") << QByteArray()
                                   << "GPSBabel, which reads every track format "
                                      "but GPX, isn't installed.";
}

void tst_track_loader::converter_faults()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, expected);

    const QString program = dir_.filePath("fake_gpsbabel");
    QVERIFY(write(program, "#!/bin/sh\n" + script) && write("fake.kml", "<kml/>"));
    QVERIFY(QFile::setPermissions(program, script.isEmpty() ? QFile::ReadOwner : QFile::ExeOwner));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not found|ran longer|failed on"));
    QString why;
    QVERIFY(track_loader::read("fake.kml", &why, track_converter(program, 300)).isEmpty());
    QCOMPARE(why, expected);
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner));
}

// A known track (both hemispheres, midnight, milliseconds, a point without
// elevation) read back from each format: each point keeps its own position,
// time and elevation, as far as the format resolves them (FIT and IGC keep
// whole seconds, PLT fractions of a day, FIT 0.2 m and IGC 1 m).
void tst_track_loader::round_trip()
{
    QFETCH(QString, suffix);
    QFETCH(QString, format);

    QByteArray gpx =
        "<gpx version=\"1.1\" xmlns=\"http://www.topografix.com/GPX/1/1\"><trk><trkseg>";
    for (const char *p : {"48.1\" lon=\"11.5\"><ele>500.5</ele><time>2021-06-01T10:00:00",
                          "48.101\" lon=\"-11.501\"><ele>505.5</ele><time>2021-06-01T10:00:10",
                          "-48.102\" lon=\"11.502\"><time>2021-06-01T10:00:20.500",
                          "-48.103\" lon=\"-11.503\"><ele>-12.0</ele><time>2021-06-01T10:00:40",
                          "0.0005\" lon=\"179.9\"><ele>0.0</ele><time>2021-06-01T23:59:59"})
        gpx += QByteArray("<trkpt lat=\"") + p + "Z</time><fix>3d</fix><sat>8</sat></trkpt>\n";
    QVERIFY(write("known.gpx", gpx + "</trkseg></trk></gpx>"));
    const QString file = dir_.filePath("trip." + suffix);
    const QString written = suffix == "kmz" ? dir_.filePath("doc.kml") : file;
    QProcess babel;
    babel.start("gpsbabel", {"-t", "-i", "gpx", "-f", "known.gpx", "-o", format, "-F", written});
    QVERIFY(babel.waitForFinished(30000) && babel.exitCode() == 0);
    KZip zip(file);
    if (suffix == "kmz") {
        QVERIFY(zip.open(QIODevice::WriteOnly) && zip.writeFile("images/unused.kml", "<kml/>"));
        QVERIFY(zip.addLocalFile(written, "doc.kml") && zip.close());
    } else if (suffix == "log") {
        QList<QByteArray> lines = read_all(file).split('\n');
        for (int i = 0; i + 1 < lines.size(); i += 3) // RMC, GGA, GSA: GGA first
            lines.swapItemsAt(i, i + 1);
        QVERIFY(write(file, lines.join('\n')));
    }

    QString why;
    const QList<gpx_track> tracks = track_loader::read(file, &why);
    const QList<gpx_point> known = track_loader::read("known.gpx", &why).first().points;
    QCOMPARE(tracks.size(), 1);
    QCOMPARE(tracks.first().points.size(), known.size());
    for (int i = 0; i < known.size(); ++i) {
        const gpx_point &p = tracks.first().points.at(i);
        const gpx_point &k = known.at(i);
        const QByteArray at = (p.lat + ' ' + p.lon + ' ' + p.ele).toUtf8();
        QVERIFY2(qAbs(p.lat.toDouble() - k.lat.toDouble()) < 1e-6, at);
        QVERIFY2(qAbs(p.lon.toDouble() - k.lon.toDouble()) < 1e-6, at);
        QVERIFY2(qAbs(p.time.msecsTo(k.time)) < 1000, at);
        QVERIFY2(k.ele.toDouble() == 0 || qAbs(p.ele.toDouble() - k.ele.toDouble()) <= 1, at);
    }
}

QTEST_GUILESS_MAIN(tst_track_loader)
#include "tst_track_loader.moc"
