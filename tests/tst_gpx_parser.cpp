#include "model/gpx_parser.h"
#include "stream_capture.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>
#include <QTranslator>

class tst_gpx_parser : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void corpus_file_data();
    void corpus_file();

    void rules_data();
    void rules();

    void point_times_data();
    void point_times();

    void point_values_data();
    void point_values();

    void unreadable_data();
    void unreadable();

    void waypoints_name_translated();

private:
    QString write_file(const QString &name, const QByteArray &content);

    QTemporaryDir dir_;
};

namespace {

QString corpus(const QString &name)
{
    return QStringLiteral(VN_CORPUS_DIR "/gpx/") + name;
}

QByteArray gpx(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<gpx version=\"1.1\" creator=\"test\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n" +
           body + "\n</gpx>\n";
}

// "name:lat,lat,...;name:..." with each point's lat text: names, order and
// segment joins in one string.
QString outline(const QList<gpx_track> &tracks)
{
    QStringList parts;
    for (const gpx_track &track : tracks) {
        QStringList lats;
        for (const gpx_point &point : track.points)
            lats << point.lat + QLatin1Char('/') + point.lon;
        parts << track.name + QLatin1Char(':') + lats.join(QLatin1Char(','));
    }
    return parts.join(QLatin1Char(';'));
}

} // namespace

void tst_gpx_parser::initTestCase()
{
    QVERIFY(dir_.isValid());
    QVERIFY(QFileInfo::exists(corpus(QStringLiteral("dg100.gpx"))));
}

QString tst_gpx_parser::write_file(const QString &name, const QByteArray &content)
{
    const QString path = dir_.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return QString();
    return path;
}

void tst_gpx_parser::corpus_file_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("track_count");    // trk elements, plus one for any waypoints
    QTest::addColumn<int>("track_points");   // all trkpt, segments joined
    QTest::addColumn<int>("untimed_points"); // trkpt without a time
    QTest::addColumn<int>("waypoints");
    QTest::addColumn<QString>("printed_line"); // one line the file must print, or empty
    QTest::addColumn<QString>("times");        // first and last track time, ISO text

    QTest::addRow("single track") << "around-visnjan-with-car.gpx" << 1 << 104 << 0 << 0 << ""
                                  << "2020-12-18T06:15:50Z 2020-12-18T06:24:24Z";
    QTest::addRow("named tracks and waypoints")
        << "cerknicko-jezero.gpx" << 9 << 296 << 0 << 7 << "Track is named ACTIVE LOG #2"
        << "";
    QTest::addRow("many segments") << "tracks.gpx" << 3 << 1549 << 0 << 0 << ""
                                   << "";
    QTest::addRow("waypoints only") << "waypoints.gpx" << 1 << 0 << 0 << 18 << ""
                                    << "";
    QTest::addRow("route only") << "route.gpx" << 0 << 0 << 0 << 0 << "Unknown element found: rte"
                                << "";
    QTest::addRow("mixed") << "gdal.gpx" << 4 << 4 << 4 << 2 << "Unknown element found: rte"
                           << "";
    QTest::addRow("offsets with milliseconds")
        << "track-with-less-sec-time.gpx" << 1 << 2 << 0 << 0 << ""
        << "2015-12-11T15:43:13+01:00 2015-12-11T15:43:13.994+01:00";
    QTest::addRow("untimed points") << "korita-zbevnica.gpx" << 5 << 871 << 358 << 2 << ""
                                    << "";
    QTest::addRow("extensions") << "garmin_with_extensions.gpx" << 1 << 3540 << 0 << 0 << ""
                                << "";
    QTest::addRow("large, three months") << "dg100.gpx" << 1 << 12027 << 0 << 0 << ""
                                         << "2020-02-14T18:04:30Z 2020-05-08T15:34:22Z";
    QTest::addRow("1901, seven fraction digits")
        << "Mojstrovka.gpx" << 1 << 184 << 0 << 0 << ""
        << "1901-12-13T20:45:52.207Z 1901-12-13T20:45:52.207Z";
    QTest::addRow("no zone is local time") << "fitwrite-track.gpx" << 2 << 64 << 12 << 12 << ""
                                           << "2002-05-25T17:06:21.250 2002-05-25T18:52:56.980";
    QTest::addRow("latin-1 declaration") << "iso8859-1encoded.gpx" << 1 << 0 << 0 << 8 << ""
                                         << "";
    QTest::addRow("byte order mark") << "unicode_with_bom.gpx" << 1 << 0 << 0 << 1 << ""
                                     << "";
    QTest::addRow("comments in a segment")
        << "gpx-with-node-with-comments.gpx" << 1 << 1 << 0 << 0 << ""
        << "";
}

