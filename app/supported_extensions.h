#pragma once

#include <QString>

#include <set>

// Lower-case file suffixes, without the dot, of every file type whose metadata
// the program reads and writes: "jpg", "cr2", "mov", ... (104 entries, ordered
// by QString's operator<, which for these ASCII names is byte order).
// One set serves both the file dialog's filter and the test of a loaded path,
// so that the two cannot disagree.
extern const std::set<QString> supported_extensions;

// True when the suffix of `path` (after the last dot of the file name, any
// case) is in supported_extensions. "IMG.JPG" and "img.jpg" both pass; a name
// without a dot does not.
bool has_supported_extension(const QString &path);

// The file dialog's one filter: `label` followed by "(*.360 *.3g2 ... *.xmp)",
// the patterns in set order, separated by single blanks.
QString supported_files_filter(const QString &label);
