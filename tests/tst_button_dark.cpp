#include <vn/button_dark.h>

#include <QButtonGroup>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using vn::button_dark;
using vn::pixel_argb;

using setter_function = std::function<void(vn::button_dark &)>;
Q_DECLARE_METATYPE(setter_function)
Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

const QString base_head =
    QStringLiteral("QPushButton{color:rgb(198,213,210);border-style:none;border-width:3px;"
                   "border-image:url(:/gui/button/%1_normal.png) 3 stretch;text-align:%2;%3;"
                   "background:transparent;padding: 0.25em 1em;}QPushButton::hover{color:#f0f0f0;}"
                   "QToolTip{border:1px solid rgb(99,99,99);background-image:none;"
                   "background-color:rgb(47,47,47);}");
const QString checked_part =
    QStringLiteral("QPushButton::checked{border-style:none;border-width:3px;"
                   "border-image:url(:/gui/button/%1_pressed.png) 3 stretch;}");
const QString pressed_part =
    QStringLiteral("QPushButton::pressed{border-style:none;border-width:3px;"
                   "border-image:url(:/gui/button/%1_pressed.png) 3 stretch;}");
const QString fixed_disabled =
    QStringLiteral("QPushButton::disabled{color:rgba(129,136,133,50%);}");

// The 2 x 2 stencil of the recolouring tests, row by row.
const QVector<QRgb> stencil = {0xFF0A141E, 0x80C86432, 0x01FFFFFF, 0xFF818885};

QVector<QRgb> pixels(const QImage &image)
{
    QVector<QRgb> out;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            out << image.pixel(x, y);
    return out;
}

QImage canvas(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    return image;
}

// Bounding box of the pixels that aren't fully transparent.
QRect painted_area(const QImage &image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) != 0)
                box |= QRect(x, y, 1, 1);
    return box;
}

} // namespace

class tst_button_dark : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void sheet_after_setter_data();
    void sheet_after_setter();

    void recolour_data();
    void recolour();
    void missing_icon_keeps_previous_images();

    void icon_position_data();
    void icon_position();
    void image_by_state_data();
    void image_by_state();
    void paint_on_wrong_class_data();
    void paint_on_wrong_class();

    void checked_icon_by_state_data();
    void checked_icon_by_state();
    void drop_handler_data();
    void drop_handler();

    void mouse_rules_data();
    void mouse_rules();
    void allow_uncheck_data();
    void allow_uncheck();
    void press_modifiers_seen_by_release_handler();

private:
    QTemporaryDir dir_;
    QString stencil_path_;
    QString square_path_; // 4 x 4 opaque white
};

void tst_button_dark::initTestCase()
{
    QVERIFY(dir_.isValid());
    QImage image(2, 2, QImage::Format_ARGB32);
    for (int i = 0; i < stencil.size(); ++i)
        image.setPixel(i % 2, i / 2, stencil[i]);
    stencil_path_ = dir_.filePath("stencil.png");
    QVERIFY(image.save(stencil_path_));
    QImage square(4, 4, QImage::Format_ARGB32);
    square.fill(Qt::white);
    square_path_ = dir_.filePath("square.png");
    QVERIFY(square.save(square_path_));
}

