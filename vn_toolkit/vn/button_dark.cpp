#include <vn/button_dark.h>

#include <QButtonGroup>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMouseEvent>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vn {

namespace {

// Replaces %1 to %9 in one pass, so a value holding "%2" is never filled in
// again, and a template without some of the markers (the flat buttons' base
// sheet has none) gives no QString::arg warning.
QString fill_markers(const QString &text, const QStringList &values)
{
    QString out;
    out.reserve(text.size() + 64);
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('%') && i + 1 < text.size()) {
            const int n = text.at(i + 1).digitValue();
            if (n >= 1 && n <= values.size()) {
                out += values.at(n - 1);
                ++i;
                continue;
            }
        }
        out += c;
    }
    return out;
}

int clamp_channel(int v)
{
    return std::clamp(v, 0, 255);
}

// Paints the colour's red, green and blue into every pixel; the alpha of the
// stencil stays, halved if asked.
void paint_colour(QImage &image, const pixel_argb &colour, bool halve_alpha)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<pixel_argb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            line[x].red = colour.red;
            line[x].green = colour.green;
            line[x].blue = colour.blue;
            if (halve_alpha)
                line[x].alpha = std::uint8_t(line[x].alpha / 2);
        }
    }
}

void halve_alpha(QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<pixel_argb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x].alpha = std::uint8_t(line[x].alpha / 2);
    }
}

// The pixel of the image nearest to the colour by the sum of the absolute
// channel differences. Without any pixel nearer than the greatest possible
// distance (765), the colour itself.
pixel_argb nearest_pixel(const QImage &image, const pixel_argb &colour)
{
    pixel_argb found = colour;
    int best = 765;
    for (int y = 0; y < image.height() && best > 0; ++y) {
        const auto *line = reinterpret_cast<const pixel_argb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int d = std::abs(line[x].red - colour.red) +
                          std::abs(line[x].green - colour.green) +
                          std::abs(line[x].blue - colour.blue);
            if (d < best) {
                best = d;
                found = line[x];
                if (d == 0)
                    break;
            }
        }
    }
    return found;
}

void shift_colour(QImage &image, int dr, int dg, int db)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<pixel_argb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            line[x].red = std::uint8_t(clamp_channel(line[x].red + dr));
            line[x].green = std::uint8_t(clamp_channel(line[x].green + dg));
            line[x].blue = std::uint8_t(clamp_channel(line[x].blue + db));
        }
    }
}

} // namespace

bool button_dark::img_highlighter::reload()
{
    QImage loaded(path);
    if (loaded.isNull())
        return false;
    // Non-premultiplied, so that the colour channels can be set apart from
    // the alpha, and laid out as pixel_argb.
    loaded = loaded.convertToFormat(QImage::Format_ARGB32);
    normal = loaded;
    highlight = loaded.copy();
    disabled = loaded.copy();
    width = loaded.width();
    if (relative) {
        const pixel_argb reference = nearest_pixel(normal, normal_colour);
        shift_colour(highlight, highlight_colour.red - reference.red,
                     highlight_colour.green - reference.green,
                     highlight_colour.blue - reference.blue);
        halve_alpha(disabled);
    } else {
        paint_colour(normal, normal_colour, false);
        paint_colour(highlight, highlight_colour, false);
        paint_colour(disabled, normal_colour, true);
    }
    return true;
}

button_dark::paint_function button_dark::img_highlighter::get_custom_paint_ex(int x, int y)
{
    return [this, x, y](QPainter &painter, QPushButton *button) { paint(painter, button, x, y); };
}

