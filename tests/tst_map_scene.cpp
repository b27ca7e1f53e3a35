#include "map_projection.h"
#include "map_scene.h"

#include <QtTest>

#include <cmath>

// What the map makes of a rebuild, and the Mercator arithmetic it draws with.
class tst_map_scene : public QObject
{
    Q_OBJECT

private slots:
    void build_data();
    void build();
    void lines_of();
    void projection_data();
    void projection();
    void markers_at();
};

namespace {

// "<indicator><lat>,<lon>[<source file>]", e.g. "↑48,11<a>"; a bare "?" has no position.
cache_entry entry_of(const QString &file, const QString &spec)
{
    cache_entry entry;
    entry.file = file;
    entry.indicator = spec.left(1);
    const int open = spec.indexOf('<');
    const QStringList position = spec.mid(1, open < 0 ? -1 : open - 1).split(',');
    entry.position.lat_numerical = position.value(0);
    entry.position.lon_numerical = position.value(1);
    if (open >= 0)
        entry.source_file = spec.mid(open + 1).chopped(1);
    entry.is_source = entry.indicator == QString(QChar(0x2190));
    return entry;
}

} // namespace

void tst_map_scene::build_data()
{
    QTest::addColumn<QStringList>("rows");  // table order; file i is "f<i>"
    QTest::addColumn<QString>("expected");  // per marker: kind, file, source/follower
    QTest::addColumn<QList<int>>("counts"); // without position, cleared, off map
    QTest::addRow("every kind") << QStringList{"←48,11", "↑48,11<f0>", "G47.5,8.1", "=1,2"}
                                << "0f0 1f1:0/0 2f2 3f3" << QList<int>{0, 0, 0};
    // Followers count per source, in table order, whatever the arrow.
    QTest::addRow("followers") << QStringList{"↓48,11<f3>", "←49,12", "↑49,12<f1>", "←48,11",
                                              "↑48,11<f3>"}
                               << "1f0:3/0 0f1 1f2:1/0 0f3 1f4:3/1" << QList<int>{0, 0, 0};
    QTest::addRow("no position, cleared")
        << QStringList{"?", "=,", "←10,10"} << "0f2" << QList<int>{1, 1, 0};
    QTest::addRow("missing from the cache")
        << QStringList{"", "←10,10"} << "0f1" << QList<int>{1, 0, 0};
    // A source off the map takes its followers with it: they carry its position.
    QTest::addRow("off the map") << QStringList{"←91,0", "↑91,0<f0>", "Gnan,1", "=1,181",
                                                "←-90,-180"}
                                 << "0f4" << QList<int>{0, 0, 4};
}

void tst_map_scene::build()
{
    QFETCH(QStringList, rows);
    QFETCH(QString, expected);
    QFETCH(QList<int>, counts);

    QStringList files;
    QMap<QString, cache_entry> cache;
    for (int i = 0; i < rows.size(); ++i) {
        files << QStringLiteral("f%1").arg(i);
        if (!rows.at(i).isEmpty())
            cache.insert(files.last(), entry_of(files.last(), rows.at(i)));
    }
    for (int i = 0; i < counts.value(2); ++i)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("stays off the map"));
    const map_scene scene = map_scene::build(files, cache, {});

    QStringList actual;
    std::array<int, map_marker::kind_count> kinds{};
    for (const map_marker &m : scene.markers) {
        QString text = QString::number(m.kind) + m.file;
        if (m.kind == map_marker::from_photo)
            text += QStringLiteral(":%1/%2").arg(m.source).arg(m.follower);
        actual << text;
        ++kinds[m.kind];
    }
    QCOMPARE(actual.join(' '), expected);
    QCOMPARE(scene.kind_counts, kinds);
    QCOMPARE((QList<int>{scene.without_position, scene.cleared, scene.off_map}), counts);
    QCOMPARE(scene.has_bounds, !scene.markers.isEmpty());
}

