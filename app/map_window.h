#pragma once

#include "map_projection.h"
#include "map_scene.h"
#include "model/gpx_track.h"

#include <QList>
#include <QPoint>
#include <QPointF>
#include <QString>
#include <QWidget>

#include <memory>

QT_BEGIN_NAMESPACE
class QLabel;
QT_END_NAMESPACE

namespace Marble {
class MarbleWidget;
}

namespace vn {
class combobox;
}

class map_layer;
class table_data_model;

// The preview on a map: a window of its own beside the main window, showing
// the chosen tracks and where every photo of the model's last rebuild will
// land. It follows the model (cache_rebuilt) while it is shown and catches up
// when it is opened. A click on a marker names its photo (marker_clicked); in
// the typed-position mode a click elsewhere, or the menu's "Use this
// position", hands the coordinates on (position_picked). Marble's own
// extras (bubble, menus, float items) stay off, and the wheel and the +/- keys
// zoom down to street level on every theme. Writes no files; Marble caches the
// map tiles it downloads, and only while the OpenStreetMap theme is chosen.
// GUI thread only.
class map_window : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(map_window)

    friend class tst_map_window;

public:
    enum theme {
        openstreetmap = 0,
        plain = 1,
    };

    // Doesn't own the model, which must outlive the window.
    explicit map_window(const table_data_model *model, QWidget *parent = nullptr);
    ~map_window() override;

    // Why the map can't be shown (Marble's map data or plugins missing), or
    // empty when it can.
    static QString unavailable_reason();

    // The tracks that the current choice stands for, each drawn as its own line.
    void set_tracks(const QList<gpx_track> &tracks);
    // Rebuilds the scene from the model's last result; cheap enough for every rebuild.
    void update_scene();
    // Shows every marker and every track line.
    void fit_view();
    // Centres the map on the photo's marker and rings it; false if it has none.
    bool center_on(const QString &file);
    void set_theme(int theme);

    const map_scene &scene() const { return scene_; }
    // What the map shows now, as a projection of the marker widget's pixels.
    map_projection view() const;

    // "IMG_1.jpg\n2008-10-22 16:28:39  UTC+02:00\nFrom the photo above: A.jpg\n
    // 43.467448, 11.885127"; `date_text` as the table shows it.
    static QString tooltip_text(const map_scene &scene, int marker, const QString &date_text);

signals:
    void marker_clicked(const QString &file);
    void position_picked(double latitude, double longitude);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void build_bars(QWidget *bar, QWidget *legend_bar);
    void click_at(const QPointF &screen);
    void use_position_at(const QPointF &screen);
    void show_menu(const QPoint &pos, const QPoint &global_pos);
    void show_tooltip(const QPoint &pos, const QPoint &global_pos);
    void zoom_by(double factor, const QPointF &anchor);
    void apply_view(const map_projection &target);
    void move_to(double latitude, double longitude, int radius);
    void hide_extras();
    void update_status();
    void highlight(const QString &file);
    void save_geometry();

    const table_data_model *model_;
    Marble::MarbleWidget *marble_ = nullptr;
    std::unique_ptr<map_layer> layer_;
    vn::combobox *theme_box_ = nullptr;
    QLabel *legend_label_ = nullptr;
    QLabel *attribution_label_ = nullptr;

    map_scene scene_;
    QVector<QPolygonF> track_lines_;
    QString highlighted_file_;
    bool scene_stale_ = true;
    bool painted_ = false;
    QPoint press_pos_;
    bool pressed_ = false;
};
