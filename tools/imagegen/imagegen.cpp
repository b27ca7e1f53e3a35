// Paints every picture that the toolkit and the application show, so that the
// resources are made from this source and nothing else.
//
//   loxmere_imagegen [--font file.ttf]... out_dir name.png [name@2x.png]...
//
// Each name is a path relative to out_dir, as the resource file lists it. A
// name ending in "@2x.png" is the same picture painted at twice the size. An
// unknown name is an error, so the resource list and this program cannot drift
// apart unnoticed. Icons for recoloured buttons are stencils: one flat colour
// whose alpha carries the shape.
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QMap>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>

namespace {

const QColor surface(47, 47, 47);
const QColor sunken(38, 38, 38);
const QColor text(198, 213, 210);
const QColor border(99, 99, 99);
const QColor border_dark(75, 75, 75);
const QColor muted(146, 152, 148);
const QColor link(114, 138, 132);
const QColor disabled_text(100, 100, 100);
const QColor stencil(240, 240, 240); // any flat colour: buttons replace RGB
const QColor warning_yellow(236, 188, 44);

struct image_spec
{
    QSize size;
    std::function<void(QPainter &)> paint;
};

QFont sans(int pixel_size, bool bold = false)
{
    QFont f(QStringLiteral("FreeSans"));
    f.setPixelSize(pixel_size);
    f.setBold(bold);
    f.setStyleStrategy(QFont::PreferAntialias);
    return f;
}

// A 1-px line along pixel row or column boundaries lands on whole pixels only
// when its centre is on a half pixel.
QRectF crisp(qreal x, qreal y, qreal w, qreal h)
{
    return QRectF(x + 0.5, y + 0.5, w - 1, h - 1);
}

QPen pen(const QColor &c, qreal width = 1.0)
{
    QPen p(c, width);
    p.setJoinStyle(Qt::MiterJoin);
    p.setCapStyle(Qt::FlatCap);
    return p;
}

// ---- toolkit: border images (9x9, 3-px slice) ------------------------------

QColor mix(const QColor &a, const QColor &b, qreal t)
{
    return QColor::fromRgbF(
        a.redF() + (b.redF() - a.redF()) * t, a.greenF() + (b.greenF() - a.greenF()) * t,
        a.blueF() + (b.blueF() - a.blueF()) * t, a.alphaF() + (b.alphaF() - a.alphaF()) * t);
}

// Filled pixel by pixel rather than as an antialiased rounded rectangle: the
// slices are stretched, so left and right must mirror each other exactly.
void button_face(QPainter &p, const QColor &face, const QColor &edge, const QColor &top_light)
{
    p.fillRect(QRect(1, 1, 7, 7), face);
    p.fillRect(QRect(1, 0, 7, 1), edge);
    p.fillRect(QRect(1, 8, 7, 1), edge);
    p.fillRect(QRect(0, 1, 1, 7), edge);
    p.fillRect(QRect(8, 1, 1, 7), edge);
    QColor corner = edge;
    corner.setAlphaF(edge.alphaF() * 0.35);
    const QColor inner_corner = mix(face, edge, 0.5);
    for (const QPoint &c : {QPoint(0, 0), QPoint(8, 0), QPoint(0, 8), QPoint(8, 8)})
        p.fillRect(QRect(c, QSize(1, 1)), corner);
    for (const QPoint &c : {QPoint(1, 1), QPoint(7, 1), QPoint(1, 7), QPoint(7, 7)})
        p.fillRect(QRect(c, QSize(1, 1)), inner_corner);
    if (top_light.alpha() > 0) {
        p.setCompositionMode(QPainter::CompositionMode_SourceOver);
        p.fillRect(QRect(2, 1, 5, 1), top_light);
    }
}

void panel_border(QPainter &p, bool with_top)
{
    p.fillRect(QRect(0, 0, 9, 9), surface);
    const QColor gap(24, 24, 24);
    const QColor bevel(68, 68, 68);
    if (with_top) {
        p.setPen(pen(gap));
        p.drawRect(crisp(0, 0, 9, 9));
        p.setPen(pen(bevel));
        p.drawRect(crisp(1, 1, 7, 7));
        return;
    }
    // Open at the top: the side lines run on to the upper edge so that a
    // panel joins the band above it without a seam.
    p.setPen(pen(gap));
    p.drawPolyline(
        QPolygonF({QPointF(0.5, 0), QPointF(0.5, 8.5), QPointF(8.5, 8.5), QPointF(8.5, 0)}));
    p.setPen(pen(bevel));
    p.drawPolyline(
        QPolygonF({QPointF(1.5, 0), QPointF(1.5, 7.5), QPointF(7.5, 7.5), QPointF(7.5, 0)}));
}

void radio(QPainter &p, bool checked, bool enabled)
{
    const QPointF c(6.5, 6.5);
    p.setPen(pen(enabled ? (checked ? muted : border) : border_dark));
    p.setBrush(enabled ? sunken : QColor(44, 44, 44));
    p.drawEllipse(c, 5.5, 5.5);
    if (checked) {
        p.setPen(Qt::NoPen);
        p.setBrush(enabled ? text : disabled_text);
        p.drawEllipse(c, 2.75, 2.75);
    }
}

void checkbox(QPainter &p, bool checked, bool enabled)
{
    const QColor frame = !enabled ? border_dark : checked ? QColor(255, 255, 255) : border;
    p.setPen(pen(frame));
    p.setBrush(enabled ? sunken : QColor(44, 44, 44));
    p.drawRect(crisp(1, 1, 14, 14));
    if (!checked)
        return;
    QPen tick(enabled ? text : disabled_text, 2.0);
    tick.setCapStyle(Qt::SquareCap);
    tick.setJoinStyle(Qt::MiterJoin);
    p.setPen(tick);
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({QPointF(4.5, 8), QPointF(7, 10.5), QPointF(11.5, 5.5)}));
}

