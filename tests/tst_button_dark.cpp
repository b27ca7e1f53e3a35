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

// What the icon callable of `owner` paints for `target` (the owner itself by default).
QImage paint(button_dark &owner, QPushButton *target = nullptr)
{
    QImage image((target ? target : &owner)->size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    owner.custom_paint(painter, target ? target : &owner);
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
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QStringList>("absent");
    const QString fixed_disabled = "QPushButton::disabled{color:rgba(129,136,133,50%);}";
    const QString checked = "QPushButton::checked{", pressed = "QPushButton::pressed{";
    auto row = [](const char *name, setter_function f, QStringList present, QStringList absent) {
        QTest::newRow(name) << f << present << absent;
    };
    row("kind", [](button_dark &b) { b.set_kind("header"); },
        {"button/header_normal.png", "button/header_pressed.png"}, {"dark_"});
    row("alignment", [](button_dark &b) { b.set_alignment("left"); }, {"text-align:left;"},
        {"center"});
    row("side padding", [](button_dark &b) { b.set_side_padding(8); },
        {"padding-left: 8px; padding-right: 8px;"}, {});
    row("side padding back to 0",
        [](button_dark &b) {
            b.set_side_padding(8);
            b.set_side_padding(0);
        },
        {}, {"padding-left"});
    row("text colour", [](button_dark &b) { b.set_text_colour(pixel_argb(0x80102030)); },
        {"color:rgba(16,32,48,128);", "QPushButton::disabled{color:rgba(16,32,48,50%);}"},
        {fixed_disabled});
    row("text colour cleared",
        [](button_dark &b) {
            b.set_text_colour(pixel_argb(1, 2, 3));
            b.clear_text_colour();
        },
        {fixed_disabled}, {"rgba(1,2,3"});
    row("no checked sheet", [](button_dark &b) { b.set_flags(false, false, true, true); },
        {pressed}, {checked});
    row("no pressed sheet", [](button_dark &b) { b.set_flags(true, true, false, false); },
        {checked}, {pressed});
    row("a value holding a marker is not filled again", [](button_dark &b) { b.set_kind("x%2"); },
        {"button/x%2_normal.png", "text-align:center;"}, {});
}

void tst_button_dark::sheet_after_setter()
{
    QFETCH(setter_function, setter);
    QFETCH(QStringList, present);
    QFETCH(QStringList, absent);
    button_dark button("b");
    setter(button);
    const QString sheet = button.styleSheet();
    for (const QString &part : present)
        QVERIFY2(sheet.contains(part), qPrintable(part + " missing in " + sheet));
    for (const QString &part : absent)
        QVERIFY2(!sheet.contains(part), qPrintable(part + " found in " + sheet));
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
    QCOMPARE(painted_area(paint(fresh)), QRect());
}

void tst_button_dark::icon_position_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<bool>("scale");
    QTest::addColumn<int>("scaled_width");
    QTest::addColumn<QRect>("expected");
    // The icon is set on a 40 x 40 button, then the button takes `size`.
    QTest::addRow("centred after resize")
        << QSize(31, 17) << QPoint(-1, -1) << false << 0 << QRect(13, 6, 4, 4);
    QTest::addRow("x fixed, y centred")
        << QSize(20, 10) << QPoint(2, -1) << false << 0 << QRect(2, 3, 4, 4);
    QTest::addRow("x centred, y fixed")
        << QSize(20, 10) << QPoint(-1, 5) << false << 0 << QRect(8, 5, 4, 4);
    QTest::addRow("scaled to the whole button")
        << QSize(20, 10) << QPoint(3, 3) << true << 0 << QRect(0, 0, 20, 10);
    QTest::addRow("scaled to a width, centred")
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
    QCOMPARE(painted_area(paint(button)), expected);
}

