#pragma once

#include <QString>
#include <QtGlobal>

#include <vector>

// The assignment mode. The values are stored in the settings ("sync_order")
// and handed around as int by the radios; they must not change.
enum class sync_mode : int {
    sync_previous = 0,      // the nearest earlier photo with a position
    sync_following = 1,     // the nearest later photo with a position
    sync_closest = 2,       // the photo nearest in time, either side
    sync_user_position = 3, // the typed position, or clearing
    sync_gpx = 4,           // as closest, with the track's points as further sources
};

// The rules that decide, for every photo of a rebuild, whose position it
// receives. Plain functions of a list of entries and the settings: no files,
// no metadata, no model. A result names the entry whose position a photo
// takes, or the two track points between which it lies; the caller owns the
// positions and copies them, or places the photo between the two with
// between().
//
// Entries are compared by instant only. An entry without a time sorts before
// every timed one and is 0 seconds from everything, as QDateTime orders an
// invalid value and as its secsTo measures one. Differences are whole seconds,
// truncated towards zero.
class assignment
{
public:
    assignment() = delete;

    // One photo or track point.
    struct entry
    {
        qint64 utc_ms = 0;      // the instant, milliseconds since 1970 UTC
        bool has_time = false;  // false: no readable date
        bool is_source = false; // has a position of its own; every track point is one
    };

    struct settings
    {
        sync_mode mode = sync_mode::sync_previous;
        bool descending = false;  // the table's order; decides whether "earlier" is up or down
        int minutes_closest = -1; // limit of the three photo modes; 0 or less: none
        int minutes_gpx = -1;     // limit of sync_gpx; 0 or less: none
        // sync_gpx: a photo whose nearest sources on both sides are track
        // points within the limit, strictly earlier and later than the photo,
        // lies between them. A photo source on either side, a side beyond the
        // limit or a point at the photo's own instant keeps the nearest rule.
        bool interpolate = false;
    };

    // What a photo shows in front of its position. `up` and `down` name the
    // neighbouring row of the table that the position came from.
    enum class mark { untouched, own, up, down, track, user, none };

    struct outcome
    {
        mark indicator = mark::untouched;
        // The entry whose position the photo takes: a photo's index in the
        // photo list, or the number of photos plus a track point's index in
        // the track list. -1 for an own, typed, cleared or missing position.
        int source = -1;
        // Interpolated: the later track point, in the terms of `source`, and
        // how far the photo lies from `source` to it by time, strictly
        // between 0 and 1. -1 when the photo takes `source` as it stands.
        int towards = -1;
        double share = 0;
    };

    // A track point as numbers: degrees, and metres where it has an elevation.
    struct place
    {
        double lat = 0;
        double lon = 0;
        bool has_ele = false;
        double ele = 0;
    };

    struct result
    {
        std::vector<outcome> photos; // one per photo, in the order given
        int assigned = 0;            // photos that received a position
        int not_assigned = 0;        // photos that found none
        int total = 0;               // entries taken part, track points included
        bool overwrites_gps = false; // the typed position replaces a photo's own
    };

    // Runs the rule of `s.mode` over the photos, in any order, and, in
    // sync_gpx only, the track's points, in any order. An unknown mode
    // leaves every photo as it is (own positions stay "own") and counts
    // nothing. Equal instants keep no promised order.
    static result run(const std::vector<entry> &photos, const std::vector<entry> &track,
                      const settings &s);

    // The place `share` of the way from `from` to `to` on a straight line of
    // latitude and longitude, which crosses ±180° where that way is shorter;
    // the longitude stays within (-180, 180]. An elevation only if both
    // points have one.
    static place between(const place &from, const place &to, double share);

    static bool is_known(sync_mode mode);

    // "←", "↑", "↓", "G", "=", "?"; empty for an untouched photo.
    static const QString &indicator_text(mark indicator);
};
