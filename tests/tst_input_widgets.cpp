#include <vn/checkbox.h>
#include <vn/checkbox_flat.h>
#include <vn/clickable_label.h>
#include <vn/combobox.h>
#include <vn/combobox_lineedit.h>
#include <vn/label.h>
#include <vn/lineedit.h>
#include <vn/panel.h>
#include <vn/radio.h>
#include <vn/textedit.h>

#include <QPainter>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

#include <functional>

using widget_factory = std::function<QWidget *(QWidget *)>;
Q_DECLARE_METATYPE(widget_factory)
Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::FocusReason)

namespace {

const QString tooltip_rule =
    QStringLiteral("QToolTip{border:1px solid rgb(99,99,99);"
                   "background-image:none;background-color:rgb(47,47,47);}");
const QString tooltip_rule_blanks =
    QStringLiteral("QToolTip { border:1px solid rgb(99,99,99);background-image:none;"
                   "background-color:rgb(47,47,47); }");

const QString checkbox_head = QStringLiteral(
    "QCheckBox{spacing:4px;color:rgb(198,213,210);}QToolTip{border:1px solid rgb(99,99,99);"
    "background-image:none;background-color:rgb(47,47,47);}");

// Counts the wheel events that reach it, as the parent of a combo box.
class wheel_counter : public QWidget
{
public:
    int wheels = 0;

protected:
    void wheelEvent(QWheelEvent *e) override
    {
        ++wheels;
        e->accept();
    }
};

QImage filled(const QColor &colour)
{
    QImage image(14, 14, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

} // namespace

class tst_input_widgets : public QObject
{
    Q_OBJECT

private slots:
    void tooltip_rule_in_sheet_data();
    void tooltip_rule_in_sheet();

    void checkbox_sheet_data();
    void checkbox_sheet();
    void checkbox_flat_image_rect_data();
    void checkbox_flat_image_rect();
    void checkbox_flat_paints_state_data();
    void checkbox_flat_paints_state();

    void combobox_wheel_data();
    void combobox_wheel();
    void combobox_clicked_on_release();
    void combobox_lineedit_selects_on_focus_data();
    void combobox_lineedit_selects_on_focus();

    void clickable_label_press_data();
    void clickable_label_press();
    void clickable_label_underline_data();
    void clickable_label_underline();

    void lineedit_border_colour_data();
    void lineedit_border_colour();
    void radio_spacing_data();
    void radio_spacing();
    void label_paint_callable_data();
    void label_paint_callable();
    void panel_frames_content_data();
    void panel_frames_content();
};

void tst_input_widgets::tooltip_rule_in_sheet_data()
{
    QTest::addColumn<widget_factory>("make");
    QTest::addColumn<QString>("rule");

    QTest::addRow("checkbox") << widget_factory([](QWidget *p) { return new vn::checkbox("c", p); })
                              << tooltip_rule;
    QTest::addRow("checkbox_flat")
        << widget_factory([](QWidget *p) { return new vn::checkbox_flat("c", p); }) << tooltip_rule;
    QTest::addRow("radio") << widget_factory([](QWidget *p) { return new vn::radio("r", p); })
                           << tooltip_rule;
    QTest::addRow("combobox") << widget_factory([](QWidget *p) { return new vn::combobox(p); })
                              << tooltip_rule;
    QTest::addRow("combobox_lineedit")
        << widget_factory([](QWidget *p) { return new vn::combobox_lineedit(p); }) << tooltip_rule;
    QTest::addRow("lineedit") << widget_factory([](QWidget *p) { return new vn::lineedit(p); })
                              << tooltip_rule;
    QTest::addRow("textedit") << widget_factory([](QWidget *p) { return new vn::textedit(p); })
                              << tooltip_rule;
    QTest::addRow("label") << widget_factory([](QWidget *p) { return new vn::label("l", p); })
                           << tooltip_rule;
    QTest::addRow("clickable_label")
        << widget_factory([](QWidget *p) { return new vn::clickable_label("l", p); })
        << tooltip_rule_blanks;
    QTest::addRow("panel") << widget_factory([](QWidget *p) {
        return new vn::panel(new QWidget, p);
    }) << tooltip_rule;
}

void tst_input_widgets::tooltip_rule_in_sheet()
{
    QFETCH(widget_factory, make);
    QFETCH(QString, rule);
    QWidget parent;
    QWidget *widget = make(&parent);
    QVERIFY2(widget->styleSheet().contains(rule), qPrintable(widget->styleSheet()));
}

void tst_input_widgets::checkbox_sheet_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QString>("checked_image");
    QTest::addColumn<QString>("unchecked_image");
    QTest::addColumn<QString>("expected_tail");

    const QString stock =
        "QCheckBox::indicator:enabled:unchecked{image:url(:/gui/checkbox/unchecked.png);}"
        "QCheckBox::indicator:enabled:checked{image:url(:/gui/checkbox/checked.png);}"
        "QCheckBox::indicator:!enabled:unchecked"
        "{image:url(:/gui/checkbox/disabled_unchecked.png);}"
        "QCheckBox::indicator:!enabled:checked{image:url(:/gui/checkbox/disabled_checked.png);}";
    QTest::addRow("transparent black: stock images") << QColor(0, 0, 0, 0) << ""
                                                     << "" << stock;
    QTest::addRow("transparent black, unchecked image alone: stock images")
        << QColor(0, 0, 0, 0) << ""
        << ":/u.png" << stock;
    QTest::addRow("opaque black: flat")
        << QColor(0, 0, 0) << ""
        << ""
        << "QCheckBox::indicator:unchecked{background-color:rgba(0,0,0,255);"
           "border:1px solid rgb(99,99,99);width:14px;height:14px;}"
           "QCheckBox::indicator:checked{background-color:rgba(0,0,0,255);"
           "border:3px solid rgb(255,255,255);width:10px;height:10px;}";
    QTest::addRow("transparent red: flat")
        << QColor(200, 10, 20, 0) << ""
        << ""
        << "QCheckBox::indicator:unchecked{background-color:rgba(200,10,20,0);"
           "border:1px solid rgb(99,99,99);width:14px;height:14px;}"
           "QCheckBox::indicator:checked{background-color:rgba(200,10,20,0);"
           "border:3px solid rgb(255,255,255);width:10px;height:10px;}";
    QTest::addRow("both images")
        << QColor(0, 0, 0, 0) << ":/c.png"
        << ":/u.png"
        << "QCheckBox::indicator:enabled:unchecked{image:url(:/u.png);border:1px solid "
           "rgb(99,99,99);width:14px;height:14px;}"
           "QCheckBox::indicator:enabled:checked{image:url(:/c.png);border:3px solid "
           "rgb(255,255,255);width:10px;height:10px;}"
           "QCheckBox::indicator:!enabled:unchecked{image:url(:/u.png);border:1px solid "
           "rgb(99,99,99);width:14px;height:14px;}"
           "QCheckBox::indicator:!enabled:checked{image:url(:/c.png);border:3px solid "
           "rgb(255,255,255);width:10px;height:10px;}";
    QTest::addRow("checked image alone, background ignored")
        << QColor(9, 9, 9) << ":/c.png"
        << ""
        << "QCheckBox::indicator:enabled:unchecked{image:url(:/gui/checkbox/unchecked.png);}"
           "QCheckBox::indicator:enabled:checked{image:url(:/c.png);border:3px solid "
           "rgb(255,255,255);width:10px;height:10px;}"
           "QCheckBox::indicator:!enabled:unchecked"
           "{image:url(:/gui/checkbox/disabled_unchecked.png);}"
           "QCheckBox::indicator:!enabled:checked{image:url(:/c.png);border:3px solid "
           "rgb(255,255,255);width:10px;height:10px;}";
}

void tst_input_widgets::checkbox_sheet()
{
    QFETCH(QColor, background);
    QFETCH(QString, checked_image);
    QFETCH(QString, unchecked_image);
    QFETCH(QString, expected_tail);

    vn::checkbox box("c");
    // Construction gives the stock form.
    QVERIFY(box.styleSheet().endsWith("{image:url(:/gui/checkbox/disabled_checked.png);}"));
    box.set_sheet(4, background, checked_image, unchecked_image);
    QCOMPARE(box.styleSheet(), checkbox_head + expected_tail);

    box.set_sheet(7, background, checked_image, unchecked_image, QColor(1, 2, 3));
    QVERIFY(box.styleSheet().startsWith("QCheckBox{spacing:7px;color:rgb(1,2,3);}"));
}

void tst_input_widgets::checkbox_flat_image_rect_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<int>("height");
    QTest::addColumn<QRect>("expected");

