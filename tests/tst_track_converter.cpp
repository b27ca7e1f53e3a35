#include "model/track_converter.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class tst_track_converter : public QObject
{
    Q_OBJECT

private slots:
    void input_format_data();
    void input_format();

    void failures_data();
    void failures();
};

void tst_track_converter::input_format_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<QString>("expected");

    const QByteArray rmc = "$GPRMC,100000.000,A,4806.000,N,01130.000,E,0.0,0.0,010621,,*0F\r\n";
    const QByteArray gga = "$GPGGA,100000.000,4806.000,N,01130.000,E,1,08,0.9,500.5,M,,,,*65\r\n";
    const QByteArray gga2 = QByteArray(gga).replace("100000.000", "100010.000");
    QTest::addRow("kml") << "kml" << QByteArray() << "kml";
    QTest::addRow("kmz, unpacked first") << "kmz" << QByteArray("PK\3\4") << "kml";
    QTest::addRow("fit") << "fit" << QByteArray() << "garmin_fit";
    QTest::addRow("tcx") << "tcx" << QByteArray() << "gtrnctr";
    QTest::addRow("igc") << "igc" << QByteArray() << "igc";
    QTest::addRow("csv") << "csv" << QByteArray() << "unicsv";
    QTest::addRow("plt") << "plt" << QByteArray() << "ozi";
    QTest::addRow("gpx is read directly") << "gpx" << QByteArray() << "";
    QTest::addRow("photo") << "jpg" << QByteArray() << "";
    QTest::addRow("nmea, GGA first") << "nmea" << gga + rmc + gga2 << "nmea";
    QTest::addRow("nmea, RMC first") << "nmea" << rmc + gga + rmc << "nmea,gpgga=0";
    QTest::addRow("nmea, RMC only") << "nmea" << rmc + rmc << "nmea";
    QTest::addRow("nmea, garbage") << "nmea" << QByteArray("hello") << "nmea";
    QTest::addRow("txt with NMEA") << "txt"
                                   << "junk\n" + gga << "nmea";
    QTest::addRow("log, RMC first") << "log" << rmc + gga << "nmea,gpgga=0";
    QTest::addRow("txt with prose") << "txt" << QByteArray("$GPS is a word\n") << "";
}

void tst_track_converter::input_format()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, head);
    QFETCH(QString, expected);
    QCOMPARE(track_converter::input_format(suffix, head), expected);
}

void tst_track_converter::failures_data()
{
    QTest::addColumn<QByteArray>("script"); // empty: no such program
    QTest::addColumn<QString>("expected");

    QTest::addRow("not installed") << QByteArray()
                                   << "GPSBabel, which reads every track format but GPX, isn't "
                                      "installed.";
    QTest::addRow("hangs") << QByteArray("exec sleep 30")
                           << "GPSBabel did not finish within 0.3 seconds.";
    QTest::addRow("fails silently") << QByteArray("exit 3") << "GPSBabel failed with exit code 3.";
    QTest::addRow("killed") << QByteArray("kill -9 $$") << "GPSBabel failed with exit code -1.";
    // A message quoting binary input, repeated per line of it: a few
    // readable lines reach the user.
    QTest::addRow("long message")
        << QByteArray("for i in 1 2 3 4 5 6 7 8; do printf 'bad \\001\\033[31m %s\\n\\n' $i >&2; "
                      "done; printf 'bad \\001\\033[31m 8\\n' >&2; exit 1")
        << "bad ??[31m 1\nbad ??[31m 2\nbad ??[31m 3\nbad ??[31m 4\nbad ??[31m 5\n"
           "bad ??[31m 6\n...";
}

// Each failure is one reason, with the output and GPSBabel's messages gone.
void tst_track_converter::failures()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, expected);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QString program = dir.filePath(QStringLiteral("no_such_gpsbabel"));
    if (!script.isEmpty()) {
        program = dir.filePath(QStringLiteral("fake_gpsbabel"));
        QFile file(program);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script + "\n");
        file.close();
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    const QString output = dir.filePath(QStringLiteral("out.gpx"));
    QFile stale(output);
    QVERIFY(stale.open(QIODevice::WriteOnly) && stale.write("<gpx/>") == 6);
    stale.close();

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not found|ran longer|failed on"));
    const track_converter converter(program, 300);
    QString messages;
    QVERIFY(!converter.convert(QStringLiteral("kml"), dir.filePath(QStringLiteral("in.kml")),
                               output, &messages));
    QCOMPARE(messages, expected);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files),
             script.isEmpty() ? QStringList() : QStringList(QStringLiteral("fake_gpsbabel")));
}

QTEST_GUILESS_MAIN(tst_track_converter)
#include "tst_track_converter.moc"
