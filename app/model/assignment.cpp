#include "model/assignment.h"

#include <algorithm>
#include <cstdlib>

namespace {

// One entry in the time-ordered list of a run. `index` is the entry's number
// in the result's terms: a photo index, or the photo count plus a track index.
struct slot
{
    qint64 ms;
    bool has_time;
    bool is_source;
    int index;
};

// QDateTime::operator< as observed in Qt 5.15: every invalid value before
// every valid one, invalid values equal among themselves.
bool earlier(const slot &a, const slot &b)
{
    if (a.has_time != b.has_time)
        return b.has_time;
    return a.ms < b.ms;
}

// QDateTime::secsTo as an absolute value: 0 if either time is missing, else
// the milliseconds truncated towards zero (10:00:00.900 to 10:00:01.100 is 0).
qint64 abs_secs_between(const slot &a, const slot &b)
{
    if (!a.has_time || !b.has_time)
        return 0;
    return std::llabs((b.ms - a.ms) / 1000);
}

// A difference of exactly the limit passes: 600 s is within 10 minutes.
bool within_limit(qint64 secs, int minutes)
{
    return minutes <= 0 || !(qint64(minutes) * 60 < secs);
}

// The nearest source on each side of one entry, each already tested against
// the limit: a side whose nearest source fails is given up, never searched
// further. -1 where a side has none.
struct neighbours
{
    int earlier = -1; // list positions
    int later = -1;
    qint64 secs_earlier = 0;
    qint64 secs_later = 0;
};

// With both neighbours track points strictly around the entry in time, the
// share of the way from the earlier to the later one at which the entry
// lies; otherwise -1. Instants in milliseconds, so that points less than a
// second apart still place a photo between them.
double share_between(const std::vector<slot> &list, const slot &here, const neighbours &n,
                     int photo_count)
{
    if (n.earlier < 0 || n.later < 0)
        return -1;
    const slot &from = list[size_t(n.earlier)];
    const slot &to = list[size_t(n.later)];
    if (from.index < photo_count || to.index < photo_count)
        return -1;
    if (!from.has_time || !here.has_time || !to.has_time || !(from.ms < here.ms) ||
        !(here.ms < to.ms))
        return -1;
    return double(here.ms - from.ms) / double(to.ms - from.ms);
}

// Of the two neighbours the nearer; at equal distance the later one.
// Returns the list position, -1 for none.
int nearest(const neighbours &n)
{
    if (n.later >= 0 && (n.earlier < 0 || n.secs_earlier >= n.secs_later))
        return n.later;
    return n.earlier;
}

} // namespace

bool assignment::is_known(sync_mode mode)
{
    const int value = int(mode);
    return value >= int(sync_mode::sync_previous) && value <= int(sync_mode::sync_gpx);
}

assignment::place assignment::between(const place &from, const place &to, double share)
{
    place at;
    at.lat = from.lat + (to.lat - from.lat) * share;
    // 179.5 to -179.5 is one degree east across ±180, not 359 west.
    double way_east = to.lon - from.lon;
    if (way_east > 180)
        way_east -= 360;
    else if (way_east < -180)
        way_east += 360;
    at.lon = from.lon + way_east * share;
    if (at.lon > 180)
        at.lon -= 360;
    else if (at.lon <= -180)
        at.lon += 360;
    at.has_ele = from.has_ele && to.has_ele;
    if (at.has_ele)
        at.ele = from.ele + (to.ele - from.ele) * share;
    return at;
}

const QString &assignment::indicator_text(mark indicator)
{
    static const QString texts[] = {
        QString(),           QString(QChar(0x2190)), QString(QChar(0x2191)), QString(QChar(0x2193)),
        QStringLiteral("G"), QStringLiteral("="),    QStringLiteral("?"),
    };
    return texts[int(indicator)];
}

