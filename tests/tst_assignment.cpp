#include "model/assignment.h"
#include "model/gps_pos.h"

#include <QtTest>

class tst_assignment : public QObject
{
    Q_OBJECT

private slots:
    void rules_data();
    void rules();
    void between_data();
    void between();
};

namespace {

const qint64 base_ms = 1590998400000; // 2020-06-01 08:00 UTC

QString swap_arrows(QString text)
{
    const QChar up(0x2191), down(0x2193);
    for (QChar &c : text)
        c = c == up ? down : c == down ? up : c;
    return text;
}

// "<seconds>[+]" per entry ("+": a position of its own), "x" for no time.
std::vector<assignment::entry> entries(const QString &spec)
{
    std::vector<assignment::entry> list;
    for (QString item : spec.split(' ', Qt::SkipEmptyParts)) {
        const bool source = item.endsWith('+');
        item.remove('+');
        const bool timed = item != "x";
        list.push_back({timed ? base_ms + qRound64(item.toDouble() * 1000) : 0, timed, source});
    }
    return list;
}

} // namespace

struct scenario
{
    const char *tag;
    int mode;
    int minutes_closest;
    int minutes_gpx;
    const char *photos, *track, *expected;
    QList<int> counters;
};
Q_DECLARE_METATYPE(scenario)

// Photos and track points are given as entries (see entries()); "-" is no
// track at all. The expectation gives, per photo in the order given, the
// indicator and the source: "p<i>" photo i, "t<j>" track point j, "-" none;
// "*" matches any indicator. Expectations are for an ascending table; each
// scenario also runs descending, where the arrows swap and nothing else
// changes. Counters: assigned, not assigned, total, typed position overwrites.
// A track "~ ..." turns interpolation on: a photo between two points adds ">t<j>@<share>".
void tst_assignment::rules_data()
{
    QTest::addColumn<scenario>("s");
    QTest::addColumn<bool>("descending");

    const scenario scenarios[] = {
        {"previous, unsorted input", 0, 0, 0, "120 0+ 60", "-", "↑p1 ←- ↑p1", {2, 0, 3, 0}},
        {"previous, nothing earlier", 0, 0, 0, "0 60+ 120", "-", "?- ←- ↑p1", {1, 1, 3, 0}},
        {"following, nothing later", 1, 0, 0, "0+ 60 120", "-", "←- ?- ?-", {0, 2, 3, 0}},
        {"following from the last", 1, 0, 0, "0 60 120+", "-", "↓p2 ↓p2 ←-", {2, 0, 3, 0}},
        {"previous takes the nearest", 0, 0, 0, "0+ 30+ 60", "-", "←- ←- ↑p1", {1, 0, 3, 0}},
        {"previous, no chain", 0, 5, 0, "0+ 300 600", "-", "←- ↑p0 ?-", {1, 1, 3, 0}},
        {"following, 600 s pass 10 min", 1, 10, 0, "0 1 601+", "-", "?- ↓p2 ←-", {1, 1, 3, 0}},
        {"closest, half way: later", 2, 0, 0, "0+ 60 120+", "-", "←- ↓p2 ←-", {1, 0, 3, 0}},
        {"closest, earlier nearer", 2, 0, 0, "0+ 59 120+", "-", "←- ↑p0 ←-", {1, 0, 3, 0}},
        {"closest, nearer side too far", 2, 10, 0, "0+ 700 1250+", "-", "←- ↓p2 ←-", {1, 0, 3, 0}},
        {"closest, 600 s pass, 601 not", 2, 10, 0, "0+ 600 1201+", "-", "←- ↑p0 ←-", {1, 0, 3, 0}},
        {"closest, both too far", 2, 10, 0, "0+ 601 1202+", "-", "←- ?- ←-", {0, 1, 3, 0}},
        {"closest, side given up", 2, 10, 0, "x+ 0+ 1000", "-", "←- ←- ?-", {0, 1, 3, 0}},
        {"closest, same time", 2, 0, 0, "0+ 0 500", "-", "←- *p0 ↑p0", {2, 0, 3, 0}},
        {"closest, invalid date", 2, 1, 0, "x 0+ 5000", "-", "↓p1 ←- ?-", {1, 1, 3, 0}},
        {"closest, gaps", 2, 0, 0, "0+ 1 10+ 19 20+ 30", "-", "←- ↑p0 ←- ↓p4 ←- ↑p4", {3, 0, 6, 0}},
        {"closest ignores a track", 2, 0, 0, "0+ 10", "9", "←- ↑p0", {1, 0, 2, 0}},
        {"gpx without track, limit", 4, 0, 1, "0+ 61 200+", "-", "←- ?- ←-", {0, 1, 3, 0}},
        {"gpx, points", 4, 0, 0, "0 100+ 400", "50 390", "Gt0 ←- Gt1", {2, 0, 5, 0}},
        {"gpx, photo nearer than point", 4, 0, 0, "0+ 10", "30", "←- ↑p0", {1, 0, 3, 0}},
        {"gpx, tie goes to later photo", 4, 0, 0, "10 20+", "0", "↓p1 ←-", {1, 0, 3, 0}},
        {"gpx, unsorted points", 4, 0, 0, "100 250", "300 0 200", "Gt2 Gt0", {2, 0, 5, 0}},
        {"gpx, 600 s pass, 601 not", 4, 0, 10, "0 1201", "600", "Gt0 ?-", {1, 1, 3, 0}},
        // secsTo truncates the difference towards zero: -600.999 s is 600 s.
        {"gpx, milliseconds truncated", 4, 0, 10, "0", "-600.999", "Gt0", {1, 0, 2, 0}},
        // secsTo is 0 when a date is invalid, so a point without time passes any limit.
        {"gpx, point without time", 4, 0, 1, "x 5000", "x", "Gt0 Gt0", {2, 0, 3, 0}},
        {"user position", 3, 0, 0, "0 60", "5", "=- =-", {2, 0, 2, 0}},
        {"user position overwrites", 3, 0, 0, "0+ 60", "-", "=- =-", {2, 0, 2, 1}},
        {"unknown mode", 7, 0, 0, "0+ 60", "-", "←- -", {0, 0, 0, 0}},
        {"gpx, empty list", 4, 0, 0, "", "10 20", "", {0, 0, 2, 0}},
        {"between", 4, 0, 0, "25", "~ 0 100", "Gt0>t1@0.25", {1, 0, 3, 0}},
        {"between, at a point", 4, 0, 0, "100", "~ 0 100 200", "Gt1", {1, 0, 4, 0}},
        {"between, gap", 4, 0, 10, "600", "~ 0 1201", "Gt0", {1, 0, 3, 0}},
        {"between, photo nearer", 4, 0, 0, "40+ 50", "~ 0 100", "←- ↑p0", {1, 0, 4, 0}},
        {"between, point without time", 4, 0, 0, "50", "~ x 100", "Gt0", {1, 0, 3, 0}},
    };
    for (const scenario &s : scenarios) {
        for (const bool descending : {false, true})
            QTest::addRow("%s, %s", s.tag, descending ? "descending" : "ascending")
                << s << descending;
    }
}