void tst_gpx_parser::corpus_file()
{
    QFETCH(QString, file);
    QFETCH(int, track_count);
    QFETCH(int, track_points);
    QFETCH(int, untimed_points);
    QFETCH(int, waypoints);
    QFETCH(QString, printed_line);
    QFETCH(QString, times);

    stream_capture out;
    const gpx_parser parser(corpus(file));
    QCOMPARE(parser.tracks.size(), track_count);

    const int real_tracks = track_count - (waypoints > 0 ? 1 : 0);
    int untimed = 0;
    QList<QDateTime> timed;
    for (int i = 0; i < real_tracks; ++i) {
        for (const gpx_point &point : parser.tracks.at(i).points) {
            if (point.time.isValid())
                timed << point.time;
            else
                ++untimed;
            QVERIFY(!point.lat.isEmpty() && !point.lon.isEmpty());
        }
    }
    QCOMPARE(timed.size() + untimed, track_points);
    QCOMPARE(untimed, untimed_points);
    if (waypoints > 0) {
        QCOMPARE(parser.tracks.last().name, QStringLiteral("Waypoints"));
        QCOMPARE(parser.tracks.last().points.size(), waypoints);
    }
    if (!printed_line.isEmpty())
        QVERIFY2(out.text().split(QLatin1Char('\n')).contains(printed_line),
                 qPrintable(out.text()));
    if (times.isEmpty())
        return;
    // Same instant and the same kind of zone as the text said.
    const QDateTime first = QDateTime::fromString(times.section(' ', 0, 0), Qt::ISODateWithMs);
    const QDateTime last = QDateTime::fromString(times.section(' ', 1), Qt::ISODateWithMs);
    QVERIFY(first.isValid() && last.isValid());
    QCOMPARE(timed.first(), first);
    QCOMPARE(timed.first().timeSpec(), first.timeSpec());
    QCOMPARE(timed.last(), last);
    QCOMPARE(timed.last().offsetFromUtc(), last.offsetFromUtc());
}

void tst_gpx_parser::rules_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected"); // outline of the tracks
    QTest::addColumn<QString>("printed");

    struct row
    {
        const char *tag, *body, *expected, *printed;
    };
    const QList<row> rows = {
        {"waypoints come last",
         "<wpt lat=\"1\" lon=\"2\"/><trk><trkseg><trkpt lat=\"3\" lon=\"4\"/></trkseg></trk>"
         "<wpt lat=\"5\" lon=\"6\"><time>2020-01-01T00:00:00Z</time></wpt>",
         "Track 1:3/4;Waypoints:1/2,5/6", ""},
        {"numbering counts named tracks", "<trk/><trk><name>Ridge</name></trk><trk/>",
         "Track 1:;Ridge:;Track 3:", "Track is named Ridge\n"},
        {"segments joined in file order",
         "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"/><trkpt lat=\"2\" lon=\"2\"/></trkseg>"
         "<trkseg/><trkseg><trkpt lat=\"3\" lon=\"3\"/></trkseg></trk>",
         "Track 1:1/1,2/2,3/3", ""},
        {"unknown elements skipped",
         "<rte><rtept lat=\"9\" lon=\"9\"/></rte><extensions/>"
         "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"/></trkseg></trk>",
         "Track 1:1/1", "Unknown element found: rte\nUnknown element found: extensions\n"},
        {"metadata silent", "<metadata><time>1970-01-01T00:00:00Z</time></metadata><trk/>",
         "Track 1:", ""},
        {"comment between tracks", "<trk/><!-- pause --><trk/>",
         "Track 1:;Track 2:", "Unknown node type found: 8 node name is: #comment\n"},
        {"text in the root", "stray<trk/>",
         "Track 1:", "Unknown node type found: 3 node name is: #text\n"},
        {"cdata and processing instruction", "<![CDATA[x]]><?marker data?><trk/>", "Track 1:",
         "Unknown node type found: 4 node name is: #cdata-section\n"
         "Unknown node type found: 7 node name is: marker\n"},
        {"lines in file order, name after segments",
         "<rte/><trk><trkseg/><name>Late</name><name>Second</name></trk><extensions/>", "Late:",
         "Unknown element found: rte\nTrack is named Late\nUnknown element found: extensions\n"},
        {"name on lines of its own", "<trk><name>\n    Ridge walk\n  </name></trk>",
         "Ridge walk:", "Track is named Ridge walk\n"},
        {"name as cdata between line breaks", "<trk><name>\n<![CDATA[ <Ridge> ]]>\n</name></trk>",
         "<Ridge>:", "Track is named <Ridge>\n"},
        {"points elsewhere ignored",
         "<trk><trkpt lat=\"1\" lon=\"1\"/><trkseg><trkseg><trkpt lat=\"2\" lon=\"2\"/>"
         "</trkseg></trkseg></trk>",
         "Track 1:", ""},
    };
    for (const row &r : rows)
        QTest::newRow(r.tag) << gpx(r.body) << QString(r.expected) << QString(r.printed);
    QTest::addRow("root of any name")
        << QByteArray("<log><trk><trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg></trk></log>")
        << "Track 1:1/2" << QString();
    QTest::addRow("root only") << QByteArray("<gpx/>") << QString() << QString();
}

