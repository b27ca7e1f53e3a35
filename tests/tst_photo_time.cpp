#include "model/photo_time.h"

#include <QtTest>

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

    QTest::addRow("east") << "+09:00" << 32400;
    QTest::addRow("west half hour") << "-05:30" << -19800;
    QTest::addRow("zero") << "+00:00" << 0;
    QTest::addRow("largest") << "+14:00" << 50400;
    QTest::addRow("beyond 14 hours") << "+14:01" << -1;
    QTest::addRow("minutes 99") << "+99:99" << -1;
    QTest::addRow("minutes 60") << "+01:60" << -1;
    QTest::addRow("one digit") << "+9:00" << -1;
    QTest::addRow("no colon") << "+0900" << -1;
    QTest::addRow("no sign") << "09:00" << -1;
    QTest::addRow("words") << "abc" << -1;
    QTest::addRow("empty") << "" << -1;
    QTest::addRow("trailing text") << "+09:00 JST" << -1;
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

    QTest::addRow("minutes") << "+00:03:00" << 180ll << "+00:03:00";
    QTest::addRow("without seconds") << "-3:00" << -10800ll << "-03:00:00";
    QTest::addRow("days and time") << "+1d 0:00:30" << 86430ll << "+1d 00:00:30";
    QTest::addRow("days alone") << "2d" << 172800ll << "+2d 00:00:00";
    QTest::addRow("negative days") << " - 1d 01:00:00 " << -90000ll << "-1d 01:00:00";
    QTest::addRow("many hours") << "48:00" << 172800ll << "+2d 00:00:00";
    QTest::addRow("zero") << "0:00" << 0ll << "+00:00:00";
    QTest::addRow("ten years") << "-3653d" << -315619200ll << "-3653d 00:00:00";
    QTest::addRow("minutes 60") << "0:60" << 0ll << "";
    QTest::addRow("sign alone") << "+" << 0ll << "";
    QTest::addRow("words") << "three minutes" << 0ll << "";
    QTest::addRow("empty") << "" << 0ll << "";
    QTest::addRow("too many digits") << "12345678d" << 0ll << "";
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
    QTest::addColumn<bool>("known");
    QTest::addColumn<QString>("utc");

    const QDateTime noon(QDate(2021, 6, 1), QTime(12, 0));
    QTest::addRow("Tokyo") << QByteArray("Asia/Tokyo") << noon << true << "2021-06-01T03:00:00Z";
    QTest::addRow("fixed offset") << QByteArray("UTC+05:30") << noon << true
                                  << "2021-06-01T06:30:00Z";
    QTest::addRow("fixed west") << QByteArray("UTC-03:00") << noon << true
                                << "2021-06-01T15:00:00Z";
    // Berlin's clocks went from 02:00 to 03:00 on 2021-03-28.
    QTest::addRow("Berlin, day of the change, before")
        << QByteArray("Europe/Berlin") << QDateTime(QDate(2021, 3, 28), QTime(1, 59)) << true
        << "2021-03-28T00:59:00Z";
    QTest::addRow("Berlin, day of the change, after")
        << QByteArray("Europe/Berlin") << QDateTime(QDate(2021, 3, 28), QTime(3, 0)) << true
        << "2021-03-28T01:00:00Z";
    QTest::addRow("unknown zone") << QByteArray("Mars/Olympus") << noon << false << "";
    QTest::addRow("offset without sign") << QByteArray("UTC05:30") << noon << false << "";
    QTest::addRow("bare UTC prefix") << QByteArray("UTC+") << noon << false << "";
}

void tst_photo_time::zones()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDateTime, local);
    QFETCH(bool, known);
    QFETCH(QString, utc);

    QCOMPARE(photo_time::is_known_zone(zone), known);
    const QDateTime read = photo_time::in_zone(local.date(), local.time(), zone);
    // An unknown zone reads as this computer's.
    const QDateTime expected = known ? QDateTime::fromString(utc, Qt::ISODate) : local;
    QCOMPARE(read.toMSecsSinceEpoch(), expected.toMSecsSinceEpoch());
    const QDateTime back = photo_time::to_zone(read.toUTC(), zone);
    QCOMPARE(back.date(), local.date());
    QCOMPARE(back.time(), local.time());
}

void tst_photo_time::reference_data()
{
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("recorded"); // ISO, with its offset
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<qint64>("correction"); // -1: doesn't read

    const QByteArray tokyo("Asia/Tokyo");
    QTest::addRow("3 minutes ahead") << "2021-06-01 12:03:00"
                                     << "2021-06-01T12:00:00+09:00" << tokyo << 180ll;
    QTest::addRow("ExifTool's form") << "2021:06:01 11:59:30"
                                     << "2021-06-01T12:00:00+09:00" << tokyo << -30ll;
    QTest::addRow("recorded in another zone") << "2021-06-01 12:00:00"
                                              << "2021-06-01T12:00:00+02:00" << tokyo << -25200ll;
    QTest::addRow("time alone") << "12:03"
                                << "2021-06-01T12:00:00+09:00" << tokyo << 180ll;
    QTest::addRow("time alone past midnight") << "00:02:00"
                                              << "2021-06-01T23:59:00+09:00" << tokyo << 180ll;
    QTest::addRow("time alone before midnight") << "23:58"
                                                << "2021-06-02T00:01:00+09:00" << tokyo << -180ll;
    QTest::addRow("a year off") << "2022-06-01 12:00"
                                << "2021-06-01T12:00:00+09:00" << tokyo << 31536000ll;
    QTest::addRow("fixed zone") << "12:00"
                                << "2021-06-01T12:00:00Z" << QByteArray("UTC+01:00") << -3600ll;
    QTest::addRow("no time") << "2021-06-01"
                             << "2021-06-01T12:00:00+09:00" << tokyo << -1ll;
    QTest::addRow("bad hour") << "25:00"
                              << "2021-06-01T12:00:00+09:00" << tokyo << -1ll;
    QTest::addRow("words") << "noon"
                           << "2021-06-01T12:00:00+09:00" << tokyo << -1ll;
    QTest::addRow("three parts") << "2021-06-01 12:00 PM"
                                 << "2021-06-01T12:00:00+09:00" << tokyo << -1ll;
    QTest::addRow("empty") << ""
                           << "2021-06-01T12:00:00+09:00" << tokyo << -1ll;
    QTest::addRow("recorded invalid") << "12:00"
                                      << "" << tokyo << -1ll;
}

void tst_photo_time::reference()
{
    QFETCH(QString, shown);
    QFETCH(QString, recorded);
    QFETCH(QByteArray, zone);
    QFETCH(qint64, correction);

    const std::optional<qint64> got =
        photo_time::reference_correction(shown, QDateTime::fromString(recorded, Qt::ISODate), zone);
    QCOMPARE(got.value_or(-1), correction);
}

QTEST_GUILESS_MAIN(tst_photo_time)
#include "tst_photo_time.moc"