void tst_button_dark::sheet_after_setter_data()
{
    QTest::addColumn<setter_function>("setter");
    QTest::addColumn<QString>("expected");

    auto sheet = [](const QString &kind, const QString &align, const QString &extra,
                    const QString &tail) {
        return QString(base_head + checked_part + pressed_part + tail)
            .replace("%1", kind)
            .replace("%2", align)
            .replace("%3", extra);
    };
    QTest::addRow("no setter: dark images, centred, fixed disabled colour")
        << setter_function([](button_dark &) {}) << sheet("dark", "center", "", fixed_disabled);
    QTest::addRow("kind header") << setter_function([](button_dark &b) { b.set_kind("header"); })
                                 << sheet("header", "center", "", fixed_disabled);
    QTest::addRow("alignment left")
        << setter_function([](button_dark &b) { b.set_alignment("left"); })
        << sheet("dark", "left", "", fixed_disabled);
    QTest::addRow("side padding 8")
        << setter_function([](button_dark &b) { b.set_side_padding(8); })
        << sheet("dark", "center", "padding-left: 8px; padding-right: 8px;", fixed_disabled);
    QTest::addRow("side padding back to 0") << setter_function([](button_dark &b) {
        b.set_side_padding(8);
        b.set_side_padding(0);
    }) << sheet("dark", "center", "", fixed_disabled);
    QTest::addRow("text colour") << setter_function([](button_dark &b) {
        b.set_text_colour(pixel_argb(0x80102030));
    })
                                 << sheet("dark", "center", "color:rgba(16,32,48,128);",
                                          "QPushButton::disabled{color:rgba(16,32,48,50%);}");
    QTest::addRow("padding and text colour")
        << setter_function([](button_dark &b) {
               b.set_text_colour(pixel_argb(1, 2, 3));
               b.set_side_padding(5);
           })
        << sheet("dark", "center", "padding-left: 5px; padding-right: 5px;color:rgba(1,2,3,255);",
                 "QPushButton::disabled{color:rgba(1,2,3,50%);}");
    QTest::addRow("text colour cleared") << setter_function([](button_dark &b) {
        b.set_text_colour(pixel_argb(1, 2, 3));
        b.clear_text_colour();
    }) << sheet("dark", "center", "", fixed_disabled);
    QTest::addRow("no checked sheet")
        << setter_function([](button_dark &b) { b.set_flags(false, false, true, true); })
        << QString(base_head + pressed_part + fixed_disabled)
               .replace("%1", "dark")
               .replace("%2", "center")
               .replace("%3", "");
    QTest::addRow("no pressed sheet")
        << setter_function([](button_dark &b) { b.set_flags(true, true, false, false); })
        << QString(base_head + checked_part + fixed_disabled)
               .replace("%1", "dark")
               .replace("%2", "center")
               .replace("%3", "");
    QTest::addRow("a value holding a marker is not filled again")
        << setter_function([](button_dark &b) { b.set_kind("x%2"); })
        << QString(base_head + checked_part + pressed_part + fixed_disabled)
               .replace("%2", "center")
               .replace("%1", "x%2")
               .replace("%3", "");
}

void tst_button_dark::sheet_after_setter()
{
    QFETCH(setter_function, setter);
    QFETCH(QString, expected);
    button_dark button("b");
    setter(button);
    QCOMPARE(button.styleSheet(), expected);
}

void tst_button_dark::recolour_data()
{
    QTest::addColumn<bool>("relative");
    QTest::addColumn<uint>("normal_colour");
    QTest::addColumn<uint>("highlight_colour");
    QTest::addColumn<QVector<QRgb>>("normal");
    QTest::addColumn<QVector<QRgb>>("highlight");
    QTest::addColumn<QVector<QRgb>>("disabled");

    // Absolute: the colours replace red, green and blue, the stencil's alpha
    // stays; the disabled image has half of it.
    QTest::addRow("absolute") << false << 0xFF818885u << 0xFFF0F0F0u
                              << QVector<QRgb>{0xFF818885, 0x80818885, 0x01818885, 0xFF818885}
                              << QVector<QRgb>{0xFFF0F0F0, 0x80F0F0F0, 0x01F0F0F0, 0xFFF0F0F0}
                              << QVector<QRgb>{0x7F818885, 0x40818885, 0x00818885, 0x7F818885};
    // Relative, exact match on the last pixel: the highlight shifts every
    // pixel by (111, 104, 107), clamped at 255.
    QTest::addRow("relative, exact match")
        << true << 0xFF818885u << 0xFFF0F0F0u << stencil
        << QVector<QRgb>{0xFF797C89, 0x80FFCC9D, 0x01FFFFFF, 0xFFF0F0F0}
        << QVector<QRgb>{0x7F0A141E, 0x40C86432, 0x00FFFFFF, 0x7F818885};
    // Relative, nearest pixel (10, 20, 30) at distance 4 from (11, 21, 32):
    // the shift to black is (-10, -20, -30), clamped at 0.
    QTest::addRow("relative, nearest pixel, shift down")
        << true << 0xFF0B1520u << 0xFF000000u << stencil
        << QVector<QRgb>{0xFF000000, 0x80BE5014, 0x01F5EBE1, 0xFF777467}
        << QVector<QRgb>{0x7F0A141E, 0x40C86432, 0x00FFFFFF, 0x7F818885};
}