void tst_gpx_parser::rules()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    QFETCH(QString, printed);

    const QString file = write_file(QStringLiteral("rules.gpx"), content);
    QVERIFY(!file.isEmpty());
    stream_capture out;
    const gpx_parser parser(file);
    QCOMPARE(outline(parser.tracks), expected);
    QCOMPARE(out.text(), printed);
}

void tst_gpx_parser::point_times_data()
{
    QTest::addColumn<QByteArray>("point");
    QTest::addColumn<QDateTime>("expected");
    QTest::addColumn<int>("offset");

    QTest::addRow("utc") << QByteArray("<time>2021-06-01T10:00:00Z</time>")
                         << QDateTime(QDate(2021, 6, 1), QTime(10, 0), Qt::UTC) << 0;
    QTest::addRow("offset") << QByteArray("<time>2021-06-01T12:00:00+02:00</time>")
                            << QDateTime(QDate(2021, 6, 1), QTime(10, 0), Qt::UTC) << 7200;
    QTest::addRow("no time") << QByteArray("<ele>300</ele>") << QDateTime() << 0;
    QTest::addRow("unparsable") << QByteArray("<time>yesterday</time>") << QDateTime() << 0;
}

void tst_gpx_parser::point_times()
{
    QFETCH(QByteArray, point);
    QFETCH(QDateTime, expected);
    QFETCH(int, offset);

    const QString file =
        write_file(QStringLiteral("time.gpx"), gpx("<trk><trkseg><trkpt lat=\"1\" lon=\"2\">" +
                                                   point + "</trkpt></trkseg></trk>"));
    const gpx_parser parser(file);
    QCOMPARE(parser.tracks.size(), 1);
    QCOMPARE(parser.tracks.first().points.size(), 1);
    const QDateTime time = parser.tracks.first().points.first().time;
    QCOMPARE(time.isValid(), expected.isValid());
    if (!expected.isValid())
        return;
    QCOMPARE(time, expected);
    QCOMPARE(time.offsetFromUtc(), offset);
}

void tst_gpx_parser::point_values_data()
{
    QTest::addColumn<QByteArray>("point");
    QTest::addColumn<QString>("kept"); // "lat/lon/ele", or "!" and the log line's reason

    const char *rows[][3] = {
        {"digits as written", "lat=\"046.50\" lon=\"-0.123456789\"><ele>0512.30</ele>",
         "046.50/-0.123456789/0512.30"},
        {"blanks trimmed", "lat=\" 48.3 \" lon=\"&#9;11.5&#10;\"><ele>\n 500 </ele>",
         "48.3/11.5/500"},
        {"edges of the range", "lat=\"-90\" lon=\"180.0\">", "-90/180.0/"},
        {"other forms", "lat=\".5\" lon=\"-5.\"><ele>+1e-3</ele>", ".5/-5./+1e-3"},
        {"ele no number", "lat=\"1\" lon=\"2\"><ele>high</ele>", "1/2/"},
        {"lone dot", "lat=\".\" lon=\"1\">", "!latitude '.' is no number within 90 degrees"},
        {"bare exponent", "lat=\"1\" lon=\"1e\">",
         "!longitude '1e' is no number within 180 degrees"},
        {"beyond the pole", "lat=\"-90.0001\" lon=\"1\">",
         "!latitude '-90.0001' is no number within 90 degrees"},
        {"beyond the date line", "lat=\"1\" lon=\"180.5\">",
         "!longitude '180.5' is no number within 180 degrees"},
        // The line feed would make "-all=" a line of its own in an ExifTool command.
        {"line feed and option", "lat=\"48.1&#10;-all=\" lon=\"1\">",
         "!latitude '48.1?-all=' is no number within 90 degrees"}};
    for (const auto &row : rows)
        QTest::newRow(row[0]) << QByteArray(row[1]) << QString(row[2]);
}

