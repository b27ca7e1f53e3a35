#include "mainwindow.h"
#include "map_layer.h"
#include "map_scene.h"
#include "map_window.h"

#include "corpus_photo.h"
#include "model/exif_cache.h"
#include "model/gpx_parser.h"
#include "model/table_data_model.h"

#include <vn/button_dark.h>
#include <vn/lineedit.h>
#include <vn/radio.h>

#include <marble/GeoPainter.h>
#include <marble/MarbleDirs.h>
#include <marble/MarbleMap.h>
#include <marble/MarbleModel.h>
#include <marble/MarbleWidget.h>
#include <marble/RenderPlugin.h>

#include <QtTest>

#include <QTableView>

// Real Marble: the layer painted by a MarbleMap into an image, the window's
// widget driven by mouse and keys, and the main window on corpus photos
// read by the real ExifTool.
class tst_map_window : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void render_data();
    void render();
    void zoom_past_the_theme();
    void extras_and_downloads_stay_off();
    void geometry_kept();
    void main_window();
    void marble_missing();
};

namespace {

// Stand-in tiles in Marble's own tile folder: one flat colour around the
// point, at every level Marble may ask for.
void write_tiles(const QColor &colour, double lat, double lon)
{
    QImage tile(256, 256, QImage::Format_RGB32);
    tile.fill(colour);
    const double y_turn = (1 - std::asinh(std::tan(qDegreesToRadians(lat))) / M_PI) / 2;
    for (int z = 0; z < 20; ++z) {
        const int n = 1 << z;
        const int x = int((lon + 180) / 360 * n);
        const int y = int(y_turn * n);
        for (int dx = -2; dx <= 2; ++dx) {
            for (int dy = -2; dy <= 2; ++dy) {
                const QString dir = QStringLiteral("%1/maps/earth/openstreetmap/%2/%3")
                                        .arg(Marble::MarbleDirs::localPath())
                                        .arg(z)
                                        .arg(x + dx);
                QDir().mkpath(dir);
                tile.save(QStringLiteral("%1/%2.png").arg(dir).arg(y + dy));
            }
        }
    }
}

QColor pixel_at(const QImage &image, const Marble::MarbleMap &map, double lat, double lon,
                const QPointF &offset = QPointF())
{
    qreal x = 0, y = 0;
    map.screenCoordinates(lon, lat, x, y);
    return image.pixelColor((QPointF(x, y) + offset).toPoint());
}

} // namespace

void tst_map_window::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    QVERIFY(map_window::unavailable_reason().isEmpty());
}

void tst_map_window::init()
{
    QSettings().clear();
    exif_cache::instance()->clear();
}

void tst_map_window::render_data()
{
    QTest::addColumn<int>("theme");
    QTest::addRow("plain") << int(map_window::plain);
    QTest::addRow("openstreetmap, tiles on disk") << int(map_window::openstreetmap);
}