void combobox_arrow(QPainter &p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(text);
    p.drawPolygon(QPolygonF({QPointF(8, 10), QPointF(16, 10), QPointF(12, 14.5)}));
}

// ---- application: stencil icons --------------------------------------------

// Everything painted after this call cuts holes into what is already there.
void cut(QPainter &p)
{
    p.setCompositionMode(QPainter::CompositionMode_Clear);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::black);
}

void gear(QPainter &p, const QPointF &c, qreal r_outer, qreal r_body, qreal r_hole, int teeth,
          qreal tooth_width)
{
    QPainterPath body;
    body.addEllipse(c, r_body, r_body);
    for (int i = 0; i < teeth; ++i) {
        QPainterPath tooth;
        tooth.addRoundedRect(QRectF(-tooth_width / 2, -r_outer, tooth_width, r_outer - r_body + 1),
                             0.6, 0.6);
        QTransform t;
        t.translate(c.x(), c.y());
        t.rotate(360.0 * i / teeth);
        body = body.united(t.map(tooth));
    }
    QPainterPath hole;
    hole.addEllipse(c, r_hole, r_hole);
    p.setPen(Qt::NoPen);
    p.setBrush(stencil);
    p.drawPath(body.subtracted(hole));
}

void disc_with_glyph(QPainter &p, const QString &glyph)
{
    p.setPen(Qt::NoPen);
    p.setBrush(stencil);
    p.drawEllipse(QPointF(8.5, 8.5), 8.0, 8.0);
    cut(p);
    if (glyph == QLatin1String("i")) {
        p.drawEllipse(QPointF(8.5, 4.9), 1.35, 1.35);
        p.drawRect(QRectF(7.25, 7, 2.5, 6.5));
        return;
    }
    QPainterPath path;
    path.addText(0, 0, sans(13, true), glyph);
    const QRectF b = path.boundingRect();
    p.translate(8.5 - b.center().x(), 8.5 - b.center().y());
    p.drawPath(path);
}

// A camera whose lens is a clock face: the cameras' clocks.
void camera_clock_icon(QPainter &p)
{
    const QPointF lens(8.5, 9.75);
    QPainterPath body;
    body.addRoundedRect(QRectF(0.5, 4.0, 16.0, 11.5), 2.0, 2.0);
    QPainterPath finder;
    finder.addRoundedRect(QRectF(5.0, 2.0, 7.0, 3.0), 1.0, 1.0);
    p.setPen(Qt::NoPen);
    p.setBrush(stencil);
    p.drawPath(body.united(finder));
    cut(p);
    p.drawEllipse(lens, 4.4, 4.4);
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
    p.setBrush(stencil);
    p.drawEllipse(lens, 3.2, 3.2);
    cut(p);
    p.drawRect(QRectF(8.0, 7.2, 1.0, 3.05)); // hour hand, up
    p.drawRect(QRectF(8.0, 9.25, 2.5, 1.0)); // minute hand, right
}

