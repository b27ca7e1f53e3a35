#include "gpx_choice.h"

#include <QTest>

Q_DECLARE_METATYPE(gpx_track)

class tst_gpx_choice : public QObject
{
    Q_OBJECT

private slots:
    void choice_texts_data();
    void choice_texts();

    void chosen_track_data();
    void chosen_track();

    void merge_data();
    void merge();
};

namespace {

// Points named by their latitude, timed in seconds after a fixed UTC instant;
// a negative second gives a point without time.
gpx_track track(const QString &name, const QList<QPair<QString, int>> &points)
{
    const QDateTime base(QDate(2020, 5, 1), QTime(10, 0), Qt::UTC);
    gpx_track t;
    t.name = name;
    for (const auto &p : points)
        t.points.append(
            {p.first, QStringLiteral("11.0"), p.second < 0 ? QDateTime() : base.addSecs(p.second)});
    return t;
}

QStringList latitudes(const gpx_track &t)
{
    QStringList list;
    for (const gpx_point &p : t.points)
        list << p.lat;
    return list;
}

} // namespace

void tst_gpx_choice::choice_texts_data()
{
    QTest::addColumn<QList<gpx_track>>("tracks");
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("one track and waypoints")
        << QList<gpx_track>({track("ACTIVE LOG", {{"1", 0}, {"2", 1}, {"3", 2}}),
                             track("Waypoints", {{"4", -1}})})
        << QStringList({"Load all tracks", "ACTIVE LOG (3 Points)", "Waypoints (1 Points)"});
    QTest::addRow("empty track and empty name")
        << QList<gpx_track>({track("Track 1", {}), track("", {{"1", 0}})})
        << QStringList({"Load all tracks", "Track 1 (0 Points)", " (1 Points)"});
    QTest::addRow("no tracks") << QList<gpx_track>() << QStringList({"Load all tracks"});
}

void tst_gpx_choice::choice_texts()
{
    QFETCH(QList<gpx_track>, tracks);
    QFETCH(QStringList, expected);
    QCOMPARE(gpx_choice::choice_texts(tracks), expected);
}

void tst_gpx_choice::chosen_track_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("points");

    QTest::addRow("all tracks") << "Load all tracks" << true << "Merged Track"
                                << QStringList({"a1", "b1", "a2", "b2", "c1"});
    QTest::addRow("first track") << "A (2 Points)" << true << "A" << QStringList({"a1", "a2"});
    QTest::addRow("equal entries give the first")
        << "B (2 Points)" << true << "B" << QStringList({"b1", "b2"});
    QTest::addRow("last track") << "C (1 Points)" << true << "C" << QStringList({"c1"});
    QTest::addRow("text not in the list") << "A" << false << "" << QStringList();
    QTest::addRow("empty text") << "" << false << "" << QStringList();
}

void tst_gpx_choice::chosen_track()
{
    QFETCH(QString, chosen);
    QFETCH(bool, found);
    QFETCH(QString, name);
    QFETCH(QStringList, points);

    const QList<gpx_track> tracks = {
        track("A", {{"a1", 0}, {"a2", 20}}), track("B", {{"b1", 10}, {"b2", 30}}),
        track("B", {{"x1", 10}, {"x2", 30}}), track("C", {{"c1", 40}})};
    const std::optional<gpx_track> result =
        gpx_choice::chosen_track(QList<gpx_track>({tracks[0], tracks[1], tracks[3]}), chosen);
    QCOMPARE(result.has_value(), found);
    if (!found)
        return;
    QCOMPARE(result->name, name);
    QCOMPARE(latitudes(*result), points);

    // Two tracks of the same name and size make two equal entries; the
    // first one counts.
    if (name == QLatin1String("B"))
        QCOMPARE(latitudes(*gpx_choice::chosen_track(tracks, chosen)), points);
}

void tst_gpx_choice::merge_data()
{
    QTest::addColumn<QList<gpx_track>>("tracks");
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("overlapping tracks interleave")
        << QList<gpx_track>({track("A", {{"a0", 0}, {"a30", 30}, {"a60", 60}}),
                             track("B", {{"b10", 10}, {"b40", 40}})})
        << QStringList({"a0", "b10", "a30", "b40", "a60"});
    QTest::addRow("later track first in the file")
        << QList<gpx_track>(
               {track("late", {{"l1", 100}, {"l2", 200}}), track("early", {{"e1", 1}, {"e2", 2}})})
        << QStringList({"e1", "e2", "l1", "l2"});
    QTest::addRow("unordered points inside a track")
        << QList<gpx_track>({track("A", {{"p3", 3}, {"p1", 1}, {"p2", 2}})})
        << QStringList({"p1", "p2", "p3"});
    QTest::addRow("points without time first")
        << QList<gpx_track>({track("A", {{"t5", 5}}), track("Waypoints", {{"w", -1}})})
        << QStringList({"w", "t5"});
    QTest::addRow("nothing") << QList<gpx_track>({track("A", {})}) << QStringList();
}

void tst_gpx_choice::merge()
{
    QFETCH(QList<gpx_track>, tracks);
    QFETCH(QStringList, expected);
    const gpx_track merged = gpx_choice::merge(tracks);
    QCOMPARE(merged.name, QStringLiteral("Merged Track"));
    QCOMPARE(latitudes(merged), expected);
    for (int i = 1; i < merged.points.size(); ++i)
        QVERIFY(!(merged.points.at(i).time < merged.points.at(i - 1).time));
}

QTEST_GUILESS_MAIN(tst_gpx_choice)
#include "tst_gpx_choice.moc"
