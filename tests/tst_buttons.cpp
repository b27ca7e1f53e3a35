#include <vn/button.h>
#include <vn/button_combobox.h>
#include <vn/button_custom.h>
#include <vn/button_dark_flat.h>
#include <vn/button_dark_round.h>
#include <vn/button_html.h>
#include <vn/button_toggle.h>
#include <vn/button_toggle_switch.h>

#include <QMimeData>
#include <QPainter>
#include <QSignalSpy>
#include <QTextDocument>
#include <QtTest>

#include <functional>

using flat_setter = std::function<void(vn::button_dark &)>;
Q_DECLARE_METATYPE(flat_setter)
Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

const QString resting = QStringLiteral("border:none;margin:2px 2px 2px 2px;");
const QString lit = QStringLiteral("border:2px solid rgb(222,222,222);margin:0px 0px 0px 0px;");

const QString flat_base =
    QStringLiteral("QPushButton{color:rgb(146,152,148);border-style:none;border-width:3px;"
                   "border-image:url(:/gui/button/blank_normal.png) 3 stretch;font-size:12px;}"
                   "QPushButton::hover{color:#d0d0d0;}QToolTip{border:1px solid rgb(99,99,99);"
                   "background-image:none;background-color:rgb(47,47,47);color:rgb(228,228,228);"
                   "font-size:10px;}");
const QString round_base = QStringLiteral(
    "QPushButton{color:rgb(146,152,148);border:1px solid rgb(75,75,75);"
    "background-color:rgb(68,68,68);border-radius:5px;font-size:12px;}"
    "QPushButton::checked{color:#d0d0d0;border:1px solid rgb(120,120,120);"
    "background-color:rgb(113,113,113);}QPushButton::hover{color:#d0d0d0;border:1px solid "
    "rgb(120,120,120);background-color:rgb(133,133,133);}QToolTip{border:1px solid "
    "rgb(99,99,99);background-image:none;background-color:rgb(47,47,47);"
    "color:rgb(228,228,228);font-size:10px;}");
const QString flat_checked = QStringLiteral("QPushButton::checked      {color:rgb(228,228,228);}"
                                            "QPushButton::checked:hover{color:rgb(255,255,255);}");
const QString flat_pressed = QStringLiteral("QPushButton::checked      {color:rgb(228,228,228);}");
const QString fixed_disabled =
    QStringLiteral("QPushButton::disabled{color:rgba(129,136,133,50%);}");

// "101": the first and last buttons checked.
QString states(const QVector<vn::button_toggle *> &buttons)
{
    QString out;
    for (const vn::button_toggle *b : buttons)
        out += b->isChecked() ? '1' : '0';
    return out;
}

} // namespace

class tst_buttons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void highlight_data();
    void highlight();
    void html_face();

    void dark_flat_sheet_data();
    void dark_flat_sheet();

    void custom_paint_and_drop_data();
    void custom_paint_and_drop();

    void toggle_group_clicks_data();
    void toggle_group_clicks();
    void toggle_set_checked_data();
    void toggle_set_checked();
    void group_integrity_check_data();
    void group_integrity_check();
    void toggle_leaves_group_when_destroyed();

    void switch_image_per_state_data();
    void switch_image_per_state();
    void switch_latch_data();
    void switch_latch();

    void combobox_button_popup_widget();

private:
    QTemporaryDir dir_;
    QString on_;
    QString off_;
};

void tst_buttons::initTestCase()
{
    QVERIFY(dir_.isValid());
    on_ = dir_.filePath("on.png");
    off_ = dir_.filePath("off.png");
    QImage image(8, 4, QImage::Format_ARGB32);
    image.fill(Qt::green);
    QVERIFY(image.save(on_));
    image.fill(Qt::gray);
    QVERIFY(image.save(off_));
}

void tst_buttons::highlight_data()
{
    QTest::addColumn<bool>("with_rect");
    QTest::addRow("sheet swap without a rect") << false;
    QTest::addRow("painted frame with a rect") << true;
}