void folder(QPainter &p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(stencil);
    QPainterPath f;
    f.moveTo(0, 2);
    f.lineTo(5, 2);
    f.lineTo(6.5, 3.5);
    f.lineTo(14, 3.5);
    f.lineTo(14, 13);
    f.lineTo(0, 13);
    f.closeSubpath();
    p.drawPath(f);
    cut(p);
    p.drawRect(QRectF(1, 5, 12, 1)); // the flap's upper edge
}

// A hooked arrow turning back to the left: undo and clearing.
void back_arrow(QPainter &p, qreal s, qreal stroke)
{
    QPen line(stencil, stroke * s);
    line.setCapStyle(Qt::FlatCap);
    p.setPen(line);
    p.setBrush(Qt::NoBrush);
    QPainterPath a;
    a.moveTo(4 * s, 5.5 * s);
    a.lineTo(8.5 * s, 5.5 * s);
    a.arcTo(QRectF(5 * s, 5.5 * s, 7.5 * s, 7 * s), 90, -180);
    a.lineTo(3.5 * s, 12.5 * s);
    p.drawPath(a);
    p.setPen(Qt::NoPen);
    p.setBrush(stencil);
    p.drawPolygon(
        QPolygonF({QPointF(0, 5.5 * s), QPointF(4.5 * s, 1.5 * s), QPointF(4.5 * s, 9.5 * s)}));
}

// A map pin with its point at (tip_x, tip_y); its head is a circle of radius r.
QPainterPath pin_path(qreal tip_x, qreal tip_y, qreal r, qreal hole)
{
    const qreal cy = tip_y - r * 2.25;
    QPainterPath head;
    head.addEllipse(QPointF(tip_x, cy), r, r);
    QPainterPath tail;
    tail.moveTo(tip_x, tip_y);
    tail.lineTo(tip_x - r * 0.86, cy + r * 0.5);
    tail.lineTo(tip_x + r * 0.86, cy + r * 0.5);
    tail.closeSubpath();
    QPainterPath pin = head.united(tail);
    if (hole > 0) {
        QPainterPath h;
        h.addEllipse(QPointF(tip_x, cy), hole, hole);
        pin = pin.subtracted(h);
    }
    return pin;
}

// A map folded in three panels, the middle one raised, with a pin cut out of it.
void folded_map(QPainter &p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(stencil);
    p.drawPolygon(
        QPolygonF({QPointF(0.5, 3.5), QPointF(6, 1.5), QPointF(11, 3.5), QPointF(16.5, 1.5),
                   QPointF(16.5, 14), QPointF(11, 16), QPointF(6, 14), QPointF(0.5, 16)}));
    cut(p);
    QPen fold(Qt::black, 1.0);
    fold.setCapStyle(Qt::FlatCap);
    p.setPen(fold);
    p.drawLine(QPointF(6, 1.5), QPointF(6, 14));
    p.drawLine(QPointF(11, 3.5), QPointF(11, 16));
    p.setPen(Qt::NoPen);
    p.drawPath(pin_path(8.5, 12.5, 2.2, 0));
}

// What a photo shows: a mountain standing on the bottom of `in` and, if asked
// for, a sun in its upper right corner.
void landscape(QPainter &p, const QRectF &in, const QColor &c, bool sun)
{
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    p.drawPolygon(QPolygonF({QPointF(in.left(), in.bottom()),
                             QPointF(in.left() + in.width() * 0.38, in.top() + in.height() * 0.35),
                             QPointF(in.left() + in.width() * 0.62, in.top() + in.height() * 0.7),
                             QPointF(in.left() + in.width() * 0.76, in.top() + in.height() * 0.52),
                             QPointF(in.right(), in.bottom())}));
    const qreal r = in.height() * 0.14;
    if (sun)
        p.drawEllipse(QPointF(in.right() - r * 2, in.top() + r * 2), r, r);
}

// A picture frame with a mountain and a sun in it.
void photo(QPainter &p, const QRectF &r, qreal stroke, const QColor &c)
{
    p.setPen(pen(c, stroke));
    p.setBrush(Qt::NoBrush);
    p.drawRect(r.adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2));
    landscape(p, r.adjusted(stroke * 2, stroke * 2, -stroke * 2, -stroke * 2), c, true);
}