assignment::result assignment::run(const std::vector<entry> &photos,
                                   const std::vector<entry> &track, const settings &s)
{
    result r;
    const int photo_count = int(photos.size());
    r.photos.resize(photos.size());
    for (int i = 0; i < photo_count; ++i) {
        if (photos[size_t(i)].is_source)
            r.photos[size_t(i)].indicator = mark::own;
    }
    if (!is_known(s.mode))
        return r;

    if (s.mode == sync_mode::sync_user_position) {
        for (int i = 0; i < photo_count; ++i) {
            r.overwrites_gps = r.overwrites_gps || photos[size_t(i)].is_source;
            r.photos[size_t(i)] = {mark::user, -1};
        }
        r.assigned = photo_count;
        r.total = photo_count;
        return r;
    }

    // The list runs from early to late whatever the table shows; the table's
    // direction only decides which arrow means "earlier".
    std::vector<slot> photo_slots;
    photo_slots.reserve(photos.size());
    for (int i = 0; i < photo_count; ++i) {
        const entry &e = photos[size_t(i)];
        photo_slots.push_back({e.utc_ms, e.has_time, e.is_source, i});
    }
    std::sort(photo_slots.begin(), photo_slots.end(), earlier);
    std::vector<slot> list;
    if (s.mode == sync_mode::sync_gpx && !track.empty()) {
        std::vector<slot> track_slots;
        track_slots.reserve(track.size());
        for (size_t j = 0; j < track.size(); ++j)
            track_slots.push_back({track[j].utc_ms, track[j].has_time, true, photo_count + int(j)});
        // A track comes sorted from its model; sorting it again per rebuild
        // cost more than all the rules together.
        if (!std::is_sorted(track_slots.begin(), track_slots.end(), earlier))
            std::sort(track_slots.begin(), track_slots.end(), earlier);
        list.resize(photo_slots.size() + track_slots.size());
        std::merge(photo_slots.begin(), photo_slots.end(), track_slots.begin(), track_slots.end(),
                   list.begin(), earlier);
    } else {
        list = std::move(photo_slots);
    }

    const mark earlier_mark = s.descending ? mark::down : mark::up;
    const mark later_mark = s.descending ? mark::up : mark::down;
    const int n = int(list.size());
    const auto unassign = [&](const slot &entry_slot) {
        r.photos[size_t(entry_slot.index)] = {mark::none, -1};
        ++r.not_assigned;
    };

    switch (s.mode) {
    case sync_mode::sync_previous:
    case sync_mode::sync_following: {
        // One sweep, backwards for "following". A photo that receives a
        // position here doesn't become a source for the next.
        const bool previous = s.mode == sync_mode::sync_previous;
        const mark taken = previous ? earlier_mark : later_mark;
        const slot *last_source = nullptr;
        for (int step = 0; step < n; ++step) {
            const slot &here = list[size_t(previous ? step : n - 1 - step)];
            ++r.total;
            if (here.is_source) {
                last_source = &here;
                continue;
            }
            if (last_source &&
                within_limit(abs_secs_between(here, *last_source), s.minutes_closest)) {
                r.photos[size_t(here.index)] = {taken, last_source->index};
                ++r.assigned;
            } else {
                unassign(here);
            }
        }
        break;
    }
    case sync_mode::sync_closest:
    case sync_mode::sync_gpx: {
        const int minutes = s.mode == sync_mode::sync_gpx ? s.minutes_gpx : s.minutes_closest;
        const bool interpolating = s.mode == sync_mode::sync_gpx && s.interpolate;
        r.total = n;
        // The nearest source on each side, found in two sweeps.
        std::vector<int> earlier_source(size_t(n), -1);
        int last = -1;
        for (int i = 0; i < n; ++i) {
            earlier_source[size_t(i)] = last;
            if (list[size_t(i)].is_source)
                last = i;
        }
        int next = -1;
        for (int i = n - 1; i >= 0; --i) {
            const slot &here = list[size_t(i)];
            if (here.is_source) {
                next = i;
                continue;
            }
            neighbours around;
            if (const int before = earlier_source[size_t(i)]; before >= 0) {
                const qint64 secs = abs_secs_between(here, list[size_t(before)]);
                if (within_limit(secs, minutes)) {
                    around.earlier = before;
                    around.secs_earlier = secs;
                }
            }
            if (next >= 0) {
                const qint64 secs = abs_secs_between(here, list[size_t(next)]);
                if (within_limit(secs, minutes)) {
                    around.later = next;
                    around.secs_later = secs;
                }
            }
            if (interpolating) {
                const double share = share_between(list, here, around, photo_count);
                if (share > 0) {
                    r.photos[size_t(here.index)] = {mark::track, list[size_t(around.earlier)].index,
                                                    list[size_t(around.later)].index, share};
                    ++r.assigned;
                    continue;
                }
            }
            const int chosen = nearest(around);
            if (chosen < 0) {
                unassign(here);
                continue;
            }
            const int source = list[size_t(chosen)].index;
            const mark taken = source >= photo_count    ? mark::track
                               : chosen == around.later ? later_mark
                                                        : earlier_mark;
            r.photos[size_t(here.index)] = {taken, source};
            ++r.assigned;
        }
        break;
    }
    case sync_mode::sync_user_position:
        break; // handled above
    }
    return r;
}