void tst_buttons::highlight()
{
    QFETCH(bool, with_rect);

    QWidget window;
    window.resize(200, 100);
    vn::button *b =
        with_rect ? new vn::button(&window, QRect(0, 0, 79, 29)) : new vn::button("ok", &window);
    b->setGeometry(10, 10, 80, 30);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(b->focusPolicy(), Qt::NoFocus);
    QCOMPARE(b->styleSheet(), resting);
    if (with_rect)
        QCOMPARE(b->highlight_rect(), QRect(QPoint(4, 4), QPoint(79, 29)));
    const QSize resting_hint = b->sizeHint();

    QSignalSpy clicked(b, &QAbstractButton::clicked);
    QSignalSpy released(b, &QAbstractButton::released);
    QSignalSpy toggled(b, &QAbstractButton::toggled);
    QTest::mouseClick(b, Qt::LeftButton);
    QVERIFY(b->highlighted());
    QVERIFY(!b->isDown());
    QCOMPARE(b->styleSheet(), with_rect ? resting : lit);
    // The 2-pixel border takes the place of the 2-pixel margin.
    QCOMPARE(b->sizeHint(), resting_hint);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(released.count(), 1);
    QCOMPARE(toggled.count(), 1);
    if (with_rect) {
        const QImage shot = b->grab().toImage();
        QCOMPARE(QColor(shot.pixel(40, 4)), QColor(222, 222, 222));
    }

    // Within the 200 ms the declarations are in place: nothing changes.
    QTest::mouseClick(b, Qt::LeftButton);
    QCOMPARE(b->styleSheet(), with_rect ? resting : lit);
    QCOMPARE(clicked.count(), 2);

    QTRY_VERIFY_WITH_TIMEOUT(!b->highlighted(), 1000);
    QCOMPARE(b->styleSheet(), resting);
}

void tst_buttons::html_face()
{
    vn::button_html b("<b>bold</b> text");
    QVERIFY(!b.icon().isNull());
    QTextDocument document;
    document.setHtml("<b>bold</b> text");
    QCOMPARE(b.iconSize(), QSize(int(document.size().width()), int(document.size().height())));
    const QImage face = b.icon().pixmap(b.iconSize()).toImage();
    QVERIFY(face.hasAlphaChannel());
    QCOMPARE(qAlpha(face.pixel(0, 0)), 0); // transparent where no text is
    // The button reacts as a vn::button without a rect.
    QCOMPARE(b.styleSheet(), resting);
    QVERIFY(!b.highlight_rect().isValid());
}

void tst_buttons::dark_flat_sheet_data()
{
    QTest::addColumn<bool>("round");
    QTest::addColumn<flat_setter>("setter");
    QTest::addColumn<QString>("disabled");

    const QString coloured = "QPushButton::disabled{color:rgba(10,20,30,50%);}";
    for (bool round : {false, true}) {
        const char *kind = round ? "round" : "flat";
        QTest::addRow("%s: no setter", kind)
            << round << flat_setter([](vn::button_dark &) {}) << fixed_disabled;
        QTest::addRow("%s: kind, alignment, padding have no effect", kind)
            << round << flat_setter([](vn::button_dark &b) {
                   b.set_kind("header");
                   b.set_alignment("left");
                   b.set_side_padding(9);
               })
            << fixed_disabled;
        QTest::addRow("%s: text colour gives the disabled colour only", kind)
            << round << flat_setter([](vn::button_dark &b) {
                   b.set_text_colour(vn::pixel_argb(10, 20, 30));
               })
            << coloured;
    }
}

void tst_buttons::dark_flat_sheet()
{
    QFETCH(bool, round);
    QFETCH(flat_setter, setter);
    QFETCH(QString, disabled);

    std::unique_ptr<vn::button_dark> b;
    if (round)
        b = std::make_unique<vn::button_dark_round>("r");
    else
        b = std::make_unique<vn::button_dark_flat>("f");
    setter(*b);
    QCOMPARE(b->styleSheet(),
             (round ? round_base : flat_base) + flat_checked + flat_pressed + disabled);
    QCOMPARE(b->contentsMargins(), QMargins());
}

void tst_buttons::custom_paint_and_drop_data()
{
    QTest::addColumn<bool>("with_callables");
    QTest::addRow("callables set") << true;
    QTest::addRow("none") << false;
}

void tst_buttons::custom_paint_and_drop()
{
    QFETCH(bool, with_callables);

    vn::button_custom b("c");
    b.resize(20, 10);
    b.setAcceptDrops(true);
    vn::button_custom *painted = nullptr;
    vn::button_custom *dropped_on = nullptr;
    QString dropped_text;
    if (with_callables) {
        b.set_paint([&](QPainter &painter, vn::button_custom *self) {
            painted = self;
            painter.fillRect(self->rect(), Qt::red);
        });
        b.set_drop_handler([&](QDropEvent *e, vn::button_custom *self) {
            dropped_on = self;
            dropped_text = e->mimeData()->text();
        });
    }
    const QImage shot = b.grab().toImage();
    QCOMPARE(painted, with_callables ? &b : nullptr);
    QCOMPARE(QColor(shot.pixel(10, 5)) == QColor(Qt::red), with_callables);

    QMimeData data;
    data.setText("file:///tmp/a.jpg");
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&b, &enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(enter.dropAction(), Qt::CopyAction);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&b, &drop);
    QCOMPARE(dropped_on, with_callables ? &b : nullptr);
    QCOMPARE(dropped_text, with_callables ? data.text() : QString());
}

