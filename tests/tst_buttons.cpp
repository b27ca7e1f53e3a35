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
#include <QtTest>

Q_DECLARE_METATYPE(Qt::MouseButton)

class tst_buttons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void highlight_data();
    void highlight();
    void html_face();
    void dark_flat_and_round_sheets();
    void custom_paint_and_drop();
    void toggle_group_data();
    void toggle_group();
    void toggle_leaves_group_when_destroyed();
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
    const QString resting = b->styleSheet();
    if (with_rect)
        QCOMPARE(b->highlight_rect(), QRect(QPoint(4, 4), QPoint(79, 29)));
    const QSize resting_hint = b->sizeHint();

    QSignalSpy clicked(b, &QAbstractButton::clicked);
    QTest::mouseClick(b, Qt::LeftButton);
    QVERIFY(b->highlighted());
    const QString lit = b->styleSheet();
    QCOMPARE(lit == resting, with_rect);   // a rect is painted, the sheet stays
    QCOMPARE(b->sizeHint(), resting_hint); // the border takes the margin's place
    QCOMPARE(clicked.count(), 1);
    if (with_rect)
        QCOMPARE(QColor(b->grab().toImage().pixel(40, 4)), QColor(222, 222, 222));

    // Within the 200 ms the declarations are in place: nothing changes.
    QTest::mouseClick(b, Qt::LeftButton);
    QCOMPARE(b->styleSheet(), lit);
    QCOMPARE(clicked.count(), 2);
    QTRY_VERIFY_WITH_TIMEOUT(!b->highlighted(), 1000);
    QCOMPARE(b->styleSheet(), resting);
}

void tst_buttons::html_face()
{
    vn::button_html b("<b>bold</b> text");
    QVERIFY(!b.icon().isNull());
    QVERIFY(b.iconSize().width() > b.iconSize().height());
    const QImage face = b.icon().pixmap(b.iconSize()).toImage();
    QCOMPARE(qAlpha(face.pixel(0, 0)), 0); // transparent where no text is
    QImage blank(face.size(), face.format());
    blank.fill(Qt::transparent);
    QVERIFY(face != blank); // the text is drawn
    // The button reacts as a vn::button without a rect.
    QCOMPARE(b.styleSheet(), vn::button("x").styleSheet());
    QVERIFY(!b.highlight_rect().isValid());
}

void tst_buttons::dark_flat_and_round_sheets()
{
    for (bool round : {false, true}) {
        std::unique_ptr<vn::button_dark> b;
        if (round)
            b = std::make_unique<vn::button_dark_round>("r");
        else
            b = std::make_unique<vn::button_dark_flat>("f");
        const QString initial = b->styleSheet();
        QVERIFY(initial.contains("QToolTip{"));
        QVERIFY(!initial.contains(QRegularExpression("%\\d"))); // no marker left unfilled
        b->set_kind("header");
        b->set_alignment("left");
        b->set_side_padding(9);
        QCOMPARE(b->styleSheet(), initial); // no markers for these
        b->set_text_colour(vn::pixel_argb(10, 20, 30));
        QVERIFY(b->styleSheet().endsWith("QPushButton::disabled{color:rgba(10,20,30,50%);}"));
        QVERIFY(!b->styleSheet().contains("rgba(10,20,30,255)"));
    }
}

void tst_buttons::custom_paint_and_drop()
{
    vn::button_custom b("c");
    b.resize(20, 10);
    b.setAcceptDrops(true);
    QMimeData data;
    data.setText("file:///tmp/a.jpg");
    auto drop = [&] {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&b, &enter);
        QVERIFY(enter.isAccepted());
        QCOMPARE(enter.dropAction(), Qt::CopyAction);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&b, &event);
    };
    // Without callables the base paints and a drop does nothing.
    QVERIFY(QColor(b.grab().toImage().pixel(10, 5)) != QColor(Qt::red));
    drop();

    vn::button_custom *painted = nullptr;
    vn::button_custom *dropped_on = nullptr;
    QString dropped_text;
    b.set_paint([&](QPainter &painter, vn::button_custom *self) {
        painted = self;
        painter.fillRect(self->rect(), Qt::red);
    });
    b.set_drop_handler([&](QDropEvent *e, vn::button_custom *self) {
        dropped_on = self;
        dropped_text = e->mimeData()->text();
    });
    QCOMPARE(QColor(b.grab().toImage().pixel(10, 5)), QColor(Qt::red));
    QCOMPARE(painted, &b);
    drop();
    QCOMPARE(dropped_on, &b);
    QCOMPARE(dropped_text, data.text());
}