void tst_button_dark::image_by_state_data()
{
    QTest::addColumn<bool>("second_set"); // a checked icon set beside the first
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("highlight_when_checked");
    QTest::addColumn<QRgb>("expected");
    const QRgb normal = 0xFF808080, highlight = 0xFFF0F0F0, disabled = 0x7F808080;
    QTest::addRow("unchecked") << false << true << true << false << true << normal;
    QTest::addRow("checked highlights") << false << true << true << true << true << highlight;
    QTest::addRow("checked, no highlight") << false << true << true << true << false << normal;
    QTest::addRow("disabled beats checked") << false << false << true << true << true << disabled;
    QTest::addRow("two sets, unchecked: first") << true << true << true << false << true << normal;
    QTest::addRow("two sets, checked: second highlighted")
        << true << true << true << true << true << QRgb(0xFF00FF00);
    QTest::addRow("two sets, checked: second normal")
        << true << true << true << true << false << QRgb(0xFF0000FF);
}

void tst_button_dark::image_by_state()
{
    QFETCH(bool, second_set);
    QFETCH(bool, enabled);
    QFETCH(bool, checkable);
    QFETCH(bool, checked);
    QFETCH(bool, highlight_when_checked);
    QFETCH(QRgb, expected);
    button_dark button;
    button.resize(4, 4);
    button.set_icon(square_path_, 0, 0, pixel_argb(0xFFF0F0F0), pixel_argb(0xFF808080));
    if (second_set) {
        button.set_checked_icon(square_path_, 0, 0, pixel_argb(0xFF00FF00), pixel_argb(0xFF0000FF));
        QVERIFY(!button.styleSheet().contains("QPushButton::checked"));
    }
    button.set_flags(false, !second_set, highlight_when_checked, true);
    button.setCheckable(checkable);
    button.setChecked(checked);
    button.setEnabled(enabled);
    QCOMPARE(paint(button).pixel(1, 1), expected);
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
    button_dark owner;
    owner.set_icon(square_path_, 0, 0, pixel_argb(0xFFF0F0F0), pixel_argb(0xFF808080));
    owner.set_flags(frame_when_checked, true, true, true);
    owner.setCheckable(true);
    owner.setChecked(true);
    owner.resize(10, 8);
    QPushButton plain;
    plain.resize(10, 8);
    if (wrong_class)
        QTest::ignoreMessage(QtCriticalMsg,
                             QRegularExpression("\"bd\" in file vn/button_dark.cpp, line \\d+"));
    const QImage image = paint(owner, wrong_class ? &plain : nullptr);
    QCOMPARE(painted_area(image), expected);
    if (frame_when_checked)
        QCOMPARE(image.pixel(0, 5), qRgb(129, 136, 133));
}

void tst_button_dark::drop_handler()
{
    button_dark button("b");
    button.setAcceptDrops(true);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/photos/a.jpg")});
    auto drop = [&] {
        QDragEnterEvent enter(QPoint(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&button, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent event(QPointF(2, 2), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&button, &event);
    };
    drop(); // without a handler: nothing happens
    button_dark *seen = nullptr;
    QStringList urls;
    button.drop_handler = [&](QDropEvent *e, button_dark *target) {
        seen = target;
        for (const QUrl &url : e->mimeData()->urls())
            urls << url.toLocalFile();
    };
    drop();
    QCOMPARE(seen, &button);
    QCOMPARE(urls, QStringList{"/photos/a.jpg"});
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
    QTest::addRow("exclusive group keeps its button") << false;
    QTest::addRow("allow_uncheck lets it go") << true;
}

void tst_button_dark::allow_uncheck()
{
    QFETCH(bool, allow_uncheck);
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
    QCOMPARE(group.checkedButton(), allow_uncheck ? nullptr : buttons[1]);
    QCOMPARE(handler_calls, 1);
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
    QTest::mouseRelease(&button, Qt::LeftButton, Qt::ControlModifier);
    QCOMPARE(seen, int(Qt::ControlModifier));
    QCOMPARE(button.press_modifiers(), 0);
}

QTEST_MAIN(tst_button_dark)
#include "tst_button_dark.moc"
