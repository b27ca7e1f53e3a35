#pragma once

#include <vn/dialog_3rd_part_lib_info.h>

#include <QDialog>
#include <QImage>
#include <QSize>
#include <QVector>

#include <functional>

QT_BEGIN_NAMESPACE
class QVBoxLayout;
QT_END_NAMESPACE

namespace vn {

// The application's About box: the logo on a header, the version, the
// maker's site, a link to the third-party list and the maker's line. Made as
// a local value for one showing:
//
//   vn::dialog_about dlg(this, true, "#logobg{ background-image:url(:/images/Head.png);}", 97, 10);
//   dlg.default_3rdparty_libs(true, false);
//   dlg.show_centred(this);
//
// GUI thread only. Its size is fixed when it is built.
class dialog_about : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY(dialog_about)

public:
    // `show_website` adds the line with the maker's site. `logo_sheet` styles
    // the header (object name "logobg"), which is `header_height` high; the
    // logo in it is `margin` less high.
    dialog_about(QWidget *parent, bool show_website, const QString &logo_sheet, int header_height,
                 int margin);
    ~dialog_about() override;

    // Sets `third_party_libs` to open the list of what the program uses: Qt,
    // ExifTool if `exiftool`, and the embedded GNU FreeFont.
    void default_3rdparty_libs(bool exiftool, bool freeimage);
    // The entries that default_3rdparty_libs lists, in order.
    static QVector<dialog_3rd_part_lib_info::entry> default_entries(bool exiftool, bool freeimage);

    // Centres the dialog on `parent`'s window if the centred rectangle lies on
    // that window's screen, then runs it application-modal. Blocks in the
    // modal loop until the dialog closes; returns exec()'s result.
    int show_centred(QWidget *parent);
    // The first step of show_centred: true when the dialog was moved, false
    // when it stays where Qt puts it (no parent, or off the screen).
    bool place_centred(QWidget *parent);

    // Size of a label that shows an image of `image` size at `height`, width
    // in proportion and truncated; above 999999 the width is held there and
    // the height shrinks in step. logo_size({300, 64}, 87) == {407, 87}.
    static QSize logo_size(const QSize &image, int height);
    // The logo, loaded on first use from image_map's "image_logo" (default
    // ":/images/logo.png") and kept for the life of the process.
    static const QImage &logo();

    // Opens the third-party list, with the About box as the parent. Called by
    // a click on the line "Click here for 3rd party library information".
    std::function<void(QWidget *)> third_party_libs;

private:
    QVBoxLayout *layout_ = nullptr;
};

} // namespace vn
