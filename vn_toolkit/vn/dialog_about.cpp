#include <vn/dialog_about.h>

#include <vn/clickable_label.h>
#include <vn/image_map.h>
#include <vn/label.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QSysInfo>
#include <QVBoxLayout>
#include <QtGlobal>

#include <algorithm>

namespace vn {

namespace {
const char maker_name[] = "Orvane";
const char maker_site[] = "https://orvane.example/";
constexpr int first_year = 2013;
constexpr int max_logo_width = 999999;
} // namespace

dialog_about::dialog_about(QWidget *parent, bool show_website, const QString &logo_sheet,
                           int header_height, int margin)
    : QDialog(parent)
{
    const QFont text_font(QStringLiteral("FreeSans"), 9);
    // The bold face of FreeSans registers as family "FreeSans", style "Bold",
    // on some systems and as "FreeSansBold" on others; either one is taken.
    QFont title_font(QStringLiteral("FreeSansBold"), 11);
    title_font.setFamilies({QStringLiteral("FreeSansBold"), QStringLiteral("FreeSans")});
    title_font.setBold(true);
    setFont(text_font);
    setObjectName(QStringLiteral("dialog_about"));
    setStyleSheet(QStringLiteral("#dialog_about{ background-color:rgb(47,47,47); }"
                                 "*{ color:rgb(198,213,210); }"
                                 "QToolTip { border:1px solid rgb(99,99,99);"
                                 "background-image:none; background-color:rgb(47,47,47); }"));
    setWindowTitle(tr("About"));
    setWindowFlags((windowFlags() | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                    Qt::WindowCloseButtonHint) &
                   ~(Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                     Qt::WindowContextHelpButtonHint));

    layout_ = new QVBoxLayout(this);
    layout_->setContentsMargins(0, 0, 0, 0);

    auto *header = new QWidget(this);
    header->setObjectName(QStringLiteral("logobg"));
    header->setFixedHeight(header_height);
    header->setStyleSheet(logo_sheet);
    // A QWidget paints a style sheet background only with this attribute.
    header->setAttribute(Qt::WA_StyledBackground, true);
    auto *header_layout = new QHBoxLayout(header);
    header_layout->setSpacing(0);
    header_layout->setContentsMargins(0, 0, 0, 0);
    auto *logo_label = new label(header);
    logo_label->setStyleSheet(QStringLiteral("background-image:none; background-color:none;"));
    logo_label->setFixedSize(logo_size(logo().size(), header_height - margin));
    logo_label->paint = [](QPainter &p, label *l) {
        p.setRenderHint(QPainter::SmoothPixmapTransform, true);
        p.drawImage(l->rect(), logo());
    };
    header_layout->addStretch();
    header_layout->addWidget(logo_label);
    header_layout->addStretch();
    layout_->addWidget(header);

    // The rows below the header keep a distance from the dialog's edges,
    // which the main layout doesn't.
    auto *body = new QVBoxLayout;
    body->setContentsMargins(2 * margin, margin, 2 * margin, margin);
    layout_->addLayout(body, 1);

    auto *grid = new QGridLayout;
    auto *version_caption = new QLabel(tr("Version:"), this);
    version_caption->setFont(title_font);
    grid->addWidget(version_caption, 0, 0);
    // The word size of the running build, e.g. "2.1.0 - 64 Bit".
    grid->addWidget(new QLabel(QStringLiteral("%1 - %2 %3")
                                   .arg(QCoreApplication::applicationVersion())
                                   .arg(QSysInfo::WordSize)
                                   .arg(tr("Bit")),
                               this),
                    0, 1);
    grid->setColumnStretch(1, 1);
    body->addLayout(grid, 1);

    body->addSpacing(20);

    if (show_website) {
        auto *site = new QHBoxLayout;
        auto *site_caption = new QLabel(tr("Webseite:"), this);
        site_caption->setFont(title_font);
        site->addWidget(site_caption);
        auto *site_link =
            new QLabel(QStringLiteral("<a href=\"%1\" style=\"color:#728a84;\">%1</a>")
                           .arg(QLatin1String(maker_site)),
                       this);
        site_link->setObjectName(QStringLiteral("site_link"));
        site_link->setTextFormat(Qt::RichText);
        site_link->setOpenExternalLinks(true);
        site->addWidget(site_link, 1);
        body->addLayout(site);
    }

    auto *libs = new clickable_label(tr("Click here for 3rd party library information"), this);
    libs->setObjectName(QStringLiteral("third_party_link"));
    libs->setStyleSheet(libs->styleSheet() + QStringLiteral("QLabel { color:#728a84; }"));
    libs->setCursor(Qt::PointingHandCursor);
    connect(libs, &clickable_label::clicked, this, [this] {
        if (third_party_libs)
            third_party_libs(this);
    });
    body->addWidget(libs);

    const int this_year = QDateTime::currentDateTimeUtc().date().year();
    auto *maker = new QLabel(tr("Copyright %1 %2-%3 %4. All rights reserved.")
                                 .arg(QChar(0x00A9))
                                 .arg(first_year)
                                 .arg(this_year)
                                 .arg(QLatin1String(maker_name)),
                             this);
    maker->setObjectName(QStringLiteral("maker_line"));
    body->addWidget(maker);

    const QSize hint = sizeHint();
    setFixedHeight(hint.height());
    setFixedWidth(int(hint.width() * 1.2));
}

dialog_about::~dialog_about() = default;

QSize dialog_about::logo_size(const QSize &image, int height)
{
    if (image.isEmpty() || height <= 0)
        return QSize(0, std::max(height, 0));
    const qint64 width = qint64(height) * image.width() / image.height();
    if (width <= max_logo_width)
        return QSize(int(width), height);
    return QSize(max_logo_width, int(qint64(max_logo_width) * image.height() / image.width()));
}

const QImage &dialog_about::logo()
{
    static const QImage image = [] {
        const QString path =
            image_map::path(QStringLiteral("image_logo"), QStringLiteral(":/images/logo.png"));
        QImage loaded(path);
        if (loaded.isNull())
            qWarning("%s: Could not load the logo '%s'; the header shows none.", Q_FUNC_INFO,
                     qUtf8Printable(path));
        return loaded;
    }();
    return image;
}

// The program links Qt and talks to ExifTool, and its resources embed two
// fonts of GNU FreeFont; it uses no other third-party code. FreeImage and
// Little CMS are not part of it, so `freeimage` adds nothing: the flag stays
// for callers that pass it.
QVector<dialog_3rd_part_lib_info::entry> dialog_about::default_entries(bool exiftool,
                                                                       bool freeimage)
{
    Q_UNUSED(freeimage)
    QVector<dialog_3rd_part_lib_info::entry> entries;
    entries.append({QStringLiteral("Qt ") + QLatin1String(qVersion()),
                    tr("This software uses the Qt toolkit, linked dynamically under the GNU "
                       "Lesser General Public License (LGPL) version 3. The source code of the "
                       "Qt SDK is available at:<br><a href=\"https://www.qt.io/\" "
                       "style=\"color:#728a84;\">https://www.qt.io/</a>"),
                    QString()});
    if (exiftool)
        entries.append({QStringLiteral("Exiftool"),
                        tr("This software uses ExifTool by Phil Harvey to read and write "
                           "metadata:<br><a href=\"https://exiftool.org/\" "
                           "style=\"color:#728a84;\">https://exiftool.org/</a>"),
                        QString()});
    entries.append({QStringLiteral("GNU FreeFont"),
                    tr("This software embeds the fonts FreeSans and FreeSansBold of GNU "
                       "FreeFont, licensed under the GNU General Public License version 3 or "
                       "later with the font exception:<br><a "
                       "href=\"https://www.gnu.org/software/freefont/\" "
                       "style=\"color:#728a84;\">https://www.gnu.org/software/freefont/</a>"),
                    QString()});
    return entries;
}

void dialog_about::default_3rdparty_libs(bool exiftool, bool freeimage)
{
    const QVector<dialog_3rd_part_lib_info::entry> entries = default_entries(exiftool, freeimage);
    third_party_libs = [entries](QWidget *parent) {
        dialog_3rd_part_lib_info dialog(parent);
        for (const dialog_3rd_part_lib_info::entry &e : entries)
            dialog.add_entry(e);
        dialog.exec();
    };
}

bool dialog_about::place_centred(QWidget *parent)
{
    if (!parent)
        return false;
    const QWidget *window = parent->window();
    QRect centred(QPoint(0, 0), size());
    centred.moveCenter(window->geometry().center());
    const QScreen *screen = window->screen();
    if (!screen || !screen->geometry().contains(centred))
        return false;
    setGeometry(centred);
    return true;
}

// Blocks in the modal loop until the dialog closes. GUI thread only.
int dialog_about::show_centred(QWidget *parent)
{
    place_centred(parent);
    setWindowModality(Qt::ApplicationModal);
    return exec();
}

} // namespace vn
