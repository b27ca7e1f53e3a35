#pragma once

#include "model/file_stamp.h"

#include <vn/exif_tag_map.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

// The undo record of the last write flow, in memory and, where it can be
// saved, in a file of the data folder, so that an undo survives a restart and
// a write cut off half way can be undone at the next start. One level: the
// next write replaces it, a completed undo removes it.
//
// The file is text, UTF-8, one record per line, and every line stands alone:
//
//   loxmere-journal 1
//   flow sync 2026-11-23T12:30:00.000Z 2 a81c36f0
//   file 0 /photos/a.jpg 161713 1795523400123 GPS:GPSLatitude# 43.4674483333333 ... 5e0b7d12
//   file 1 /photos/b%20c.jpg 7958 1795523400456 GPS:GPSLatitude# "" ... 0c7d92e4
//   done 0 161801 1795523401789 9f2a04b1
//   failed 1 77c0e5d3
//   finished 3d5f8a20
//   undone 0 46b1c9e7
//
// The first line names the format and its version; a newer version is not
// read at all. Every other line is a word, its fields and a checksum (the
// first 8 hex digits of the MD5 of the line before the last blank), fields
// apart by one blank. Paths, tag names and values are percent-encoded
// (everything but letters, digits and "-._~/:#^"), so no field holds a blank
// or a line break, and an empty field is written "". The "flow" line (kind,
// start time in UTC, number of files) and the "file" lines (index, path, size
// and modification time in ms before the write, then tag and value pairs that
// bring the file back) are saved at once, atomically, before the first file
// changes. The marks behind them are appended as the flow goes: "done" with
// the file's size and time after the write, "failed", "finished" when the
// flow has been through all files, and "undone" as an undo writes a file back.
// A line that doesn't read as a whole counts as not there: a torn last line
// after a power cut loses one mark at most.
//
// GUI thread only; the file operations block for a disk write and its flush.
// Failures come back as false with the reason in a string.
class write_journal
{
    Q_DECLARE_TR_FUNCTIONS(write_journal)

public:
    static constexpr int format_version = 1;

    // What the file system says of a file, to tell whether it changed.
    using stamp = file_stamp;

    enum class state {
        pending, // not marked: not reached, or cut off while it was written
        done,
        failed,
        undone,
    };

    struct entry
    {
        QString path;
        exif_tag_map tags; // what brings the file back
        stamp before;
        stamp after; // valid once done
        state status = state::pending;
        bool readable = true; // false: its line couldn't be read; never written from
    };

    struct record
    {
        QString kind; // "sync" or "remove"
        QDateTime started;
        QList<entry> entries;
        bool finished = false;
        QStringList problems; // what couldn't be read, for the user
    };

    // Where the journal lives: "last_write.journal" in the application's
    // data folder.
    static QString default_path();

    // The saved part of a record: the version line, "flow" and "file" lines.
    static QByteArray format(const record &journal);
    // One line with its checksum: words ("done", "3") are encoded like
    // every field.
    static QByteArray line(const QStringList &fields);
    // Reads a journal's text. Nothing (and the reason in `problem`) when it
    // can't be used at all: not a journal, a newer format, a header that
    // doesn't read. Otherwise the record, with unreadable entries marked and
    // what was wrong in its `problems`.
    static bool parse(const QByteArray &text, record *journal, QString *problem);
    // Whether the flow reached entry `index`: it is marked, or comes right
    // after a marked one (cut off while it was written), or the first.
    static bool was_reached(const record &journal, int index);
    // Whether an undo writes entry `index` back: it reads as a whole and was
    // written, or was reached (its file may have changed).
    static bool is_undoable(const record &journal, int index);
    static int undoable_count(const record &journal);

    explicit write_journal(const QString &path = default_path());
    ~write_journal();
    write_journal(const write_journal &) = delete;
    write_journal &operator=(const write_journal &) = delete;

    const record &current() const { return record_; }
    bool is_empty() const { return record_.entries.isEmpty(); }
    // Whether the record is kept in the file as well as in memory.
    bool is_saved() const { return saved_; }
    QString path() const { return path_; }

    // Saves `journal` atomically and makes it the record. False, with the
    // reason, when the file can't be written; the old record stays then.
    bool start(const record &journal, QString *error);
    // Makes `journal` the record without a file (the marks change only the
    // memory), and removes an older file.
    void start_in_memory(const record &journal);
    // Marks entry `index` and appends the mark to the file, flushed to disk.
    void mark_done(int index, const stamp &after);
    void mark_failed(int index);
    void mark_finished();
    void mark_undone(int index);
    // Forgets the record and removes the file.
    void clear();

    // Reads the file into the record. False when there is no file, or it
    // can't be used (`problem` says why): the record is then empty.
    bool load(QString *problem);
    // Moves an unusable file aside ("….unusable"), so that it is neither
    // read again nor lost; the next write would replace it.
    bool set_aside();

private:
    void append(const QStringList &fields);

    QString path_;
    record record_;
    bool saved_ = false;
    QFile *marks_ = nullptr; // open for appending while the file is in use
};
