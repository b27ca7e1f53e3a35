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

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::FocusReason)

namespace {

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
    void clickable_label_underline();
    void sheet_setters();
    void label_paint_callable();
    void panel_frames_content_data();
    void panel_frames_content();
};

void tst_input_widgets::tooltip_rule_in_sheet()
{
    QWidget parent;
    const QList<QWidget *> widgets = {new vn::checkbox("c", &parent),
                                      new vn::checkbox_flat("c", &parent),
                                      new vn::radio("r", &parent),
                                      new vn::combobox(&parent),
                                      new vn::combobox_lineedit(&parent),
                                      new vn::lineedit(&parent),
                                      new vn::textedit(&parent),
                                      new vn::label("l", &parent),
                                      new vn::clickable_label("l", &parent),
                                      new vn::panel(new QWidget, &parent)};
    for (QWidget *widget : widgets)
        QVERIFY2(widget->styleSheet().contains("QToolTip"), qPrintable(widget->styleSheet()));
}

void tst_input_widgets::checkbox_sheet_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QString>("checked_image");
    QTest::addColumn<QString>("unchecked_image");
    QTest::addColumn<QString>("present");
    QTest::addColumn<QString>("absent");
    const QColor none(0, 0, 0, 0);
    const QString flat = "indicator:unchecked{background-color", stock = ":/gui/checkbox/";
    // Only a fully transparent black means no colour; an unchecked image
    // alone is ignored.
    QTest::addRow("transparent black: stock") << none << "" << "" << stock + "checked.png" << flat;
    QTest::addRow("unchecked image alone: stock") << none << "" << ":/u.png" << stock << ":/u.png";
    QTest::addRow("opaque black: flat") << QColor(0, 0, 0) << "" << "" << flat + ":rgba(0,0,0,255);"
                                        << "image:url";
    QTest::addRow("transparent red: flat")
        << QColor(200, 10, 20, 0) << "" << "" << flat + ":rgba(200,10,20,0);" << "image:url";
    QTest::addRow("both images") << none << ":/c.png" << ":/u.png"
                                 << "indicator:!enabled:unchecked{image:url(:/u.png);" << stock;
    QTest::addRow("checked image alone, background ignored")
        << QColor(9, 9, 9) << ":/c.png" << "" << "!enabled:checked{image:url(:/c.png);" << "url()";
}

void tst_input_widgets::checkbox_sheet()
{
    QFETCH(QColor, background);
    QFETCH(QString, checked_image);
    QFETCH(QString, unchecked_image);
    QFETCH(QString, present);
    QFETCH(QString, absent);
    vn::checkbox box("c");
    box.set_sheet(4, background, checked_image, unchecked_image);
    QVERIFY2(box.styleSheet().contains(present), qPrintable(box.styleSheet()));
    QVERIFY2(!box.styleSheet().contains(absent), qPrintable(box.styleSheet()));
    box.set_sheet(7, background, checked_image, unchecked_image, QColor(1, 2, 3));
    QVERIFY(box.styleSheet().startsWith("QCheckBox{spacing:7px;color:rgb(1,2,3);}"));
}

void tst_input_widgets::checkbox_flat_image_rect_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<int>("height");
    QTest::addColumn<QRect>("expected");
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
    QCOMPARE(QColor(box.grab().toImage().pixel(7, 10)), expected);
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
    // QLineEdit itself selects on a tab, but not on these.
    QTest::addRow("mouse") << Qt::MouseFocusReason;
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

void tst_input_widgets::clickable_label_underline()
{
    for (bool on : {true, false}) {
        vn::clickable_label link("link");
        link.underline_on_hover = on;
        QEvent enter(QEvent::Enter), leave(QEvent::Leave);
        QApplication::sendEvent(&link, &enter);
        QCOMPARE(link.styleSheet().contains("text-decoration: underline;"), on);
        QApplication::sendEvent(&link, &leave);
        QVERIFY(link.styleSheet().contains("text-decoration: none;"));
    }
}

void tst_input_widgets::sheet_setters()
{
    vn::lineedit edit;
    edit.set_border_colour(QColor(1, 2, 3, 4)); // alpha ignored
    QVERIFY2(edit.styleSheet().contains("border: 1px solid rgb(1,2,3);"),
             qPrintable(edit.styleSheet()));

    vn::radio button("r");
    button.spacing = 12;
    button.set_sheet();
    QVERIFY(button.styleSheet().startsWith("QRadioButton{spacing:12px;}"));
}

void tst_input_widgets::label_paint_callable()
{
    vn::label text;
    text.resize(20, 10);
    QVERIFY(QColor(text.grab().toImage().pixel(10, 5)) != QColor(Qt::red)); // base paints
    vn::label *seen = nullptr;
    text.paint = [&seen](QPainter &painter, vn::label *l) {
        seen = l;
        painter.fillRect(l->rect(), Qt::red);
    };
    QCOMPARE(QColor(text.grab().toImage().pixel(10, 5)), QColor(Qt::red));
    QCOMPARE(seen, &text);
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
    QVERIFY(frame.styleSheet().startsWith(QString("#%1 {").arg(name)));
    QVERIFY(frame.styleSheet().contains(QString("border-image:url(%1) 3 stretch;").arg(image)));
}

QTEST_MAIN(tst_input_widgets)
#include "tst_input_widgets.moc"
