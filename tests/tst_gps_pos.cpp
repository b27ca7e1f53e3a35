#include "model/gps_pos.h"

#include <QLocale>
#include <QMetaType>
#include <QTest>
#include <QVariant>

#include <cmath>
#include <limits>

class tst_gps_pos : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void meta_type_by_name();

    void coordinate_text_data();
    void coordinate_text();

    void utc_offset_data();
    void utc_offset();

    void lenient_number_data();
    void lenient_number();

    void dms_text_data();
    void dms_text();

    void typed_position_data();
    void typed_position();
};

namespace {

const QString deg = QString(QChar(0x00B0));

// The text with each '*' made a degree sign.
QString d(const char *text)
{
    return QString(text).replace('*', deg);
}

float float_nan()
{
    return std::numeric_limits<float>::quiet_NaN();
}

float float_inf()
{
    return std::numeric_limits<float>::infinity();
}

} // namespace

void tst_gps_pos::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_gps_pos::meta_type_by_name()
{
    // Looked up by name before anything asks for the id by type, so only the
    // registration at load time can make the name known.
    const int by_name = QMetaType::type("gps_pos");
    QVERIFY(by_name != QMetaType::UnknownType);
    QCOMPARE(by_name, qMetaTypeId<gps_pos>());

    gps_pos pos;
    pos.lat_numerical = QStringLiteral("-19.178194");
    const QVariant v = QVariant::fromValue(pos);
    QCOMPARE(v.userType(), by_name);
    QCOMPARE(v.value<gps_pos>().lat_numerical, pos.lat_numerical);
}

void tst_gps_pos::coordinate_text_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<bool>("is_latitude");
    QTest::addColumn<QString>("expected");

    QTest::addRow("south") << -19.178194f << true << d("19*10'41\"S");
    QTest::addRow("east") << 46.501221f << false << d("46*30'4\"E");
    QTest::addRow("west") << -11.5f << false << d("11*30'0\"W");
    // the float nearest 11.575 is 11.57499981: 29.99 seconds, truncated
    QTest::addRow("float below the exact value") << 11.575f << false << d("11*34'29\"E");
    // 29.99 seconds: rounding would give 30
    QTest::addRow("seconds truncated") << 46.50833f << false << d("46*30'29\"E");
    // 59.99 minutes: rounding would give a whole degree more
    QTest::addRow("minutes truncated") << 10.99999f << true << d("10*59'59\"N");
    QTest::addRow("zero latitude is S") << 0.0f << true << d("0*0'0\"S");
    QTest::addRow("zero longitude is W") << 0.0f << false << d("0*0'0\"W");
    QTest::addRow("date line west") << -180.0f << false << d("180*0'0\"W");
    // Values no integer type can hold: the text must still come out whole,
    // with the letter last (a sanitizer build catches a cast to int here).
    QTest::addRow("nan") << float_nan() << true << d("nan*...S");
    QTest::addRow("plus infinity") << float_inf() << false << d("inf*...E");
    QTest::addRow("minus infinity") << -float_inf() << true << d("inf*...S");
    QTest::addRow("1e30") << 1e30f << true << d("1000000015047466219876688855040*...N");
    QTest::addRow("-3e9") << -3e9f << false << d("3000000000*...W");
}

void tst_gps_pos::coordinate_text()
{
    QFETCH(float, value);
    QFETCH(bool, is_latitude);
    QFETCH(QString, expected);
    const QString text = format_gps_coordinate(value, is_latitude);
    if (!expected.contains("..."))
        QCOMPARE(text, expected);
    QVERIFY2(text.startsWith(expected.section("...", 0, 0)) &&
                 text.endsWith(expected.section("...", -1)),
             qPrintable(text));
}

void tst_gps_pos::utc_offset_data()
{
    QTest::addColumn<float>("hours");
    QTest::addColumn<QString>("expected");

    QTest::addRow("half hour east") << 5.5f << "+05:30";
    QTest::addRow("half hour west") << -3.5f << "-03:30";
    QTest::addRow("zero counts as east") << 0.0f << "+00:00";
    QTest::addRow("quarter hours") << 12.75f << "+12:45";
    QTest::addRow("under an hour west") << -0.5f << "-00:30";
    QTest::addRow("two digits") << 14.0f << "+14:00";
    // 59.94 minutes: truncated, not rounded up to the next hour
    QTest::addRow("minutes truncated") << 5.999f << "+05:59";
    QTest::addRow("nan is not >= 0") << float_nan() << "-nan:nan";
    QTest::addRow("infinity") << float_inf() << "+inf:nan";
    QTest::addRow("huge") << 1e10f << "+10000000000:00";
}