    QTest::addRow("square") << QSize(10, 10) << 20 << QRect(0, 3, 14, 14);
    QTest::addRow("square, odd height") << QSize(10, 10) << 21 << QRect(0, 3, 14, 14);
    QTest::addRow("narrow, width truncated") << QSize(7, 10) << 20 << QRect(0, 3, 9, 14);
    QTest::addRow("wide") << QSize(100, 10) << 20 << QRect(0, 3, 140, 14);
    QTest::addRow("ratio at the limit stays 14 high")
        << QSize(9999, 14) << 20 << QRect(0, 3, 9999, 14);
    // Ratio 1000: 9999 wide and 9.999 high, truncated to 9.
    QTest::addRow("very wide") << QSize(10000, 10) << 20 << QRect(0, 6, 9999, 9);
    QTest::addRow("no image") << QSize() << 20 << QRect();
}

void tst_input_widgets::checkbox_flat_image_rect()
{
    QFETCH(QSize, image);
    QFETCH(int, height);
    QFETCH(QRect, expected);
    QCOMPARE(vn::checkbox_flat::image_rect(image, height), expected);
}

void tst_input_widgets::checkbox_flat_paints_state_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<QColor>("expected");

    QTest::addRow("unchecked") << true << false << QColor(Qt::blue);
    QTest::addRow("checked") << true << true << QColor(Qt::red);
    QTest::addRow("disabled checked") << false << true << QColor(Qt::green);
}

