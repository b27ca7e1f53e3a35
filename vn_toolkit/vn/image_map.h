#pragma once

#include <QString>

namespace vn {

// Process-wide names of the pictures that toolkit widgets show, so that an
// application can put in its own: image_map::set("image_logo", ":/app/logo.png").
// A name that was never set gives the widget's own default. Any thread: one
// mutex guards the map, held only for the lookup or the store.
class image_map
{
public:
    image_map() = delete;

    static void set(const QString &name, const QString &path);
    static void remove(const QString &name);
    // The path stored under `name`, or `default_path` if there is none.
    static QString path(const QString &name, const QString &default_path);
};

} // namespace vn