void tst_buttons::toggle_group_data()
{
    QTest::addColumn<bool>("exclusive");
    QTest::addColumn<QString>("initial");   // "101": the first and last buttons checked
    QTest::addColumn<QStringList>("steps"); // c<i> click, s<i>+/- set_checked, g<i> integrity check
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, bool exclusive, const char *initial, const char *steps,
                        const char *expected) {
        QTest::newRow(name) << exclusive << QString(initial)
                            << QString(steps).split(' ', Qt::SkipEmptyParts) << QString(expected);
    };
    row("exclusive: the last click wins", true, "000", "c0 c2", "001");
    row("exclusive: keeps its last checked button", true, "000", "c0 c1 c1", "010");
    row("not exclusive: at most one checked", false, "000", "c0 c1", "010");
    row("not exclusive: a click unchecks", false, "000", "c0 c1 c1", "000");
    row("set: exclusive, the only checked one stays", true, "010", "s1-", "010");
    row("set: exclusive, checking another moves it", true, "010", "s2+", "001");
    row("set: not exclusive, uncheck allowed", false, "010", "s1-", "000");
    row("set: not exclusive, check unchecks others", false, "100", "s1+", "010");
    row("set: exclusive, nothing checked, uncheck is a no-op", true, "000", "s0-", "000");
    row("check: exclusive, none checked, checks it", true, "000", "g1", "010");
    row("check: not exclusive, none checked, nothing", false, "000", "g1", "000");
    row("check: exclusive, another checked, leaves it", true, "100", "g1", "100");
    row("check: two checked, the checker keeps its own", false, "110", "g1", "010");
}

void tst_buttons::toggle_group()
{
    QFETCH(bool, exclusive);
    QFETCH(QString, initial);
    QFETCH(QStringList, steps);
    QFETCH(QString, expected);
    QWidget window;
    QVector<vn::button_toggle *> buttons;
    for (int i = 0; i < 3; ++i) {
        buttons << new vn::button_toggle(QString::number(i), &window);
        buttons[i]->setGeometry(0, i * 30, 50, 25);
        buttons[i]->setChecked(initial[i] == '1'); // before the group, so no rule interferes
    }
    vn::button_toggle::make_group(buttons, exclusive);
    window.show();
    for (const QString &step : steps) {
        vn::button_toggle *b = buttons[step[1].digitValue()];
        if (step[0] == 'c')
            QTest::mouseClick(b, Qt::LeftButton);
        else if (step[0] == 's')
            b->set_checked(step[2] == '+');
        else
            b->group_integrity_check(b->isChecked());
    }
    QString states;
    for (const vn::button_toggle *b : buttons) {
        states += b->isChecked() ? '1' : '0';
        if (steps[0][0] == 'c')
            QCOMPARE(b->frame_on(), b->isChecked());
    }
    QCOMPARE(states, expected);
}

void tst_buttons::toggle_leaves_group_when_destroyed()
{
    QWidget window;
    auto *a = new vn::button_toggle("a", &window);
    auto *b = new vn::button_toggle("b", &window);
    vn::button_toggle::make_group({a, b}, true);
    b->setChecked(true);
    const vn::button_toggle::group_type group = a->group();
    delete b;
    QCOMPARE(group->size(), size_t(1));
    // With b gone a is alone: unchecked and exclusive, it is checked again.
    a->group_integrity_check(false);
    QVERIFY(a->isChecked());
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
    s.grab(); // painting sets the image of the state
    QVERIFY(s.styleSheet().contains(initially ? on_ : off_));
    QVERIFY(s.styleSheet().contains("QToolTip{"));
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
}

QTEST_MAIN(tst_buttons)
#include "tst_buttons.moc"