void button_dark::img_highlighter::paint(QPainter &painter, QPushButton *button, int x, int y) const
{
    // The highlight rules read button_dark's flags, so any other button is a
    // wrong use. It is reported and the icon left out: a wrong paint call must
    // not end the program.
    auto *bd = qobject_cast<button_dark *>(button);
    if (!bd) {
        qCritical("%s: ASSERT failure: \"bd\" in file vn/button_dark.cpp, line %d: "
                  "not a vn::button_dark, the icon is not painted",
                  Q_FUNC_INFO, __LINE__);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);

    const QImage *image = &normal;
    if (!bd->isEnabled())
        image = &disabled;
    else if (bd->underMouse() ||
             (bd->highlight_when_checked() && bd->isCheckable() && bd->isChecked()))
        image = &highlight;

    if (!image->isNull()) {
        const int w = bd->width();
        const int h = bd->height();
        if (bd->scale_icon) {
            if (bd->scaled_width > 0 && w > 0) {
                const int sw = bd->scaled_width;
                const int sh = int(std::lround(double(sw) * h / w));
                painter.drawImage(QRect((w - sw) / 2, (h - sh) / 2, sw, sh), *image);
            } else {
                painter.drawImage(QRect(0, 0, w, h), *image);
            }
        } else {
            const int px = x == -1 ? (w - image->width()) / 2 : x;
            const int py = y == -1 ? (h - image->height()) / 2 : y;
            painter.drawImage(QPoint(px, py), *image);
        }
    }

    if (bd->frame_when_checked() && bd->isCheckable() && bd->isChecked()) {
        painter.setPen(QPen(QColor(129, 136, 133), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRect(QPoint(0, 0), QPoint(bd->width() - 1, bd->height() - 1)));
    }
}

button_dark::button_dark(QWidget *parent)
    : button_dark(QString(), parent)
{}

button_dark::button_dark(const QString &text, QWidget *parent)
    : QPushButton(text, parent)
    , base_sheet_(QStringLiteral(
          "QPushButton{color:rgb(198,213,210);border-style:none;border-width:3px;"
          "border-image:url(:/gui/button/%1_normal.png) 3 stretch;text-align:%2;%3;"
          "background:transparent;"
          "padding: 0.25em 1em;"
          "}QPushButton::hover{color:#f0f0f0;}QToolTip{border:1px solid rgb(99,99,99);"
          "background-image:none;background-color:rgb(47,47,47);}"))
    , disabled_sheet_(QStringLiteral("QPushButton::disabled{color:rgba(129,136,133,50%);}"))
    , disabled_template_(QStringLiteral("QPushButton::disabled{color:rgba(%1,%2,%3,50%);}"))
    , checked_sheet_(QStringLiteral("QPushButton::checked{border-style:none;border-width:3px;"
                                    "border-image:url(:/gui/button/%1_pressed.png) 3 stretch;}"))
    , pressed_sheet_(QStringLiteral("QPushButton::pressed{border-style:none;border-width:3px;"
                                    "border-image:url(:/gui/button/%1_pressed.png) 3 stretch;}"))
    , padding_template_(QStringLiteral("padding-left: %1px; padding-right: %1px;"))
    , kind_(QStringLiteral("dark"))
    , alignment_(QStringLiteral("center"))
{
    setFocusPolicy(Qt::NoFocus);
    rebuild_sheet();
}

button_dark::~button_dark() = default;

void button_dark::rebuild_sheet()
{
    QString sheet = base_sheet_;
    if (sheet_checked_)
        sheet += checked_sheet_;
    if (sheet_pressed_)
        sheet += pressed_sheet_;

    QString extra;
    if (side_padding_ != 0)
        extra += padding_template_.arg(side_padding_);
    if (has_text_colour_) {
        extra += QStringLiteral("color:rgba(%1,%2,%3,%4);")
                     .arg(text_colour_.red)
                     .arg(text_colour_.green)
                     .arg(text_colour_.blue)
                     .arg(text_colour_.alpha);
        sheet +=
            disabled_template_.arg(text_colour_.red).arg(text_colour_.green).arg(text_colour_.blue);
    } else {
        sheet += disabled_sheet_;
    }
    setStyleSheet(fill_markers(sheet, {kind_, alignment_, extra}));
}

void button_dark::set_kind(const QString &kind)
{
    kind_ = kind;
    rebuild_sheet();
}

void button_dark::set_alignment(const QString &alignment)
{
    alignment_ = alignment;
    rebuild_sheet();
}

void button_dark::set_side_padding(int pixels)
{
    side_padding_ = pixels;
    rebuild_sheet();
}

void button_dark::set_text_colour(const pixel_argb &colour)
{
    text_colour_ = colour;
    has_text_colour_ = true;
    rebuild_sheet();
}

void button_dark::clear_text_colour()
{
    has_text_colour_ = false;
    rebuild_sheet();
}

void button_dark::set_flags(bool frame_when_checked, bool sheet_checked,
                            bool highlight_when_checked, bool sheet_pressed)
{
    frame_when_checked_ = frame_when_checked;
    sheet_checked_ = sheet_checked;
    highlight_when_checked_ = highlight_when_checked;
    sheet_pressed_ = sheet_pressed;
    rebuild_sheet();
}

void button_dark::set_fixed_width_to_icon(int left, int right)
{
    setFixedWidth(left + icon_.width + right);
}

void button_dark::load_icon(img_highlighter &set, bool relative, const QString &file,
                            const pixel_argb &highlight, const pixel_argb &normal)
{
    set.relative = relative;
    set.normal_colour = normal;
    set.highlight_colour = highlight;
    if (!set.path.isEmpty())
        set.reload(); // the new colours on the images held so far
    if (!QFileInfo::exists(file))
        qDebug("%s: Can't open icon %s", Q_FUNC_INFO, qUtf8Printable(file));
    set.path = file;
    if (!set.path.isEmpty())
        set.reload();
}

void button_dark::set_icon(const QString &file, int x, int y, const pixel_argb &highlight,
                           const pixel_argb &normal)
{
    set_icon(false, file, x, y, highlight, normal);
}

void button_dark::set_icon(bool relative, const QString &file, int x, int y,
                           const pixel_argb &highlight, const pixel_argb &normal)
{
    load_icon(icon_, relative, file, highlight, normal);
    custom_paint = icon_.get_custom_paint_ex(x, y);
    update();
}

void button_dark::set_checked_icon(const QString &file, int x, int y, const pixel_argb &highlight,
                                   const pixel_argb &normal)
{
    set_checked_icon(false, file, x, y, highlight, normal);
}

void button_dark::set_checked_icon(bool relative, const QString &file, int x, int y,
                                   const pixel_argb &highlight, const pixel_argb &normal)
{
    load_icon(checked_icon_, relative, file, highlight, normal);
    // The checked image stands in for the checked border image.
    sheet_checked_ = false;
    rebuild_sheet();
    custom_paint = [first = icon_.get_custom_paint_ex(x, y),
                    second = checked_icon_.get_custom_paint_ex(x, y)](QPainter &painter,
                                                                      QPushButton *button) {
        (button->isChecked() ? second : first)(painter, button);
    };
    update();
}

void button_dark::set_pressed_icon(const QString &file, int x, int y, const pixel_argb &highlight,
                                   const pixel_argb &normal)
{
    set_pressed_icon(false, file, x, y, highlight, normal);
}

void button_dark::set_pressed_icon(bool relative, const QString &file, int x, int y,
                                   const pixel_argb &highlight, const pixel_argb &normal)
{
    load_icon(pressed_icon_, relative, file, highlight, normal);
    custom_paint = [first = icon_.get_custom_paint_ex(x, y),
                    second = pressed_icon_.get_custom_paint_ex(x, y)](QPainter &painter,
                                                                      QPushButton *button) {
        (button->isDown() ? second : first)(painter, button);
    };
    update();
}

void button_dark::mousePressEvent(QMouseEvent *e)
{
    press_modifiers_ = int(e->modifiers());
    if (isCheckable() && momentary) {
        if (e->button() == Qt::LeftButton) {
            setChecked(true);
            return;
        }
        if (e->button() == Qt::RightButton) {
            toggle();
            return;
        }
    }
    QPushButton::mousePressEvent(e);
}

void button_dark::mouseReleaseEvent(QMouseEvent *e)
{
    QButtonGroup *buttons = group();
    if (buttons && buttons->exclusive() && allow_uncheck && buttons->checkedButton() == this &&
        isChecked()) {
        // An exclusive group refuses to uncheck its checked button, so the
        // group lets go for the length of this click.
        buttons->setExclusive(false);
        QPushButton::mouseReleaseEvent(e);
        setChecked(false);
        buttons->setExclusive(true);
        if (release_handler)
            release_handler(e);
        return;
    }
    if (isCheckable() && isChecked() && momentary && e->button() == Qt::LeftButton)
        setChecked(false);
    if (release_handler)
        release_handler(e);
    QPushButton::mouseReleaseEvent(e);
    press_modifiers_ = 0;
}

void button_dark::paintEvent(QPaintEvent *e)
{
    if (draw_base)
        QPushButton::paintEvent(e);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (custom_paint)
        custom_paint(painter, this);
    if (overlay_paint)
        overlay_paint(painter);
}

void button_dark::dragEnterEvent(QDragEnterEvent *e)
{
    e->acceptProposedAction();
}

void button_dark::dropEvent(QDropEvent *e)
{
    if (drop_handler)
        drop_handler(e, this);
    else
        QWidget::dropEvent(e);
}

} // namespace vn