// Every kind of marker in its colour where Marble projects its position, the
// track under them, the stand-in tiles behind them; nothing at 0/0.
void tst_map_window::render()
{
    QFETCH(int, theme);
    const QColor ground(20, 200, 220);
    if (theme == map_window::openstreetmap)
        write_tiles(ground, 47.5, 8.5);

    QMap<QString, cache_entry> cache;
    const QStringList files{"a", "b", "c", "d", "e"};
    const char *const specs[][3] = {{"←", "47.5", "8.5"},
                                    {"↑", "47.5", "8.5"},
                                    {"G", "47.5", "8.76"},
                                    {"=", "47.4", "8.5"},
                                    {"←", "91", "0"}};
    for (int i = 0; i < files.size(); ++i) {
        cache_entry &entry = cache[files.at(i)];
        entry.indicator = QString::fromUtf8(specs[i][0]);
        entry.position.lat_numerical = specs[i][1];
        entry.position.lon_numerical = specs[i][2];
    }
    cache["b"].source_file = "a";
    const gpx_track track{"t", {{"47.52", "8.47", {}}, {"47.52", "8.54", {}}}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("e stays off the map"));
    const map_scene scene = map_scene::build(files, cache, map_scene::lines_of({track}));

    Marble::MarbleModel model;
    model.setWorkOffline(true);
    Marble::MarbleMap map(&model);
    map.setSize(600, 400);
    map.setProjection(Marble::Mercator);
    map.setMapThemeId(theme == map_window::plain ? "earth/plain/plain.dgml"
                                                 : "earth/openstreetmap/openstreetmap.dgml");
    for (Marble::RenderPlugin *plugin : map.renderPlugins())
        plugin->setVisible(false);
    map_layer layer(&scene);
    map.addLayer(&layer);
    map.centerOn(8.5, 47.5);
    map.setRadius(100000); // 1111 pixels a degree of longitude
    QImage image(map.size(), QImage::Format_ARGB32_Premultiplied);
    const auto paint = [&] {
        image.fill(Qt::black);
        Marble::GeoPainter painter(&image, map.viewport(), map.mapQuality());
        map.paint(painter, QRect());
    };
    paint();

    QCOMPARE(pixel_at(image, map, 47.5, 8.5), map_layer::colour_of(map_marker::own));
    QCOMPARE(pixel_at(image, map, 47.5, 8.5, map_scene::follower_offset(0)),
             map_layer::colour_of(map_marker::from_photo));
    // Near the edges, so that the layer's projection has to match Marble's.
    QCOMPARE(pixel_at(image, map, 47.5, 8.76), map_layer::colour_of(map_marker::from_track));
    QCOMPARE(pixel_at(image, map, 47.4, 8.5), map_layer::colour_of(map_marker::typed));
    QCOMPARE(pixel_at(image, map, 47.52, 8.5), map_layer::track_colour());
    if (theme == map_window::openstreetmap)
        QCOMPARE(image.pixelColor(5, 395), ground);

    map.centerOn(0, 0);
    map.setRadius(1000);
    paint();
    const QColor at_zero = pixel_at(image, map, 0, 0);
    for (int kind = 0; kind < map_marker::kind_count; ++kind)
        QVERIFY(at_zero != map_layer::colour_of(map_marker::kind_type(kind)));
}

// The plain theme stops at about 50 km across; the wheel goes on to street
// level, and the point under the mouse stays under it.
void tst_map_window::zoom_past_the_theme()
{
    table_data_model model;
    map_window window(&model);
    window.set_theme(map_window::plain);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.marble_->setRadius(1000);
    const QPointF anchor(100, 80);
    const QPointF world = window.view().world_at(anchor);
    for (int notch = 0; notch < 60; ++notch) {
        QWheelEvent wheel(anchor, QPointF(window.marble_->mapToGlobal(anchor.toPoint())), QPoint(),
                          QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.marble_, &wheel);
    }
    QCOMPARE(window.marble_->radius(), 20000000);
    const QPointF moved = window.view().to_screen(world) - anchor;
    QVERIFY2(moved.manhattanLength() < 1, qPrintable(QString::number(moved.manhattanLength())));
    QTest::keyClick(window.marble_, Qt::Key_Minus);
    QCOMPARE(window.marble_->radius(), 14142136);
    QTest::keyClick(window.marble_, Qt::Key_Plus);
    QCOMPARE(window.marble_->radius(), 20000000);
}

void tst_map_window::extras_and_downloads_stay_off()
{
    table_data_model model;
    map_window window(&model);
    const auto extras_shown = [&] {
        QStringList shown;
        for (Marble::RenderPlugin *plugin : window.marble_->renderPlugins())
            if (plugin->visible())
                shown << plugin->nameId();
        return shown.join(',');
    };
    window.show();
    QTRY_VERIFY(window.painted_);
    QTRY_COMPARE(extras_shown(), QString());
    QVERIFY(!window.marble_->model()->workOffline()); // OpenStreetMap comes first
    window.set_theme(map_window::plain);
    QVERIFY(window.marble_->model()->workOffline());
    QCOMPARE(extras_shown(), QString());
}

void tst_map_window::geometry_kept()
{
    table_data_model model;
    const QRect placed(50, 60, 640, 480);
    {
        map_window window(&model);
        window.show();
        window.setGeometry(placed);
        window.hide();
    }
    map_window again(&model);
    QCOMPARE(again.geometry(), placed);
}

