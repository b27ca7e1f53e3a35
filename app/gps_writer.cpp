#include "gps_writer.h"

#include "gps_tag_maps.h"
#include "model/exif_cache.h"
#include "model/gps_pos.h"
#include "model/table_data_model.h"

#include <vn/exiftool.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QVariant>

#include <algorithm>
#include <optional>

namespace {

constexpr qint64 compare_chunk = 1 << 16;

void report(const gps_writer::progress_function &progress, int done, int total)
{
    if (progress)
        progress(done, total);
}

bool same_content(const QString &a, const QString &b)
{
    QFile first(a);
    QFile second(b);
    if (!first.open(QIODevice::ReadOnly) || !second.open(QIODevice::ReadOnly) ||
        first.size() != second.size())
        return false;
    while (!first.atEnd()) {
        if (first.read(compare_chunk) != second.read(compare_chunk))
            return false;
    }
    return true;
}

} // namespace

QString gps_writer::leftover_path(const QString &file)
{
    return file + QStringLiteral("_exiftool_tmp");
}

// Blocks for a read of the file through ExifTool. GUI thread only.
QString gps_writer::resolve_leftover(const QString &file, const write_journal::stamp &before)
{
    const QString leftover = leftover_path(file);
    if (!QFileInfo::exists(leftover))
        return QString();
    // Cut off before the copy back, the photo is as it was; after it, as
    // the leftover. Either way nothing is lost when the leftover goes.
    const bool whole = write_journal::stamp::of(file) == before || same_content(file, leftover);
    QString why;
    if (whole && vn::exiftool::read_numeric_tags(file, gps_tag_maps::exact_read_tags(), &why,
                                                 gps_tag_maps::exact_read_names())) {
        if (QFile::remove(leftover)) {
            qInfo("%s: Removed ExifTool's leftover '%s'; the photo is whole.", Q_FUNC_INFO,
                  qUtf8Printable(leftover));
            return QString();
        }
        why = tr("can't remove it");
    }
    qWarning("%s: Keeping '%s' and '%s': %s.", Q_FUNC_INFO, qUtf8Printable(file),
             qUtf8Printable(leftover), whole ? qUtf8Printable(why) : "the photo changed");
    return tr("a write was cut off and ExifTool left '%1' beside the photo; both were kept: "
              "please check the photo")
        .arg(QFileInfo(leftover).fileName());
}

gps_writer::result gps_writer::write_positions(const table_data_model &model,
                                               write_journal &journal,
                                               const progress_function &progress,
                                               const ask_function &ask)
{
    // One copy for the whole loop: an event handled during a write may load
    // photos, which changes the shared cache under the loop.
    const exif_cache cache = *exif_cache::instance();
    const bool user_position = model.is_user_position();
    result refused;
    QList<target> targets;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QString path = model.data(model.index(row, 0), Qt::UserRole).toString();
        const QVariant value = model.data(model.index(row, 2), Qt::UserRole);
        if (!value.isValid()) {
            ++refused.left_alone;
            continue;
        }
        gps_pos position;
        if (value.canConvert<gps_pos>())
            position = value.value<gps_pos>();
        QString why;
        if (!gps_tag_maps::is_writable(position, &why)) {
            qWarning("%s: Not writing '%s': %s.", Q_FUNC_INFO, qUtf8Printable(path),
                     qUtf8Printable(why));
            refused.failures.append({path, tr("the position can't be written: %1").arg(why)});
            continue;
        }
        const bool has_xmp_gps =
            cache.values.value(path).value(QStringLiteral("has_xmp_gps")) == QLatin1String("true");
        targets.append({path, gps_tag_maps::sync_tags(position, has_xmp_gps, user_position)});
    }
    result done = write_files(QStringLiteral("sync"), targets, cache, journal, progress, ask);
    done.left_alone += refused.left_alone;
    done.failures = refused.failures + done.failures;
    return done;
}

gps_writer::result gps_writer::remove_gps(const table_data_model &model, write_journal &journal,
                                          const progress_function &progress,
                                          const ask_function &ask)
{
    QList<target> targets;
    for (int row = 0; row < model.rowCount(); ++row)
        targets.append({model.data(model.index(row, 0), Qt::UserRole).toString(),
                        gps_tag_maps::remove_tags()});
    const exif_cache cache = *exif_cache::instance(); // see write_positions
    return write_files(QStringLiteral("remove"), targets, cache, journal, progress, ask);
}