void tst_map_scene::lines_of()
{
    const gpx_track walk{"walk",
                         {{"48", "179.9", {}},
                          {"48", "-179.9", {}},
                          {"x", "1", {}},
                          {"47", "-179", {}},
                          {"47.1", "-178", {}}}};
    const gpx_track alone{"alone", {{"10", "10", {}}}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("1 point\\(s\\) of the track \"walk\""));
    const QVector<QPolygonF> lines = map_scene::lines_of({walk, alone});
    // Split across the 180th meridian and at the bad point; a lone point stays a line of one.
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(0), QPolygonF({map_projection::to_world(48, 179.9)}));
    QCOMPARE(lines.at(2).size(), 2);
    QCOMPARE(lines.at(3), QPolygonF({map_projection::to_world(10, 10)}));
}

void tst_map_scene::projection_data()
{
    QTest::addColumn<QRectF>("bounds"); // degrees: x longitude, y latitude
    QTest::addColumn<double>("scale");  // expected, 0: limited by the room
    const double max_scale = 1e6;
    QTest::addRow("one spot") << QRectF(11.5, 48.1, 0, 0) << max_scale;
    QTest::addRow("wide") << QRectF(-10, 40, 30, 1) << 0.0;
    QTest::addRow("tall") << QRectF(8, -60, 0.1, 120) << 0.0;
    QTest::addRow("a street") << QRectF(8.5, 47.37, 0.001, 0.0005) << max_scale;
}

// The fitted view shows every corner inside the margin, and fills the room
// along one axis unless the scale is capped.
void tst_map_scene::projection()
{
    QFETCH(QRectF, bounds);
    QFETCH(double, scale);
    const QPointF a = map_projection::to_world(bounds.top(), bounds.left());
    const QPointF b = map_projection::to_world(bounds.bottom(), bounds.right());
    const QSizeF size(800, 600);
    const double margin = 50;
    const map_projection view =
        map_projection::fitting(QRectF(a, b).normalized(), true, size, margin, 1e6);
    for (const QPointF &corner : {a, b}) {
        const QPointF at = view.to_screen(corner);
        QVERIFY2(QRectF(margin - 1e-6, margin - 1e-6, 700 + 2e-6, 500 + 2e-6).contains(at),
                 qPrintable(QStringLiteral("%1, %2").arg(at.x()).arg(at.y())));
        QVERIFY(std::fabs(map_projection::latitude_of(view.world_at(at)) -
                          map_projection::latitude_of(corner)) < 1e-9);
    }
    const QPointF shown = view.to_screen(b) - view.to_screen(a);
    if (scale > 0)
        QCOMPARE(view.scale, scale);
    else
        QVERIFY(std::fabs(std::fabs(shown.x()) - 700) < 1e-6 ||
                std::fabs(std::fabs(shown.y()) - 500) < 1e-6);
}

void tst_map_scene::markers_at()
{
    QMap<QString, cache_entry> cache;
    const QStringList rows{"←48,11", "↑48,11<f0>", "G48,11", "=48.001,11"};
    QStringList files;
    for (int i = 0; i < rows.size(); ++i) {
        files << QStringLiteral("f%1").arg(i);
        cache.insert(files.last(), entry_of(files.last(), rows.at(i)));
    }
    const map_scene scene = map_scene::build(files, cache, {});
    map_projection view;
    view.center = map_projection::to_world(48, 11);
    view.origin = QPointF(400, 300);
    view.scale = 1e6;
    // f0 and f2 share a spot: the one drawn later answers first; then the
    // follower beside them (21 px) and the typed marker (26 px).
    QCOMPARE(scene.markers_at(view, QPointF(402, 300), 8), (QVector<int>{2, 0}));
    QCOMPARE(scene.markers_at(view, QPointF(402, 300), 30), (QVector<int>{2, 0, 1, 3}));
    const QPointF follower = QPointF(400, 300) + map_scene::follower_offset(0);
    QCOMPARE(scene.markers_at(view, follower, 8), QVector<int>{1});
    QCOMPARE(scene.markers_at(view, QPointF(408.01, 300), 8), QVector<int>());
}

QTEST_GUILESS_MAIN(tst_map_scene)
#include "tst_map_scene.moc"