// A point is kept with its texts trimmed, or left out with one log line;
// the points beside it stay.
void tst_gpx_parser::point_values()
{
    QFETCH(QByteArray, point);
    QFETCH(QString, kept);

    const QByteArray body = "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"/>\n<trkpt " + point +
                            "</trkpt><trkpt lat=\"2\" lon=\"2\"/></trkseg></trk>";
    const QString file = write_file("values.gpx", gpx(body));
    if (kept.startsWith('!'))
        QTest::ignoreMessage(QtWarningMsg, qPrintable("void gpx_parser::read(const QByteArray&): "
                                                      "Leaving out the point of line 4: " +
                                                      kept.mid(1) + '.'));
    const gpx_parser parser(file);
    QStringList points;
    for (const gpx_point &p : parser.tracks.value(0).points)
        points << p.lat + '/' + p.lon + '/' + p.ele;
    QCOMPARE(points.join(' '), kept.startsWith('!') ? "1/1/ 2/2/" : "1/1/ " + kept + " 2/2/");
}

void tst_gpx_parser::unreadable_data()
{
    QTest::addColumn<QByteArray>("content"); // null: no file at all

    QByteArray truncated;
    {
        QFile real(corpus(QStringLiteral("tracks.gpx")));
        if (real.open(QIODevice::ReadOnly))
            truncated = real.read(real.size() / 2);
    }
    QByteArray binary(4096, '\0');
    for (int i = 0; i < binary.size(); ++i)
        binary[i] = char((i * 37 + 11) & 0xff);

    QTest::addRow("missing file") << QByteArray();
    QTest::addRow("empty file") << QByteArray("");
    QTest::addRow("truncated real file") << truncated;
    QTest::addRow("unclosed element") << gpx("<trk><trkseg>");
    // what was read before the error neither counts nor prints
    QTest::addRow("broken after content")
        << QByteArray("<gpx><trk><name>A</name><trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg>"
                      "</trk><rte/><!-- c --><trk>");
    QTest::addRow("two roots") << QByteArray("<gpx/><gpx/>");
    QTest::addRow("plain text") << QByteArray("lat,lon\n1,2\n");
    QTest::addRow("binary") << binary;
    QTest::addRow("nul bytes") << QByteArray(1000, '\0');
    // The stream reader takes these for well-formed.
    const QByteArray trk = "<trk><trkseg><trkpt lat=\"1\" lon=\"2\"/></trkseg></trk>\n";
    QTest::addRow("control character in a tag") << gpx(trk + "<trk x\x01=\"1\"/>");
    QTest::addRow("control character in utf-16") << QTextCodec::codecForName("UTF-16")->fromUnicode(
        QString::fromLatin1(gpx(trk + "<trk x\x01=\"1\"/>").replace("UTF-8", "UTF-16")));
}

void tst_gpx_parser::unreadable()
{
    QFETCH(QByteArray, content);
    QString file = dir_.filePath(QStringLiteral("missing.gpx"));
    if (!content.isNull()) {
        QVERIFY(content.isEmpty() || content.size() > 5);
        file = write_file(QStringLiteral("bad.gpx"), content);
        QVERIFY(!file.isEmpty());
    }
    stream_capture out;
    const gpx_parser parser(file);
    QVERIFY(parser.tracks.isEmpty());
    QCOMPARE(out.text(), QString());
    QCOMPARE(parser.error.isEmpty(), false); // Qt's texts but for control characters
    if (QByteArray(QTest::currentDataTag()).startsWith("control"))
        QCOMPARE(parser.error, "Line 4: A control character, which XML doesn't allow.");
}

namespace {

// Answers for the parser's context only, as a German catalogue would.
class test_translator : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        if (qstrcmp(context, "gpx_parser") == 0 && qstrcmp(source, "Waypoints") == 0)
            return QStringLiteral("Wegpunkte");
        return QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

void tst_gpx_parser::waypoints_name_translated()
{
    const QString file = write_file(QStringLiteral("wpt.gpx"), gpx("<wpt lat=\"1\" lon=\"2\"/>"));
    test_translator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const gpx_parser parser(file);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(outline(parser.tracks), QStringLiteral("Wegpunkte:1/2"));
}

QTEST_GUILESS_MAIN(tst_gpx_parser)
#include "tst_gpx_parser.moc"