void header_sync(QPainter &p)
{
    // Inside 119x46 with the icon centred: pin, arrow, photo.
    p.translate(26, 9);
    p.setPen(Qt::NoPen);
    p.setBrush(stencil);
    p.drawPath(pin_path(9, 28, 7.5, 3.2));
    QPen shaft(stencil, 3);
    shaft.setCapStyle(Qt::FlatCap);
    p.setPen(shaft);
    p.drawLine(QPointF(22, 14.5), QPointF(33, 14.5));
    p.setPen(Qt::NoPen);
    p.drawPolygon(QPolygonF({QPointF(32, 8.5), QPointF(39, 14.5), QPointF(32, 20.5)}));
    photo(p, QRectF(43, 3, 24, 23), 2, stencil);
}

void header_undo(QPainter &p)
{
    p.translate(15, 12);
    back_arrow(p, 1.6, 2.0);
}

// ---- application: pictures in colour ---------------------------------------

// One photo on the time line; a tagged one is filled and carries a pin.
void timeline_photo(QPainter &p, qreal x, bool tagged)
{
    const QRectF r(x, 9, 12, 10);
    if (tagged) {
        p.setPen(Qt::NoPen);
        p.setBrush(text);
        p.drawRect(r);
        p.setBrush(surface);
        p.drawPath(pin_path(x + 6, 17.5, 2.3, 0.9));
    } else {
        photo(p, r, 1, muted);
    }
    p.setPen(pen(border));
    p.drawLine(QPointF(x + 6.5, 19), QPointF(x + 6.5, 22));
}

void timeline_arrow(QPainter &p, qreal from, qreal to)
{
    p.setPen(pen(link, 1));
    p.drawLine(QPointF(from, 3.5), QPointF(to, 3.5));
    const qreal d = to > from ? -4 : 4;
    p.setPen(Qt::NoPen);
    p.setBrush(link);
    p.drawPolygon(
        QPolygonF({QPointF(to + d * 0.25, 3.5), QPointF(to + d, 0.5), QPointF(to + d, 6.5)}));
}

void mode_picture(QPainter &p, int mode)
{
    p.setPen(pen(border));
    p.drawLine(QPointF(0, 22.5), QPointF(120, 22.5));
    switch (mode) {
    case 1:
        timeline_photo(p, 4, true);
        for (qreal x : {40, 66, 92})
            timeline_photo(p, x, false);
        timeline_arrow(p, 17, 116);
        break;
    case 2:
        for (qreal x : {4, 30, 56})
            timeline_photo(p, x, false);
        timeline_photo(p, 104, true);
        timeline_arrow(p, 103, 4);
        break;
    default:
        timeline_photo(p, 4, true);
        for (qreal x : {36, 54, 72})
            timeline_photo(p, x, false);
        timeline_photo(p, 104, true);
        timeline_arrow(p, 18, 50);
        timeline_arrow(p, 102, 72);
        break;
    }
}

void time_arrow(QPainter &p, const QString &word, int width)
{
    const QFont f = sans(12);
    const QFontMetricsF fm(f);
    const qreal text_width = fm.horizontalAdvance(word);
    const qreal x0 = (width - 6 - text_width) / 2 - 6;
    const qreal x1 = x0 + text_width + 12;
    p.setPen(pen(border));
    p.drawLine(QPointF(0, 10.5), QPointF(x0, 10.5));
    p.drawLine(QPointF(x1, 10.5), QPointF(width - 4, 10.5));
    p.setPen(Qt::NoPen);
    p.setBrush(border);
    p.drawPolygon(QPolygonF({QPointF(width, 11), QPointF(width - 7, 7), QPointF(width - 7, 15)}));
    p.setFont(f);
    p.setPen(muted);
    p.drawText(QRectF(x0, 0, x1 - x0, 20), Qt::AlignCenter, word);
}

