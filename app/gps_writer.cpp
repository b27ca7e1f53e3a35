#include "gps_writer.h"

#include "gps_tag_maps.h"
#include "model/exif_cache.h"
#include "model/gps_pos.h"
#include "model/table_data_model.h"

#include <vn/exiftool.h>

#include <QVariant>

#include <utility>

namespace {

void report(const gps_writer::progress_function &progress, int done)
{
    if (progress)
        progress(done);
}

} // namespace

void gps_writer::write_positions(const table_data_model &model, undo_map &undo_tags,
                                 const progress_function &progress)
{
    undo_tags.clear();
    // One copy for the whole loop: an event handled during a write may load
    // photos, which changes the shared cache under the loop.
    const exif_cache cache = *exif_cache::instance();
    const bool user_position = model.is_user_position();
    const int rows = model.rowCount();
    for (int row = 0; row < rows; ++row) {
        const QString path = model.data(model.index(row, 0), Qt::UserRole).toString();
        const QVariant value = model.data(model.index(row, 2), Qt::UserRole);
        if (value.isValid()) {
            gps_pos position;
            if (value.canConvert<gps_pos>())
                position = value.value<gps_pos>();
            QString why;
            if (!gps_tag_maps::is_writable(position, &why)) {
                qWarning("%s: Not writing '%s': %s.", Q_FUNC_INFO, qUtf8Printable(path),
                         qUtf8Printable(why));
            } else {
                undo_tags.insert(path, gps_tag_maps::build_undo_tags(cache, path));
                const bool has_xmp_gps =
                    cache.values.value(path).value(QStringLiteral("has_xmp_gps")) ==
                    QLatin1String("true");
                vn::exiftool::write_tags(
                    path, gps_tag_maps::sync_tags(position, has_xmp_gps, user_position));
            }
        }
        report(progress, row + 1);
    }
}

void gps_writer::remove_gps(const table_data_model &model, undo_map &undo_tags,
                            const progress_function &progress)
{
    undo_tags.clear();
    const exif_cache cache = *exif_cache::instance();
    const int rows = model.rowCount();
    for (int row = 0; row < rows; ++row) {
        const QString path = model.data(model.index(row, 0), Qt::UserRole).toString();
        undo_tags.insert(path, gps_tag_maps::build_undo_tags(cache, path));
        vn::exiftool::write_tags(path, gps_tag_maps::remove_tags());
        report(progress, row + 1);
    }
}

void gps_writer::undo(undo_map &undo_tags, const progress_function &progress)
{
    // Taken out first, so that an event handled during a write sees the
    // record gone and can't start the same undo again.
    const undo_map record = std::exchange(undo_tags, undo_map());
    int done = 0;
    for (auto it = record.cbegin(); it != record.cend(); ++it) {
        vn::exiftool::write_tags(it.key(), it.value());
        report(progress, ++done);
    }
}
