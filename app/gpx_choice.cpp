#include "gpx_choice.h"

#include <QCoreApplication>

// The texts are the window's: they stand in its dialogs and its field, so
// they are translated in its context.

#include <algorithm>
#include <vector>

QStringList gpx_choice::choice_texts(const QList<gpx_track> &tracks)
{
    QStringList texts;
    texts.reserve(tracks.size() + 1);
    texts << QCoreApplication::translate("MainWindow", "Load all tracks");
    for (const gpx_track &track : tracks)
        texts << track.name + QCoreApplication::translate("MainWindow", " (%1 Points)")
                                  .arg(track.points.size());
    return texts;
}

std::optional<gpx_track> gpx_choice::chosen_track(const QList<gpx_track> &tracks,
                                                  const QString &chosen)
{
    const int index = choice_texts(tracks).indexOf(chosen);
    if (index < 0)
        return std::nullopt;
    if (index == 0)
        return merge(tracks);
    return tracks.at(index - 1);
}

QList<gpx_track> gpx_choice::chosen_tracks(const QList<gpx_track> &tracks, const QString &chosen)
{
    const int index = choice_texts(tracks).indexOf(chosen);
    if (index < 0)
        return {};
    if (index == 0)
        return tracks;
    return {tracks.at(index - 1)};
}

gpx_track gpx_choice::merge(const QList<gpx_track> &tracks)
{
    gpx_track merged;
    merged.name = QCoreApplication::translate("MainWindow", "Merged Track");
    int total = 0;
    for (const gpx_track &track : tracks)
        total += track.points.size();
    merged.points.reserve(total);
    // Each time is turned into a key once. Invalid times come first, as
    // QDateTime's operator< orders them, and a total order keeps the sort
    // well defined where operator< mixes zones and invalid values.
    struct keyed
    {
        bool valid;
        qint64 msecs;
        const gpx_point *point;
    };
    std::vector<keyed> order;
    order.reserve(size_t(total));
    for (const gpx_track &track : tracks) {
        for (const gpx_point &point : track.points) {
            const bool valid = point.time.isValid();
            order.push_back({valid, valid ? point.time.toMSecsSinceEpoch() : 0, &point});
        }
    }
    std::stable_sort(order.begin(), order.end(), [](const keyed &a, const keyed &b) {
        if (a.valid != b.valid)
            return b.valid;
        return a.msecs < b.msecs;
    });
    for (const keyed &k : order)
        merged.points.append(*k.point);
    return merged;
}