void tst_buttons::toggle_group_clicks_data()
{
    QTest::addColumn<bool>("exclusive");
    QTest::addColumn<QVector<int>>("clicks");
    QTest::addColumn<QString>("expected");

    QTest::addRow("exclusive: one click checks") << true << QVector<int>{0} << "100";
    QTest::addRow("exclusive: the last click wins") << true << QVector<int>{0, 2} << "001";
    QTest::addRow("exclusive: keeps its last checked button")
        << true << QVector<int>{0, 1, 1} << "010";
    QTest::addRow("not exclusive: at most one checked") << false << QVector<int>{0, 1} << "010";
    QTest::addRow("not exclusive: a click unchecks") << false << QVector<int>{0, 1, 1} << "000";
}

void tst_buttons::toggle_group_clicks()
{
    QFETCH(bool, exclusive);
    QFETCH(QVector<int>, clicks);
    QFETCH(QString, expected);

    QWidget window;
    QVector<vn::button_toggle *> buttons;
    for (int i = 0; i < 3; ++i) {
        auto *b = new vn::button_toggle(QString::number(i), &window);
        b->setGeometry(0, i * 30, 50, 25);
        buttons << b;
    }
    vn::button_toggle::make_group(buttons, exclusive);
    window.show();
    for (int i : clicks)
        QTest::mouseClick(buttons[i], Qt::LeftButton);
    QCOMPARE(states(buttons), expected);
    for (vn::button_toggle *b : buttons)
        QCOMPARE(b->frame_on(), b->isChecked());
}

void tst_buttons::toggle_set_checked_data()
{
    QTest::addColumn<bool>("exclusive");
    QTest::addColumn<QString>("initial");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("value");
    QTest::addColumn<QString>("expected");

    QTest::addRow("exclusive: the only checked one stays") << true << "010" << 1 << false << "010";
    QTest::addRow("exclusive: checking another moves it") << true << "010" << 2 << true << "001";
    QTest::addRow("not exclusive: uncheck allowed") << false << "010" << 1 << false << "000";
    QTest::addRow("not exclusive: check unchecks others") << false << "100" << 1 << true << "010";
    QTest::addRow("exclusive: nothing checked, uncheck is a no-op")
        << true << "000" << 0 << false << "000";
}

void tst_buttons::toggle_set_checked()
{
    QFETCH(bool, exclusive);
    QFETCH(QString, initial);
    QFETCH(int, index);
    QFETCH(bool, value);
    QFETCH(QString, expected);

    QWidget window;
    QVector<vn::button_toggle *> buttons;
    for (int i = 0; i < 3; ++i)
        buttons << new vn::button_toggle(QString::number(i), &window);
    // Set the start state before the group exists, so no rule interferes.
    for (int i = 0; i < 3; ++i)
        buttons[i]->setChecked(initial[i] == '1');
    vn::button_toggle::make_group(buttons, exclusive);
    buttons[index]->set_checked(value);
    QCOMPARE(states(buttons), expected);
}

void tst_buttons::group_integrity_check_data()
{
    QTest::addColumn<bool>("exclusive");
    QTest::addColumn<QString>("initial");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("expected");

    QTest::addRow("exclusive, none checked: checks it") << true << "000" << 1 << "010";
    QTest::addRow("not exclusive, none checked: nothing") << false << "000" << 1 << "000";
    QTest::addRow("exclusive, another checked: leaves it") << true << "100" << 1 << "100";
    QTest::addRow("two checked: the checker keeps its own") << false << "110" << 1 << "010";
}

void tst_buttons::group_integrity_check()
{
    QFETCH(bool, exclusive);
    QFETCH(QString, initial);
    QFETCH(int, index);
    QFETCH(QString, expected);

    QWidget window;
    QVector<vn::button_toggle *> buttons;
    for (int i = 0; i < 3; ++i)
        buttons << new vn::button_toggle(QString::number(i), &window);
    for (int i = 0; i < 3; ++i)
        buttons[i]->setChecked(initial[i] == '1');
    vn::button_toggle::make_group(buttons, exclusive);
    buttons[index]->group_integrity_check(buttons[index]->isChecked());
    QCOMPARE(states(buttons), expected);
}

