#pragma once

#include <vn/pixel_argb.h>

#include <QImage>
#include <QPushButton>
#include <QString>

#include <functional>

QT_BEGIN_NAMESPACE
class QDragEnterEvent;
class QDropEvent;
class QMouseEvent;
class QPainter;
class QPaintEvent;
QT_END_NAMESPACE

namespace vn {

// The application's push button. Its look is one style sheet built from
// fragments and rebuilt after every setter; its icon is a set of recoloured
// images painted by state rather than a QIcon. Behaviour is extended through
// the callable members below instead of subclasses. Takes no keyboard focus.
// GUI thread only.
class button_dark : public QPushButton
{
    Q_OBJECT
    Q_DISABLE_COPY(button_dark)

public:
    using paint_function = std::function<void(QPainter &, QPushButton *)>;

    // One icon in three forms (normal, highlight, disabled), recoloured from a
    // stencil image. Absolute mode paints the colours over every pixel and
    // keeps the alpha; relative mode shifts the highlight image by the
    // difference between the highlight colour and the pixel nearest to the
    // normal colour, so a multicoloured icon keeps its shading.
    struct img_highlighter
    {
        pixel_argb normal_colour;
        pixel_argb highlight_colour;
        QString path;
        QImage normal;
        QImage highlight;
        QImage disabled;
        int width = 0;
        bool relative = false;

        // Loads path into the three images and recolours them. A file that
        // can't be read leaves the images as they were.
        bool reload();
        // The paint callable of this set drawn at x, y (-1 centres on that
        // axis). It refers to this set, which must outlive it.
        paint_function get_custom_paint_ex(int x, int y);

        void paint(QPainter &painter, QPushButton *button, int x, int y) const;
    };

    explicit button_dark(QWidget *parent = nullptr);
    button_dark(const QString &text, QWidget *parent = nullptr);
    ~button_dark() override;

    // Each setter rebuilds the sheet.
    void set_kind(const QString &kind);
    void set_alignment(const QString &alignment);
    void set_side_padding(int pixels);
    void set_text_colour(const pixel_argb &colour);
    void clear_text_colour();
    void set_flags(bool frame_when_checked, bool sheet_checked, bool highlight_when_checked,
                   bool sheet_pressed);

    // setFixedWidth(left + icon width + right).
    void set_fixed_width_to_icon(int left, int right);

    void set_icon(const QString &file, int x, int y, const pixel_argb &highlight,
                  const pixel_argb &normal);
    void set_icon(bool relative, const QString &file, int x, int y, const pixel_argb &highlight,
                  const pixel_argb &normal);
    void set_checked_icon(const QString &file, int x, int y, const pixel_argb &highlight,
                          const pixel_argb &normal);
    void set_checked_icon(bool relative, const QString &file, int x, int y,
                          const pixel_argb &highlight, const pixel_argb &normal);
    void set_pressed_icon(const QString &file, int x, int y, const pixel_argb &highlight,
                          const pixel_argb &normal);
    void set_pressed_icon(bool relative, const QString &file, int x, int y,
                          const pixel_argb &highlight, const pixel_argb &normal);

    int press_modifiers() const { return press_modifiers_; }
    QString kind() const { return kind_; }
    QString alignment() const { return alignment_; }
    bool frame_when_checked() const { return frame_when_checked_; }
    bool highlight_when_checked() const { return highlight_when_checked_; }
    bool sheet_checked() const { return sheet_checked_; }
    bool sheet_pressed() const { return sheet_pressed_; }
    const img_highlighter &icon_set() const { return icon_; }
    const img_highlighter &checked_icon_set() const { return checked_icon_; }
    const img_highlighter &pressed_icon_set() const { return pressed_icon_; }

    // A click on the checked button of an exclusive QButtonGroup unchecks it.
    bool allow_uncheck = false;
    // A checkable button that a left press holds only while held and a right
    // press latches.
    bool momentary = false;
    bool scale_icon = false;
    int scaled_width = 0; // width of the scaled icon; 0 fills the button
    bool draw_base = true;

    std::function<void(QPainter &)> overlay_paint;
    paint_function custom_paint;
    std::function<void(QDropEvent *, button_dark *)> drop_handler;
    std::function<void(QMouseEvent *)> release_handler;

protected:
    void mousePressEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    void dragEnterEvent(QDragEnterEvent *e) override;
    void dropEvent(QDropEvent *e) override;

    // Builds the sheet from the fragments below and sets it.
    void rebuild_sheet();

    // Sheet fragments; the base sheet fills %1 with the kind, %2 with the
    // alignment and %3 with the extra declarations.
    QString base_sheet_;
    QString disabled_sheet_;
    QString disabled_template_;
    QString checked_sheet_;
    QString pressed_sheet_;
    QString padding_template_;

private:
    void load_icon(img_highlighter &set, bool relative, const QString &file,
                   const pixel_argb &highlight, const pixel_argb &normal);

    QString kind_;
    QString alignment_;
    img_highlighter icon_;
    img_highlighter checked_icon_;
    img_highlighter pressed_icon_;
    bool frame_when_checked_ = false;
    bool highlight_when_checked_ = true;
    bool sheet_checked_ = true;
    bool sheet_pressed_ = true;
    int side_padding_ = 0;
    pixel_argb text_colour_;
    bool has_text_colour_ = false;
    int press_modifiers_ = 0;
};

} // namespace vn