void tst_gps_pos::utc_offset()
{
    QFETCH(float, hours);
    QFETCH(QString, expected);
    QCOMPARE(format_utc_offset(hours), expected);
}

void tst_gps_pos::lenient_number_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<double>("expected");

    QTest::addRow("plain") << QByteArray("41.5") << 41.5;
    QTest::addRow("decimal comma") << QByteArray("41,5") << 41.5;
    QTest::addRow("comma groups, point decimal") << QByteArray("1,234.5") << 1234.5;
    QTest::addRow("point groups, comma decimal") << QByteArray("1.234,5") << 1234.5;
    QTest::addRow("repeated point is grouping") << QByteArray("1.234.567") << 1234567.0;
    QTest::addRow("repeated comma is grouping") << QByteArray("1,234,567") << 1234567.0;
    QTest::addRow("mixed, repeated") << QByteArray("1.234.567,5") << 1234567.5;
    QTest::addRow("negative") << QByteArray("-19.5") << -19.5;
    QTest::addRow("minus anywhere") << QByteArray("19-") << -19.0;
    QTest::addRow("exponent") << QByteArray("1.5e3") << 1500.0;
    QTest::addRow("negative exponent") << QByteArray("25E-3") << 0.025;
    QTest::addRow("negative mantissa") << QByteArray("-2e2") << -200.0;
    QTest::addRow("exponent truncated") << QByteArray("1e2.9") << 100.0;
    QTest::addRow("junk skipped") << QByteArray("x4y2z") << 42.0;
    QTest::addRow("leading zeros") << QByteArray("0012") << 12.0;
    QTest::addRow("trailing e") << QByteArray("12e") << 12.0;
    QTest::addRow("no mantissa digits") << QByteArray("e5") << 0.0;
    QTest::addRow("no digits") << QByteArray("abc") << 7.25;
    QTest::addRow("empty") << QByteArray() << 7.25;
    QTest::addRow("separators only") << QByteArray(".,-") << 7.25;
    QTest::addRow("overflowing exponent")
        << QByteArray("1e999999999999") << std::numeric_limits<double>::infinity();
    QTest::addRow("underflowing exponent") << QByteArray("1e-999999999999") << 0.0;
    QTest::addRow("zero mantissa, huge exponent") << QByteArray("0e999") << 0.0;
    QTest::addRow("400 digits") << QByteArray(400, '9') << std::numeric_limits<double>::infinity();
}

void tst_gps_pos::lenient_number()
{
    QFETCH(QByteArray, text);
    QFETCH(double, expected);
    const double value = lenient_to_double(text.toStdString(), 7.25);
    if (std::isinf(expected))
        QCOMPARE(value, expected);
    else
        QVERIFY2(std::fabs(value - expected) <= 1e-9 * std::max(1.0, std::fabs(expected)),
                 qPrintable(QString::number(value, 'g', 17)));
}

void tst_gps_pos::dms_text_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected"); // 6 decimals of the float result

    QTest::addRow("south") << d("19*10'41.5\"S") << "-19.178194";
    QTest::addRow("lower case south") << d("19*10'41.5\"s") << "-19.178194";
    QTest::addRow("minus and south cancel") << d("-19*10'41.5\"S") << "19.178194";
    QTest::addRow("minus alone") << d("  -19*10'41.5\"") << "-19.178194";
    // exact sum is 46.50122222; the float holds 46.5012207
    QTest::addRow("float precision") << d("46*30'4.4\"E") << "46.501221";
    QTest::addRow("west") << d("11*34'30\"W") << "-11.575000";
    QTest::addRow("minutes only") << QString("30'") << "0.500000";
    QTest::addRow("seconds only") << QString("36\"") << "0.010000";
    QTest::addRow("degrees only") << d("12*") << "12.000000";
    QTest::addRow("decimal comma in seconds") << d("1*0'36,0\"") << "1.010000";
    QTest::addRow("letter with trailing text") << d("10*SW") << "10.000000";
    QTest::addRow("no marks") << QString("12.5") << "0.000000";
    QTest::addRow("junk") << QString("abc") << "0.000000";
    QTest::addRow("empty") << QString() << "0.000000";
    // U+00F0 is C3 B0 in UTF-8: a byte search for the degree sign would stop
    // inside that letter and read no degrees at all.
    QTest::addRow("letter ending in byte B0")
        << QString(QChar(0x00F0) + QStringLiteral("5") + deg + "30'") << "5.500000";
    QTest::addRow("huge becomes infinity") << d("1e50*") << "inf";
    QTest::addRow("huge negative") << d("-1e50*") << "-inf";
}