void drop_area(QPainter &p, const QString &title, const QString &hint)
{
    p.fillRect(QRect(0, 0, 300, 300), Qt::black);
    QPen dash(border_dark, 1);
    dash.setDashPattern({4, 4});
    p.setPen(dash);
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(crisp(14, 14, 272, 272), 8, 8);

    // The load and clear buttons stand at y 45..69 around the middle: the
    // picture starts well below them.
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(30, 30, 30));
    p.translate(150, 150);
    p.rotate(-8);
    p.drawRect(QRectF(-46, -34, 84, 62));
    p.restore();
    p.fillRect(QRectF(103, 113, 88, 66), Qt::black);
    photo(p, QRectF(103, 113, 88, 66), 2, border);
    p.setPen(QPen(Qt::black, 3));
    p.setBrush(text);
    p.drawPath(pin_path(186, 170, 12, 5));

    p.setPen(text);
    p.setFont(sans(20));
    p.drawText(QRectF(20, 196, 260, 30), Qt::AlignCenter, title);
    p.setPen(muted);
    p.setFont(sans(12));
    p.drawText(QRectF(20, 228, 260, 20), Qt::AlignCenter, hint);
}

void warning(QPainter &p)
{
    QPen edge(warning_yellow, 4);
    edge.setJoinStyle(Qt::RoundJoin);
    p.setPen(edge);
    p.setBrush(warning_yellow);
    p.drawPolygon(QPolygonF({QPointF(23.5, 4), QPointF(43, 37), QPointF(4, 37)}));
    p.setPen(Qt::NoPen);
    p.setBrush(surface);
    p.drawPolygon(
        QPolygonF({QPointF(21.5, 14), QPointF(25.5, 14), QPointF(24.7, 28), QPointF(22.3, 28)}));
    p.drawEllipse(QPointF(23.5, 32.2), 2.1, 2.1);
}

// The word mark: a pin in a ring beside the name. `h` is the height of the
// area; everything scales with it.
void logo(QPainter &p, qreal h, qreal width)
{
    const qreal s = h / 46.0;
    p.setPen(pen(link, 2.5 * s));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(21 * s, 23 * s), 15 * s, 15 * s);
    p.setPen(Qt::NoPen);
    p.setBrush(text);
    p.drawPath(pin_path(21 * s, 33 * s, 6.5 * s, 2.6 * s));
    QFont f = sans(int(std::lround(27 * s)), true);
    p.setFont(f);
    p.setPen(text);
    p.drawText(QRectF(44 * s, 0, width - 44 * s, h), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Loxmere"));
}

void bar_background(QPainter &p, int h)
{
    QLinearGradient g(0, 0, 0, h);
    g.setColorAt(0, QColor(60, 60, 60));
    g.setColorAt(1, QColor(44, 44, 44));
    p.fillRect(QRectF(0, 0, 8, h), g);
    p.fillRect(QRectF(0, 0, 8, 1), QColor(72, 72, 72));
    p.fillRect(QRectF(0, h - 1, 8, 1), QColor(24, 24, 24));
}

// The application's icon at n x n pixels: the window's (256) and the desktop
// theme's sizes. Edges of the tile and the photo frame fall on whole pixels at
// every size and their widths are whole pixels. Below 48 px the tilted shadow
// and the sun go, which would only blur, and the pin grows and moves clear of
// the frame's middle, so that at 16 px it still reads as a pin on a photo.
void app_icon(QPainter &p, int n)
{
    const qreal k = n / 256.0;
    const auto edge = [k](qreal at_256) { return qreal(std::lround(at_256 * k)); };
    const auto width = [k](qreal at_256) { return std::max<qreal>(1, std::lround(at_256 * k)); };
    const bool small = n < 48;
    p.setPen(Qt::NoPen);

    // The tile's border and body as two fills: a stroke would put its edge
    // between pixels at the sizes where its width is odd.
    const qreal m = edge(16);
    const QRectF tile(m, m, n - 2 * m, n - 2 * m);
    const qreal b = width(4);
    p.setBrush(border);
    p.drawRoundedRect(tile, 42 * k, 42 * k);
    QLinearGradient g(0, tile.top(), 0, tile.bottom());
    g.setColorAt(0, QColor(64, 64, 64));
    g.setColorAt(1, QColor(36, 36, 36));
    p.setBrush(g);
    p.drawRoundedRect(tile.adjusted(b, b, -b, -b), 42 * k - b, 42 * k - b);

    if (!small) {
        p.save();
        p.scale(k, k);
        p.translate(124, 140);
        p.rotate(-6);
        p.setBrush(QColor(30, 30, 30));
        p.drawRect(QRectF(-80, -56, 160, 118));
        p.restore();
    }

    // The pin's tip lies on a pixel's centre line, so that its two sides
    // blur alike.
    const QRectF frame = small ? QRectF(QPointF(std::lround(0.19 * n), std::lround(0.31 * n)),
                                        QPointF(std::lround(0.69 * n), std::lround(0.75 * n)))
                               : QRectF(QPointF(edge(40), edge(78)), QPointF(edge(200), edge(196)));
    const QPointF tip = small ? QPointF(std::floor(0.68 * n) + 0.5, std::lround(0.84 * n))
                              : QPointF(edge(178), edge(196));
    const qreal r = small ? 0.15 * n : 34 * k;
    const qreal s = width(8);
    const qreal inset = small ? s : 2 * s;
    p.setBrush(muted);
    p.drawRect(frame);
    p.setBrush(QColor(30, 30, 30));
    p.drawRect(frame.adjusted(s, s, -s, -s));
    landscape(p, frame.adjusted(inset, inset, -inset, -inset), muted, !small);

    // A dark rim outside the pin parts it from the frame; drawn first and
    // then covered, it takes nothing from the pin's own width.
    const QPainterPath pin = pin_path(tip.x(), tip.y(), r, r * 13 / 34);
    p.strokePath(pin, QPen(QColor(36, 36, 36), 2 * width(4)));
    p.fillPath(pin, text);
}

