#include "map_window.h"

#include "map_layer.h"
#include "model/table_data_model.h"

#include <vn/combobox.h>

#include <marble/MarbleDirs.h>
#include <marble/MarbleModel.h>
#include <marble/MarbleWidget.h>
#include <marble/MarbleWidgetInputHandler.h>
#include <marble/RenderPlugin.h>

#include <QContextMenuEvent>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QSettings>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

const QString key_geometry = QStringLiteral("map_window_geometry");
const QString theme_ids[] = {QStringLiteral("earth/openstreetmap/openstreetmap.dgml"),
                             QStringLiteral("earth/plain/plain.dgml")};
// The plain theme draws from these, and without them it stays empty.
const QString needed_plugin = QStringLiteral("Pn2Plugin");

// Marble's Mercator map is 4 x radius pixels wide: at 20,000,000 a pixel is
// half a metre at the equator, street level. The themes' own limits stop the
// plain map at about 50 km across; the window sets the radius itself.
constexpr int min_radius = 60;
constexpr int max_radius = 20000000;
// A single spot (one photo, or all at the typed position) opens at about a
// metre a pixel.
constexpr int fit_max_radius = 10000000;
constexpr int centring_radius = 1000;     // within the zoom range of every theme
constexpr double fit_margin = 50;         // a follower sits up to 22 pixels beside its source
const double wheel_step = std::sqrt(2.0); // per notch of 120; two notches double
constexpr double marker_reach = 8;        // pixels from a marker's centre that count as on it

const QString tooltip_rule = QStringLiteral(
    "QToolTip{border:1px solid rgb(99,99,99);background-image:none;background-color:rgb(47,47,47);"
    "color:rgb(198,213,210);}");

QString legend_entry(const QColor &colour, const QString &symbol, const QString &text)
{
    return QStringLiteral("<span style=\"color:%1\">%2</span>&nbsp;%3")
        .arg(colour.name(), symbol, text.toHtmlEscaped());
}

} // namespace