void tst_assignment::rules()
{
    QFETCH(scenario, s);
    QFETCH(bool, descending);

    const QString track = QString::fromUtf8(s.track);
    const auto photo_list = entries(s.photos);
    const auto track_list = entries(track == "-" ? QString() : QString(track).remove('~'));
    const int photo_count = int(photo_list.size());
    const assignment::result r = assignment::run(
        photo_list, track_list,
        {sync_mode(s.mode), descending, s.minutes_closest, s.minutes_gpx, track.startsWith('~')});

    QCOMPARE(QList<int>({r.assigned, r.not_assigned, r.total, int(r.overwrites_gps)}), s.counters);
    const QString expected = QString::fromUtf8(s.expected);
    const QStringList expected_rows =
        (descending ? swap_arrows(expected) : expected).split(' ', Qt::SkipEmptyParts);
    QStringList actual;
    for (int i = 0; i < photo_count; ++i) {
        const assignment::outcome &got = r.photos[size_t(i)];
        QString source = got.source < 0 ? "-" : QString("p%1").arg(got.source);
        if (got.source >= photo_count)
            source = QString("t%1").arg(got.source - photo_count);
        const bool any = expected_rows.value(i).startsWith('*');
        actual << (any ? "*" : assignment::indicator_text(got.indicator)) + source;
        if (got.towards >= 0)
            actual.last() += QString(">t%1@%2").arg(got.towards - photo_count).arg(got.share);
    }
    QCOMPARE(actual.join(' '), expected_rows.join(' '));
}

// "<from> <to> <share> = <the place between>", places as "<lat> <lon> <ele or ->".
void tst_assignment::between_data()
{
    QTest::addColumn<QString>("row");
    QTest::newRow("east across 180") << "10 179.5 - 10 -179.5 - 0.25 = 10.000000, 179.750000, -";
    QTest::newRow("west across 180")
        << "-10 -179.5 0 -20 179.5 0 0.75 = -17.500000, 179.750000, 0.000000";
    QTest::newRow("one elevation") << "1 2 5 3 4 - 0.5 = 2.000000, 3.000000, -";
}

void tst_assignment::between()
{
    QFETCH(QString, row);
    const QStringList n = row.section(" = ", 0, 0).split(' ');
    const auto place = [&](int i) {
        return assignment::place{n[i].toDouble(), n[i + 1].toDouble(), n[i + 2] != "-",
                                 n[i + 2].toDouble()};
    };
    const assignment::place at = assignment::between(place(0), place(3), n[6].toDouble());
    const QString ele = at.has_ele ? format_decimal(at.ele) : "-";
    QCOMPARE(format_decimal(at.lat) + ", " + format_decimal(at.lon) + ", " + ele,
             row.section(" = ", 1));
}

QTEST_GUILESS_MAIN(tst_assignment)
#include "tst_assignment.moc"