using registry = QMap<QString, image_spec>;

registry all_images()
{
    registry r;
    const QSize nine(9, 9);
    // toolkit
    r["button/dark_normal.png"] = {nine, [](QPainter &p) {
                                       button_face(p, QColor(56, 56, 56), QColor(88, 88, 88),
                                                   QColor(255, 255, 255, 20));
                                   }};
    r["button/dark_pressed.png"] = {
        nine,
        [](QPainter &p) { button_face(p, sunken, QColor(120, 120, 120), QColor(0, 0, 0, 90)); }};
    r["button/header_normal.png"] = {
        nine,
        [](QPainter &p) { button_face(p, QColor(52, 52, 52), border, QColor(255, 255, 255, 28)); }};
    r["button/header_pressed.png"] = {nine, [](QPainter &p) {
                                          button_face(p, QColor(34, 34, 34), QColor(120, 120, 120),
                                                      QColor(0, 0, 0, 90));
                                      }};
    // The flat button shows nothing until it is pressed.
    r["button/blank_normal.png"] = {nine, [](QPainter &) {}};
    r["button/blank_pressed.png"] = {
        nine,
        [](QPainter &p) { button_face(p, QColor(0, 0, 0, 90), border_dark, QColor(0, 0, 0, 0)); }};
    r["panel/border.png"] = {nine, [](QPainter &p) { panel_border(p, true); }};
    r["panel/border_topless.png"] = {nine, [](QPainter &p) { panel_border(p, false); }};
    const QSize thirteen(13, 13);
    r["radio/checked.png"] = {thirteen, [](QPainter &p) { radio(p, true, true); }};
    r["radio/unchecked.png"] = {thirteen, [](QPainter &p) { radio(p, false, true); }};
    r["radio/disabled_checked.png"] = {thirteen, [](QPainter &p) { radio(p, true, false); }};
    r["radio/disabled_unchecked.png"] = {thirteen, [](QPainter &p) { radio(p, false, false); }};
    const QSize sixteen(16, 16);
    r["checkbox/checked.png"] = {sixteen, [](QPainter &p) { checkbox(p, true, true); }};
    r["checkbox/unchecked.png"] = {sixteen, [](QPainter &p) { checkbox(p, false, true); }};
    r["checkbox/disabled_checked.png"] = {sixteen, [](QPainter &p) { checkbox(p, true, false); }};
    r["checkbox/disabled_unchecked.png"] = {sixteen,
                                            [](QPainter &p) { checkbox(p, false, false); }};
    r["combobox/arrow.png"] = {QSize(24, 24), combobox_arrow};

    // application
    r["icon.png"] = {QSize(256, 256), [](QPainter &p) { app_icon(p, 256); }};
    for (const int n : {16, 22, 24, 32, 48, 64, 128, 256}) {
        r[QStringLiteral("hicolor/%1x%1/apps/loxmere.png").arg(n)] = {
            QSize(n, n), [n](QPainter &p) { app_icon(p, n); }};
    }
    const QSize head_icon(17, 17);
    r["icon_settings.png"] = {
        head_icon, [](QPainter &p) { gear(p, QPointF(8.5, 8.5), 8.5, 5.6, 2.4, 8, 3.0); }};
    r["icon_about.png"] = {head_icon, [](QPainter &p) { disc_with_glyph(p, QStringLiteral("i")); }};
    r["icon_cameras.png"] = {head_icon, camera_clock_icon};
    r["icon_help.png"] = {head_icon, [](QPainter &p) { disc_with_glyph(p, QStringLiteral("?")); }};
    r["icon_map.png"] = {head_icon, folded_map};
    r["icon_load.png"] = {QSize(14, 14), folder};
    r["icon_undo.png"] = {QSize(14, 14), [](QPainter &p) { back_arrow(p, 1.0, 2.0); }};
    r["header_sync.png"] = {QSize(119, 46), header_sync};
    r["header_undo.png"] = {QSize(52, 46), header_undo};
    r["mode_1.png"] = {QSize(120, 26), [](QPainter &p) { mode_picture(p, 1); }};
    r["mode_2.png"] = {QSize(120, 26), [](QPainter &p) { mode_picture(p, 2); }};
    r["mode_3.png"] = {QSize(120, 26), [](QPainter &p) { mode_picture(p, 3); }};
    r["time_arrow_en.png"] = {QSize(120, 20),
                              [](QPainter &p) { time_arrow(p, QStringLiteral("time"), 120); }};
    r["time_arrow_de.png"] = {QSize(120, 20),
                              [](QPainter &p) { time_arrow(p, QStringLiteral("Zeit"), 120); }};
    r["drop_images_gps_en.png"] = {QSize(300, 300), [](QPainter &p) {
                                       drop_area(
                                           p, QStringLiteral("Drop images here"),
                                           QStringLiteral("or load them with the button above"));
                                   }};
    r["drop_images_gps_de.png"] = {QSize(300, 300), [](QPainter &p) {
                                       drop_area(p, QStringLiteral("Bilder hierher ziehen"),
                                                 QStringLiteral("oder mit dem Knopf oben laden"));
                                   }};
    r["warning_yellow.png"] = {QSize(47, 41), warning};
    r["logo_header.png"] = {QSize(217, 46), [](QPainter &p) { logo(p, 46, 217); }};
    r["logo.png"] = {QSize(300, 64), [](QPainter &p) { logo(p, 64, 300); }};
    r["head_medium_dark_without_shadow.png"] = {QSize(8, 66),
                                                [](QPainter &p) { bar_background(p, 66); }};
    r["Head.png"] = {QSize(8, 97), [](QPainter &p) { bar_background(p, 97); }};
    return r;
}

