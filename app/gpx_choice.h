#pragma once

#include "model/gpx_track.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The choice among the tracks of the track files loaded at once: the texts
// of the list the user picks from, the tracks a picked text stands for, and
// the merge of all tracks into one. Plain functions of the track list.
class gpx_choice
{
public:
    gpx_choice() = delete;

    // "Load all tracks" first, then one entry per track in file order:
    // "ACTIVE LOG (3 Points)".
    static QStringList choice_texts(const QList<gpx_track> &tracks);

    // The track that `chosen` (one of choice_texts) stands for: the merged
    // track for the first entry, track i - 1 for entry i. Two equal entries
    // give the first of them. A text that isn't in the list gives nothing.
    static std::optional<gpx_track> chosen_track(const QList<gpx_track> &tracks,
                                                 const QString &chosen);

    // The tracks that `chosen` stands for: all of them for the first entry,
    // track i - 1 for entry i; none for a text that isn't in the list.
    static QList<gpx_track> chosen_tracks(const QList<gpx_track> &tracks, const QString &chosen);

    // Every point of every track in one track named "Merged Track", ordered
    // by time, earliest first. Points of equal times keep no promised
    // order; points without a valid time come first.
    static gpx_track merge(const QList<gpx_track> &tracks);
};