void tst_button_dark::recolour()
{
    QFETCH(bool, relative);
    QFETCH(uint, normal_colour);
    QFETCH(uint, highlight_colour);
    QFETCH(QVector<QRgb>, normal);
    QFETCH(QVector<QRgb>, highlight);
    QFETCH(QVector<QRgb>, disabled);

    button_dark button;
    button.set_icon(relative, stencil_path_, 0, 0, pixel_argb(highlight_colour),
                    pixel_argb(normal_colour));
    const button_dark::img_highlighter &set = button.icon_set();
    QCOMPARE(set.width, 2);
    QCOMPARE(pixels(set.normal), normal);
    QCOMPARE(pixels(set.highlight), highlight);
    QCOMPARE(pixels(set.disabled), disabled);
}

void tst_button_dark::missing_icon_keeps_previous_images()
{
    button_dark button;
    button.set_icon(stencil_path_, 0, 0, pixel_argb(0xFFFFFFFF), pixel_argb(0xFF000000));
    const QString missing = dir_.filePath("missing.png");
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression("Can't open icon " + QRegularExpression::escape(missing)));
    button.set_icon(missing, 0, 0, pixel_argb(0xFFFFFFFF), pixel_argb(0xFF102030));
    // The images of the previous file, recoloured with the new normal colour.
    QCOMPARE(pixels(button.icon_set().normal),
             (QVector<QRgb>{0xFF102030, 0x80102030, 0x01102030, 0xFF102030}));

    button_dark fresh;
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Can't open icon"));
    fresh.set_icon(missing, 0, 0, pixel_argb(0xFFFFFFFF), pixel_argb(0xFF000000));
    QVERIFY(fresh.icon_set().normal.isNull());
    fresh.resize(10, 10);
    QImage image = canvas(fresh.size());
    QPainter painter(&image);
    fresh.custom_paint(painter, &fresh);
    painter.end();
    QCOMPARE(painted_area(image), QRect());
}

void tst_button_dark::icon_position_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<bool>("scale");
    QTest::addColumn<int>("scaled_width");
    QTest::addColumn<QRect>("expected");

    QTest::addRow("centred 20x10")
        << QSize(20, 10) << QPoint(-1, -1) << false << 0 << QRect(8, 3, 4, 4);
    QTest::addRow("centred after resize to 31x17")
        << QSize(31, 17) << QPoint(-1, -1) << false << 0 << QRect(13, 6, 4, 4);
    QTest::addRow("x fixed, y centred")
        << QSize(20, 10) << QPoint(2, -1) << false << 0 << QRect(2, 3, 4, 4);
    QTest::addRow("x centred, y fixed")
        << QSize(20, 10) << QPoint(-1, 5) << false << 0 << QRect(8, 5, 4, 4);
    QTest::addRow("scaled to the whole button")
        << QSize(20, 10) << QPoint(3, 3) << true << 0 << QRect(0, 0, 20, 10);
    // 10 wide on a 20 x 12 button: 6 high, centred.
    QTest::addRow("scaled to a width")
        << QSize(20, 12) << QPoint(3, 3) << true << 10 << QRect(5, 3, 10, 6);
}

void tst_button_dark::icon_position()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, at);
    QFETCH(bool, scale);
    QFETCH(int, scaled_width);
    QFETCH(QRect, expected);

    button_dark button;
    button.resize(40, 40);
    button.set_icon(square_path_, at.x(), at.y(), pixel_argb(0xFFFFFFFF), pixel_argb(0xFF808080));
    button.scale_icon = scale;
    button.scaled_width = scaled_width;
    button.resize(size);
    QImage image = canvas(size);
    QPainter painter(&image);
    button.custom_paint(painter, &button);
    painter.end();
    QCOMPARE(painted_area(image), expected);
}

void tst_button_dark::image_by_state_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("highlight_when_checked");
    QTest::addColumn<QRgb>("expected");

    const QRgb normal = 0xFF808080, highlight = 0xFFF0F0F0, disabled = 0x7F808080;
    QTest::addRow("enabled, unchecked") << true << true << false << true << normal;
    QTest::addRow("checked highlights") << true << true << true << true << highlight;
    QTest::addRow("checked without highlight flag") << true << true << true << false << normal;
    QTest::addRow("disabled beats checked") << false << true << true << true << disabled;
    QTest::addRow("not checkable") << true << false << false << true << normal;
}

