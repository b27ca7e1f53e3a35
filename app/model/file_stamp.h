#pragma once

#include <QString>
#include <QtGlobal>

// What tells a file changed without reading it: its size and the time of its
// last change, to the millisecond. Taking it costs one stat of the file.
struct file_stamp
{
    qint64 size = -1;
    qint64 modified_ms = -1;

    static file_stamp of(const QString &file); // invalid for a missing file
    bool is_valid() const { return size >= 0; }
    bool operator==(const file_stamp &other) const
    {
        return size == other.size && modified_ms == other.modified_ms;
    }
    bool operator!=(const file_stamp &other) const { return !(*this == other); }
};
