#include "model/photo_time.h"

#include <QtTest>

// The time a photo shows, the time recorded (ISO, with its offset), the
// camera's zone and the correction they make (-1: doesn't read).
struct reference_row
{
    const char *tag, *shown, *recorded, *zone;
    qint64 correction;
};
Q_DECLARE_METATYPE(reference_row)

// Registered under two TZ settings: nothing here may depend on the computer's
// zone but what is read in it on purpose.
class tst_photo_time : public QObject
{
    Q_OBJECT

private slots:
    void read_offset_data();
    void read_offset();
    void correction_data();
    void correction();
    void zones_data();
    void zones();
    void reference_data();
    void reference();
};

void tst_photo_time::read_offset_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("seconds"); // -1: not an offset

    QTest::addRow("west half hour") << "-05:30" << -19800;
    QTest::addRow("largest") << "+14:00" << 50400;
    QTest::addRow("beyond 14 hours") << "+14:01" << -1;
    QTest::addRow("minutes 99") << "+99:99" << -1;
    QTest::addRow("not a number") << "abc" << -1;
}

void tst_photo_time::read_offset()
{
    QFETCH(QString, text);
    QFETCH(int, seconds);
    QCOMPARE(photo_time::read_offset(text).value_or(-1), seconds);
}

void tst_photo_time::correction_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("written"); // empty: doesn't read

    QTest::addRow("without seconds") << "-3:00" << -10800ll << "-03:00:00";
    QTest::addRow("days and time") << "+1d 0:00:30" << 86430ll << "+1d 00:00:30";
    QTest::addRow("negative days") << " - 1d 01:00:00 " << -90000ll << "-1d 01:00:00";
    QTest::addRow("ten years") << "-3653d" << -315619200ll << "-3653d 00:00:00";
    QTest::addRow("minutes 60") << "0:60" << 0ll << "";
    QTest::addRow("words") << "three minutes" << 0ll << "";
}

// Each readable text is read, written in the one form, and read back.
void tst_photo_time::correction()
{
    QFETCH(QString, text);
    QFETCH(qint64, seconds);
    QFETCH(QString, written);

    const std::optional<qint64> read = photo_time::read_correction(text);
    QCOMPARE(read.has_value(), !written.isEmpty());
    if (!read)
        return;
    QCOMPARE(*read, seconds);
    QCOMPARE(photo_time::correction_text(seconds), written);
    QCOMPARE(photo_time::read_correction(written), read);
}

void tst_photo_time::zones_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDateTime>("local"); // as the clock shows it
    QTest::addColumn<QString>("utc");     // empty: a zone not known here

    // Berlin's clocks went from 02:00 to 03:00 on 2021-03-28.
    const char *rows[][4] = {
        {"Tokyo", "Asia/Tokyo", "2021-06-01T12:00", "2021-06-01T03:00:00Z"},
        {"Berlin, change day, 01:59", "Europe/Berlin", "2021-03-28T01:59", "2021-03-28T00:59:00Z"},
        {"Berlin, change day, 03:00", "Europe/Berlin", "2021-03-28T03:00", "2021-03-28T01:00:00Z"},
        {"unknown zone", "Mars/Olympus", "2021-06-01T12:00", ""},
    };
    for (const auto &r : rows)
        QTest::newRow(r[0]) << QByteArray(r[1]) << QDateTime::fromString(r[2], Qt::ISODate)
                            << QString(r[3]);
}

void tst_photo_time::zones()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDateTime, local);
    QFETCH(QString, utc);

    QCOMPARE(photo_time::is_known_zone(zone), !utc.isEmpty());
    const QDateTime read = photo_time::in_zone(local.date(), local.time(), zone);
    // An unknown zone reads as this computer's.
    const QDateTime expected = utc.isEmpty() ? local : QDateTime::fromString(utc, Qt::ISODate);
    QCOMPARE(read.toMSecsSinceEpoch(), expected.toMSecsSinceEpoch());
    const QDateTime back = photo_time::to_zone(read.toUTC(), zone);
    QCOMPARE(back.date(), local.date());
    QCOMPARE(back.time(), local.time());
}

void tst_photo_time::reference_data()
{
    QTest::addColumn<reference_row>("row");
    const reference_row rows[] = {
        {"3 minutes ahead", "2021-06-01 12:03:00", "2021-06-01T12:00:00+09:00", "Asia/Tokyo", 180},
        {"ExifTool's form", "2021:06:01 11:59:30", "2021-06-01T12:00:00+09:00", "Asia/Tokyo", -30},
        {"recorded in another zone", "2021-06-01 12:00:00", "2021-06-01T12:00:00+02:00",
         "Asia/Tokyo", -25200},
        {"time alone past midnight", "00:02:00", "2021-06-01T23:59:00+09:00", "Asia/Tokyo", 180},
        {"time alone before midnight", "23:58", "2021-06-02T00:01:00+09:00", "Asia/Tokyo", -180},
        {"fixed zone", "12:00", "2021-06-01T12:00:00Z", "UTC+01:00", -3600},
        {"empty", "", "2021-06-01T12:00:00+09:00", "Asia/Tokyo", -1},
        {"recorded invalid", "12:00", "", "Asia/Tokyo", -1},
    };
    for (const reference_row &r : rows)
        QTest::newRow(r.tag) << r;
}

void tst_photo_time::reference()
{
    QFETCH(reference_row, row);
    const QDateTime recorded = QDateTime::fromString(row.recorded, Qt::ISODate);
    QCOMPARE(photo_time::reference_correction(row.shown, recorded, row.zone).value_or(-1),
             row.correction);
}

QTEST_GUILESS_MAIN(tst_photo_time)
#include "tst_photo_time.moc"