void tst_button_dark::image_by_state()
{
    QFETCH(bool, enabled);
    QFETCH(bool, checkable);
    QFETCH(bool, checked);
    QFETCH(bool, highlight_when_checked);
    QFETCH(QRgb, expected);

    button_dark button;
    button.resize(4, 4);
    button.set_icon(square_path_, 0, 0, pixel_argb(0xFFF0F0F0), pixel_argb(0xFF808080));
    button.set_flags(false, true, highlight_when_checked, true);
    button.setCheckable(checkable);
    button.setChecked(checked);
    button.setEnabled(enabled);
    QImage image = canvas(button.size());
    QPainter painter(&image);
    button.custom_paint(painter, &button);
    painter.end();
    QCOMPARE(image.pixel(1, 1), expected);
}

void tst_button_dark::paint_on_wrong_class_data()
{
    QTest::addColumn<bool>("wrong_class");
    QTest::addColumn<bool>("frame_when_checked");
    QTest::addColumn<QRect>("expected");

    QTest::addRow("button_dark gets its icon") << false << false << QRect(0, 0, 4, 4);
    QTest::addRow("checked frame around the button") << false << true << QRect(0, 0, 10, 8);
    QTest::addRow("QPushButton gets nothing") << true << false << QRect();
}

void tst_button_dark::paint_on_wrong_class()
{
    QFETCH(bool, wrong_class);
    QFETCH(bool, frame_when_checked);
    QFETCH(QRect, expected);

    button_dark icon_owner;
    icon_owner.set_icon(square_path_, 0, 0, pixel_argb(0xFFF0F0F0), pixel_argb(0xFF808080));
    icon_owner.set_flags(frame_when_checked, true, true, true);
    icon_owner.setCheckable(true);
    icon_owner.setChecked(true);
    icon_owner.resize(10, 8);
    QPushButton plain;
    plain.resize(10, 8);
    QPushButton *target = wrong_class ? &plain : static_cast<QPushButton *>(&icon_owner);

    if (wrong_class)
        QTest::ignoreMessage(QtCriticalMsg,
                             QRegularExpression("\"bd\" in file vn/button_dark.cpp, line \\d+"));
    QImage image = canvas(QSize(10, 8));
    QPainter painter(&image);
    icon_owner.custom_paint(painter, target);
    painter.end();
    QCOMPARE(painted_area(image), expected);
    if (frame_when_checked)
        QCOMPARE(image.pixel(0, 5), qRgb(129, 136, 133));
}

void tst_button_dark::checked_icon_by_state_data()
{
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("highlight_when_checked");
    QTest::addColumn<QRgb>("expected");

    // The second set is painted while checked, in its highlight colour when
    // checked buttons are highlighted.
    QTest::addRow("unchecked: first set") << false << true << QRgb(0xFF808080);
    QTest::addRow("checked: second set, highlighted") << true << true << QRgb(0xFF00FF00);
    QTest::addRow("checked: second set, normal") << true << false << QRgb(0xFF0000FF);
}

void tst_button_dark::checked_icon_by_state()
{
    QFETCH(bool, checked);
    QFETCH(bool, highlight_when_checked);
    QFETCH(QRgb, expected);

    button_dark button;
    button.resize(4, 4);
    button.setCheckable(true);
    button.set_icon(square_path_, 0, 0, pixel_argb(0xFFF0F0F0), pixel_argb(0xFF808080));
    button.set_checked_icon(square_path_, 0, 0, pixel_argb(0xFF00FF00), pixel_argb(0xFF0000FF));
    QVERIFY(!button.sheet_checked());
    QVERIFY(!button.styleSheet().contains("QPushButton::checked"));
    button.set_flags(false, false, highlight_when_checked, true);
    button.setChecked(checked);
    QImage image = canvas(button.size());
    QPainter painter(&image);
    button.custom_paint(painter, &button);
    painter.end();
    QCOMPARE(image.pixel(1, 1), expected);
}

void tst_button_dark::drop_handler_data()
{
    QTest::addColumn<bool>("with_handler");
    QTest::addRow("handler gets the drop") << true;
    QTest::addRow("no handler") << false;
}

