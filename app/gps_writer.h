#pragma once

#include "write_journal.h"

#include <vn/exif_tag_map.h>

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class exif_cache;
class table_data_model;

// The loops of the three flows that change files: write the previewed
// positions, remove all GPS data, and write the undo record back. Before a
// write each file's GPS tags are read exactly, and the record that brings
// them back is saved in the journal before the first file changes; each file
// is marked there as it is written. One ExifTool command per file and step,
// in row order (the undo in path order). A file that fails goes into the
// result with its reason and the loop goes on; nothing stops early. Each
// call blocks the GUI thread for the whole loop, feeding the event loop only
// through `progress`. GUI thread only.
class gps_writer
{
    Q_DECLARE_TR_FUNCTIONS(gps_writer)

public:
    struct failure
    {
        QString path;
        QString reason;
    };

    // What a flow did, for the user.
    struct result
    {
        int written = 0;    // files written (by an undo: written back)
        int left_alone = 0; // photos with a position of their own
        QList<failure> failures;
        bool stopped = false; // nothing written: no undo record, and the user didn't go on
    };

    // One file and the tags to write into it.
    struct target
    {
        QString path;
        exif_tag_map tags;
    };

    // (steps done, steps in all): a write flow reads each file, then
    // writes it; an undo writes.
    using progress_function = std::function<void(int done, int total)>;
    // Asked when the undo record can't be saved, with the reason: whether
    // to write all the same, with an undo in this run only.
    using ask_function = std::function<bool(const QString &error)>;

    gps_writer() = delete;

    // Writes the position of every row that has one to write (column 2's
    // user role). Rows of source photos are left alone. A position that
    // can't be written as a whole fails with the reason.
    static result write_positions(const table_data_model &model, write_journal &journal,
                                  const progress_function &progress, const ask_function &ask);

    // Removes the GPS data of every row.
    static result remove_gps(const table_data_model &model, write_journal &journal,
                             const progress_function &progress, const ask_function &ask);

    // The loop of both: files that can't be written or read fail first;
    // the others are read, recorded under `kind` ("sync" or "remove") and
    // written. A file whose stamp is still the one `cache` took with its
    // load isn't read again: the numbers of that read stand. Files with
    // ExifTool's temporary file beside them are left alone: the leftover
    // isn't this run's.
    static result write_files(const QString &kind, const QList<target> &targets,
                              const exif_cache &cache, write_journal &journal,
                              const progress_function &progress, const ask_function &ask);

    // Writes back what the journal holds of each file that was written,
    // or reached by a write that was cut off, in ascending path order, and
    // removes the journal. A file changed since its write (size or time)
    // is skipped and reported, as is one whose entry couldn't be read.
    static result undo(write_journal &journal, const progress_function &progress);

    // ExifTool writes FILE_exiftool_tmp and copies it back over FILE; cut
    // off, it may leave it behind. For a file this program was writing:
    // the leftover goes if the photo is as before (or as the leftover) and
    // reads; otherwise both stay. Empty when resolved, else what to tell.
    static QString resolve_leftover(const QString &file, const write_journal::stamp &before);
    static QString leftover_path(const QString &file);
};