void tst_input_widgets::checkbox_flat_paints_state()
{
    QFETCH(bool, enabled);
    QFETCH(bool, checked);
    QFETCH(QColor, expected);

    vn::checkbox_flat box("flat");
    box.resize(80, 20);
    box.set_images(filled(Qt::red), filled(Qt::blue), filled(Qt::green));
    box.setChecked(checked);
    box.setEnabled(enabled);
    const QImage shot = box.grab().toImage();
    QCOMPARE(QColor(shot.pixel(7, 10)), expected);
}

void tst_input_widgets::combobox_wheel_data()
{
    QTest::addColumn<bool>("ignore_wheel");
    QTest::addColumn<int>("parent_wheels");
    QTest::addColumn<int>("index_after");

    QTest::addRow("ignored by default: goes to the parent") << true << 1 << 0;
    QTest::addRow("passed: the box scrolls") << false << 0 << 1;
}

void tst_input_widgets::combobox_wheel()
{
    QFETCH(bool, ignore_wheel);
    QFETCH(int, parent_wheels);
    QFETCH(int, index_after);

    wheel_counter parent;
    auto *box = new vn::combobox(&parent);
    QVERIFY(box->ignore_wheel);
    box->addItems({"a", "b", "c"});
    box->ignore_wheel = ignore_wheel;
    parent.show();
    const QPoint at(5, 5);
    QWheelEvent wheel(at, box->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only a spontaneous wheel event, as from the window system, goes on to
    // the parent when the receiver ignores it; sendEvent would clear the flag,
    // so the event goes through notify() as QTest's mouse events do.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(box, &wheel);
    QCOMPARE(parent.wheels, parent_wheels);
    QCOMPARE(box->currentIndex(), index_after);
}

void tst_input_widgets::combobox_clicked_on_release()
{
    vn::combobox box;
    box.addItems({"a", "b"});
    box.show();
    QSignalSpy clicked(&box, &vn::combobox::clicked);
    QTest::mousePress(&box, Qt::LeftButton);
    QCOMPARE(clicked.count(), 0);
    QTest::mouseRelease(&box, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    box.hidePopup();
}

void tst_input_widgets::combobox_lineedit_selects_on_focus_data()
{
    QTest::addColumn<Qt::FocusReason>("reason");
    // QLineEdit itself selects on a tab, but not on a mouse focus.
    QTest::addRow("mouse") << Qt::MouseFocusReason;
    QTest::addRow("tab") << Qt::TabFocusReason;
    QTest::addRow("other") << Qt::OtherFocusReason;
}

void tst_input_widgets::combobox_lineedit_selects_on_focus()
{
    QFETCH(Qt::FocusReason, reason);
    vn::combobox_lineedit edit;
    edit.setText("Berlin");
    edit.setCursorPosition(2);
    QFocusEvent focus(QEvent::FocusIn, reason);
    QApplication::sendEvent(&edit, &focus);
    QTRY_COMPARE(edit.selectedText(), QString("Berlin"));
}

void tst_input_widgets::clickable_label_press_data()
{
    QTest::addColumn<Qt::MouseButton>("mouse_button");
    QTest::addColumn<int>("clicks");

    QTest::addRow("left") << Qt::LeftButton << 1;
    QTest::addRow("right") << Qt::RightButton << 0;
    QTest::addRow("middle") << Qt::MiddleButton << 0;
}

void tst_input_widgets::clickable_label_press()
{
    QFETCH(Qt::MouseButton, mouse_button);
    QFETCH(int, clicks);

    vn::clickable_label link("link");
    link.show();
    QSignalSpy clicked(&link, &vn::clickable_label::clicked);
    QTest::mousePress(&link, mouse_button, Qt::ShiftModifier);
    QCOMPARE(clicked.count(), clicks); // on the press already
    QCOMPARE(link.press_modifiers(), int(Qt::ShiftModifier));
    QTest::mouseRelease(&link, mouse_button);
    QCOMPARE(clicked.count(), clicks);
    QCOMPARE(link.press_modifiers(), 0);
}

void tst_input_widgets::clickable_label_underline_data()
{
    QTest::addColumn<bool>("underline_on_hover");
    QTest::addColumn<QString>("inside");

    QTest::addRow("underline on hover") << true << "underline";
    QTest::addRow("switched off") << false << "none";
}

void tst_input_widgets::clickable_label_underline()
{
    QFETCH(bool, underline_on_hover);
    QFETCH(QString, inside);

    vn::clickable_label link("link");
    link.underline_on_hover = underline_on_hover;
    const QString sheet = "QLabel { text-decoration: %1; }" + tooltip_rule_blanks;
    QCOMPARE(link.styleSheet(), sheet.arg("none"));
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(&link, &enter);
    QCOMPARE(link.styleSheet(), sheet.arg(inside));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&link, &leave);
    QCOMPARE(link.styleSheet(), sheet.arg("none"));
}

void tst_input_widgets::lineedit_border_colour_data()
{
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<QString>("border");

    QTest::addRow("default") << QColor() << "border: 1px solid rgb(99,99,99);";
    QTest::addRow("red") << QColor(255, 0, 0) << "border: 1px solid rgb(255,0,0);";
    QTest::addRow("alpha ignored") << QColor(1, 2, 3, 4) << "border: 1px solid rgb(1,2,3);";
}

void tst_input_widgets::lineedit_border_colour()
{
    QFETCH(QColor, colour);
    QFETCH(QString, border);

    vn::lineedit edit;
    QVERIFY(!edit.testAttribute(Qt::WA_MacShowFocusRect));
    if (colour.isValid())
        edit.set_border_colour(colour);
    const QString sheet = edit.styleSheet();
    QVERIFY(sheet.startsWith("vn--lineedit{"));
    QVERIFY2(sheet.contains("color:rgb(198,213,210);    " + border), qPrintable(sheet));
    // The disabled border stays whatever the colour.
    QVERIFY(sheet.contains("vn--lineedit:disabled{    border: 1px solid rgb(75,75,75);"));
}

void tst_input_widgets::radio_spacing_data()
{
    QTest::addColumn<int>("spacing");
    QTest::addRow("default") << 4;
    QTest::addRow("wide") << 12;
}

void tst_input_widgets::radio_spacing()
{
    QFETCH(int, spacing);
    vn::radio button("r");
    QCOMPARE(button.spacing, 4);
    button.spacing = spacing;
    button.set_sheet();
    QVERIFY(button.styleSheet().startsWith(
        QString("QRadioButton{spacing:%1px;}QRadioButton::indicator:enabled:unchecked"
                "{image:url(:/gui/radio/unchecked.png);}")
            .arg(spacing)));
}

void tst_input_widgets::label_paint_callable_data()
{
    QTest::addColumn<bool>("with_callable");
    QTest::addRow("callable paints") << true;
    QTest::addRow("base paints") << false;
}

void tst_input_widgets::label_paint_callable()
{
    QFETCH(bool, with_callable);
    vn::label text;
    text.resize(20, 10);
    vn::label *seen = nullptr;
    if (with_callable)
        text.paint = [&seen](QPainter &painter, vn::label *l) {
            seen = l;
            painter.fillRect(l->rect(), Qt::red);
        };
    const QImage shot = text.grab().toImage();
    QCOMPARE(seen, with_callable ? &text : nullptr);
    QCOMPARE(QColor(shot.pixel(10, 5)) == QColor(Qt::red), with_callable);
}

void tst_input_widgets::panel_frames_content_data()
{
    QTest::addColumn<bool>("topless");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("image");

    QTest::addRow("framed") << false << "vn--panel"
                            << ":/gui/panel/border.png";
    QTest::addRow("topless") << true << "vn--panel_topless"
                             << ":/gui/panel/border_topless.png";
}

void tst_input_widgets::panel_frames_content()
{
    QFETCH(bool, topless);
    QFETCH(QString, name);
    QFETCH(QString, image);

    auto *content = new QWidget;
    vn::panel frame(content, nullptr, topless);
    frame.resize(100, 50);
    frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&frame));
    QCOMPARE(content->parentWidget()->objectName(), name);
    QVERIFY(frame.isAncestorOf(content));
    // Kept 3 pixels off the border image on every side.
    QCOMPARE(content->geometry(), QRect(3, 3, 94, 44));
    QVERIFY(frame.styleSheet().startsWith(
        QString("#%1 {border-style:solid; border-width:3px; border-image:url(%2) 3 stretch;}")
            .arg(name, image)));
}

QTEST_MAIN(tst_input_widgets)
#include "tst_input_widgets.moc"