void tst_button_dark::drop_handler()
{
    QFETCH(bool, with_handler);

    button_dark button("b");
    button.setAcceptDrops(true);
    button_dark *seen = nullptr;
    QStringList urls;
    if (with_handler)
        button.drop_handler = [&](QDropEvent *e, button_dark *target) {
            seen = target;
            for (const QUrl &url : e->mimeData()->urls())
                urls << url.toLocalFile();
        };
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/photos/a.jpg")});
    QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&button, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&button, &drop);
    QCOMPARE(seen, with_handler ? &button : nullptr);
    QCOMPARE(urls, with_handler ? QStringList{"/photos/a.jpg"} : QStringList{});
}

void tst_button_dark::mouse_rules_data()
{
    QTest::addColumn<bool>("momentary");
    QTest::addColumn<Qt::MouseButton>("mouse_button");
    QTest::addColumn<bool>("initially_checked");
    QTest::addColumn<bool>("while_held");
    QTest::addColumn<bool>("after_release");

    QTest::addRow("momentary left holds only while held")
        << true << Qt::LeftButton << false << true << false;
    QTest::addRow("momentary right latches") << true << Qt::RightButton << false << true << true;
    QTest::addRow("momentary right releases a latch")
        << true << Qt::RightButton << true << false << false;
    QTest::addRow("momentary left on a latched button")
        << true << Qt::LeftButton << true << true << false;
    QTest::addRow("momentary middle goes to the base")
        << true << Qt::MiddleButton << false << false << false;
    QTest::addRow("plain left toggles on release")
        << false << Qt::LeftButton << false << false << true;
    QTest::addRow("plain right does nothing")
        << false << Qt::RightButton << false << false << false;
}

void tst_button_dark::mouse_rules()
{
    QFETCH(bool, momentary);
    QFETCH(Qt::MouseButton, mouse_button);
    QFETCH(bool, initially_checked);
    QFETCH(bool, while_held);
    QFETCH(bool, after_release);

    button_dark button("b");
    button.resize(40, 20);
    button.setCheckable(true);
    button.setChecked(initially_checked);
    button.momentary = momentary;
    button.show();
    QTest::mousePress(&button, mouse_button);
    QCOMPARE(button.isChecked(), while_held);
    QTest::mouseRelease(&button, mouse_button);
    QCOMPARE(button.isChecked(), after_release);
}

void tst_button_dark::allow_uncheck_data()
{
    QTest::addColumn<bool>("allow_uncheck");
    QTest::addColumn<bool>("still_checked");

    QTest::addRow("exclusive group keeps its button") << false << true;
    QTest::addRow("allow_uncheck lets it go") << true << false;
}

void tst_button_dark::allow_uncheck()
{
    QFETCH(bool, allow_uncheck);
    QFETCH(bool, still_checked);

    QWidget window;
    QButtonGroup group;
    QVector<button_dark *> buttons;
    for (int i = 0; i < 3; ++i) {
        auto *b = new button_dark(QString::number(i), &window);
        b->setGeometry(0, i * 30, 40, 20);
        b->setCheckable(true);
        b->allow_uncheck = allow_uncheck;
        group.addButton(b);
        buttons << b;
    }
    window.show();
    buttons[1]->setChecked(true);
    int handler_calls = 0;
    buttons[1]->release_handler = [&](QMouseEvent *) { ++handler_calls; };

    QTest::mouseClick(buttons[1], Qt::LeftButton);
    QCOMPARE(buttons[1]->isChecked(), still_checked);
    QCOMPARE(group.checkedButton(), still_checked ? buttons[1] : nullptr);
    QCOMPARE(handler_calls, 1);
    QVERIFY(group.exclusive());

    // The group stays exclusive: checking another one unchecks the first.
    QTest::mouseClick(buttons[2], Qt::LeftButton);
    QCOMPARE(group.checkedButton(), buttons[2]);
    QVERIFY(!buttons[1]->isChecked());
}

void tst_button_dark::press_modifiers_seen_by_release_handler()
{
    button_dark button("b");
    button.resize(40, 20);
    button.show();
    int seen = -1;
    button.release_handler = [&](QMouseEvent *) { seen = button.press_modifiers(); };
    QTest::mousePress(&button, Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(button.press_modifiers(), int(Qt::ControlModifier));
    QTest::mouseRelease(&button, Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(seen, int(Qt::ControlModifier));
    QCOMPARE(button.press_modifiers(), 0);
}

QTEST_MAIN(tst_button_dark)
#include "tst_button_dark.moc"