// Corpus photos through the real ExifTool: the map opens with Ctrl+M, a
// marker click picks the table row, a double-click on the row centres the
// map, a click in the typed mode types the position Marble reads under the
// pointer (within 1e-4 degrees), and "all tracks" draws every track of the file.
void tst_map_window::main_window()
{
    QTemporaryDir dir;
    const QString tagged = copy_corpus_photo(dir, "DSCN0010.jpg", "tagged.jpg");
    const QString plain = copy_corpus_photo(dir, "Canon_40D.jpg", "plain.jpg");
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.load_files({tagged, plain});
    QApplication::setActiveWindow(&window); // the progress dialog took it along
    QTest::keyClick(&window, Qt::Key_M, Qt::ControlModifier);
    QVERIFY(window.map_);
    QVERIFY(window.map_->isVisible());
    map_window &map = *window.map_;
    QCOMPARE(map.scene().markers.size(), 1);
    QCOMPARE(map.scene().without_position, 1);
    QCOMPARE(map.scene().markers.first().latitude, 43.467447); // as the table shows it
    const auto marker_at = [&] {
        return map.view().to_screen(map.scene().markers.first().world).toPoint();
    };
    const QPoint marker = marker_at();
    const QPoint middle = QRect(QPoint(), map.marble_->size()).center();
    QVERIFY((marker - middle).manhattanLength() <= 2); // the view fits round the marker

    const int row = window.model->files().indexOf(tagged);
    map.marble_->centerOn(0, 0);
    // A real double click: a click, then the second press as a double click.
    const QPoint cell = window.table_view->visualRect(window.model->index(row, 0)).center();
    QTest::mouseClick(window.table_view->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(window.table_view->viewport(), Qt::LeftButton, {}, cell);
    QVERIFY((marker_at() - middle).manhattanLength() <= 2);
    window.table_view->clearSelection();
    QTest::mouseClick(map.marble_, Qt::LeftButton, {}, marker_at());
    QCOMPARE(window.table_view->selectionModel()->selectedRows(),
             QModelIndexList{window.model->index(row, 0)});

    QTest::mouseClick(map.marble_, Qt::LeftButton, {}, QPoint(20, 30));
    QCOMPARE(window.latitude_edit->text(), QString()); // only the typed mode takes a position
    window.position_radio->click();
    QTest::mouseClick(map.marble_, Qt::LeftButton, {}, QPoint(20, 30));
    qreal lon = 0, lat = 0;
    map.marble_->geoCoordinates(20, 30, lon, lat);
    QVERIFY(std::fabs(window.latitude_edit->text().toDouble() - lat) < 1e-4);
    QVERIFY(std::fabs(window.longitude_edit->text().toDouble() - lon) < 1e-4);
    QCOMPARE(window.latitude_edit->text().section('.', 1).size(), 6);
    QCOMPARE(map.scene().kind_counts[map_marker::typed], 2);

    const QString gpx = QStringLiteral(VN_CORPUS_DIR "/gpx/cerknicko-jezero.gpx");
    window.choose_gpx_files = [&](QWidget *, const QString &, const QString &, const QString &) {
        return QStringList{gpx};
    };
    window.choose_item = [](QWidget *, const QString &, const QString &, const QStringList &items,
                            bool *ok) {
        *ok = true;
        return items.first(); // all tracks
    };
    window.on_load_gpx_clicked();
    QCOMPARE(window.chosen_tracks_.size(), gpx_parser(gpx).tracks.size());
    QCOMPARE(map.scene().track_lines.size(), map_scene::lines_of(window.chosen_tracks_).size());
    QVERIFY(map.scene().track_lines.size() > 1);
}

// Without Marble's map data the button says why, and nothing else changes.
void tst_map_window::marble_missing()
{
    QTemporaryDir empty;
    const QString data = Marble::MarbleDirs::systemPath();
    Marble::MarbleDirs::setMarbleDataPath(empty.path());
    MainWindow window;
    QString told;
    window.show_warning = [&](QWidget *, const QString &, const QString &text) { told = text; };
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No map: .*plain.dgml"));
    emit window.map_button->clicked();
    QVERIFY2(told.contains("earth/plain/plain.dgml"), qPrintable(told));
    QVERIFY(!window.map_);

    Marble::MarbleDirs::setMarbleDataPath(data);
    Marble::MarbleDirs::setMarblePluginPath(empty.path());
    QVERIFY(map_window::unavailable_reason().contains("Pn2Plugin"));
}

QTEST_MAIN(tst_map_window)
#include "tst_map_window.moc"