void tst_buttons::toggle_leaves_group_when_destroyed()
{
    QWidget window;
    auto *a = new vn::button_toggle("a", &window);
    auto *b = new vn::button_toggle("b", &window);
    vn::button_toggle::make_group({a, b}, true);
    b->setChecked(true);
    const vn::button_toggle::group_type group = a->group();
    QCOMPARE(group->size(), size_t(2));
    delete b;
    QCOMPARE(group->size(), size_t(1));
    // With b gone a is alone: unchecked and exclusive, it is checked again.
    a->group_integrity_check(false);
    QVERIFY(a->isChecked());
}

void tst_buttons::switch_image_per_state_data()
{
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("on");
    QTest::addRow("off") << false << false;
    QTest::addRow("on") << true << true;
}

void tst_buttons::switch_image_per_state()
{
    QFETCH(bool, checked);
    QFETCH(bool, on);
    const QString image = on ? on_ : off_;

    vn::button_toggle_switch s("s");
    s.image_off = off_;
    s.image_on = on_;
    s.resize(40, 20);
    s.setChecked(checked);
    s.grab(); // paints, which sets the sheet of the state
    QCOMPARE(s.styleSheet(), "QPushButton{background-image:url(" + image +
                                 ");}QToolTip{border:1px solid rgb(99,99,99);"
                                 "background-image:none;background-color:rgb(47,47,47);}");
}

void tst_buttons::switch_latch_data()
{
    QTest::addColumn<bool>("latch");
    QTest::addColumn<Qt::MouseButton>("mouse_button");
    QTest::addColumn<bool>("initially");
    QTest::addColumn<bool>("after_press");
    QTest::addColumn<bool>("after_release");

    QTest::addRow("latch, left on off: switches on at the press")
        << true << Qt::LeftButton << false << true << true;
    QTest::addRow("latch, left on on: stays on") << true << Qt::LeftButton << true << true << true;
    QTest::addRow("latch, right on on: toggles off")
        << true << Qt::RightButton << true << false << false;
    QTest::addRow("latch, right on off: toggles on")
        << true << Qt::RightButton << false << true << true;
    QTest::addRow("no latch, left on on: toggles off at the release")
        << false << Qt::LeftButton << true << true << false;
    QTest::addRow("no latch, right: nothing") << false << Qt::RightButton << true << true << true;
}

void tst_buttons::switch_latch()
{
    QFETCH(bool, latch);
    QFETCH(Qt::MouseButton, mouse_button);
    QFETCH(bool, initially);
    QFETCH(bool, after_press);
    QFETCH(bool, after_release);

    vn::button_toggle_switch s("s");
    s.image_off = off_;
    s.image_on = on_;
    s.latch = latch;
    s.resize(40, 20);
    s.setChecked(initially);
    s.show();
    QTest::mousePress(&s, mouse_button);
    QCOMPARE(s.isChecked(), after_press);
    // The sheet follows at once, not only at the next paint.
    QVERIFY(s.styleSheet().contains(after_press ? on_ : off_));
    QTest::mouseRelease(&s, mouse_button);
    QCOMPARE(s.isChecked(), after_release);
    QVERIFY(s.styleSheet().contains(after_release ? on_ : off_));
}

void tst_buttons::combobox_button_popup_widget()
{
    QWidget window;
    window.resize(200, 200);
    auto *b = new vn::button_combobox(&window);
    b->setGeometry(20, 30, 60, 25);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QSignalSpy clicked(b, &vn::button_combobox::clicked);
    QTest::mousePress(b, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    b->hidePopup();

    vn::button_combobox::combo_box_widget *panel = b->widget();
    QVERIFY(panel);
    panel->hide(); // the press above may have opened it
    b->showPopup();
    QVERIFY(panel->isVisible());
    QCOMPARE(panel->parentWidget(), &window);
    QCOMPARE(panel->pos(), QPoint(20, 30 + 25 - 1));
    b->showPopup();
    QVERIFY(!panel->isVisible());

    // A pending popup only clears the flag.
    b->popup_pending = true;
    b->showPopup();
    QVERIFY(!b->popup_pending);
    QVERIFY(!panel->isVisible());
    b->hidePopup();
}

QTEST_MAIN(tst_buttons)
#include "tst_buttons.moc"