map_window::map_window(const table_data_model *model, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , model_(model)
{
    setObjectName(QStringLiteral("map_window"));
    setWindowTitle(tr("Map"));
    setStyleSheet(tooltip_rule); // the markers' tooltips

    auto *bar = new QWidget(this);
    auto *legend_bar = new QWidget(this);
    build_bars(bar, legend_bar);

    marble_ = new Marble::MarbleWidget(this);
    marble_->setObjectName(QStringLiteral("map_marble"));
    marble_->setProjection(Marble::Mercator);
    marble_->setFocusPolicy(Qt::StrongFocus);
    marble_->inputHandler()->setMouseButtonPopupEnabled(Qt::LeftButton, false);
    marble_->inputHandler()->setMouseButtonPopupEnabled(Qt::RightButton, false);
    layer_ = std::make_unique<map_layer>(&scene_);
    marble_->addLayer(layer_.get());
    marble_->installEventFilter(this);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(bar);
    column->addWidget(marble_, 1);
    column->addWidget(legend_bar);

    set_theme(openstreetmap);
    connect(model_, &table_data_model::cache_rebuilt, this, [this] {
        scene_stale_ = true;
        if (isVisible())
            update_scene();
    });

    const QByteArray geometry = QSettings().value(key_geometry).toByteArray();
    if (geometry.isEmpty() || !restoreGeometry(geometry)) {
        resize(800, 600);
        if (parent)
            move(parent->frameGeometry().topRight() + QPoint(8, 0));
    }
}

map_window::~map_window()
{
    if (isVisible())
        save_geometry();
    marble_->removeLayer(layer_.get());
}

void map_window::build_bars(QWidget *bar, QWidget *legend_bar)
{
    const QString sheet = QStringLiteral("#map_bar{background-color:rgb(47,47,47);}"
                                         "QLabel,QComboBox{color:rgb(198,213,210);}") +
                          tooltip_rule;
    for (QWidget *b : {bar, legend_bar}) {
        b->setObjectName(QStringLiteral("map_bar"));
        b->setAttribute(Qt::WA_StyledBackground);
        b->setStyleSheet(sheet);
    }

    theme_box_ = new vn::combobox(bar);
    theme_box_->setObjectName(QStringLiteral("map_theme_box"));
    theme_box_->addItem(tr("OpenStreetMap"));
    theme_box_->addItem(tr("Plain map (offline)"));
    theme_box_->setToolTip(tr("OpenStreetMap downloads its tiles when the computer is online; "
                              "the plain map needs no network"));
    theme_box_->setFixedHeight(22);
    connect(theme_box_, qOverload<int>(&QComboBox::activated), this, &map_window::set_theme);
    attribution_label_ = new QLabel(tr("© OpenStreetMap contributors"), bar);
    attribution_label_->setStyleSheet(QStringLiteral("color: rgb(146,152,148);"));
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(8, 5, 8, 5);
    row->addWidget(theme_box_);
    row->addStretch(1);
    row->addWidget(attribution_label_);

    legend_label_ = new QLabel(legend_bar);
    legend_label_->setObjectName(QStringLiteral("map_legend"));
    legend_label_->setTextFormat(Qt::RichText);
    // The legend gives way when the window is narrow, rather than widen it.
    legend_label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *legend_row = new QHBoxLayout(legend_bar);
    legend_row->setContentsMargins(8, 5, 8, 5);
    legend_row->addWidget(legend_label_);
}

QString map_window::unavailable_reason()
{
    QStringList missing;
    for (const QString &id : theme_ids) {
        if (Marble::MarbleDirs::path(QStringLiteral("maps/") + id).isEmpty())
            missing << id;
    }
    if (!missing.isEmpty())
        return tr("Marble's map data is missing (%1 in %2).")
            .arg(missing.join(QStringLiteral(", ")), Marble::MarbleDirs::systemPath());
    const QStringList plugins = Marble::MarbleDirs::pluginEntryList(QString(), QDir::Files);
    const bool found = std::any_of(plugins.cbegin(), plugins.cend(), [](const QString &name) {
        return QFileInfo(name).fileName().contains(needed_plugin);
    });
    if (!found)
        return tr("Marble's plugins are missing (%1 in %2).")
            .arg(needed_plugin, Marble::MarbleDirs::pluginSystemPath());
    return QString();
}

void map_window::set_theme(int theme)
{
    if (theme != openstreetmap && theme != plain)
        return;
    // A new theme brings its own zoom range and extras; the view stays.
    const bool had_theme = !marble_->mapThemeId().isEmpty();
    const map_projection before = view();
    // Offline, Marble downloads nothing; tiles it cached earlier still show.
    marble_->model()->setWorkOffline(theme != openstreetmap);
    marble_->setMapThemeId(theme_ids[theme]);
    marble_->setProjection(Marble::Mercator);
    if (had_theme)
        apply_view(before);
    theme_box_->setCurrentIndex(theme);
    attribution_label_->setVisible(theme == openstreetmap);
    hide_extras();
    painted_ = false; // and once more after the next paint
}

void map_window::hide_extras()
{
    // Overview map, compass, scale bar, crosshairs, grid, licence and the
    // rest: a theme switches them on, and the first paint does again.
    for (Marble::RenderPlugin *plugin : marble_->renderPlugins()) {
        if (plugin->visible())
            plugin->setVisible(false);
    }
}

void map_window::set_tracks(const QList<gpx_track> &tracks)
{
    track_lines_ = map_scene::lines_of(tracks);
    scene_stale_ = true;
    if (isVisible())
        update_scene();
}

void map_window::update_scene()
{
    scene_ = map_scene::build(model_->files(), model_->cache(), track_lines_);
    scene_stale_ = false;
    highlight(highlighted_file_);
    update_status();
    marble_->update();
}

void map_window::update_status()
{
    const QString own = QString(QChar(0x25C6)); // diamond
    const QString dot = QString(QChar(0x25CF));
    QStringList parts;
    parts << legend_entry(map_layer::colour_of(map_marker::own), own,
                          tr("Own position: %1").arg(scene_.kind_counts[map_marker::own]))
          << legend_entry(map_layer::colour_of(map_marker::from_photo), dot,
                          tr("From a photo: %1").arg(scene_.kind_counts[map_marker::from_photo]))
          << legend_entry(map_layer::colour_of(map_marker::from_track), dot,
                          tr("From the track: %1").arg(scene_.kind_counts[map_marker::from_track]))
          << legend_entry(map_layer::colour_of(map_marker::typed), dot,
                          tr("Typed: %1").arg(scene_.kind_counts[map_marker::typed]))
          << legend_entry(QColor(198, 213, 210), QStringLiteral("?"),
                          tr("No position: %1").arg(scene_.without_position));
    if (scene_.cleared > 0)
        parts << tr("GPS data to be removed: %1").arg(scene_.cleared).toHtmlEscaped();
    if (scene_.off_map > 0)
        parts << tr("Position out of range: %1").arg(scene_.off_map).toHtmlEscaped();
    legend_label_->setText(parts.join(QStringLiteral("&nbsp;&nbsp;&nbsp;")));
}

map_projection map_window::view() const
{
    return map_layer::projection_of(marble_->viewport());
}

void map_window::apply_view(const map_projection &target)
{
    const double pixels_per_radius = view().scale / marble_->radius();
    const double radius = target.scale / pixels_per_radius;
    move_to(map_projection::latitude_of(target.center), map_projection::longitude_of(target.center),
            int(std::lround(std::clamp(radius, double(min_radius), double(max_radius)))));
}

void map_window::move_to(double latitude, double longitude, int radius)
{
    // MarbleWidget::centerOn does nothing while the radius lies beyond the
    // theme's zoom range (observed with Marble 22.12): it moves at a radius
    // every theme allows, and the radius is set afterwards. Both land in one
    // repaint.
    marble_->setRadius(centring_radius);
    marble_->centerOn(longitude, latitude);
    marble_->setRadius(radius);
}

void map_window::fit_view()
{
    const double pixels_per_radius = view().scale / marble_->radius();
    apply_view(map_projection::fitting(scene_.bounds, scene_.has_bounds, QSizeF(marble_->size()),
                                       fit_margin, fit_max_radius * pixels_per_radius));
}

void map_window::zoom_by(double factor, const QPointF &anchor)
{
    const int radius = marble_->radius();
    const double wanted = std::clamp(radius * factor, double(min_radius), double(max_radius));
    if (std::lround(wanted) == radius)
        return;
    // Zoomed by what the whole radius allows, so that the point under the
    // anchor stays within a pixel however many steps the wheel takes.
    apply_view(view().zoomed(double(std::lround(wanted)) / radius, anchor));
}

bool map_window::center_on(const QString &file)
{
    highlight(file);
    if (layer_->highlighted < 0) {
        marble_->update();
        return false;
    }
    const map_marker &marker = scene_.markers.at(layer_->highlighted);
    move_to(marker.latitude, marker.longitude, marble_->radius());
    marble_->update();
    return true;
}

void map_window::highlight(const QString &file)
{
    highlighted_file_ = file;
    layer_->highlighted = -1;
    for (int i = 0; !file.isEmpty() && i < scene_.markers.size(); ++i) {
        if (scene_.markers.at(i).file == file) {
            layer_->highlighted = i;
            break;
        }
    }
}

QString map_window::tooltip_text(const map_scene &scene, int marker, const QString &date_text)
{
    const map_marker &m = scene.markers.at(marker);
    QString source;
    switch (m.kind) {
    case map_marker::own:
        source = tr("Own position");
        break;
    case map_marker::from_photo: {
        const QString name = m.source >= 0 ? QFileInfo(scene.markers.at(m.source).file).fileName()
                                           : QStringLiteral("?");
        source = m.indicator == QString(QChar(0x2191)) ? tr("From the photo above: %1").arg(name)
                                                       : tr("From the photo below: %1").arg(name);
        break;
    }
    case map_marker::from_track:
        source = tr("From the GPX track");
        break;
    case map_marker::typed:
        source = tr("Typed position");
        break;
    }
    return QStringList(
               {QFileInfo(m.file).fileName(), date_text, source,
                QStringLiteral("%1, %2").arg(m.latitude, 0, 'f', 6).arg(m.longitude, 0, 'f', 6)})
        .join(QLatin1Char('\n'));
}

void map_window::click_at(const QPointF &screen)
{
    const QVector<int> hits = scene_.markers_at(view(), screen, marker_reach);
    if (!hits.isEmpty()) {
        const QString file = scene_.markers.at(hits.first()).file;
        highlight(file);
        marble_->update();
        emit marker_clicked(file);
        return;
    }
    if (model_->is_user_position())
        use_position_at(screen);
}

void map_window::use_position_at(const QPointF &screen)
{
    // Marble's own answer for the pixel, which is what the user sees under the
    // pointer; beside the Mercator square there is no position to take.
    qreal longitude = 0, latitude = 0;
    if (marble_->geoCoordinates(qRound(screen.x()), qRound(screen.y()), longitude, latitude,
                                Marble::GeoDataCoordinates::Degree))
        emit position_picked(latitude, longitude);
}

void map_window::show_menu(const QPoint &pos, const QPoint &global_pos)
{
    QMenu menu(this);
    menu.setStyleSheet(QStringLiteral(
        "QMenu{background-color:rgb(47,47,47);color:rgb(198,213,210);border:1px solid "
        "rgb(99,99,99);}QMenu::item{padding:4px 16px;}QMenu::item:selected{background-color:"
        "rgb(91,91,91);}QMenu::item:disabled{color:rgb(100,100,100);}"));
    QAction *use = menu.addAction(tr("Use this position"));
    use->setEnabled(model_->is_user_position());
    QAction *fit = menu.addAction(tr("Show all photos and tracks"));
    QAction *chosen = menu.exec(global_pos);
    if (chosen == use)
        use_position_at(pos);
    else if (chosen == fit)
        fit_view();
}

void map_window::show_tooltip(const QPoint &pos, const QPoint &global_pos)
{
    const QVector<int> hits = scene_.markers_at(view(), pos, marker_reach);
    if (hits.isEmpty()) {
        QToolTip::hideText();
        return;
    }
    QString text =
        tooltip_text(scene_, hits.first(), model_->date_text(model_->recording_datetime(scene_.markers.at(hits.first()).file)));
    if (hits.size() > 1)
        text += QLatin1Char('\n') + tr("More photos here: %1").arg(hits.size() - 1);
    QToolTip::showText(global_pos, text, marble_);
}

bool map_window::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != marble_)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Paint:
        // Marble shows some extras again at its first paint of a theme.
        if (!painted_) {
            painted_ = true;
            QTimer::singleShot(0, this, &map_window::hide_extras);
        }
        return false;
    case QEvent::Wheel: {
        const auto *wheel = static_cast<QWheelEvent *>(event);
        zoom_by(std::pow(wheel_step, wheel->angleDelta().y() / 120.0), wheel->position());
        return true;
    }
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const QPointF middle(marble_->width() / 2.0, marble_->height() / 2.0);
        if (key == Qt::Key_Plus || key == Qt::Key_Equal) {
            zoom_by(wheel_step, middle);
            return true;
        }
        if (key == Qt::Key_Minus) {
            zoom_by(1 / wheel_step, middle);
            return true;
        }
        return false;
    }
    case QEvent::MouseButtonDblClick: {
        // Marble's own double click would zoom only to the theme's limit.
        zoom_by(2, static_cast<QMouseEvent *>(event)->localPos());
        return true;
    }
    case QEvent::MouseButtonPress: {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        pressed_ = mouse->button() == Qt::LeftButton;
        press_pos_ = mouse->pos();
        return false;
    }
    case QEvent::MouseButtonRelease: {
        // A drag pans the map; only a release near the press is a click.
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (pressed_ && mouse->button() == Qt::LeftButton &&
            (mouse->pos() - press_pos_).manhattanLength() <= 3)
            click_at(mouse->localPos());
        pressed_ = false;
        return false;
    }
    case QEvent::ContextMenu: {
        const auto *menu_event = static_cast<QContextMenuEvent *>(event);
        show_menu(menu_event->pos(), menu_event->globalPos());
        return true;
    }
    case QEvent::ToolTip: {
        const auto *help = static_cast<QHelpEvent *>(event);
        show_tooltip(help->pos(), help->globalPos());
        return true;
    }
    default:
        return false;
    }
}

void map_window::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    if (scene_stale_)
        update_scene();
    if (layout())
        layout()->activate();
    fit_view();
    marble_->setFocus();
}

void map_window::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        save_geometry();
}

void map_window::save_geometry()
{
    QSettings().setValue(key_geometry, saveGeometry());
}