gps_writer::result gps_writer::write_files(const QString &kind, const QList<target> &targets,
                                           const exif_cache &cache, write_journal &journal,
                                           const progress_function &progress,
                                           const ask_function &ask)
{
    // What the load read of a file, while the file is as it was then: the
    // same numbers a read now would give, without ExifTool's time per file.
    const auto known_numbers = [&cache](const QString &path) -> std::optional<exif_tag_map> {
        const auto stamp = cache.stamps.constFind(path);
        const auto numbers = cache.gps_numbers.constFind(path);
        if (stamp == cache.stamps.cend() || numbers == cache.gps_numbers.cend() ||
            !stamp->is_valid() || *stamp != write_journal::stamp::of(path))
            return std::nullopt;
        return gps_tag_maps::exact_read_of(*numbers);
    };
    result done;
    const int steps = 2 * int(targets.size());
    int step = 0;
    write_journal::record record;
    record.kind = kind;
    record.started = QDateTime::currentDateTimeUtc();
    QList<exif_tag_map> writes;
    for (const target &t : targets) {
        QString why;
        if (!vn::exiftool::check_file(t.path, true, &why)) {
            done.failures.append({t.path, why});
        } else if (QFileInfo::exists(leftover_path(t.path))) {
            qWarning("%s: Not writing '%s': ExifTool's temporary file is in the way.", Q_FUNC_INFO,
                     qUtf8Printable(t.path));
            done.failures.append(
                {t.path, tr("ExifTool's temporary file '%1' is in the way, left by an earlier "
                            "write that was cut off")
                             .arg(QFileInfo(leftover_path(t.path)).fileName())});
        } else if (std::optional<exif_tag_map> read = known_numbers(t.path);
                   read || (read = vn::exiftool::read_numeric_tags(
                                t.path, gps_tag_maps::exact_read_tags(), &why,
                                gps_tag_maps::exact_read_names()))) {
            write_journal::entry entry;
            entry.path = t.path;
            entry.tags = gps_tag_maps::exact_undo_tags(*read);
            entry.before = write_journal::stamp::of(t.path);
            record.entries.append(entry);
            writes.append(t.tags);
        } else {
            done.failures.append({t.path, why});
        }
        report(progress, ++step, steps);
    }
    if (record.entries.isEmpty())
        return done;

    QString error;
    if (!journal.start(record, &error)) {
        if (!ask || !ask(error)) {
            done.stopped = true;
            return done;
        }
        journal.start_in_memory(record);
    }
    step = int(targets.size() + (targets.size() - record.entries.size()));
    for (int i = 0; i < record.entries.size(); ++i) {
        const write_journal::entry &entry = record.entries.at(i);
        QString why;
        const bool written = vn::exiftool::write_tags(entry.path, writes.at(i), &why);
        const write_journal::stamp after = write_journal::stamp::of(entry.path);
        // A write that failed late (ExifTool stopped during the copy back)
        // may have changed the file all the same: the undo covers it then.
        if (written || (after.is_valid() && after != entry.before))
            journal.mark_done(i, after);
        else
            journal.mark_failed(i);
        if (written) {
            ++done.written;
        } else {
            const QString leftover = resolve_leftover(entry.path, entry.before);
            done.failures.append({entry.path, leftover.isEmpty() ? why : why + "; " + leftover});
        }
        report(progress, ++step, steps);
    }
    journal.mark_finished();
    return done;
}

gps_writer::result gps_writer::undo(write_journal &journal, const progress_function &progress)
{
    result done;
    // A copy: the marks change the journal's own record as the loop goes.
    const write_journal::record record = journal.current();
    QList<int> order;
    for (int i = 0; i < record.entries.size(); ++i) {
        if (!record.entries.at(i).readable)
            done.failures.append({tr("(entry %1 of the undo record)").arg(i + 1),
                                  tr("its entry can't be read; nothing was written")});
        else if (write_journal::is_undoable(record, i))
            order.append(i);
    }
    std::stable_sort(order.begin(), order.end(), [&record](int a, int b) {
        return record.entries.at(a).path < record.entries.at(b).path;
    });

    const auto undo_one = [&](int i) {
        const write_journal::entry &entry = record.entries.at(i);
        QString why;
        if (!vn::exiftool::check_file(entry.path, false, &why)) {
            done.failures.append({entry.path, why});
            return;
        }
        const QString leftover = resolve_leftover(entry.path, entry.before);
        if (!leftover.isEmpty()) {
            done.failures.append({entry.path, leftover});
            return;
        }
        const write_journal::stamp now = write_journal::stamp::of(entry.path);
        if (entry.status == write_journal::state::pending && now == entry.before) {
            journal.mark_undone(i); // cut off before ExifTool changed it
            return;
        }
        if (entry.status == write_journal::state::done && now != entry.after) {
            qWarning("%s: Not undoing '%s': it changed since the write.", Q_FUNC_INFO,
                     qUtf8Printable(entry.path));
            done.failures.append(
                {entry.path, tr("changed since the write (by another program?); left as it is")});
            return;
        }
        if (vn::exiftool::write_tags(entry.path, entry.tags, &why)) {
            journal.mark_undone(i);
            ++done.written;
        } else {
            done.failures.append({entry.path, why});
        }
    };
    int step = 0;
    for (const int i : qAsConst(order)) {
        undo_one(i);
        report(progress, ++step, int(order.size()));
    }
    journal.clear();
    return done;
}