void tst_gps_pos::dms_text()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const float value = parse_dms_coordinate(text.toLocal8Bit().toStdString());
    QString printed = QString::number(double(value), 'f', 6);
    if (printed == QLatin1String("-0.000000"))
        printed = QStringLiteral("0.000000");
    QCOMPARE(printed, expected);
}

void tst_gps_pos::typed_position_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("lat_text");
    QTest::addColumn<QString>("lon_text");
    QTest::addColumn<bool>("has_value");
    // lat|lat_ref|lat_numerical|lon|lon_ref|lon_numerical
    QTest::addColumn<QString>("expected");

    struct row
    {
        const char *tag, *locale, *lat, *lon;
        bool has_value;
        const char *expected;
    };
    const QList<row> rows = {
        {"decimal text kept", "C", "-19.178194", "46.501221", true,
         "19*10'41\"|S|-19.178194|46*30'4\"|E|46.501221"},
        {"digits kept as typed", "C", "48.25", "-011.5000", true,
         "48*15'0\"|N|48.25|11*30'0\"|W|-011.5000"},
        {"degrees, minutes, seconds", "C", "19*10'41.5\"S", "46*30'4.4\"E", true,
         "19*10'41\"|S|-19.178194|46*30'4\"|E|46.501221"},
        {"lower case letters", "C", "19*10'41.5\"s", "46*30'4.4\"w", true,
         "19*10'41\"|S|-19.178194|46*30'4\"|W|-46.501221"},
        {"blanks removed first", "C", " - 19 . 5 ", "46 * 30 ' 4.4 \" E", true,
         "19*30'0\"|S|-19.5|46*30'4\"|E|46.501221"},
        {"limits pass", "C", "90", "180", true, "90*0'0\"|N|90|180*0'0\"|E|180"},
        {"negative limits pass", "C", "-90", "-180", true, "90*0'0\"|S|-90|180*0'0\"|W|-180"},
        {"zero is south and west", "C", "0", "0", true, "0*0'0\"|S|0|0*0'0\"|W|0"},
        {"junk reads as zero", "C", "abc", "xyz", true, "0*0'0\"|S|0.000000|0*0'0\"|W|0.000000"},
        {"empty latitude", "C", "", "46.5", true, "|||||"},
        {"blank longitude", "C", "46.5", "   ", true, "|||||"},
        {"latitude over 90", "C", "90.0001", "0", false, ""},
        {"longitude over 180", "C", "0", "180.0001", false, ""},
        {"latitude -91", "C", "-91", "0", false, ""},
        {"nan", "C", "nan", "0", false, ""},
        {"inf", "C", "0", "inf", false, ""},
        {"1e30", "C", "1e30", "0", false, ""},
        // no float for either conversion and no mark: read as junk, not as a number
        {"beyond float", "C", "1", "1e50", true, "1*0'0\"|N|1|0*0'0\"|W|0.000000"},
        {"dms beyond float", "C", "1e50*", "0", false, ""},
        {"decimal comma, German", "de_DE", "12,5", "-7,25", true,
         "12*30'0\"|N|12.5|7*15'0\"|W|-7.25"},
        {"decimal comma, C locale", "C", "12,5", "7", true, "12*30'0\"|N|12.5|7*0'0\"|E|7"},
    };
    for (const row &r : rows)
        QTest::newRow(r.tag) << QString(r.locale) << d(r.lat) << d(r.lon) << r.has_value
                             << d(r.expected);
}

void tst_gps_pos::typed_position()
{
    QFETCH(QString, locale);
    QFETCH(QString, lat_text);
    QFETCH(QString, lon_text);
    QFETCH(bool, has_value);
    QFETCH(QString, expected);

    QLocale::setDefault(QLocale(locale));
    const std::optional<gps_pos> pos = read_typed_position(lat_text, lon_text);
    QCOMPARE(pos.has_value(), has_value);
    if (!pos)
        return;
    const QStringList fields{pos->lat, pos->lat_ref, pos->lat_numerical,
                             pos->lon, pos->lon_ref, pos->lon_numerical};
    QCOMPARE(fields.join(QLatin1Char('|')), expected);
}

QTEST_GUILESS_MAIN(tst_gps_pos)
#include "tst_gps_pos.moc"