bool write_image(const QString &dir, const QString &name, const image_spec &spec, int scale)
{
    QImage img(spec.size * scale, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    {
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        p.setRenderHint(QPainter::TextAntialiasing);
        p.scale(scale, scale);
        spec.paint(p);
    }
    const QString path = dir + QLatin1Char('/') + name;
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        std::fprintf(stderr, "loxmere_imagegen: cannot create the folder of %s\n",
                     qPrintable(path));
        return false;
    }
    if (!img.convertToFormat(QImage::Format_ARGB32).save(path, "PNG")) {
        std::fprintf(stderr, "loxmere_imagegen: cannot write %s\n", qPrintable(path));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    while (args.size() >= 2 && args.first() == QLatin1String("--font")) {
        if (QFontDatabase::addApplicationFont(args.at(1)) < 0) {
            std::fprintf(stderr, "loxmere_imagegen: cannot load font %s\n", qPrintable(args.at(1)));
            return 1;
        }
        args = args.mid(2);
    }
    if (args.size() < 2) {
        std::fprintf(stderr, "usage: loxmere_imagegen [--font file]... out_dir name.png...\n");
        return 2;
    }
    const QString dir = args.takeFirst();
    const registry images = all_images();
    for (const QString &name : qAsConst(args)) {
        QString base = name;
        int scale = 1;
        if (base.endsWith(QLatin1String("@2x.png"))) {
            base.replace(base.size() - 7, 7, QStringLiteral(".png"));
            scale = 2;
        }
        const auto it = images.constFind(base);
        if (it == images.constEnd()) {
            std::fprintf(stderr, "loxmere_imagegen: no painting for %s\n", qPrintable(name));
            return 1;
        }
        if (!write_image(dir, name, it.value(), scale))
            return 1;
    }
    return 0;
}
